#pragma once
// The centroids of the raw polygons: for each polygon of .RPO, in order, the area centroid of its
// ring of point identifiers (the mean of its vertices when the ring has no area), written to
// .CRP as two 15-character fields.

#include <string>

#include "model/session.h"

namespace tessel {

// Writes .CRP from .RPO and the point store; a missing .RPO writes nothing. An .RPO without its
// heading writes nothing either and says so; a .CRP that cannot be written is told. True when
// .CRP was written.
bool ComputeCentroids(Session& session);
// What the user is told of an .RPO whose heading never ends.
std::string NoPolygonHeadingText(const std::string& rpoPath, const std::string& crpPath);

}  // namespace tessel
