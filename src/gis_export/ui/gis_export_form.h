#pragma once
// frmGisExport: the file to export to (its type chooses the format) or a PostGIS database, the
// layers to include and the coordinate reference system, with a searchable list of the State
// Plane zones GDAL knows. The export itself and its messages are the gis_export and db_export
// libraries'.

#include <QDialog>

#include "model/session.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QRadioButton;
class QWidget;

namespace tessel {

// Adds "GIS or CAD file (GeoPackage, GeoJSON, Shapefile, DXF)..." to File > Export.
void InstallGisExportForms(QMainWindow& window, Session& session);

class GisExportForm : public QDialog {
  Q_OBJECT
 public:
  GisExportForm(Session& session, QWidget* parent);

  // The output file, as Browse or the user's typing leaves it.
  void SetOutput(const QString& path);
  // Runs the export as the Export button does; true when the files were written.
  bool Export();

 private:
  void ShowFormat();
  void ShowDestination();
  void FilterZones(const QString& text);
  Session& session_;
  QRadioButton* toFile_;
  QRadioButton* toDatabase_;
  QWidget* fileBox_;
  QWidget* databaseBox_;
  QLineEdit* service_;
  QLineEdit* host_;
  QLineEdit* port_;
  QLineEdit* database_;
  QLineEdit* user_;
  QLineEdit* schema_;
  QLineEdit* password_;
  QLineEdit* file_;
  QLabel* format_;
  QListWidget* layers_;
  QLineEdit* search_;
  QListWidget* zones_;
  QLineEdit* crs_;
  QCheckBox* writePrj_;
};

}  // namespace tessel
