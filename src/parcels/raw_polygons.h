#pragma once
// Raw polygons: the tagged rings of .RPO and their centroids in .CRP.

#include <cstdint>

#include "model/session.h"
#include "model/text_file.h"

namespace tessel {

// The heading of .RPO: lines up to the one ending in "POLYGONS FOUND", each setting `count` from
// its first three characters (so a four-digit count reads as its first three digits), then one
// line passed over. A fault ends it with `count` as far as it was set.
void ReadRpoHeading(LineReader& rpo, std::int16_t& count);

// Reads .RPO and .CRP; running off the end of either keeps what was read.
void ReadRawPolygons(Session& session);

}  // namespace tessel
