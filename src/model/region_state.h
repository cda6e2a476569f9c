#pragma once
// The state of the region console while the program runs: the listing's edit flag, the
// tolerance and check boxes of the boundary match test, and the test's result tables, which the
// canvas draws at every refresh once a test has run.

#include <cstdint>
#include <utility>

#include "model/bounded_array.h"

namespace tessel {

struct RegionMatchStore {
  static constexpr int kBound = 32000;

  // Indexes of points with a partner in another project, in the order they were found.
  BoundedArray<int> MatchPoints{kBound};
  std::int16_t MatchPointCount = 0;
  // Network lines with both ends in MatchPoints: pairs of point indexes.
  BoundedArray<std::pair<int, int>> MatchLines{kBound};
  std::int16_t MatchLineCount = 0;

  // 0 or -1: the two check boxes of the test.
  std::int16_t ShowMatchLines = 0;
  std::int16_t ShowMatchEnds = 0;
  // Set by the first test of the run and never cleared: from then on every refresh draws the
  // tables (an empty table draws nothing).
  bool Drawn = false;

  void Clear() {
    MatchPoints.clear();
    MatchPointCount = 0;
    MatchLines.clear();
    MatchLineCount = 0;
  }
};

struct RegionState {
  // 0 or -1: the listing has edits not yet written to .how.
  std::int16_t RegionDirty = 0;
  // The last tolerance read from the test's field; 0 until a preview or test has read it.
  double MatchTolerance = 0.0;
  RegionMatchStore match;
};

}  // namespace tessel
