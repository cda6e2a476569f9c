#pragma once
// The line segments of .not resolved to point indexes: lines the drawing rubs out.

#include <cstdint>

#include "model/bounded_array.h"
#include "model/line_stores.h"

namespace tessel {

struct NoteLineStore {
  static constexpr int kBound = 1000;
  BoundedArray<LineEnds> NoteLineEnds{kBound};
  std::int16_t NoteLineCount = 0;

  void Clear() {
    NoteLineEnds.clear();
    NoteLineCount = 0;
  }
};

}  // namespace tessel
