#include "app/toolbar_icons.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace tessel {

namespace {

// The drawing of each key; the user keys share one.
QString DrawingOf(const QString& key) {
  static const QHash<QString, QString> names = {
      {"Open", "open"},       {"Reload", "reload"},     {"Select", "select"},   {"Centroid", "centroid"},
      {"Zoom", "zoom"},       {"CRPO", "crpo"},         {"sid", "sid"},         {"Chain", "chain"},
      {"Zoomin", "zoomin"},   {"zoomout", "zoomout"},   {"Zoomext", "zoomext"}, {"Zoomwin", "zoomwin"},
      {"ZoomPrev", "zoomprev"}, {"goto", "goto"},       {"view1", "view1"},     {"view2", "view2"},
      {"view3", "view3"},     {"view4", "view4"},       {"ViewReset", "viewreset"}, {"Pointids", "pointids"},
      {"Lxn", "lxn"},         {"Lsa", "lsa"},           {"Raw", "raw"},         {"parcel", "parcel"},
      {"bat", "bat"}};
  if (key.startsWith(QStringLiteral("usr"))) return QStringLiteral("user");
  return names.value(key);
}

}  // namespace

QIcon ToolbarIcon(const QString& key) {
  const QString drawing = DrawingOf(key);
  if (drawing.isEmpty()) return {};
  const QByteArray file = QStringLiteral("icons/%1.svg").arg(drawing).toLatin1();
  for (const EmbeddedText& text : ToolbarIconFiles()) {
    if (file != text.name) continue;
    QSvgRenderer renderer(QByteArray(text.bytes.data(), static_cast<qsizetype>(text.bytes.size())));
    if (!renderer.isValid()) return {};
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
      QPixmap pixmap(size, size);
      pixmap.fill(Qt::transparent);
      QPainter painter(&pixmap);
      renderer.render(&painter);
      painter.end();
      icon.addPixmap(pixmap);
    }
    return icon;
  }
  return {};
}

}  // namespace tessel
