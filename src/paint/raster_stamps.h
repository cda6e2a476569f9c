#pragma once
// Stamping dots and text straight into an image's pixels. A full refresh of a large job paints
// tens of thousands of dots and labels; each goes through QPainter's general machinery, which
// costs far more than copying a small prepared mask. The masks are drawn once with QPainter
// (a round dot of each pen width, each character of the font), so the picture is the same.

#include <QFont>
#include <QImage>
#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tessel {

class RasterStamps {
 public:
  explicit RasterStamps(const QFont& font);

  // True for the image formats the stamps write.
  static bool Accepts(const QImage& image);

  // The widest dot stamped; a wider one is stamped this wide.
  static constexpr int kWidestDot = 1024;

  // A round dot `width` pixels across, centred on (x, y); nothing where it cannot touch the image.
  void Dot(QImage& image, double x, double y, int width, unsigned colour);
  // The text with the top left of its first character at (x, y); returns its advance.
  int Text(QImage& image, int x, int y, std::string_view text, unsigned colour);
  // The advance of the text, as Text gives it, without drawing.
  int Advance(std::string_view text);

 private:
  struct Mask {
    int left = 0, top = 0, width = 0, height = 0;  // placement relative to the origin
    int advance = 0;
    std::vector<unsigned char> alpha;  // width * height coverage values
    std::vector<std::pair<int, int>> spans;  // per row, the first and one past the last covered column
    struct Ink {
      short dx, dy;
      unsigned char alpha;
    };
    std::vector<Ink> ink;  // the covered pixels alone, for a mask that lies wholly on the image
  };
  const Mask& Glyph(unsigned char c);
  const Mask& DotMask(int width);
  static void Blend(QImage& image, int x, int y, const Mask& mask, unsigned colour);

  QFont font_;
  std::array<std::unique_ptr<Mask>, 256> glyphs_{};
  std::vector<std::unique_ptr<Mask>> dots_;
};

}  // namespace tessel
