// The Cadastral Tools forms on the offscreen platform. The township diagram and the section
// dialog: the colours of the buttons by object name, the click into a section, the popup's
// dialogs, Save Section into the job's .irr, the wizards' refusal of empty fields and their
// answer files. The post-adjustment calculation forms: frmADD's lists and description, a new
// intersection entered through frmADDWiz1 and frmADDCalcs with its points picked, the checks'
// focus, the omission editor, and a picked point going to the first open dialog in order across
// the subdivision and calculation forms.

#include "calculations/calculation_files.h"
#include "calculations/ui/calculation_forms.h"
#include "paint/qt_text.h"
#include "subdivision/irr_file.h"
#include "subdivision/ui/subdivision_forms.h"
#include "form_test_support.h"

namespace tessel {

class CadastralFormsTest : public QObject {
  Q_OBJECT

 private:
  QByteArray Read(const char* name) { return Bytes(dir_->filePath(QString::fromLatin1(name))); }
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
  void ExpectShades(QWidget* form, std::initializer_list<std::pair<const char*, Shade>> shades) {
    for (const auto& [name, shade] : shades) QCOMPARE(ShadeOf(form, QString::fromLatin1(name)), shade);
  }
  // A click on the named button of `form`.
  void Click(QWidget* form, const char* name) {
    QTest::mouseClick(form->findChild<QPushButton*>(QString::fromLatin1(name)), Qt::LeftButton);
  }

  // The calculation lists: a traverse and a connecting line, one point not to be calculated.
  void WriteLists() {
    QVERIFY(WriteText(dir_->filePath(QStringLiteral("T12NR04E.add")), CrLf({kTraverse, kConnect})));
    QVERIFY(WriteText(dir_->filePath(QStringLiteral("T12NR04E.not")), CrLf({"     1", "100500", "     0"})));
    QVERIFY(LoadCalculationLists(*session_));
  }

  std::unique_ptr<QTemporaryDir> dir_;
  std::unique_ptr<Bench> bench_;
  Session* session_ = nullptr;
  const std::string kTraverse = " 1 100200 100100      1  45.30150  1    12.500      .000";
  const std::string kConnect = " 3 100100 100200      0    .00000  0      .000      .000";

 private slots:
  void init() {
    dir_ = std::make_unique<QTemporaryDir>();
    bench_ = std::make_unique<Bench>();
    session_ = &bench_->session;
    SetJob(*session_, ToBytes(QDir::toNativeSeparators(dir_->path())) + "/", "T12NR04E");
    session_->ToolFolder = ToBytes(dir_->path());
    QFile::copy(QStringLiteral(TESSEL_SAMPLES_DIR "/T12NR04E.irr"), dir_->filePath(QStringLiteral("T12NR04E.irr")));
    session_->points.Set(1, "100661", 0, 0);
    session_->points.Set(2, "140700", 0, 0);
    session_->points.SetCount(2);
  }

