// The APD import: the split of .raw into .raw and .apd, the .add built by absolute columns with
// the township-row and column-line tables, the .lot read after each record, the wizard's file
// list and Finish, tessel-batch's run of it, and the command "Import APD".

#include <filesystem>
#include <string>
#include <vector>

#include "archives/apd_import.h"
#include "model/paths.h"
#include "process_probe.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

// An APD record as the drafting software writes it into .raw: first identifier at 1, second at
// 10, quadrant at 27, bearing at 31 (four implied decimals), the marker at 50.
std::string ApdRow(const std::string& a, const std::string& b, const std::string& quadrant, const std::string& bearing,
                   const std::string& tail = "") {
  return Row({{1, a}, {10, b}, {27, quadrant}, {31, bearing}, {50, "999999RPB" + tail}});
}

// The .add lines, written out column by column.
//                                 1234567890123456789012345678901234567890123456789012345
const std::string kTieRow3 =      " 2      0 300100 300700 999.99900  2      .000      .000";
const std::string kTieColumn4 =   " 2      0 100400 700400 999.99900  2      .000      .000";
const std::string kTieColumn6 =   " 2      0 100600 700600 999.99900  2      .000      .000";
const std::string kTieNone =      " 2      0               999.99900  2      .000      .000";

TEST(ApdLines, MarkerCountsAfterTrimmingOnly) {
  for (const char* line : {"100100   200100 999999RPB", "100100   200100 999999RPB   ", "  999999RPB"}) {
    EXPECT_TRUE(IsApdLine(line)) << line;
  }
  // Only blanks are trimmed: a tab after the marker hides it.
  for (const char* line : {"100100   200100 999999RPBX", "100100   200100 999999rpb", "999999RP", "999999RPB\t"}) {
    EXPECT_FALSE(IsApdLine(line)) << line;
  }
}

TEST(ApdLines, SplitKeepsTheFirstTwoLinesAndTheOrder) {
  const std::vector<std::string> raw = {"HEADING 999999RPB", "999999RPB", "r1", ApdRow("1", "2", "1", "1"), "r2",
                                        ApdRow("3", "4", "1", "1", "  ")};
  const ApdSplit split = SplitApdRaw(raw);
  EXPECT_EQ(split.raw, (std::vector<std::string>{"HEADING 999999RPB", "999999RPB", "r1", "r2"}));
  EXPECT_EQ(split.apd, (std::vector<std::string>{raw[3], raw[5]}));
  EXPECT_TRUE(SplitApdRaw({}).raw.empty());
  EXPECT_EQ(SplitApdRaw({"only"}).raw, std::vector<std::string>{"only"});
}

TEST(ApdLines, BearingTextKeepsEveryIntegerDigitAndPadsToEight) {
  for (const auto& [bearing, text] : {std::pair{"00453015", "45.30150"}, {"00053015", " 5.30150"}, {"     512", "  .05120"},
                                      {"01000000", "100.00000"}, {"99999999", "9999.99990"}}) {
    EXPECT_EQ(ApdBearingText(ApdRow("1", "2", "1", bearing)), text) << bearing;
  }
  // A line shorter than the field: bearing 0.
  EXPECT_EQ(ApdBearingText("100100   200100"), "  .00000");
  EXPECT_EQ(ApdBearingText(""), "  .00000");
}

TEST(ApdLines, TieLineTablesApplyInOrderAndOtherwiseCarryOver) {
  const TieLine before{"111111", "222222"};
  struct Case {
    const char* second;
    const char* from;
    const char* to;
  };
  const std::vector<Case> cases = {
      {"910500", "100100", "100700"}, {"970000", "700100", "700700"}, {"980000", "111111", "222222"},
      {"900100", "111111", "222222"}, {"123045", "100400", "700400"}, {"920061", "100600", "700600"},
      {"920008", "200100", "200700"}, {"123077", "100700", "700700"}, {"123087", "111111", "222222"}, {"9", "111111", "222222"},
      {"", "111111", "222222"},       {"1230", "111111", "222222"}};
  for (const Case& c : cases) {
    const TieLine tie = ChooseTieLine(c.second, before);
    EXPECT_EQ(tie.from, c.from) << c.second;
    EXPECT_EQ(tie.to, c.to) << c.second;
  }
}

