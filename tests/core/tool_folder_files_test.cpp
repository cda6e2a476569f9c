// The files of the tool folder: Tessel.cfg (its defaults, its lines in order, the error route
// that drops all that was read), the configuration dialog's actions (OK, Save, Restore, the
// runner of Windows programs in tessel-tools.ini beside Tessel.cfg), the window places of
// ts$002.cfg, the identity of a job with its TEMP.JOB, and where the tool folder of an installed
// program is.

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>
#include <string>
#include <vector>

#include "datasets/identity.h"
#include "datasets/support_files.h"
#include "datasets/tool_folder.h"
#include "job/config_actions.h"
#include "job/load_sequence.h"
#include "model/config.h"
#include "model/dialog_memory.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class ConfigFile : public JobFixture {
 protected:
  std::string CfgPath() const { return (toolPath / "Tessel.cfg").string(); }

  // A file of 39 lines with no default in it; `editor` and the last tool entry can be varied.
  static std::vector<std::string> Lines(const std::string& editor = "C:\\Tools\\edit.exe",
                                        const std::string& lastPath = "C:\\bin\\twelve.exe",
                                        const std::string& lastCaption = "Twelve") {
    std::vector<std::string> lines = {"6 5", "10,12", "2,1", "3,11", "12.5, 25", "0", editor,
                                      "C:\\bin\\one.exe", "One"};
    for (int k = 2; k <= 11; ++k) {
      lines.push_back("none");
      lines.push_back("");
    }
    lines.push_back(lastPath);
    lines.push_back(lastCaption);
    for (const char* v : {"0", "1", "1", "0", "0", "1", "2", "1"}) lines.push_back(v);
    return lines;
  }
};

TEST_F(ConfigFile, MissingFileGivesTheDefaults) {
  const Config c = ReadConfig(CfgPath());
  EXPECT_EQ(c, Config{});
  WriteConfig(CfgPath(), c);
  std::vector<std::string> defaults = {"4,4", "8,14", "0,3", "1,9", "10,10", "1", "Notepad.exe"};
  for (int k = 1; k <= 12; ++k) defaults.insert(defaults.end(), {"none", ""});
  defaults.insert(defaults.end(), {"1", "0", "0", "1", "1", "0", "1", "0"});
  EXPECT_EQ(ReadTool("Tessel.cfg"), Text(defaults));
}

TEST_F(ConfigFile, AnyFailureDropsEverythingReadForTheDefaults) {
  const std::pair<std::size_t, const char*> breaks[] = {{38, nullptr}, {2, "x,1"}, {31, "on"}};
  for (const auto& [line, text] : breaks) {
    std::vector<std::string> lines = Lines();
    text ? void(lines[line] = text) : lines.resize(line);  // 38 lines: the read of line 39 fails
    WriteTool("Tessel.cfg", lines);
    EXPECT_EQ(ReadConfig(CfgPath()), Config{}) << line;
  }
  // A comma in the editor path shifts every later item; a caption that then falls where a
  // number belongs ends in the defaults too. With the last caption empty, the line it shifts onto
  // a number still reads as 0.
  WriteTool("Tessel.cfg", Lines("C:\\Tools\\my,editor.exe"));
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});
  WriteTool("Tessel.cfg", Lines("C:\\Tools\\my,editor.exe", "none", ""));
  const Config c = ReadConfig(CfgPath());
  EXPECT_EQ(c.EditorPath + "|" + c.ToolButton[0].path + "|" + c.ToolButton[0].caption + "|" + c.ToolButton[1].path +
                "|" + c.ToolButton[11].caption,
            "C:\\Tools\\my|editor.exe|C:\\bin\\one.exe|One|none");
  // The empty caption line, then lines 32, 34 (written for chkRPO), 37 and 38; 39 is not read.
  EXPECT_EQ((std::vector<int>{c.PtSizeCor, c.chkLinesLSA, c.chkLinesLXN, c.chkPoints, c.BackgroundMode, c.chkLinesRAW}),
            (std::vector<int>{6, 0, 0, 1, 1, 2}));
}

