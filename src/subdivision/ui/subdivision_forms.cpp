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
#include "widgets/named_widgets.h"

namespace tessel {

namespace {

QLabel* Label(QWidget* parent, const QString& text, const QString& name = {}) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  if (!name.isEmpty()) label->setObjectName(name);
  return label;
}

QLineEdit* Field(QWidget* parent, const QString& name, const QString& text = {}) {
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

// The wizards' buttons: "<-- Back", "Finish", "Cancel"; Finish runs `finish`, which keeps the
// wizard open when it refuses.
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

constexpr const char* kSectionPrompt = "Section number or NOMGRID center of section ID";

int ExecDialog(QDialog& dialog) { return RunWithCanvasLive(dialog); }

}  // namespace

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

SubstituteDialog::SubstituteDialog(const QString& label, const QString& value, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmSubPtId"));
  setWindowTitle(QStringLiteral("Substitute Point Identifier"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, label, QStringLiteral("lblNominal")));
  auto* row = new QHBoxLayout;
  row->addWidget(Label(this, QStringLiteral("Point ID")));
  field = Field(this, QStringLiteral("txtPointId"), value);
  row->addWidget(field);
  layout->addLayout(row);
  layout->addLayout(OkCancel(this));
}

DoubleCornerDialog::DoubleCornerDialog(const QString& heading, const std::array<DoubleCornerRow, 2>& rows,
                                       QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("frmDblCor"));
  setWindowTitle(QStringLiteral("Double Section Corner"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, heading, QStringLiteral("lblHeading")));
  auto* grid = new QGridLayout;
  grid->addWidget(Label(this, QStringLiteral("Point ID")), 0, 0);
  grid->addWidget(Label(this, QStringLiteral("Controlling Direction")), 0, 1);
  for (std::size_t k = 0; k < 2; ++k) {
    points[k] = Field(this, QStringLiteral("txtPoint%1").arg(k + 1), FromBytes(rows[k].point));
    directions[k] = new QComboBox(this);
    directions[k]->setObjectName(QStringLiteral("cboDirection%1").arg(k + 1));
    directions[k]->addItems({QString(), QStringLiteral("N"), QStringLiteral("E"), QStringLiteral("S"), QStringLiteral("W")});
    directions[k]->setCurrentText(FromBytes(rows[k].direction));
    grid->addWidget(points[k], static_cast<int>(k) + 1, 0);
    grid->addWidget(directions[k], static_cast<int>(k) + 1, 1);
  }
  layout->addLayout(grid);
  auto* buttons = OkCancel(this);
  QPushButton* remove = Button(this, QStringLiteral("cmdDelete"), QStringLiteral("Delete"));
  buttons->insertWidget(0, remove);
  connect(remove, &QPushButton::clicked, this, [this] {
    for (std::size_t k = 0; k < 2; ++k) {
      points[k]->clear();
      directions[k]->setCurrentIndex(0);
    }
    done(kDeleted);
  });
  layout->addLayout(buttons);
}

std::array<DoubleCornerRow, 2> DoubleCornerDialog::Rows() const {
  return {{{Text(points[0]), ToBytes(directions[0]->currentText())},
           {Text(points[1]), ToBytes(directions[1]->currentText())}}};
}

ProportionDialog::ProportionDialog(const QString& heading, const ProportionDefinition& value, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("frmProport"));
  setWindowTitle(QStringLiteral("Proportion"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, heading, QStringLiteral("lblHeading")));
  auto* grid = new QGridLayout;
  parenthetical = Field(this, QStringLiteral("txtParenthetical"), FromBytes(value.parenthetical));
  total = Field(this, QStringLiteral("txtTotal"), FromBytes(value.total));
  grid->addWidget(Label(this, QStringLiteral("(parenthetical dist)")), 0, 0);
  grid->addWidget(parenthetical, 0, 1);
  grid->addWidget(Label(this, QStringLiteral("Total distance")), 1, 0);
  grid->addWidget(total, 1, 1);
  layout->addLayout(grid);
  layout->addWidget(Label(this, QStringLiteral("Note:  If non-computable, leave distance fields set to zero.")));
  remove = new QCheckBox(QStringLiteral("Check to delete this irregular definition"), this);
  remove->setObjectName(QStringLiteral("chkDelete"));
  layout->addWidget(remove);
  layout->addLayout(OkCancel(this));
}

