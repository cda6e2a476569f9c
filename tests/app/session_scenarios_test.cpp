// A surveyor's sessions from open to close, through the real main window and its forms on the
// offscreen platform, with the stand-in suite tools, checking the job's files byte for byte at
// the end: where subsystems meet, nothing is lost, nothing lands on the wrong record, and nothing
// of one job is left in the next.

#include <cstdio>
#include <map>

#include "calculations/calculation_files.h"
#include "model/selection_checks.h"
#include "model/text.h"
#include "parcels/parcel_properties.h"
#include "form_test_support.h"

namespace tessel {
namespace {

constexpr const char* kJob = "T12NR04E";
constexpr const char* kUnsavedQuestion = "Parcel attribute edits have not been saved.";

// A folder's files, name to bytes.
std::map<QString, QByteArray> Files(const QString& folder) {
  std::map<QString, QByteArray> files;
  for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files)) files[info.fileName()] = Bytes(info.filePath());
  return files;
}

}  // namespace

class SessionScenarios : public QObject, WindowBench {
  Q_OBJECT

 private:
  QString Job(const QString& folder, const char* extension) const {
    return QDir(folder).filePath(kJob + QString::fromLatin1(extension));
  }
  void Open(const QString& folder) { OpenJob(S(), Job(folder, ".def").toStdString(), "T12NR04E.def"); }
  void ClickParcel(int p) { ClickAt(S().parcels.ParcelX.get(p), S().parcels.ParcelY.get(p)); }
  // The parcel layer on, the parcel tool taken, parcel `p` clicked.
  void PickParcel(int p) {
    Action("mnuOptionsParcel")->trigger();
    Action("Centroid")->trigger();
    ClickParcel(p);
  }
  void ChooseRow(const char* form, const char* list, int row) {
    auto* widget = In<QListWidget>(form, list);
    widget->setCurrentRow(row);
    emit widget->itemClicked(widget->item(row));
  }
  // Parcel Properties on the selection, a new acreage applied, the window closed: the edit is in
  // memory only.
  void EditAcreage(const QString& acreage) {
    Action("mnuPopupParcelProperties")->trigger();
    QVERIFY(Form("frmAttributes")->isVisible());
    In<QLineEdit>("frmAttributes", "txtAcreage")->setText(acreage);
    Press("frmAttributes", "cmdApply");
    Form("frmAttributes")->close();
    QCOMPARE(S().parcels.ParcelDirty, std::int16_t{-1});
  }
  // The CAMA link of the job made and loaded, and plotted.
  void LinkCama() {
    Action("mnuAttributesCamaLink")->trigger();
    QVERIFY(QFile::exists(Job(jobA_, ".mtc")));
    boxes_->answers.push_back(QMessageBox::Yes);  // "Would you like to load parcels instead?"
    Action("mnuAttributesCamaLink")->trigger();
    Action("mnuViewCama")->setChecked(true);
    QCOMPARE(S().cama.LinkLoadedCount, S().parcels.ParcelCount);
  }

  QString jobA_, jobB_;
  std::unique_ptr<MessageBoxes> boxes_;

 private slots:
  void initTestCase() {
    // The tools must not wait for a terminal.
    QVERIFY(std::freopen(QProcess::nullDevice().toLocal8Bit().constData(), "r", stdin) != nullptr);
  }

  void init() {
    MakeFolders(false);
    // Folders with blanks in their names, as surveyors' folders have.
    jobA_ = JobFile(QStringLiteral("job a"));
    jobB_ = JobFile(QStringLiteral("job b"));
    QVERIFY(QDir().mkpath(jobA_) && QDir().mkpath(jobB_) && CopySampleJob(jobA_) && CopySampleJob(jobB_));
    QVERIFY(InstallStandin(tools_, QStringLiteral("splitplan.exe")) && InstallStandin(tools_, QStringLiteral("recpad.exe")));
    StartWindow();
    boxes_ = std::make_unique<MessageBoxes>();
  }

  void cleanup() {
    StopWindow();
    boxes_.reset();
  }

