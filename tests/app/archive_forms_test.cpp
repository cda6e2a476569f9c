// The archive forms on the offscreen platform: their menu entries in the main window, the APD
// wizard from Browse to OK, the ZIP wizard's current-job page, and lha started for real through
// the Qt process port: stand-in scripts that write down their arguments or fail, and the
// system's own lha on a copy of the sample job.

#include <optional>

#include "archives/lzh_commands.h"
#include "archives/ui/archive_forms.h"
#include "form_test_support.h"

namespace tessel {
namespace {

// The launches of the Tool Log that have ended.
QList<ToolLogEntry> Ended(const Session& session) {
  QList<ToolLogEntry> ended;
  for (const ToolLogEntry& entry : session.toolLog.entries) {
    if (entry.outcome == LaunchOutcome::Ended || entry.outcome == LaunchOutcome::Crashed) ended << entry;
  }
  return ended;
}

// A session on the job `name` in `folder`, its tools in `tools`, whose launches are real.
std::unique_ptr<LaunchBench> JobWithRealLaunches(const QString& tools, const QString& folder, const std::string& name) {
  auto run = std::make_unique<LaunchBench>(tools);
  SetJob(run->session, folder.toStdString() + "/", name);
  return run;
}

// The stand-in archiver `name` in `tools`, a shell script of `script`.
bool InstallArchiver(const QString& tools, const char* name, const QByteArray& script) {
  const QString lha = QDir(tools).filePath(QString::fromLatin1(name));
  return WriteText(lha, "#!/bin/sh\n" + script) &&
         QFile::setPermissions(lha, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

}  // namespace

class ArchiveFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void menuEntriesStandInTheMainWindow() {
    QTemporaryDir tools;
    ViewWindow window(tools.path());
    window.Load();
    const auto entry = [&window](const char* name) {
      return Found(window.findChild<QAction*>(QString::fromLatin1(name)), name);
    };
    for (const char* name : {"mnuZipExtract", "mnuZipCreate", "mnuLzhExtract", "mnuLzhSave", "mnuLzhSaveAs"}) entry(name);
    QCOMPARE(window.findChild<QMenu*>(QStringLiteral("mnuZip"))->title(), QStringLiteral("&Zip Maintenance"));
    QCOMPARE(window.findChild<QMenu*>(QStringLiteral("mnuLzh"))->title(), QStringLiteral("&Lzh Archive Maintenance"));
    QCOMPARE(entry("mnuFileImportAPD")->text(), QStringLiteral("&Amended Protraction Diagram"));
    QCOMPARE(entry("mnuReportsAPD")->text(), QStringLiteral("Import APD"));
    // No job: the two saving entries are off, extracting is not.
    QVERIFY(!entry("mnuLzhSave")->isEnabled() && !entry("mnuLzhSaveAs")->isEnabled() && entry("mnuLzhExtract")->isEnabled());
  }

  void apdWizardFromBrowseToOk() {
    QTemporaryDir job;
    const QDir dir(job.path());
    QVERIFY(WriteText(dir.filePath("P1.def"), "P1\r\n"));
    QVERIFY(WriteText(dir.filePath("P1.raw"), "HEAD\r\n999999\r\n200300   030700           2   00453015   999999RPB\r\n"));
    QVERIFY(WriteText(dir.filePath("P1.con"), "c\r\n") && WriteText(dir.filePath("P1.lot"), "l\r\n"));
    Bench b;
    b.session.ToolFolder = job.path().toStdString();
    ApdWizardForm form(b.session, nullptr);
    form.show();
    auto* finish = form.findChild<QPushButton*>(QStringLiteral("cmdFinish"));
    QVERIFY(!finish->isEnabled());
    QCOMPARE(form.windowTitle(), QStringLiteral("Import APD"));

    const FileChoice def{dir.filePath("P1.def").toStdString(), "P1.def"};
    b.user.files.push_back(def);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdBrowse")), Qt::LeftButton);
    QCOMPARE(form.findChild<QLineEdit*>(QStringLiteral("txtProject"))->text(), QStringLiteral("P1"));
    QCOMPARE(form.findChild<QPlainTextEdit*>(QStringLiteral("txtFiles"))->toPlainText(),
             QStringLiteral("P1.raw\nP1.con\nSurvey Identifiers (P1.sid) not found\nP1.lot"));
    QVERIFY(!finish->isEnabled());

    QVERIFY(WriteText(dir.filePath("P1.sid"), "s\r\n"));
    b.user.files.push_back(def);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdBrowse")), Qt::LeftButton);
    QVERIFY(finish->isEnabled());
    QTest::mouseClick(finish, Qt::LeftButton);
    QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblProgress"))->text(),
             QStringLiteral("...Analyzing APD raw file\n...Building .add file\n...Importing control"));
    QVERIFY(finish->isHidden() && form.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->isHidden());
    QVERIFY(!form.findChild<QPushButton*>(QStringLiteral("cmdOK"))->isHidden());
    QCOMPARE(QString::fromStdString(b.user.messages.back().text),
             QStringLiteral("APD Import complete.  You may now proceed to boundary transfer."));
    for (const char* made : {"P1.apd", "P1.add", "temp.bat"}) QVERIFY2(QFile::exists(dir.filePath(made)), made);
  }

