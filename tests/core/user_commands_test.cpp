// The user's commands that start programs or write files: the reports in the configured editor,
// the toolbox and toolbar programs, and the export of the selected points.

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "job/command_table.h"
#include "job/reports.h"
#include "model/paths.h"
#include "tools/export_points.h"
#include "tools/user_tools.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class Reports : public JobFixture {
 protected:
  void SetUp() override { UseJob(); }
  std::string Editor() const { return PlatformProgram(session.config.EditorPath); }
};

TEST_F(Reports, EveryRowOpensItsFileAsOneArgumentInTheSuitesCaseOrTellsItIsMissing) {
  const std::vector<std::string> extensions = {".GEN", ".ADJ", ".SUB", ".CHK", ".COR",
                                               ".PGC", ".CON", ".RAW", ".SID", ".INT"};
  ASSERT_EQ(ReportTable().size(), extensions.size());
  EXPECT_EQ(ReportTable()[2].name + " " + ReportTable()[2].caption,
            "mnuReportsSub Proportioning & Subdivision Report (SUB)");
  // A job folder with a blank in its name (and quotes, where a name may hold them: not on
  // Windows), and one report written in lower case.
#ifdef _WIN32
  const std::string folder = "my job";
  const std::string shown = folder;
#else
  const std::string folder = "my \"job\"";
  const std::string shown = "my \"\"job\"\"";
#endif
  std::filesystem::create_directory(root / folder);
  session.JobFolder = session.CurrentFolder = (root / folder).string() + PathSeparator();
  session.JobBase = session.JobFolder + "T1N2E";
  for (std::size_t i = 0; i < extensions.size(); ++i) {
    const ReportRow& row = ReportTable()[i];
    EXPECT_EQ(row.extension, extensions[i]);
    EXPECT_EQ(row.name.empty(), i >= 3) << row.caption;
    user.messages.clear();
    processes.launches.clear();
    OpenReport(session, row);
    EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{extensions[i].substr(1) + " file not found"});
    EXPECT_TRUE(user.messages.at(0).icon == Icon::Stop && processes.launches.empty());

    const std::string file = session.JobBase + (i == 1 ? ".adj" : row.extension);
    WriteLines(file, {"REPORT"});
    user.messages.clear();
    OpenReport(session, row);
    EXPECT_TRUE(user.messages.empty());
    ASSERT_EQ(processes.launches.size(), 1u);
    const RecordedLaunch& l = processes.launches[0];
    EXPECT_EQ(l.kind + " in " + l.folder, "Spawn in " + session.JobFolder);
    EXPECT_EQ(l.launch, (Launch{Editor(), {file}}));  // blanks and quotes and all, one argument
  }
  // Shown as one line, the argument is quoted with its quotes doubled.
  EXPECT_EQ(processes.launches[0].commandLine,
            Editor() + " \"" + (root / shown).string() + PathSeparator() + "T1N2E.INT\"");
}

class UserTools : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    WriteTool("mytool.sh", {"echo"});
    program = ToolDir() + PathSeparator() + "mytool.sh";
  }
  void SetEntry(int k, const std::string& path) { session.config.ToolButton[static_cast<std::size_t>(k - 1)].path = path; }

  std::string program;
};

TEST_F(UserTools, ToolboxReachesTwelveEntriesTheToolbarTenAndEachTellsItsOwnWay) {
  // "none", a path with arguments, and a file that is not there all fail the existence test.
  SetEntry(1, "none");
  SetEntry(2, program + " -x");
  SetEntry(3, ToolDir() + PathSeparator() + "gone.exe");
  for (int k = 1; k <= 3; ++k) {
    ToolboxClick(session, k);
    ToolbarUserClick(session, k);
  }
  EXPECT_TRUE(processes.launches.empty());
  const std::string box = "Setup toolbox/toolbar under Advanced Configuration";
  const std::string bar = "Setup toolbox/toolbar under Configuration Options";
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{box, bar, box, bar, box, bar}));

  user.messages.clear();
  for (int k = 1; k <= 12; ++k) SetEntry(k, program);
  for (int k : {0, 11}) ToolbarUserClick(session, k);
  ToolboxClick(session, 13);
  EXPECT_TRUE(processes.launches.empty());
  ToolbarUserClick(session, 10);
  ToolboxClick(session, 12);
  ASSERT_EQ(processes.launches.size(), 2u);
  const RecordedLaunch& l = processes.launches[1];
  EXPECT_EQ(l.kind + " " + l.commandLine + " in " + l.folder, "Spawn " + program + " in " + JobDir());
  EXPECT_TRUE(user.messages.empty());
}

