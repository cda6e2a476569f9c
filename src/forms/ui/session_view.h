#pragma once
// A tool window as a view of the session. The headless code says what it changed
// (Session::Changed); a window that shows some of that data refills itself from the session
// whenever it changes while the window is open, and a window of the job closes when the job is
// closed or replaced. With its own refill on showing (and UserPort::ShowForm's on being asked for
// again) no window shows what was true when it opened.

#include <functional>

#include "model/session.h"

class QWidget;

namespace tessel {

class SessionView {
 public:
  enum class OnJobChange { Close, Stay };
  // `refill` runs for every change of any of `topics`, shown or hidden (a refill that closes or
  // asks, as an editor's, looks at the window's visibility itself). The view is a member of
  // `window`.
  SessionView(QWidget& window, Session& session, Changes topics, std::function<void()> refill,
              OnJobChange onJobChange = OnJobChange::Close);
  // A window of the job that shows nothing that changes under it: it only closes with the job.
  SessionView(QWidget& window, Session& session) : SessionView(window, session, Changes{0}, [] {}) {}

 private:
  ChangeNotifier::Subscription subscription_;
};

}  // namespace tessel
