#pragma once
// The "&Zip Maintenance" commands: extracting an archive (frmUnzip) and the wizard that creates
// or updates one (frmZipWiz1 to frmZipWiz3, frmSelectZip, frmZipNew). The forms show and
// forward; the texts and rules are here.

#include <cstddef>
#include <cstdint>
#include <string>

#include "model/progress.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kZipMenuCaption = "&Zip Maintenance";
inline constexpr const char* kZipExtractCaption = "E&xtract files from a ZIP archive";
inline constexpr const char* kZipCreateCaption = "&Create or Update ZIP archive";
inline constexpr const char* kZipPattern = "*.zip";
inline constexpr const char* kZipAllItems = "*.*";

inline constexpr const char* kUnzipTitle = "Extract .Zip file";
inline constexpr const char* kUnzipNewFolderPrompt = "Enter a name for the new folder";
inline constexpr const char* kUnzipOpenHint = "Choose File, Open to view this job";

inline constexpr const char* kZipWizardTitle = "ZIP File Wizard";
inline constexpr const char* kZipWizardNote =
    "NOTE:    If the ZIP file already exists, the files will be either added into that ZIP file, or replaced "
    "(overwritten) if a file of the same name is already in it.";
inline constexpr const char* kZipNoJob = "No job is open";
inline constexpr const char* kZipCurrentTitle = "ZIP Current job";
inline constexpr const char* kZipManualNoName = "You must supply a zip file name";
inline constexpr const char* kZipManualNoItems = "You must select files to include";
inline constexpr const char* kZipWildcardPrompt = "Add files using wildcards eg) *.*";
inline constexpr const char* kSelectZipTitle = "Select zip file";
inline constexpr const char* kZipNewTitle = "New Zip File";

// Extract: the Yes/No box "Unzip <zip>" / "to folder <folder>?"; on Yes the archive is tested
// and extracted with "*.*". A refused archive is named in a box with what was wrong. Then, with
// `setAsJobFolder`, "Choose File, Open to view this job" and JobFolder becomes the target
// (whether or not the extraction worked), so that the next Open starts there. Returns the
// archive's result code, or -1 when the user said No. A cancel while the archive is tested
// extracts nothing and says so in the status bar, and leaves JobFolder as it was.
int UnzipCommand(Session& session, const std::string& zipFile, const std::string& target, bool setAsJobFolder,
                 bool convertLf, Progress* progress = nullptr);

// The folder made by "New folder" inside the chosen target; empty when the input was cancelled
// or empty, or the folder could not be made (which is said in a box).
std::string UnzipNewFolder(Session& session, const std::string& target);

// frmZipWiz1's "Next -->": with "Zip current job" and no job open, the stop box "No job is
// open" and false (the form switches to the manual option).
bool ZipWizardNext(Session& session, bool zipCurrentJob);

// frmZipWiz2: the field starts with JobBase and ".zip"; a folder clicked gives that folder, a
// separator, JobName and ".zip".
std::string ZipCurrentDefault(const Session& session);
std::string ZipCurrentInFolder(const Session& session, const std::string& folder);
// "Finish": the job's files, JobBase and ".*", into the archive, each under its name in the
// job's folder (so that the archive unpacks into any folder as a job that opens there). An add
// that fails is told in a box naming the archive, one that went well or was cancelled in the
// status bar. Returns the result code.
std::int16_t ZipCurrentJob(Session& session, const std::string& zipFile, Progress* progress = nullptr);

// The status bar's word for an archive written with `files` files.
std::string ZipWrittenNote(std::size_t files, const std::string& zipFile);
// The status bar's word for an archive whose writing was cancelled: an archive that was there is
// as it was, one that was not is not made.
std::string ZipCancelledNote(const std::string& zipFile, bool existed);
// The status bar's word for an extraction cancelled while the archive was tested.
std::string UnzipCancelledNote(const std::string& zipFile);

// frmZipWiz3: "Use wildcards" adds folder, separator and pattern, in double quotes when the
// folder has a blank (see ZipListItem); frmZipNew gives folder, separator, name and ".zip".
std::string ZipWildcardItem(const std::string& folder, const std::string& pattern);
std::string ZipNewFile(const std::string& folder, const std::string& name);
// The finish button: both a ZIP name and items, or the matching box and false. Runs the add
// when both are there, the names stored as given; an add that fails is told in a box naming the
// archive, and the page closes all the same; a cancel is told in the status bar.
bool ZipManualFinish(Session& session, const std::string& zipFile, const std::string& items,
                     Progress* progress = nullptr);

}  // namespace tessel
