#include "viewer/view_transform.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

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

void SetScale(Session& s, const ScaleRect& scale) { SetScale(s, scale.left, scale.top, scale.width, scale.height); }

double CanvasAspect(const Session& s) {
  int width = 0, height = 0;
  if (!s.canvas.PixelSize(width, height) || width <= 0 || height <= 0) return kAspect;
  if (std::fabs(width - height * kAspect) <= 1.0) return kAspect;
  return static_cast<double>(width) / height;
}

ScaleRect FitToCanvas(const Session& s, const ScaleRect& view) {
  const double aspect = CanvasAspect(s);
  return aspect == kAspect ? view : FitScaleToShape(view, aspect);
}

void FitScaleToCanvas(Session& s) {
  const ViewState& v = s.view;
  // The window of the view's shape inside the present scale, about its centre.
  const double w = std::fabs(double(v.ScaleWidth)), h = std::fabs(double(v.ScaleHeight));
  const double coreW = std::min(w, h * kAspect), coreH = std::min(h, w / kAspect);
  const double sx = v.ScaleWidth < 0 ? -1.0 : 1.0, sy = v.ScaleHeight < 0 ? -1.0 : 1.0;
  const double cx = v.ScaleLeft + double(v.ScaleWidth) / 2, cy = v.ScaleTop + double(v.ScaleHeight) / 2;
  SetScale(s, FitToCanvas(s, {cx - sx * coreW / 2, cy - sy * coreH / 2, sx * coreW, sy * coreH}));
}

ScaleRect CurrentScale(const Session& s) {
  const ViewState& v = s.view;
  return {v.ScaleLeft, v.ScaleTop, v.ScaleWidth, v.ScaleHeight};
}

ScaleRect FitScaleToShape(const ScaleRect& scale, double aspect) {
  if (!(aspect > 0.0) || !std::isfinite(aspect) || scale.height == 0.0) return scale;
  const double w = std::fabs(scale.width), h = std::fabs(scale.height);
  const double cx = scale.left + scale.width / 2, cy = scale.top + scale.height / 2;
  double fw = w, fh = h;
  if (w / h < aspect) {
    fw = h * aspect;
  } else {
    fh = w / aspect;
  }
  const double sx = scale.width < 0 ? -1.0 : 1.0, sy = scale.height < 0 ? -1.0 : 1.0;
  return {cx - sx * fw / 2, cy - sy * fh / 2, sx * fw, sy * fh};
}

bool ZoomAboutUnpainted(Session& s, double x, double y, bool in) {
  ViewState& v = s.view;
  if (in) {
    const double w = std::fabs(static_cast<double>(v.ViewLeft) - v.ViewRight);
    const double h = std::fabs(static_cast<double>(v.ViewTop) - v.ViewBottom);
    if (w < 25 || h < 25) return false;
  }
  // PageDown moves each edge in by ZoomPercent of the size, so the size changes twice as much.
  const double k = 1.0 + (in ? -2.0 : 2.0) * s.config.ZoomPercent / 100.0;
  if (!(k > 0.0)) return false;
  const auto about = [k](double centre, double edge) { return centre - (centre - edge) * k; };
  SetScale(s, about(x, v.ScaleLeft), about(y, v.ScaleTop), v.ScaleWidth * k, v.ScaleHeight * k);
  StoreNominal(s, about(x, v.ViewLeft), about(y, v.ViewTop), about(x, v.ViewRight), about(y, v.ViewBottom));
  return true;
}

void ZoomAbout(Session& s, double x, double y, bool in) {
  if (ZoomAboutUnpainted(s, x, y, in)) Redraw(s);
}

std::string CursorText(double x, double y) {
  char text[96];
  std::snprintf(text, sizeof text, "N %.2f  E %.2f", y, x);
  return text;
}

double ScaleBarLength(double unitsAcross) {
  if (!(unitsAcross > 0.0) || !std::isfinite(unitsAcross)) return 0.0;
  const double target = unitsAcross / 5;
  const double power = std::pow(10.0, std::floor(std::log10(target)));
  for (const double step : {5.0, 2.0, 1.0}) {
    if (step * power <= target) return step * power;
  }
  return power;
}

std::string ScaleBarText(double length) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6g", length);
  return text;
}

void SetWindow(Session& s, double left, double top, double right, double bottom) {
  const double height = ClampToSingle(bottom - top);
  (void)right;  // the width always follows from the height
  SetScale(s, FitToCanvas(s, {left, top, height * -kAspect, height}));
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
  SetScale(s, FitToCanvas(s, {p.left, p.top, height * -kAspect, height}));
  Redraw(s);
  // The nominal window starts at the scale's corner as the view's shape has it (the canvas's
  // own corner on such a canvas), so that a canvas of another shape does not move it.
  const double left = ClampToSingle(p.left), top = ClampToSingle(p.top);
  StoreNominal(s, left, top, left + outerWidthTwips, top - outerHeightTwips);
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
  const double height = static_cast<double>(saved.bottom) - saved.top;
  SetScale(s, FitToCanvas(s, {saved.left, saved.top, static_cast<double>(saved.right) - saved.left, height}));
  Redraw(s);
}

void StoreSavedView(Session& s, int slot) {
  if (slot < 1 || slot > 4) return;
  const ViewState& v = s.view;
  s.view.SavedViews[slot] = ViewRect{v.ScaleLeft, v.ScaleTop, v.ScaleLeft + v.ScaleWidth, v.ScaleTop + v.ScaleHeight};
}

}  // namespace tessel
