#pragma once
// The parcels of a job as read from .IID: the attribute line, ring line and location of each.

#include <cstdint>
#include <string>

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

  void Clear() {
    ParcelLine.clear();
    ParcelRing.clear();
    ParcelY.clear();
    ParcelX.clear();
    ParcelIdx.clear();
    ParcelEdit.clear();
    ParcelMulti.clear();
    ParcelCount = 0;
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
