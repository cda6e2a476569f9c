// The suite's tools started for real through the Qt process port. A tool folder holds copies of
// the stand-in under the tools' names (one in capitals, as some tools are spelled) and the side
// files, in a folder whose name has a blank in it; the sample job is opened from its own folder,
// whose name has blanks and double quotes in it. Each
// stand-in notes in standin.log what it was given (its name, current folder, TEMP.JOB, standard
// input, the side files beside it) and writes what the real tool would.

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "app/qt_process_port.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "job/command_table.h"
#include "tools/launching.h"

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

// One line of standin.log.
struct LogEntry {
  QString tool, folder, job, input, sideFiles;
};

QList<LogEntry> ReadLog(const QString& folder) {
  QList<LogEntry> launches;
  for (const QString& line : QString::fromLocal8Bit(Contents(QDir(folder).filePath("standin.log"))).split('\n')) {
    const QStringList f = line.split('\t');
    if (f.size() == 5) launches.append({f[0], f[1], f[2], f[3], f[4]});
  }
  return launches;
}

// The row of the menu entry with this caption.
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
  static void CopySample(const QString& folder) {
    const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
    for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
      QVERIFY(QFile::copy(samples.filePath(name), QDir(folder).filePath(name)));
    }
  }

  // A session on the window's process port with the sample job of `folder` open.
  void Open(const QString& folder) {
    session_.reset();
    user_ = std::make_unique<RecordingUserPort>();
    session_ = std::make_unique<Session>(*user_, canvas_, *processes_);
    session_->ToolFolder = QDir::toNativeSeparators(tools_).toStdString();
    OpenJob(*session_, QDir(folder).filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    QCOMPARE(session_->JobName, std::string("T12NR04E"));
  }

  QString JobFile(const char* name) const { return QDir(jobs_).filePath(QString::fromLatin1(name)); }
  QString ToolFile(const char* name) const { return QDir(tools_).filePath(QString::fromLatin1(name)); }

  // The one launch the folder saw, which must be of `tool`, in that folder, with TEMP.JOB naming
  // the job; an empty launch otherwise.
  LogEntry OnlyLaunch(const char* tool, const QString& folder) {
    const QList<LogEntry> launches = ReadLog(folder);
    if (launches.size() != 1) return {};
    const LogEntry& launch = launches.front();
    const bool expected = launch.tool == QLatin1String(tool) && launch.job == QStringLiteral("T12NR04E") &&
                          QDir(launch.folder).canonicalPath() == QDir(folder).canonicalPath();
    return expected ? launch : LogEntry{};
  }
  bool RanOnce(const char* tool) { return !OnlyLaunch(tool, jobs_).tool.isEmpty(); }

  std::unique_ptr<QTemporaryDir> root_;
  QString tools_;
  QString jobs_;
  std::unique_ptr<QMainWindow> window_;
  std::unique_ptr<QtProcessPort> processes_;
  std::unique_ptr<RecordingUserPort> user_;
  NullCanvas canvas_;
  std::unique_ptr<Session> session_;

 private slots:
  void initTestCase() {
    // The desktop program has no console: a tool that reads its inherited standard input finds
    // it empty rather than waiting on whatever the test runner left open.
    QVERIFY(std::freopen(QProcess::nullDevice().toLocal8Bit().constData(), "r", stdin) != nullptr);
  }

  // A tool folder of stand-ins and side files; the job folder beside it.
  void init() {
    root_ = std::make_unique<QTemporaryDir>();
    tools_ = root_->filePath(QStringLiteral("Tessel Suite"));
    jobs_ = root_->filePath(QStringLiteral("job \"one\" folder"));
    QVERIFY(QDir().mkpath(tools_) && QDir().mkpath(jobs_));
    for (const char* name : {"fitmain.exe", "RINGFORM.EXE", "cogopad.exe", "shift27.exe", "recpad.exe", "seedxy.exe",
                             "exitcode.exe"}) {
      QVERIFY(QFile::copy(QStringLiteral(TESSEL_STANDIN), ToolFile(name)));
      QVERIFY(QFile::setPermissions(ToolFile(name), QFile::permissions(QStringLiteral(TESSEL_STANDIN))));
    }
    for (const char* name : {"cogopad.hlp", "conus.las", "conus.los"}) {
      QVERIFY(WriteText(ToolFile(name), QByteArray("master ") + name + "\r\n"));
    }
    CopySample(jobs_);
    window_ = std::make_unique<QMainWindow>();
    processes_ = std::make_unique<QtProcessPort>(*window_);
    Open(jobs_);
  }

  void cleanup() {
    session_.reset();
    user_.reset();
    processes_.reset();
    window_.reset();
    root_.reset();
  }

  void leastSquaresRunsInTheJobFolderAndReloads() {
    const PointStore& points = session_->points;
    const int first = points.Find("100100");
    const auto count = points.PointCount();
    const double x = points.PointX(first), y = points.PointY(first);
    RunCommand(*session_, Row("&Least Squares Analysis (FITMAIN)"));
    QVERIFY(RanOnce("fitmain"));
    // The job was read again: the store holds the tool's coordinates.
    const int moved = points.Find("100100");
    QVERIFY(first > 0 && moved > 0 && points.PointCount() == count);
    QCOMPARE(points.PointX(moved), x + 1.0);
    QCOMPARE(points.PointY(moved), y);
    QVERIFY(user_->messages.empty());
  }

  void rawPolygonsAskBeforeReplacingTheirFile() {
    const CommandRow& row = Row("Compute Raw Polygons (RINGFORM)");
    const QByteArray before = Contents(JobFile("T12NR04E.RPO"));
    const auto loaded = session_->polygons.RawPolygonCount;
    QVERIFY(!before.isEmpty() && loaded > 2);

    // No: nothing runs and nothing is read.
    user_->answers = {Answer::No, Answer::Yes};
    RunCommand(*session_, row);
    QCOMPARE(user_->MessageTexts(), std::vector<std::string>{"You have already computed Raw Polygons. Are you "
                                                             "sure you want to continue? "});
    QVERIFY(user_->messages.back().buttons == Buttons::YesNo && ReadLog(jobs_).isEmpty());
    QCOMPARE(Contents(JobFile("T12NR04E.RPO")), before);
    QCOMPARE(session_->polygons.RawPolygonCount, loaded);

    // Yes: the tool found in capitals runs, then the centroids are computed and read; a
    // triangle's centroid is the mean of its corners.
    RunCommand(*session_, row);
    QVERIFY(RanOnce("ringform"));
    const PointStore& points = session_->points;
    QCOMPARE(session_->polygons.RawPolygonCount, std::int16_t{2});
    const double meanX = (points.PointX(1) + points.PointX(2) + points.PointX(3)) / 3.0;
    QVERIFY(std::abs(session_->polygons.RawPolygonX.get(1) - meanX) < 0.01);
  }

  void sideFilesStandBesideTheToolOnlyDuringItsRun() {
    RunCommand(*session_, Row("&Coordinate Geometry (COGOPAD)"));
    QCOMPARE(OnlyLaunch("cogopad", jobs_).sideFiles, QStringLiteral("cogopad.hlp"));
    QFile::remove(JobFile("standin.log"));
    RunCommand(*session_, Row("Datum Transformation NAD27<>NAD83 (SHIFT27)"));
    QCOMPARE(OnlyLaunch("shift27", jobs_).sideFiles, QStringLiteral("conus.las conus.los"));
    for (const char* name : {"cogopad.hlp", "conus.las", "conus.los"}) {
      QVERIFY2(!QFile::exists(JobFile(name)) && QFile::exists(ToolFile(name)), name);
    }

    // A job in the tool folder uses the masters themselves and keeps them.
    CopySample(tools_);
    Open(tools_);
    RunCommand(*session_, Row("&Coordinate Geometry (COGOPAD)"));
    QCOMPARE(OnlyLaunch("cogopad", tools_).sideFiles,
             QStringLiteral("cogopad.hlp conus.las conus.los"));
    QCOMPARE(Contents(ToolFile("cogopad.hlp")), QByteArray("master cogopad.hlp\r\n"));
  }

  void recordEditorLocksItsEntryWhileItRuns() {
    const CommandRow& row = Row("Input / Edit &Record data (RECPAD)");
    auto* own = new QAction(window_.get());
    own->setObjectName(QString::fromStdString(row.name));
    // The watch lets events through at least once while the tool runs.
    bool seen = false, enabledDuring = true;
    QTimer::singleShot(0, window_.get(), [&] {
      seen = true;
      enabledDuring = own->isEnabled();
    });
    RunCommand(*session_, row);
    QVERIFY(seen && !enabledDuring && own->isEnabled());
    QVERIFY(RanOnce("recpad"));
  }

  void recordRebuildFeedsSixEmptyLinesAndCleansUp() {
    QVERIFY(WriteText(JobFile("T12NR04E.002"), "scratch\r\n"));
    RunRecpadScript(*session_);
    QCOMPARE(OnlyLaunch("recpad", jobs_).input, QStringLiteral("\\r\\n").repeated(6));
    for (const char* name : {"temp.bat", "t1$.001", "T12NR04E.002"}) QVERIFY2(!QFile::exists(JobFile(name)), name);
    QVERIFY(user_->messages.empty());
  }

  void plainRowIsSpawned() {
    RunCommand(*session_, Row("&Generate Approx. Coords (SEEDXY)"));
    QTRY_VERIFY_WITH_TIMEOUT(!ReadLog(jobs_).isEmpty(), 5000);
    QVERIFY(RanOnce("seedxy"));
  }

  void blockingRunsGiveTheExitCode() {
    const std::string& folder = session_->JobFolder;
    QCOMPARE(processes_->RunCode(ToolLaunch(*session_, "exitcode"), folder, ShowMode::Hidden), 3);
    // The scripted form gives the code of the program it names.
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
    QCOMPARE(ReadLog(jobs_).size(), 2);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::LaunchTest)
#include "launch_test.moc"
