// The menu commands that start the suite's tools: the command lines and folders of the launches,
// the rereading after a run, the scripted run of recpad with its batch file, and which tools are
// Windows programs and what starts them.

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "datasets/coordinate_files.h"
#include "job/command_table.h"
#include "model/paths.h"
#include "model/text.h"
#include "tools/launching.h"
#include "tools/tool_runner.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;

class Commands : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    session.display = &display;
  }
  std::string Tool(const std::string& name) const { return ToolDir() + PathSeparator() + name + ".exe"; }
  // A launch as Launched() lists it; in the job folder unless told otherwise.
  std::string Launch(const std::string& kind, const std::string& command, std::string folder = {}) const {
    return kind + " " + command + " in " + (folder.empty() ? JobDir() : folder);
  }
  Strings Launched() const {
    Strings out;
    for (const RecordedLaunch& l : processes.launches) out.push_back(l.kind + " " + l.commandLine + " in " + l.folder);
    return out;
  }
  void Forget() {
    processes = ProcessProbe{};
    user = RecordingUserPort{};
    display.calls.clear();
  }
  void Run(const std::string& name) {
    const CommandRow* row = FindCommand(name);
    ASSERT_NE(row, nullptr) << name;
    RunCommand(session, *row);
  }
  void WriteIid() const {
    WriteJob("T1N2E.iid", {"TITLE", "Sec_001  A T_W  1", " 100100 100200 100300 100100",
                           LocationRow("1333.333", "1666.667")});
  }
  void WriteRpo() const { WriteJob("T1N2E.RPO", {"  1 POLYGONS FOUND", "", "S 100100 100200 100300 100100"}); }

  RecordingDisplay display;
};

TEST_F(Commands, PlainRowsSpawnTheirToolFoundInAnyCaseAndLeaveThePicture) {
  WriteTool("SeedXY.EXE", {"x"});
  WriteTool("netsort", {"x"});
  const std::string dir = ToolDir() + PathSeparator();
  const std::map<std::string, std::string> found = {{"seedxy", dir + "SeedXY.EXE"}, {"netsort", dir + "netsort"}};
  for (const CommandRow& row : CommandTable()) {
    if (row.kind != CommandKind::Plain) continue;
    Forget();
    ASSERT_FALSE(row.tool.empty()) << row.name;
    RunCommand(session, row);
    EXPECT_EQ(Launched(), Strings{Launch("Spawn", found.count(row.tool) ? found.at(row.tool) : Tool(row.tool))});
    EXPECT_EQ(processes.modes, std::vector<ShowMode>{ShowMode::Normal});
    EXPECT_TRUE(display.calls.empty() && user.messages.empty()) << row.name;
  }
}

