// The main window on the offscreen platform: the sample job opened through the real File Open
// path (the job dialog answered as a user would), the menus, status panels and title that
// follow, the canvas picture, the view keys and a drag pan, and Close.

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include "app/view_window.h"
#include "job/load_sequence.h"

namespace tessel {
namespace {

// Answers the next modal file dialog with `path`.
void AnswerFileDialog(const QString& path, QString* initialFolder) {
  QTimer::singleShot(0, [path, initialFolder] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    QVERIFY(dialog);
    *initialFolder = QDir(dialog->directory()).absolutePath();
    dialog->selectFile(path);
    QMetaObject::invokeMethod(dialog, "accept");
  });
}

QString Panel(ViewWindow& w, int n) { return w.findChild<QLabel*>(QStringLiteral("Panel%1").arg(n))->text(); }

bool Enabled(ViewWindow& w, const char* name) {
  if (auto* action = w.findChild<QAction*>(QString::fromLatin1(name))) return action->isEnabled();
  if (auto* menu = w.findChild<QMenu*>(QString::fromLatin1(name))) return menu->menuAction()->isEnabled();
  return false;
}

}  // namespace

class ViewWindowTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
    for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
      QVERIFY(QFile::copy(samples.filePath(name), jobs_->filePath(name)));
    }
    // The last job folder remembered beside the program.
    QFile hst(tools_->filePath(QStringLiteral("Tessel.hst")));
    QVERIFY(hst.open(QIODevice::WriteOnly));
    hst.write((jobs_->path() + "/\r\n").toLocal8Bit());
    hst.close();
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->resize(800, 600);
    window_->show();
    window_->Load();
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void startsEmptyWithJobMenusOff() {
    ViewWindow& w = *window_;
    QCOMPARE(w.windowTitle(), QStringLiteral("Tessel"));
    QCOMPARE(Panel(w, 1), QStringLiteral("Open a job or create a new one"));
    QVERIFY(Enabled(w, "mnuFileOpen"));
    for (const char* name : {"mnuFileClose", "mnuFileReload", "mnuEdit", "mnuCommand", "mnuTools", "mnuReports",
                             "mnuOptionsLinesLSA", "mnuOptionsControl", "mnuOptionsID"}) {
      QVERIFY2(!Enabled(w, name), name);
    }
    // The start-up layers of the default configuration.
    QVERIFY(w.findChild<QAction*>(QStringLiteral("mnuOptionsLinesLSA"))->isChecked());
    QVERIFY(w.findChild<QAction*>(QStringLiteral("Lsa"))->isChecked());
    QVERIFY(!w.findChild<QAction*>(QStringLiteral("Raw"))->isChecked());
  }

  void opensTheSampleThroughFileOpen() {
    ViewWindow& w = *window_;
    QString initialFolder;
    AnswerFileDialog(jobs_->filePath(QStringLiteral("T12NR04E.def")), &initialFolder);
    w.findChild<QAction*>(QStringLiteral("mnuFileOpen"))->trigger();

    QCOMPARE(initialFolder, QDir(jobs_->path()).absolutePath());
    QCOMPARE(w.windowTitle(), QStringLiteral("Tessel ") + jobs_->filePath(QStringLiteral("T12NR04E")));
    QCOMPARE(Panel(w, 1), QStringLiteral("T12NR04E"));
    QVERIFY(!Enabled(w, "mnuFileOpen"));
    for (const char* name : {"mnuFileClose", "mnuFileReload", "mnuEdit", "mnuCommand", "mnuTools", "mnuReports",
                             "mnuOptionsLinesLSA", "mnuOptionsControl", "mnuOptionsID"}) {
      QVERIFY2(Enabled(w, name), name);
    }
    QVERIFY(QFile::exists(jobs_->filePath(QStringLiteral("TEMP.JOB"))));
    QVERIFY(QFile::exists(jobs_->filePath(QStringLiteral("Nad27.con"))));
    QCOMPARE(w.session().points.PointCount(), 640);

    // A control station: its yellow ring shows round the point dot painted over its centre.
    const ControlStation& station = w.session().control.Control.get(1);
    const QImage picture = w.canvas().Picture();
    const QPointF centre = PixelOf(w, station.x, station.y);
    QCOMPARE(picture.pixelColor(centre.toPoint() + QPoint(3, 0)), QColor(0xFF, 0xFF, 0x00));
    // The background in a corner.
    QCOMPARE(picture.pixelColor(picture.width() - 2, picture.height() - 2), QColor(Qt::white));
  }

  void viewKeysAndDragPanMoveTheView() {
    ViewWindow& w = *window_;
    OpenJob(w.session(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    const ViewState fitted = w.session().view;

    QTest::keyClick(&w.canvas(), Qt::Key_PageDown);
    const ViewState zoomed = w.session().view;
    QVERIFY(zoomed.ViewRight - zoomed.ViewLeft < fitted.ViewRight - fitted.ViewLeft);

    QTest::keyClick(&w.canvas(), Qt::Key_Home);
    QCOMPARE(w.session().view.ViewLeft, fitted.ViewLeft);
    QCOMPARE(w.session().view.ViewTop, fitted.ViewTop);

    // Dragging the picture 100 pixels right moves the view left by as many job units.
    const QPoint from(200, 200), to(300, 200);
    const double unitsPerPixel = double(w.session().view.ScaleWidth) / w.canvas().width();
    QTest::mousePress(&w.canvas(), Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&w.canvas(), to);
    QTest::mouseRelease(&w.canvas(), Qt::LeftButton, Qt::NoModifier, to);
    QVERIFY(std::abs(w.session().view.ScaleLeft - (fitted.ScaleLeft - 100 * unitsPerPixel)) < 2 * unitsPerPixel);
  }

  void closeLeavesReloadEnabledAndRemovesSupportFiles() {
    ViewWindow& w = *window_;
    OpenJob(w.session(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    w.findChild<QAction*>(QStringLiteral("mnuFileClose"))->trigger();
    QCOMPARE(w.windowTitle(), QStringLiteral("Tessel"));
    QCOMPARE(Panel(w, 1), QStringLiteral("Open a project or start a new one"));
    QVERIFY(Enabled(w, "mnuFileOpen"));
    QVERIFY(Enabled(w, "mnuFileReload"));
    QVERIFY(!Enabled(w, "mnuFileClose"));
    QVERIFY(!Enabled(w, "mnuTools"));
    QVERIFY(!QFile::exists(jobs_->filePath(QStringLiteral("Nad27.con"))));
    QFile hst(tools_->filePath(QStringLiteral("Tessel.hst")));
    QVERIFY(hst.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromLocal8Bit(hst.readAll()), jobs_->path() + "/\r\n");
  }

  void keepsTheShapeOfTheViewOnResize() {
    ViewWindow& w = *window_;
    w.resize(800, 700);
    QCOMPARE(w.frameGeometry().width(), int(std::lround(w.frameGeometry().height() * 1.33333)));
  }

  void refusesToolbarZoomWithoutAJob() {
    ViewWindow& w = *window_;
    QTimer::singleShot(0, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      QCOMPARE(box->text(), QStringLiteral("You must first Open a project"));
      QCOMPARE(box->icon(), QMessageBox::Critical);
      box->accept();
    });
    w.findChild<QAction*>(QStringLiteral("Zoomext"))->trigger();
  }

 private:
  static QPointF PixelOf(ViewWindow& w, double x, double y) {
    const ViewState& v = w.session().view;
    return {(x - v.ScaleLeft) / v.ScaleWidth * w.canvas().width(), (y - v.ScaleTop) / v.ScaleHeight * w.canvas().height()};
  }

  std::unique_ptr<QTemporaryDir> tools_;
  std::unique_ptr<QTemporaryDir> jobs_;
  std::unique_ptr<ViewWindow> window_;
};

}  // namespace tessel

QTEST_MAIN(tessel::ViewWindowTest)
#include "view_window_test.moc"
