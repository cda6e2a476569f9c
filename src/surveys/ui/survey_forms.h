#pragma once
// The forms of the survey records: frmListSurveys ("Survey ID's"), frmSidEdit ("Survey ID
// Properties"), frmEditRawData (" Edit Line Segment") and frmSwitchSID ("Change SID
// Assignment"), and the "Edit Line" and "Change SID" keys of frmSelectedLines. Every rule and
// text is the surveys library's; these only show and forward.

#include <QDialog>
#include <QWidget>
#include <array>
#include <memory>

#include "forms/ui/session_view.h"
#include "model/session.h"
#include "surveys/raw_records.h"
#include "surveys/survey_editor.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPlainTextEdit;

namespace tessel {

// frmSidEdit: thirteen tick boxes beside their fields; "Options" shows or hides boxes 8 to 13.
class SidEditForm : public QDialog {
  Q_OBJECT
 public:
  SidEditForm(Session& session, QWidget* parent);
  // Shows the form's values; no box is ticked by the showing itself.
  void Show(const SidForm& form);
  // The values and ticks as they stand.
  SidForm Form() const;
  // OK: the save; the dialog closes when it is done.
  void Save();

 private:
  QLineEdit* AddText(QWidget* owner, int box, const char* name, int decimals);
  QComboBox* AddList(QWidget* owner, int box, const char* name, const char* const* items, int count);

  Session& session_;
  SidForm form_;
  bool showing_ = false;
  std::unique_ptr<SessionView> view_;
  std::array<QCheckBox*, 14> ticks_{};
  QLineEdit *constant_, *ppm_, *seconds_, *name_, *easting_, *northing_;
  QPlainTextEdit* comments_;
  QComboBox *units_, *type_, *bearing_;
  QLineEdit *correctionConstant_, *correctionPpm_, *bearingCorrection_, *angleError_;
  QCheckBox* convert_;
  QWidget* options_;
};

// frmListSurveys: the surveys of the job; a click shows a survey's lines and comments and loads
// frmSidEdit.
class ListSurveysForm : public QWidget {
  Q_OBJECT
 public:
  ListSurveysForm(Session& session, SidEditForm* editor, QWidget* parent);

 public slots:
  void Reload();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  std::vector<int> Chosen() const;
  void Clicked(int entry);

  Session& session_;
  SidEditForm* editor_;
  QListWidget* list_;
  QLabel* comments_;
  std::unique_ptr<SessionView> view_;
};

// frmEditRawData: the six fields of a record, each with its tick box.
class EditRawDataForm : public QDialog {
  Q_OBJECT
 public:
  EditRawDataForm(Session& session, QWidget* parent);
  // "Edit Line" for list entry `entry`: false (the user told) when there is none.
  bool Open(int entry);
  void Save();

 private:
  Session& session_;
  RawEditForm form_;
  bool showing_ = false;
  std::array<QCheckBox*, 7> ticks_{};
  std::array<QLineEdit*, 6> texts_{};
  QComboBox* survey_;
  std::unique_ptr<SessionView> view_;
};

// frmSwitchSID: the survey every selected line is to belong to.
class SwitchSidForm : public QDialog {
  Q_OBJECT
 public:
  SwitchSidForm(Session& session, QWidget* parent);
  // Fills the survey names and shows the form.
  void Open();

 private:
  // The names of the surveys as they stand, the one chosen kept.
  void FillNames();
  Session& session_;
  QComboBox* survey_;
  std::unique_ptr<SessionView> view_;
};

// "Survey ID's..." in the Edit menu, and the record keys of frmSelectedLines.
void InstallSurveysForms(QMainWindow& window, Session& session);

}  // namespace tessel
