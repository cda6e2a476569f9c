#pragma once
// The section dialog (frmIRR) without its widgets: the 25 position buttons of one section with
// their labels, colours and emphasis, the popup of a position, and what each of its dialogs
// (frmSubPtId, frmDblCor, frmProport, frmIntersect) and the Reset button do to the
// SectionDefinitionStore.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "model/section_definitions.h"
#include "model/session.h"
#include "subdivision/irr_file.h"

namespace tessel {

struct SectionForm {
  int section = 0;
  // The position of the last right click.
  int position = 0;
  std::string caption;
  // Positions 1 to 25: the nominal or substitute identifier, the button colour, and whether the
  // identifier is a point of the job.
  std::array<std::string, 26> labels{};
  std::array<Shade, 26> shades{};
  std::array<bool, 26> emphasised{};
};

// The section dialog set up for `section`: caption "Section " + number, labels and colours, and
// the section's block of .irr (when the file exists) read into the store.
SectionForm OpenSection(Session& session, int section);

// Emphasis of every label: its identifier is in the point store.
void MarkLabels(const Session& session, SectionForm& form);

// Where a position button stands in the section's diagram: row 0 (north) to 4, column 0 (west)
// to 4.
struct GridPlace {
  int row = 0;
  int column = 0;
};
GridPlace PositionPlace(int position);

// The popup entries (object names) and which are enabled for a position.
struct PopupEntry {
  const char* name;
  const char* caption;
};
const std::vector<PopupEntry>& SectionPopupEntries();
bool PopupEnabled(const std::string& entry, int position);

// "Point ID Substitution" (frmSubPtId).
std::string SubstitutionLabel(const SectionForm& form, int position);
void ApplySubstitution(Session& session, SectionForm& form, int position, const std::string& value);

// "Define Double Section Corner" (frmDblCor), positions 2 to 5.
struct DoubleCornerRow {
  std::string point;
  std::string direction;  // "N", "E", "S", "W" or empty
};
std::string DoubleCornerHeading(const SectionForm& form, int position);
// The rows as the dialog fills them: from the records of the corner one position before.
std::array<DoubleCornerRow, 2> DoubleCornerPrefill(const Session& session, const SectionForm& form, int position);
// OK: false when a field is empty, and nothing changes.
bool ApplyDoubleCorner(Session& session, SectionForm& form, int position, const std::array<DoubleCornerRow, 2>& rows);
void DeleteDoubleCorner(Session& session, SectionForm& form, int position);

// The toggles: "Non-computable Quarter Corner" (6-9), "Non-computable Exterior 1/16th" (18-25),
// "Offset to line" (6-9, 18-25). Other positions change nothing.
void ToggleNonComputable(Session& session, SectionForm& form, int position);
void ToggleOffset(Session& session, SectionForm& form, int position);

// "Interior 1/16th proportion " (frmProport), positions 10 to 13.
std::string ProportionHeading(const SectionForm& form, int position);
ProportionDefinition ProportionPrefill(const Session& session, const SectionForm& form, int position);
void ApplyProportion(Session& session, SectionForm& form, int position, const std::string& parenthetical,
                     const std::string& total, bool deleteDefinition);

// "Define Center of Section" (1) and "Define Center of Quarter Section" (14-17), frmIntersect.
std::string IntersectHeading(const SectionForm& form, int position);
LinePair IntersectPrefill(const Session& session, const SectionForm& form, int position);
void ApplyIntersect(Session& session, SectionForm& form, int position, const LinePair& pair);
// What keeps a centre's definition from being stored: a line with no type chosen, or a field
// its type uses left blank (the message names the line and the field). `field` is 0 for the
// type list, 1 to 4 for the fields; `line` 0 north-south, 1 east-west.
struct IntersectProblem {
  std::string message;
  int line = 0;
  int field = 0;
};
std::optional<IntersectProblem> CheckIntersect(const LinePair& pair);
// The captions of the four fields of a line definition of `type`; empty for a field not used.
std::array<std::string, 4> LineFieldLabels(int type);
// The group captions above the fields of `type` ("First Line", "Second Line", "Parallel to:").
std::array<std::string, 2> LineGroupLabels(int type);

// "Reset".
void ResetSection(Session& session, SectionForm& form);

}  // namespace tessel