TEST_F(Commands, EachSpecialRowLaunchesItsOwnWayAndAsksNothingWithoutCause) {
  const Strings both = {"mnuEditSplitplan", "mnuCommandCadastralSplitplan"};
  const std::tuple<const char*, std::string, Strings> cases[] = {
      {"mnuCommandFitmain", Launch("Run", Tool("fitmain")), {}},
      {"mnuAttributesDesclink", Launch("Run", Tool("desclink")), {}},
      {"mnuAttributesRaw", Launch("Run", Tool("ringform")), {}},
      {"mnuAttributesRingcheck", Launch("Run", Tool("ringcheck")), {}},
      {"mnuAttributesDescget", Launch("Run", Tool("descget")), {}},
      {"mnuAttributesDescget2", Launch("Run", Tool("descget2")), {}},
      {"mnuCommandCogopad", Launch("RunCode", Tool("cogopad")), {}},
      {"mnuCommandShift27", Launch("RunCode", Tool("shift27")), {}},
      {"mnuEditRecpad", Launch("Watch", Tool("recpad")), {"mnuEditRecpad"}},
      {"mnuEditSplitplan", Launch("Watch", Tool("splitplan")), both},
      {"mnuCommandCadastralSplitplan", Launch("Watch", Tool("splitplan")), both},
      {"mnuCommandUtilitiesShell", Launch("Spawn", PlatformProgram("Command.com")), {}},
  };
  // What was unloaded when the tool started; it lives as long as the probe that fills it.
  Strings unloadedBefore;
  for (const auto& [entry, launch, locked] : cases) {
    Forget();
    unloadedBefore.clear();
    processes.during = [&] { unloadedBefore = user.unloaded; };
    const bool blocking = launch.rfind("Run", 0) == 0;
    processes.fail = blocking;  // a failed launch is stepped over
    EXPECT_NO_THROW(Run(entry));
    EXPECT_EQ(Launched(), Strings{launch}) << entry;
    EXPECT_EQ(processes.modes, std::vector<ShowMode>{ShowMode::Normal}) << entry;
    EXPECT_EQ(processes.locked, std::vector<Strings>{locked}) << entry;
    EXPECT_EQ(unloadedBefore, locked == both ? Strings{"frmADD"} : Strings{}) << entry;
    for (const RecordedMessage& m : user.messages) EXPECT_NE(m.buttons, Buttons::YesNo) << entry << m.text;
  }
  processes.during = nullptr;
  processes.fail = false;
  session.CurrentFolder = root.string();
  Run("mnuCommandUtilitiesShell");
  EXPECT_EQ(session.CurrentFolder, JobDir());

  // The entries of no tool start nothing, and Fit386 does nothing at all; Lsa2Cor copies the
  // points of .LSA into .COR.
  Forget();
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("100100", "1000", "1000")}, {LsaLineRow("100100", "100200")},
                                {LsaPointRow("100100", "1000", "1000"), LsaPointRow("100200", "2000", "1500.5")}));
  for (const char* entry : {"mnuAttributesCRPO", "mnuCommandUtilitiesLsa2cor", "mnuCommandFit386"}) Run(entry);
  EXPECT_TRUE(processes.launches.empty() && user.messages.empty() && display.calls.empty());
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({CorLine("100100", 1000, 1000), CorLine("100200", 2000, 1500.5)}));
  // Nor does the record editor without a job, but tell so.
  session.JobBase.clear();
  Run("mnuEditRecpad");
  EXPECT_EQ(user.MessageTexts(), Strings{"You must first Open or Create a job."});
  EXPECT_TRUE(processes.launches.empty());
}

TEST_F(Commands, Lsa2CorWritesNothingFromAnLsaItCouldNotReadThrough) {
  const std::vector<std::string> cor = {CorRow("100100", "10", "10"), CorRow("100200", "20", "20")};
  WriteJob("T1N2E.COR", cor);
  const std::string before = ReadJob("T1N2E.COR");
  const std::vector<std::string> lsa = LsaFile({ControlRow("900100", "1000", "1000")}, {LsaLineRow("100100", "900100")},
                                               {LsaPointRow("100100", "1000", "1000"), LsaPointRow("900100", "5", "5")});
  session.points.Append("100100", 10, 10);  // what the store held before: .COR and a control station
  session.points.Append("800800", 3, 3);
  // Cut to two lines, cut inside its points, or missing: .COR stays, and the user is told why.
  for (const std::size_t keep : {std::size_t{2}, lsa.size() - 1, std::size_t{0}}) {
    user.messages.clear();
    if (keep == 0) {
      std::filesystem::remove(jobPath / "T1N2E.LSA");
    } else {
      WriteJob("T1N2E.LSA", std::vector<std::string>(lsa.begin(), lsa.begin() + static_cast<std::ptrdiff_t>(keep)));
    }
    Run("mnuCommandUtilitiesLsa2cor");
    EXPECT_EQ(ReadJob("T1N2E.COR"), before) << keep;
    EXPECT_EQ(user.MessageTexts(), Strings{LsaPointsUnreadText(JobDir() + "T1N2E.LSA", JobDir() + "T1N2E.COR")})
        << keep;
  }
  WriteJob("T1N2E.LSA", lsa);
  user.messages.clear();
  Run("mnuCommandUtilitiesLsa2cor");
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({CorLine("100100", 1000, 1000), CorLine("900100", 5, 5)}));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(Commands, LaunchesKeepBlanksInTheirProgramAndArguments) {
  std::filesystem::create_directories(root / "Tessel Suite");
  session.ToolFolder = (root / "Tessel Suite").string();
  WriteLines(root / "Tessel Suite" / "seedxy.exe", {"x"});
  Run("mnuCommandSeedxy");
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].launch, (tessel::Launch{session.ToolFolder + PathSeparator() + "seedxy.exe", {}}));
  // The observation file chosen goes to the editor as one argument, blanks and all.
  Forget();
  session.config.EditorPath = "/opt/my editor/edit";
  user.files.push_back(FileChoice{JobDir() + "a b.obs", "a b.obs"});
  Run("mnuEditObs");
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].launch, (tessel::Launch{"/opt/my editor/edit", {JobDir() + "a b.obs"}}));
  EXPECT_EQ(processes.launches[0].commandLine, "\"/opt/my editor/edit\" \"" + JobDir() + "a b.obs\"");
}

