#pragma once
// The forms of the post-adjustment calculations: the lists (frmADD), the definition editor
// (frmADDCalcs), the omission wizards (frmNotWiz, frmNotWiz2) and the range delete
// (frmMultiDelete). Every rule and text is decided by the calculations library; these only show
// and forward.

#include <QDialog>
#include <QWidget>
#include <array>
#include <memory>

#include "calculations/calculation_files.h"
#include "calculations/definition_editor.h"
#include "forms/ui/session_view.h"
#include "model/session.h"
#include "subdivision/ui/subdivision_forms.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace tessel {

// frmADDCalcs, "Post Adjustment Calculation": one definition, new or edited. It stays open
// beside the canvas, so that points can be picked into it.
class AddCalcsForm : public QDialog {
  Q_OBJECT
 public:
  AddCalcsForm(Session& session, QWidget* parent);
  // A new definition of a type (1 to 3), to go at the end of the list.
  void StartNew(int type);
  // The definition at list entry `index`.
  void StartEdit(int index);
  // The form's fields as a definition, and back.
  DefinitionInput Input() const;
  void Show(const DefinitionInput& input);
  // "OK": the checks, then the save; false when a check failed (the message shown and the focus
  // on its field) or the files could not be written.
  bool Save();

  QComboBox* type;
  QLineEdit* newPoint;
  QComboBox* survey;
  QLabel* heading;
  QLabel* hint;
  std::array<std::array<QLineEdit*, kLineFields>, 2> fields{};
  std::array<std::array<QLabel*, kLineFields>, 2> labels{};
  std::array<QComboBox*, 2> lineTypes{};
  std::array<QComboBox*, 2> kinds{};
  std::array<QWidget*, 2> groups{};

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void FillKinds();
  void Relabel(int line);
  void Open();
  // The lists changed: the definition edited is found again, or the editor closes.
  void Follow();
  Session& session_;
  EditedEntry edited_;
  bool filling_ = false;
  bool saving_ = false;
  std::unique_ptr<PickRegistration> picks_;
  std::unique_ptr<SessionView> view_;
};

// frmNotWiz, "New NOT definition": a point or a line segment.
class NotWizForm : public QDialog {
  Q_OBJECT
 public:
  explicit NotWizForm(QWidget* parent);
  QRadioButton* point;
  QRadioButton* line;
};

// frmNotWiz2: the identifiers of a point or segment to leave out, new or edited.
class NotWiz2Form : public QDialog {
  Q_OBJECT
 public:
  NotWiz2Form(Session& session, QWidget* parent);
  // `index` -1 for a new entry.
  void Start(bool line, int index);
  bool Save();
  QLabel* prompt;
  QLineEdit* from;
  QLineEdit* to;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void Follow();
  const std::vector<std::string>& List() const;
  Session& session_;
  bool line_ = false;
  EditedEntry edited_;
  bool saving_ = false;
  std::unique_ptr<PickRegistration> picks_;
  std::unique_ptr<SessionView> view_;
};

// frmMultiDelete: a range of identifiers whose definitions go.
class MultiDeleteForm : public QDialog {
  Q_OBJECT
 public:
  explicit MultiDeleteForm(QWidget* parent);
  QLineEdit* start;
  QLineEdit* end;
};

// frmADD, "Post Adjustment Calculations".
class AddForm : public QWidget {
  Q_OBJECT
 public:
  AddForm(Session& session, QWidget* parent);
  AddCalcsForm* editor() { return editor_; }
  NotWiz2Form* notEditor() { return notEditor_; }
  // The list of the tab showing.
  QListWidget* CurrentList() const;

  // The buttons.
  void New();
  void Edit();
  void Delete();
  void Compute(bool test);
  void ShowStatus();
  void MultiDelete();
  void Find();

  DialogRunner runDialog;
  QTabWidget* tabs;
  QListWidget* definitions;
  QListWidget* notPoints;
  QListWidget* notLines;
  QLabel* descriptionHeading;
  QPlainTextEdit* description;
  QLabel* notCaption;
  QPushButton* editButton;

 public slots:
  // The lists shown anew from the session.
  void Reload();

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void Describe();
  Session& session_;
  AddCalcsForm* editor_;
  NotWiz2Form* notEditor_;
  QWidget* find_ = nullptr;
  std::unique_ptr<SessionView> view_;
};

// "Post-adjustment calculations" in the Cadastral Tools of the Command menu.
void InstallCalculationsForms(QMainWindow& window, Session& session);

}  // namespace tessel
