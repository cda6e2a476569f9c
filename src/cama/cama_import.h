#pragma once
// Import of the assessor's CAMA database: the rows of the open job's township, chosen by the
// township-and-range code in columns 202-209, appended byte for byte to the job's .cama in the
// database's order. The database is read once, one line in hand.

#include <array>
#include <string>

#include "model/progress.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgCamaAppend = "Township.cama file exists, do you wish to append?";
inline constexpr const char* kStatusBuildingCama = "Please wait, building twp CAMA file";
inline constexpr const char* kCamaChooserTitle = "Select the CAMA database file";
inline constexpr const char* kCamaChooserFilter = "All files |*.*";
inline constexpr const char* kCamaReadingStep = "Reading the CAMA database";

// The status bar's word when the user stopped the import: .cama is as it was.
std::string CamaImportCancelledText(const std::string& camaPath);

// The six fields of frmQueryTwp in their order: township number, its fractional code, its
// direction, range number, its fractional code, its direction.
using TownshipQuery = std::array<std::string, 6>;

// The fields' defaults from JobName: columns 2-3, "0", column 4, columns 6-7, "0", column 8.
TownshipQuery DefaultTownshipQuery(const std::string& jobName);
// The query string: the six fields as they stand, neither padded nor trimmed.
std::string QueryCode(const TownshipQuery& fields);

struct CamaFilterResult {
  bool opened = false;       // the database could be read
  long long lines = 0;       // lines read
  long long matched = 0;     // lines appended
  std::string rows;          // the matched lines, each with CR LF
  bool cancelled = false;    // the user stopped the pass; nothing of it is to be written
};

// One pass over the database: every line whose columns 202-209 (shorter when the line ends
// first) equal `code` exactly. Lines end in LF or CR LF; a last line without an end counts.
// `progress` hears of each part read and may stop the pass between parts.
CamaFilterResult FilterCamaDatabase(const std::string& databasePath, const std::string& code,
                                    Progress* progress = nullptr);

// "Import CAMA file", up to the dialog: with a .cama present asks whether to append; false when
// the answer is No and the dialog is not to open.
bool CamaImportBegin(Session& session);
// "OK" of frmQueryTwp: the status text, the file chooser, the filter, the status text again.
// False when the chooser was cancelled or the database or .cama could not be read or written
// (the user told, .cama as it was). A cancel asked through `progress` while the database is read
// leaves .cama as it was and says so in the status bar; once .cama is being written it is not
// asked again.
bool CamaImportQuery(Session& session, const TownshipQuery& fields, Progress* progress = nullptr);
// The same without the chooser: the database is given. Used by tessel-batch.
// `appended`, when given, gets the number of rows appended.
bool CamaImportFrom(Session& session, const std::string& code, const std::string& databasePath,
                    long long* appended = nullptr, Progress* progress = nullptr);

}  // namespace tessel
