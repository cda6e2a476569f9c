#pragma once
// The forms of the archives: extracting a ZIP (frmUnzip), the ZIP wizard (frmZipWiz1 to
// frmZipWiz3 with frmSelectZip and frmZipNew), and the APD wizard (frmAPDWiz1). Qt's folder and
// file views stand in for the drive, folder and file lists. Every rule and text is in the
// archives library; the forms show and forward.

#include <QDialog>
#include <QString>

#include "model/session.h"

class QCheckBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QMainWindow;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTreeView;

namespace tessel {

// Adds "&Zip Maintenance" and "&Lzh Archive Maintenance" to the File menu, "&Amended Protraction
// Diagram" to File > Import and "Import APD" to the Reports menu.
void InstallArchivesForms(QMainWindow& window, Session& session);

// A tree of the file system showing folders and, when `pattern` is not empty, files matching it.
QTreeView* FolderTree(QWidget* parent, const char* name, const QString& pattern, const QString& start);
// The path of the tree's current entry; empty when none.
QString CurrentPath(QTreeView* tree);

// frmUnzip, "Extract .Zip file".
class UnzipForm : public QDialog {
  Q_OBJECT
 public:
  UnzipForm(Session& session, QWidget* parent);
  // The archive and the target, as the lists have them chosen.
  void Choose(const QString& zipFile, const QString& target);

 private:
  Session& session_;
  QTreeView* source_;
  QTreeView* target_;
  QCheckBox* setFolder_;
  QCheckBox* convert_;
};

// frmZipWiz1, "ZIP File Wizard": the choice between the current job and the manual options.
class ZipWizard1Form : public QDialog {
  Q_OBJECT
 public:
  ZipWizard1Form(Session& session, QWidget* parent);

 private:
  Session& session_;
  QRadioButton* current_;
  QRadioButton* manual_;
};

// The result of a wizard page that went back to the first page.
inline constexpr int kZipWizardBack = 2;

// frmZipWiz2, "ZIP Current job".
class ZipWizard2Form : public QDialog {
  Q_OBJECT
 public:
  ZipWizard2Form(Session& session, QWidget* parent);

 private:
  Session& session_;
  QLineEdit* zipFile_;
};

// frmZipWiz3: the ZIP file and the list of files chosen by hand.
class ZipWizard3Form : public QDialog {
  Q_OBJECT
 public:
  ZipWizard3Form(Session& session, QWidget* parent);

 private:
  void AddItem(const QString& item);
  Session& session_;
  QLineEdit* zipFile_;
  QTreeView* files_;
  QPlainTextEdit* items_;
};

// frmSelectZip, "Select zip file".
class SelectZipForm : public QDialog {
  Q_OBJECT
 public:
  SelectZipForm(const QString& start, QWidget* parent);
  QString Selected() const;

 private:
  QTreeView* tree_;
};

// frmZipNew, "New Zip File": folder, separator, name and ".zip".
class ZipNewForm : public QDialog {
  Q_OBJECT
 public:
  ZipNewForm(const QString& start, QWidget* parent);
  QString Selected() const;

 private:
  QTreeView* tree_;
  QLineEdit* name_;
};

// frmAPDWiz1, "Import APD".
class ApdWizardForm : public QDialog {
  Q_OBJECT
 public:
  ApdWizardForm(Session& session, QWidget* parent);
  // Shows the project and its file list, as Browse does after the job dialog.
  void ShowProject(bool finishEnabled, const std::vector<std::string>& files);

 private:
  Session& session_;
  QLineEdit* project_;
  QPlainTextEdit* files_;
  QLabel* progress_;
  QPushButton* finish_;
  QPushButton* cancel_;
  QPushButton* ok_;
};

}  // namespace tessel
