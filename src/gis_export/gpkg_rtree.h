#pragma once
// A GeoPackage's spatial index built in one pass: the envelopes packed into full nodes of an
// SQLite R*Tree (sorted tile by tile, as in Sort-Tile-Recursive loading), written straight into the
// index's node, parent and rowid tables, instead of inserting the features one at a time.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "gis_export/gis_layers.h"

namespace tessel {

// A feature's envelope as the R*Tree holds it: single-precision bounds rounded outwards, so the
// box still holds the feature.
struct RtreeEntry {
  std::int64_t id = 0;
  float minX = 0.0f, maxX = 0.0f, minY = 0.0f, maxY = 0.0f;
};

RtreeEntry RtreeEntryOf(std::int64_t id, const std::vector<Vertex>& vertices);

// The rows of the index's shadow tables: `_node` (node number, the node's bytes), `_parent` (node,
// parent) and `_rowid` (feature, leaf node). Node 1 is the root and carries the tree's depth.
struct RtreeRows {
  std::vector<std::pair<std::int64_t, std::string>> nodes;
  std::vector<std::pair<std::int64_t, std::int64_t>> parents;
  std::vector<std::pair<std::int64_t, std::int64_t>> rowids;
};

// Packs the entries into nodes of `nodeSize` bytes (the size of the index's root node).
RtreeRows PackRtree(std::vector<RtreeEntry> entries, std::size_t nodeSize);

}  // namespace tessel
