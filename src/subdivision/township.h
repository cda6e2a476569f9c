#pragma once
// The township diagram (frmTWP): 36 section buttons, the "Status" and "Define" modes that colour
// them from .sub and .irr, and the click on a section that shows its status text and opens the
// section dialog.

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"
#include "subdivision/irr_file.h"
#include "subdivision/section_editor.h"

namespace tessel {

inline constexpr const char* kNoIrregularSubdivision = "No Irregular Subdivision for this section";
inline constexpr const char* kTownshipPlaceKey = "frmTWP";

// The sections whose block header stands in .irr: lines of exactly six characters after
// trimming that equal a section's centre, in file order.
std::vector<int> DefinedSections(std::string_view irrText);
// The sections .sub reports on: lines whose columns 36-43 read "SECTION ", with the number from
// column 44, in file order.
std::vector<int> ReportedSections(std::string_view subText);
// The status text of a section in .sub: the first line whose columns from 63 on equal the
// section's centre as a number, with the following lines joined by CR LF up to a line starting
// " ***" or the end; kNoIrregularSubdivision when there is none.
std::string SectionStatusText(std::string_view subText, int section);

// The section button of row `row` (0 north to 5 south) and column `column` (0 west to 5 east).
int SectionAt(int row, int column);

struct TownshipDiagram {
  bool statusMode = false;
  bool defineMode = false;
  // Section buttons 1 to 36.
  std::array<Shade, 37> shades{};
  int current = 0;
  // The status window.
  std::string statusCaption;
  std::string statusText;
};

// The menu entry "Irregular Section Subdivision": needs a job ("You must first open or create a
// project"); backs .irr up to .irZ when there is no .irZ yet. True when the diagram may open.
bool OpenTownshipDiagram(Session& session);

// The toggles: on colours the sections from the file when it exists, off puts all 36 back.
void SetStatusMode(Session& session, TownshipDiagram& diagram, bool on);
void SetDefineMode(Session& session, TownshipDiagram& diagram, bool on);

struct SectionClick {
  bool showStatus = false;
  // The section dialog to show, when define mode is on.
  bool openEditor = false;
};

// A click on section `section`: the status text (shown when status mode is on and .sub exists),
// and in define mode the section's block read into the store and the dialog set up in `editor`.
SectionClick ClickSection(Session& session, TownshipDiagram& diagram, int section, SectionForm& editor);

// After a save: the sections still in .irr back to the system colour, and the green of "Define"
// applied again when it is on.
void RefreshAfterSave(Session& session, TownshipDiagram& diagram, const std::vector<int>& sectionsWithBlocks);

}  // namespace tessel
