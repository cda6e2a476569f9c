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
#include "widgets/named_widgets.h"

namespace tessel {

namespace {

QFont FixedFont() { return QFontDatabase::systemFont(QFontDatabase::FixedFont); }

template <typename T>
T* Named(T* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

QComboBox* EntriesBox(QWidget* parent, const char* name, const std::vector<std::string>& entries) {
  auto* box = Named(new QComboBox(parent), name);
  for (const std::string& e : entries) box->addItem(FromBytes(e));
  return box;
}

QAction* AddAction(QMenu* menu, const char* name, const QString& caption) {
  QAction* a = menu->addAction(caption);
  a->setObjectName(QString::fromLatin1(name));
  return a;
}

double TwipsPerPixel(const QWidget* w) { return 1440.0 / w->logicalDpiX(); }

}  // namespace

// ---- frmSelectParcelID ----

SelectParcelIdForm::SelectParcelIdForm(Session& session, QWidget* parent)
    : QDialog(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), selection_(session) {
  setObjectName(QStringLiteral("frmSelectParcelID"));
  auto* layout = new QVBoxLayout(this);
  auto* lldHeading = Named(new QLabel(QString::fromLatin1(kLldHeading), this), "lblLldHeading");
  lldHeading->setFont(FixedFont());
  layout->addWidget(lldHeading);
  records = Named(new QListWidget(this), "lstRecords");
  layout->addWidget(records);
  auto* lotHeading = Named(new QLabel(QString::fromLatin1(kLotHeading), this), "lblLotHeading");
  lotHeading->setFont(FixedFont());
  layout->addWidget(lotHeading);
  lotRecords = Named(new QListWidget(this), "lstLotRecords");
  layout->addWidget(lotRecords);
  chosen = Named(new QListWidget(this), "lstChosen");
  layout->addWidget(chosen);
  for (QListWidget* list : {records, lotRecords, chosen}) {
    list->setFont(FixedFont());
    connect(list, &QListWidget::itemDoubleClicked, this,
            [this, list](QListWidgetItem* item) { DoubleClicked(list, list->row(item)); });
  }
  auto* buttons = new QHBoxLayout;
  auto* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  auto* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this] { Ok(); });
  connect(cancel, &QPushButton::clicked, this, [this] { close(); });
  resize(520, 480);
}

void SelectParcelIdForm::OpenForMultiple(std::vector<ListingRecord> recordsIn) {
  attributes_ = nullptr;
  done_ = false;
  selection_.Open(std::move(recordsIn));
  setWindowTitle(QStringLiteral("LLD Listing"));
  Reload();
  show();
  raise();
}

void SelectParcelIdForm::OpenForAttributes(AttributesForm* form, std::vector<ListingRecord> recordsIn, bool lot,
                                           const QString& title) {
  attributes_ = form;
  done_ = false;
  listing_ = std::move(recordsIn);
  setWindowTitle(title);
  records->clear();
  lotRecords->clear();
  chosen->clear();
  for (const ListingRecord& r : listing_) (lot ? lotRecords : records)->addItem(FromBytes(r.entry));
  show();
  raise();
}

void SelectParcelIdForm::Reload() {
  records->clear();
  lotRecords->clear();
  chosen->clear();
  for (const ListingRecord& r : selection_.offered()) records->addItem(FromBytes(r.entry));
  for (const ListingRecord& r : selection_.chosen()) chosen->addItem(FromBytes(r.entry));
}

void SelectParcelIdForm::DoubleClicked(QListWidget* list, int row) {
  if (attributes_) {
    if (list != chosen && row >= 0 && row < static_cast<int>(listing_.size())) {
      attributes_->FillFromRecord(listing_[static_cast<std::size_t>(row)]);
    }
    return;
  }
  if (list == records) selection_.Choose(row);
  if (list == chosen) selection_.Unchoose(row);
  Reload();
}

void SelectParcelIdForm::Ok() {
  if (attributes_) {
    close();
    return;
  }
  if (!selection_.Ok()) return;
  done_ = true;
  Reload();
  close();
}

void SelectParcelIdForm::closeEvent(QCloseEvent* event) {
  if (attributes_) {
    AttributesForm* form = attributes_;
    attributes_ = nullptr;
    listing_.clear();
    form->ListingClosed();
  } else if (!done_) {
    selection_.Cancel();
    done_ = true;
    Reload();
  }
  QDialog::closeEvent(event);
}

