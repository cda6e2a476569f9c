// The identity of a job (JobBase, JobFolder, JobName), TEMP.JOB, Tessel.hst, the guard of job
// commands and the unit code of the .def.

#include <filesystem>
#include <string>

#include "datasets/identity.h"
#include "model/paths.h"
#include "model/text.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class Identity : public JobFixture {};

TEST_F(Identity, OpenCutsThePathAtItsFirstPointAndNamesTheJobInUpperCase) {
  OpenIdentity(session, JobDir() + "t12n.def", "t12n.def");
  EXPECT_EQ(session.JobBase, JobDir() + "t12n");
  EXPECT_EQ(session.JobFolder, JobDir());
  EXPECT_EQ(session.JobName, "T12N");
  EXPECT_EQ(session.RegionJobFolder, JobDir());
  EXPECT_EQ(session.RegionJobName, "T12N");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "T12N\r\n");
  EXPECT_EQ(user.title, "Tessel " + JobDir() + "t12n");

  // Two points in the name: both strings stop at the first.
  OpenIdentity(session, JobDir() + "X.Y.def", "X.Y.def");
  EXPECT_EQ(session.JobBase, JobDir() + "X");
  EXPECT_EQ(session.JobName, "X");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "X\r\n");

  // A point in a folder name cuts the path there: the job's datasets are then looked for under
  // that wrong name.
  const std::filesystem::path dotted = root / "a.b" / "c";
  std::filesystem::create_directories(dotted);
  const std::string folder = dotted.string() + PathSeparator();
  OpenIdentity(session, folder + "Job.def", "Job.def");
  EXPECT_EQ(session.JobBase, (root / "a").string());
  EXPECT_EQ(session.JobFolder, folder);
  EXPECT_EQ(session.JobName, "JOB");
  EXPECT_EQ(ReadBytes(dotted / "TEMP.JOB"), "JOB\r\n");
}

TEST_F(Identity, NewJobAndWizardRoutesUpperCaseTheBase) {
  NewIdentity(session, JobDir() + "newjob", "newjob");
  EXPECT_EQ(session.JobBase, Upper(JobDir() + "newjob"));
  EXPECT_EQ(session.JobFolder, JobDir());
  EXPECT_EQ(session.JobName, "NEWJOB");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "NEWJOB\r\n");
  EXPECT_EQ(user.title, "Tessel " + Upper(JobDir() + "newjob"));

  OpenIdentityUpper(session, JobDir() + "old.def", "old.def");
  EXPECT_EQ(session.JobBase, Upper(JobDir() + "old"));
  EXPECT_EQ(session.JobFolder, JobDir());
  EXPECT_EQ(session.JobName, "OLD");
}

TEST_F(Identity, LastFolderIsRememberedAndRecalled) {
  // Missing, then empty: the dialog starts in the tool folder.
  EXPECT_EQ(RecallFolder(session), ToolDir());
  WriteTool("Tessel.hst", {""});
  EXPECT_EQ(RecallFolder(session), ToolDir());

  // No job: an existing file is left alone.
  WriteTool("Tessel.hst", {"/earlier/folder/"});
  RememberFolder(session);
  EXPECT_EQ(ReadTool("Tessel.hst"), "/earlier/folder/\r\n");

  session.JobFolder = JobDir();
  RememberFolder(session);
  EXPECT_EQ(ReadTool("Tessel.hst"), JobDir() + "\r\n");
  EXPECT_EQ(RecallFolder(session), JobDir());

  WriteTool("Tessel.hst", {"/from/lf/", "/second/line/"}, Eol::Lf);
  EXPECT_EQ(RecallFolder(session), "/from/lf/");
}

TEST_F(Identity, GuardShowsItsMessageOnlyWithoutAJob) {
  EXPECT_FALSE(JobGuard(session));
  EXPECT_FALSE(JobGuard(session, kMsgOpenOrCreateJob));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You must first Open or Create a job.");
  EXPECT_EQ(user.messages[0].buttons, Buttons::Ok);
  EXPECT_EQ(user.messages[0].icon, Icon::None);
  EXPECT_STREQ(kMsgOpenOrCreateProject, "You must first open or create a project");
  EXPECT_STREQ(kMsgOpenProject, "You must first Open a project");

  UseJob();
  EXPECT_TRUE(JobGuard(session, kMsgOpenProject));
  EXPECT_EQ(user.messages.size(), 1u);
}

TEST_F(Identity, UnitCodeOfTheDefSetsUnitsPerChain) {
  UseJob();
  WriteJob("T1N2E.def", DefFile(2));
  ReadUnitCode(session);
  EXPECT_FLOAT_EQ(session.UnitsPerChain, 66.0f);
  WriteJob("T1N2E.def", DefFile(1), Eol::Lf);
  ReadUnitCode(session);
  EXPECT_EQ(session.UnitsPerChain, static_cast<float>(66 / 3.2808333333));
  EXPECT_NEAR(session.UnitsPerChain, 20.1168, 1e-4);
  // Any other code leaves the value as it was.
  WriteJob("T1N2E.def", DefFile(3));
  ReadUnitCode(session);
  EXPECT_NEAR(session.UnitsPerChain, 20.1168, 1e-4);
  Session fresh(user, canvas, processes);
  fresh.JobBase = session.JobBase;
  ReadUnitCode(fresh);
  EXPECT_EQ(fresh.UnitsPerChain, 0.0f);
}

}  // namespace
}  // namespace tessel::test
