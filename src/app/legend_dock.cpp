#include "app/legend_dock.h"

#include <QHeaderView>
#include <QPainter>
#include <QPixmap>
#include <QTreeWidget>

#include "paint/painter_canvas.h"
#include "viewer/legend.h"

namespace tessel {

namespace {

QColor Rgb(unsigned colour) { return QColor::fromRgb(colour); }

// The mark of a row as the canvas paints it, on the canvas's background.
QIcon Mark(const LegendRow& row, unsigned back) {
  QPixmap picture(32, 14);
  picture.fill(Rgb(back));
  QPainter p(&picture);
  p.setRenderHint(QPainter::Antialiasing);
  switch (row.symbol) {
    case LegendRow::Symbol::Line: {
      QPen pen(Rgb(row.colour), 2, PenStyleOf(row.penStyle));
      p.setPen(pen);
      p.drawLine(2, 7, 30, 7);
      break;
    }
    case LegendRow::Symbol::Ring:
      p.setPen(Qt::NoPen);
      p.setBrush(Rgb(row.colour));
      p.drawEllipse(QPointF(16, 7), 6, 6);
      p.setBrush(Rgb(back));
      p.drawEllipse(QPointF(16, 7), 3, 3);
      break;
    case LegendRow::Symbol::Dot:
      p.setPen(Qt::NoPen);
      p.setBrush(Rgb(row.colour));
      p.drawEllipse(QPointF(16, 7), 4, 4);
      break;
  }
  return QIcon(picture);
}

}  // namespace

LegendDock::LegendDock(Session& session, QWidget* parent)
    : QDockWidget(QStringLiteral("Legend"), parent),
      session_(session),
      view_(*this, session, Change::Job | Change::Surveys | kLoadedData, [this] { Refill(); },
            SessionView::OnJobChange::Stay) {
  setObjectName(QStringLiteral("dockLegend"));
  tree_ = new QTreeWidget(this);
  tree_->setObjectName(QStringLiteral("treeLegend"));
  tree_->setHeaderHidden(true);
  tree_->setRootIsDecorated(true);
  tree_->setIconSize(QSize(32, 14));
  tree_->setSelectionMode(QAbstractItemView::NoSelection);
  setWidget(tree_);
  Refill();
}

void LegendDock::Refill() {
  tree_->clear();
  const unsigned back = BackColour(session_.config.BackgroundMode);
  QTreeWidgetItem* group = nullptr;
  for (const LegendRow& row : LegendRows(session_)) {
    const QString name = QString::fromStdString(row.group);
    if (!group || group->text(0) != name) {
      group = new QTreeWidgetItem(tree_, {name});
      // Banding is painted on request only: its group starts folded.
      group->setExpanded(row.group != "Banding");
    }
    auto* item = new QTreeWidgetItem(group, {QString::fromLocal8Bit(row.text.c_str())});
    item->setIcon(0, Mark(row, back));
    item->setDisabled(!row.shown && row.group != "Banding");
  }
}

QStringList LegendDock::Rows() const {
  QStringList rows;
  for (int g = 0; g < tree_->topLevelItemCount(); ++g) {
    const QTreeWidgetItem* group = tree_->topLevelItem(g);
    for (int k = 0; k < group->childCount(); ++k) rows << group->text(0) + QLatin1Char('|') + group->child(k)->text(0);
  }
  return rows;
}

}  // namespace tessel
