#include "paint/qt_text.h"

namespace tessel {

QString FromBytes(const std::string& bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string ToBytes(const QString& text) { return text.toLatin1().toStdString(); }

}  // namespace tessel
