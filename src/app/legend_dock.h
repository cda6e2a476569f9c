#pragma once
// The Legend window: a dock of the main window listing what the canvas shows, group by group,
// each row with its mark drawn in its colour and line style; rows of layers that are off are
// greyed. It follows the session: a job opened or closed, surveys changed, the configuration or
// a layer switched.

#include <QDockWidget>

#include "forms/ui/session_view.h"
#include "model/session.h"

class QTreeWidget;

namespace tessel {

class LegendDock : public QDockWidget {
  Q_OBJECT

 public:
  LegendDock(Session& session, QWidget* parent);

  // Fills the list anew from the session.
  void Refill();
  // The rows shown, "group|text" each, for the tests.
  QStringList Rows() const;

 private:
  Session& session_;
  QTreeWidget* tree_ = nullptr;
  SessionView view_;
};

}  // namespace tessel
