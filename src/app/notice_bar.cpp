#include "app/notice_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace tessel {

namespace {
// More than this many notices at once: the oldest give way.
constexpr int kShown = 4;
}  // namespace

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent) {
  setObjectName(QStringLiteral("barNotice"));
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  // The warning colours of a desktop message bar, whatever the canvas's background.
  setStyleSheet(QStringLiteral("#barNotice { background: #fff3cd; border: 1px solid #e0b84c; }"
                               "#barNotice QLabel { color: #5c4400; }"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 3, 3, 3);
  auto* icon = new QLabel(this);
  icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(20, 20));
  layout->addWidget(icon, 0, Qt::AlignTop);
  text_ = new QLabel(this);
  text_->setObjectName(QStringLiteral("lblNotice"));
  text_->setWordWrap(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(text_, 1);
  auto* log = new QPushButton(QStringLiteral("Show Tool Log"), this);
  log->setObjectName(QStringLiteral("cmdNoticeToolLog"));
  connect(log, &QPushButton::clicked, this, [this] {
    emit toolLogAsked();
    hide();
  });
  layout->addWidget(log, 0, Qt::AlignTop);
  auto* close = new QToolButton(this);
  close->setObjectName(QStringLiteral("cmdNoticeClose"));
  close->setAutoRaise(true);
  close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  close->setToolTip(QStringLiteral("Close"));
  connect(close, &QToolButton::clicked, this, &QWidget::hide);
  layout->addWidget(close, 0, Qt::AlignTop);
  hide();
}

void NoticeBar::Add(const QString& text) {
  QStringList lines = !isHidden() ? text_->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts) : QStringList{};
  lines << text;
  while (lines.size() > kShown) lines.removeFirst();
  text_->setText(lines.join(QLatin1Char('\n')));
  show();
}

QString NoticeBar::Text() const { return !isHidden() ? text_->text() : QString(); }

}  // namespace tessel
