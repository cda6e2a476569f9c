#pragma once
// Small builders the forms share: a widget is made with the object name that tests, help and
// the settings find it by.

#include <QString>

class QLayout;
class QPushButton;
class QWidget;

namespace tessel {

QPushButton* Button(QWidget* parent, const char* name, const QString& caption);
QPushButton* Button(QWidget* parent, const QString& name, const QString& caption);
// The same, added to `layout`.
QPushButton* Button(QWidget* parent, QLayout* layout, const char* name, const QString& caption);

}  // namespace tessel
