// The desktop as a user meets it, with the sample job on the offscreen platform: a square map in
// any window, failed launches in the Tool Log, printing without a printer and to PDF, first-time
// tool windows beside the main window, and the wheel zooming about the pointer.

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>
#include <QtTest>

#include "app/tool_log_dock.h"
#include "app/view_window.h"
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

  void theMapIsSquareInAnyWindowAndWhenMaximised() {
    Open();
    QVERIFY(std::fabs(UnitRatio() - 1.0) < 0.01);
    // The window keeps the canvas in the view's own shape, so the view's values hold.
    QVERIFY(std::abs(W().canvas().width() - std::lround(W().canvas().height() * 1.33333)) <= 1);
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
