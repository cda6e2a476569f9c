// The CAMA linking's forms on the offscreen platform: the menu entries, frmQueryTwp's fields,
// the "CAMA Parcels" check with the CAMA button of frmTesting, frmCamaParcel's Apply and OK,
// frmCama, and frmUnusedCama.

#include "cama/link_chain.h"
#include "cama/ui/cama_forms.h"
#include "form_test_support.h"

namespace tessel {

namespace {

std::string CamaRow(const std::string& key, const std::string& owner, const std::string& legal) {
  std::string line(370, ' ');
  line.replace(0, key.size(), key);
  line.replace(40, owner.size(), owner);
  line.replace(201, 8, "120N040E");
  line.replace(250, legal.size(), legal);
  return line;
}

}  // namespace

class CamaFormsTest : public QObject, WindowBench {
  Q_OBJECT

 private:
  // The sample job's identity in the jobs folder, as Open would set it; gives the folder.
  std::string SampleJobIdentity() {
    const std::string dir = QDir(jobs_).absolutePath().toStdString() + "/";
    SetJob(S(), dir, "T12NR04E");
    return dir;
  }

 private slots:
  void init() {
    MakeFolders(false);
    StartWindow();
  }
  void cleanup() { StopWindow(); }

  // The menu entries by name and caption, and frmQueryTwp's fields with their defaults.
  void menuEntriesAndTheQueryDialog() {
    const std::pair<const char*, const char*> entries[] = {
        {"mnuAttributesCama", "Import CAMA file"},         {"mnuAttributesCamaLink", "Link Parcels with CAMA"},
        {"mnuAttributesCamaTest", "Clear Cama Variables"}, {"mnuattributesDelCama", "Delete Old Cama"},
        {"munAttributesUnusedCama", "Show Unused Cama Parcels"}, {"mnuViewCama", "CAMA Parcels"}};
    for (const auto& [name, caption] : entries) QCOMPARE(Action(name)->text(), QString::fromLatin1(caption));
    QVERIFY(Action("mnuViewCama")->isCheckable());

    QueryTwpForm dialog(DefaultTownshipQuery("T12NR04E"), window_.get());
    QCOMPARE(dialog.objectName(), QStringLiteral("frmQueryTwp"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Query CAMA Database"));
    const std::pair<const char*, const char*> fields[] = {{"txtTownship", "12"}, {"txtTwpFraction", "0"},
                                                          {"txtTwpDirection", "N"}, {"txtRange", "04"},
                                                          {"txtRngFraction", "0"}, {"txtRngDirection", "E"}};
    for (const auto& [name, value] : fields) {
      QCOMPARE(dialog.findChild<QLineEdit*>(QString::fromLatin1(name))->text(), QString::fromLatin1(value));
    }
    dialog.findChild<QLineEdit*>(QStringLiteral("txtTwpFraction"))->setText(QStringLiteral("5"));
    QCOMPARE(QueryCode(dialog.Fields()), std::string("125N040E"));
    QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")));
    QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")));
  }

  // Import CAMA file through its entry: the database is read off the interface thread with its
  // progress and a Cancel in the status bar and the menus off; a cancel leaves .cama byte for byte
  // as it was and says so, a run to the end appends the township's rows.
  void importShowsProgressAndACancelLeavesCamaAsItWas() {
    const std::string dir = SampleJobIdentity();
    const QString cama = QString::fromStdString(dir + "T12NR04E.cama");
    QVERIFY(WriteText(cama, CrLf({CamaRow("00000000000000000", "EARLIER", "NE")})));
    // A database of several reading parts, every other row of the township.
    std::vector<std::string> rows, ours;
    for (int k = 0; k < 12000; ++k) {
      std::string row = CamaRow(std::to_string(100000 + k), "OWNER", "NE");
      if (k % 2) row.replace(201, 8, "130N040E");
      else ours.push_back(row);
      rows.push_back(row);
    }
    const QString database = QString::fromStdString(dir + "county.txt");
    QVERIFY(WriteText(database, CrLf(rows)));

    for (const bool cancel : {true, false}) {
      const QByteArray before = Bytes(cama);
      bool shown = false, menusOff = false;
      const auto answer = [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
          box->button(QMessageBox::Yes)->click();  // append
        } else if (modal && modal->objectName() == QStringLiteral("frmQueryTwp")) {
          modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        } else if (auto* chooser = qobject_cast<QFileDialog*>(modal)) {
          // The chooser is asked for from the worker: the strip stands already.
          QProgressBar* bar = LongWorkBar(W().statusBar());
          shown = bar != nullptr && bar->isVisible();
          menusOff = !W().menuBar()->isEnabled();
          if (cancel) CancelLongWork(W().statusBar());
          // Typed, as selectFile leaves a focused name field alone.
          chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(database);
          QMetaObject::invokeMethod(chooser, "accept");
        }
      };
      Ticking(20, answer, [this] { Action("mnuAttributesCama")->trigger(); });
      QVERIFY(shown && menusOff && W().menuBar()->isEnabled() && !LongWorkBar(W().statusBar()));
      QCOMPARE(Panel(1), QString::fromStdString(S().JobBase));
      if (cancel) {
        QVERIFY(Bytes(cama) == before);
        QCOMPARE(W().statusBar()->currentMessage(), QStringLiteral("CAMA import cancelled: %1 is as it was.").arg(cama));
      } else {
        QVERIFY(Bytes(cama) == before + CrLf(ours));
      }
    }
  }

  void handLinkThroughTheForms() {
    Session& s = S();
    const std::string dir = SampleJobIdentity();
    WriteFileBytes(dir + "T12NR04E.cama", JoinCrLf({CamaRow("11111107100000001", "BROWN", "NE"),
                                                    CamaRow("22222207400000002", "JONES", "LOT 3")}));
    s.parcels.ParcelCount = 1;
    s.parcels.ParcelLine.at(1) = "Sec_007 P T_L 3";
    s.parcels.ParcelX.at(1) = 1000;
    s.parcels.ParcelY.at(1) = 2000;
    Action("mnuAttributesCamaLink")->trigger();
    QVERIFY(s.DatasetExists(".mtc"));
    LoadLinkFile(s);

    auto* cama = In<QPushButton>("frmTesting", "cmdCama");
    Action("mnuViewCama")->setChecked(true);
    QVERIFY(s.checks.mnuViewCama && !cama->isHidden());

    // The link record in frmTesting's list, then CAMA: the section's records.
    s.selection.AddParcelEntry(s.cama.LinkGeocode.get(1), {PickKind::LinkRecord, 1, s.cama.LinkReading});
    s.selection.SelectedParcels.at(0) = 1;
    s.SelectionCount = 1;
    s.Changed(Change::Selection);
    cama->click();
    QVERIFY(Form("frmCamaParcel")->isVisible());
    QCOMPARE(Form("frmCamaParcel")->windowTitle(), QStringLiteral("Cama Parcels for Section 07"));
    auto* list = In<QListWidget>("frmCamaParcel", "lstCama");
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(1)->text(), QStringLiteral("Sec 07 LOT 3"));
    list->setCurrentRow(1);
    emit list->itemClicked(list->item(1));
    QCOMPARE(In<QLabel>("frmCamaParcel", "lblOwner")->text().trimmed(), QStringLiteral("Owners Name JONES"));
    Press("frmCamaParcel", "cmdApply");
    Press("frmCamaParcel", "cmdOK");
    QVERIFY(!Form("frmCamaParcel")->isVisible());
    QVERIFY(Bytes(QString::fromStdString(dir + "T12NR04E.mtc")).contains("GeoCode = 22222207400000002"));

    // OK read the link file back, and the row kept its record; a click on the row shows its CAMA
    // record in frmCama.
    QCOMPARE(s.selection.ParcelPicks().size(), std::size_t{1});
    QCOMPARE(s.selection.ParcelPicks()[0].reading, s.cama.LinkReading);
    auto* rows = In<QListWidget>("frmTesting", "lstItems");
    rows->setCurrentRow(0);
    emit rows->itemClicked(rows->item(0));
    QVERIFY(Form("frmCama")->isVisible());
    QCOMPARE(Form("frmCama")->windowTitle(), QStringLiteral("Cama Parcel"));
    QCOMPARE(In<QLabel>("frmCama", "lblGeocode")->text(), QStringLiteral("geocode = 22222207400000002"));
    QVERIFY(In<QPlainTextEdit>("frmCama", "txtLegal")->toPlainText().startsWith(QStringLiteral("LOT 3")));

    // The unused report lists record 1, which no link carries now.
    Action("munAttributesUnusedCama")->trigger();
    QVERIFY(Form("frmUnusedCama")->isVisible());
    auto* unused = In<QListWidget>("frmUnusedCama", "lstUnused");
    QCOMPARE(unused->count(), 1);
    QCOMPARE(unused->item(0)->text(), QStringLiteral("11111107100000001"));
    Press("frmUnusedCama", "cmdClear");
    QCOMPARE(unused->count(), 0);

    Action("mnuViewCama")->setChecked(false);
    QVERIFY(cama->isHidden());
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::CamaFormsTest)
#include "cama_forms_test.moc"
