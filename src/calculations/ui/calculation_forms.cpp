#include "calculations/ui/calculation_forms.h"

#include <QAction>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
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
#include "model/text.h"
#include "paint/qt_text.h"
#include "viewer/ui/selection_forms.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

namespace {

QLineEdit* Field(QWidget* parent, const QString& name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  return field;
}

std::string Text(const QLineEdit* field) { return ToBytes(field->text()); }

QStringList Entries(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& t : texts) list << FromBytes(t);
  return list;
}

QHBoxLayout* OkCancel(QDialog* dialog, const std::function<void()>& ok) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* okButton = Button(dialog, "cmdOK", QStringLiteral("OK"));
  QPushButton* cancel = Button(dialog, "cmdCancel", QStringLiteral("Cancel"));
  okButton->setDefault(true);
  row->addWidget(okButton);
  row->addWidget(cancel);
  QObject::connect(okButton, &QPushButton::clicked, dialog, ok);
  QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
  return row;
}

void FillList(QListWidget* list, const std::vector<std::string>& entries) {
  const int row = list->currentRow();
  list->clear();
  list->addItems(Entries(entries));
  if (row >= 0 && row < list->count()) list->setCurrentRow(row);
}

int ExecDialog(QDialog& dialog) { return dialog.exec(); }

// A text of the lists' rules with its line ends as the widgets want them.
QString Shown(const std::string& text) { return FromBytes(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")); }

constexpr const char* kLineCaptions[2] = {"Line 1", "Line 2"};
constexpr const char* kFieldCaptions[kLineFields] = {"Point From", "Point To / Q", "Bearing", "Prop. Dist.",
                                                     "Total Dist."};
constexpr const char* kFieldNames[kLineFields] = {"From", "To", "Bearing", "Prop", "Total"};

}  // namespace

AddCalcsForm::AddCalcsForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmADDCalcs"));
  setWindowTitle(QStringLiteral("Post Adjustment Calculation"));
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  heading = new QLabel(this);
  heading->setObjectName(QStringLiteral("lblHeading"));
  layout->addWidget(heading);
  auto* top = new QGridLayout;
  type = new QComboBox(this);
  type->setObjectName(QStringLiteral("cboType"));
  type->addItems(Entries(TypeEntries()));
  type->setCurrentIndex(-1);
  newPoint = Field(this, QStringLiteral("txtNewPoint"));
  survey = new QComboBox(this);
  survey->setObjectName(QStringLiteral("cboSurvey"));
  top->addWidget(type, 0, 0, 1, 2);
  top->addWidget(new QLabel(QStringLiteral("New Point:"), this), 1, 0);
  top->addWidget(newPoint, 1, 1);
  top->addWidget(survey, 1, 2);
  top->addWidget(PickButton(this, session_), 1, 3);
  layout->addLayout(top);
  for (int l = 0; l < 2; ++l) {
    const auto ul = static_cast<std::size_t>(l);
    auto* box = new QGroupBox(QString::fromLatin1(kLineCaptions[l]), this);
    box->setObjectName(QStringLiteral("fraLine%1").arg(l + 1));
    groups[ul] = box;
    auto* grid = new QGridLayout(box);
    for (int k = 0; k < kLineFields; ++k) {
      const auto uk = static_cast<std::size_t>(k);
      labels[ul][uk] = new QLabel(QString::fromLatin1(kFieldCaptions[k]), box);
      fields[ul][uk] = Field(box, QStringLiteral("txt%1%2").arg(QLatin1String(kFieldNames[k])).arg(l + 1));
      grid->addWidget(labels[ul][uk], 0, k);
      grid->addWidget(fields[ul][uk], 1, k);
    }
    grid->addWidget(new QLabel(QStringLiteral("Line Type"), box), 2, 0);
    lineTypes[ul] = new QComboBox(box);
    lineTypes[ul]->setObjectName(QStringLiteral("cboLineType%1").arg(l + 1));
    lineTypes[ul]->addItems(Entries(LineTypeEntries2()));
    lineTypes[ul]->setCurrentIndex(-1);
    grid->addWidget(lineTypes[ul], 2, 1);
    grid->addWidget(new QLabel(QStringLiteral("Bearing is defined by:"), box), 2, 2);
    kinds[ul] = new QComboBox(box);
    kinds[ul]->setObjectName(QStringLiteral("cboKind%1").arg(l + 1));
    grid->addWidget(kinds[ul], 2, 3, 1, 2);
    connect(kinds[ul], &QComboBox::currentIndexChanged, this, [this, l] {
      if (filling_) return;
      DefinitionInput input = Input();
      if (const auto kind = ChosenKind(input, l)) {
        ApplyKind(input.lines[static_cast<std::size_t>(l)], *kind);
        for (int k = 0; k < kLineFields; ++k) {
          fields[static_cast<std::size_t>(l)][static_cast<std::size_t>(k)]->setText(
              FromBytes(input.lines[static_cast<std::size_t>(l)].fields[static_cast<std::size_t>(k)]));
        }
      }
      Relabel(l);
    });
    layout->addWidget(box);
  }
  hint = new QLabel(QString::fromLatin1(kProportionHint), this);
  hint->setObjectName(QStringLiteral("lblHint"));
  layout->addWidget(hint);
  layout->addLayout(OkCancel(this, [this] {
    if (Save()) close();
  }));
  connect(type, &QComboBox::currentIndexChanged, this, [this] {
    if (!filling_) FillKinds();
  });
  FillKinds();
  view_ = std::make_unique<SessionView>(*this, session_, Change::Calculations, [this] { Follow(); });
}

