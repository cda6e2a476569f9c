#pragma once
// The new job wizard: a folder and a job name become the identity of a job without files; the
// support files are laid out and jobprops is started to write the .def.

#include "model/session.h"

namespace tessel {

// "Next" of frmStartupWiz: the file dialog, the New Job identity, the menus, the support files,
// jobprops spawned, frmWiz2 shown. Returns false when the dialog was cancelled.
bool NewJobNext(Session& session);
// The wizard's route for an existing job: the job dialog, the upper-cased identity, the support
// files copied from ToolFolder when missing, and the short load.
bool ExistingJobRoute(Session& session);

}  // namespace tessel
