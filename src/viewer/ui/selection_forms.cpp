#include "viewer/ui/selection_forms.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QMainWindow>
#include <QVBoxLayout>

#include "model/dialog_memory.h"
#include "paint/form_places.h"
#include "forms/ui/form_placing.h"
#include "paint/qt_text.h"
#include "viewer/picking.h"

namespace tessel {

namespace {

double TwipsPerPixel(const QWidget* w) { return 1440.0 / w->logicalDpiX(); }

}  // namespace

SelectionForm::SelectionForm(Session& session, const QString& name, const QString& title, const std::string& key,
                             QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), key_(key) {
  setObjectName(name);
  setWindowTitle(title);
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstItems"));
  layout->addWidget(list_);
  buttons_ = new QWidget(this);
  new QHBoxLayout(buttons_);
  buttons_->layout()->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(buttons_);
  resize(360, 300);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Selection, [this] { Reload(); });
}

QPushButton* SelectionForm::AddButton(const char* name, const QString& caption) {
  auto* button = new QPushButton(caption, buttons_);
  button->setObjectName(QString::fromLatin1(name));
  buttons_->layout()->addWidget(button);
  return button;
}

void SelectionForm::Reload() {
  const int row = list_->currentRow();
  list_->clear();
  for (const std::string& entry : Entries()) list_->addItem(FromBytes(entry));
  if (row >= 0 && row < list_->count()) list_->setCurrentRow(row);
}

void SelectionForm::showEvent(QShowEvent* event) {
  Reload();
  if (const auto place = ReadWindowPlace(session_, key_)) {
    const double t = TwipsPerPixel(this);
    setGeometry(OntoAScreen(QRect(int(place->left / t), int(place->top / t), int(place->width / t),
                                  int(place->height / t))));
  } else {
    PlaceBesideMainWindow(*this);
  }
  QWidget::showEvent(event);
}

void SelectionForm::closeEvent(QCloseEvent* event) {
  const double t = TwipsPerPixel(this);
  const QRect g = geometry();
  WriteWindowPlace(session_, key_,
                   {float(g.top() * t), float(g.left() * t), float(g.height() * t), float(g.width() * t)});
  QWidget::closeEvent(event);
}

SelectedPointsForm::SelectedPointsForm(Session& session, QWidget* parent)
    : SelectionForm(session, QStringLiteral("frmSelectedPoints"), QStringLiteral("List Points"), "frmSelectedPoints",
                    parent) {
  auto* heading = new QLabel(QStringLiteral("PointID      Northing            Easting"), this);
  static_cast<QVBoxLayout*>(layout())->insertWidget(0, heading);
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  connect(AddButton("cmdClear", QStringLiteral("Clear")), &QPushButton::clicked, this, [this] { PointsClear(session_); });
  connect(AddButton("cmdRemoveItem", QStringLiteral("Remove Item")), &QPushButton::clicked, this,
          [this] { PointsRemoveItem(session_, list_->currentRow()); });
  connect(list_, &QListWidget::itemClicked, this, [this] { PointsClicked(session_, list_->currentRow()); });
}

void SelectedPointsForm::closeEvent(QCloseEvent* event) {
  SelectionForm::closeEvent(event);
  PointsClosed(session_);
}

SelectedParcelsForm::SelectedParcelsForm(Session& session, QWidget* parent)
    : SelectionForm(session, QStringLiteral("frmTesting"), QStringLiteral("Selected Parcel Id's"), "frmSelectedParcels",
                    parent) {
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  QPushButton* remove = AddButton("cmdRemoveItem", QStringLiteral("Remove Item"));
  QPushButton* clear = AddButton("cmdClearAll", QStringLiteral("Clear All"));
  QPushButton* cama = AddButton("cmdCama", QStringLiteral("CAMA"));
  cama->setVisible(false);  // only with linked assessor parcels
  remove->setEnabled(false);
  clear->setEnabled(false);
  connect(remove, &QPushButton::clicked, this, [this] { ParcelsRemoveItem(session_, list_->currentRow()); });
  connect(clear, &QPushButton::clicked, this, [this] { ParcelsClearAll(session_); });
  connect(list_, &QListWidget::itemClicked, this, [this] { ParcelsClicked(session_, list_->currentRow()); });
  // The entry's popup: its one item has no effect.
  auto* popup = new QMenu(this);
  popup->setObjectName(QStringLiteral("mnuPopupTesting"));
  popup->addAction(QStringLiteral("Remove from selection"))->setObjectName(QStringLiteral("mnuPopupDeselect"));
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QWidget::customContextMenuRequested, this,
          [this, popup](const QPoint& at) { popup->popup(list_->mapToGlobal(at)); });
}

