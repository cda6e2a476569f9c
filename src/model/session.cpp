#include "model/session.h"

#include "model/paths.h"

namespace tessel {

namespace {
// A relative name is taken in the current folder, as the file system would.
std::string InFolder(const std::string& folder, const std::string& name) {
  if (IsRootedPath(name) || folder.empty()) return name;
  std::string joined = folder;
  if (joined.back() != '/' && joined.back() != PathSeparator()) joined += PathSeparator();
  return joined + name;
}
}  // namespace

std::string Session::DatasetPath(std::string_view extension) const {
  return ResolveCase(InFolder(CurrentFolder, JobBase + std::string(extension)));
}

bool Session::DatasetExists(std::string_view extension) const {
  return FileExistsAnyCase(DatasetPath(extension));
}

std::string Session::JobFile(std::string_view name) const {
  return ResolveCase(InFolder(CurrentFolder, JobFolder + std::string(name)));
}

std::string Session::ToolFile(std::string_view name) const {
  return ResolveCase(ToolFolder + PathSeparator() + std::string(name));
}

// On Windows also in another case: the tool folder's master copies must never be taken for a
// job's copies and deleted.
bool Session::JobInToolFolder() const { return SamePathText(JobFolder, ToolFolder + PathSeparator()); }

}  // namespace tessel
