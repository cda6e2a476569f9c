#pragma once
// The "&Lzh Archive Maintenance" commands: the archiver lha started with a command line built
// here, without a shell. A pattern of the command is given as the files it matches, each its own
// argument, so a blank in a folder's name splits nothing. The archiver's end is watched: one
// that could not start, crashed or ended with an exit code other than 0 is told in a box.

#include <cstddef>
#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kLzhMenuCaption = "&Lzh Archive Maintenance";
inline constexpr const char* kLzhExtractCaption = "Extract files from Archive";
inline constexpr const char* kLzhSaveCaption = "Save Archive";
inline constexpr const char* kLzhSaveAsCaption = "Save As (New Archive)";
inline constexpr const char* kLzhFilter = "Archive Files (*.LZH)|*.lzh";
inline constexpr const char* kLzhExtractTitle = "Select an archive to extract";
inline constexpr const char* kLzhExtracted = "Archive Extracted. Use File, Open to view the job";
inline constexpr const char* kLzhSaveAsPrompt = "New .LZH Filename (full path allowed, do not include extension)";
inline constexpr const char* kLzhSaveAsTitle = "Save As New Archive";
inline constexpr const char* kLzhWaitNotice =
    "Tessel has no control of this function, click OK when lha is finished, then close LHA window. Tessel will "
    "then check archive contents and remove any preexisting .lzh files from new archive";

// The archiver: "lha" in ToolFolder in whatever case it stands there (also with ".exe"), else the
// bare "lha", which the system finds on its search path.
std::string LhaProgram(const Session& session);

// The box for an archiver that went wrong: it could not start, crashed, or ended with an exit
// code other than 0; the command is named. Empty for one that ended well.
std::string ArchiverTrouble(const Launch& launch, const SpawnEnd& end);

// "Extract files from Archive": the archive chosen, "<lha> x <file>" spawned hidden in the
// current folder, and at once the box "Archive Extracted. Use File, Open to view the job".
// A cancelled choice ends the command, and so does an archiver that could not start.
void LzhExtract(Session& session);
// The status bar's word once the archiver has written the job's files into `archive`.
std::string LzhArchivedNote(std::size_t files, const std::string& jobName, const std::string& archive);
// "Save Archive": "<lha> u <JobBase>.lzh" and the job's files, JobBase.* by their names in the
// job's folder, run there in a normal window; the archive thus holds the files without their
// folder, and never itself. Nothing without a job; when no file matches, a box and nothing.
void LzhSave(Session& session);
// "Save As (New Archive)": the name asked for; "<lha> a <name>.lzh" and the job's files as for
// Save in a normal window, the notice, then "<lha> d <name>.lzh" and the .lzh files of the job's
// folder (the older archives JobBase.* took in) hidden, both in the job's folder. An empty
// answer ends it, and so does an add that could not start. Returns true when the commands were
// started, so that the form brings the main window to the front.
bool LzhSaveAs(Session& session);

}  // namespace tessel