IntersectDialog::IntersectDialog(const QString& heading, const LinePair& value, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmIntersect"));
  setWindowTitle(QStringLiteral("Intersection"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, heading, QStringLiteral("lblHeading")));
  const QString captions[2] = {QStringLiteral("North-South line is:"), QStringLiteral("East-West line is:")};
  const char* names[2] = {"NS", "EW"};
  for (int line = 0; line < 2; ++line) {
    const auto l = static_cast<std::size_t>(line);
    auto* box = new QGroupBox(captions[line], this);
    auto* grid = new QGridLayout(box);
    types[l] = new QComboBox(box);
    types[l]->setObjectName(QStringLiteral("cbo%1").arg(QLatin1String(names[line])));
    const auto& entries = LineTypeEntries();
    for (std::size_t t = 1; t < entries.size(); ++t) types[l]->addItem(QString::fromLatin1(entries[t]));
    grid->addWidget(types[l], 0, 0, 1, 4);
    for (std::size_t g = 0; g < 2; ++g) {
      groups_[l][g] = new QLabel(box);
      grid->addWidget(groups_[l][g], 1, static_cast<int>(g) * 2, 1, 2);
    }
    for (std::size_t k = 0; k < 4; ++k) {
      labels_[l][k] = new QLabel(box);
      fields[l][k] = Field(box, QStringLiteral("txt%1%2").arg(QLatin1String(names[line])).arg(k + 1),
                            FromBytes(value[l * 5 + k + 1]));
      grid->addWidget(labels_[l][k], 2, static_cast<int>(k));
      grid->addWidget(fields[l][k], 3, static_cast<int>(k));
    }
    const int type = QString::fromLatin1(value[l * 5].c_str()).trimmed().toInt();
    types[l]->setCurrentIndex(type >= 1 && type <= 7 ? type - 1 : -1);
    connect(types[l], &QComboBox::currentIndexChanged, this, [this, line] { Relabel(line); });
    Relabel(line);
    layout->addWidget(box);
  }
  layout->addLayout(OkCancel(this));
}

void IntersectDialog::Relabel(int line) {
  const auto l = static_cast<std::size_t>(line);
  const int type = types[l]->currentIndex() + 1;
  const auto captions = LineFieldLabels(type);
  const auto groups = LineGroupLabels(type);
  for (std::size_t k = 0; k < 4; ++k) {
    labels_[l][k]->setText(FromBytes(captions[k]));
    labels_[l][k]->setVisible(!captions[k].empty());
    fields[l][k]->setVisible(!captions[k].empty());
  }
  for (std::size_t g = 0; g < 2; ++g) groups_[l][g]->setText(FromBytes(groups[g]));
}

LinePair IntersectDialog::Pair() const {
  LinePair pair{};
  for (std::size_t l = 0; l < 2; ++l) {
    const int index = types[l]->currentIndex();
    pair[l * 5] = index >= 0 ? std::to_string(index + 1) : std::string();
    const auto captions = LineFieldLabels(index + 1);
    for (std::size_t k = 0; k < 4; ++k) pair[l * 5 + k + 1] = captions[k].empty() ? std::string() : Text(fields[l][k]);
  }
  return pair;
}

