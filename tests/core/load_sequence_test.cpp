// From program start through File Open, Reload Current, Close and Exit: the order of the
// readers, the messages and status texts, the menus and the files written and removed.

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/config.h"
#include "core/job_menus.h"
#include "core/load_sequence.h"
#include "core/paths.h"
#include "core/support_files.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

const std::string kComputing = "Computing temporary coordinates for unknown points";

class LoadSequence : public JobFixture {
 protected:
  void SetUp() override { session.display = &display; }

  // A job T1N2E with every dataset; `cor` and `lsa` say whether those two are there.
  static void WriteJobFiles(const fs::path& folder, bool cor = true, bool lsa = true) {
    const auto put = [&](const std::string& name, const std::vector<std::string>& lines) {
      WriteLines(folder / ("T1N2E" + name), lines);
    };
    put(".def", DefFile(2));
    if (cor) put(".COR", {CorRow("100100", "1000", "1000"), CorRow("100200", "2000", "1000"), CorRow("100300", "2000", "2000")});
    if (lsa) {
      put(".LSA", LsaFile({ControlRow("100100", "1000.01", "1000.01"), ControlRow("CTRL9", "1500", "500")},
                          {LsaLineRow("100100", "100200"), LsaLineRow("100300", "CTRL9")},
                          {LsaPointRow("100100", "1000", "1000"), LsaPointRow("100200", "2000", "1000"),
                           LsaPointRow("100300", "2000", "2000"), LsaPointRow("LSAONLY", "1500", "1500")}));
    }
    put(".LXN", {"CHAINS", "HEADER", "3", "100100100200100300", "999999"});
    put(".sid", {"SGLO", "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>"});
    put(".raw", RawFile({RawRow("100100", "100200", "1000", "1", "900000", "GLO"),
                         RawRow("100300", "900001", "66", "1", "0", "GLO")}));
    put(".RPO", {"  1 POLYGONS FOUND", "", "S 100100 100200 100300"});
    put(".crp", {"       1666.667       1333.333"});
    put(".iid", {"TITLE", "Sec_001  A T_W  1", " 100100 100200 100300 100100",
                 Row({{1, " PARCEL N,E"}, {17, "   1333.333"}, {33, "   1666.667"}})});
    put(".not", {"     0", "     1", "100100 100200"});
  }

  void Open(const std::string& folder) { OpenJob(session, folder + "T1N2E.def", "T1N2E.def"); }
  void Open() { Open(JobDir()); }

  bool SupportFilesIn(const fs::path& folder) const {
    for (const char* name : kSupportFiles) {
      if (!fs::exists(folder / name)) return false;
    }
    return true;
  }

  RecordingDisplay display;
};

TEST_F(LoadSequence, MainFormLoadSetsStatusToolButtonsViewAndMenus) {
  Config config;
  config.ToolButton[0] = {"C:\\bin\\x.exe", "Run X"};
  config.ToolButton[11] = {"none", "Never"};
  config.chkLinesRAW = 1;
  config.chkLinesLSA = 2;  // only 1 counts as on
  config.chkParcels = 1;
  WriteConfig((toolPath / "Tessel.cfg").string(), config);
  MainFormLoad(session);
  EXPECT_EQ(session.ToolMode, 2);
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Open a job or create a new one"});
  EXPECT_EQ(user.statusNow[2], "");
  EXPECT_EQ(user.statusNow[3], "");
  EXPECT_EQ(session.config, config);
  EXPECT_EQ(user.toolButtons, (std::map<int, std::string>{{1, "Run X"}}));
  EXPECT_TRUE(user.checked["Raw"]);
  EXPECT_TRUE(user.checked["mnuViewLinesRaw"]);
  EXPECT_FALSE(user.checked["Lsa"]);
  EXPECT_FALSE(session.checks.mnuOptionsLinesLSA);
  EXPECT_TRUE(user.checked["parcel"]);
  EXPECT_TRUE(session.checks.mnuViewPoints);
  EXPECT_TRUE(user.enabled["mnuFileOpen"]);
  for (const char* name : {"mnuFileClose", "mnuFileReload", "mnuFileImport", "mnuEdit", "mnuLzhSaveAs"}) {
    EXPECT_FALSE(user.enabled.at(name)) << name;
  }
}