void AddCalcsForm::Follow() {
  if (saving_ || !isVisible()) return;
  if (RefindEntry(session_.calculations.Definitions, edited_)) return;
  close();
  session_.user.Message(kMsgDefinitionGone, Icon::Exclamation);
}

void AddCalcsForm::FillKinds() {
  const bool was = filling_;
  filling_ = true;
  const int t = type->currentIndex() + 1;
  for (int l = 0; l < 2; ++l) {
    QComboBox* box = kinds[static_cast<std::size_t>(l)];
    box->clear();
    for (AddKind kind : KindsFor(t, l)) box->addItem(QString::fromLatin1(KindText(kind)));
    box->setCurrentIndex(-1);
  }
  groups[1]->setVisible(t == 2);
  lineTypes[0]->setEnabled(t != 3);
  kinds[0]->setEnabled(t != 3);
  newPoint->setEnabled(t != 3);
  filling_ = was;
  Relabel(0);
  Relabel(1);
}

void AddCalcsForm::Relabel(int line) {
  const DefinitionInput input = Input();
  const auto kind = ChosenKind(input, line);
  const auto ul = static_cast<std::size_t>(line);
  for (int k = 0; k < kLineFields; ++k) {
    const auto uk = static_cast<std::size_t>(k);
    if (kind) {
      labels[ul][uk]->setText(FromBytes(FieldLabels(*kind)[uk]));
      fields[ul][uk]->setEnabled(FieldUsed(*kind)[uk]);
    } else {
      labels[ul][uk]->setText(QString::fromLatin1(kFieldCaptions[k]));
      fields[ul][uk]->setEnabled(true);
    }
  }
  if (line == 0) hint->setVisible(input.type == 1 && kind == AddKind::PointIds);
}

DefinitionInput AddCalcsForm::Input() const {
  DefinitionInput input;
  input.type = type->currentIndex() + 1;
  input.newPoint = Text(newPoint);
  input.survey = survey->currentIndex() >= 0 ? ToBytes(survey->currentText()) : std::string(kNoSurvey);
  for (std::size_t l = 0; l < 2; ++l) {
    for (std::size_t k = 0; k < kLineFields; ++k) input.lines[l].fields[k] = Text(fields[l][k]);
    input.lines[l].lineType = lineTypes[l]->currentIndex() + 1;
    input.lines[l].kind = kinds[l]->currentIndex();
  }
  return input;
}

