#include "model/paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "model/fault.h"
#include "model/platform.h"
#include "model/text.h"
#include "model/text_file.h"

namespace fs = std::filesystem;

namespace tessel {

char PathSeparator() { return static_cast<char>(fs::path::preferred_separator); }

std::string ResolveCase(const std::string& path) {
  std::error_code ec;
  if (path.empty()) return path;
  const auto cut = path.find_last_of(std::string("/") + PathSeparator());
  const std::string folder = cut == std::string::npos ? std::string() : path.substr(0, cut + 1);
  const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
  if (fs::exists(NativePath(path), ec)) {
    // Where names ignore case any spelling exists; the folder's own is the one to use.
    const bool plainName = !name.empty() && name != "." && name != ".." && name.back() != ':';
    const std::string stored = plainName ? StoredName(path) : std::string();
    return stored.empty() ? path : folder + stored;
  }
  if (name.empty()) return path;
  const std::string wanted = Upper(name);
  std::string best;
  for (fs::directory_iterator it(folder.empty() ? fs::path(".") : NativePath(folder), ec), end; !ec && it != end;
       it.increment(ec)) {
    const std::string candidate = PathBytes(it->path().filename());
    if (Upper(candidate) == wanted && (best.empty() || candidate < best)) best = candidate;
  }
  return best.empty() ? path : folder + best;
}

bool FileExistsAnyCase(const std::string& path) {
  std::error_code ec;
  const std::string resolved = ResolveCase(path);
  return !resolved.empty() && fs::is_regular_file(NativePath(resolved), ec);
}

bool DeleteAnyCase(const std::string& path) {
  if (!FileExistsAnyCase(path)) return false;
  std::error_code ec;
  return fs::remove(NativePath(ResolveCase(path)), ec);
}

void CopyFileReplacing(const std::string& from, const std::string& to) {
  std::string bytes;
  if (!FileExistsAnyCase(from) || !ReadFileBytes(ResolveCase(from), bytes)) {
    throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + from);
  }
  // The copy is written whole or not at all, like every other file.
  WriteFileBytes(ResolveCase(to), bytes);
}

std::string ProgramFolder(const char* argv0) {
  std::error_code ec;
  fs::path exe = NativePath(RunningProgramPath());
  if (exe.empty()) exe = fs::absolute(NativePath(argv0 ? argv0 : "."), ec);
  return PathBytes(exe.parent_path());
}

bool IsRootedPath(const std::string& path) {
  const fs::path p = NativePath(path);
  return p.has_root_directory() || p.has_root_name();
}

bool SamePathText(const std::string& a, const std::string& b) {
  if (!FileNamesIgnoreCase()) return a == b;
  const auto plain = [](std::string path) {
    for (char& c : path) {
      if (c == '/') c = '\\';
    }
    return Upper(path);
  };
  return plain(a) == plain(b);
}

}  // namespace tessel
