#include "surveys/survey_editor.h"

#include <algorithm>
#include <exception>
#include <set>

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"
#include "surveys/raw_records.h"
#include "surveys/survey_file.h"
#include "surveys/weight_rebuild.h"

namespace tessel {

namespace {

constexpr int kListWidth = 42;
constexpr unsigned kYellow = 0xFFFF00;

template <std::size_t N>
std::string ChoiceText(const std::array<const char*, N>& list, int index) {
  return index >= 0 && index < static_cast<int>(N) ? list[static_cast<std::size_t>(index)] : std::string();
}

bool HasSurvey(const Session& session, int entry) {
  const SurveyStore& store = session.surveys;
  return entry >= 0 && entry < store.SurveyCount && entry < store.SurveyTable.bound();
}

std::string EntryText(const Session& session, int entry) {
  return HasSurvey(session, entry) ? Left(session.surveys.SurveyTable.get(entry + 1).sLine, kListWidth) : std::string();
}

struct BuiltBlock {
  SurveyBlock block;
  // The S line's values before padding, for the test of a new survey.
  std::string constant, ppm, seconds;
};

BuiltBlock BuildBlock(const Session& session, const SidForm& form) {
  const std::string entry = EntryText(session, form.entry);
  const auto value = [&](int box, const std::string& field, int column, int width) {
    return form.ticked[static_cast<std::size_t>(box)] ? Trim(field) : Trim(Mid(entry, column, width));
  };
  BuiltBlock built;
  SurveyBlock& b = built.block;
  b.name = Left(value(kBoxName, form.name, 2, kSurveyNameWidth), kSurveyNameWidth);
  built.constant = value(kBoxConstant, form.constant, 20, 7);
  built.ppm = value(kBoxPpm, form.ppm, 27, 8);
  built.seconds = value(kBoxSeconds, form.seconds, 35, 8);
  b.constant = PadLeft(built.constant, 7);
  b.ppm = PadLeft(built.ppm, 8);
  b.seconds = PadLeft(built.seconds, 8);
  b.easting = PadLeft(value(kBoxEasting, form.easting, 43, 9), 9);
  b.northing = PadLeft(value(kBoxNorthing, form.northing, 52, 9), 9);
  // The list entry holds no comments. The text keeps its trailing line end: the test that was
  // to take it off compares one character with the two of a line end, so it never does.
  b.comments = form.ticked[kBoxComments] ? Trim(form.comments) : std::string();

  const auto ticked = [&](int box) { return form.ticked[static_cast<std::size_t>(box)]; };
  const std::string bearing = ChoiceText(kBearingTypeList, form.bearingType);
  if (ticked(kBoxDistanceUnits)) b.directives.push_back(DistanceUnitsLine(ChoiceText(kDistanceUnitsList, form.distanceUnits)));
  if (ticked(kBoxDistanceType)) b.directives.push_back(DistanceTypeLine(ChoiceText(kDistanceTypeList, form.distanceType)));
  const std::string cc = Trim(form.correctionConstant), cp = Trim(form.correctionPpm);
  if (ticked(kBoxDistanceCorrection) && !cc.empty() && !cp.empty()) b.directives.push_back(DistanceCorrectionLine(cc, cp));
  const std::string error = Trim(form.angleError);
  if (ticked(kBoxAngles) && !error.empty()) b.directives.push_back(AnglesLine(bearing, error));
  const std::string rotation = Trim(form.bearingCorrection);
  if (ticked(kBoxBearingCorrection) && !rotation.empty()) b.directives.push_back(BearingCorrectionLine(rotation));
  if (ticked(kBoxBearingType) && !ticked(kBoxAngles)) b.directives.push_back(BearingTypeLine(bearing));
  return built;
}

// The entry whose S line is the one the form was loaded from: its own place if the line still
// stands there, else the first place that holds it; -1 when no survey has it.
int FindLoadedSurvey(const Session& session, const SidForm& form) {
  const SurveyStore& store = session.surveys;
  const auto lineAt = [&](int entry) { return store.SurveyTable.get(entry + 1).sLine; };
  if (form.entryLine.empty()) return form.entry;
  if (HasSurvey(session, form.entry) && lineAt(form.entry) == form.entryLine) return form.entry;
  for (int entry = 0; HasSurvey(session, entry); ++entry) {
    if (lineAt(entry) == form.entryLine) return entry;
  }
  return -1;
}

void Repaint(Session& session) {
  if (session.display) session.display->RefreshView();
}

// The name carried into every record of the old one; .raw is written. On a failed write the
// records keep their names and the user is told.
void RenameRecords(Session& session, const std::string& oldName, const std::string& newName) {
  RawLineStore& raw = session.raw;
  const RawLineStore before = raw;
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    RawFields& f = raw.RawLineFields.at(i);
    if (Trim(f[6]) == oldName) f[6] = newName;
  }
  session.user.Message(oldName + " will be updated to " + newName);
  try {
    WriteRaw(session);
  } catch (const std::exception& fault) {
    raw = before;
    TellFileFault(session.user, fault);
  }
}

bool SaveExisting(Session& session, const SidForm& form) {
  if (std::none_of(form.ticked.begin() + 1, form.ticked.end(), [](bool t) { return t; })) {
    session.user.Message("Nothing to do!");
    return false;
  }
  if (form.entryLine.empty() && !HasSurvey(session, form.entry)) {
    session.user.Message("You must first select a survey.", Icon::Stop);
    return false;
  }
  // The survey loaded into the form, where it stands now: the surveys may have been read again
  // while the form was open.
  const int entry = FindLoadedSurvey(session, form);
  if (entry < 0) {
    session.user.Message(kMsgSurveyGone + Trim(Mid(form.entryLine, 2, kSurveyNameWidth)) + kMsgSurveyGoneAfter,
                         Icon::Exclamation);
    return false;
  }
  SidForm found = form;
  found.entry = entry;
  const std::string oldName = SurveyName(session.surveys.SurveyTable.get(entry + 1));
  const BuiltBlock built = BuildBlock(session, found);
  try {
    RewriteSurveys(session, entry + 1, SurveyBlockText(built.block));
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
    return false;
  }
  const auto ticked = [&](int box) { return form.ticked[static_cast<std::size_t>(box)]; };
  if (ticked(kBoxName) && session.user.Message("SID file updated\r\nSID Name changed, update raw file records?",
                                               Icon::Question, Buttons::YesNo) == Answer::Yes) {
    RenameRecords(session, oldName, built.block.name);
  }
  if (ticked(kBoxConstant) || ticked(kBoxPpm) || ticked(kBoxSeconds) || ticked(kBoxEasting) || ticked(kBoxNorthing)) {
    if (session.user.Message("SID file updated\r\nUpdate weights based upon new error estimates?", Icon::Question,
                             Buttons::YesNo) == Answer::Yes) {
      WeightRebuild(session);
    } else {
      session.user.Message("alright I won't");
    }
  }
  ReloadJobFiles(session);
  session.Changed(Change::Surveys);
  return true;
}

bool SaveNew(Session& session, const SidForm& form) {
  const BuiltBlock built = BuildBlock(session, form);
  const SurveyBlock& b = built.block;
  if (built.constant.empty() || built.ppm.empty() || built.seconds.empty() || b.name.empty() || b.comments.empty()) {
    session.user.Message("You have not completely filled out the form.");
    return false;
  }
  try {
    AppendSurvey(session, SurveyBlockText(b));
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
    return false;
  }
  session.surveys.Clear();
  try {
    ReadSurveys(session);
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
  }
  session.Changed(Change::Surveys);
  return true;
}

}  // namespace

