// The suite's tools started for real through the Qt process port: copies of the stand-in under
// the tools' names in a tool folder whose name has a blank in it, the sample job in a folder
// whose name has blanks and double quotes in it.
// Each stand-in notes in standin.log its name, current folder, TEMP.JOB and standard input.

#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <memory>
#include <string>

#include "app/qt_process_port.h"
#include "job/command_table.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "tools/launching.h"
#include "form_test_support.h"

namespace tessel {
namespace {

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteText(const QString& path, const QByteArray& text) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

const CommandRow& Row(const char* caption) {
  for (const auto& row : CommandTable()) {
    if (row.caption == caption) return row;
  }
  qFatal("no menu entry %s", caption);
}

}  // namespace

class LaunchTest : public QObject {
  Q_OBJECT

 private:
  QString JobFile(const char* name) const { return QDir(jobs_).filePath(QString::fromLatin1(name)); }

  // The log of the job folder: one line per launch, its fields but the folder, which must be the
  // job folder.
  QStringList Log() const {
    QStringList out;
    for (const QString& line : QString::fromLocal8Bit(Contents(JobFile("standin.log"))).split('\n', Qt::SkipEmptyParts)) {
      QStringList f = line.split('\t');
      if (f.size() != 5 || QDir(f[1]).canonicalPath() != QDir(jobs_).canonicalPath()) return {"bad line: " + line};
      f.removeAt(1);
      out << f.join('|');
    }
    return out;
  }

  std::unique_ptr<QTemporaryDir> root_;
  QString tools_, jobs_;
  std::unique_ptr<QMainWindow> window_;
  std::unique_ptr<QtProcessPort> processes_;
  RecordingUserPort user_;
  NullCanvas canvas_;
  std::unique_ptr<Session> session_;

 private slots:
  void initTestCase() {
    // The desktop program has no console: a tool reading its inherited input finds it empty.
    QVERIFY(std::freopen(QProcess::nullDevice().toLocal8Bit().constData(), "r", stdin) != nullptr);
  }

  void init() {
    root_ = std::make_unique<QTemporaryDir>();
    tools_ = root_->filePath(QStringLiteral("Tessel Suite"));
    jobs_ = root_->filePath(QStringLiteral("job \"one\" folder"));
    QVERIFY(QDir().mkpath(tools_) && QDir().mkpath(jobs_));
    // One tool in capitals, as some are spelled.
    for (const char* name : {"FITMAIN.EXE", "recpad.exe", "seedxy.exe", "exitcode.exe"}) {
      QVERIFY(InstallStandin(tools_, QString::fromLatin1(name)));
    }
    QVERIFY(CopySampleJob(jobs_));
    window_ = std::make_unique<QMainWindow>();
    processes_ = std::make_unique<QtProcessPort>(*window_);
    user_ = RecordingUserPort{};
    session_ = std::make_unique<Session>(user_, canvas_, *processes_);
    session_->ToolFolder = QDir::toNativeSeparators(tools_).toStdString();
    OpenJob(*session_, JobFile("T12NR04E.def").toStdString(), "T12NR04E.def");
    QCOMPARE(session_->JobName, std::string("T12NR04E"));
  }

  void cleanup() {
    session_.reset();
    processes_.reset();
    window_.reset();
    root_.reset();
  }

  void leastSquaresRunsInTheJobFolderAndReloads() {
    const PointStore& points = session_->points;
    const double x = points.PointX(points.Find("100100"));
    const auto count = points.PointCount();
    RunCommand(*session_, Row("&Least Squares Analysis (FITMAIN)"));
    QCOMPARE(Log(), QStringList{"fitmain|T12NR04E||<none>"});
    QCOMPARE(points.PointCount(), count);
    QCOMPARE(points.PointX(points.Find("100100")), x + 1.0);
    QVERIFY(user_.messages.empty());
  }

  void scriptedRunsFeedTheirAnswerFileAndGiveTheExitCode() {
    QVERIFY(WriteText(JobFile("T12NR04E.002"), "scratch\r\n"));
    RunRecpadScript(*session_);
    QCOMPARE(Log(), QStringList{"recpad|T12NR04E|" + QStringLiteral("\\r\\n").repeated(6) + "|<none>"});
    for (const char* name : {"temp.bat", "t1$.001", "T12NR04E.002"}) QVERIFY2(!QFile::exists(JobFile(name)), name);

    const std::string& folder = session_->JobFolder;
    QCOMPARE(processes_->RunCode(ToolLaunch(*session_, "exitcode"), folder, ShowMode::Hidden), 3);
    QVERIFY(WriteText(JobFile("answers.001"), "Y\r\n"));
    const std::string script = ScriptCommand(*session_, "exitcode.exe", "answers.001");
    QVERIFY(WriteText(JobFile("go.bat"), QByteArray::fromStdString(script) + "\r\nexit\r\n"));
    QCOMPARE(processes_->RunCode({"go.bat", {}}, folder, ShowMode::Hidden), 3);
    // A missing tool or batch file, or a batch file that asks for something else, runs nothing.
    QVERIFY(WriteText(JobFile("other.bat"), "echo hello\r\nexit\r\n"));
    for (const std::string& command : {std::string("none.bat"), std::string("other.bat"),
                                       ToolCommandLine(*session_, "descget")}) {
      QVERIFY2(processes_->RunCode({command, {}}, folder, ShowMode::Hidden) == -1, command.c_str());
    }
    QCOMPARE(Log().size(), 3);
    QCOMPARE(Log().back(), QStringLiteral("exitcode|T12NR04E|Y\\r\\n|<none>"));

    RunCommand(*session_, Row("&Generate Approx. Coords (SEEDXY)"));  // spawned, not waited for
    QTRY_COMPARE_WITH_TIMEOUT(Log().size(), 4, 5000);
    QCOMPARE(Log().back(), QStringLiteral("seedxy|T12NR04E||<none>"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::LaunchTest)
#include "launch_test.moc"
