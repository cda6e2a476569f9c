#include "cama/manual_link.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "cama/free_format.h"
#include "cama/link_chain.h"
#include "model/fault.h"
#include "model/text.h"

namespace tessel {

namespace {

constexpr const char* kTestingForm = "frmTesting";

int LinkOfRow(const Session& s, int row) {
  if (row < 0 || row > s.selection.SelectedParcels.bound()) return 0;
  return s.selection.SelectedParcels.get(row);
}

int CamaOfRow(const Session& s, int row) {
  if (row < 0 || row > s.cama.CamaPickIndex.bound()) return 0;
  return s.cama.CamaPickIndex.get(row);
}

void SaveAndReload(Session& s) {
  if (WriteLinkFile(s)) LoadLinkFile(s);
  RedrawLinks(s);
}

}  // namespace

int CamaListClicked(Session& s, int row) {
  if (row < 0 || row >= static_cast<int>(s.selection.ParcelList.size())) return 0;
  CamaStore& c = s.cama;
  const int r = LinkOfRow(s, row);
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
    s.user.ShowForm("frmCama");
  }
  return r;
}

void CamaDeleteLink(Session& s, int testingRow) {
  Selection& sel = s.selection;
  if (testingRow < 0 || testingRow >= static_cast<int>(sel.ParcelList.size())) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  const int r = LinkOfRow(s, testingRow);
  StepOver([&] {
    s.cama.LinkX.at(r) = 0.0;
    s.cama.LinkY.at(r) = 0.0;
  });
  s.SelectionCount = static_cast<std::int16_t>(std::max(0, s.SelectionCount - 1));
  for (int j = testingRow; j + 1 <= sel.SelectedParcels.bound() && j < static_cast<int>(sel.ParcelList.size()); ++j) {
    sel.SelectedParcels.at(j) = sel.SelectedParcels.get(j + 1);
  }
  sel.ParcelList.erase(sel.ParcelList.begin() + testingRow);
  s.user.ListChanged(kTestingForm);
  if (sel.ParcelList.empty()) s.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  s.user.Status(2, std::to_string(s.SelectionCount) + " Polygons Selected");
  SaveAndReload(s);
}

int OpenCamaParcels(Session& s, int testingRow) {
  const int rows = static_cast<int>(s.selection.ParcelList.size());
  if (rows == 0) return -1;
  if (testingRow < 0 || testingRow >= rows) testingRow = rows - 1;
  CamaStore& c = s.cama;
  const std::string section = Mid(c.LinkGeocode.get(LinkOfRow(s, testingRow)), 7, 2);
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
      testingRow >= static_cast<int>(s.selection.ParcelList.size())) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  const int r = LinkOfRow(s, testingRow);
  StepOver([&] {
    c.LinkGeocode.at(r) = Left(c.CamaRecords.get(CamaOfRow(s, camaRow)), 17);
    c.LinkColor.at(r) = kLinkGreen;
  });
  RedrawLinks(s);
  s.canvas.SetPenWidth(4);
  s.canvas.Dot(c.LinkX.get(r), c.LinkY.get(r), LinkCanvasColour(c.LinkColor.get(r)));
  s.canvas.SetPenWidth(1);
}

void CamaMultiAtt(Session& s, int camaRow, int testingRow) {
  CamaStore& c = s.cama;
  if (camaRow < 0 || camaRow >= static_cast<int>(c.CamaParcelRows.size()) || testingRow < 0 ||
      testingRow >= static_cast<int>(s.selection.ParcelList.size())) {
    s.user.Message(kMsgSelectCamaParcel, Icon::Stop);
    return;
  }
  if (c.LinkCount >= CamaStore::kBound) {
    s.user.Message(kMsgLinkTableFull, Icon::Exclamation);
    return;
  }
  const int r = LinkOfRow(s, testingRow);
  const int n = c.LinkCount + 1;
  c.LinkGeocode.at(n) = Left(c.CamaRecords.get(CamaOfRow(s, camaRow)), 17);
  c.LinkChain.at(n) = c.LinkChain.get(r);
  c.LinkX.at(n) = c.LinkX.get(r);
  c.LinkY.at(n) = c.LinkY.get(r);
  c.LinkColor.at(n) = kLinkGreen;
  c.ClotLines.at(n).clear();
  c.LinkCount = static_cast<std::int16_t>(n);
}

void CamaParcelOk(Session& s) { SaveAndReload(s); }

void CamaParcelCancel(Session& s) {
  LoadLinkFile(s);
  RedrawLinks(s);
}

void MoveLinkPoint(Session& s, double x, double y) {
  const int r = LinkOfRow(s, 0);
  StepOver([&] {
    s.cama.LinkX.at(r) = RoundDecimals(x, 3);
    s.cama.LinkY.at(r) = RoundDecimals(y, 3);
  });
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
  s.user.ShowForm("frmUnusedCama");
}

}  // namespace tessel
