// The menu commands that start the suite's tools: the table of rows, the command lines and
// folders of the launches, the confirmations, the side files, the rereading after a run.

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "datasets/coordinate_files.h"
#include "model/paths.h"
#include "model/text.h"
#include "process_probe.h"
#include "test_support.h"
#include "job/command_table.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;

class Commands : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    s.ToolFolder = session.ToolFolder;
    s.JobFolder = s.CurrentFolder = JobDir();
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    s.display = &display;
  }
  std::string Tool(const std::string& name) const { return ToolDir() + PathSeparator() + name + ".exe"; }
  // A launch as Launched() lists it; in the job folder unless told otherwise.
  std::string Launch(const std::string& kind, const std::string& command, std::string folder = {}) const {
    return kind + " " + command + " in " + (folder.empty() ? JobDir() : folder);
  }
  Strings Launched() const {
    Strings out;
    for (const RecordedLaunch& l : probe.launches) out.push_back(l.kind + " " + l.commandLine + " in " + l.folder);
    return out;
  }
  void Forget() {
    probe = ProcessProbe{};
    user = RecordingUserPort{};
    display.calls.clear();
  }
  std::vector<Pointer> FirstAndLastPointer() const {
    const std::vector<Pointer>& p = user.pointers;
    return p.empty() ? p : std::vector<Pointer>{p.front(), p.back()};
  }
  void Run(const std::string& name) {
    const CommandRow* row = FindCommand(name);
    ASSERT_NE(row, nullptr) << name;
    RunCommand(s, *row);
  }
  void WriteIid() const {
    WriteJob("T1N2E.iid", {"TITLE", "Sec_001  A T_W  1", " 100100 100200 100300 100100",
                           Row({{1, " PARCEL N,E"}, {17, "   1333.333"}, {33, "   1666.667"}})});
  }
  void WriteRpo() const { WriteJob("T1N2E.RPO", {"  1 POLYGONS FOUND", "", "S 100100 100200 100300 100100"}); }

  ProcessProbe probe;
  Session s{user, canvas, probe};
  RecordingDisplay display;
};

TEST_F(Commands, TableHoldsEveryRowUnderAKnownMenuWithUniqueNames) {
  std::set<std::string> names;
  std::set<std::string> menus = {"mnuFile", "mnuEdit", "mnuCommand", "mnuAttributes", "mnuReports", "mnuRegions"};
  std::set<std::string> subs;
  for (const SubmenuRow& sub : SubmenuTable()) {
    subs.insert(sub.parent + ">" + sub.name + ">" + sub.caption);
    menus.insert(sub.name);
  }
  EXPECT_EQ(subs, (std::set<std::string>{"mnuFile>mnuFileImport>&Import", "mnuFile>mnuFileExport>&Export",
                                         "mnuCommand>mnuCommandCadastral>Cadastral Tools",
                                         "mnuCommand>mnuCommandUtilities>Utilities",
                                         "mnuCommand>mnuCommandQuality>Data Quality Tools"}));
  int plain = 0;
  for (const CommandRow& row : CommandTable()) {
    EXPECT_TRUE(menus.count(row.menu)) << row.name;
    EXPECT_TRUE(names.insert(row.name).second) << "twice: " << row.name;
    EXPECT_EQ(row.name.rfind(row.menu, 0), 0u) << row.name << " is not named after " << row.menu;
    plain += row.kind == CommandKind::Plain;
  }
  EXPECT_EQ(plain, 47);
  EXPECT_EQ(CommandTable().size(), 63u);
  EXPECT_EQ(FindCommand("mnuCommandNothing"), nullptr);
  // Entries whose caption or tool are easily mistyped.
  for (const std::string want : {"mnuFileConvert>Convert FF to OBS>freeobs",
                                 "mnuFileProperties>&Properties (JOBPROPS)>jobprops",
                                 "mnuFileImportUniqpts>&MERIDA dataset (UNIQPTS)>uniqpts",
                                 "mnuCommandCadastralLinesplit>Proportioning  (LINESPLIT)>linesplit",
                                 "mnuAttributesDescin>Convert MERIDA .an to .iid (DESCIN)>descin"}) {
    const CommandRow* row = FindCommand(want.substr(0, want.find('>')));
    ASSERT_NE(row, nullptr) << want;
    EXPECT_EQ(row->name + ">" + row->caption + ">" + row->tool, want);
  }
}

TEST_F(Commands, PlainRowsSpawnTheirToolFoundInAnyCaseAndLeaveThePicture) {
  WriteTool("SeedXY.EXE", {"x"});
  WriteTool("netsort", {"x"});
  const std::string dir = ToolDir() + PathSeparator();
  const std::map<std::string, std::string> found = {{"seedxy", dir + "SeedXY.EXE"}, {"netsort", dir + "netsort"}};
  for (const CommandRow& row : CommandTable()) {
    if (row.kind != CommandKind::Plain) continue;
    Forget();
    ASSERT_FALSE(row.tool.empty()) << row.name;
    RunCommand(s, row);
    EXPECT_EQ(Launched(), Strings{Launch("Spawn", found.count(row.tool) ? found.at(row.tool) : Tool(row.tool))});
    EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
    EXPECT_TRUE(display.calls.empty() && user.messages.empty() && user.pointers.empty()) << row.name;
  }
}

