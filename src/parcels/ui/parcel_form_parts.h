#pragma once
// What the parcel editor's forms build alike: widgets by name, the fixed font of the listings,
// and twips for the remembered window places.

#include <QAction>
#include <QComboBox>
#include <QFont>
#include <QFontDatabase>
#include <QMenu>
#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "paint/qt_text.h"

namespace tessel::parcel_form {

inline QFont FixedFont() { return QFontDatabase::systemFont(QFontDatabase::FixedFont); }

template <typename T>
T* Named(T* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

inline QComboBox* EntriesBox(QWidget* parent, const char* name, const std::vector<std::string>& entries) {
  auto* box = Named(new QComboBox(parent), name);
  for (const std::string& e : entries) box->addItem(FromBytes(e));
  return box;
}

inline QAction* AddAction(QMenu* menu, const char* name, const QString& caption) {
  QAction* a = menu->addAction(caption);
  a->setObjectName(QString::fromLatin1(name));
  return a;
}

inline double TwipsPerPixel(const QWidget* w) { return 1440.0 / w->logicalDpiX(); }

}  // namespace tessel::parcel_form
