#include "parcels/centroids.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "parcels/raw_polygons.h"
#include "parcels/ring_ids.h"

namespace tessel {

namespace {

constexpr int kFieldWidth = 15;

struct Vertex {
  double x = 0.0;
  double y = 0.0;
};

// The ring's points from the store (the last entry with an identifier); unknown ones are left out.
std::vector<Vertex> RingVertices(const Session& session, const std::string& ring) {
  std::vector<Vertex> vertices;
  for (const std::string& id : RingIds(ring)) {
    const int i = session.points.Find(id);
    if (i != 0) vertices.push_back({session.points.PointX(i), session.points.PointY(i)});
  }
  return vertices;
}

// The area centroid by the shoelace formula, taken about the first vertex so that large
// coordinates keep their precision; the mean of the vertices when the ring encloses no area.
Vertex Centroid(const std::vector<Vertex>& ring) {
  if (ring.empty()) return {};
  const Vertex base = ring.front();
  double twiceArea = 0.0, sx = 0.0, sy = 0.0, meanX = 0.0, meanY = 0.0;
  double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0;
  const std::size_t n = ring.size();
  for (std::size_t k = 0; k < n; ++k) {
    const double px = ring[k].x - base.x, py = ring[k].y - base.y;
    const double qx = ring[(k + 1) % n].x - base.x, qy = ring[(k + 1) % n].y - base.y;
    const double cross = px * qy - qx * py;
    twiceArea += cross;
    sx += (px + qx) * cross;
    sy += (py + qy) * cross;
    meanX += px;
    meanY += py;
    minX = std::min(minX, px);
    maxX = std::max(maxX, px);
    minY = std::min(minY, py);
    maxY = std::max(maxY, py);
  }
  // Rounding leaves a trace of area on a ring whose points lie on one line.
  const double span = std::max(maxX - minX, maxY - minY);
  if (std::fabs(twiceArea) <= 1e-9 * span * span) {
    return {base.x + meanX / static_cast<double>(n), base.y + meanY / static_cast<double>(n)};
  }
  return {base.x + sx / (3.0 * twiceArea), base.y + sy / (3.0 * twiceArea)};
}

// One line of .CRP: x and y, three decimals each, right-justified in 15 columns. The reader
// takes x from the first 15 characters of the trimmed line, so when y's text is the longer x is
// filled with zeros instead of blanks, lest x's characters run on into y's.
std::string CrpLine(const Vertex& c) {
  std::string x = FormatPicture(c.x, 3);
  const std::string y = FormatPicture(c.y, 3);
  if (y.size() > x.size() && x.size() < static_cast<std::size_t>(kFieldWidth)) {
    const std::size_t digits = !x.empty() && x[0] == '-' ? 1 : 0;
    x.insert(digits, static_cast<std::size_t>(kFieldWidth) - x.size(), '0');
  }
  return PadLeft(x, kFieldWidth) + PadLeft(y, kFieldWidth);
}

}  // namespace

bool ComputeCentroids(Session& session) {
  const std::string rpoPath = session.DatasetPath(".RPO");
  if (!FileExistsAnyCase(rpoPath)) return false;
  std::vector<std::string> lines;
  bool headed = false;
  try {
    LineReader rpo(rpoPath);
    std::int16_t count = 0;
    ReadRpoHeading(rpo, count);
    headed = true;
    std::string line;
    for (int i = 1; i <= count; ++i) {
      line = rpo.ReadLine();
      lines.push_back(CrpLine(Centroid(RingVertices(session, Mid(line, 3)))));
    }
  } catch (const RuntimeFault&) {
    // A short .RPO gives the centroids of the polygons it holds.
  }
  const std::string crpPath = session.DatasetPath(".CRP");
  if (!headed) {
    // Without its heading nothing of .RPO can be read: .CRP keeps the centroids it has.
    session.user.Message(NoPolygonHeadingText(rpoPath, crpPath), Icon::Exclamation);
    return false;
  }
  return WriteFileOrTell(session.user, crpPath, JoinCrLf(lines));
}

std::string NoPolygonHeadingText(const std::string& rpoPath, const std::string& crpPath) {
  return rpoPath + " has no line ending in \"POLYGONS FOUND\": " + crpPath + " was not written.";
}

}  // namespace tessel
