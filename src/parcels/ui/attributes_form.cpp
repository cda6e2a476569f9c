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

AttributesForm::AttributesForm(Session& session, SelectParcelIdForm* selection, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), properties_(session), selection_(selection) {
  setObjectName(QStringLiteral("frmAttributes"));
  setWindowTitle(QStringLiteral("Parcel Properties"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Named(new QLabel(QStringLiteral("Parcel Identification"), this), "lblIdentification"));
  auto* ruler = Named(new QLabel(QString::fromLatin1(kAttributesRuler), this), "lblRuler");
  ruler->setFont(FixedFont());
  layout->addWidget(ruler);
  auto* top = new QHBoxLayout;
  parcels = Named(new QComboBox(this), "cboParcel");
  // The working line: what is typed into it is the line Apply builds on.
  parcels->setEditable(true);
  parcels->setInsertPolicy(QComboBox::NoInsert);
  parcels->setFont(FixedFont());
  parcels->setMinimumWidth(QFontMetrics(FixedFont()).horizontalAdvance(QString(55, 'M')));
  index = Named(new QLineEdit(this), "txtIndex");
  index->setMaximumWidth(70);
  top->addWidget(parcels, 1);
  top->addWidget(index);
  layout->addLayout(top);

  auto* grid = new QGridLayout;
  int row = 0;
  const auto addRow = [&](const char* caption, QWidget* field) {
    grid->addWidget(new QLabel(QString::fromLatin1(caption), this), row, 0);
    grid->addWidget(field, row, 1);
    ++row;
  };
  section = Named(new QLineEdit(this), "txtSection");
  section->installEventFilter(this);
  addRow("Section", section);
  auto* locationBox = new QWidget(this);
  auto* locationGrid = new QGridLayout(locationBox);
  locationGroup_ = new QButtonGroup(this);
  for (std::size_t k = 0; k < locations.size(); ++k) {
    const QString letter(QChar(kLocationLetters[k]));
    locations[k] = new QRadioButton(letter, locationBox);
    locations[k]->setObjectName(QStringLiteral("optLocation") + letter);
    locationGroup_->addButton(locations[k], static_cast<int>(k));
    // Four rows of four across the section, and Q, the whole section, below them.
    locationGrid->addWidget(locations[k], static_cast<int>(k / 4), static_cast<int>(k % 4));
    connect(locations[k], &QRadioButton::toggled, this, [this, letter](bool on) {
      if (!on || filling_) return;
      Collect();
      properties_.PressLocation(ToBytes(letter));
      Refill();
    });
  }
  addRow("Nominal Location", locationBox);
  surveyType = EntriesBox(this, "cboSurveyType", SurveyTypeEntries());
  addRow("Survey Type", surveyType);
  number = Named(new QLineEdit(this), "txtNumber");
  addRow("Survey Number", number);
  suffix = Named(new QLineEdit(this), "txtSuffix");
  suffix->setMaxLength(2);
  suffix->installEventFilter(this);
  addRow("Survey Suffix", suffix);
  // The note is one letter: it is chosen from the list, not typed. A parcel whose letter is none
  // of the list's shows a blank entry.
  note = EntriesBox(this, "cboNote", SurveyNoteEntries());
  addRow("Survey Note", note);
  acreage = Named(new QLineEdit(this), "txtAcreage");
  addRow("Acreage", acreage);
  ring = Named(new QLabel(this), "lblRing");
  ring->setFont(FixedFont());
  addRow("Point ID's:", ring);
  location = Named(new QLabel(this), "lblLocation");
  addRow("Parcel N, E =", location);
  layout->addLayout(grid);

  auto* buttons = new QHBoxLayout;
  auto* apply = Button(this, "cmdApply", QStringLiteral("Apply"));
  auto* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  auto* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  auto* del = Button(this, "cmdDelete", QStringLiteral("Delete"));
  auto* add = Button(this, "cmdNewParcel", QStringLiteral("New Parcel"));
  auto* lld = Button(this, "cmdLLD", QStringLiteral("LLD Listing"));
  auto* lot = Button(this, "cmdLOT", QStringLiteral("LOT Listing"));
  for (QPushButton* b : {apply, ok, cancel, del, add, lld, lot}) buttons->addWidget(b);
  layout->addLayout(buttons);

  connect(parcels, &QComboBox::activated, this, [this](int r) { ShowEntry(r); });
  connect(section, &QLineEdit::textEdited, this, [this](const QString& text) {
    Collect();
    properties_.SetSection(ToBytes(text));
    Refill();
  });
  connect(surveyType, &QComboBox::activated, this, [this](int) {
    Collect();
    properties_.ChooseSurveyType(ToBytes(surveyType->currentText()));
    Refill();
  });
  connect(apply, &QPushButton::clicked, this, [this] { Act([this] { properties_.Apply(); }); });
  connect(del, &QPushButton::clicked, this, [this] { Act([this] { properties_.Delete(); }); });
  connect(add, &QPushButton::clicked, this, [this] { Act([this] { properties_.NewParcel(); }); });
  connect(ok, &QPushButton::clicked, this, [this] {
    bool written = false;
    Act([&] { written = properties_.Ok(); });
    if (!written) return;
    cancelled_ = true;  // the write has done what closing does
    close();
  });
  connect(cancel, &QPushButton::clicked, this, [this] {
    acting_ = true;
    properties_.Cancel();
    acting_ = false;
    cancelled_ = true;
    close();
  });
  connect(lld, &QPushButton::clicked, this, [this] { Listing(false); });
  connect(lot, &QPushButton::clicked, this, [this] { Listing(true); });
  // The drop-down follows the selection and the parcels while the dialog is open.
  // The dialog's own buttons change them too; what follows those is the button's.
  view_ = std::make_unique<SessionView>(*this, session_, Change::Selection | Change::Parcels, [this] {
    if (!isVisible() || acting_) return;  // opening fills it afresh
    Collect();
    properties_.Follow();
    Refill();
  });
}

void AttributesForm::Act(const std::function<void()>& action) {
  Collect();
  acting_ = true;
  action();
  acting_ = false;
  Refill();
}

void AttributesForm::Open() {
  if (!properties_.Open()) return;
  cancelled_ = false;
  Refill();
  show();
  raise();
}

void AttributesForm::ShowEntry(int row) {
  Collect();
  properties_.Show(row);
  Refill();
}

void AttributesForm::ShowSelectionRow(int row) {
  Collect();
  properties_.ShowSelectionRow(row);
  Refill();
}

void AttributesForm::FillFromRecord(const ListingRecord& record) {
  Collect();
  properties_.FillFromRecord(record);
  Refill();
}

void AttributesForm::Collect() {
  properties_.working = ToBytes(parcels->currentText());
  properties_.indexText = ToBytes(index->text());
  properties_.section = ToBytes(section->text());
  properties_.number = ToBytes(number->text());
  properties_.suffix = ToBytes(suffix->text());
  properties_.acreage = ToBytes(acreage->text());
  properties_.noteText = ToBytes(note->currentText());
  properties_.typeEntry = surveyType->currentIndex() >= 0 ? ToBytes(surveyType->currentText()) : std::string();
}

void AttributesForm::Refill() {
  filling_ = true;
  const ParcelProperties& p = properties_;
  parcels->clear();
  for (const std::string& e : p.entries) parcels->addItem(FromBytes(e));
  parcels->setCurrentIndex(p.listIndex);
  parcels->setEditText(FromBytes(p.working));
  index->setText(FromBytes(p.indexText));
  section->setText(FromBytes(p.section));
  const auto letter = p.location.empty() ? std::string_view::npos : kLocationLetters.find(p.location);
  if (letter == std::string_view::npos) {
    locationGroup_->setExclusive(false);
    for (QRadioButton* b : locations) b->setChecked(false);
    locationGroup_->setExclusive(true);
  } else {
    locations[letter]->setChecked(true);
  }
  surveyType->setCurrentIndex(surveyType->findText(FromBytes(p.typeEntry)));
  number->setText(FromBytes(p.number));
  suffix->setText(FromBytes(p.suffix));
  // A letter the list does not know shows as a blank entry, which Apply writes as a blank.
  const int blank = note->findText(QStringLiteral(" "));
  int noteIndex = note->findText(FromBytes(p.noteText));
  if (noteIndex < 0) {
    if (blank < 0) note->addItem(QStringLiteral(" "));
    noteIndex = note->findText(QStringLiteral(" "));
  } else if (blank >= 0 && noteIndex != blank) {
    note->removeItem(blank);
    noteIndex = note->findText(FromBytes(p.noteText));
  }
  note->setCurrentIndex(noteIndex);
  acreage->setText(FromBytes(p.acreage));
  ring->setText(FromBytes(p.ring));
  location->setText(FromBytes(p.locationText));
  filling_ = false;
}

void AttributesForm::Listing(bool lot) {
  Collect();
  std::vector<ListingRecord> found;
  if (!(lot ? properties_.LotListing(found) : properties_.LldListing(found))) return;
  findChild<QPushButton*>(QStringLiteral("cmdApply"))->setEnabled(true);
  suffix->setEnabled(false);
  for (const char* name : {"cmdLLD", "cmdLOT", "cmdNewParcel", "cmdDelete"}) {
    findChild<QPushButton*>(QString::fromLatin1(name))->setVisible(false);
  }
  selection_->OpenForAttributes(this, std::move(found), lot, lot ? QStringLiteral("LOT Listing") : QStringLiteral("LLD Listing"));
}

void AttributesForm::ListingClosed() {
  suffix->setEnabled(true);
  for (const char* name : {"cmdLLD", "cmdLOT", "cmdNewParcel", "cmdDelete"}) {
    findChild<QPushButton*>(QString::fromLatin1(name))->setVisible(true);
  }
  session_.ToolMode = ToolMode::PickParcels;
}

bool AttributesForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == section && event->type() == QEvent::FocusOut && isVisible()) {
    properties_.section = ToBytes(section->text());
    if (!properties_.LeaveSection()) {
      section->setFocus();
      return true;
    }
  }
  if (watched == suffix && event->type() == QEvent::FocusIn) suffix->selectAll();
  return QWidget::eventFilter(watched, event);
}

void AttributesForm::showEvent(QShowEvent* event) {
  if (const auto place = ReadWindowPlace(session_, "frmAttributes")) {
    const double t = TwipsPerPixel(this);
    setGeometry(int(place->left / t), int(place->top / t), int(place->width / t), int(place->height / t));
  }
  QWidget::showEvent(event);
}

void AttributesForm::closeEvent(QCloseEvent* event) {
  if (selection_->isVisible()) selection_->close();
  if (!cancelled_) properties_.Closed();
  cancelled_ = false;
  const QRect g = geometry();
  const double t = TwipsPerPixel(this);
  WriteWindowPlace(session_, "frmAttributes",
                   {float(g.top() * t), float(g.left() * t), float(g.height() * t), float(g.width() * t)});
  QWidget::closeEvent(event);
}

}  // namespace tessel