  // The page starts at the job's archive and zips it. A large job is zipped beside the page,
  // which keeps running: its timers fire, and the progress strip at its foot tells how far the
  // work has come. A cancel leaves the archive byte for byte as it was and nothing beside it, and
  // says so in the status bar.
  void zipCurrentJobPageStartsAtTheJobAndZipsIt() {
    QTemporaryDir job;
    const QDir dir(job.path());
    QVERIFY(WriteText(dir.filePath("J1.def"), "J1\r\n") && WriteText(dir.filePath("J1.raw"), "R\r\n"));
    Bench b;
    SetJob(b.session, job.path().toStdString() + "/", "J1");
    ZipWizard2Form page(b.session, nullptr);
    const QString zip = dir.filePath("J1.zip");
    QCOMPARE(page.findChild<QLineEdit*>(QStringLiteral("txtZipFile"))->text(), zip);
    QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("cmdFinish")), Qt::LeftButton);
    QCOMPARE(page.result(), int(QDialog::Accepted));
    QVERIFY(QFile::exists(zip));

    QByteArray points;
    for (quint32 k = 1; points.size() < (12 << 20); k = k * 1664525u + 1013904223u) {
      points += QByteArray::number(k % 1000003u) + ' ' + QByteArray::number(k >> 12) + "\r\n";
    }
    QVERIFY(WriteText(dir.filePath("J1.pts"), points));
    for (const bool cancel : {false, true}) {
      const QByteArray before = Bytes(zip);
      const QStringList beside = dir.entryList(QDir::Files);
      QString told;
      const auto look = [&] {
        QProgressBar* bar = LongWorkBar(&page);
        if (bar == nullptr || !told.isEmpty() || !bar->format().contains(zip)) return;
        told = bar->format();
        if (cancel) CancelLongWork(&page);
      };
      b.user.notes.clear();
      QVERIFY(Ticking(5, look, [&page] { page.findChild<QPushButton*>(QStringLiteral("cmdFinish"))->click(); }) > 1);
      QVERIFY2(!told.isEmpty(), "no progress shown");
      QVERIFY(!LongWorkBar(&page));
      QCOMPARE(dir.entryList(QDir::Files), beside);
      QCOMPARE(Bytes(zip) == before, cancel);
      // J1.* takes in the archive there before.
      const std::string said = cancel ? "ZIP archive cancelled: " + zip.toStdString() + " was left as it was."
                                      : "4 files zipped into " + zip.toStdString();
      QCOMPARE(b.user.notes, std::vector<std::string>{said});
    }
  }

  void lhaStartsWithItsArgumentsAsBuiltAndNoShell() {
    QTemporaryDir tools, job;
    // The stand-in archiver, in capitals: writes each argument on its own line into a file named
    // for its command letter, in its current folder.
    QVERIFY(InstallArchiver(tools.path(), "LHA", "for a in \"$@\"; do printf '%s\\n' \"$a\"; done > \"args-$1.log\"\n"));
    QVERIFY(WriteText(job.filePath("J1.def"), "J1\r\n") && WriteText(job.filePath("J1.raw"), "R\r\n"));
    const auto run = JobWithRealLaunches(tools.path(), job.path(), "J1");
    Session& session = run->session;
    const auto args = [&job](const char* log) { return QString::fromLocal8Bit(Bytes(job.filePath(log))); };
    const QString saved = job.filePath("new");

    LzhSave(session);
    // "J1.*" reaches the archiver as the job's files, one argument each: no shell is needed.
    QTRY_COMPARE_WITH_TIMEOUT(args("args-u.log"),
                              QStringLiteral("u\n%1.lzh\nJ1.def\nJ1.raw\n").arg(QString::fromStdString(session.JobBase)), 10000);
    run->user.inputs.push_back(saved.toStdString());
    QVERIFY(LzhSaveAs(session));
    QTRY_COMPARE_WITH_TIMEOUT(args("args-a.log"), QStringLiteral("a\n%1.lzh\nJ1.def\nJ1.raw\n").arg(saved), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(args("args-d.log"), QStringLiteral("d\n%1.lzh\n").arg(saved), 10000);
    // Each archiver ended well: started and ended in the Tool Log, and no box but the notice.
    QTRY_COMPARE_WITH_TIMEOUT(Ended(session).size(), 3, 10000);
    for (const ToolLogEntry& entry : Ended(session)) QCOMPARE(entry.exitCode, std::optional<int>(0));
    QCOMPARE(run->user.messages.size(), size_t(1));
  }

  void aFailedArchiverIsToldInTheToolLogAndInABox() {
    QTemporaryDir tools, job;
    QVERIFY(InstallArchiver(tools.path(), "lha", "exit 2\n") && WriteText(job.filePath("J1.def"), "J1\r\n"));
    const auto run = JobWithRealLaunches(tools.path(), job.path(), "J1");
    RecordingUserPort& user = run->user;
    Session& session = run->session;

    // An archiver that ends with an error is told when it ends.
    LzhSave(session);
    QVERIFY(user.messages.empty());
    QTRY_COMPARE_WITH_TIMEOUT(user.messages.size(), size_t(1), 10000);
    QCOMPARE(user.messages[0].icon, Icon::Exclamation);
    const QString told = QString::fromStdString(user.messages[0].text);
    QVERIFY2(told.startsWith(QStringLiteral("The archiver ended with exit code 2:\n")), qPrintable(told));
    QVERIFY2(told.contains(QString::fromStdString(session.JobBase + ".lzh")), qPrintable(told));
    QCOMPARE(Ended(session).size(), 1);
    QCOMPARE(Ended(session)[0].exitCode, std::optional<int>(2));

    // One that cannot start is told at once, and Save As goes no further.
    QVERIFY(QFile::setPermissions(QDir(tools.path()).filePath("lha"), QFile::ReadOwner | QFile::WriteOwner));
    user.messages.clear();
    user.inputs.push_back(job.filePath("new").toStdString());
    QVERIFY(!LzhSaveAs(session));
    QCOMPARE(user.messages.size(), size_t(1));
    const QString notStarted = QString::fromStdString(user.messages[0].text);
    QVERIFY2(notStarted.startsWith(QStringLiteral("The archiver could not be started")), qPrintable(notStarted));
    QVERIFY2(notStarted.contains(job.filePath("new.lzh")), qPrintable(notStarted));
    QCOMPARE(session.toolLog.entries.back().outcome, LaunchOutcome::CouldNotStart);
  }

  // The scenario of a job saved for real: Save Archive of a copy of the sample job in a folder
  // whose path has blanks, with the system's lha; the archive, extracted into another folder,
  // holds every file of the job byte for byte.
  void saveArchiveHoldsEveryFileOfAJobInAFolderWithBlanks() {
    const QString archiver = QStandardPaths::findExecutable(QStringLiteral("lha"));
    if (archiver.isEmpty()) QSKIP("no lha on the search path (Debian: apt-get install jlha-utils)");
    QTemporaryDir root;
    const QString folder = root.filePath(QStringLiteral("x y/My Jobs/T12NR04E"));
    QVERIFY(QDir().mkpath(folder) && CopySampleJob(folder));
    const QStringList job = QDir(folder).entryList(QDir::Files, QDir::Name);
    QVERIFY(job.size() >= 10);
    // No lha in the tool folder: the one on the search path.
    const auto run = JobWithRealLaunches(root.path(), folder, "T12NR04E");
    Session& session = run->session;

    LzhSave(session);
    // The archiver's end is reported; a slow machine may take its time.
    const bool ended = QTest::qWaitFor([&] { return !Ended(session).isEmpty(); }, 120000);
    const QString archive = QDir(folder).filePath(QStringLiteral("T12NR04E.lzh"));
    QVERIFY(QFile::exists(archive));
    const QString out = root.filePath(QStringLiteral("other place"));
    QVERIFY(QDir().mkpath(out));
    QProcess extract;
    extract.setWorkingDirectory(out);
    extract.start(archiver, {QStringLiteral("x"), archive});
    QVERIFY(extract.waitForFinished(120000));
    QCOMPARE(QDir(out).entryList(QDir::Files, QDir::Name), job);
    for (const QString& name : job) {
      QVERIFY2(Bytes(QDir(out).filePath(name)) == Bytes(QDir(folder).filePath(name)), qPrintable(name));
    }
    QVERIFY(ended);
    QCOMPARE(Ended(session).size(), 1);
    QCOMPARE(Ended(session)[0].exitCode, std::optional<int>(0));
    QVERIFY(run->user.messages.empty());
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ArchiveFormsTest)
#include "archive_forms_test.moc"
