#pragma once
// What the forms of the calculation lists build alike: named fields, OK and Cancel, lists
// filled from the session's texts.

#include <QDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "forms/ui/named_widgets.h"
#include "paint/qt_text.h"

namespace tessel::calculation_form {

inline QLineEdit* Field(QWidget* parent, const QString& name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  return field;
}

inline std::string Text(const QLineEdit* field) { return ToBytes(field->text()); }

inline QStringList Entries(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& t : texts) list << FromBytes(t);
  return list;
}

inline QHBoxLayout* OkCancel(QDialog* dialog, const std::function<void()>& ok) {
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

}  // namespace tessel::calculation_form
