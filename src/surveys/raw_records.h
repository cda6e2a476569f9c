#pragma once
// The record lines of .raw as data: the writer (the former file kept as .ra2), the one-line
// editor frmEditRawData, and the commands of frmSelectedLines that change records.

#include <array>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kLinesFormName = "frmSelectedLines";

// A record as the line list shows it: the six fields joined by one blank.
std::string RawLineText(const RawFields& fields);

// The record section as written: each record's fields at columns 1, 10, 17, 27, 31 and 40 by
// tabulation, then "999998".
std::string RawRecordsText(const RawLineStore& raw);

// Replaces .raw from the store: the former file becomes .ra2, its head (to the first line that
// trims to "999999", that line included) is copied, then the records. A file without "999999"
// is malformed: nothing is written and the fault names it. Faults name the file; .raw is then
// as it was.
void WriteRaw(Session& session);

// frmEditRawData: the six typed fields (1 to 6, index 0 unused) and their tick boxes.
struct RawEditForm {
  std::array<std::string, 7> fields;
  std::array<bool, 7> ticked{};
  // The position in the line list of the record being edited, the record, and its text then, by
  // which a save finds it again when the list or the records changed meanwhile.
  int entry = -1;
  int record = 0;
  std::string recordText;
};

inline constexpr const char* kMsgRecordGone =
    "The record line being edited is no longer in the record file as it was loaded (the records were read or "
    "written again meanwhile). Nothing was saved; choose the line again.";

// "Edit Line": the form filled from entry `entry` of the line list, every box clear. Without such
// an entry the user is told to choose one, and false.
bool LoadRawEdit(Session& session, int entry, RawEditForm& form);

// The survey choices of the form: columns 2-19 of each stored S line.
std::vector<std::string> SurveyChoices(const Session& session);

// OK of frmEditRawData. False when the form stays open ("Nothing to do!" or a failed write,
// told to the user); true when the record was stored and written, the list entry replaced and
// the rebuild question answered.
bool SaveRawEdit(Session& session, const RawEditForm& form);

// "Change SID": the question; true when frmSwitchSID is to open.
bool AskChangeSid(Session& session);
// OK of frmSwitchSID: every selected record takes `name`, .raw is written, the list shown anew
// and the rebuild asked for. False when .raw could not be written (the user has been told).
bool SwitchSid(Session& session, const std::string& name);

}  // namespace tessel
