// The CAMA linking's forms on the offscreen platform: the menu entries, frmQueryTwp's fields,
// the "CAMA Parcels" check with the CAMA button of frmTesting, frmCamaParcel's Apply and OK,
// frmCama, and frmUnusedCama.

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QStatusBar>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include "app/view_window.h"
#include "cama/link_chain.h"
#include "cama/ui/cama_forms.h"
#include "model/text_file.h"

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

class CamaFormsTest : public QObject {
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

  void menuEntriesByName() {
    ViewWindow& w = *window_;
    const std::pair<const char*, const char*> entries[] = {
        {"mnuAttributesCama", "Import CAMA file"},
        {"mnuAttributesCamaLink", "Link Parcels with CAMA"},
        {"mnuAttributesCamaTest", "Clear Cama Variables"},
        {"mnuattributesDelCama", "Delete Old Cama"},
        {"munAttributesUnusedCama", "Show Unused Cama Parcels"},
        {"mnuViewCama", "CAMA Parcels"}};
    for (const auto& [name, caption] : entries) {
      QAction* action = w.findChild<QAction*>(QString::fromLatin1(name));
      QVERIFY2(action, name);
      QCOMPARE(action->text(), QString::fromLatin1(caption));
    }
    QVERIFY(w.findChild<QAction*>(QStringLiteral("mnuViewCama"))->isCheckable());
  }

  void queryDialogFieldsAndDefaults() {
    QueryTwpForm dialog(DefaultTownshipQuery("T12NR04E"), window_.get());
    QCOMPARE(dialog.objectName(), QStringLiteral("frmQueryTwp"));
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Query CAMA Database"));
    const char* names[] = {"txtTownship", "txtTwpFraction", "txtTwpDirection", "txtRange", "txtRngFraction", "txtRngDirection"};
    const char* values[] = {"12", "0", "N", "04", "0", "E"};
    for (int k = 0; k < 6; ++k) QCOMPARE(dialog.findChild<QLineEdit*>(QString::fromLatin1(names[k]))->text(), QString::fromLatin1(values[k]));
    dialog.findChild<QLineEdit*>(QStringLiteral("txtTwpFraction"))->setText(QStringLiteral("5"));
    QCOMPARE(QueryCode(dialog.Fields()), std::string("125N040E"));
    QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")));
    QVERIFY(dialog.findChild<QPushButton*>(QStringLiteral("cmdCancel")));
  }

