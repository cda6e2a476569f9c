#pragma once
// The rebuild of the adjustment files after record lines or error estimates have changed: .lsa
// and .sd are set back to their control blocks and recpad rebuilds their measurements from .raw
// and .sid in a scripted run.

#include <string>

#include "model/session.h"

namespace tessel {

// The message when recpad did not run to its end: the tool and the job's folder named.
std::string RecpadFailedText(const Session& session);

// WeightRebuild, with its files in this order: .002 (the control blocks of .lsa and .sd), .t$2
// (what follows the fourth section of .lsa), .lsa and .sd cut back to their blocks, t1$.001 and
// temp.bat for the run of recpad, which are removed with .002 after it; then .t$3, a copy of the
// tool's .lsa that is written back line by line, and last .t$3 and .t$2 removed. Reloads and
// redraws at the end. Without a job: "You must first Open or Create a job." A write that fails
// before the run is told, and .lsa and .sd are put back as they were.
void WeightRebuild(Session& session);

}  // namespace tessel
