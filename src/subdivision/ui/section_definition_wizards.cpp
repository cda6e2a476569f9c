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

}  // namespace tessel
