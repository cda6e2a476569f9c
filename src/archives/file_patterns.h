#pragma once
// File name patterns as the archive commands take them: "*" any run, "?" one character, letters
// in either case, matched on a file's name in one folder. The archiver and the ZIP writer are
// given the matching files themselves, never a pattern, since no shell stands between.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// True when the file name matches the pattern: "*" any run, "?" one character, letters in
// either case; "*.*" also matches names without a point, and so does "name.*" the bare name.
bool WildcardMatch(std::string_view pattern, std::string_view name);

// True when the text holds "*" or "?".
bool HasWildcard(std::string_view text);

// The files a pattern names: the names of the regular files whose names match its last
// component, sorted by name, in the folder its other components name; a relative folder (or
// none) is taken in `base`, and an empty `base` is the process's current folder. A folder that
// cannot be read matches nothing.
struct PatternFiles {
  std::string folder;    // the pattern's folder part as written, with its separator; empty for none
  std::string location;  // where the names were looked for: `folder` taken in `base`
  std::vector<std::string> names;

  // A found name with the folder it was found in.
  std::string Path(const std::string& name) const;
};
PatternFiles ExpandPattern(const std::string& pattern, const std::string& base = {});

}  // namespace tessel
