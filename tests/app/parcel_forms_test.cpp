// The parcel editor's forms on the offscreen platform with the sample job, driven by object
// name: parcel properties, Save, quick edit, the multi-attribute tool with its id selection, the
// raw polygon tags, the locator and banding.

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QCheckBox>
#include <QTemporaryDir>
#include <QtTest>

#include "app/view_window.h"
#include "job/load_sequence.h"
#include "model/config.h"
#include "parcels/raw_polygons.h"
#include "form_test_support.h"

namespace tessel {

class ParcelFormsTest : public QObject {
  Q_OBJECT

 private:
  ViewWindow& W() { return *window_; }
  Session& S() { return W().session(); }
  QAction* Action(const char* name) { return W().findChild<QAction*>(QString::fromLatin1(name)); }
  template <typename T = QWidget>
  T* Find(const char* form, const char* name) {
    QWidget* f = W().findChild<QWidget*>(QString::fromLatin1(form));
    return f ? f->findChild<T*>(QString::fromLatin1(name)) : nullptr;
  }
  QByteArray Iid() {
    QFile f(jobs_->filePath(QStringLiteral("T12NR04E.IID")));
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
  }
  // Picks parcels as the parcel tool does.
  void Select(std::initializer_list<int> parcels) {
    for (int p : parcels) {
      S().selection.AddParcelEntry(S().parcels.ParcelLine.get(p), {PickKind::Parcel, p, S().parcels.Reading});
      S().selection.SelectedParcels.at(S().SelectionCount) = static_cast<std::int16_t>(p);
      ++S().SelectionCount;
    }
  }

