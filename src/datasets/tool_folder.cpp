#include "datasets/tool_folder.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

#include "datasets/support_files.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/text_file.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// The value of a variable that names an absolute folder; empty otherwise.
std::string AbsoluteValue(const EnvironmentLookup& environment, const char* name) {
  const char* value = environment(name);
  if (value == nullptr || *value == '\0' || !NativePath(value).is_absolute()) return {};
  return value;
}

std::string Joined(std::string folder, const std::string& name) {
  while (folder.size() > 1 && (folder.back() == '/' || folder.back() == PathSeparator())) folder.pop_back();
  return folder + PathSeparator() + name;
}

// True when a file can be made in the folder: the only test of the user's right to write that
// the standard library offers on every platform. The probe is removed at once.
bool FolderWritable(const fs::path& folder) {
  std::random_device random;
  const fs::path probe = folder / (".tessel-probe-" + std::to_string(random()));
  {
    std::ofstream out(probe, std::ios::binary);
    if (!out) return false;
  }
  std::error_code ec;
  fs::remove(probe, ec);
  return true;
}

}  // namespace

std::string UserToolFolder(const EnvironmentLookup& environment) {
  if (std::string data = AbsoluteValue(environment, "XDG_DATA_HOME"); !data.empty()) return Joined(data, "tessel");
  if (std::string local = AbsoluteValue(environment, "LOCALAPPDATA"); !local.empty()) return Joined(local, "Tessel");
  if (std::string home = AbsoluteValue(environment, "HOME"); !home.empty()) {
    return Joined(Joined(Joined(home, ".local"), "share"), "tessel");
  }
  return {};
}

bool InstalledProgramFolder(const std::string& programFolder) {
  std::error_code ec;
  const fs::path folder = fs::absolute(NativePath(programFolder), ec).lexically_normal();
  const fs::path name = folder.has_filename() ? folder.filename() : folder.parent_path().filename();
  const fs::path prefix = folder.has_filename() ? folder.parent_path() : folder.parent_path().parent_path();
  if (name == "bin" && fs::is_directory(prefix / "share" / "tessel", ec)) return true;
  return !FolderWritable(folder);
}

ToolFolderChoice ChooseToolFolder(const std::string& programFolder, const EnvironmentLookup& environment) {
  if (!InstalledProgramFolder(programFolder)) return {programFolder, {}};
  ToolFolderChoice choice{UserToolFolder(environment), {}};
  if (choice.folder.empty()) {
    return {programFolder, "No folder of your own for Tessel's settings: HOME is not set. Using " + programFolder};
  }
  std::error_code ec;
  fs::create_directories(NativePath(choice.folder), ec);
  if (ec || !fs::is_directory(NativePath(choice.folder), ec)) {
    choice.problem = "Cannot create the folder " + choice.folder + " for Tessel's settings and tools";
    return choice;
  }
  // The master copies, which the route for an existing job copies into a job folder. One the
  // user has put there, in whatever case, stays.
  for (const char* name : kSupportFiles) {
    const std::string path = Joined(choice.folder, name);
    if (FileExistsAnyCase(path)) continue;
    try {
      WriteFileBytes(path, SupportFileText(name));
    } catch (const std::exception& fault) {
      choice.problem = fault.what();
      break;
    }
  }
  return choice;
}

}  // namespace tessel
