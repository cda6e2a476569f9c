#pragma once
// One running Tessel: the open job's identity, every store, the view and tool state, the
// configuration and the ports. Passed by reference; a test builds as many as it likes.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/adjustment_overlay.h"
#include "model/note_lines.h"
#include "model/calculation_lists.h"
#include "model/point_picks.h"
#include "model/config.h"
#include "model/control_store.h"
#include "model/display.h"
#include "model/line_stores.h"
#include "model/point_store.h"
#include "model/region_state.h"
#include "model/selection.h"
#include "model/tool_mode.h"
#include "model/ports.h"
#include "model/view_state.h"
#include "model/parcel_store.h"
#include "model/survey_store.h"
#include "model/section_definitions.h"
#include "model/cama_store.h"
#include "model/tool_log.h"
#include "model/session_changes.h"

namespace tessel {

struct Session {
  Session(UserPort& userPort, CanvasPort& canvasPort, ProcessPort& processPort)
      : user(userPort), canvas(canvasPort), processes(processPort) {}

  UserPort& user;
  CanvasPort& canvas;
  ProcessPort& processes;
  // The viewer, once attached; without it the load paints nothing.
  Display* display = nullptr;
  // The job's reloads, set by the load sequence so that the layers below it can reread the job
  // after rewriting its files: the whole job (File > Reload Current; see ReloadJobFiles), and the
  // job's lines after a tool has computed, which keeps unsaved parcel edits (ReloadJobLineFiles).
  void (*reloadJob)(Session&) = nullptr;
  void (*reloadJobLines)(Session&) = nullptr;

  // Folder of the program, of Tessel.cfg and Tessel.hst and of the suite's tools; no separator
  // at its end.
  std::string ToolFolder;
  // The current folder, in which tools run and relative names are found; the job dialog leaves
  // it at the job's folder.
  std::string CurrentFolder;
  // What starts the suite's Windows programs on a system that does not start them itself (a
  // program, or "none"); empty for Wine. Kept in tessel-tools.ini, not in Tessel.cfg.
  std::string toolRunner;

  // The open job; all empty when none is open.
  std::string JobBase;
  std::string JobFolder;
  std::string JobName;
  // The copies kept for the region functions, taken at every open.
  std::string RegionJobFolder;
  std::string RegionJobName;

  Config config;

  PointStore points;
  ControlStore control;
  JobExtents extents;
  float UnitsPerChain = 0.0f;
  LsaLineStore lsa;
  LxnLineStore lxn;
  RawLineStore raw;
  NoteLineStore notes;
  SurveyStore surveys;
  ParcelStore parcels;
  RawPolygonStore polygons;
  SectionDefinitionStore sectionDefinitions;
  // The post-adjustment calculation lists of frmADD.
  CalculationLists calculations;
  // The assessor linking's tables.
  CamaStore cama;
  // The region console and its boundary match test.
  RegionState region;
  // The error ellipses and flagged observations of the adjustment window's result.
  AdjustmentOverlay adjustmentOverlay;

  ViewState view;
  ViewChecks checks;
  tessel::ToolMode ToolMode = tessel::ToolMode::None;
  // One counter for all pick tools.
  std::int16_t SelectionCount = 0;
  Selection selection;
  // The open dialogs that take a point picked on the canvas.
  PointPickDispatcher pointPicks;
  // Every launch of this session, filled by the process port.
  ToolLog toolLog;
  // Whoever shows the session's data, told what changed.
  ChangeNotifier changes;

  // Tells the observers that the data of `what` changed.
  void Changed(Changes what) { changes.Notify(what); }

  // A dataset of the job: JobBase followed by the extension, found in whatever case it exists.
  std::string DatasetPath(std::string_view extension) const;
  bool DatasetExists(std::string_view extension) const;
  // A scratch or support file in the job's folder.
  std::string JobFile(std::string_view name) const;
  // A file in the program's folder.
  std::string ToolFile(std::string_view name) const;
  // True when the job's folder is the program's own folder.
  bool JobInToolFolder() const;
};

// Rereads the open job through the load sequence, when one is attached.
inline void ReloadJobFiles(Session& session) {
  if (session.reloadJob) session.reloadJob(session);
}
inline void ReloadJobLineFiles(Session& session) {
  if (session.reloadJobLines) session.reloadJobLines(session);
}

}  // namespace tessel
