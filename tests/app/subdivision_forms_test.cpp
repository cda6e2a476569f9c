// The township diagram and the section dialog on the offscreen platform: the colours of the
// buttons by object name, the click into a section, the popup's dialogs, Save Section into the
// job's .irr, the wizards' refusal of empty fields and their answer files.

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#include "app/qt_process_port.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "model/text_file.h"
#include "paint/qt_text.h"
#include "subdivision/irr_file.h"
#include "subdivision/ui/subdivision_forms.h"

namespace tessel {

class SubdivisionFormsTest : public QObject {
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
  Shade ShadeOf(QWidget* form, const QString& name) {
    auto* button = form->findChild<QPushButton*>(name);
    if (!button) qFatal("no button %s", qPrintable(name));
    // The property and the palette must agree.
    const QVariant shade = button->property("shade");
    const QColor colour = button->palette().color(QPalette::Button);
    const Shade s = shade.isValid() ? static_cast<Shade>(shade.toInt()) : Shade::System;
    if (s == Shade::Green && colour != QColor(0, 255, 0)) qFatal("green not painted");
    if (s == Shade::Red && colour != QColor(255, 0, 0)) qFatal("red not painted");
    if (s == Shade::Yellow && colour != QColor(255, 255, 0)) qFatal("yellow not painted");
    return s;
  }

  std::unique_ptr<QTemporaryDir> dir_;
  RecordingUserPort user_;
  NullCanvas canvas_;
  RecordingProcessPort processes_;
  std::unique_ptr<Session> session_;

 private slots:
  void init() {
    dir_ = std::make_unique<QTemporaryDir>();
    user_ = RecordingUserPort();
    processes_.launches.clear();
    session_ = std::make_unique<Session>(user_, canvas_, processes_);
    const std::string folder = ToBytes(QDir::toNativeSeparators(dir_->path())) + "/";
    session_->JobFolder = folder;
    session_->JobBase = folder + "T12NR04E";
    session_->JobName = "T12NR04E";
    session_->CurrentFolder = folder;
    session_->ToolFolder = ToBytes(dir_->path());
    QFile::copy(QStringLiteral(TESSEL_SAMPLES_DIR "/T12NR04E.irr"), dir_->filePath(QStringLiteral("T12NR04E.irr")));
    session_->points.Set(1, "100661", 0, 0);
    session_->points.Set(2, "140700", 0, 0);
    session_->points.SetCount(2);
  }

