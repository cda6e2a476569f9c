// The LZH commands: the archiver found in the tool folder or on the search path, the exact
// launches, their show modes and order, the prompts and the guard.

#include <string>
#include <vector>

#include "archives/lzh_commands.h"
#include "model/paths.h"
#include "process_probe.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class LzhCommands : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    s.ToolFolder = session.ToolFolder;
    s.JobFolder = session.JobFolder;
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    s.CurrentFolder = session.CurrentFolder;
    WriteTool("LHA", {"stand-in"});
  }
  std::string Lha() const { return ToolDir() + PathSeparator() + "LHA"; }
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const auto& launch : probe.launches) lines.push_back(launch.kind + " " + launch.commandLine);
    return lines;
  }

  ProcessProbe probe;
  Session s{user, canvas, probe};
};

TEST_F(LzhCommands, ArchiverIsFoundInTheToolFolderWhateverItsCaseElseOnThePath) {
  EXPECT_EQ(LhaProgram(s), Lha());
  std::filesystem::remove(toolPath / "LHA");
  WriteTool("Lha.exe", {"stand-in"});
  EXPECT_EQ(LhaProgram(s), ToolDir() + PathSeparator() + "Lha.exe");
  std::filesystem::remove(toolPath / "Lha.exe");
  EXPECT_EQ(LhaProgram(s), "lha");
}

TEST_F(LzhCommands, ExtractSpawnsHiddenInTheCurrentFolderAndTellsAtOnce) {
  user.files.push_back(FileChoice{"/arch/old job.lzh", "old job.lzh"});
  bool toldBeforeRun = false;
  probe.during = [&] { toldBeforeRun = !user.messages.empty(); };
  LzhExtract(s);
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].filter, "Archive Files (*.LZH)|*.lzh");
  EXPECT_EQ(user.fileRequests[0].title, "Select an archive to extract");
  EXPECT_EQ(Lines(), std::vector<std::string>{"Spawn " + Lha() + " x \"/arch/old job.lzh\""});
  EXPECT_EQ(probe.launches[0].folder, JobDir());
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Hidden});
  EXPECT_FALSE(toldBeforeRun);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Archive Extracted. Use File, Open to view the job"});

  // A cancelled choice ends the command.
  LzhExtract(s);
  EXPECT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(user.messages.size(), 1u);
}

TEST_F(LzhCommands, SaveUpdatesTheJobsArchive) {
  LzhSave(s);
  const std::string base = JobDir() + "T1N2E";
  EXPECT_EQ(Lines(), std::vector<std::string>{"Spawn " + Lha() + " u " + base + ".lzh " + base + ".*"});
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
}

TEST_F(LzhCommands, SaveAsAddsThenWaitsForTheUserThenTakesOutOlderArchives) {
  user.inputs.push_back(std::string("/tmp/packed"));
  std::vector<std::size_t> messagesAtLaunch;
  probe.during = [&] { messagesAtLaunch.push_back(user.messages.size()); };
  EXPECT_TRUE(LzhSaveAs(s));
  const std::string base = JobDir() + "T1N2E";
  EXPECT_EQ(user.prompts, std::vector<std::string>{"New .LZH Filename (full path allowed, do not include extension)"});
  EXPECT_EQ(Lines(), (std::vector<std::string>{"Spawn " + Lha() + " a /tmp/packed.lzh " + base + ".*",
                                               "Spawn " + Lha() + " d /tmp/packed.lzh *.lzh"}));
  EXPECT_EQ(probe.modes, (std::vector<ShowMode>{ShowMode::Normal, ShowMode::Hidden}));
  // The notice comes between the two runs.
  EXPECT_EQ(messagesAtLaunch, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"Tessel has no control of this function, click OK when lha is finished, then "
                                     "close LHA window. Tessel will then check archive contents and remove any "
                                     "preexisting .lzh files from new archive"});
}

TEST_F(LzhCommands, SaveAsEndsOnAnEmptyOrCancelledNameAndBothNeedAJob) {
  user.inputs.push_back(std::string());
  EXPECT_FALSE(LzhSaveAs(s));
  EXPECT_FALSE(LzhSaveAs(s));
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_TRUE(user.messages.empty());

  s.JobBase.clear();
  user.inputs.push_back(std::string("/tmp/packed"));
  EXPECT_FALSE(LzhSaveAs(s));
  LzhSave(s);
  EXPECT_TRUE(probe.launches.empty());
}

TEST_F(LzhCommands, ABlankInTheJobsPathStaysInsideItsArgument) {
  s.JobBase = "/my jobs/T1N2E";
  LzhSave(s);
  ASSERT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(probe.launches[0].launch, (Launch{Lha(), {"u", "/my jobs/T1N2E.lzh", "/my jobs/T1N2E.*"}}));
}

}  // namespace
}  // namespace tessel::test
