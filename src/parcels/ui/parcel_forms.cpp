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
        if (attributes->isVisible()) attributes->ShowSelectionRow(list->row(item));
      });
    }
  }
}

}  // namespace tessel
