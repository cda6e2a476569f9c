#include "app/tool_log_dock.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace tessel {

ToolLogDock::ToolLogDock(const ToolLog& log, QWidget* parent)
    : QDockWidget(QStringLiteral("Tool Log"), parent), log_(log) {
  setObjectName(QStringLiteral("dockToolLog"));
  setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea | Qt::LeftDockWidgetArea |
                  Qt::RightDockWidgetArea);
  auto* body = new QWidget(this);
  auto* layout = new QVBoxLayout(body);
  layout->setContentsMargins(2, 2, 2, 2);
  text_ = new QPlainTextEdit(body);
  text_->setObjectName(QStringLiteral("txtToolLog"));
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFont(QStringLiteral("monospace")));
  text_->setMaximumBlockCount(static_cast<int>(ToolLog::kKept));
  layout->addWidget(text_);
  auto* keys = new QHBoxLayout;
  keys->addStretch();
  auto* copy = new QPushButton(QStringLiteral("Copy"), body);
  copy->setObjectName(QStringLiteral("cmdCopyToolLog"));
  connect(copy, &QPushButton::clicked, this, &ToolLogDock::Copy);
  keys->addWidget(copy);
  layout->addLayout(keys);
  setWidget(body);
  for (const ToolLogEntry& entry : log_.entries) Append(entry);
}

void ToolLogDock::Append(const ToolLogEntry& entry) {
  text_->appendPlainText(QString::fromLocal8Bit(ToolLogLine(entry).c_str()));
}

void ToolLogDock::Copy() {
  QGuiApplication::clipboard()->setText(QString::fromLocal8Bit(log_.Text().c_str()));
}

}  // namespace tessel
