#include "calculations/add_file.h"

#include "model/text.h"

namespace tessel {

namespace {

struct Columns {
  int first;
  int last;
};
// Where each field stands, as the reader cuts it and the writer justifies it.
constexpr Columns kColumns[10] = {{0, 0},   {2, 2},   {4, 9},   {11, 16}, {18, 23},
                                  {25, 33}, {36, 36}, {38, 46}, {48, 56}, {58, 66}};

std::size_t Length(const std::string& text) { return text.size(); }

}  // namespace

AddFields CutAddLine(std::string_view line) {
  AddFields fields;
  for (int k = 1; k <= 9; ++k) {
    const Columns c = kColumns[k];
    fields[static_cast<std::size_t>(k)] = Trim(MidView(line, c.first, c.last - c.first + 1));
  }
  return fields;
}

AddType TypeOfLine(std::string_view line) {
  const std::string_view type = MidView(line, 2, 1);
  if (type == "1") return AddType::Traverse;
  if (type == "2") return AddType::Intersection;
  if (type == "3") return AddType::ConnectingLine;
  return AddType::Unknown;
}

const char* KindText(AddKind kind) {
  switch (kind) {
    case AddKind::PointIds: return "Point Identifiers";
    case AddKind::Traverse: return "Point From, Quadrant, Bearing";
    case AddKind::QuadrantBearing: return "Quadrant / Bearing Input";
    case AddKind::Parallel: return "Parallel to by point ids";
    case AddKind::WeightedMean: return "Weighted mean by point ids";
    case AddKind::Range: return "Intersect a range of point ids";
  }
  return "";
}

AddKind DetectKind(const AddFields& f) {
  if (f[5] == kRangeFlag) return AddKind::Range;
  if (Length(f[4]) == 6 && Length(f[5]) != 9) return AddKind::PointIds;
  if (Length(f[5]) == 9 && Length(f[7]) == 4 && Length(f[8]) == 4) return AddKind::Parallel;
  if (Length(f[5]) == 9 && Length(f[7]) == 7 && Length(f[8]) == 7) return AddKind::WeightedMean;
  return AddKind::QuadrantBearing;
}

AddKind DetectTraverseKind(const AddFields& f) {
  return Length(f[4]) == 1 ? AddKind::Traverse : AddKind::PointIds;
}

bool IsSecondLine(std::string_view line) { return TrimView(MidView(line, 4, 6)) == "0"; }

std::string EncodeBearingId(std::string_view id) { return EncodeDistanceId(id) + "00"; }

std::string EncodeDistanceId(std::string_view id) {
  const std::string_view t = TrimView(id);
  return std::string(MidView(t, 1, 3)) + "." + std::string(MidView(t, 4, 3));
}

std::string DecodeId(std::string_view text) {
  std::string digits;
  for (const char c : TrimView(text)) {
    if (c != '.') digits.push_back(c);
  }
  return Left(digits, 6);
}

std::string BearingText(std::string_view typed) { return FormatPicture(Val(typed), 5, 0); }
std::string DistanceText(std::string_view typed) { return FormatPicture(Val(typed), 3, 0); }

std::string FormatAddLine(const std::array<std::string, 9>& fields) {
  std::string line;
  for (int k = 1; k <= 8; ++k) {
    const std::string& text = fields[static_cast<std::size_t>(k)];
    const Columns c = kColumns[k];
    const int width = static_cast<int>(text.size());
    int start = c.last - width + 1;
    if (start < c.first) start = c.first;
    const auto at = static_cast<std::size_t>(start - 1);
    if (line.size() > at) {
      line.push_back(' ');
    } else {
      line.resize(at, ' ');
    }
    line += text;
  }
  return line;
}

DefinitionSpan SpanOf(const std::vector<std::string>& list, int index) {
  const int count = static_cast<int>(list.size());
  if (index < 0 || index >= count) return {index, index};
  int first = index;
  if (IsSecondLine(list[static_cast<std::size_t>(index)]) && index > 0) first = index - 1;
  int behind = first + 1;
  if (behind < count && IsSecondLine(list[static_cast<std::size_t>(behind)])) ++behind;
  return {first, behind};
}

}  // namespace tessel
