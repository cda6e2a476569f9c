// The archive forms on the offscreen platform: their menu entries in the main window, the APD
// wizard from Browse to OK, the ZIP wizard's current-job page, and lha started for real through
// the Qt process port (a stand-in script that writes down the arguments it was given).

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "app/qt_process_port.h"
#include "app/view_window.h"
#include "archives/lzh_commands.h"
#include "archives/ui/archive_forms.h"
#include "model/recording_ports.h"
#include "model/session.h"

namespace tessel {
namespace {

bool WriteText(const QString& path, const QByteArray& text) {
  QFile file(path);
  return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

QByteArray Contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

class ArchiveFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void menuEntriesStandInTheMainWindow() {
    QTemporaryDir tools;
    ViewWindow window(tools.path());
    window.Load();
    for (const char* name : {"mnuZipExtract", "mnuZipCreate", "mnuLzhExtract", "mnuLzhSave", "mnuLzhSaveAs",
                             "mnuFileImportAPD", "mnuReportsAPD"}) {
      QVERIFY2(window.findChild<QAction*>(QString::fromLatin1(name)), name);
    }
    QCOMPARE(window.findChild<QMenu*>(QStringLiteral("mnuZip"))->title(), QStringLiteral("&Zip Maintenance"));
    QCOMPARE(window.findChild<QMenu*>(QStringLiteral("mnuLzh"))->title(), QStringLiteral("&Lzh Archive Maintenance"));
    QCOMPARE(window.findChild<QAction*>(QStringLiteral("mnuFileImportAPD"))->text(),
             QStringLiteral("&Amended Protraction Diagram"));
    QCOMPARE(window.findChild<QAction*>(QStringLiteral("mnuReportsAPD"))->text(), QStringLiteral("Import APD"));
    // No job: the two saving entries are off, extracting is not.
    QVERIFY(!window.findChild<QAction*>(QStringLiteral("mnuLzhSave"))->isEnabled());
    QVERIFY(!window.findChild<QAction*>(QStringLiteral("mnuLzhSaveAs"))->isEnabled());
    QVERIFY(window.findChild<QAction*>(QStringLiteral("mnuLzhExtract"))->isEnabled());
  }

  void apdWizardFromBrowseToOk() {
    QTemporaryDir job;
    const QDir dir(job.path());
    QVERIFY(WriteText(dir.filePath("P1.def"), "P1\r\n"));
    QVERIFY(WriteText(dir.filePath("P1.raw"), "HEAD\r\n999999\r\n200300   030700           2   00453015   999999RPB\r\n"));
    QVERIFY(WriteText(dir.filePath("P1.con"), "c\r\n"));
    QVERIFY(WriteText(dir.filePath("P1.lot"), "l\r\n"));
    RecordingUserPort user;
    NullCanvas canvas;
    RecordingProcessPort processes;
    Session session(user, canvas, processes);
    session.ToolFolder = job.path().toStdString();
    ApdWizardForm form(session, nullptr);
    form.show();
    auto* finish = form.findChild<QPushButton*>(QStringLiteral("cmdFinish"));
    auto* ok = form.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    QVERIFY(!finish->isEnabled());
    QCOMPARE(form.windowTitle(), QStringLiteral("Import APD"));

    const std::string def = dir.filePath("P1.def").toStdString();
    user.files.push_back(FileChoice{def, "P1.def"});
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdBrowse")), Qt::LeftButton);
    QCOMPARE(form.findChild<QLineEdit*>(QStringLiteral("txtProject"))->text(), QStringLiteral("P1"));
    QCOMPARE(form.findChild<QPlainTextEdit*>(QStringLiteral("txtFiles"))->toPlainText(),
             QStringLiteral("P1.raw\nP1.con\nSurvey Identifiers (P1.sid) not found\nP1.lot"));
    QVERIFY(!finish->isEnabled());

    QVERIFY(WriteText(dir.filePath("P1.sid"), "s\r\n"));
    user.files.push_back(FileChoice{def, "P1.def"});
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdBrowse")), Qt::LeftButton);
    QVERIFY(finish->isEnabled());
    QTest::mouseClick(finish, Qt::LeftButton);
    QCOMPARE(form.findChild<QLabel*>(QStringLiteral("lblProgress"))->text(),
             QStringLiteral("...Analyzing APD raw file\n...Building .add file\n...Importing control"));
    QVERIFY(finish->isHidden());
    QVERIFY(form.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->isHidden());
    QVERIFY(!ok->isHidden());
    QCOMPARE(QString::fromStdString(user.messages.back().text),
             QStringLiteral("APD Import complete.  You may now proceed to boundary transfer."));
    QVERIFY(QFile::exists(dir.filePath("P1.apd")));
    QVERIFY(QFile::exists(dir.filePath("P1.add")));
    QVERIFY(QFile::exists(dir.filePath("temp.bat")));
  }

  void zipCurrentJobPageStartsAtTheJobAndZipsIt() {
    QTemporaryDir job;
    const QDir dir(job.path());
    QVERIFY(WriteText(dir.filePath("J1.def"), "J1\r\n"));
    QVERIFY(WriteText(dir.filePath("J1.raw"), "R\r\n"));
    RecordingUserPort user;
    NullCanvas canvas;
    RecordingProcessPort processes;
    Session session(user, canvas, processes);
    session.JobFolder = job.path().toStdString() + "/";
    session.JobBase = session.JobFolder + "J1";
    session.JobName = "J1";
    session.CurrentFolder = session.JobFolder;
    ZipWizard2Form page(session, nullptr);
    auto* field = page.findChild<QLineEdit*>(QStringLiteral("txtZipFile"));
    QCOMPARE(field->text(), dir.filePath("J1.zip"));
    QTest::mouseClick(page.findChild<QPushButton*>(QStringLiteral("cmdFinish")), Qt::LeftButton);
    QCOMPARE(page.result(), int(QDialog::Accepted));
    QVERIFY(QFile::exists(dir.filePath("J1.zip")));
  }

  void lhaStartsWithItsArgumentsAsBuiltAndNoShell() {
    QTemporaryDir tools;
    QTemporaryDir job;
    // The stand-in archiver, in capitals: writes each argument on its own line into a file named
    // for its command letter, in its current folder.
    const QString lha = QDir(tools.path()).filePath("LHA");
    QVERIFY(WriteText(lha, "#!/bin/sh\nfor a in \"$@\"; do printf '%s\\n' \"$a\"; done > \"args-$1.log\"\n"));
    QVERIFY(QFile::setPermissions(lha, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QVERIFY(WriteText(job.filePath("J1.def"), "J1\r\n"));
    QMainWindow window;
    RecordingUserPort user;
    NullCanvas canvas;
    QtProcessPort processes(window);
    Session session(user, canvas, processes);
    session.ToolFolder = tools.path().toStdString();
    session.JobFolder = job.path().toStdString() + "/";
    session.JobBase = session.JobFolder + "J1";
    session.JobName = "J1";
    session.CurrentFolder = session.JobFolder;

    LzhSave(session);
    const QString base = QString::fromStdString(session.JobBase);
    // "J1.*" reaches the archiver as it stands: no shell expanded it.
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromLocal8Bit(Contents(job.filePath("args-u.log"))),
                              QStringLiteral("u\n%1.lzh\n%1.*\n").arg(base), 10000);

    user.inputs.push_back(job.filePath("new").toStdString());
    QVERIFY(LzhSaveAs(session));
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromLocal8Bit(Contents(job.filePath("args-a.log"))),
                              QStringLiteral("a\n%1.lzh\n%2.*\n").arg(job.filePath("new"), base), 10000);
    QTRY_COMPARE_WITH_TIMEOUT(QString::fromLocal8Bit(Contents(job.filePath("args-d.log"))),
                              QStringLiteral("d\n%1.lzh\n*.lzh\n").arg(job.filePath("new")), 10000);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ArchiveFormsTest)
#include "archive_forms_test.moc"
