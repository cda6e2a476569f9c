// The menu commands that start the suite's tools: the table of rows, the command lines and
// folders of the launches, the confirmations, the side files, the rereading after a run.

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/coordinate_files.h"
#include "core/identity.h"
#include "core/paths.h"
#include "core/text.h"
#include "parcels/parcel_file.h"
#include "process_probe.h"
#include "test_support.h"
#include "tools/command_table.h"
#include "viewer/drawing.h"

namespace tessel::test {
namespace {

class Commands : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    s.ToolFolder = session.ToolFolder;
    s.JobFolder = session.JobFolder;
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    s.CurrentFolder = session.CurrentFolder;
    s.display = &display;
  }

  std::string Tool(const std::string& name) const { return ToolDir() + PathSeparator() + name + ".exe"; }

  void Run(const std::string& name) {
    const CommandRow* row = FindCommand(name);
    ASSERT_NE(row, nullptr) << name;
    RunCommand(s, *row);
  }

  void Points(const std::vector<std::tuple<std::string, double, double>>& points) {
    int i = 0;
    for (const auto& [id, x, y] : points) s.points.Set(++i, id, x, y);
    s.points.SetCount(static_cast<std::int16_t>(i));
  }

  void WriteIid() const {
    WriteJob("T1N2E.iid", {"TITLE", "Sec_001  A T_W  1", " 100100 100200 100300 100100",
                           Row({{1, " PARCEL N,E"}, {17, "   1333.333"}, {33, "   1666.667"}})});
  }

  ProcessProbe probe;
  Session s{user, canvas, probe};
  RecordingDisplay display;
};

bool SameLaunch(const RecordedLaunch& a, const RecordedLaunch& b) {
  return a.kind == b.kind && a.commandLine == b.commandLine && a.folder == b.folder;
}

#define EXPECT_LAUNCHES(...)                                                              \
  do {                                                                                    \
    const std::vector<RecordedLaunch> wanted = {__VA_ARGS__};                             \
    ASSERT_EQ(probe.launches.size(), wanted.size());                                      \
    for (std::size_t i = 0; i < wanted.size(); ++i) {                                     \
      EXPECT_TRUE(SameLaunch(probe.launches[i], wanted[i]))                               \
          << probe.launches[i].kind << " " << probe.launches[i].commandLine << " in "     \
          << probe.launches[i].folder;                                                    \
    }                                                                                     \
  } while (0)

TEST_F(Commands, TableHoldsEveryRowUnderAKnownMenuWithUniqueNames) {
  const std::vector<SubmenuRow>& subs = SubmenuTable();
  ASSERT_EQ(subs.size(), 5u);
  const std::map<std::string, std::pair<std::string, std::string>> expected = {
      {"mnuFileImport", {"mnuFile", "&Import"}},
      {"mnuFileExport", {"mnuFile", "&Export"}},
      {"mnuCommandCadastral", {"mnuCommand", "Cadastral Tools"}},
      {"mnuCommandUtilities", {"mnuCommand", "Utilities"}},
      {"mnuCommandQuality", {"mnuCommand", "Data Quality Tools"}}};
  for (const SubmenuRow& sub : subs) {
    ASSERT_TRUE(expected.count(sub.name)) << sub.name;
    EXPECT_EQ(sub.parent, expected.at(sub.name).first);
    EXPECT_EQ(sub.caption, expected.at(sub.name).second);
  }

  std::set<std::string> menus = {"mnuFile", "mnuEdit", "mnuCommand", "mnuAttributes", "mnuReports", "mnuRegions"};
  for (const SubmenuRow& sub : subs) menus.insert(sub.name);
  std::set<std::string> names;
  int plain = 0;
  for (const CommandRow& row : CommandTable()) {
    EXPECT_TRUE(menus.count(row.menu)) << row.name;
    EXPECT_TRUE(names.insert(row.name).second) << "twice: " << row.name;
    EXPECT_EQ(row.name.rfind(row.menu, 0), 0u) << row.name << " is not named after " << row.menu;
    if (row.kind == CommandKind::Plain) {
      ++plain;
      EXPECT_FALSE(row.tool.empty()) << row.name;
    }
  }
  // 3 File, 6 Import, 4 Export, 5 Edit, 5 Command, 5 Cadastral, 5 Utilities, 6 Quality,
  // 3 Attributes, 5 Regions.
  EXPECT_EQ(plain, 47);
  EXPECT_EQ(CommandTable().size(), 63u);
}

