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

// A record's measures as numbers, taken from its fields once when it is read.
struct RawMeasure {
  double distance = 0.0;  // Val of field 3, in chains or the survey's own unit
  double bearing = 0.0;   // field 5 through DmsToRadians
  std::int8_t quadrant = 0;  // Val of field 4: 1 NE, 2 SE, 3 SW, 4 NW, anything else unsigned
};

struct RawLineStore {
  static constexpr int kBound = 16000;
  BoundedArray<RawFields> RawLineFields{kBound};
  BoundedArray<RawMeasure> RawLineMeasures{kBound};
  BoundedArray<RawEnds> RawLineEnds{kBound};
  std::int16_t RawLineCount = 0;
  // The point store's index of the first temporary point the reader appended, 0 when it made
  // none; the temporary points run from there to the end of the store.
  int FirstTemporaryPoint = 0;

  void Clear() {
    RawLineFields.clear();
    RawLineMeasures.clear();
    RawLineEnds.clear();
    RawLineCount = 0;
    FirstTemporaryPoint = 0;
  }
};

// The signs of a record's easting and northing offsets, by its quadrant. Going back from the to
// end the signs of a known quadrant turn over; a record of any other quadrant code is unsigned
// both ways.
struct QuadrantSigns {
  bool negateEast = false;
  bool negateNorth = false;

  void Apply(double& east, double& north) const {
    if (negateEast) east = -east;
    if (negateNorth) north = -north;
  }
};
inline QuadrantSigns SignsOfQuadrant(int quadrant, bool backFromTo) {
  QuadrantSigns signs;
  switch (quadrant) {
    case 1: break;
    case 2: signs.negateNorth = true; break;
    case 3: signs = {true, true}; break;
    case 4: signs.negateEast = true; break;
    default: return signs;
  }
  if (backFromTo) signs = {!signs.negateEast, !signs.negateNorth};
  return signs;
}

}  // namespace tessel
