#pragma once
// The canvas's tools and what its mouse events, keys and view commands do with them. Events
// arrive in world coordinates of single precision.

#include "model/session.h"
#include "viewer/tool_switch.h"

namespace tessel {

enum class MouseButton { Left = 1, Right = 2 };

// The state of a drag on the canvas.
struct DragState {
  float DragX0 = 0.0f, DragY0 = 0.0f, DragX1 = 0.0f, DragY1 = 0.0f;
  float RubberX = 0.0f, RubberY = 0.0f;
  int PanDragging = 0;  // 0 or -1
};


void CanvasMouseDown(Session& session, DragState& drag, MouseButton button, float x, float y);
// `buttonDown` tells whether any button is held.
void CanvasMouseMove(Session& session, DragState& drag, bool buttonDown, float x, float y);
void CanvasMouseUp(Session& session, DragState& drag, MouseButton button, bool shift, float x, float y);
void CanvasDoubleClick(Session& session);
// Rubs out the rubber band where the last move left it (drawing it inverted once more), so that a
// window pick that does not refresh leaves no band behind.
void EraseBand(Session& session, const DragState& drag);

enum class ViewKey { Home, PageDown, PageUp, W, Up, Down, Left, Right };
void CanvasKey(Session& session, ViewKey key);

// The view commands of the Tools menu, the popup and the toolbar.
void MenuRefresh(Session& session);
void MenuZoomIn(Session& session);
void MenuZoomOut(Session& session);
void MenuZoomExtents(Session& session);
void MenuZoomWindow(Session& session);
void MenuZoomPrevious(Session& session);
void PopupCancel(Session& session);
void ToolbarZoomIn(Session& session);
void ToolbarZoomOut(Session& session);
void ToolbarZoomExtents(Session& session);
void ToolbarZoomWindow(Session& session);
void ToolbarZoomPrevious(Session& session);

// A View menu check, by its name: inverts it, mirrors its toolbar key, repaints. The four parcel
// displays exclude each other; turning raw polygons on reads them first.
void ToggleLayer(Session& session, const std::string& menuName);

}  // namespace tessel