class ConfigActions : public ConfigFile {
 protected:
  static Config Custom() {
    Config c{.chkLXN = 0, .chkLinesLSA = 0, .chkLinesLXN = 1, .chkLinesRAW = 1, .chkRPO = 1, .chkPoints = 0,
             .chkControl = 2,  // only 1 is on
             .chkParcels = 1, .BackgroundMode = 2};
    c.ToolButton[0] = {"/opt/one", "One"};
    c.ToolButton[1] = {"  none  ", "Hidden"};  // trimmed, still "none"
    c.ToolButton[4] = {"None", "Five"};        // the test is by exact case
    c.ToolButton[9] = {"/opt/ten", ""};
    return c;
  }
};

TEST_F(ConfigActions, OkAppliesButtonsChecksColoursAndRedrawsWithoutWriting) {
  RecordingCanvas viewCanvas;
  RecordingDisplay display;
  Session viewed{user, viewCanvas, processes};
  viewed.display = &display;
  viewed.ToolFolder = ToolDir();
  ApplyConfig(viewed, Custom());

  EXPECT_EQ(viewed.config, Custom());
  EXPECT_EQ(user.toolButtons, (std::map<int, std::string>{{1, "One"}, {5, "Five"}, {10, ""}}));
  const std::map<std::string, bool> checks = {
      {"mnuOptionsLinesLSA", false}, {"Lsa", false},         {"mnuOptionsLinesLXN", true}, {"Lxn", true},
      {"mnuViewLinesRaw", true},     {"Raw", true},          {"mnuViewRPO", true},         {"mnuViewPoints", false},
      {"mnuOptionsControl", false},  {"mnuOptionsParcel", true}, {"parcel", true}};
  EXPECT_EQ(user.checked, checks);
  // Light text on a dark background.
  ASSERT_EQ(viewCanvas.Of("Colours").size(), 1u);
  EXPECT_EQ(viewCanvas.Of("Colours")[0].args, (std::vector<double>{0.0, double(0xFFFFFF)}));
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
  EXPECT_FALSE(fs::exists(CfgPath()));
}

TEST_F(ConfigActions, SaveReplacesTheFileOrStillAppliesWhenItCannotWriteAndRestoreResets) {
  WriteTool("Tessel.cfg", {"garbage"});
  EXPECT_TRUE(SaveConfig(session, Custom()));
  Config reread = Custom();
  reread.ToolButton[1].path = "none";  // the reader drops the blanks around a string
  EXPECT_EQ(ReadConfig(CfgPath()), reread);
  // Without a viewer, into a folder that is not there.
  session.ToolFolder = (root / "no such folder").string();
  EXPECT_FALSE(SaveConfig(session, Config{}));
  EXPECT_EQ(session.config, Config{});  // applied all the same
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"Path/File access error: " + (root / "no such folder").string() + PathSeparator() + "Tessel.cfg"});
  user.messages.clear();
  EXPECT_TRUE(user.checked.at("Lsa"));

  // Restore on Yes deletes the file in any case, and resets even without one.
  session.ToolFolder = ToolDir();
  std::filesystem::rename(CfgPath(), toolPath / "TESSEL.CFG");
  user.answers = {Answer::Yes, Answer::Yes};
  for (int run = 0; run < 2; ++run) {
    session.config = Custom();
    EXPECT_TRUE(RestoreDefaults(session));
    EXPECT_EQ(session.config, Config{});
  }
  EXPECT_FALSE(fs::exists(toolPath / "TESSEL.CFG"));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>(2, "Restore original values? Clicking yes will overwrite "
                                                             "any custom settings your have setup."));
  user.answers = {Answer::No};
  session.config = Custom();
  EXPECT_FALSE(RestoreDefaults(session));
  EXPECT_EQ(session.config, Custom());
}

