// The region listing: the .how reader and writer, the console's edits with their saves and
// enabled states, and the folder button's questions.

#include <gtest/gtest.h>

#include <tuple>

#include "regions/how_file.h"
#include "regions/region_console.h"
#include "test_support.h"

namespace tessel::test {
namespace {

TEST(RegionHowFile, BlankLinesAreDroppedBothWays) {
  const std::string bytes = "T1\r\n\r\n   \r\nFIXED\n C:\\jobs\\T2 \r\nNOREL";
  const auto rows = ParseHowListing(bytes);
  EXPECT_EQ(rows, (std::vector<std::string>{"T1", "FIXED", " C:\\jobs\\T2 ", "NOREL"}));
  EXPECT_EQ(HowListingText({"T1", "", "  ", "NOREL"}), "T1\r\nNOREL\r\n");
  EXPECT_EQ(ParseHowListing(HowListingText(rows)), rows);
  EXPECT_TRUE(ParseHowListing("").empty());
  EXPECT_TRUE(ParseHowListing(std::string("\0\r\n", 3)).size() == 1);
  EXPECT_TRUE(IsRegionKeyword("FIXED") && !IsRegionKeyword("fixed") && !IsRegionKeyword(" FIXED"));
  EXPECT_EQ(Joined({RowProjectName("C:\\jobs\\T2"), RowProjectName("/jobs/T3"), RowProjectName("T4")}), "T2|T3|T4");
}

class RegionListing : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("REG");
    session.RegionJobFolder = JobDir();
    session.RegionJobName = "REG";
  }
  FileChoice Def(const std::string& folder, const std::string& name) { return {folder + name + ".def", name + ".def"}; }
};

TEST_F(RegionListing, EditsSaveAtOnceAndKeywordsGoBeforeTheSelection) {
  RegionConsole console(session);
  console.rows = {"T1", "T2", "T3"};
  console.selected = 2;
  console.InsertKeyword(kKeywordNorel);
  EXPECT_EQ(console.rows, (std::vector<std::string>{"T1", "T2", "NOREL", "T3"}));
  EXPECT_EQ(ReadJob("REG.how"), "T1\r\nT2\r\nNOREL\r\nT3\r\n");

  // Add with row 3 selected puts the project in row 4; from another folder the path is kept,
  // from the region's own folder only the name.
  console.selected = 2;
  user.files.push_back(Def("/elsewhere/", "T7"));
  console.Add();
  EXPECT_EQ(console.rows[3], "/elsewhere/T7");
  console.selected = -1;
  user.files.push_back(Def(JobDir(), "T8"));
  console.Add();
  EXPECT_EQ(console.rows.back(), "T8");
  console.chkNoPath = true;
  user.files.push_back(Def("/elsewhere/", "T9"));
  console.Add();
  EXPECT_EQ(console.rows.back() + "|" + console.addFolder, "T9|/elsewhere/");
  EXPECT_EQ(session.region.RegionDirty, 0);

  // Up on the first row and down on the last change nothing; a move keeps the row selected.
  const auto before = console.rows;
  console.selected = 0;
  console.MoveUp();
  console.selected = static_cast<int>(console.rows.size()) - 1;
  console.MoveDown();
  EXPECT_EQ(console.rows, before);
  console.selected = 0;
  console.MoveDown();
  EXPECT_EQ(std::tuple(console.rows[1], console.selected), std::tuple("T1", 1));

  // Save does nothing; removing every row leaves an empty listing.
  const std::string saved = ReadJob("REG.how");
  console.Save();
  EXPECT_EQ(ReadJob("REG.how"), saved);
  while (!console.rows.empty()) {
    console.selected = 0;
    console.Remove();
  }
  EXPECT_EQ(ReadJob("REG.how"), "");
  EXPECT_TRUE(user.messages.empty());
}

