#include "datasets/identity.h"

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

std::string FolderOf(const std::string& fileName, const std::string& fileTitle) {
  return fileTitle.size() <= fileName.size() ? fileName.substr(0, fileName.size() - fileTitle.size()) : std::string();
}

std::string UpToFirstPoint(const std::string& text) { return text.substr(0, text.find('.')); }

// The steps shared by every way of making the identity.
void Finish(Session& session) {
  session.RegionJobFolder = session.JobFolder;
  session.RegionJobName = session.JobName;
  // A folder that cannot be written still opens; the user learns that the tools will not find
  // the job.
  WriteFileOrTell(session.user, session.JobFile("TEMP.JOB"), session.JobName + "\r\n", Durability::Scratch);
  session.user.SetTitle("Tessel " + session.JobBase);
}

}  // namespace

void OpenIdentity(Session& session, const std::string& fileName, const std::string& fileTitle) {
  session.JobBase = UpToFirstPoint(fileName);
  session.JobFolder = FolderOf(fileName, fileTitle);
  session.JobName = Upper(UpToFirstPoint(fileTitle));
  Finish(session);
}

void OpenIdentityUpper(Session& session, const std::string& fileName, const std::string& fileTitle) {
  session.JobBase = Upper(UpToFirstPoint(fileName));
  session.JobFolder = FolderOf(fileName, fileTitle);
  session.JobName = Upper(UpToFirstPoint(fileTitle));
  Finish(session);
}

void NewIdentity(Session& session, const std::string& fileName, const std::string& fileTitle) {
  session.JobBase = Upper(fileName);
  session.JobFolder = FolderOf(fileName, fileTitle);
  session.JobName = Upper(fileTitle);
  Finish(session);
}

void RememberFolder(const Session& session) {
  if (session.JobFolder.empty()) return;
  WriteFileOrTell(session.user, session.ToolFile("Tessel.hst"), session.JobFolder + "\r\n");
}

std::string RecallFolder(const Session& session) {
  std::string folder;
  try {
    LineReader in(session.ToolFile("Tessel.hst"));
    folder = in.ReadLine();
  } catch (const RuntimeFault&) {
    folder.clear();
  }
  return folder.empty() ? session.ToolFolder : folder;
}

bool JobGuard(const Session& session) { return !session.JobBase.empty(); }

bool JobGuard(Session& session, const char* message) {
  if (JobGuard(session)) return true;
  session.user.Message(message);
  return false;
}

void ReadUnitCode(Session& session) {
  LineReader def(session.DatasetPath(".def"));
  std::string line;
  for (int i = 0; i < 4; ++i) line = def.ReadLine();
  const double code = Val(Trim(line));
  if (code == 1) {
    session.UnitsPerChain = static_cast<float>(66.0 / 3.2808333333);
  } else if (code == 2) {
    session.UnitsPerChain = 66.0f;
  }
}

}  // namespace tessel
