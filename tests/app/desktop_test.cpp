// The desktop as a user meets it, with the sample job on the offscreen platform: a square map in
// any window, failed launches in the Tool Log, printing without a printer and to PDF, first-time
// tool windows beside the main window, the wheel zooming about the pointer, the word in the
// status bar after a command, the notice of a tool that could not run, and the legend.

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QPrinter>
#include <QProgressBar>
#include <QSignalSpy>
#include <QThread>
#include <QToolBar>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTreeWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest>

#include <utility>

#include "app/legend_dock.h"
#include "app/notice_bar.h"
#include "app/tool_log_dock.h"
#include "app/view_window.h"
#include "forms/ui/long_work.h"
#include "job/load_sequence.h"
#include "viewer/drawing.h"
#include "form_test_support.h"

namespace tessel {

class DesktopTest : public QObject {
  Q_OBJECT

 private:
  ViewWindow& W() { return *window_; }
  QAction* Action(const char* name) { return W().findChild<QAction*>(QString::fromLatin1(name)); }
  QString Panel(int n) { return W().findChild<QLabel*>(QStringLiteral("Panel%1").arg(n))->text(); }
  void Open() {
    OpenJob(W().session(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
  }
  // Pixels of one job unit across and up on the canvas.
  double UnitRatio() {
    const ViewState& v = W().session().view;
    const QWidget& c = W().canvas();
    return (c.width() / std::fabs(double(v.ScaleWidth))) / (c.height() / std::fabs(double(v.ScaleHeight)));
  }
  // What the canvas shows.
  QImage Shown() { return W().canvas().grab().toImage().convertToFormat(QImage::Format_RGB32); }
  // The present view painted by a refresh straight onto an image of the canvas's size.
  QImage Direct() {
    CanvasWidget& c = W().canvas();
    QImage direct(c.size(), QImage::Format_RGB32);
    c.PaintOn(&direct);
    RefreshView(W().session());
    c.EndPaintOn();
    return direct;
  }
  void Wheel(QPointF at, int notches) {
    CanvasWidget& c = W().canvas();
    QWheelEvent wheel(at, c.mapToGlobal(at), QPoint(), QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&c, &wheel);
  }
  void Mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
    CanvasWidget& c = W().canvas();
    QMouseEvent event(type, at, c.mapToGlobal(at), button, held, Qt::NoModifier);
    QApplication::sendEvent(&c, &event);
  }
  // Closes the next message box, keeping its text.
  void AnswerNextBox(QString* text) {
    QTimer::singleShot(0, [text] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      *text = box->text();
      box->accept();
    });
  }

  std::unique_ptr<QTemporaryDir> tools_, jobs_;
  std::unique_ptr<ViewWindow> window_;

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    QVERIFY(CopySampleJob(jobs_->path()));
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->resize(1000, 750);
    window_->show();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    window_->Load();
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void theWindowOpensOnMostOfTheScreenThenWhereItWasLeft() {
    // The first time: nine tenths of the screen's height, the canvas in the view's shape.
    ViewWindow first(tools_->path());
    first.PlaceOnScreen();
    first.show();
    QVERIFY(QTest::qWaitForWindowExposed(&first));
    const QRect room = first.screen()->availableGeometry();
    QVERIFY2(first.frameGeometry().height() >= room.height() * 85 / 100,
             qPrintable(QStringLiteral("%1 of %2").arg(first.frameGeometry().height()).arg(room.height())));
    QVERIFY(room.contains(first.frameGeometry().center()));
    // Moved and made smaller, then closed: the next start opens it there.
    // The legend shows the first time, so that a new user finds it; hidden, it stays hidden.
    QVERIFY(first.legend().isVisible());
    first.findChild<QAction*>(QStringLiteral("mnuViewLegend"))->trigger();
    QVERIFY(first.legend().isHidden());
    first.setGeometry(QRect(room.topLeft() + QPoint(30, 40), QSize(640, 520)));
    QCoreApplication::processEvents();
    const QRect left = first.geometry();
    first.close();
    QVERIFY(QFileInfo::exists(QDir(tools_->path()).filePath(QStringLiteral("tessel-window.ini"))));
    ViewWindow next(tools_->path());
    next.PlaceOnScreen();
    QCOMPARE(next.geometry().size(), left.size());
    QCOMPARE(next.geometry().topLeft(), left.topLeft());
    QVERIFY(next.legend().isHidden());
  }