TEST_F(ConfigActions, TheRunnerOfWindowsProgramsIsSavedBesideTesselCfgWhichStaysAsItWas) {
  // OK sets it for the session alone.
  ApplyToolRunner(session, " /opt/wine-9/bin/wine ");
  EXPECT_EQ(session.toolRunner, "/opt/wine-9/bin/wine");
  EXPECT_FALSE(fs::exists(toolPath / "tessel-tools.ini"));
  // Save writes it into its own file; Tessel.cfg has the bytes the settings alone give.
  EXPECT_TRUE(SaveConfig(session, Custom()));
  const std::string cfg = ReadBytes(CfgPath());
  EXPECT_TRUE(SaveToolRunner(session, "none"));
  EXPECT_EQ(ReadTool("tessel-tools.ini") + ReadBytes(CfgPath()), "runner=none\r\n" + cfg);
  WriteConfig((root / "alone.cfg").string(), Custom());
  EXPECT_EQ(ReadBytes(root / "alone.cfg"), cfg);
  // The next start reads both; Restore Defaults leaves the runner as it is.
  Session next{user, canvas, processes};
  next.ToolFolder = ToolDir();
  MainFormLoad(next);
  EXPECT_EQ(next.toolRunner, "none");
  user.answers = {Answer::Yes};
  EXPECT_TRUE(RestoreDefaults(next));
  EXPECT_EQ(next.toolRunner + "|" + ReadTool("tessel-tools.ini"), "none|runner=none\r\n");
  // Without a runner file the start gives Wine; a file that cannot be written is told, naming it.
  fs::remove(toolPath / "tessel-tools.ini");
  MainFormLoad(next);
  EXPECT_EQ(next.toolRunner, "wine");
  user.messages.clear();
  session.ToolFolder = (root / "no such folder").string();
  EXPECT_FALSE(SaveToolRunner(session, "wine64"));
  EXPECT_EQ(session.toolRunner, "wine64");
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"Path/File access error: " + (root / "no such folder").string() + PathSeparator() +
                                     "tessel-tools.ini"});
}

TEST_F(ConfigFile, WindowPlacesAreKeptByKeyAndAKeyTakesEveryLineItBegins) {
  const std::filesystem::path places = toolPath / "ts$002.cfg";
  EXPECT_FALSE(ReadWindowPlace(session, "frmSelectedPoints").has_value());
  WriteWindowPlace(session, "frmSelectedPoints", {1200, 300.5f, 4000, 5000});
  EXPECT_EQ(ReadBytes(places), "frmSelectedPoints,1200,300.5,4000,5000\r\n");
  const auto place = ReadWindowPlace(session, "frmSelectedPoints");
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ((std::vector<float>{place->top, place->left, place->height, place->width}),
            (std::vector<float>{1200, 300.5f, 4000, 5000}));

  // Every line of the key is replaced, through the scratch copy, which keeps the file as it was;
  // a key that begins another takes that line too; a new key goes to the end.
  const std::vector<std::string> before = {"frmADDCalcs,1,2,3,4", "frmSelectedLines,5,6,7,8", "frmADD,9,9,9,9"};
  WriteLines(places, before);
  EXPECT_EQ(ReadWindowPlace(session, "frmADD")->top, 9.0f);
  EXPECT_EQ(ReadWindowPlace(session, "frmADDCalcs")->top, 1.0f);
  WriteWindowPlace(session, "frmADD", {10, 20, 30, 40});
  WriteWindowPlace(session, "frmSelectedParcels", {1, 1, 1, 1});
  EXPECT_EQ(ReadBytes(places), Text({"frmADD,10,20,30,40", "frmSelectedLines,5,6,7,8", "frmADD,10,20,30,40",
                                       "frmSelectedParcels,1,1,1,1"}));
  EXPECT_EQ(ReadBytes(toolPath / "tstemp.cfg"),
            Text({"frmADD,10,20,30,40", "frmSelectedLines,5,6,7,8", "frmADD,10,20,30,40"}));
}

