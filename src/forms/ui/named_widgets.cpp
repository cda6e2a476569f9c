#include "forms/ui/named_widgets.h"

#include <QLayout>
#include <QPushButton>

namespace tessel {

QPushButton* Button(QWidget* parent, const QString& name, const QString& caption) {
  auto* button = new QPushButton(caption, parent);
  button->setObjectName(name);
  return button;
}

QPushButton* Button(QWidget* parent, const char* name, const QString& caption) {
  return Button(parent, QString::fromLatin1(name), caption);
}

QPushButton* Button(QWidget* parent, QLayout* layout, const char* name, const QString& caption) {
  QPushButton* button = Button(parent, name, caption);
  layout->addWidget(button);
  return button;
}

}  // namespace tessel
