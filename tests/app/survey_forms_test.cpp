// The survey forms on the offscreen platform with the sample job and the stand-in recpad: the
// Edit menu's entry, frmListSurveys and frmSidEdit by object name, the record keys of
// frmSelectedLines with frmEditRawData and frmSwitchSID, and the whole route from a new survey
// through a moved and edited record and a rename to the rebuilt .lsa and .sd.

#include <cstdio>
#include <string>

#include "model/text.h"
#include "surveys/raw_records.h"
#include "surveys/ui/survey_forms.h"
#include "viewer/ui/selection_forms.h"
#include "form_test_support.h"

namespace tessel {

class SurveyFormsTest : public QObject {
  Q_OBJECT

 private:
  QString JobFile(const char* name) const { return QDir(jobs_).filePath(QString::fromLatin1(name)); }
  QWidget* Form(const char* name) { return Found(run_->window.findChild<QWidget*>(QString::fromLatin1(name)), name); }
  template <typename T>
  T* Find(const char* form, const char* name) { return Found(Form(form)->findChild<T*>(QString::fromLatin1(name)), name); }
  void Click(const char* form, const char* button) { QTest::mouseClick(Find<QPushButton>(form, button), Qt::LeftButton); }
  void ClickSurvey(int row) {
    auto* list = Find<QListWidget>("frmListSurveys", "lstSurveys");
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
  }
  void Type(const char* form, const char* field, const QString& text) {
    auto* edit = Find<QLineEdit>(form, field);
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QMetaObject::invokeMethod(edit, "editingFinished");
  }
  std::vector<std::string> Lines(const char* name) { return tessel::Lines(JobFile(name)); }
  Session& S() { return run_->session; }
  RecordingUserPort& U() { return run_->user; }
  // Record 1 of the sample is picked into the line list.
  void SelectFirstRecord() {
    S().selection.LineList = {RawLineText(S().raw.RawLineFields.get(1))};
    S().selection.SelectedLines.at(0) = 1;
    lines_->Reload();
    Find<QListWidget>("frmSelectedLines", "lstItems")->setCurrentRow(0);
  }

  std::unique_ptr<QTemporaryDir> root_;
  QString tools_, jobs_;
  std::unique_ptr<LaunchBench> run_;
  SelectedLinesForm* lines_ = nullptr;

 private slots:
  void initTestCase() {
    QVERIFY(std::freopen(QProcess::nullDevice().toLocal8Bit().constData(), "r", stdin) != nullptr);
  }

  void init() {
    root_ = std::make_unique<QTemporaryDir>();
    tools_ = root_->filePath(QStringLiteral("tools"));
    jobs_ = root_->filePath(QStringLiteral("job"));
    QVERIFY(QDir().mkpath(tools_) && QDir().mkpath(jobs_) && InstallStandin(tools_, QStringLiteral("recpad.exe")));
    QVERIFY(CopySampleJob(jobs_));
    run_ = std::make_unique<LaunchBench>(tools_);
    run_->window.menuBar()->addMenu(QStringLiteral("&Edit"))->setObjectName(QStringLiteral("mnuEdit"));
    lines_ = new SelectedLinesForm(run_->session, &run_->window);
    InstallSurveysForms(run_->window, run_->session);
    OpenJob(run_->session, JobFile("T12NR04E.def").toStdString(), "T12NR04E.def");
    QCOMPARE(S().surveys.SurveyCount, std::int16_t{5});
    U().messages.clear();
  }

  void cleanup() {
    run_.reset();
    root_.reset();
  }

