#include "viewer/picking.h"

#include <algorithm>
#include <cmath>

#include "cama/link_chain.h"
#include "cama/manual_link.h"
#include "model/config.h"
#include "model/fault.h"
#include "model/text.h"
#include "parcels/parcel_file.h"
#include "surveys/raw_records.h"
#include "viewer/drawing.h"
#include "viewer/tool_switch.h"
#include "viewer/view_transform.h"

namespace tessel {

namespace {

constexpr const char* kPointsForm = "frmSelectedPoints";
constexpr const char* kLinesForm = "frmSelectedLines";

// The shortest text of a coordinate, as the point list shows it.
std::string Number(double value) { return ShortestText(value); }

bool ParcelDisplayOn(const Session& s) {
  const ViewChecks& v = s.checks;
  return v.mnuOptionsParcel || v.mnuOptionsParcelBrief || v.mnuOptionsParcelDetail || v.mnuOptionsParcelFull;
}

// The corners of a drag, each coordinate taken in single precision, for the strict inside test.
struct Corners {
  float left, right, bottom, top;
  Corners(float x0, float y0, float x1, float y1)
      : left(std::min(x0, x1)), right(std::max(x0, x1)), bottom(std::min(y0, y1)), top(std::max(y0, y1)) {}
  bool Inside(double u, double v) const {
    const auto fu = static_cast<float>(u), fv = static_cast<float>(v);
    return left < fu && fu < right && bottom < fv && fv < top;
  }
};

void MarkDot(Session& s, double x, double y, unsigned colour) {
  s.canvas.SetPenWidth(3 * s.config.PtSizeCor);
  s.canvas.Dot(x, y, colour);
  s.canvas.SetPenWidth(1);
}

// Steps 1, 2, 4, 5 and 7 of a point pick, and with `report` step 6 and the hand-over of step 3.
void PickPoint(Session& s, int i, bool report) {
  Selection& sel = s.selection;
  const std::string y = Number(s.points.PointY(i)), x = Number(s.points.PointX(i));
  sel.PointList.push_back(s.points.PointIds(i) + "    " + y + "     " + x);
  StepOver([&] { sel.SelectedPoints.at(s.SelectionCount) = i; });
  if (report && sel.PointPickActive) {
    sel.PickedPointId = s.points.PointIds(i);
    s.pointPicks.Offer(sel.PickedPointId);
  }
  s.Changed(Change::Selection);
  RemoveDuplicatePoints(s);
  RemapSelectedPoints(s);
  if (report) {
    s.user.Status(1, "You selected ");
    s.user.Status(2, "Station " + s.points.PointIds(i));
    s.user.Status(3, "Northing =" + y);
    s.user.Status(4, "Easting =" + x);
  }
  MarkDot(s, s.points.PointX(i), s.points.PointY(i), PaletteColour(13));
  s.SelectionCount = Add16(s.SelectionCount, 1);
}

// Steps 1, 3, 4 and 5 of a parcel pick (step 2, the location commands, is the click's own).
void PickParcel(Session& s, int i) {
  Selection& sel = s.selection;
  sel.ClickedParcelY = s.parcels.ParcelY.get(i);
  sel.ClickedParcelX = s.parcels.ParcelX.get(i);
  sel.AddParcelEntry(s.parcels.ParcelLine.get(s.parcels.ParcelIdx.get(i)), {PickKind::Parcel, i, s.parcels.Reading});
  s.user.SetEnabled("frmTesting/cmdRemoveItem", true);
  s.user.SetEnabled("frmTesting/cmdClearAll", true);
  s.Changed(Change::Selection);
  StepOver([&] { sel.SelectedParcels.at(s.SelectionCount) = static_cast<std::int16_t>(i); });
  MarkDot(s, s.parcels.ParcelX.get(i), s.parcels.ParcelY.get(i), kRed);
  s.SelectionCount = Add16(s.SelectionCount, 1);
  s.user.Status(2, std::to_string(s.SelectionCount) + " Parcel(s) Selected");
}

// Steps 1, 3, 4 and 5 of a parcel pick on link record i, marked yellow; the list text is the
// link text at the parcel index of entry i, as the tool has always shown it.
void PickLinkRecord(Session& s, int i) {
  Selection& sel = s.selection;
  sel.ClickedParcelY = s.cama.LinkY.get(i);
  sel.ClickedParcelX = s.cama.LinkX.get(i);
  sel.AddParcelEntry(s.cama.LinkGeocode.get(s.parcels.ParcelIdx.get(i)), {PickKind::LinkRecord, i, s.cama.LinkReading});
  s.user.SetEnabled("frmTesting/cmdRemoveItem", true);
  s.user.SetEnabled("frmTesting/cmdClearAll", true);
  s.Changed(Change::Selection);
  StepOver([&] { sel.SelectedParcels.at(s.SelectionCount) = static_cast<std::int16_t>(i); });
  MarkDot(s, s.cama.LinkX.get(i), s.cama.LinkY.get(i), kYellow);
  s.SelectionCount = Add16(s.SelectionCount, 1);
  s.user.Status(2, std::to_string(s.SelectionCount) + " Parcel(s) Selected");
}

// The location commands work only on parcels at one and the same place.
void CheckSameLocation(Session& s, bool includingAttributesMenu) {
  if (s.SelectionCount <= 1) return;
  const Selection& sel = s.selection;
  const int first = sel.SelectedParcels.get(0);
  for (int k = 1; k < s.SelectionCount && k <= sel.SelectedParcels.bound(); ++k) {
    const int p = sel.SelectedParcels.get(k);
    if (s.parcels.ParcelY.get(p) == s.parcels.ParcelY.get(first) && s.parcels.ParcelX.get(p) == s.parcels.ParcelX.get(first)) {
      continue;
    }
    s.user.SetEnabled("mnuPopupParcelMultiple", false);
    if (includingAttributesMenu) s.user.SetEnabled("mnuAttributesMoveCentroid", false);
    s.user.SetEnabled("mnuPopupParcelMoveCentroid", false);
  }
}

// Adds record line j to the line list unless its text is there already.
void AddLine(Session& s, int j) {
  Selection& sel = s.selection;
  const std::string text = RawLineText(s.raw.RawLineFields.get(j));
  if (std::find(sel.LineList.begin(), sel.LineList.end(), text) != sel.LineList.end()) return;
  sel.LineList.push_back(text);
  StepOver([&] { sel.SelectedLines.at(static_cast<int>(sel.LineList.size()) - 1) = static_cast<std::int16_t>(j); });
  s.Changed(Change::Selection);
}

void PickPointsByClick(Session& s, const HitWindow& hw, bool left, float x, float y) {
  s.user.Status(1, "Select a point to display coordinates");
  for (int i = 1; i <= s.points.PointCount(); ++i) {
    if (!hw.Hits(kPointTolerance, x, y, s.points.PointX(i), s.points.PointY(i))) continue;
    StepOver([&] { PickPoint(s, i, true); });
  }
  if (!left) {
    Redraw(s);
    s.user.Status(1, "Pan/zoom");
  }
}

void PickPointsByWindow(Session& s, bool left, const Corners& c) {
  s.user.Status(1, "Select Points(window)");
  if (left) {
    for (int i = 1; i <= s.points.PointCount(); ++i) {
      if (c.Inside(s.points.PointX(i), s.points.PointY(i))) StepOver([&] { PickPoint(s, i, false); });
    }
    s.user.SetPointer(Pointer::Arrow);
    s.user.Status(1, "Select Point(s)");
    s.view.ZoomWindowArmed = 0;
  } else {
    Redraw(s);
  }
}

void PickParcelsByClick(Session& s, const HitWindow& hw, bool left, float x, float y) {
  s.user.Status(1, "Select Parcel(s) for editing");
  if (ParcelDisplayOn(s) && left) {
    for (int i = 1; i <= s.parcels.ParcelCount; ++i) {
      if (!hw.Hits(kPointTolerance, x, y, s.parcels.ParcelX.get(i), s.parcels.ParcelY.get(i))) continue;
      s.user.SetEnabled("mnuPopupParcelMultiple", true);
      s.user.SetEnabled("mnuPopupParcelMoveCentroid", true);
      s.user.SetEnabled("mnuAttributesMoveCentroid", true);
      StepOver([&] { PickParcel(s, i); });
    }
  }
  // With the CAMA plot on, the link records as last loaded are picked the same way.
  if (left && s.checks.mnuViewCama) {
    for (int i = 1; i <= s.cama.LinkLoadedCount; ++i) {
      if (!hw.Hits(kPointTolerance, x, y, s.cama.LinkX.get(i), s.cama.LinkY.get(i))) continue;
      StepOver([&] { PickLinkRecord(s, i); });
    }
  }
  CheckSameLocation(s, true);
}

void PickParcelsByWindow(Session& s, bool left, const Corners& c) {
  s.user.Status(1, "Select Parcels (window)");
  if (left) {
    for (int i = 1; i <= s.parcels.ParcelCount; ++i) {
      if (c.Inside(s.parcels.ParcelX.get(i), s.parcels.ParcelY.get(i))) StepOver([&] { PickParcel(s, i); });
    }
    s.user.Status(1, "Select Parcel(s) for editing");
  }
  s.view.ZoomWindowArmed = 0;
  s.user.SetPointer(Pointer::Arrow);
  Redraw(s);
  CheckSameLocation(s, false);
}

void PickPolygons(Session& s, const HitWindow& hw, bool left, float x, float y) {
  s.user.Status(1, "Select a Polygon");
  if (!left) {
    s.user.ShowPopup("mnuPopup", {"mnuPopupEditCRPO", "mnuPopupCancel"},
                     {"mnuPopupZE", "mnuPopupZoomOut", "mnuPopupZoomP", "mnuPopupHelp", "mnuPopupOther"});
    return;
  }
  const RawPolygonStore& polygons = s.polygons;
  for (int i = 1; i <= polygons.RawPolygonCount; ++i) {
    if (!hw.Hits(kPolygonTolerance, x, y, polygons.RawPolygonX.get(i), polygons.RawPolygonY.get(i))) continue;
    StepOver([&] {
      MarkDot(s, polygons.RawPolygonX.get(i), polygons.RawPolygonY.get(i), kRed);
      s.selection.SelectedPolygons.at(s.SelectionCount) = static_cast<std::int16_t>(i);
      s.SelectionCount = Add16(s.SelectionCount, 1);
      s.user.Status(2, std::to_string(s.SelectionCount) + " Polygons Selected");
    });
  }
}

void PickLineByClick(Session& s, float x, float y) {
  s.user.Status(1, "Select line(s)");
  const int best = PickRawLine(s, x, y);
  MarkRawLine(s, best);
  if (best != 0) {
    // Every record between the same two stations, in the same direction, comes with it.
    const RawFields& picked = s.raw.RawLineFields.get(best);
    for (int j = 1; j <= s.raw.RawLineCount; ++j) {
      const RawFields& f = s.raw.RawLineFields.get(j);
      if (f[1] == picked[1] && f[2] == picked[2]) AddLine(s, j);
    }
  }
  s.user.Status(2, std::to_string(s.selection.LineList.size()) + " Line(s) Selected");
}

void PickLinesByWindow(Session& s, const Corners& c) {
  s.user.Status(1, "Select lines (Window)");
  for (int j = 1; j <= s.raw.RawLineCount; ++j) {
    const RawEnds& e = s.raw.RawLineEnds.get(j);
    if (c.Inside(s.points.PointX(e.from), s.points.PointY(e.from)) && c.Inside(s.points.PointX(e.to), s.points.PointY(e.to))) {
      AddLine(s, j);
      s.user.Status(2, std::to_string(s.selection.LineList.size()) + " line(s) selected");
    }
  }
  s.view.ZoomWindowArmed = 0;
  s.user.SetPointer(Pointer::Arrow);
  Redraw(s);
}

}  // namespace

HitWindow HitWindow::Of(const ViewState& view) {
  // The difference is taken in single precision, then rounded half to even.
  const float w = view.ViewRight - view.ViewLeft;
  const float h = view.ViewTop - view.ViewBottom;
  return {std::lrint(static_cast<double>(w)), std::lrint(static_cast<double>(h))};
}

bool HitWindow::Hits(float t, float x, float y, double u, double v) const {
  const double tw = static_cast<double>(t) * static_cast<double>(W);
  const double th = static_cast<double>(t) * static_cast<double>(H);
  return x - tw < u && u < x + tw && y - th < v && v < y + th;
}

int PickRawLine(const Session& s, float x, float y) {
  int best = 0;
  double least = 10000.1;
  double d = 0.0;  // a negative value under the root keeps the distance of the line before
  for (int i = 1; i <= s.raw.RawLineCount; ++i) {
    const RawEnds& e = s.raw.RawLineEnds.get(i);
    const double x1 = s.points.PointX(e.from), y1 = s.points.PointY(e.from);
    const double x2 = s.points.PointX(e.to), y2 = s.points.PointY(e.to);
    const auto fx1 = static_cast<float>(x1), fy1 = static_cast<float>(y1);
    const auto fx2 = static_cast<float>(x2), fy2 = static_cast<float>(y2);
    const bool inX = (fx1 + 1.0f >= x || fx2 + 1.0f >= x) && (fx1 - 1.0f <= x || fx2 - 1.0f <= x);
    const bool inY = (fy1 + 1.0f >= y || fy2 + 1.0f >= y) && (fy1 - 1.0f <= y || fy2 - 1.0f <= y);
    if (!inX || !inY) continue;
    double dy = y2 - y1, dx = x2 - x1;
    if (dy == 0.0) dy = 0.001;
    if (dx == 0.0) dx = 0.001;
    const double m = dy / dx;
    const double b = y1 - m * x1;
    const double c = y - (-1.0 / m) * x;
    const double fx = (c - b) / (1.0 / m + m);
    const double fy = m * fx + b;
    // The difference of the squares, not their sum: the line tool has always measured so.
    const double under = std::pow(std::fabs(x - fx), 2) - std::pow(std::fabs(y - fy), 2);
    if (under >= 0.0) d = std::sqrt(under);
    if (d < least) {
      least = d;
      best = i;
    }
  }
  return best;
}

void PickMouseUp(Session& s, bool left, bool shift, float x0, float y0, float x, float y) {
  const HitWindow hw = HitWindow::Of(s.view);
  const bool armed = s.view.ZoomWindowArmed != 0;
  const Corners corners(x0, y0, x, y);
  switch (s.ToolMode) {
    case ToolMode::PickPoints:
      if (!armed) PickPointsByClick(s, hw, left, x, y);
      else PickPointsByWindow(s, left, corners);
      break;
    case ToolMode::PickParcels:
      if (!armed) PickParcelsByClick(s, hw, left, x, y);
      else PickParcelsByWindow(s, left, corners);
      if (!left) s.user.ShowPopup("mnuPopupParcel", {}, {});
      break;
    case ToolMode::PickPolygons: PickPolygons(s, hw, left, x, y); break;
    case ToolMode::PickLines:
      if (!left) {
        s.user.ShowPopup("mnuPopupline", {}, {});
        s.user.SetPointer(Pointer::Arrow);
        Redraw(s);
      } else if (!armed) {
        PickLineByClick(s, x, y);
      } else {
        PickLinesByWindow(s, corners);
      }
      break;
    case ToolMode::MoveParcel:
      if (shift && !s.checks.mnuViewCama) StepOver([&] { MoveParcelLocation(s, x, y); });
      if (shift && s.checks.mnuViewCama) StepOver([&] { MoveLinkPoint(s, x, y); });
      break;
    default: break;
  }
}

void RemoveDuplicatePoints(Session& s) {
  std::vector<std::string>& list = s.selection.PointList;
  // The list can change under the walk while events are served, so every step checks its
  // bounds afresh.
  for (std::size_t k = 0; k + 1 < list.size(); ++k) {
    s.user.YieldEvents();
    if (k + 1 >= list.size()) break;
    if (list[k] != list[k + 1]) continue;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(k));
    s.user.Status(1, "Duplicate, removed");
    s.Changed(Change::Selection);
    if (k > 0) --k;
    else k = static_cast<std::size_t>(-1);  // the loop's step brings it back to the first entry
  }
}

