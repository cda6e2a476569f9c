#include "model/paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"

namespace fs = std::filesystem;

namespace tessel {

char PathSeparator() { return static_cast<char>(fs::path::preferred_separator); }

std::string ResolveCase(const std::string& path) {
  std::error_code ec;
  if (path.empty() || fs::exists(fs::path(path), ec)) return path;
  const auto cut = path.find_last_of(std::string("/") + PathSeparator());
  const std::string folder = cut == std::string::npos ? std::string() : path.substr(0, cut + 1);
  const std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
  if (name.empty()) return path;
  const std::string wanted = Upper(name);
  std::string best;
  for (fs::directory_iterator it(folder.empty() ? fs::path(".") : fs::path(folder), ec), end; !ec && it != end;
       it.increment(ec)) {
    const std::string candidate = it->path().filename().string();
    if (Upper(candidate) == wanted && (best.empty() || candidate < best)) best = candidate;
  }
  return best.empty() ? path : folder + best;
}

bool FileExistsAnyCase(const std::string& path) {
  std::error_code ec;
  const std::string resolved = ResolveCase(path);
  return !resolved.empty() && fs::is_regular_file(fs::path(resolved), ec);
}

bool DeleteAnyCase(const std::string& path) {
  if (!FileExistsAnyCase(path)) return false;
  std::error_code ec;
  return fs::remove(fs::path(ResolveCase(path)), ec);
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
  fs::path exe = fs::read_symlink("/proc/self/exe", ec);
  if (ec || exe.empty()) exe = fs::absolute(fs::path(argv0 ? argv0 : "."), ec);
  return exe.parent_path().string();
}

}  // namespace tessel
