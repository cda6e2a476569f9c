#include "forms/ui/session_view.h"

#include <QPointer>
#include <QWidget>

namespace tessel {

SessionView::SessionView(QWidget& window, Session& session, Changes topics, std::function<void()> refill,
                         OnJobChange onJobChange) {
  const bool closes = onJobChange == OnJobChange::Close;
  const Changes interest = topics | (closes ? Changes{Change::Job} : Changes{0});
  QPointer<QWidget> guarded(&window);
  subscription_ = session.changes.Observe(interest, [guarded, topics, closes, refill = std::move(refill)](Changes what) {
    if (!guarded) return;
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
