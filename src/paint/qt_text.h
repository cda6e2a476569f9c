#pragma once
// Job texts are bytes in a single-byte code page; Qt shows them as Latin-1.

#include <QString>
#include <QStringList>
#include <string>

namespace tessel {

QString FromBytes(const std::string& bytes);
std::string ToBytes(const QString& text);

// A menu caption for Qt: an "&" before a letter or digit marks the access key as ever, and any
// other "&" ("LSA & SD") is shown as itself.
QString MenuCaption(const std::string& caption);

// "Description|*.ext|Description|*.ext" as Qt's ";;"-separated filter list.
QString QtFilter(const std::string& filter);

}  // namespace tessel
