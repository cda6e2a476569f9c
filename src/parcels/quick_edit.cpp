#include "parcels/quick_edit.h"

#include <algorithm>

#include "model/fault.h"
#include "model/selection_checks.h"
#include "model/text.h"
#include "parcels/parcel_attributes.h"
#include "parcels/parcel_file.h"

namespace tessel {

bool QuickEditOpen(Session& session) {
  if (session.SelectionCount == 0) {
    session.user.Message("No parcel selected");
    return false;
  }
  return SelectedParcelIndexes(session).has_value();
}

bool QuickEditOk(Session& session, const QuickEditFields& f) {
  const std::string type = Left(f.typeEntry, 1);
  const std::string number = WrittenNumber(type == "O" ? UnnumberedLotNumber(f.number) : f.number);
  const std::string acreage = WrittenAcreage(f.acreage);
  const std::string suffix = WrittenSuffix(f.suffix);
  const std::string note = f.noteEntry == kQuickEditNoNote ? " " : WrittenNote(f.noteEntry);
  // The selection is checked again: the dialog is modal, but its OK is the write.
  const auto picked = SelectedParcelIndexes(session);
  if (!picked) return false;
  ParcelStore& store = session.parcels;
  for (const int p : *picked) {
    StepOver([&] {
      store.ParcelEdit.at(p) = store.ParcelLine.get(p);
      std::string line = store.ParcelLine.get(p);
      if (f.useSection) line = OverwriteColumns(line, 5, 3, f.section);
      if (f.useLocation) line = OverwriteColumns(line, 9, 1, f.location);
      if (f.useType) line = OverwriteColumns(line, 13, 1, type);
      if (f.useNumber) line = OverwriteColumns(line, 15, 5, number);
      if (f.useAcreage) line = OverwriteColumns(line, 27, 9, acreage);
      if (f.useSuffix) line = OverwriteColumns(line, 20, 2, suffix);
      if (f.useNote) line = OverwriteColumns(line, 25, 1, note);
      store.ParcelLine.at(p) = line;
    });
  }
  if (!WriteEditedParcels(session)) {
    store.ParcelDirty = -1;
    return false;
  }
  RereadParcelsAfterWrite(session);
  session.user.Status(2, "0 Parcel(s) Selected");
  session.user.SetPointer(Pointer::Arrow);
  return true;
}

std::vector<std::string> QuickEditListEntries(const Session& session) {
  std::vector<std::string> entries;
  for (int i = 1; i <= session.parcels.ParcelCount; ++i) {
    const std::string& line = session.parcels.ParcelLine.get(i);
    const std::string type = Trim(Mid(line, 13, 1));
    if (type != "?" && type != "A") entries.push_back(Mid(line, 13, 9));
  }
  std::stable_sort(entries.begin(), entries.end());
  return entries;
}

void RemoveNeighbourDuplicates(Session& session, std::vector<std::string>& entries) {
  // One pass keeps the first of each run of equal neighbours, as comparing each entry with the
  // next and removing the equal one does.
  std::size_t kept = 0;
  for (std::size_t k = 0; k < entries.size(); ++k) {
    if (k > 0) session.user.YieldEvents();
    if (kept > 0 && entries[k] == entries[kept - 1]) continue;
    if (kept != k) entries[kept] = std::move(entries[k]);
    ++kept;
  }
  entries.resize(kept);
}

void FillFromQuickEditEntry(const std::string& entry, QuickEditFields& f) {
  const std::string letter = Left(entry, 1);
  if (!letter.empty() && letter != "V" && (std::string_view("ABCDEFGHIJKLMNOPQRSTUWXYZ2?").find(letter) != std::string_view::npos)) {
    for (const std::string& type : SurveyTypeEntries()) {
      if (type.compare(0, 1, letter) == 0) f.typeEntry = type;
    }
  }
  f.number = Trim(Mid(entry, 3, 5));
  f.suffix = Trim(Mid(entry, 8, 2));
  f.useType = f.useNumber = f.useSuffix = f.useNote = true;
}

void CopyParcelLine(Session& session, std::string& kept) {
  if (session.SelectionCount == 0) {
    session.user.Message("No parcel selected");
    return;
  }
  StepOver([&] {
    kept = session.parcels.ParcelLine.get(session.selection.SelectedParcels.get(session.SelectionCount));
  });
}

}  // namespace tessel