TEST(ApdLines, RecordsBecomeBearingAndIntersectLinesByAbsoluteColumns) {
  const std::vector<std::string> apd = {
      ApdRow("200300", "030700", "2", "00453015"),   // 930700: row 3
      ApdRow("200400", "000100", "3", "01000000"),   // 900100: neither table, row 3 carried
      ApdRow("200500", "123045", "4", "00000512"),   // column line 4
      ApdRow("200600", "920061", "1", "00100000"),   // row 2, then column line 6
  };
  int lotReads = 0;
  const AddBuild build = BuildAddLines(apd, [&] {
    ++lotReads;
    return true;
  });
  EXPECT_EQ(build.end, AddBuildEnd::Complete);
  EXPECT_EQ(lotReads, 4);
  //                                         1234567890123456789012345678901234567890123456789012345
  const std::vector<std::string> expected = {" 2 930700 200300      2  45.30150  2      .000      .000",
                                             kTieRow3,
                                             " 2 900100 200400      3  100.00000 2      .000      .000",
                                             kTieRow3,
                                             " 2 123045 200500      4    .05120  2      .000      .000",
                                             kTieColumn4,
                                             " 2 920061 200600      1  10.00000  2      .000      .000",
                                             kTieColumn6};
  EXPECT_EQ(build.lines, expected);
}

// A first record without a table hit has empty ends; an unreadable .lot ends the build after the
// first record (no record, no read); a bearing beyond a double ends it quietly.
TEST(ApdLines, BuildEndsWithItsCause) {
  int lotReads = 0;
  const auto build = [&lotReads](const std::vector<std::string>& apd, bool lotReadable) {
    lotReads = 0;
    return BuildAddLines(apd, [&lotReads, lotReadable] { return ++lotReads > 0 && lotReadable; });
  };
  EXPECT_EQ(build({ApdRow("100100", "000100", "1", "00000000")}, true).lines,
            (std::vector<std::string>{" 2 900100 100100      1    .00000  2      .000      .000", kTieNone}));
  const std::vector<std::string> two = {ApdRow("1", "910000", "1", "1"), ApdRow("2", "920000", "1", "1")};
  AddBuild b = build(two, false);
  EXPECT_EQ(b.end, AddBuildEnd::LotUnreadable);
  EXPECT_EQ(lotReads, 1);
  EXPECT_EQ(b.lines.size(), 2u);
  EXPECT_EQ(build({}, false).end, AddBuildEnd::Complete);
  EXPECT_EQ(lotReads, 0);
  b = build({two[0], ApdRow("2", "920000", "1", "9E999999")}, true);
  EXPECT_EQ(b.end, AddBuildEnd::BadBearing);
  EXPECT_EQ(b.lines.size(), 2u);
}

TEST(ApdLines, LotFirstLineNeedsAnyLine) {
  EXPECT_EQ(LotFirstLine(""), std::nullopt);
  EXPECT_EQ(LotFirstLine("\r\n"), std::string());
  EXPECT_EQ(LotFirstLine("LOT 1\r\nLOT 2\r\n"), std::string("LOT 1"));
  EXPECT_EQ(LotFirstLine("no end"), std::string("no end"));
}

class ApdImport : public JobFixture {
 protected:
  void WriteProject(const std::vector<std::string>& raw) {
    WriteJob("T1N2E.def", DefFile(2));
    WriteJob("T1N2E.raw", raw);
    WriteJob("T1N2E.con", {"control"});
    WriteJob("T1N2E.sid", {"surveys"});
    WriteJob("T1N2E.lot", {"LOT 1"});
  }
  ApdFiles Use() {
    const std::string def = JobDir() + "T1N2E.def";
    return ApdUseProject(session, def, "T1N2E.def");
  }
  bool Finish() {
    return ApdFinish(session, [this](const std::string& text) { progress.push_back(text); });
  }
  // temp.bat as the scripted run of recpad with apdin.001 wants it.
  std::string Batch() const {
    std::string text(1, '"');
    text.append(ToolDir()).push_back(PathSeparator());
    return text.append("recpad.exe\"  <\"").append(JobDir()).append("apdin.001\"\r\nexit\r\n");
  }

  std::vector<std::string> progress;
  const std::vector<std::string> rawFile = {
      "HEADING",
      "999999",
      RawRow("100100", "100200", "80.00", "1", "0.0000", "1"),
      ApdRow("200300", "030700", "2", "00453015"),
      RawRow("100200", "100300", "80.00", "1", "0.0000", "1"),
      ApdRow("200400", "000100", "3", "01000000", "   "),
      "999998",
  };
};

