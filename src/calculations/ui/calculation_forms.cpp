#include "calculations/ui/calculation_forms.h"

#include <QAction>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "calculations/calculation_files.h"
#include "calculations/computing.h"
#include "calculations/ui/calculation_form_parts.h"
#include "model/text.h"
#include "paint/qt_text.h"
#include "viewer/ui/selection_forms.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

using namespace calculation_form;

namespace {

void FillList(QListWidget* list, const std::vector<std::string>& entries) {
  const int row = list->currentRow();
  list->clear();
  list->addItems(Entries(entries));
  if (row >= 0 && row < list->count()) list->setCurrentRow(row);
}

int ExecDialog(QDialog& dialog) { return dialog.exec(); }

// A text of the lists' rules with its line ends as the widgets want them.
QString Shown(const std::string& text) { return FromBytes(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

}  // namespace

NotWizForm::NotWizForm(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmNotWiz"));
  setWindowTitle(QStringLiteral("New NOT definition"));
  auto* layout = new QVBoxLayout(this);
  point = new QRadioButton(QStringLiteral("POINT to not compute"), this);
  point->setObjectName(QStringLiteral("optPoint"));
  line = new QRadioButton(QStringLiteral("LINE segment to omit from LXN topology"), this);
  line->setObjectName(QStringLiteral("optLine"));
  point->setChecked(true);
  layout->addWidget(point);
  layout->addWidget(line);
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* next = Button(this, "cmdNext", QStringLiteral("Next -->"));
  QPushButton* cancel = Button(this, "cmdCancel", QStringLiteral("Cancel"));
  row->addWidget(next);
  row->addWidget(cancel);
  layout->addLayout(row);
  connect(next, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

NotWiz2Form::NotWiz2Form(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmNotWiz2"));
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  prompt = new QLabel(this);
  prompt->setObjectName(QStringLiteral("lblPrompt"));
  layout->addWidget(prompt);
  auto* row = new QHBoxLayout;
  from = Field(this, QStringLiteral("txtFrom"));
  to = Field(this, QStringLiteral("txtTo"));
  row->addWidget(from);
  row->addWidget(to);
  row->addWidget(PickButton(this, session_));
  layout->addLayout(row);
  layout->addLayout(OkCancel(this, [this] {
    if (Save()) close();
  }));
  view_ = std::make_unique<SessionView>(*this, session_, Change::Calculations, [this] { Follow(); });
}

const std::vector<std::string>& NotWiz2Form::List() const {
  return line_ ? session_.calculations.NotLines : session_.calculations.NotPoints;
}

void NotWiz2Form::Follow() {
  if (saving_ || !isVisible() || RefindEntry(List(), edited_)) return;
  close();
  session_.user.Message(kMsgOmissionGone, Icon::Exclamation);
}

void NotWiz2Form::Start(bool line, int index) {
  line_ = line;
  const bool edit = index >= 0 && index < static_cast<int>(List().size());
  edited_ = edit ? EditedEntry{index, {List()[static_cast<std::size_t>(index)]}} : EditedEntry{};
  setWindowTitle(edit ? QStringLiteral("Edit definition") : QStringLiteral("New definition"));
  if (line) {
    prompt->setText(edit ? QStringLiteral("From and To Point Identifiers of line to omit\nfrom LXN topology.")
                         : QStringLiteral("Enter From and To Point Identifiers."));
  } else {
    prompt->setText(edit ? QStringLiteral("Point Identifier of point to not compute.")
                         : QStringLiteral("Enter Point Identifier for point to not compute."));
  }
  to->setVisible(line);
  from->clear();
  to->clear();
  const CalculationLists& lists = session_.calculations;
  if (edit && !line && index < static_cast<int>(lists.NotPoints.size())) {
    from->setText(FromBytes(lists.NotPoints[static_cast<std::size_t>(index)]));
  }
  if (edit && line && index < static_cast<int>(lists.NotLines.size())) {
    const QString entry = FromBytes(lists.NotLines[static_cast<std::size_t>(index)]);
    from->setText(entry.section(QLatin1Char(' '), 0, 0));
    to->setText(entry.section(QLatin1Char(' '), 1));
  }
  if (!picks_) {
    PickTarget target;
    target.dialog = PickDialog::NotWiz2;
    target.fields = [this] {
      std::vector<PickField> out{FieldOf(from)};
      if (line_) out.push_back(FieldOf(to));
      return out;
    };
    target.raise = [this] { BringToFront(this); };
    picks_ = std::make_unique<PickRegistration>(session_, std::move(target));
  }
  BringToFront(this);
}

bool NotWiz2Form::Save() {
  const auto span = RefindEntry(List(), edited_);
  if (!span) {
    close();
    session_.user.Message(kMsgOmissionGone, Icon::Exclamation);
    return false;
  }
  const int index = edited_.IsNew() ? -1 : span->first;
  saving_ = true;
  const bool saved = line_ ? SaveNotLine(session_, index, Text(from), Text(to)) : SaveNotPoint(session_, index, Text(from));
  saving_ = false;
  return saved;
}

void NotWiz2Form::hideEvent(QHideEvent* event) {
  picks_.reset();
  QDialog::hideEvent(event);
}

MultiDeleteForm::MultiDeleteForm(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmMultiDelete"));
  setWindowTitle(QStringLiteral("Post Adjustment Calculations"));
  auto* layout = new QVBoxLayout(this);
  auto* text = new QLabel(
      QStringLiteral("Delete a range of point identifier definitions from post-adjustment calculations list (.add). "),
      this);
  text->setWordWrap(true);
  layout->addWidget(text);
  auto* grid = new QGridLayout;
  start = Field(this, QStringLiteral("txtStart"));
  start->setText(QStringLiteral("950100"));
  end = Field(this, QStringLiteral("txtEnd"));
  end->setText(QStringLiteral("999999"));
  grid->addWidget(new QLabel(QStringLiteral("Point Identifier range START:"), this), 0, 0);
  grid->addWidget(start, 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("Point Indentifier range END:"), this), 1, 0);
  grid->addWidget(end, 1, 1);
  layout->addLayout(grid);
  layout->addLayout(OkCancel(this, [this] { accept(); }));
}

AddForm::AddForm(Session& session, QWidget* parent)
    : QWidget(parent, Qt::Tool), runDialog(ExecDialog), session_(session) {
  setObjectName(QStringLiteral("frmADD"));
  setWindowTitle(QStringLiteral("Post Adjustment Calculations"));
  auto* layout = new QVBoxLayout(this);
  tabs = new QTabWidget(this);
  tabs->setObjectName(QStringLiteral("tabADD"));
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);

  auto* first = new QWidget(tabs);
  auto* firstLayout = new QVBoxLayout(first);
  definitions = new QListWidget(first);
  definitions->setObjectName(QStringLiteral("lstDefinitions"));
  definitions->setFont(fixed);
  firstLayout->addWidget(definitions);
  descriptionHeading = new QLabel(first);
  descriptionHeading->setObjectName(QStringLiteral("lblDescription"));
  firstLayout->addWidget(descriptionHeading);
  description = new QPlainTextEdit(first);
  description->setObjectName(QStringLiteral("txtDescription"));
  description->setReadOnly(true);
  description->setMaximumHeight(110);
  firstLayout->addWidget(description);
  tabs->addTab(first, QStringLiteral("Select a calculation definition"));

  auto* second = new QWidget(tabs);
  auto* secondLayout = new QGridLayout(second);
  secondLayout->addWidget(new QLabel(QStringLiteral("Points to not compute "), second), 0, 0);
  secondLayout->addWidget(new QLabel(QStringLiteral("Lines to not include in topology"), second), 0, 1);
  notPoints = new QListWidget(second);
  notPoints->setObjectName(QStringLiteral("lstNotPoints"));
  notLines = new QListWidget(second);
  notLines->setObjectName(QStringLiteral("lstNotLines"));
  notPoints->setFont(fixed);
  notLines->setFont(fixed);
  secondLayout->addWidget(notPoints, 1, 0);
  secondLayout->addWidget(notLines, 1, 1);
  notCaption = new QLabel(second);
  notCaption->setObjectName(QStringLiteral("lblNotCaption"));
  secondLayout->addWidget(notCaption, 2, 0, 1, 2);
  tabs->addTab(second, QStringLiteral("Points and lines to leave out"));
  layout->addWidget(tabs);

  auto* row = new QGridLayout;
  editButton = Button(this, "cmdEdit", QStringLiteral("Edit"));
  QPushButton* newButton = Button(this, "cmdNew", QStringLiteral("New"));
  QPushButton* deleteButton = Button(this, "cmdDelete", QStringLiteral("Delete"));
  QPushButton* multi = Button(this, "cmdMultiDelete", QStringLiteral("Delete range"));
  QPushButton* compute = Button(this, "cmdCompute", QStringLiteral("Compute "));
  compute->setToolTip(QString::fromLatin1(kComputeTip));
  QPushButton* test = Button(this, "cmdTest", QStringLiteral("Test"));
  test->setToolTip(QString::fromLatin1(kTestTip));
  QPushButton* status = Button(this, "cmdStatus", QStringLiteral("Status"));
  status->setToolTip(QString::fromLatin1(kStatusTip));
  QPushButton* find = Button(this, "cmdFind", QStringLiteral("Find"));
  QPushButton* closer = Button(this, "cmdClose", QStringLiteral("Close"));
  int at = 0;
  for (QPushButton* b : {newButton, editButton, deleteButton, multi, find, compute, test, status, closer}) {
    row->addWidget(b, at / 5, at % 5);
    ++at;
  }
  layout->addLayout(row);
  connect(newButton, &QPushButton::clicked, this, &AddForm::New);
  connect(editButton, &QPushButton::clicked, this, &AddForm::Edit);
  connect(deleteButton, &QPushButton::clicked, this, &AddForm::Delete);
  connect(multi, &QPushButton::clicked, this, &AddForm::MultiDelete);
  connect(find, &QPushButton::clicked, this, &AddForm::Find);
  connect(compute, &QPushButton::clicked, this, [this] { Compute(false); });
  connect(test, &QPushButton::clicked, this, [this] { Compute(true); });
  connect(status, &QPushButton::clicked, this, &AddForm::ShowStatus);
  connect(closer, &QPushButton::clicked, this, &QWidget::close);
  connect(definitions, &QListWidget::currentRowChanged, this, &AddForm::Describe);
  connect(definitions, &QListWidget::itemDoubleClicked, this, &AddForm::Edit);
  connect(notPoints, &QListWidget::currentRowChanged, this, [this](int r) {
    if (r < 0) return;
    notLines->setCurrentRow(-1);
    notCaption->setText(FromBytes(NotPointCaption(ToBytes(notPoints->item(r)->text()))));
  });
  connect(notLines, &QListWidget::currentRowChanged, this, [this](int r) {
    if (r < 0) return;
    notPoints->setCurrentRow(-1);
    notCaption->setText(FromBytes(NotLineCaption(ToBytes(notLines->item(r)->text()))));
  });

  editor_ = new AddCalcsForm(session_, this);
  editor_->setWindowFlag(Qt::Tool);
  notEditor_ = new NotWiz2Form(session_, this);
  notEditor_->setWindowFlag(Qt::Tool);
  resize(640, 520);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Calculations, [this] { Reload(); });
}

QListWidget* AddForm::CurrentList() const {
  if (tabs->currentIndex() == 0) return definitions;
  return notLines->currentRow() >= 0 ? notLines : notPoints;
}

void AddForm::Reload() {
  const CalculationLists& lists = session_.calculations;
  FillList(definitions, lists.Definitions);
  FillList(notPoints, lists.NotPoints);
  FillList(notLines, lists.NotLines);
  editButton->setEnabled(!lists.Definitions.empty());
  Describe();
}

void AddForm::hideEvent(QHideEvent* event) {
  // The dialogs of the lists go with them.
  editor_->close();
  notEditor_->close();
  if (find_) find_->close();
  QWidget::hideEvent(event);
}

void AddForm::Describe() {
  const int row = definitions->currentRow();
  const Description d = tessel::Describe(session_, session_.calculations.Definitions, row);
  descriptionHeading->setText(FromBytes(d.heading));
  description->setPlainText(Shown(d.text));
}

void AddForm::New() {
  if (tabs->currentIndex() == 1) {
    NotWizForm wizard(this);
    if (runDialog(wizard) != QDialog::Accepted) return;
    notEditor_->Start(wizard.line->isChecked(), -1);
    return;
  }
  RunDefinitionWizard(session_, this, runDialog, [this](int type) { editor_->StartNew(type); });
}

void AddForm::Edit() {
  if (tabs->currentIndex() == 1) {
    if (notLines->currentRow() >= 0) notEditor_->Start(true, notLines->currentRow());
    else if (notPoints->currentRow() >= 0) notEditor_->Start(false, notPoints->currentRow());
    return;
  }
  if (definitions->currentRow() >= 0) editor_->StartEdit(definitions->currentRow());
}

void AddForm::Delete() {
  if (tabs->currentIndex() == 0) {
    DeleteDefinition(session_, definitions->currentRow());
  } else if (notLines->currentRow() >= 0) {
    DeleteNotLine(session_, notLines->currentRow());
  } else {
    DeleteNotPoint(session_, notPoints->currentRow());
  }
}

void AddForm::Compute(bool test) {
  ComputeCalculations(session_, test ? TestRunAnswers() : ComputeAllAnswers());
}

void AddForm::ShowStatus() {
  const int row = definitions->currentRow();
  if (row < 0 || row >= static_cast<int>(session_.calculations.Definitions.size())) {
    description->setPlainText(tabs->tabText(0));
    return;
  }
  const DefinitionSpan span = SpanOf(session_.calculations.Definitions, row);
  description->setPlainText(
      Shown(DefinitionStatus(session_, session_.calculations.Definitions[static_cast<std::size_t>(span.first)])));
}

void AddForm::MultiDelete() {
  if (tabs->currentIndex() == 1) {
    session_.user.Message(kMsgNoMultiNot);
    return;
  }
  MultiDeleteForm form(this);
  if (runDialog(form) != QDialog::Accepted) return;
  DeleteRange(session_, Val(Text(form.start)), Val(Text(form.end)));
}

void AddForm::Find() {
  if (find_) find_->close();
  auto* box = new FindForm(session_, CurrentList(), this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  find_ = box;
  connect(box, &QObject::destroyed, this, [this, box] {
    if (find_ == box) find_ = nullptr;
  });
  box->show();
}

void InstallCalculationsForms(QMainWindow& window, Session& session) {
  QMenu* menu = window.findChild<QMenu*>(QStringLiteral("mnuCommandCadastral"));
  if (!menu) menu = window.findChild<QMenu*>(QStringLiteral("mnuCommand"));
  if (!menu) return;
  auto* form = new AddForm(session, &window);
  form->hide();
  QAction* entry = menu->addAction(QStringLiteral("Post-adjustment calculations"));
  entry->setObjectName(QStringLiteral("mnuCommandCadastralADD"));
  QObject::connect(entry, &QAction::triggered, form, [form, &session] {
    if (!LoadCalculationLists(session)) return;
    form->Reload();
    form->show();
    form->raise();
  });
}

}  // namespace tessel
