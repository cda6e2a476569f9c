// The suite's tools started for real through the Qt process port. A tool folder holds copies of
// the stand-in under the tools' names (one in capitals, as some tools are spelled) and the side
// files; the sample job is opened from its own folder. Each stand-in notes in standin.log what it
// was given (its name, current folder, TEMP.JOB, standard input, the side files beside it) and
// writes what the real tool would.

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
#include "core/load_sequence.h"
#include "core/recording_ports.h"
#include "core/session.h"
#include "tools/command_table.h"
#include "tools/launching.h"

namespace tessel {
namespace {

// One line of standin.log.
struct Launch {
  QString tool;
  QString folder;
  QString job;
  QString input;
  QString sideFiles;
};

QList<Launch> ReadLog(const QString& folder) {
  QList<Launch> launches;
  QFile log(QDir(folder).filePath(QStringLiteral("standin.log")));
  if (!log.open(QIODevice::ReadOnly)) return launches;
  for (const QByteArray& line : log.readAll().split('\n')) {
    const QList<QByteArray> fields = line.split('\t');
    if (fields.size() != 5) continue;
    launches.append({QString::fromLocal8Bit(fields[0]), QString::fromLocal8Bit(fields[1]), QString::fromLocal8Bit(fields[2]),
                     QString::fromLocal8Bit(fields[3]), QString::fromLocal8Bit(fields[4])});
  }
  return launches;
}

QString Canonical(const QString& folder) { return QDir(folder).canonicalPath(); }

// The row of the menu entry with this caption and kind.
const CommandRow* Row(const std::string& caption, CommandKind kind) {
  for (const auto& row : CommandTable()) {
    if (row.caption == caption && row.kind == kind) return &row;
  }
  return nullptr;
}

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WriteText(const QString& path, const QByteArray& text) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

}  // namespace

class LaunchTest : public QObject {
  Q_OBJECT

 private:
  // A tool folder of stand-ins and side files; the job folder beside it.
  void MakeFolders(const QString& jobFolderName) {
    root_ = std::make_unique<QTemporaryDir>();
    QVERIFY(root_->isValid());
    tools_ = root_->filePath(QStringLiteral("tools"));
    jobs_ = root_->filePath(jobFolderName);
    QVERIFY(QDir().mkpath(tools_));
    QVERIFY(QDir().mkpath(jobs_));
    for (const char* name : {"fitmain.exe", "RINGFORM.EXE", "desclink.exe", "ringcheck.exe", "recpad.exe", "cogopad.exe",
                             "shift27.exe", "splitplan.exe", "seedxy.exe", "exitcode.exe"}) {
      const QString copy = QDir(tools_).filePath(QString::fromLatin1(name));
      QVERIFY(QFile::copy(QStringLiteral(TESSEL_STANDIN), copy));
      QVERIFY(QFile::setPermissions(copy, QFile::permissions(QStringLiteral(TESSEL_STANDIN))));
    }
    for (const char* name : {"cogopad.hlp", "conus.las", "conus.los"}) {
      QVERIFY(WriteText(QDir(tools_).filePath(QString::fromLatin1(name)), QByteArray("master ") + name + "\r\n"));
    }
    CopySample(jobs_);
  }

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

  QAction* Entry(const std::string& name) { return window_->findChild<QAction*>(QString::fromStdString(name)); }

  QString JobFile(const char* name) const { return QDir(jobs_).filePath(QString::fromLatin1(name)); }

  // The one launch the job folder saw, checked for the tool, the folder and the marker.
  Launch OnlyLaunch(const QString& tool, const QString& folder) {
    const QList<Launch> launches = ReadLog(folder);
    if (launches.size() != 1) {
      qWarning("%lld launches seen", static_cast<long long>(launches.size()));
      return {};
    }
    const Launch& launch = launches.front();
    if (launch.tool != tool || Canonical(launch.folder) != Canonical(folder) || launch.job != QStringLiteral("T12NR04E")) {
      qWarning("unexpected launch: %s in %s for %s", qPrintable(launch.tool), qPrintable(launch.folder),
               qPrintable(launch.job));
      return {};
    }
    return launch;
  }

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
    QVERIFY(!CommandTable().empty());
  }