// ---- frmAttributes ----

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
  parcels->setEditable(true);
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
  note = EntriesBox(this, "cboNote", SurveyNoteEntries());
  note->setEditable(true);
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
    properties_.SetSection(ToBytes(text));
    Refill();
  });
  connect(surveyType, &QComboBox::activated, this, [this](int) {
    properties_.ChooseSurveyType(ToBytes(surveyType->currentText()));
    Refill();
  });
  connect(apply, &QPushButton::clicked, this, [this] {
    Collect();
    properties_.Apply();
    Refill();
  });
  connect(del, &QPushButton::clicked, this, [this] {
    Collect();
    properties_.Delete();
    Refill();
  });
  connect(add, &QPushButton::clicked, this, [this] {
    Collect();
    properties_.NewParcel();
    Refill();
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    Collect();
    if (!properties_.Ok()) return;
    cancelled_ = true;  // the write has done what closing does
    close();
  });
  connect(cancel, &QPushButton::clicked, this, [this] {
    properties_.Cancel();
    cancelled_ = true;
    close();
  });
  connect(lld, &QPushButton::clicked, this, [this] { Listing(false); });
  connect(lot, &QPushButton::clicked, this, [this] { Listing(true); });
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

void AttributesForm::FillFromRecord(const ListingRecord& record) {
  Collect();
  properties_.FillFromRecord(record);
  Refill();
}

void AttributesForm::Collect() {
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
  const int noteIndex = note->findText(FromBytes(p.noteText));
  if (noteIndex >= 0) note->setCurrentIndex(noteIndex);
  else note->setEditText(FromBytes(p.noteText));
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

// ---- frmQuickEditList ----

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

// ---- frmQuickEdit ----

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

// ---- frmEditRPO ----

EditRpoForm::EditRpoForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmEditRPO"));
  setWindowTitle(QString::fromLatin1(kEditRpoTitle));
  auto* layout = new QVBoxLayout(this);
  count = Named(new QLabel(this), "lblCount");
  layout->addWidget(count);
  layout->addWidget(new QLabel(QStringLiteral("Set the Raw polygon attribute tag of the selected items to:"), this));
  const std::array<std::pair<const char*, const char*>, 3> options = {
      {{"optStandard", "S (standard)"}, {"optInside", "I (inside special)"}, {"optOutside", "O (outside special)"}}};
  auto* group = new QButtonGroup(this);
  for (std::size_t k = 0; k < tags.size(); ++k) {
    tags[k] = Named(new QRadioButton(QString::fromLatin1(options[k].second), this), options[k].first);
    group->addButton(tags[k]);
    layout->addWidget(tags[k]);
  }
  auto* buttons = new QHBoxLayout;
  auto* ok = Button(this, "cmdOK", QStringLiteral("OK"));
  auto* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this] {
    std::string tag;
    for (QRadioButton* option : tags) {
      if (option->isChecked()) tag = ToBytes(option->text().left(1));
    }
    SetRawPolygonTags(session_, tag);
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, [this] {
    CancelRawPolygonTags(session_);
    reject();
  });
}

void EditRpoForm::Open() {
  count->setText(FromBytes(PolygonsSelectedText(session_)));
  auto* group = tags[0]->group();
  group->setExclusive(false);
  for (QRadioButton* option : tags) option->setChecked(false);
  group->setExclusive(true);
  open();
}

// ---- frmParcelLocator ----

ParcelLocatorForm::ParcelLocatorForm(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), locator_(session) {
  setObjectName(QStringLiteral("frmParcelLocator"));
  setWindowTitle(QStringLiteral("Parcel Locator"));
  auto* layout = new QVBoxLayout(this);
  list = Named(new QListWidget(this), "lstParcels");
  list->setFont(FixedFont());
  layout->addWidget(list);
  auto* buttons = new QHBoxLayout;
  const std::array<std::pair<const char*, const char*>, 5> keys = {{{"cmdAll", "All Parcels"},
                                                                    {"cmdNonAliquot", "Non-Aliquot"},
                                                                    {"cmdSections", "Sections"},
                                                                    {"cmdNominal", "Nominal"},
                                                                    {"cmdClearView", "Clear View"}}};
  for (std::size_t k = 0; k < keys.size(); ++k) {
    auto* b = Button(this, keys[k].first, QString::fromLatin1(keys[k].second));
    buttons->addWidget(b);
    connect(b, &QPushButton::clicked, this, [this, k] {
      switch (k) {
        case 0: locator_.AllParcels(); break;
        case 1: locator_.NonAliquot(); break;
        case 2: locator_.Sections(); break;
        case 3: locator_.Nominal(); break;
        default: Redraw(session_); return;
      }
      Show();
    });
  }
  layout->addLayout(buttons);
  connect(list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    const int parcel = locator_.ParcelAt(list->row(item));
    Redraw(session_);
    if (parcel != 0) DrawParcelRing(session_, session_.parcels.ParcelRing.get(parcel));
  });
  resize(420, 360);
}

void ParcelLocatorForm::Show() {
  list->clear();
  for (const std::string& e : locator_.entries) list->addItem(FromBytes(e));
}

