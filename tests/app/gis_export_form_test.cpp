// The GIS export dialog on the offscreen platform: its entry under File > Export, the format shown
// by the file type, the searchable zone list, and an export of the sample job from the dialog.

#include <utility>

#include "gis_export/gis_export.h"
#include "gis_export/ui/gis_export_form.h"
#include "form_test_support.h"

namespace tessel {

class GisExportFormTest : public QObject {
  Q_OBJECT

 private slots:
  void entryStandsUnderFileExport() {
    QTemporaryDir tools;
    ViewWindow window(tools.path());
    window.Load();
    auto* entry = window.findChild<QAction*>(QStringLiteral("mnuFileExportGis"));
    QVERIFY(entry);
    QCOMPARE(entry->text(), QStringLiteral("GIS or CAD file (GeoPackage, GeoJSON, Shapefile, DXF)..."));
    auto* exportMenu = window.findChild<QMenu*>(QStringLiteral("mnuFileExport"));
    QVERIFY(exportMenu && exportMenu->actions().contains(entry));
  }

  void dialogExportsTheChosenLayersOrToADatabase() {
    if (!GdalAvailable()) QSKIP("built without GDAL");
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("job")) && QDir(dir.path()).mkpath(QStringLiteral("tool")));
    QVERIFY(CopySampleJob(dir.filePath(QStringLiteral("job"))));
    Bench b;
    b.session.ToolFolder = dir.filePath(QStringLiteral("tool")).toStdString();
    OpenJob(b.session, dir.filePath(QStringLiteral("job/T12NR04E.def")).toStdString(), "T12NR04E.def");

    GisExportForm form(b.session, nullptr);
    auto* file = form.findChild<QLineEdit*>(QStringLiteral("txtGisFile"));
    auto* format = form.findChild<QLabel*>(QStringLiteral("lblGisFormat"));
    QVERIFY(file && format && file->text().endsWith(QStringLiteral("T12NR04E.gpkg")));
    QCOMPARE(format->text(), QStringLiteral("GeoPackage"));
    const QString out = dir.path() + QStringLiteral("/parcels.shp");
    file->setText(out);
    QCOMPARE(format->text(), QStringLiteral("Shapefile"));

    // Only the parcels: one layer, so the Shapefile is the output itself.
    auto* layers = form.findChild<QListWidget*>(QStringLiteral("lstGisLayers"));
    QVERIFY(layers);
    QCOMPARE(layers->count(), 8);
    for (int i = 0; i < layers->count(); ++i) {
      QListWidgetItem* item = layers->item(i);
      item->setCheckState(item->text() == QStringLiteral("parcels") ? Qt::Checked : Qt::Unchecked);
    }

    // Searching the zones, then picking one, fills the system.
    auto* search = form.findChild<QLineEdit*>(QStringLiteral("txtCrsSearch"));
    auto* zones = form.findChild<QListWidget*>(QStringLiteral("lstCrs"));
    auto* crs = form.findChild<QLineEdit*>(QStringLiteral("txtCrs"));
    QVERIFY(search && zones && crs);
    search->setText(QStringLiteral("illinois east ftus"));
    QListWidgetItem* shown = nullptr;
    int visible = 0;
    for (int i = 0; i < zones->count(); ++i) {
      if (zones->item(i)->isHidden()) continue;
      ++visible;
      if (zones->item(i)->text().startsWith(QStringLiteral("EPSG:3435 "))) shown = zones->item(i);
    }
    QVERIFY(shown && visible < 10);
    zones->setCurrentItem(shown);
    QCOMPARE(crs->text(), QStringLiteral("EPSG:3435"));

    form.findChild<QPushButton*>(QStringLiteral("cmdGisExport"))->click();
    QCOMPARE(form.result(), int(QDialog::Accepted));
    QVERIFY(QFile::exists(out) && QFile::exists(dir.path() + QStringLiteral("/parcels.prj")));
    QVERIFY(!b.user.messages.empty() && b.user.messages.back().icon == Icon::Information);
    QVERIFY(b.user.messages.back().text.find("parcels: 30 features") != std::string::npos);

