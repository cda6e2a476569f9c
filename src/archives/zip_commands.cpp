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

// Writes the files into the archive and tells how it went: a failure in a box, the rest in the
// status bar.
std::int16_t WriteArchive(Session& session, const std::string& zipFile, const std::vector<ZipItem>& files,
                          const char* title, Progress* progress) {
  std::error_code error;
  const bool existed = fs::exists(zipFile, error);
  std::string problem;
  const std::int16_t code = ZipFiles(zipFile, files, &problem, progress);
  if (code == kZipCancelled) session.user.Note(ZipCancelledNote(zipFile, existed));
  else if (code != kZipOk) TellAddFailed(session, zipFile, problem, title);
  else session.user.Note(ZipWrittenNote(files.size(), zipFile));
  return code;
}

}  // namespace

std::string ZipCancelledNote(const std::string& zipFile, bool existed) {
  return "ZIP archive cancelled: " + zipFile + (existed ? " was left as it was." : " was not made.");
}

std::string UnzipCancelledNote(const std::string& zipFile) {
  return "Extraction cancelled: nothing was extracted from " + zipFile + ".";
}

int UnzipCommand(Session& session, const std::string& zipFile, const std::string& target, bool setAsJobFolder,
                 bool convertLf, Progress* progress) {
  const Answer answer =
      session.user.Message("Unzip " + zipFile + "\nto folder " + target + "?", Icon::Question, Buttons::YesNo);
  if (answer != Answer::Yes) return -1;
  std::string problem;
  const std::int16_t code = UnzipArchive(zipFile, target, kZipAllItems, convertLf, &problem, progress);
  if (code == kZipCancelled) {
    session.user.Note(UnzipCancelledNote(zipFile));
    return code;
  }
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

std::int16_t ZipCurrentJob(Session& session, const std::string& zipFile, Progress* progress) {
  // The job's files under their names in the job's folder: the archive unpacks into any folder
  // as a job that opens there.
  const std::string pattern = session.JobBase + ".*";
  const PatternFiles job = ExpandPattern(pattern, session.CurrentFolder);
  std::vector<ZipItem> files;
  for (const auto& name : job.names) files.push_back({name, job.Path(name)});
  if (files.empty()) {
    TellAddFailed(session, zipFile, "No file matches " + pattern + ".", kZipCurrentTitle);
    return kZipNothingToDo;
  }
  return WriteArchive(session, zipFile, files, kZipCurrentTitle, progress);
}

std::string ZipWildcardItem(const std::string& folder, const std::string& pattern) {
  return ZipListItem(Joined(folder, pattern));
}

std::string ZipNewFile(const std::string& folder, const std::string& name) { return Joined(folder, name) + ".zip"; }

bool ZipManualFinish(Session& session, const std::string& zipFile, const std::string& items, Progress* progress) {
  if (Trim(zipFile).empty()) {
    session.user.Message(kZipManualNoName);
    return false;
  }
  if (Trim(items).empty()) {
    session.user.Message(kZipManualNoItems);
    return false;
  }
  const std::vector<ZipItem> files = ExpandZipItems(items, session.CurrentFolder);
  if (files.empty()) {
    TellAddFailed(session, Trim(zipFile), "No file matches \"" + items + "\".", kZipWizardTitle);
    return true;
  }
  WriteArchive(session, Trim(zipFile), files, kZipWizardTitle, progress);
  return true;
}

}  // namespace tessel
