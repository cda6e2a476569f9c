#pragma once
// Where a tool window of the desktop first opens: against the main window's right edge, below
// its menu bar and inside the screen, rather than wherever the window system puts a new window
// (on some, the screen's corner over the main menu).

class QWidget;

namespace tessel {

// Moves `form`, keeping its size, beside the main window that is its parent's window. Nothing
// when it has no parent.
void PlaceBesideMainWindow(QWidget& form);

}  // namespace tessel
