// The user's own programs: toolbox buttons 1 to 12, toolbar keys usr1 to usr10 with their own
// message, and the job's batch file.

#include <string>
#include <vector>

#include "model/paths.h"
#include "test_support.h"
#include "tools/user_tools.h"

namespace tessel::test {
namespace {

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

TEST_F(UserTools, ToolboxStartsAnExistingProgramInANormalWindow) {
  SetEntry(12, program);
  ToolboxClick(session, 12);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "Spawn");
  EXPECT_EQ(processes.launches[0].commandLine, program);
  EXPECT_EQ(processes.launches[0].folder, JobDir());
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(UserTools, ToolboxAndToolbarTellDifferentlyWhenNothingIsSetUp) {
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
}

TEST_F(UserTools, ToolbarKeysReachTheFirstTenEntriesOnly) {
  for (int k = 1; k <= 12; ++k) SetEntry(k, program);
  ToolbarUserClick(session, 10);
  ToolbarUserClick(session, 11);
  ToolbarUserClick(session, 0);
  ASSERT_EQ(processes.launches.size(), 1u);
  ToolboxClick(session, 11);
  ToolboxClick(session, 13);
  EXPECT_EQ(processes.launches.size(), 2u);
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(UserTools, BatKeyStartsTheJobsBatchFileWhenThereIsOne) {
  ToolbarBat(session);
  EXPECT_TRUE(processes.launches.empty());
  EXPECT_TRUE(user.messages.empty());

  WriteJob("T1N2E.BAT", {"echo"});
  ToolbarBat(session);
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "Spawn");
  EXPECT_EQ(processes.launches[0].commandLine, JobDir() + "T1N2E.BAT");
  EXPECT_EQ(processes.launches[0].folder, JobDir());
}

}  // namespace
}  // namespace tessel::test
