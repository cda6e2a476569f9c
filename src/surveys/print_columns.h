#pragma once
// Printing fields at fixed columns the way the suite's files are written: text goes out as it
// stands, a tab stop pads with blanks up to its column, and a line that already reaches past the
// stop is ended first, the field then starting at its column on a new line. A field wider than
// its room is never cut: it shifts what follows.

#include <string>
#include <string_view>

namespace tessel {

class ColumnPrinter {
 public:
  ColumnPrinter& Print(std::string_view text);
  // Moves to 1-based `column`: blanks up to it, or a new line and blanks when the line is past it.
  ColumnPrinter& Tab(int column);
  // Ends the line with CR LF.
  ColumnPrinter& EndLine();
  const std::string& Text() const { return out_; }

 private:
  std::string out_;
  std::size_t lineStart_ = 0;
};

// A typed number in a picture of `decimals` places with no forced integer digit, as a field shows
// it on leaving ("####.000" turns "0.05" into ".050"). A text that is not a number stays as it
// stands; an empty one stays empty.
std::string PictureText(std::string_view text, int decimals);

}  // namespace tessel
