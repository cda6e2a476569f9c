#pragma once
// Job texts are bytes in a single-byte code page; Qt shows them as Latin-1.

#include <QString>
#include <QStringList>
#include <string>

namespace tessel {

QString FromBytes(const std::string& bytes);
std::string ToBytes(const QString& text);

// "Description|*.ext|Description|*.ext" as Qt's ";;"-separated filter list.
QString QtFilter(const std::string& filter);

}  // namespace tessel
