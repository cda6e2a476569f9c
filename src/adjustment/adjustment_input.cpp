#include "adjustment/adjustment_input.h"

#include <array>
#include <cmath>

#include "datasets/coordinate_files.h"
#include "datasets/line_files.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "surveys/survey_file.h"

namespace tessel::adjustment {

namespace {

// Each line of a text, LF or CR LF, a last line without its end included.
template <typename F>
void ForEachLine(std::string_view text, F&& take) {
  LineReader in = LineReader::FromText(std::string(text));
  std::string line;
  while (!in.Eof()) {
    in.ReadLine(line);
    if (!take(std::string_view(line))) return;
  }
}

// The leading number of a field; a number too large for a double reads as 0, so that no input
// stops the reading.
double Number(std::string_view text) {
  try {
    return Val(text);
  } catch (const RuntimeFault&) {
    return 0;
  }
}

std::string Field(std::string_view line, int start, int length) { return Trim(MidView(line, start, length)); }

// The survey's units and corrections from its C lines, read as the survey editor reads them.
void ApplyDirectives(Survey& survey, const SurveyDirectives& d) {
  static constexpr char kUnits[] = {'C', 'F', 'I', 'M'};
  static constexpr char kBearingTypes[] = {'M', 'F', 'G', 'C', 'L'};
  if (d.distanceUnits >= 0) survey.distanceUnit = kUnits[d.distanceUnits];
  survey.correctionConstant = Number(d.correctionConstant);
  survey.correctionPpm = Number(d.correctionPpm);
  survey.rotationDeg = DdMmSsDegrees(d.bearingCorrection);
  if (d.bearingType >= 0) survey.bearingType = kBearingTypes[d.bearingType];
  survey.toAngles = d.convertToAngles;
  survey.angleErrorSec = d.convertToAngles ? DdMmSsDegrees(d.angleError) * 3600.0 : 0.0;
}

}  // namespace

const char* UnitsName(JobUnits units) { return units == JobUnits::Meters ? "meters" : "US survey feet"; }

double DdMmSsDegrees(std::string_view text) {
  std::string t = Trim(text);
  double sign = 1;
  if (!t.empty() && (t[0] == '-' || t[0] == '+')) {
    if (t[0] == '-') sign = -1;
    t.erase(0, 1);
  }
  const std::size_t point = t.find('.');
  const double degrees = Number(t.substr(0, point));
  std::string fraction = point == std::string::npos ? std::string() : t.substr(point + 1);
  if (fraction.size() < 4) fraction.append(4 - fraction.size(), '0');
  const double minutes = Number(fraction.substr(0, 2));
  const double seconds = Number(fraction.substr(2, 2) + "." + fraction.substr(4));
  return sign * (degrees + minutes / 60.0 + seconds / 3600.0);
}

double PackedBearingDegrees(double value) {
  const double degrees = std::floor(value / 10000.0);
  const double hundreds = std::floor(value / 100.0);
  const double minutes = hundreds - 100.0 * std::floor(hundreds / 100.0);
  const double seconds = value - 10000.0 * degrees - 100.0 * minutes;
  return degrees + minutes / 60.0 + seconds / 3600.0;
}

std::optional<JobUnits> ParseUnitCode(std::string_view defText) {
  int number = 0;
  std::string code;
  ForEachLine(defText, [&](std::string_view line) {
    if (++number == 4) code = Trim(line);
    return number < 4;
  });
  if (number < 4) return std::nullopt;
  if (code.empty()) return std::nullopt;
  const double value = Number(code);
  if (value == 1) return JobUnits::Meters;
  if (value == 2) return JobUnits::UsSurveyFeet;
  return std::nullopt;
}

std::vector<Survey> ParseSurveys(std::string_view sidText) {
  std::vector<Survey> surveys;
  std::vector<SurveyDirectives> directives;
  ForEachLine(sidText, [&](std::string_view line) {
    if (StartsWith(line, "S")) {
      Survey s;
      s.id = Field(line, 2, 18);
      s.errorConstant = Number(Field(line, 20, 7));
      s.errorPpm = Number(Field(line, 27, 8));
      s.bearingErrorSec = Number(Field(line, 35, 8));
      surveys.push_back(std::move(s));
      directives.emplace_back();
    } else if (StartsWith(line, "C") && !surveys.empty()) {
      ReadDirectiveLine(directives.back(), std::string(line));
    }
    return true;
  });
  for (std::size_t i = 0; i < surveys.size(); ++i) ApplyDirectives(surveys[i], directives[i]);
  return surveys;
}

std::vector<Record> ParseRecords(std::string_view rawText) {
  std::vector<Record> records;
  bool inRecords = false;
  ForEachLine(rawText, [&](std::string_view line) {
    if (!inRecords) {
      inRecords = TrimView(line) == "999999";
      return true;
    }
    if (TrimView(line) == "999998") return false;
    const std::array<std::string_view, 7> f = RawFieldViews(line);
    Record r;
    r.number = static_cast<int>(records.size()) + 1;
    r.from = Trim(f[1]);
    r.to = Trim(f[2]);
    r.distance = Number(f[3]);
    const std::string_view quadrant = TrimView(f[4]);
    if (quadrant.size() == 1 && quadrant[0] >= '1' && quadrant[0] <= '4') r.quadrant = quadrant[0] - '0';
    r.bearing = Number(f[5]);
    r.survey = Trim(f[6]);
    records.push_back(std::move(r));
    return true;
  });
  return records;
}

std::vector<Station> ParseControl(std::string_view lsaText) {
  std::vector<Station> control;
  ForEachLine(lsaText, [&](std::string_view line) {
    // The section ends after the line whose last character is 1; a last character that is not a
    // digit ends the reading, as it ends the load's reader.
    if (line.empty() || line.back() < '0' || line.back() > '9') return false;
    const CoordinateFields f = ControlFields(line);
    Station s{Trim(f.id), Number(f.x), Number(f.y)};
    if (!s.id.empty()) control.push_back(std::move(s));
    return line.back() != '1';
  });
  return control;
}

std::vector<Station> ParseCoordinates(std::string_view corText) {
  std::vector<Station> points;
  ForEachLine(corText, [&](std::string_view line) {
    const CoordinateFields f = CorFields(line);
    Station s{Trim(f.id), Number(f.x), Number(f.y)};
    if (!s.id.empty()) points.push_back(std::move(s));
    return true;
  });
  return points;
}

std::string JobBaseOf(const std::string& defPath) { return defPath.substr(0, defPath.find('.')); }

std::optional<AdjustmentInput> ReadAdjustmentInput(const std::string& jobBase, std::string& error) {
  const auto read = [&](const char* extension, bool required, std::string& text) {
    const std::string path = ResolveCase(jobBase + extension);
    if (ReadFileBytes(path, text)) return true;
    text.clear();
    if (required) error = "cannot read " + path;
    return !required;
  };
  AdjustmentInput input;
  std::string text;
  if (!read(".def", true, text)) return std::nullopt;
  const std::optional<JobUnits> units = ParseUnitCode(text);
  if (!units) {
    error = "the unit code on the fourth line of " + ResolveCase(jobBase + ".def") +
            " is neither 1 (meters) nor 2 (US survey feet)";
    return std::nullopt;
  }
  input.units = *units;
  if (!read(".sid", true, text)) return std::nullopt;
  input.surveys = ParseSurveys(text);
  if (!read(".raw", true, text)) return std::nullopt;
  input.records = ParseRecords(text);
  read(".LSA", false, text);
  input.control = ParseControl(text);
  read(".COR", false, text);
  input.coordinates = ParseCoordinates(text);
  return input;
}

}  // namespace tessel::adjustment
