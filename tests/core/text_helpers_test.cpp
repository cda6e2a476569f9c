// The column, number and picture helpers every reader and writer of the job files rests on.

#include "model/fault.h"
#include "model/field_reader.h"
#include "model/text.h"
#include "model/text_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

TEST(TextColumns, CutTrimAndPadByOneBasedColumns) {
  EXPECT_EQ(Mid("abcdef", 2, 3), "bcd");
  EXPECT_EQ(Mid("abc", 3, 5), "c");
  EXPECT_EQ(Mid("abc", 4, 1), "");
  EXPECT_EQ(Mid("abc", 2, 0), "");
  EXPECT_EQ(Mid("abcdef", 3), "cdef");
  EXPECT_EQ(Mid("abc", 7), "");
  EXPECT_EQ(Left("abc", 9), "abc");
  EXPECT_EQ(Right("abcdef", 2), "ef");
  EXPECT_EQ(Right("ab", 5), "ab");
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(LTrim("  a b  "), "a b  ");
  EXPECT_EQ(RTrim("  a b  "), "  a b");
  EXPECT_EQ(Trim("\t x \t"), "\t x \t");  // blanks only
  EXPECT_EQ(Trim("    "), "");
  EXPECT_EQ(PadLeft("ab", 5), "   ab");
  EXPECT_EQ(PadLeft("abcdef", 3), "abcdef");
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
  };
  for (const auto& c : cases) EXPECT_DOUBLE_EQ(Val(c.text), c.value) << "Val(\"" << c.text << "\")";
  EXPECT_THROW(Val("1e999"), RuntimeFault);
}

TEST(TextNumbers, LastCharacterOfALineMustBeADigit) {
  EXPECT_EQ(LastCharAsInt("   100100   1"), 1);
  EXPECT_EQ(LastCharAsInt("abc0"), 0);
  EXPECT_EQ(LastCharAsInt("7"), 7);
  for (const char* bad : {"", "abc", "12 ", "4x"}) ExpectFault(FaultKind::TypeMismatch, [&] { LastCharAsInt(bad); });
}

TEST(TextNumbers, FormatPictureRoundsHalfAwayFromZeroWithoutPadding) {
  EXPECT_EQ(FormatPicture(0.5, 3), "0.500");
  EXPECT_EQ(FormatPicture(12.3456, 3), "12.346");
  EXPECT_EQ(FormatPicture(2.0005, 3), "2.001");
  EXPECT_EQ(FormatPicture(-2.0005, 3), "-2.001");
  EXPECT_EQ(FormatPicture(0.0004, 3), "0.000");
  EXPECT_EQ(FormatPicture(1234567.8915, 3), "1234567.892");
  EXPECT_EQ(FormatPicture(12345678.9, 3), "12345678.900");
  EXPECT_EQ(FormatPicture(999.9996, 3), "1000.000");
  EXPECT_EQ(FormatPicture(7, 0), "7");
  // "####.0" and "####.000" have no integer digit of their own.
  EXPECT_EQ(FormatPicture(0.25, 1, 0), ".3");
  EXPECT_EQ(FormatPicture(0, 3, 0), ".000");
  EXPECT_EQ(FormatPicture(15.04, 1, 0), "15.0");
}

TEST(TextNumbers, RoundDecimalsGoesHalfToEvenAndShortestTextReadsBack) {
  EXPECT_DOUBLE_EQ(RoundDecimals(2.00005, 4), 2.0);
  EXPECT_DOUBLE_EQ(RoundDecimals(2.00015, 4), 2.0002);
  EXPECT_DOUBLE_EQ(RoundDecimals(2.000151, 4), 2.0002);
  EXPECT_DOUBLE_EQ(RoundDecimals(-1.23456, 4), -1.2346);
  EXPECT_DOUBLE_EQ(RoundDecimals(0.00049, 4), 0.0005);
  EXPECT_DOUBLE_EQ(RoundDecimals(1234567.12345, 4), 1234567.1234);

  EXPECT_EQ(ShortestText(51530.0), "51530");
  EXPECT_EQ(ShortestText(0.5), "0.5");
  EXPECT_EQ(ShortestText(-12.0), "-12");
  EXPECT_EQ(ShortestText(45.3), "45.3");
  EXPECT_EQ(ShortestText(0.0), "0");
  EXPECT_EQ(ShortestText(1e20), "100000000000000000000");
}

TEST(FreeFormatFields, NumbersEndAtBlankCommaOrLineEndAndStringsAtCommaOrLineEnd) {
  FieldReader in("12.5, 7\r\n3 4\nC:\\Program Files\\ed.exe, more\r\n\r\n\r\n\"quoted, text\" tail\r\nlast line  ");
  EXPECT_DOUBLE_EQ(in.ReadNumber(), 12.5);
  EXPECT_DOUBLE_EQ(in.ReadNumber(), 7.0);
  EXPECT_DOUBLE_EQ(in.ReadNumber(), 3.0);
  EXPECT_DOUBLE_EQ(in.ReadNumber(), 4.0);
  EXPECT_EQ(in.ReadString(), "C:\\Program Files\\ed.exe");
  EXPECT_EQ(in.ReadString(), "more");
  EXPECT_DOUBLE_EQ(in.ReadNumber(), 0.0);  // an empty line
  EXPECT_EQ(in.ReadString(), "");          // and another
  EXPECT_EQ(in.ReadString(), "quoted, text");
  EXPECT_EQ(in.ReadLine(), "last line  ");
  EXPECT_TRUE(in.Eof());
  ExpectFault(FaultKind::ReadPastEnd, [&] { in.ReadNumber(); });
  FieldReader text("none\r\n");
  ExpectFault(FaultKind::TypeMismatch, [&] { text.ReadNumber(); });
}

TEST(LineReading, AcceptsCrLfAndLfAndCountsALastLineWithoutLineEnd) {
  LineReader in = LineReader::FromText("a\r\nb\n\r\nc  ");
  EXPECT_EQ(in.ReadLine(), "a");
  EXPECT_EQ(in.ReadLine(), "b");
  EXPECT_EQ(in.ReadLine(), "");
  EXPECT_FALSE(in.Eof());
  EXPECT_EQ(in.ReadLine(), "c  ");
  EXPECT_TRUE(in.Eof());
  EXPECT_THROW(in.ReadLine(), RuntimeFault);

  LineReader ended = LineReader::FromText("only\r\n");
  EXPECT_EQ(ended.ReadLine(), "only");
  EXPECT_TRUE(ended.Eof());
  EXPECT_TRUE(LineReader::FromText("").Eof());

  EXPECT_EQ(JoinCrLf({"x", "", "y"}), "x\r\n\r\ny\r\n");
  ExpectFault(FaultKind::FileNotFound, [] { LineReader missing("/nonexistent-folder/none.txt"); });
}

}  // namespace
}  // namespace tessel::test
