#pragma once
// The region console frmRegion without its window: the listing and its edits, the enabled
// state of the commands, the boundary match test and the regional workflow (twpjoin, fitmain,
// twpsplit, twprel), each with its messages and status texts. The form shows these fields and
// forwards its buttons here.

#include <string>
#include <vector>

#include "model/progress.h"
#include "model/session.h"
#include "regions/region_preview.h"

namespace tessel {

inline constexpr const char* kMsgCannotWriteHow =
    "Unable to write the Region listing (.how) file.\r\nClick the Folder button to create this project. ";
inline constexpr const char* kMsgSaveBeforeMerge = "Save changes to .how file before twpjoin merge.";
inline constexpr const char* kMsgCreateWithFolder = "You must create this project by clicking the Folder button";
inline constexpr const char* kMsgMergeBeforeAdjust = "Merge projects with twpjoin before adjusting";
inline constexpr const char* kMsgAdjustBeforeParse =
    "Regional adjustment must be run before updating individual projects";
inline constexpr const char* kMsgSelectProject = "You must select a project in the list.";
inline constexpr const char* kMsgReliabilitiesOnRegion =
    "Reliabilities are computed on a regional dataset.\r\nClick 'View Region' button to load the region";
inline constexpr const char* kMsgEstimatesFromSd =
    "Error estimates MUST come from .sd file for TWPREL. \r\nSet project properties accordingly and try again.";
inline constexpr const char* kTitlePreview = "Tessel - Previewing Region";

// The box when a tool of the workflow could not be started: the tool, why, and that nothing ran.
std::string ToolNotStartedText(const std::string& tool, const std::string& why);

// The commands whose enabled state follows the workflow.
struct RegionCommands {
  bool cmdMerge = true;
  bool cmdAdjust = false;
  bool cmdParse = false;
  bool cmdUpdate = false;
  bool cmdReliabilities = false;
  bool cmdViewRegion = false;
  bool cmdTest = false;
  bool cmdDetails = false;
  bool operator==(const RegionCommands&) const = default;
};

// The six files of a region treated as one set by "Reliabilities", in this order.
inline constexpr const char* kRegionSet[] = {".how", ".lsa", ".sd", ".mat", ".cor", ".pgc"};

// Where frmContinue stands, in twips: its top at the main window's top plus its height less
// 900, its left edge 50 from the main window's right edge.
struct PanelPlace {
  double left = 0.0;
  double top = 0.0;
};
PanelPlace ContinuePanelPlace(double mainLeft, double mainTop, double mainWidth, double mainHeight,
                              double panelWidth);

class RegionConsole {
 public:
  explicit RegionConsole(Session& session);

  // The dialog's fields, as the form shows them.
  std::string txtProject;          // the region's project name
  std::string txtTolerance = "10";  // "Distance Tolerance for merge test (FT): "
  bool chkNoPath = false;          // "Do not include path."
  bool chkLines = false;           // "View Matchup Lines"
  bool chkEnds = false;            // "Draw endpoints"
  std::vector<std::string> rows;   // the listing
  int selected = -1;               // the selected row, -1 for none
  std::string statusPanel[3];      // panels 1 and 2 of the dialog's status bar
  RegionCommands enabled;
  // Set when the folder button should take the focus.
  bool focusFolder = false;
  // The folder the Add chooser remembers.
  std::string addFolder;
  // Receives every text of the dialog's status panels as it is set.
  DialogStatus onStatus;

  // Opening the dialog: the project field, the region's strings, the listing, the states.
  void Open();
  // The folder button: the region's project chosen or created.
  void FolderButton();
  // The listing's edits; each saves the listing and invalidates what follows the merge.
  void Add();
  void InsertKeyword(const char* keyword);
  void Remove();
  void MoveUp();
  void MoveDown();
  // "Save" has no action: every edit has already saved.
  void Save() {}
  // Writes the listing; false (with the message) when it cannot.
  bool SaveListing();

  // The boundary match test.
  void Preview();
  // The test in its two halves: the comparison, which may run off the interface thread and
  // returns false when cancelled, then the drawing of what it found (of nothing, when cancelled).
  void Test(Progress* progress = nullptr) { ShowTest(CompareForTest(progress)); }
  bool CompareForTest(Progress* progress);
  void ShowTest(bool compared);
  std::vector<std::string> DetailsLines() const;
  void SetShowLines(bool on);
  void SetShowEnds(bool on);
  // A click on a row: redraw and mark the row's project.
  void ClickRow(int row);

  // The workflow. A tool that could not be started is told in a box, and what would follow its
  // run (the reload, the next steps' enabled states, the end of "Reliabilities") does not happen.
  void Merge();
  void Adjust();
  void Parse();
  void ViewRegion();
  void ViewItem();
  // Steps 1 to 6 of "Reliabilities": false when refused or when the backup failed. The caller
  // then shows frmContinue and calls ReliabilitiesMerge.
  bool Reliabilities();
  // twpjoin on the NOREL listing; when it could not be started the set is restored at once and
  // frmContinue goes.
  void ReliabilitiesMerge();
  // The whole button: the steps, frmContinue shown, the merge for inspection.
  void ReliabilitiesCommand();
  // frmContinue's buttons: twprel (Continue only), then the set restored and the job reloaded.
  // A twprel that could not be started leaves the panel open, so that Cancel can restore.
  void ContinueReliabilities();
  void CancelReliabilities();

  // A file of the region's project: its folder, name and the extension, in any case.
  std::string RegionFile(const std::string& extension) const;

 private:
  void DialogStatusText(int panel, const std::string& text);
  void AfterEdit();
  void SetStates();
  void LoadListing();
  // Runs the tool in the job's folder; false, with the box, when it could not be started.
  bool RunTool(const std::string& tool);
  void LoadJobAfterStrings();
  bool RestoreSet();

  Session& session_;
};

}  // namespace tessel
