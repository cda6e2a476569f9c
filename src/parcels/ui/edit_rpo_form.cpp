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
  view_ = std::make_unique<SessionView>(*this, session_);  // closes with the job
}

void EditRpoForm::Open() {
  count->setText(FromBytes(PolygonsSelectedText(session_)));
  auto* group = tags[0]->group();
  group->setExclusive(false);
  for (QRadioButton* option : tags) option->setChecked(false);
  group->setExclusive(true);
  open();
}

}  // namespace tessel