  void statusAndDefineColourTheSections() {
    Write(QStringLiteral("T12NR04E.sub"), {std::string(35, ' ') + "SECTION 12", std::string(35, ' ') + "SECTION 6"});
    TownshipForm form(*session_, nullptr);
    form.show();
    auto* status = form.findChild<QPushButton*>(QStringLiteral("cmdStatus"));
    auto* define = form.findChild<QPushButton*>(QStringLiteral("cmdDefine"));
    QTest::mouseClick(status, Qt::LeftButton);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdStatus")), Shade::Yellow);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection12")), Shade::Yellow);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection6")), Shade::Yellow);
    QTest::mouseClick(define, Qt::LeftButton);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdDefine")), Shade::Green);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection6")), Shade::Green);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection22")), Shade::Green);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection12")), Shade::Yellow);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection1")), Shade::System);
    QTest::mouseClick(status, Qt::LeftButton);
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdStatus")), Shade::System);
    for (int s = 1; s <= 36; ++s) QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection%1").arg(s)), Shade::System);
    // The buttons stand where their sections lie: 1 in the northeast, 6 in the northwest.
    auto* one = form.findChild<QPushButton*>(QStringLiteral("cmdSection1"));
    auto* six = form.findChild<QPushButton*>(QStringLiteral("cmdSection6"));
    auto* seven = form.findChild<QPushButton*>(QStringLiteral("cmdSection7"));
    QVERIFY(one->x() > six->x());
    QCOMPARE(seven->x(), six->x());
    QVERIFY(seven->y() > six->y());
    form.close();
  }

  void aSectionIsReadEditedAndSaved() {
    TownshipForm form(*session_, nullptr);
    form.show();
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdDefine")), Qt::LeftButton);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdSection6")), Qt::LeftButton);
    SectionDialogForm* irr = form.sectionDialog();
    QVERIFY(irr->isVisible());
    QCOMPARE(irr->windowTitle(), QStringLiteral("Section 6"));
    auto* label23 = irr->findChild<QLabel*>(QStringLiteral("lblPosition23"));
    QCOMPARE(label23->text(), QStringLiteral("100661"));
    QVERIFY(label23->font().bold());
    QVERIFY(irr->findChild<QLabel*>(QStringLiteral("lblPosition9"))->font().bold());
    QVERIFY(!irr->findChild<QLabel*>(QStringLiteral("lblPosition1"))->font().bold());
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition23")), Shade::Yellow);
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition5")), Shade::Green);
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition9")), Shade::Red);
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition1")), Shade::Green);
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition24")), Shade::Cyan);
    // With TESSEL_SCREENSHOTS set to a folder, the pictures of the README are taken here.
    const QString shots = qEnvironmentVariable("TESSEL_SCREENSHOTS");
    if (!shots.isEmpty()) {
      form.grab().save(QDir(shots).filePath(QStringLiteral("township-diagram.png")));
      irr->grab().save(QDir(shots).filePath(QStringLiteral("section-dialog.png")));
    }

    // A substitution and a proportion through their dialogs.
    QStringList seen;
    irr->runDialog = [&seen](QDialog& dialog) {
      seen << dialog.objectName() + QLatin1Char(':') + dialog.findChild<QLabel*>()->text();
      if (dialog.objectName() == QLatin1String("frmSubPtId")) {
        dialog.findChild<QLineEdit*>(QStringLiteral("txtPointId"))->setText(QStringLiteral("140661"));
      }
      if (dialog.objectName() == QLatin1String("frmProport")) {
        dialog.findChild<QLineEdit*>(QStringLiteral("txtParenthetical"))->setText(QStringLiteral("20"));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtTotal"))->setText(QStringLiteral("40.1"));
      }
      return int(QDialog::Accepted);
    };
    irr->RunEntry("mnuIRRSubstitution", 13);
    irr->RunEntry("mnuIRRProportion", 13);
    irr->RunEntry("mnuIRRCenter", 7);  // not offered at position 7
    QCOMPARE(seen, (QStringList{QStringLiteral("frmSubPtId:Substitution for nominal 140660"),
                                QStringLiteral("frmProport:Proportion definition for CN 1/16 Section 6")}));
    QCOMPARE(irr->findChild<QLabel*>(QStringLiteral("lblPosition13"))->text(), QStringLiteral("140661"));
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition13")), Shade::Green);

    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdSave")), Qt::LeftButton);
    QVERIFY(!irr->isVisible());
    SectionDefinitionStore read;
    const QByteArray text = Read(QStringLiteral("T12NR04E.irr"));
    ReadIrrBlock(text.toStdString(), 6, read);
    QCOMPARE(read.sections[6].Substitute[13], 140661);
    QCOMPARE(read.sections[6].Proportions[4].total, std::string("40.100"));
    QVERIFY(read.sections[6].CentreFlag);
    QCOMPARE(read.DoubleCornerCount, std::int16_t(2));
    QVERIFY(text.contains("140661    20.000    40.100\r\n"));
    QVERIFY(text.contains("440340\r\n"));  // section 22 kept
    QVERIFY(!QFile::exists(dir_->filePath(QStringLiteral("T12NR04E.irB"))));

    // Section 22 reset to nothing but its defaults vanishes from the file and the diagram.
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdSection22")), Qt::LeftButton);
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdReset")), Qt::LeftButton);
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition11")), Shade::System);
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdSave")), Qt::LeftButton);
    QVERIFY(!Read(QStringLiteral("T12NR04E.irr")).contains("440340"));
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection6")), Shade::Green);
    form.close();
  }

  void sectionButtonsRunSplitplanWithTheirAnswers() {
    TownshipForm form(*session_, nullptr);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdDefine")), Qt::LeftButton);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdSection30")), Qt::LeftButton);
    SectionDialogForm* irr = form.sectionDialog();
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmd3Mile")), Qt::LeftButton);
    QCOMPARE(Read(QStringLiteral("t1$.001")), QByteArray("2\r\n3\r\n8\r\n2\r\n30\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    QVERIFY(!irr->isVisible());
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdCompute")), Qt::LeftButton);
    QCOMPARE(Read(QStringLiteral("t1$.001")), QByteArray("\r\n\r\n\r\n\r\n\r\n\r\n"));
    QCOMPARE(processes_.launches.size(), std::size_t(2));

    // Short Section opens its wizard with the section filled in; an empty field is refused.
    irr->show();
    QStringList wizards;
    irr->runDialog = [&](QDialog& dialog) {
      wizards << dialog.objectName() + QLatin1Char('=') + dialog.findChild<QLineEdit*>()->text();
      auto* finish = dialog.findChild<QPushButton*>(QStringLiteral("cmdFinish"));
      dialog.findChild<QLineEdit*>()->clear();
      QTest::mouseClick(finish, Qt::LeftButton);
      if (dialog.result() == QDialog::Accepted) wizards << QStringLiteral("accepted too early");
      dialog.findChild<QLineEdit*>()->setText(QStringLiteral("140240"));
      if (auto* rows = dialog.findChild<QLineEdit*>(QStringLiteral("txtRows"))) rows->setText(QStringLiteral("2"));
      if (auto* south = dialog.findChild<QRadioButton*>(QStringLiteral("optClosing3"))) south->setChecked(true);
      if (auto* ns = dialog.findChild<QCheckBox*>(QStringLiteral("chkNorthSouth"))) ns->setChecked(true);
      QTest::mouseClick(finish, Qt::LeftButton);
      return dialog.result();
    };
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdShort")), Qt::LeftButton);
    QCOMPARE(Read(QStringLiteral("t1$.001")),
             QByteArray("2\r\n3\r\n7\r\n2\r\n140240\r\n3\r\n0\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdMinor")), Qt::LeftButton);
    QCOMPARE(Read(QStringLiteral("t1$.001")),
             QByteArray("2\r\n3\r\n4\r\nY\r\nW\r\n140240\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    QCOMPARE(wizards, (QStringList{QStringLiteral("frmADDWiz3=30"), QStringLiteral("frmADDWiz4=")}));
    QCOMPARE(user_.MessageTexts(), (std::vector<std::string>{"You must complete the information requested.",
                                                             "You must complete the information requested."}));
    form.close();
  }

  // A directory where t1$.001 goes: no run starts, the box names the file, and the section
  // dialog and the wizard stay open with what was typed.
  void aRunThatCannotWriteItsAnswersStartsNothing() {
    QVERIFY(QDir(dir_->path()).mkdir(QStringLiteral("t1$.001")));
    TownshipForm form(*session_, nullptr);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdDefine")), Qt::LeftButton);
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdSection30")), Qt::LeftButton);
    SectionDialogForm* irr = form.sectionDialog();
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdAutoIRR")), Qt::LeftButton);
    QVERIFY(irr->isVisible());
    int finished = -1;
    irr->runDialog = [&](QDialog& dialog) {
      dialog.findChild<QLineEdit*>(QStringLiteral("txtRows"))->setText(QStringLiteral("2"));
      QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdFinish")), Qt::LeftButton);
      finished = dialog.result();
      return finished;
    };
    QTest::mouseClick(irr->findChild<QPushButton*>(QStringLiteral("cmdElongated")), Qt::LeftButton);
    QCOMPARE(finished, int(QDialog::Rejected));
    QTest::mouseClick(form.findChild<QPushButton*>(QStringLiteral("cmdCompute")), Qt::LeftButton);
    QVERIFY(processes_.launches.empty());
    QCOMPARE(user_.messages.size(), std::size_t(3));
    for (const auto& message : user_.messages) QVERIFY(QString::fromStdString(message.text).contains(QStringLiteral("t1$.001")));
    form.close();
  }

  // The stand-in, copied as splitplan, notes what it was fed on its standard input.
  void computeFeedsTheRealToolItsAnswers() {
    QMainWindow window;
    QtProcessPort processes(window);
    Session session(user_, canvas_, processes);
    session.JobFolder = session_->JobFolder;
    session.JobBase = session_->JobBase;
    session.CurrentFolder = session_->CurrentFolder;
    session.ToolFolder = session_->ToolFolder;
    const QString tool = dir_->filePath(QStringLiteral("splitplan.exe"));
    QVERIFY(QFile::copy(QStringLiteral(TESSEL_STANDIN), tool));
    QVERIFY(QFile(tool).setPermissions(QFile(tool).permissions() | QFileDevice::ExeOwner));
    Write(QStringLiteral("TEMP.JOB"), {session.JobBase});
    ElongatedWizard wizard(session, QStringLiteral("12"), nullptr);
    wizard.rows->setText(QStringLiteral("3"));
    wizard.directions[3]->setChecked(true);
    QTest::mouseClick(wizard.findChild<QPushButton*>(QStringLiteral("cmdFinish")), Qt::LeftButton);
    QCOMPARE(wizard.result(), int(QDialog::Accepted));
    const QList<QByteArray> log = Read(QStringLiteral("standin.log")).split('\t');
    QVERIFY2(log.size() >= 4, Read(QStringLiteral("standin.log")).constData());
    QCOMPARE(log[0], QByteArray("splitplan"));
    QCOMPARE(log[3], QByteArray("2\\r\\n3\\r\\n5\\r\\n12\\r\\nW\\r\\n3\\r\\n\\r\\n9\\r\\n4\\r\\n3\\r\\n1\\r\\n"));
  }

  void theMenuEntryNeedsAJob() {
    QMainWindow window;
    QMenu* command = window.menuBar()->addMenu(QStringLiteral("&Command"));
    command->setObjectName(QStringLiteral("mnuCommand"));
    QMenu* cadastral = command->addMenu(QStringLiteral("Cadastral Tools"));
    cadastral->setObjectName(QStringLiteral("mnuCommandCadastral"));
    InstallSubdivisionForms(window, *session_);
    auto* entry = window.findChild<QAction*>(QStringLiteral("mnuCommandCadastralIrregular"));
    QVERIFY(entry);
    QCOMPARE(entry->text(), QStringLiteral("Irregular Section Subdivision"));
    entry->trigger();
    auto* township = window.findChild<QWidget*>(QStringLiteral("frmTWP"));
    QVERIFY(township->isVisible());
    QCOMPARE(township->windowTitle(), QStringLiteral("Township diagram"));
    QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("T12NR04E.irZ"))));
    township->close();
    session_->JobBase.clear();
    entry->trigger();
    QVERIFY(!township->isVisible());
    QCOMPARE(user_.MessageTexts(), std::vector<std::string>{"You must first open or create a project"});
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::SubdivisionFormsTest)
#include "subdivision_forms_test.moc"
