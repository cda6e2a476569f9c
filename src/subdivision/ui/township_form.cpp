#include "subdivision/ui/subdivision_forms.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <memory>

#include "model/config.h"
#include "model/dialog_memory.h"
#include "paint/qt_text.h"
#include "subdivision/irr_save.h"
#include "subdivision/nominal.h"
#include "subdivision/ui/subdivision_form_parts.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

using namespace subdivision_form;

TownshipForm::TownshipForm(Session& session, QWidget* parent) : QWidget(parent, Qt::Tool), session_(session) {
  setObjectName(QStringLiteral("frmTWP"));
  setWindowTitle(QStringLiteral("Township diagram"));
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  for (int row = 0; row < 6; ++row) {
    for (int column = 0; column < 6; ++column) {
      const int s = SectionAt(row, column);
      QPushButton* b = Button(this, QStringLiteral("cmdSection%1").arg(s), QString::number(s));
      b->setMinimumSize(40, 40);
      buttons_[static_cast<std::size_t>(s)] = b;
      grid->addWidget(b, row, column);
      connect(b, &QPushButton::clicked, this, [this, s] { ClickSection(s); });
    }
  }
  layout->addLayout(grid);
  auto* row = new QHBoxLayout;
  QPushButton* statusToggle = Button(this, QStringLiteral("cmdStatus"), QStringLiteral("Status"));
  QPushButton* defineToggle = Button(this, QStringLiteral("cmdDefine"), QStringLiteral("Define"));
  QPushButton* compute = Button(this, QStringLiteral("cmdCompute"), QStringLiteral("Compute"));
  QPushButton* closer = Button(this, QStringLiteral("cmdClose"), QStringLiteral("Close "));
  statusToggle->setCheckable(true);
  defineToggle->setCheckable(true);
  for (QPushButton* b : {statusToggle, defineToggle, compute, closer}) row->addWidget(b);
  layout->addLayout(row);
  connect(statusToggle, &QPushButton::toggled, this, [this, statusToggle](bool on) {
    PaintShade(statusToggle, on ? Shade::Yellow : Shade::System);
    SetStatusMode(session_, diagram_, on);
    Refresh();
  });
  connect(defineToggle, &QPushButton::toggled, this, [this, defineToggle](bool on) {
    PaintShade(defineToggle, on ? Shade::Green : Shade::System);
    SetDefineMode(session_, diagram_, on);
    Refresh();
  });
  connect(compute, &QPushButton::clicked, this, [this] { ComputeSubdivision(session_); });
  connect(closer, &QPushButton::clicked, this, &QWidget::close);

  status_ = new QWidget(this, Qt::Tool);
  status_->setObjectName(QStringLiteral("frmSubStatus"));
  auto* statusLayout = new QVBoxLayout(status_);
  statusText_ = new QPlainTextEdit(status_);
  statusText_->setObjectName(QStringLiteral("txtStatus"));
  statusText_->setReadOnly(true);
  statusText_->setFont(QFont(QStringLiteral("Courier New")));
  statusLayout->addWidget(statusText_);
  status_->resize(560, 300);

  section_ = new SectionDialogForm(session_, this);
  section_->onSaved = [this](const std::vector<int>& sections) {
    RefreshAfterSave(session_, diagram_, sections);
    Refresh();
  };
  resize(320, 340);
  view_ = std::make_unique<SessionView>(*this, session_);  // closes with the job
}

void TownshipForm::ClickSection(int section) {
  SectionForm form;
  const SectionClick click = tessel::ClickSection(session_, diagram_, section, form);
  status_->setWindowTitle(FromBytes(diagram_.statusCaption));
  statusText_->setPlainText(FromBytes(diagram_.statusText));
  if (click.showStatus) status_->show();
  Refresh();
  if (click.openEditor) {
    section_->Load(form);
    section_->show();
    section_->raise();
  }
}

void TownshipForm::Refresh() {
  for (int s = 1; s <= 36; ++s) PaintShade(buttons_[static_cast<std::size_t>(s)], diagram_.shades[static_cast<std::size_t>(s)]);
}

void TownshipForm::showEvent(QShowEvent* event) {
  Nominals();
  if (const auto place = ReadWindowPlace(session_, kTownshipPlaceKey)) {
    const double t = 1440.0 / logicalDpiX();
    setGeometry(int(place->left / t), int(place->top / t), int(place->width / t), int(place->height / t));
  }
  QWidget::showEvent(event);
}

void TownshipForm::closeEvent(QCloseEvent* event) {
  const double t = 1440.0 / logicalDpiX();
  const QRect g = geometry();
  WriteWindowPlace(session_, kTownshipPlaceKey,
                   {float(g.top() * t), float(g.left() * t), float(g.height() * t), float(g.width() * t)});
  section_->close();
  status_->close();
  QWidget::closeEvent(event);
}

}  // namespace tessel
