// From File Open through Reload Current, Close and Exit, and the new job wizard: the order of the
// readers, the messages and status texts, the menus and the files written and removed.

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "datasets/support_files.h"
#include "job/job_menus.h"
#include "job/load_sequence.h"
#include "job/new_job.h"
#include "model/config.h"
#include "model/paths.h"
#include "model/text.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;
using Ints = std::vector<int>;
const std::string kComputing = "Computing temporary coordinates for unknown points";
const std::string kRaw = "Reading RAW Lines";

class LoadSequence : public JobFixture {
 protected:
  void SetUp() override { session.display = &display; }

  // A job T1N2E with every dataset; `cor` and `lsa` say whether those two are there.
  static void WriteJobFiles(const fs::path& folder, bool cor = true, bool lsa = true) {
    const auto put = [&](const std::string& ext, const std::vector<std::string>& lines) {
      WriteLines(folder / ("T1N2E" + ext), lines);
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
                 LocationRow("1333.333", "1666.667")});
    put(".not", {"     0", "     1", "100100 100200"});
  }
  void Open(const std::string& folder) { OpenJob(session, folder + "T1N2E.def", "T1N2E.def"); }
  void Open() { Open(JobDir()); }

  static std::ptrdiff_t SupportFilesIn(const fs::path& folder) {
    return std::count_if(kSupportFiles.begin(), kSupportFiles.end(), [&](const char* f) { return fs::exists(folder / f); });
  }
  // Points, control stations, .LSA lines, .LXN segments, surveys, record lines, raw polygons,
  // parcels, note lines.
  static Ints Counts(const Session& s) {
    return {s.points.PointCount(),   s.control.ControlCount,    s.lsa.LsaLineCount,
            s.lxn.LxnSegmentCount,   s.surveys.SurveyCount,     s.raw.RawLineCount,
            s.polygons.RawPolygonCount, s.parcels.ParcelCount, s.notes.NoteLineCount};
  }
  // The menus as a job open, a job closed (Reload and Import stay on) and the start leave them.
  static std::map<std::string, bool> Menus(bool jobOpen, bool reloadAndImport) {
    std::map<std::string, bool> m;
    for (const char* name : kJobMenus) m[name] = jobOpen;
    for (const char* name : kArchiveMenus) m[name] = jobOpen;
    for (const char* name : kJobMenusKeptAfterClose) m[name] = reloadAndImport;
    for (const char* name : kJobEntries) m[name] = jobOpen;
    m["mnuFileOpen"] = !jobOpen;
    return m;
  }

  RecordingDisplay display;
};

