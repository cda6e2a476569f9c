#include "regions/match_test.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <tuple>
#include <unordered_map>

#include "model/fault.h"
#include "model/text.h"

namespace tessel {

namespace {

// Tags as small numbers, so that a comparison of tags is a comparison of integers.
std::vector<int> TagNumbers(const PointStore& points) {
  std::unordered_map<std::string_view, int> numbers;
  std::vector<int> tags(static_cast<std::size_t>(points.PointCount()) + 1, 0);
  for (int i = 1; i <= points.PointCount(); ++i) {
    // The views point into the store, which does not change during the test.
    const std::string_view tag = MidView(points.PointIds(i), 7, INT32_MAX);
    auto [it, inserted] = numbers.try_emplace(tag, static_cast<int>(numbers.size()));
    tags[static_cast<std::size_t>(i)] = it->second;
  }
  return tags;
}

// j lies in i's window, in the order of evaluation of the walk.
bool InWindow(double xi, double yi, double xj, double yj, double t) {
  return yi - t <= yj && yi + t >= yj && xi - t <= xj && xi + t >= xj;
}

constexpr double kCellLimit = 4.0e18;

// How often the walk tells how far it has come and looks for a cancel.
constexpr int kPointsPerReport = 2048;

// The cell of a coordinate: floor(v / size), held inside the range of a 64-bit integer. Division
// by a positive size and floor are both monotone, so a window's bounds fall in cells that bracket
// the cells of everything inside it.
std::int64_t CellOf(double v, double size) {
  const double q = std::floor(v / size);
  if (!(q > -kCellLimit)) return static_cast<std::int64_t>(-kCellLimit);
  if (!(q < kCellLimit)) return static_cast<std::int64_t>(kCellLimit);
  return static_cast<std::int64_t>(q);
}

}  // namespace

std::string PointTag(const std::string& id) { return Mid(id, 7); }

std::vector<int> FindMatchPointsByScan(const PointStore& points, double t) {
  std::vector<int> found;
  const int n = points.PointCount();
  for (int i = 1; i <= n; ++i) {
    const double xi = points.PointX(i), yi = points.PointY(i);
    if (xi == 0.0 || yi == 0.0) continue;
    const std::string tag = PointTag(points.PointIds(i));
    for (int j = 1; j <= n; ++j) {
      if (j == i) continue;
      if (!InWindow(xi, yi, points.PointX(j), points.PointY(j), t)) continue;
      if (PointTag(points.PointIds(j)) == tag) continue;
      if (std::find(found.begin(), found.end(), j) == found.end()) found.push_back(j);
    }
  }
  return found;
}

std::vector<int> FindMatchPoints(const PointStore& points, double t, Progress* progress) {
  std::vector<int> found;
  const int n = points.PointCount();
  // A negative or undefined tolerance leaves every window empty.
  if (n < 2 || !(t >= 0.0)) return found;
  const std::vector<int> tags = TagNumbers(points);

  double largest = 0.0;
  for (int i = 1; i <= n; ++i) largest = std::max({largest, std::fabs(points.PointX(i)), std::fabs(points.PointY(i))});
  // Cells of the tolerance's size, but never so small that the coordinates run out of cells.
  const double size = std::max({t, largest * std::ldexp(1.0, -40), std::numeric_limits<double>::min()});

  struct Entry {
    std::int64_t cx, cy;
    int index;
  };
  std::vector<Entry> grid;
  grid.reserve(static_cast<std::size_t>(n));
  for (int j = 1; j <= n; ++j) grid.push_back({CellOf(points.PointX(j), size), CellOf(points.PointY(j), size), j});
  const auto less = [](const Entry& a, const Entry& b) { return std::tie(a.cx, a.cy, a.index) < std::tie(b.cx, b.cy, b.index); };
  std::sort(grid.begin(), grid.end(), less);

  std::vector<char> taken(static_cast<std::size_t>(n) + 1, 0);
  std::vector<int> partners;
  for (int i = 1; i <= n; ++i) {
    if (i % kPointsPerReport == 0) {
      Report(progress, "Comparing coordinates", static_cast<double>(i) / static_cast<double>(n));
      if (CancelAsked(progress)) break;
    }
    const double xi = points.PointX(i), yi = points.PointY(i);
    if (xi == 0.0 || yi == 0.0) continue;
    const int tag = tags[static_cast<std::size_t>(i)];
    const std::int64_t x0 = CellOf(xi - t, size), x1 = CellOf(xi + t, size);
    const std::int64_t y0 = CellOf(yi - t, size), y1 = CellOf(yi + t, size);
    partners.clear();
    for (std::int64_t cx = x0;; ++cx) {
      auto it = std::lower_bound(grid.begin(), grid.end(), Entry{cx, y0, 0}, less);
      for (; it != grid.end() && it->cx == cx && it->cy <= y1; ++it) {
        const int j = it->index;
        if (j == i || tags[static_cast<std::size_t>(j)] == tag) continue;
        if (InWindow(xi, yi, points.PointX(j), points.PointY(j), t)) partners.push_back(j);
      }
      if (cx >= x1) break;
    }
    // The walk meets the partners of i in the order of their indexes.
    std::sort(partners.begin(), partners.end());
    for (int j : partners) {
      if (taken[static_cast<std::size_t>(j)]) continue;
      taken[static_cast<std::size_t>(j)] = 1;
      found.push_back(j);
    }
  }
  return found;
}

std::vector<std::pair<int, int>> FindMatchLines(const LsaLineStore& lines, const std::vector<int>& matchPoints,
                                                int pointCount) {
  std::vector<char> matched(static_cast<std::size_t>(std::max(pointCount, 0)) + 1, 0);
  for (int k : matchPoints) {
    if (k >= 0 && k <= pointCount) matched[static_cast<std::size_t>(k)] = 1;
  }
  const auto in = [&](int k) { return k > 0 && k <= pointCount && matched[static_cast<std::size_t>(k)]; };
  std::vector<std::pair<int, int>> found;
  for (int l = 1; l <= lines.LsaLineCount; ++l) {
    const LineEnds& e = lines.LsaLineEnds.get(l);
    if (in(e.from) && in(e.to)) found.emplace_back(e.from, e.to);
  }
  return found;
}

bool CompareCoordinates(Session& session, double tolerance,
                        const std::function<void(int, const std::string&)>& dialogStatus, Progress* progress) {
  RegionMatchStore& m = session.region.match;
  std::string panel;
  try {
    session.user.Status(1, "Comparing coordinates.");
    const std::vector<int> found = FindMatchPoints(session.points, tolerance, progress);
    // The last point to stop: from here on the tables are filled.
    if (CancelAsked(progress)) {
      session.user.Status(1, "Ready");
      dialogStatus(2, kMatchTestCancelled);
      return false;
    }
    for (int j : found) {
      const std::int16_t next = Add16(m.MatchPointCount, 1);
      m.MatchPoints.at(next) = j;
      m.MatchPointCount = next;
    }
    panel = "Points matching: " + std::to_string(m.MatchPointCount);
    dialogStatus(2, panel);
    session.user.Status(1, "Comparing Line Segments");
    std::vector<int> held;
    for (int k = 1; k <= m.MatchPointCount; ++k) held.push_back(m.MatchPoints.get(k));
    for (const auto& pair : FindMatchLines(session.lsa, held, session.points.PointCount())) {
      const std::int16_t next = Add16(m.MatchLineCount, 1);
      m.MatchLines.at(next) = pair;
      m.MatchLineCount = next;
    }
    session.user.Status(1, "Ready");
    dialogStatus(2, panel + ". Lines: " + std::to_string(m.MatchLineCount));
  } catch (const RuntimeFault&) {
    // A table past its bound ends the comparison with what it holds.
  }
  return true;
}

void DrawRowHighlight(Session& session, const std::string& tag) {
  session.canvas.SetPenWidth(session.config.PtSizeCor);
  for (int i = 1; i <= session.points.PointCount(); ++i) {
    if (PointTag(session.points.PointIds(i)) == tag) {
      session.canvas.Dot(session.points.PointX(i), session.points.PointY(i), 0xFF0000u);
    }
  }
  session.canvas.SetPenWidth(1);
}

}  // namespace tessel
