#pragma once
// The import of an Amended Protraction Diagram (APD) project: the records of .raw that end in
// "999999RPB" are taken out into .apd, each becomes a bearing line and an intersect line of
// .add, and the control import is prepared (apdin.001, temp.bat) for the record tool recpad.
//
// The wizard frmAPDWiz1 (Browse, Finish) and the command "Import APD" (mnuReportsAPD) are here
// without their form; the readers of .raw, .apd and .lot are pure functions of their text.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kApdMenuCaption = "&Amended Protraction Diagram";
inline constexpr const char* kApdCommandCaption = "Import APD";
inline constexpr const char* kApdCaption = "Import APD";
inline constexpr const char* kApdHead = "Amended Protraction Diagram (APD) Wizard";
inline constexpr const char* kApdInstruction =
    "Browse for the project definition file for the APD exported from Plat Drafting software. ";
inline constexpr const char* kApdNameLabel = "Project Name containing APD data";
inline constexpr const char* kApdFilesLabel = "Files found for this APD:";
inline constexpr const char* kApdAnalyzing = "...Analyzing APD raw file";
inline constexpr const char* kApdBuilding = "...Building .add file";
inline constexpr const char* kApdImporting = "...Importing control";
inline constexpr const char* kApdComplete = "APD Import complete.  You may now proceed to boundary transfer.";
inline constexpr const char* kApdRawNotFound = "RAW file not found, check path";
inline constexpr const char* kApdDialogFilter = "Project Definition files|*.def";
inline constexpr const char* kApdDialogTitle = "Select a job to view";
inline constexpr const char* kApdMarker = "999999RPB";
inline constexpr const char* kApdAnswerFile = "apdin.001";
inline constexpr const char* kApdBatchFile = "temp.bat";

// A line of .raw belongs to .apd when, trimmed of blanks, it ends in "999999RPB".
bool IsApdLine(std::string_view line);

// The lines of a text as the readers see them: LF or CR LF ends, a last line without an end
// still counts.
std::vector<std::string> TextLines(std::string_view bytes);

// The split of .raw: the first two lines stay, every further line goes to .apd when it is an APD
// line, otherwise to .raw; all unchanged and in order.
struct ApdSplit {
  std::vector<std::string> raw;
  std::vector<std::string> apd;
};
ApdSplit SplitApdRaw(const std::vector<std::string>& rawLines);

// The bearing of an .apd line: columns 31-38 read as a number, divided by 10000, with the
// picture "##.00000" (all integer digits kept), blanks in front up to 8 characters.
std::string ApdBearingText(std::string_view line);

// The ends of the township line a tie runs to, carried from record to record.
struct TieLine {
  std::string from;
  std::string to;
};
// The tie line chosen by the second identifier (after its rewrite): a township row for "91" to
// "97", then a column line for "01" to "07" in columns 4-5; otherwise `previous`.
TieLine ChooseTieLine(std::string_view second, const TieLine& previous);

// The two .add lines of one .apd record, given the tie line carried so far (updated).
std::vector<std::string> AddLinesForRecord(std::string_view apdLine, TieLine& tie);

// The .add built from the lines of .apd. After each record `lotReadable` is asked whether .lot
// can be opened and has a first line; when it cannot, the build ends with the lines so far. A
// bearing that is no number a double can hold ends it too.
enum class AddBuildEnd { Complete, LotUnreadable, BadBearing };
struct AddBuild {
  std::vector<std::string> lines;
  AddBuildEnd end = AddBuildEnd::Complete;
};
AddBuild BuildAddLines(const std::vector<std::string>& apdLines, const std::function<bool()>& lotReadable);

// The first line of a .lot, which is all the import reads of it; none when the text is empty.
std::optional<std::string> LotFirstLine(std::string_view bytes);

// The seven answers of apdin.001, and temp.bat's text for the scripted run of recpad with them.
std::string ApdAnswerText();
std::string ApdBatchText(const Session& session);

// The file list of the wizard for the project now set: for each of .raw, .con, .sid, .lot its
// name and extension, or its "not found" text. Finish is enabled unless .raw, .con or .sid is
// missing.
struct ApdFiles {
  std::vector<std::string> lines;
  bool finishEnabled = false;
};
ApdFiles ApdFileList(const Session& session);

// "Browse": the job dialog, then the project's identity as File Open makes it (TEMP.JOB
// written), the current folder at the job's folder, and the file list. None when cancelled.
std::optional<ApdFiles> ApdBrowse(Session& session);
// The same from a chosen .def, for tessel-batch and the dialog.
ApdFiles ApdUseProject(Session& session, const std::string& fileName, const std::string& fileTitle);

// "Finish" on the project now set: split (unless .apd exists), build .add, window title and
// support files, apdin.001 and temp.bat (not run), and the closing box. `progress` receives the
// whole progress text after each step. False when a step could not be done, which a box has
// told; the .raw that was split stays whole in .ra2.
bool ApdFinish(Session& session, const std::function<void(const std::string&)>& progress);

// "Import APD" on the open job: split without the .apd guard, write the answers and temp.bat,
// run temp.bat hidden, reread the job and delete temp.bat.
void ImportApdCommand(Session& session);

}  // namespace tessel
