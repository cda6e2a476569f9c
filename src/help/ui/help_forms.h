#pragma once
// Help for the whole program: the Help menu (`mnuHelp`: Contents, Search, About Tessel) and F1,
// which opens the manual at the section of the form in use. F1 is caught once, for every
// window of the program: the form's section is the one whose heading names the object name of
// the focused widget or of the nearest window or widget around it that the manual names. A new
// form therefore needs nothing but a section in the manual.

#include <QDialog>
#include <QMainWindow>
#include <QPointer>

#include "help/ui/help_window.h"
#include "model/session.h"

namespace tessel {

// The About box `frmAbout`: the program's version, the Qt it was built with, and its licence.
class AboutForm : public QDialog {
  Q_OBJECT

 public:
  explicit AboutForm(QWidget* parent = nullptr);
};

// Owns the help window and answers F1 anywhere in the program.
class HelpController : public QObject {
  Q_OBJECT

 public:
  explicit HelpController(QMainWindow& window);
  ~HelpController() override;

  // The help window, shown and raised. While a modal dialog runs the window belongs to that
  // dialog, since every other window is shut off from the user until it ends.
  HelpWindow& Open();
  // F1 on `widget`: its section, or the nearest section of the widgets around it, or the title
  // page.
  void ContextHelp(QWidget* widget);
  // The help window when one stands, else null.
  HelpWindow* window() const { return help_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QMainWindow& main_;
  QPointer<HelpWindow> help_;
};

// Adds the Help menu to the main window and starts answering F1. Install first among the
// subsystems' forms, so that `mnuHelp` ends the menu bar and others can add to it.
void InstallHelpForms(QMainWindow& window, Session& session);

}  // namespace tessel
