#pragma once
// The Tool Log window: a dock of the main window listing every launch of the session, one line
// each, newest last, with a key that copies the whole log.

#include <QDockWidget>

#include "model/tool_log.h"

class QPlainTextEdit;

namespace tessel {

class ToolLogDock : public QDockWidget {
  Q_OBJECT

 public:
  ToolLogDock(const ToolLog& log, QWidget* parent);

  // Shows an entry just added to the log.
  void Append(const ToolLogEntry& entry);
  // The whole log onto the clipboard.
  void Copy();

 private:
  const ToolLog& log_;
  QPlainTextEdit* text_ = nullptr;
};

}  // namespace tessel