class Identity : public JobFixture {};

TEST_F(Identity, EachRouteCutsThePathAtItsFirstPointAndNamesTheJobInUpperCase) {
  // A point in a folder name cuts the path there: the datasets are then looked for under that
  // wrong name.
  const std::filesystem::path dotted = root / "a.b" / "c";
  std::filesystem::create_directories(dotted);
  const std::string dottedDir = dotted.string() + PathSeparator();
  const struct {
    void (*route)(Session&, const std::string&, const std::string&);
    std::string folder, title, base, name;
  } cases[] = {
      {OpenIdentity, JobDir(), "t12n.def", JobDir() + "t12n", "T12N"},
      {OpenIdentity, JobDir(), "X.Y.def", JobDir() + "X", "X"},
      {OpenIdentity, dottedDir, "Job.def", (root / "a").string(), "JOB"},
      {OpenIdentityUpper, JobDir(), "old.def", Upper(JobDir() + "old"), "OLD"},
      {NewIdentity, JobDir(), "newjob", Upper(JobDir() + "newjob"), "NEWJOB"},
  };
  for (const auto& c : cases) {
    c.route(session, c.folder + c.title, c.title);
    EXPECT_EQ(session.JobBase + "|" + session.JobFolder + "|" + session.JobName, c.base + "|" + c.folder + "|" + c.name);
    EXPECT_EQ(ReadBytes(std::filesystem::path(c.folder) / "TEMP.JOB"), c.name + "\r\n");
    EXPECT_EQ(user.title, "Tessel " + c.base);
  }
  EXPECT_EQ(session.RegionJobFolder + session.RegionJobName, JobDir() + "NEWJOB");

  // Where file names ignore case (Windows), a job opened from the tool folder spelt in another
  // case is in the tool folder: Close leaves the master support files there.
  WriteTool("NAD27.CON", {"master"});
  session.JobFolder = Upper(ToolDir()) + PathSeparator();
  EXPECT_EQ(session.JobInToolFolder(), FileNamesIgnoreCase());
  RemoveSupportFiles(session);
  EXPECT_EQ(ReadTool("NAD27.CON"), "master\r\n");
  session.JobFolder = JobDir();
  EXPECT_FALSE(session.JobInToolFolder());
}

class InstalledToolFolder : public JobFixture {
 protected:
  EnvironmentLookup Environment(std::map<std::string, std::string> values) {
    environment = std::move(values);
    return [this](const char* name) {
      const auto found = environment.find(name);
      return found == environment.end() ? nullptr : found->second.c_str();
    };
  }
  std::map<std::string, std::string> environment;
};

TEST_F(InstalledToolFolder, TheUsersFolderComesFromXdgThenLocalAppDataThenHome) {
  const std::string sep(1, PathSeparator());
  // Absolute folders of this system (on Windows they carry a drive).
  const std::string d = (root / "d").string(), l = (root / "l").string(), h = (root / "h").string();
  EXPECT_EQ(UserToolFolder(Environment({{"XDG_DATA_HOME", d + sep}, {"LOCALAPPDATA", l}, {"HOME", h}})),
            d + sep + "tessel");
  // A relative value is not a folder of the user's: the next one counts.
  EXPECT_EQ(UserToolFolder(Environment({{"XDG_DATA_HOME", "data"}, {"LOCALAPPDATA", l}, {"HOME", h}})),
            l + sep + "Tessel");
  EXPECT_EQ(UserToolFolder(Environment({{"XDG_DATA_HOME", ""}, {"HOME", h}})),
            h + sep + ".local" + sep + "share" + sep + "tessel");
  EXPECT_EQ(UserToolFolder(Environment({{"HOME", "h"}})), "");
}

