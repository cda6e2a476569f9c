#pragma once
// The pick tools of the canvas: points, parcels, raw polygons and record lines, by click and by
// window, and the selection list commands that trim what was picked.

#include <string>

#include "model/session.h"

namespace tessel {

// The tolerances of the hit windows, single-precision constants as the tools always had.
inline constexpr float kPointTolerance = 0.01f;
inline constexpr float kPolygonTolerance = 0.02f;

// W and H of the hit windows: the nominal view's width and height rounded half to even.
struct HitWindow {
  long W = 0;
  long H = 0;
  static HitWindow Of(const ViewState& view);
  // Strictly inside the window of tolerance t round (x, y).
  bool Hits(float t, float x, float y, double u, double v) const;
};

// The record line nearest a click by the line tool's measure, 0 when no line's box holds it.
int PickRawLine(const Session& session, float x, float y);

// The mouse-up cases of the pick tools (1, 4, 5, 6 and 7), in their order.
void PickMouseUp(Session& session, bool leftButton, bool shift, float dragX0, float dragY0, float x, float y);

// Removes neighbouring equal entries of the point list, yielding to events between comparisons.
void RemoveDuplicatePoints(Session& session);
// Maps each point list entry back to the store by its first six characters; the last match wins.
void RemapSelectedPoints(Session& session);

// The buttons of the list windows.
void PointsClear(Session& session);
void PointsRemoveItem(Session& session, int listIndex);
void PointsClicked(Session& session, int listIndex);
void PointsClosed(Session& session);
void ParcelsRemoveItem(Session& session, int listIndex);
void ParcelsClearAll(Session& session);
void ParcelsClicked(Session& session, int listIndex);
void LinesRemoveLine(Session& session, int listIndex);
// The text the clipboard copy of the line list carries.
std::string LinesClipboardText(const Session& session);

// Commands on the selection.
void MoveCentroidCommand(Session& session);
void PopupParcelCancel(Session& session);
void PopupParcelPanZoom(Session& session);

// The toolbar's mode keys that open their list window.
void ToolbarSelect(Session& session);
void ToolbarLines(Session& session);

}  // namespace tessel
