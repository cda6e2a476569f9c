#include "viewer/drawing.h"

#include <cmath>
#include <optional>

#include "cama/link_chain.h"
#include "model/fault.h"
#include "datasets/identity.h"
#include "parcels/ring_ids.h"
#include "model/text.h"
#include "viewer/view_transform.h"

namespace tessel {

namespace {

struct Painter {
  Session& s;
  CanvasPort& c;
  const Config& cfg;
  unsigned back;
  unsigned fore;
};

bool ZeroAt(const Session& s, int i) { return s.points.PointX(i) == 0.0 || s.points.PointY(i) == 0.0; }

void DrawControl(Painter& p) {
  for (int i = 1; i <= p.s.control.ControlCount; ++i) {
    const ControlStation& station = p.s.control.Control.get(i);
    p.c.SetPenWidth(p.cfg.PtSizeCtrl);
    p.c.Dot(station.x, station.y, PaletteColour(p.cfg.CtrlColor));
  }
}

void DrawPoints(Painter& p, bool withIds) {
  const PointStore& points = p.s.points;
  for (int i = 1; i <= points.PointCount(); ++i) {
    p.c.SetPenWidth(p.cfg.PtSizeCor);
    p.c.Dot(points.PointX(i), points.PointY(i), PaletteColour(p.cfg.CorColor));
    if (withIds) p.c.Text(points.PointIds(i));
  }
  p.c.SetPenWidth(1);
}

// Network and chain lines; a line with an end at a zero coordinate is left out.
template <typename Store>
void DrawLines(Painter& p, const Store& ends, int count, int style, int colour) {
  p.c.SetPenWidth(1);
  p.c.SetPenStyle(style);
  const unsigned rgb = PaletteColour(colour);
  for (int i = 1; i <= count; ++i) {
    const LineEnds& e = ends.get(i);
    if (ZeroAt(p.s, e.from) || ZeroAt(p.s, e.to)) continue;
    p.c.Line(p.s.points.PointX(e.from), p.s.points.PointY(e.from), p.s.points.PointX(e.to), p.s.points.PointY(e.to),
             rgb);
  }
}

void DrawRawLines(Painter& p) {
  Session& s = p.s;
  for (int i = 1; i <= s.raw.RawLineCount; ++i) {
    const RawEnds& e = s.raw.RawLineEnds.get(i);
    const unsigned colour = PaletteColour(SurveyColourNumber(e.survey, s.config.BackgroundMode));
    p.c.SetPenWidth(1);
    p.c.SetPenStyle(p.cfg.LineTypeLSA);
    if (e.from != 0 && e.to != 0) {
      p.c.Line(s.points.PointX(e.from), s.points.PointY(e.from), s.points.PointX(e.to), s.points.PointY(e.to), colour);
      continue;
    }
    // A record to a station without coordinates: drawn to where the record puts it, unscaled,
    // with a dot at the computed end.
    const RawMeasure& m = s.raw.RawLineMeasures.get(i);
    const double units = s.UnitsPerChain;
    const auto unknownEnd = [&](int known, bool backFromTo) {
      double dx = std::sin(m.bearing) * units * m.distance;
      double dy = std::cos(m.bearing) * units * m.distance;
      SignsOfQuadrant(m.quadrant, backFromTo).Apply(dx, dy);
      const double x = s.points.PointX(known) + dx, y = s.points.PointY(known) + dy;
      p.c.Line(s.points.PointX(known), s.points.PointY(known), x, y, colour);
      p.c.SetPenWidth(4);
      p.c.Dot(x, y, p.fore);
      p.c.SetPenWidth(1);
    };
    if (e.to == 0) unknownEnd(e.from, false);
    if (e.from == 0) unknownEnd(e.to, true);
  }
}

void DrawMultipleMarks(Painter& p) {
  const ParcelStore& parcels = p.s.parcels;
  if (JobGuard(p.s) && parcels.ParcelCount == 0) return;
  for (int i = 1; i <= parcels.ParcelCount; ++i) {
    if (parcels.ParcelMulti.get(i) != 1) continue;
    p.c.SetPenWidth(4 * p.cfg.PtSizeCor);
    p.c.Dot(parcels.ParcelX.get(i), parcels.ParcelY.get(i), kRed);
    p.c.SetPenWidth(2 * p.cfg.PtSizeCor);
    p.c.Dot(parcels.ParcelX.get(i), parcels.ParcelY.get(i), ParcelColour(parcels.ParcelLine.get(i), p.cfg.BackgroundMode));
  }
  p.c.SetPenWidth(1);
}

enum class ParcelLabel { None, Brief, Detailed, Full };

void DrawParcels(Painter& p, ParcelLabel label) {
  const ParcelStore& parcels = p.s.parcels;
  if (JobGuard(p.s) && parcels.ParcelCount == 0) {
    p.s.user.Message(kMsgLoadPolygons);
    return;
  }
  for (int i = 1; i <= parcels.ParcelCount; ++i) {
    const std::string& line = parcels.ParcelLine.get(i);
    const bool aliquot = Mid(line, 11, 3) == "T_A";
    p.c.SetPenWidth(2 * p.cfg.PtSizeCor);
    p.c.Dot(parcels.ParcelX.get(i), parcels.ParcelY.get(i), ParcelColour(line, p.cfg.BackgroundMode));
    std::optional<std::string> text;
    if (label == ParcelLabel::Brief && !aliquot) text = Mid(line, 13, 9);
    if (label == ParcelLabel::Detailed && !aliquot) text = ParcelDetailText(line);
    if (label == ParcelLabel::Full) text = ParcelDetailText(line);
    if (text) {
      p.c.SetPenWidth(1);
      p.c.Text(*text);
    }
    p.c.SetPenWidth(2 * p.cfg.PtSizeCor);
  }
  p.c.SetPenWidth(1);
}

void DrawRawPolygons(Painter& p) {
  const RawPolygonStore& polygons = p.s.polygons;
  p.c.SetPenWidth(2 * p.cfg.PtSizeCor);
  int colour = 0;  // a tag other than the three keeps the colour of the polygon before it
  for (int i = 1; i <= polygons.RawPolygonCount; ++i) {
    const std::string& tag = polygons.RawPolygonTag.get(i);
    if (tag == "S") colour = 8;
    if (tag == "I") colour = 1;
    if (tag == "O") colour = 2;
    p.c.Dot(polygons.RawPolygonX.get(i), polygons.RawPolygonY.get(i), PaletteColour(colour));
    p.c.Text(tag + " ");
  }
  p.c.SetPenWidth(1);
}

// Hidden lines are rubbed out in the back colour.
void DrawHiddenLines(Painter& p) {
  for (int i = 1; i <= p.s.notes.NoteLineCount; ++i) {
    const LineEnds& e = p.s.notes.NoteLineEnds.get(i);
    if (ZeroAt(p.s, e.from) || ZeroAt(p.s, e.to)) continue;
    p.c.SetPenWidth(1);
    p.c.SetPenStyle(p.cfg.LineTypeLSA);
    p.c.Line(p.s.points.PointX(e.from), p.s.points.PointY(e.from), p.s.points.PointX(e.to), p.s.points.PointY(e.to),
             p.back);
  }
}

void DrawSelectionMarks(Painter& p) {
  Session& s = p.s;
  const Selection& sel = s.selection;
  for (std::size_t i = 0; i < sel.PointList.size(); ++i) {
    p.c.SetPenWidth(3 * p.cfg.PtSizeCor);
    const int point = sel.SelectedPoints.get(static_cast<int>(i));
    p.c.Dot(s.points.PointX(point), s.points.PointY(point), PaletteColour(13));
  }
  p.c.SetPenWidth(1);
  for (std::size_t i = 0; i < sel.LineList.size(); ++i) MarkRawLine(s, sel.SelectedLines.get(static_cast<int>(i)));
  const ViewChecks& v = s.checks;
  const bool parcelsShown = v.mnuOptionsParcel || v.mnuOptionsParcelBrief || v.mnuOptionsParcelDetail ||
                            v.mnuOptionsParcelFull;
  // Each entry is marked as what it is: a link record yellow while the CAMA plot is on, a parcel
  // red while the parcel marks are.
  for (const ParcelPick& pick : sel.ParcelPicks()) {
    p.c.SetPenWidth(3 * p.cfg.PtSizeCor);
    const bool link = pick.kind == PickKind::LinkRecord;
    if (link && v.mnuViewCama && pick.reading == s.cama.LinkReading) {
      p.c.Dot(s.cama.LinkX.get(pick.index), s.cama.LinkY.get(pick.index), kYellow);
    }
    if (!link && parcelsShown && pick.reading == s.parcels.Reading) {
      p.c.Dot(s.parcels.ParcelX.get(pick.index), s.parcels.ParcelY.get(pick.index), kRed);
    }
  }
  p.c.SetPenWidth(1);
}

// The region's boundary match overlay: match lines in yellow, their ends as wide blue dots.
void DrawRegionMatches(Painter& p) {
  const RegionMatchStore& m = p.s.region.match;
  for (int k = 1; k <= m.MatchLineCount; ++k) {
    const auto [a, b] = m.MatchLines.get(k);
    if (a == 0 || b == 0) continue;
    const double x1 = p.s.points.PointX(a), y1 = p.s.points.PointY(a);
    const double x2 = p.s.points.PointX(b), y2 = p.s.points.PointY(b);
    if (m.ShowMatchLines != 0) p.c.Line(x1, y1, x2, y2, kYellow);
    if (m.ShowMatchEnds != 0) {
      p.c.SetPenWidth(2 * p.cfg.PtSizeCor);
      p.c.Dot(x1, y1, kBlue);
      p.c.Dot(x2, y2, kBlue);
      p.c.SetPenWidth(1);
    }
  }
}

// The adjustment window's error ellipses and flagged observations, solid whatever the line type.
void DrawAdjustmentOverlay(Painter& p) {
  p.c.SetPenStyle(0);
  for (const OverlayPolyline& line : p.s.adjustmentOverlay.lines) {
    p.c.SetPenWidth(line.penWidth);
    for (std::size_t k = 3; k < line.xy.size(); k += 2) {
      p.c.Line(line.xy[k - 3], line.xy[k - 2], line.xy[k - 1], line.xy[k], line.colour);
    }
  }
  p.c.SetPenWidth(1);
}

// A layer that meets a fault ends there; the refresh goes on with the next layer. Labels are
// kept apart from those of their own layer only.
template <typename F>
void Layer(CanvasPort& canvas, F&& paint) {
  canvas.NewLabelLayer();
  try {
    paint();
  } catch (const RuntimeFault&) {
  }
}

}  // namespace

// Raw line `line` marked as picked: wide yellow, then thin in the configured colour number taken
// as a direct colour (nearly black), as it always was.
void MarkRawLine(Session& s, int line) {
  const RawEnds& e = s.raw.RawLineEnds.get(line);
  const double x1 = s.points.PointX(e.from), y1 = s.points.PointY(e.from);
  const double x2 = s.points.PointX(e.to), y2 = s.points.PointY(e.to);
  s.canvas.SetPenWidth(3);
  s.canvas.Line(x1, y1, x2, y2, kYellow);
  s.canvas.SetPenWidth(1);
  s.canvas.Line(x1, y1, x2, y2, static_cast<unsigned>(s.config.LsaColor));
}

unsigned ParcelColour(const std::string& parcelLine, int backgroundMode) {
  const std::string tag = Mid(parcelLine, 11, 3);
  if (tag == "T_W") return kBlue;
  if (tag == "T_?") return kRed;
  if (tag == "T_L") return kYellow;
  if (tag == "T_A") return kGreen;
  return backgroundMode == 2 ? 0xFFFFFFu : 0x000000u;
}

int SurveyColourNumber(int survey, int backgroundMode) {
  int c = survey - 16 * static_cast<int>(std::floor(survey / 16.0));
  if (backgroundMode == 1 && c == 7) c = 0;
  if (backgroundMode == 2 && c == 0) c = 7;
  return c;
}

std::string ParcelDetailText(const std::string& line) {
  // Built in place: a full refresh makes one for every parcel.
  const std::string_view pieces[] = {MidView(line, 5, 3), MidView(line, 9, 1), TrimView(MidView(line, 13, 6)),
                                     TrimView(MidView(line, 20, 2)), TrimView(MidView(line, 27, 9))};
  std::string text;
  text.reserve(24);
  text.append(pieces[0]).append(pieces[1]);
  for (int k = 2; k < 5; ++k) text.append(1, ',').append(pieces[k]);
  return text;
}

void RefreshView(Session& s) {
  s.user.SetPointer(Pointer::Hourglass);
  Painter p{s, s.canvas, s.config, BackColour(s.config.BackgroundMode), ForeColour(s.config.BackgroundMode)};
  p.c.Clear();
  const ViewChecks& v = s.checks;
  p.c.KeepLabelsApart(!v.mnuViewAllLabels);
  if (v.mnuOptionsControl) Layer(p.c, [&] { DrawControl(p); });
  if (v.mnuViewPoints) Layer(p.c, [&] { DrawPoints(p, v.mnuOptionsID); });
  if (v.mnuOptionsLinesLXN) {
    Layer(p.c, [&] { DrawLines(p, s.lxn.LxnLineEnds, s.lxn.LxnSegmentCount, p.cfg.LineTypeLXN, p.cfg.LxnColor); });
  }
  if (v.mnuOptionsLinesLSA) {
    Layer(p.c, [&] { DrawLines(p, s.lsa.LsaLineEnds, s.lsa.LsaLineCount, p.cfg.LineTypeLSA, p.cfg.LsaColor); });
  }
  if (v.mnuViewLinesRaw) Layer(p.c, [&] { DrawRawLines(p); });
  if (v.mnuOptionsMultiAtt) Layer(p.c, [&] { DrawMultipleMarks(p); });
  if (v.mnuOptionsParcel) Layer(p.c, [&] { DrawParcels(p, ParcelLabel::None); });
  if (v.mnuOptionsParcelBrief) Layer(p.c, [&] { DrawParcels(p, ParcelLabel::Brief); });
  if (v.mnuOptionsParcelDetail) Layer(p.c, [&] { DrawParcels(p, ParcelLabel::Detailed); });
  if (v.mnuOptionsParcelFull) Layer(p.c, [&] { DrawParcels(p, ParcelLabel::Full); });
  if (v.mnuViewCama) Layer(p.c, [&] { DrawLinkPoints(s); });
  if (v.mnuViewRPO) {
    Layer(p.c, [&] { DrawRawPolygons(p); });
    Layer(p.c, [&] { DrawHiddenLines(p); });
  }
  if (s.region.match.Drawn) Layer(p.c, [&] { DrawRegionMatches(p); });
  if (!s.adjustmentOverlay.Empty()) Layer(p.c, [&] { DrawAdjustmentOverlay(p); });
  Layer(p.c, [&] { DrawSelectionMarks(p); });
  s.user.Status(kLabelsPanel, LabelsHiddenText(p.c.HiddenLabels()));
  // Texts drawn between refreshes (picks, outlines) are drawn as they fall.
  p.c.KeepLabelsApart(false);
  s.user.SetPointer(Pointer::Arrow);
}

std::string LabelsHiddenText(int hidden) {
  if (hidden <= 0) return "";
  return std::to_string(hidden) + (hidden == 1 ? " label hidden" : " labels hidden");
}

void DrawAllLabels(Session& s, bool on) {
  s.checks.mnuViewAllLabels = on;
  s.user.SetChecked("mnuViewAllLabels", on);
  if (JobGuard(s)) RefreshView(s);
}

void RefreshViewAfterExtents(Session& s) {
  s.canvas.Clear();
  ZoomExtents(s);
  RefreshView(s);
}

void DrawParcelRing(Session& s, const std::string& ring) { DrawParcelRing(s, ring, 3); }

void DrawParcelRing(Session& s, const std::string& ring, int penWidth) {
  s.canvas.SetPenWidth(penWidth);
  const unsigned colour = s.config.BackgroundMode == 2 ? kYellow : kRed;
  const std::vector<std::string> ids = RingOutlineIds(ring);
  for (std::size_t k = 1; k < ids.size(); ++k) {
    const int a = s.points.Find(ids[k - 1]), b = s.points.Find(ids[k]);
    const double x1 = s.points.PointX(a), y1 = s.points.PointY(a), x2 = s.points.PointX(b), y2 = s.points.PointY(b);
    if (x1 != 0 && y1 != 0 && x2 != 0 && y2 != 0) s.canvas.Line(x1, y1, x2, y2, colour);
  }
  s.canvas.SetPenWidth(1);
}

void DrawLinkPoints(Session& s) {
  const CamaStore& c = s.cama;
  s.canvas.SetPenWidth(4);
  for (int r = 1; r <= c.LinkCount; ++r) s.canvas.Dot(c.LinkX.get(r), c.LinkY.get(r), LinkCanvasColour(c.LinkColor.get(r)));
  s.canvas.SetPenWidth(1);
}

void Viewer::RefreshViewAfterExtents() { tessel::RefreshViewAfterExtents(session_); }
void Viewer::RefreshView() { tessel::RefreshView(session_); }
void Viewer::ClearCanvas() { session_.canvas.Clear(); }

}  // namespace tessel
