#include "paint/qt_text.h"

namespace tessel {

QString FromBytes(const std::string& bytes) {
  return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::string ToBytes(const QString& text) { return text.toLatin1().toStdString(); }

QString QtFilter(const std::string& filter) {
  const QStringList parts = FromBytes(filter).split('|');
  QStringList entries;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString patterns = parts[i + 1];
    patterns.replace(';', ' ');
    entries << QStringLiteral("%1 (%2)").arg(parts[i], patterns);
  }
  return entries.join(QStringLiteral(";;"));
}

}  // namespace tessel