TEST_F(LoadSequence, OpenReadsEveryDatasetInOrderAndEndsOnTheJobName) {
  WriteJobFiles(jobPath);
  Open();
  EXPECT_EQ(user.status[1],
            (std::vector<std::string>{"Reading Coordinates", "Verifying LSA Coordinates", "Reading Control Coordinates",
                                      "Reading LSA Lines", "Reading LXN Lines", "Reading Survey Identifiers",
                                      "Reading RAW Lines", "Reading RAW Lines", "Reading RAW Lines", kComputing,
                                      "Reading raw polygons", "Reading parcels", "Preparing for display", "T1N2E"}));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(user.pointers.front(), Pointer::Hourglass);
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshViewAfterExtents"});
  EXPECT_EQ(user.title, "Tessel " + JobDir() + "T1N2E");
  EXPECT_EQ(ReadJob("TEMP.JOB"), "T1N2E\r\n");
  EXPECT_TRUE(SupportFilesIn(jobPath));

  // .COR, the .LSA-only point, the appended station, then the temporary point of the record.
  ASSERT_EQ(session.points.PointCount(), 6);
  EXPECT_EQ(session.points.PointIds(4), "LSAONLY");
  EXPECT_EQ(session.points.PointIds(5), "CTRL9");
  EXPECT_EQ(session.points.PointIds(6), "900001");
  EXPECT_DOUBLE_EQ(session.points.PointY(6), 2066.0);
  EXPECT_EQ(session.control.ControlCount, 3);
  EXPECT_EQ(session.lsa.LsaLineCount, 3);
  EXPECT_EQ(session.lsa.LsaLineEnds.get(2).to, 5);  // a line may end on an appended station
  EXPECT_EQ(session.notes.NoteLineCount, 1);
  EXPECT_EQ(session.lxn.LxnSegmentCount, 2);
  EXPECT_EQ(session.surveys.SurveyCount, 1);
  EXPECT_EQ(session.raw.RawLineCount, 2);
  EXPECT_EQ(session.raw.RawLineEnds.get(1).survey, 1);
  EXPECT_EQ(session.polygons.RawPolygonCount, 1);
  EXPECT_EQ(session.parcels.ParcelCount, 1);

  for (const char* name : kJobMenus) EXPECT_TRUE(user.enabled.at(name)) << name;
  EXPECT_TRUE(user.enabled.at("mnuFileReload"));
  EXPECT_TRUE(user.enabled.at("mnuFileImport"));
  EXPECT_FALSE(user.enabled.at("mnuFileOpen"));
}

TEST_F(LoadSequence, EachCaseOfTheLoadTableGivesItsBoxesAndReaders) {
  const struct {
    const char* name;
    bool cor, lsa, lsaBroken;
    std::vector<std::string> messages;
    int lsaLines, lxnSegments, parcels;
  } cases[] = {
      {"both", true, true, false, {}, 3, 2, 1},
      {"cor", true, false, false, {"LSA file not found"}, 0, 2, 1},
      {"lsa", false, true, false, {"Viewing LSA coordinates"}, 3, 0, 0},
      {"brokenlsa", false, true, true, {}, 0, 0, 0},
      {"neither", false, false, false, {"LSA file not found", "graphics are not yet available"}, 0, 2, 1},
  };
  for (const auto& c : cases) {
    const fs::path folder = root / c.name;
    fs::create_directory(folder);
    WriteJobFiles(folder, c.cor, c.lsa);
    if (c.lsaBroken) {
      std::vector<std::string> lsa = LsaFile({ControlRow("100100", "1", "1")}, {LsaLineRow("100100", "100200")},
                                             {LsaPointRow("100100", "1", "1")});
      lsa[0].back() = 'X';
      WriteLines(folder / "T1N2E.LSA", lsa);
    }
    RecordingUserPort u;
    Session s(u, canvas, processes);
    s.ToolFolder = ToolDir();
    OpenJob(s, folder.string() + PathSeparator() + "T1N2E.def", "T1N2E.def");
    EXPECT_EQ(u.MessageTexts(), c.messages) << c.name;
    for (const RecordedMessage& m : u.messages) EXPECT_EQ(m.icon, Icon::Information) << c.name << ": " << m.text;
    // The job stays open whatever was missing, and the status ends on its name.
    EXPECT_EQ(s.JobName, "T1N2E") << c.name;
    EXPECT_EQ(u.statusNow[1], "T1N2E") << c.name;
    EXPECT_EQ(s.lsa.LsaLineCount, c.lsaLines) << c.name;
    EXPECT_EQ(s.lxn.LxnSegmentCount, c.lxnSegments) << c.name;
    EXPECT_EQ(s.parcels.ParcelCount, c.parcels) << c.name;
    EXPECT_EQ(s.raw.RawLineCount, 2) << c.name;
  }
}

