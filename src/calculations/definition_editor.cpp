#include "calculations/definition_editor.h"

#include <cmath>

#include "model/text.h"

namespace tessel {

namespace {

using F = LineField;

bool Blank(const std::string& text) { return TrimView(text).empty(); }

// A field that is not used shows one of these; a field that takes an id must not keep one.
bool UnusedMark(const std::string& text) {
  const std::string_view t = TrimView(text);
  return t == ".000" || t == ".00000" || t == "999.999";
}

FieldRef At(int line, LineField field) { return {FieldRef::Where::LineField, line, field}; }

// The fields of one line of a type 1 or 2 definition, encoded by the line's kind.
std::array<std::string, 9> Fields(const std::string& f1, const std::string& f2, const LineInput& line,
                                  AddKind kind) {
  std::array<std::string, 9> out;
  out[1] = f1;
  out[2] = Trim(f2);
  out[3] = Trim(line.at(F::From));
  out[4] = Trim(line.at(F::To));
  out[6] = std::to_string(line.lineType);
  switch (kind) {
    case AddKind::Parallel:
      out[5] = EncodeBearingId(line.at(F::Bearing));
      out[7] = ".000";
      out[8] = ".000";
      break;
    case AddKind::WeightedMean:
      out[5] = EncodeBearingId(line.at(F::Bearing));
      out[7] = EncodeDistanceId(line.at(F::Prop));
      out[8] = EncodeDistanceId(line.at(F::Total));
      break;
    case AddKind::Range:
      out[5] = kRangeFlag;
      out[7] = ".000";
      out[8] = ".000";
      break;
    default:
      out[5] = BearingText(line.at(F::Bearing));
      out[7] = DistanceText(line.at(F::Prop));
      out[8] = DistanceText(line.at(F::Total));
      break;
  }
  return out;
}

int KindIndex(int type, int line, AddKind kind) {
  const std::vector<AddKind> kinds = KindsFor(type, line);
  for (std::size_t k = 0; k < kinds.size(); ++k) {
    if (kinds[k] == kind) return static_cast<int>(k);
  }
  return -1;
}

// A line of the form from a line of the file.
LineInput LineFrom(const AddFields& f, AddKind kind) {
  LineInput line;
  line.at(F::From) = f[3];
  line.at(F::To) = f[4];
  line.at(F::Bearing) = f[5];
  line.at(F::Prop) = f[7];
  line.at(F::Total) = f[8];
  line.lineType = static_cast<int>(Val(f[6]));
  if (line.lineType != 1 && line.lineType != 2) line.lineType = 0;
  switch (kind) {
    case AddKind::Parallel: line.at(F::Bearing) = DecodeId(f[5]); break;
    case AddKind::WeightedMean:
      line.at(F::Bearing) = DecodeId(f[5]);
      line.at(F::Prop) = DecodeId(f[7]);
      line.at(F::Total) = DecodeId(f[8]);
      break;
    case AddKind::Range: line.at(F::Bearing) = "999.999"; break;
    default: break;
  }
  return line;
}

// The whole degrees of a DD.MMSS text. A number beyond any integer (a damaged file) is shown as
// the number it is rather than converted.
std::string DegreesPart(const std::string& bearing) {
  const double whole = std::trunc(Val(bearing));
  if (std::fabs(whole) < 9.0e18) return std::to_string(static_cast<long long>(whole));
  return ShortestText(whole);
}

// The bearing from one point of the job to another, quadrant and DD.MMSS.
std::string ComputedBearing(const Session& session, const std::string& from, const std::string& to) {
  const int a = session.points.Find(from), b = session.points.Find(to);
  if (a == 0 || b == 0) return "points not in the job";
  const double dn = session.points.PointY(b) - session.points.PointY(a);
  const double de = session.points.PointX(b) - session.points.PointX(a);
  if (dn == 0 && de == 0) return "points coincide";
  const int quadrant = dn >= 0 ? (de >= 0 ? 1 : 4) : (de >= 0 ? 2 : 3);
  double degrees = std::atan2(std::fabs(de), std::fabs(dn)) * 180.0 / 3.14159265358979323846;
  // Packed degrees, minutes and seconds, to the tenth of a second.
  double seconds = std::round(degrees * 36000.0) / 10.0;
  const double d = std::floor(seconds / 3600.0);
  seconds -= d * 3600.0;
  const double m = std::floor(seconds / 60.0);
  seconds -= m * 60.0;
  degrees = d + m / 100.0 + seconds / 10000.0;
  return "Quad # " + std::to_string(quadrant) + ", " + FormatPicture(degrees, 5, 0);
}

std::string Distances(const AddFields& f) { return std::string(kLineEnd) + " Distance(s) " + f[7] + ", " + f[8]; }

// How the bearing of an intersection line is defined.
std::string IntersectionBearing(const AddFields& f) {
  switch (DetectKind(f)) {
    case AddKind::PointIds: return ".  Bearing is defined to ID " + f[4];
    case AddKind::Parallel: return ".  Bearing is parallel to " + f[4] + " - " + DecodeId(f[5]);
    case AddKind::WeightedMean:
      return ".  Bearing is a weighted mean of " + f[4] + " - " + DecodeId(f[5]) + " and " + DecodeId(f[7]) + " - " +
             DecodeId(f[8]);
    default:
      return ".  Bearing is Quad # " + f[4] + ",  " + f[5] + " (DD.MMSS " + DegreesPart(f[5]) + ").";
  }
}

}  // namespace

const std::vector<std::string>& TypeEntries() {
  static const std::vector<std::string> entries = {"1 - Traverse/Proportion", "2 - Intersection",
                                                   "3 - Add Connecting  Line"};
  return entries;
}

const std::vector<std::string>& LineTypeEntries2() {
  static const std::vector<std::string> entries = {"1 - Straight", "2 - Geodetic"};
  return entries;
}

std::vector<AddKind> KindsFor(int type, int line) {
  if (type == 1) return line == 0 ? std::vector<AddKind>{AddKind::PointIds, AddKind::Traverse} : std::vector<AddKind>{};
  if (type == 2) {
    std::vector<AddKind> kinds = {AddKind::PointIds, AddKind::QuadrantBearing, AddKind::Parallel,
                                  AddKind::WeightedMean};
    if (line == 1) kinds.push_back(AddKind::Range);
    return kinds;
  }
  return {};
}

std::optional<AddKind> ChosenKind(const DefinitionInput& input, int line) {
  const std::vector<AddKind> kinds = KindsFor(input.type, line);
  const int k = input.lines[static_cast<std::size_t>(line)].kind;
  if (k < 0 || k >= static_cast<int>(kinds.size())) return std::nullopt;
  return kinds[static_cast<std::size_t>(k)];
}

std::array<std::string, kLineFields> FieldLabels(AddKind kind) {
  switch (kind) {
    case AddKind::PointIds: return {"Point From", "Point to", "Bearing", "Prop. Dist.", "Distance"};
    case AddKind::Traverse: return {"Point From", "Quadrant", "Bearing", "Distance", "Traverse"};
    case AddKind::QuadrantBearing: return {"Point From", "Quadrant", "Bearing", "Prop. Dist.", "Distance"};
    case AddKind::Parallel: return {"Point From", "Par. from id", "Par. to id", "Prop. Dist.", "Distance"};
    case AddKind::WeightedMean: return {"Point From", "line1-from", "line1-to", "line2-from", "line2-to"};
    case AddKind::Range: return {"Range-start", "Range-end", "Flag", "Prop. Dist.", "Distance"};
  }
  return {};
}

std::array<bool, kLineFields> FieldUsed(AddKind kind) {
  switch (kind) {
    case AddKind::PointIds: return {true, true, false, true, true};
    case AddKind::Traverse: return {true, true, true, true, false};
    case AddKind::Parallel: return {true, true, true, false, false};
    case AddKind::Range: return {true, true, false, false, false};
    default: return {true, true, true, true, true};
  }
}

bool TakesId(AddKind kind, LineField field) {
  switch (kind) {
    case AddKind::Parallel: return field == F::To || field == F::Bearing;
    case AddKind::WeightedMean: return field != F::From;
    default: return false;
  }
}

void ApplyKind(LineInput& line, AddKind kind) {
  const auto used = FieldUsed(kind);
  for (int k = 0; k < kLineFields; ++k) {
    const auto field = static_cast<LineField>(k);
    std::string& text = line.at(field);
    if (!used[static_cast<std::size_t>(k)]) {
      text = field == F::Bearing ? (kind == AddKind::Range ? "999.999" : ".00000") : ".000";
    } else if (TakesId(kind, field) && UnusedMark(text)) {
      text.clear();
    }
  }
}

std::string BlankFieldMessage(const std::string& label, int line, int lines) {
  return "The field \"" + label + "\"" + (lines > 1 ? " of line " + std::to_string(line + 1) : std::string()) +
         " is empty.";
}

std::optional<CheckFailure> CheckDefinition(DefinitionInput& input) {
  for (LineInput& line : input.lines) {
    if (Blank(line.at(F::Bearing))) line.at(F::Bearing) = ".00000";
    if (Blank(line.at(F::Prop))) line.at(F::Prop) = ".000";
    if (Blank(line.at(F::Total))) line.at(F::Total) = ".000";
  }
  const LineInput& first = input.lines[0];
  if (input.type == 1 || input.type == 2) {
    if (Blank(input.newPoint)) return CheckFailure{kMsgNeedPoint, {}};
  } else if (input.type == 3) {
    if (Blank(first.at(F::From))) return CheckFailure{kMsgNeedPoint, At(0, F::From)};
    if (Blank(first.at(F::To))) return CheckFailure{kMsgNeedPoint, At(0, F::To)};
  }
  const std::optional<AddKind> kind = ChosenKind(input, 0);
  if (input.type == 1 && kind == AddKind::Traverse) {
    if (Val(first.at(F::Total)) != 0) return CheckFailure{kMsgTraverseTotal, At(0, F::Total)};
    if (Val(first.at(F::To)) >= 5) return CheckFailure{kMsgInvalidQuadrant, At(0, F::To)};
    if (Val(first.at(F::Prop)) == 0) return CheckFailure{kMsgNeedDistance, At(0, F::Prop)};
    if (Val(first.at(F::Bearing)) >= 90) return CheckFailure{kMsgInvalidBearing, At(0, F::Bearing)};
  }
  if (input.type == 1 && kind == AddKind::PointIds && Val(first.at(F::Bearing)) != 0) {
    return CheckFailure{kMsgBearingZero, At(0, F::Bearing)};
  }
  if (input.type == 1 || input.type == 2) {
    const int lines = input.type == 2 ? 2 : 1;
    for (int l = 0; l < lines; ++l) {
      if (input.lines[static_cast<std::size_t>(l)].lineType == 0) {
        return CheckFailure{kMsgNeedLineType, {FieldRef::Where::LineType, l, F::From}};
      }
    }
    for (int l = 0; l < lines; ++l) {
      if (!ChosenKind(input, l)) return CheckFailure{kMsgNeedKind, {FieldRef::Where::Kind, l, F::From}};
    }
    // The point ids (and the quadrant) a line's kind uses: left blank they would be written as
    // a definition of nothing.
    for (int l = 0; l < lines; ++l) {
      const AddKind lineKind = *ChosenKind(input, l);
      const auto labels = FieldLabels(lineKind);
      const LineInput& line = input.lines[static_cast<std::size_t>(l)];
      for (LineField field : {F::From, F::To, F::Bearing, F::Prop, F::Total}) {
        const bool needed = field == F::From || field == F::To || TakesId(lineKind, field);
        const std::string& text = line.at(field);
        if (needed && (Blank(text) || (TakesId(lineKind, field) && UnusedMark(text)))) {
          return CheckFailure{BlankFieldMessage(labels[static_cast<std::size_t>(field)], l, lines), At(l, field)};
        }
      }
    }
  }
  return std::nullopt;
}

std::vector<std::string> DefinitionLines(const DefinitionInput& input) {
  const LineInput& first = input.lines[0];
  if (input.type == 3) {
    return {FormatAddLine({"", "3", Trim(first.at(F::From)), Trim(first.at(F::To)), "0", ".00000", "0", ".000",
                           ".000"})};
  }
  const AddKind kind1 = ChosenKind(input, 0).value_or(AddKind::QuadrantBearing);
  std::vector<std::string> lines = {
      FormatAddLine(Fields(std::to_string(input.type), input.newPoint, first, kind1))};
  if (input.type == 2) {
    const AddKind kind2 = ChosenKind(input, 1).value_or(AddKind::QuadrantBearing);
    const std::string type2 = Val(input.newPoint) >= kFirstWorkingPoint ? "0" : "2";
    lines.push_back(FormatAddLine(Fields(type2, "0", input.lines[1], kind2)));
  }
  return lines;
}

DefinitionInput InputFromLines(const Session& session, const std::vector<std::string>& lines) {
  DefinitionInput input;
  if (lines.empty()) return input;
  const AddFields f = CutAddLine(lines[0]);
  input.type = static_cast<int>(TypeOfLine(lines[0]));
  if (input.type == 3) {
    input.lines[0].at(F::From) = f[2];
    input.lines[0].at(F::To) = f[3];
    return input;
  }
  input.newPoint = f[2];
  input.survey = SurveyOf(session.calculations, f[2]);
  if (input.type == 1) {
    const AddKind kind = DetectTraverseKind(f);
    input.lines[0] = LineFrom(f, kind);
    input.lines[0].kind = KindIndex(1, 0, kind);
  } else if (input.type == 2) {
    const AddKind kind = DetectKind(f);
    input.lines[0] = LineFrom(f, kind);
    input.lines[0].kind = KindIndex(2, 0, kind);
    if (lines.size() > 1) {
      const AddFields g = CutAddLine(lines[1]);
      const AddKind kind2 = DetectKind(g);
      input.lines[1] = LineFrom(g, kind2);
      input.lines[1].kind = KindIndex(2, 1, kind2);
    }
  }
  return input;
}

std::vector<std::pair<int, LineField>> PickFields(const DefinitionInput& input) {
  std::vector<std::pair<int, LineField>> out;
  if (input.type == 3) return {{0, F::From}, {0, F::To}};
  if (input.type == 1) {
    out.emplace_back(0, F::From);
    if (ChosenKind(input, 0) == AddKind::PointIds) out.emplace_back(0, F::To);
    return out;
  }
  if (input.type != 2) return out;
  for (int l = 0; l < 2; ++l) {
    out.emplace_back(l, F::From);
    const std::optional<AddKind> kind = ChosenKind(input, l);
    if (!kind) continue;
    switch (*kind) {
      case AddKind::PointIds:
      case AddKind::Range: out.emplace_back(l, F::To); break;
      case AddKind::Parallel:
        out.emplace_back(l, F::To);
        out.emplace_back(l, F::Bearing);
        break;
      case AddKind::WeightedMean:
        for (LineField field : {F::To, F::Bearing, F::Prop, F::Total}) out.emplace_back(l, field);
        break;
      default: break;
    }
  }
  return out;
}

std::string EditorHeading(AddType type) {
  switch (type) {
    case AddType::Traverse: return "Traverse/Proportion Calculation for: ";
    case AddType::Intersection: return "Intersection Calculation for: ";
    case AddType::ConnectingLine: return "Connecting line added from:  ";
    default: return "";
  }
}

Description Describe(const Session& session, const std::vector<std::string>& list, int index) {
  if (index < 0 || index >= static_cast<int>(list.size())) return {};
  const DefinitionSpan span = SpanOf(list, index);
  const std::string& line = list[static_cast<std::size_t>(span.first)];
  const AddFields f = CutAddLine(line);
  switch (TypeOfLine(line)) {
    case AddType::Traverse: {
      Description d{"Traverse/Proportion definition for: " + f[2], ""};
      if (DetectTraverseKind(f) == AddKind::Traverse) {
        d.text = "From ID is " + f[3] + ".  Bearing is Quad # " + f[4] + ", " + DegreesPart(f[5]) + " (DD.MMSS " +
                 f[5] + ")." + Distances(f);
      } else {
        d.text = "From ID is " + f[3] + ".  Bearing defined to ID " + f[4] + " (" +
                 ComputedBearing(session, f[3], f[4]) + ")." + Distances(f);
      }
      return d;
    }
    case AddType::Intersection: {
      Description d{"Intersection definition for: " + f[2], ""};
      d.text = "Intersection for point " + f[2] + kLineEnd + "Line 1 From ID is " + f[3] + IntersectionBearing(f);
      if (span.behind - span.first > 1) {
        const AddFields g = CutAddLine(list[static_cast<std::size_t>(span.first + 1)]);
        d.text += kLineEnd;
        if (DetectKind(g) == AddKind::Range) {
          d.text += "Line 2 is the Range of IDs from " + g[3] + " through " + g[4];
        } else {
          d.text += "Line 2 From ID is " + g[3] + IntersectionBearing(g);
        }
      }
      return d;
    }
    case AddType::ConnectingLine:
      return {"Add a line from point " + f[2], "Connecting line from " + f[2] + " to " + f[3]};
    default:
      // A line of no known type is shown as it stands.
      return {"", line};
  }
}

std::string SurveyOf(const CalculationLists& lists, const std::string& id) {
  const auto found = lists.AdsById.find(Trim(id));
  if (found == lists.AdsById.end()) return kNoSurvey;
  return lists.Ads[static_cast<std::size_t>(found->second)].survey;
}

}  // namespace tessel