  void init() {
    MakeFolders(QStringLiteral("job"));
    window_ = std::make_unique<QMainWindow>();
    // The entries that a watched run locks.
    for (const auto& row : CommandTable()) {
      if (row.kind == CommandKind::RecordEditor || row.kind == CommandKind::SubdivisionEditor) {
        auto* action = new QAction(QString::fromStdString(row.caption), window_.get());
        action->setObjectName(QString::fromStdString(row.name));
      }
    }
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
    const CommandRow* row = Row("&Least Squares Analysis (FITMAIN)", CommandKind::LeastSquares);
    QVERIFY(row);
    const int first = session_->points.Find("100100");
    QVERIFY(first > 0);
    const double x = session_->points.PointX(first);
    const double y = session_->points.PointY(first);
    const auto count = session_->points.PointCount();

    RunCommand(*session_, *row);

    const Launch launch = OnlyLaunch(QStringLiteral("fitmain"), jobs_);
    QCOMPARE(launch.tool, QStringLiteral("fitmain"));
    QCOMPARE(launch.input, QString());
    // The job was read again: the store holds the tool's coordinates.
    QCOMPARE(session_->points.PointCount(), count);
    const int moved = session_->points.Find("100100");
    QVERIFY(moved > 0);
    QCOMPARE(session_->points.PointX(moved), x + 1.0);
    QCOMPARE(session_->points.PointY(moved), y);
    QVERIFY(user_->messages.empty());
  }

  void rawPolygonsAskBeforeReplacingTheirFile() {
    const CommandRow* row = Row("Compute Raw Polygons (RINGFORM)", CommandKind::ComputePolygons);
    QVERIFY(row);
    const QString question = QStringLiteral("You have already computed Raw Polygons. Are you sure you want to continue? ");
    const QByteArray before = Contents(JobFile("T12NR04E.RPO"));
    QVERIFY(!before.isEmpty());
    const auto loaded = session_->polygons.RawPolygonCount;
    QVERIFY(loaded > 2);

    // No: nothing runs and nothing is read.
    user_->answers.push_back(Answer::No);
    RunCommand(*session_, *row);
    QCOMPARE(user_->messages.size(), std::size_t{1});
    QCOMPARE(QString::fromStdString(user_->messages.back().text), question);
    QVERIFY(user_->messages.back().buttons == Buttons::YesNo);
    QVERIFY(ReadLog(jobs_).isEmpty());
    QCOMPARE(Contents(JobFile("T12NR04E.RPO")), before);
    QCOMPARE(session_->polygons.RawPolygonCount, loaded);

    // Yes: the tool found in capitals runs, then the centroids are computed and read.
    user_->answers.push_back(Answer::Yes);
    RunCommand(*session_, *row);
    QCOMPARE(user_->messages.size(), std::size_t{2});
    QCOMPARE(OnlyLaunch(QStringLiteral("ringform"), jobs_).tool, QStringLiteral("ringform"));
    const PointStore& points = session_->points;
    const RawPolygonStore& polygons = session_->polygons;
    QCOMPARE(polygons.RawPolygonCount, std::int16_t{2});
    QCOMPARE(QString::fromStdString(polygons.RawPolygonTag.get(1)), QStringLiteral("S"));
    const std::string triangle = points.PointIds(1) + " " + points.PointIds(2) + " " + points.PointIds(3);
    QCOMPARE(polygons.RawPolygonRing.get(1), triangle);
    QCOMPARE(polygons.RawPolygonRing.get(2), triangle + " " + points.PointIds(4));
    // A triangle's centroid is the mean of its corners; .CRP carries it to three decimals.
    const double meanX = (points.PointX(1) + points.PointX(2) + points.PointX(3)) / 3.0;
    const double meanY = (points.PointY(1) + points.PointY(2) + points.PointY(3)) / 3.0;
    QVERIFY2(std::abs(polygons.RawPolygonX.get(1) - meanX) < 0.01, qPrintable(QString::number(polygons.RawPolygonX.get(1), 'f', 3)));
    QVERIFY2(std::abs(polygons.RawPolygonY.get(1) - meanY) < 0.01, qPrintable(QString::number(polygons.RawPolygonY.get(1), 'f', 3)));
    // The quadrilateral's centroid lies among its corners.
    double minY = points.PointY(1), maxY = points.PointY(1);
    for (int i = 2; i <= 4; ++i) {
      minY = std::min(minY, points.PointY(i));
      maxY = std::max(maxY, points.PointY(i));
    }
    QVERIFY(polygons.RawPolygonY.get(2) > minY && polygons.RawPolygonY.get(2) < maxY);
  }

