// The suite's tools started for real through the Qt process port, every route once: blocking,
// blocking for the exit code (with side files), watched with its menu entries locked, spawned,
// spawned with its end reported, and the scripted form. The stand-in, copied under the tools'
// names into a folder with a blank, notes in standin.log its name, current folder, TEMP.JOB,
// standard input and side files; the job's folder has blanks and double quotes. Built with
// TESSEL_WINE_PREFIX the stand-in is a Windows program run through Wine, and the job's folder
// has no double quotes, which Windows allows in no name.

#include <algorithm>
#include <cstdio>
#include <optional>

#include "job/command_table.h"
#include "tools/launching.h"
#include "tools/tool_runner.h"
#include "form_test_support.h"

namespace tessel {
namespace {

#ifdef TESSEL_WINE_PREFIX
constexpr bool kThroughWine = true;
#else
constexpr bool kThroughWine = false;
#endif

// A folder as the stand-in gives it: under Wine a path of the drive Z: that Wine maps to "/".
QString FolderHere(QString folder) {
  if (kThroughWine && folder.startsWith(QStringLiteral("Z:\\"), Qt::CaseInsensitive)) {
    folder = folder.mid(2).replace(QLatin1Char('\\'), QLatin1Char('/'));
  }
  return folder;
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
    for (const QString& line : QString::fromLocal8Bit(Bytes(JobFile("standin.log"))).split('\n', Qt::SkipEmptyParts)) {
      QStringList f = line.split('\t');
      if (f.size() != 5 || QDir(FolderHere(f[1])).canonicalPath() != QDir(jobs_).canonicalPath()) {
        return {"bad line: " + line};
      }
      f.removeAt(1);
      out << f.join('|');
    }
    return out;
  }

  // Every launch that started went through Wine exactly when the stand-in is a Windows program:
  // its header, not its ".exe", decides.
  bool RunnersAsBuilt() {
    const auto& entries = S().toolLog.entries;
    return !entries.empty() && std::all_of(entries.begin(), entries.end(), [](const ToolLogEntry& e) {
      return LaunchNotStarted(e) || e.runner.empty() != kThroughWine;
    });
  }
  Session& S() { return run_->session; }
  QtProcessPort& P() { return run_->processes; }

  std::unique_ptr<QTemporaryDir> root_;
  QString tools_, jobs_;
  std::unique_ptr<LaunchBench> run_;

 private slots:
  void initTestCase() {
    // The desktop program has no console: a tool reading its inherited input finds it empty.
    QVERIFY(std::freopen(QProcess::nullDevice().toLocal8Bit().constData(), "r", stdin) != nullptr);
#ifdef TESSEL_WINE_PREFIX
    // The build folder's own prefix, made once before the tests; Wine's notes left out.
    qputenv("WINEPREFIX", TESSEL_WINE_PREFIX);
    qputenv("WINEDEBUG", "-all");
#endif
  }

  void init() {
    root_ = std::make_unique<QTemporaryDir>();
    tools_ = root_->filePath(QStringLiteral("Tessel Suite"));
    jobs_ = root_->filePath(kThroughWine ? QStringLiteral("job one folder") : QStringLiteral("job \"one\" folder"));
    QVERIFY(QDir().mkpath(tools_) && QDir().mkpath(jobs_));
    // One tool in capitals, as some are spelled.
    for (const char* name : {"FITMAIN.EXE", "recpad.exe", "seedxy.exe", "exitcode.exe", "cogopad.exe"}) {
      QVERIFY(InstallStandin(tools_, QString::fromLatin1(name)));
    }
    QVERIFY(WriteText(QDir(tools_).filePath(QStringLiteral("cogopad.hlp")), "help\r\n") && CopySampleJob(jobs_));
    run_ = std::make_unique<LaunchBench>(tools_);
    OpenJob(S(), JobFile("T12NR04E.def").toStdString(), "T12NR04E.def");
    QCOMPARE(S().JobName, std::string("T12NR04E"));
  }

  void cleanup() {
    run_.reset();
    root_.reset();
  }

  void leastSquaresRunsInTheJobFolderAndReloads() {
    const PointStore& points = S().points;
    const double x = points.PointX(points.Find("100100"));
    const auto count = points.PointCount();
    RunCommand(S(), Row("&Least Squares Analysis (FITMAIN)"));
    QCOMPARE(Log(), QStringList{"fitmain|T12NR04E||<none>"});
    QCOMPARE(points.PointCount(), count);
    QCOMPARE(points.PointX(points.Find("100100")), x + 1.0);
    QVERIFY(run_->user.messages.empty() && RunnersAsBuilt());
  }

