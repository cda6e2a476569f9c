#pragma once
// The control stations of the first section of .LSA, kept apart for their own layer.

#include <cstdint>
#include <string>

#include "model/bounded_array.h"

namespace tessel {

struct ControlStation {
  std::string id;
  double x = 0.0;
  double y = 0.0;
};

struct ControlStore {
  static constexpr int kBound = 32400;
  // Stations matched against the point store; a larger index is a subscript fault.
  static constexpr int kMatchBound = 16000;

  BoundedArray<ControlStation> Control{kBound};
  // The next free index: one more than the number of stations after a load, 0 with no .LSA.
  std::int16_t ControlCount = 0;

  void Clear() {
    Control.clear();
    ControlCount = 0;
  }
};

}  // namespace tessel
