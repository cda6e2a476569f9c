#pragma once
// Job texts are bytes in a single-byte code page; Qt shows them as Latin-1.

#include <QString>
#include <string>

namespace tessel {

QString FromBytes(const std::string& bytes);
std::string ToBytes(const QString& text);

}  // namespace tessel
