#include "cama/manual_link.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "cama/free_format.h"
#include "cama/link_chain.h"
#include "model/fault.h"
#include "model/selection_checks.h"
#include "model/text.h"

namespace tessel {

namespace {

int CamaOfRow(const Session& s, int row) {
  if (row < 0 || row > s.cama.CamaPickIndex.bound()) return 0;
  return s.cama.CamaPickIndex.get(row);
}

// Reads .mtc back after the tables were written to it. The link records in the selection list
// keep their rows, record r becoming record renumbered[r] (0: not in the file, and its row then
// names nothing).
void ReloadKeepingRows(Session& s, const std::vector<int>& renumbered) {
  const unsigned reading = s.cama.LinkReading;
  if (!LoadLinkFile(s)) return;
  Selection& sel = s.selection;
  for (std::size_t row = 0; row < sel.ParcelPicks().size(); ++row) {
    const ParcelPick& pick = sel.ParcelPicks()[row];
    if (pick.kind != PickKind::LinkRecord || pick.reading != reading) continue;
    const bool known = pick.index >= 1 && pick.index < static_cast<int>(renumbered.size());
    const int index = known ? renumbered[static_cast<std::size_t>(pick.index)] : 0;
    sel.RenumberLinkRecord(row, index <= s.cama.LinkCount ? index : 0, s.cama.LinkReading);
  }
  s.Changed(Change::Selection);
}

// Rewrites .mtc and reads it back. A record at X or Y zero is not written, so those behind it
// move up.
void SaveAndReload(Session& s) {
  const CamaStore& c = s.cama;
  std::vector<int> renumbered(static_cast<std::size_t>(std::max<int>(c.LinkCount, 0)) + 1, 0);
  int next = 0;
  for (int r = 1; r <= c.LinkCount; ++r) {
    if (c.LinkX.get(r) != 0.0 && c.LinkY.get(r) != 0.0) renumbered[static_cast<std::size_t>(r)] = ++next;
  }
  if (WriteLinkFile(s)) ReloadKeepingRows(s, renumbered);
  RedrawLinks(s);
}

}  // namespace

int CamaListClicked(Session& s, int row) {
  const int r = LinkRecordOfRow(s, row);
  if (r == 0) return 0;
  CamaStore& c = s.cama;
  const std::string& geocode = c.LinkGeocode.get(r);
  // The last record with this key is the one the dialog keeps.
  int found = 0;
  std::unordered_map<std::string, int> byKey;
  for (int j = 1; j <= c.CamaCount; ++j) byKey[Left(c.CamaRecords.get(j), 17)] = j;
  if (const auto hit = byKey.find(geocode); hit != byKey.end()) found = hit->second;
  if (found != 0) {
    const std::string& record = c.CamaRecords.get(found);
    c.CamaText = Mid(record, 251, 30) + "\r\n" + Mid(record, 281, 30) + "\r\n" + Mid(record, 311, 30) + "\r\n" +
                 Mid(record, 341, 30);
    c.CamaLabels = {"Owners Name " + Mid(record, 41, 30), "geocode = " + Left(record, 17),
                    "Section " + Mid(geocode, 7, 2)};
    s.Changed(Change::Cama);
    s.user.ShowForm("frmCama");
  }
  return r;
}

void CamaDeleteLink(Session& s, int testingRow) {
  Selection& sel = s.selection;
  const int rows = static_cast<int>(sel.ParcelList().size());
  if (testingRow < 0 || testingRow >= rows) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  const int r = SelectedLinkRecord(s, testingRow);
  if (r == 0) return;
  s.cama.LinkX.at(r) = 0.0;
  s.cama.LinkY.at(r) = 0.0;
  s.SelectionCount = static_cast<std::int16_t>(std::max(0, s.SelectionCount - 1));
  for (int j = testingRow; j + 1 <= sel.SelectedParcels.bound() && j < rows; ++j) {
    sel.SelectedParcels.at(j) = sel.SelectedParcels.get(j + 1);
  }
  sel.RemoveParcelEntry(static_cast<std::size_t>(testingRow));
  s.Changed(Change::Selection);
  if (sel.ParcelList().empty()) s.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  s.user.Status(2, std::to_string(s.SelectionCount) + " Polygons Selected");
  SaveAndReload(s);
}

void FillCamaParcelRows(Session& s, const std::string& section) {
  CamaStore& c = s.cama;
  c.CamaParcelSection = section;
  c.CamaParcelCaption = kCamaParcelCaption + section;
  c.CamaParcelRows.clear();
  c.CamaPickIndex.clear();
  c.CamaParcelLabels = {};
  for (int j = 1; j <= c.CamaCount; ++j) {
    const std::string& record = c.CamaRecords.get(j);
    if (Mid(record, 7, 2) != section) continue;
    const int position = static_cast<int>(c.CamaParcelRows.size());
    if (position > c.CamaPickIndex.bound()) break;
    c.CamaParcelRows.push_back("Sec " + Mid(record, 7, 2) + " " + Trim(Mid(record, 251, 120)));
    c.CamaPickIndex.at(position) = static_cast<std::int16_t>(j);
  }
}

int OpenCamaParcels(Session& s, int testingRow) {
  const int rows = static_cast<int>(s.selection.ParcelList().size());
  if (rows == 0) return -1;
  if (testingRow < 0 || testingRow >= rows) testingRow = rows - 1;
  const int r = SelectedLinkRecord(s, testingRow);
  if (r == 0) return testingRow;
  FillCamaParcelRows(s, Mid(s.cama.LinkGeocode.get(r), 7, 2));
  s.Changed(Change::Cama);
  s.user.ShowForm("frmCamaParcel");
  return testingRow;
}

int CamaParcelClicked(Session& s, int row) {
  CamaStore& c = s.cama;
  const int rows = static_cast<int>(c.CamaParcelRows.size());
  if (rows == 0) return -1;
  if (row < 0 || row >= rows) row = rows - 1;
  const std::string& record = c.CamaRecords.get(CamaOfRow(s, row));
  c.CamaParcelLabels = {"Owners Name " + Mid(record, 41, 30), "geocode = " + Left(record, 38),
                        "Section " + Mid(record, 7, 2)};
  return row;
}

void CamaApply(Session& s, int camaRow, int testingRow) {
  CamaStore& c = s.cama;
  if (camaRow < 0 || camaRow >= static_cast<int>(c.CamaParcelRows.size()) || testingRow < 0 ||
      testingRow >= static_cast<int>(s.selection.ParcelList().size())) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  const int r = SelectedLinkRecord(s, testingRow);
  if (r == 0) return;
  c.LinkGeocode.at(r) = Left(c.CamaRecords.get(CamaOfRow(s, camaRow)), 17);
  c.LinkColor.at(r) = kLinkGreen;
  s.Changed(Change::Cama);
  RedrawLinks(s);
  s.canvas.SetPenWidth(4);
  s.canvas.Dot(c.LinkX.get(r), c.LinkY.get(r), LinkCanvasColour(c.LinkColor.get(r)));
  s.canvas.SetPenWidth(1);
}

void CamaMultiAtt(Session& s, int camaRow, int testingRow) {
  CamaStore& c = s.cama;
  if (camaRow < 0 || camaRow >= static_cast<int>(c.CamaParcelRows.size()) || testingRow < 0 ||
      testingRow >= static_cast<int>(s.selection.ParcelList().size())) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  const int r = SelectedLinkRecord(s, testingRow);
  if (r == 0) return;
  if (c.LinkCount >= CamaStore::kBound) {
    s.user.Message(kMsgLinkTableFull, Icon::Exclamation);
    return;
  }
  const int n = c.LinkCount + 1;
  c.LinkGeocode.at(n) = Left(c.CamaRecords.get(CamaOfRow(s, camaRow)), 17);
  c.LinkChain.at(n) = c.LinkChain.get(r);
  c.LinkX.at(n) = c.LinkX.get(r);
  c.LinkY.at(n) = c.LinkY.get(r);
  c.LinkColor.at(n) = kLinkGreen;
  c.ClotLines.at(n).clear();
  c.LinkCount = static_cast<std::int16_t>(n);
  s.Changed(Change::Cama);
}

void CamaParcelOk(Session& s) { SaveAndReload(s); }

void CamaParcelCancel(Session& s) {
  // The file is as last written, so the records as last read keep their numbers, and their rows
  // in the selection list stay theirs.
  std::vector<int> same(static_cast<std::size_t>(std::max<int>(s.cama.LinkLoadedCount, 0)) + 1);
  for (std::size_t r = 0; r < same.size(); ++r) same[r] = static_cast<int>(r);
  ReloadKeepingRows(s, same);
  RedrawLinks(s);
}

void MoveLinkPoint(Session& s, double x, double y) {
  const int r = SelectedLinkRecord(s, 0);
  if (r == 0) return;
  s.cama.LinkX.at(r) = RoundDecimals(x, 3);
  s.cama.LinkY.at(r) = RoundDecimals(y, 3);
  SaveAndReload(s);
}

void ShowUnusedCama(Session& s) {
  CamaStore& c = s.cama;
  std::vector<std::string>& rows = c.UnusedRows;
  rows.clear();
  std::unordered_set<std::string> linked;
  for (int r = 1; r <= c.LinkLoadedCount; ++r) linked.insert(c.LinkGeocode.get(r));
  for (int j = 1; j <= c.CamaCount; ++j) {
    std::string key = Left(c.CamaRecords.get(j), 17);
    if (!linked.count(key)) rows.push_back(std::move(key));
  }
  // Runs of equal neighbours collapse to one row; the list keeps the file's order.
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  if (c.CamaCount == 0) {
    s.user.Message("The CAMA file holds no records, so there is nothing to report. Nothing was added to .phd.",
                   Icon::Exclamation);
  } else {
    const int unused = static_cast<int>(rows.size());
    const double percent = static_cast<double>(c.CamaCount - unused) / c.CamaCount * 100.0;
    AppendPhd(s, {"Total CAMA Parcels = " + FreeNumber(c.CamaCount), "CAMA NOT Linked parcels = " + FreeNumber(unused),
                  "CAMA Linked geocodes = " + FreeNumber(c.CamaCount - unused),
                  "Percent of CAMA Match = " + FormatPicture(percent, 0, 1) + " %"});
  }
  s.Changed(Change::Cama);
  s.user.ShowForm("frmUnusedCama");
}

}  // namespace tessel
