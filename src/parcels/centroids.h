#pragma once
// The centroids of the raw polygons: for each polygon of .RPO, in order, the area centroid of its
// ring of point identifiers (the mean of its vertices when the ring has no area), written to
// .CRP as two 15-character fields.

#include "model/session.h"

namespace tessel {

// Writes .CRP from .RPO and the point store; a missing .RPO writes nothing.
void ComputeCentroids(Session& session);

}  // namespace tessel