  void statusAndDefineColourTheSections() {
    QVERIFY(WriteText(dir_->filePath(QStringLiteral("T12NR04E.sub")),
                      CrLf({std::string(35, ' ') + "SECTION 12", std::string(35, ' ') + "SECTION 6"})));
    TownshipForm form(*session_, nullptr);
    form.show();
    Click(&form, "cmdStatus");
    ExpectShades(&form, {{"cmdStatus", Shade::Yellow}, {"cmdSection12", Shade::Yellow}, {"cmdSection6", Shade::Yellow}});
    Click(&form, "cmdDefine");
    ExpectShades(&form, {{"cmdDefine", Shade::Green}, {"cmdSection6", Shade::Green}, {"cmdSection22", Shade::Green},
                         {"cmdSection12", Shade::Yellow}, {"cmdSection1", Shade::System}});
    Click(&form, "cmdStatus");
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
    Click(&form, "cmdDefine");
    Click(&form, "cmdSection6");
    SectionDialogForm* irr = form.sectionDialog();
    QVERIFY(irr->isVisible());
    QCOMPARE(irr->windowTitle(), QStringLiteral("Section 6"));
    auto* label23 = irr->findChild<QLabel*>(QStringLiteral("lblPosition23"));
    QCOMPARE(label23->text(), QStringLiteral("100661"));
    QVERIFY(label23->font().bold() && irr->findChild<QLabel*>(QStringLiteral("lblPosition9"))->font().bold());
    QVERIFY(!irr->findChild<QLabel*>(QStringLiteral("lblPosition1"))->font().bold());
    ExpectShades(irr, {{"cmdPosition23", Shade::Yellow}, {"cmdPosition5", Shade::Green}, {"cmdPosition9", Shade::Red},
                       {"cmdPosition1", Shade::Green}, {"cmdPosition24", Shade::Cyan}});
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

    Click(irr, "cmdSave");
    QVERIFY(!irr->isVisible());
    SectionDefinitionStore read;
    const QByteArray text = Read("T12NR04E.irr");
    ReadIrrBlock(text.toStdString(), 6, read);
    QCOMPARE(read.sections[6].Substitute[13], 140661);
    QCOMPARE(read.sections[6].Proportions[4].total, std::string("40.100"));
    QVERIFY(read.sections[6].CentreFlag);
    QCOMPARE(read.DoubleCornerCount, std::int16_t(2));
    QVERIFY(text.contains("140661    20.000    40.100\r\n"));
    QVERIFY(text.contains("440340\r\n"));  // section 22 kept
    QVERIFY(!QFile::exists(dir_->filePath(QStringLiteral("T12NR04E.irB"))));

    // Section 22 reset to nothing but its defaults vanishes from the file and the diagram.
    Click(&form, "cmdSection22");
    Click(irr, "cmdReset");
    QCOMPARE(ShadeOf(irr, QStringLiteral("cmdPosition11")), Shade::System);
    Click(irr, "cmdSave");
    QVERIFY(!Read("T12NR04E.irr").contains("440340"));
    QCOMPARE(ShadeOf(&form, QStringLiteral("cmdSection6")), Shade::Green);
    form.close();
  }

