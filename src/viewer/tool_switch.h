#pragma once
// Switching the canvas's tool, shared by the toolbar's mode keys and the pick tools' own ways
// back to zooming.

#include "model/session.h"

namespace tessel {

inline constexpr const char* kStatusZoomPan = "Zoom / Pan";

// A toolbar mode key: the tool, its panel 1 text, panels 2 to 4 emptied, and the three exclusive
// buttons Select, Centroid and Zoom pushed or raised to match.
void SetToolMode(Session& session, ToolMode mode);
// The exclusive toolbar buttons: each mode that has one pushes it and raises the other two.
void PushModeButton(Session& session, ToolMode mode);

}  // namespace tessel