  void theMapIsSquareInAnyWindowAndWhenMaximised() {
    Open();
    QVERIFY(std::fabs(UnitRatio() - 1.0) < 0.01);
    // The window keeps the canvas in the view's own shape, so the view's values hold.
    QVERIFY2(std::abs(W().canvas().width() - std::lround(W().canvas().height() * 1.33333)) <= 1, qPrintable(QStringLiteral("%1x%2 of %3x%4").arg(W().canvas().width()).arg(W().canvas().height()).arg(W().width()).arg(W().height())));
    for (const QSize size : {QSize(1024, 600), QSize(700, 900), QSize(1400, 800)}) {
      W().resize(size);
      QCoreApplication::processEvents();
      QVERIFY2(std::fabs(UnitRatio() - 1.0) < 0.01, qPrintable(QStringLiteral("%1x%2").arg(size.width()).arg(size.height())));
    }
    W().showMaximized();
    QTRY_VERIFY(W().isMaximized());
    QCoreApplication::processEvents();
    QVERIFY(std::fabs(UnitRatio() - 1.0) < 0.01);
    Action("mnuZoomExtents")->trigger();
    QVERIFY(std::fabs(UnitRatio() - 1.0) < 0.01);
  }

  void aMissingToolIsInTheToolLogAndTheStatusBar() {
    Open();
    QVERIFY(W().session().toolLog.entries.empty());
    Action("mnuFileNetsort")->trigger();  // no tools stand in the program's folder
    const auto& entries = W().session().toolLog.entries;
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(entries[0].outcome, LaunchOutcome::NotFound);
    QCOMPARE(QString::fromStdString(entries[0].reason), QStringLiteral("not found in ToolFolder"));
    QVERIFY(Panel(4).endsWith(QStringLiteral(": not found in ToolFolder")));
    // The View menu shows the log; its text holds the entry.
    QAction* show = Action("mnuViewToolLog");
    QVERIFY(show && !W().toolLog().isVisible());
    show->trigger();
    QVERIFY(W().toolLog().isVisible());
    const QString text = W().toolLog().findChild<QPlainTextEdit*>(QStringLiteral("txtToolLog"))->toPlainText();
    QVERIFY(text.contains(QStringLiteral("not found in ToolFolder")));
    QVERIFY(text.contains(QStringLiteral("netsort"), Qt::CaseInsensitive));
    // Closed by its own button, the tick follows.
    W().toolLog().close();
    QVERIFY(!show->isChecked());
  }

