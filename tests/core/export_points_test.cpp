// The export of the selected points: the columns of each line by the alignment table, the
// dialog, the refusal of the job's own name, the file and the .def copied beside it.

#include <string>
#include <vector>

#include "core/coordinate_files.h"
#include "core/paths.h"
#include "test_support.h"
#include "tools/export_points.h"

namespace tessel::test {
namespace {

// The 1-based column where `text` starts in `line`, and where it ends.
int StartOf(const std::string& line, const std::string& text) {
  const auto at = line.find(text);
  return at == std::string::npos ? -1 : static_cast<int>(at) + 1;
}
int EndOf(const std::string& line, const std::string& text) {
  const int start = StartOf(line, text);
  return start < 0 ? -1 : start + static_cast<int>(text.size()) - 1;
}

TEST(ExportLine, CoordinatesOfTenToTwelveCharactersEndInColumns31And45) {
  struct Case {
    double x, y;
    std::string xText, yText;
    int xStart;
  };
  const Case cases[] = {
      {123456.5, 123456.25, "123456.500", "123456.250", 22},
      {2098745.0, 476318.0, "2098745.000", "476318.000", 21},
      {12345678.1234, 1234567.8765, "12345678.123", "1234567.877", 20},
      {476318.0, 12345678.0, "476318.000", "12345678.000", 22},
  };
  for (const Case& c : cases) {
    const std::string line = ExportLine("100100", c.x, c.y);
    EXPECT_EQ(line.substr(0, 8), " G100100") << line;
    EXPECT_EQ(StartOf(line, c.xText), c.xStart) << line;
    EXPECT_EQ(EndOf(line, c.xText), 31) << line;
    EXPECT_EQ(EndOf(line, c.yText), 45) << line;
    EXPECT_EQ(line.size(), 45u);
  }
  EXPECT_EQ(ExportLine("100100", 2098745.0, 476318.0),
            " G100100" + std::string(12, ' ') + "2098745.000" + std::string(4, ' ') + "476318.000");
}

TEST(ExportLine, IdentifierIsTrimmedAndPicturesHaveNoLeadingZero) {
  const std::string line = ExportLine("  AB12  ", 0.5, 1234.5);
  EXPECT_EQ(line.substr(0, 7), " GAB12 ");
  EXPECT_EQ(EndOf(line, ".500"), 31);
  EXPECT_EQ(line[26], ' ');  // no "0" before the point
  EXPECT_EQ(EndOf(line, "1234.500"), 45);
}

TEST(ExportLine, LongerTextStartsWhereTheLastAssignmentLeftIt) {
  ExportAlignment alignment;
  ExportLine("1", 123456.0, 1234567.0, alignment);  // X of 10 at 22, Y of 11 after 3 blanks
  EXPECT_EQ(alignment.xColumn, 22);
  EXPECT_EQ(alignment.yBlanks, 3);
  // X of 13 characters and Y of 13 characters: neither is in the table.
  const std::string line = ExportLine("2", -12345678.0, -12345678.25, alignment);
  EXPECT_EQ(StartOf(line, "-12345678.000"), 22);
  EXPECT_EQ(line, " G2" + std::string(18, ' ') + "-12345678.000" + "   " + "-12345678.250");
  EXPECT_EQ(alignment.xColumn, 22);

  ExportLine("3", 12345678.0, 12345678.0, alignment);  // 12 and 12: 20 and 2
  const std::string after = ExportLine("4", -12345678.0, -12345678.0, alignment);
  EXPECT_EQ(StartOf(after, "-12345678.000"), 20);
  EXPECT_EQ(after.substr(32), "  -12345678.000");
  // A line with nothing before it takes the alignment of twelve characters.
  EXPECT_EQ(StartOf(ExportLine("5", -12345678.0, 1.0), "-12345678.000"), 20);
}

class ExportPoints : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    WriteJob("T1N2E.def", DefFile(2));
    SetPoints({{"100100", 2098745.0, 476318.0}, {"100200", 2100065.5, 476320.25}, {"100300", 2101385.0, 476322.0}});
  }
  // Picks points as the selection list holds them.
  void Select(const std::vector<int>& points) {
    for (std::size_t j = 0; j < points.size(); ++j) {
      session.selection.PointList.push_back(session.points.PointIds(points[j]));
      session.selection.SelectedPoints.at(static_cast<int>(j)) = points[j];
    }
  }
  void Choose(const std::string& name) { user.files.push_back(FileChoice{JobDir() + name, name}); }

