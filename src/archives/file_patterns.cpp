#include "archives/file_patterns.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "model/paths.h"
#include "model/platform.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

char Lower(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

}  // namespace

bool WildcardMatch(std::string_view pattern, std::string_view name) {
  if (pattern == "*.*" || pattern == "*") return true;
  // Iterative match with one backtrack point for the last "*".
  std::size_t p = 0, n = 0, star = std::string_view::npos, mark = 0;
  while (n < name.size()) {
    if (p < pattern.size() && (pattern[p] == '?' || Lower(pattern[p]) == Lower(name[n]))) {
      ++p;
      ++n;
    } else if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      mark = n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++mark;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  // "name.*" also matches "name" without a point.
  if (p + 2 == pattern.size() && pattern[p] == '.' && pattern[p + 1] == '*') return true;
  return p == pattern.size();
}

bool HasWildcard(std::string_view text) { return text.find_first_of("*?") != std::string_view::npos; }

std::string PatternFiles::Path(const std::string& name) const {
  if (location.empty()) return name;
  return PathBytes(NativePath(location) / NativePath(name));
}

PatternFiles ExpandPattern(const std::string& pattern, const std::string& base) {
  PatternFiles found;
  const std::size_t cut = pattern.find_last_of(std::string("/") + PathSeparator());
  const std::string last = cut == std::string::npos ? pattern : pattern.substr(cut + 1);
  if (cut != std::string::npos) found.folder = pattern.substr(0, cut + 1);
  if (found.folder.empty()) {
    found.location = base;
  } else if (base.empty() || NativePath(found.folder).is_absolute()) {
    found.location = found.folder;
  } else {
    found.location = PathBytes(NativePath(base) / NativePath(found.folder));
  }
  std::error_code error;
  const fs::path dir = found.location.empty() ? fs::path(".") : NativePath(found.location);
  for (fs::directory_iterator it(dir, error), stop; !error && it != stop; it.increment(error)) {
    std::error_code kind;
    if (!it->is_regular_file(kind)) continue;
    const std::string name = PathBytes(it->path().filename());
    if (WildcardMatch(last, name)) found.names.push_back(name);
  }
  std::sort(found.names.begin(), found.names.end());
  return found;
}

}  // namespace tessel
