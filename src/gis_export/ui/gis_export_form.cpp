#include "gis_export/ui/gis_export_form.h"

#include <QAction>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "db_export/db_settings.h"
#include "gis_export/gis_export.h"
#include "paint/qt_text.h"
#include "forms/ui/long_work.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

GisExportForm::GisExportForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmGisExport"));
  setWindowTitle(FromBytes(kGisExportTitle));

  file_ = new QLineEdit(this);
  file_->setObjectName(QStringLiteral("txtGisFile"));
  QPushButton* browse = Button(this, "cmdGisBrowse", tr("Browse..."));
  format_ = new QLabel(this);
  format_->setObjectName(QStringLiteral("lblGisFormat"));

  layers_ = new QListWidget(this);
  layers_->setObjectName(QStringLiteral("lstGisLayers"));
  for (const std::string_view name : kGisLayerNames) {
    auto* item = new QListWidgetItem(QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size())), layers_);
    // The link records come from the job's CAMA link file; without one there is nothing to write.
    const bool available = name != "cama_links" || (!session_.JobBase.empty() && session_.DatasetExists(".mtc"));
    item->setFlags(available ? (Qt::ItemIsEnabled | Qt::ItemIsUserCheckable) : Qt::ItemIsUserCheckable);
    item->setCheckState(available ? Qt::Checked : Qt::Unchecked);
    if (!available) item->setToolTip(tr("The job has no CAMA link file (.mtc); link its parcels first."));
  }

  search_ = new QLineEdit(this);
  search_->setObjectName(QStringLiteral("txtCrsSearch"));
  search_->setPlaceholderText(tr("Search State Plane zones (name or code)"));
  zones_ = new QListWidget(this);
  zones_->setObjectName(QStringLiteral("lstCrs"));
  for (const CrsEntry& zone : StatePlaneZones()) {
    auto* item = new QListWidgetItem(QStringLiteral("EPSG:%1  %2").arg(zone.code).arg(FromBytes(zone.name)), zones_);
    item->setData(Qt::UserRole, QStringLiteral("EPSG:%1").arg(zone.code));
  }
  crs_ = new QLineEdit(this);
  crs_->setObjectName(QStringLiteral("txtCrs"));
  crs_->setPlaceholderText(tr("EPSG:NNNN, or empty for the job's .prj"));
  writePrj_ = new QCheckBox(tr("Write this system to the job's .prj"), this);
  writePrj_->setObjectName(QStringLiteral("chkWritePrj"));

  // The destination: a file, or a database whose password is typed for this export only.
  toFile_ = new QRadioButton(tr("File"), this);
  toFile_->setObjectName(QStringLiteral("optGisFile"));
  toDatabase_ = new QRadioButton(tr("Database (PostgreSQL/PostGIS)"), this);
  toDatabase_->setObjectName(QStringLiteral("optGisDatabase"));
  toFile_->setChecked(true);
  const DbConnection saved = ReadDbConnection(session_);
  auto field = [this](const char* name, const std::string& text, const QString& hint) {
    auto* edit = new QLineEdit(FromBytes(text), this);
    edit->setObjectName(QLatin1String(name));
    edit->setPlaceholderText(hint);
    return edit;
  };
  service_ = field("txtDbService", saved.service, tr("a service of pg_service.conf, or empty"));
  host_ = field("txtDbHost", saved.host, tr("localhost"));
  port_ = field("txtDbPort", saved.port, tr("5432"));
  database_ = field("txtDbName", saved.database, QString());
  user_ = field("txtDbUser", saved.user, QString());
  schema_ = field("txtDbSchema", saved.schema, tr("public"));
  password_ = field("txtDbPassword", {}, tr("empty to use ~/.pgpass or the service; never stored"));
  password_->setEchoMode(QLineEdit::Password);

  QPushButton* ok = Button(this, "cmdGisExport", tr("Export"));
  QPushButton* cancel = Button(this, "cmdGisCancel", tr("Cancel"));
  ok->setDefault(true);

  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(file_, 1);
  fileRow->addWidget(browse);
  auto* destination = new QHBoxLayout;
  destination->addWidget(toFile_);
  destination->addWidget(toDatabase_);
  destination->addStretch();
  fileBox_ = new QWidget(this);
  auto* fileForm = new QFormLayout(fileBox_);
  fileForm->setContentsMargins(0, 0, 0, 0);
  fileForm->addRow(tr("File:"), fileRow);
  fileForm->addRow(tr("Format:"), format_);
  databaseBox_ = new QWidget(this);
  auto* databaseForm = new QFormLayout(databaseBox_);
  databaseForm->setContentsMargins(0, 0, 0, 0);
  databaseForm->addRow(tr("Service:"), service_);
  databaseForm->addRow(tr("Host:"), host_);
  databaseForm->addRow(tr("Port:"), port_);
  databaseForm->addRow(tr("Database:"), database_);
  databaseForm->addRow(tr("User:"), user_);
  databaseForm->addRow(tr("Schema:"), schema_);
  databaseForm->addRow(tr("Password:"), password_);
  auto* form = new QFormLayout;
  form->addRow(tr("Export to:"), destination);
  form->addRow(fileBox_);
  form->addRow(databaseBox_);
  form->addRow(tr("Layers:"), layers_);
  auto* crsBox = new QVBoxLayout;
  crsBox->addWidget(search_);
  crsBox->addWidget(zones_, 1);
  crsBox->addWidget(crs_);
  crsBox->addWidget(writePrj_);
  form->addRow(tr("Coordinate system:"), crsBox);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addLayout(buttons);

  connect(browse, &QPushButton::clicked, this, [this] {
    FileRequest request;
    request.title = "Export the job to a GIS or CAD file";
    request.filter = kGisExportFilter;
    request.initialFolder = session_.JobFolder;
    request.defaultExtension = "gpkg";
    request.save = true;
    request.overwritePrompt = true;
    request.fileName = session_.JobName + ".gpkg";
    if (const auto choice = session_.user.ChooseFile(request)) SetOutput(FromBytes(choice->fileName));
  });
  connect(file_, &QLineEdit::textChanged, this, [this] { ShowFormat(); });
  connect(toDatabase_, &QRadioButton::toggled, this, [this] { ShowDestination(); });
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) { FilterZones(text); });
  connect(zones_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item) crs_->setText(item->data(Qt::UserRole).toString());
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    if (Export()) accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  if (!session_.JobBase.empty()) {
    SetOutput(FromBytes(session_.JobBase + ".gpkg"));
  }
  ShowFormat();
  ShowDestination();
}

