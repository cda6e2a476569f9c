// The new job wizard: the identity of a job without files, its menus, support files and the
// start of jobprops; and the wizard's route for an existing job with its short load.

#include <filesystem>
#include <string>
#include <vector>

#include "core/paths.h"
#include "core/support_files.h"
#include "core/text.h"
#include "test_support.h"
#include "tools/new_job.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class NewJob : public JobFixture {
 protected:
  void SetUp() override { session.display = &display; }
  void Choose(const std::string& fileName, const std::string& fileTitle) {
    user.files.push_back(FileChoice{fileName, fileTitle});
  }
  RecordingDisplay display;
};

TEST_F(NewJob, NextMakesTheIdentityMenusSupportFilesAndStartsJobprops) {
  Choose(JobDir() + "newjob", "newjob");
  ASSERT_TRUE(NewJobNext(session));

  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].title, "Select or Create a directory & Name the Job");

  EXPECT_EQ(session.JobBase, Upper(JobDir() + "newjob"));
  EXPECT_EQ(session.JobFolder, JobDir());
  EXPECT_EQ(session.JobName, "NEWJOB");
  EXPECT_EQ(session.CurrentFolder, JobDir());
  EXPECT_EQ(ReadJob("TEMP.JOB"), "NEWJOB\r\n");
  EXPECT_EQ(user.title, "Tessel " + session.JobBase);

  for (const char* name : {"mnuFileClose", "mnuFileReload", "mnuFileConvert", "mnuFileImport", "mnuFileExport",
                           "mnuFilePrint", "mnuFileProperties", "mnuEdit", "mnuCommand", "mnuTools", "mnuReports",
                           "mnuOptionsLinesLSA", "mnuOptionsControl", "mnuOptionsID"}) {
    EXPECT_TRUE(user.enabled[name]) << name;
  }
  EXPECT_FALSE(user.enabled.at("mnuFileOpen"));
  EXPECT_EQ(user.enabled.size(), 15u);

  for (const char* name : kSupportFiles) EXPECT_EQ(ReadJob(name), SupportFileText(name)) << name;

  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "Spawn");
  EXPECT_EQ(processes.launches[0].commandLine, ToolDir() + PathSeparator() + "jobprops.exe");
  EXPECT_EQ(processes.launches[0].folder, JobDir());
  EXPECT_EQ(user.shownForms, std::vector<std::string>{"frmWiz2"});

  // Nothing is read or drawn until the tools have made data.
  EXPECT_EQ(session.points.PointCount(), 0);
  EXPECT_TRUE(display.calls.empty());
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(NewJob, TypedExtensionIsKeptWhole) {
  Choose(JobDir() + "x.def", "x.def");
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(session.JobName, "X.DEF");
  EXPECT_TRUE(EndsWith(session.JobBase, "X.DEF"));
}

TEST_F(NewJob, CancelLeavesEverythingAsItWas) {
  EXPECT_FALSE(NewJobNext(session));
  EXPECT_TRUE(session.JobBase.empty());
  EXPECT_TRUE(session.JobFolder.empty());
  EXPECT_TRUE(user.enabled.empty());
  EXPECT_TRUE(processes.launches.empty());
  EXPECT_TRUE(user.shownForms.empty());
  EXPECT_TRUE(fs::is_empty(jobPath));

  EXPECT_FALSE(ExistingJobRoute(session));
  EXPECT_TRUE(session.JobBase.empty());
  EXPECT_TRUE(fs::is_empty(jobPath));
}

// The process's current folder moved for the length of a test.
class InFolder {
 public:
  explicit InFolder(const fs::path& folder) : old_(fs::current_path()) { fs::current_path(folder); }
  ~InFolder() { fs::current_path(old_); }

 private:
  fs::path old_;
};

TEST_F(NewJob, ExistingJobCopiesMissingSupportFilesAndLoadsShort) {
  for (const char* name : kSupportFiles) WriteTool(name, {std::string("MASTER ") + name});
  WriteJob("NAD83.CON", {"THE JOB'S OWN"});
  WriteJob("t1n2e.def", DefFile(2));
  WriteJob("T1N2E.COR", {CorRow("100100", "1000", "1000"), CorRow("100200", "2000", "1500")});
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("CTRL9", "1500", "500")}, {LsaLineRow("100100", "100200")},
                                {LsaPointRow("100100", "1000", "1000")}));
  WriteJob("T1N2E.LXN", {"CHAINS", "HEADER", "2", "100100100200", "999999"});
  // The dialog has left the current folder at the job's folder, and the name came bare.
  InFolder here(jobPath);
  session.CurrentFolder.clear();
  Choose("t1n2e.def", "t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));

  EXPECT_EQ(session.JobBase, "T1N2E");
  EXPECT_EQ(session.JobName, "T1N2E");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "T1N2E\r\n");
  EXPECT_EQ(user.title, "Tessel T1N2E");
  EXPECT_TRUE(user.enabled.at("mnuFileClose"));
  EXPECT_TRUE(user.enabled.at("mnuFileReload"));
  EXPECT_FALSE(user.enabled.at("mnuFileOpen"));

  EXPECT_EQ(ReadJob("Nad27.con"), "MASTER Nad27.con\r\n");
  EXPECT_EQ(ReadJob("Zone.dat"), "MASTER Zone.dat\r\n");
  EXPECT_EQ(ReadJob("NAD83.CON"), "THE JOB'S OWN\r\n");
  EXPECT_FALSE(JobHas("Nad83.con"));

  // .COR, then the control station appended, the network line and the chain.
  EXPECT_EQ(session.points.PointCount(), 3);
  EXPECT_EQ(session.points.PointIds(3), "CTRL9");
  EXPECT_EQ(session.lsa.LsaLineEnds.get(1).from, 1);
  EXPECT_EQ(session.lsa.LsaLineEnds.get(1).to, 2);
  EXPECT_GT(session.lxn.LxnSegmentCount, 0);
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshViewAfterExtents"});
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
}

TEST_F(NewJob, ExistingJobWithoutLsaSaysSoAndSkipsTheChainsWhenTheyAreOff) {
  for (const char* name : kSupportFiles) WriteTool(name, {"MASTER"});
  WriteJob("t1n2e.def", DefFile(2));
  session.config.chkLXN = 0;
  Choose(JobDir() + "t1n2e.def", "t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));
  EXPECT_EQ(session.JobBase, Upper(JobDir() + "t1n2e"));
  EXPECT_EQ(session.JobFolder, JobDir());
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"LSA file not found"});
  for (const char* name : kSupportFiles) EXPECT_EQ(ReadJob(name), "MASTER\r\n") << name;
  for (const auto& texts : user.status[1]) EXPECT_NE(texts, "Reading LXN Lines");
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshViewAfterExtents"});
}

}  // namespace
}  // namespace tessel::test