  const std::string status = "Selected points written to a .cor file";
};

TEST_F(ExportPoints, WithoutASelectionTellsTheUserFirstAndAsksNothing) {
  ExportSelectedPoints(session);
  EXPECT_EQ(user.status[2], std::vector<std::string>{status});
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Select points first, then choose Export"});
  EXPECT_TRUE(user.fileRequests.empty());
}

TEST_F(ExportPoints, WritesTheSelectionInListOrderWithTheDefBeside) {
  Select({3, 1});
  Choose("PART.cor");
  ExportSelectedPoints(session);
  ASSERT_EQ(user.fileRequests.size(), 1u);
  const FileRequest& request = user.fileRequests[0];
  EXPECT_EQ(request.filter, "Cor files *.cor)|*.cor");
  EXPECT_EQ(request.defaultExtension, ".cor");
  EXPECT_TRUE(request.save);
  EXPECT_TRUE(request.overwritePrompt);
  EXPECT_EQ(request.initialFolder, JobDir());
  EXPECT_TRUE(user.messages.empty());

  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100300", 2101385.0, 476322.0), ExportLine("100100", 2098745.0, 476318.0)}));
  EXPECT_EQ(ReadJob("PART.def"), ReadJob("T1N2E.def"));

  // The exported set opens as a job of its own, with the "G" identifiers.
  session.JobBase = JobDir() + "PART";
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 2);
  EXPECT_EQ(session.points.PointIds(1), "G100300");
  EXPECT_DOUBLE_EQ(session.points.PointX(1), 2101385.0);
  EXPECT_DOUBLE_EQ(session.points.PointY(2), 476318.0);
}

TEST_F(ExportPoints, ReplacesAnEarlierExport) {
  WriteJob("PART.cor", {"OLD", "OLD", "OLD"});
  Select({2});
  Choose("PART.cor");
  ExportSelectedPoints(session);
  EXPECT_EQ(ReadJob("PART.cor"), Text({ExportLine("100200", 2100065.5, 476320.25)}));
}

TEST_F(ExportPoints, TheJobsOwnNameIsRefusedWithTheStopIcon) {
  WriteJob("T1N2E.cor", {"JOB COORDINATES"});
  Select({1});
  Choose("T1N2E.cor");
  ExportSelectedPoints(session);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You MUST enter a different name for the exported file.");
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_EQ(ReadJob("T1N2E.cor"), "JOB COORDINATES\r\n");

  // The comparison is exact: another case is a different name here.
  user.messages.clear();
  Choose("t1n2e.cor");
  ExportSelectedPoints(session);
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(ExportPoints, CancelKeepsTheStatusAndWritesNothing) {
  Select({1});
  ExportSelectedPoints(session);
  EXPECT_EQ(user.statusNow[2], status);
  EXPECT_TRUE(user.messages.empty());
  EXPECT_FALSE(JobHas("PART.cor"));
}

TEST_F(ExportPoints, MissingDefStillLeavesTheCorFile) {
  std::filesystem::remove(jobPath / "T1N2E.def");
  Select({1});
  Choose("PART.cor");
  EXPECT_NO_THROW(ExportSelectedPoints(session));
  EXPECT_TRUE(JobHas("PART.cor"));
  EXPECT_FALSE(JobHas("PART.def"));
}

}  // namespace
}  // namespace tessel::test
