// The regional workflow: the tools in order on the region's folder, the refusals, the states,
// the reliabilities' backup to the tempjob set and its restore byte for byte; and the
// post-region update's batch over the projects.

#include <gtest/gtest.h>

#include "model/paths.h"
#include "model/text.h"
#include "process_probe.h"
#include "regions/post_region_update.h"
#include "regions/region_console.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class RegionWorkflow : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("REG");
    session.RegionJobFolder = JobDir();
    session.RegionJobName = "REG";
    console.txtProject = "REG";
    console.rows = {"T1", "FIXED", "T2"};
  }
  std::string Launched(std::size_t k) const { return processes.launches.at(k).commandLine; }
  std::string Tool(const std::string& name) const { return ToolDir() + PathSeparator() + name + ".exe"; }
  void WriteSet(const std::string& how) {
    WriteJobBytes("REG.how", how);
    for (const char* ext : {".lsa", ".sd", ".mat", ".cor", ".pgc"}) WriteJobBytes(std::string("REG") + ext, std::string("region") + ext + "\r\n");
  }
  RegionConsole console{session};
};

TEST_F(RegionWorkflow, MergeAdjustParseRunInTheRegionsFolderAndSetTheStates) {
  // With a member of the region loaded, Merge warns and runs nothing.
  session.JobName = "T1";
  console.Merge();
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "Merging is done on the region REG\r\nThe currently loaded project is T1");
  EXPECT_EQ(user.messages[0].icon, Icon::Exclamation);
  EXPECT_TRUE(processes.launches.empty());

  session.JobName = "REG";
  console.Merge();
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(Joined({processes.launches[0].kind, Launched(0), processes.launches[0].folder}),
            Joined({"Run", Tool("twpjoin"), JobDir()}));
  EXPECT_EQ(console.enabled, (RegionCommands{true, true, false, false, false, true, false, false}));

  // No .lsa: Adjust runs nothing and says what is missing; so does Parse without .cor.
  console.Adjust();
  EXPECT_EQ(user.MessageTexts().back(), kMsgMergeBeforeAdjust);
  console.Parse();
  EXPECT_EQ(user.MessageTexts().back(), kMsgAdjustBeforeParse);
  EXPECT_EQ(processes.launches.size(), 1u);

  WriteJob("REG.lsa", {"x"});
  console.Adjust();
  EXPECT_EQ(Launched(1), Tool("fitmain"));
  EXPECT_TRUE(console.enabled.cmdParse);
  WriteJob("REG.cor", {"x"});
  console.Parse();
  EXPECT_EQ(Launched(2), Tool("twpsplit"));
  EXPECT_EQ(console.enabled, (RegionCommands{true, true, true, true, true, true, false, false}));
}

// A tool that could not be started ran nothing: a box names it and no later step opens. A tool
// that started opens them as always, whatever its exit code or end.
TEST_F(RegionWorkflow, AToolThatDidNotStartIsToldAndOpensNoStep) {
  WriteJob("REG.def", {"a", "b", "c", "2", "e", "f", "Y"});
  const std::string how = "T1\r\nFIXED\r\nT2\r\n";
  WriteSet(how);
  const RegionCommands before = console.enabled;
  const auto told = [&](const std::string& tool) {
    ASSERT_FALSE(user.messages.empty());
    EXPECT_EQ(user.messages.back().text,
              "The tool " + tool + " could not be started (" + tool + ".exe: not found in ToolFolder).\r\nNothing was run.");
    EXPECT_EQ(user.messages.back().icon, Icon::Exclamation);
    EXPECT_EQ(console.enabled, before);
  };
  processes.outcome = LaunchOutcome::NotFound;
  console.Merge();
  told("twpjoin");
  console.Adjust();
  told("fitmain");
  console.Parse();
  told("twpsplit");
  EXPECT_EQ(user.messages.size(), 3u);

  // Reliabilities' merge did not start: the set is put back at once and the panel goes.
  console.ReliabilitiesCommand();
  told("twpjoin");
  EXPECT_EQ(ReadJob("REG.how"), how);
  EXPECT_EQ(user.unloaded, (std::vector<std::string>{"frmContinue"}));

  // twprel did not start: the panel stays, and Cancel can still restore the region.
  processes.outcome = LaunchOutcome::Ended;
  console.ReliabilitiesCommand();
  const std::size_t unloaded = user.unloaded.size();
  processes.outcome = LaunchOutcome::NotFound;
  console.ContinueReliabilities();
  told("twprel");
  EXPECT_EQ(ReadJob("REG.how"), "T1\r\nNOREL\r\nT2\r\n");
  EXPECT_EQ(user.unloaded.size(), unloaded);
  console.CancelReliabilities();
  EXPECT_EQ(ReadJob("REG.how"), how);

  // Started tools advance as described, a failing exit code or a crash notwithstanding.
  const std::size_t boxes = user.messages.size();
  processes.outcome = LaunchOutcome::Ended;
  processes.exitCode = 3;
  console.Merge();
  EXPECT_EQ(console.enabled, (RegionCommands{true, true, false, false, false, true, false, false}));
  processes.outcome = LaunchOutcome::Crashed;
  console.Adjust();
  EXPECT_TRUE(console.enabled.cmdParse);
  processes.outcome = LaunchOutcome::Ended;
  console.Parse();
  EXPECT_EQ(console.enabled, (RegionCommands{true, true, true, true, true, true, false, false}));
  EXPECT_EQ(user.messages.size(), boxes);
}