TEST_F(ApdImport, FileListNamesEachFileOrItsNotFoundText) {
  WriteJob("T1N2E.def", DefFile(2));
  ApdFiles files = Use();
  EXPECT_EQ(files.lines, (std::vector<std::string>{"Raw file (T1N2E.raw) not found",
                                                   "Control file (T1N2E.con) not found",
                                                   "Survey Identifiers (T1N2E.sid) not found",
                                                   "Lot file (T1N2E.lot) not found"}));
  EXPECT_FALSE(files.finishEnabled);
  EXPECT_EQ(session.JobName, "T1N2E");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "T1N2E\r\n");
  EXPECT_EQ(session.CurrentFolder, JobDir());

  WriteJob("T1N2E.RAW", {"x"});
  WriteJob("T1N2E.con", {"x"});
  WriteJob("T1N2E.sid", {"x"});
  files = Use();
  EXPECT_EQ(files.lines, (std::vector<std::string>{"T1N2E.raw", "T1N2E.con", "T1N2E.sid",
                                                   "Lot file (T1N2E.lot) not found"}));
  // A missing .lot is listed but does not hold Finish back.
  EXPECT_TRUE(files.finishEnabled);
  fs::remove(jobPath / "T1N2E.sid");
  EXPECT_FALSE(Use().finishEnabled);
}

TEST_F(ApdImport, BrowseUsesTheJobDialogAndACancelChangesNothing) {
  WriteProject(rawFile);
  EXPECT_EQ(ApdBrowse(session), std::nullopt);
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].title, "Select a job to view");
  EXPECT_EQ(user.fileRequests[0].filter, "Project Definition files|*.def");
  EXPECT_TRUE(session.JobBase.empty());
  user.files.push_back(FileChoice{JobDir() + "T1N2E.def", "T1N2E.def"});
  const auto files = ApdBrowse(session);
  ASSERT_TRUE(files.has_value());
  EXPECT_TRUE(files->finishEnabled);
  EXPECT_EQ(session.JobBase, JobDir() + "T1N2E");
}

TEST_F(ApdImport, FinishSplitsOnceBuildsAddAndPreparesTheControlImport) {
  WriteProject(rawFile);
  const std::string original = ReadJob("T1N2E.raw");
  ASSERT_TRUE(Use().finishEnabled);
  EXPECT_TRUE(Finish());

  EXPECT_EQ(progress, (std::vector<std::string>{"...Analyzing APD raw file",
                                                "...Analyzing APD raw file\n...Building .add file",
                                                "...Analyzing APD raw file\n...Building .add file\n...Importing control"}));
  EXPECT_EQ(ReadJob("T1N2E.ra2"), original);
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({rawFile[0], rawFile[1], rawFile[2], rawFile[4], rawFile[6]}));
  EXPECT_EQ(ReadJob("T1N2E.apd"), Text({rawFile[3], rawFile[5]}));
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({" 2 930700 200300      2  45.30150  2      .000      .000", kTieRow3,
                                        " 2 900100 200400      3  100.00000 2      .000      .000", kTieRow3}));
  EXPECT_EQ(ReadJob("apdin.001"), "4\r\n5\r\n1\r\n1\r\n9\r\n8\r\nN\r\n");
  EXPECT_EQ(ReadJob("temp.bat"), Batch());
  for (const char* name : {"Nad27.con", "Nad83.con", "Table.dat", "Zone.dat"}) EXPECT_TRUE(JobHas(name)) << name;
  EXPECT_EQ(user.title, "Tessel " + JobDir() + "T1N2E");
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"APD Import complete.  You may now proceed to boundary transfer."});
  // The wizard prepares the run but starts nothing.
  EXPECT_TRUE(processes.launches.empty());

  // The .apd now there guards against a second split.
  const std::string raw = ReadJob("T1N2E.raw"), apd = ReadJob("T1N2E.apd"), add = ReadJob("T1N2E.add");
  WriteJob("T1N2E.ra2", {"older"});
  ASSERT_TRUE(Finish());
  EXPECT_EQ(ReadJob("T1N2E.raw"), raw);
  EXPECT_EQ(ReadJob("T1N2E.apd"), apd);
  EXPECT_EQ(ReadJob("T1N2E.add"), add);
  EXPECT_EQ(ReadJob("T1N2E.ra2"), "older\r\n");
}

TEST_F(ApdImport, TwoLineRawGivesEmptyApdAndEmptyAdd) {
  WriteProject({"HEADING 999999RPB", ApdRow("1", "910000", "1", "1")});
  WriteJob("T1N2E.add", {"an older list"});
  Use();
  EXPECT_TRUE(Finish());
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({"HEADING 999999RPB", ApdRow("1", "910000", "1", "1")}));
  EXPECT_EQ(ReadJob("T1N2E.apd"), "");
  EXPECT_EQ(ReadJob("T1N2E.add"), "");
}

