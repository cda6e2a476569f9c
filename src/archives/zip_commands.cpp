#include "archives/zip_commands.h"

#include <filesystem>

#include "archives/file_patterns.h"
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

// An add that failed, told in a box naming the archive: it was left as it was, or not made.
void TellAddFailed(Session& session, const std::string& zipFile, const std::string& problem, const char* title) {
  session.user.Message("The ZIP file " + zipFile + " was not written.\n" + problem, Icon::Exclamation, Buttons::Ok,
                       title);
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
  else session.user.Note(zipFile + " unzipped into " + target);
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

std::string ZipWrittenNote(std::size_t files, const std::string& zipFile) {
  return std::to_string(files) + (files == 1 ? " file" : " files") + " zipped into " + zipFile;
}

std::int16_t ZipCurrentJob(Session& session, const std::string& zipFile) {
  // The job's files under their names in the job's folder: the archive unpacks into any folder
  // as a job that opens there.
  const std::string pattern = session.JobBase + ".*";
  const PatternFiles job = ExpandPattern(pattern, session.CurrentFolder);
  std::vector<ZipItem> files;
  for (const auto& name : job.names) files.push_back({name, job.Path(name)});
  std::string problem = "No file matches " + pattern + ".";
  const std::int16_t code = files.empty() ? std::int16_t{kZipNothingToDo} : ZipFiles(zipFile, files, &problem);
  if (code != kZipOk) TellAddFailed(session, zipFile, problem, kZipCurrentTitle);
  else session.user.Note(ZipWrittenNote(files.size(), zipFile));
  return code;
}

std::string ZipWildcardItem(const std::string& folder, const std::string& pattern) {
  return ZipListItem(Joined(folder, pattern));
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
  std::string problem;
  if (ZipArchive(Trim(zipFile), items, session.CurrentFolder, &problem) != kZipOk) {
    TellAddFailed(session, Trim(zipFile), problem, kZipWizardTitle);
  } else {
    session.user.Note(ZipWrittenNote(ExpandZipItems(items, session.CurrentFolder).size(), Trim(zipFile)));
  }
  return true;
}

}  // namespace tessel
