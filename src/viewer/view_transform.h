#pragma once
// The view of the canvas in job units: zoom, pan, go to point and the saved views. Every command
// that sets a window ends in the aspect rule, which makes the effective width 1.33333 times the
// height whatever width was asked for.

#include "model/session.h"

namespace tessel {

inline constexpr double kAspect = 1.33333;

// The aspect rule: the scale from (left, top) to (right, bottom), then the width from the height.
void SetWindow(Session& session, double left, double top, double right, double bottom);
// The scale straight from a slot or a previous view, without the aspect rule.
void SetScale(Session& session, double left, double top, double width, double height);

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
