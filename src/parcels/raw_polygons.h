#pragma once
// Raw polygons: the tagged rings of .RPO and their centroids in .CRP.

#include "model/session.h"

namespace tessel {

// Reads .RPO and .CRP; running off the end of either keeps what was read.
void ReadRawPolygons(Session& session);

}  // namespace tessel