// Only the file name loses its extension: a point in a folder's name stays in the entry.
TEST_F(RegionListing, AddCutsTheFileNameNotThePathAtItsFirstPoint) {
  std::filesystem::create_directories(root / "j.smith" / "reg.2024");
  session.RegionJobFolder = (root / "j.smith" / "reg.2024").string() + "/";
  RegionConsole console(session);
  user.files.push_back(Def("/home/j.smith/", "T1N2E"));
  console.Add();
  user.files.push_back(FileChoice{"/home/j.smith/T1N3E.old.def", "T1N3E.old.def"});
  console.Add();
  // A project in the region's own folder, and one added without its path.
  user.files.push_back(Def(session.RegionJobFolder, "T2N2E"));
  console.Add();
  console.chkNoPath = true;
  user.files.push_back(Def("/home/j.smith/", "T3N2E"));
  console.Add();
  EXPECT_EQ(console.rows, (std::vector<std::string>{"/home/j.smith/T1N2E", "/home/j.smith/T1N3E", "T2N2E", "T3N2E"}));
  EXPECT_EQ(ReadBytes(root / "j.smith" / "reg.2024" / "REG.how"),
            "/home/j.smith/T1N2E\r\n/home/j.smith/T1N3E\r\nT2N2E\r\nT3N2E\r\n");
  EXPECT_EQ(console.addFolder, "/home/j.smith/");
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(RegionListing, EditInvalidatesEverythingAfterTheMergeAndWithoutARegionStaysDirty) {
  RegionConsole console(session);
  console.enabled = {false, true, true, true, true, true, true, true};
  console.InsertKeyword(kKeywordFixed);
  EXPECT_EQ(console.enabled, (RegionCommands{true, false, false, false, true, true, true, true}));
  EXPECT_TRUE(user.messages.empty());

  // No region to save to: told, and the list stays dirty.
  session.RegionJobFolder.clear();
  session.RegionJobName.clear();
  console.InsertKeyword(kKeywordFixed);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, kMsgCannotWriteHow);
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_TRUE(console.focusFolder);
  EXPECT_EQ(session.region.RegionDirty, -1);
  // A merge then refuses.
  console.Merge();
  EXPECT_EQ(user.messages.back().text, kMsgSaveBeforeMerge);
  EXPECT_TRUE(processes.launches.empty());
}

TEST_F(RegionListing, OpeningReadsTheListingAndSetsTheStates) {
  WriteJob("REG.how", {"T1", "", "FIXED", "T2"});
  WriteJob("REG.lsa", {"x"});
  session.region.MatchTolerance = 2.5;
  RegionConsole console(session);
  console.Open();
  EXPECT_EQ(console.rows, (std::vector<std::string>{"T1", "FIXED", "T2"}));
  EXPECT_EQ(console.txtProject + "|" + console.txtTolerance, "REG|2.5");
  EXPECT_EQ(std::tuple(console.enabled.cmdAdjust, console.enabled.cmdViewRegion, console.enabled.cmdParse,
                       console.enabled.cmdTest),
            std::tuple(true, true, false, false));
}

TEST_F(RegionListing, FolderButtonCreatesTheProjectWithItsQuestions) {
  RegionConsole console(session);
  console.txtProject = "REG";
  WriteTool("default.def", {"DEFAULTS"});
  user.files.push_back(FileChoice{JobDir() + "NEWREG.def", "NEWREG.def"});
  user.answers.push_back(Answer::Yes);
  console.FolderButton();
  EXPECT_EQ(user.fileRequests[0].title, "Select or Create project");
  EXPECT_EQ(user.fileRequests[0].filter, "REG.def |REG.def|All project definition files (*.def)|*.def");
  EXPECT_EQ(user.messages[0].text, "Setup project with default properties?");
  EXPECT_EQ(ReadJob("NEWREG.def") + ReadJob("TEMP.JOB"), "DEFAULTS\r\nNEWREG\r\n");
  EXPECT_TRUE(JobHas("Nad27.con"));
  EXPECT_EQ(session.RegionJobName + "|" + console.txtProject, "NEWREG|NEWREG");

  // Without defaults: No tells what remains to be done, and nothing runs.
  std::filesystem::remove(toolPath / "default.def");
  user.files.push_back(FileChoice{JobDir() + "OTHER.def", "OTHER.def"});
  user.answers.push_back(Answer::No);
  console.FolderButton();
  EXPECT_EQ(user.messages[1].text + "|" + user.messages[2].text,
            "Setup project properties now?|You will need to set project properties before running merge");
  EXPECT_TRUE(processes.launches.empty());
}

}  // namespace
}  // namespace tessel::test