  // Attributes edited, the township diagram's Compute run, then saved: the reload after the
  // tool keeps the edits, and the save writes them onto their own parcel.
  void parcelEditsSurviveComputeAndAreSaved() {
    Open(jobA_);
    const std::vector<std::string> original = Lines(Job(jobA_, ".IID"));
    PickParcel(1);
    EditAcreage(QStringLiteral("12.5"));

    Action("mnuCommandCadastralIrregular")->trigger();
    QVERIFY(Form("frmTWP")->isVisible());
    Press("frmTWP", "cmdCompute");
    QVERIFY(Bytes(QDir(jobA_).filePath(QStringLiteral("standin.log"))).startsWith("splitplan\t"));
    QVERIFY(!boxes_->Asked(kUnsavedQuestion));
    QCOMPARE(S().parcels.ParcelDirty, std::int16_t{-1});

    Action("mnuFileSave")->trigger();
    std::vector<std::string> saved = original;
    saved[0] = "  * * * This file has been edited by Tessel  * * *  ";
    // Apply joins the acreage and the line's last 17 characters without the blank between them.
    saved[1] = "Sec_001 A T_L 1              12.500T12NR04E-01-00001";
    saved.insert(saved.begin() + 1, "Tessel Edited: " + original[1]);
    QCOMPARE(Bytes(Job(jobA_, ".IID")), CrLf(saved));
    Action("mnuFileClose")->trigger();
    QVERIFY(!boxes_->Asked(kUnsavedQuestion));
  }

  // List [A, B1, B2, C]: B is edited while A is deleted. The save writes B where it stands now.
  void aDefinitionEditedWhileAnotherIsDeleted() {
    const std::string a = " 1 100200 100100      1  45.30150  1    12.500      .000";
    const std::string b1 = " 2 120140 120100 120200    .00000  1      .000      .000";
    const std::string b2 = " 2      0 100100 100700 999.99900  2      .000      .000";
    const std::string c = " 3 100100 100200      0    .00000  0      .000      .000";
    QVERIFY(WriteText(Job(jobA_, ".add"), CrLf({a, b1, b2, c})));
    Open(jobA_);
    Action("mnuCommandCadastralADD")->trigger();
    auto* definitions = In<QListWidget>("frmADD", "lstDefinitions");
    definitions->setCurrentRow(1);
    Press("frmADD", "cmdEdit");
    QVERIFY(Form("frmADDCalcs")->isVisible());
    In<QLineEdit>("frmADDCalcs", "txtNewPoint")->setText(QStringLiteral("120150"));

    definitions->setCurrentRow(0);
    boxes_->answers.push_back(QMessageBox::Yes);  // "Confirm Delete?"
    Press("frmADD", "cmdDelete");
    QCOMPARE(Bytes(Job(jobA_, ".add")), CrLf({b1, b2, c}));
    QVERIFY(Form("frmADDCalcs")->isVisible());

    Press("frmADDCalcs", "cmdOK");
    const std::string saved1 = " 2 120150 120100 120200    .00000  1      .000      .000";
    QCOMPARE(Bytes(Job(jobA_, ".add")), CrLf({saved1, b2, c}));

    // An entry deleted under its open editor closes the editor with a word; nothing is written.
    definitions->setCurrentRow(2);
    Press("frmADD", "cmdEdit");
    QVERIFY(Form("frmADDCalcs")->isVisible());
    boxes_->answers.push_back(QMessageBox::Yes);
    Press("frmADD", "cmdDelete");
    QVERIFY(!Form("frmADDCalcs")->isVisible() && boxes_->Asked(kMsgDefinitionGone));
    QCOMPARE(Bytes(Job(jobA_, ".add")), CrLf({saved1, b2}));
  }

  // CAMA: the CAMA parcel window opened for a link record of section 6, then for one of section
  // 22 while it is open: it lists section 22, and Apply links the row that is shown.
  void theCamaParcelWindowFollowsTheChosenLink() {
    Open(jobA_);
    LinkCama();
    Action("Centroid")->trigger();
    ClickParcel(7);  // section 6
    Action("mnuOptionsParcelIds")->setChecked(true);
    QCOMPARE(S().selection.ParcelPicks().size(), std::size_t{1});
    Press("frmTesting", "cmdCama");
    QWidget* cama = Form("frmCamaParcel");
    QVERIFY(cama->isVisible());
    QCOMPARE(cama->windowTitle(), QStringLiteral("Cama Parcels for Section 06"));

    ClickParcel(17);  // section 22
    In<QListWidget>("frmTesting", "lstItems")->setCurrentRow(1);
    Press("frmTesting", "cmdCama");
    QCOMPARE(cama->windowTitle(), QStringLiteral("Cama Parcels for Section 22"));
    auto* rows = In<QListWidget>("frmCamaParcel", "lstCama");
    std::vector<std::string> section22;
    for (const std::string& record : Lines(Job(jobA_, ".cama"))) {
      if (Mid(record, 7, 2) == "22") section22.push_back(record);
    }
    QCOMPARE(rows->count(), int(section22.size()));
    for (int r = 0; r < rows->count(); ++r) {
      QCOMPARE(rows->item(r)->text().toStdString(), "Sec 22 " + Trim(Mid(section22[std::size_t(r)], 251, 120)));
    }
    ChooseRow("frmCamaParcel", "lstCama", 2);
    Press("frmCamaParcel", "cmdApply");
    Press("frmCamaParcel", "cmdOK");
    // Link record 17, the parcel of section 22, carries the key of the row shown.
    const std::vector<std::string> mtc = Lines(Job(jobA_, ".mtc"));
    QCOMPARE(mtc[1 + 16 * 4 + 2], "GeoCode = " + Left(section22[2], 17));
    // The rows of frmTesting still name their link records after the link file was read back.
    QCOMPARE(LinkRecordOfRow(S(), 1), 17);
  }