TEST_F(Commands, EachSpecialRowLaunchesItsOwnWayAndAsksNothingWithoutCause) {
  const Strings both = {"mnuEditSplitplan", "mnuCommandCadastralSplitplan"};
  const std::vector<Pointer> hourglass = {Pointer::Hourglass, Pointer::Default};
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
    probe.during = [&] { unloadedBefore = user.unloaded; };
    const bool blocking = launch.rfind("Run", 0) == 0;
    probe.fail = blocking;  // a failed launch is stepped over
    EXPECT_NO_THROW(Run(entry));
    EXPECT_EQ(Launched(), Strings{launch}) << entry;
    EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal}) << entry;
    EXPECT_EQ(probe.locked, std::vector<Strings>{locked}) << entry;
    EXPECT_EQ(unloadedBefore, locked == both ? Strings{"frmADD"} : Strings{}) << entry;
    EXPECT_EQ(FirstAndLastPointer(), blocking ? hourglass : std::vector<Pointer>{}) << entry;
    for (const RecordedMessage& m : user.messages) EXPECT_NE(m.buttons, Buttons::YesNo) << entry << m.text;
  }
  probe.during = nullptr;
  probe.fail = false;
  s.CurrentFolder = root.string();
  Run("mnuCommandUtilitiesShell");
  EXPECT_EQ(s.CurrentFolder, JobDir());

  // The entries of no tool start nothing, and Fit386 does nothing at all; Lsa2Cor copies the
  // points of .LSA into .COR.
  Forget();
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("100100", "1000", "1000")}, {LsaLineRow("100100", "100200")},
                                {LsaPointRow("100100", "1000", "1000"), LsaPointRow("100200", "2000", "1500.5")}));
  for (const char* entry : {"mnuAttributesCRPO", "mnuCommandUtilitiesLsa2cor", "mnuCommandFit386"}) Run(entry);
  EXPECT_TRUE(probe.launches.empty() && user.messages.empty() && user.pointers.empty());
  EXPECT_TRUE(user.fileRequests.empty() && display.calls.empty());
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({CorLine("100100", 1000, 1000), CorLine("100200", 2000, 1500.5)}));
  // Nor does the record editor without a job, but tell so.
  s.JobBase.clear();
  Run("mnuEditRecpad");
  EXPECT_EQ(user.MessageTexts(), Strings{"You must first Open or Create a job."});
  EXPECT_TRUE(probe.launches.empty());
}

TEST_F(Commands, Lsa2CorWritesNothingFromAnLsaItCouldNotReadThrough) {
  const std::vector<std::string> cor = {CorRow("100100", "10", "10"), CorRow("100200", "20", "20")};
  WriteJob("T1N2E.COR", cor);
  const std::string before = ReadJob("T1N2E.COR");
  const std::vector<std::string> lsa = LsaFile({ControlRow("900100", "1000", "1000")}, {LsaLineRow("100100", "900100")},
                                               {LsaPointRow("100100", "1000", "1000"), LsaPointRow("900100", "5", "5")});
  s.points.Append("100100", 10, 10);  // what the store held before: .COR and a control station
  s.points.Append("800800", 3, 3);
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
  s.ToolFolder = (root / "Tessel Suite").string();
  WriteLines(root / "Tessel Suite" / "seedxy.exe", {"x"});
  Run("mnuCommandSeedxy");
  ASSERT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(probe.launches[0].launch, (tessel::Launch{s.ToolFolder + PathSeparator() + "seedxy.exe", {}}));
  // The observation file chosen goes to the editor as one argument, blanks and all.
  Forget();
  s.config.EditorPath = "/opt/my editor/edit";
  user.files.push_back(FileChoice{JobDir() + "a b.obs", "a b.obs"});
  Run("mnuEditObs");
  ASSERT_EQ(probe.launches.size(), 1u);
  EXPECT_EQ(probe.launches[0].launch, (tessel::Launch{"/opt/my editor/edit", {JobDir() + "a b.obs"}}));
  EXPECT_EQ(probe.launches[0].commandLine, "\"/opt/my editor/edit\" \"" + JobDir() + "a b.obs\"");
}

