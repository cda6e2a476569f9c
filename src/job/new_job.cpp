#include "job/new_job.h"

#include <exception>

#include "datasets/coordinate_files.h"
#include "datasets/identity.h"
#include "job/job_menus.h"
#include "job/job_state.h"
#include "datasets/line_files.h"
#include "job/load_sequence.h"
#include "model/paths.h"
#include "datasets/support_files.h"
#include "job/command_table.h"

namespace tessel {

bool NewJobNext(Session& session) {
  FileRequest request;
  request.title = "Select or Create a directory & Name the Job";
  // A name that does not exist yet may be typed.
  request.save = true;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return false;
  // The new job's stores are empty: nothing of a job open before is kept, its unsaved parcel
  // edits offered for saving first.
  if (!AskToSaveParcels(session)) return false;
  const bool jobWasOpen = !session.JobBase.empty();
  ResetJobState(session);
  if (jobWasOpen && session.display) session.display->ClearCanvas();
  NewIdentity(session, choice->fileName, choice->fileTitle);
  // The dialog leaves the current folder at the new job's folder.
  session.CurrentFolder = session.JobFolder;
  // A new job brings the job menus to life, all but the archive entries; Open goes off.
  EnableJobMenus(session, false);
  StepOver([&] { WriteSupportFiles(session); });
  StepOver([&] { session.processes.Spawn(ToolLaunch(session, "jobprops"), session.CurrentFolder, ShowMode::Normal); });
  session.user.ShowForm("frmWiz2");
  return true;
}

bool ExistingJobRoute(Session& session) {
  FileRequest request;
  request.title = kJobDialogTitle;
  request.filter = kJobFilter;
  request.initialFolder = session.JobFolder.empty() ? RecallFolder(session) : session.JobFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return false;
  if (!AskToSaveParcels(session)) return false;
  ResetJobState(session);
  OpenIdentityUpper(session, choice->fileName, choice->fileTitle);
  session.CurrentFolder = session.JobFolder;
  session.user.SetEnabled("mnuFileClose", true);
  session.user.SetEnabled("mnuFileOpen", false);
  session.user.SetEnabled("mnuFileReload", true);
  // A support file already in the folder, in any case, is left as it is.
  for (const char* name : kSupportFiles) {
    if (FileExistsAnyCase(session.JobFile(name))) continue;
    StepOver([&] { CopyFileReplacing(session.ToolFile(name), session.JobFile(name)); });
  }
  StepOver([&] { ReadCor(session); });
  if (session.DatasetExists(".LSA")) {
    StepOver([&] { ReadControl(session); });
    StepOver([&] { ReadLsaLines(session); });
  } else {
    session.user.Message("LSA file not found", Icon::Information);
  }
  if (session.config.chkLXN == 1) StepOver([&] { ReadLxn(session); });
  StepOver([&] {
    if (session.display) session.display->RefreshViewAfterExtents();
  });
  session.user.SetPointer(Pointer::Default);
  return true;
}

}  // namespace tessel
