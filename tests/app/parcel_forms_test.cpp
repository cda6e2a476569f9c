// The parcel editor's forms on the offscreen platform with the sample job, driven by object
// name: parcel properties, Save, quick edit, the multi-attribute tool with its id selection, the
// raw polygon tags, the locator and banding.

#include "model/config.h"
#include "parcels/raw_polygons.h"
#include "form_test_support.h"

namespace tessel {

class ParcelFormsTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  QByteArray Iid() { return Bytes(JobFile(QStringLiteral("T12NR04E.IID"))); }
  // Picks parcels as the parcel tool does.
  void Select(std::initializer_list<int> parcels) {
    for (int p : parcels) {
      S().selection.AddParcelEntry(S().parcels.ParcelLine.get(p), {PickKind::Parcel, p, S().parcels.Reading});
      S().selection.SelectedParcels.at(S().SelectionCount) = static_cast<std::int16_t>(p);
      ++S().SelectionCount;
    }
  }

 private slots:
  void init() {
    MakeFolders(true);
    for (const QString& name : QDir(jobs_).entryList(QDir::Files)) {
      QFile::setPermissions(JobFile(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    StartWindow();
    Open();
    QCOMPARE(S().parcels.ParcelCount, 30);
  }
  void cleanup() { StopWindow(); }

  void propertiesApplyAndOkWriteTheFile() {
    Select({1});
    Action("mnuPopupParcelProperties")->trigger();
    auto* form = Form("frmAttributes");
    QVERIFY(form->isVisible());
    QCOMPARE(form->windowTitle(), QStringLiteral("Parcel Properties"));
    QCOMPARE(In<QLineEdit>("frmAttributes", "txtSection")->text(), QStringLiteral("001"));
    QVERIFY(In<QRadioButton>("frmAttributes", "optLocationA")->isChecked());
    QCOMPARE(In<QComboBox>("frmAttributes", "cboSurveyType")->currentText(), QStringLiteral("L - Lot, Numbered"));
    QCOMPARE(In<QLineEdit>("frmAttributes", "txtAcreage")->text(), QStringLiteral("39.510"));
    // The live echo of a location button into the working line.
    In<QRadioButton>("frmAttributes", "optLocationB")->click();
    QCOMPARE(In<QComboBox>("frmAttributes", "cboParcel")->currentText().left(10), QStringLiteral("Sec_001 B "));
    In<QLineEdit>("frmAttributes", "txtAcreage")->setText(QStringLiteral("40"));
    Press("frmAttributes", "cmdApply");
    QCOMPARE(QString::fromStdString(S().parcels.ParcelLine.get(1)),
             QStringLiteral("Sec_001 B T_L 1              40.000T12NR04E-01-00001"));
    Press("frmAttributes", "cmdOK");
    QVERIFY(!form->isVisible());
    const QByteArray iid = Iid();
    QVERIFY(iid.startsWith("  * * * This file has been edited by Tessel  * * *  \r\n"));
    QVERIFY(iid.contains("Tessel Edited: Sec_001 A T_L 1              39.510 T12NR04E-01-00001\r\n"
                         "Sec_001 B T_L 1              40.000T12NR04E-01-00001\r\n"));
    QCOMPARE(S().ToolMode, ToolMode::PickParcels);
    QCOMPARE(S().parcels.ParcelDirty, 0);
    QVERIFY(Bytes(ToolFile(QStringLiteral("ts$002.cfg"))).contains("frmAttributes,"));
  }

  void deleteThenFileSaveLeavesTheNoteAndABlankLine() {
    Select({2});
    Action("mnuPopupParcelProperties")->trigger();
    Press("frmAttributes", "cmdDelete");
    Form("frmAttributes")->close();
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
    In<QCheckBox>("frmQuickEdit", "chkNumber")->setChecked(true);
    In<QLineEdit>("frmQuickEdit", "txtNumber")->setText(QStringLiteral("77"));
    Press("frmQuickEdit", "cmdOK");
    QVERIFY(!form->isVisible() && Iid().contains("Sec_001 C T_L 77             39.130 T12NR04E-01-00003\r\n"));
    QVERIFY(Iid().contains("Sec_001 D T_L 77             38.941 T12NR04E-01-00004\r\n"));
    // The pick list: sorted, then without duplicates.
    Select({1});
    Action("mnuPopupParcelQuickEdit")->trigger();
    Press("frmQuickEdit", "cmdList");
    auto* list = In<QListWidget>("frmQuickEditList", "lstAttributes");
    const int before = list->count();
    Press("frmQuickEditList", "cmdRemoveDuplicates");
    QVERIFY(list->count() < before);
    list->setCurrentRow(0);
    Press("frmQuickEditList", "cmdTake");
    QVERIFY(In<QCheckBox>("frmQuickEdit", "chkType")->isChecked());
    Press("frmQuickEdit", "cmdCancel");
  }

  void multipleAttributesReplaceAParcelWithChosenRecords() {
    Select({1});
    Action("mnuPopupParcelMultiple")->trigger();
    auto* form = Form("frmSelectParcelID");
    QVERIFY(form->isVisible());
    QCOMPARE(S().ToolMode, ToolMode::Locked);
    auto* records = In<QListWidget>("frmSelectParcelID", "lstRecords");
    QCOMPARE(records->count(), 5);  // the .lld records of section 1
    QVERIFY(QFile::exists(JobFile(QStringLiteral("ts$0001.001"))));
    emit records->itemDoubleClicked(records->item(4));
    QCOMPARE(In<QListWidget>("frmSelectParcelID", "lstChosen")->count(), 1);
    Press("frmSelectParcelID", "cmdOK");
    QVERIFY(!form->isVisible());
    QVERIFY(Iid().contains("(OBSOLETE)Sec_001 A T_L 1              39.510 T12NR04E-01-00001\r\n"
                           "Sec_001 K T_M 4521 A    A    12.250 T12NR04E-01-00001\r\n"));
    QCOMPARE(S().ToolMode, ToolMode::PickParcels);
  }

  void cancellingTheIdSelectionRestoresTheStore() {
    Select({1});
    Action("mnuPopupParcelMultiple")->trigger();
    QCOMPARE(S().parcels.ParcelLine.get(1), std::string());
    Form("frmSelectParcelID")->close();
    QCOMPARE(S().parcels.ParcelLine.get(1), std::string("Sec_001 A T_L 1              39.510 T12NR04E-01-00001"));
    QVERIFY(!QFile::exists(JobFile(QStringLiteral("ts$0001.001"))));
  }

  void rawPolygonTagsRewriteThePolygonFile() {
    ReadRawPolygons(S());
    S().selection.SelectedPolygons.at(0) = 3;
    S().SelectionCount = 1;
    Action("mnuPopupEditCRPO")->trigger();
    auto* form = W().findChild<QDialog*>(QStringLiteral("frmEditRPO"));
    QVERIFY(form->isVisible());
    QCOMPARE(In<QLabel>("frmEditRPO", "lblCount")->text(), QStringLiteral("1 polygons selected"));
    In<QRadioButton>("frmEditRPO", "optOutside")->setChecked(true);
    Press("frmEditRPO", "cmdOK");
    QVERIFY(Bytes(JobFile(QStringLiteral("T12NR04E.RPO"))).contains("  15 POLYGONS FOUND\r\n\r\nI 400360 420360 420400 400400 400360\r\nI 420360 440360 "
                                                            "440400 420400 420360\r\nO 440360"));
    QCOMPARE(S().ToolMode, ToolMode::ZoomPan);
  }

  // The parcel entries in their menus, the locator's listing, and banding painted.
  void menusLocatorAndBanding() {
    for (const char* name : {"mnuFileSave", "mnuBandEW", "mnuBandNS", "mnuBandingNSSection", "mnuPopupParcelProperties",
                             "mnuPopupParcelQuickEdit", "mnuPopupParcelCopy", "mnuPopupParcelPaste"}) {
      QVERIFY2(Action(name), name);
    }
    QVERIFY(W().findChild<QMenu*>(QStringLiteral("mnuBand")));
    QCOMPARE(Action("mnuBandingEWSection")->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_E));
    QCOMPARE(Action("mnuBandingNSSection")->shortcut(), QKeySequence(Qt::SHIFT | Qt::Key_N));

    Action("mnuOptionsNonAliquot")->trigger();
    QVERIFY(Form("frmParcelLocator")->isVisible());
    Press("frmParcelLocator", "cmdSections");
    auto* list = In<QListWidget>("frmParcelLocator", "lstParcels");
    QCOMPARE(list->count(), 4);
    QCOMPARE(list->item(2)->text(), QStringLiteral("Sec_022"));
    emit list->itemClicked(list->item(2));

    Action("mnuOptionsParcel")->trigger();
    Action("mnuBandingEWSection")->trigger();
    const QPoint at = Pixel(S().parcels.ParcelX.get(1), S().parcels.ParcelY.get(1));
    QCOMPARE(W().canvas().Picture().pixelColor(at).rgb() & 0xFFFFFF, PaletteColour(5));

    // The parcels read again from a file of one section: the listing follows them.
    const QList<QByteArray> lines = Iid().split('\n');
    const auto first22 = std::find_if(lines.begin(), lines.end(), [](const QByteArray& l) { return l.startsWith("Sec_022"); });
    QVERIFY(first22 != lines.end() && first22 + 2 < lines.end());
    QVERIFY(WriteText(JobFile(QStringLiteral("T12NR04E.IID")),
                      lines[0] + "\n" + *first22 + "\n" + *(first22 + 1) + "\n" + *(first22 + 2) + "\n"));
    Action("mnuFileReload")->trigger();
    QCOMPARE(list->count(), 1);
    QCOMPARE(list->item(0)->text(), QStringLiteral("Sec_022"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::ParcelFormsTest)
#include "parcel_forms_test.moc"
