#include "cama/ui/cama_forms.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "cama/link_chain.h"
#include "cama/manual_link.h"
#include "datasets/identity.h"
#include "paint/qt_text.h"
#include "forms/ui/long_work.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

namespace {

constexpr const char* kQueryLabels[6] = {"Township Number",
                                         "Twp fractional code (0=no frac. 5 = half)",
                                         "Township Direction (N or S)",
                                         "Range Number",
                                         "Range fractional code (0=no frac. 5 = half)",
                                         "Range Direction (E or W)"};
constexpr const char* kQueryNames[6] = {"txtTownship", "txtTwpFraction", "txtTwpDirection",
                                        "txtRange",    "txtRngFraction", "txtRngDirection"};

QLabel* Label(QWidget* parent, QLayout* layout, const char* name) {
  auto* label = new QLabel(parent);
  label->setObjectName(QString::fromLatin1(name));
  layout->addWidget(label);
  return label;
}

// The list of frmTesting, whose rows are link records while "CAMA Parcels" is checked.
QListWidget* TestingList(QMainWindow& window) {
  auto* form = window.findChild<QWidget*>(QStringLiteral("frmTesting"));
  return form ? form->findChild<QListWidget*>(QStringLiteral("lstItems")) : nullptr;
}

int TestingRow(QMainWindow& window) {
  QListWidget* list = TestingList(window);
  return list ? list->currentRow() : -1;
}

QAction* Entry(QMenu* menu, const char* name, const QString& caption) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  return action;
}

}  // namespace