TEST_F(LoadSequence, LsaWithoutCorReadsNoChainsPolygonsOrParcels) {
  WriteJobFiles(jobPath, false, true);
  Open();
  EXPECT_EQ(user.status[1],
            (std::vector<std::string>{"Reading LSA Coordinates", "Reading Control Coordinates", "Reading LSA Lines",
                                      "Reading Survey Identifiers", "Reading RAW Lines", "Reading RAW Lines",
                                      "Reading RAW Lines", kComputing, "Preparing for display", "T1N2E"}));
  // Four points and the empty entry, the appended station, the temporary point.
  ASSERT_EQ(session.points.PointCount(), 7);
  EXPECT_EQ(session.points.PointIds(5), "");
  EXPECT_EQ(session.points.PointIds(6), "CTRL9");
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1000.0);
  EXPECT_EQ(session.parcels.ParcelCount, 0);
  EXPECT_EQ(session.lxn.LxnSegmentCount, 0);
  EXPECT_EQ(session.polygons.RawPolygonCount, 0);
  EXPECT_EQ(session.notes.NoteLineCount, 0);
  EXPECT_EQ(session.raw.RawLineCount, 2);
}

TEST_F(LoadSequence, ReloadClearsAndReadsAgainKeepingTheView) {
  WriteJobFiles(jobPath);
  Open();
  WriteJob("T1N2E.COR", {CorRow("100100", "1000", "1000"), CorRow("100200", "2000", "1000"),
                         CorRow("100300", "2000", "2000"), CorRow("100400", "3000", "3000")});
  fs::remove(jobPath / "T1N2E.raw");
  fs::remove(jobPath / "T1N2E.iid");
  session.view.ViewLeft = 900.0f;
  session.config.chkLXN = 0;  // chains are not loaded
  user.status.clear();
  user.title.clear();
  ReloadJob(session);
  EXPECT_EQ(session.points.PointCount(), 6);  // four from .COR, LSAONLY, CTRL9; no temporary point
  EXPECT_EQ(session.points.Find("900001"), 0);
  EXPECT_EQ(session.control.ControlCount, 3);
  EXPECT_EQ(session.lsa.LsaLineCount, 3);
  EXPECT_EQ(session.lxn.LxnSegmentCount, 0);
  EXPECT_EQ(session.lxn.LxnRecordCount, 0);
  EXPECT_EQ(session.raw.RawLineCount, 0);
  EXPECT_EQ(session.parcels.ParcelCount, 0);
  EXPECT_EQ(session.surveys.SurveyCount, 1);
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 3000.0);
  EXPECT_EQ(user.title, "Tessel " + JobDir() + "T1N2E");
  EXPECT_EQ(std::count(user.status[1].begin(), user.status[1].end(), "Reading LXN Lines"), 0);
  EXPECT_EQ(user.status[1].back(), "T1N2E");
  EXPECT_EQ(user.pointers.back(), Pointer::Default);
  EXPECT_EQ(display.calls, (std::vector<std::string>{"RefreshViewAfterExtents", "RefreshView"}));

  session.view.ViewLeft = 0.0f;
  ReloadJob(session);
  EXPECT_EQ(display.calls.back(), "RefreshViewAfterExtents");
  EXPECT_TRUE(user.messages.empty());

  // .LSA alone is not redrawn by a reload, and its box comes again.
  fs::remove(jobPath / "T1N2E.COR");
  const std::size_t drawn = display.calls.size();
  ReloadJob(session);
  EXPECT_EQ(display.calls.size(), drawn);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Viewing LSA coordinates"});
}

