#include "app/qt_user_port.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QStringList>

#include "forms/ui/interface_thread.h"

namespace tessel {

QtUserPort::QtUserPort(QMainWindow& window, std::array<QLabel*, 5> panels) : window_(window), panels_(panels) {}

// Work on a worker thread speaks to the user through the same port: each call runs on the
// interface thread while the work waits for it.

Answer QtUserPort::Message(const std::string& text, Icon icon, Buttons buttons, const std::string& title) {
  return OnInterfaceThread(window_, [&] { return MessageHere(text, icon, buttons, title); });
}

Answer QtUserPort::MessageHere(const std::string& text, Icon icon, Buttons buttons, const std::string& title) {
  QMessageBox box(&window_);
  box.setText(FromBytes(text));
  box.setWindowTitle(title.empty() ? QStringLiteral("Tessel") : FromBytes(title));
  switch (icon) {
    case Icon::None: box.setIcon(QMessageBox::NoIcon); break;
    case Icon::Information: box.setIcon(QMessageBox::Information); break;
    case Icon::Question: box.setIcon(QMessageBox::Question); break;
    case Icon::Exclamation: box.setIcon(QMessageBox::Warning); break;
    case Icon::Stop: box.setIcon(QMessageBox::Critical); break;
  }
  switch (buttons) {
    case Buttons::Ok: box.setStandardButtons(QMessageBox::Ok); break;
    case Buttons::OkCancel: box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel); break;
    case Buttons::YesNo: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No); break;
    case Buttons::YesNoCancel: box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel); break;
  }
  // A box shown during a load must not keep the hourglass.
  QApplication::setOverrideCursor(Qt::ArrowCursor);
  const int result = box.exec();
  QApplication::restoreOverrideCursor();
  switch (result) {
    case QMessageBox::Yes: return Answer::Yes;
    case QMessageBox::No: return Answer::No;
    case QMessageBox::Cancel: return Answer::Cancel;
    default: return Answer::Ok;
  }
}

std::optional<std::string> QtUserPort::Input(const std::string& prompt, const std::string& title,
                                             const std::string& initial) {
  return OnInterfaceThread(window_, [&]() -> std::optional<std::string> {
    bool ok = false;
    const QString text = QInputDialog::getText(&window_, FromBytes(title), FromBytes(prompt), QLineEdit::Normal,
                                               FromBytes(initial), &ok);
    if (!ok) return std::nullopt;
    return ToBytes(text);
  });
}

