#pragma once
// The job's .irr: one block per irregular section, in any order, each the section's centre
// identifier, nine lists each closed by an end line, and "999999". The reader takes one
// section's block into the SectionDefinitionStore; the writer gives a section's block back from
// it, in the fixed columns the subdivision tool reads.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/section_definitions.h"

namespace tessel {

// The colours of the position buttons of the section dialog and of the section buttons of the
// township diagram.
enum class Shade { System, Green, Red, Yellow, Cyan };

// The end lines of the lists of a block, as written.
inline constexpr const char* kIrrEndSubstitutes = "     0      0";
inline constexpr const char* kIrrEndDoubleCorners = "     0      0      0";
inline constexpr const char* kIrrEndList = "     0";
inline constexpr const char* kIrrEndProportions = "     0      .000      .000";
inline constexpr const char* kIrrLastLine = "999999";

struct IrrBlockRead {
  // The section has a block in the text.
  bool found = false;
  // The block was read to its last line; false when the text ended or a line could not be taken.
  bool complete = false;
  // The colours of positions 1 to 25 as the reading set them, in the order of the lists.
  std::array<Shade, 26> shades{};
};

// Reads the block of `section` (the first whose header equals its centre) into the store: the
// section's definitions are replaced and the double corner list is emptied first. Reading ends
// quietly where the text ends, where a value cannot be taken, or at a ninth double corner
// record; what was read stays. Touches nothing but the store.
IrrBlockRead ReadIrrBlock(std::string_view text, int section, SectionDefinitionStore& store);

// The sections 1 to 36 that have a block, in the order of their headers (a section twice is
// listed twice). Headers are the first line of the text and the first non-blank line after each
// "999999".
std::vector<int> IrrBlockSections(std::string_view text);

// The block of `section` as written from the store: header, the nine lists and "999999".
std::vector<std::string> WriteIrrBlock(const SectionDefinitionStore& store, int section);

// Right-justifies a field whose text of up to six characters starts at `firstColumn`: each
// further character moves it one column to the left, up to nine characters.
int RightJustifiedColumn(std::size_t length, int firstColumn);

// The rest of `line` from a 1-based column: blanks up to the column, then the text. A line that
// already reaches the column gets one blank first.
void PutAt(std::string& line, int column, std::string_view text);

// The list entries of the line definition types 1 to 7 ("Straight line between Quarter
// Corners" ...); entry 0 is empty.
const std::array<const char*, 8>& LineTypeEntries();

// The text lines of a .irr, whatever their line ends.
std::vector<std::string> SplitLines(std::string_view text);

}  // namespace tessel
