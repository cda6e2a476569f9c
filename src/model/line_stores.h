#pragma once
// The stores of a job's connections: network lines of .LSA, display chains of .LXN and record
// lines of .raw, each holding point indexes (0 for an end that was not matched).

#include <array>
#include <cstdint>
#include <string>

#include "model/bounded_array.h"

namespace tessel {

struct LineEnds {
  std::int16_t from = 0;
  std::int16_t to = 0;
};

struct LsaLineStore {
  static constexpr int kBound = 32000;
  BoundedArray<LineEnds> LsaLineEnds{kBound};
  // The next free index: one more than the number of lines.
  std::int16_t LsaLineCount = 0;

  void Clear() {
    LsaLineEnds.clear();
    LsaLineCount = 0;
  }
};

struct LxnLineStore {
  static constexpr int kSegmentBound = 15000;
  static constexpr int kRecordBound = 32000;
  static constexpr int kTextBound = 15000;
  BoundedArray<LineEnds> LxnLineEnds{kSegmentBound};
  std::int16_t LxnRecordCount = 0;
  std::int16_t LxnSegmentCount = 0;

  void Clear() {
    LxnLineEnds.clear();
    LxnRecordCount = 0;
    LxnSegmentCount = 0;
  }
};

struct RawEnds {
  std::int16_t from = 0;
  std::int16_t to = 0;
  std::int16_t survey = 0;
};

// Field 1 from identifier, 2 to identifier, 3 distance, 4 quadrant, 5 bearing, 6 survey; field 0
// stays empty.
using RawFields = std::array<std::string, 7>;

struct RawLineStore {
  static constexpr int kBound = 16000;
  BoundedArray<RawFields> RawLineFields{kBound};
  BoundedArray<RawEnds> RawLineEnds{kBound};
  std::int16_t RawLineCount = 0;

  void Clear() {
    RawLineFields.clear();
    RawLineEnds.clear();
    RawLineCount = 0;
  }
};

}  // namespace tessel
