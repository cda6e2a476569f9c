#pragma once
// What the tests of the real windows share: the sample job copied where a test wants it, the
// stand-in suite tool installed under a tool's name, whole files read and written, sessions on
// recording ports or real launches, the main window on folders of its own, and the program's
// message boxes answered as they come.

#include <QtTest>
#include <QtWidgets>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/qt_process_port.h"
#include "app/view_window.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "model/text_file.h"

namespace tessel {

// Copies every file of the sample job into `folder`; false when one could not be copied.
inline bool CopySampleJob(const QString& folder) {
  const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
  for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
    if (!QFile::copy(samples.filePath(name), QDir(folder).filePath(name))) return false;
  }
  return true;
}

#ifdef TESSEL_STANDIN
// The stand-in tool as `name` in `tools`, runnable; false when it could not be put there.
inline bool InstallStandin(const QString& tools, const QString& name) {
  const QString path = QDir(tools).filePath(name);
  return QFile::copy(QStringLiteral(TESSEL_STANDIN), path) &&
         QFile::setPermissions(path, QFile::permissions(QStringLiteral(TESSEL_STANDIN)));
}
#endif

// A file's bytes, "<missing>" when it cannot be read.
inline QByteArray Bytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

inline bool WriteText(const QString& path, const QByteArray& text) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

// Lines joined by CR LF, as the job's files hold them.
inline QByteArray CrLf(const std::vector<std::string>& lines) { return QByteArray::fromStdString(JoinCrLf(lines)); }

// A file's lines without their line ends.
inline std::vector<std::string> Lines(const QString& path) {
  std::vector<std::string> lines;
  LineReader in = LineReader::FromText(Bytes(path).toStdString());
  while (!in.Eof()) lines.push_back(in.ReadLine());
  return lines;
}

// The start of a Windows program, and no more: its header alone.
inline QByteArray WindowsHeader() {
  QByteArray bytes(0x100, '\0');
  bytes[0] = 'M';
  bytes[1] = 'Z';
  bytes[0x3C] = char(0x80);
  return bytes.replace(0x80, 4, QByteArray("PE\0\0", 4));
}

// The object a test looks for, which must be there.
template <typename T>
T* Found(T* object, const char* name) {
  if (!object) qFatal("no %s", name);
  return object;
}

// The strip of long work under `owner`, null when no work runs; and a click on its Cancel.
inline QProgressBar* LongWorkBar(QWidget* owner) { return owner->findChild<QProgressBar*>(QStringLiteral("prgLongWork")); }
inline void CancelLongWork(QWidget* owner) { owner->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))->click(); }

// Runs `work` with `look` called every `ms` milliseconds meanwhile, as a window's timer is; gives
// how many times it was called.
inline int Ticking(int ms, const std::function<void()>& look, const std::function<void()>& work) {
  int ticks = 0;
  QTimer timer;
  timer.setInterval(ms);
  QObject::connect(&timer, &QTimer::timeout, [&] {
    ++ticks;
    look();
  });
  timer.start();
  work();
  return ticks;
}

// The job `name` in `folder` (ending in its separator) as Open leaves the session's identity.
inline void SetJob(Session& s, const std::string& folder, const std::string& name) {
  s.JobFolder = folder;
  s.JobBase = folder + name;
  s.JobName = name;
  s.CurrentFolder = folder;
}

// A session of its own on recording ports.
struct Bench {
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session session{user, canvas, processes};
};

// A session on the tools in `tools` whose launches are real (the Qt process port) and whose
// messages are recorded.
struct LaunchBench {
  explicit LaunchBench(const QString& tools) : processes(window) {
    processes.Attach(&session);
    session.ToolFolder = QDir::toNativeSeparators(tools).toStdString();
  }
  QMainWindow window;
  RecordingUserPort user;
  NullCanvas canvas;
  QtProcessPort processes;
  Session session{user, canvas, processes};
};

// The main window on a tool folder and a jobs folder of their own, found by object name.
class WindowBench {
 protected:
  // The folders under one temporary root; the sample job in the jobs folder when asked.
  void MakeFolders(bool sample) {
    root_ = std::make_unique<QTemporaryDir>();
    tools_ = root_->filePath(QStringLiteral("tools"));
    jobs_ = root_->filePath(QStringLiteral("jobs"));
    QVERIFY(QDir().mkpath(tools_) && QDir().mkpath(jobs_));
    if (sample) QVERIFY(CopySampleJob(jobs_));
  }
  // The window on the tool folder, shown at 1000x750 and loaded.
  void StartWindow() {
    window_ = std::make_unique<ViewWindow>(tools_);
    window_->resize(1000, 750);
    window_->show();
    window_->Load();
  }
  void StopWindow() {
    window_.reset();
    root_.reset();
  }

  ViewWindow& W() { return *window_; }
  Session& S() { return window_->session(); }
  QAction* Action(const char* name) { return Found(W().findChild<QAction*>(QString::fromLatin1(name)), name); }
  QWidget* Form(const char* name) { return Found(W().findChild<QWidget*>(QString::fromLatin1(name)), name); }
  template <typename T = QWidget>
  T* In(const char* form, const char* name) { return Found(Form(form)->findChild<T*>(QString::fromLatin1(name)), name); }
  void Press(const char* form, const char* button) { In<QPushButton>(form, button)->click(); }
  QString Panel(int n) { return W().findChild<QLabel*>(QStringLiteral("Panel%1").arg(n))->text(); }
  QString JobFile(const QString& name) const { return QDir(jobs_).filePath(name); }
  QString ToolFile(const QString& name) const { return QDir(tools_).filePath(name); }
  // The sample job opened from the jobs folder.
  void Open() { OpenJob(S(), JobFile(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def"); }
  // The canvas pixel of a world position.
  QPoint Pixel(double x, double y) {
    const ViewState& v = S().view;
    const QWidget& c = W().canvas();
    return QPointF((x - v.ScaleLeft) / v.ScaleWidth * c.width(), (y - v.ScaleTop) / v.ScaleHeight * c.height())
        .toPoint();
  }
  // A click of the left button on the canvas at a world position.
  void ClickAt(double x, double y) {
    QTest::mousePress(&W().canvas(), Qt::LeftButton, Qt::NoModifier, Pixel(x, y));
    QTest::mouseRelease(&W().canvas(), Qt::LeftButton, Qt::NoModifier, Pixel(x, y));
  }

  std::unique_ptr<QTemporaryDir> root_;
  QString tools_, jobs_;
  std::unique_ptr<ViewWindow> window_;
};

// Answers the program's message boxes as they come, for tests that drive the real windows: each
// box gets the next prepared button (or its default one) and its text is kept.
class MessageBoxes : public QObject {
 public:
  MessageBoxes() {
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      texts << box->text();
      QAbstractButton* button = nullptr;
      if (!answers.empty()) {
        button = box->button(answers.front());
        answers.pop_front();
      }
      if (!button) button = box->defaultButton() ? box->defaultButton() : box->buttons().value(0);
      button->click();
    });
    timer_.start();
  }
  // Whether a box said `part`.
  bool Asked(const QString& part) const { return !texts.filter(part).isEmpty(); }

  std::deque<QMessageBox::StandardButton> answers;
  QStringList texts;

 private:
  QTimer timer_;
};

}  // namespace tessel
