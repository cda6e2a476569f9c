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

}  // namespace tessel
