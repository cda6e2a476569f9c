#pragma once
// The menu commands that start the suite's tools: one table of rows (menu, entry, caption,
// tool, kind), and the one routine that runs a row with its guard, confirmation, launch and
// the rereading that keeps the picture in step with the files.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

// What a row does beyond starting its tool.
enum class CommandKind {
  Plain,              // ToolSpawn, normal window; no guard, no reload
  LeastSquares,       // fitmain: ToolRun, hourglass, Reload Current, redraw in the same view
  LinkDescriptions,   // desclink: Yes/No when .iid exists, ToolRun, read parcels, redraw
  ComputePolygons,    // ringform: Yes/No when .RPO exists, ToolRun, centroids, read .crp
  Centroids,          // the centroids of .RPO into .CRP, nothing run
  CheckPolygons,      // ringcheck from Attributes: ToolRun, read parcels, redraw
  RunOnly,            // descget, descget2: ToolRun, hourglass, nothing read
  Cogopad,            // cogopad: cogopad.hlp copied in, ToolRunCode normal, copy removed
  Shift27,            // shift27: conus.las and conus.los copied in and removed the same way
  RecordEditor,       // recpad: job guard, ToolWatch locking its own entry
  SubdivisionEditor,  // splitplan: frmADD unloaded, ToolWatch locking both of its entries
  EditObs,            // the configured editor on a chosen .OBS file, spawned
  Lsa2Cor,            // ReadLsaPoints, then WriteCorFromStore
  Shell,              // the platform's command window in the job folder, spawned
  NoAction,           // the entry stands in the menu and does nothing
};

inline constexpr const char* kAskRerunLld = "You already have run LLD, Are you sure you want to continue? ";
inline constexpr const char* kAskRecomputePolygons =
    "You have already computed Raw Polygons. Are you sure you want to continue? ";
inline constexpr const char* kObsFilter = "Observation Files (*.OBS)|*.obs|All Files (*.*)|*.*";

struct CommandRow {
  std::string menu;     // object name of the menu or submenu holding the entry
  std::string name;     // object name of the entry
  std::string caption;  // the entry's caption, with its & accelerator
  std::string tool;     // the tool's name without ".exe"; empty when none
  CommandKind kind = CommandKind::Plain;
};

// A submenu the rows live in: its parent menu, object name and caption.
struct SubmenuRow {
  std::string parent;
  std::string name;
  std::string caption;
};

const std::vector<CommandRow>& CommandTable();
const std::vector<SubmenuRow>& SubmenuTable();
// The row of an entry, or nullptr.
const CommandRow* FindCommand(const std::string& name);

// The command line of a tool: ToolFolder, a separator, the name and ".exe", spelled as the file
// exists in ToolFolder whatever its case (a tool built without ".exe" is found too).
std::string ToolCommandLine(const Session& session, const std::string& tool);
// The launch of a tool: that program, no arguments.
Launch ToolLaunch(const Session& session, const std::string& tool);

// The entries a watched run of the row keeps locked while its tool is alive.
std::vector<std::string> LockedEntries(const CommandRow& row);

// Runs the row. Faults are stepped over: a missing tool or side file does nothing visible.
void RunCommand(Session& session, const CommandRow& row);

// What Lsa2Cor tells when the points of .LSA cannot be read to their end.
std::string LsaPointsUnreadText(const std::string& lsaPath, const std::string& corPath);

// A platform's stand-in for a program the commands name by its Windows name ("Notepad.exe",
// "Command.com", "MSINFO32.EXE"); the name itself on Windows and for any other program.
std::string PlatformProgram(const std::string& windowsName);

}  // namespace tessel
