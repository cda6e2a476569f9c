#pragma once
// The parcel editor's forms: parcel properties (frmAttributes), quick edit (frmQuickEdit) and
// its pick list (frmQuickEditList), the id selection (frmSelectParcelID), the raw polygon tags
// (frmEditRPO) and the parcel locator (frmParcelLocator). Every rule and text is the parcels
// library's; these only show and forward.

#include <QDialog>
#include <QWidget>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/ui/session_view.h"
#include "model/session.h"
#include "parcels/parcel_listings.h"
#include "parcels/parcel_locator.h"
#include "parcels/parcel_properties.h"
#include "parcels/quick_edit.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMainWindow;
class QPushButton;
class QRadioButton;

namespace tessel {

class AttributesForm;

// frmSelectParcelID: the records of a listing to choose from (first list, or the second for the
// .lot form), and those chosen (third list).
class SelectParcelIdForm : public QDialog {
  Q_OBJECT
 public:
  SelectParcelIdForm(Session& session, QWidget* parent);
  // From the multi-attribute tool: double clicks move records, OK writes them.
  void OpenForMultiple(std::vector<ListingRecord> records);
  // From the properties dialog's listings: a double click fills its fields.
  void OpenForAttributes(AttributesForm* form, std::vector<ListingRecord> records, bool lot, const QString& title);

  QListWidget* records;
  QListWidget* lotRecords;
  QListWidget* chosen;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void Reload();
  void DoubleClicked(QListWidget* list, int row);
  void Ok();
  Session& session_;
  ParcelIdSelection selection_;
  std::vector<ListingRecord> listing_;
  AttributesForm* attributes_ = nullptr;
  bool done_ = false;
  std::unique_ptr<SessionView> view_;
};

// frmAttributes, "Parcel Properties".
class AttributesForm : public QWidget {
  Q_OBJECT
 public:
  AttributesForm(Session& session, SelectParcelIdForm* selection, QWidget* parent);
  // mnuPopupParcelProperties.
  void Open();
  // Shows entry `row` of the drop-down, as choosing it there does.
  void ShowEntry(int row);
  // Shows the parcel of row `row` of the selection list, when the drop-down holds it.
  void ShowSelectionRow(int row);
  // A record of a listing into the fields.
  void FillFromRecord(const ListingRecord& record);
  // The listing closed: its buttons come back.
  void ListingClosed();
  ParcelProperties& properties() { return properties_; }

  QComboBox* parcels;
  QLineEdit* index;
  QLineEdit* section;
  std::array<QRadioButton*, 17> locations{};
  QComboBox* surveyType;
  QLineEdit* number;
  QLineEdit* suffix;
  QComboBox* note;
  QLineEdit* acreage;
  QLabel* ring;
  QLabel* location;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Refill();
  void Collect();
  // One of the dialog's own steps: the fields collected, the step run, the fields shown again.
  void Act(const std::function<void()>& action);
  void Listing(bool lot);
  Session& session_;
  ParcelProperties properties_;
  SelectParcelIdForm* selection_;
  QButtonGroup* locationGroup_;
  bool filling_ = false;
  bool cancelled_ = false;
  bool acting_ = false;
  std::unique_ptr<SessionView> view_;
};

// frmQuickEditList, "Quick Edit List".
class QuickEditListForm : public QDialog {
  Q_OBJECT
 public:
  QuickEditListForm(Session& session, QWidget* parent);
  void Load();
  QListWidget* list;
  // The entry taken by "<", empty when none.
  std::string taken;

 private:
  Session& session_;
};

// frmQuickEdit, "Quick Edit".
class QuickEditForm : public QDialog {
  Q_OBJECT
 public:
  QuickEditForm(Session& session, QWidget* parent);
  void Open();
  QuickEditFields Fields() const;
  void Fill(const QuickEditFields& fields);

  std::array<QCheckBox*, 7> checks{};
  QLineEdit* section;
  QComboBox* location;
  QComboBox* surveyType;
  QLineEdit* number;
  QLineEdit* acreage;
  QLineEdit* suffix;
  QComboBox* note;
  QuickEditListForm* pickList;

 private:
  Session& session_;
};

// frmEditRPO, "Edit Raw Polygon(s)".
class EditRpoForm : public QDialog {
  Q_OBJECT
 public:
  EditRpoForm(Session& session, QWidget* parent);
  void Open();
  std::array<QRadioButton*, 3> tags{};
  QLabel* count;

 private:
  Session& session_;
  std::unique_ptr<SessionView> view_;
};

// frmParcelLocator, "Parcel Locator".
class ParcelLocatorForm : public QWidget {
  Q_OBJECT
 public:
  ParcelLocatorForm(Session& session, QWidget* parent);
  QListWidget* list;
  ParcelLocator& locator() { return locator_; }

 private:
  // The listing of the key pressed last (0 to 3), made again from the parcels.
  void List();
  void Show();
  Session& session_;
  ParcelLocator locator_;
  int listing_ = -1;
  std::unique_ptr<SessionView> view_;
};

// The entries of File, View, the parcel popup and the raw polygon popup, and the forms.
void InstallParcelsForms(QMainWindow& window, Session& session);

}  // namespace tessel