TEST_F(Commands, BlockingRunsRereadWhatTheirToolChanged) {
  WriteJob("T1N2E.COR", {CorRow("100100", "0", "0"), CorRow("100200", "30", "0"), CorRow("100300", "0", "30"),
                         CorRow("100400", "40", "40")});
  session.view.ViewLeft = 1200.0f;
  Run("mnuCommandFitmain");  // reloads, then redraws in the same view
  EXPECT_EQ(session.points.PointCount(), 4);
  EXPECT_EQ(display.calls, (Strings{"RefreshView", "RefreshView"}));
  session.view = ViewState{};  // a job never drawn is fitted to its extents
  Run("mnuCommandFitmain");
  EXPECT_EQ(display.calls, (Strings{"RefreshView", "RefreshView", "RefreshViewAfterExtents", "RefreshView"}));

  user.messages.clear();
  WriteIid();
  const std::pair<const char*, int> parcelReads[] = {{"mnuAttributesDesclink", 1}, {"mnuAttributesRingcheck", 1},
                                                     {"mnuAttributesDescget", 0}, {"mnuAttributesDescget2", 0}};
  for (const auto& [entry, parcels] : parcelReads) {
    display.calls.clear();
    session.parcels.ParcelCount = 0;
    Run(entry);  // a question is answered Yes when no answer is prepared
    EXPECT_EQ(session.parcels.ParcelCount, parcels) << entry;
    EXPECT_EQ(display.calls, parcels ? Strings{"RefreshView"} : Strings{}) << entry;
  }

  // The centroid entry writes .CRP without reading it; Compute Raw Polygons computes and reads.
  WriteRpo();
  Run("mnuAttributesCRPO");
  EXPECT_EQ(ReadJob("T1N2E.CRP"), PadLeft("10.000", 15) + PadLeft("10.000", 15) + "\r\n");
  EXPECT_EQ(session.polygons.RawPolygonCount, 0);
  std::filesystem::remove(jobPath / "T1N2E.CRP");
  user.answers = {Answer::No};  // No to the question before the run stops everything
  Run("mnuAttributesRaw");
  EXPECT_EQ(session.polygons.RawPolygonCount, 0);
  Run("mnuAttributesRaw");
  EXPECT_EQ(user.MessageTexts(), (Strings{"You already have run LLD, Are you sure you want to continue? ",
                                          "You have already computed Raw Polygons. Are you sure you want to continue? ",
                                          "You have already computed Raw Polygons. Are you sure you want to continue? "}));
  EXPECT_EQ(std::tuple(session.polygons.RawPolygonCount, session.polygons.RawPolygonTag.get(1),
                       session.polygons.RawPolygonX.get(1), session.polygons.RawPolygonY.get(1)),
            std::tuple(1, "S", 10.0, 10.0));
}

