#pragma once
// The forms of the regions: the region console frmRegion, the reliabilities panel frmContinue
// and the post-region update frmGML. They show the fields of the headless console and forward
// their buttons to it.

#include <QDialog>
#include <QWidget>

#include "model/session.h"
#include "regions/post_region_update.h"
#include "regions/region_console.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPushButton;

namespace tessel {

// frmRegion, "Build / Edit  Region": the listing and the regional workflow.
class RegionForm : public QWidget {
  Q_OBJECT
 public:
  RegionForm(Session& session, QMainWindow& window);
  RegionConsole& console() { return console_; }

 public slots:
  // The console's fields shown anew.
  void Sync();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  // The widgets' fields into the console.
  void Pull();
  // Runs a command with the fields pulled before and shown after.
  template <typename F>
  void Command(F&& command);
  QPushButton* AddButton(const char* name, const QString& caption, const QString& tip);
  void ShowDetails();
  void OpenUpdate();

  Session& session_;
  QMainWindow& window_;
  RegionConsole console_;
  QLineEdit* project_;
  QLineEdit* tolerance_;
  QCheckBox* noPath_;
  QCheckBox* lines_;
  QCheckBox* ends_;
  QListWidget* list_;
  QLabel* panel1_;
  QLabel* panel2_;
  bool syncing_ = false;
};

// frmContinue: Continue --> or Cancel after the reliabilities' merge has been inspected.
class ContinueForm : public QWidget {
  Q_OBJECT
 public:
  ContinueForm(RegionConsole& console, QMainWindow& window);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QMainWindow& window_;
};

// frmGML, "Post Region Update": the five steps over the listing's projects.
class GmlForm : public QDialog {
  Q_OBJECT
 public:
  GmlForm(Session& session, const QString& project, QWidget* parent);
  UpdateOptions Options() const;

 private:
  QCheckBox* steps_[5];
  QLineEdit* tolerance_;
  QLabel* toleranceLabel_;
};

// Adds "Build / Edit Regions" to the Regions menu and the forms to the window.
void InstallRegionForms(QMainWindow& window, Session& session);

}  // namespace tessel