  void listShowsSurveysAndLoadsTheEditor() {
    run_->window.findChild<QAction*>(QStringLiteral("mnuEditSurveys"))->trigger();
    QVERIFY(Form("frmListSurveys")->isVisible() && QTest::qWaitForWindowExposed(Form("frmListSurveys")));
    auto* list = Find<QListWidget>("frmListSurveys", "lstSurveys");
    QCOMPARE(list->count(), 5);
    QCOMPARE(list->item(0)->text(), QStringLiteral("SGLO 1854 EXT         .050   200.0    60.0"));
    // The first survey has no C lines; the second has its comments and directives.
    ClickSurvey(0);
    QCOMPARE(Find<QLabel>("frmListSurveys", "lblComments")->text(), QString());
    QCOMPARE(Find<QLineEdit>("frmSidEdit", "txtName")->text(), QStringLiteral("GLO 1854 EXT"));
    QVERIFY(!Find<QCheckBox>("frmSidEdit", "chkProperty8")->isChecked());
    ClickSurvey(1);
    QCOMPARE(Find<QLabel>("frmListSurveys", "lblComments")->text(),
             QStringLiteral("C ORIGINAL SURVEY OF THE SUBDIVISIONAL LINES, T12N R04E\n"
                            "C GENERAL LAND OFFICE, FIELD NOTES VOL. R-114, PLAT APPROVED 1856\n"
                            "SID UNITS/CORRECTIONS ARE DEFINED - SEE PROPERTIES"));
    // Loading ticks 5, 8, 9 and 11 only.
    for (int box = 1; box <= 13; ++box) {
      const bool ticked = Find<QCheckBox>("frmSidEdit", qPrintable(QStringLiteral("chkProperty%1").arg(box)))->isChecked();
      QVERIFY2(ticked == (box == 5 || box == 8 || box == 9 || box == 11), qPrintable(QString::number(box)));
    }
    QCOMPARE(Find<QLineEdit>("frmSidEdit", "txtName")->text(), QStringLiteral("GLO 1855"));
    QCOMPARE(Find<QLineEdit>("frmSidEdit", "txtName")->maxLength(), 18);
    QCOMPARE(Find<QComboBox>("frmSidEdit", "cboDistanceUnits")->currentText(), QStringLiteral("C - Chains"));
    // "Options" shows and hides the lower half.
    Click("frmListSurveys", "cmdProperties");
    QVERIFY(Form("frmSidEdit")->isVisible() && !Find<QWidget>("frmSidEdit", "fraOptions")->isVisible());
    Click("frmSidEdit", "cmdOptions");
    QVERIFY(Find<QWidget>("frmSidEdit", "fraOptions")->isVisible());
    // Typing ticks its box; leaving the field sets its picture.
    Type("frmSidEdit", "txtConstant", QStringLiteral("0.06"));
    QVERIFY(Find<QCheckBox>("frmSidEdit", "chkProperty1")->isChecked());
    QCOMPARE(Find<QLineEdit>("frmSidEdit", "txtConstant")->text(), QStringLiteral(".060"));
    Click("frmSidEdit", "cmdCancel");
    QVERIFY(!Form("frmSidEdit")->isVisible());

    // "Select by SID" with the first two surveys chosen.
    Click("frmListSurveys", "cmdSelectBySid");
    const auto count = S().selection.LineList.size();
    QVERIFY(count > 0);
    QCOMPARE(U().MessageTexts().back(), std::to_string(count) + " records selected");
  }

  void selectedLinesKeysStandInOrder() {
    QStringList captions;
    for (auto* button : lines_->findChildren<QPushButton*>()) captions << button->text();
    QCOMPARE(captions, (QStringList{"Remove Line", "Cancel", "Edit Line", "Change SID", "Print"}));
    // Change SID answered No: frmSwitchSID stays hidden.
    SelectFirstRecord();
    U().answers = {Answer::No};
    Click("frmSelectedLines", "cmdChangeSID");
    QCOMPARE(U().MessageTexts(), std::vector<std::string>{"Change SID assignment for all selected lines?"});
    QVERIFY(!Form("frmSwitchSID")->isVisible());
    // Edit Line opens the record with every box clear.
    Click("frmSelectedLines", "cmdEditLine");
    QVERIFY(Form("frmEditRawData")->isVisible());
    QCOMPARE(Find<QLineEdit>("frmEditRawData", "txtDistance")->text(), QStringLiteral("39.980"));
    QCOMPARE(Find<QComboBox>("frmEditRawData", "cboSurvey")->currentIndex(), 0);
    for (int k = 1; k <= 6; ++k) QVERIFY(!Find<QCheckBox>("frmEditRawData", qPrintable(QStringLiteral("chkField%1").arg(k)))->isChecked());
    // OK with nothing ticked: the dialog stays.
    Click("frmEditRawData", "cmdOK");
    QCOMPARE(U().MessageTexts().back(), std::string("Nothing to do!"));
    QVERIFY(Form("frmEditRawData")->isVisible());
  }

