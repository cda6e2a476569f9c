#pragma once
// A table addressed from index 0 up to a fixed bound, like the stores' parallel arrays. Storage
// grows only as far as it is written; an index outside 0..bound is a subscript fault.

#include <vector>

#include "model/fault.h"

namespace tessel {

template <typename T>
class BoundedArray {
 public:
  explicit BoundedArray(int bound) : bound_(bound) {}

  int bound() const { return bound_; }

  // Writable element; grows the storage as needed.
  T& at(int i) {
    check(i);
    if (i >= static_cast<int>(data_.size())) data_.resize(static_cast<std::size_t>(i) + 1);
    return data_[static_cast<std::size_t>(i)];
  }

  // Read-only element; unwritten entries read as the default value.
  const T& get(int i) const {
    check(i);
    static const T empty{};
    return i < static_cast<int>(data_.size()) ? data_[static_cast<std::size_t>(i)] : empty;
  }

  // Empties every entry.
  void clear() { data_.clear(); }

 private:
  void check(int i) const {
    if (i < 0 || i > bound_) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
  }

  int bound_;
  std::vector<T> data_;
};

}  // namespace tessel
