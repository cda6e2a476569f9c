// The scripted runs of splitplan from the subdivision forms: the answer file of every button and
// wizard, temp.bat, the blocking run, and the wizards' refusal of empty fields.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <utility>

#include "model/paths.h"
#include "subdivision/splitplan_runs.h"
#include "test_support.h"

namespace tessel {
namespace {

using test::Text;

TEST(SplitplanAnswers, ButtonsOfTheSectionDialogAndTheDiagramAndTheWizards) {
  EXPECT_EQ(ComputeAnswers(), (std::vector<std::string>{"", "", "", "", "", ""}));
  EXPECT_EQ(AutoIrrAnswers(7), (std::vector<std::string>{"1", "7", "11", "12", "", "", "3", "1"}));
  EXPECT_EQ(NoSubdivisionAnswers(7), (std::vector<std::string>{"1", "7", "10", "12", "", "3", "1"}));
  EXPECT_EQ(ThreeMileAnswers(36), (std::vector<std::string>{"2", "3", "8", "2", "36", "", "9", "4", "3", "1"}));
  // The wizards.
  EXPECT_EQ(ElongatedAnswers({"640640", "N", "2"}),
            (std::vector<std::string>{"2", "3", "5", "640640", "N", "2", "", "9", "4", "3", "1"}));
  EXPECT_EQ(ShortSectionAnswers({"31", 2, 3}),
            (std::vector<std::string>{"2", "3", "7", "2", "31", "2", "3", "", "9", "4", "3", "1"}));
  EXPECT_EQ(ShortSectionAnswers({"31", 0, 0}),
            (std::vector<std::string>{"2", "3", "7", "2", "31", "0", "0", "", "9", "4", "3", "1"}));
  EXPECT_EQ(MinorAnswers({"620620", "W"}),
            (std::vector<std::string>{"2", "3", "4", "Y", "W", "620620", "", "9", "4", "3", "1"}));
  EXPECT_EQ(MinorAnswers({"620620", ""}),
            (std::vector<std::string>{"2", "3", "4", "", "620620", "", "9", "4", "3", "1"}));
}

class SplitplanRun : public test::JobFixture {
 protected:
  SplitplanRun() { UseJob(); }
  std::string Batch() const {
    std::string batch = "\"";
    batch.append(ToolDir()).push_back(PathSeparator());
    batch.append("splitplan.exe\"  <\"").append(JobDir()).append("t1$.001\"\r\nexit\r\n");
    return batch;
  }
};

TEST_F(SplitplanRun, WritesTheAnswersAndTempBatAndRunsBlocking) {
  RunSectionScript(session, AutoIrrAnswers(12));
  EXPECT_EQ(ReadJob("t1$.001"), "1\r\n12\r\n11\r\n12\r\n\r\n\r\n3\r\n1\r\n");
  EXPECT_EQ(ReadJob("temp.bat"), Batch());
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(test::Joined({processes.launches[0].kind, processes.launches[0].commandLine, processes.launches[0].folder}),
            "Run|temp.bat|" + JobDir());
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Default}));
}

TEST_F(SplitplanRun, ComputeRereadsTheJobsLines) {
  static int lineReloads = 0, fullReloads = 0;
  session.reloadJobLines = [](Session&) { ++lineReloads; };
  session.reloadJob = [](Session&) { ++fullReloads; };
  ComputeSubdivision(session);
  EXPECT_EQ(ReadJob("t1$.001"), "\r\n\r\n\r\n\r\n\r\n\r\n");
  EXPECT_EQ(processes.launches.size(), 1u);
  // Not the full reload, which would empty a parcel store holding unsaved edits.
  EXPECT_EQ(std::pair(lineReloads, fullReloads), std::pair(1, 0));
}

TEST_F(SplitplanRun, AWizardWithAnEmptyFieldStaysAndRunsNothingAndWithItsFieldsRuns) {
  EXPECT_FALSE(FinishElongated(session, {"5", "N", "  "}));
  EXPECT_FALSE(FinishElongated(session, {"", "N", "2"}));
  EXPECT_FALSE(FinishShortSection(session, {"", 1, 1}));
  EXPECT_FALSE(FinishMinor(session, {"", "N"}));
  ASSERT_EQ(user.messages.size(), 4u);
  for (const auto& m : user.messages) {
    EXPECT_EQ(m.text, "You must complete the information requested.");
    EXPECT_EQ(m.icon, Icon::Stop);
  }
  EXPECT_TRUE(processes.launches.empty());
  EXPECT_FALSE(JobHas("t1$.001"));

  // With its fields it runs. The options are not required: a short section with none chosen
  // sends zeros.
  user.messages.clear();
  EXPECT_TRUE(FinishShortSection(session, {"19", 0, 0}));
  EXPECT_EQ(ReadJob("t1$.001"), Text({"2", "3", "7", "2", "19", "0", "0", "", "9", "4", "3", "1"}));
  EXPECT_TRUE(FinishMinor(session, {"660660", ""}));
  EXPECT_EQ(ReadJob("t1$.001"), Text({"2", "3", "4", "", "660660", "", "9", "4", "3", "1"}));
  EXPECT_TRUE(FinishElongated(session, {"6", "W", "3"}));
  EXPECT_EQ(ReadJob("t1$.001"), Text({"2", "3", "5", "6", "W", "3", "", "9", "4", "3", "1"}));
  EXPECT_EQ(processes.launches.size(), 3u);
  EXPECT_TRUE(user.messages.empty());
}

// A directory standing where t1$.001 or temp.bat goes makes its write fail whoever runs the
// tests (root writes read-only folders). No run may then start on an older answer file.
TEST_F(SplitplanRun, ARunWhoseAnswersOrBatchCannotBeWrittenStartsNothingAndNamesTheFile) {
  const std::vector<std::pair<const char*, std::function<void()>>> runs = {
      {"Compute", [&] { ComputeSubdivision(session); }},
      {"AutoIRR", [&] { EXPECT_FALSE(RunSectionScript(session, AutoIrrAnswers(12))); }},
      {"No Subdivision", [&] { EXPECT_FALSE(RunSectionScript(session, NoSubdivisionAnswers(12))); }},
      {"3 Mile", [&] { EXPECT_FALSE(RunSectionScript(session, ThreeMileAnswers(12))); }},
      {"Elongated", [&] { EXPECT_FALSE(FinishElongated(session, {"6", "W", "3"})); }},
      {"Short", [&] { EXPECT_FALSE(FinishShortSection(session, {"19", 1, 2})); }},
      {"Minor", [&] { EXPECT_FALSE(FinishMinor(session, {"660660", ""})); }},
  };
  for (const char* blocked : {"t1$.001", "temp.bat"}) {
    std::filesystem::create_directory(jobPath / blocked);
    for (const auto& [name, run] : runs) {
      SCOPED_TRACE(std::string(name) + " with " + blocked + " blocked");
      user.messages.clear();
      user.pointers.clear();
      run();
      EXPECT_TRUE(processes.launches.empty());
      ASSERT_EQ(user.messages.size(), 1u);
      EXPECT_NE(user.messages[0].text.find(JobDir() + blocked), std::string::npos) << user.messages[0].text;
      EXPECT_EQ(user.pointers.back(), Pointer::Default);
    }
    std::filesystem::remove_all(jobPath / blocked);
  }
  // With the way clear the same runs start the tool.
  EXPECT_TRUE(RunSectionScript(session, AutoIrrAnswers(12)));
  EXPECT_EQ(processes.launches.size(), 1u);
}

}  // namespace
}  // namespace tessel