QueryTwpForm::QueryTwpForm(const TownshipQuery& defaults, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmQueryTwp"));
  setWindowTitle(QStringLiteral("Query CAMA Database"));
  auto* layout = new QVBoxLayout(this);
  auto* explanation = new QLabel(
      QStringLiteral("CAMA Database files can be very large.  This form is used to query a subset of the CAMA database "
                     "for this township.  The resultant file will be projectname.cama."),
      this);
  explanation->setObjectName(QStringLiteral("lblExplain"));
  explanation->setWordWrap(true);
  layout->addWidget(explanation);
  auto* form = new QFormLayout;
  for (int k = 0; k < 6; ++k) {
    fields_[k] = new QLineEdit(FromBytes(defaults[static_cast<std::size_t>(k)]), this);
    fields_[k]->setObjectName(QString::fromLatin1(kQueryNames[k]));
    form->addRow(QString::fromLatin1(kQueryLabels[k]), fields_[k]);
  }
  layout->addLayout(form);
  auto* row = new QHBoxLayout;
  connect(Button(this, row, "cmdOK", QStringLiteral("OK")), &QPushButton::clicked, this, &QDialog::accept);
  connect(Button(this, row, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  layout->addLayout(row);
}

TownshipQuery QueryTwpForm::Fields() const {
  TownshipQuery fields;
  for (int k = 0; k < 6; ++k) fields[static_cast<std::size_t>(k)] = ToBytes(fields_[k]->text());
  return fields;
}

CamaForm::CamaForm(Session& session, QMainWindow& window)
    : QWidget(&window, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), window_(window) {
  setObjectName(QStringLiteral("frmCama"));
  setWindowTitle(QStringLiteral("Cama Parcel"));
  auto* layout = new QVBoxLayout(this);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName(QStringLiteral("txtLegal"));
  text_->setReadOnly(true);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(text_);
  labels_[0] = Label(this, layout, "lblOwner");
  labels_[1] = Label(this, layout, "lblGeocode");
  labels_[2] = Label(this, layout, "lblSection");
  auto* row = new QHBoxLayout;
  connect(Button(this, row, "cmdClose", QStringLiteral("Close")), &QPushButton::clicked, this, &QWidget::close);
  connect(Button(this, row, "cmdDelete", QStringLiteral("Delete")), &QPushButton::clicked, this,
          [this] { CamaDeleteLink(session_, TestingRow(window_)); });
  layout->addLayout(row);
  resize(360, 260);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Cama, [this] { Reload(); });
}

void CamaForm::Reload() {
  text_->setPlainText(FromBytes(session_.cama.CamaText).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
  for (int k = 0; k < 3; ++k) labels_[k]->setText(FromBytes(session_.cama.CamaLabels[static_cast<std::size_t>(k)]));
}

void CamaForm::showEvent(QShowEvent* event) {
  Reload();
  QWidget::showEvent(event);
}

CamaParcelForm::CamaParcelForm(Session& session, QMainWindow& window)
    : QWidget(&window, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), window_(window) {
  setObjectName(QStringLiteral("frmCamaParcel"));
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstCama"));
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  layout->addWidget(list_);
  labels_[0] = Label(this, layout, "lblOwner");
  labels_[1] = Label(this, layout, "lblGeocode");
  labels_[2] = Label(this, layout, "lblSection");
  auto* instruction = new QLabel(FromBytes(kCamaParcelInstruction), this);
  instruction->setObjectName(QStringLiteral("lblInstruction"));
  instruction->setWordWrap(true);
  layout->addWidget(instruction);
  auto* row = new QHBoxLayout;
  connect(Button(this, row, "cmdApply", QStringLiteral("Apply")), &QPushButton::clicked, this,
          [this] { CamaApply(session_, list_->currentRow(), TestingRow(window_)); });
  connect(Button(this, row, "cmdMultiAtt", QStringLiteral("Multi-att")), &QPushButton::clicked, this,
          [this] { CamaMultiAtt(session_, list_->currentRow(), TestingRow(window_)); });
  connect(Button(this, row, "cmdOK", QStringLiteral("OK")), &QPushButton::clicked, this, [this] {
    CamaParcelOk(session_);
    hide();
  });
  connect(Button(this, row, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, [this] {
    hide();
    CamaParcelCancel(session_);
  });
  layout->addLayout(row);
  connect(list_, &QListWidget::itemClicked, this, [this] { ShowLabels(); });
  resize(520, 360);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Cama, [this] { Reload(); });
}

void CamaParcelForm::ShowLabels() {
  const int row = CamaParcelClicked(session_, list_->currentRow());
  if (row >= 0 && row != list_->currentRow()) list_->setCurrentRow(row);
  for (int k = 0; k < 3; ++k) labels_[k]->setText(FromBytes(session_.cama.CamaParcelLabels[static_cast<std::size_t>(k)]));
}

void CamaParcelForm::Reload() {
  setWindowTitle(FromBytes(session_.cama.CamaParcelCaption));
  QStringList rows;
  for (const std::string& row : session_.cama.CamaParcelRows) rows << FromBytes(row);
  QStringList shown;
  for (int i = 0; i < list_->count(); ++i) shown << list_->item(i)->text();
  // The same rows keep the row chosen and its labels; other rows start afresh.
  if (rows == shown && isVisible()) return;
  list_->clear();
  list_->addItems(rows);
  for (QLabel* label : labels_) label->clear();
}

void CamaParcelForm::showEvent(QShowEvent* event) {
  list_->clear();
  Reload();
  QWidget::showEvent(event);
}

UnusedCamaForm::UnusedCamaForm(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session) {
  setObjectName(QStringLiteral("frmUnusedCama"));
  setWindowTitle(QStringLiteral("CAMA Database"));
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstUnused"));
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(list_);
  auto* row = new QHBoxLayout;
  connect(Button(this, row, "cmdClear", QStringLiteral("Clear list")), &QPushButton::clicked, list_, &QListWidget::clear);
  connect(Button(this, row, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, &QWidget::close);
  layout->addLayout(row);
  resize(300, 360);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Cama, [this] { Reload(); });
}

void UnusedCamaForm::Reload() {
  list_->clear();
  for (const std::string& row : session_.cama.UnusedRows) list_->addItem(FromBytes(row));
}

void UnusedCamaForm::showEvent(QShowEvent* event) {
  Reload();
  QWidget::showEvent(event);
}

void InstallCamaForms(QMainWindow& window, Session& session) {
  (new CamaForm(session, window))->hide();
  auto* parcels = new CamaParcelForm(session, window);
  parcels->hide();
  (new UnusedCamaForm(session, &window))->hide();
  Session* s = &session;
  const auto guarded = [s](auto command) {
    return [s, command] {
      if (JobGuard(*s, kMsgOpenOrCreateJob)) command();
    };
  };

  if (QMenu* attributes = window.findChild<QMenu*>(QStringLiteral("mnuAttributes"))) {
    attributes->addSeparator();
    QObject::connect(Entry(attributes, "mnuAttributesCama", QStringLiteral("Import CAMA file")), &QAction::triggered,
                     &window, guarded([s, &window] {
                       if (!CamaImportBegin(*s)) return;
                       QueryTwpForm dialog(DefaultTownshipQuery(s->JobName), &window);
                       if (dialog.exec() != QDialog::Accepted) return;
                       // A county's database runs to gigabytes: it is read off the interface
                       // thread, with its progress and a Cancel in the status bar.
                       const TownshipQuery fields = dialog.Fields();
                       RunLongWork(window, [s, &fields](Progress& progress) { CamaImportQuery(*s, fields, &progress); });
                     }));
    QObject::connect(Entry(attributes, "mnuAttributesCamaLink", QStringLiteral("Link Parcels with CAMA")),
                     &QAction::triggered, &window, guarded([s] { LinkParcelsWithCama(*s); }));
    QObject::connect(Entry(attributes, "mnuAttributesCamaTest", QStringLiteral("Clear Cama Variables")),
                     &QAction::triggered, &window, [s] {
                       ClearCamaVariables(*s);
                       RedrawLinks(*s);
                     });
    QObject::connect(Entry(attributes, "mnuattributesDelCama", QStringLiteral("Delete Old Cama")), &QAction::triggered,
                     &window, guarded([s] {
                       DeleteOldCama(*s);
                       RedrawLinks(*s);
                     }));
    QObject::connect(Entry(attributes, "munAttributesUnusedCama", QStringLiteral("Show Unused Cama Parcels")),
                     &QAction::triggered, &window, guarded([s] { ShowUnusedCama(*s); }));
  }

  if (QMenu* view = window.findChild<QMenu*>(QStringLiteral("mnuView"))) {
    QAction* plot = new QAction(QStringLiteral("CAMA Parcels"), view);
    plot->setObjectName(QStringLiteral("mnuViewCama"));
    plot->setCheckable(true);
    // Before the raw polygons, as the layers are painted.
    QAction* before = window.findChild<QAction*>(QStringLiteral("mnuViewRPO"));
    view->insertAction(before && before->parent() == view ? before : nullptr, plot);
    QObject::connect(plot, &QAction::toggled, &window, [s, &window](bool on) {
      s->checks.mnuViewCama = on;
      if (auto* form = window.findChild<QWidget*>(QStringLiteral("frmTesting"))) {
        if (auto* button = form->findChild<QPushButton*>(QStringLiteral("cmdCama"))) button->setVisible(on);
      }
      RedrawLinks(*s);
    });
  }

  if (auto* testing = window.findChild<QWidget*>(QStringLiteral("frmTesting"))) {
    if (auto* button = testing->findChild<QPushButton*>(QStringLiteral("cmdCama"))) {
      QObject::connect(button, &QPushButton::clicked, parcels, [s, &window] {
        const int row = OpenCamaParcels(*s, TestingRow(window));
        if (QListWidget* list = TestingList(window); list && row >= 0 && list->currentRow() != row) list->setCurrentRow(row);
      });
    }
  }
}

}  // namespace tessel
