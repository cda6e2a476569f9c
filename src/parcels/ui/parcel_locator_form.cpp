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
      if (k == 4) {
        Redraw(session_);
        return;
      }
      listing_ = static_cast<int>(k);
      List();
    });
  }
  layout->addLayout(buttons);
  connect(list, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    const int parcel = locator_.ParcelAt(list->row(item));
    Redraw(session_);
    if (parcel != 0) DrawParcelRing(session_, session_.parcels.ParcelRing.get(parcel));
  });
  resize(420, 360);
  // The listing shown follows the parcels: an entry of an earlier reading would name another.
  view_ = std::make_unique<SessionView>(*this, session_, Change::Parcels, [this] {
    if (listing_ >= 0) List();
  });
}

void ParcelLocatorForm::List() {
  switch (listing_) {
    case 0: locator_.AllParcels(); break;
    case 1: locator_.NonAliquot(); break;
    case 2: locator_.Sections(); break;
    case 3: locator_.Nominal(); break;
    default: return;
  }
  Show();
}

void ParcelLocatorForm::Show() {
  list->clear();
  for (const std::string& e : locator_.entries) list->addItem(FromBytes(e));
}

}  // namespace tessel
