#pragma once
// The parcels of a job as read from .IID: the attribute line, ring line and location of each.

#include <cstdint>
#include <string>
#include <vector>

#include "model/bounded_array.h"

namespace tessel {

struct ParcelStore {
  static constexpr int kBound = 9000;
  BoundedArray<std::string> ParcelLine{kBound};
  BoundedArray<std::string> ParcelRing{kBound};
  BoundedArray<double> ParcelY{kBound};
  BoundedArray<double> ParcelX{kBound};
  BoundedArray<std::int16_t> ParcelIdx{kBound};
  BoundedArray<std::string> ParcelEdit{kBound};
  BoundedArray<std::int16_t> ParcelMulti{kBound};
  std::int16_t ParcelCount = 0;
  // 0, or -1 after an attribute edit that has not been saved.
  std::int16_t ParcelDirty = 0;
  // Counts the readings of the store: an index picked in an earlier one may name another parcel.
  unsigned Reading = 0;
  // The line that .IID holds for each parcel k (at k - 1), as last read or written. The writers
  // take the k-th line after the title that begins with "Sec_" for parcel k; when the file's lines
  // are not these, a write would put attribute lines onto the wrong parcels.
  std::vector<std::string> FileLines;

  void Clear() {
    ++Reading;
    ParcelLine.clear();
    ParcelRing.clear();
    ParcelY.clear();
    ParcelX.clear();
    ParcelIdx.clear();
    ParcelEdit.clear();
    ParcelMulti.clear();
    ParcelCount = 0;
    FileLines.clear();
  }
};

struct RawPolygonStore {
  static constexpr int kBound = 5000;
  BoundedArray<std::string> RawPolygonTag{kBound};
  BoundedArray<std::string> RawPolygonRing{kBound};
  BoundedArray<double> RawPolygonX{kBound};
  BoundedArray<double> RawPolygonY{kBound};
  std::int16_t RawPolygonCount = 0;

  void Clear() {
    RawPolygonTag.clear();
    RawPolygonRing.clear();
    RawPolygonX.clear();
    RawPolygonY.clear();
    RawPolygonCount = 0;
  }
};

}  // namespace tessel