void RemapSelectedPoints(Session& s) {
  Selection& sel = s.selection;
  for (std::size_t p = 0; p < sel.PointList.size(); ++p) {
    StepOver([&] { sel.SelectedPoints.at(static_cast<int>(p)) = s.points.Find(Left(sel.PointList[p], 6)); });
  }
}

void PointsClear(Session& s) {
  s.selection.PointList.clear();
  s.Changed(Change::Selection);
  s.ToolMode = ToolMode::PickPoints;
  Redraw(s);
  s.user.Status(2, "");
}

void PointsRemoveItem(Session& s, int index) {
  Selection& sel = s.selection;
  s.SelectionCount = Add16(s.SelectionCount, -1);
  if (!sel.PointList.empty()) {
    if (index < 0 || index >= static_cast<int>(sel.PointList.size())) return;  // no entry chosen ends the step
    sel.PointList.erase(sel.PointList.begin() + index);
    RemapSelectedPoints(s);
    s.Changed(Change::Selection);
  }
  s.user.SetEnabled("frmSelectedPoints/cmdRemoveItem", !sel.PointList.empty());
  s.user.Status(2, std::to_string(s.SelectionCount) + " Points Selected");
  Redraw(s);
}

void PointsClicked(Session& s, int index) {
  if (index < 0 || index >= static_cast<int>(s.selection.PointList.size())) return;
  Redraw(s);
  const int point = s.selection.SelectedPoints.get(index);
  const double x = s.points.PointX(point), y = s.points.PointY(point);
  s.canvas.SetPenWidth(2);
  s.canvas.Circle(x, y, 500, kRed);
  s.canvas.SetPenWidth(2 * s.config.PtSizeCor);
  s.canvas.Dot(x, y, PaletteColour(13));
  s.canvas.SetPenWidth(1);
}