  // Parcels and link records picked together, with "CAMA Parcels" checked and the parcel marks
  // on: each click adds the parcel and its link record. Parcel Properties refuses the mixed
  // selection, the CAMA window refuses a parcel's row, and .IID is never touched.
  void aSelectionOfLinkRecordsEditsNoParcel() {
    Open(jobA_);
    const QByteArray iid = Bytes(Job(jobA_, ".IID"));
    LinkCama();
    PickParcel(5);
    Action("mnuPopupParcelDeselect")->trigger();
    ClickParcel(5);
    QCOMPARE(S().selection.ParcelPicks().size(), std::size_t{4});
    Action("mnuPopupParcelProperties")->trigger();
    QVERIFY(!Form("frmAttributes")->isVisible() && boxes_->Asked(kMsgSelectionHoldsLinks));
    Action("mnuPopupParcelQuickEdit")->trigger();
    QVERIFY(!Form("frmQuickEdit")->isVisible());

    Action("mnuOptionsParcelIds")->setChecked(true);
    In<QListWidget>("frmTesting", "lstItems")->setCurrentRow(0);
    Press("frmTesting", "cmdCama");
    QVERIFY(boxes_->Asked(kMsgRowHoldsParcel) && !Form("frmCamaParcel")->isVisible());
    In<QListWidget>("frmTesting", "lstItems")->setCurrentRow(1);
    Press("frmTesting", "cmdCama");
    QCOMPARE(Form("frmCamaParcel")->windowTitle(), QStringLiteral("Cama Parcels for Section 01"));
    Action("mnuFileClose")->trigger();
    QCOMPARE(Bytes(Job(jobA_, ".IID")), iid);
  }

  // Points picked, then a parcel: the shared pick count puts the parcel at the array's second
  // place, but Parcel Properties shows the parcel picked, never the empty index 0; typed text in
  // the working line is what Apply builds on, and the note is chosen from its list only.
  void parcelPropertiesShowsThePickedParcel() {
    Open(jobA_);
    Action("Select")->trigger();
    ClickAt(S().points.PointX(100), S().points.PointY(100));
    Form("frmSelectedPoints")->close();
    QCOMPARE(S().SelectionCount, std::int16_t{1});
    PickParcel(3);
    QCOMPARE(S().selection.SelectedParcels.get(0), std::int16_t{0});
    Action("mnuPopupParcelProperties")->trigger();
    QCOMPARE(In<QLineEdit>("frmAttributes", "txtIndex")->text(), QStringLiteral("3"));
    QCOMPARE(In<QLabel>("frmAttributes", "lblRing")->text().toStdString(), S().parcels.ParcelRing.get(3));

    // Columns 22-24 and 26 of the working line come from what is typed there.
    auto* working = In<QComboBox>("frmAttributes", "cboParcel");
    QString typed = working->currentText();
    typed.replace(21, 3, QStringLiteral("XYZ"));
    working->setEditText(typed);
    QVERIFY(!In<QComboBox>("frmAttributes", "cboNote")->isEditable());
    Press("frmAttributes", "cmdApply");
    QCOMPARE(Mid(S().parcels.ParcelLine.get(3), 22, 3), std::string("XYZ"));
    QCOMPARE(working->currentText().toStdString(), S().parcels.ParcelLine.get(3));

    // With the index box emptied nothing is written anywhere, index 0 least of all.
    In<QLineEdit>("frmAttributes", "txtIndex")->clear();
    Press("frmAttributes", "cmdApply");
    QVERIFY(boxes_->Asked(kMsgNoParcelShown) && S().parcels.ParcelLine.get(0).empty());
  }

  // "Create New" in the survey list, then a click on another survey, then OK: a new block is
  // appended and the survey clicked stays as it was.
  void aNewSurveyIsAppendedAfterAClickInTheList() {
    Open(jobA_);
    const QByteArray sid = Bytes(Job(jobA_, ".sid"));
    Action("mnuEditSurveys")->trigger();
    Press("frmListSurveys", "cmdCreateNew");
    ChooseRow("frmListSurveys", "lstSurveys", 1);
    QVERIFY(Form("frmSidEdit")->isVisible());
    for (const auto& [field, text] : {std::pair{"txtName", "NEW 2026"}, std::pair{"txtConstant", ".030"},
                                      std::pair{"txtPpm", "100.0"}, std::pair{"txtSeconds", "30.0"}}) {
      auto* edit = In<QLineEdit>("frmSidEdit", field);
      edit->selectAll();
      QTest::keyClicks(edit, QString::fromLatin1(text));
    }
    In<QPlainTextEdit>("frmSidEdit", "txtComments")->setPlainText(QStringLiteral("C A NEW SURVEY"));
    Press("frmSidEdit", "cmdOK");
    const QByteArray now = Bytes(Job(jobA_, ".sid"));
    QVERIFY(now.startsWith(sid) && now.mid(sid.size()).startsWith("SNEW 2026"));
    QCOMPARE(S().surveys.SurveyCount, std::int16_t(In<QListWidget>("frmListSurveys", "lstSurveys")->count()));
  }