TEST_F(Commands, NamedEntriesKeepTheirNamesCaptionsAndKinds) {
  struct Want {
    const char* name;
    const char* caption;
    const char* tool;
    CommandKind kind;
  };
  const Want wants[] = {
      {"mnuAttributesRaw", "Compute Raw Polygons (RINGFORM)", "ringform", CommandKind::ComputePolygons},
      {"mnuAttributesCRPO", "Compute Raw Polygon Centroids", "", CommandKind::Centroids},
      {"mnuFileProperties", "&Properties (JOBPROPS)", "jobprops", CommandKind::Plain},
      {"mnuFileConvert", "Convert FF to OBS", "freeobs", CommandKind::Plain},
      {"mnuCommandFit386", "&Least Squares Analysis (FIT386)", "", CommandKind::NoAction},
      {"mnuCommandFitmain", "&Least Squares Analysis (FITMAIN)", "fitmain", CommandKind::LeastSquares},
      {"mnuFileImportUniqpts", "&MERIDA dataset (UNIQPTS)", "uniqpts", CommandKind::Plain},
      {"mnuAttributesDescin", "Convert MERIDA .an to .iid (DESCIN)", "descin", CommandKind::Plain},
      {"mnuCommandCadastralLinesplit", "Proportioning  (LINESPLIT)", "linesplit", CommandKind::Plain},
      {"mnuRegionsRingcheck", "Check Polygons (RINGCHECK)", "ringcheck", CommandKind::Plain},
      {"mnuAttributesRingcheck", "Check Polygons (RINGCHECK)", "ringcheck", CommandKind::CheckPolygons},
      {"mnuEditRecpad", "Input / Edit &Record data (RECPAD)", "recpad", CommandKind::RecordEditor},
  };
  for (const Want& w : wants) {
    const CommandRow* row = FindCommand(w.name);
    ASSERT_NE(row, nullptr) << w.name;
    EXPECT_EQ(row->caption, w.caption);
    EXPECT_EQ(row->tool, w.tool);
    EXPECT_EQ(row->kind, w.kind) << w.name;
  }
  EXPECT_EQ(FindCommand("mnuCommandNothing"), nullptr);
}

TEST_F(Commands, PlainRowsSpawnTheirToolInTheJobFolderAndLeaveThePicture) {
  for (const CommandRow& row : CommandTable()) {
    if (row.kind != CommandKind::Plain) continue;
    probe.launches.clear();
    probe.modes.clear();
    RunCommand(s, row);
    EXPECT_LAUNCHES({"Spawn", Tool(row.tool), JobDir()});
    EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
  }
  EXPECT_TRUE(display.calls.empty());
  EXPECT_TRUE(user.messages.empty());
  EXPECT_TRUE(user.pointers.empty());
}

TEST_F(Commands, ToolIsFoundInTheToolFolderWhateverItsCase) {
  WriteTool("SeedXY.EXE", {"x"});
  WriteTool("netsort", {"x"});
  Run("mnuCommandSeedxy");
  Run("mnuFileNetsort");
  Run("mnuCommandPtshift");  // not there: the name as built
  EXPECT_LAUNCHES({"Spawn", ToolDir() + PathSeparator() + "SeedXY.EXE", JobDir()},
                  {"Spawn", ToolDir() + PathSeparator() + "netsort", JobDir()},
                  {"Spawn", Tool("ptshift"), JobDir()});
}

TEST_F(Commands, ALaunchThatFailsIsSteppedOver) {
  probe.fail = true;
  WriteJob("T1N2E.COR", {CorRow("100100", "1000", "1000")});
  EXPECT_NO_THROW(Run("mnuCommandQualityRingclose"));
  EXPECT_NO_THROW(Run("mnuCommandFitmain"));
  // The files are read as if the tool had run.
  EXPECT_EQ(s.points.PointCount(), 1);
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
}

