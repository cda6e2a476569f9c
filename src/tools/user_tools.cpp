#include "tools/user_tools.h"

#include <exception>

#include "model/paths.h"
#include "model/tool_log.h"

namespace tessel {

namespace {

// The configured program as the file system finds it: a relative path in the current folder.
std::string ProgramPath(const Session& session, const std::string& path) {
  if (path.empty() || IsRootedPath(path) || session.CurrentFolder.empty()) return path;
  const char last = session.CurrentFolder.back();
  const bool ended = last == '/' || last == PathSeparator();
  return session.CurrentFolder + (ended ? "" : std::string(1, PathSeparator())) + path;
}

// Starts user entry k when its path names an existing file; otherwise the box `message`.
void StartUserEntry(Session& session, int k, const char* message) {
  const std::string program = ProgramPath(session, session.config.ToolButton[static_cast<std::size_t>(k - 1)].path);
  if (program.empty() || !FileExistsAnyCase(program)) {
    session.user.Message(message);
    return;
  }
  try {
    session.processes.Spawn({ResolveCase(program), {}}, session.CurrentFolder, ShowMode::Normal);
  } catch (const std::exception&) {
    // A program that does not start shows nothing.
  }
}

}  // namespace

void ToolboxClick(Session& session, int k) {
  if (k < 1 || k > 12) return;
  StartUserEntry(session, k, kMsgSetupToolbox);
}

void ToolbarUserClick(Session& session, int k) {
  if (k < 1 || k > 10) return;
  StartUserEntry(session, k, kMsgSetupToolbar);
}

void ToolbarBat(Session& session) {
  if (session.JobBase.empty()) return;
  // Nothing runs without the file; the status bar says which file was looked for.
  if (!session.DatasetExists(".bat")) {
    session.user.Note("No batch file " + session.JobName + ".bat in the job's folder: nothing was run");
    return;
  }
  try {
    const std::size_t before = session.toolLog.Total();
    session.processes.Spawn({session.DatasetPath(".bat"), {}}, session.CurrentFolder, ShowMode::Normal);
    // A start that failed has its own notice from the launch.
    const bool started = session.toolLog.Total() == before || !LaunchNotStarted(session.toolLog.entries.back());
    if (started) session.user.Note(session.JobName + ".bat started (see View > Tool Log)");
  } catch (const std::exception&) {
    // Nothing is shown.
  }
}

}  // namespace tessel