  // Job A with every kind of state, closed with its unsaved edits answered No; job B opened:
  // nothing of A is left, in the stores, the flags, the windows or the picture, and B closes
  // without a question about edits it never had and with none of its files touched.
  void nothingOfAClosedJobIsLeftInTheNext() {
    Open(jobA_);
    const QByteArray iidA = Bytes(Job(jobA_, ".IID"));
    PickParcel(1);
    EditAcreage(QStringLiteral("2"));
    LinkCama();
    Action("Select")->trigger();
    ClickAt(S().points.PointX(10), S().points.PointY(10));
    Action("Centroid")->trigger();
    ClickParcel(1);  // the parcel and its link record
    Action("mnuOptionsParcelIds")->setChecked(true);
    In<QListWidget>("frmTesting", "lstItems")->setCurrentRow(1);
    Press("frmTesting", "cmdCama");
    Action("mnuCommandCadastralADD")->trigger();
    Action("mnuEditSurveys")->trigger();
    Action("mnuCommandCadastralIrregular")->trigger();
    S().sectionDefinitions.sections[6].CentreFlag = true;
    S().region.match.MatchPoints.at(1) = 5;  // a boundary test's match, drawn at every refresh
    S().region.match.MatchPointCount = 1;
    const char* windows[] = {"frmSelectedPoints", "frmTesting", "frmCamaParcel", "frmADD", "frmListSurveys", "frmTWP"};
    for (const char* name : windows) QVERIFY2(Form(name)->isVisible(), name);

    boxes_->answers.push_back(QMessageBox::No);
    Action("mnuFileClose")->trigger();
    QVERIFY(boxes_->Asked(kUnsavedQuestion));
    QCOMPARE(Bytes(Job(jobA_, ".IID")), iidA);
    for (const char* name : windows) QVERIFY2(!Form(name)->isVisible(), name);
    boxes_->texts.clear();
    Open(jobB_);
    std::map<QString, QByteArray> before = Files(jobB_);
    QCOMPARE(S().parcels.ParcelDirty, std::int16_t{0});
    QCOMPARE(S().SelectionCount, std::int16_t{0});
    QVERIFY(S().selection.PointList.empty() && S().selection.ParcelList().empty() && S().selection.LineList.empty());
    QCOMPARE(S().cama.LinkCount, std::int16_t{0});
    QCOMPARE(S().cama.CamaCount, std::int16_t{0});
    QVERIFY(S().cama.CamaParcelRows.empty());
    QVERIFY(S().calculations.Definitions.empty() && S().calculations.NotPoints.empty());
    QVERIFY(!S().sectionDefinitions.sections[6].CentreFlag);
    QCOMPARE(S().region.match.MatchPointCount, std::int16_t{0});
    QCOMPARE(S().ToolMode, ToolMode::ZoomPan);
    QCOMPARE(S().parcels.ParcelLine.get(1), Lines(Job(jobB_, ".IID"))[1]);

    // The picture is that of B opened in a program that never saw A.
    ViewWindow fresh(tools_);
    fresh.resize(W().size());
    fresh.show();
    fresh.Load();
    fresh.findChild<QAction*>(QStringLiteral("mnuOptionsParcel"))->trigger();
    fresh.findChild<QAction*>(QStringLiteral("mnuViewCama"))->setChecked(true);
    OpenJob(fresh.session(), Job(jobB_, ".def").toStdString(), "T12NR04E.def");
    QCOMPARE(W().canvas().Picture(), fresh.canvas().Picture());

    Action("mnuFileClose")->trigger();
    QVERIFY(!boxes_->Asked(kUnsavedQuestion));
    std::map<QString, QByteArray> after = Files(jobB_);
    // Open writes TEMP.JOB and the support files, and Close removes the support files.
    for (const char* written : {"TEMP.JOB", "Nad27.con", "Nad83.con", "Table.dat", "Zone.dat"}) {
      before.erase(QString::fromLatin1(written));
      after.erase(QString::fromLatin1(written));
    }
    QCOMPARE(after, before);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::SessionScenarios)
#include "session_scenarios_test.moc"