TEST_F(LoadSequence, OpenReadsEveryDatasetInOrderAndEndsOnTheJobName) {
  WriteJobFiles(jobPath);
  Open();
  EXPECT_EQ(user.status[1], (Strings{"Reading Coordinates", "Verifying LSA Coordinates", "Reading Control Coordinates",
                                     "Reading LSA Lines", "Reading LXN Lines", "Reading Survey Identifiers", kRaw, kRaw,
                                     kRaw, kComputing, "Reading raw polygons", "Reading parcels",
                                     "Preparing for display", "T1N2E"}));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(std::pair(user.pointers.front(), user.pointers.back()), std::pair(Pointer::Hourglass, Pointer::Default));
  EXPECT_EQ(display.calls, Strings{"RefreshViewAfterExtents"});
  EXPECT_EQ(user.title + "|" + ReadJob("TEMP.JOB"), "Tessel " + JobDir() + "T1N2E|T1N2E\r\n");
  EXPECT_EQ(SupportFilesIn(jobPath), 4);
  EXPECT_EQ(user.enabled, Menus(true, true));

  // .COR, the .LSA-only point, the appended station, then the temporary point of the record;
  // a line may end on the appended station.
  EXPECT_EQ(Counts(session), (Ints{6, 3, 3, 2, 1, 2, 1, 1, 1}));
  EXPECT_EQ(Joined({session.points.PointIds(4), session.points.PointIds(5), session.points.PointIds(6)}),
            "LSAONLY|CTRL9|900001");
  EXPECT_EQ(std::tuple(session.lsa.LsaLineEnds.get(2).to, session.raw.RawLineEnds.get(1).survey), std::tuple(5, 1));

  // Watched, and asked to stop from the first: a half-read job is no job, so the load reads to
  // its end, telling each file as it goes and the share of the job's bytes read before it.
  StopAfter stop(0);
  OpenJob(session, JobDir() + "T1N2E.def", "T1N2E.def", &stop);
  EXPECT_EQ(Counts(session), (Ints{6, 3, 3, 2, 1, 2, 1, 1, 1}));
  EXPECT_EQ(stop.steps, (Strings{"Reading T1N2E.COR", "Reading T1N2E.LSA", "Reading T1N2E.LSA", "Reading T1N2E.not",
                                 "Reading T1N2E.LXN", "Reading T1N2E.sid", "Reading T1N2E.raw", "Reading T1N2E.RPO",
                                 "Reading T1N2E.iid"}));
  EXPECT_EQ(stop.fractions.front(), 0.0);
  EXPECT_TRUE(std::is_sorted(stop.fractions.begin(), stop.fractions.end()));
  EXPECT_GT(stop.fractions.back(), stop.fractions.front());
  EXPECT_LT(stop.fractions.back(), 1.0);
}

