#pragma once
// The smaller forms of the suite commands: the new job wizard (frmStartupWiz, frmWiz2), the
// text window (frmReport), the user toolbox (frmToolbox) and the program browser (frmBrowse).

#include <QDialog>
#include <QPlainTextEdit>
#include <QWidget>

#include "model/session.h"

class QLineEdit;

namespace tessel {

// frmStartupWiz, "New job wizard": Next runs the wizard's steps, Cancel changes nothing.
class StartupWizardForm : public QDialog {
  Q_OBJECT
 public:
  StartupWizardForm(Session& session, QWidget* parent);
};

// frmWiz2, "Startup Wizard": the job has been set up.
class Wizard2Form : public QDialog {
  Q_OBJECT
 public:
  explicit Wizard2Form(QWidget* parent);
};

// frmReport, "Project Information": a resizable text window; each showing puts "new text" and a
// line break in front of its text.
class ReportForm : public QWidget {
  Q_OBJECT
 public:
  explicit ReportForm(QWidget* parent);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QPlainTextEdit* text_;
  bool placed_ = false;  // beside the main window at its first showing; where the user left it after
};

// frmToolbox, "Tools": twelve buttons for the user's programs.
class ToolboxForm : public QWidget {
  Q_OBJECT
 public:
  ToolboxForm(Session& session, QWidget* parent);

 public slots:
  // The captions of the twelve entries, as they stand in the settings.
  void Reload();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  Session& session_;
  bool placed_ = false;
};

// frmBrowse, "Browse": folders and files; "Add program" gives the selection back.
class BrowseForm : public QDialog {
  Q_OBJECT
 public:
  BrowseForm(const QString& start, QWidget* parent);
  QString Selected() const;

 private:
  QLineEdit* selected_;
};

}  // namespace tessel