void PointsClosed(Session& s) {
  s.selection.PointList.clear();
  s.Changed(Change::Selection);
  SetToolMode(s, ToolMode::ZoomPan);
  Redraw(s);
}

void ParcelsRemoveItem(Session& s, int index) {
  Selection& sel = s.selection;
  s.SelectionCount = Add16(s.SelectionCount, -1);
  const int entries = static_cast<int>(sel.ParcelList().size());
  if (index < 0 || index >= entries) return;  // no entry chosen ends the step
  for (int j = index; j < entries && j + 1 <= sel.SelectedParcels.bound(); ++j) {
    sel.SelectedParcels.at(j) = sel.SelectedParcels.get(j + 1);
  }
  // frmAttributes, a view of the selection, empties its fields when its parcel leaves it.
  sel.RemoveParcelEntry(static_cast<std::size_t>(index));
  s.Changed(Change::Selection);
  s.user.SetEnabled("frmTesting/cmdRemoveItem", !sel.ParcelList().empty());
  // The polygon tool's word, kept on purpose.
  s.user.Status(2, std::to_string(s.SelectionCount) + " Polygons Selected");
  Redraw(s);
}

void ParcelsClearAll(Session& s) {
  Selection& sel = s.selection;
  for (std::size_t j = 0; j < sel.ParcelList().size() && static_cast<int>(j) <= sel.SelectedParcels.bound(); ++j) {
    sel.SelectedParcels.at(static_cast<int>(j)) = 0;
  }
  s.SelectionCount = 0;
  sel.ClearParcelList();
  s.Changed(Change::Selection);
  s.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  s.user.SetEnabled("frmTesting/cmdClearAll", false);
  s.ToolMode = ToolMode::PickParcels;
  Redraw(s);
}