TEST_F(Commands, SideFilesStandBesideTheJobOnlyWhileTheToolRuns) {
  const std::pair<const char*, Strings> cases[] = {{"mnuCommandCogopad", {"cogopad.hlp"}},
                                                    {"mnuCommandShift27", {"conus.las", "conus.los"}}};
  for (const auto& [entry, sideFiles] : cases) {
    const Strings& files = sideFiles;  // a binding of its own, which the probe can capture
    for (const std::string& f : files) WriteTool(f, {f});
    Strings during;  // the side files found beside the job with the master's bytes
    processes.during = [&] {
      for (const std::string& f : files) during.push_back(ReadJob(f) == f + "\r\n" ? f : "not " + f);
    };
    Run(entry);
    processes.during = nullptr;
    EXPECT_EQ(during, files);
    for (const std::string& f : files) EXPECT_TRUE(!JobHas(f) && ReadTool(f) == f + "\r\n") << f;
  }
  // A job in the tool folder keeps the master.
  session.JobFolder = session.CurrentFolder = ToolDir() + PathSeparator();
  session.JobBase = session.JobFolder + "T1N2E";
  Run("mnuCommandCogopad");
  EXPECT_EQ(Launched().back(), Launch("RunCode", Tool("cogopad"), session.JobFolder));
  EXPECT_EQ(ReadTool("cogopad.hlp"), "cogopad.hlp\r\n");
}

class Launching : public JobFixture {
 protected:
  void SetUp() override { UseJob(); }
  std::vector<std::string> Listing() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(jobPath)) names.push_back(entry.path().filename().string());
    return names;
  }
};

TEST_F(Launching, RecpadScriptWritesAnswersAndBatchRunsHiddenAndCleansUpWhateverHappens) {
  WriteTool("RECPAD.EXE", {"x"});  // the program is named as it stands in the tool folder
  const std::string recpad = ToolDir() + PathSeparator() + "RECPAD.EXE";
  for (const bool fails : {false, true}) {
    WriteJob("t1n2e.002", {"scratch"});  // in whatever case the tool left it
    WriteJob("T1N2E.raw", {"RECORD DATA"});
    std::string answers, batch;
    processes = ProcessProbe{};
    processes.fail = fails;  // a failed run is stepped over
    processes.during = [&] {
      answers = ReadJob("t1$.001");
      batch = ReadJob("temp.bat");
    };
    EXPECT_NO_THROW(RunRecpadScript(session));
    ASSERT_EQ(processes.launches.size(), 1u);
    const RecordedLaunch& l = processes.launches[0];
    EXPECT_EQ(l.kind + " " + l.commandLine + " in " + l.folder, "RunCode temp.bat in " + JobDir());
    EXPECT_EQ(processes.modes, std::vector<ShowMode>{ShowMode::Hidden});
    EXPECT_EQ(answers, "\r\n\r\n\r\n\r\n\r\n\r\n");
    EXPECT_EQ(batch, "\"" + recpad + "\"  <\"" + JobDir() + "t1$.001\"\r\nexit\r\n");
    EXPECT_EQ(Joined(Listing()), "T1N2E.raw");
    EXPECT_TRUE(user.messages.empty());
  }
  // Where there is no shell the batch file's one command is read back.
  WriteJobBytes("copy.bat", ScriptCommand(session, "recpad.exe", "apdin.001") + "\r\nexit\r\n");
  const auto command = ReadBatchCommand((jobPath / "copy.bat").string());
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->program + "|" + command->input, recpad + "|" + JobDir() + "apdin.001");
  fs::remove(jobPath / "copy.bat");

  // Without a job: told, and nothing written or run.
  session.JobBase.clear();
  session.JobName.clear();
  processes = ProcessProbe{};
  RunRecpadScript(session);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You must first Open or Create a job."});
  EXPECT_TRUE(processes.launches.empty());
  EXPECT_EQ(Joined(Listing()), "T1N2E.raw");
}