  void scriptedRunsFeedTheirAnswerFileAndGiveTheExitCode() {
    QVERIFY(WriteText(JobFile("T12NR04E.002"), "scratch\r\n"));
    RunRecpadScript(S());
    QCOMPARE(Log(), QStringList{"recpad|T12NR04E|" + QStringLiteral("\\r\\n").repeated(6) + "|<none>"});
    for (const char* name : {"temp.bat", "t1$.001", "T12NR04E.002"}) QVERIFY2(!QFile::exists(JobFile(name)), name);

    const std::string& folder = S().JobFolder;
    QCOMPARE(P().RunCode(ToolLaunch(S(), "exitcode"), folder, ShowMode::Hidden), 3);
    QVERIFY(WriteText(JobFile("answers.001"), "Y\r\n"));
    const std::string script = ScriptCommand(S(), "exitcode.exe", "answers.001");
    QVERIFY(WriteText(JobFile("go.bat"), QByteArray::fromStdString(script) + "\r\nexit\r\n"));
    QCOMPARE(P().RunCode({"go.bat", {}}, folder, ShowMode::Hidden), 3);
    // A missing tool or batch file, or a batch file that asks for something else, runs nothing.
    QVERIFY(WriteText(JobFile("other.bat"), "echo hello\r\nexit\r\n"));
    for (const std::string& command : {std::string("none.bat"), std::string("other.bat"),
                                       ToolCommandLine(S(), "descget")}) {
      QVERIFY2(P().RunCode({command, {}}, folder, ShowMode::Hidden) == -1, command.c_str());
    }
    QCOMPARE(Log().size(), 3);
    QCOMPARE(Log().back(), QStringLiteral("exitcode|T12NR04E|Y\\r\\n|<none>"));

    RunCommand(S(), Row("&Generate Approx. Coords (SEEDXY)"));  // spawned, not waited for
    QTRY_COMPARE_WITH_TIMEOUT(Log().size(), 4, 10000);
    QCOMPARE(Log().back(), QStringLiteral("seedxy|T12NR04E||<none>"));
    QVERIFY(RunnersAsBuilt());
  }

  void watchedEditorsLockTheirEntriesAndSideFilesStandBesideTheJob() {
    // ToolWatch: the editor's entries are locked while it runs, which the first poll's events
    // see, and free again once it has ended.
    const CommandRow& recpad = Row("Input / Edit &Record data (RECPAD)");
    std::vector<QAction*> entries;
    for (const std::string& name : LockedEntries(recpad)) {
      entries.push_back(new QAction(&run_->window));
      entries.back()->setObjectName(QString::fromStdString(name));
    }
    QVERIFY(!entries.empty());
    std::optional<bool> lockedMeanwhile;
    QTimer::singleShot(0, &run_->window, [&] {
      lockedMeanwhile = std::none_of(entries.begin(), entries.end(), [](QAction* a) { return a->isEnabled(); });
    });
    RunCommand(S(), recpad);
    QCOMPARE(lockedMeanwhile, std::optional<bool>(true));
    QVERIFY(std::all_of(entries.begin(), entries.end(), [](QAction* a) { return a->isEnabled(); }));
    QCOMPARE(Log(), QStringList{"recpad|T12NR04E||<none>"});
    QVERIFY(QFile::exists(JobFile("T12NR04E.sd")));  // rebuilt by the editor

    // ToolRunCode in a normal window, with its side file copied beside the job for the run only.
    RunCommand(S(), Row("&Coordinate Geometry (COGOPAD)"));
    QCOMPARE(Log().back(), QStringLiteral("cogopad|T12NR04E||cogopad.hlp"));
    QVERIFY(!QFile::exists(JobFile("cogopad.hlp")));
    QVERIFY(QFile::exists(QDir(tools_).filePath(QStringLiteral("cogopad.hlp"))));

    // A start whose end is told later, with the tool's exit code.
    std::optional<SpawnEnd> end;
    QVERIFY(P().SpawnReported(ToolLaunch(S(), "exitcode"), S().JobFolder, ShowMode::Hidden,
                                      [&end](const SpawnEnd& e) { end = e; }));
    QTRY_VERIFY_WITH_TIMEOUT(end.has_value(), 10000);
    QVERIFY(end->started && !end->crashed);
    QCOMPARE(end->exitCode, 3);
    QCOMPARE(Log().size(), 3);
    QVERIFY(RunnersAsBuilt());
  }

  void aWindowsToolWithoutItsRunnerIsNotStartedAndSaidOnce() {
    // Tools whose header says Windows, whatever this build's stand-in is.
    for (const char* name : {"twpjoin.exe", "TWPREL.EXE"}) {
      QVERIFY(WriteText(QDir(tools_).filePath(QString::fromLatin1(name)), WindowsHeader()));
    }
    // No Wine on the search path.
    const QByteArray path = qgetenv("PATH");
    QTemporaryDir empty;
    qputenv("PATH", QFile::encodeName(empty.path()));
    RunCommand(S(), Row("Join Township Files (TWPJOIN)"));
    P().Run(ToolLaunch(S(), "twprel"), S().JobFolder);
    // Another runner named in the settings, missing too.
    const QString runner = QDir(tools_).filePath(QStringLiteral("no wine"));
    S().toolRunner = runner.toStdString();
    QCOMPARE(P().RunCode(ToolLaunch(S(), "twprel"), S().JobFolder, ShowMode::Hidden), -1);
    qputenv("PATH", path);

    QVERIFY(!QFile::exists(JobFile("standin.log")));
    const auto& entries = S().toolLog.entries;
    QCOMPARE(entries.size(), std::size_t(3));
    QStringList notices;
    ToolLog fresh;
    for (const ToolLogEntry& e : entries) {
      QCOMPARE(e.outcome, LaunchOutcome::NoRunner);
      notices << QString::fromStdString(fresh.NoticeFor(e));
    }
    const QString said = "TWPREL.EXE is a Windows program; its runner " + runner + " (Configuration Options) was not found";
    const QString log = QStringLiteral(". The Tool Log (View > Tool Log) lists every start of this session.");
    QCOMPARE(notices, QStringList({"twpjoin.exe is a Windows program; install Wine to run it" + log, QString(), said + log}));
    QCOMPARE(QString::fromStdString(run_->user.statusNow[4]), said);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::LaunchTest)
#include "launch_test.moc"