TEST_F(RegionWorkflow, ViewItemAndViewRegionWalkBetweenTownshipAndRegion) {
  console.ViewItem();
  EXPECT_EQ(user.MessageTexts().back(), kMsgSelectProject);
  WriteJob("T2.COR", {CorRow("100100", "1000.000", "2000.000")});
  console.selected = 2;
  console.ViewItem();
  EXPECT_EQ(Joined({session.JobName, session.JobBase, ReadJob("TEMP.JOB")}), "T2|" + JobDir() + "T2|T2\r\n");
  EXPECT_EQ(session.points.PointCount(), 1);

  WriteJob("REG.lsa", LsaFile({ControlRow("100100", "1.0", "2.0")}, {LsaLineRow("100100", "100100")},
                              {LsaPointRow("100100", "1", "2")}));
  console.ViewRegion();
  EXPECT_EQ(Joined({session.JobName, session.JobBase, ReadJob("TEMP.JOB"), user.title}),
            "REG|" + JobDir() + "REG|REG\r\n|Tessel " + JobDir() + "REG");
  EXPECT_TRUE(console.enabled.cmdReliabilities && console.enabled.cmdTest && !console.enabled.cmdParse);
  EXPECT_TRUE(StartsWith(console.statusPanel[1], "Total Points = "));
}

TEST_F(RegionWorkflow, ReliabilitiesRefuseWithoutSdEstimatesOrWithAMissingFileBeforeTouchingAnything) {
  WriteJob("REG.def", {"a", "b", "c", "2", "e", "f", " N "});
  WriteSet("T1\r\nFIXED\r\n");
  console.ReliabilitiesCommand();
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{kMsgEstimatesFromSd}));
  EXPECT_FALSE(JobHas("tempjob.how"));
  // A file of the set missing: named, and nothing runs.
  WriteJob("REG.def", {"a", "b", "c", "2", "e", "f", "Y"});
  std::filesystem::remove(jobPath / "REG.pgc");
  user.messages.clear();
  console.ReliabilitiesCommand();
  ASSERT_EQ(user.messages.size(), 2u);
  EXPECT_NE(user.messages[1].text.find("REG.pgc"), std::string::npos);
  EXPECT_EQ(ReadJob("REG.how"), "T1\r\nFIXED\r\n");
  EXPECT_TRUE(processes.launches.empty() && user.shownForms.empty());
}

TEST_F(RegionWorkflow, ReliabilitiesBacksUpTheSetAndCancelRestoresItByteForByte) {
  WriteJob("REG.def", {"a", "b", "c", "2", "e", "f", "Y"});
  const std::string how = "T1\r\nFIXED\r\nT2\r\n";
  WriteSet(how);
  WriteJobBytes("tempjob.mat", "stale");
  console.ReliabilitiesCommand();
  EXPECT_EQ(ReadJob("tempjob.how"), how);
  EXPECT_EQ(ReadJob("tempjob.mat"), "region.mat\r\n");
  EXPECT_EQ(ReadJob("REG.how"), "T1\r\nNOREL\r\nT2\r\n");
  EXPECT_EQ(console.rows[1], "FIXED");
  EXPECT_EQ(user.shownForms, (std::vector<std::string>{"frmContinue"}));
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(Launched(0), Tool("twpjoin"));
  EXPECT_TRUE(StartsWith(user.MessageTexts()[0], "Your regional files for REG have been backed up. \r\n"));

  // The tool rewrote the set; Cancel puts every file back as it was.
  WriteJobBytes("REG.lsa", "merged again");
  console.CancelReliabilities();
  EXPECT_EQ(ReadJob("REG.how"), how);
  EXPECT_EQ(ReadJob("REG.lsa"), "region.lsa\r\n");
  EXPECT_EQ(processes.launches.size(), 1u);

  // Continue runs twprel first.
  console.ReliabilitiesCommand();
  console.ContinueReliabilities();
  EXPECT_EQ(Launched(2), Tool("twprel"));
  EXPECT_EQ(ReadJob("REG.how"), how);
}

