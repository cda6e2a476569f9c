#include "paint/raster_stamps.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tessel {

namespace {

// The coverage of a white drawing on a transparent image, cropped to what it covers.
template <typename Draw>
void Capture(int size, QPoint origin, Draw&& draw, int& left, int& top, int& width, int& height,
             std::vector<unsigned char>& alpha) {
  QImage canvas(size, size, QImage::Format_ARGB32_Premultiplied);
  if (canvas.isNull()) {
    // The image could not be had: the mask stays empty and stamps nothing.
    left = top = width = height = 0;
    alpha.clear();
    return;
  }
  canvas.fill(Qt::transparent);
  {
    QPainter p(&canvas);
    draw(p);
  }
  int x0 = size, y0 = size, x1 = -1, y1 = -1;
  for (int y = 0; y < size; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(canvas.constScanLine(y));
    for (int x = 0; x < size; ++x) {
      if (qAlpha(row[x]) == 0) continue;
      x0 = std::min(x0, x);
      y0 = std::min(y0, y);
      x1 = std::max(x1, x);
      y1 = std::max(y1, y);
    }
  }
  if (x1 < 0) {
    left = top = width = height = 0;
    alpha.clear();
    return;
  }
  left = x0 - origin.x();
  top = y0 - origin.y();
  width = x1 - x0 + 1;
  height = y1 - y0 + 1;
  alpha.resize(static_cast<std::size_t>(width * height));
  for (int y = 0; y < height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(canvas.constScanLine(y0 + y));
    for (int x = 0; x < width; ++x) alpha[static_cast<std::size_t>(y * width + x)] = static_cast<unsigned char>(qAlpha(row[x0 + x]));
  }
}

// The covered columns of each row and the covered pixels, so that blending skips what a mask
// leaves alone.
template <typename Mask>
void Index(Mask& mask) {
  mask.spans.assign(static_cast<std::size_t>(mask.height), {0, 0});
  mask.ink.clear();
  for (int y = 0; y < mask.height; ++y) {
    const unsigned char* row = mask.alpha.data() + y * mask.width;
    int first = 0, last = mask.width;
    while (first < mask.width && row[first] == 0) ++first;
    while (last > first && row[last - 1] == 0) --last;
    mask.spans[static_cast<std::size_t>(y)] = {first, last};
    for (int x = first; x < last; ++x) {
      if (row[x] != 0) mask.ink.push_back({static_cast<short>(x), static_cast<short>(y), row[x]});
    }
  }
}

}  // namespace

RasterStamps::RasterStamps(const QFont& font) : font_(font) {}

bool RasterStamps::Accepts(const QImage& image) {
  return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32_Premultiplied;
}

const RasterStamps::Mask& RasterStamps::Glyph(unsigned char c) {
  auto& slot = glyphs_[c];
  if (!slot) {
    slot = std::make_unique<Mask>();
    const QFontMetrics metrics(font_);
    const QString text = QString(QChar::fromLatin1(static_cast<char>(c)));
    slot->advance = metrics.horizontalAdvance(text);
    const int size = 4 * (metrics.height() + metrics.maxWidth()) + 8;
    const QPoint origin(size / 4, size / 4);
    Capture(
        size, origin,
        [&](QPainter& p) {
          p.setFont(font_);
          p.setPen(Qt::white);
          p.drawText(QPoint(origin.x(), origin.y() + metrics.ascent()), text);
        },
        slot->left, slot->top, slot->width, slot->height, slot->alpha);
    Index(*slot);
  }
  return *slot;
}

const RasterStamps::Mask& RasterStamps::DotMask(int width) {
  width = std::clamp(width, 1, kWidestDot);
  if (static_cast<int>(dots_.size()) <= width) dots_.resize(static_cast<std::size_t>(width) + 1);
  auto& slot = dots_[static_cast<std::size_t>(width)];
  if (!slot) {
    slot = std::make_unique<Mask>();
    const int size = 2 * width + 8;
    const QPoint origin(size / 2, size / 2);
    Capture(
        size, origin,
        [&](QPainter& p) {
          QPen pen(Qt::white);
          pen.setWidth(width);
          pen.setCapStyle(Qt::RoundCap);
          p.setPen(pen);
          p.drawPoint(origin);
        },
        slot->left, slot->top, slot->width, slot->height, slot->alpha);
    Index(*slot);
  }
  return *slot;
}