  std::unique_ptr<QTemporaryDir> tools_, jobs_;
  std::unique_ptr<ViewWindow> window_;

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    QVERIFY(CopySampleJob(jobs_->path()));
    for (const QString& name : QDir(jobs_->path()).entryList(QDir::Files)) {
      QFile::setPermissions(jobs_->filePath(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->resize(1000, 750);
    window_->show();
    window_->Load();
    OpenJob(S(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    QCOMPARE(S().parcels.ParcelCount, 30);
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void menusCarryTheParcelEntries() {
    for (const char* name : {"mnuFileSave", "mnuOptionsNonAliquot", "mnuBandEW", "mnuBandNS", "mnuBandingEWSection",
                             "mnuBandingNSSection", "mnuPopupParcelProperties", "mnuPopupParcelQuickEdit",
                             "mnuPopupParcelCopy", "mnuPopupParcelPaste", "mnuPopupParcelMultiple"}) {
      QVERIFY2(Action(name), name);
    }
    QVERIFY(W().findChild<QMenu*>(QStringLiteral("mnuBand")));
    QCOMPARE(Action("mnuBandingEWSection")->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_E));
    QCOMPARE(Action("mnuBandingNSSection")->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_N));
  }

  void propertiesApplyAndOkWriteTheFile() {
    Select({1});
    Action("mnuPopupParcelProperties")->trigger();
    auto* form = W().findChild<QWidget*>(QStringLiteral("frmAttributes"));
    QVERIFY(form->isVisible());
    QCOMPARE(form->windowTitle(), QStringLiteral("Parcel Properties"));
    QCOMPARE(Find<QLineEdit>("frmAttributes", "txtSection")->text(), QStringLiteral("001"));
    QVERIFY(Find<QRadioButton>("frmAttributes", "optLocationA")->isChecked());
    QCOMPARE(Find<QComboBox>("frmAttributes", "cboSurveyType")->currentText(), QStringLiteral("L - Lot, Numbered"));
    QCOMPARE(Find<QLineEdit>("frmAttributes", "txtAcreage")->text(), QStringLiteral("39.510"));
    // The live echo of a location button into the working line.
    Find<QRadioButton>("frmAttributes", "optLocationB")->click();
    QCOMPARE(Find<QComboBox>("frmAttributes", "cboParcel")->currentText().left(10), QStringLiteral("Sec_001 B "));
    Find<QLineEdit>("frmAttributes", "txtAcreage")->setText(QStringLiteral("40"));
    Find<QPushButton>("frmAttributes", "cmdApply")->click();
    QCOMPARE(QString::fromStdString(S().parcels.ParcelLine.get(1)),
             QStringLiteral("Sec_001 B T_L 1              40.000T12NR04E-01-00001"));
    Find<QPushButton>("frmAttributes", "cmdOK")->click();
    QVERIFY(!form->isVisible());
    const QByteArray iid = Iid();
    QVERIFY(iid.startsWith("  * * * This file has been edited by Tessel  * * *  \r\n"));
    QVERIFY(iid.contains("Tessel Edited: Sec_001 A T_L 1              39.510 T12NR04E-01-00001\r\n"
                         "Sec_001 B T_L 1              40.000T12NR04E-01-00001\r\n"));
    QCOMPARE(S().ToolMode, ToolMode::PickParcels);
    QCOMPARE(S().parcels.ParcelDirty, 0);
    QFile places(tools_->filePath(QStringLiteral("ts$002.cfg")));
    QVERIFY(places.open(QIODevice::ReadOnly) && places.readAll().contains("frmAttributes,"));
  }

  void deleteThenFileSaveLeavesTheNoteAndABlankLine() {
    Select({2});
    Action("mnuPopupParcelProperties")->trigger();
    Find<QPushButton>("frmAttributes", "cmdDelete")->click();
    W().findChild<QWidget*>(QStringLiteral("frmAttributes"))->close();
    QCOMPARE(S().parcels.ParcelDirty, -1);
    Action("mnuFileSave")->trigger();
    QVERIFY(Iid().contains("Tessel Edited: (Deleted)Sec_001 B T_L 2              39.341 T12NR04E-01-00002\r\n\r\n"));
    QCOMPARE(S().parcels.ParcelDirty, 0);
  }

  void quickEditWritesTheCheckedFields() {
    Select({3, 4});
    Action("mnuPopupParcelQuickEdit")->trigger();
    auto* form = W().findChild<QDialog*>(QStringLiteral("frmQuickEdit"));
    QVERIFY(form->isVisible());
    Find<QCheckBox>("frmQuickEdit", "chkNumber")->setChecked(true);
    Find<QLineEdit>("frmQuickEdit", "txtNumber")->setText(QStringLiteral("77"));
    Find<QPushButton>("frmQuickEdit", "cmdOK")->click();
    QVERIFY(!form->isVisible());
    QVERIFY(Iid().contains("Sec_001 C T_L 77             39.130 T12NR04E-01-00003\r\n"));
    QVERIFY(Iid().contains("Sec_001 D T_L 77             38.941 T12NR04E-01-00004\r\n"));
    // The pick list: sorted, then without duplicates.
    Select({1});
    Action("mnuPopupParcelQuickEdit")->trigger();
    Find<QPushButton>("frmQuickEdit", "cmdList")->click();
    auto* list = Find<QListWidget>("frmQuickEditList", "lstAttributes");
    const int before = list->count();
    Find<QPushButton>("frmQuickEditList", "cmdRemoveDuplicates")->click();
    QVERIFY(list->count() < before);
    list->setCurrentRow(0);
    Find<QPushButton>("frmQuickEditList", "cmdTake")->click();
    QVERIFY(Find<QCheckBox>("frmQuickEdit", "chkType")->isChecked());
    Find<QPushButton>("frmQuickEdit", "cmdCancel")->click();
  }

  void multipleAttributesReplaceAParcelWithChosenRecords() {
    Select({1});
    Action("mnuPopupParcelMultiple")->trigger();
    auto* form = W().findChild<QWidget*>(QStringLiteral("frmSelectParcelID"));
    QVERIFY(form->isVisible());
    QCOMPARE(S().ToolMode, ToolMode::Locked);
    auto* records = Find<QListWidget>("frmSelectParcelID", "lstRecords");
    QCOMPARE(records->count(), 5);  // the .lld records of section 1
    QVERIFY(QFile::exists(jobs_->filePath(QStringLiteral("ts$0001.001"))));
    emit records->itemDoubleClicked(records->item(4));
    QCOMPARE(Find<QListWidget>("frmSelectParcelID", "lstChosen")->count(), 1);
    Find<QPushButton>("frmSelectParcelID", "cmdOK")->click();
    QVERIFY(!form->isVisible());
    QVERIFY(Iid().contains("(OBSOLETE)Sec_001 A T_L 1              39.510 T12NR04E-01-00001\r\n"
                           "Sec_001 K T_M 4521 A    A    12.250 T12NR04E-01-00001\r\n"));
    QCOMPARE(S().ToolMode, ToolMode::PickParcels);
  }

  void cancellingTheIdSelectionRestoresTheStore() {
    Select({1});
    Action("mnuPopupParcelMultiple")->trigger();
    QCOMPARE(S().parcels.ParcelLine.get(1), std::string());
    W().findChild<QWidget*>(QStringLiteral("frmSelectParcelID"))->close();
    QCOMPARE(S().parcels.ParcelLine.get(1), std::string("Sec_001 A T_L 1              39.510 T12NR04E-01-00001"));
    QVERIFY(!QFile::exists(jobs_->filePath(QStringLiteral("ts$0001.001"))));
  }

  void rawPolygonTagsRewriteThePolygonFile() {
    ReadRawPolygons(S());
    S().selection.SelectedPolygons.at(0) = 3;
    S().SelectionCount = 1;
    Action("mnuPopupEditCRPO")->trigger();
    auto* form = W().findChild<QDialog*>(QStringLiteral("frmEditRPO"));
    QVERIFY(form->isVisible());
    QCOMPARE(Find<QLabel>("frmEditRPO", "lblCount")->text(), QStringLiteral("1 polygons selected"));
    Find<QRadioButton>("frmEditRPO", "optOutside")->setChecked(true);
    Find<QPushButton>("frmEditRPO", "cmdOK")->click();
    QFile rpo(jobs_->filePath(QStringLiteral("T12NR04E.RPO")));
    QVERIFY(rpo.open(QIODevice::ReadOnly));
    QVERIFY(rpo.readAll().contains("  15 POLYGONS FOUND\r\n\r\nI 400360 420360 420400 400400 400360\r\nI 420360 440360 "
                                   "440400 420400 420360\r\nO 440360"));
    QCOMPARE(S().ToolMode, ToolMode::ZoomPan);
  }

  void locatorListsAndBandingPaints() {
    Action("mnuOptionsNonAliquot")->trigger();
    QVERIFY(W().findChild<QWidget*>(QStringLiteral("frmParcelLocator"))->isVisible());
    Find<QPushButton>("frmParcelLocator", "cmdSections")->click();
    auto* list = Find<QListWidget>("frmParcelLocator", "lstParcels");
    QCOMPARE(list->count(), 4);
    QCOMPARE(list->item(2)->text(), QStringLiteral("Sec_022"));
    emit list->itemClicked(list->item(2));

    Action("mnuOptionsParcel")->trigger();
    Action("mnuBandingEWSection")->trigger();
    const ViewState& v = S().view;
    const QWidget& c = W().canvas();
    const double x = S().parcels.ParcelX.get(1), y = S().parcels.ParcelY.get(1);
    const QPoint at = QPointF((x - v.ScaleLeft) / v.ScaleWidth * c.width(), (y - v.ScaleTop) / v.ScaleHeight * c.height())
                          .toPoint();
    QCOMPARE(W().canvas().Picture().pixelColor(at).rgb() & 0xFFFFFF, PaletteColour(5));

    // The parcels read again from a file of one section: the listing follows them.
    QFile iid(jobs_->filePath(QStringLiteral("T12NR04E.IID")));
    QVERIFY(iid.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = iid.readAll().split('\n');
    iid.close();
    const auto first22 = std::find_if(lines.begin(), lines.end(), [](const QByteArray& l) { return l.startsWith("Sec_022"); });
    QVERIFY(first22 != lines.end() && first22 + 2 < lines.end());
    QVERIFY(iid.open(QIODevice::WriteOnly));
    iid.write(lines[0] + "\n" + *first22 + "\n" + *(first22 + 1) + "\n" + *(first22 + 2) + "\n");
    iid.close();
    Action("mnuFileReload")->trigger();
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->item(0)->text(), QStringLiteral("Sec_022"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ParcelFormsTest)
#include "parcel_forms_test.moc"
