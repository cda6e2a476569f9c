#include "gis_export/gpkg_rtree.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace tessel {

namespace {

float Down(double v) {
  float f = static_cast<float>(v);
  if (static_cast<double>(f) > v) f = std::nextafter(f, -std::numeric_limits<float>::infinity());
  return f;
}

float Up(double v) {
  float f = static_cast<float>(v);
  if (static_cast<double>(f) < v) f = std::nextafter(f, std::numeric_limits<float>::infinity());
  return f;
}

void PutBig(std::string& out, std::uint64_t value, int bytes) {
  for (int k = bytes - 1; k >= 0; --k) out.push_back(static_cast<char>((value >> (8 * k)) & 0xFF));
}

// A cell: the child (a feature or a node) and its box, big-endian as SQLite stores them.
void PutCell(std::string& node, const RtreeEntry& e) {
  PutBig(node, static_cast<std::uint64_t>(e.id), 8);
  for (const float f : {e.minX, e.maxX, e.minY, e.maxY}) PutBig(node, std::bit_cast<std::uint32_t>(f), 4);
}

double CentreX(const RtreeEntry& e) { return (static_cast<double>(e.minX) + e.maxX) / 2.0; }
double CentreY(const RtreeEntry& e) { return (static_cast<double>(e.minY) + e.maxY) / 2.0; }

// Orders the entries into runs of `capacity` that lie close together: vertical slices by x, each
// sorted by y.
void SortTiles(std::vector<RtreeEntry>& entries, std::size_t capacity) {
  const std::size_t groups = (entries.size() + capacity - 1) / capacity;
  const auto slices = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(groups))));
  const std::size_t perSlice = slices * capacity;
  std::sort(entries.begin(), entries.end(), [](const RtreeEntry& a, const RtreeEntry& b) { return CentreX(a) < CentreX(b); });
  for (std::size_t start = 0; start < entries.size(); start += perSlice) {
    const auto end = entries.begin() + static_cast<std::ptrdiff_t>(std::min(entries.size(), start + perSlice));
    std::sort(entries.begin() + static_cast<std::ptrdiff_t>(start), end,
              [](const RtreeEntry& a, const RtreeEntry& b) { return CentreY(a) < CentreY(b); });
  }
}

}  // namespace

RtreeEntry RtreeEntryOf(std::int64_t id, const std::vector<Vertex>& vertices) {
  RtreeEntry e;
  e.id = id;
  if (vertices.empty()) return e;
  double minX = vertices[0].x, maxX = minX, minY = vertices[0].y, maxY = minY;
  for (const Vertex& v : vertices) {
    minX = std::min(minX, v.x);
    maxX = std::max(maxX, v.x);
    minY = std::min(minY, v.y);
    maxY = std::max(maxY, v.y);
  }
  e.minX = Down(minX);
  e.maxX = Up(maxX);
  e.minY = Down(minY);
  e.maxY = Up(maxY);
  return e;
}

RtreeRows PackRtree(std::vector<RtreeEntry> entries, std::size_t nodeSize) {
  RtreeRows rows;
  const std::size_t capacity = nodeSize > 4 ? (nodeSize - 4) / 24 : 0;
  if (capacity < 2) return rows;
  // Level by level from the leaves up; each level's nodes become the entries of the next. The
  // root is numbered last, as 1; the others from 2 on.
  std::int64_t next = 2;
  int depth = 0;
  bool leaves = true;
  while (true) {
    SortTiles(entries, capacity);
    const bool root = entries.size() <= capacity;
    std::vector<RtreeEntry> parents;
    for (std::size_t start = 0; start < entries.size() || (root && start == 0); start += capacity) {
      const std::size_t end = std::min(entries.size(), start + capacity);
      const std::int64_t number = root ? 1 : next++;
      std::string node;
      node.reserve(nodeSize);
      PutBig(node, root ? static_cast<std::uint64_t>(depth) : 0u, 2);
      PutBig(node, end - start, 2);
      RtreeEntry box{number, std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                     std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity()};
      for (std::size_t k = start; k < end; ++k) {
        const RtreeEntry& e = entries[k];
        PutCell(node, e);
        box.minX = std::min(box.minX, e.minX);
        box.maxX = std::max(box.maxX, e.maxX);
        box.minY = std::min(box.minY, e.minY);
        box.maxY = std::max(box.maxY, e.maxY);
        if (leaves) rows.rowids.emplace_back(e.id, number);
        else rows.parents.emplace_back(e.id, number);
      }
      node.resize(nodeSize, '\0');
      rows.nodes.emplace_back(number, std::move(node));
      parents.push_back(box);
      if (end >= entries.size()) break;
    }
    if (root) return rows;
    entries = std::move(parents);
    leaves = false;
    ++depth;
  }
}

}  // namespace tessel