TEST_F(Commands, BlockingRunsRereadWhatTheirToolChanged) {
  WriteJob("T1N2E.COR", {CorRow("100100", "0", "0"), CorRow("100200", "30", "0"), CorRow("100300", "0", "30"),
                         CorRow("100400", "40", "40")});
  s.view.ViewLeft = 1200.0f;
  Run("mnuCommandFitmain");  // reloads under the hourglass, then redraws in the same view
  EXPECT_EQ(s.points.PointCount(), 4);
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Hourglass, Pointer::Default,
                                                 Pointer::Default}));
  EXPECT_EQ(display.calls, (Strings{"RefreshView", "RefreshView"}));
  s.view = ViewState{};  // a job never drawn is fitted to its extents
  Run("mnuCommandFitmain");
  EXPECT_EQ(display.calls, (Strings{"RefreshView", "RefreshView", "RefreshViewAfterExtents", "RefreshView"}));

  WriteIid();
  const std::pair<const char*, int> parcelReads[] = {{"mnuAttributesDesclink", 1}, {"mnuAttributesRingcheck", 1},
                                                     {"mnuAttributesDescget", 0}, {"mnuAttributesDescget2", 0}};
  for (const auto& [entry, parcels] : parcelReads) {
    display.calls.clear();
    s.parcels.ParcelCount = 0;
    Run(entry);  // the question is answered Yes when no answer is prepared
    EXPECT_EQ(s.parcels.ParcelCount, parcels) << entry;
    EXPECT_EQ(display.calls, parcels ? Strings{"RefreshView"} : Strings{}) << entry;
  }

  // The centroid entry writes .CRP without reading it; Compute Raw Polygons computes and reads.
  WriteRpo();
  Run("mnuAttributesCRPO");
  EXPECT_EQ(ReadJob("T1N2E.CRP"), PadLeft("10.000", 15) + PadLeft("10.000", 15) + "\r\n");
  EXPECT_EQ(s.polygons.RawPolygonCount, 0);
  std::filesystem::remove(jobPath / "T1N2E.CRP");
  Run("mnuAttributesRaw");
  ASSERT_EQ(s.polygons.RawPolygonCount, 1);
  EXPECT_EQ(s.polygons.RawPolygonTag.get(1), "S");
  EXPECT_DOUBLE_EQ(s.polygons.RawPolygonX.get(1), 10.0);
  EXPECT_DOUBLE_EQ(s.polygons.RawPolygonY.get(1), 10.0);
}

TEST_F(Commands, QuestionBeforeOverwritingAnsweredNoStopsEverything) {
  WriteRpo();
  WriteIid();
  const std::pair<const char*, const char*> cases[] = {
      {"mnuAttributesDesclink", "You already have run LLD, Are you sure you want to continue? "},
      {"mnuAttributesRaw", "You have already computed Raw Polygons. Are you sure you want to continue? "}};
  for (const auto& [entry, question] : cases) {
    Forget();
    user.answers = {Answer::No};
    Run(entry);
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_EQ(user.messages[0].text, question);
    EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
    EXPECT_TRUE(probe.launches.empty() && display.calls.empty()) << entry;
  }
  EXPECT_EQ(s.parcels.ParcelCount, 0);
  EXPECT_EQ(s.polygons.RawPolygonCount, 0);
  EXPECT_FALSE(JobHas("T1N2E.CRP"));
}

TEST_F(Commands, SideFilesStandBesideTheJobOnlyWhileTheToolRuns) {
  const std::pair<const char*, Strings> cases[] = {{"mnuCommandCogopad", {"cogopad.hlp"}},
                                                    {"mnuCommandShift27", {"conus.las", "conus.los"}}};
  for (const auto& [entry, sideFiles] : cases) {
    const Strings& files = sideFiles;  // a binding of its own, which the probe can capture
    for (const std::string& f : files) WriteTool(f, {f});
    Strings during;  // the side files found beside the job with the master's bytes
    probe.during = [&] {
      for (const std::string& f : files) during.push_back(ReadJob(f) == f + "\r\n" ? f : "not " + f);
    };
    Run(entry);
    probe.during = nullptr;
    EXPECT_EQ(during, files);
    for (const std::string& f : files) EXPECT_TRUE(!JobHas(f) && ReadTool(f) == f + "\r\n") << f;
  }
  // A job in the tool folder keeps the master.
  s.JobFolder = s.CurrentFolder = ToolDir() + PathSeparator();
  s.JobBase = s.JobFolder + "T1N2E";
  Run("mnuCommandCogopad");
  EXPECT_EQ(Launched().back(), Launch("RunCode", Tool("cogopad"), s.JobFolder));
  EXPECT_EQ(ReadTool("cogopad.hlp"), "cogopad.hlp\r\n");
}

TEST_F(Commands, EditObsOpensTheChosenFileInTheEditor) {
  Run("mnuEditObs");  // cancelled
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].filter, "Observation Files (*.OBS)|*.obs|All Files (*.*)|*.*");
  EXPECT_TRUE(probe.launches.empty());

  user.files.push_back(FileChoice{JobDir() + "T1N2E.OBS", "T1N2E.OBS"});
  Run("mnuEditObs");
  EXPECT_EQ(Launched(), Strings{Launch("Spawn", PlatformProgram("Notepad.exe") + " " + JobDir() + "T1N2E.OBS")});
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
}

TEST(PlatformProgram, WindowsNamesHaveStandInsWhateverTheirCase) {
#ifndef _WIN32
  EXPECT_EQ(PlatformProgram("NOTEPAD.EXE"), "xdg-open");
  EXPECT_EQ(PlatformProgram("command.COM"), "x-terminal-emulator");
  EXPECT_EQ(PlatformProgram("msinfo32.exe"), "hardinfo");
#endif
  EXPECT_EQ(PlatformProgram("C:\\Windows\\Notepad.exe"), "C:\\Windows\\Notepad.exe");
}

}  // namespace
}  // namespace tessel::test