void ParcelsClicked(Session& s, int index) {
  const auto& picks = s.selection.ParcelPicks();
  if (index < 0 || index >= static_cast<int>(picks.size())) return;
  // A row is shown as what it is: a link record with its CAMA record, ring and point; a parcel
  // with its ring and location. Either can stand in the list whether or not "CAMA Parcels" is
  // checked now, and neither is taken for the other.
  const ParcelPick& pick = picks[static_cast<std::size_t>(index)];
  if (pick.kind == PickKind::LinkRecord) {
    const int link = CamaListClicked(s, index);
    Redraw(s);
    if (link == 0) return;
    DrawParcelRing(s, s.cama.LinkChain.get(link), 2);
    s.canvas.Circle(s.cama.LinkX.get(link), s.cama.LinkY.get(link), 120, LinkCanvasColour(kLinkRed));
    s.canvas.SetPenWidth(1);
    return;
  }
  Redraw(s);
  if (pick.reading != s.parcels.Reading) return;
  const int parcel = pick.index;
  DrawParcelRing(s, s.parcels.ParcelRing.get(parcel));
  s.canvas.Circle(s.parcels.ParcelX.get(parcel), s.parcels.ParcelY.get(parcel), 120, kRed);
}

void LinesRemoveLine(Session& s, int index) {
  Selection& sel = s.selection;
  if (index < 0 || index >= static_cast<int>(sel.LineList.size())) {
    s.user.Message("You must first select an item to remove it from a list.", Icon::Stop);
    return;
  }
  sel.LineList.erase(sel.LineList.begin() + index);
  for (int j = index; j < static_cast<int>(sel.LineList.size()); ++j) sel.SelectedLines.at(j) = sel.SelectedLines.get(j + 1);
  s.Changed(Change::Selection);
  s.user.Status(2, std::to_string(sel.LineList.size()) + " line(s) selected");
  Redraw(s);
}

