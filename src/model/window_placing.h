#pragma once
// Where tool windows open on the desktop, in pixels: a window with no remembered place opens
// against the main window's right edge, below its menu bar and inside the screen; a remembered
// place that lies off every screen is brought back onto the nearest one.

#include <vector>

namespace tessel {

struct PixelRect {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const PixelRect&) const = default;
};

// A window of `width` by `height` beside `mainFrame` (the main window's outer rectangle), its top
// at `clientTop` (the first line below the main window's menu bar), all within `screen`: right of
// the main window when there is room, otherwise inside its right edge. Never above `clientTop`
// unless the screen is too short for the window.
PixelRect PlaceBesideMain(const PixelRect& mainFrame, int clientTop, const PixelRect& screen, int width, int height);

// `place` itself when at least a corner's square of `grip` pixels of it lies on some screen;
// otherwise moved (size kept, shrunk to fit) onto the screen nearest to it. No screens: unchanged.
PixelRect OntoScreens(const PixelRect& place, const std::vector<PixelRect>& screens, int grip = 40);

}  // namespace tessel