TEST(RegionPlacesAndNumbers, TheContinuePanelStandsLowerRightAndNumbersAreFreeFormat) {
  const PanelPlace place = ContinuePanelPlace(1000, 2000, 12000, 9000, 3000);
  EXPECT_DOUBLE_EQ(place.left, 1000 + 12000 - 3000 - 50);
  EXPECT_DOUBLE_EQ(place.top, 2000 + 9000 - 900);
  EXPECT_EQ(Joined({FreeFormatNumber(100), FreeFormatNumber(0.5), FreeFormatNumber(-2.25)}), " 100 | .5 |-2.25 ");
}

class PostRegion : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("REG");
    session.RegionJobFolder = JobDir();
    session.RegionJobName = "REG";
    std::filesystem::create_directory(root / "other");
    other = (root / "other").string() + "/";
  }
  std::string other;
};

TEST_F(PostRegion, EachProjectRunsInItsFolderUpToTheFirstKeyword) {
  ProcessProbe probe;
  Session s{user, canvas, probe};
  s.ToolFolder = ToolDir();
  s.JobFolder = JobDir();
  s.JobBase = JobDir() + "REG";
  s.JobName = "REG";
  s.RegionJobFolder = JobDir();
  s.RegionJobName = "REG";
  WriteJob("REG.how", {"T1", other + "T2", "/no/such/place/T3", "NOREL", "T4"});
  std::vector<std::string> seen;
  probe.during = [&] {
    const auto& launch = probe.launches.back();
    const std::filesystem::path folder(launch.folder);
    std::string line = launch.commandLine + "|" + ReadBytes(folder / "TEMP.JOB");
    if (launch.commandLine == "temp.bat") line += "|" + ReadBytes(folder / "temp.bat") + "|" + ReadBytes(folder / "t1$.001");
    line += std::filesystem::exists(folder / "Zone.dat") ? "|zone" : "|nozone";
    seen.push_back(line);
  };
  UpdateOptions options;
  options.tolerance = " 25.5";
  ASSERT_TRUE(RunPostRegionUpdate(s, options, "REG"));

  ASSERT_EQ(probe.launches.size(), 10u);  // five steps in each of two projects
  const std::string sep(1, PathSeparator());
  EXPECT_EQ(probe.launches[0].folder, JobDir() + sep);
  EXPECT_EQ(probe.launches[5].folder, other);
  const std::string program = ToolDir() + sep + "splitplan.exe";
  EXPECT_EQ(seen[0], "temp.bat|T1\r\n|\"" + program + "\"  <\"" + JobDir() + sep + "t1$.001\"\r\nexit\r\n|6\r\n3\r\n|zone");
  EXPECT_EQ(seen[1], ToolDir() + sep + "mercgrid.exe|T1\r\n|zone");
  EXPECT_EQ(seen[8], "temp.bat|T2\r\n|\"" + ToolDir() + sep + "ringcheck.exe\" <\"" + other +
                         "t1$.001\"\r\nexit\r\n| 25.5 \r\n\r\n|zone");
  for (const auto mode : probe.modes) EXPECT_EQ(mode, ShowMode::Hidden);
  // Nothing of the run stays behind, and the job strings are the region's again.
  for (const char* left : {"temp.bat", "t1$.001", "Zone.dat", "Nad27.con"}) {
    EXPECT_FALSE(std::filesystem::exists(root / "other" / left)) << left;
    EXPECT_FALSE(JobHas(left)) << left;
  }
  EXPECT_EQ(s.JobBase + "|" + s.JobName, JobDir() + "REG|REG");
  EXPECT_EQ(user.status[2].back(), "Project folder not found: /no/such/place/");
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{kMsgUpdateComplete}));
  EXPECT_EQ(user.status[1].back(), "Ready");
  EXPECT_NE(std::find(user.status[1].begin(), user.status[1].end(), "T2 ... Translating AN to GLD"), user.status[1].end());
}

TEST_F(PostRegion, ToleranceIsNeededOnlyForPolygonsAndAKeywordFirstRunsNothing) {
  WriteJob("REG.how", {"FIXED", "T1"});
  UpdateOptions options;
  options.tolerance = "  ";
  EXPECT_FALSE(RunPostRegionUpdate(session, options, "REG"));
  EXPECT_EQ(user.messages.back().text, kMsgPolygonTolerance);
  EXPECT_EQ(user.messages.back().icon, Icon::Stop);
  options.steps[3] = false;
  EXPECT_TRUE(RunPostRegionUpdate(session, options, "REG"));
  EXPECT_EQ(user.messages.back().text, kMsgUpdateComplete);
  EXPECT_TRUE(processes.launches.empty());
}

}  // namespace
}  // namespace tessel::test
