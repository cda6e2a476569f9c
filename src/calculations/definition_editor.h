#pragma once
// The rules of frmADDCalcs: the kinds a line can take for each type, the labels of its fields,
// the checks on saving with their messages and the field that gets the focus, the lines written,
// the form filled from a definition, the fields that take a picked point, and the descriptions
// frmADD shows for a list entry.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "calculations/add_file.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kNoSurvey = "<none>";
inline constexpr const char* kMsgNeedPoint = "You must enter a pointid to be computed";
inline constexpr const char* kMsgTraverseTotal = "tot. dist. field should be zero for traverse computations";
inline constexpr const char* kMsgInvalidQuadrant = "Invalid Quadrant";
inline constexpr const char* kMsgNeedDistance = "Distance must be input";
inline constexpr const char* kMsgInvalidBearing = "Invalid Bearing";
inline constexpr const char* kMsgBearingZero = "Bearing field should be zero when using point ids";
inline constexpr const char* kMsgNeedLineType = "You must select line type";
inline constexpr const char* kMsgNeedKind = "You must select a bearing definition type";
inline constexpr const char* kProportionHint = "Leave Distance fields zero for midpoint proportion";

// The type list and the line types, as the form shows them.
const std::vector<std::string>& TypeEntries();
const std::vector<std::string>& LineTypeEntries2();

// The fields of one line group, in the order of the form.
enum class LineField { From = 0, To = 1, Bearing = 2, Prop = 3, Total = 4 };
inline constexpr int kLineFields = 5;

struct LineInput {
  std::array<std::string, kLineFields> fields;  // Point From, Point To / Q, Bearing, Prop., Total
  int lineType = 0;                             // 1 straight, 2 geodetic, 0 not chosen
  int kind = -1;                                // index in the line's "Bearing is defined by:" list
  std::string& at(LineField f) { return fields[static_cast<std::size_t>(f)]; }
  const std::string& at(LineField f) const { return fields[static_cast<std::size_t>(f)]; }
};

struct DefinitionInput {
  int type = 0;  // 1, 2, 3; 0 not chosen
  std::string newPoint;
  std::string survey = kNoSurvey;
  std::array<LineInput, 2> lines;
};

// The entries of "Bearing is defined by:" for a type and line (0 or 1).
std::vector<AddKind> KindsFor(int type, int line);
// The kind chosen on a line, if any.
std::optional<AddKind> ChosenKind(const DefinitionInput& input, int line);

// The captions of the five fields of a line for a kind, and which of them the kind uses.
std::array<std::string, kLineFields> FieldLabels(AddKind kind);
std::array<bool, kLineFields> FieldUsed(AddKind kind);
// After a choice in "Bearing is defined by:": the fields not used are cleared to ".000" or
// ".00000" (the range's flag shows "999.999"), and a field now holding an id loses such a text.
void ApplyKind(LineInput& line, AddKind kind);

// Where a failed check puts the focus.
struct FieldRef {
  enum class Where { NewPoint, LineField, LineType, Kind } where = Where::NewPoint;
  int line = 0;
  LineField field = LineField::From;
};
struct CheckFailure {
  std::string message;
  FieldRef focus;
};
// The checks on saving, in their order; empty fields are filled first (which stays, as on the
// form). Last, a field holding an id (or the quadrant) that the line's kind uses must not be
// blank. Nothing when the definition can be written.
std::optional<CheckFailure> CheckDefinition(DefinitionInput& input);
// The message for a used field left blank: its caption, and the line when there are two.
std::string BlankFieldMessage(const std::string& label, int line, int lines);

// The one or two .add lines of a checked definition.
std::vector<std::string> DefinitionLines(const DefinitionInput& input);
// The form filled from the lines of a definition (its first line and, for an intersection, the
// second), the survey looked up in .ads.
DefinitionInput InputFromLines(const Session& session, const std::vector<std::string>& lines);

// The fields of the form that take a picked point, in order: (line, field).
std::vector<std::pair<int, LineField>> PickFields(const DefinitionInput& input);

// The heading of the editor for an entry of the list.
std::string EditorHeading(AddType type);

// What frmADD shows under the list for the definition at `index`.
struct Description {
  std::string heading;
  std::string text;
};
Description Describe(const Session& session, const std::vector<std::string>& list, int index);

// The survey of a computed point in .ads: the last line for it wins; "<none>" without one.
std::string SurveyOf(const CalculationLists& lists, const std::string& id);

}  // namespace tessel