ElongatedWizard::ElongatedWizard(Session& session, const QString& sectionText, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmADDWiz2"));
  setWindowTitle(QStringLiteral("Define elongated section"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, QStringLiteral(
      "The definition entered here will create entries in the post-adjustment calculations list.   If required RAW "
      "data for proportioning is unavailable, the definition will not be created. If edits to this definition are "
      "necessary, you must choose the individual entries in post-adjustment calculations list.")));
  layout->addWidget(Label(this, QString::fromLatin1(kSectionPrompt)));
  section = Field(this, QStringLiteral("txtSection"), sectionText);
  layout->addWidget(section);
  layout->addWidget(Label(this, QStringLiteral("Number of rows of elongated lots")));
  rows = Field(this, QStringLiteral("txtRows"));
  layout->addWidget(rows);
  const char* captions[4] = {"Elongated to the NORTH", "Elongated to the SOUTH", "Elongated to the EAST",
                             "Elongated to the WEST"};
  for (std::size_t k = 0; k < 4; ++k) {
    directions[k] = new QRadioButton(QString::fromLatin1(captions[k]), this);
    directions[k]->setObjectName(QStringLiteral("optDirection%1").arg(k + 1));
    layout->addWidget(directions[k]);
  }
  layout->addLayout(WizardButtons(this, [this, &session] {
    const char* letters[4] = {"N", "S", "E", "W"};
    std::string letter;
    for (std::size_t k = 0; k < 4; ++k) {
      if (directions[k]->isChecked()) letter = letters[k];
    }
    return FinishElongated(session, {Text(section), letter, Text(rows)});
  }));
}

ShortSectionWizard::ShortSectionWizard(Session& session, const QString& sectionText, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("frmADDWiz3"));
  setWindowTitle(QStringLiteral("Short Section Definition"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, QStringLiteral(
      "The definition entered here will create entries in the post-adjustment calculations list to complete the "
      "topology for shortened sections (those containing fewer than 16 aliquot parts).  If edits to this definition "
      "are necessary, you must choose the individual entries in the post-adjustment calculations list.")));
  layout->addWidget(Label(this, QString::fromLatin1(kSectionPrompt)));
  section = Field(this, QStringLiteral("txtSection"), sectionText);
  layout->addWidget(section);
  auto* closingBox = new QGroupBox(QStringLiteral("Closing Direction"), this);
  auto* closingLayout = new QVBoxLayout(closingBox);
  const char* closingCaptions[4] = {"North", "West", "South", "East"};
  for (std::size_t k = 0; k < 4; ++k) {
    closing[k] = new QRadioButton(QString::fromLatin1(closingCaptions[k]), closingBox);
    closing[k]->setObjectName(QStringLiteral("optClosing%1").arg(k + 1));
    closingLayout->addWidget(closing[k]);
  }
  layout->addWidget(closingBox);
  auto* shortBox = new QGroupBox(QStringLiteral("How Short?"), this);
  auto* shortLayout = new QVBoxLayout(shortBox);
  const char* shortCaptions[3] = {"20 ch. (4 lots, 8 Standard)", "40 ch. (4 lots, 4 Standard)",
                                  "60 ch. (4 lots, 0 Standard)"};
  for (std::size_t k = 0; k < 3; ++k) {
    howShort[k] = new QRadioButton(QString::fromLatin1(shortCaptions[k]), shortBox);
    howShort[k]->setObjectName(QStringLiteral("optShort%1").arg(k + 1));
    shortLayout->addWidget(howShort[k]);
  }
  layout->addWidget(shortBox);
  layout->addLayout(WizardButtons(this, [this, &session] {
    ShortSectionInput input{Text(section), 0, 0};
    for (std::size_t k = 0; k < 4; ++k) {
      if (closing[k]->isChecked()) input.closingDirection = static_cast<int>(k) + 1;
    }
    for (std::size_t k = 0; k < 3; ++k) {
      if (howShort[k]->isChecked()) input.howShort = static_cast<int>(k) + 1;
    }
    return FinishShortSection(session, input);
  }));
}

