#include "cama/free_format.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tessel {

std::string FreeNumber(double value) {
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "%.15G", std::fabs(value));
  std::string digits = buffer;
  // A fraction prints without its leading zero.
  if (digits.size() > 1 && digits[0] == '0' && digits[1] == '.') digits.erase(0, 1);
  return (value < 0 ? "-" : " ") + digits + " ";
}

FreeLine& FreeLine::Text(std::string_view text) {
  line_.append(text);
  return *this;
}

FreeLine& FreeLine::Number(double value) {
  line_ += FreeNumber(value);
  return *this;
}

FreeLine& FreeLine::Zone() {
  const std::size_t next = (line_.size() / 14 + 1) * 14;
  line_.resize(next, ' ');
  return *this;
}

std::time_t LinkClockNow() {
  if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH"); epoch && *epoch) {
    char* end = nullptr;
    errno = 0;
    const long long seconds = std::strtoll(epoch, &end, 10);
    if (errno == 0 && end && *end == '\0' && seconds >= 0) return static_cast<std::time_t>(seconds);
  }
  return std::time(nullptr);
}

std::string ShortDate(std::time_t when) {
  const bool fixed = [] {
    const char* epoch = std::getenv("SOURCE_DATE_EPOCH");
    return epoch && *epoch;
  }();
  const std::tm* parts = fixed ? std::gmtime(&when) : std::localtime(&when);
  if (!parts) return {};
  return std::to_string(parts->tm_mon + 1) + "/" + std::to_string(parts->tm_mday) + "/" +
         std::to_string(parts->tm_year + 1900);
}

std::string LinkDateText() { return ShortDate(LinkClockNow()); }

}  // namespace tessel
