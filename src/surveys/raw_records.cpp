#include "surveys/raw_records.h"

#include <exception>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "surveys/print_columns.h"
#include "surveys/weight_rebuild.h"

namespace tessel {

namespace {

constexpr const char* kRawChanged = "RAW file has changed.\r\nUpdate adjustment parameters based upon new values?";
constexpr const char* kSelectFirst = "You must first select a line to edit it.";
constexpr const char* kRawUpdated = "RAW file updated\r\nUpdate weights based upon new SID assignment?";

// The head of .raw: its lines up to the first that trims to "999999", that one included.
std::string RawHead(const std::string& path, const std::string& bytes) {
  LineReader in = LineReader::FromText(bytes);
  std::string head;
  for (;;) {
    if (in.Eof()) throw RuntimeFault(FaultKind::ReadPastEnd, "The file " + path + " has no line 999999.");
    const std::string line = in.ReadLine();
    head += line + "\r\n";
    if (Trim(line) == "999999") return head;
  }
}

// The record of list entry `entry`, 0 when there is none.
int RecordOf(const Session& session, int entry) {
  const Selection& sel = session.selection;
  if (entry < 0 || entry >= static_cast<int>(sel.LineList.size()) || entry > sel.SelectedLines.bound()) return 0;
  const int record = sel.SelectedLines.get(entry);
  return record >= 1 && record <= session.raw.RawLineCount ? record : 0;
}

void RefillLineList(Session& session) {
  Selection& sel = session.selection;
  for (std::size_t i = 0; i < sel.LineList.size(); ++i) {
    if (const int record = RecordOf(session, static_cast<int>(i))) {
      sel.LineList[i] = RawLineText(session.raw.RawLineFields.get(record));
    }
  }
  session.Changed(Change::Selection);
}

void Repaint(Session& session) {
  if (session.display) session.display->RefreshView();
}

// The record the form was loaded from: its own number while it still holds the text it was
// loaded with, else the first record that does; 0 when none does.
int FindEditedRecord(const Session& session, const RawEditForm& form) {
  const RawLineStore& raw = session.raw;
  const auto textOf = [&](int record) { return RawLineText(raw.RawLineFields.get(record)); };
  if (form.record >= 1 && form.record <= raw.RawLineCount && textOf(form.record) == form.recordText) {
    return form.record;
  }
  for (int record = 1; record <= raw.RawLineCount; ++record) {
    if (textOf(record) == form.recordText) return record;
  }
  return 0;
}

}  // namespace

std::string RawLineText(const RawFields& f) {
  return f[1] + " " + f[2] + " " + f[3] + " " + f[4] + " " + f[5] + " " + f[6];
}

std::string RawRecordsText(const RawLineStore& raw) {
  ColumnPrinter p;
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    const RawFields& f = raw.RawLineFields.get(i);
    p.Print(f[1]).Tab(10).Print(f[2]).Tab(17).Print(f[3]).Tab(27).Print(f[4]).Tab(31).Print(f[5]).Tab(40).Print(f[6]);
    p.EndLine();
  }
  p.Print("999998").EndLine();
  return p.Text();
}

void WriteRaw(Session& session) {
  const std::string path = session.DatasetPath(".raw");
  std::string former;
  if (!ReadFileBytes(path, former)) throw RuntimeFault(FaultKind::FileNotFound, "The file " + path + " cannot be read.");
  const std::string head = RawHead(path, former);
  // The former file stands whole in .ra2 before .raw is touched.
  const std::string backup = session.DatasetPath(".ra2");
  WriteFileBytes(backup, former);
  WriteFileBytes(path, head + RawRecordsText(session.raw));
}

bool LoadRawEdit(Session& session, int entry, RawEditForm& form) {
  const int record = RecordOf(session, entry);
  if (record == 0) {
    session.user.Message(kSelectFirst, Icon::Stop);
    return false;
  }
  form = RawEditForm{};
  form.entry = entry;
  form.record = record;
  form.recordText = RawLineText(session.raw.RawLineFields.get(record));
  const RawFields& f = session.raw.RawLineFields.get(record);
  for (int k = 1; k <= 6; ++k) form.fields[static_cast<std::size_t>(k)] = Trim(f[static_cast<std::size_t>(k)]);
  return true;
}

std::vector<std::string> SurveyChoices(const Session& session) {
  std::vector<std::string> names;
  const SurveyStore& store = session.surveys;
  for (int s = 1; s <= store.SurveyCount && s <= store.SurveyTable.bound(); ++s) {
    names.push_back(Mid(store.SurveyTable.get(s).sLine, 2, 18));
  }
  return names;
}

bool SaveRawEdit(Session& session, const RawEditForm& form) {
  const int record = FindEditedRecord(session, form);
  if (record == 0) {
    session.user.Message(kMsgRecordGone, Icon::Exclamation);
    return false;
  }
  bool any = false;
  RawFields f = session.raw.RawLineFields.get(record);
  for (std::size_t k = 1; k <= 6; ++k) {
    if (!form.ticked[k]) continue;
    any = true;
    f[k] = Trim(form.fields[k]);
  }
  if (!any) {
    session.user.Message("Nothing to do!");
    return false;
  }
  if (form.ticked[3]) f[3] = PadLeft(f[3], 8);
  f[5] = PadLeft(f[5], 8);

  RawLineStore& raw = session.raw;
  const RawFields before = raw.RawLineFields.get(record);
  raw.RawLineFields.at(record) = f;
  try {
    WriteRaw(session);
  } catch (const std::exception& fault) {
    raw.RawLineFields.at(record) = before;  // the store keeps what the file holds
    TellFileFault(session.user, fault);
    return false;
  }
  // The list entry of the record shows its new text.
  Selection& sel = session.selection;
  for (std::size_t i = 0; i < sel.LineList.size(); ++i) {
    if (RecordOf(session, static_cast<int>(i)) == record) sel.LineList[i] = RawLineText(f);
  }
  session.Changed(Change::Selection);

  if (session.user.Message(kRawChanged, Icon::Question, Buttons::YesNo) == Answer::Yes) {
    session.user.Status(1, "Please wait");
    session.user.SetPointer(Pointer::Hourglass);
    WeightRebuild(session);
    Repaint(session);
    session.user.SetPointer(Pointer::Default);
  } else {
    ReloadJobFiles(session);
    Repaint(session);
  }
  if (session.ToolMode == ToolMode::PickLines) session.user.Status(1, "Select line(s)");
  return true;
}

bool AskChangeSid(Session& session) {
  return session.user.Message("Change SID assignment for all selected lines?", Icon::Question, Buttons::YesNo) ==
         Answer::Yes;
}

bool SwitchSid(Session& session, const std::string& name) {
  RawLineStore& raw = session.raw;
  const RawLineStore before = raw;
  for (std::size_t i = 0; i < session.selection.LineList.size(); ++i) {
    if (const int record = RecordOf(session, static_cast<int>(i))) raw.RawLineFields.at(record)[6] = name;
  }
  try {
    WriteRaw(session);
  } catch (const std::exception& fault) {
    raw = before;
    TellFileFault(session.user, fault);
    return false;
  }
  RefillLineList(session);
  if (session.user.Message(kRawUpdated, Icon::Question, Buttons::YesNo) == Answer::Yes) {
    WeightRebuild(session);
  } else {
    ReloadJobLineFiles(session);
  }
  Repaint(session);
  RefillLineList(session);
  return true;
}

}  // namespace tessel