  void linkDescriptionsReadsTheNewParcels() {
    const CommandRow* row = Row("Link Parcels with Descriptions (LLD)", CommandKind::LinkDescriptions);
    QVERIFY(row);
    const auto loaded = session_->parcels.ParcelCount;
    QVERIFY(loaded > 1);

    user_->answers.push_back(Answer::No);
    RunCommand(*session_, *row);
    QCOMPARE(QString::fromStdString(user_->messages.back().text),
             QStringLiteral("You already have run LLD, Are you sure you want to continue? "));
    QVERIFY(ReadLog(jobs_).isEmpty());
    QCOMPARE(session_->parcels.ParcelCount, loaded);

    user_->answers.push_back(Answer::Yes);
    RunCommand(*session_, *row);
    QCOMPARE(OnlyLaunch(QStringLiteral("desclink"), jobs_).tool, QStringLiteral("desclink"));
    const PointStore& points = session_->points;
    const ParcelStore& parcels = session_->parcels;
    QCOMPARE(parcels.ParcelCount, std::int16_t{1});
    QCOMPARE(QString::fromStdString(parcels.ParcelLine.get(1)), QStringLiteral("Sec_001 A T_W 1"));
    QCOMPARE(parcels.ParcelRing.get(1), " " + points.PointIds(1) + " " + points.PointIds(2) + " " + points.PointIds(3) +
                                            " " + points.PointIds(4) + " " + points.PointIds(1));
    double north = 0.0;
    for (int i = 1; i <= 4; ++i) north += points.PointY(i) / 4.0;
    QVERIFY(std::abs(parcels.ParcelY.get(1) - north) < 0.001);
  }

  void cogopadHasItsHelpFileOnlyDuringTheRun() {
    const CommandRow* row = Row("&Coordinate Geometry (COGOPAD)", CommandKind::Cogopad);
    QVERIFY(row);
    RunCommand(*session_, *row);
    QCOMPARE(OnlyLaunch(QStringLiteral("cogopad"), jobs_).sideFiles, QStringLiteral("cogopad.hlp"));
    QVERIFY(!QFile::exists(JobFile("cogopad.hlp")));
    QVERIFY(QFile::exists(QDir(tools_).filePath(QStringLiteral("cogopad.hlp"))));
  }

  void cogopadInTheToolFolderKeepsTheMaster() {
    const CommandRow* row = Row("&Coordinate Geometry (COGOPAD)", CommandKind::Cogopad);
    QVERIFY(row);
    CopySample(tools_);
    Open(tools_);
    RunCommand(*session_, *row);
    QCOMPARE(OnlyLaunch(QStringLiteral("cogopad"), tools_).sideFiles, QStringLiteral("cogopad.hlp conus.las conus.los"));
    QCOMPARE(Contents(QDir(tools_).filePath(QStringLiteral("cogopad.hlp"))), QByteArray("master cogopad.hlp\r\n"));
  }

  void shift27HasBothGridFilesOnlyDuringTheRun() {
    const CommandRow* row = Row("Datum Transformation NAD27<>NAD83 (SHIFT27)", CommandKind::Shift27);
    QVERIFY(row);
    RunCommand(*session_, *row);
    QCOMPARE(OnlyLaunch(QStringLiteral("shift27"), jobs_).sideFiles, QStringLiteral("conus.las conus.los"));
    QVERIFY(!QFile::exists(JobFile("conus.las")));
    QVERIFY(!QFile::exists(JobFile("conus.los")));
  }

  void recordEditorLocksItsEntryWhileItRuns() {
    const CommandRow* row = Row("Input / Edit &Record data (RECPAD)", CommandKind::RecordEditor);
    QVERIFY(row);
    QAction* own = Entry(row->name);
    QVERIFY(own);
    QList<QAction*> others;
    for (const auto& other : CommandTable()) {
      if (other.kind == CommandKind::SubdivisionEditor) others.append(Entry(other.name));
    }
    QCOMPARE(others.size(), 2);

    // The watch lets events through at least once while the tool runs.
    bool seen = false, ownDuring = true, othersDuring = false;
    QTimer::singleShot(0, window_.get(), [&] {
      seen = true;
      ownDuring = own->isEnabled();
      othersDuring = others[0]->isEnabled() && others[1]->isEnabled();
    });
    RunCommand(*session_, *row);

    QVERIFY(seen);
    QVERIFY(!ownDuring);
    QVERIFY(othersDuring);
    QVERIFY(own->isEnabled());
    QCOMPARE(OnlyLaunch(QStringLiteral("recpad"), jobs_).tool, QStringLiteral("recpad"));
  }

  void subdivisionEditorLocksBothOfItsEntries() {
    const CommandRow* row = Row("Input / Edit &Subdivision data (SPLITPLAN)", CommandKind::SubdivisionEditor);
    QVERIFY(row);
    QList<QAction*> both;
    for (const auto& entry : CommandTable()) {
      if (entry.kind == CommandKind::SubdivisionEditor) both.append(Entry(entry.name));
    }
    QCOMPARE(both.size(), 2);
    bool seen = false, anyEnabled = true;
    QTimer::singleShot(0, window_.get(), [&] {
      seen = true;
      anyEnabled = both[0]->isEnabled() || both[1]->isEnabled();
    });
    RunCommand(*session_, *row);
    QVERIFY(seen);
    QVERIFY(!anyEnabled);
    QVERIFY(both[0]->isEnabled() && both[1]->isEnabled());
    QCOMPARE(OnlyLaunch(QStringLiteral("splitplan"), jobs_).tool, QStringLiteral("splitplan"));
  }