TEST_F(LoadSequence, CloseRemembersTheFolderEmptiesEverythingAndRemovesSupportFiles) {
  WriteJobFiles(jobPath);
  Open();
  session.view.ViewLeft = 5.0f;
  session.view.ViewTop = 6.0f;
  FileClose(session);
  EXPECT_EQ(ReadTool("Tessel.hst"), JobDir() + "\r\n");
  for (const char* name : kSupportFiles) EXPECT_FALSE(fs::exists(jobPath / name)) << name;
  EXPECT_TRUE(JobHas("T1N2E.COR"));
  EXPECT_TRUE(JobHas("TEMP.JOB"));
  EXPECT_EQ(session.JobBase, "");
  EXPECT_EQ(session.JobName, "");
  EXPECT_EQ(session.JobFolder, "");
  EXPECT_EQ(user.title, "Tessel");
  EXPECT_TRUE(user.messages.empty());

  const std::vector<int> counts = {session.points.PointCount(),      session.points.Find("100100"),
                                   session.control.ControlCount,      session.lsa.LsaLineCount,
                                   session.lxn.LxnSegmentCount,       session.lxn.LxnRecordCount,
                                   session.raw.RawLineCount,          session.surveys.SurveyCount,
                                   session.parcels.ParcelCount,       session.polygons.RawPolygonCount,
                                   session.notes.NoteLineCount};
  EXPECT_EQ(counts, std::vector<int>(counts.size(), 0));
  EXPECT_FALSE(session.view.EverSet());

  for (const char* name : kJobMenus) EXPECT_FALSE(user.enabled.at(name)) << name;
  EXPECT_TRUE(user.enabled.at("mnuFileReload"));
  EXPECT_TRUE(user.enabled.at("mnuFileImport"));
  EXPECT_TRUE(user.enabled.at("mnuFileOpen"));

  EXPECT_EQ(user.status[1].back(), "Open a project or start a new one");
  EXPECT_EQ(user.status[2], std::vector<std::string>{""});
  EXPECT_EQ(user.status[3], std::vector<std::string>{""});
  EXPECT_EQ(display.calls.back(), "ClearCanvas");
  for (const char* form : {"frmParcelLocator", "frmAttributes", "frmQuickEdit", "frmQuickEditList", "frmListSurveys",
                           "frmADD", "frmIRR"}) {
    EXPECT_NE(std::find(user.unloaded.begin(), user.unloaded.end(), form), user.unloaded.end()) << form;
  }

  // A Reload Current after the close looks for the bare extensions and finds nothing.
  user.messages.clear();
  ReloadJob(session);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"LSA file not found"});
  EXPECT_EQ(user.title, "Tessel ");

  // Closing with no job open leaves Tessel.hst alone.
  WriteTool("Tessel.hst", {"/elsewhere/"});
  FileClose(session);
  EXPECT_EQ(ReadTool("Tessel.hst"), "/elsewhere/\r\n");
}

TEST_F(LoadSequence, JobInTheToolFolderKeepsItsSupportFiles) {
  WriteJobFiles(toolPath);
  Open(ToolDir() + PathSeparator());
  ASSERT_TRUE(SupportFilesIn(toolPath));
  FileClose(session);
  EXPECT_TRUE(SupportFilesIn(toolPath));
  EXPECT_EQ(session.JobFolder, "");

  Open(ToolDir() + PathSeparator());
  FileExit(session);
  EXPECT_TRUE(SupportFilesIn(toolPath));
}

