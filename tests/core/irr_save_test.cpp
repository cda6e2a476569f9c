// Save Section on the job's .irr: the section's block replaced or added, default blocks removed,
// every other byte kept, the copies gone, and a failed step leaving the former file.

#include <gtest/gtest.h>

#include <filesystem>

#include "model/text_file.h"
#include "subdivision/irr_file.h"
#include "subdivision/irr_save.h"
#include "test_support.h"

namespace tessel {
namespace {

using test::Text;

const std::vector<std::string> kSection2 = {"540640", "540641 540642", "     0      0", "     0      0      0",
                                            "     0",  "     0",         "     0",       "     0      .000      .000",
                                            "     0",  "     0",         "999999"};

std::vector<std::string> DefaultBlock(const std::string& header) {
  return {header,   "     0      0", "     0      0      0", "     0", "     0", "     0", kIrrEndProportions,
          "     0", "     0", "999999"};
}

class IrrSave : public test::JobFixture {
 protected:
  IrrSave() { UseJob(); }
};

TEST_F(IrrSave, ReplacesTheSectionsBlockAndCopiesTheOthersByteForByte) {
  // Section 1's old block, between a block of section 2 in LF lines and one in CR LF lines.
  std::string former;
  for (const auto& line : kSection2) former += line + "\n";
  former += Text({"640640", "700640", "     0      0", "     0      0      0", "     0", "     0", "     0",
                  kIrrEndProportions, "     0", "     0", "999999"});
  former += Text({"440640 440641", "     0      0", "     0      0      0", "     0", "     0", "     0",
                  kIrrEndProportions, "     0", "     0", "999999"});
  // The second line of the last block is wrong on purpose: it is copied as it stands.
  const std::string lastBlock = Text({"440640", "     0      0", "     0      0      0", "440700", "     0", "     0", "     0",
                                      kIrrEndProportions, "     0", "     0", "999999"});
  former = former.substr(0, former.find("440640 440641")) + lastBlock;
  WriteJobBytes("T1N2E.irr", former);

  session.sectionDefinitions.sections[1].OffsetFlag[7] = true;
  session.sectionDefinitions.sections[1].Offset[7] = 640600;
  const IrrSaveResult result = SaveSection(session, 1);
  EXPECT_TRUE(result.saved);
  EXPECT_EQ(result.sectionsWithBlocks, (std::vector<int>{2, 1, 3}));

  std::string expected;
  for (const auto& line : kSection2) expected += line + "\n";
  expected += Text(WriteIrrBlock(session.sectionDefinitions, 1)) + lastBlock;
  EXPECT_EQ(ReadJob("T1N2E.irr"), expected);
  EXPECT_NE(expected.find("640600\r\n     0\r\n999999"), std::string::npos);
  EXPECT_FALSE(JobHas("T1N2E.irB"));
  EXPECT_FALSE(JobHas("T1N2E.ir2"));
  EXPECT_TRUE(session.sectionDefinitions.sections[1].Marker);
}

// Without a file the block is the whole file; a last line without its line end gets one.
TEST_F(IrrSave, AddsTheBlockAtTheEndOrAsTheWholeFile) {
  session.sectionDefinitions.sections[22].ExteriorFlag[1] = true;
  session.sectionDefinitions.sections[22].NonComputable[18] = 500360;
  EXPECT_TRUE(SaveSection(session, 22).saved);
  EXPECT_EQ(ReadJob("T1N2E.irr"), Text(WriteIrrBlock(session.sectionDefinitions, 22)));

  std::string former = Text(kSection2);
  former.resize(former.size() - 2);
  WriteJobBytes("T1N2E.irr", former);
  session.sectionDefinitions.sections[36].Substitute[2] = 700201;
  EXPECT_TRUE(SaveSection(session, 36).saved);
  EXPECT_EQ(ReadJob("T1N2E.irr"), Text(kSection2) + Text(WriteIrrBlock(session.sectionDefinitions, 36)));
}

TEST_F(IrrSave, ADefaultBlockLeavesNoTraceAndOtherDefaultBlocksGoToo) {
  std::vector<std::string> lines = DefaultBlock("140140");
  for (const auto& line : kSection2) lines.push_back(line);
  for (const auto& line : DefaultBlock("640640")) lines.push_back(line);
  WriteJob("T1N2E.irr", lines);
  // Section 1 saved with nothing but a substitute equal to its nominal, which is cleared.
  session.sectionDefinitions.sections[1].Substitute[4] = 600600;
  const IrrSaveResult result = SaveSection(session, 1);
  EXPECT_TRUE(result.saved);
  EXPECT_EQ(session.sectionDefinitions.sections[1].Substitute[4], 0);
  EXPECT_EQ(ReadJob("T1N2E.irr"), Text(kSection2));
  EXPECT_EQ(result.sectionsWithBlocks, (std::vector<int>{2}));
}

TEST_F(IrrSave, DefaultBlocksAreKnownByTheirNineTrimmedLines) {
  EXPECT_TRUE(IsDefaultIrrBlock(DefaultBlock("999")));
  std::vector<std::string> trimmed = {"140140", "0      0", "0      0      0", "0", "0", "0",
                                      "0      .000      .000", "0", "0", "999999"};
  EXPECT_TRUE(IsDefaultIrrBlock(trimmed));
  std::vector<std::string> longer = trimmed;
  longer.insert(longer.begin() + 5, "0");
  EXPECT_FALSE(IsDefaultIrrBlock(longer));
  std::vector<std::string> other = trimmed;
  other[6] = "0      .000      .001";
  EXPECT_FALSE(IsDefaultIrrBlock(other));
  // A file that ends inside a block keeps it.
  std::string cut = Text(DefaultBlock("140140"));
  cut.resize(cut.size() - 8);
  EXPECT_EQ(WithoutDefaultIrrBlocks(cut), cut);
}

TEST_F(IrrSave, AFailedWriteKeepsTheFormerFileAndSaysSo) {
  WriteJob("T1N2E.irr", kSection2);
  const std::string former = ReadJob("T1N2E.irr");
  // A folder where .ir2 should go makes the build of the new file fail.
  std::filesystem::create_directory(jobPath / "T1N2E.ir2");
  session.sectionDefinitions.sections[1].CentreFlag = true;
  session.sectionDefinitions.sections[1].Centre[0] = "1";
  session.sectionDefinitions.sections[1].Centre[5] = "1";
  const IrrSaveResult result = SaveSection(session, 1);
  EXPECT_FALSE(result.saved);
  EXPECT_EQ(ReadJob("T1N2E.irr"), former);
  EXPECT_FALSE(JobHas("T1N2E.irB"));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_NE(user.messages[0].text.find("Section 1 was not saved"), std::string::npos);
  EXPECT_NE(user.messages[0].text.find("T1N2E.ir2"), std::string::npos);
  EXPECT_EQ(result.sectionsWithBlocks, (std::vector<int>{2}));
}

}  // namespace
}  // namespace tessel
