#include "app/view_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

#include "core/load_sequence.h"

namespace tessel {

ViewWindow::ViewWindow(const QString& toolFolder, QWidget* parent) : QMainWindow(parent) {
  setObjectName(QStringLiteral("View"));
  setWindowTitle(QStringLiteral("Tessel"));
  BuildMenus();
  BuildStatusBar();
  setCentralWidget(new QWidget(this));
  resize(960, 720);

  user_ = std::make_unique<QtUserPort>(*this, panels_);
  processes_ = std::make_unique<QtProcessPort>(*this);
  session_ = std::make_unique<Session>(*user_, canvas_, *processes_);
  session_->ToolFolder = QDir::toNativeSeparators(toolFolder).toLocal8Bit().toStdString();
  session_->CurrentFolder = session_->ToolFolder;
  MainFormLoad(*session_);
}

ViewWindow::~ViewWindow() = default;

QAction* ViewWindow::AddEntry(QMenu* menu, const char* name, const QString& caption) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  return action;
}

void ViewWindow::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->setObjectName(QStringLiteral("mnuFile"));
  connect(AddEntry(file, "mnuFileOpen", QStringLiteral("&Open")), &QAction::triggered, this,
          [this] { FileOpen(*session_); });
  connect(AddEntry(file, "mnuFileReload", QStringLiteral("Reload Current")), &QAction::triggered, this,
          [this] { ReloadJob(*session_); });
  connect(AddEntry(file, "mnuFileClose", QStringLiteral("&Close")), &QAction::triggered, this,
          [this] { FileClose(*session_); });
  file->addSeparator();
  connect(AddEntry(file, "mnuFileExit", QStringLiteral("E&xit")), &QAction::triggered, this, [this] { close(); });
}

void ViewWindow::BuildStatusBar() {
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    label->setFrameShape(QFrame::StyledPanel);
    label->setFrameShadow(QFrame::Sunken);
    statusBar()->addWidget(label, i == 0 ? 3 : 1);
    panels_[i] = label;
  }
  statusBar()->setSizeGripEnabled(true);
}

void ViewWindow::closeEvent(QCloseEvent* event) {
  if (!exited_) {
    exited_ = true;
    FileExit(*session_);
  }
  event->accept();
}

}  // namespace tessel
