#pragma once
// The free-format printing of the link files (.clot, .mtc, .phd): a text as it stands, a number
// with a leading blank (or its minus sign), up to 15 significant digits and one trailing blank,
// a semicolon that adds nothing and a comma that moves on to the next print zone of 14 columns.
// Readers take fields of these lines by column, so the exact text is part of the format.

#include <ctime>
#include <string>
#include <string_view>

namespace tessel {

// A number as free format prints it: " 12 ", "-3.5 ", " .25 ", " 1E+16 ".
std::string FreeNumber(double value);

// One line of free-format printing.
class FreeLine {
 public:
  // An item; the items of one print statement follow each other directly (a semicolon).
  FreeLine& Text(std::string_view text);
  FreeLine& Number(double value);
  // A comma: on to the start of the next zone, at columns 1, 15, 29, 43 and so on.
  FreeLine& Zone();
  const std::string& str() const { return line_; }

 private:
  std::string line_;
};

// The clock of the linking files: SOURCE_DATE_EPOCH when it is set to a number of seconds, so
// that runs can be reproduced, else now.
std::time_t LinkClockNow();
// The short form of a date, month/day/year without leading zeros: "3/7/2024". A time taken from
// SOURCE_DATE_EPOCH is a universal time; the clock's own is local.
std::string ShortDate(std::time_t when);
// The date the linking files print today.
std::string LinkDateText();

}  // namespace tessel
