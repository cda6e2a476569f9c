// The new job wizard: the identity of a job without files, its menus, support files and the
// start of jobprops; and the wizard's route for an existing job with its short load.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "job/job_menus.h"
#include "model/paths.h"
#include "datasets/support_files.h"
#include "model/text.h"
#include "test_support.h"
#include "job/new_job.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;

class NewJob : public JobFixture {
 protected:
  void SetUp() override { session.display = &display; }
  void Choose(const std::string& name) { user.files.push_back(FileChoice{name, fs::path(name).filename().string()}); }
  RecordingDisplay display;
};

TEST_F(NewJob, NextMakesTheIdentityMenusSupportFilesAndStartsJobpropsAndCancelDoesNothing) {
  EXPECT_FALSE(NewJobNext(session));
  EXPECT_FALSE(ExistingJobRoute(session));
  EXPECT_TRUE(session.JobBase.empty() && user.enabled.empty() && processes.launches.empty() && fs::is_empty(jobPath));

  Choose(JobDir() + "newjob");
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(user.fileRequests.at(2).title, "Select or Create a directory & Name the Job");
  EXPECT_EQ(session.JobBase, Upper(JobDir() + "newjob"));
  EXPECT_EQ(ReadJob("TEMP.JOB"), "NEWJOB\r\n");
  // The job menus and the two kept after a close, but not the archive entries; Open goes off.
  std::map<std::string, bool> menus = {{"mnuFileOpen", false}, {"mnuFileReload", true}, {"mnuFileImport", true}};
  for (const char* name : kJobMenus) menus[name] = true;
  EXPECT_EQ(user.enabled, menus);
  for (const char* name : kSupportFiles) EXPECT_EQ(ReadJob(name), SupportFileText(name)) << name;
  ASSERT_EQ(processes.launches.size(), 1u);
  const RecordedLaunch& l = processes.launches[0];
  EXPECT_EQ(l.kind + " " + l.commandLine + " in " + l.folder,
            "Spawn " + ToolDir() + PathSeparator() + "jobprops.exe in " + JobDir());
  EXPECT_EQ(user.shownForms, Strings{"frmWiz2"});
  // Nothing is read or drawn until the tools have made data.
  EXPECT_TRUE(display.calls.empty() && user.messages.empty());

  Choose(JobDir() + "x.def");  // a typed extension is kept whole
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(session.JobName, "X.DEF");
}

// The process's current folder moved for the length of a test.
struct InFolder {
  explicit InFolder(const fs::path& folder) { fs::current_path(folder); }
  ~InFolder() { fs::current_path(old); }
  fs::path old = fs::current_path();
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
  Choose("t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));
  EXPECT_EQ(session.JobBase, "T1N2E");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "T1N2E\r\n");
  EXPECT_EQ(user.enabled, (std::map<std::string, bool>{{"mnuFileClose", true}, {"mnuFileReload", true},
                                                       {"mnuFileOpen", false}}));
  EXPECT_EQ(ReadJob("Zone.dat") + ReadJob("NAD83.CON"), "MASTER Zone.dat\r\nTHE JOB'S OWN\r\n");
  EXPECT_FALSE(JobHas("Nad83.con"));
  // .COR, then the control station appended, the network line and the chain.
  EXPECT_EQ(session.points.PointIds(3), "CTRL9");
  const std::vector<int> counts = {session.points.PointCount(), session.lsa.LsaLineEnds.get(1).to,
                                   session.lxn.LxnSegmentCount};
  EXPECT_EQ(counts, (std::vector<int>{3, 2, 1}));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(display.calls, Strings{"RefreshViewAfterExtents"});
  EXPECT_EQ(user.pointers.back(), Pointer::Default);

  // Without .LSA a box says so, and chains that are off are not read.
  fs::remove(jobPath / "T1N2E.LSA");
  session.lxn.Clear();
  session.config.chkLXN = 0;
  Choose("t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));
  EXPECT_EQ(user.MessageTexts(), Strings{"LSA file not found"});
  EXPECT_EQ(session.lxn.LxnSegmentCount, 0);
  EXPECT_EQ(display.calls.size(), 2u);
}

}  // namespace
}  // namespace tessel::test