std::vector<std::string> SurveyListEntries(const Session& session) {
  std::vector<std::string> entries;
  for (int entry = 0; HasSurvey(session, entry); ++entry) entries.push_back(EntryText(session, entry));
  return entries;
}

std::string SurveyCommentLabel(const Session& session, int entry) {
  if (!HasSurvey(session, entry)) return {};
  const SurveyDirectives d = ReadSurveyDirectives(session.surveys, entry + 1);
  return d.anyDirective ? d.comments + kDirectivesDefined : d.comments;
}

void LoadSidForm(const Session& session, int entry, SidForm& form) {
  if (!HasSurvey(session, entry)) return;
  form.entry = entry;
  form.entryLine = session.surveys.SurveyTable.get(entry + 1).sLine;
  for (int box = kBoxDistanceUnits; box <= kBoxAngles; ++box) form.ticked[static_cast<std::size_t>(box)] = false;
  const std::string& line = session.surveys.SurveyTable.get(entry + 1).sLine;
  form.name = Trim(Mid(line, 2, kSurveyNameWidth));
  form.constant = Trim(Mid(line, 20, 7));
  form.ppm = Trim(Mid(line, 27, 8));
  form.seconds = Trim(Mid(line, 35, 8));
  form.easting = Trim(Mid(line, 43, 9));
  form.northing = Trim(Mid(line, 52, 9));
  const SurveyDirectives d = ReadSurveyDirectives(session.surveys, entry + 1);
  if (d.comments != form.comments) form.ticked[kBoxComments] = true;
  form.comments = d.comments;
  form.distanceUnits = d.distanceUnits;
  if (d.distanceUnits >= 0) form.ticked[kBoxDistanceUnits] = true;
  form.distanceType = d.distanceType;
  if (d.distanceType >= 0) form.ticked[kBoxDistanceType] = true;
  form.correctionConstant = d.correctionConstant;
  form.correctionPpm = d.correctionPpm;
  form.bearingType = d.bearingType;
  if (d.bearingType >= 0) form.ticked[kBoxBearingType] = true;
  form.bearingCorrection = d.bearingCorrection;
  form.convertToAngles = d.convertToAngles;
  form.angleError = d.angleError;
  for (int box : {kBoxConstant, kBoxPpm, kBoxSeconds, kBoxName, kBoxEasting, kBoxNorthing}) {
    form.ticked[static_cast<std::size_t>(box)] = false;
  }
}

