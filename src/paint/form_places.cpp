#include "paint/form_places.h"

#include <QGuiApplication>
#include <QScreen>
#include <vector>

#include "model/window_placing.h"

namespace tessel {

namespace {

PixelRect Pixels(const QRect& r) { return {r.x(), r.y(), r.width(), r.height()}; }
QRect Rect(const PixelRect& r) { return {r.x, r.y, r.width, r.height}; }

}  // namespace

QRect OntoAScreen(const QRect& remembered) {
  std::vector<PixelRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) screens.push_back(Pixels(screen->availableGeometry()));
  return Rect(OntoScreens(Pixels(remembered), screens));
}

QRect BesideMain(const QRect& mainFrame, int clientTop, QSize size) {
  const QScreen* screen = QGuiApplication::screenAt(mainFrame.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : mainFrame;
  return Rect(PlaceBesideMain(Pixels(mainFrame), clientTop, Pixels(area), size.width(), size.height()));
}

}  // namespace tessel
