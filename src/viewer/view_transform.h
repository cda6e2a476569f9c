#pragma once
// The view of the canvas in job units: zoom, pan, go to point and the saved views. Every command
// that sets a window ends in the aspect rule, which makes the effective width 1.33333 times the
// height whatever width was asked for.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr double kAspect = 1.33333;

// The canvas's own shape, width over height in pixels. A canvas of the view's shape (within a
// pixel) and one without pixels give kAspect itself, so that the view keeps its values there.
double CanvasAspect(const Session& session);
// A scale: left and top edges, width and height (the height negative).
struct ScaleRect {
  double left = 0.0, top = 0.0, width = 1.0, height = -1.0;
};
// The scale that shows the view's window `view` on the canvas: the window itself on a canvas of
// the view's shape; on any other, the window widened (or heightened) about its centre to the
// canvas's shape, so that it shows whole, centred, with one job unit as many pixels across as up.
ScaleRect FitToCanvas(const Session& session, const ScaleRect& view);
// The present scale fitted anew to the canvas, about the same centre and holding the same window
// of the view's shape: after the canvas changed its size.
void FitScaleToCanvas(Session& session);
// The present scale.
ScaleRect CurrentScale(const Session& session);
// The smallest scale of the given shape (width over height) that holds `scale`, about the same
// centre: what a page of another shape shows of the view.
ScaleRect FitScaleToShape(const ScaleRect& scale, double aspect);
// The mouse wheel: zooms about (x, y) by the step of PageDown (in) or PageUp (out), keeping
// (x, y) on the same pixel; the nominal window moves the same way. Like those keys it keeps
// PreviousView. Zooming in stops quietly at the keys' limit of 25 units.
void ZoomAbout(Session& session, double x, double y, bool in);
// The same change of the view without the redraw, for a canvas that previews it from its last
// picture and redraws once the wheel has settled; false when the view did not change.
bool ZoomAboutUnpainted(Session& session, double x, double y, bool in);

// The pointer's place for the status bar: northing then easting in job units, two decimals,
// "N 5000.00  E 2000.00".
std::string CursorText(double x, double y);
// The length of a scale bar for a view `unitsAcross` wide: the round length (1, 2 or 5 times a
// power of ten) nearest below a fifth of the width; 0 for a width that is not a positive number.
double ScaleBarLength(double unitsAcross);
// Its caption, the length without needless decimals: "500", "0.2".
std::string ScaleBarText(double length);

// The aspect rule: the scale from (left, top) to (right, bottom), then the width from the height.
void SetWindow(Session& session, double left, double top, double right, double bottom);
// The scale straight from a slot or a previous view, without the aspect rule.
void SetScale(Session& session, double left, double top, double width, double height);
void SetScale(Session& session, const ScaleRect& scale);

// The present view into PreviousView.
void SavePrevious(Session& session);

// Square on the larger span of the extents, with margins of 10 % above, 5 % below and right,
// 2 % left. Does not redraw.
void ZoomExtents(Session& session);
// Refuses with "Unable to zoom in" when the nominal window is under 25 units either way; the
// refusal redraws, disarms the zoom window and sets the arrow pointer.
bool ZoomInGuard(Session& session);
void ZoomIn(Session& session);
void ZoomOut(Session& session);
// A dragged window; under 25 units either way it refuses with "Unable to perform Zoom Window".
void ZoomWindow(Session& session, double x0, double y0, double x1, double y1);
// One level back. The nominal window then takes the form's outer size in twips, deliberately.
void ZoomPrevious(Session& session, double outerWidthTwips, double outerHeightTwips);

enum class PanDirection { Up, Down, Left, Right };
// By PanPercent of the job's spans, not of the window.
void Pan(Session& session, PanDirection direction);
// By the length of a drag.
void DragPan(Session& session, double x0, double y0, double x1, double y1);

// Asks for a point name and centres the view on it.
void GoToPoint(Session& session);

// A toolbar view key: an empty slot takes the present scale, a set slot is shown.
void RecallSavedView(Session& session, int slot);
// OK of frmResetView: the present scale into the chosen slot.
void StoreSavedView(Session& session, int slot);

// Redraws through the viewer when one is attached.
void Redraw(Session& session);

}  // namespace tessel
