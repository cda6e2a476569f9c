#pragma once
// The main window `View`: the menus, the four-panel status bar and the session they drive.

#include <QLabel>
#include <QMainWindow>
#include <array>
#include <memory>

#include "app/qt_process_port.h"
#include "app/qt_user_port.h"
#include "core/recording_ports.h"
#include "core/session.h"

namespace tessel {

class ViewWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `toolFolder`: the program's folder, where Tessel.cfg, Tessel.hst and the tools stand.
  explicit ViewWindow(const QString& toolFolder, QWidget* parent = nullptr);
  ~ViewWindow() override;

  Session& session() { return *session_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildMenus();
  void BuildStatusBar();
  QAction* AddEntry(QMenu* menu, const char* name, const QString& caption);

  std::array<QLabel*, 4> panels_{};
  std::unique_ptr<QtUserPort> user_;
  std::unique_ptr<QtProcessPort> processes_;
  NullCanvas canvas_;
  std::unique_ptr<Session> session_;
  bool exited_ = false;
};

}  // namespace tessel
