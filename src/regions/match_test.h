#pragma once
// The boundary match test of a previewed region: points of different projects lying within a
// square window of side 2T of each other, and the network lines whose two ends are both such
// points. Projects are told apart by the tag that stands from column 7 of a point's identifier.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/progress.h"
#include "model/session.h"

namespace tessel {

// The tag a previewed point carries: what stands from column 7 of its identifier.
std::string PointTag(const std::string& id);

// The points with a partner, in the order of the test's walk: for every point i (1..PointCount)
// whose X and Y are both non-zero, every other point j, in order, whose X and Y lie within
// [i - T, i + T] (bounds inclusive) and whose tag differs from i's is appended unless already
// there. Partners are found through a grid of cells of the tolerance's size. The walk tells its
// progress now and then and ends early, with what it has found, when a cancel is asked.
std::vector<int> FindMatchPoints(const PointStore& points, double tolerance, Progress* progress = nullptr);
// The same walk done as described, over every pair: the reference the grid is measured against.
std::vector<int> FindMatchPointsByScan(const PointStore& points, double tolerance);

// For every network line, in order, the pair of its ends when both are among the match points.
std::vector<std::pair<int, int>> FindMatchLines(const LsaLineStore& lines, const std::vector<int>& matchPoints,
                                                int pointCount);

// The console's panel text for a test cancelled before its tables were filled.
inline constexpr const char* kMatchTestCancelled = "Test cancelled: no match was kept.";

// The comparison into the session's tables, with its status texts; a table past its bound ends
// it with what it holds. `dialogStatus` receives the console's panel texts. A cancel is heeded
// while the points are compared, before the tables are filled: the tables stay empty, the panel
// says so, and the result is false.
bool CompareCoordinates(Session& session, double tolerance,
                        const std::function<void(int, const std::string&)>& dialogStatus,
                        Progress* progress = nullptr);

// A listing row picked: every point of its project as a red dot at the configured width.
void DrawRowHighlight(Session& session, const std::string& tag);

}  // namespace tessel
