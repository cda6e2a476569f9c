#pragma once
// Quick edit (frmQuickEdit): chosen attribute fields written into every selected parcel at once,
// and the file written at once; its pick list (frmQuickEditList) of the attribute texts already
// in the job; copy and paste of an attribute line.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

// The seven lines of the dialog; only the checked ones are applied.
struct QuickEditFields {
  bool useSection = false, useLocation = false, useType = false, useNumber = false, useAcreage = false,
       useSuffix = false, useNote = false;
  std::string section;
  std::string location;   // the letter
  std::string typeEntry;  // the entry; its first character is written
  std::string number;
  std::string acreage;
  std::string suffix;
  std::string noteEntry;  // "<none> " or empty writes a blank
};

// The first entry of the quick edit's note list.
inline constexpr const char* kQuickEditNoNote = "<none> ";

// Opening: with nothing selected "No parcel selected" and false; false too, with the reason told,
// when the selection holds link records or parcels of an earlier reading.
bool QuickEditOpen(Session& session);
// OK: the fields into every parcel of the selection list, then the file rewritten and read
// again. False when .IID could not be rewritten: the user is told and the store keeps the edits.
bool QuickEditOk(Session& session, const QuickEditFields& fields);

// The pick list: columns 13 to 21 of every parcel whose type is neither "?" nor "A", sorted.
std::vector<std::string> QuickEditListEntries(const Session& session);
// "Remove Duplicates": each entry compared with the next and an equal one removed, yielding to
// events between comparisons.
void RemoveNeighbourDuplicates(Session& session, std::vector<std::string>& entries);
// "<": the survey type, number and suffix of an entry into the fields, their boxes checked.
void FillFromQuickEditEntry(const std::string& entry, QuickEditFields& fields);

// mnuPopupParcelCopy: the line of the parcel at position SelectionCount of the selection is
// kept ("No parcel selected" with none). mnuPopupParcelPaste has no effect.
void CopyParcelLine(Session& session, std::string& kept);

}  // namespace tessel
