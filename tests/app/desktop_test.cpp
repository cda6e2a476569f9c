// The main window as a user meets it, with the sample job on the offscreen platform: File Open
// through the real dialog, the menus, panels, title and picture that follow, Close, picking
// through the canvas into the list windows, a square map in any window, failed launches in the
// Tool Log, printing without a printer and to PDF, first-time tool windows beside the main
// window, the wheel zooming about the pointer, the word in the status bar after a command, the
// notice of a tool that could not run, and the legend.

#include <functional>
#include <utility>

#include "app/legend_dock.h"
#include "app/notice_bar.h"
#include "app/tool_log_dock.h"
#include "forms/ui/long_work.h"
#include "viewer/drawing.h"
#include "form_test_support.h"

namespace tessel {

class DesktopTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  // Pixels of one job unit across and up on the canvas, near 1 for a square map.
  bool Square() {
    const ViewState& v = S().view;
    const QWidget& c = W().canvas();
    return std::fabs((c.width() / std::fabs(double(v.ScaleWidth))) / (c.height() / std::fabs(double(v.ScaleHeight))) -
                     1.0) < 0.01;
  }
  // The canvas in the view's own shape, 4 by 3.
  bool Shaped() { return std::abs(W().canvas().width() - std::lround(W().canvas().height() * 1.33333)) <= 1; }
  // What the canvas shows.
  QImage Shown() { return W().canvas().grab().toImage().convertToFormat(QImage::Format_RGB32); }
  // The present view painted by a refresh straight onto an image of the canvas's size.
  QImage Direct() {
    CanvasWidget& c = W().canvas();
    QImage direct(c.size(), QImage::Format_RGB32);
    c.PaintOn(&direct);
    RefreshView(S());
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
  NoticeBar* Notice() { return W().findChild<NoticeBar*>(QStringLiteral("barNotice")); }
  // Every menu entry and toolbar key a user can reach now: shown and enabled, in menus that are
  // shown and enabled, by object name.
  QStringList Reachable() {
    QStringList names;
    std::function<void(const QList<QAction*>&)> walk = [&](const QList<QAction*>& actions) {
      for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible() || !action->isEnabled()) continue;
        if (QMenu* menu = action->menu()) {
          walk(menu->actions());
        } else if (!action->objectName().isEmpty()) {
          names << action->objectName();
        }
      }
    };
    walk(W().menuBar()->actions());
    walk(W().findChild<QToolBar*>(QStringLiteral("Toolbar1"))->actions());
    names.sort();
    return names;
  }
  QString Job(const char* name) const { return JobFile(QString::fromLatin1(name)); }
  // Answers the file chooser of File Open with the sample job.
  bool ChooseSample() {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!dialog) return false;
    dialog->selectFile(Job("T12NR04E.def"));
    QMetaObject::invokeMethod(dialog, "accept");
    return true;
  }

 private slots:
  void init() {
    MakeFolders(true);
    // The last job folder remembered beside the program.
    QVERIFY(WriteText(ToolFile(QStringLiteral("Tessel.hst")), (jobs_ + "/\r\n").toLocal8Bit()));
    StartWindow();
    QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
  }
  void cleanup() { StopWindow(); }

  void startsEmptyAndOpensTheSampleThroughFileOpen() {
    QCOMPARE(W().windowTitle(), QStringLiteral("Tessel"));
    QCOMPARE(Panel(1), QStringLiteral("Open a job or create a new one"));
    QVERIFY(Action("mnuOptionsLinesLSA")->isChecked() && Action("Lsa")->isChecked() && !Action("Raw")->isChecked());

    QString initialFolder;
    QTimer::singleShot(0, [&] {
      auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
      if (dialog) initialFolder = QDir(dialog->directory()).absolutePath();
      QVERIFY(ChooseSample());
    });
    Action("mnuFileOpen")->trigger();
    QCOMPARE(initialFolder, QDir(jobs_).absolutePath());
    QCOMPARE(W().windowTitle(), QStringLiteral("Tessel ") + Job("T12NR04E"));
    QCOMPARE(Panel(1), QStringLiteral("T12NR04E"));
    QVERIFY(QFile::exists(Job("TEMP.JOB")) && QFile::exists(Job("Nad27.con")));
    QCOMPARE(S().points.PointCount(), 640);
    // A control station's yellow ring round the point dot painted over its centre; white behind.
    // The station lies between pixels: yellow shows within its dot's reach on either side.
    const ControlStation& station = S().control.Control.get(1);
    const QImage picture = W().canvas().Picture();
    const auto yellowAt = [&](int from, int to) {
      for (int dx = from; dx <= to; ++dx) {
        if (picture.pixelColor(Pixel(station.x, station.y) + QPoint(dx, 0)) == QColor(0xFF, 0xFF, 0x00)) return true;
      }
      return false;
    };
    QVERIFY(yellowAt(-5, -1) && yellowAt(1, 5));
    QCOMPARE(picture.pixelColor(picture.width() - 2, picture.height() - 2), QColor(Qt::white));
  }

  // File Open reads the job beside the window: the window's timers fire meanwhile, the status
  // bar tells which file is read, with no Cancel, and the canvas keeps its last picture until the
  // job is drawn at the end. The load's boxes still come in their place and are answered.
  void openReadsTheJobBesideTheWindowWithoutACancel() {
    QVERIFY(QFile::remove(Job("T12NR04E.LSA")));
    QTest::qWait(100);  // the window's shape settled
    const QImage before = W().canvas().Picture();
    int boxTicks = 0;
    bool boxSeen = false, cancelHidden = false, keptPicture = false;
    QString told;
    const auto look = [&] {
      if (ChooseSample()) return;
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr || box->text() != QStringLiteral("LSA file not found")) return;
      // The box stands after .COR was read; the strip tells it once its next look comes round.
      // Without a strip the box is answered after a while all the same, for the checks to fail.
      QProgressBar* bar = LongWorkBar(W().statusBar());
      if (bar == nullptr || !bar->format().startsWith(QStringLiteral("Reading T12NR04E"))) {
        if (++boxTicks > 200) box->button(QMessageBox::Ok)->click();
        return;
      }
      boxSeen = true;
      told = bar->format();
      cancelHidden = W().statusBar()->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))->isHidden();
      keptPicture = W().canvas().Picture() == before;
      box->button(QMessageBox::Ok)->click();
    };
    QVERIFY(Ticking(5, look, [this] { Action("mnuFileOpen")->trigger(); }) > 1);
    QVERIFY(boxSeen && cancelHidden && keptPicture);
    QVERIFY2(told.startsWith(QStringLiteral("Reading T12NR04E.COR")), qPrintable(told));
    QVERIFY(!LongWorkBar(W().statusBar()) && W().menuBar()->isEnabled());
    QCOMPARE(Panel(1), QStringLiteral("T12NR04E"));
    QVERIFY(S().points.PointCount() > 0 && W().canvas().Picture() != before);
  }

  // With no job open, only what works without one is offered: opening or making a job, the
  // program's settings and windows, the layer switches, help, the region console, the archives'
  // own commands, and the two zoom keys that answer with their message. Print to PDF and Save
  // once were among them, and printed a blank page or saved nothing.
  void menusOfferWithoutAJobOnlyWhatWorksWithoutOne() {
    const QStringList withoutJob = QStringLiteral(
        "Chain Lsa Lxn Open Pointids Raw Zoomext Zoomwin mnuFileConfig mnuFileExit mnuFileNetsort mnuFileNew "
        "mnuFileOpen mnuFilePrintSetup mnuHelpAbout mnuHelpContents mnuHelpSearch mnuLzhExtract mnuOptionsLinesLXN "
        "mnuOptionsMultiAtt mnuOptionsParcel mnuOptionsParcelBrief mnuOptionsParcelDetail mnuOptionsParcelFull "
        "mnuOptionsParcelIds mnuRegionBuild mnuViewAllLabels mnuViewCama mnuViewLegend mnuViewLinesRaw mnuViewPoints "
        "mnuViewRPO mnuViewScaleBar mnuViewTextWindow mnuViewToolLog mnuViewToolbox mnuZipCreate mnuZipExtract parcel")
        .split(QLatin1Char(' '));
    QCOMPARE(Reachable(), withoutJob);

    // A job open offers every command on it and every layer switch, Open aside.
    Open();
    const QStringList open = Reachable();
    for (const QString& name : withoutJob) {
      if (name != QLatin1String("mnuFileOpen")) QVERIFY2(open.contains(name), qPrintable(name));
    }
    QVERIFY(!open.contains(QStringLiteral("mnuFileOpen")));
    for (const char* name : {"mnuFileSave", "mnuFilePrint", "mnuFilePrintPdf", "mnuFileClose", "mnuFileExportGis",
                             "mnuLzhSave", "mnuAttributesCamaLink", "mnuAttributesMoveCentroid", "mnuBandEW",
                             "mnuOptionsNonAliquot", "mnuZoomExtents", "mnuRegionsTwpjoin", "mnuCommandFitmain",
                             "mnuEditSurveys", "mnuToolsRefresh", "mnuReportsGen", "Reload", "Select", "Centroid",
                             "Zoom", "CRPO", "sid", "Zoomin", "zoomout", "ZoomPrev", "goto", "view1", "view4",
                             "ViewReset", "bat", "mnuFileReload", "mnuOptionsLinesLSA", "mnuOptionsControl",
                             "mnuOptionsID"}) {
      QVERIFY2(open.contains(QLatin1String(name)), name);
    }

    // A close goes back to the first set, with Reload Current and Import left on as ever (and
    // the Reload key with them); the title and panel say so, and the support files are gone.
    Action("mnuFileClose")->trigger();
    QStringList closed = Reachable();
    for (const char* kept : {"Reload", "mnuFileReload"}) QVERIFY2(closed.removeAll(QLatin1String(kept)) == 1, kept);
    closed.removeIf([](const QString& name) { return name.startsWith(QLatin1String("mnuFileImport")); });
    QCOMPARE(closed, withoutJob);
    QCOMPARE(W().windowTitle(), QStringLiteral("Tessel"));
    QCOMPARE(Panel(1), QStringLiteral("Open a project or start a new one"));
    QVERIFY(!QFile::exists(Job("Nad27.con")));
  }

  void pickAPointAndAParcelThroughTheirListWindows() {
    Open();
    Action("Select")->trigger();
    QVERIFY(Form("frmSelectedPoints")->isVisible());
    const PointStore& store = S().points;
    ClickAt(store.PointX(100), store.PointY(100));
    auto* list = Form("frmSelectedPoints")->findChild<QListWidget*>();
    const QString id = QString::fromStdString(store.PointIds(100));
    QVERIFY(list->count() >= 1 && list->item(0)->text().startsWith(id + "    "));
    QCOMPARE(Panel(2), QStringLiteral("Station ") + id);
    while (list->count() > 0) {
      list->setCurrentRow(0);
      Press("frmSelectedPoints", "cmdRemoveItem");
    }
    QVERIFY(S().selection.PointList.empty());
    // Closing the list returns to the zoom tool and remembers the window's place.
    Form("frmSelectedPoints")->close();
    QCOMPARE(S().ToolMode, ToolMode::ZoomPan);
    QVERIFY(Bytes(ToolFile(QStringLiteral("ts$002.cfg"))).startsWith("frmSelectedPoints,"));

    Action("mnuOptionsParcel")->trigger();
    Action("Centroid")->trigger();
    const ParcelStore& parcels = S().parcels;
    ClickAt(parcels.ParcelX.get(1), parcels.ParcelY.get(1));
    QVERIFY(Panel(2).endsWith(QStringLiteral(" Parcel(s) Selected")));
    Action("mnuOptionsParcelIds")->trigger();
    QVERIFY(Form("frmTesting")->isVisible());
    auto* picked = Form("frmTesting")->findChild<QListWidget*>();
    QCOMPARE(picked->item(0)->text(), QString::fromStdString(parcels.ParcelLine.get(1)));
    Press("frmTesting", "cmdClearAll");
    QVERIFY(picked->count() == 0 && !In<QPushButton>("frmTesting", "cmdClearAll")->isEnabled());
    QCOMPARE(S().SelectionCount, 0);
  }

  void theWindowOpensOnMostOfTheScreenThenWhereItWasLeft() {
    // The first time: nine tenths of the screen's height, the canvas in the view's shape.
    ViewWindow first(tools_);
    first.PlaceOnScreen();
    first.show();
    QVERIFY(QTest::qWaitForWindowExposed(&first));
    const QRect room = first.screen()->availableGeometry();
    QVERIFY(first.frameGeometry().height() >= room.height() * 85 / 100);
    QVERIFY(room.contains(first.frameGeometry().center()));
    // The legend shows the first time, so that a new user finds it; hidden, it stays hidden.
    QVERIFY(first.legend().isVisible());
    first.findChild<QAction*>(QStringLiteral("mnuViewLegend"))->trigger();
    QVERIFY(first.legend().isHidden());
    // Moved and made smaller, then closed: the next start opens it there.
    first.setGeometry(QRect(room.topLeft() + QPoint(30, 40), QSize(640, 520)));
    QCoreApplication::processEvents();
    const QRect left = first.geometry();
    first.close();
    QVERIFY(QFileInfo::exists(ToolFile(QStringLiteral("tessel-window.ini"))));
    ViewWindow next(tools_);
    next.PlaceOnScreen();
    QCOMPARE(next.geometry().size(), left.size());
    QCOMPARE(next.geometry().topLeft(), left.topLeft());
    QVERIFY(next.legend().isHidden());
  }

  // The window keeps the canvas in the view's own shape, so the view's values hold. Opening or
  // closing the legend changes the canvas alone, not the window: the window takes the view's
  // shape again and the picture is painted anew for the canvas as it now is.
  void theMapIsSquareInAnyWindowWithTheLegendAndWhenMaximised() {
    Open();
    QVERIFY(Square() && Shaped());
    for (int k = 0; k < 2; ++k) {
      Action("mnuViewLegend")->trigger();
      QTRY_VERIFY(Shaped());
      QVERIFY(Square());
      QCOMPARE(Shown(), Direct());
    }
    for (const QSize size : {QSize(1024, 600), QSize(700, 900), QSize(1400, 800)}) {
      W().resize(size);
      QCoreApplication::processEvents();
      QVERIFY2(Square(), qPrintable(QStringLiteral("%1x%2").arg(size.width()).arg(size.height())));
    }
    W().showMaximized();
    QTRY_VERIFY(W().isMaximized());
    QCoreApplication::processEvents();
    QVERIFY(Square());
    Action("mnuZoomExtents")->trigger();
    QVERIFY(Square());
  }

  // A tool that is not in the program's folder: a notice over the canvas once per tool, whose key
  // opens the Tool Log; the command's own flow goes on without a box. Every start is in the Tool
  // Log, which the View menu shows, and the status bar says why it failed.
  void aMissingToolIsNoticedOncePerToolAndLogged() {
    Open();
    const auto& entries = S().toolLog.entries;
    QVERIFY(entries.empty() && Notice()->isHidden());
    Action("mnuCommandSeedxy")->trigger();
    QVERIFY(Notice()->isVisible());
    QVERIFY2(Notice()->Text().startsWith(QStringLiteral("seedxy.exe could not be run: not found in ToolFolder.")),
             qPrintable(Notice()->Text()));
    QVERIFY(!W().toolLog().isVisible());
    QTest::mouseClick(Notice()->findChild<QPushButton*>(QStringLiteral("cmdNoticeToolLog")), Qt::LeftButton);
    QVERIFY(W().toolLog().isVisible() && Notice()->isHidden());
    // The same tool again is in the log only; another tool has its notice.
    Action("mnuCommandSeedxy")->trigger();
    QVERIFY(Notice()->isHidden());
    QCOMPARE(entries.size(), std::size_t{2});
    Action("mnuCommandPtshift")->trigger();
    QVERIFY(Notice()->isVisible() && Notice()->Text().startsWith(QStringLiteral("ptshift.exe could not be run")));

    Action("mnuFileNetsort")->trigger();
    QCOMPARE(entries.size(), std::size_t(4));
    QCOMPARE(entries.back().outcome, LaunchOutcome::NotFound);
    QCOMPARE(QString::fromStdString(entries.back().reason), QStringLiteral("not found in ToolFolder"));
    QVERIFY(Panel(4).contains(QStringLiteral("netsort"), Qt::CaseInsensitive) &&
            Panel(4).endsWith(QStringLiteral(": not found in ToolFolder")));
    // Closed by its own button, the tick follows; the View menu shows it again, with the entry.
    QAction* show = Action("mnuViewToolLog");
    W().toolLog().close();
    QVERIFY(!show->isChecked());
    show->trigger();
    QVERIFY(W().toolLog().isVisible());
    const QString text = W().toolLog().findChild<QPlainTextEdit*>(QStringLiteral("txtToolLog"))->toPlainText();
    QVERIFY(text.contains(QStringLiteral("not found in ToolFolder")));
    QVERIFY(text.contains(QStringLiteral("netsort"), Qt::CaseInsensitive));
  }

  void aWindowsToolWithoutItsRunnerIsSaidOnceOverTheCanvas() {
    // Two tools whose header says Windows, and a runner in tessel-tools.ini that is not there.
    const QString runner = ToolFile(QStringLiteral("no wine"));
    QVERIFY(WriteText(ToolFile(QStringLiteral("netsort.exe")), WindowsHeader()) &&
            WriteText(ToolFile(QStringLiteral("jobprops.exe")), WindowsHeader()) &&
            WriteText(ToolFile(QStringLiteral("tessel-tools.ini")), "runner=" + runner.toLocal8Bit() + "\r\n"));
    W().Load();
    Open();
    for (const char* entry : {"mnuFileNetsort", "mnuFileNetsort", "mnuFileProperties"}) Action(entry)->trigger();
    const auto& entries = S().toolLog.entries;
    QCOMPARE(entries.size(), std::size_t(3));
    for (const ToolLogEntry& e : entries) QCOMPARE(e.outcome, LaunchOutcome::NoRunner);
    QCOMPARE(Notice()->Text(), "netsort.exe is a Windows program; its runner " + runner +
                                   " (Configuration Options) was not found. The Tool Log (View > Tool Log) lists "
                                   "every start of this session.");
    QCOMPARE(Panel(4), "jobprops.exe is a Windows program; its runner " + runner + " (Configuration Options) was not found");
  }

  void printAndSaveSayWhatTheyDid() {
    Open();
    QString said;
    QTimer::singleShot(0, [&said] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        said = box->text();
        box->accept();
      }
    });
    W().Print();
    QVERIFY2(said.startsWith(QStringLiteral("Unable to print")), qPrintable(said));
    QPrinter pdf(QPrinter::HighResolution);
    pdf.setOutputFormat(QPrinter::PdfFormat);
    pdf.setOutputFileName(JobFile(QStringLiteral("map.pdf")));
    std::string reason;
    const ViewState before = S().view;
    QVERIFY2(W().PrintOn(pdf, reason), reason.c_str());
    const QByteArray bytes = Bytes(JobFile(QStringLiteral("map.pdf")));
    QVERIFY(bytes.startsWith("%PDF") && bytes.size() > 2000);
    // The screen's view is back as it was.
    QCOMPARE(S().view.ScaleWidth, before.ScaleWidth);
    QCOMPARE(S().view.ScaleLeft, before.ScaleLeft);

    // Save and the Bat key say in the status bar what they did, and the panels keep their texts.
    Action("mnuFileSave")->trigger();
    QCOMPARE(W().statusBar()->currentMessage(),
             QStringLiteral("Parcel attributes saved to T12NR04E.IID (the file as it was is kept in T12NR04E.iib)"));
    QVERIFY(QFile::exists(JobFile(QStringLiteral("T12NR04E.iib"))));
    QCOMPARE(Panel(1), QStringLiteral("T12NR04E"));
    Action("bat")->trigger();
    QCOMPARE(W().statusBar()->currentMessage(),
             QStringLiteral("No batch file T12NR04E.bat in the job's folder: nothing was run"));
  }

  // The list windows, the Tool Box and Project Information open against the main window's right
  // edge, below its menu bar, the first time.
  void aFirstTimeFormStaysOffTheMenuBar() {
    Open();
    QVERIFY(!QFile::exists(ToolFile(QStringLiteral("ts$002.cfg"))));
    for (const char* entry : {"Select", "mnuViewToolbox", "mnuViewTextWindow"}) Action(entry)->trigger();
    const QRect menu(W().menuBar()->mapToGlobal(QPoint(0, 0)), W().menuBar()->size());
    for (const char* name : {"frmSelectedPoints", "frmToolbox", "frmReport"}) {
      QVERIFY2(Form(name)->isVisible() && !Form(name)->frameGeometry().intersects(menu), name);
    }
  }

  // The wheel zooms about the pointer, whose coordinates show at the right end of the status
  // bar. The wheel and a drag answer at once from the last picture, and the one refresh that
  // follows paints exactly what a refresh of the view paints, for every layer set and view tried.
  void theWheelAndADragMoveThePictureAndRestOnTheDirectPainting() {
    Open();
    CanvasWidget& c = W().canvas();
    const QSize size = c.size();
    const QPointF pointer(size.width() * 0.3, size.height() * 0.6);
    const QPointF world = c.ToWorld(pointer);
    const float width = S().view.ScaleWidth;
    Wheel(pointer, 1);
    QVERIFY(S().view.ScaleWidth < width * 0.85f);
    const QPointF again = c.ToPixel(world.x(), world.y());
    QVERIFY(std::fabs(again.x() - pointer.x()) < 0.5 && std::fabs(again.y() - pointer.y()) < 0.5);
    QTest::mouseMove(&c, pointer.toPoint());
    const QString shown = W().findChild<QLabel*>(QStringLiteral("lblCoordinates"))->text();
    QVERIFY2(shown.startsWith(QStringLiteral("N ")) && shown.contains(QStringLiteral("  E ")), qPrintable(shown));
    QTRY_VERIFY(!c.Previewing());

    Action("Zoom")->trigger();
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
    QVERIFY(S().checks.mnuOptionsID);
    const QRegularExpression count(QStringLiteral("^(\\d+) labels hidden$"));
    const QRegularExpressionMatch apart = count.match(hidden->text());
    QVERIFY2(apart.hasMatch(), qPrintable(hidden->text()));
    const int left = apart.captured(1).toInt();
    QVERIFY(left > 0 && left < S().points.PointCount());

    QAction* all = Action("mnuViewAllLabels");
    QVERIFY(all->isCheckable() && !all->isChecked());
    all->trigger();
    QVERIFY(all->isChecked() && S().checks.mnuViewAllLabels);
    QCOMPARE(hidden->text(), QString());
    all->trigger();
    QCOMPARE(hidden->text(), apart.captured(0));
    // Zoomed in, the names have room.
    for (int k = 0; k < 4; ++k) Action("mnuToolsZoomIn")->trigger();
    const QRegularExpressionMatch closer = count.match(hidden->text());
    QVERIFY(hidden->text().isEmpty() || (closer.hasMatch() && closer.captured(1).toInt() < left));
  }

  // Literal ampersands show in captions; every toolbar key has its icon and tip, and the bar fits
  // a window 1024 wide.
  void captionsAndToolbarKeys() {
    QCOMPARE(Action("mnuFileNetsort")->text(), QStringLiteral("Rebuild LSA && SD (NETSORT)"));
    QCOMPARE(Action("mnuFileNetsort")->iconText(), QStringLiteral("Rebuild LSA & SD (NETSORT)"));
    auto* bar = W().findChild<QToolBar*>(QStringLiteral("Toolbar1"));
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

  // The legend lists the sample job's surveys in the colours of their record lines, greys the
  // layers that are off, and follows the job and the View menu.
  void theLegendFollowsTheJobAndTheLayers() {
    LegendDock& legend = W().legend();
    QVERIFY(legend.isHidden());
    Action("mnuViewLegend")->trigger();
    QVERIFY(legend.isVisible());
    const QString surveys = QStringLiteral("Record lines (RAW) by survey|");
    QVERIFY(legend.Rows().filter(surveys).isEmpty() && legend.Rows().contains(QStringLiteral("Layers|Lines  (LSA)")));
    QVERIFY(legend.Rows().contains(QStringLiteral("CAMA links|Numbered survey, matched")));
    Open();
    QCOMPARE(legend.Rows().filter(surveys), (QStringList{surveys + "GLO 1854 EXT", surveys + "GLO 1855",
                                                         surveys + "BLM 1978 DEP", surveys + "RLS 18304 1996",
                                                         surveys + "SR 20 ROW 2004"}));
    auto* tree = legend.findChild<QTreeWidget*>(QStringLiteral("treeLegend"));
    const auto item = [tree](const char* text) {
      return Found(tree->findItems(QString::fromLatin1(text), Qt::MatchExactly | Qt::MatchRecursive).value(0), text);
    };
    const auto mark = [&item](const char* text) { return item(text)->icon(0).pixmap(32, 14).toImage().pixelColor(16, 7); };
    // Survey 1 in palette colour 1, survey 4 in 4: the canvas's cycle through the palette.
    QCOMPARE(mark("GLO 1854 EXT"), QColor(0x00, 0x00, 0x80));
    QCOMPARE(mark("RLS 18304 1996"), QColor(0x80, 0x00, 0x00));
    // The record lines are off in the sample's configuration: greyed until switched on.
    QVERIFY(item("GLO 1854 EXT")->isDisabled());
    Action("mnuViewLinesRaw")->trigger();
    QVERIFY(!item("GLO 1854 EXT")->isDisabled());
    Action("mnuFileClose")->trigger();
    QVERIFY(legend.Rows().filter(surveys).isEmpty());
    Action("mnuViewLegend")->trigger();
    QVERIFY(legend.isHidden());
  }

  // Long work runs off the interface thread: the status bar shows its progress and a Cancel, the
  // window runs on (a timer fires, the work's own box is answered), menus, toolbar and canvas
  // wait, and Cancel stops the work at its next look; afterwards everything is as before.
  // A panel text from a worker does not wait for the window: the interface thread is busy (here:
  // waiting for the worker) and shows the text afterwards.
  void longWorkShowsProgressKeepsTheWindowRunningAndStops() {
    QThread* worker = QThread::create([this] { S().user.Status(2, "From the worker"); });
    worker->start();
    const bool returned = worker->wait(5000);
    QVERIFY(returned);
    delete worker;
    QCoreApplication::processEvents();
    QCOMPARE(Panel(2), QStringLiteral("From the worker"));

    Open();
    QSignalSpy pressed(&W().canvas(), &CanvasWidget::mousePressed);
    auto* toolbar = W().findChild<QToolBar*>(QStringLiteral("Toolbar1"));
    QString said;
    bool seen = false, waiting = false;
    int ticks = 0, steps = 0;
    const auto watch = [&] {
      ++ticks;
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        said = box->text() + QStringLiteral(" / ") + Panel(1);
        box->accept();
        return;
      }
      QProgressBar* bar = LongWorkBar(W().statusBar());
      if (bar == nullptr || !bar->isVisible() || bar->maximum() == 0 || ticks < 10) return;
      seen = bar->format().startsWith(QStringLiteral("Counting"));
      waiting = !W().menuBar()->isEnabled() && !toolbar->isEnabled();
      Mouse(QEvent::MouseButtonPress, QPointF(50, 50), Qt::LeftButton, Qt::LeftButton);
      CancelLongWork(W().statusBar());
    };
    const auto work = [&](Progress& progress) {
      // A load's thousands of panel texts: the last stands when the next box shows.
      for (int k = 0; k < 5000; ++k) S().user.Status(1, k % 2 ? "Reading RAW Lines" : "Computing");
      S().user.Status(1, "About to count");
      S().user.Message("Counting begins", Icon::Information);
      while (!progress.CancelAsked()) {
        progress.Report("Counting", double(++steps % 100) / 100.0);
        QThread::msleep(2);
      }
    };
    bool ended = true;
    Ticking(5, watch, [&] { ended = RunLongWork(W(), work); });
    QVERIFY(!ended);
    QCOMPARE(said, QStringLiteral("Counting begins / About to count"));
    QVERIFY(seen && waiting && ticks >= 10);
    QCOMPARE(pressed.count(), 0);
    QVERIFY(W().menuBar()->isEnabled() && toolbar->isEnabled() && !LongWorkBar(W().statusBar()));
    QVERIFY(!LongWorkRunning(W()));
    // Work that ends by itself says so.
    QVERIFY(RunLongWork(W(), [](Progress& progress) { progress.Report("Done", 1.0); }));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::DesktopTest)
#include "desktop_test.moc"