  void aWindowsToolWithoutItsRunnerIsSaidOnceOverTheCanvas() {
    // Two tools whose header says Windows, and a runner in tessel-tools.ini that is not there.
    QByteArray header(0x100, '\0');
    header[0] = 'M';
    header[1] = 'Z';
    header[0x3C] = char(0x80);
    header.replace(0x80, 4, QByteArray("PE\0\0", 4));
    const QString runner = QDir(tools_->path()).filePath(QStringLiteral("no wine"));
    for (const auto& [name, bytes] : {std::pair{"netsort.exe", header}, std::pair{"jobprops.exe", header},
                                      std::pair{"tessel-tools.ini", "runner=" + runner.toLocal8Bit() + "\r\n"}}) {
      QFile file(QDir(tools_->path()).filePath(QString::fromLatin1(name)));
      QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    W().Load();
    Open();
    for (const char* entry : {"mnuFileNetsort", "mnuFileNetsort", "mnuFileProperties"}) Action(entry)->trigger();
    const auto& entries = W().session().toolLog.entries;
    QCOMPARE(entries.size(), std::size_t(3));
    for (const ToolLogEntry& e : entries) QCOMPARE(e.outcome, LaunchOutcome::NoRunner);
    QCOMPARE(W().findChild<NoticeBar*>(QStringLiteral("barNotice"))->Text(),
             "netsort.exe is a Windows program; its runner " + runner +
                 " (Configuration Options) was not found. The Tool Log (View > Tool Log) lists every start of this "
                 "session.");
    QCOMPARE(Panel(4), "jobprops.exe is a Windows program; its runner " + runner + " (Configuration Options) was not found");
  }

  void aPrintWithoutPrinterSaysSoAndAPdfPrintFollows() {
    Open();
    QString said;
    AnswerNextBox(&said);
    W().Print();
    QVERIFY2(said.startsWith(QStringLiteral("Unable to print")), qPrintable(said));
    QPrinter pdf(QPrinter::HighResolution);
    pdf.setOutputFormat(QPrinter::PdfFormat);
    const QString file = jobs_->filePath(QStringLiteral("map.pdf"));
    pdf.setOutputFileName(file);
    std::string reason;
    const ViewState before = W().session().view;
    QVERIFY2(W().PrintOn(pdf, reason), reason.c_str());
    QFile written(file);
    QVERIFY(written.open(QIODevice::ReadOnly));
    const QByteArray bytes = written.readAll();
    QVERIFY(bytes.startsWith("%PDF") && bytes.size() > 2000);
    // The screen's view is back as it was.
    QCOMPARE(W().session().view.ScaleWidth, before.ScaleWidth);
    QCOMPARE(W().session().view.ScaleLeft, before.ScaleLeft);
  }

  // The list windows, the Tool Box and Project Information open against the main window's right
  // edge, below its menu bar, the first time.
  void aFirstTimeFormStaysOffTheMenuBar() {
    Open();
    QVERIFY(!QFile::exists(tools_->filePath(QStringLiteral("ts$002.cfg"))));
    Action("Select")->trigger();
    Action("mnuViewToolbox")->trigger();
    Action("mnuViewTextWindow")->trigger();
    const QRect menu(W().menuBar()->mapToGlobal(QPoint(0, 0)), W().menuBar()->size());
    for (const char* name : {"frmSelectedPoints", "frmToolbox", "frmReport"}) {
      auto* form = W().findChild<QWidget*>(QString::fromLatin1(name));
      QVERIFY2(form && form->isVisible(), name);
      QVERIFY2(!form->frameGeometry().intersects(menu),
               qPrintable(QStringLiteral("%1 at %2,%3, menu bar %4,%5 %6x%7")
                              .arg(QString::fromLatin1(name)).arg(form->x()).arg(form->y()).arg(menu.x()).arg(menu.y())
                              .arg(menu.width()).arg(menu.height())));
    }
  }

  void theWheelZoomsAboutThePointer() {
    Open();
    CanvasWidget& c = W().canvas();
    const QPointF at(c.width() * 0.3, c.height() * 0.6);
    const QPointF world = c.ToWorld(at);
    const float width = W().session().view.ScaleWidth;
    QWheelEvent wheel(at, c.mapToGlobal(at), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&c, &wheel);
    QVERIFY(W().session().view.ScaleWidth < width * 0.85f);
    const QPointF again = c.ToPixel(world.x(), world.y());
    QVERIFY(std::fabs(again.x() - at.x()) < 0.5 && std::fabs(again.y() - at.y()) < 0.5);
    // The coordinates under the pointer show at the right end of the status bar.
    QTest::mouseMove(&c, at.toPoint());
    const QString shown = W().findChild<QLabel*>(QStringLiteral("lblCoordinates"))->text();
    QVERIFY2(shown.startsWith(QStringLiteral("N ")) && shown.contains(QStringLiteral("  E ")), qPrintable(shown));
  }

  // The wheel and a drag answer at once from the last picture, and the one refresh that follows
  // paints exactly what a refresh of the view paints, for every layer set and view tried.
  void theWheelAndADragMoveThePictureAndRestOnTheDirectPainting() {
    Open();
    Action("Zoom")->trigger();
    CanvasWidget& c = W().canvas();
    const QSize size = c.size();
    const std::vector<std::vector<const char*>> layerSets = {
        {},
        {"mnuOptionsID", "mnuOptionsLinesLXN"},
        {"mnuViewLinesRaw", "mnuOptionsParcelFull", "mnuOptionsMultiAtt"},
        {"mnuViewRPO", "mnuOptionsControl", "mnuViewAllLabels"},
    };
    int step = 0;
    for (const auto& entries : layerSets) {
      for (const char* entry : entries) Action(entry)->trigger();
      QCOMPARE(Shown(), Direct());
      const QImage rest = c.Picture();
      QVERIFY(!c.Previewing());

      // Two notches in about a point, then one out elsewhere: no refresh until the wheel settles.
      const QPointF at(size.width() * (0.3 + 0.1 * step), size.height() * (0.6 - 0.1 * step));
      Wheel(at, 1);
      Wheel(at, 1);
      Wheel(QPointF(size.width() * 0.5, size.height() * 0.4), -1);
      QVERIFY(c.Previewing());
      QCOMPARE(c.Picture(), rest);
      QVERIFY(Shown() != rest);
      QTRY_VERIFY(!c.Previewing());
      QVERIFY(c.Picture() != rest);
      QCOMPARE(Shown(), Direct());

      // A drag shows the picture moved by the pointer's path; the release pans and refreshes.
      const QImage dragged = c.Picture();
      const QPoint from(size.width() / 2, size.height() / 2), by(40 + 15 * step, -25 - 10 * step);
      Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
      Mouse(QEvent::MouseMove, from + by / 2, Qt::NoButton, Qt::LeftButton);
      Mouse(QEvent::MouseMove, from + by, Qt::NoButton, Qt::LeftButton);
      const QRect inner(100, 100, size.width() - 200, size.height() - 200);
      QCOMPARE(Shown().copy(inner.translated(by)), dragged.copy(inner));
      Mouse(QEvent::MouseButtonRelease, from + by, Qt::LeftButton, Qt::NoButton);
      QCOMPARE(Shown(), Direct());
      ++step;
    }
  }

  // Point names that would overprint are left out and counted in the status bar; View > Draw All
  // Labels draws them all and empties the count.
  void overprintingLabelsAreCountedAndCanAllBeDrawn() {
    Open();
    auto* hidden = W().findChild<QLabel*>(QStringLiteral("lblHiddenLabels"));
    QVERIFY(hidden);
    QCOMPARE(hidden->text(), QString());
    Action("mnuOptionsID")->trigger();
    QVERIFY(W().session().checks.mnuOptionsID);
    const QRegularExpression count(QStringLiteral("^(\\d+) labels hidden$"));
    const QRegularExpressionMatch apart = count.match(hidden->text());
    QVERIFY2(apart.hasMatch(), qPrintable(hidden->text()));
    const int left = apart.captured(1).toInt();
    QVERIFY(left > 0 && left < W().session().points.PointCount());

    QAction* all = Action("mnuViewAllLabels");
    QVERIFY(all && all->isCheckable() && !all->isChecked());
    all->trigger();
    QVERIFY(all->isChecked() && W().session().checks.mnuViewAllLabels);
    QCOMPARE(hidden->text(), QString());
    all->trigger();
    QCOMPARE(hidden->text(), apart.captured(0));
    // Zoomed in, the names have room.
    for (int k = 0; k < 4; ++k) Action("mnuToolsZoomIn")->trigger();
    const QRegularExpressionMatch closer = count.match(hidden->text());
    QVERIFY(hidden->text().isEmpty() || (closer.hasMatch() && closer.captured(1).toInt() < left));
  }

  void literalAmpersandsShowInCaptions() {
    QAction* netsort = Action("mnuFileNetsort");
    QVERIFY(netsort);
    QCOMPARE(netsort->text(), QStringLiteral("Rebuild LSA && SD (NETSORT)"));
    QCOMPARE(netsort->iconText(), QStringLiteral("Rebuild LSA & SD (NETSORT)"));
  }

  // Save and the Bat key say in the status bar what they did, and the panels keep their texts.
  void commandsSayWhatTheyDidInTheStatusBar() {
    Open();
    Action("mnuFileSave")->trigger();
    QCOMPARE(W().statusBar()->currentMessage(),
             QStringLiteral("Parcel attributes saved to T12NR04E.IID (the file as it was is kept in T12NR04E.iib)"));
    QVERIFY(QFile::exists(jobs_->filePath(QStringLiteral("T12NR04E.iib"))));
    QCOMPARE(Panel(1), QStringLiteral("T12NR04E"));
    Action("bat")->trigger();
    QCOMPARE(W().statusBar()->currentMessage(),
             QStringLiteral("No batch file T12NR04E.bat in the job's folder: nothing was run"));
  }

  // A tool that is not in the program's folder: a notice over the canvas once per tool, whose
  // key opens the Tool Log; the command's own flow goes on without a box.
  void aToolThatCannotRunIsNoticedOncePerTool() {
    Open();
    auto* notice = W().findChild<NoticeBar*>(QStringLiteral("barNotice"));
    QVERIFY(notice && notice->isHidden());
    Action("mnuCommandSeedxy")->trigger();
    QVERIFY(notice->isVisible());
    QVERIFY2(notice->Text().startsWith(QStringLiteral("seedxy.exe could not be run: not found in ToolFolder.")),
             qPrintable(notice->Text()));
    QVERIFY(!W().toolLog().isVisible());
    QTest::mouseClick(notice->findChild<QPushButton*>(QStringLiteral("cmdNoticeToolLog")), Qt::LeftButton);
    QVERIFY(W().toolLog().isVisible() && notice->isHidden());
    // The same tool again is in the log only; another tool has its notice.
    Action("mnuCommandSeedxy")->trigger();
    QVERIFY(notice->isHidden());
    QCOMPARE(W().session().toolLog.entries.size(), std::size_t{2});
    Action("mnuCommandPtshift")->trigger();
    QVERIFY(notice->isVisible() && notice->Text().startsWith(QStringLiteral("ptshift.exe could not be run")));
  }

  // The legend lists the sample job's surveys in the colours of their record lines, greys the
  // layers that are off, and follows the job and the View menu.
  void theLegendFollowsTheJobAndTheLayers() {
    LegendDock& legend = W().legend();
    QVERIFY(legend.isHidden());
    Action("mnuViewLegend")->trigger();
    QVERIFY(legend.isVisible());
    const QString surveys = QStringLiteral("Record lines (RAW) by survey|");
    QVERIFY(legend.Rows().filter(surveys).isEmpty());
    QVERIFY(legend.Rows().contains(QStringLiteral("Layers|Lines  (LSA)")));
    QVERIFY(legend.Rows().contains(QStringLiteral("CAMA links|Numbered survey, matched")));
    Open();
    QCOMPARE(legend.Rows().filter(surveys), (QStringList{surveys + "GLO 1854 EXT", surveys + "GLO 1855",
                                                         surveys + "BLM 1978 DEP", surveys + "RLS 18304 1996",
                                                         surveys + "SR 20 ROW 2004"}));
    auto* tree = legend.findChild<QTreeWidget*>(QStringLiteral("treeLegend"));
    const auto item = [tree](const QString& text) {
      const auto found = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
      return found.isEmpty() ? nullptr : found.front();
    };
    // Survey 1 in palette colour 1, survey 4 in 4: the canvas's cycle through the palette.
    QTreeWidgetItem* first = item(QStringLiteral("GLO 1854 EXT"));
    QVERIFY(first);
    const QImage mark = first->icon(0).pixmap(32, 14).toImage();
    QCOMPARE(mark.pixelColor(16, 7), QColor(0x00, 0x00, 0x80));
    QCOMPARE(item(QStringLiteral("RLS 18304 1996"))->icon(0).pixmap(32, 14).toImage().pixelColor(16, 7),
             QColor(0x80, 0x00, 0x00));
    // The record lines are off in the sample's configuration: greyed until switched on.
    QVERIFY(first->isDisabled());
    Action("mnuViewLinesRaw")->trigger();
    QVERIFY(!item(QStringLiteral("GLO 1854 EXT"))->isDisabled());
    Action("mnuFileClose")->trigger();
    QVERIFY(legend.Rows().filter(surveys).isEmpty());
    Action("mnuViewLegend")->trigger();
    QVERIFY(legend.isHidden());
  }

  // Opening or closing the legend changes the canvas alone, not the window: the window takes the
  // view's shape again and the picture is painted anew for the canvas as it now is.
  void theLegendKeepsTheMapInTheViewsShape() {
    Open();
    const auto shaped = [this] {
      return std::abs(W().canvas().width() - std::lround(W().canvas().height() * 1.33333)) <= 1;
    };
    QVERIFY(shaped());
    for (int k = 0; k < 2; ++k) {
      Action("mnuViewLegend")->trigger();
      QTRY_VERIFY2(shaped(), qPrintable(QStringLiteral("%1x%2").arg(W().canvas().width()).arg(W().canvas().height())));
      QVERIFY(std::fabs(UnitRatio() - 1.0) < 0.01);
      QCOMPARE(Shown(), Direct());
    }
  }

  // Long work runs off the interface thread: the status bar shows its progress and a Cancel, the
  // window runs on (a timer fires, the work's own box is answered), menus, toolbar and canvas
  // wait, and Cancel stops the work at its next look; afterwards everything is as before.
  void longWorkShowsProgressKeepsTheWindowRunningAndStops() {
    Open();
    int ticks = 0;
    QTimer tick;
    tick.setInterval(5);
    connect(&tick, &QTimer::timeout, this, [&ticks] { ++ticks; });
    tick.start();
    QSignalSpy pressed(&W().canvas(), &CanvasWidget::mousePressed);
    QString said;
    bool seen = false, waiting = false;
    QTimer watch;
    watch.setInterval(10);
    connect(&watch, &QTimer::timeout, this, [&] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        said = box->text() + QStringLiteral(" / ") + Panel(1);
        box->accept();
        return;
      }
      auto* bar = W().statusBar()->findChild<QProgressBar*>(QStringLiteral("prgLongWork"));
      if (bar == nullptr || !bar->isVisible() || bar->maximum() == 0 || ticks < 10) return;
      seen = bar->format().startsWith(QStringLiteral("Counting"));
      waiting = !W().menuBar()->isEnabled() && !W().findChild<QToolBar*>(QStringLiteral("Toolbar1"))->isEnabled();
      Mouse(QEvent::MouseButtonPress, QPointF(50, 50), Qt::LeftButton, Qt::LeftButton);
      W().statusBar()->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))->click();
    });
    watch.start();
    int steps = 0;
    const bool ended = RunLongWork(W(), [&](Progress& progress) {
      // A load's thousands of panel texts: the last stands when the next box shows.
      for (int k = 0; k < 5000; ++k) W().session().user.Status(1, k % 2 ? "Reading RAW Lines" : "Computing");
      W().session().user.Status(1, "About to count");
      W().session().user.Message("Counting begins", Icon::Information);
      while (!progress.CancelAsked()) {
        progress.Report("Counting", double(++steps % 100) / 100.0);
        QThread::msleep(2);
      }
    });
    watch.stop();
    QVERIFY(!ended);
    QCOMPARE(said, QStringLiteral("Counting begins / About to count"));
    QVERIFY(seen);
    QVERIFY(waiting);
    QVERIFY(ticks >= 10);
    QCOMPARE(pressed.count(), 0);
    QVERIFY(W().menuBar()->isEnabled() && W().findChild<QToolBar*>(QStringLiteral("Toolbar1"))->isEnabled());
    QVERIFY(!W().statusBar()->findChild<QProgressBar*>(QStringLiteral("prgLongWork")));
    QVERIFY(!LongWorkRunning(W()));
    // Work that ends by itself says so.
    QVERIFY(RunLongWork(W(), [](Progress& progress) { progress.Report("Done", 1.0); }));
  }

  void aPanelTextFromAWorkerDoesNotWaitForTheWindow() {
    // The interface thread is busy (here: waiting for the worker) and shows the text afterwards.
    QThread* worker = QThread::create([this] { W().session().user.Status(2, "From the worker"); });
    worker->start();
    const bool returned = worker->wait(5000);
    QVERIFY(returned);
    delete worker;
    QCoreApplication::processEvents();
    QCOMPARE(Panel(2), QStringLiteral("From the worker"));
  }

  void everyToolbarKeyHasAnIconAndTheBarFitsAt1024() {
    auto* bar = W().findChild<QToolBar*>(QStringLiteral("Toolbar1"));
    QVERIFY(bar);
    for (QAction* key : bar->actions()) {
      if (key->isSeparator()) continue;
      QVERIFY2(!key->icon().isNull(), qPrintable(key->objectName()));
      QVERIFY2(!key->toolTip().isEmpty() || !key->isVisible(), qPrintable(key->objectName()));
    }
    QVERIFY(Action("Centroid")->text() != Action("parcel")->text());
    W().resize(1024, 700);
    QCoreApplication::processEvents();
    QVERIFY2(bar->sizeHint().width() <= 1024, qPrintable(QString::number(bar->sizeHint().width())));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::DesktopTest)
#include "desktop_test.moc"
