// The .irr reader and writer: every kind of item written in its columns and read back, the
// quirks the subdivision tool depends on, and any text read without a crash.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "model/section_definitions.h"
#include "model/text_file.h"
#include "subdivision/irr_file.h"
#include "subdivision/nominal.h"

namespace tessel {
namespace {

std::string Join(const std::vector<std::string>& lines) { return JoinCrLf(lines); }

// Section 5 (centre 240640) with one item of every kind.
SectionDefinitionStore FullSection5() {
  SectionDefinitionStore store;
  SectionDefinitions& d = store.sections[5];
  d.Substitute[0] = 1;
  d.Substitute[3] = 300601;
  d.Substitute[7] = 240600;  // the nominal itself: not written
  store.AddDoubleCorner({300700, 300700, 1, 1});
  store.AddDoubleCorner({300700, 300701, 1, 2});
  d.DoubleFlag[1] = true;
  d.QuarterFlag[1] = true;
  d.NonComputable[6] = 300640;
  d.Centre = {"2", "240600", "240700", "200640", "300640", "6", "200640", "40.125", "1", "89.59590"};
  d.CentreFlag = true;
  d.ExteriorFlag[2] = true;
  d.NonComputable[19] = 300620;
  d.ProportionFlag[2] = true;
  d.Proportions[2] = {"240620", "19.800", "40.000"};
  d.QuarterCentreFlag[1] = true;
  d.QuarterCentre[1] = {"3", "1", "45.30150", "2", "0.00000", "5", "4", "1.00000", "", ""};
  d.OffsetFlag[25] = true;
  d.Offset[25] = 260700;
  return store;
}

const std::vector<std::string> kFullBlock = {
    "240640",
    "300600 300601",
    "     0      0",
    "300700      1      1",
    "300701      1      2",
    "     0      0      0",
    "300640",
    "     0",
    "     2",
    "240600 240700 200640 300640",
    "     6",
    "200640    40.125 1  89.59590",
    "300620",
    "     0",
    "240620    19.800    40.000",
    "     0      .000      .000",
    "260660",
    "     3",
    "1  45.30150 2   0.00000",
    "     5",
    "     4   1.00000",
    "     0",
    "260700",
    "     0",
    "999999",
};

TEST(IrrWriter, EveryItemKindInItsColumnsAndAnEmptySectionIsTheDefaultBlock) {
  EXPECT_EQ(WriteIrrBlock(FullSection5(), 5), kFullBlock);
  EXPECT_EQ(WriteIrrBlock(SectionDefinitionStore{}, 36),
            (std::vector<std::string>{"640140", "     0      0", "     0      0      0", "     0", "     0", "     0",
                                      kIrrEndProportions, "     0", "     0", "999999"}));
}

// What the reader takes in is written again as it was read; the flags and the substitute marker the
// writer does not write, and the shades, are checked on their own.
TEST(IrrReader, ReadsBackWhatTheWriterWroteWithAnyLineEnds) {
  SectionDefinitionStore written = FullSection5();
  std::string lf;
  for (const auto& line : kFullBlock) lf += line + "\n";
  lf.pop_back();  // no line end after the last line
  for (const std::string& text : {Join(WriteIrrBlock(written, 5)), lf}) {
    SectionDefinitionStore read;
    const IrrBlockRead result = ReadIrrBlock(text, 5, read);
    ASSERT_TRUE(result.found);
    EXPECT_TRUE(result.complete);
    const SectionDefinitions& got = read.sections[5];
    std::array<std::int32_t, 26> substitutes = written.sections[5].Substitute;
    substitutes[7] = 0;
    EXPECT_EQ(got.Substitute, substitutes);
    EXPECT_EQ(got.DoubleFlag, written.sections[5].DoubleFlag);
    EXPECT_TRUE(got.CentreFlag);
    EXPECT_EQ(WriteIrrBlock(read, 5), kFullBlock);
    for (const auto& [position, shade] : {std::pair{3, Shade::Yellow}, {2, Shade::Green} /* corner code 1 */,
                                          {6, Shade::Red}, {1, Shade::Green}, {19, Shade::Red}, {11, Shade::Green},
                                          {14, Shade::Green}, {25, Shade::Cyan}, {7, Shade::System}}) {
      EXPECT_EQ(result.shades[static_cast<std::size_t>(position)], shade) << position;
    }
  }
}

TEST(IrrReader, EachLineDefinitionTypeRoundTrips) {
  const std::vector<std::array<std::string, 5>> definitions = {
      {"1", "", "", "", ""},
      {"2", "240600", "240700", "200640", "300640"},
      {"3", "1", "123.45670", "4", "0.10000"},
      {"4", "200640", "300640", "", ""},
      {"5", "2", "12.30000", "", ""},
      {"6", "200640", "123.450", "3", "1.00000"},
      {"7", "", "", "", ""},
  };
  for (const auto& ns : definitions) {
    for (const auto& ew : definitions) {
      SectionDefinitionStore store;
      SectionDefinitions& d = store.sections[20];
      for (std::size_t k = 0; k < 5; ++k) {
        d.Centre[k] = ns[k];
        d.Centre[5 + k] = ew[k];
        d.QuarterCentre[3][k] = ew[k];
        d.QuarterCentre[3][5 + k] = ns[k];
      }
      d.CentreFlag = true;
      d.QuarterCentreFlag[3] = true;
      SectionDefinitionStore read;
      const IrrBlockRead result = ReadIrrBlock(Join(WriteIrrBlock(store, 20)), 20, read);
      EXPECT_TRUE(result.complete) << ns[0] << "/" << ew[0];
      EXPECT_EQ(read.sections[20].Centre, d.Centre) << ns[0] << "/" << ew[0];
      EXPECT_EQ(read.sections[20].QuarterCentre[3], d.QuarterCentre[3]) << ns[0] << "/" << ew[0];
      const Shade expected = ns[0] == "7" && ew[0] == "7" ? Shade::Red : Shade::Green;
      EXPECT_EQ(result.shades[1], expected);
      EXPECT_EQ(result.shades[16], expected);
    }
  }
}

TEST(IrrReader, ACentreWithoutNorthSouthTypeShiftsTheRestOfTheBlock) {
  // The writer leaves out an unset north-south line; the reader then takes the east-west type
  // for the north-south one and the next list's end line for the east-west type.
  SectionDefinitionStore store;
  store.sections[1].Centre[5] = "1";
  const std::vector<std::string> block = WriteIrrBlock(store, 1);
  EXPECT_EQ(block[4], "     1");
  EXPECT_EQ(block.size(), 10u);
  SectionDefinitionStore read;
  const IrrBlockRead result = ReadIrrBlock(Join(block), 1, read);
  EXPECT_TRUE(read.sections[1].CentreFlag);
  EXPECT_EQ(read.sections[1].Centre[0], "1");
  EXPECT_EQ(read.sections[1].Centre[5], "");
  EXPECT_FALSE(result.complete);
}

TEST(IrrReader, AQuarterCentreWrittenWithItsSubstituteIsNotFoundAgain) {
  SectionDefinitionStore store;
  SectionDefinitions& d = store.sections[1];
  d.Substitute[14] = 660661;
  d.QuarterCentreFlag[1] = true;
  d.QuarterCentre[1] = {"4", "600640", "700640", "", "", "1", "", "", "", ""};
  d.OffsetFlag[6] = true;
  d.Offset[6] = 700640;
  const std::vector<std::string> block = WriteIrrBlock(store, 1);
  EXPECT_EQ(block[8], "660661");
  SectionDefinitionStore read;
  const IrrBlockRead result = ReadIrrBlock(Join(block), 1, read);
  EXPECT_EQ(read.sections[1].Substitute[14], 660661);
  EXPECT_FALSE(read.sections[1].QuarterCentreFlag[1]);
  // Its lines were taken as entries of the list: "600640 700640" is no quarter centre, the
  // east-west type line "1" neither, and the list's end line ends it. The offsets that follow
  // are read as usual.
  EXPECT_TRUE(read.sections[1].OffsetFlag[6]);
  EXPECT_TRUE(result.complete);
}

TEST(IrrReader, FindsTheSectionsBlockAmongOthersAndNotAHeaderLikeLine) {
  SectionDefinitionStore store;
  store.sections[2].Substitute[1] = 540641;  // "540640 540641" starts like a header
  store.sections[1].OffsetFlag[7] = true;
  store.sections[1].Offset[7] = 640600;
  std::vector<std::string> lines = WriteIrrBlock(store, 2);
  lines.emplace_back("");
  for (const auto& line : WriteIrrBlock(store, 1)) lines.push_back(line);
  const std::string text = Join(lines);
  EXPECT_EQ(IrrBlockSections(text), (std::vector<int>{2, 1}));
  SectionDefinitionStore read;
  EXPECT_TRUE(ReadIrrBlock(text, 1, read).complete);
  EXPECT_TRUE(read.sections[1].OffsetFlag[7]);
  EXPECT_TRUE(ReadIrrBlock(text, 2, read).complete);
  EXPECT_EQ(read.sections[2].Substitute[1], 540641);
  EXPECT_FALSE(ReadIrrBlock(text, 3, read).found);
}

TEST(IrrReader, ANinthDoubleCornerRecordEndsTheReading) {
  std::vector<std::string> lines = {"640640", "     0      0"};
  for (int i = 0; i < 9; ++i) lines.push_back(std::to_string(700700 + i) + "      1      1");
  lines.insert(lines.end(), {"     0      0      0", "700640", "     0"});
  SectionDefinitionStore store;
  const IrrBlockRead result = ReadIrrBlock(Join(lines), 1, store);
  EXPECT_EQ(store.DoubleCornerCount, 8);
  EXPECT_EQ(store.DoubleCorners[8].point, 700707);
  EXPECT_FALSE(result.complete);
  EXPECT_FALSE(store.sections[1].QuarterFlag[1]);
  EXPECT_TRUE(store.sections[1].DoubleFlag[1]);
}

// Reading replaces the section and the double corner list, and a file that ends inside the block
// keeps what was read; other sections stay.
TEST(IrrReader, ReadingReplacesTheSectionAndAFileEndingInsideABlockKeepsWhatWasRead) {
  std::vector<std::string> block = kFullBlock;
  block.resize(13);  // through the first exterior sixteenth
  SectionDefinitionStore store = FullSection5();
  store.sections[6].CentreFlag = true;
  const IrrBlockRead result = ReadIrrBlock(Join(block), 5, store);
  EXPECT_TRUE(result.found);
  EXPECT_FALSE(result.complete);
  EXPECT_EQ(store.DoubleCornerCount, 2);
  EXPECT_TRUE(store.sections[5].CentreFlag);
  EXPECT_TRUE(store.sections[5].ExteriorFlag[2]);
  EXPECT_FALSE(store.sections[5].ProportionFlag[2]);
  EXPECT_FALSE(store.sections[5].OffsetFlag[25]);
  EXPECT_TRUE(store.sections[6].CentreFlag);
}

TEST(IrrReader, AnyTextIsReadWithoutACrash) {
  std::mt19937 random(1855);
  const std::vector<std::string> pieces = {"240640", "     0", "     0      0", "999999", "     7", "     2",
                                           "300700      9      1", "1e300", "-5", "abc", "300640", "\t", "",
                                           "99999999999999", "240620  x   .0", "     6", "300700      1      1"};
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    const int lines = static_cast<int>(random() % 40);
    for (int i = 0; i < lines; ++i) {
      if (random() % 5 == 0) {
        for (auto k = random() % 30; k > 0; --k) text.push_back(static_cast<char>(random() % 256));
      } else {
        text += pieces[random() % pieces.size()];
      }
      text += random() % 3 == 0 ? "\n" : "\r\n";
    }
    SectionDefinitionStore store;
    for (int section : {0, 5, 37}) {
      EXPECT_NO_THROW(ReadIrrBlock(text, section, store));
      EXPECT_LE(store.DoubleCornerCount, SectionDefinitionStore::kDoubleCornerBound);
    }
    EXPECT_NO_THROW(IrrBlockSections(text));
  }
}

TEST(IrrColumns, RightJustifiedFieldsMoveLeftFromTheSeventhCharacter) {
  EXPECT_EQ(RightJustifiedColumn(1, 11), 11);
  EXPECT_EQ(RightJustifiedColumn(6, 11), 11);
  EXPECT_EQ(RightJustifiedColumn(7, 11), 10);
  EXPECT_EQ(RightJustifiedColumn(9, 11), 8);
  EXPECT_EQ(RightJustifiedColumn(12, 11), 8);
  std::string line = "12345678";
  PutAt(line, 5, "x");
  EXPECT_EQ(line, "12345678 x");
  line.clear();
  PutAt(line, 6, "0");
  EXPECT_EQ(line, "     0");
}

}  // namespace
}  // namespace tessel