TEST_F(Commands, LeastSquaresReloadsAndRedrawsInTheSameView) {
  Viewer viewer(s);
  s.display = &viewer;
  WriteJob("T1N2E.COR", {CorRow("100100", "1000", "1000"), CorRow("100200", "2000", "1500")});
  s.view.ViewLeft = 1200.0f;
  s.view.ViewTop = 1400.0f;
  s.view.ViewRight = 1300.0f;
  s.view.ViewBottom = 1300.0f;
  s.view.ScaleLeft = 1200.0f;
  s.view.ScaleTop = 1400.0f;
  Run("mnuCommandFitmain");
  EXPECT_LAUNCHES({"Run", Tool("fitmain"), JobDir()});
  EXPECT_EQ(s.points.PointCount(), 2);
  EXPECT_EQ(s.points.PointIds(2), "100200");
  EXPECT_EQ(s.view.ViewLeft, 1200.0f);
  EXPECT_EQ(s.view.ViewTop, 1400.0f);
  EXPECT_EQ(s.view.ViewBottom, 1300.0f);
  EXPECT_EQ(s.view.ScaleLeft, 1200.0f);
  EXPECT_EQ(user.pointers.front(), Pointer::Hourglass);
  EXPECT_EQ(user.pointers.back(), Pointer::Default);

  // A job never drawn is fitted to its extents instead.
  s.view = ViewState{};
  Run("mnuCommandFitmain");
  EXPECT_LT(s.view.ViewLeft, 1000.0f);
  EXPECT_GT(s.view.ViewTop, 1500.0f);
}

TEST_F(Commands, LinkDescriptionsAsksBeforeOverwritingAndReadsParcels) {
  WriteIid();
  user.answers.push_back(Answer::No);
  Run("mnuAttributesDesclink");
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You already have run LLD, Are you sure you want to continue? ");
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_EQ(s.parcels.ParcelCount, 0);
  EXPECT_TRUE(display.calls.empty());

  user.answers.push_back(Answer::Yes);
  Run("mnuAttributesDesclink");
  EXPECT_LAUNCHES({"Run", Tool("desclink"), JobDir()});
  EXPECT_EQ(s.parcels.ParcelCount, 1);
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
  EXPECT_EQ(user.pointers.front(), Pointer::Hourglass);
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
}

TEST_F(Commands, LinkDescriptionsWithoutParcelsAsksNothing) {
  Run("mnuAttributesDesclink");
  EXPECT_LAUNCHES({"Run", Tool("desclink"), JobDir()});
  for (const auto& m : user.messages) EXPECT_NE(m.buttons, Buttons::YesNo) << m.text;
}

TEST_F(Commands, ComputeRawPolygonsAnsweredNoRunsAndReadsNothing) {
  Points({{"100100", 0, 0}, {"100200", 30, 0}, {"100300", 0, 30}});
  WriteJob("T1N2E.RPO", {"  1 POLYGONS FOUND", "", "S 100100 100200 100300 100100"});
  user.answers.push_back(Answer::No);
  Run("mnuAttributesRaw");
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You have already computed Raw Polygons. Are you sure you want to continue? ");
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_FALSE(JobHas("T1N2E.CRP"));
  EXPECT_EQ(s.polygons.RawPolygonCount, 0);

  Run("mnuAttributesRaw");  // answered Yes
  EXPECT_LAUNCHES({"Run", Tool("ringform"), JobDir()});
  EXPECT_TRUE(JobHas("T1N2E.CRP"));
  ASSERT_EQ(s.polygons.RawPolygonCount, 1);
  EXPECT_EQ(s.polygons.RawPolygonTag.get(1), "S");
  EXPECT_DOUBLE_EQ(s.polygons.RawPolygonX.get(1), 10.0);
  EXPECT_DOUBLE_EQ(s.polygons.RawPolygonY.get(1), 10.0);
}

