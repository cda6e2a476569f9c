#pragma once
// Reading the survey identifier file .sid into the survey store.

#include "model/session.h"

namespace tessel {

// Faults (a survey past 200, a C line past 600) are not trapped here: they go to the caller.
void ReadSurveys(Session& session);

}  // namespace tessel
