#include "adjustment/adjustment_input.h"

#include <cmath>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel::adjustment {

namespace {

// The lines of a text, LF or CR LF, a last line without its end included.
std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    start = end + 1;
  }
  return lines;
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

void ReadDirective(Survey& survey, std::string_view line) {
  const std::string_view key = MidView(line, 3, 2);
  const std::string_view kind = MidView(line, 3, 4);
  if (key == "DU") {
    if (kind == "DU:C" || kind == "DU:F" || kind == "DU:I" || kind == "DU:M") survey.distanceUnit = kind[3];
  } else if (key == "DC") {
    survey.correctionConstant = Number(Field(line, 7, 15));
    survey.correctionPpm = Number(Field(line, 23, 15));
  } else if (key == "BC") {
    survey.rotationDeg = DdMmSsDegrees(Field(line, 6, 9));
  } else if (key == "BT") {
    if (kind == "BT:M" || kind == "BT:F" || kind == "BT:G" || kind == "BT:C" || kind == "BT:L") {
      survey.bearingType = kind[3];
      survey.toAngles = MidView(line, 7, 1) == "A";
      survey.angleErrorSec = survey.toAngles ? DdMmSsDegrees(Field(line, 9, 9)) * 3600.0 : 0.0;
    }
  }
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
  const std::vector<std::string_view> lines = Lines(defText);
  if (lines.size() < 4) return std::nullopt;
  const std::string code = Trim(lines[3]);
  if (code.empty()) return std::nullopt;
  const double value = Number(code);
  if (value == 1) return JobUnits::Meters;
  if (value == 2) return JobUnits::UsSurveyFeet;
  return std::nullopt;
}

std::vector<Survey> ParseSurveys(std::string_view sidText) {
  std::vector<Survey> surveys;
  for (std::string_view line : Lines(sidText)) {
    if (StartsWith(line, "S")) {
      Survey s;
      s.id = Field(line, 2, 18);
      s.errorConstant = Number(Field(line, 20, 7));
      s.errorPpm = Number(Field(line, 27, 8));
      s.bearingErrorSec = Number(Field(line, 35, 8));
      surveys.push_back(std::move(s));
    } else if (StartsWith(line, "C") && !surveys.empty()) {
      ReadDirective(surveys.back(), line);
    }
  }
  return surveys;
}

std::vector<Record> ParseRecords(std::string_view rawText) {
  std::vector<Record> records;
  bool inRecords = false;
  for (std::string_view line : Lines(rawText)) {
    if (!inRecords) {
      inRecords = TrimView(line) == "999999";
      continue;
    }
    if (TrimView(line) == "999998") break;
    const std::string_view trimmed = TrimView(line);
    Record r;
    r.number = static_cast<int>(records.size()) + 1;
    r.from = Field(line, 1, 6);
    r.to = Field(line, 10, 6);
    r.distance = Number(Field(trimmed, 17, 8));
    const std::string quadrant = Field(line, 27, 1);
    if (quadrant.size() == 1 && quadrant[0] >= '1' && quadrant[0] <= '4') r.quadrant = quadrant[0] - '0';
    r.bearing = Number(MidView(line, 31, 8));
    r.survey = Field(trimmed, 40, 18);
    records.push_back(std::move(r));
  }
  return records;
}

std::vector<Station> ParseControl(std::string_view lsaText) {
  std::vector<Station> control;
  for (std::string_view line : Lines(lsaText)) {
    // The section ends after the line whose last character is 1; a last character that is not a
    // digit ends the reading, as it ends the load's reader.
    if (line.empty() || line.back() < '0' || line.back() > '9') break;
    Station s{Field(line, 2, 18), Number(Field(line, 20, 15)), Number(Field(line, 37, 15))};
    if (!s.id.empty()) control.push_back(std::move(s));
    if (line.back() == '1') break;
  }
  return control;
}

std::vector<Station> ParseCoordinates(std::string_view corText) {
  std::vector<Station> points;
  for (std::string_view line : Lines(corText)) {
    Station s{Field(line, 2, 18), Number(LTrim(MidView(line, 20, 12))), Number(LTrim(MidView(line, 33, 13)))};
    if (!s.id.empty()) points.push_back(std::move(s));
  }
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
