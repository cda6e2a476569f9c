// The reports of the suite in the configured editor: the ten rows, the unquoted path of the
// report commands, the message of a missing report, and Project Reports with its dialog.

#include <set>
#include <string>
#include <vector>

#include "model/paths.h"
#include "test_support.h"
#include "job/command_table.h"
#include "job/reports.h"

namespace tessel::test {
namespace {

class Reports : public JobFixture {
 protected:
  void SetUp() override { UseJob(); }
  std::string Editor() const { return PlatformProgram(session.config.EditorPath); }
};

TEST_F(Reports, TableHoldsThreeMenuEntriesAndSevenListings) {
  const std::vector<ReportRow>& rows = ReportTable();
  ASSERT_EQ(rows.size(), 10u);
  EXPECT_EQ(rows[0].name, "mnuReportsGen");
  EXPECT_EQ(rows[0].caption, "Section Closure Report (GEN)");
  EXPECT_EQ(rows[1].name, "mnuReportsAdj");
  EXPECT_EQ(rows[1].caption, "Least Squares Analysis Report (ADJ)");
  EXPECT_EQ(rows[2].name, "mnuReportsSub");
  EXPECT_EQ(rows[2].caption, "Proportioning & Subdivision Report (SUB)");
  const std::vector<std::string> extensions = {".GEN", ".ADJ", ".SUB", ".CHK", ".COR",
                                               ".PGC", ".CON", ".RAW", ".SID", ".INT"};
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].extension, extensions[i]);
    EXPECT_EQ(rows[i].message, extensions[i].substr(1) + " file not found");
    EXPECT_EQ(rows[i].name.empty(), i >= 3) << rows[i].caption;
  }
}

TEST_F(Reports, EveryRowOpensItsFileOrTellsItIsMissing) {
  for (const ReportRow& row : ReportTable()) {
    user.messages.clear();
    processes.launches.clear();
    OpenReport(session, row);
    ASSERT_EQ(user.messages.size(), 1u) << row.extension;
    EXPECT_EQ(user.messages[0].text, row.message);
    EXPECT_EQ(user.messages[0].icon, Icon::Stop);
    EXPECT_TRUE(processes.launches.empty());

    WriteJob("T1N2E" + row.extension, {"REPORT"});
    user.messages.clear();
    OpenReport(session, row);
    EXPECT_TRUE(user.messages.empty());
    ASSERT_EQ(processes.launches.size(), 1u);
    EXPECT_EQ(processes.launches[0].kind, "Spawn");
    EXPECT_EQ(processes.launches[0].launch, (Launch{Editor(), {JobDir() + "T1N2E" + row.extension}}));
    EXPECT_EQ(processes.launches[0].folder, JobDir());
  }
}

TEST_F(Reports, ReportIsFoundInTheCaseTheSuiteWroteIt) {
  WriteJob("T1N2E.adj", {"ADJUSTMENT"});
  session.config.EditorPath = "/usr/bin/gedit";
  OpenReport(session, ReportTable()[1]);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].commandLine, "/usr/bin/gedit " + JobDir() + "T1N2E.adj");
}

TEST_F(Reports, JobPathWithBlanksAndQuotesIsOneArgument) {
  std::filesystem::create_directory(root / "my \"job\"");
  session.JobFolder = (root / "my \"job\"").string() + PathSeparator();
  session.JobBase = session.JobFolder + "T1N2E";
  session.CurrentFolder = session.JobFolder;
  WriteLines(root / "my \"job\"" / "T1N2E.GEN", {"GEN"});
  OpenReport(session, ReportTable()[0]);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].launch, (Launch{Editor(), {session.JobBase + ".GEN"}}));
  // Shown as one line, the argument is quoted with its quotes doubled.
  EXPECT_EQ(processes.launches[0].commandLine, Editor() + " \"" + (root / "my \"\"job\"\"").string() +
                                                   PathSeparator() + "T1N2E.GEN\"");
}

TEST_F(Reports, ProjectReportsAsksOverTheJobFilesAndOpensTheChoice) {
  ProjectReports(session);  // cancelled
  ASSERT_EQ(user.fileRequests.size(), 1u);
  const FileRequest& request = user.fileRequests[0];
  EXPECT_EQ(request.title, "Select a Report or Text File to view");
  EXPECT_EQ(request.filter, "Project Files (T1N2E.*)|T1N2E.*|All Files (*.*)|*.*");
  EXPECT_EQ(request.initialFolder, JobDir());
  EXPECT_FALSE(request.save);
  EXPECT_TRUE(processes.launches.empty());

  user.files.push_back(FileChoice{JobDir() + "T1N2E.gen", "T1N2E.gen"});
  ProjectReports(session);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "Spawn");
  EXPECT_EQ(processes.launches[0].launch, (Launch{Editor(), {JobDir() + "T1N2E.gen"}}));
  EXPECT_EQ(processes.launches[0].folder, JobDir());
}

}  // namespace
}  // namespace tessel::test