std::optional<FileChoice> QtUserPort::ChooseFile(const FileRequest& request) {
  return OnInterfaceThread(window_, [&]() -> std::optional<FileChoice> {
    QFileDialog dialog(&window_, FromBytes(request.title), FromBytes(request.initialFolder), QtFilter(request.filter));
    dialog.setObjectName(request.save ? QStringLiteral("dlgSave") : QStringLiteral("dlgOpen"));
    dialog.setAcceptMode(request.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    // The same dialog on every platform, which also lets the tests answer it.
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(request.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!request.defaultExtension.empty()) dialog.setDefaultSuffix(FromBytes(request.defaultExtension).remove('.'));
    if (!request.overwritePrompt) dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (!request.fileName.empty()) dialog.selectFile(FromBytes(request.fileName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    const QString path = QDir::toNativeSeparators(dialog.selectedFiles().first());
    return FileChoice{path.toLocal8Bit().toStdString(), QFileInfo(path).fileName().toLocal8Bit().toStdString()};
  });
}

void QtUserPort::Status(int panel, const std::string& text) {
  if (panel < 1 || panel > static_cast<int>(panels_.size())) return;
  if (OnThreadOf(window_)) {
    ShowStatus(panel, text);
    return;
  }
  // From a worker the latest text of each panel is kept and shown once the interface thread gets
  // to it, without waiting. Whatever the work asks next through the window (a box) is queued
  // behind it, so the panels still read as they should when the box appears.
  const std::lock_guard lock(pendingMutex_);
  pendingStatus_[static_cast<std::size_t>(panel - 1)] = text;
  if (statusPosted_) return;
  statusPosted_ = true;
  QMetaObject::invokeMethod(&window_, [this] { ShowPendingStatus(); }, Qt::QueuedConnection);
}

void QtUserPort::ShowPendingStatus() {
  std::array<std::optional<std::string>, 5> texts;
  {
    const std::lock_guard lock(pendingMutex_);
    texts.swap(pendingStatus_);
    statusPosted_ = false;
  }
  for (std::size_t k = 0; k < texts.size(); ++k) {
    if (texts[k]) ShowStatus(static_cast<int>(k) + 1, *texts[k]);
  }
}

void QtUserPort::ShowStatus(int panel, const std::string& text) {
  QLabel* label = panels_[static_cast<std::size_t>(panel - 1)];
  const QString value = FromBytes(text);
  // A load sets the same text many times over; only a change is worth a repaint.
  if (label->text() != value) label->setText(value);
}

void QtUserPort::Note(const std::string& text) {
  // Long enough to be read after the command's last box has been closed.
  OnInterfaceThread(window_, [&] { window_.statusBar()->showMessage(FromBytes(text), 15000); });
}

void QtUserPort::SetPointer(Pointer pointer) {
  // Work on a worker thread leaves the window answering: its hourglass still lets the Cancel
  // be clicked.
  const bool worker = !OnThreadOf(window_);
  OnInterfaceThread(window_, [&] {
    if (overridden_) QApplication::restoreOverrideCursor();
    overridden_ = pointer != Pointer::Default;
    switch (pointer) {
      case Pointer::Default: break;
      case Pointer::Hourglass: QApplication::setOverrideCursor(worker ? Qt::BusyCursor : Qt::WaitCursor); break;
      case Pointer::Crosshair: QApplication::setOverrideCursor(Qt::CrossCursor); break;
      case Pointer::Arrow: QApplication::setOverrideCursor(Qt::ArrowCursor); break;
    }
  });
}

void QtUserPort::SetTitle(const std::string& title) {
  OnInterfaceThread(window_, [&] { window_.setWindowTitle(QString::fromLocal8Bit(title.c_str())); });
}

QObject* QtUserPort::Find(const std::string& name) const {
  const auto slash = name.find('/');
  if (slash == std::string::npos) return window_.findChild<QObject*>(QString::fromStdString(name));
  QWidget* form = window_.findChild<QWidget*>(QString::fromStdString(name.substr(0, slash)));
  return form ? form->findChild<QObject*>(QString::fromStdString(name.substr(slash + 1))) : nullptr;
}

void QtUserPort::SetEnabled(const std::string& name, bool enabled) {
  OnInterfaceThread(window_, [&] {
    QObject* target = Find(name);
    if (auto* action = qobject_cast<QAction*>(target)) action->setEnabled(enabled);
    if (auto* menu = qobject_cast<QMenu*>(target)) menu->menuAction()->setEnabled(enabled);
    else if (auto* widget = qobject_cast<QWidget*>(target)) widget->setEnabled(enabled);
  });
}

void QtUserPort::SetChecked(const std::string& name, bool checked) {
  OnInterfaceThread(window_, [&] {
    if (auto* action = window_.findChild<QAction*>(QString::fromStdString(name))) action->setChecked(checked);
  });
}

void QtUserPort::UnloadForm(const std::string& name) {
  OnInterfaceThread(window_, [&] {
    if (auto* form = window_.findChild<QWidget*>(QString::fromStdString(name))) form->close();
  });
}

void QtUserPort::ShowForm(const std::string& form) {
  OnInterfaceThread(window_, [&] {
    if (auto* widget = window_.findChild<QWidget*>(QString::fromStdString(form))) {
      // Asked for again while open, a form shows the session as it is now: Qt sends no show event
      // to a visible window.
      if (widget->isVisible() && widget->metaObject()->indexOfSlot("Reload()") >= 0) {
        QMetaObject::invokeMethod(widget, "Reload");
      }
      widget->show();
      widget->raise();
    }
  });
}

void QtUserPort::YieldEvents() {
  // Work on a worker thread yields nothing: the interface thread runs on by itself.
  if (OnThreadOf(window_)) QCoreApplication::processEvents();
}

void QtUserPort::SetToolButton(int k, const std::string& caption) {
  OnInterfaceThread(window_, [&] {
    if (auto* toolbox = window_.findChild<QWidget*>(QStringLiteral("frmToolbox"))) {
      if (auto* button = toolbox->findChild<QPushButton*>(QStringLiteral("cmdTool%1").arg(k))) button->setText(FromBytes(caption));
    }
    if (k < 1 || k > 10) return;
    if (auto* action = window_.findChild<QAction*>(QStringLiteral("usr%1").arg(k))) {
      action->setToolTip(FromBytes(caption));
      action->setVisible(true);
    }
  });
}

}  // namespace tessel

namespace tessel {

void QtUserPort::ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                           const std::vector<std::string>& hidden) {
  OnInterfaceThread(window_, [&] {
    if (popup_) popup_(menu, visible, hidden);
  });
}

void QtUserPort::OuterSizeTwips(double& width, double& height) {
  OnInterfaceThread(window_, [&] {
    const QRect frame = window_.frameGeometry();
    const double twipsPerPixel = 1440.0 / window_.logicalDpiX();
    width = frame.width() * twipsPerPixel;
    height = frame.height() * twipsPerPixel;
  });
}

}  // namespace tessel