TEST_F(Commands, CentroidEntryComputesWithoutRunningATool) {
  Points({{"A", 0, 0}, {"B", 4, 0}, {"C", 4, 4}, {"D", 0, 4}});
  WriteJob("T1N2E.RPO", {"  1 POLYGONS FOUND", "", "S A      B      C      D"});
  Run("mnuAttributesCRPO");
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_EQ(ReadJob("T1N2E.CRP"), PadLeft("2.000", 15) + PadLeft("2.000", 15) + "\r\n");
  // The store is read by the View entry, not here.
  EXPECT_EQ(s.polygons.RawPolygonCount, 0);
}

TEST_F(Commands, CheckPolygonsFromAttributesRunsAndReadsParcels) {
  WriteIid();
  Run("mnuAttributesRingcheck");
  EXPECT_LAUNCHES({"Run", Tool("ringcheck"), JobDir()});
  EXPECT_EQ(s.parcels.ParcelCount, 1);
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
}

TEST_F(Commands, LldImportsRunBlockingAndReadNothing) {
  WriteIid();
  Run("mnuAttributesDescget");
  Run("mnuAttributesDescget2");
  EXPECT_LAUNCHES({"Run", Tool("descget"), JobDir()}, {"Run", Tool("descget2"), JobDir()});
  EXPECT_EQ(user.pointers,
            (std::vector<Pointer>{Pointer::Hourglass, Pointer::Default, Pointer::Hourglass, Pointer::Default}));
  EXPECT_EQ(s.parcels.ParcelCount, 0);
  EXPECT_TRUE(display.calls.empty());
}

TEST_F(Commands, CogopadHasItsHelpBesideTheJobOnlyWhileItRuns) {
  WriteTool("cogopad.hlp", {"HELP"});
  std::string during;
  probe.during = [&] { during = ReadJob("cogopad.hlp"); };
  Run("mnuCommandCogopad");
  EXPECT_LAUNCHES({"RunCode", Tool("cogopad"), JobDir()});
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
  EXPECT_EQ(during, "HELP\r\n");
  EXPECT_FALSE(JobHas("cogopad.hlp"));
  EXPECT_EQ(ReadTool("cogopad.hlp"), "HELP\r\n");
}

TEST_F(Commands, CogopadFromAJobInTheToolFolderKeepsTheMaster) {
  WriteTool("cogopad.hlp", {"HELP"});
  s.JobFolder = ToolDir() + PathSeparator();
  s.JobBase = s.JobFolder + "T1N2E";
  s.CurrentFolder = s.JobFolder;
  Run("mnuCommandCogopad");
  EXPECT_LAUNCHES({"RunCode", Tool("cogopad"), s.JobFolder});
  EXPECT_EQ(ReadTool("cogopad.hlp"), "HELP\r\n");
}

TEST_F(Commands, CogopadRunsWithoutItsHelp) {
  Run("mnuCommandCogopad");
  EXPECT_LAUNCHES({"RunCode", Tool("cogopad"), JobDir()});
  EXPECT_FALSE(JobHas("cogopad.hlp"));
}

TEST_F(Commands, Shift27HasBothGridFilesWhileItRuns) {
  WriteTool("conus.las", {"LAS"});
  WriteTool("conus.los", {"LOS"});
  bool both = false;
  probe.during = [&] { both = ReadJob("conus.las") == "LAS\r\n" && ReadJob("conus.los") == "LOS\r\n"; };
  Run("mnuCommandShift27");
  EXPECT_LAUNCHES({"RunCode", Tool("shift27"), JobDir()});
  EXPECT_TRUE(both);
  EXPECT_FALSE(JobHas("conus.las"));
  EXPECT_FALSE(JobHas("conus.los"));
  EXPECT_EQ(ReadTool("conus.los"), "LOS\r\n");
}

