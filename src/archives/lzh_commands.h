#pragma once
// The "&Lzh Archive Maintenance" commands: the archiver lha started with a command line built
// here. The program has no view of the outcome; the command lines have no quotes, so a blank in
// a name splits it.

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

// "Extract files from Archive": the archive chosen, "<lha> x <file>" spawned hidden in the
// current folder, and at once the box "Archive Extracted. Use File, Open to view the job".
// A cancelled choice ends the command.
void LzhExtract(Session& session);
// "Save Archive": "<lha> u <JobBase>.lzh <JobBase>.*" in a normal window. Nothing without a job.
void LzhSave(Session& session);
// "Save As (New Archive)": the name asked for; "<lha> a <name>.lzh <JobBase>.*" in a normal
// window, the notice, then "<lha> d <name>.lzh *.lzh" hidden. An empty answer ends it. Returns
// true when the commands were started, so that the form brings the main window to the front.
bool LzhSaveAs(Session& session);

}  // namespace tessel
