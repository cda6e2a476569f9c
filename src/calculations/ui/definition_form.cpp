// frmADDCalcs, "Post Adjustment Calculation": one definition of the calculation list, new or
// edited, relabelled for its type and kinds, its points picked on the canvas.

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHideEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "calculations/ui/calculation_form_parts.h"
#include "calculations/ui/calculation_forms.h"

namespace tessel {

using namespace calculation_form;

namespace {

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

}  // namespace tessel
