// The post-adjustment calculation forms on the offscreen platform: frmADD's lists and
// description, a new intersection entered through frmADDWiz1 and frmADDCalcs with its points
// picked, the checks' focus, the omission editor, and a picked point going to the first open
// dialog in order across the subdivision and calculation forms.

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QFontDatabase>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "calculations/calculation_files.h"
#include "calculations/ui/calculation_forms.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "model/text_file.h"
#include "paint/qt_text.h"

namespace tessel {

class CalculationFormsTest : public QObject {
  Q_OBJECT

 private:
  QByteArray Read(const QString& name) {
    QFile file(dir_->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
  }
  void Write(const QString& name, const std::vector<std::string>& lines) {
    QFile file(dir_->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(JoinCrLf(lines)));
  }

  std::unique_ptr<QTemporaryDir> dir_;
  RecordingUserPort user_;
  NullCanvas canvas_;
  RecordingProcessPort processes_;
  std::unique_ptr<Session> session_;
  const std::string kTraverse = " 1 100200 100100      1  45.30150  1    12.500      .000";
  const std::string kConnect = " 3 100100 100200      0    .00000  0      .000      .000";

 private slots:
  void init() {
    dir_ = std::make_unique<QTemporaryDir>();
    user_ = RecordingUserPort();
    session_ = std::make_unique<Session>(user_, canvas_, processes_);
    const std::string folder = ToBytes(QDir::toNativeSeparators(dir_->path())) + "/";
    session_->JobFolder = folder;
    session_->JobBase = folder + "T1";
    session_->JobName = "T1";
    session_->CurrentFolder = folder;
    session_->ToolFolder = ToBytes(dir_->path());
    Write(QStringLiteral("T1.add"), {kTraverse, kConnect});
    Write(QStringLiteral("T1.not"), {"     1", "100500", "     0"});
  }

  void listsDescriptionAndNewIntersectionByPicking() {
    QVERIFY(LoadCalculationLists(*session_));
    AddForm form(*session_, nullptr);
    form.Reload();
    form.show();
    QCOMPARE(form.definitions->count(), 2);
    QCOMPARE(form.definitions->font(), QFontDatabase::systemFont(QFontDatabase::FixedFont));
    QCOMPARE(form.notPoints->count(), 1);
    form.definitions->setCurrentRow(1);
    QCOMPARE(form.description->toPlainText(), QStringLiteral("Connecting line from 100100 to 100200"));
    form.notPoints->setCurrentRow(0);
    QCOMPARE(form.notCaption->text(), QStringLiteral("Point 100500 will not be calculated."));

    // New: frmADDWiz1 with "Intersection" goes on to frmADDCalcs.
    form.runDialog = [](QDialog& dialog) {
      dialog.findChild<QRadioButton*>(QStringLiteral("optType2"))->setChecked(true);
      return int(QDialog::Accepted);
    };
    form.New();
    AddCalcsForm* calcs = form.editor();
    QVERIFY(calcs->isVisible());
    QCOMPARE(calcs->heading->text(), QStringLiteral("Intersection Calculation for: "));
    QCOMPARE(calcs->kinds[1]->count(), 5);
    calcs->newPoint->setText(QStringLiteral("120140"));
    calcs->kinds[0]->setCurrentIndex(0);  // Point Identifiers
    calcs->kinds[1]->setCurrentIndex(4);  // a range
    QCOMPARE(calcs->labels[1][0]->text(), QStringLiteral("Range-start"));
    QCOMPARE(calcs->fields[1][2]->text(), QStringLiteral("999.999"));
    for (const char* id : {"120100", "120200", "100100", "100700"}) {
      QCOMPARE(session_->pointPicks.Offer(id), std::optional<PickDialog>(PickDialog::AddCalcs));
    }
    QCOMPARE(calcs->fields[0][0]->text(), QStringLiteral("120100"));
    QCOMPARE(calcs->fields[0][1]->text(), QStringLiteral("120200"));
    QCOMPARE(calcs->fields[1][0]->text(), QStringLiteral("100100"));
    QCOMPARE(calcs->fields[1][1]->text(), QStringLiteral("100700"));
    // Without a line type the check names it and keeps the focus there.
    QVERIFY(!calcs->Save());
    QCOMPARE(user_.messages.back().text, std::string(kMsgNeedLineType));
    calcs->lineTypes[0]->setCurrentIndex(0);
    calcs->lineTypes[1]->setCurrentIndex(1);
    QVERIFY(calcs->Save());
    // frmADD follows the lists by itself.
    const std::string added1 = " 2 120140 120100 120200    .00000  1      .000      .000";
    const std::string added2 = " 2      0 100100 100700 999.99900  2      .000      .000";
    QCOMPARE(Read(QStringLiteral("T1.add")), QByteArray::fromStdString(JoinCrLf({kTraverse, kConnect, added1, added2})));
    QCOMPARE(form.definitions->count(), 4);
    form.definitions->setCurrentRow(3);
    QCOMPARE(form.description->toPlainText(),
             QStringLiteral("Intersection for point 120140\nLine 1 From ID is 120100.  Bearing is defined to ID 120200\n"
                            "Line 2 is the Range of IDs from 100100 through 100700"));
    form.ShowStatus();
    QCOMPARE(form.description->toPlainText(), QStringLiteral("Status: This point has not yet been computed."));
    calcs->close();
    QVERIFY(session_->pointPicks.Empty());
  }

  void pickedPointGoesToTheFirstOpenDialog() {
    QVERIFY(LoadCalculationLists(*session_));
    AddForm form(*session_, nullptr);
    form.Reload();
    form.notEditor()->Start(true, -1);
    form.editor()->StartEdit(0);
    QCOMPARE(form.editor()->heading->text(), QStringLiteral("Traverse/Proportion Calculation for: 100200"));
    // frmADDCalcs, type 1 traverse: "Point From" holds 100100, so it passes nothing further...
    form.editor()->fields[0][0]->clear();
    QCOMPARE(session_->pointPicks.Offer("300300"), std::optional<PickDialog>(PickDialog::AddCalcs));
    QCOMPARE(form.editor()->fields[0][0]->text(), QStringLiteral("300300"));
    form.editor()->close();
    QCOMPARE(session_->pointPicks.Offer("300400"), std::optional<PickDialog>(PickDialog::NotWiz2));
    QCOMPARE(session_->pointPicks.Offer("300500"), std::optional<PickDialog>(PickDialog::NotWiz2));
    QVERIFY(form.notEditor()->Save());
    QCOMPARE(Read(QStringLiteral("T1.not")), QByteArray("     1\r\n100500\r\n     1\r\n300400 300500\r\n"));

    // A substitution dialog of frmIRR comes before both.
    form.editor()->StartEdit(0);
    SectionDialogForm irr(*session_, nullptr);
    SectionForm section;
    section.section = 6;
    irr.Load(section);
    QString taken;
    irr.runDialog = [&](QDialog& dialog) {
      session_->pointPicks.Offer("640640");
      taken = dialog.findChild<QLineEdit*>(QStringLiteral("txtPointId"))->text();
      return int(QDialog::Rejected);
    };
    irr.RunEntry("mnuIRRSubstitution", 23);
    QCOMPARE(taken, QStringLiteral("640640"));
    QCOMPARE(form.editor()->fields[0][0]->text(), QStringLiteral("100100"));
  }

  void menuEntryNeedsAJob() {
    QMainWindow window;
    QMenu* command = window.menuBar()->addMenu(QStringLiteral("Command"));
    command->setObjectName(QStringLiteral("mnuCommand"));
    InstallCalculationsForms(window, *session_);
    auto* entry = window.findChild<QAction*>(QStringLiteral("mnuCommandCadastralADD"));
    QVERIFY(entry);
    session_->JobBase.clear();
    entry->trigger();
    QCOMPARE(user_.messages.back().text, std::string(kMsgNeedProject));
    auto* form = window.findChild<QWidget*>(QStringLiteral("frmADD"));
    QVERIFY(form && !form->isVisible());
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::CalculationFormsTest)
#include "calculation_forms_test.moc"
