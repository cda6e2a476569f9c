#include "archives/lzh_commands.h"

#include <filesystem>
#include <vector>

#include "archives/file_patterns.h"
#include "datasets/identity.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/platform.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// Starts the archiver; its end is told in a box when it went wrong, and by `done` in the status
// bar when it went well. False when it could not start, which is told at once.
bool StartArchiver(Session& session, const Launch& launch, const std::string& folder, ShowMode mode,
                   const std::string& done = {}) {
  bool started = false;
  StepOver([&] {
    started = session.processes.SpawnReported(launch, folder, mode, [&session, launch, done](const SpawnEnd& end) {
      const std::string trouble = ArchiverTrouble(launch, end);
      if (!trouble.empty()) session.user.Message(trouble, Icon::Exclamation);
      else if (!done.empty()) session.user.Note(done);
    });
  });
  return started;
}

// The files a pattern names for the archiver, the archive being written left out: an archive
// never holds itself.
PatternFiles ArchiverFiles(const std::string& pattern, const std::string& base, const std::string& archive) {
  PatternFiles found = ExpandPattern(pattern, base);
  const fs::path written = NativePath(archive).is_absolute() || found.location.empty()
                               ? NativePath(archive)
                               : NativePath(found.location) / NativePath(archive);
  std::erase_if(found.names, [&](const std::string& name) {
    std::error_code error;
    return fs::equivalent(NativePath(found.Path(name)), written, error);
  });
  return found;
}

// The launch of `command` on the archive with the names after it.
Launch ArchiverLaunch(const Session& session, const char* command, const std::string& archive,
                      const std::vector<std::string>& names) {
  Launch launch{LhaProgram(session), {command, archive}};
  launch.arguments.insert(launch.arguments.end(), names.begin(), names.end());
  return launch;
}

// The job's files for the archive: JobBase.* as names in the job's folder. False, with a box,
// when none is there.
bool JobFiles(Session& session, const std::string& archive, PatternFiles& job) {
  job = ArchiverFiles(session.JobBase + ".*", session.CurrentFolder, archive);
  if (!job.names.empty()) return true;
  session.user.Message("No file matches " + session.JobBase + ".*; nothing was archived.", Icon::Exclamation);
  return false;
}

}  // namespace

std::string LhaProgram(const Session& session) {
  for (const char* name : {"lha", "lha.exe"}) {
    const std::string path = session.ToolFolder + PathSeparator() + name;
    if (!session.ToolFolder.empty() && FileExistsAnyCase(path)) return ResolveCase(path);
  }
  return "lha";
}

std::string ArchiverTrouble(const Launch& launch, const SpawnEnd& end) {
  if (!end.started) {
    return "The archiver could not be started (" + (end.reason.empty() ? std::string("not found") : end.reason) +
           "):\n" + launch.Text();
  }
  if (end.crashed) return "The archiver ended abnormally:\n" + launch.Text();
  if (end.exitCode != 0) {
    return "The archiver ended with exit code " + std::to_string(end.exitCode) + ":\n" + launch.Text();
  }
  return {};
}

std::string LzhArchivedNote(std::size_t files, const std::string& jobName, const std::string& archive) {
  return std::to_string(files) + (files == 1 ? " file" : " files") + " of " + jobName + " archived in " + archive;
}

void LzhExtract(Session& session) {
  FileRequest request;
  request.title = kLzhExtractTitle;
  request.filter = kLzhFilter;
  request.initialFolder = session.CurrentFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return;
  if (!StartArchiver(session, {LhaProgram(session), {"x", choice->fileName}}, session.CurrentFolder,
                     ShowMode::Hidden)) {
    return;
  }
  session.user.Message(kLzhExtracted);
}

void LzhSave(Session& session) {
  if (!JobGuard(session)) return;
  const std::string archive = session.JobBase + ".lzh";
  PatternFiles job;
  if (!JobFiles(session, archive, job)) return;
  StartArchiver(session, ArchiverLaunch(session, "u", archive, job.names), job.location, ShowMode::Normal,
                LzhArchivedNote(job.names.size(), session.JobName, archive));
}

bool LzhSaveAs(Session& session) {
  if (!JobGuard(session)) return false;
  const auto name = session.user.Input(kLzhSaveAsPrompt, kLzhSaveAsTitle);
  if (!name || name->empty()) return false;
  const std::string archive = *name + ".lzh";
  PatternFiles job;
  if (!JobFiles(session, archive, job)) return false;
  if (!StartArchiver(session, ArchiverLaunch(session, "a", archive, job.names), job.location, ShowMode::Normal,
                     LzhArchivedNote(job.names.size(), session.JobName, archive))) {
    return false;
  }
  session.user.Message(kLzhWaitNotice);
  // The archives lying in the job's folder, where the archiver took the job's files from: an
  // older one that JobBase.* took in comes out of the new archive.
  const PatternFiles older = ArchiverFiles("*.lzh", job.location, archive);
  StartArchiver(session, ArchiverLaunch(session, "d", archive, older.names), job.location, ShowMode::Hidden);
  return true;
}

}  // namespace tessel