TEST_F(LoadSequence, UnsavedParcelEditsAreOfferedForSavingAtClose) {
  const std::string question = "Parcel attribute edits have not been saved.";
  const std::string offer = "Would you like to save file now?";
  for (const Answer answer : {Answer::No, Answer::Yes}) {
    WriteJobFiles(jobPath);
    fs::remove(jobPath / "T1N2E.iib");
    Open();
    session.parcels.ParcelDirty = -1;
    user.messages.clear();
    user.answers = {answer};
    FileClose(session);
    ASSERT_EQ(user.messages.size(), 1u);
    const std::string& text = user.messages[0].text;
    EXPECT_TRUE(text == question + "\r\n" + offer || text == question + "\n" + offer) << text;
    EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
    const std::string iid = ReadJob("T1N2E.iid");
    if (answer == Answer::Yes) {
      EXPECT_EQ(iid.substr(0, iid.find('\r')), "  * * * This file has been edited by Tessel  * * *  ");
      EXPECT_TRUE(JobHas("T1N2E.iib"));
    } else {
      EXPECT_EQ(iid.substr(0, 7), "TITLE\r\n");
      EXPECT_FALSE(JobHas("T1N2E.iib"));
    }
  }
  // Not dirty: no question.
  Open();
  user.messages.clear();
  FileExit(session);
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(LoadSequence, ExitRemovesSupportAndScriptFiles) {
  WriteJobFiles(jobPath);
  Open();
  WriteJob("temp.bat", {"recpad < t1$.001"});
  WriteJob("T1$.001", {"1"});
  FileExit(session);
  EXPECT_EQ(ReadTool("Tessel.hst"), JobDir() + "\r\n");
  EXPECT_FALSE(JobHas("temp.bat"));
  EXPECT_FALSE(JobHas("T1$.001"));
  for (const char* name : kSupportFiles) EXPECT_FALSE(fs::exists(jobPath / name)) << name;
  EXPECT_TRUE(JobHas("T1N2E.COR"));
  EXPECT_NE(std::find(user.unloaded.begin(), user.unloaded.end(), "frmToolbox"), user.unloaded.end());

  // With no job, Exit writes and removes nothing.
  RecordingUserPort u;
  Session idle(u, canvas, processes);
  idle.ToolFolder = ToolDir();
  fs::remove(toolPath / "Tessel.hst");
  WriteJob("temp.bat", {"x"});
  idle.CurrentFolder = JobDir();
  FileExit(idle);
  EXPECT_FALSE(fs::exists(toolPath / "Tessel.hst"));
  EXPECT_TRUE(JobHas("temp.bat"));
}

TEST_F(LoadSequence, OpenDialogStartsInTheRememberedFolderAndCancelChangesNothing) {
  WriteJobFiles(jobPath);
  WriteTool("Tessel.hst", {JobDir()});
  EXPECT_FALSE(FileOpen(session));
  ASSERT_EQ(user.fileRequests.size(), 1u);
  EXPECT_EQ(user.fileRequests[0].initialFolder, JobDir());
  EXPECT_EQ(user.fileRequests[0].title, "Select a job to view");
  EXPECT_EQ(user.fileRequests[0].filter, "Project Definition files|*.def");
  EXPECT_EQ(user.pointers, std::vector<Pointer>{Pointer::Default});
  EXPECT_EQ(session.JobName, "");
  EXPECT_FALSE(JobHas("TEMP.JOB"));

  user.files.push_back(FileChoice{JobDir() + "T1N2E.def", "T1N2E.def"});
  EXPECT_TRUE(FileOpen(session));
  EXPECT_EQ(session.JobName, "T1N2E");

  // The toolbar's Open asks first; Cancel keeps the job, OK closes it before the dialog.
  user.messages.clear();
  user.answers = {Answer::Cancel};
  ToolbarOpen(session);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "Close current job and open new one?");
  EXPECT_EQ(user.messages[0].icon, Icon::Question);
  EXPECT_EQ(user.messages[0].buttons, Buttons::OkCancel);
  EXPECT_EQ(user.messages[0].title, "Open Project");
  EXPECT_EQ(session.JobName, "T1N2E");
  EXPECT_EQ(user.fileRequests.size(), 2u);

  user.answers = {Answer::Ok};
  ToolbarOpen(session);
  EXPECT_EQ(session.JobName, "");
  ASSERT_EQ(user.fileRequests.size(), 3u);
  EXPECT_EQ(user.fileRequests[2].initialFolder, JobDir());

  // With no job open it goes straight to the dialog.
  user.messages.clear();
  ToolbarOpen(session);
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(user.fileRequests.size(), 4u);
}

}  // namespace
}  // namespace tessel::test
