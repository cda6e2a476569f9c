#include "forms/ui/long_work.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QMenuBar>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSet>
#include <QStatusBar>
#include <QThread>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <exception>
#include <mutex>
#include <string>
#include <vector>

#include "forms/ui/interface_thread.h"
#include "paint/qt_text.h"

namespace tessel {

namespace {

// What the worker last reported, read by the interface thread's timer, and the user's cancel.
class SharedProgress : public Progress {
 public:
  void Report(const std::string& what, double fraction) override {
    const std::lock_guard lock(mutex_);
    what_ = what;
    fraction_ = fraction;
    reported_ = true;
  }
  bool CancelAsked() const override { return cancel_.load(); }
  void AskCancel() { cancel_.store(true); }
  // False until the work has reported.
  bool Last(std::string& what, double& fraction) const {
    const std::lock_guard lock(mutex_);
    what = what_;
    fraction = fraction_;
    return reported_;
  }

 private:
  mutable std::mutex mutex_;
  std::string what_;
  double fraction_ = -1.0;
  bool reported_ = false;
  std::atomic<bool> cancel_{false};
};

// Progress for work nested in other work, which its caller's bar already shows.
class Unwatched : public Progress {
 public:
  void Report(const std::string&, double) override {}
  bool CancelAsked() const override { return false; }
};

// Holds off every command while the work runs: input to the windows that were there when it
// began is dropped, but for the progress strip's own; the windows the work opens (its boxes and
// choosers) answer as ever, and menu shortcuts only work inside them.
class InputGate : public QObject {
 public:
  explicit InputGate(QWidget* strip) : strip_(strip) {
    for (QWidget* window : QApplication::topLevelWidgets()) before_.insert(window);
    qApp->installEventFilter(this);
  }
  ~InputGate() override { qApp->removeEventFilter(this); }

  bool eventFilter(QObject* target, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin: {
        auto* widget = qobject_cast<QWidget*>(target);
        if (widget == nullptr || (strip_ && (widget == strip_ || strip_->isAncestorOf(widget)))) return false;
        return before_.contains(widget->window());
      }
      case QEvent::Shortcut: {
        QWidget* modal = QApplication::activeModalWidget();
        return modal == nullptr || before_.contains(modal);
      }
      case QEvent::Close: {
        // The user's close of a window that was open, the main window above all, waits too.
        auto* widget = qobject_cast<QWidget*>(target);
        return event->spontaneous() && widget != nullptr && widget->isWindow() && before_.contains(widget);
      }
      default: return false;
    }
  }

 private:
  QPointer<QWidget> strip_;
  QSet<QWidget*> before_;
};

// The window whose property tells that its work runs, and the main window behind a dialog.
std::vector<QWidget*> MarkedWindows(QWidget& from) {
  std::vector<QWidget*> windows{from.window()};
  if (QWidget* parent = from.window()->parentWidget()) windows.push_back(parent->window());
  return windows;
}

}  // namespace

bool LongWorkRunning(const QWidget& widget) {
  const QWidget* window = widget.window();
  if (window->property(kLongWorkProperty).toBool()) return true;
  const QWidget* parent = window->parentWidget();
  return parent != nullptr && parent->window()->property(kLongWorkProperty).toBool();
}

bool RunLongWork(QWidget& from, const std::function<void(Progress&)>& work, CancelOffer cancel) {
  if (!OnThreadOf(from) || LongWorkRunning(from)) {
    Unwatched nested;
    work(nested);
    return true;
  }

  // The strip: what is being done and how far, and the Cancel.
  auto* strip = new QWidget;
  strip->setObjectName(QStringLiteral("stripLongWork"));
  auto* row = new QHBoxLayout(strip);
  row->setContentsMargins(0, 0, 0, 0);
  auto* bar = new QProgressBar(strip);
  bar->setObjectName(QStringLiteral("prgLongWork"));
  bar->setMinimumWidth(260);
  bar->setRange(0, 0);
  bar->setTextVisible(true);
  auto* stop = new QPushButton(QStringLiteral("Cancel"), strip);
  stop->setObjectName(QStringLiteral("cmdLongWorkCancel"));
  stop->setToolTip(QStringLiteral("Stop at the next point where every file is whole"));
  stop->setVisible(cancel == CancelOffer::Offered);
  row->addWidget(bar, 1);
  row->addWidget(stop);

  // Where it stands, and what is switched off meanwhile.
  std::vector<QPointer<QWidget>> switchedOff;
  const auto switchOff = [&switchedOff](QWidget* widget) {
    if (widget == nullptr || !widget->isEnabled()) return;
    widget->setEnabled(false);
    switchedOff.emplace_back(widget);
  };
  if (auto* main = qobject_cast<QMainWindow*>(from.window())) {
    // No taller than the panels, so that the canvas above keeps its size.
    int tallest = 0;
    for (QWidget* panel : main->statusBar()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (panel->isVisible()) tallest = std::max(tallest, panel->height());
    }
    if (tallest > 0) {
      bar->setMaximumHeight(tallest);
      stop->setMaximumHeight(tallest);
    }
    main->statusBar()->addPermanentWidget(strip);
    switchOff(main->menuBar());
    for (QToolBar* toolbar : main->findChildren<QToolBar*>()) switchOff(toolbar);
  } else {
    for (QWidget* child : from.window()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
      if (!child->isWindow()) switchOff(child);
    }
    if (auto* box = qobject_cast<QBoxLayout*>(from.window()->layout())) box->addWidget(strip);
    if (QWidget* parent = from.window()->parentWidget()) {
      if (auto* behind = qobject_cast<QMainWindow*>(parent->window())) {
        switchOff(behind->menuBar());
        for (QToolBar* toolbar : behind->findChildren<QToolBar*>()) switchOff(toolbar);
      }
    }
  }
  if (strip->parentWidget() != nullptr) strip->show();
  const std::vector<QWidget*> marked = MarkedWindows(from);
  for (QWidget* window : marked) window->setProperty(kLongWorkProperty, true);

  SharedProgress progress;
  QObject::connect(stop, &QPushButton::clicked, strip, [&progress, stop] {
    progress.AskCancel();
    stop->setEnabled(false);
  });
  QTimer poll;
  poll.setInterval(50);
  QObject::connect(&poll, &QTimer::timeout, strip, [&progress, bar] {
    std::string what;
    double fraction = -1.0;
    if (!progress.Last(what, fraction)) return;
    bar->setFormat(FromBytes(what) + QStringLiteral("  %p%"));
    if (fraction < 0.0) {
      bar->setRange(0, 0);
    } else {
      bar->setRange(0, 1000);
      bar->setValue(static_cast<int>(std::lround(fraction * 1000.0)));
    }
  });

  std::exception_ptr failure;
  QThread* worker = QThread::create([&work, &progress, &failure] {
    try {
      work(progress);
    } catch (...) {
      failure = std::current_exception();
    }
  });
  QEventLoop loop;
  QObject::connect(worker, &QThread::finished, &loop, &QEventLoop::quit);
  {
    InputGate gate(strip);
    poll.start();
    worker->start();
    loop.exec();
    worker->wait();
    poll.stop();
  }
  delete worker;

  for (QWidget* window : marked) window->setProperty(kLongWorkProperty, false);
  for (const QPointer<QWidget>& widget : switchedOff) {
    if (widget) widget->setEnabled(true);
  }
  delete strip;
  if (failure) std::rethrow_exception(failure);
  return !progress.CancelAsked();
}

}  // namespace tessel