void SelectedParcelsForm::resizeEvent(QResizeEvent* event) {
  // Never lower than 1000 twips.
  const int least = int(1000 / TwipsPerPixel(this));
  if (height() < least) resize(width(), least);
  QWidget::resizeEvent(event);
}

SelectedLinesForm::SelectedLinesForm(Session& session, QWidget* parent)
    : SelectionForm(session, QStringLiteral("frmSelectedLines"), QStringLiteral("Selected Lines"), "frmSelectedLines",
                    parent) {
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  connect(AddButton("cmdRemoveLine", QStringLiteral("Remove Line")), &QPushButton::clicked, this,
          [this] { LinesRemoveLine(session_, list_->currentRow()); });
  connect(AddButton("cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, [this] { close(); });
  // The record editors belong to the survey forms, which connect these two when they install.
  AddButton("cmdEditLine", QStringLiteral("Edit Line"));
  AddButton("cmdChangeSID", QStringLiteral("Change SID"));
  connect(AddButton("cmdPrint", QStringLiteral("Print")), &QPushButton::clicked, this, [this] { Print(); });
  auto* popup = new QMenu(this);
  popup->setObjectName(QStringLiteral("mnuPopupRaw"));
  QAction* copy = popup->addAction(QStringLiteral("Copy"));
  copy->setObjectName(QStringLiteral("mnuPopupRawCopy"));
  connect(copy, &QAction::triggered, this,
          [this] { QApplication::clipboard()->setText(FromBytes(LinesClipboardText(session_))); });
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QWidget::customContextMenuRequested, this,
          [this, popup](const QPoint& at) { popup->popup(list_->mapToGlobal(at)); });
  resize(520, 300);
}

void SelectedLinesForm::Print() {
  QPrinter printer;
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  QPainter painter(&printer);
  painter.setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  const int step = painter.fontMetrics().height();
  int y = step;
  for (const std::string& line : session_.selection.LineList) {
    if (y > painter.viewport().height() - step) {
      printer.newPage();
      y = step;
    }
    painter.drawText(0, y, FromBytes(line));
    y += step;
  }
}

QString FindForm::kept_;

FindForm::FindForm(Session& session, QListWidget* target, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), target_(target) {
  setObjectName(QStringLiteral("frmFind"));
  setWindowTitle(QStringLiteral("Tessel"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Enter all or part of the point identifier:"), this));
  auto* text = new QLineEdit(kept_, this);
  text->setObjectName(QStringLiteral("txtFind"));
  layout->addWidget(text);
  auto* row = new QHBoxLayout;
  auto* find = new QPushButton(QStringLiteral("&Find"), this);
  find->setObjectName(QStringLiteral("cmdFind"));
  auto* next = new QPushButton(QStringLiteral("Find &Next"), this);
  next->setObjectName(QStringLiteral("cmdFindNext"));
  auto* closeButton = new QPushButton(QStringLiteral("&Close"), this);
  closeButton->setObjectName(QStringLiteral("cmdClose"));
  row->addWidget(find);
  row->addWidget(next);
  row->addWidget(closeButton);
  layout->addLayout(row);
  connect(text, &QLineEdit::textChanged, this, [](const QString& t) { kept_ = t; });
  connect(find, &QPushButton::clicked, this, [this] { Search(0); });
  connect(next, &QPushButton::clicked, this, [this] { Search(target_->currentRow() + 1); });
  connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
}

void FindForm::Search(int start) {
  std::vector<std::string> entries;
  for (int i = 0; i < target_->count(); ++i) entries.push_back(ToBytes(target_->item(i)->text()));
  const std::string text = ToBytes(kept_);
  if (const auto found = FindEntry(entries, text, start)) {
    target_->setCurrentRow(*found);
  } else {
    session_.user.Message(NotFoundText(text));
  }
}

}  // namespace tessel