void RasterStamps::Blend(QImage& image, int x, int y, const Mask& mask, unsigned colour) {
  const int x0 = std::max(0, x), y0 = std::max(0, y);
  const int x1 = std::min(image.width(), x + mask.width), y1 = std::min(image.height(), y + mask.height);
  if (x0 >= x1 || y0 >= y1) return;
  // Red and blue, then green, each in its own 16-bit lane, so one multiply serves two channels.
  const std::uint32_t srcRB = colour & 0x00FF00FFu, srcG = colour & 0x0000FF00u;
  const auto stride = static_cast<std::ptrdiff_t>(image.bytesPerLine() / 4);
  auto* pixels = reinterpret_cast<std::uint32_t*>(image.bits());
  const auto put = [&](std::uint32_t& pixel, std::uint32_t alpha) {
    if (alpha == 255) {
      pixel = 0xFF000000u | colour;
      return;
    }
    const std::uint32_t keep = 255u - alpha;
    const std::uint32_t d = pixel;
    std::uint32_t rb = srcRB * alpha + (d & 0x00FF00FFu) * keep;
    std::uint32_t g = (srcG >> 8) * alpha + ((d >> 8) & 0xFFu) * keep;
    // x / 255 exactly for x up to 255 * 255: (x + 1 + (x >> 8)) >> 8, lane by lane.
    rb = ((rb + 0x00010001u + ((rb >> 8) & 0x00FF00FFu)) >> 8) & 0x00FF00FFu;
    g = (g + 1u + (g >> 8)) >> 8;
    pixel = 0xFF000000u | rb | (g << 8);
  };
  if (x0 == x && y0 == y && x1 == x + mask.width && y1 == y + mask.height) {
    std::uint32_t* origin = pixels + y * stride + x;
    for (const auto& ink : mask.ink) put(origin[ink.dy * stride + ink.dx], ink.alpha);
    return;
  }
  for (int py = y0; py < y1; ++py) {
    const auto [first, last] = mask.spans[static_cast<std::size_t>(py - y)];
    const int from = std::max(x0, x + first), to = std::min(x1, x + last);
    const unsigned char* a = mask.alpha.data() + (py - y) * mask.width + (from - x);
    std::uint32_t* row = pixels + py * stride;
    for (int px = from; px < to; ++px, ++a) {
      if (*a != 0) put(row[px], *a);
    }
  }
}

void RasterStamps::Dot(QImage& image, double x, double y, int width, unsigned colour) {
  const Mask& mask = DotMask(width);
  // Only a dot whose mask can touch the image is placed; anything further out, or not a number,
  // is left undrawn, before it is turned into a pixel position.
  const double reach = 2.0 * kWidestDot + 8.0;
  if (!(x > -reach && x < image.width() + reach && y > -reach && y < image.height() + reach)) return;
  Blend(image, static_cast<int>(std::floor(x)) + mask.left, static_cast<int>(std::floor(y)) + mask.top, mask, colour);
}

int RasterStamps::Text(QImage& image, int x, int y, std::string_view text, unsigned colour) {
  int advance = 0;
  for (const char c : text) {
    const Mask& glyph = Glyph(static_cast<unsigned char>(c));
    if (!glyph.alpha.empty()) Blend(image, x + advance + glyph.left, y + glyph.top, glyph, colour);
    advance += glyph.advance;
  }
  return advance;
}

int RasterStamps::Advance(std::string_view text) {
  int advance = 0;
  for (const char c : text) advance += Glyph(static_cast<unsigned char>(c)).advance;
  return advance;
}

}  // namespace tessel
