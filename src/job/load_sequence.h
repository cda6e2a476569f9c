#pragma once
// From program start to the first drawing, from File Open to the drawing of a job, and from
// Close or Exit back to the empty state: the order of the readers, the messages and status
// texts, the menus, and the files written and removed on the way.

#include <optional>
#include <string>

#include "job/job_state.h"
#include "model/progress.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kStatusStart = "Open a job or create a new one";
inline constexpr const char* kStatusClosed = "Open a project or start a new one";
inline constexpr const char* kJobFilter = "Project Definition files|*.def";
inline constexpr const char* kJobDialogTitle = "Select a job to view";

enum class LoadCase {
  LsaOnly,  // .LSA without .COR: points from .LSA, nothing but the network and records
  Full,     // everything else
};

// The main form's load: tool mode, status texts, Tessel.cfg, tool buttons, View options, menus.
void MainFormLoad(Session& session);

// The job dialog of File Open; nothing when it was cancelled, the pointer then back to the
// default.
std::optional<FileChoice> ChooseJob(Session& session);
// The toolbar's Open before its job dialog: with a job open, asks first and closes it. False when
// the job stays open (the user kept it, or its edits could not be saved).
bool CloseBeforeOpen(Session& session);
// File Open: the job dialog, then OpenJob. Returns false when the dialog was cancelled.
bool FileOpen(Session& session);
// File Open from the chosen .def on: identity, menus, support files, datasets, first drawing.
// `progress` hears which of the job's files is being read; a load never stops halfway, so it is
// never asked whether to stop.
void OpenJob(Session& session, const std::string& fileName, const std::string& fileTitle,
             Progress* progress = nullptr);
// The toolbar's Open: CloseBeforeOpen, then File Open.
void ToolbarOpen(Session& session);

// The readers in the order of the case table, each in its own step; without `readParcels` the
// parcel store is left as it stands. `progress` hears each file as it is read, and the share of
// the files' bytes read before it.
LoadCase LoadDatasets(Session& session, bool readParcels = true, Progress* progress = nullptr);
// Reload Current: clear, load, redraw in the present view. Parcel edits not yet saved are first
// offered for saving (Close's question); a store whose save failed is kept, edits and all.
void ReloadJob(Session& session);
// The same clearing and loading without the title and without drawing.
LoadCase LoadOnly(Session& session);
// The reload of the job's lines after a tool has computed: everything Reload Current reads, in
// the present view, but a parcel store that holds unsaved edits is kept as it is, with its
// selection, and nothing is asked.
void ReloadLines(Session& session);

// Close: asks about unsaved parcel edits, writes Tessel.hst, empties the stores and removes the
// support files from the job folder. False, with the job still open, when the edits were to be
// saved and could not be (the user has been told).
bool FileClose(Session& session);
// Exit: the same file effects, then the program ends (the caller quits); false as for Close, and
// the program goes on.
bool FileExit(Session& session);

}  // namespace tessel
