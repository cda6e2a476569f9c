#include "archives/lzh_commands.h"

#include "datasets/identity.h"
#include "model/fault.h"
#include "model/paths.h"

namespace tessel {

namespace {

void Spawn(Session& session, const Launch& launch, ShowMode mode) {
  StepOver([&] { session.processes.Spawn(launch, session.CurrentFolder, mode); });
}

}  // namespace

std::string LhaProgram(const Session& session) {
  for (const char* name : {"lha", "lha.exe"}) {
    const std::string path = session.ToolFolder + PathSeparator() + name;
    if (!session.ToolFolder.empty() && FileExistsAnyCase(path)) return ResolveCase(path);
  }
  return "lha";
}

void LzhExtract(Session& session) {
  FileRequest request;
  request.title = kLzhExtractTitle;
  request.filter = kLzhFilter;
  request.initialFolder = session.CurrentFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return;
  Spawn(session, {LhaProgram(session), {"x", choice->fileName}}, ShowMode::Hidden);
  session.user.Message(kLzhExtracted);
}

void LzhSave(Session& session) {
  if (!JobGuard(session)) return;
  Spawn(session, {LhaProgram(session), {"u", session.JobBase + ".lzh", session.JobBase + ".*"}}, ShowMode::Normal);
}

bool LzhSaveAs(Session& session) {
  if (!JobGuard(session)) return false;
  const auto name = session.user.Input(kLzhSaveAsPrompt, kLzhSaveAsTitle);
  if (!name || name->empty()) return false;
  const std::string lha = LhaProgram(session);
  Spawn(session, {lha, {"a", *name + ".lzh", session.JobBase + ".*"}}, ShowMode::Normal);
  session.user.Message(kLzhWaitNotice);
  Spawn(session, {lha, {"d", *name + ".lzh", "*.lzh"}}, ShowMode::Hidden);
  return true;
}

}  // namespace tessel
