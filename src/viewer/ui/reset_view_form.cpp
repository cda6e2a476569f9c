#include "viewer/ui/reset_view_form.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "viewer/view_transform.h"

namespace tessel {

ResetViewForm::ResetViewForm(Session& session, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmResetView"));
  setWindowTitle(QStringLiteral("Tessel"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Set or Reset Saved View "), this));
  auto* group = new QButtonGroup(this);
  auto* options = new QHBoxLayout;
  for (int slot = 1; slot <= 4; ++slot) {
    auto* option = new QRadioButton(QStringLiteral("View %1").arg(slot), this);
    option->setObjectName(QStringLiteral("optView%1").arg(slot));
    group->addButton(option, slot);
    options->addWidget(option);
  }
  layout->addLayout(options);
  connect(group, &QButtonGroup::idClicked, this, [&session](int slot) { session.view.SavedViewSlot = slot; });

  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton(QStringLiteral("OK"), this);
  ok->setObjectName(QStringLiteral("cmdOK"));
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, [this, &session] {
    StoreSavedView(session, session.view.SavedViewSlot);
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

}  // namespace tessel
