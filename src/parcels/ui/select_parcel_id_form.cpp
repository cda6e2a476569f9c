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
  view_ = std::make_unique<SessionView>(*this, session_);  // closes with the job
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

}  // namespace tessel
