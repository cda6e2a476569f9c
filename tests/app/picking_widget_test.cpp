// Picking on the sample job through the real canvas: the tool keys, clicks that land on points,
// parcels and record lines, the list windows with their buttons, and the window places that
// the list windows leave in ts$002.cfg.

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include "app/view_window.h"
#include "job/load_sequence.h"

namespace tessel {

class PickingWidgetTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
    for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
      QVERIFY(QFile::copy(samples.filePath(name), jobs_->filePath(name)));
    }
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->resize(1000, 750);
    window_->show();
    window_->Load();
    OpenJob(window_->session(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void pickAPointAndRemoveIt() {
    ViewWindow& w = *window_;
    Trigger("Select");
    QWidget* form = w.findChild<QWidget*>(QStringLiteral("frmSelectedPoints"));
    QVERIFY(form->isVisible());
    QCOMPARE(w.session().ToolMode, ToolMode::PickPoints);

    const int point = 100;
    Click(Pixel(w.session().points.PointX(point), w.session().points.PointY(point)));
    auto* list = form->findChild<QListWidget*>();
    QVERIFY(list->count() >= 1);
    const QString id = QString::fromStdString(w.session().points.PointIds(point));
    QVERIFY(list->item(0)->text().startsWith(id + "    "));
    QCOMPARE(Panel(2), QStringLiteral("Station ") + id);

    list->setCurrentRow(0);
    while (list->count() > 0) {
      list->setCurrentRow(0);
      form->findChild<QPushButton*>(QStringLiteral("cmdRemoveItem"))->click();
    }
    QVERIFY(w.session().selection.PointList.empty());

    // Closing the list returns to the zoom tool and remembers the window's place.
    form->close();
    QCOMPARE(w.session().ToolMode, ToolMode::ZoomPan);
    QFile places(tools_->filePath(QStringLiteral("ts$002.cfg")));
    QVERIFY(places.open(QIODevice::ReadOnly));
    QVERIFY(places.readAll().startsWith("frmSelectedPoints,"));
  }

  void pickAParcelAndClearAll() {
    ViewWindow& w = *window_;
    w.findChild<QAction*>(QStringLiteral("mnuOptionsParcel"))->trigger();
    Trigger("Centroid");
    QCOMPARE(w.session().ToolMode, ToolMode::PickParcels);
    const ParcelStore& parcels = w.session().parcels;
    Click(Pixel(parcels.ParcelX.get(1), parcels.ParcelY.get(1)));
    QVERIFY(!w.session().selection.ParcelList.empty());
    QVERIFY(Panel(2).endsWith(QStringLiteral(" Parcel(s) Selected")));

    w.findChild<QAction*>(QStringLiteral("mnuOptionsParcelIds"))->trigger();
    QWidget* form = w.findChild<QWidget*>(QStringLiteral("frmTesting"));
    QVERIFY(form->isVisible());
    auto* list = form->findChild<QListWidget*>();
    QCOMPARE(list->item(0)->text(), QString::fromStdString(parcels.ParcelLine.get(1)));
    auto* clear = form->findChild<QPushButton*>(QStringLiteral("cmdClearAll"));
    QVERIFY(clear->isEnabled());
    clear->click();
    QCOMPARE(list->count(), 0);
    QVERIFY(!clear->isEnabled());
    QCOMPARE(w.session().SelectionCount, 0);
  }

  void pickARecordLine() {
    ViewWindow& w = *window_;
    Trigger("sid");
    QWidget* form = w.findChild<QWidget*>(QStringLiteral("frmSelectedLines"));
    QVERIFY(form->isVisible());
    const Session& s = w.session();
    // The middle of a record line between two known stations.
    int line = 0;
    for (int i = 1; i <= s.raw.RawLineCount && line == 0; ++i) {
      const RawEnds& e = s.raw.RawLineEnds.get(i);
      if (e.from != 0 && e.to != 0 && s.points.PointX(e.from) != s.points.PointX(e.to)) line = i;
    }
    QVERIFY(line != 0);
    const RawEnds& e = s.raw.RawLineEnds.get(line);
    Click((Pixel(s.points.PointX(e.from), s.points.PointY(e.from)) + Pixel(s.points.PointX(e.to), s.points.PointY(e.to))) / 2);
    auto* list = form->findChild<QListWidget*>();
    QVERIFY(list->count() >= 1);
    QVERIFY(Panel(2).endsWith(QStringLiteral(" Line(s) Selected")));
    list->setCurrentRow(0);
    const int before = list->count();
    form->findChild<QPushButton*>(QStringLiteral("cmdRemoveLine"))->click();
    QCOMPARE(list->count(), before - 1);
  }

 private:
  void Trigger(const char* name) { window_->findChild<QAction*>(QString::fromLatin1(name))->trigger(); }

  QString Panel(int n) { return window_->findChild<QLabel*>(QStringLiteral("Panel%1").arg(n))->text(); }

  QPoint Pixel(double x, double y) const {
    const ViewState& v = window_->session().view;
    const QWidget& c = window_->canvas();
    return QPointF((x - v.ScaleLeft) / v.ScaleWidth * c.width(), (y - v.ScaleTop) / v.ScaleHeight * c.height()).toPoint();
  }

  void Click(QPoint at) {
    QTest::mousePress(&window_->canvas(), Qt::LeftButton, Qt::NoModifier, at);
    QTest::mouseRelease(&window_->canvas(), Qt::LeftButton, Qt::NoModifier, at);
  }

  std::unique_ptr<QTemporaryDir> tools_;
  std::unique_ptr<QTemporaryDir> jobs_;
  std::unique_ptr<ViewWindow> window_;
};

}  // namespace tessel

QTEST_MAIN(tessel::PickingWidgetTest)
#include "picking_widget_test.moc"
