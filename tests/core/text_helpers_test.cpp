// The column, number and picture helpers every reader and writer of the job files rests on.

#include <cmath>
#include <iomanip>
#include <random>
#include <vector>

#include "model/fault.h"
#include "model/text.h"
#include "test_support.h"

namespace tessel::test {
namespace {

TEST(TextColumns, CutTrimAndPadByOneBasedColumns) {
  const std::pair<std::string, std::string> cases[] = {
      {Mid("abcdef", 2, 3), "bcd"}, {Mid("abc", 3, 5), "c"},       {Mid("abc", 4, 1), ""},
      {Mid("abcdef", 3), "cdef"},   {Left("abc", 9), "abc"},       {Right("abcdef", 2), "ef"},
      {Trim("  a b  "), "a b"},     {LTrim("  a b  "), "a b  "},   {RTrim("  a b  "), "  a b"},
      {Trim("\t x \t"), "\t x \t"},  {PadLeft("ab", 5), "   ab"}, {PadLeft("abcdef", 3), "abcdef"},
      {std::string(TrimView(" a b  ")), "a b"}, {std::string(TrimView("   ")), ""}, {std::string(TrimView("\tx ")), "\tx"},
      {std::string(RTrimView("  a b ")), "  a b"}, {std::string(RTrimView("  ")), ""},
  };
  for (const auto& [got, want] : cases) EXPECT_EQ(got, want);
}

TEST(TextNumbers, ValReadsTheLeadingNumberAndGivesZeroForText) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"12.5abc", 12.5}, {"  -3", -3.0},  {"abc", 0.0},    {"", 0.0},      {"1 2 3", 123.0},
      {"1.2.3", 1.2},    {"1e3", 1000.0}, {"1D2", 100.0},  {"1e", 1.0},    {"-.5", -0.5},
      {"+7", 7.0},       {"12,5", 12.0},  {"- 5", -5.0},   {"5-3", 5.0},   {" 2071.125 ", 2071.125},
      {".", 0.0},        {"-", 0.0},      {"1e-999", 0.0}, {"0007", 7.0},  {"\t42", 42.0},
      // Blanks after a number: it ends there unless a digit, a point or an exponent follows.
      {"12  ", 12.0},    {"12 \t5", 125.0}, {"1.5 e2", 150.0}, {"12 -3", 12.0}, {"12 .5", 12.5},
      {"3 x", 3.0},      {"7 d1", 70.0},   {"-4 \r", -4.0},
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(c.text), c.value) << "Val(\"" << c.text << "\")";
  EXPECT_THROW(Val("1e999"), RuntimeFault);
}

TEST(TextNumbers, PicturesRoundHalfAwayFromZeroRoundDecimalsHalfToEven) {
  const std::pair<std::string, std::string> pictures[] = {
      {FormatPicture(12.3456, 3), "12.346"},         {FormatPicture(2.0005, 3), "2.001"},
      {FormatPicture(-2.0005, 3), "-2.001"},         {FormatPicture(0.0004, 3), "0.000"},
      {FormatPicture(1234567.8915, 3), "1234567.892"}, {FormatPicture(999.9996, 3), "1000.000"},
      {FormatPicture(7, 0), "7"},
      // "####.0" and "####.000" have no integer digit of their own.
      {FormatPicture(0.25, 1, 0), ".3"},             {FormatPicture(0, 3, 0), ".000"},
      {FormatPicture(15.04, 1, 0), "15.0"},          {ShortestText(51530.0), "51530"},
      {ShortestText(45.3), "45.3"},                  {ShortestText(-12.0), "-12"},
  };
  for (const auto& [got, want] : pictures) EXPECT_EQ(got, want);
  for (const auto& [value, rounded] : {std::pair{2.00005, 2.0}, {2.00015, 2.0002}, {-1.23456, -1.2346},
                                      {1234567.12345, 1234567.1234}}) {
    EXPECT_DOUBLE_EQ(RoundDecimals(value, 4), rounded) << value;
  }
}

TEST(TextNumbers, ThroughPictureIsValOfThePicture) {
  std::vector<double> values = {0.0, -0.0, 0.0005, -0.0005, 0.0625, -2.0005, 2084012.9445, 1e11, -3e11, 99999999999.9};
  std::mt19937_64 random(7);
  for (int k = 0; k < 20000; ++k) {
    const double magnitude = std::pow(10.0, std::uniform_real_distribution<double>(-4, 12)(random));
    const double value = std::uniform_real_distribution<double>(-magnitude, magnitude)(random);
    values.push_back(value);
    // Halves at the last kept decimal, where the 15 digits decide.
    values.push_back(std::round(value * 1000.0) / 1000.0 + 0.0005);
  }
  for (const double value : values) {
    for (int decimals = 0; decimals <= 4; ++decimals) {
      const double want = Val(FormatPicture(value, decimals));
      const double got = ThroughPicture(value, decimals);
      ASSERT_TRUE(got == want && std::signbit(got) == std::signbit(want))
          << std::setprecision(17) << value << " to " << decimals << ": " << got << " != " << want;
    }
  }
}

}  // namespace
}  // namespace tessel::test
