#include "paint/qt_text.h"

#include <cctype>

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

QString MenuCaption(const std::string& caption) {
  std::string out;
  out.reserve(caption.size() + 4);
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const char c = caption[i];
    out += c;
    if (c != '&') continue;
    const unsigned char next = i + 1 < caption.size() ? static_cast<unsigned char>(caption[i + 1]) : 0;
    if (next == '&') {
      out += caption[++i];  // already doubled
    } else if (!std::isalnum(next)) {
      out += '&';
    }
  }
  return FromBytes(out);
}

}  // namespace tessel
