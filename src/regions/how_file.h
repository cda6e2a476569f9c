#pragma once
// The region listing .how: one entry a line, in the tools' input order, each a project (its .def
// path without extension, or its bare name) or one of the keywords FIXED and NOREL. Lines that
// are blank after trimming are dropped when the file is read and when it is written.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

inline constexpr const char* kKeywordFixed = "FIXED";
inline constexpr const char* kKeywordNorel = "NOREL";

// True for a row that is exactly one of the two keywords.
bool IsRegionKeyword(std::string_view row);

// The rows of a listing's bytes: lines split at LF (a CR before it is dropped), each kept as it
// stands unless it is blank after trimming. Any bytes give rows; nothing fails.
std::vector<std::string> ParseHowListing(std::string_view bytes);
// The bytes of a listing: every row that is not blank after trimming, each ended with CR LF.
std::string HowListingText(const std::vector<std::string>& rows);

// Reads the listing at path; false (and no rows) when it cannot be read.
bool ReadHowListing(const std::string& path, std::vector<std::string>& rows);

// True when the row names a folder (holds a path separator of either kind).
bool RowHasFolder(std::string_view row);
// The last component of a row: the project's name.
std::string RowProjectName(std::string_view row);

}  // namespace tessel