std::string LinesClipboardText(const Session& s) {
  std::string text;
  for (const std::string& line : s.selection.LineList) text += line + "\r\n";
  return text;
}

void MoveCentroidCommand(Session& s) {
  if (s.SelectionCount == 0) {
    s.user.Message("No parcel selected");
    return;
  }
  s.ToolMode = ToolMode::MoveParcel;
  s.user.SetPointer(Pointer::Crosshair);
  s.user.Status(1, "Hold shift and click new");
}

void PopupParcelCancel(Session& s) {
  s.SelectionCount = 0;
  s.selection.ClearParcelList();
  s.Changed(Change::Selection);
  s.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  Redraw(s);
  s.user.Status(2, "");
}

void PopupParcelPanZoom(Session& s) {
  s.ToolMode = ToolMode::ZoomPan;
  s.user.Status(1, "Pan/Zoom");
  s.user.Status(2, "");
  s.user.SetChecked("Select", false);
  s.user.SetChecked("Centroid", false);
  s.user.SetChecked("Zoom", true);
}

void ToolbarSelect(Session& s) {
  SetToolMode(s, ToolMode::PickPoints);
  s.user.ShowForm(kPointsForm);
}

void ToolbarLines(Session& s) {
  SetToolMode(s, ToolMode::PickLines);
  s.user.ShowForm(kLinesForm);
}

}  // namespace tessel
