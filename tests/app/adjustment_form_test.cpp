// The adjustment window through the real main window: the entry at the end of Data Quality Tools,
// a run on the worker thread against the headless result of the same files, the tables, the
// zoom to a row, the canvas layer while the window holds a result, and Accept's rewrite of .COR
// with its backup and the job read again.

#include "adjustment/ui/adjustment_form.h"
#include "adjustment/adjustment_view.h"
#include "model/text.h"
#include "form_test_support.h"

namespace tessel {

using namespace adjustment;

class AdjustmentFormTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  AdjustmentForm& Adjust() { return *W().findChild<AdjustmentForm*>(QStringLiteral("frmAdjustment")); }
  QByteArray Job(const char* extension) const { return Bytes(JobFile(QStringLiteral("T12NR04E") + extension)); }
  // The .COR line of a station, as the writer lays it out (id in columns 2-19).
  QByteArray CorLine(const QByteArray& cor, const std::string& id) const {
    for (const QByteArray& line : cor.split('\n')) {
      if (Trim(line.mid(1, 18).toStdString()) == id) return line;
    }
    return {};
  }
  // The pixels of the canvas in the ellipses' colour.
  int EllipsePixels() {
    const QImage picture = W().canvas().Picture();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) count += (picture.pixel(x, y) & 0xFFFFFF) == kEllipseColour;
    }
    return count;
  }
  // The entry run, Run clicked, the result awaited.
  void RunFromMenu() {
    W().findChild<QAction*>(QString::fromLatin1(kAdjustEntryName))->trigger();
    QVERIFY(Adjust().isVisible());
    Adjust().findChild<QPushButton*>(QStringLiteral("cmdRun"))->click();
    QVERIFY(Adjust().Running());
    QTRY_VERIFY_WITH_TIMEOUT(!Adjust().Running(), 60000);
    QVERIFY(Adjust().Result().has_value());
  }

  std::unique_ptr<MessageBoxes> boxes_;

 private slots:
  void init() {
    MakeFolders(true);
    StartWindow();
    boxes_ = std::make_unique<MessageBoxes>();
    Open();
  }

  void cleanup() {
    StopWindow();
    boxes_.reset();
  }

  // The entry ends the submenu after the suite's own; the run gives the headless result's rows;
  // a station's row zooms there; the layer is on the canvas while the window holds a result and
  // gone when it closes or the job closes. Accept names .COR and its backup, writes the adjusted
  // stations only, keeps the former file as .tlc, reads the job again and says how many stations
  // it wrote.
  void runShowsResultZoomsDrawsItsLayerAndAcceptRewritesCor() {
    const QByteArray before = Job(".COR");
    const QList<QAction*> entries = W().findChild<QMenu*>(QStringLiteral("mnuCommandQuality"))->actions();
    QCOMPARE(entries.back()->objectName(), QString::fromLatin1(kAdjustEntryName));
    QCOMPARE(entries.back()->text(), QStringLiteral("Adjust Record Data (Tessel)"));
    QCOMPARE(entries[entries.size() - 3]->objectName(), QStringLiteral("mnuCommandQualityCircuit"));

    const Outcome expected = AdjustJob(S().JobBase, Options{});
    QVERIFY(expected.adjustment);
    RunFromMenu();
    auto* stations = Adjust().findChild<QTableWidget*>(QStringLiteral("grdStations"));
    auto* observations = Adjust().findChild<QTableWidget*>(QStringLiteral("grdObservations"));
    QCOMPARE(stations->rowCount(), static_cast<int>(expected.adjustment->stations.size()));
    QCOMPARE(observations->rowCount(), static_cast<int>(expected.adjustment->observations.size()));
    QVERIFY(QFile::exists(JobFile(QStringLiteral("T12NR04E.tla"))));

    QVERIFY(!S().adjustmentOverlay.Empty() && EllipsePixels() > 0);

    // Sorted by Y, largest first: the row clicked is not the result's first station.
    stations->sortItems(2, Qt::DescendingOrder);
    const std::string id = stations->item(3, 0)->text().toStdString();
    const StationResult* station = nullptr;
    for (const StationResult& s : expected.adjustment->stations) {
      if (s.id == id) station = &s;
    }
    QVERIFY(station != nullptr);
    QTest::mouseClick(stations->viewport(), Qt::LeftButton, {}, stations->visualItemRect(stations->item(3, 1)).center());
    const ViewState& v = S().view;
    QVERIFY(std::abs(v.ScaleLeft + v.ScaleWidth / 2 - station->x) < 1.0);
    QVERIFY(std::abs(v.ScaleTop + v.ScaleHeight / 2 - station->y) < 1.0);
    QVERIFY(std::abs(v.ScaleHeight) < 20 * S().UnitsPerChain);

    Adjust().close();
    QVERIFY(S().adjustmentOverlay.Empty());
    QCOMPARE(EllipsePixels(), 0);

    RunFromMenu();
    QVERIFY(!S().adjustmentOverlay.Empty());
    const Adjustment& result = *Adjust().Result();
    const StationResult& moved = result.stations.front();
    // A line of .COR that is no adjusted station: the control.
    const std::string kept = result.fixedStations.front().id;
    QVERIFY(!CorLine(before, moved.id).isEmpty() && !CorLine(before, kept).isEmpty());

    boxes_->texts.clear();
    boxes_->answers = {QMessageBox::Yes, QMessageBox::Ok};
    Adjust().findChild<QPushButton*>(QStringLiteral("cmdAccept"))->click();
    QVERIFY(boxes_->Asked(QStringLiteral("T12NR04E.COR")) && boxes_->Asked(QStringLiteral("T12NR04E.tlc")));
    QVERIFY(boxes_->Asked(QStringLiteral("%1 stations written").arg(result.stations.size())));

    const QByteArray after = Job(".COR");
    QCOMPARE(Job(".tlc"), before);
    QVERIFY(CorLine(after, moved.id) != CorLine(before, moved.id));
    QCOMPARE(CorLine(after, kept), CorLine(before, kept));
    // The job read again: the station stands where the adjustment put it.
    const int point = S().points.Find(moved.id);
    QVERIFY(point > 0 && std::abs(S().points.PointX(point) - moved.x) < 0.01);
    QVERIFY(std::abs(S().points.PointY(point) - moved.y) < 0.01);
    QVERIFY(FileClose(S()) && !Adjust().isVisible());
    QVERIFY(S().adjustmentOverlay.Empty());
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::AdjustmentFormTest)
#include "adjustment_form_test.moc"
