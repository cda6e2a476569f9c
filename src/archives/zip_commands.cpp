#include "archives/zip_commands.h"

#include <filesystem>

#include "archives/zip_archive.h"
#include "datasets/identity.h"
#include "model/paths.h"
#include "model/text.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

std::string Joined(const std::string& folder, const std::string& name) {
  if (folder.empty()) return name;
  const char last = folder.back();
  if (last == '/' || last == PathSeparator()) return folder + name;
  return folder + PathSeparator() + name;
}

}  // namespace

int UnzipCommand(Session& session, const std::string& zipFile, const std::string& target, bool setAsJobFolder,
                 bool convertLf) {
  const Answer answer =
      session.user.Message("Unzip " + zipFile + "\nto folder " + target + "?", Icon::Question, Buttons::YesNo);
  if (answer != Answer::Yes) return -1;
  std::string problem;
  const std::int16_t code = UnzipArchive(zipFile, target, kZipAllItems, convertLf, &problem);
  if (code != kZipOk) session.user.Message(problem, Icon::Stop, Buttons::Ok, kUnzipTitle);
  if (setAsJobFolder) {
    session.user.Message(kUnzipOpenHint);
    std::string folder = target;
    if (!folder.empty() && folder.back() != '/' && folder.back() != PathSeparator()) folder += PathSeparator();
    session.JobFolder = folder;
  }
  return code;
}

std::string UnzipNewFolder(Session& session, const std::string& target) {
  const auto name = session.user.Input(kUnzipNewFolderPrompt, kUnzipTitle);
  if (!name || Trim(*name).empty()) return {};
  const std::string folder = Joined(target, Trim(*name));
  std::error_code error;
  fs::create_directories(folder, error);
  if (error || !fs::is_directory(folder)) {
    session.user.Message("The folder " + folder + " cannot be made.", Icon::Exclamation, Buttons::Ok, kUnzipTitle);
    return {};
  }
  return folder;
}

bool ZipWizardNext(Session& session, bool zipCurrentJob) {
  if (zipCurrentJob && !JobGuard(session)) {
    session.user.Message(kZipNoJob, Icon::Stop);
    return false;
  }
  return true;
}

std::string ZipCurrentDefault(const Session& session) { return session.JobBase + ".zip"; }

std::string ZipCurrentInFolder(const Session& session, const std::string& folder) {
  std::string trimmed = folder;
  while (trimmed.size() > 1 && (trimmed.back() == '/' || trimmed.back() == PathSeparator())) trimmed.pop_back();
  return trimmed + PathSeparator() + session.JobName + ".zip";
}

std::int16_t ZipCurrentJob(Session& session, const std::string& zipFile) {
  return ZipArchive(zipFile, session.JobBase + ".*", session.CurrentFolder);
}

std::string ZipWildcardItem(const std::string& folder, const std::string& pattern) {
  return Joined(folder, pattern);
}

std::string ZipNewFile(const std::string& folder, const std::string& name) { return Joined(folder, name) + ".zip"; }

bool ZipManualFinish(Session& session, const std::string& zipFile, const std::string& items) {
  if (Trim(zipFile).empty()) {
    session.user.Message(kZipManualNoName);
    return false;
  }
  if (Trim(items).empty()) {
    session.user.Message(kZipManualNoItems);
    return false;
  }
  ZipArchive(Trim(zipFile), items, session.CurrentFolder);
  return true;
}

}  // namespace tessel
