// The scripted run of recpad: the answer file and temp.bat as written, the hidden run, the
// files removed afterwards, the guard, and the reading of temp.bat where there is no shell.

#include <filesystem>
#include <string>
#include <vector>

#include "model/paths.h"
#include "process_probe.h"
#include "test_support.h"
#include "tools/launching.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class Launching : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    s.ToolFolder = session.ToolFolder;
    s.JobFolder = session.JobFolder;
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    s.CurrentFolder = session.CurrentFolder;
  }

  std::string Recpad() const { return ToolDir() + PathSeparator() + "recpad.exe"; }

  ProcessProbe probe;
  Session s{user, canvas, probe};
};

TEST_F(Launching, ScriptCommandQuotesProgramAndAnswerFile) {
  EXPECT_EQ(ScriptCommand(s, "recpad.exe", "t1$.001"), "\"" + Recpad() + "\"  <\"" + JobDir() + "t1$.001\"");
  EXPECT_EQ(ScriptCommand(s, "recpad.exe", "apdin.001"), "\"" + Recpad() + "\"  <\"" + JobDir() + "apdin.001\"");
  // The program is named as it stands in the tool folder.
  WriteTool("RECPAD.EXE", {"x"});
  EXPECT_EQ(ScriptCommand(s, "recpad.exe", "t1$.001"),
            "\"" + ToolDir() + PathSeparator() + "RECPAD.EXE\"  <\"" + JobDir() + "t1$.001\"");
}

TEST_F(Launching, RecpadScriptWritesAnswersAndBatchRunsHiddenAndCleansUp) {
  WriteJob("T1N2E.002", {"scratch"});
  WriteJob("T1N2E.raw", {"RECORD DATA"});
  std::string answers, batch;
  probe.during = [&] {
    answers = ReadJob("t1$.001");
    batch = ReadJob("temp.bat");
  };
  RunRecpadScript(s);

  ASSERT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(probe.launches[0].kind, "RunCode");
  EXPECT_EQ(probe.launches[0].commandLine, "temp.bat");
  EXPECT_EQ(probe.launches[0].folder, JobDir());
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Hidden});

  EXPECT_EQ(answers, "\r\n\r\n\r\n\r\n\r\n\r\n");
  EXPECT_EQ(batch, "\"" + Recpad() + "\"  <\"" + JobDir() + "t1$.001\"\r\nexit\r\n");

  EXPECT_FALSE(JobHas("temp.bat"));
  EXPECT_FALSE(JobHas("t1$.001"));
  EXPECT_FALSE(JobHas("T1N2E.002"));
  EXPECT_TRUE(JobHas("T1N2E.raw"));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(Launching, RecpadScriptDeletesTheScratchInWhateverCaseTheToolLeftIt) {
  WriteJob("t1n2e.002", {"scratch"});
  RunRecpadScript(s);
  for (const auto& entry : fs::directory_iterator(jobPath)) {
    ADD_FAILURE() << "left behind: " << entry.path().filename().string();
  }
}

TEST_F(Launching, RecpadScriptWithoutAJobTellsAndWritesNothing) {
  s.JobBase.clear();
  s.JobName.clear();
  RunRecpadScript(s);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You must first Open or Create a job."});
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_TRUE(fs::is_empty(jobPath));
  EXPECT_FALSE(fs::exists(root / "temp.bat"));
}

TEST_F(Launching, RecpadScriptGoesOnWhenTheRunFails) {
  WriteJob("T1N2E.002", {"scratch"});
  probe.fail = true;
  EXPECT_NO_THROW(RunRecpadScript(s));
  EXPECT_FALSE(JobHas("temp.bat"));
  EXPECT_FALSE(JobHas("t1$.001"));
  EXPECT_FALSE(JobHas("T1N2E.002"));
}

TEST_F(Launching, ReadBatchCommandTakesTheLineScriptCommandWrites) {
  std::string batch;
  probe.during = [&] { batch = ReadJob("temp.bat"); };
  RunRecpadScript(s);
  WriteJobBytes("copy.bat", batch);
  const auto command = ReadBatchCommand((jobPath / "copy.bat").string());
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->program, Recpad());
  EXPECT_EQ(command->input, JobDir() + "t1$.001");
}

TEST_F(Launching, ReadBatchCommandKeepsBlanksInsideTheQuotes) {
  WriteJobBytes("a.bat", "\"C:\\Program Files\\tessel\\recpad.exe\"  <\"D:\\my jobs\\t1$.001\"\nexit\n");
  const auto command = ReadBatchCommand((jobPath / "a.bat").string());
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->program, "C:\\Program Files\\tessel\\recpad.exe");
  EXPECT_EQ(command->input, "D:\\my jobs\\t1$.001");

  WriteJobBytes("b.bat", "  \"prog\" < \"in\"  \r\n");
  const auto spaced = ReadBatchCommand((jobPath / "b.bat").string());
  ASSERT_TRUE(spaced.has_value());
  EXPECT_EQ(spaced->program, "prog");
  EXPECT_EQ(spaced->input, "in");
}

TEST_F(Launching, QuotesInAFolderAreDoubledAndReadBack) {
  // A double quote may stand in a folder's name here (Windows allows none): doubled inside the
  // quotes, it comes back whole, and the command keeps its shape.
  std::filesystem::create_directories(root / "a \"b\" c");
  s.JobFolder = (root / "a \"b\" c").string() + PathSeparator();
  s.ToolFolder = (root / "a \"b\" c").string();
  const std::string line = ScriptCommand(s, "recpad.exe", "t1$.001");
  EXPECT_EQ(line, "\"" + (root / "a \"\"b\"\" c").string() + PathSeparator() + "recpad.exe\"  <\"" +
                      (root / "a \"\"b\"\" c").string() + PathSeparator() + "t1$.001\"");
  WriteJobBytes("q.bat", line + "\r\nexit\r\n");
  const auto command = ReadBatchCommand((jobPath / "q.bat").string());
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->program, s.ToolFolder + PathSeparator() + "recpad.exe");
  EXPECT_EQ(command->input, s.JobFolder + "t1$.001");
  // An unclosed quote, or a lone quote after the doubled one, is not a command.
  WriteJobBytes("r.bat", "\"a\"\"  <\"b\"\r\n");
  EXPECT_FALSE(ReadBatchCommand((jobPath / "r.bat").string()).has_value());
}

TEST_F(Launching, ReadBatchCommandRefusesOtherShapes) {
  const std::vector<std::string> shapes = {
      "recpad.exe < t1$.001",          // no quotes
      "\"recpad.exe\"  \"t1$.001\"",   // no redirection
      "\"recpad.exe\"  <\"t1$.001",    // unclosed
      "\"recpad.exe\"  <\"t1$.001\" x",  // more after it
      "\"recpad.exe\"  >\"out\"",      // the other direction
      "\"\"  <\"t1$.001\"",            // no program
      "",
  };
  for (const std::string& shape : shapes) {
    WriteJobBytes("x.bat", shape + "\r\nexit\r\n");
    EXPECT_FALSE(ReadBatchCommand((jobPath / "x.bat").string()).has_value()) << shape;
  }
  EXPECT_FALSE(ReadBatchCommand((jobPath / "missing.bat").string()).has_value());
}

}  // namespace
}  // namespace tessel::test
