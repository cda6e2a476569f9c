#pragma once
// Helpers for fixed-column text: cutting fields by 1-based columns, trimming blanks, reading a
// leading number, and the numeric pictures of the job files. File contents are bytes in a
// single-byte code page and stay in std::string.

#include <string>
#include <string_view>

namespace tessel {

// Views of the same cuts, for readers that parse fields in place.
std::string_view MidView(std::string_view text, int start, int length);
std::string_view TrimView(std::string_view text);
std::string_view RTrimView(std::string_view text);

// Characters start..start+length-1 (1-based); shorter when the text ends first.
std::string Mid(std::string_view text, int start, int length);
// Characters from start (1-based) to the end.
std::string Mid(std::string_view text, int start);
std::string Left(std::string_view text, int length);
std::string Right(std::string_view text, int length);

// Blanks only; tabs and other characters stay.
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);

std::string Upper(std::string_view text);
bool StartsWith(std::string_view text, std::string_view prefix);
bool EndsWith(std::string_view text, std::string_view suffix);

// The leading number of a text: blanks, tabs and line feeds are ignored, an optional sign,
// digits, a decimal point and an exponent (E or D) are read, and reading stops at the first
// other character. Text without a number gives 0. A number too large for a double is an
// overflow fault.
double Val(std::string_view text);

// The integer value of a line's last character; anything but a digit is a type mismatch fault.
int LastCharAsInt(std::string_view line);

// The pictures "#######0.000", "####.000" and the like: at least `minIntDigits` integer digits
// (0 or 1), `decimals` decimals, rounded half away from zero on the number's 15 significant
// digits, no padding.
std::string FormatPicture(double value, int decimals, int minIntDigits = 1);
// Val(FormatPicture(value, decimals)), the value a number keeps after passing through such a
// picture, without the text where no tie is near.
double ThroughPicture(double value, int decimals);

// Rounding to a number of decimals, half to even, on the number's 15 significant digits.
double RoundDecimals(double value, int decimals);

// The shortest fixed-point text that reads back to the same double ("51530", "0.5", "-12").
std::string ShortestText(double value);

// Left-pads with blanks to `width`; a longer text stays as it is.
std::string PadLeft(std::string_view text, int width);

}  // namespace tessel
