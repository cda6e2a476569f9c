#pragma once
// Long work (a CAMA database read, a GIS export) off the interface thread. The work runs on a
// worker thread while the window it was started from keeps running: it repaints, and shows what
// the work is doing in a progress bar with a Cancel button, in the main window's status bar or,
// from a dialog, at the dialog's foot. Every other command waits meanwhile: menus and toolbars
// are off and input to the windows that were open when the work began is ignored, while the boxes
// and choosers the work itself opens answer as ever. What the work tells the user goes through
// the session's ports, which carry it to the interface thread.

#include <QString>
#include <functional>

#include "model/progress.h"

class QWidget;

namespace tessel {

enum class CancelOffer { Offered, None };

// Runs `work` and returns once it has ended (rethrowing what it threw). True when it ran to its
// end, false when the user asked it to stop. Work started while other long work runs runs at
// once on the calling thread, as nested work is part of its caller's.
bool RunLongWork(QWidget& from, const std::function<void(Progress&)>& work, CancelOffer cancel = CancelOffer::Offered);

// True while long work started from `widget`'s window (or its main window) runs: the session
// is the work's then, and a window must not paint or read it anew until the work has ended.
bool LongWorkRunning(const QWidget& widget);
// The name of the dynamic property that is true on the window while its long work runs; its
// change event tells the window when the work has ended.
inline constexpr const char* kLongWorkProperty = "tesselLongWork";

}  // namespace tessel
