#include "model/text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <system_error>

#include "model/fault.h"

namespace tessel {

std::string_view MidView(std::string_view text, int start, int length) {
  if (start < 1 || length <= 0) return {};
  const auto from = static_cast<std::size_t>(start - 1);
  if (from >= text.size()) return {};
  return text.substr(from, static_cast<std::size_t>(length));
}

// Plain loops: the readers trim every field of every line, and the library's searches for a set
// of characters cost several times as much for the one blank.
std::string_view TrimView(std::string_view text) {
  std::size_t first = 0;
  std::size_t end = text.size();
  while (first < end && text[first] == ' ') ++first;
  while (end > first && text[end - 1] == ' ') --end;
  return text.substr(first, end - first);
}

std::string_view RTrimView(std::string_view text) {
  std::size_t end = text.size();
  while (end > 0 && text[end - 1] == ' ') --end;
  return text.substr(0, end);
}

std::string Mid(std::string_view text, int start, int length) {
  if (start < 1 || length <= 0) return {};
  const auto from = static_cast<std::size_t>(start - 1);
  if (from >= text.size()) return {};
  return std::string(text.substr(from, static_cast<std::size_t>(length)));
}

std::string Mid(std::string_view text, int start) {
  if (start < 1) return std::string(text);
  const auto from = static_cast<std::size_t>(start - 1);
  if (from >= text.size()) return {};
  return std::string(text.substr(from));
}

std::string Left(std::string_view text, int length) {
  if (length <= 0) return {};
  return std::string(text.substr(0, static_cast<std::size_t>(length)));
}

std::string Right(std::string_view text, int length) {
  if (length <= 0) return {};
  const auto n = static_cast<std::size_t>(length);
  return n >= text.size() ? std::string(text) : std::string(text.substr(text.size() - n));
}

std::string LTrim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string RTrim(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::string Upper(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return out;
}

bool StartsWith(std::string_view text, std::string_view prefix) { return text.starts_with(prefix); }
bool EndsWith(std::string_view text, std::string_view suffix) { return text.ends_with(suffix); }

namespace {

bool IsIgnored(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// The general reading: ignored characters anywhere, D as an exponent.
double ValSlow(std::string_view text) {
  std::string digits;
  digits.reserve(text.size());
  bool negative = false;
  bool seenSign = false, seenDigit = false, seenPoint = false, seenExp = false, expDigits = false;
  for (char c : text) {
    if (IsIgnored(c)) continue;
    if ((c == '+' || c == '-') && !seenSign && digits.empty()) {
      seenSign = true;
      negative = c == '-';
      continue;
    }
    if (c >= '0' && c <= '9') {
      digits += c;
      if (seenExp) expDigits = true; else seenDigit = true;
      continue;
    }
    if (c == '.' && !seenPoint && !seenExp) {
      seenPoint = true;
      digits += c;
      continue;
    }
    if ((c == 'E' || c == 'e' || c == 'D' || c == 'd') && !seenExp && seenDigit) {
      seenExp = true;
      digits += 'e';
      continue;
    }
    if ((c == '+' || c == '-') && seenExp && !expDigits && digits.back() == 'e') {
      digits += c;
      continue;
    }
    break;
  }
  if (!seenDigit) return 0.0;
  // An exponent without digits is not part of the number.
  while (!digits.empty() && (digits.back() == 'e' || digits.back() == '+' || digits.back() == '-')) digits.pop_back();
  double value = 0.0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // Too small underflows to 0 quietly; too large is an overflow.
    const auto e = digits.find('e');
    if (e != std::string::npos && digits.find('-', e) != std::string::npos) return 0.0;
    throw RuntimeFault(FaultKind::Overflow, "Overflow");
  }
  return negative ? -value : value;
}

}  // namespace

double Val(std::string_view text) {
  // Most fields are blanks, an optional minus, digits and a point: read those in place, in one
  // pass that gathers the digits as an integer.
  const char* const p = text.data();
  const std::size_t n = text.size();
  std::size_t i = 0;
  while (i < n && p[i] == ' ') ++i;
  const std::size_t start = i;
  if (i < n && p[i] == '-') ++i;
  std::uint64_t mantissa = 0;
  std::size_t digitCount = 0;
  std::size_t decimals = 0;
  bool point = false;
  for (; i < n; ++i) {
    const auto digit = static_cast<unsigned>(static_cast<unsigned char>(p[i]) - '0');
    if (digit < 10) {
      mantissa = mantissa * 10 + digit;  // wraps past 19 digits, which take the general road
      ++digitCount;
      decimals += point ? 1 : 0;
    } else if (p[i] == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  // Blanks after the number end it unless a digit, a point or an exponent follows them.
  std::size_t rest = i;
  while (rest < n && IsIgnored(p[rest])) ++rest;
  const bool plainEnd = rest == n || ((p[rest] < '0' || p[rest] > '9') && p[rest] != 'e' && p[rest] != 'E' &&
                                      p[rest] != 'd' && p[rest] != 'D' && p[rest] != '.');
  if (!plainEnd || digitCount == 0) return ValSlow(text);
  if (digitCount <= 15) {
    // Up to 15 digits form an integer below 2^53 and a power of ten up to 10^22 is exact, so
    // one division gives the correctly rounded value.
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                         1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const double magnitude = static_cast<double>(mantissa) / kPowers[decimals];
    return p[start] == '-' ? -magnitude : magnitude;
  }
  double value = 0.0;
  if (std::from_chars(p + start, p + i, value).ec != std::errc()) return ValSlow(text);
  return value;
}

int LastCharAsInt(std::string_view line) {
  if (line.empty() || line.back() < '0' || line.back() > '9') {
    throw RuntimeFault(FaultKind::TypeMismatch, "Type mismatch");
  }
  return line.back() - '0';
}

namespace {

// The decimal digits of |value| on 15 significant digits, split at the decimal point.
struct Decimal {
  bool negative = false;
  std::string whole;     // at least one digit
  std::string fraction;  // may be empty
};

Decimal ToDecimal(double value) {
  if (!std::isfinite(value)) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  Decimal d;
  d.negative = std::signbit(value);
  char buf[64];
  const auto written = std::to_chars(buf, buf + sizeof buf, std::fabs(value), std::chars_format::scientific, 14);
  const std::string s(buf, written.ptr);
  const auto ePos = s.find('e');
  std::string mantissa;
  for (std::size_t i = 0; i < ePos; ++i) {
    if (s[i] != '.') mantissa += s[i];
  }
  const int exponent = std::stoi(s.substr(ePos + 1));
  if (exponent >= 0) {
    const auto intLen = static_cast<std::size_t>(exponent) + 1;
    if (mantissa.size() < intLen) mantissa.append(intLen - mantissa.size(), '0');
    d.whole = mantissa.substr(0, intLen);
    d.fraction = mantissa.substr(intLen);
  } else {
    d.whole.assign(1, '0');
    d.fraction.assign(static_cast<std::size_t>(-exponent - 1), '0');
    d.fraction.append(mantissa);
  }
  return d;
}

// Rounds the decimal to `decimals` places and returns it as one digit string with the point.
std::string RoundDecimal(Decimal d, int decimals, bool halfEven) {
  const auto keep = static_cast<std::size_t>(decimals);
  if (d.fraction.size() < keep) d.fraction.append(keep - d.fraction.size(), '0');
  bool up = false;
  if (d.fraction.size() > keep) {
    const char next = d.fraction[keep];
    const bool restNonZero = d.fraction.find_first_not_of('0', keep + 1) != std::string::npos;
    if (halfEven && next == '5' && !restNonZero) {
      const char last = keep > 0 ? d.fraction[keep - 1] : d.whole.back();
      up = (last - '0') % 2 == 1;
    } else {
      up = next >= '5';
    }
    d.fraction.resize(keep);
  }
  std::string digits = d.whole + d.fraction;
  if (up) {
    int i = static_cast<int>(digits.size()) - 1;
    while (i >= 0 && digits[static_cast<std::size_t>(i)] == '9') digits[static_cast<std::size_t>(i--)] = '0';
    if (i < 0) digits.insert(digits.begin(), '1');
    else ++digits[static_cast<std::size_t>(i)];
  }
  const std::size_t wholeLen = digits.size() - keep;
  std::string whole = digits.substr(0, wholeLen);
  const auto firstNonZero = whole.find_first_not_of('0');
  whole = firstNonZero == std::string::npos ? std::string() : whole.substr(firstNonZero);
  std::string out;
  const bool zero = digits.find_first_of("123456789") == std::string::npos;
  if (d.negative && !zero) out.push_back('-');
  out.append(whole);
  if (keep > 0) {
    out.push_back('.');
    out.append(digits, wholeLen, std::string::npos);
  }
  return out;
}

}  // namespace

std::string FormatPicture(double value, int decimals, int minIntDigits) {
  std::string text = RoundDecimal(ToDecimal(value), decimals, false);
  if (minIntDigits > 0) {
    const bool negative = !text.empty() && text[0] == '-';
    const std::size_t digitsStart = negative ? 1 : 0;
    if (text.size() == digitsStart || text[digitsStart] == '.') text.insert(text.begin() + static_cast<std::ptrdiff_t>(digitsStart), '0');
  }
  return text;
}

double ThroughPicture(double value, int decimals) {
  // Up to 10^11 the 15 significant digits the picture rounds from hold more decimals than it
  // keeps, so their rounding cannot move the value across a half unless it lies next to one.
  // There, and for large values, the text decides.
  static constexpr double kScale[] = {1.0, 10.0, 100.0, 1000.0, 10000.0};
  if (decimals < 0 || decimals > 4 || !(std::fabs(value) < 1e11)) return Val(FormatPicture(value, decimals));
  const double scaled = std::fabs(value) * kScale[decimals];
  const double whole = std::floor(scaled);
  const double fraction = scaled - whole;
  if (std::fabs(fraction - 0.5) <= scaled * 1e-13 + 1e-9) return Val(FormatPicture(value, decimals));
  const double units = whole + (fraction > 0.5 ? 1.0 : 0.0);
  // As Val reads the digits back: the integer of the digits over the power of ten.
  const double magnitude = units / kScale[decimals];
  return value < 0 && units != 0.0 ? -magnitude : magnitude;
}

double RoundDecimals(double value, int decimals) {
  return Val(RoundDecimal(ToDecimal(value), decimals, true));
}

std::string ShortestText(double value) {
  char buf[400];
  const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
  return std::string(buf, result.ptr);
}

std::string PadLeft(std::string_view text, int width) {
  const auto w = static_cast<std::size_t>(width < 0 ? 0 : width);
  std::string out(text.size() >= w ? 0 : w - text.size(), ' ');
  out.append(text);
  return out;
}

}  // namespace tessel
