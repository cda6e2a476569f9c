#include "job/load_sequence.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <set>

#include "calculations/note_file.h"
#include "job/config_actions.h"
#include "datasets/coordinate_files.h"
#include "model/fault.h"
#include "datasets/identity.h"
#include "job/job_menus.h"
#include "job/job_state.h"
#include "job/read_ahead.h"
#include "datasets/line_files.h"
#include "model/paths.h"
#include "datasets/support_files.h"
#include "model/text.h"
#include "parcels/parcel_file.h"
#include "parcels/raw_polygons.h"
#include "surveys/survey_file.h"
#include "tools/tool_runner.h"
#include "viewer/picking.h"

namespace tessel {

namespace {

constexpr const char* kToolForms[] = {"frmParcelLocator", "frmAttributes", "frmTesting", "frmQuickEdit",
                                      "frmQuickEditList", "frmListSurveys", "frmADD", "frmIRR"};

// One step of a load: a fault ends the step, the pointer goes back to the default and the
// sequence carries on with the next step.
template <typename F>
void Step(Session& session, F&& step) {
  try {
    step();
  } catch (const RuntimeFault&) {
    session.user.SetPointer(Pointer::Default);
  }
}

// How far a load has come: the share of its files' bytes read, each file counted once, after
// its last reader.
class LoadWatch {
 public:
  LoadWatch(const Session& session, Progress* progress, std::initializer_list<const char*> extensions)
      : session_(session), progress_(progress) {
    if (!progress_) return;
    for (const char* extension : extensions) total_ += Size(extension);
  }
  void Reading(const char* extension) const {
    Report(progress_, "Reading " + session_.JobName + extension,
           total_ == 0 ? -1.0 : static_cast<double>(done_) / static_cast<double>(total_));
  }
  void Read(const char* extension) {
    if (progress_ && counted_.insert(extension).second) done_ = std::min(total_, done_ + Size(extension));
  }