  // Import CAMA file through its entry: the database is read off the interface thread with its
  // progress and a Cancel in the status bar and the menus off; a cancel leaves .cama byte for byte
  // as it was and says so, a run to the end appends the township's rows.
  void importShowsProgressAndACancelLeavesCamaAsItWas() {
    ViewWindow& w = *window_;
    Session& s = w.session();
    const std::string dir = SampleJobIdentity(s);
    const std::string cama = dir + "T12NR04E.cama";
    WriteFileBytes(cama, JoinCrLf({CamaRow("00000000000000000", "EARLIER", "NE")}));
    // A database of several reading parts, every other row of the township.
    std::vector<std::string> rows, ours;
    for (int k = 0; k < 12000; ++k) {
      std::string row = CamaRow(std::to_string(100000 + k), "OWNER", "NE");
      if (k % 2) row.replace(201, 8, "130N040E");
      else ours.push_back(row);
      rows.push_back(row);
    }
    const std::string database = dir + "county.txt";
    WriteFileBytes(database, JoinCrLf(rows));

    for (const bool cancel : {true, false}) {
      std::string before;
      QVERIFY(ReadFileBytes(cama, before));
      bool shown = false, menusOff = false;
      QTimer answer;
      answer.setInterval(20);
      connect(&answer, &QTimer::timeout, this, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
          box->button(QMessageBox::Yes)->click();  // append
        } else if (modal && modal->objectName() == QStringLiteral("frmQueryTwp")) {
          modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
        } else if (auto* chooser = qobject_cast<QFileDialog*>(modal)) {
          // The chooser is asked for from the worker: the strip stands already.
          auto* bar = w.statusBar()->findChild<QProgressBar*>(QStringLiteral("prgLongWork"));
          shown = bar != nullptr && bar->isVisible();
          menusOff = !w.menuBar()->isEnabled();
          if (cancel) w.statusBar()->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))->click();
          // Typed, as selectFile leaves a focused name field alone.
          chooser->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QString::fromStdString(database));
          QMetaObject::invokeMethod(chooser, "accept");
        }
      });
      answer.start();
      w.findChild<QAction*>(QStringLiteral("mnuAttributesCama"))->trigger();
      answer.stop();
      QVERIFY(shown);
      QVERIFY(menusOff);
      QVERIFY(w.menuBar()->isEnabled());
      QVERIFY(!w.statusBar()->findChild<QProgressBar*>(QStringLiteral("prgLongWork")));
      QCOMPARE(w.findChild<QLabel*>(QStringLiteral("Panel1"))->text(), QString::fromStdString(s.JobBase));
      std::string after;
      QVERIFY(ReadFileBytes(cama, after));
      if (cancel) {
        QVERIFY(after == before);
        QCOMPARE(w.statusBar()->currentMessage(),
                 QStringLiteral("CAMA import cancelled: %1 is as it was.").arg(QString::fromStdString(cama)));
      } else {
        QVERIFY(after == before + JoinCrLf(ours));
      }
    }
  }

  void handLinkThroughTheForms() {
    ViewWindow& w = *window_;
    Session& s = w.session();
    const std::string dir = SampleJobIdentity(s);
    WriteFileBytes(dir + "T12NR04E.cama", JoinCrLf({CamaRow("11111107100000001", "BROWN", "NE"),
                                                    CamaRow("22222207400000002", "JONES", "LOT 3")}));
    s.parcels.ParcelCount = 1;
    s.parcels.ParcelLine.at(1) = "Sec_007 P T_L 3";
    s.parcels.ParcelX.at(1) = 1000;
    s.parcels.ParcelY.at(1) = 2000;
    w.findChild<QAction*>(QStringLiteral("mnuAttributesCamaLink"))->trigger();
    QVERIFY(s.DatasetExists(".mtc"));
    LoadLinkFile(s);

    auto* testing = w.findChild<QWidget*>(QStringLiteral("frmTesting"));
    auto* cama = testing->findChild<QPushButton*>(QStringLiteral("cmdCama"));
    QAction* plot = w.findChild<QAction*>(QStringLiteral("mnuViewCama"));
    plot->setChecked(true);
    QVERIFY(s.checks.mnuViewCama);
    QVERIFY(!cama->isHidden());

    // The link record in frmTesting's list, then CAMA: the section's records.
    s.selection.AddParcelEntry(s.cama.LinkGeocode.get(1), {PickKind::LinkRecord, 1, s.cama.LinkReading});
    s.selection.SelectedParcels.at(0) = 1;
    s.SelectionCount = 1;
    s.Changed(Change::Selection);
    cama->click();
    auto* form = w.findChild<QWidget*>(QStringLiteral("frmCamaParcel"));
    QVERIFY(form->isVisible());
    QCOMPARE(form->windowTitle(), QStringLiteral("Cama Parcels for Section 07"));
    auto* list = form->findChild<QListWidget*>(QStringLiteral("lstCama"));
    QCOMPARE(list->count(), 2);
    QCOMPARE(list->item(1)->text(), QStringLiteral("Sec 07 LOT 3"));
    list->setCurrentRow(1);
    emit list->itemClicked(list->item(1));
    QCOMPARE(form->findChild<QLabel*>(QStringLiteral("lblOwner"))->text().trimmed(), QStringLiteral("Owners Name JONES"));
    form->findChild<QPushButton*>(QStringLiteral("cmdApply"))->click();
    form->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
    QVERIFY(!form->isVisible());
    std::string mtc;
    QVERIFY(ReadFileBytes(dir + "T12NR04E.mtc", mtc));
    QVERIFY(mtc.find("GeoCode = 22222207400000002") != std::string::npos);

    // A click on the row shows its CAMA record in frmCama.
    auto* rows = testing->findChild<QListWidget*>(QStringLiteral("lstItems"));
    // OK read the link file back, and the row kept its record.
    QCOMPARE(s.selection.ParcelPicks().size(), std::size_t{1});
    QCOMPARE(s.selection.ParcelPicks()[0].reading, s.cama.LinkReading);
    rows->setCurrentRow(0);
    emit rows->itemClicked(rows->item(0));
    auto* record = w.findChild<QWidget*>(QStringLiteral("frmCama"));
    QVERIFY(record->isVisible());
    QCOMPARE(record->windowTitle(), QStringLiteral("Cama Parcel"));
    QCOMPARE(record->findChild<QLabel*>(QStringLiteral("lblGeocode"))->text(), QStringLiteral("geocode = 22222207400000002"));
    QVERIFY(record->findChild<QPlainTextEdit*>(QStringLiteral("txtLegal"))->toPlainText().startsWith(QStringLiteral("LOT 3")));

    // The unused report lists record 1, which no link carries now.
    w.findChild<QAction*>(QStringLiteral("munAttributesUnusedCama"))->trigger();
    auto* unused = w.findChild<QWidget*>(QStringLiteral("frmUnusedCama"));
    QVERIFY(unused->isVisible());
    auto* unusedList = unused->findChild<QListWidget*>(QStringLiteral("lstUnused"));
    QCOMPARE(unusedList->count(), 1);
    QCOMPARE(unusedList->item(0)->text(), QStringLiteral("11111107100000001"));
    unused->findChild<QPushButton*>(QStringLiteral("cmdClear"))->click();
    QCOMPARE(unusedList->count(), 0);

    plot->setChecked(false);
    QVERIFY(cama->isHidden());
  }

 private:
  // The sample job's identity in the jobs folder, as Open would set it; gives the folder.
  std::string SampleJobIdentity(Session& s) {
    const std::string dir = QDir(jobs_->path()).absolutePath().toStdString() + "/";
    s.JobFolder = dir;
    s.JobBase = dir + "T12NR04E";
    s.JobName = "T12NR04E";
    s.CurrentFolder = dir;
    return dir;
  }

  std::unique_ptr<QTemporaryDir> tools_;
  std::unique_ptr<QTemporaryDir> jobs_;
  std::unique_ptr<ViewWindow> window_;
};

}  // namespace tessel

QTEST_MAIN(tessel::CamaFormsTest)
#include "cama_forms_test.moc"