  void recordRebuildFeedsSixEmptyLines() {
    QVERIFY(WriteText(JobFile("T12NR04E.002"), "scratch\r\n"));
    RunRecpadScript(*session_);
    QCOMPARE(OnlyLaunch(QStringLiteral("recpad"), jobs_).input, QStringLiteral("\\r\\n").repeated(6));
    QVERIFY(!QFile::exists(JobFile("temp.bat")));
    QVERIFY(!QFile::exists(JobFile("t1$.001")));
    QVERIFY(!QFile::exists(JobFile("T12NR04E.002")));
    QVERIFY(user_->messages.empty());
  }

  void recordRebuildWithBlanksInTheJobFolder() {
    cleanup();
    MakeFolders(QStringLiteral("job folder"));
    window_ = std::make_unique<QMainWindow>();
    processes_ = std::make_unique<QtProcessPort>(*window_);
    Open(jobs_);
    RunRecpadScript(*session_);
    QCOMPARE(OnlyLaunch(QStringLiteral("recpad"), jobs_).input, QStringLiteral("\\r\\n").repeated(6));
    QVERIFY(!QFile::exists(JobFile("temp.bat")));
  }

  void recordRebuildWithoutAJobRunsNothing() {
    RecordingUserPort user;
    Session idle(user, canvas_, *processes_);
    idle.ToolFolder = tools_.toStdString();
    idle.CurrentFolder = jobs_.toStdString();
    RunRecpadScript(idle);
    QCOMPARE(user.MessageTexts(), std::vector<std::string>{"You must first Open or Create a job."});
    QVERIFY(ReadLog(jobs_).isEmpty());
    QVERIFY(!QFile::exists(JobFile("temp.bat")));
  }

  void plainRowIsSpawned() {
    const CommandRow* row = Row("&Generate Approx. Coords (SEEDXY)", CommandKind::Plain);
    QVERIFY(row);
    RunCommand(*session_, *row);
    QTRY_VERIFY_WITH_TIMEOUT(!ReadLog(jobs_).isEmpty(), 5000);
    QCOMPARE(OnlyLaunch(QStringLiteral("seedxy"), jobs_).tool, QStringLiteral("seedxy"));
  }

  void missingToolDoesNothingVisible() {
    const CommandRow* row = Row("Import LLD file (DESCGET)", CommandKind::RunOnly);
    QVERIFY(row);
    const auto points = session_->points.PointCount();
    RunCommand(*session_, *row);
    QVERIFY(user_->messages.empty());
    QVERIFY(ReadLog(jobs_).isEmpty());
    QCOMPARE(session_->points.PointCount(), points);
  }

  void blockingRunsGiveTheExitCode() {
    const std::string tool = ToolCommandLine(*session_, "exitcode");
    QCOMPARE(processes_->RunCode(tool, session_->JobFolder, ShowMode::Hidden), 3);
    QCOMPARE(ReadLog(jobs_).size(), 1);

    // The scripted form: the batch file's program with its answer file as standard input.
    QVERIFY(WriteText(JobFile("answers.001"), "Y\r\n2\r\n"));
    QVERIFY(WriteText(JobFile("go.bat"), QByteArray::fromStdString(ScriptCommand(*session_, "exitcode.exe", "answers.001")) +
                                             "\r\nexit\r\n"));
    QCOMPARE(processes_->RunCode("go.bat", session_->JobFolder, ShowMode::Hidden), 3);
    processes_->Run("go.bat", session_->JobFolder);
    const QList<Launch> launches = ReadLog(jobs_);
    QCOMPARE(launches.size(), 3);
    QCOMPARE(launches[1].input, QStringLiteral("Y\\r\\n2\\r\\n"));
    QCOMPARE(launches[2].input, QStringLiteral("Y\\r\\n2\\r\\n"));
    QCOMPARE(Canonical(launches[1].folder), Canonical(jobs_));

    // A batch file that is not there, or that asks for something else, runs nothing.
    QVERIFY(processes_->RunCode("none.bat", session_->JobFolder, ShowMode::Hidden) != 3);
    QVERIFY(WriteText(JobFile("other.bat"), "echo hello\r\nexit\r\n"));
    QVERIFY(processes_->RunCode("other.bat", session_->JobFolder, ShowMode::Hidden) != 3);
    QCOMPARE(ReadLog(jobs_).size(), 3);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::LaunchTest)
#include "launch_test.moc"