TEST_F(Commands, RecordEditorNeedsAJobAndLocksItsOwnEntry) {
  s.JobBase.clear();
  Run("mnuEditRecpad");
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You must first Open or Create a job."});
  EXPECT_TRUE(probe.launches.empty());

  s.JobBase = JobDir() + "T1N2E";
  Run("mnuEditRecpad");
  EXPECT_LAUNCHES({"Watch", Tool("recpad"), JobDir()});
  EXPECT_EQ(probe.locked, std::vector<std::vector<std::string>>{{"mnuEditRecpad"}});
  EXPECT_EQ(user.messages.size(), 1u);
}

TEST_F(Commands, SubdivisionEditorUnloadsTheCalculationsFormAndLocksBothEntries) {
  const std::vector<std::string> both = {"mnuEditSplitplan", "mnuCommandCadastralSplitplan"};
  std::vector<std::string> unloadedBefore;
  probe.during = [&] { unloadedBefore = user.unloaded; };
  for (const std::string& entry : both) {
    probe.launches.clear();
    probe.locked.clear();
    user.unloaded.clear();
    Run(entry);
    EXPECT_LAUNCHES({"Watch", Tool("splitplan"), JobDir()});
    EXPECT_EQ(unloadedBefore, std::vector<std::string>{"frmADD"});
    EXPECT_EQ(probe.locked, std::vector<std::vector<std::string>>{both});
  }
}

TEST_F(Commands, EditObsOpensTheChosenFileInTheEditor) {
  Run("mnuEditObs");  // cancelled
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].filter, "Observation Files (*.OBS)|*.obs|All Files (*.*)|*.*");
  EXPECT_TRUE(probe.launches.empty());

  user.files.push_back(FileChoice{JobDir() + "T1N2E.OBS", "T1N2E.OBS"});
  Run("mnuEditObs");
  EXPECT_LAUNCHES({"Spawn", PlatformProgram("Notepad.exe") + " " + JobDir() + "T1N2E.OBS", JobDir()});
  EXPECT_EQ(probe.modes, std::vector<ShowMode>{ShowMode::Normal});
}

TEST_F(Commands, Lsa2CorWritesTheLsaPointsAsCor) {
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("100100", "1000", "1000")}, {LsaLineRow("100100", "100200")},
                                {LsaPointRow("100100", "1000", "1000"), LsaPointRow("100200", "2000", "1500.5")}));
  Run("mnuCommandUtilitiesLsa2cor");
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({CorLine("100100", 1000, 1000), CorLine("100200", 2000, 1500.5)}));
}

TEST_F(Commands, ShellStartsTheCommandWindowInTheJobFolder) {
  s.CurrentFolder = root.string();
  Run("mnuCommandUtilitiesShell");
  EXPECT_EQ(s.CurrentFolder, JobDir());
  EXPECT_LAUNCHES({"Spawn", PlatformProgram("Command.com"), JobDir()});
}

TEST_F(Commands, NoActionEntryDoesNothing) {
  Run("mnuCommandFit386");
  EXPECT_TRUE(probe.launches.empty());
  EXPECT_TRUE(user.messages.empty());
  EXPECT_TRUE(user.pointers.empty());
  EXPECT_TRUE(user.fileRequests.empty());
  EXPECT_TRUE(display.calls.empty());
}

TEST(PlatformProgram, WindowsNamesHaveStandInsWhateverTheirCase) {
#ifdef _WIN32
  EXPECT_EQ(PlatformProgram("Notepad.exe"), "Notepad.exe");
  EXPECT_EQ(PlatformProgram("Command.com"), "Command.com");
#else
  EXPECT_EQ(PlatformProgram("Notepad.exe"), "xdg-open");
  EXPECT_EQ(PlatformProgram("NOTEPAD.EXE"), "xdg-open");
  EXPECT_EQ(PlatformProgram("command.COM"), "x-terminal-emulator");
  EXPECT_EQ(PlatformProgram("msinfo32.exe"), "hardinfo");
#endif
  EXPECT_EQ(PlatformProgram("/usr/bin/gedit"), "/usr/bin/gedit");
  EXPECT_EQ(PlatformProgram("C:\\Windows\\Notepad.exe"), "C:\\Windows\\Notepad.exe");
}

}  // namespace
}  // namespace tessel::test
