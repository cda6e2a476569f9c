// The display reading of .raw: record lines linked to points and surveys, and temporary points
// for records that end on a station without coordinates.

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <string>
#include <unordered_map>
#include <vector>

#include "model/fault.h"
#include "datasets/identity.h"
#include "datasets/line_files.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

const std::string kReadingRaw = "Reading RAW Lines";
const std::string kComputingTemporary = "Computing temporary coordinates for unknown points";
constexpr float kChainFeet = 66.0f;
constexpr float kChainMetres = 20.11684f;

void CutRawFields(std::string_view line, RawFields& f) {
  const std::array<std::string_view, 7> cut = RawFieldViews(line);
  for (std::size_t k = 1; k < cut.size(); ++k) f[k] = cut[k];
}

RawMeasure MeasureOf(const RawFields& f) {
  RawMeasure m;
  m.distance = Val(f[3]);
  m.bearing = DmsToRadians(Val(f[5]));
  // One character: a digit or nothing that reads as a number.
  m.quadrant = static_cast<std::int8_t>(Val(f[4]));
  return m;
}

// Which lines name each still unknown station at either end. Adding a point can only change
// the lines that name its identifier, and a temporary point is only ever made for a station the
// first linking did not find, so these lines are all that a relink has to look at.
class EndIndex {
 public:
  explicit EndIndex(const RawLineStore& raw) {
    for (int i = 1; i <= raw.RawLineCount; ++i) {
      const RawEnds& e = raw.RawLineEnds.get(i);
      const RawFields& f = raw.RawLineFields.get(i);
      if (e.from == 0) from_[f[1]].push_back(i);
      if (e.to == 0) to_[f[2]].push_back(i);
    }
  }
  void Relink(Session& session, const std::string& id) const {
    const int p = session.points.Find(id);
    if (p == 0) return;
    if (const auto it = from_.find(id); it != from_.end()) {
      for (int i : it->second) session.raw.RawLineEnds.at(i).from = static_cast<std::int16_t>(p);
    }
    if (const auto it = to_.find(id); it != to_.end()) {
      for (int i : it->second) session.raw.RawLineEnds.at(i).to = static_cast<std::int16_t>(p);
    }
  }

 private:
  std::unordered_map<std::string, std::vector<int>> from_;
  std::unordered_map<std::string, std::vector<int>> to_;
};

// Every line against the point store and the survey table; the last survey of a name wins. Each
// line's ends are linked before its survey is looked for, and the survey walk of a table counted
// past its bound stops at the bound on the first line, as a walk over the table would.
void LinkAll(Session& session) {
  const SurveyStore& surveys = session.surveys;
  const int walkable = std::min<int>(surveys.SurveyCount, surveys.SurveyTable.bound());
  std::unordered_map<std::string, int> surveyByName;
  for (int s = 1; s <= walkable; ++s) surveyByName[SurveyName(surveys.SurveyTable.get(s))] = s;
  RawLineStore& raw = session.raw;
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    const RawFields& f = raw.RawLineFields.get(i);
    RawEnds& ends = raw.RawLineEnds.at(i);
    if (const int a = session.points.Find(f[1])) ends.from = static_cast<std::int16_t>(a);
    if (const int b = session.points.Find(f[2])) ends.to = static_cast<std::int16_t>(b);
    if (const auto it = surveyByName.find(f[6]); it != surveyByName.end()) {
      ends.survey = static_cast<std::int16_t>(it->second);
    }
    if (walkable < surveys.SurveyCount) surveys.SurveyTable.get(walkable + 1);  // the subscript fault
  }
}

// The distance unit of a survey from its "DU:F" or "DU:M" caption, 0 when it has none. Surveys
// are found by the prefix "S" and the record's survey field, so one field may reach several.
class ScaleFinder {
 public:
  explicit ScaleFinder(const SurveyStore& surveys) : surveys_(surveys) {}

  float Find(const std::string& surveyField) {
    if (const auto it = memo_.find(surveyField); it != memo_.end()) return it->second;
    const std::string key = "S" + surveyField;
    float scale = 0.0f;
    for (int s = 1; s <= surveys_.SurveyCount; ++s) {
      const SurveyEntry& survey = surveys_.SurveyTable.get(s);
      if (!StartsWith(survey.sLine, key)) continue;
      for (int c = survey.first; c <= survey.last; ++c) {
        const std::string unit = Mid(surveys_.SurveyCaptions.get(c), 3, 4);
        if (unit == "DU:F") scale = kChainFeet;
        if (unit == "DU:M") scale = kChainMetres;
      }
    }
    memo_.emplace(surveyField, scale);
    return scale;
  }

 private:
  const SurveyStore& surveys_;
  std::unordered_map<std::string, float> memo_;
};