  void sectionButtonsRunSplitplanWithTheirAnswers() {
    TownshipForm form(*session_, nullptr);
    Click(&form, "cmdDefine");
    Click(&form, "cmdSection30");
    SectionDialogForm* irr = form.sectionDialog();
    Click(irr, "cmd3Mile");
    QCOMPARE(Read("t1$.001"), QByteArray("2\r\n3\r\n8\r\n2\r\n30\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    QVERIFY(!irr->isVisible());
    Click(&form, "cmdCompute");
    QCOMPARE(Read("t1$.001"), QByteArray("\r\n\r\n\r\n\r\n\r\n\r\n"));
    QCOMPARE(bench_->processes.launches.size(), std::size_t(2));

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
    Click(irr, "cmdShort");
    QCOMPARE(Read("t1$.001"), QByteArray("2\r\n3\r\n7\r\n2\r\n140240\r\n3\r\n0\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    Click(irr, "cmdMinor");
    QCOMPARE(Read("t1$.001"), QByteArray("2\r\n3\r\n4\r\nY\r\nW\r\n140240\r\n\r\n9\r\n4\r\n3\r\n1\r\n"));
    QCOMPARE(wizards, (QStringList{QStringLiteral("frmADDWiz3=30"), QStringLiteral("frmADDWiz4=")}));
    QCOMPARE(bench_->user.MessageTexts(), std::vector<std::string>(2, "You must complete the information requested."));
    form.close();
  }

  // A directory where t1$.001 goes: no run starts, the box names the file, and the section
  // dialog and the wizard stay open with what was typed.
  void aRunThatCannotWriteItsAnswersStartsNothing() {
    QVERIFY(QDir(dir_->path()).mkdir(QStringLiteral("t1$.001")));
    TownshipForm form(*session_, nullptr);
    Click(&form, "cmdDefine");
    Click(&form, "cmdSection30");
    SectionDialogForm* irr = form.sectionDialog();
    Click(irr, "cmdAutoIRR");
    QVERIFY(irr->isVisible());
    int finished = -1;
    irr->runDialog = [&](QDialog& dialog) {
      dialog.findChild<QLineEdit*>(QStringLiteral("txtRows"))->setText(QStringLiteral("2"));
      Click(&dialog, "cmdFinish");
      finished = dialog.result();
      return finished;
    };
    Click(irr, "cmdElongated");
    QCOMPARE(finished, int(QDialog::Rejected));
    Click(&form, "cmdCompute");
    QVERIFY(bench_->processes.launches.empty());
    QCOMPARE(bench_->user.messages.size(), std::size_t(3));
    for (const auto& message : bench_->user.messages) QVERIFY(message.text.find("t1$.001") != std::string::npos);
    form.close();
  }

  // The stand-in, copied as splitplan, notes what it was fed on its standard input.
  void computeFeedsTheRealToolItsAnswers() {
    LaunchBench run(dir_->path());
    SetJob(run.session, session_->JobFolder, "T12NR04E");
    QVERIFY(InstallStandin(dir_->path(), QStringLiteral("splitplan.exe")));
    QVERIFY(WriteText(dir_->filePath(QStringLiteral("TEMP.JOB")), CrLf({session_->JobBase})));
    ElongatedWizard wizard(run.session, QStringLiteral("12"), nullptr);
    wizard.rows->setText(QStringLiteral("3"));
    wizard.directions[3]->setChecked(true);
    Click(&wizard, "cmdFinish");
    QCOMPARE(wizard.result(), int(QDialog::Accepted));
    const QList<QByteArray> log = Read("standin.log").split('\t');
    QVERIFY2(log.size() >= 4, Read("standin.log").constData());
    QCOMPARE(log[0], QByteArray("splitplan"));
    QCOMPARE(log[3], QByteArray("2\\r\\n3\\r\\n5\\r\\n12\\r\\nW\\r\\n3\\r\\n\\r\\n9\\r\\n4\\r\\n3\\r\\n1\\r\\n"));
  }

  void listsDescriptionAndNewIntersectionByPicking() {
    WriteLists();
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
    QCOMPARE((QStringList{calcs->fields[0][0]->text(), calcs->fields[0][1]->text(), calcs->fields[1][0]->text(),
                          calcs->fields[1][1]->text()}),
             (QStringList{"120100", "120200", "100100", "100700"}));
    // Without a line type the check names it and keeps the focus there.
    QVERIFY(!calcs->Save());
    QCOMPARE(bench_->user.messages.back().text, std::string(kMsgNeedLineType));
    calcs->lineTypes[0]->setCurrentIndex(0);
    calcs->lineTypes[1]->setCurrentIndex(1);
    QVERIFY(calcs->Save());
    // frmADD follows the lists by itself.
    const std::string added1 = " 2 120140 120100 120200    .00000  1      .000      .000";
    const std::string added2 = " 2      0 100100 100700 999.99900  2      .000      .000";
    QCOMPARE(Read("T12NR04E.add"), CrLf({kTraverse, kConnect, added1, added2}));
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
    WriteLists();
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
    QCOMPARE(Read("T12NR04E.not"), QByteArray("     1\r\n100500\r\n     1\r\n300400 300500\r\n"));

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

  // The two entries under Command > Cadastral Tools, which need a job.
  void theMenuEntriesNeedAJob() {
    QMainWindow window;
    QMenu* command = window.menuBar()->addMenu(QStringLiteral("&Command"));
    command->setObjectName(QStringLiteral("mnuCommand"));
    command->addMenu(QStringLiteral("Cadastral Tools"))->setObjectName(QStringLiteral("mnuCommandCadastral"));
    InstallSubdivisionForms(window, *session_);
    InstallCalculationsForms(window, *session_);
    auto* irregular = window.findChild<QAction*>(QStringLiteral("mnuCommandCadastralIrregular"));
    auto* add = window.findChild<QAction*>(QStringLiteral("mnuCommandCadastralADD"));
    QVERIFY(irregular && add);
    QCOMPARE(irregular->text(), QStringLiteral("Irregular Section Subdivision"));
    irregular->trigger();
    auto* township = window.findChild<QWidget*>(QStringLiteral("frmTWP"));
    QVERIFY(township->isVisible());
    QCOMPARE(township->windowTitle(), QStringLiteral("Township diagram"));
    QVERIFY(QFile::exists(dir_->filePath(QStringLiteral("T12NR04E.irZ"))));
    township->close();
    session_->JobBase.clear();
    irregular->trigger();
    QVERIFY(!township->isVisible());
    QCOMPARE(bench_->user.MessageTexts(), std::vector<std::string>{"You must first open or create a project"});
    add->trigger();
    QCOMPARE(bench_->user.MessageTexts(),
             (std::vector<std::string>{"You must first open or create a project", kMsgNeedProject}));
    auto* form = window.findChild<QWidget*>(QStringLiteral("frmADD"));
    QVERIFY(form && !form->isVisible());
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::CadastralFormsTest)
#include "cadastral_forms_test.moc"