TEST_F(LoadSequence, EachCaseOfTheLoadTableGivesItsBoxesAndReaders) {
  const struct {
    const char* name;
    bool cor, lsa, lsaBroken;
    Strings messages;
    Ints counts;
  } cases[] = {
      {"cor", true, false, false, {"LSA file not found"}, {4, 0, 0, 2, 1, 2, 1, 1, 0}},
      {"lsa", false, true, false, {"Viewing LSA coordinates"}, {7, 3, 3, 0, 1, 2, 0, 0, 0}},
      {"brokenlsa", false, true, true, {}, {4, 1, 0, 0, 1, 2, 0, 0, 0}},
      {"neither", false, false, false, {"LSA file not found", "graphics are not yet available"},
       {3, 0, 0, 2, 1, 2, 1, 1, 0}},
  };
  for (const auto& c : cases) {
    const fs::path folder = root / c.name;
    fs::create_directory(folder);
    WriteJobFiles(folder, c.cor, c.lsa);
    if (c.lsaBroken) {
      Strings lsa = LsaFile({ControlRow("100100", "1", "1")}, {LsaLineRow("100100", "100200")},
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
    EXPECT_EQ(s.JobName + "|" + u.statusNow[1], "T1N2E|T1N2E") << c.name;
    EXPECT_EQ(Counts(s), c.counts) << c.name;
    if (!c.cor && c.lsa && !c.lsaBroken) {  // .LSA alone: only the network and the records
      EXPECT_EQ(u.status[1], (Strings{"Reading LSA Coordinates", "Reading Control Coordinates", "Reading LSA Lines",
                                      "Reading Survey Identifiers", kRaw, kRaw, kRaw, kComputing,
                                      "Preparing for display", "T1N2E"}));
    }
  }
}

TEST_F(LoadSequence, ReloadClearsAndReadsAgainButRedrawsLsaAloneNotAndCloseEmptiesEverything) {
  WriteJobFiles(jobPath);
  Open();
  fs::remove(jobPath / "T1N2E.raw");
  fs::remove(jobPath / "T1N2E.iid");
  session.config.chkLXN = 0;  // chains are not loaded
  session.view.ViewLeft = 900.0f;  // a drawn view is kept
  ReloadJob(session);
  // LSAONLY and CTRL9 after .COR and no temporary point; the notes are left as they were.
  EXPECT_EQ(Counts(session), (Ints{5, 3, 3, 0, 1, 0, 1, 0, 1}));
  EXPECT_EQ(display.calls, (Strings{"RefreshViewAfterExtents", "RefreshView"}));
  fs::remove(jobPath / "T1N2E.COR");  // .LSA alone: its box comes again, and no redraw
  ReloadJob(session);
  EXPECT_EQ(display.calls.size(), 2u);
  EXPECT_EQ(user.MessageTexts(), Strings{"Viewing LSA coordinates"});

  // Close empties everything and turns the menus back.
  user.messages.clear();
  FileClose(session);
  EXPECT_EQ(session.JobBase + session.JobName + session.JobFolder + "|" + user.title, "|Tessel");
  EXPECT_TRUE(user.messages.empty() && !session.view.EverSet());
  EXPECT_EQ(Counts(session), Ints(9, 0));
  EXPECT_EQ(user.enabled, Menus(false, true));
  EXPECT_EQ(user.statusNow, (std::map<int, std::string>{{1, "Open a project or start a new one"}, {2, ""}, {3, ""}}));
  EXPECT_EQ(display.calls.back(), "ClearCanvas");
  // A Reload Current after the close looks for the bare extensions and finds nothing.
  ReloadJob(session);
  EXPECT_EQ(user.MessageTexts(), Strings{"LSA file not found"});
  EXPECT_EQ(user.title, "Tessel ");
}

// A reload that would empty a parcel store holding unsaved edits asks Close's question first;
// the reload of the job's lines after a computation keeps the edits and the parcel selection.
TEST_F(LoadSequence, ReloadsKeepParcelEditsThatAreNotSaved) {
  WriteJobFiles(jobPath);
  const auto edit = [&] {
    session.parcels.ParcelLine.at(1) = "Sec_001  A T_W  1 EDITED";
    session.parcels.ParcelDirty = -1;
    session.selection.AddParcelEntry("Sec_001", {PickKind::Parcel, 1, session.parcels.Reading});
  };
  // The first parcel's line and the store's dirty flag.
  const auto parcel = [&] { return std::pair(session.parcels.ParcelLine.get(1), int(session.parcels.ParcelDirty)); };
  Open();
  edit();
  fs::remove(jobPath / "T1N2E.raw");  // the lines reload reads the lines again
  ReloadLines(session);
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(session.raw.RawLineCount, 0);
  EXPECT_EQ(parcel(), std::pair(std::string("Sec_001  A T_W  1 EDITED"), -1));
  EXPECT_EQ(session.selection.ParcelPicks().size(), 1u);

  // No: the edits are dropped, and the store and the selection are the file's again.
  user.answers = {Answer::No};
  ReloadJob(session);
  EXPECT_EQ(user.MessageTexts(), Strings{kMsgParcelEditsUnsaved});
  EXPECT_EQ(parcel(), std::pair(std::string("Sec_001  A T_W  1"), 0));
  EXPECT_TRUE(session.selection.ParcelPicks().empty());

  // Yes: saved, then read back.
  edit();
  user.answers = {Answer::Yes};
  ReloadJob(session);
  EXPECT_EQ(parcel(), std::pair(std::string("Sec_001  A T_W  1 EDITED"), 0));

  // Yes, but the save fails: the store keeps its edits while everything else is read again.
  ReloadJob(session);  // not dirty: no question
  edit();
  fs::remove(jobPath / "T1N2E.iib");
  fs::create_directory(jobPath / "T1N2E.iib");
  WriteJob("T1N2E.raw", RawFile({RawRow("100100", "100200", "1000", "1", "900000", "GLO")}));
  user.messages.clear();
  user.answers = {Answer::Yes};
  ReloadJob(session);
  EXPECT_EQ(user.messages.size(), 2u);  // the question, then the failed write
  EXPECT_EQ(session.raw.RawLineCount, 1);
  EXPECT_EQ(parcel(), std::pair(std::string("Sec_001  A T_W  1 EDITED"), -1));
}

TEST_F(LoadSequence, CloseAndExitRememberTheFolderAndRemoveSupportFilesButNotTheMasters) {
  for (const fs::path& folder : {jobPath, toolPath}) {
    const std::string dir = folder.string() + PathSeparator();
    WriteJobFiles(folder);
    for (const bool exiting : {false, true}) {
      Open(dir);
      WriteLines(folder / "temp.bat", {"recpad < t1$.001"});
      WriteLines(folder / "T1$.001", {"1"});
      exiting ? FileExit(session) : FileClose(session);
      EXPECT_EQ(ReadTool("Tessel.hst"), dir + "\r\n");
      EXPECT_EQ(SupportFilesIn(folder), folder == toolPath ? 4 : 0) << dir;
      EXPECT_TRUE(fs::exists(folder / "T1N2E.COR") && fs::exists(folder / "TEMP.JOB"));
      // Only Exit removes the script files.
      EXPECT_EQ(fs::exists(folder / "temp.bat") || fs::exists(folder / "T1$.001"), !exiting) << exiting;
    }
  }
  EXPECT_NE(std::find(user.unloaded.begin(), user.unloaded.end(), "frmToolbox"), user.unloaded.end());
}

TEST_F(LoadSequence, UnsavedParcelEditsAreOfferedForSavingAtCloseAndExit) {
  const std::string kDirty = "Parcel attribute edits have not been saved.", kSave = "Would you like to save file now?";
  for (const Answer answer : {Answer::No, Answer::Yes}) {
    WriteJobFiles(jobPath);
    fs::remove(jobPath / "T1N2E.iib");
    Open();
    session.parcels.ParcelDirty = -1;
    user.messages.clear();
    user.answers = {answer};
    answer == Answer::No ? FileClose(session) : FileExit(session);
    ASSERT_EQ(user.messages.size(), 1u);
    const std::string& text = user.messages[0].text;
    EXPECT_TRUE(text == kDirty + "\r\n" + kSave || text == kDirty + "\n" + kSave) << text;
    EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
    const std::string iid = ReadJob("T1N2E.iid");
    EXPECT_EQ(iid.substr(0, iid.find('\r')),
              answer == Answer::Yes ? "  * * * This file has been edited by Tessel  * * *  " : "TITLE");
    EXPECT_EQ(JobHas("T1N2E.iib"), answer == Answer::Yes);
  }
  // Not dirty: no question.
  Open();
  user.messages.clear();
  FileClose(session);
  EXPECT_TRUE(user.messages.empty());
}

class NewJob : public LoadSequence {
 protected:
  void Choose(const std::string& name) { user.files.push_back(FileChoice{name, fs::path(name).filename().string()}); }
};

TEST_F(NewJob, NextMakesTheIdentityMenusSupportFilesAndStartsJobpropsAndCancelDoesNothing) {
  EXPECT_FALSE(NewJobNext(session));
  EXPECT_FALSE(ExistingJobRoute(session));
  EXPECT_TRUE(session.JobBase.empty() && user.enabled.empty() && fs::is_empty(jobPath));

  Choose(JobDir() + "newjob");
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(user.fileRequests.at(2).title, "Select or Create a directory & Name the Job");
  EXPECT_EQ(session.JobBase + "|" + ReadJob("TEMP.JOB"), Upper(JobDir() + "newjob") + "|NEWJOB\r\n");
  // The job menus and the two kept after a close, but not the archive entries; Open goes off.
  std::map<std::string, bool> menus = {{"mnuFileOpen", false}, {"mnuFileReload", true}, {"mnuFileImport", true},
                                       {"Reload", true}};
  for (const char* name : kJobMenus) menus[name] = true;
  for (const char* name : kJobEntries) menus[name] = true;
  EXPECT_EQ(user.enabled, menus);
  // The support files in their own case, the carried bytes and a line end.
  for (const char* name : {"Nad27.con", "Nad83.con", "Table.dat", "Zone.dat"}) {
    EXPECT_EQ(ReadJob(name), ReadBytes(fs::path(TESSEL_RESOURCE_DIR) / name) + "\r\n") << name;
  }
  ASSERT_EQ(processes.launches.size(), 1u);
  const RecordedLaunch& l = processes.launches[0];
  EXPECT_EQ(l.kind + " " + l.commandLine + " in " + l.folder,
            "Spawn " + ToolDir() + PathSeparator() + "jobprops.exe in " + JobDir());
  // Nothing is read or drawn until the tools have made data.
  EXPECT_TRUE(display.calls.empty() && user.messages.empty());

  Choose(JobDir() + "x.def");  // a typed extension is kept whole
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(session.JobName, "X.DEF");

  // Started over a job with stores and unsaved parcel edits: the edits are offered for saving,
  // and the new job's stores are empty.
  session.parcels.ParcelCount = 1;
  session.parcels.ParcelDirty = -1;
  session.selection.PointList = {"picked"};
  user.answers = {Answer::No};
  Choose(JobDir() + "third");
  ASSERT_TRUE(NewJobNext(session));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{kMsgParcelEditsUnsaved});
  EXPECT_EQ(session.parcels.ParcelCount + session.parcels.ParcelDirty, 0);
  EXPECT_TRUE(session.selection.PointList.empty());
}

// The process's current folder moved for the length of a test.
struct InFolder {
  explicit InFolder(const fs::path& folder) { fs::current_path(folder); }
  ~InFolder() { fs::current_path(old); }
  fs::path old = fs::current_path();
};

TEST_F(NewJob, ExistingJobCopiesMissingSupportFilesAndLoadsShort) {
  for (const char* name : kSupportFiles) WriteTool(name, {std::string("MASTER ") + name});
  WriteJob("NAD83.CON", {"THE JOB'S OWN"});
  WriteJob("t1n2e.def", DefFile(2));
  WriteJob("T1N2E.COR", {CorRow("100100", "1000", "1000"), CorRow("100200", "2000", "1500")});
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("CTRL9", "1500", "500")}, {LsaLineRow("100100", "100200")},
                                {LsaPointRow("100100", "1000", "1000")}));
  WriteJob("T1N2E.LXN", {"CHAINS", "HEADER", "2", "100100100200", "999999"});
  // The dialog has left the current folder at the job's folder, and the name came bare.
  InFolder here(jobPath);
  session.CurrentFolder.clear();
  Choose("t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));
  EXPECT_EQ(session.JobBase + "|" + ReadJob("TEMP.JOB"), "T1N2E|T1N2E\r\n");
  EXPECT_EQ(user.enabled, (std::map<std::string, bool>{{"mnuFileClose", true}, {"mnuFileReload", true},
                                                       {"mnuFileOpen", false}}));
  EXPECT_EQ(ReadJob("Zone.dat") + ReadJob("NAD83.CON"), "MASTER Zone.dat\r\nTHE JOB'S OWN\r\n");
  EXPECT_FALSE(JobHas("Nad83.con"));
  // .COR, then the control station appended, the network line and the chain.
  EXPECT_EQ(session.points.PointIds(3), "CTRL9");
  EXPECT_EQ((Ints{session.points.PointCount(), session.lsa.LsaLineEnds.get(1).to, session.lxn.LxnSegmentCount}),
            (Ints{3, 2, 1}));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(display.calls, Strings{"RefreshViewAfterExtents"});

  // Without .LSA a box says so, and chains that are off are not read.
  fs::remove(jobPath / "T1N2E.LSA");
  session.lxn.Clear();
  session.config.chkLXN = 0;
  Choose("t1n2e.def");
  ASSERT_TRUE(ExistingJobRoute(session));
  EXPECT_EQ(user.MessageTexts(), Strings{"LSA file not found"});
  EXPECT_EQ(session.lxn.LxnSegmentCount, 0);
  EXPECT_EQ(display.calls.size(), 2u);
}

}  // namespace
}  // namespace tessel::test
