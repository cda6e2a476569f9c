#include "surveys/survey_file.h"

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "surveys/print_columns.h"

namespace tessel {

namespace {

struct Choice {
  const char* text;
  const char* line;
};

// The strings the lists' texts are compared with, as the program has them.
constexpr Choice kUnitLines[] = {{"C - Chains", "C DU:C     <DISTANCE UNITS ARE CHAINS>"},
                                 {"F - US Survey Foot", "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>"},
                                 {"I - International Foot", "C DU:I     <DISTANCE UNITS ARE INTERNATIONAL FEET>"},
                                 {"M - Meters", "C DU:M     <DISTANCE UNITS ARE METERS>"}};
constexpr Choice kTypeLines[] = {{"G - Ground", "C DT:G     <GROUND DISTANCES>"},
                                 {"E - Ellipsoid", "C DT:E     <ELLIPSOIDAL DISTANCES>"},
                                 {"P - Plane(grid)", "C DT:P     <PLANE (GRID) DISTANCES>"}};
struct BearingChoice {
  const char* text;
  const char* plain;
  const char* anglesKey;
  const char* anglesNote;
};
constexpr BearingChoice kBearingLines[] = {
    {"M - Mean Geodetic", "C BT:M  <MEAN GEODETIC BEARINGS>", "C BT:MA ",
     " <MEAN BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>"},
    {"F - Forward Geodetic", "C BT:F  <FORWARD GEODETIC BEARINGS>", "C BT:FA ",
     " <FORWARD BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>"},
    {"G - Grid (State Plane)", "C BT:G  <GRID (STATE PLANE) BEARINGS>", "C BT:GA ",
     " <GRID BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>"},
    {"C -Compass / Magnetic", "C BT:C  <COMPASS (MAGNETIC) BEARINGS>", "C BT:CA ",
     " <COMPASS BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>"},
    {"L - Local / Assumed", "C BT:L  <LOCAL OR ASSUMED BEARINGS>", "C BT:LA ",
     " <LOCAL BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>"}};

template <typename Table>
std::string LineOf(const Table& table, std::string_view text) {
  for (const auto& row : table) {
    if (text == row.text) return row.line;
  }
  return {};
}

const BearingChoice* BearingOf(std::string_view text) {
  for (const auto& row : kBearingLines) {
    if (text == row.text) return &row;
  }
  return nullptr;
}

// The index of `key` among the keys, -1 when it is none of them.
template <std::size_t N>
int IndexOf(const std::array<const char*, N>& keys, std::string_view key) {
  for (std::size_t i = 0; i < N; ++i) {
    if (key == keys[i]) return static_cast<int>(i);
  }
  return -1;
}

constexpr std::array<const char*, 4> kUnitKeys = {"DU:C", "DU:F", "DU:I", "DU:M"};
constexpr std::array<const char*, 3> kTypeKeys = {"DT:G", "DT:E", "DT:P"};
constexpr std::array<const char*, 5> kBearingKeys = {"BT:M", "BT:F", "BT:G", "BT:C", "BT:L"};

std::string StoredBlockText(const SurveyStore& store, int s) {
  const SurveyEntry& survey = store.SurveyTable.get(s);
  std::string text = survey.sLine + "\r\n";
  for (int c = survey.first; c <= survey.last; ++c) text += store.SurveyCaptions.get(c) + "\r\n";
  return text;
}

}  // namespace

std::string SurveyName(const SurveyEntry& survey) { return Trim(Mid(survey.sLine, 2, 18)); }

void ReadSurveys(Session& session) {
  session.user.Status(1, "Reading Survey Identifiers");
  SurveyStore& store = session.surveys;
  store.SurveyCount = 0;
  store.SurveyCaptionCount = 0;
  LineReader in(session.DatasetPath(".sid"));
  while (!in.Eof()) {
    const std::string line = in.ReadLine();
    const std::string kind = Left(line, 1);
    if (kind == "S") {
      store.SurveyCount = Add16(store.SurveyCount, 1);
      SurveyEntry& survey = store.SurveyTable.at(store.SurveyCount);
      survey.sLine = Trim(line);
      survey.first = Add16(store.SurveyCaptionCount, 1);
      survey.last = store.SurveyCaptionCount;
    } else if (kind == "C") {
      store.SurveyCaptionCount = Add16(store.SurveyCaptionCount, 1);
      store.SurveyCaptions.at(store.SurveyCaptionCount) = line;
      store.SurveyTable.at(store.SurveyCount).last = store.SurveyCaptionCount;
    }
  }
}

std::string DistanceUnitsLine(std::string_view listText) { return LineOf(kUnitLines, listText); }
std::string DistanceTypeLine(std::string_view listText) { return LineOf(kTypeLines, listText); }

std::string BearingTypeLine(std::string_view listText) {
  const BearingChoice* row = BearingOf(listText);
  return row ? row->plain : std::string();
}

std::string AnglesLine(std::string_view listText, std::string_view error) {
  const BearingChoice* row = BearingOf(listText);
  return row ? row->anglesKey + PadLeft(error, 9) + row->anglesNote : std::string();
}

std::string DistanceCorrectionLine(std::string_view constant, std::string_view ppm) {
  return "C DC: " + PadLeft(constant, 15) + PadLeft(ppm, 15) + "   <DISTANCE CORRECTION CONST+PPM>";
}

std::string BearingCorrectionLine(std::string_view rotation) {
  return "C BC: " + PadLeft(rotation, 9) + "  <BEARING ROTATION CORRECTION (DD.MMSS)>";
}

SurveyDirectives ReadSurveyDirectives(const SurveyStore& store, int s) {
  SurveyDirectives d;
  const SurveyEntry& survey = store.SurveyTable.get(s);
  for (int c = survey.first; c <= survey.last; ++c) ReadDirectiveLine(d, store.SurveyCaptions.get(c));
  return d;
}

void ReadDirectiveLine(SurveyDirectives& d, const std::string& line) {
  const std::string key = Mid(line, 3, 2);
  const std::string head = Mid(line, 3, 4);
  if (key == "DU") {
    d.distanceUnits = IndexOf(kUnitKeys, head);
  } else if (key == "DT") {
    d.distanceType = IndexOf(kTypeKeys, head);
  } else if (key == "DC") {
    d.correctionConstant = Trim(Mid(line, 7, 15));
    d.correctionPpm = Trim(Mid(line, 23, 15));
  } else if (key == "BC") {
    d.bearingCorrection = Trim(Mid(line, 6, 9));
  } else if (key == "BT") {
    d.bearingType = IndexOf(kBearingKeys, head);
    if (Mid(line, 7, 1) == "A") {
      d.convertToAngles = true;
      d.angleError = Trim(Mid(line, 9, 9));
    }
  } else {
    d.comments += line + "\r\n";
    return;
  }
  d.anyDirective = true;
}

std::string SurveyBlockText(const SurveyBlock& block) {
  ColumnPrinter p;
  p.Print("S").Print(block.name);
  p.Tab(20).Print(block.constant);
  p.Tab(27).Print(block.ppm);
  p.Tab(35).Print(block.seconds);
  p.Tab(43).Print(block.easting);
  p.Tab(52).Print(block.northing).EndLine();
  p.Print(block.comments).EndLine();
  for (const std::string& line : block.directives) p.Print(line).EndLine();
  return p.Text();
}

void RewriteSurveys(Session& session, int replace, const std::string& blockText) {
  const SurveyStore& store = session.surveys;
  std::string text;
  for (int s = 1; s <= store.SurveyCount; ++s) text += s == replace ? blockText : StoredBlockText(store, s);
  WriteFileBytes(session.DatasetPath(".sid"), text);
}

void AppendSurvey(Session& session, const std::string& blockText) {
  const std::string path = session.DatasetPath(".sid");
  std::string text;
  if (FileExistsAnyCase(path) && !ReadFileBytes(path, text)) {
    throw RuntimeFault(FaultKind::FileAccess, "The file " + path + " cannot be read.");
  }
  // A last line without its line end gets one, so the new S line starts a line of its own.
  if (!text.empty() && text.back() != '\n') text += "\r\n";
  WriteFileBytes(path, text + blockText);
}

}  // namespace tessel