TEST_F(Launching, QuotesInAFolderAreDoubledAndReadBack) {
  // A double quote may stand in a folder's name here (Windows allows none): doubled inside the
  // quotes, it comes back whole, and the command keeps its shape.
#ifdef _WIN32
  GTEST_SKIP() << "Windows allows no double quote in a folder's name";
#endif
  std::filesystem::create_directories(root / "a \"b\" c");
  session.JobFolder = (root / "a \"b\" c").string() + PathSeparator();
  session.ToolFolder = (root / "a \"b\" c").string();
  const std::string line = ScriptCommand(session, "recpad.exe", "t1$.001");
  EXPECT_EQ(line, "\"" + (root / "a \"\"b\"\" c").string() + PathSeparator() + "recpad.exe\"  <\"" +
                      (root / "a \"\"b\"\" c").string() + PathSeparator() + "t1$.001\"");
  WriteJobBytes("q.bat", line + "\r\nexit\r\n");
  const auto command = ReadBatchCommand((jobPath / "q.bat").string());
  ASSERT_TRUE(command.has_value());
  EXPECT_EQ(command->program, session.ToolFolder + PathSeparator() + "recpad.exe");
  EXPECT_EQ(command->input, session.JobFolder + "t1$.001");
  // An unclosed quote, or a lone quote after the doubled one, is not a command.
  WriteJobBytes("r.bat", "\"a\"\"  <\"b\"\r\n");
  EXPECT_FALSE(ReadBatchCommand((jobPath / "r.bat").string()).has_value());
}


// The first bytes of a Windows executable: "MZ", the offset of the PE signature at 0x3C, the
// signature there; `signature` varies the last.
std::string WindowsHeader(std::uint32_t offset = 0x80, const std::string& signature = std::string("PE\0\0", 4)) {
  std::string bytes(offset + 4 + 20, '\0');
  bytes[0] = 'M';
  bytes[1] = 'Z';
  for (int k = 0; k < 4; ++k) bytes[0x3C + k] = static_cast<char>((offset >> (8 * k)) & 0xFF);
  bytes.replace(offset, signature.size(), signature);
  return bytes;
}

class WindowsPrograms : public JobFixture {
 protected:
  std::string ToolBytes(const std::string& name, const std::string& bytes) const {
    WriteJobBytes(name, bytes);
    return (jobPath / name).string();
  }
};

TEST_F(WindowsPrograms, TheHeaderTellsAWindowsProgramNotItsName) {
  EXPECT_TRUE(IsWindowsProgram(ToolBytes("fitmain", WindowsHeader())));
  // The signature may stand far into the file, past the 16 bits of a DOS offset.
  EXPECT_TRUE(IsWindowsProgram(ToolBytes("far.bin", WindowsHeader(0x10040))));
  // A program of this system under a Windows name, a DOS program, a header cut short, the
  // signature past the end or misspelt, an empty file and no file at all are not.
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("FITMAIN.EXE", "\x7F" "ELF\x02\x01\x01" + std::string(100, '\0'))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("dos.exe", "MZ" + std::string(100, '\0'))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("short.exe", WindowsHeader().substr(0, 0x3E))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("past.exe", WindowsHeader().substr(0, 0x82))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("ne.exe", WindowsHeader(0x80, "NE"))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("pe1.exe", WindowsHeader(0x80, std::string("PE\0\1", 4)))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("zm.exe", "ZM" + WindowsHeader().substr(2))));
  EXPECT_FALSE(IsWindowsProgram(ToolBytes("empty.exe", "")));
  EXPECT_FALSE(IsWindowsProgram((jobPath / "none.exe").string()));
  EXPECT_FALSE(IsWindowsProgram(jobPath.string()));
}

