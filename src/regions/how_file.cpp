#include "regions/how_file.h"

#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

bool IsRegionKeyword(std::string_view row) { return row == kKeywordFixed || row == kKeywordNorel; }

std::vector<std::string> ParseHowListing(std::string_view bytes) {
  std::vector<std::string> rows;
  std::size_t start = 0;
  while (start < bytes.size()) {
    std::size_t end = bytes.find('\n', start);
    const std::size_t next = end == std::string_view::npos ? bytes.size() : end + 1;
    if (end == std::string_view::npos) end = bytes.size();
    std::string_view line = bytes.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    if (!TrimView(line).empty()) rows.emplace_back(line);
    start = next;
  }
  return rows;
}

std::string HowListingText(const std::vector<std::string>& rows) {
  std::string text;
  for (const std::string& row : rows) {
    if (TrimView(row).empty()) continue;
    text += row;
    text += "\r\n";
  }
  return text;
}

bool ReadHowListing(const std::string& path, std::vector<std::string>& rows) {
  rows.clear();
  std::string bytes;
  if (!ReadFileBytes(ResolveCase(path), bytes)) return false;
  rows = ParseHowListing(bytes);
  return true;
}

bool RowHasFolder(std::string_view row) {
  return row.find('\\') != std::string_view::npos || row.find('/') != std::string_view::npos ||
         row.find(PathSeparator()) != std::string_view::npos;
}

std::string RowProjectName(std::string_view row) {
  std::size_t at = row.size();
  while (at > 0) {
    const char c = row[at - 1];
    if (c == '\\' || c == '/' || c == PathSeparator()) break;
    --at;
  }
  return std::string(row.substr(at));
}

}  // namespace tessel
