#pragma once
// The forms of the section subdivision: the township diagram (frmTWP) with its status window,
// the section dialog (frmIRR) and its dialogs (frmSubPtId, frmDblCor, frmProport,
// frmIntersect), and the special section wizards (frmADDWiz1 to frmADDWiz4). Every rule and
// text is decided by the subdivision library; these only show and forward.

#include <QDialog>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "forms/ui/session_view.h"
#include "model/session.h"
#include "subdivision/section_editor.h"
#include "subdivision/splitplan_runs.h"
#include "subdivision/township.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMainWindow;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace tessel {

// The background of a diagram button; the system colour clears it.
void PaintShade(QPushButton* button, Shade shade);

// How the forms run a modal dialog; tests replace it to fill the dialog and answer.
using DialogRunner = std::function<int(QDialog&)>;

// Runs a dialog to its end while the canvas stays live, so that points can be picked into it:
// the dialog is shown without modality and a local event loop waits for it.
int RunWithCanvasLive(QDialog& dialog);

// The small button beside a dialog's fields that switches picking points on the canvas on and
// off ("Select a point" / "Pan/Zoom").
QPushButton* PickButton(QWidget* parent, Session& session);

// A dialog's place among those taking picked points, for as long as it lives; the last to go
// switches picking off.
class PickRegistration {
 public:
  PickRegistration(Session& session, PickTarget target);
  ~PickRegistration();
  PickRegistration(const PickRegistration&) = delete;
  PickRegistration& operator=(const PickRegistration&) = delete;

 private:
  Session& session_;
  int handle_;
};

// A picked-point field of a line edit.
PickField FieldOf(QLineEdit* edit);
// Raises a dialog to the front.
void BringToFront(QWidget* widget);

// frmSubPtId, "Substitute Point Identifier".
class SubstituteDialog : public QDialog {
  Q_OBJECT
 public:
  SubstituteDialog(const QString& label, const QString& value, QWidget* parent);
  QLineEdit* field;
};

// frmDblCor: two rows of "Point ID" and "Controlling Direction". "Delete" ends with kDeleted.
class DoubleCornerDialog : public QDialog {
  Q_OBJECT
 public:
  static constexpr int kDeleted = 2;
  DoubleCornerDialog(const QString& heading, const std::array<DoubleCornerRow, 2>& rows, QWidget* parent);
  std::array<DoubleCornerRow, 2> Rows() const;
  std::array<QLineEdit*, 2> points{};
  std::array<QComboBox*, 2> directions{};
};

// frmProport, "Proportion".
class ProportionDialog : public QDialog {
  Q_OBJECT
 public:
  ProportionDialog(const QString& heading, const ProportionDefinition& value, QWidget* parent);
  QLineEdit* parenthetical;
  QLineEdit* total;
  QCheckBox* remove;
};

// frmIntersect: the two line definitions of a centre.
class IntersectDialog : public QDialog {
  Q_OBJECT
 public:
  IntersectDialog(const QString& heading, const LinePair& value, QWidget* parent);
  LinePair Pair() const;
  // Line 0 north-south, 1 east-west.
  std::array<QComboBox*, 2> types{};
  std::array<std::array<QLineEdit*, 4>, 2> fields{};

 private:
  void Relabel(int line);
  std::array<std::array<QLabel*, 4>, 2> labels_{};
  std::array<std::array<QLabel*, 2>, 2> groups_{};
};

// frmADDWiz2, "Define elongated section".
class ElongatedWizard : public QDialog {
  Q_OBJECT
 public:
  ElongatedWizard(Session& session, const QString& section, QWidget* parent);
  QLineEdit* section;
  QLineEdit* rows;
  std::array<QRadioButton*, 4> directions{};
};

// frmADDWiz3, "Short Section Definition".
class ShortSectionWizard : public QDialog {
  Q_OBJECT
 public:
  ShortSectionWizard(Session& session, const QString& section, QWidget* parent);
  QLineEdit* section;
  std::array<QRadioButton*, 4> closing{};
  std::array<QRadioButton*, 3> howShort{};
};

// frmADDWiz4, "Minor Subdivision Definition".
class MinorWizard : public QDialog {
  Q_OBJECT
 public:
  MinorWizard(Session& session, QWidget* parent);
  QLineEdit* parcel;
  QCheckBox* northSouth;
  QCheckBox* eastWest;
};

// The wizards' "<-- Back" ends them with this code.
inline constexpr int kWizardBack = 3;

// frmADDWiz1, "Select type of definition": the first page of a new definition.
class DefinitionTypeWizard : public QDialog {
  Q_OBJECT
 public:
  explicit DefinitionTypeWizard(QWidget* parent);
  // 0 to 5 in the order of the list; -1 when none is chosen.
  int Choice() const;

 private:
  QButtonGroup* choices_;
};

// Runs frmADDWiz1 and the wizard chosen on it. The first three choices go on to the
// post-adjustment definition form with the type chosen (1 traverse or proportion, 2 intersection,
// 3 connecting line), through `openDefinition`.
void RunDefinitionWizard(Session& session, QWidget* parent, const DialogRunner& run,
                         const std::function<void(int type)>& openDefinition);

// frmIRR: the section dialog.
class SectionDialogForm : public QDialog {
  Q_OBJECT
 public:
  SectionDialogForm(Session& session, QWidget* parent);
  // Shows the section the township diagram has set up.
  void Load(const SectionForm& form);
  SectionForm& form() { return form_; }
  // Runs a popup entry on a position, as its right click and choice would.
  void RunEntry(const std::string& entry, int position);
  // Labels, colours and emphasis from the form.
  void Refresh();

  DialogRunner runDialog;
  // After "Save Section": the sections still in .irr.
  std::function<void(const std::vector<int>&)> onSaved;

 private:
  void Popup(int position);
  Session& session_;
  SectionForm form_;
  // A dialog of a position is open: the popup and buttons wait for it.
  bool busy_ = false;
  std::array<QPushButton*, 26> buttons_{};
  std::array<QLabel*, 26> labels_{};
  std::unique_ptr<SessionView> view_;
};

// frmTWP, "Township diagram".
class TownshipForm : public QWidget {
  Q_OBJECT
 public:
  TownshipForm(Session& session, QWidget* parent);
  TownshipDiagram& diagram() { return diagram_; }
  SectionDialogForm* sectionDialog() { return section_; }
  // A click on a section button.
  void ClickSection(int section);
  // The buttons' colours from the diagram.
  void Refresh();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  Session& session_;
  TownshipDiagram diagram_;
  std::array<QPushButton*, 37> buttons_{};
  SectionDialogForm* section_;
  QWidget* status_;
  QPlainTextEdit* statusText_;
  std::unique_ptr<SessionView> view_;
};

// "Irregular Section Subdivision" in the Cadastral Tools of the Command menu.
void InstallSubdivisionForms(QMainWindow& window, Session& session);

}  // namespace tessel
