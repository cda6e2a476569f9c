#pragma once
// Tool windows on the desktop's screens: a remembered place brought onto a screen, and the place
// of a window that has none, beside the main window.

#include <QRect>

namespace tessel {

// `remembered` as it stands when it lies on a screen, otherwise moved onto the nearest one.
QRect OntoAScreen(const QRect& remembered);
// A window of `size` against the right edge of `mainFrame` (the main window's outer rectangle),
// its top at `clientTop` (below the main window's menu bar), inside the main window's screen.
QRect BesideMain(const QRect& mainFrame, int clientTop, QSize size);

}  // namespace tessel