    // No layer at all is refused with a box, and the dialog stays.
    for (int i = 0; i < layers->count(); ++i) layers->item(i)->setCheckState(Qt::Unchecked);
    QVERIFY(!form.Export());
    QCOMPARE(b.user.messages.back().text, std::string("Choose at least one layer to export."));

    // The database choice: its fields are kept in the tool folder for the next time, the password
    // typed is used once and stored nowhere, and a server that cannot be reached is told in a box.
    auto database = std::make_unique<GisExportForm>(b.session, nullptr);
    database->show();
    auto edit = [&database](const char* name) { return database->findChild<QLineEdit*>(QLatin1String(name)); };
    QVERIFY(edit("txtGisFile")->isVisible() && !edit("txtDbHost")->isVisible());
    database->findChild<QRadioButton*>(QStringLiteral("optGisDatabase"))->click();
    QVERIFY(!edit("txtGisFile")->isVisible() && edit("txtDbHost")->isVisible());
    QCOMPARE(edit("txtDbPassword")->echoMode(), QLineEdit::Password);

    edit("txtDbHost")->setText(dir.path() + QStringLiteral("/no-server"));
    const std::pair<const char*, const char*> fields[] = {{"txtDbPort", "5999"}, {"txtDbName", "county"},
                                                          {"txtDbUser", "clerk"}, {"txtDbSchema", "plss"},
                                                          {"txtDbPassword", "s3cret"}};
    for (const auto& [name, text] : fields) edit(name)->setText(QString::fromLatin1(text));
    database->findChild<QPushButton*>(QStringLiteral("cmdGisExport"))->click();
    QVERIFY(database->result() != int(QDialog::Accepted) && b.user.messages.back().icon == Icon::Exclamation);
    const QString told = QString::fromStdString(b.user.messages.back().text);
    QVERIFY2(told.contains(QStringLiteral("the server cannot be reached")), qPrintable(told));
    QVERIFY2(!told.contains(QStringLiteral("s3cret")), qPrintable(told));

    const QByteArray bytes = Bytes(dir.filePath(QStringLiteral("tool/tessel-db.conn")));
    QVERIFY(bytes.contains("dbname=county\r\nuser=clerk\r\nschema=plss") && !bytes.contains("s3cret"));

    database = std::make_unique<GisExportForm>(b.session, nullptr);
    QCOMPARE(edit("txtDbHost")->text(), dir.path() + QStringLiteral("/no-server"));
    QCOMPARE(edit("txtDbSchema")->text(), QStringLiteral("plss"));
    QVERIFY(edit("txtDbPassword")->text().isEmpty());

    // Without a database or a service there is nothing to connect to.
    database->findChild<QRadioButton*>(QStringLiteral("optGisDatabase"))->click();
    edit("txtDbName")->clear();
    QVERIFY(!database->Export());
    QCOMPARE(b.user.messages.back().text, std::string("Give the database, or a service that names it."));
  }

  // The link layer is offered, and ticked, only when the job has a link file to read it from.
  void linkLayerFollowsTheJobsLinkFile() {
    QTemporaryDir dir;
    Bench b;
    QVERIFY(CopySampleJob(dir.path()));
    OpenJob(b.session, dir.filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    // The last layer of the list: its name, whether it is offered, whether it is ticked.
    const auto linkItem = [&b] {
      GisExportForm form(b.session, nullptr);
      QListWidgetItem* item = form.findChild<QListWidget*>(QStringLiteral("lstGisLayers"))->item(7);
      return item->text() + ((item->flags() & Qt::ItemIsEnabled) ? " offered" : " not offered") +
             (item->checkState() == Qt::Checked ? " ticked" : item->checkState() == Qt::Unchecked ? " unticked" : " part");
    };
    QCOMPARE(linkItem(), QStringLiteral("cama_links not offered unticked"));
    QVERIFY(QFile::copy(QStringLiteral(TESSEL_GOLDEN_DIR "/T12NR04E.mtc"), dir.filePath(QStringLiteral("T12NR04E.mtc"))));
    QCOMPARE(linkItem(), QStringLiteral("cama_links offered ticked"));
  }
};

}  // namespace tessel

QTEST_MAIN(tessel::GisExportFormTest)
#include "gis_export_form_test.moc"