TEST_F(WindowsPrograms, WineRunsThemUnlessTheSettingSaysOtherwiseAndItsAbsenceIsSaid) {
  Strings asked;
  const auto finder = [&asked](const std::map<std::string, std::string>& there) {
    return [&asked, there](const std::string& runner) {
      asked.push_back(runner);
      const auto found = there.find(runner);
      return found == there.end() ? std::string() : found->second;
    };
  };
  const auto withWine = finder({{"wine", "/usr/bin/wine"}, {"/opt/wine-9/bin/wine", "/opt/wine-9/bin/wine"}});
  const auto without = finder({});
  const std::string tool = "/opt/suite/FITMAIN.EXE";
  const auto choice = [](const RunnerChoice& c) { return c.runner + "|" + c.refusal; };

  // A program of this system, or any program where Windows programs run by themselves, or with
  // no runner set, starts itself; no runner is even looked for.
  EXPECT_EQ(Joined({choice(ChooseRunner(tool, false, false, "", without)),
                    choice(ChooseRunner(tool, true, true, "", without)),
                    choice(ChooseRunner(tool, true, false, "none", without)),
                    choice(ChooseRunner(tool, true, false, " None ", without))},
                   " "),
            "| | | |");
  EXPECT_TRUE(asked.empty());
  // Wine by default, an empty setting being the default; another runner when set.
  EXPECT_EQ(choice(ChooseRunner(tool, true, false, "", withWine)), "/usr/bin/wine|");
  EXPECT_EQ(choice(ChooseRunner(tool, true, false, "  wine ", withWine)), "/usr/bin/wine|");
  EXPECT_EQ(choice(ChooseRunner(tool, true, false, "/opt/wine-9/bin/wine", withWine)), "/opt/wine-9/bin/wine|");
  EXPECT_EQ(asked, (Strings{"wine", "wine", "/opt/wine-9/bin/wine"}));
  // Missing, the runner is named, and the program as it was asked for.
  EXPECT_EQ(choice(ChooseRunner(tool, true, false, "", without)),
            "|FITMAIN.EXE is a Windows program; install Wine to run it");
  EXPECT_EQ(choice(ChooseRunner("C:\\Suite\\recpad.exe", true, false, "/opt/box/wine", without)),
            "|recpad.exe is a Windows program; its runner /opt/box/wine (Configuration Options) was not found");
}

TEST_F(WindowsPrograms, TheRunnerSettingIsAFileOfItsOwnBesideTesselCfg) {
  const std::string ini = (toolPath / "tessel-tools.ini").string();
  EXPECT_EQ(ReadToolRunner(ini), "wine");
  // Written where there is none; its other lines kept when there is one, the last runner line
  // read and the first replaced, blanks trimmed.
  WriteToolRunner(ini, " /opt/wine-9/bin/wine ");
  EXPECT_EQ(ReadTool("tessel-tools.ini"), "runner=/opt/wine-9/bin/wine\r\n");
  WriteTool("tessel-tools.ini", {"# Tessel's own settings", "Runner = none", "other=1", "runner=wine64"}, Eol::Lf);
  EXPECT_EQ(ReadToolRunner(ini), "wine64");
  WriteToolRunner(ini, "");
  EXPECT_EQ(ReadTool("tessel-tools.ini"), "# Tessel's own settings\r\nrunner=wine\r\nother=1\r\n");
  WriteTool("tessel-tools.ini", {"runner="});
  EXPECT_EQ(ReadToolRunner(ini), "wine");
  // Into a folder that is not there: a fault naming the file.
  const std::string missing = (root / "no such folder" / "tessel-tools.ini").string();
  ExpectFault(FaultKind::FileAccess, "Path/File access error: " + missing, [&] { WriteToolRunner(missing, "none"); });
}

}  // namespace
}  // namespace tessel::test
