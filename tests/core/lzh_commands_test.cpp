// The LZH commands: the archiver found in the tool folder or on the search path, the exact
// launches with the job's files for the patterns, their folder, show modes and order, the
// prompts, the guard, and the boxes for an archiver that fails.

#include <string>
#include <tuple>
#include <vector>

#include "archives/file_patterns.h"
#include "archives/lzh_commands.h"
#include "model/paths.h"
#include "model/text_file.h"
#include "process_probe.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class LzhCommands : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    WriteTool("LHA", {"stand-in"});
  }
  std::string Lha() const { return ToolDir() + PathSeparator() + "LHA"; }
  std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const auto& launch : probe.launches) lines.push_back(launch.kind + " " + launch.commandLine);
    return lines;
  }

  // The job T1N2E in a folder whose name has a blank, with files of the job in both cases, its
  // older archive, and files of other names; the folder, with its separator.
  std::string UseFolderWithBlank() {
    const std::filesystem::path folder = root / "my jobs";
    std::filesystem::create_directory(folder);
    for (const char* name : {"T1N2E.def", "T1N2E.raw", "t1n2e.COR", "T1N2E", "T1N2E.lzh", "T1N2E2.def", "other.lzh"}) {
      WriteLines(folder / name, {name});
    }
    s.JobFolder = folder.string() + PathSeparator();
    s.JobBase = s.JobFolder + "T1N2E";
    return s.JobFolder;
  }

  ProcessProbe& probe = processes;
  Session& s = session;
};

TEST_F(LzhCommands, ExtractSpawnsHiddenInTheCurrentFolderAndTellsAtOnce) {
  user.files.push_back(FileChoice{"/arch/old job.lzh", "old job.lzh"});
  bool toldBeforeRun = false;
  probe.during = [&] { toldBeforeRun = !user.messages.empty(); };
  LzhExtract(s);
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].filter + "|" + user.fileRequests[0].title,
            "Archive Files (*.LZH)|*.lzh|Select an archive to extract");
  EXPECT_EQ(Lines(), std::vector<std::string>{"Spawn " + Lha() + " x \"/arch/old job.lzh\""});
  EXPECT_EQ(std::tuple(probe.launches[0].folder, probe.modes, toldBeforeRun),
            std::tuple(JobDir(), std::vector<ShowMode>{ShowMode::Hidden}, false));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Archive Extracted. Use File, Open to view the job"});

  // A cancelled choice ends the command.
  LzhExtract(s);
  EXPECT_EQ(std::tuple(probe.launches.size(), user.messages.size()), std::tuple(1u, 1u));
}

TEST_F(LzhCommands, SaveArchivesEveryFileOfTheJobEachAsItsOwnArgumentInTheJobsFolder) {
  const std::string folder = UseFolderWithBlank();
  LzhSave(s);
  // The job's files by name, in the job's folder, so that the archive holds them without it;
  // the archive itself is not put into itself.
  EXPECT_EQ(Lines(), std::vector<std::string>{"Spawn " + Lha() + " u \"" + folder + "T1N2E.lzh\" T1N2E T1N2E.def "
                                              "T1N2E.raw t1n2e.COR"});
  ASSERT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(probe.launches[0].launch.arguments,
            (std::vector<std::string>{"u", folder + "T1N2E.lzh", "T1N2E", "T1N2E.def", "T1N2E.raw", "t1n2e.COR"}));
  EXPECT_EQ(std::tuple(probe.launches[0].folder, probe.modes), std::tuple(folder, std::vector{ShowMode::Normal}));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(LzhCommands, SaveAsAddsThenWaitsForTheUserThenTakesOutOlderArchives) {
  const std::string folder = UseFolderWithBlank();
  user.inputs.push_back(std::string("packed"));
  std::vector<std::size_t> messagesAtLaunch;
  probe.during = [&] {
    messagesAtLaunch.push_back(user.messages.size());
    // The archiver makes the new archive beside the job.
    WriteLines(root / "my jobs" / "packed.lzh", {"archive"});
  };
  EXPECT_TRUE(LzhSaveAs(s));
  EXPECT_EQ(user.prompts, std::vector<std::string>{"New .LZH Filename (full path allowed, do not include extension)"});
  // The job's older archive goes in with the job's files, and comes out again with every other
  // archive lying in the job's folder; the new archive is never named as its own member.
  ASSERT_EQ(probe.launches.size(), 2u);
  EXPECT_EQ(Lines(), (std::vector<std::string>{"Spawn " + Lha() + " a packed.lzh T1N2E T1N2E.def T1N2E.lzh "
                                               "T1N2E.raw t1n2e.COR",
                                               "Spawn " + Lha() + " d packed.lzh T1N2E.lzh other.lzh"}));
  EXPECT_EQ(probe.launches[0].folder + "|" + probe.launches[1].folder, folder + "|" + folder);
  EXPECT_EQ(probe.modes, (std::vector<ShowMode>{ShowMode::Normal, ShowMode::Hidden}));
  // The notice comes between the two runs.
  EXPECT_EQ(messagesAtLaunch, (std::vector<std::size_t>{0, 1}));
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"Tessel has no control of this function, click OK when lha is finished, then "
                                     "close LHA window. Tessel will then check archive contents and remove any "
                                     "preexisting .lzh files from new archive"});
}