MinorWizard::MinorWizard(Session& session, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmADDWiz4"));
  setWindowTitle(QStringLiteral("Minor Subdivision Definition"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Label(this, QStringLiteral(
      "The definition entered here will create entries in the post-adjustment calculations list to create parcels "
      "smaller than a quarter-quarter aliquot part.  If edits to this definition are necessary, you must choose the "
      "individual entries in the post-adjustment calculations list.")));
  layout->addWidget(Label(this, QStringLiteral("Parcel point id")));
  parcel = Field(this, QStringLiteral("txtParcel"));
  layout->addWidget(parcel);
  auto* box = new QGroupBox(QStringLiteral("Options for creating halves ONLY: "), this);
  auto* boxLayout = new QVBoxLayout(box);
  northSouth = new QCheckBox(
      QStringLiteral("Split the parcel into North and South halves.  (dividing line running E-W)"), box);
  northSouth->setObjectName(QStringLiteral("chkNorthSouth"));
  eastWest = new QCheckBox(QStringLiteral("Split the parcel into East and West halves. (dividing line running N-S)"), box);
  eastWest->setObjectName(QStringLiteral("chkEastWest"));
  boxLayout->addWidget(northSouth);
  boxLayout->addWidget(eastWest);
  layout->addWidget(box);
  // One of the two boxes clears the other.
  connect(northSouth, &QCheckBox::toggled, this, [this](bool on) {
    if (on) eastWest->setChecked(false);
  });
  connect(eastWest, &QCheckBox::toggled, this, [this](bool on) {
    if (on) northSouth->setChecked(false);
  });
  layout->addLayout(WizardButtons(this, [this, &session] {
    const std::string half = northSouth->isChecked() ? "W" : eastWest->isChecked() ? "N" : "";
    return FinishMinor(session, {Text(parcel), half});
  }));
}

DefinitionTypeWizard::DefinitionTypeWizard(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmADDWiz1"));
  setWindowTitle(QStringLiteral("Select type of definition"));
  auto* layout = new QVBoxLayout(this);
  choices_ = new QButtonGroup(this);
  const char* captions[6] = {"Traverse or Proportion", "Intersection", "Connecting Line",
                             "Subdivision of 1/4 1/4 section or smaller aliquot parts", "Elongated Section",
                             "Short Section"};
  for (int k = 0; k < 6; ++k) {
    auto* option = new QRadioButton(QString::fromLatin1(captions[k]), this);
    option->setObjectName(QStringLiteral("optType%1").arg(k + 1));
    choices_->addButton(option, k);
    layout->addWidget(option);
  }
  auto* row = new QHBoxLayout;
  row->addStretch();
  QPushButton* next = Button(this, QStringLiteral("cmdNext"), QStringLiteral("Next -->"));
  QPushButton* cancel = Button(this, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
  row->addWidget(next);
  row->addWidget(cancel);
  layout->addLayout(row);
  connect(next, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

int DefinitionTypeWizard::Choice() const { return choices_->checkedId(); }

void RunDefinitionWizard(Session& session, QWidget* parent, const DialogRunner& run,
                         const std::function<void(int type)>& openDefinition) {
  for (;;) {
    DefinitionTypeWizard first(parent);
    if (run(first) != QDialog::Accepted) return;
    int result = QDialog::Rejected;
    switch (first.Choice()) {
      case 0:
      case 1:
      case 2:
        if (openDefinition) openDefinition(first.Choice() + 1);
        return;
      case 3: {
        MinorWizard wizard(session, parent);
        result = run(wizard);
        break;
      }
      case 4: {
        ElongatedWizard wizard(session, QString(), parent);
        result = run(wizard);
        break;
      }
      case 5: {
        ShortSectionWizard wizard(session, QString(), parent);
        result = run(wizard);
        break;
      }
      default:
        return;
    }
    if (result != kWizardBack) return;
  }
}

SectionDialogForm::SectionDialogForm(Session& session, QWidget* parent)
    : QDialog(parent), runDialog(ExecDialog), session_(session) {
  setObjectName(QStringLiteral("frmIRR"));
  setModal(false);
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  for (int p = 1; p <= 25; ++p) {
    const auto k = static_cast<std::size_t>(p);
    auto* cell = new QVBoxLayout;
    labels_[k] = Label(this, QString(), QStringLiteral("lblPosition%1").arg(p));
    labels_[k]->setAlignment(Qt::AlignCenter);
    buttons_[k] = Button(this, QStringLiteral("cmdPosition%1").arg(p), QString::number(p));
    buttons_[k]->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(buttons_[k], &QWidget::customContextMenuRequested, this, [this, p] { Popup(p); });
    cell->addWidget(labels_[k]);
    cell->addWidget(buttons_[k]);
    const GridPlace place = PositionPlace(p);
    grid->addLayout(cell, place.row, place.column);
  }
  layout->addLayout(grid);

  auto* row = new QGridLayout;
  const struct {
    const char* name;
    const char* caption;
  } commands[] = {{"cmdSave", "Save Section"},  {"cmdCancel", "Cancel"},       {"cmdReset", "Reset"},
                  {"cmdAutoIRR", "AutoIRR"},    {"cmdMinor", "Minor sub"},     {"cmdElongated", "Elongated"},
                  {"cmdNoSub", "No Subdivision"}, {"cmd3Mile", "3 Mile"},      {"cmdShort", "Short Section"}};
  int at = 0;
  for (const auto& c : commands) {
    QPushButton* b = Button(this, QString::fromLatin1(c.name), QString::fromLatin1(c.caption));
    row->addWidget(b, at / 5, at % 5);
    ++at;
    const std::string name = c.name;
    connect(b, &QPushButton::clicked, this, [this, name] {
      if (busy_) return;
      const int s = form_.section;
      if (name == "cmdSave") {
        const IrrSaveResult result = SaveSection(session_, s);
        close();
        if (onSaved) onSaved(result.sectionsWithBlocks);
      } else if (name == "cmdCancel") {
        close();
      } else if (name == "cmdReset") {
        ResetSection(session_, form_);
        Refresh();
      } else if (name == "cmdAutoIRR" || name == "cmdNoSub" || name == "cmd3Mile") {
        RunSectionScript(session_, name == "cmdAutoIRR"  ? AutoIrrAnswers(s)
                                   : name == "cmdNoSub" ? NoSubdivisionAnswers(s)
                                                        : ThreeMileAnswers(s));
        close();
      } else if (name == "cmdElongated") {
        ElongatedWizard wizard(session_, QString::number(s), this);
        runDialog(wizard);
      } else if (name == "cmdShort") {
        ShortSectionWizard wizard(session_, QString::number(s), this);
        runDialog(wizard);
      } else if (name == "cmdMinor") {
        MinorWizard wizard(session_, this);
        runDialog(wizard);
      }
    });
  }
  layout->addLayout(row);
}

void SectionDialogForm::Load(const SectionForm& form) {
  form_ = form;
  setWindowTitle(FromBytes(form_.caption));
  Refresh();
}

void SectionDialogForm::Refresh() {
  for (int p = 1; p <= 25; ++p) {
    const auto k = static_cast<std::size_t>(p);
    labels_[k]->setText(FromBytes(form_.labels[k]));
    QFont font = labels_[k]->font();
    font.setBold(form_.emphasised[k]);
    labels_[k]->setFont(font);
    PaintShade(buttons_[k], form_.shades[k]);
  }
}

void SectionDialogForm::Popup(int position) {
  form_.position = position;
  QMenu menu(this);
  menu.setObjectName(QStringLiteral("mnuIRR"));
  for (const PopupEntry& entry : SectionPopupEntries()) {
    QAction* action = menu.addAction(QString::fromLatin1(entry.caption));
    action->setObjectName(QString::fromLatin1(entry.name));
    action->setEnabled(PopupEnabled(entry.name, position));
    const std::string name = entry.name;
    connect(action, &QAction::triggered, this, [this, name, position] { RunEntry(name, position); });
  }
  menu.exec(QCursor::pos());
}

namespace {

// A dialog of frmIRR that takes picked points: its pick button in the last row, and its place
// among the dialogs for as long as it runs.
std::unique_ptr<PickRegistration> Pickable(Session& session, QDialog& dialog, PickDialog kind, WhenFull whenFull,
                                           std::function<std::vector<PickField>()> fields) {
  if (auto* box = qobject_cast<QBoxLayout*>(dialog.layout())) {
    auto* row = new QHBoxLayout;
    row->addWidget(new QLabel(QStringLiteral("Pick a point on the map:"), &dialog));
    row->addWidget(PickButton(&dialog, session));
    row->addStretch();
    box->insertLayout(box->count() - 1, row);
  }
  PickTarget target;
  target.dialog = kind;
  target.whenFull = whenFull;
  target.fields = std::move(fields);
  target.raise = [&dialog] { BringToFront(&dialog); };
  return std::make_unique<PickRegistration>(session, std::move(target));
}

}  // namespace

void SectionDialogForm::RunEntry(const std::string& entry, int position) {
  if (busy_ || !PopupEnabled(entry, position)) return;
  busy_ = true;
  form_.position = position;
  if (entry == "mnuIRRSubstitution") {
    SubstituteDialog dialog(FromBytes(SubstitutionLabel(form_, position)),
                            FromBytes(IdText(NominalId(form_.section, position))), this);
    // "Point ID" takes the point whether empty or not.
    const auto picks = Pickable(session_, dialog, PickDialog::SubstitutePointId, WhenFull::LastTakes,
                                [&dialog] { return std::vector<PickField>{{"x", FieldOf(dialog.field).set}}; });
    if (runDialog(dialog) == QDialog::Accepted) ApplySubstitution(session_, form_, position, Text(dialog.field));
  } else if (entry == "mnuIRRDoubleCorner") {
    DoubleCornerDialog dialog(FromBytes(DoubleCornerHeading(form_, position)),
                              DoubleCornerPrefill(session_, form_, position), this);
    const auto picks = Pickable(session_, dialog, PickDialog::DoubleCorner, WhenFull::LastTakes, [&dialog] {
      return std::vector<PickField>{FieldOf(dialog.points[0]), FieldOf(dialog.points[1])};
    });
    const int result = runDialog(dialog);
    if (result == QDialog::Accepted) ApplyDoubleCorner(session_, form_, position, dialog.Rows());
    if (result == DoubleCornerDialog::kDeleted) DeleteDoubleCorner(session_, form_, position);
  } else if (entry == "mnuIRRQuarterNC" || entry == "mnuIRRExteriorNC") {
    ToggleNonComputable(session_, form_, position);
  } else if (entry == "mnuIRROffset") {
    ToggleOffset(session_, form_, position);
  } else if (entry == "mnuIRRProportion") {
    ProportionDialog dialog(FromBytes(ProportionHeading(form_, position)),
                            ProportionPrefill(session_, form_, position), this);
    if (runDialog(dialog) == QDialog::Accepted) {
      ApplyProportion(session_, form_, position, Text(dialog.parenthetical), Text(dialog.total),
                      dialog.remove->isChecked());
    }
  } else if (entry == "mnuIRRCenter" || entry == "mnuIRRQuarterCenter") {
    IntersectDialog dialog(FromBytes(IntersectHeading(form_, position)), IntersectPrefill(session_, form_, position),
                           this);
    // The eight fields in order, those shown for the chosen types.
    const auto picks = Pickable(session_, dialog, PickDialog::Intersect, WhenFull::Dropped, [&dialog] {
      std::vector<PickField> fields;
      for (const auto& line : dialog.fields) {
        for (QLineEdit* field : line) {
          if (!field->isHidden()) fields.push_back(FieldOf(field));
        }
      }
      return fields;
    });
    if (runDialog(dialog) == QDialog::Accepted) ApplyIntersect(session_, form_, position, dialog.Pair());
  }
  busy_ = false;
  Refresh();
}

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
