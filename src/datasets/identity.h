#pragma once
// The identity of the open job (JobBase, JobFolder, JobName), the marker TEMP.JOB by which the
// suite's tools find the job, the last-folder memory Tessel.hst, and the guard of job commands.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgOpenOrCreateJob = "You must first Open or Create a job.";
inline constexpr const char* kMsgOpenOrCreateProject = "You must first open or create a project";
inline constexpr const char* kMsgOpenProject = "You must first Open a project";

// From the chosen .def: JobBase is the path up to its first "." (of the whole path), JobFolder
// the path less the file title, JobName the title up to its first "." in upper case. Writes
// TEMP.JOB and sets the window title.
void OpenIdentity(Session& session, const std::string& fileName, const std::string& fileTitle);
// The same for the new job wizard's route for an existing job, which upper-cases JobBase too.
void OpenIdentityUpper(Session& session, const std::string& fileName, const std::string& fileTitle);
// The new job wizard: the typed name has no extension, so nothing is cut; all in upper case.
void NewIdentity(Session& session, const std::string& fileName, const std::string& fileTitle);

// Writes Tessel.hst when a job folder is set; a failure is told, naming the file.
void RememberFolder(const Session& session);
// The first folder of the job dialog: the line of Tessel.hst, or ToolFolder.
std::string RecallFolder(const Session& session);

// True when a job is open.
bool JobGuard(const Session& session);
// The guard with its message box, for commands reachable while no job is open.
bool JobGuard(Session& session, const char* message);

// The unit code of the job's .def (its fourth line) sets UnitsPerChain: 1 metres, 2 feet; any
// other code leaves it as it is. A missing .def or a short one is a fault.
void ReadUnitCode(Session& session);

}  // namespace tessel
