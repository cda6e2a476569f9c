// The region console on the offscreen platform: the Regions menu entry, the listing edited by
// its buttons, Preview and Test with the match lines on the canvas, Details in the text window,
// and the enabled states that follow.

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <cstdio>

#include "app/view_window.h"
#include "message_boxes.h"
#include "model/text_file.h"
#include "regions/ui/region_forms.h"
#include "form_test_support.h"

namespace tessel {

class RegionFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->show();
    window_->Load();
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void menuEntryOpensTheConsole() {
    ViewWindow& w = *window_;
    auto* menu = w.findChild<QMenu*>(QStringLiteral("mnuRegions"));
    QVERIFY(menu);
    QCOMPARE(menu->title(), QStringLiteral("Regio&ns"));
    QAction* build = w.findChild<QAction*>(QStringLiteral("mnuRegionBuild"));
    QVERIFY(build);
    QCOMPARE(menu->actions().first(), build);
    build->trigger();
    auto* form = w.findChild<QWidget*>(QStringLiteral("frmRegion"));
    QVERIFY(form && form->isVisible());
    QCOMPARE(form->windowTitle(), QStringLiteral("Build / Edit  Region"));
    QCOMPARE(form->findChild<QPushButton*>(QStringLiteral("cmdMerge"))->toolTip(), QStringLiteral("Merge projects with TWPJOIN."));
    QVERIFY(!form->findChild<QPushButton*>(QStringLiteral("cmdTest"))->isEnabled());
    QVERIFY(!form->findChild<QPushButton*>(QStringLiteral("cmdDetails"))->isEnabled());
  }

  void previewAndTestDrawTheMatchLines() {
    ViewWindow& w = *window_;
    const std::string dir = QDir(jobs_->path()).absolutePath().toStdString() + "/";
    const auto cor = [](const char* id, const char* x, const char* y) {
      std::string line = std::string(" ") + id;
      line.resize(19, ' ');
      std::string xs = x, ys = y;
      return line + std::string(12 - xs.size(), ' ') + xs + " " + std::string(13 - ys.size(), ' ') + ys;
    };
    WriteFileBytes(dir + "T1.COR", JoinCrLf({cor("100100", "1000.000", "2000.000"), cor("100200", "1000.000", "2100.000")}));
    WriteFileBytes(dir + "T2.COR", JoinCrLf({cor("100100", "1000.200", "2000.100"), cor("300300", "5000.000", "2100.000")}));
    WriteFileBytes(dir + "REG.how", "T1\r\n\r\nT2\r\n");
    UseRegion(dir);
    const Session& s = w.session();

    w.findChild<QAction*>(QStringLiteral("mnuRegionBuild"))->trigger();
    auto* form = w.findChild<QWidget*>(QStringLiteral("frmRegion"));
    auto* list = form->findChild<QListWidget*>(QStringLiteral("lstRegion"));
    QCOMPARE(list->count(), 2);
    QCOMPARE(form->findChild<QLineEdit*>(QStringLiteral("txtTolerance"))->text(), QStringLiteral("10"));

    // A keyword before the selected row, saved at once.
    list->setCurrentRow(1);
    form->findChild<QPushButton*>(QStringLiteral("cmdNoRel"))->click();
    QCOMPARE(list->item(1)->text(), QStringLiteral("NOREL"));
    std::string how;
    QVERIFY(ReadFileBytes(dir + "REG.how", how));
    QCOMPARE(QString::fromStdString(how), QStringLiteral("T1\r\nNOREL\r\nT2\r\n"));

    form->findChild<QPushButton*>(QStringLiteral("cmdPreview"))->click();
    QCOMPARE(s.points.PointCount(), std::int16_t(4));
    QCOMPARE(form->findChild<QLabel*>(QStringLiteral("lblStatus1"))->text(), QStringLiteral("Total Points = 4. Total Lines = 0."));
    QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdTest"))->isEnabled());
    form->findChild<QPushButton*>(QStringLiteral("cmdTest"))->click();
    QCOMPARE(s.region.match.MatchPointCount, std::int16_t(2));
    QVERIFY(form->findChild<QCheckBox*>(QStringLiteral("chkLines"))->isChecked());
    QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdDetails"))->isEnabled());
    QCOMPARE(form->findChild<QLabel*>(QStringLiteral("lblStatus2"))->text(), QStringLiteral("Points matching: 2. Lines: 0"));

    form->findChild<QPushButton*>(QStringLiteral("cmdDetails"))->click();
    auto* report = w.findChild<QWidget*>(QStringLiteral("frmReport"));
    QVERIFY(report->isVisible());
    QCOMPARE(report->windowTitle(), QStringLiteral("Matching Line Details"));
    QVERIFY(report->findChild<QPlainTextEdit*>()->toPlainText().contains(QStringLiteral(" Matching Lines: ")));
  }

