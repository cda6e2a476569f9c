// The region console on the offscreen platform: the Regions menu entry, the listing edited by
// its buttons, Preview and Test with the match lines on the canvas, Details in the text window,
// and the enabled states that follow.

#include <cstdio>

#include "regions/ui/region_forms.h"
#include "form_test_support.h"

namespace tessel {
namespace {

// A .COR line: the id from column 2, x to column 31, y to column 45.
std::string Cor(const char* id, const char* x, const char* y) {
  std::string line = std::string(" ") + id;
  line.resize(19, ' ');
  const std::string xs = x, ys = y;
  return line + std::string(12 - xs.size(), ' ') + xs + " " + std::string(13 - ys.size(), ' ') + ys;
}

}  // namespace

class RegionFormsTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  // The region REG in the jobs folder, its listing `how`, as its opening leaves the session;
  // gives the folder. With `twoProjects`, T1 and T2 share station 100100, 0.22 apart.
  std::string UseRegion(const char* how, bool twoProjects) {
    const std::string dir = QDir(jobs_).absolutePath().toStdString() + "/";
    if (twoProjects) {
      WriteFileBytes(dir + "T1.COR", JoinCrLf({Cor("100100", "1000.000", "2000.000"), Cor("100200", "1000.000", "2100.000")}));
      WriteFileBytes(dir + "T2.COR", JoinCrLf({Cor("100100", "1000.200", "2000.100"), Cor("300300", "5000.000", "2100.000")}));
    }
    WriteFileBytes(dir + "REG.how", how);
    SetJob(S(), dir, "REG");
    S().RegionJobFolder = dir;
    S().RegionJobName = "REG";
    W().findChild<QAction*>(QStringLiteral("mnuRegionBuild"))->trigger();
    return dir;
  }
  template <typename T = QPushButton>
  T* Region(const char* name) { return In<T>("frmRegion", name); }

 private slots:
  void init() {
    MakeFolders(false);
    StartWindow();
  }
  void cleanup() { StopWindow(); }

  // The Regions menu's first entry opens the console, whose listing is edited by its buttons;
  // Preview and Test draw the match lines, and Details shows them in the text window.
  void theConsoleListsPreviewsAndTestsTheRegion() {
    auto* menu = W().findChild<QMenu*>(QStringLiteral("mnuRegions"));
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Regio&ns"));
    QCOMPARE(menu->actions().first(), Action("mnuRegionBuild"));
    const std::string dir = UseRegion("T1\r\n\r\nT2\r\n", true);
    QVERIFY(Form("frmRegion")->isVisible());
    QCOMPARE(Form("frmRegion")->windowTitle(), QStringLiteral("Build / Edit  Region"));
    QCOMPARE(Region("cmdMerge")->toolTip(), QStringLiteral("Merge projects with TWPJOIN."));
    QVERIFY(!Region("cmdTest")->isEnabled() && !Region("cmdDetails")->isEnabled());
    auto* list = Region<QListWidget>("lstRegion");
    QCOMPARE(list->count(), 2);
    QCOMPARE(Region<QLineEdit>("txtTolerance")->text(), QStringLiteral("10"));

    // A keyword before the selected row, saved at once.
    list->setCurrentRow(1);
    Region("cmdNoRel")->click();
    QCOMPARE(list->item(1)->text(), QStringLiteral("NOREL"));
    QCOMPARE(Bytes(QString::fromStdString(dir + "REG.how")), QByteArray("T1\r\nNOREL\r\nT2\r\n"));

    Region("cmdPreview")->click();
    QCOMPARE(S().points.PointCount(), std::int16_t(4));
    QCOMPARE(Region<QLabel>("lblStatus1")->text(), QStringLiteral("Total Points = 4. Total Lines = 0."));
    QVERIFY(Region("cmdTest")->isEnabled());
    Region("cmdTest")->click();
    QCOMPARE(S().region.match.MatchPointCount, std::int16_t(2));
    QVERIFY(Region<QCheckBox>("chkLines")->isChecked() && Region("cmdDetails")->isEnabled());
    QCOMPARE(Region<QLabel>("lblStatus2")->text(), QStringLiteral("Points matching: 2. Lines: 0"));

    Region("cmdDetails")->click();
    QVERIFY(Form("frmReport")->isVisible());
    QCOMPARE(Form("frmReport")->windowTitle(), QStringLiteral("Matching Line Details"));
    QVERIFY(Form("frmReport")->findChild<QPlainTextEdit*>()->toPlainText().contains(QStringLiteral(" Matching Lines: ")));
  }

