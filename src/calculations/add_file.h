#pragma once
// The lines of .add: cutting a line into its fields, the kind of bearing definition read off the
// field lengths, the encoding of identifiers into numeric fields, and the writing of a line.

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

inline constexpr const char* kLineEnd = "\r\n";
inline constexpr const char* kRangeFlag = "999.99900";
// The first identifier of the working points of the calculation lists.
inline constexpr double kFirstWorkingPoint = 950100;

// Fields 1 to 9 of a line (index 0 unused), each trimmed; a short line gives empty fields.
using AddFields = std::array<std::string, 10>;
AddFields CutAddLine(std::string_view line);

// The definition types of field 1.
enum class AddType { Unknown = 0, Traverse = 1, Intersection = 2, ConnectingLine = 3 };
AddType TypeOfLine(std::string_view line);

// How the bearing of a line is defined.
enum class AddKind {
  PointIds,         // "Point Identifiers"
  Traverse,         // "Point From, Quadrant, Bearing"
  QuadrantBearing,  // "Quadrant / Bearing Input"
  Parallel,         // "Parallel to by point ids"
  WeightedMean,     // "Weighted mean by point ids"
  Range,            // "Intersect a range of point ids"
};
const char* KindText(AddKind kind);

// The kind of an intersection line (or any line) by the lengths of its trimmed fields.
AddKind DetectKind(const AddFields& fields);
// The kind of a traverse or proportion line: a field 4 of one character is a quadrant.
AddKind DetectTraverseKind(const AddFields& fields);

// True for the second line of an intersection: field 2 is "0".
bool IsSecondLine(std::string_view line);

// ABCDEF as "ABC.DEF00" (field 5) and "ABC.DEF" (fields 7 and 8); decoding drops the point and
// keeps the first six characters.
std::string EncodeBearingId(std::string_view id);
std::string EncodeDistanceId(std::string_view id);
std::string DecodeId(std::string_view text);

// The pictures "##.00000" and "###.000" of a number typed in a field.
std::string BearingText(std::string_view typed);
std::string DistanceText(std::string_view typed);

// A line from the texts of fields 1 to 8 (index 0 unused): field 1 at column 2, field 6 at 36,
// the others right-justified to end in columns 9, 16, 23, 33, 46, 56. A text too long for its
// columns starts at the field's first column, and one that would run into the next field moves
// that field right by what it needs and a blank.
std::string FormatAddLine(const std::array<std::string, 9>& fields);

// The list entries of the definition at `index`: its first line and the first line behind it.
// The second line of an intersection belongs to the line before it.
struct DefinitionSpan {
  int first = 0;
  int behind = 0;
};
DefinitionSpan SpanOf(const std::vector<std::string>& list, int index);

}  // namespace tessel