// A temporary point carries three decimals, as its coordinates pass through "######0.000".
int AddTemporaryPoint(Session& session, const std::string& id, double x, double y) {
  const int index = session.points.Append(id, ThroughPicture(x, 3), ThroughPicture(y, 3));
  if (session.raw.FirstTemporaryPoint == 0) session.raw.FirstTemporaryPoint = index;
  return index;
}

}  // namespace

std::array<std::string_view, 7> RawFieldViews(std::string_view line) {
  const std::string_view trimmed = TrimView(line);
  return {std::string_view(), MidView(line, 1, 6), MidView(line, 10, 6), MidView(trimmed, 17, 8),
          MidView(line, 27, 1), MidView(line, 31, 8), MidView(trimmed, 40, 18)};
}

RawRecords ReadRawRecords(const std::string& path) {
  RawRecords records;
  // Room for the whole table at once: only the pages written are ever touched, and the lines are
  // not moved as the table grows.
  records.fields.reserve(RawLineStore::kBound + 2);
  records.measures.reserve(RawLineStore::kBound + 2);
  try {
    LineReader in(path);
    std::string line;
    do {
      in.ReadLine(line);
    } while (TrimView(line) != "999999");
    // One line past the table's bound is enough: storing it is the subscript fault.
    while (records.fields.size() <= static_cast<std::size_t>(RawLineStore::kBound) + 1) {
      in.ReadLine(line);
      if (line == "999998") break;
      RawFields& fields = records.fields.emplace_back();
      CutRawFields(line, fields);
      records.measures.push_back(MeasureOf(fields));
    }
  } catch (...) {
    records.fault = std::current_exception();
  }
  return records;
}

void ReadRaw(Session& session, RawRecords* ahead) {
  const std::string path = session.DatasetPath(".raw");
  if (!FileExistsAnyCase(path)) return;
  session.user.Status(1, kReadingRaw);
  RawLineStore& raw = session.raw;

  RawRecords direct;
  if (!ahead) {
    direct = ReadRawRecords(path);
    ahead = &direct;
  }
  // The record number; a record past the table's bound is a subscript fault, so it stays far
  // below the 16-bit count's overflow.
  const int read = static_cast<int>(ahead->fields.size()) - 1;
  if (raw.RawLineFields.empty() && raw.RawLineMeasures.empty() && read <= RawLineStore::kBound) {
    raw.RawLineFields.Adopt(ahead->fields);
    raw.RawLineMeasures.Adopt(ahead->measures);
  } else {
    for (int i = 1; i <= read; ++i) {
      raw.RawLineFields.at(i) = std::move(ahead->fields[static_cast<std::size_t>(i)]);
      raw.RawLineMeasures.at(i) = ahead->measures[static_cast<std::size_t>(i)];
    }
  }
  if (ahead->fault) std::rethrow_exception(ahead->fault);
  raw.RawLineCount = Add16(To16(read + 1), -1);
  for (int i = 1; i <= raw.RawLineCount; ++i) raw.RawLineEnds.at(i) = RawEnds{};

  LinkAll(session);
  ReadUnitCode(session);

  const EndIndex endIndex(raw);

  ScaleFinder scales(session.surveys);
  float scale = 0.0f;  // carried from line to line, never reset within the read
  PointStore& points = session.points;
  for (int i = 1; i <= raw.RawLineCount; ++i) {
    session.user.Status(1, kReadingRaw);
    const RawEnds& ends = raw.RawLineEnds.get(i);
    if (ends.from != 0 && ends.to != 0) continue;
    const RawFields& f = raw.RawLineFields.get(i);
    const RawMeasure& m = raw.RawLineMeasures.get(i);
    const double units = session.UnitsPerChain;

    if (ends.to == 0) {
      if (const float found = scales.Find(f[6]); found != 0.0f) scale = found;
      if (scale == 0.0f) scale = 1.0f;
      double dE = units * m.distance / scale * std::sin(m.bearing);
      double dN = units * m.distance / scale * std::cos(m.bearing);
      SignsOfQuadrant(m.quadrant, false).Apply(dE, dN);
      const int from = ends.from;
      AddTemporaryPoint(session, f[2], points.PointX(from) + dE, points.PointY(from) + dN);
      session.user.Status(1, kComputingTemporary);
      endIndex.Relink(session, f[2]);
    }
    if (ends.from == 0) {
      // Placed back from the to end, without the distance unit.
      double dE = units * m.distance * std::sin(m.bearing);
      double dN = units * m.distance * std::cos(m.bearing);
      SignsOfQuadrant(m.quadrant, true).Apply(dE, dN);
      const int to = ends.to;
      AddTemporaryPoint(session, f[1], points.PointX(to) + dE, points.PointY(to) + dN);
      session.user.Status(1, kComputingTemporary);
      endIndex.Relink(session, f[1]);
    }
  }
  // The final linking of every line finds what the relinks have already set: each line's ends
  // are the last points of their identifiers and the surveys have not changed.
}

}  // namespace tessel
