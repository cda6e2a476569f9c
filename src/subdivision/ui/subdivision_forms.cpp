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

namespace subdivision_form {

QLabel* Label(QWidget* parent, const QString& text, const QString& name) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  if (!name.isEmpty()) label->setObjectName(name);
  return label;
}

QLineEdit* Field(QWidget* parent, const QString& name, const QString& text) {
  auto* field = new QLineEdit(text, parent);
  field->setObjectName(name);
  return field;
}

QHBoxLayout* OkCancel(QDialog* dialog) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* ok = Button(dialog, QStringLiteral("cmdOK"), QStringLiteral("OK"));
  QPushButton* cancel = Button(dialog, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
  ok->setDefault(true);
  row->addWidget(ok);
  row->addWidget(cancel);
  QObject::connect(ok, &QPushButton::clicked, dialog, &QDialog::accept);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  return row;
}

std::string Text(const QLineEdit* field) { return ToBytes(field->text()); }

QHBoxLayout* WizardButtons(QDialog* wizard, std::function<bool()> finish) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* back = Button(wizard, QStringLiteral("cmdBack"), QStringLiteral("<-- Back"));
  QPushButton* done = Button(wizard, QStringLiteral("cmdFinish"), QStringLiteral("Finish"));
  QPushButton* cancel = Button(wizard, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
  row->addWidget(back);
  row->addWidget(done);
  row->addWidget(cancel);
  QObject::connect(back, &QPushButton::clicked, wizard, [wizard] { wizard->done(kWizardBack); });
  QObject::connect(cancel, &QPushButton::clicked, wizard, &QDialog::reject);
  QObject::connect(done, &QPushButton::clicked, wizard, [wizard, finish] {
    if (finish()) wizard->accept();
  });
  return row;
}

int ExecDialog(QDialog& dialog) { return RunWithCanvasLive(dialog); }

}  // namespace subdivision_form

int RunWithCanvasLive(QDialog& dialog) {
  dialog.setWindowModality(Qt::NonModal);
  QEventLoop loop;
  QObject::connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit);
  dialog.show();
  dialog.raise();
  loop.exec();
  return dialog.result();
}

QPushButton* PickButton(QWidget* parent, Session& session) {
  auto* button = new QPushButton(QStringLiteral("+"), parent);
  button->setObjectName(QStringLiteral("cmdPick"));
  button->setToolTip(QString::fromLatin1(kStatusSelectPoint));
  button->setCheckable(true);
  button->setChecked(session.selection.PointPickActive);
  button->setMaximumWidth(28);
  QObject::connect(button, &QPushButton::toggled, button, [&session](bool on) { SetPointPick(session, on); });
  return button;
}

PickRegistration::PickRegistration(Session& session, PickTarget target)
    : session_(session), handle_(session.pointPicks.Register(std::move(target))) {}

PickRegistration::~PickRegistration() {
  session_.pointPicks.Unregister(handle_);
  if (session_.pointPicks.Empty() && session_.selection.PointPickActive) SetPointPick(session_, false);
}

PickField FieldOf(QLineEdit* edit) {
  return {ToBytes(edit->text()), [edit](const std::string& id) { edit->setText(FromBytes(id)); }};
}

void BringToFront(QWidget* widget) {
  widget->show();
  widget->raise();
  widget->activateWindow();
}

void PaintShade(QPushButton* button, Shade shade) {
  int number = -1;
  switch (shade) {
    case Shade::Green: number = 10; break;
    case Shade::Red: number = 12; break;
    case Shade::Yellow: number = 14; break;
    case Shade::Cyan: number = 11; break;
    case Shade::System: break;
  }
  button->setProperty("shade", static_cast<int>(shade));
  if (number < 0) {
    button->setPalette(QPalette());
    button->setAutoFillBackground(false);
    return;
  }
  QPalette palette = button->palette();
  palette.setColor(QPalette::Button, QColor::fromRgb(PaletteColour(number)));
  button->setPalette(palette);
  button->setAutoFillBackground(true);
}

void InstallSubdivisionForms(QMainWindow& window, Session& session) {
  QMenu* menu = window.findChild<QMenu*>(QStringLiteral("mnuCommandCadastral"));
  if (!menu) menu = window.findChild<QMenu*>(QStringLiteral("mnuCommand"));
  if (!menu) return;
  auto* township = new TownshipForm(session, &window);
  township->hide();
  QAction* entry = menu->addAction(QStringLiteral("Irregular Section Subdivision"));
  entry->setObjectName(QStringLiteral("mnuCommandCadastralIrregular"));
  QObject::connect(entry, &QAction::triggered, township, [township, &session] {
    if (!OpenTownshipDiagram(session)) return;
    township->show();
    township->raise();
  });
}

}  // namespace tessel