TEST_F(LzhCommands, AnArchiverThatFailsIsToldWhenItEnds) {
  UseFolderWithBlank();
  LzhSave(s);
  ASSERT_EQ(probe.running.size(), 1u);
  EXPECT_TRUE(user.messages.empty());
  probe.running[0](SpawnEnd{true, false, 0, {}});
  EXPECT_TRUE(user.messages.empty());
  LzhSave(s);
  probe.running[1](SpawnEnd{true, false, 3, {}});
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "The archiver ended with exit code 3:\n" + probe.launches[1].commandLine);
  EXPECT_EQ(user.messages[0].icon, Icon::Exclamation);
  user.files.push_back(FileChoice{"/arch/old.lzh", "old.lzh"});
  LzhExtract(s);
  probe.running[2](SpawnEnd{true, true, -1, {}});
  EXPECT_EQ(user.MessageTexts().back(), "The archiver ended abnormally:\n" + probe.launches[2].commandLine);

  // One that cannot start is told at once: Extract does not claim an extraction, and Save As
  // neither waits for the user nor goes on.
  user.messages.clear();
  probe.notStarted = "not found";
  user.files.push_back(FileChoice{"/arch/old.lzh", "old.lzh"});
  LzhExtract(s);
  user.inputs.push_back(std::string("packed"));
  EXPECT_FALSE(LzhSaveAs(s));
  const std::string notStarted = "The archiver could not be started (not found):\n";
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{notStarted + probe.launches[3].commandLine,
                                                           notStarted + probe.launches[4].commandLine}));
  EXPECT_EQ(probe.launches.size(), 5u);

  // A job none of whose files is there any more is not archived at all.
  user.messages.clear();
  probe.notStarted.clear();
  s.JobBase = s.JobFolder + "GONE";
  LzhSave(s);
  EXPECT_EQ(probe.launches.size(), 5u);
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"No file matches " + s.JobBase + ".*; nothing was archived."});
}

TEST_F(LzhCommands, SaveAsEndsOnAnEmptyOrCancelledNameBothNeedAJobAndTheArchiverIsFoundInAnyCase) {
  user.inputs.push_back(std::string());
  EXPECT_FALSE(LzhSaveAs(s));
  EXPECT_FALSE(LzhSaveAs(s));
  EXPECT_TRUE(probe.launches.empty() && user.messages.empty());

  s.JobBase.clear();
  user.inputs.push_back(std::string("/tmp/packed"));
  EXPECT_FALSE(LzhSaveAs(s));
  LzhSave(s);
  EXPECT_TRUE(probe.launches.empty());

  // The archiver is found in the tool folder whatever its case, else on the search path.
  EXPECT_EQ(LhaProgram(s), Lha());
  std::filesystem::remove(toolPath / "LHA");
  WriteTool("Lha.exe", {"stand-in"});
  EXPECT_EQ(LhaProgram(s), ToolDir() + PathSeparator() + "Lha.exe");
  std::filesystem::remove(toolPath / "Lha.exe");
  EXPECT_EQ(LhaProgram(s), "lha");
}

// The patterns of both archivers, built also where the ZIP archive is not (Windows).
TEST(FilePatterns, WildcardsMatchAsTheFileDialogsDo) {
  for (const auto& [pattern, name, matches] :
       {std::tuple{"*.*", "README", true}, {"T1.*", "T1.def", true}, {"T1.*", "t1.DEF", true}, {"T1.*", "T1", true},
        {"T1.*", "T1.tar.gz", true}, {"T1.*", "T10.def", false}, {"T?.raw", "T2.raw", true},
        {"T?.raw", "T22.raw", false}, {"*a*b*", "xxaYYbzz", true}, {"*a*b", "xxaYYbzz", false}, {"*", "", true},
        {"?", "", false}}) {
    EXPECT_EQ(WildcardMatch(pattern, name), matches) << pattern << " " << name;
  }
}

// File names are bytes of the local code page, also above 127: a pattern finds such a file under
// the bytes the job's files are opened with, and the found path reads it.
TEST_F(LzhCommands, APatternFindsANameWithBytesAbove127AsTheFileIsOpened) {
  const std::string name = "Comt\xE9.COR";
  WriteFileBytes(JobDir() + name, "x\r\n");
  const PatternFiles found = ExpandPattern("*.cor", jobPath.string());
  ASSERT_EQ(found.names, std::vector<std::string>{name});
  std::string bytes;
  EXPECT_TRUE(ReadFileBytes(found.Path(name), bytes));
  EXPECT_EQ(bytes, "x\r\n");
}

}  // namespace
}  // namespace tessel::test
