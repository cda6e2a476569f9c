#pragma once
// The hidden line segments of .not, resolved to point indexes at load.

#include "model/session.h"

namespace tessel {

// A missing .not gives no segments; a short file keeps what was read.
void ReadNotes(Session& session);

}  // namespace tessel
