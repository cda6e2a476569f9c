#pragma once
// ZIP archives of a job over libzip: testing an archive, extracting it into a folder (with an
// optional LF to CR LF conversion), and adding or replacing files in one.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/progress.h"

namespace tessel {

// The result codes of the archive operations; anything but Ok is a failure.
enum ZipCode : std::int16_t {
  kZipOk = 0,
  kZipCannotOpen = 1,    // the archive is missing, not a ZIP file, or damaged in its directory
  kZipDamaged = 2,       // a member cannot be read back whole (truncated, bad checksum)
  kZipUnsafeName = 3,    // a member's path leaves the target folder
  kZipWriteFailed = 4,   // a file could not be written
  kZipNothingToDo = 5,   // no file matched the item list
  kZipTooLarge = 6,      // a member larger than this program unpacks
  kZipCancelled = 7,     // the user stopped it before anything was written
};

// The largest member extracted; larger ones refuse the archive.
inline constexpr std::uint64_t kZipMemberLimit = std::uint64_t{1} << 31;

// True when a member's name stays inside the folder it is extracted to: not empty, no root or
// drive, no ".." component (either separator counts).
bool ZipNameIsSafe(std::string_view name);

// The name a file is stored under: the path as given, with its root or drive taken off and
// separators written as "/".
std::string ZipMemberName(std::string_view path);

// The names of an item list: separated by blanks; a name in double quotes may hold blanks.
std::vector<std::string> SplitZipItems(const std::string& items);
// A path as the item list holds it: in double quotes when it has a blank.
std::string ZipListItem(const std::string& path);

// A file to add: the name it is stored under (less its root, see ZipMemberName) and the path to
// read.
struct ZipItem {
  std::string given;
  std::string path;
};
// The files of an item list, in order: a name as it stands, a pattern in its last component as
// the matching files of its folder (sorted by name). Relative names are taken in `folder`.
// Names that match nothing are left out. Each is stored as given: the pattern's folder part and
// the matched name.
std::vector<ZipItem> ExpandZipItems(const std::string& items, const std::string& folder);

// LF not preceded by CR becomes CR LF.
std::string LfToCrLf(std::string_view bytes);

// Tests the archive: opens it, checks that every member's name is safe and that every member
// reads back whole. kZipOk, or the code of the first failure with a text saying what failed.
std::int16_t TestZipArchive(const std::string& zipFile, std::string* problem = nullptr);
// The same test on an archive's bytes in memory.
std::int16_t TestZipBytes(std::string_view bytes, std::string* problem = nullptr);

// Tests the archive first; only when the test passes are the members matching `items` (a
// pattern on the member's last component, "*.*" for all) extracted into `destination`, keeping
// their folders and replacing files of the same name. Text members (without a NUL byte) are
// converted LF to CR LF when asked. Each file is written whole or not at all. A cancel is
// heeded while the archive is tested, before the first file is written, and never after.
std::int16_t UnzipArchive(const std::string& zipFile, const std::string& destination, const std::string& items,
                          bool convertLf = false, std::string* problem = nullptr, Progress* progress = nullptr);

// Adds the files to the archive, replacing members of the same name and keeping the others;
// creates the archive when it does not exist. The archive is rewritten whole or not at all. It is
// built in memory, so a cancel, heeded until the new bytes are complete, leaves the file as it
// was (or not there) and nothing beside it.
std::int16_t ZipFiles(const std::string& zipFile, const std::vector<ZipItem>& files, std::string* problem = nullptr,
                      Progress* progress = nullptr);
// The same for the files of an item list (ExpandZipItems); relative items are taken in `folder`.
std::int16_t ZipArchive(const std::string& zipFile, const std::string& items, const std::string& folder = {},
                        std::string* problem = nullptr, Progress* progress = nullptr);

}  // namespace tessel