TEST(ExportLine, XEndsInColumn31AndYIn45ByTheAlignmentTable) {
  const std::pair<std::string, std::string> cases[] = {
      {ExportLine("100100", 123456.5, 123456.25), Row({{1, " G100100"}, {22, "123456.500"}, {36, "123456.250"}})},
      {ExportLine("100100", 2098745.0, 476318.0), Row({{1, " G100100"}, {21, "2098745.000"}, {36, "476318.000"}})},
      {ExportLine("100100", 12345678.1234, 1234567.8765),
       Row({{1, " G100100"}, {20, "12345678.123"}, {35, "1234567.877"}})},
      {ExportLine("100100", 476318.0, 12345678.0), Row({{1, " G100100"}, {22, "476318.000"}, {34, "12345678.000"}})},
      {ExportLine("  AB12  ", 0.5, 1234.5), Row({{1, " GAB12"}, {28, ".500"}, {38, "1234.500"}})},
  };
  for (const auto& [line, want] : cases) EXPECT_EQ(line, want);
  // A longer text starts where the last assignment within the table left it.
  ExportAlignment alignment;
  ExportLine("1", 123456.0, 1234567.0, alignment);  // X of 10 at 22, Y of 11 after 3 blanks
  // X and Y of 13 characters: neither is in the table.
  EXPECT_EQ(ExportLine("2", -12345678.0, -12345678.25, alignment),
            " G2" + std::string(18, ' ') + "-12345678.000" + "   " + "-12345678.250");
  // A line with nothing before it takes the alignment of twelve characters.
  EXPECT_EQ(ExportLine("5", -12345678.0, 1.0).find("-12345678.000"), 19u);
}

class ExportPoints : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    WriteJob("T1N2E.def", DefFile(2));
    SetPoints({{"100100", 2098745.0, 476318.0}, {"100200", 2100065.5, 476320.25}, {"100300", 2101385.0, 476322.0}});
  }
  // Picks points as the selection list holds them, then exports to `name` (none: cancelled).
  void Export(const std::vector<int>& points, const std::string& name) {
    for (std::size_t j = 0; j < points.size(); ++j) {
      session.selection.PointList.push_back(session.points.PointIds(points[j]));
      session.selection.SelectedPoints.at(static_cast<int>(j)) = points[j];
    }
    if (!name.empty()) user.files.push_back(FileChoice{JobDir() + name, name});
    ExportSelectedPoints(session);
  }
};

TEST_F(ExportPoints, ReplacesTheChosenFileWithTheSelectionInListOrderAndTheDefBeside) {
  Export({}, "PART.cor");  // without a selection the user is told first, and nothing is asked
  EXPECT_EQ(user.status[2], std::vector<std::string>{"Selected points written to a .cor file"});
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Select points first, then choose Export"});
  EXPECT_TRUE(user.fileRequests.empty());

  user = RecordingUserPort{};
  WriteJob("PART.cor", {"OLD", "OLD", "OLD"});
  Export({3, 1}, "PART.cor");
  ASSERT_EQ(user.fileRequests.size(), 1u);
  const FileRequest& request = user.fileRequests[0];
  EXPECT_EQ(request.filter + " " + request.defaultExtension + " " + request.initialFolder,
            "Cor files *.cor)|*.cor .cor " + JobDir());
  EXPECT_TRUE(request.save && request.overwritePrompt && user.messages.empty());
  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100300", 2101385.0, 476322.0), ExportLine("100100", 2098745.0, 476318.0)}));
  EXPECT_EQ(ReadJob("PART.def"), ReadJob("T1N2E.def"));
}

TEST_F(ExportPoints, ADefBesideTheExportIsReplacedOnlyWhenAgreedTheJobsOwnNameIsRefusedAndAMissingDefIsSkipped) {
  WriteJob("PART.DEF", {"ANOTHER JOB"});
  user.answers = {Answer::No};
  Export({1}, "PART.cor");
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{ReplaceDefQuestion(JobDir() + "PART.DEF")});
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(ReadJob("PART.DEF"), "ANOTHER JOB\r\n");
  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100100", 2098745.0, 476318.0)}));
  EXPECT_FALSE(JobHas("PART.def"));

  user.answers = {Answer::Yes};
  Export({1}, "PART.cor");
  EXPECT_EQ(ReadJob("PART.DEF"), ReadJob("T1N2E.def"));
  EXPECT_FALSE(JobHas("PART.def"));  // the spelling already there is kept

  session.selection = Selection{};
  user = RecordingUserPort{};
  WriteJob("T1N2E.cor", {"JOB COORDINATES"});
  Export({1}, "T1N2E.cor");
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You MUST enter a different name for the exported file."});
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_EQ(ReadJob("T1N2E.cor"), "JOB COORDINATES\r\n");
  Export({}, "t1n2e.cor");  // the comparison is exact: another case is a different name
  EXPECT_EQ(user.messages.size(), 1u);

  std::filesystem::remove_all(jobPath);
  std::filesystem::create_directory(jobPath);
  Export({}, "");
  EXPECT_TRUE(std::filesystem::is_empty(jobPath));
  user.messages.clear();
  Export({}, "PART.cor");  // the job's .def is gone with the rest, and the user is told
  EXPECT_TRUE(JobHas("PART.cor") && !JobHas("PART.def"));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Path/File access error: " + JobDir() + "T1N2E.def"});
}

}  // namespace
}  // namespace tessel::test