// ---- installation ----

void InstallParcelsForms(QMainWindow& window, Session& session) {
  Session& s = session;
  auto* selection = new SelectParcelIdForm(session, &window);
  selection->hide();
  auto* attributes = new AttributesForm(session, selection, &window);
  attributes->hide();
  auto* quickEdit = new QuickEditForm(session, &window);
  quickEdit->hide();
  auto* editRpo = new EditRpoForm(session, &window);
  editRpo->hide();
  auto* locator = new ParcelLocatorForm(session, &window);
  locator->hide();

  if (QMenu* file = window.findChild<QMenu*>(QStringLiteral("mnuFile"))) {
    QAction* save = new QAction(QStringLiteral("&Save"), file);
    save->setObjectName(QStringLiteral("mnuFileSave"));
    QAction* before = window.findChild<QAction*>(QStringLiteral("mnuFileReload"));
    file->insertAction(before, save);
    QObject::connect(save, &QAction::triggered, &window, [&s] {
      if (!s.JobBase.empty()) WriteParcels(s);
    });
  }

  if (QMenu* view = window.findChild<QMenu*>(QStringLiteral("mnuView"))) {
    view->addSeparator();
    QObject::connect(AddAction(view, "mnuOptionsNonAliquot", QStringLiteral("Parcel Locator")), &QAction::triggered,
                     locator, [locator] {
                       locator->show();
                       locator->raise();
                     });
    QMenu* band = view->addMenu(QStringLiteral("&Banding"));
    band->setObjectName(QStringLiteral("mnuBand"));
    const std::array<std::tuple<const char*, const char*, BandKind>, 4> bands = {
        {{"mnuBandEW", "Nominal Location, East-West", BandKind::EW},
         {"mnuBandNS", "Nominal Location, North-South", BandKind::NS},
         {"mnuBandingEWSection", "Section, East-West", BandKind::EWSection},
         {"mnuBandingNSSection", "Section, North-South", BandKind::NSSection}}};
    for (const auto& [name, caption, kind] : bands) {
      QAction* entry = AddAction(band, name, QString::fromLatin1(caption));
      if (kind == BandKind::EWSection) entry->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_E));
      if (kind == BandKind::NSSection) entry->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_N));
      const BandKind k = kind;
      QObject::connect(entry, &QAction::triggered, &window, [&s, k] { BandParcels(s, k); });
    }
    // The keys work wherever the focus is in the main window.
    window.addActions(band->actions());
  }

  if (QMenu* popup = window.findChild<QMenu*>(QStringLiteral("mnuPopupParcel"))) {
    QAction* first = popup->actions().isEmpty() ? nullptr : popup->actions().front();
    const auto insert = [&](const char* name, const QString& caption) {
      auto* a = new QAction(caption, popup);
      a->setObjectName(QString::fromLatin1(name));
      popup->insertAction(first, a);
      return a;
    };
    QObject::connect(insert("mnuPopupParcelProperties", QStringLiteral("Parcel Properties...")), &QAction::triggered,
                     attributes, [attributes] { attributes->Open(); });
    QObject::connect(insert("mnuPopupParcelQuickEdit", QStringLiteral("Quick Edit...")), &QAction::triggered,
                     quickEdit, [quickEdit] { quickEdit->Open(); });
    auto kept = std::make_shared<std::string>();
    QObject::connect(insert("mnuPopupParcelCopy", QStringLiteral("Copy")), &QAction::triggered, &window,
                     [&s, kept] { CopyParcelLine(s, *kept); });
    // Paste has never done anything with the kept line.
    insert("mnuPopupParcelPaste", QStringLiteral("Paste"));
    QObject::connect(insert("mnuPopupParcelMultiple", QStringLiteral("Multiple Attributes...")), &QAction::triggered,
                     selection, [&s, selection] {
                       std::vector<ListingRecord> records;
                       if (StartMultipleAttributes(s, records)) selection->OpenForMultiple(std::move(records));
                     });
    popup->insertSeparator(first);
  }

  if (QAction* editCrpo = window.findChild<QAction*>(QStringLiteral("mnuPopupEditCRPO"))) {
    QObject::connect(editCrpo, &QAction::triggered, editRpo, [editRpo] { editRpo->Open(); });
  }

  // A click in the list of picked parcels shows that parcel in the open properties dialog.
  if (auto* picked = window.findChild<QWidget*>(QStringLiteral("frmTesting"))) {
    if (auto* list = picked->findChild<QListWidget*>(QStringLiteral("lstItems"))) {
      QObject::connect(list, &QListWidget::itemClicked, attributes, [attributes, list](QListWidgetItem* item) {
        if (attributes->isVisible()) attributes->ShowEntry(list->row(item));
      });
    }
  }
}

}  // namespace tessel