  // A survey is created, a record moved to it and edited with the weights rebuilt, and the
  // survey renamed with its records following.
  void wholeRouteReachesEveryFile() {
    run_->window.findChild<QAction*>(QStringLiteral("mnuEditSurveys"))->trigger();
    Click("frmListSurveys", "cmdCreateNew");
    for (int box = 1; box <= 7; ++box) {
      QVERIFY(Find<QCheckBox>("frmSidEdit", qPrintable(QStringLiteral("chkProperty%1").arg(box)))->isChecked());
    }
    Type("frmSidEdit", "txtName", QStringLiteral("NEW SURVEY"));
    Type("frmSidEdit", "txtConstant", QStringLiteral(".04"));
    Type("frmSidEdit", "txtPpm", QStringLiteral("100"));
    Click("frmSidEdit", "cmdOK");
    QCOMPARE(U().MessageTexts(), std::vector<std::string>{"You have not completely filled out the form."});
    Type("frmSidEdit", "txtSeconds", QStringLiteral("30"));
    QTest::keyClicks(Find<QPlainTextEdit>("frmSidEdit", "txtComments"), QStringLiteral("C MADE IN THE TEST"));
    Click("frmSidEdit", "cmdOK");
    QVERIFY(!Form("frmSidEdit")->isVisible());
    // Name, constant, ppm and seconds in their columns, the two control errors blank.
    const QByteArray blanks(18, ' ');
    QVERIFY(Bytes(JobFile("T12NR04E.sid")).endsWith("SNEW SURVEY           .040   100.0    30.0" + blanks +
                                                    "\r\nC MADE IN THE TEST\r\n"));
    QCOMPARE(Find<QListWidget>("frmListSurveys", "lstSurveys")->count(), 6);

    // Record 1 moves to the new survey; no rebuild.
    SelectFirstRecord();
    U().messages.clear();
    U().answers = {Answer::Yes, Answer::No};
    Click("frmSelectedLines", "cmdChangeSID");
    QVERIFY(Form("frmSwitchSID")->isVisible());
    Find<QComboBox>("frmSwitchSID", "cboSurvey")->setCurrentIndex(5);
    Click("frmSwitchSID", "cmdOK");
    QVERIFY(!Form("frmSwitchSID")->isVisible());
    const std::vector<std::string> raw = Lines("T12NR04E.raw");
    QCOMPARE(raw[4], std::string("700100   700140   39.980  4     1800.0 NEW SURVEY        "));
    QCOMPARE(Lines("T12NR04E.ra2")[4], std::string("700100   700140   39.980  4     1800.0 GLO 1854 EXT"));
    QCOMPARE(S().raw.RawLineEnds.get(1).survey, std::int16_t{6});

    // Its distance is edited, and the weights rebuilt by recpad.
    U().messages.clear();
    Click("frmSelectedLines", "cmdEditLine");
    Type("frmEditRawData", "txtDistance", QStringLiteral("41.5"));
    QVERIFY(Find<QCheckBox>("frmEditRawData", "chkField3")->isChecked());
    Click("frmEditRawData", "cmdOK");
    QVERIFY(!Form("frmEditRawData")->isVisible());
    QCOMPARE(U().MessageTexts(),
             std::vector<std::string>{"RAW file has changed.\r\nUpdate adjustment parameters based upon new values?"});
    QCOMPARE(Lines("T12NR04E.raw")[4], std::string("700100   700140   41.500  4     1800.0 NEW SURVEY"));
    QCOMPARE(S().selection.LineList[0], std::string("700100 700140   41.500 4   1800.0 NEW SURVEY"));
    // Six control stations, then the records.
    std::vector<std::string> sd = Lines("T12NR04E.sd");
    QCOMPARE(sd[0], std::string("KQ1234             0.020     0.020"));
    QCOMPARE(sd[6], std::string("700100 700140       .040     100.0      30.0  NEW SURVEY"));
    const std::vector<std::string> lsa = Lines("T12NR04E.LSA");
    QCOMPARE(lsa.size() > 6, true);
    QCOMPARE(Right(lsa[5], 1), std::string("1"));  // the control block kept, six stations
    QCOMPARE(lsa[6].substr(0, 33), std::string(" 700100                    700140"));
    for (const char* name : {"T12NR04E.002", "T12NR04E.t$2", "T12NR04E.t$3", "temp.bat", "t1$.001"}) {
      QVERIFY2(!QFile::exists(JobFile(name)), name);
    }

    // The survey is renamed and its error estimate changed: the record follows, the weights too.
    auto* list = Find<QListWidget>("frmListSurveys", "lstSurveys");
    ClickSurvey(5);
    QCOMPARE(list->currentRow(), 5);
    Click("frmListSurveys", "cmdProperties");
    Type("frmSidEdit", "txtName", QStringLiteral("RENAMED SURVEY"));
    Type("frmSidEdit", "txtPpm", QStringLiteral("150"));
    U().messages.clear();
    Click("frmSidEdit", "cmdOK");
    QCOMPARE(U().MessageTexts(), (std::vector<std::string>{
                                       "SID file updated\r\nSID Name changed, update raw file records?",
                                       "NEW SURVEY will be updated to RENAMED SURVEY",
                                       "SID file updated\r\nUpdate weights based upon new error estimates?"}));
    QCOMPARE(Lines("T12NR04E.raw")[4], std::string("700100   700140   41.500  4     1800.0 RENAMED SURVEY"));
    sd = Lines("T12NR04E.sd");
    QCOMPARE(sd[6], std::string("700100 700140       .040     150.0      30.0  RENAMED SURVEY"));
    QCOMPARE(sd.size(), 6 + static_cast<std::size_t>(S().raw.RawLineCount));
    // The block was rewritten from the list entry: no control errors, and the comment's own line
    // end leaves an empty line.
    QVERIFY(Bytes(JobFile("T12NR04E.sid")).endsWith("SRENAMED SURVEY       .040   150.0    30.0" + blanks +
                                                    "\r\nC MADE IN THE TEST\r\n\r\n"));
    QCOMPARE(S().raw.RawLineEnds.get(1).survey, std::int16_t{6});
    QCOMPARE(list->item(5)->text().left(15), QStringLiteral("SRENAMED SURVEY"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::SurveyFormsTest)
#include "survey_forms_test.moc"