TEST_F(ApdImport, MissingOrEmptyLotEndsTheBuildWithAMessageAndRa2KeepsTheRaw) {
  for (const bool present : {false, true}) {
    WriteProject(rawFile);
    fs::remove(jobPath / "T1N2E.apd");
    fs::remove(jobPath / "apdin.001");
    if (present) WriteJobBytes("T1N2E.lot", ""); else fs::remove(jobPath / "T1N2E.lot");
    const std::string original = ReadJob("T1N2E.raw");
    user.messages.clear();
    Use();
    EXPECT_FALSE(Finish());
    EXPECT_EQ(ReadJob("T1N2E.ra2"), original);
    EXPECT_EQ(ReadJob("T1N2E.add"), Text({" 2 930700 200300      2  45.30150  2      .000      .000", kTieRow3}));
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_EQ(user.messages[0].text, "Lot file (T1N2E.lot) not found or empty: the .add file is not complete.");
    EXPECT_EQ(user.messages[0].icon, Icon::Stop);
    EXPECT_FALSE(JobHas("apdin.001"));
  }
}

TEST_F(ApdImport, RawLinesWithoutLineEndsAndWithLfAreSplitWhole) {
  WriteProject({});
  WriteJobBytes("T1N2E.raw", "HEAD\n999999\n" + ApdRow("1", "910000", "1", "1") + "\nlast");
  Use();
  EXPECT_TRUE(Finish());
  EXPECT_EQ(ReadJob("T1N2E.raw"), "HEAD\r\n999999\r\nlast\r\n");
  EXPECT_EQ(ReadJob("T1N2E.ra2"), "HEAD\n999999\n" + ApdRow("1", "910000", "1", "1") + "\nlast");
}

int reloads = 0;
void CountReload(Session&) { ++reloads; }

class ImportApdCommandTest : public ApdImport {
 protected:
  void SetUp() override {
    UseJob();
    session.reloadJob = &CountReload;
    reloads = 0;
  }
};

TEST_F(ImportApdCommandTest, SplitsRunsTheScriptHiddenRereadsAndDeletesTempBat) {
  WriteProject(rawFile);
  std::string batch, answers;
  std::vector<int> reloadsAtRun;
  processes.during = [&] {
    batch = ReadJob("temp.bat");
    answers = ReadJob("apdin.001");
    reloadsAtRun.push_back(reloads);
  };
  ImportApdCommand(session);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "RunCode");
  EXPECT_EQ(processes.launches[0].commandLine, "temp.bat");
  EXPECT_EQ(processes.launches[0].folder, JobDir());
  EXPECT_EQ(processes.modes, std::vector<ShowMode>{ShowMode::Hidden});
  EXPECT_EQ(batch, Batch());
  EXPECT_EQ(answers, "4\r\n5\r\n1\r\n1\r\n9\r\n8\r\nN\r\n");
  EXPECT_EQ(reloads, 1);
  EXPECT_FALSE(JobHas("temp.bat"));
  EXPECT_TRUE(JobHas("apdin.001"));
  EXPECT_EQ(ReadJob("T1N2E.apd"), Text({rawFile[3], rawFile[5]}));
  EXPECT_TRUE(user.messages.empty());

  // No guard: a second run splits again and .apd is replaced with an empty file.
  ImportApdCommand(session);
  EXPECT_EQ(ReadJob("T1N2E.apd"), "");
  // The job is reread after each run, not before.
  EXPECT_EQ(reloadsAtRun, (std::vector<int>{0, 1}));
  EXPECT_EQ(reloads, 2);
  EXPECT_EQ(ReadJob("T1N2E.ra2"), Text({rawFile[0], rawFile[1], rawFile[2], rawFile[4], rawFile[6]}));
}

TEST_F(ImportApdCommandTest, NeedsAJobAndARawFile) {
  ImportApdCommand(session);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "RAW file not found, check path");
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_TRUE(processes.launches.empty());

  session.JobBase.clear();
  WriteProject(rawFile);
  ImportApdCommand(session);
  EXPECT_EQ(user.messages.back().text, "You must first Open or Create a job.");
  EXPECT_TRUE(processes.launches.empty());
  EXPECT_FALSE(JobHas("T1N2E.apd"));
  EXPECT_EQ(reloads, 0);
}

}  // namespace
}  // namespace tessel::test
