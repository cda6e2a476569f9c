#pragma once
// frmConfig, "Configuration Options": the display preferences, the twelve user tool entries, the
// layers shown at start, the background, the text editor and the runner of the suite's Windows
// programs. The fields are filled from the session's settings each time the dialog is shown; OK,
// Save and Restore Defaults hand them to the core's configuration actions.

#include <QDialog>
#include <array>
#include <functional>
#include <utility>

#include "model/config.h"
#include "model/session.h"

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QTabWidget;
class QWidget;

namespace tessel {

class ConfigDialog : public QDialog {
  Q_OBJECT

 public:
  // Asks for a program for entry `entry` (1 to 12 the tool entries, 13 the text editor, 14 the
  // runner of Windows programs), starting
  // from the path the field holds now; an empty answer leaves the field as it is.
  using ProgramChooser = std::function<QString(int entry, const QString& current)>;

  explicit ConfigDialog(Session& session, QWidget* parent = nullptr);

  // The fields from a set of settings, and the settings the fields hold now. Values the fields
  // cannot show (a colour number outside the list, say) are kept as they were filled.
  void Fill(const Config& config);
  Config Collect() const;
  // The runner of Windows programs as the field holds it.
  std::string CollectToolRunner() const;

  void SetProgramChooser(ProgramChooser chooser) { chooser_ = std::move(chooser); }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* BuildPointsAndLines();
  QWidget* BuildToolEntries(int first, int last);
  QWidget* BuildViewing();
  void Browse(int entry);
  QLineEdit* BrowseTarget(int entry) const;

  Session& session_;
  Config filled_;
  ProgramChooser chooser_;

  QTabWidget* tabs_ = nullptr;
  QSpinBox* ptSizeCor_ = nullptr;
  QSpinBox* ptSizeCtrl_ = nullptr;
  QComboBox* corColor_ = nullptr;
  QComboBox* ctrlColor_ = nullptr;
  QComboBox* lsaColor_ = nullptr;
  QComboBox* lxnColor_ = nullptr;
  QComboBox* lineTypeLsa_ = nullptr;
  QComboBox* lineTypeLxn_ = nullptr;
  QDoubleSpinBox* panPercent_ = nullptr;
  QDoubleSpinBox* zoomPercent_ = nullptr;
  QCheckBox* chkLxn_ = nullptr;
  std::array<QLineEdit*, 12> paths_{};
  std::array<QLineEdit*, 12> captions_{};
  QCheckBox* chkLinesLsa_ = nullptr;
  QCheckBox* chkLinesLxn_ = nullptr;
  QCheckBox* chkLinesRaw_ = nullptr;
  QCheckBox* chkRpo_ = nullptr;
  QCheckBox* chkPoints_ = nullptr;
  QCheckBox* chkControl_ = nullptr;
  QCheckBox* chkParcels_ = nullptr;
  QRadioButton* darkOnLight_ = nullptr;
  QRadioButton* lightOnDark_ = nullptr;
  QLineEdit* editorPath_ = nullptr;
  QLineEdit* toolRunner_ = nullptr;
};

}  // namespace tessel