TEST_F(InstalledToolFolder, AProgramInAFolderOfItsOwnKeepsItsToolFolderBesideItAndWritesNothing) {
  // The build's bin has no share/tessel beside it: still a folder of its own.
  const std::filesystem::path bin = root / "build" / "bin";
  std::filesystem::create_directories(bin);
  const auto env = Environment({{"XDG_DATA_HOME", (root / "data").string()}});
  for (const std::filesystem::path& folder : {toolPath, bin}) {
    const ToolFolderChoice choice = ChooseToolFolder(folder.string(), env);
    EXPECT_EQ(choice.folder + "|" + choice.problem, folder.string() + "|");
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << folder;
  }
  EXPECT_FALSE(std::filesystem::exists(root / "data"));
}

TEST_F(InstalledToolFolder, AnInstalledProgramUsesTheUsersFolderMadeOnceWithTheMasterCopiesOrSaysWhyNot) {
  const std::filesystem::path bin = root / "usr" / "bin";
  std::filesystem::create_directories(bin);
  std::filesystem::create_directories(root / "usr" / "share" / "tessel");
  const std::filesystem::path data = root / "data";
  const std::string userFolder = (data / "tessel").string();
  for (const std::string& folder : {bin.string(), bin.string() + PathSeparator()}) {
    std::filesystem::remove_all(data);
    // A master copy the user put there, in another case, is kept.
    std::filesystem::create_directories(data / "tessel");
    WriteLines(data / "tessel" / "ZONE.DAT", {"mine"});
    const ToolFolderChoice choice = ChooseToolFolder(folder, Environment({{"XDG_DATA_HOME", data.string()}}));
    EXPECT_EQ(choice.folder + "|" + choice.problem, userFolder + "|");
    for (const char* name : {"Nad27.con", "Nad83.con", "Table.dat"}) {
      EXPECT_EQ(ReadBytes(data / "tessel" / name), SupportFileText(name)) << name;
    }
    EXPECT_EQ(ReadBytes(data / "tessel" / "ZONE.DAT"), Text({"mine"}));
    // Only the user's own spelling stands there, also where names ignore case.
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(data / "tessel")) {
      names.push_back(entry.path().filename().string());
    }
    EXPECT_EQ(std::count(names.begin(), names.end(), "Zone.dat"), 0);
    EXPECT_TRUE(std::filesystem::is_empty(bin));
  }
  // A user's folder that cannot be made is told, and nothing is written beside the program.
  std::filesystem::remove_all(data);
  WriteLines(root / "data", {"a file, not a folder"});
  const ToolFolderChoice choice =
      ChooseToolFolder(bin.string(), Environment({{"XDG_DATA_HOME", (root / "data").string()}}));
  EXPECT_EQ(choice.folder, (root / "data" / "tessel").string());
  EXPECT_EQ(choice.problem, "Cannot create the folder " + choice.folder + " for Tessel's settings and tools");
  EXPECT_TRUE(std::filesystem::is_empty(bin));
}

// A job base that starts at a root or names a drive is taken as it stands, never in the current
// folder; a bare one is.
TEST_F(Identity, ADatasetPathFromTheRootOrOnADriveIsNotTakenInTheCurrentFolder) {
  session.CurrentFolder = root.string();
  std::vector<std::string> rooted = {"/jobs/T1"};
#ifdef _WIN32
  rooted.insert(rooted.end(), {"\\jobs\\T1", "D:\\jobs\\T1", "D:T1"});
#endif
  for (const std::string& base : rooted) {
    session.JobBase = base;
    EXPECT_EQ(session.DatasetPath(".def"), base + ".def");
  }
  session.JobBase = "T1";
  EXPECT_EQ(session.DatasetPath(".def"), root.string() + PathSeparator() + "T1.def");
}

}  // namespace
}  // namespace tessel::test
