#include "viewer/view_transform.h"

#include <cmath>

#include "model/fault.h"
#include "model/text.h"

namespace tessel {

namespace {

void StoreNominal(Session& s, double left, double top, double right, double bottom) {
  s.view.ViewLeft = ClampToSingle(left);
  s.view.ViewTop = ClampToSingle(top);
  s.view.ViewRight = ClampToSingle(right);
  s.view.ViewBottom = ClampToSingle(bottom);
}

void Refuse(Session& s, const char* message) {
  s.user.Message(message);
  Redraw(s);
  s.view.ZoomWindowArmed = 0;
  s.user.SetPointer(Pointer::Arrow);
}

// The nominal window moved by `step` on each edge (inwards for a positive step).
void Zoom(Session& s, double sign) {
  ViewState& v = s.view;
  const double w = std::fabs(static_cast<double>(v.ViewLeft) - v.ViewRight);
  const double h = std::fabs(static_cast<double>(v.ViewTop) - v.ViewBottom);
  const double z = s.config.ZoomPercent;
  StoreNominal(s, v.ViewLeft + sign * z * w / 100, v.ViewTop - sign * z * h / 100, v.ViewRight - sign * z * w / 100,
               v.ViewBottom + sign * z * h / 100);
  SetWindow(s, v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom);
  Redraw(s);
}

}  // namespace

void Redraw(Session& session) {
  if (session.display) session.display->RefreshView();
}

void SetScale(Session& s, double left, double top, double width, double height) {
  ViewState& v = s.view;
  v.ScaleLeft = ClampToSingle(left);
  v.ScaleTop = ClampToSingle(top);
  v.ScaleWidth = ClampToSingle(width);
  v.ScaleHeight = ClampToSingle(height);
  s.canvas.SetScale(v.ScaleLeft, v.ScaleTop, v.ScaleWidth, v.ScaleHeight);
}

void SetWindow(Session& s, double left, double top, double right, double bottom) {
  const double height = ClampToSingle(bottom - top);
  (void)right;  // the width always follows from the height
  SetScale(s, left, top, height * -kAspect, height);
}

void SavePrevious(Session& s) {
  const ViewState& v = s.view;
  s.view.PreviousView = ViewRect{v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom};
}

void ZoomExtents(Session& s) {
  const JobExtents& e = s.extents;
  ViewState& v = s.view;
  v.SpanY = ClampToSingle(e.MaxY - e.MinY);
  v.SpanX = ClampToSingle(e.MaxX - e.MinX);
  const double d = v.SpanY >= v.SpanX ? v.SpanY : v.SpanX;
  StoreNominal(s, e.MinX - 0.02 * d, e.MaxY + 0.1 * d, e.MinX + d + 0.05 * d, e.MaxY - d - 0.05 * d);
  SetWindow(s, v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom);
}

bool ZoomInGuard(Session& s) {
  const ViewState& v = s.view;
  const double w = std::fabs(static_cast<double>(v.ViewLeft) - v.ViewRight);
  const double h = std::fabs(static_cast<double>(v.ViewTop) - v.ViewBottom);
  if (w < 25 || h < 25) {
    Refuse(s, "Unable to zoom in");
    return false;
  }
  return true;
}

void ZoomIn(Session& s) { Zoom(s, 1.0); }
void ZoomOut(Session& s) { Zoom(s, -1.0); }

void ZoomWindow(Session& s, double x0, double y0, double x1, double y1) {
  if (std::fabs(x1 - x0) < 25 || std::fabs(y1 - y0) < 25) {
    Refuse(s, "Unable to perform Zoom Window");
    return;
  }
  const double left = std::min(x0, x1), right = std::max(x0, x1);
  const double top = std::max(y0, y1), bottom = std::min(y0, y1);
  SetWindow(s, left, top, right, bottom);
  Redraw(s);
  s.view.ZoomWindowArmed = 0;
  s.user.SetPointer(Pointer::Arrow);
  StoreNominal(s, left, top, right, bottom);
}

void ZoomPrevious(Session& s, double outerWidthTwips, double outerHeightTwips) {
  const ViewRect& p = s.view.PreviousView;
  const double height = static_cast<double>(p.bottom) - p.top;
  SetScale(s, p.left, p.top, height * -kAspect, height);
  Redraw(s);
  ViewState& v = s.view;
  StoreNominal(s, v.ScaleLeft, v.ScaleTop, v.ScaleLeft + outerWidthTwips, v.ScaleTop - outerHeightTwips);
}

void Pan(Session& s, PanDirection direction) {
  ViewState& v = s.view;
  const double stepY = s.config.PanPercent * static_cast<double>(v.SpanY) / 100;
  const double stepX = s.config.PanPercent * static_cast<double>(v.SpanX) / 100;
  double left = v.ViewLeft, top = v.ViewTop, right = v.ViewRight, bottom = v.ViewBottom;
  switch (direction) {
    case PanDirection::Up: top += stepY; bottom += stepY; break;
    case PanDirection::Down: top -= stepY; bottom -= stepY; break;
    case PanDirection::Left: left -= stepX; right -= stepX; break;
    case PanDirection::Right: left += stepX; right += stepX; break;
  }
  StoreNominal(s, left, top, right, bottom);
  SetWindow(s, v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom);
  Redraw(s);
}

void DragPan(Session& s, double x0, double y0, double x1, double y1) {
  if (s.display) s.display->ClearCanvas();
  ViewState& v = s.view;
  const double dx = x1 - x0, dy = y1 - y0;
  SetScale(s, v.ScaleLeft - dx, v.ScaleTop - dy, v.ScaleWidth, v.ScaleHeight);
  StoreNominal(s, v.ViewLeft - dx, v.ViewTop - dy, v.ViewRight - dx, v.ViewBottom - dy);
  Redraw(s);
}

void GoToPoint(Session& s) {
  const auto answer = s.user.Input("Enter Point Name: (case sensitive)", "Go To");
  // The present view is kept before the answer is looked at, also for a cancelled box.
  SavePrevious(s);
  const std::string name = Trim(answer.value_or(std::string()));
  if (name.empty()) return;
  const int i = s.points.Find(name);
  if (i == 0) {
    s.user.Message("Point name not found. ", Icon::Information);
    return;
  }
  const double x = s.points.PointX(i), y = s.points.PointY(i);
  const double f = s.config.ZoomPercent / 100.0;
  const double left = x - f * s.view.SpanX, right = x + f * s.view.SpanX;
  const double top = y + f * s.view.SpanY, bottom = y - f * s.view.SpanY;
  SetWindow(s, left, top, right, bottom);
  Redraw(s);
  s.canvas.SetPenWidth(3 * s.config.PtSizeCor);
  s.canvas.Dot(x, y, PaletteColour(13));
  s.canvas.SetPenWidth(1);
  StoreNominal(s, left, top, right, bottom);
}

void RecallSavedView(Session& s, int slot) {
  if (slot < 1 || slot > 4) return;
  ViewRect& saved = s.view.SavedViews[slot];
  if (saved.left == 0.0f) {
    StoreSavedView(s, slot);
    return;
  }
  SetScale(s, saved.left, saved.top, static_cast<double>(saved.right) - saved.left,
           static_cast<double>(saved.bottom) - saved.top);
  Redraw(s);
}

void StoreSavedView(Session& s, int slot) {
  if (slot < 1 || slot > 4) return;
  const ViewState& v = s.view;
  s.view.SavedViews[slot] = ViewRect{v.ScaleLeft, v.ScaleTop, v.ScaleLeft + v.ScaleWidth, v.ScaleTop + v.ScaleHeight};
}

}  // namespace tessel