  // A large region is compared beside the form: the form's timers fire meanwhile, the strip at
  // its foot tells the comparing, and a cancel keeps no match and says so; the lines are drawn
  // once a test has run to its end.
  void aLargeRegionIsComparedBesideTheFormWithACancel() {
    const std::string dir = QDir(jobs_).absolutePath().toStdString() + "/";
    for (const char* project : {"T1", "T2"}) {
      std::vector<std::string> rows;
      for (int k = 0; k < 8000; ++k) {
        char row[64];
        std::snprintf(row, sizeof row, " %06d            %12.3f %13.3f", 100000 + k, 1000.0 + k, 2000.0 + k % 7);
        rows.push_back(row);
      }
      WriteFileBytes(dir + project + ".COR", JoinCrLf(rows));
    }
    UseRegion("T1\r\nT2\r\n", false);
    Region("cmdPreview")->click();
    QCOMPARE(S().points.PointCount(), std::int16_t(16000));
    // Every point lies within the tolerance of every other.
    Region<QLineEdit>("txtTolerance")->setText(QStringLiteral("100000"));

    for (const bool cancel : {true, false}) {
      bool told = false;
      const auto look = [&] {
        QProgressBar* bar = LongWorkBar(Form("frmRegion"));
        if (told || bar == nullptr || !bar->format().startsWith(QStringLiteral("Comparing coordinates"))) return;
        told = true;
        if (cancel) CancelLongWork(Form("frmRegion"));
      };
      QVERIFY(Ticking(5, look, [this] { Region("cmdTest")->click(); }) > 1);
      QVERIFY2(told, "no progress shown");
      QVERIFY(!LongWorkBar(Form("frmRegion")) && Region("cmdTest")->isEnabled() && W().menuBar()->isEnabled());
      QCOMPARE(S().region.match.MatchPointCount, std::int16_t(cancel ? 0 : 16000));
      QCOMPARE(Region<QLabel>("lblStatus2")->text(), cancel ? QStringLiteral("Test cancelled: no match was kept.")
                                                            : QStringLiteral("Points matching: 16000. Lines: 0"));
      QCOMPARE(Region("cmdDetails")->isEnabled(), !cancel);
      QCOMPARE(Region<QCheckBox>("chkLines")->isChecked(), !cancel);
    }
  }

  // With the suite's tools missing, Merge and Adjust say in a box that nothing was run, and the
  // steps after them stay closed.
  void aMissingToolIsToldAndOpensNoStep() {
    WriteFileBytes(QDir(jobs_).absolutePath().toStdString() + "/REG.lsa", "merged before\r\n");
    UseRegion("T1\r\nT2\r\n", false);
    MessageBoxes answered;
    const QStringList& boxes = answered.texts;
    QVERIFY(Region("cmdAdjust")->isEnabled() && !Region("cmdParse")->isEnabled());
    Region("cmdMerge")->click();
    Region("cmdAdjust")->click();
    QCOMPARE(boxes.size(), 2);
    QVERIFY2(boxes[0].contains(QStringLiteral("twpjoin")) && boxes[0].contains(QStringLiteral("Nothing was run.")),
             qPrintable(boxes[0]));
    QVERIFY2(boxes[1].contains(QStringLiteral("fitmain.exe: not found in ToolFolder")), qPrintable(boxes[1]));
    QVERIFY(Region("cmdAdjust")->isEnabled() && !Region("cmdParse")->isEnabled() && !Region("cmdUpdate")->isEnabled());
  }

  // Merge, Adjust, Parse and Reliabilities with the stand-in suite, through the real launches.
  void workflowRunsTheSuiteAndRestoresTheRegion() {
    for (const char* name : {"twpjoin", "fitmain", "twpsplit", "twprel"}) {
      QVERIFY(InstallStandin(tools_, QString::fromLatin1(name) + QStringLiteral(".exe")));
    }
    const QString dir = QDir(jobs_).absolutePath() + "/";
    QVERIFY(WriteText(dir + "REG.def", CrLf({"REG", "", "", "2", "", "", "Y"})));
    // The region as its opening leaves it: TEMP.JOB names it for the tools.
    QVERIFY(WriteText(dir + "TEMP.JOB", "REG\r\n"));
    // Every message box of the run is answered with its default button, and noted.
    MessageBoxes answered;
    UseRegion("T1\r\nFIXED\r\nT2\r\n", true);
    const auto click = [this](const char* name) {
      QVERIFY(Region(name)->isEnabled());
      Region(name)->click();
    };
    click("cmdMerge");
    QVERIFY(QFile::exists(dir + "REG.lsa") && Region("cmdAdjust")->isEnabled() && !Region("cmdParse")->isEnabled());
    click("cmdAdjust");
    QVERIFY(QFile::exists(dir + "REG.cor"));
    click("cmdParse");
    // The merge kept T1's 100100, which the parse wrote into T2.
    QVERIFY(Bytes(dir + "T2.COR").contains("1000.000") && Region("cmdUpdate")->isEnabled());

    const QByteArray lsa = Bytes(dir + "REG.lsa");
    QVERIFY(lsa != "<missing>");
    click("cmdReliabilities");
    QVERIFY(Form("frmContinue")->isVisible());
    QCOMPARE(Bytes(dir + "tempjob.how"), QByteArray("T1\r\nFIXED\r\nT2\r\n"));
    Press("frmContinue", "cmdContinue");
    QVERIFY(!Form("frmContinue")->isVisible());
    QCOMPARE(Bytes(dir + "REG.how"), QByteArray("T1\r\nFIXED\r\nT2\r\n"));
    QCOMPARE(Bytes(dir + "REG.lsa"), lsa);
    QStringList ran;
    for (const QString& line : QString::fromLocal8Bit(Bytes(dir + "standin.log")).split('\n', Qt::SkipEmptyParts)) {
      ran << line.section('\t', 0, 0) + ':' + line.section('\t', 2, 2);
    }
    QCOMPARE(ran, QStringList({"twpjoin:REG", "fitmain:REG", "twpsplit:REG", "twpjoin:REG", "twprel:REG"}));
    QVERIFY(QFile::exists(dir + "REG.rel"));
    QCOMPARE(answered.texts.filter(QStringLiteral("Your regional files for REG have been backed up.")).size(), 1);
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::RegionFormsTest)
#include "region_forms_test.moc"
