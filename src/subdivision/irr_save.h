#pragma once
// Saving one section of the job's .irr: the section's block is replaced (or added at the end)
// through the copies .irB and .ir2, and every block that says nothing but the defaults is then
// removed. Every other byte of the file stays as it was.

#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace tessel {

// The text of .irr with every block of `section` replaced by `block` (each line ended with
// CR LF), or with `block` added at the end when the section has none. An old block is dropped
// through its "999999", or to the end of the text when it has none.
std::string ReplaceIrrBlock(std::string_view text, int section, const std::vector<std::string>& block);

// True for a block (header and its lines through "999999") that holds exactly the nine default
// lines after its header.
bool IsDefaultIrrBlock(const std::vector<std::string>& block);

// The text without its default blocks.
std::string WithoutDefaultIrrBlocks(std::string_view text);

struct IrrSaveResult {
  bool saved = false;
  // The sections that still have a block in .irr after the save.
  std::vector<int> sectionsWithBlocks;
};

// "Save Section": substitutes equal to the nominal are cleared, the section is marked, its block
// is written into .irr and default blocks are removed. .irB and .ir2 are gone afterwards. When a
// step fails the former .irr is put back from .irB and the user is told; .irr is never left
// missing when it existed.
IrrSaveResult SaveSection(Session& session, int section);

// The message of a save that failed.
std::string SaveFailedText(int section, const std::string& reason);

}  // namespace tessel
