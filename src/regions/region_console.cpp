#include "regions/region_console.h"

#include <algorithm>

#include "datasets/identity.h"
#include "datasets/support_files.h"
#include "job/command_table.h"
#include "job/job_menus.h"
#include "job/load_sequence.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "regions/how_file.h"
#include "regions/match_test.h"
#include "tools/launching.h"

namespace tessel {

namespace {

constexpr const char* kToolForms[] = {"frmADD", "frmIRR", "frmTWP"};

std::string UpToFirstPoint(const std::string& text) { return text.substr(0, text.find('.')); }

// A whole file copied through the one safe writer; a failure names the file that failed.
void CopyBytes(const std::string& from, const std::string& to) {
  std::string bytes;
  if (!ReadFileBytes(from, bytes)) throw RuntimeFault(FaultKind::FileAccess, from);
  try {
    WriteFileBytes(to, bytes);
  } catch (const RuntimeFault&) {
    throw RuntimeFault(FaultKind::FileAccess, to);
  }
}

void WriteTempJob(Session& session) {
  StepOver([&] { WriteFileBytes(session.JobFile("TEMP.JOB"), session.JobName + "\r\n"); });
}

void Refresh(Session& session) {
  if (session.display) StepOver([&] { session.display->RefreshView(); });
}

}  // namespace

std::string ToolNotStartedText(const std::string& tool, const std::string& why) {
  return "The tool " + tool + " could not be started (" + why + ").\r\nNothing was run.";
}

PanelPlace ContinuePanelPlace(double mainLeft, double mainTop, double mainWidth, double mainHeight,
                              double panelWidth) {
  return {mainLeft + mainWidth - panelWidth - 50.0, mainTop + mainHeight - 900.0};
}

RegionConsole::RegionConsole(Session& session) : session_(session) {}

std::string RegionConsole::RegionFile(const std::string& extension) const {
  if (RegionName(session_).empty()) return session_.DatasetPath(extension);
  return ResolveCase(RegionFolder(session_) + RegionName(session_) + extension);
}

void RegionConsole::DialogStatusText(int panel, const std::string& text) {
  if (panel >= 1 && panel <= 2) statusPanel[panel] = text;
  if (onStatus) onStatus(panel, text);
}

void RegionConsole::LoadListing() {
  const std::string how = RegionFile(".how");
  if (!FileExistsAnyCase(how)) return;
  std::vector<std::string> read;
  ReadHowListing(how, read);
  rows = std::move(read);
  selected = -1;
}

void RegionConsole::SetStates() {
  if (FileExistsAnyCase(RegionFile(".lsa"))) {
    enabled.cmdAdjust = true;
    enabled.cmdViewRegion = true;
  } else {
    enabled.cmdMerge = true;
    enabled.cmdAdjust = false;
    enabled.cmdViewRegion = false;
  }
  if (!FileExistsAnyCase(RegionFile(".cor"))) enabled.cmdParse = false;
  if (session_.points.PointCount() > 0) enabled.cmdTest = true;
}

void RegionConsole::Open() {
  Session& s = session_;
  if (Trim(txtProject).empty()) {
    txtProject = s.JobName;
    DialogStatusText(1, s.JobFolder);
  }
  if (!RegionName(s).empty()) {
    if (s.JobBase.empty() || s.JobName.empty() || s.JobFolder.empty()) return;
    s.JobName = RegionName(s);
    // The folder is what stands in JobBase before the name.
    const std::size_t keep = s.JobBase.size() >= s.JobName.size() ? s.JobBase.size() - s.JobName.size() : 0;
    s.JobFolder = s.JobBase.substr(0, keep);
    txtProject = RegionName(s);
  }
  LoadListing();
  if (s.region.MatchTolerance > 0) txtTolerance = ShortestText(s.region.MatchTolerance);
  SetStates();
}

bool RegionConsole::RunTool(const std::string& tool) {
  session_.CurrentFolder = session_.JobFolder;
  session_.user.SetPointer(Pointer::Hourglass);
  const LaunchStart start = RunAndTellStart(session_, ToolLaunch(session_, tool), session_.JobFolder);
  session_.user.SetPointer(Pointer::Default);
  // The next step must not open on the files of a run that never happened.
  if (!start.started) session_.user.Message(ToolNotStartedText(tool, start.why), Icon::Exclamation);
  return start.started;
}

void RegionConsole::FolderButton() {
  Session& s = session_;
  FileRequest request;
  request.title = "Select or Create project";
  // A project that does not exist yet may be named: it is created.
  request.save = true;
  request.overwritePrompt = false;
  request.defaultExtension = ".def";
  request.initialFolder = s.JobFolder.empty() ? RecallFolder(s) : s.JobFolder;
  const std::string name = Trim(txtProject);
  if (name.empty()) {
    request.filter = "Project Definition files (*.def)|*.def";
  } else {
    request.filter = name + ".def |" + name + ".def|All project definition files (*.def)|*.def";
    request.fileName = s.JobFolder + name + ".def";
  }
  const auto choice = s.user.ChooseFile(request);
  if (!choice) return;

  OpenIdentity(s, choice->fileName, choice->fileTitle);
  s.CurrentFolder = s.JobFolder;
  txtProject = s.JobName;
  DialogStatusText(1, s.JobFolder);
  EnableJobMenus(s);
  StepOver([&] { WriteSupportFiles(s); });

  const std::string def = s.DatasetPath(".def");
  if (!FileExistsAnyCase(def)) {
    const std::string defaults = s.ToolFile("default.def");
    const auto copy = [&](const std::string& from, const std::string& to) {
      try {
        CopyBytes(from, to);
      } catch (const RuntimeFault& fault) {
        s.user.Message(std::string("Unable to write ") + fault.what(), Icon::Stop);
      }
    };
    if (FileExistsAnyCase(defaults)) {
      if (s.user.Message("Setup project with default properties?", Icon::Question, Buttons::YesNo) == Answer::Yes) {
        copy(defaults, def);
      } else {
        RunTool("jobprops");
      }
    } else if (s.user.Message("Setup project properties now?", Icon::Question, Buttons::YesNo) == Answer::Yes) {
      RunTool("jobprops");
      if (s.user.Message("Would you like to save this definition as \r\na default for future projects?",
                         Icon::Question, Buttons::YesNo) == Answer::Yes) {
        copy(s.DatasetPath(".def"), defaults);
      }
    } else {
      s.user.Message("You will need to set project properties before running merge");
    }
  }
  LoadListing();
  SetStates();
}

bool RegionConsole::SaveListing() {
  Session& s = session_;
  bool written = false;
  if (!RegionFolder(s).empty() && !RegionName(s).empty()) {
    written = StepOver([&] { WriteFileBytes(RegionFile(".how"), HowListingText(rows)); });
  }
  if (!written) {
    s.user.Message(kMsgCannotWriteHow, Icon::Stop);
    focusFolder = true;
    return false;
  }
  s.region.RegionDirty = 0;
  return true;
}

void RegionConsole::AfterEdit() {
  session_.region.RegionDirty = -1;
  SaveListing();
  enabled.cmdMerge = true;
  enabled.cmdAdjust = false;
  enabled.cmdParse = false;
  enabled.cmdUpdate = false;
}

void RegionConsole::Add() {
  FileRequest request;
  request.filter = "Project Definition files|*.def";
  request.initialFolder = addFolder.empty() ? session_.JobFolder : addFolder;
  const auto choice = session_.user.ChooseFile(request);
  if (!choice) return;
  const std::string& path = choice->fileName;
  const std::string folder =
      choice->fileTitle.size() <= path.size() ? path.substr(0, path.size() - choice->fileTitle.size()) : std::string();
  addFolder = folder;
  const bool bare = chkNoPath || (!folder.empty() && folder == RegionFolder(session_));
  // Only the file name loses its extension: a folder such as /home/j.smith/ stays whole.
  const std::string name = UpToFirstPoint(choice->fileTitle);
  const std::string entry = bare ? name : folder + name;
  const int count = static_cast<int>(rows.size());
  if (selected < 0 || selected >= count) {
    rows.push_back(entry);
  } else {
    rows.insert(rows.begin() + selected + 1, entry);
  }
  AfterEdit();
}

void RegionConsole::InsertKeyword(const char* keyword) {
  const int count = static_cast<int>(rows.size());
  if (selected < 0 || selected >= count) {
    rows.emplace_back(keyword);
  } else {
    rows.insert(rows.begin() + selected, keyword);
    ++selected;
  }
  AfterEdit();
}

void RegionConsole::Remove() {
  if (selected >= 0 && selected < static_cast<int>(rows.size())) {
    rows.erase(rows.begin() + selected);
    selected = -1;
  }
  AfterEdit();
}

void RegionConsole::MoveUp() {
  if (selected < 1 || selected >= static_cast<int>(rows.size())) return;
  std::swap(rows[static_cast<std::size_t>(selected)], rows[static_cast<std::size_t>(selected - 1)]);
  --selected;
  AfterEdit();
}

void RegionConsole::MoveDown() {
  if (selected < 0 || selected + 1 >= static_cast<int>(rows.size())) return;
  std::swap(rows[static_cast<std::size_t>(selected)], rows[static_cast<std::size_t>(selected + 1)]);
  ++selected;
  AfterEdit();
}

void RegionConsole::Preview() {
  PreviewRegion(session_, rows, txtTolerance, [this](int panel, const std::string& text) { DialogStatusText(panel, text); });
  enabled.cmdTest = true;
}

bool RegionConsole::CompareForTest(Progress* progress) {
  Session& s = session_;
  RegionMatchStore& m = s.region.match;
  m.Clear();
  m.ShowMatchLines = chkLines ? -1 : 0;
  m.ShowMatchEnds = chkEnds ? -1 : 0;
  s.user.SetPointer(Pointer::Hourglass);
  s.region.MatchTolerance = ReadTolerance(txtTolerance);
  DialogStatusText(1, "Testing merge at " + ShortestText(s.region.MatchTolerance) + " (ft.).");
  return CompareCoordinates(
      s, s.region.MatchTolerance, [this](int panel, const std::string& text) { DialogStatusText(panel, text); },
      progress);
}

void RegionConsole::ShowTest(bool compared) {
  Session& s = session_;
  if (compared) {
    RegionMatchStore& m = s.region.match;
    m.Drawn = true;
    enabled.cmdDetails = true;
    chkLines = true;
    m.ShowMatchLines = -1;
  }
  Refresh(s);
  s.user.SetPointer(Pointer::Default);
}

std::vector<std::string> RegionConsole::DetailsLines() const {
  const RegionMatchStore& m = session_.region.match;
  std::vector<std::string> lines{" Matching Lines: "};
  for (int k = 1; k <= m.MatchLineCount; ++k) {
    const auto [a, b] = m.MatchLines.get(k);
    lines.push_back(session_.points.PointIds(a) + " to " + session_.points.PointIds(b));
  }
  return lines;
}

void RegionConsole::SetShowLines(bool on) {
  chkLines = on;
  session_.region.match.ShowMatchLines = on ? -1 : 0;
  Refresh(session_);
}

void RegionConsole::SetShowEnds(bool on) {
  chkEnds = on;
  session_.region.match.ShowMatchEnds = on ? -1 : 0;
  Refresh(session_);
}

void RegionConsole::ClickRow(int row) {
  if (row < 0 || row >= static_cast<int>(rows.size())) return;
  selected = row;
  Refresh(session_);
  const std::string& text = rows[static_cast<std::size_t>(row)];
  if (IsRegionKeyword(text)) return;
  DrawRowHighlight(session_, ProjectTag(text));
}

void RegionConsole::Merge() {
  Session& s = session_;
  if (s.region.RegionDirty != 0) {
    s.user.Message(kMsgSaveBeforeMerge);
    return;
  }
  if (s.JobBase.empty()) {
    s.user.Message(kMsgCreateWithFolder, Icon::Stop);
    FolderButton();
    if (s.JobBase.empty()) return;
  }
  if (s.JobName != txtProject) {
    s.user.Message("Merging is done on the region " + txtProject + "\r\nThe currently loaded project is " + s.JobName,
                   Icon::Exclamation);
    return;
  }
  if (!RunTool("twpjoin")) return;
  ReloadLines(s);
  chkLines = false;
  s.region.match.ShowMatchLines = 0;
  enabled.cmdAdjust = true;
  enabled.cmdParse = false;
  enabled.cmdUpdate = false;
  enabled.cmdViewRegion = true;
}

void RegionConsole::Adjust() {
  if (session_.DatasetExists(".lsa")) {
    if (!RunTool("fitmain")) return;
    enabled.cmdAdjust = true;
    enabled.cmdParse = true;
    enabled.cmdUpdate = false;
  }
  if (!session_.DatasetExists(".lsa")) session_.user.Message(kMsgMergeBeforeAdjust);
}

void RegionConsole::Parse() {
  if (session_.DatasetExists(".cor")) {
    if (!RunTool("twpsplit")) return;
    enabled.cmdAdjust = true;
    enabled.cmdParse = true;
    enabled.cmdUpdate = true;
    enabled.cmdReliabilities = true;
  }
  if (!session_.DatasetExists(".cor")) session_.user.Message(kMsgAdjustBeforeParse);
}

void RegionConsole::LoadJobAfterStrings() {
  Session& s = session_;
  s.CurrentFolder = s.JobFolder;
  WriteTempJob(s);
  s.user.SetTitle("Tessel " + s.JobBase);
  EnableJobMenus(s);
  StepOver([&] { WriteSupportFiles(s); });
  ShowLsaLinesOnly(s);
}

void RegionConsole::ViewRegion() {
  Session& s = session_;
  // Another project takes the canvas: the one shown goes as a closed job goes, its unsaved parcel
  // edits offered for saving first.
  if (!AskToSaveParcels(s)) return;
  for (const char* form : kToolForms) s.user.UnloadForm(form);
  enabled.cmdTest = true;
  ResetJobState(s);
  if (s.JobName != RegionName(s)) {
    s.JobName = RegionName(s);
    s.JobBase = RegionFolder(s) + RegionName(s);
    s.JobFolder = RegionFolder(s);
  }
  chkLines = false;
  chkEnds = false;
  s.region.match.ShowMatchLines = 0;
  s.region.match.ShowMatchEnds = 0;
  LoadJobAfterStrings();
  if (s.DatasetExists(".lsa")) {
    s.user.SetPointer(Pointer::Hourglass);
    LoadDatasets(s);
    if (s.display) StepOver([&] { s.display->RefreshViewAfterExtents(); });
    s.user.SetPointer(Pointer::Default);
    enabled.cmdTest = true;
    enabled.cmdAdjust = true;
    enabled.cmdUpdate = true;
    enabled.cmdReliabilities = true;
    DialogStatusText(1, TotalsText(s));
  }
  if (s.DatasetExists(".cor")) enabled.cmdParse = true;
}

void RegionConsole::ViewItem() {
  Session& s = session_;
  if (selected < 0 || selected >= static_cast<int>(rows.size())) {
    s.user.Message(kMsgSelectProject);
    return;
  }
  chkLines = false;
  chkEnds = false;
  s.region.match.ShowMatchLines = 0;
  s.region.match.ShowMatchEnds = 0;
  const std::string row = rows[static_cast<std::size_t>(selected)];
  if (IsRegionKeyword(row)) return;
  if (!AskToSaveParcels(s)) return;
  s.user.SetTitle(kTitlePreview);
  for (const char* form : kToolForms) s.user.UnloadForm(form);
  ResetJobState(s);
  if (RowHasFolder(row)) {
    s.JobName = RowProjectName(row);
    s.JobFolder = row.substr(0, row.size() - s.JobName.size());
  } else {
    s.JobFolder = RegionFolder(s);
    s.JobName = row;
  }
  s.JobBase = s.JobFolder + s.JobName;
  LoadJobAfterStrings();
  s.user.SetPointer(Pointer::Hourglass);
  LoadDatasets(s);
  if (s.display) StepOver([&] { s.display->RefreshViewAfterExtents(); });
  s.user.SetPointer(Pointer::Default);
  s.user.Status(1, s.JobName);
}

bool RegionConsole::Reliabilities() {
  Session& s = session_;
  if (s.JobName != txtProject) {
    s.user.Message(kMsgReliabilitiesOnRegion);
    return false;
  }
  std::string seventh;
  const std::string def = s.DatasetPath(".def");
  try {
    LineReader in(def);
    for (int k = 1; k <= 7; ++k) seventh = in.ReadLine();
  } catch (const RuntimeFault&) {
    s.user.Message("Unable to read the project definition " + def, Icon::Stop);
    return false;
  }
  if (Trim(seventh) == "N") {
    s.user.Message(kMsgEstimatesFromSd);
    return false;
  }
  StepOver([&] { WriteSupportFiles(s); });
  WriteTempJob(s);
  s.user.Message("Your regional files for " + s.JobName +
                 " have been backed up. \r\n"
                 "A new merge will be performed, any 'Fixed' boundaries will be replaced as 'Norel' items.\r\n"
                 "The new merge is displayed for your inspection, when ready to begin computing reliabilities, \r\n"
                 "Click 'Contine'.  If the merge is incorrect, click 'cancel'.  The original region will be "
                 "restored when complete.");
  for (const char* ext : kRegionSet) DeleteAnyCase(s.JobFile(std::string("tempjob") + ext));
  for (const char* ext : kRegionSet) {
    try {
      CopyBytes(s.DatasetPath(ext), s.JobFile(std::string("tempjob") + ext));
    } catch (const RuntimeFault& fault) {
      // Nothing runs on a partial backup; the region's own files are as they were.
      s.user.Message(std::string("Unable to back up the region: ") + fault.what(), Icon::Stop);
      return false;
    }
  }
  std::vector<std::string> norel;
  for (const std::string& row : rows) {
    const std::string trimmed = Trim(row);
    norel.push_back(trimmed == kKeywordFixed ? std::string(kKeywordNorel) : trimmed);
  }
  try {
    WriteFileBytes(s.DatasetPath(".how"), HowListingText(norel));
  } catch (const RuntimeFault&) {
    s.user.Message("Unable to write " + s.DatasetPath(".how"), Icon::Stop);
    return false;
  }
  return true;
}

void RegionConsole::ReliabilitiesMerge() {
  if (!RunTool("twpjoin")) {
    // Nothing was merged for inspection: the region gets its FIXED listing back now.
    RestoreSet();
    session_.user.UnloadForm("frmContinue");
    return;
  }
  ReloadJob(session_);
}

void RegionConsole::ReliabilitiesCommand() {
  if (!Reliabilities()) return;
  session_.user.ShowForm("frmContinue");
  ReliabilitiesMerge();
}

bool RegionConsole::RestoreSet() {
  Session& s = session_;
  // Every copy is read before any file of the set is replaced, so a missing copy loses nothing.
  std::vector<std::string> copies;
  for (const char* ext : kRegionSet) {
    const std::string from = s.JobFile(std::string("tempjob") + ext);
    std::string bytes;
    if (!ReadFileBytes(from, bytes)) {
      s.user.Message("Unable to restore the region: " + from, Icon::Stop);
      return false;
    }
    copies.push_back(std::move(bytes));
  }
  std::size_t k = 0;
  for (const char* ext : kRegionSet) {
    const std::string to = s.DatasetPath(ext);
    if (!StepOver([&] { WriteFileBytes(to, copies[k]); })) {
      s.user.Message("Unable to restore the region: " + to, Icon::Stop);
      return false;
    }
    ++k;
  }
  return true;
}

void RegionConsole::ContinueReliabilities() {
  if (!RunTool("twprel")) return;
  RestoreSet();
  session_.user.UnloadForm("frmContinue");
  ReloadJob(session_);
}

void RegionConsole::CancelReliabilities() {
  RestoreSet();
  session_.user.UnloadForm("frmContinue");
  ReloadJob(session_);
}

}  // namespace tessel
