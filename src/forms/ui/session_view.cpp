#include "forms/ui/session_view.h"

#include <QPointer>
#include <QWidget>

#include "forms/ui/interface_thread.h"

namespace tessel {

SessionView::SessionView(QWidget& window, Session& session, Changes topics, std::function<void()> refill,
                         OnJobChange onJobChange) {
  const bool closes = onJobChange == OnJobChange::Close;
  const Changes interest = topics | (closes ? Changes{Change::Job} : Changes{0});
  QPointer<QWidget> guarded(&window);
  subscription_ = session.changes.Observe(interest, [guarded, topics, closes, refill = std::move(refill)](Changes what) {
    if (!guarded) return;
    // Long work on a worker thread tells its changes there; the window follows on its own
    // thread, and the work waits until it has.
    if (!OnThreadOf(*guarded)) {
      QWidget* owner = guarded.data();
      OnInterfaceThread(*owner, [&] {
        if (guarded && closes && (what & Change::Job)) {
          if (guarded->isVisible()) guarded->close();
        } else if (guarded && (what & topics)) {
          refill();
        }
      });
      return;
    }
    if (closes && (what & Change::Job)) {
      if (guarded->isVisible()) guarded->close();
      return;
    }
    // A hidden window is refilled too: other windows read its lists (the row chosen in the
    // selection list, say) whether it is shown or not.
    if (what & topics) refill();
  });
}

}  // namespace tessel