void GisExportForm::ShowDestination() {
  fileBox_->setVisible(!toDatabase_->isChecked());
  databaseBox_->setVisible(toDatabase_->isChecked());
}

void GisExportForm::SetOutput(const QString& path) { file_->setText(path); }

void GisExportForm::ShowFormat() {
  const auto format = GisFormatOf(ToBytes(file_->text()));
  format_->setText(format ? QString::fromLatin1(GisFormatName(*format))
                          : tr("The file type chooses the format: .gpkg, .geojson, .shp or .dxf"));
}

void GisExportForm::FilterZones(const QString& text) {
  const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  for (int i = 0; i < zones_->count(); ++i) {
    QListWidgetItem* item = zones_->item(i);
    bool shown = true;
    for (const QString& word : words) shown = shown && item->text().contains(word, Qt::CaseInsensitive);
    item->setHidden(!shown);
  }
}

bool GisExportForm::Export() {
  GisExportRequest request;
  request.out = ToBytes(file_->text());
  request.crs = ToBytes(crs_->text().trimmed());
  for (int i = 0; i < layers_->count(); ++i) {
    if (layers_->item(i)->checkState() == Qt::Checked) request.layers.push_back(ToBytes(layers_->item(i)->text()));
  }
  if (request.layers.empty()) {
    session_.user.Message("Choose at least one layer to export.", Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (toDatabase_->isChecked()) {
    const DbConnection connection{ToBytes(service_->text()), ToBytes(host_->text()), ToBytes(port_->text()),
                                  ToBytes(database_->text()), ToBytes(user_->text()), ToBytes(schema_->text())};
    const std::string password = ToBytes(password_->text());
    const bool writePrj = writePrj_->isChecked();
    bool written = false;
    // The database takes its rows in one transaction, which is not stopped halfway: no Cancel.
    RunLongWork(
        *this, [&](Progress&) { written = RunDbExport(session_, connection, password, request, writePrj); },
        CancelOffer::None);
    return written;
  }
  // Off the interface thread, with its progress and a Cancel at the dialog's foot.
  const bool writePrj = writePrj_->isChecked();
  bool written = false;
  RunLongWork(*this, [&](Progress& progress) { written = RunGisExport(session_, request, writePrj, &progress); });
  return written;
}

void InstallGisExportForms(QMainWindow& window, Session& session) {
  Session* s = &session;
  QWidget* parent = &window;
  auto* exportMenu = window.findChild<QMenu*>(QStringLiteral("mnuFileExport"));
  if (exportMenu == nullptr) return;
  QAction* action = exportMenu->addAction(FromBytes(kGisExportMenuText));
  action->setObjectName(QStringLiteral("mnuFileExportGis"));
  QObject::connect(action, &QAction::triggered, parent, [s, parent] {
    GisExportForm form(*s, parent);
    form.exec();
  });
}

}  // namespace tessel
