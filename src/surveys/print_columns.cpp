#include "surveys/print_columns.h"

#include <exception>

#include "model/text.h"

namespace tessel {

ColumnPrinter& ColumnPrinter::Print(std::string_view text) {
  out_ += text;
  // A line end inside the text starts the count of columns afresh.
  if (const auto lf = text.rfind('\n'); lf != std::string_view::npos) {
    lineStart_ = out_.size() - (text.size() - lf - 1);
  }
  return *this;
}

ColumnPrinter& ColumnPrinter::Tab(int column) {
  const std::size_t target = column < 1 ? 1 : static_cast<std::size_t>(column);
  std::size_t at = out_.size() - lineStart_ + 1;
  if (at > target) {
    EndLine();
    at = 1;
  }
  out_.append(target - at, ' ');
  return *this;
}

ColumnPrinter& ColumnPrinter::EndLine() {
  out_ += "\r\n";
  lineStart_ = out_.size();
  return *this;
}

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A whole number text: sign, digits with at most one point, an exponent; blanks around it.
bool IsNumber(std::string_view text) {
  std::size_t i = 0;
  const std::size_t n = text.size();
  if (i < n && (text[i] == '+' || text[i] == '-')) ++i;
  bool digits = false;
  while (i < n && IsDigit(text[i])) {
    ++i;
    digits = true;
  }
  if (i < n && text[i] == '.') {
    ++i;
    while (i < n && IsDigit(text[i])) {
      ++i;
      digits = true;
    }
  }
  if (!digits) return false;
  if (i < n && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
    ++i;
    if (i < n && (text[i] == '+' || text[i] == '-')) ++i;
    if (i >= n || !IsDigit(text[i])) return false;
    while (i < n && IsDigit(text[i])) ++i;
  }
  return i == n;
}

}  // namespace

std::string PictureText(std::string_view text, int decimals) {
  const std::string_view number = TrimView(text);
  if (!IsNumber(number)) return std::string(text);
  try {
    return FormatPicture(Val(number), decimals, 0);
  } catch (const std::exception&) {
    return std::string(text);  // a number too large for the picture stays as typed
  }
}

}  // namespace tessel