void AddCalcsForm::Show(const DefinitionInput& input) {
  filling_ = true;
  type->setCurrentIndex(input.type - 1);
  filling_ = false;
  FillKinds();
  filling_ = true;
  newPoint->setText(FromBytes(input.newPoint));
  survey->clear();
  survey->addItem(QString::fromLatin1(kNoSurvey));
  survey->addItems(Entries(session_.calculations.Surveys));
  const int at = survey->findText(FromBytes(input.survey));
  survey->setCurrentIndex(at >= 0 ? at : 0);
  for (std::size_t l = 0; l < 2; ++l) {
    for (std::size_t k = 0; k < kLineFields; ++k) fields[l][k]->setText(FromBytes(input.lines[l].fields[k]));
    lineTypes[l]->setCurrentIndex(input.lines[l].lineType - 1);
    kinds[l]->setCurrentIndex(input.lines[l].kind);
  }
  filling_ = false;
  Relabel(0);
  Relabel(1);
}

void AddCalcsForm::StartNew(int t) {
  edited_ = EditedEntry{};
  DefinitionInput input;
  input.type = t;
  Show(input);
  heading->setText(FromBytes(EditorHeading(static_cast<AddType>(t))));
  Open();
}

void AddCalcsForm::StartEdit(int index) {
  const std::vector<std::string>& list = session_.calculations.Definitions;
  if (index < 0 || index >= static_cast<int>(list.size())) return;
  edited_ = EditedDefinition(list, index);
  const DefinitionInput input = InputFromLines(session_, edited_.lines);
  Show(input);
  const std::string id = input.type == 3 ? input.lines[0].at(LineField::From) : input.newPoint;
  heading->setText(FromBytes(EditorHeading(static_cast<AddType>(input.type)) + id));
  Open();
}

void AddCalcsForm::Open() {
  if (!picks_) {
    PickTarget target;
    target.dialog = PickDialog::AddCalcs;
    target.fields = [this] {
      std::vector<PickField> out;
      for (const auto& [line, field] : PickFields(Input())) {
        out.push_back(FieldOf(fields[static_cast<std::size_t>(line)][static_cast<std::size_t>(field)]));
      }
      return out;
    };
    target.raise = [this] { BringToFront(this); };
    picks_ = std::make_unique<PickRegistration>(session_, std::move(target));
  }
  BringToFront(this);
}

void AddCalcsForm::hideEvent(QHideEvent* event) {
  picks_.reset();
  QDialog::hideEvent(event);
}

bool AddCalcsForm::Save() {
  DefinitionInput input = Input();
  const auto failure = CheckDefinition(input);
  // The empty fields were filled on the way, failed or not.
  for (std::size_t l = 0; l < 2; ++l) {
    for (std::size_t k = 0; k < kLineFields; ++k) fields[l][k]->setText(FromBytes(input.lines[l].fields[k]));
  }
  if (failure) {
    session_.user.Message(failure->message);
    const auto l = static_cast<std::size_t>(failure->focus.line);
    switch (failure->focus.where) {
      case FieldRef::Where::NewPoint: newPoint->setFocus(); break;
      case FieldRef::Where::LineField: fields[l][static_cast<std::size_t>(failure->focus.field)]->setFocus(); break;
      case FieldRef::Where::LineType: lineTypes[l]->setFocus(); break;
      case FieldRef::Where::Kind: kinds[l]->setFocus(); break;
    }
    return false;
  }
  // The list may have changed since the editor opened: the definition is written where it
  // stands now, never over another.
  const auto span = RefindEntry(session_.calculations.Definitions, edited_);
  if (!span) {
    close();
    session_.user.Message(kMsgDefinitionGone, Icon::Exclamation);
    return false;
  }
  saving_ = true;
  const bool saved = SaveDefinition(session_, input, span->first, span->behind);
  saving_ = false;
  return saved;
}

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