void OpenSidProperties(const Session& session, int entry, SidForm& form) {
  LoadSidForm(session, entry, form);
  form.isNew = false;
}

void NewSidForm(SidForm& form) {
  form = SidForm{};
  form.isNew = true;
  for (int box = kBoxConstant; box <= kBoxNorthing; ++box) form.ticked[static_cast<std::size_t>(box)] = true;
}

std::string SidBlockText(const Session& session, const SidForm& form) {
  return SurveyBlockText(BuildBlock(session, form).block);
}

bool SaveSidForm(Session& session, const SidForm& form) {
  return form.isNew ? SaveNew(session, form) : SaveExisting(session, form);
}

void ShowSurveyLines(Session& session, const std::vector<int>& entries) {
  const std::set<int> surveys = [&] {
    std::set<int> numbers;
    for (int entry : entries) numbers.insert(entry + 1);
    return numbers;
  }();
  Repaint(session);
  const RawLineStore& raw = session.raw;
  const PointStore& points = session.points;
  session.canvas.SetPenWidth(3);
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    const RawEnds& e = raw.RawLineEnds.get(i);
    if (!surveys.contains(e.survey) || e.from == 0 || e.to == 0) continue;
    session.canvas.Line(points.PointX(e.from), points.PointY(e.from), points.PointX(e.to), points.PointY(e.to), kYellow);
  }
  session.canvas.SetPenWidth(1);
}

int SelectBySid(Session& session, const std::vector<int>& entries) {
  const std::set<int> surveys(entries.begin(), entries.end());
  Selection& sel = session.selection;
  sel.LineList.clear();
  sel.SelectedLines.clear();
  const RawLineStore& raw = session.raw;
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    if (!surveys.contains(raw.RawLineEnds.get(i).survey - 1)) continue;
    sel.SelectedLines.at(static_cast<int>(sel.LineList.size())) = static_cast<std::int16_t>(i);
    sel.LineList.push_back(RawLineText(raw.RawLineFields.get(i)));
  }
  const int count = static_cast<int>(sel.LineList.size());
  session.Changed(Change::Selection);
  session.user.Message(std::to_string(count) + " records selected");
  session.user.ShowForm(kLinesFormName);
  Repaint(session);
  return count;
}

}  // namespace tessel
