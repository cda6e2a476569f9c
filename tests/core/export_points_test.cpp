// The export of the selected points: the columns of each line by the alignment table, the
// dialog, the refusal of the job's own name, the file and the .def copied beside it.

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "test_support.h"
#include "tools/export_points.h"

namespace tessel::test {
namespace {

// The 1-based columns where `text` starts and ends in `line`.
std::pair<int, int> Columns(const std::string& line, const std::string& text) {
  const auto at = line.find(text);
  if (at == std::string::npos) return {-1, -1};
  return {static_cast<int>(at) + 1, static_cast<int>(at + text.size())};
}

TEST(ExportLine, XEndsInColumn31AndYIn45ByTheAlignmentTable) {
  // Identifier, X, Y; the line's start, the X and Y texts, the column X starts at.
  const std::tuple<std::string, double, double, std::string, std::string, std::string, int> cases[] = {
      {"100100", 123456.5, 123456.25, " G100100 ", "123456.500", "123456.250", 22},
      {"100100", 2098745.0, 476318.0, " G100100 ", "2098745.000", "476318.000", 21},
      {"100100", 12345678.1234, 1234567.8765, " G100100 ", "12345678.123", "1234567.877", 20},
      {"100100", 476318.0, 12345678.0, " G100100 ", "476318.000", "12345678.000", 22},
      {"  AB12  ", 0.5, 1234.5, " GAB12 ", ".500", "1234.500", 28},
  };
  for (const auto& [id, x, y, head, xText, yText, xStart] : cases) {
    const std::string line = ExportLine(id, x, y);
    EXPECT_EQ(line.substr(0, head.size()), head) << line;
    EXPECT_EQ(Columns(line, xText), std::make_pair(xStart, 31)) << line;
    EXPECT_EQ(line[static_cast<std::size_t>(xStart) - 2], ' ') << line;
    EXPECT_EQ(Columns(line, yText).second, 45) << line;
    EXPECT_EQ(line.size(), 45u);
  }

  // A longer text starts where the last assignment within the table left it.
  ExportAlignment alignment;
  ExportLine("1", 123456.0, 1234567.0, alignment);  // X of 10 at 22, Y of 11 after 3 blanks
  // X and Y of 13 characters: neither is in the table.
  EXPECT_EQ(ExportLine("2", -12345678.0, -12345678.25, alignment),
            " G2" + std::string(18, ' ') + "-12345678.000" + "   " + "-12345678.250");
  // A line with nothing before it takes the alignment of twelve characters.
  EXPECT_EQ(Columns(ExportLine("5", -12345678.0, 1.0), "-12345678.000").first, 20);
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

TEST_F(ExportPoints, WithoutASelectionTellsTheUserFirstAndAsksNothing) {
  Export({}, "PART.cor");
  EXPECT_EQ(user.status[2], std::vector<std::string>{"Selected points written to a .cor file"});
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Select points first, then choose Export"});
  EXPECT_TRUE(user.fileRequests.empty());
}

TEST_F(ExportPoints, ReplacesTheChosenFileWithTheSelectionInListOrderAndTheDefBeside) {
  WriteJob("PART.cor", {"OLD", "OLD", "OLD"});
  Export({3, 1}, "PART.cor");
  ASSERT_EQ(user.fileRequests.size(), 1u);
  const FileRequest& request = user.fileRequests[0];
  EXPECT_EQ(request.filter, "Cor files *.cor)|*.cor");
  EXPECT_EQ(request.defaultExtension, ".cor");
  EXPECT_TRUE(request.save && request.overwritePrompt);
  EXPECT_EQ(request.initialFolder, JobDir());
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100300", 2101385.0, 476322.0), ExportLine("100100", 2098745.0, 476318.0)}));
  EXPECT_EQ(ReadJob("PART.def"), ReadJob("T1N2E.def"));
}

TEST_F(ExportPoints, TheJobsOwnNameIsRefusedCancelWritesNothingAndAMissingDefIsSkipped) {
  WriteJob("T1N2E.cor", {"JOB COORDINATES"});
  Export({1}, "T1N2E.cor");
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You MUST enter a different name for the exported file.");
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_EQ(ReadJob("T1N2E.cor"), "JOB COORDINATES\r\n");

  // The comparison is exact: another case is a different name here.
  user.messages.clear();
  Export({}, "t1n2e.cor");
  EXPECT_TRUE(user.messages.empty());

  std::filesystem::remove_all(jobPath);
  std::filesystem::create_directory(jobPath);
  Export({}, "");
  EXPECT_TRUE(user.messages.empty() && std::filesystem::is_empty(jobPath));

  EXPECT_NO_THROW(Export({}, "PART.cor"));  // the job's .def is gone with the rest, and the user is told
  EXPECT_TRUE(JobHas("PART.cor"));
  EXPECT_FALSE(JobHas("PART.def"));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Path/File access error: " + JobDir() + "T1N2E.def"});
}

TEST_F(ExportPoints, ADefAlreadyBesideTheExportIsReplacedOnlyWhenTheUserAgrees) {
  WriteJob("PART.DEF", {"ANOTHER JOB"});
  user.answers = {Answer::No};
  Export({1}, "PART.cor");
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, ReplaceDefQuestion(JobDir() + "PART.DEF"));
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(ReadJob("PART.DEF"), "ANOTHER JOB\r\n");
  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100100", 2098745.0, 476318.0)}));
  EXPECT_FALSE(JobHas("PART.def"));

  user.answers = {Answer::Yes};
  Export({1}, "PART.cor");
  EXPECT_EQ(ReadJob("PART.DEF"), ReadJob("T1N2E.def"));
  EXPECT_FALSE(JobHas("PART.def"));
}

}  // namespace
}  // namespace tessel::test
