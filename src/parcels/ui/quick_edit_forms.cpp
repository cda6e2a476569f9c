#include "parcels/ui/parcel_forms.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "model/dialog_memory.h"
#include "model/text.h"
#include "paint/qt_text.h"
#include "parcels/banding.h"
#include "parcels/parcel_attributes.h"
#include "parcels/parcel_file.h"
#include "parcels/raw_polygon_tags.h"
#include "viewer/drawing.h"
#include "viewer/view_transform.h"
#include "forms/ui/named_widgets.h"
#include "parcels/ui/parcel_form_parts.h"

namespace tessel {

using namespace parcel_form;

QuickEditListForm::QuickEditListForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmQuickEditList"));
  setWindowTitle(QStringLiteral("Quick Edit List"));
  auto* layout = new QVBoxLayout(this);
  list = Named(new QListWidget(this), "lstAttributes");
  list->setFont(FixedFont());
  layout->addWidget(list);
  auto* buttons = new QHBoxLayout;
  auto* remove = Button(this, "cmdRemoveDuplicates", QStringLiteral("Remove Duplicates"));
  auto* take = Button(this, "cmdTake", QStringLiteral("<"));
  auto* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  for (QPushButton* b : {remove, take, cancel}) buttons->addWidget(b);
  layout->addLayout(buttons);
  connect(remove, &QPushButton::clicked, this, [this] {
    std::vector<std::string> entries;
    for (int k = 0; k < list->count(); ++k) entries.push_back(ToBytes(list->item(k)->text()));
    RemoveNeighbourDuplicates(session_, entries);
    list->clear();
    for (const std::string& e : entries) list->addItem(FromBytes(e));
  });
  connect(take, &QPushButton::clicked, this, [this] {
    if (!list->currentItem()) return;
    taken = ToBytes(list->currentItem()->text());
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void QuickEditListForm::Load() {
  taken.clear();
  list->clear();
  for (const std::string& e : QuickEditListEntries(session_)) list->addItem(FromBytes(e));
}


QuickEditForm::QuickEditForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmQuickEdit"));
  setWindowTitle(QStringLiteral("Quick Edit"));
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  section = Named(new QLineEdit(this), "txtSection");
  section->setMaxLength(3);
  location = Named(new QComboBox(this), "cboLocation");
  for (char c : kLocationLetters) location->addItem(QString(QChar(c)));
  surveyType = EntriesBox(this, "cboSurveyType", SurveyTypeEntries());
  number = Named(new QLineEdit(this), "txtNumber");
  acreage = Named(new QLineEdit(this), "txtAcreage");
  suffix = Named(new QLineEdit(this), "txtSuffix");
  suffix->setMaxLength(2);
  std::vector<std::string> notes = SurveyNoteEntries();
  notes.front() = kQuickEditNoNote;
  note = EntriesBox(this, "cboNote", notes);
  const std::array<std::pair<const char*, const char*>, 7> captions = {{{"chkSection", "Section Number"},
                                                                         {"chkLocation", "Nominal Location"},
                                                                         {"chkType", "Survey Type"},
                                                                         {"chkNumber", "Survey Number"},
                                                                         {"chkAcreage", "Acreage"},
                                                                         {"chkSuffix", "Survey Suffix"},
                                                                         {"chkNote", "Survey Note"}}};
  const std::array<QWidget*, 7> fields = {section, location, surveyType, number, acreage, suffix, note};
  for (std::size_t k = 0; k < checks.size(); ++k) {
    checks[k] = Named(new QCheckBox(QString::fromLatin1(captions[k].second), this), captions[k].first);
    grid->addWidget(checks[k], static_cast<int>(k), 0);
    grid->addWidget(fields[k], static_cast<int>(k), 1);
  }
  layout->addLayout(grid);
  pickList = new QuickEditListForm(session, this);
  auto* buttons = new QHBoxLayout;
  auto* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  auto* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  auto* listButton = Button(this, "cmdList", QStringLiteral("List..."));
  for (QPushButton* b : {ok, cancel, listButton}) buttons->addWidget(b);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this] {
    session_.user.SetPointer(Pointer::Hourglass);
    const bool written = QuickEditOk(session_, Fields());
    session_.user.SetPointer(Pointer::Arrow);
    if (written) accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(listButton, &QPushButton::clicked, this, [this] {
    pickList->Load();
    pickList->open();
  });
  connect(pickList, &QDialog::accepted, this, [this] {
    QuickEditFields f = Fields();
    FillFromQuickEditEntry(pickList->taken, f);
    Fill(f);
  });
}

void QuickEditForm::Open() {
  if (!QuickEditOpen(session_)) return;
  open();
}

QuickEditFields QuickEditForm::Fields() const {
  QuickEditFields f;
  f.useSection = checks[0]->isChecked();
  f.useLocation = checks[1]->isChecked();
  f.useType = checks[2]->isChecked();
  f.useNumber = checks[3]->isChecked();
  f.useAcreage = checks[4]->isChecked();
  f.useSuffix = checks[5]->isChecked();
  f.useNote = checks[6]->isChecked();
  f.section = ToBytes(section->text());
  f.location = ToBytes(location->currentText());
  f.typeEntry = surveyType->currentIndex() >= 0 ? ToBytes(surveyType->currentText()) : std::string();
  f.number = ToBytes(number->text());
  f.acreage = ToBytes(acreage->text());
  f.suffix = ToBytes(suffix->text());
  f.noteEntry = ToBytes(note->currentText());
  return f;
}

void QuickEditForm::Fill(const QuickEditFields& f) {
  const std::array<bool, 7> on = {f.useSection, f.useLocation, f.useType, f.useNumber, f.useAcreage, f.useSuffix, f.useNote};
  for (std::size_t k = 0; k < checks.size(); ++k) checks[k]->setChecked(on[k]);
  const int type = surveyType->findText(FromBytes(f.typeEntry));
  if (type >= 0) surveyType->setCurrentIndex(type);
  number->setText(FromBytes(f.number));
  suffix->setText(FromBytes(f.suffix));
}

}  // namespace tessel