  // A large region is compared beside the form: the form's timers fire meanwhile, the strip at
  // its foot tells the comparing, and a cancel keeps no match and says so; the lines are drawn
  // once a test has run to its end.
  void aLargeRegionIsComparedBesideTheFormWithACancel() {
    ViewWindow& w = *window_;
    const std::string dir = QDir(jobs_->path()).absolutePath().toStdString() + "/";
    for (const char* project : {"T1", "T2"}) {
      std::vector<std::string> rows;
      for (int k = 0; k < 8000; ++k) {
        char row[64];
        std::snprintf(row, sizeof row, " %06d            %12.3f %13.3f", 100000 + k, 1000.0 + k, 2000.0 + k % 7);
        rows.push_back(row);
      }
      WriteFileBytes(dir + project + ".COR", JoinCrLf(rows));
    }
    WriteFileBytes(dir + "REG.how", "T1\r\nT2\r\n");
    UseRegion(dir);
    const Session& s = w.session();
    w.findChild<QAction*>(QStringLiteral("mnuRegionBuild"))->trigger();
    auto* form = w.findChild<QWidget*>(QStringLiteral("frmRegion"));
    form->findChild<QPushButton*>(QStringLiteral("cmdPreview"))->click();
    QCOMPARE(s.points.PointCount(), std::int16_t(16000));
    // Every point lies within the tolerance of every other.
    form->findChild<QLineEdit*>(QStringLiteral("txtTolerance"))->setText(QStringLiteral("100000"));

    for (const bool cancel : {true, false}) {
      int ticks = 0;
      bool told = false;
      QTimer tick;
      tick.setInterval(5);
      connect(&tick, &QTimer::timeout, this, [&] {
        ++ticks;
        auto* bar = form->findChild<QProgressBar*>(QStringLiteral("prgLongWork"));
        if (told || bar == nullptr || !bar->format().startsWith(QStringLiteral("Comparing coordinates"))) return;
        told = true;
        if (cancel) form->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))->click();
      });
      tick.start();
      form->findChild<QPushButton*>(QStringLiteral("cmdTest"))->click();
      tick.stop();
      QVERIFY(ticks > 1);
      QVERIFY2(told, "no progress shown");
      QVERIFY(!form->findChild<QProgressBar*>(QStringLiteral("prgLongWork")));
      QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdTest"))->isEnabled());
      QVERIFY(w.menuBar()->isEnabled());
      if (cancel) {
        QCOMPARE(s.region.match.MatchPointCount, std::int16_t(0));
        QCOMPARE(form->findChild<QLabel*>(QStringLiteral("lblStatus2"))->text(), QStringLiteral("Test cancelled: no match was kept."));
        QVERIFY(!form->findChild<QPushButton*>(QStringLiteral("cmdDetails"))->isEnabled());
        QVERIFY(!form->findChild<QCheckBox*>(QStringLiteral("chkLines"))->isChecked());
      } else {
        QCOMPARE(s.region.match.MatchPointCount, std::int16_t(16000));
        QCOMPARE(form->findChild<QLabel*>(QStringLiteral("lblStatus2"))->text(), QStringLiteral("Points matching: 16000. Lines: 0"));
        QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdDetails"))->isEnabled());
        QVERIFY(form->findChild<QCheckBox*>(QStringLiteral("chkLines"))->isChecked());
      }
    }
  }

  // With the suite's tools missing, Merge and Adjust say in a box that nothing was run, and the
  // steps after them stay closed.
  void aMissingToolIsToldAndOpensNoStep() {
    ViewWindow& w = *window_;
    const std::string dir = QDir(jobs_->path()).absolutePath().toStdString() + "/";
    WriteFileBytes(dir + "REG.how", "T1\r\nT2\r\n");
    WriteFileBytes(dir + "REG.lsa", "merged before\r\n");
    UseRegion(dir);
    MessageBoxes answered;
    const QStringList& boxes = answered.texts;
    w.findChild<QAction*>(QStringLiteral("mnuRegionBuild"))->trigger();
    auto* form = w.findChild<RegionForm*>(QStringLiteral("frmRegion"));
    const auto button = [form](const char* name) { return form->findChild<QPushButton*>(QString::fromLatin1(name)); };
    QVERIFY(button("cmdAdjust")->isEnabled());
    QVERIFY(!button("cmdParse")->isEnabled());
    button("cmdMerge")->click();
    button("cmdAdjust")->click();
    QCOMPARE(boxes.size(), 2);
    QVERIFY2(boxes[0].contains(QStringLiteral("twpjoin")) && boxes[0].contains(QStringLiteral("Nothing was run.")), qPrintable(boxes[0]));
    QVERIFY2(boxes[1].contains(QStringLiteral("fitmain.exe: not found in ToolFolder")), qPrintable(boxes[1]));
    QVERIFY(button("cmdAdjust")->isEnabled());
    QVERIFY(!button("cmdParse")->isEnabled());
    QVERIFY(!button("cmdUpdate")->isEnabled());
  }

  // Merge, Adjust, Parse and Reliabilities with the stand-in suite, through the real launches.
  void workflowRunsTheSuiteAndRestoresTheRegion() {
    ViewWindow& w = *window_;
    const QString tools = tools_->path();
    for (const char* name : {"twpjoin", "fitmain", "twpsplit", "twprel"}) {
      QVERIFY(InstallStandin(tools, QString::fromLatin1(name) + QStringLiteral(".exe")));
    }
    const std::string dir = QDir(jobs_->path()).absolutePath().toStdString() + "/";
    const auto cor = [](const char* id, const char* x, const char* y) {
      std::string line = std::string(" ") + id;
      line.resize(19, ' ');
      std::string xs = x, ys = y;
      return line + std::string(12 - xs.size(), ' ') + xs + " " + std::string(13 - ys.size(), ' ') + ys;
    };
    WriteFileBytes(dir + "T1.COR", JoinCrLf({cor("100100", "1000.000", "2000.000"), cor("100200", "1000.000", "2100.000")}));
    WriteFileBytes(dir + "T2.COR", JoinCrLf({cor("100100", "1000.200", "2000.100"), cor("300300", "5000.000", "2100.000")}));
    WriteFileBytes(dir + "REG.how", "T1\r\nFIXED\r\nT2\r\n");
    WriteFileBytes(dir + "REG.def", JoinCrLf({"REG", "", "", "2", "", "", "Y"}));
    // The region as its opening leaves it: TEMP.JOB names it for the tools.
    WriteFileBytes(dir + "TEMP.JOB", "REG\r\n");
    UseRegion(dir);

    // Every message box of the run is answered with its default button, and noted.
    MessageBoxes answered;
    const QStringList& boxes = answered.texts;
    w.findChild<QAction*>(QStringLiteral("mnuRegionBuild"))->trigger();
    auto* form = w.findChild<RegionForm*>(QStringLiteral("frmRegion"));
    const auto click = [form](const char* name) {
      auto* button = form->findChild<QPushButton*>(QString::fromLatin1(name));
      QVERIFY(button->isEnabled());
      button->click();
    };
    click("cmdMerge");
    QVERIFY(QFile::exists(QString::fromStdString(dir + "REG.lsa")));
    QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdAdjust"))->isEnabled());
    QVERIFY(!form->findChild<QPushButton*>(QStringLiteral("cmdParse"))->isEnabled());
    click("cmdAdjust");
    QVERIFY(QFile::exists(QString::fromStdString(dir + "REG.cor")));
    click("cmdParse");
    // The merge kept T1's 100100, which the parse wrote into T2.
    std::string t2;
    QVERIFY(ReadFileBytes(dir + "T2.COR", t2));
    QVERIFY(QString::fromStdString(t2).contains(QStringLiteral("1000.000")));
    QVERIFY(form->findChild<QPushButton*>(QStringLiteral("cmdUpdate"))->isEnabled());

    std::string lsa;
    QVERIFY(ReadFileBytes(dir + "REG.lsa", lsa));
    click("cmdReliabilities");
    auto* panel = w.findChild<QWidget*>(QStringLiteral("frmContinue"));
    QVERIFY(panel && panel->isVisible());
    std::string how;
    QVERIFY(ReadFileBytes(dir + "tempjob.how", how));
    QCOMPARE(QString::fromStdString(how), QStringLiteral("T1\r\nFIXED\r\nT2\r\n"));
    panel->findChild<QPushButton*>(QStringLiteral("cmdContinue"))->click();
    QVERIFY(!panel->isVisible());
    QVERIFY(ReadFileBytes(dir + "REG.how", how));
    QCOMPARE(QString::fromStdString(how), QStringLiteral("T1\r\nFIXED\r\nT2\r\n"));
    std::string after;
    QVERIFY(ReadFileBytes(dir + "REG.lsa", after));
    QCOMPARE(after, lsa);
    std::string log;
    QVERIFY(ReadFileBytes(dir + "standin.log", log));
    QStringList ran;
    for (const QString& line : QString::fromStdString(log).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
      ran << line.section(QLatin1Char('\t'), 0, 0) + QLatin1Char(':') + line.section(QLatin1Char('\t'), 2, 2);
    }
    QCOMPARE(ran, (QStringList{QStringLiteral("twpjoin:REG"), QStringLiteral("fitmain:REG"), QStringLiteral("twpsplit:REG"),
                                 QStringLiteral("twpjoin:REG"), QStringLiteral("twprel:REG")}));
    QVERIFY(QFile::exists(QString::fromStdString(dir + "REG.rel")));
    QVERIFY(boxes.filter(QStringLiteral("Your regional files for REG have been backed up.")).size() == 1);
  }

 private:
  // The region REG in `dir` as its opening leaves the session.
  void UseRegion(const std::string& dir) {
    Session& s = window_->session();
    s.JobFolder = dir;
    s.JobBase = dir + "REG";
    s.JobName = "REG";
    s.CurrentFolder = dir;
    s.RegionJobFolder = dir;
    s.RegionJobName = "REG";
  }

  std::unique_ptr<QTemporaryDir> tools_;
  std::unique_ptr<QTemporaryDir> jobs_;
  std::unique_ptr<ViewWindow> window_;
};

}  // namespace tessel

QTEST_MAIN(tessel::RegionFormsTest)
#include "region_forms_test.moc"