 private:
  std::uintmax_t Size(const char* extension) const {
    if (!session_.DatasetExists(extension)) return 0;
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(session_.DatasetPath(extension), error);
    return error ? 0 : size;
  }
  const Session& session_;
  Progress* progress_;
  std::uintmax_t total_ = 0;
  std::uintmax_t done_ = 0;
  std::set<std::string> counted_;
};

void FirstDrawing(Session& session) {
  if (session.display) session.display->RefreshViewAfterExtents();
}

void UnloadToolForms(Session& session) {
  for (const char* form : kToolForms) session.user.UnloadForm(form);
}

}  // namespace

void MainFormLoad(Session& session) {
  session.ToolMode = ToolMode::ZoomPan;
  session.user.Status(1, kStatusStart);
  session.user.Status(2, "");
  session.user.Status(3, "");
  session.config = ReadConfig(session.ToolFile("Tessel.cfg"));
  session.toolRunner = ReadToolRunner(session.ToolFile(kToolRunnerFile));
  ApplyToolButtons(session);
  ApplyViewOptions(session);
  InitialMenus(session);
}

std::optional<FileChoice> ChooseJob(Session& session) {
  FileRequest request;
  request.title = kJobDialogTitle;
  request.filter = kJobFilter;
  request.initialFolder = session.JobFolder.empty() ? RecallFolder(session) : session.JobFolder;
  auto choice = session.user.ChooseFile(request);
  if (!choice) session.user.SetPointer(Pointer::Default);
  return choice;
}

bool FileOpen(Session& session) {
  const auto choice = ChooseJob(session);
  if (!choice) return false;
  OpenJob(session, choice->fileName, choice->fileTitle);
  return true;
}

void OpenJob(Session& session, const std::string& fileName, const std::string& fileTitle, Progress* progress) {
  session.user.SetPointer(Pointer::Hourglass);
  // Whatever route led here, the job starts from nothing.
  ResetJobState(session);
  Step(session, [&] {
    OpenIdentity(session, fileName, fileTitle);
  });
  // The job dialog leaves the current folder at the job's folder.
  session.CurrentFolder = session.JobFolder;
  EnableJobMenus(session);
  Step(session, [&] { WriteSupportFiles(session); });
  LoadDatasets(session, true, progress);
  if (!session.DatasetExists(".COR") && !session.DatasetExists(".lsa")) {
    session.user.Message("graphics are not yet available", Icon::Information);
  }
  session.user.Status(1, "Preparing for display");
  Step(session, [&] { FirstDrawing(session); });
  session.user.SetPointer(Pointer::Default);
  session.user.Status(1, session.JobName);
}

bool CloseBeforeOpen(Session& session) {
  if (!JobGuard(session)) return true;
  const Answer answer =
      session.user.Message("Close current job and open new one?", Icon::Question, Buttons::OkCancel, "Open Project");
  return answer == Answer::Ok && FileClose(session);
}

void ToolbarOpen(Session& session) {
  if (CloseBeforeOpen(session)) FileOpen(session);
}

LoadCase LoadDatasets(Session& session, bool readParcels, Progress* progress) {
  session.reloadJob = &ReloadJob;
  session.reloadJobLines = &ReloadLines;
  // Each job's unit code starts from nothing: one whose code is neither metres nor feet keeps no
  // factor of the job before it.
  session.UnitsPerChain = 0.0f;
  const bool hasCor = session.DatasetExists(".COR");
  const bool hasLsa = session.DatasetExists(".LSA");
  LoadWatch watch(session, progress, {".COR", ".LSA", ".not", ".LXN", ".sid", ".raw", ".RPO", ".iid"});
  ReadAhead ahead(session, readParcels);
  // One reader of the file with `extension`, told before it runs and counted after.
  const auto read = [&](const char* extension, auto&& reader) {
    watch.Reading(extension);
    Step(session, reader);
    watch.Read(extension);
  };
  if (hasLsa && !hasCor) {
    read(".LSA", [&] { ReadLsaPoints(session); });
    if (session.points.PointCount() > 0) session.user.Message("Viewing LSA coordinates", Icon::Information);
    read(".LSA", [&] { ReadControl(session); });
    read(".LSA", [&] { ReadLsaLines(session, ahead.LsaLines(session)); });
    if (session.DatasetExists(".sid")) read(".sid", [&] { ReadSurveys(session); });
    if (session.DatasetExists(".raw")) read(".raw", [&] { ReadRaw(session, ahead.Raw(session)); });
    return LoadCase::LsaOnly;
  }
  read(".COR", [&] { ReadCor(session); });
  if (hasLsa) {
    read(".LSA", [&] { ReadControl(session); });
    read(".LSA", [&] { ReadLsaLines(session, ahead.LsaLines(session)); });
    read(".not", [&] { ReadNotes(session); });
  } else {
    session.user.Message("LSA file not found", Icon::Information);
  }
  if (session.config.chkLXN == 1) read(".LXN", [&] { ReadLxn(session); });
  if (session.DatasetExists(".sid")) read(".sid", [&] { ReadSurveys(session); });
  if (session.DatasetExists(".raw")) read(".raw", [&] { ReadRaw(session, ahead.Raw(session)); });
  if (session.DatasetExists(".crp")) read(".RPO", [&] { ReadRawPolygons(session); });
  if (readParcels && session.DatasetExists(".iid")) read(".iid", [&] { ReadParcels(session, ahead.Parcels(session)); });
  return LoadCase::Full;
}

namespace {

// A load after the stores were emptied: the picked points found again by their identifiers in the
// new store, and everything that shows the stores told.
LoadCase Reload(Session& session, bool keepParcels) {
  ClearStores(session, keepParcels);
  const LoadCase loaded = LoadDatasets(session, !keepParcels);
  RemapSelectedPoints(session);
  session.Changed(kLoadedData);
  return loaded;
}

void RedrawReloaded(Session& session, LoadCase loaded) {
  if (loaded != LoadCase::Full) return;
  Step(session, [&] {
    if (!session.display) return;
    if (session.view.EverSet()) {
      session.display->RefreshView();
    } else {
      session.display->RefreshViewAfterExtents();
    }
  });
}

}  // namespace

LoadCase LoadOnly(Session& session) { return Reload(session, !AskToSaveParcels(session)); }

void ReloadJob(Session& session) {
  session.user.SetPointer(Pointer::Hourglass);
  session.user.SetTitle("Tessel " + session.JobBase);
  RedrawReloaded(session, LoadOnly(session));
  session.user.Status(1, session.JobName);
  session.user.SetPointer(Pointer::Default);
}

void ReloadLines(Session& session) {
  session.user.SetPointer(Pointer::Hourglass);
  RedrawReloaded(session, Reload(session, session.parcels.ParcelDirty != 0));
  session.user.Status(1, session.JobName);
  session.user.SetPointer(Pointer::Default);
}

bool FileClose(Session& session) {
  if (!AskToSaveParcels(session)) return false;
  UnloadToolForms(session);
  Step(session, [&] { RememberFolder(session); });
  session.JobBase.clear();
  session.JobName.clear();
  session.user.SetTitle("Tessel");
  DisableJobMenus(session);
  for (int panel = 1; panel <= 3; ++panel) session.user.Status(panel, "");
  if (session.display) session.display->ClearCanvas();
  ResetJobState(session);
  Step(session, [&] { RemoveSupportFiles(session); });
  session.user.Status(1, kStatusClosed);
  session.JobFolder.clear();
  return true;
}

bool FileExit(Session& session) {
  if (!AskToSaveParcels(session)) return false;
  Step(session, [&] { RememberFolder(session); });
  UnloadToolForms(session);
  session.Changed(Change::Job);
  session.user.UnloadForm("frmToolbox");
  if (session.JobFolder.empty()) return true;
  Step(session, [&] { RemoveSupportFiles(session); });
  DeleteAnyCase(session.JobFile("temp.bat"));
  DeleteAnyCase(session.JobFile("t1$.001"));
  return true;
}

}  // namespace tessel
