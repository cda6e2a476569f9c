#include "model/window_placing.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace tessel {

namespace {

int Clamp(int value, int low, int high) { return high < low ? low : std::clamp(value, low, high); }

// The square of the distance between two rectangles (0 when they meet).
std::int64_t Distance(const PixelRect& a, const PixelRect& b) {
  const std::int64_t dx = std::max<std::int64_t>({0, std::int64_t(b.x) - (std::int64_t(a.x) + a.width),
                                                  std::int64_t(a.x) - (std::int64_t(b.x) + b.width)});
  const std::int64_t dy = std::max<std::int64_t>({0, std::int64_t(b.y) - (std::int64_t(a.y) + a.height),
                                                  std::int64_t(a.y) - (std::int64_t(b.y) + b.height)});
  return dx * dx + dy * dy;
}

// Whether a and b share a rectangle at least `w` wide and `h` high.
bool Shares(const PixelRect& a, const PixelRect& b, std::int64_t w, std::int64_t h) {
  const std::int64_t across = std::min<std::int64_t>(std::int64_t(a.x) + a.width, std::int64_t(b.x) + b.width) -
                              std::max<std::int64_t>(a.x, b.x);
  const std::int64_t up = std::min<std::int64_t>(std::int64_t(a.y) + a.height, std::int64_t(b.y) + b.height) -
                          std::max<std::int64_t>(a.y, b.y);
  return across >= w && up >= h;
}

PixelRect Inside(PixelRect place, const PixelRect& screen) {
  place.width = std::min(place.width, screen.width);
  place.height = std::min(place.height, screen.height);
  place.x = Clamp(place.x, screen.x, screen.x + screen.width - place.width);
  place.y = Clamp(place.y, screen.y, screen.y + screen.height - place.height);
  return place;
}

}  // namespace

PixelRect PlaceBesideMain(const PixelRect& mainFrame, int clientTop, const PixelRect& screen, int width, int height) {
  PixelRect place{0, clientTop, std::max(1, width), std::max(1, height)};
  const int right = mainFrame.x + mainFrame.width;
  const int screenRight = screen.x + screen.width;
  // Outside the main window where the screen has room, else just inside its right edge.
  place.x = right + place.width <= screenRight ? right : right - place.width;
  place = Inside(place, screen);
  return place;
}

PixelRect OntoScreens(const PixelRect& place, const std::vector<PixelRect>& screens, int grip) {
  if (screens.empty()) return place;
  const std::int64_t w = std::min(grip, std::max(1, place.width));
  const std::int64_t h = std::min(grip, std::max(1, place.height));
  const PixelRect* nearest = nullptr;
  std::int64_t best = std::numeric_limits<std::int64_t>::max();
  for (const PixelRect& screen : screens) {
    if (Shares(place, screen, w, h)) return place;
    const std::int64_t d = Distance(place, screen);
    if (d < best) {
      best = d;
      nearest = &screen;
    }
  }
  return Inside(place, *nearest);
}

}  // namespace tessel
