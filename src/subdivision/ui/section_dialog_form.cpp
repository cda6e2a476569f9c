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
        const bool ran = RunSectionScript(session_, name == "cmdAutoIRR"  ? AutoIrrAnswers(s)
                                                    : name == "cmdNoSub" ? NoSubdivisionAnswers(s)
                                                                         : ThreeMileAnswers(s));
        if (ran) close();
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
  view_ = std::make_unique<SessionView>(*this, session_);  // closes with the job
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
    // A definition with a line or a field left blank is not stored: the dialog comes back at that
    // field, until it is filled or cancelled (or confirmed unchanged, which gives up).
    std::optional<LinePair> refused;
    while (runDialog(dialog) == QDialog::Accepted) {
      const LinePair pair = dialog.Pair();
      const auto problem = CheckIntersect(pair);
      if (!problem) {
        ApplyIntersect(session_, form_, position, pair);
        break;
      }
      session_.user.Message(problem->message, Icon::Exclamation);
      if (refused == pair) break;
      refused = pair;
      const auto l = static_cast<std::size_t>(problem->line);
      if (problem->field == 0) dialog.types[l]->setFocus();
      else dialog.fields[l][static_cast<std::size_t>(problem->field - 1)]->setFocus();
    }
  }
  busy_ = false;
  Refresh();
}

}  // namespace tessel
