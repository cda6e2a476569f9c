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
  // True when no entry was written since the table was made or emptied.
  bool empty() const { return data_.empty(); }

  // Takes `entries` whole as entries 0, 1, ... of a table with none written, which is what
  // writing them one by one leaves; false, and nothing taken, when they pass the bound or some
  // entry is written already.
  bool Adopt(std::vector<T>& entries) {
    if (!data_.empty() || entries.size() > static_cast<std::size_t>(bound_) + 1) return false;
    data_.swap(entries);
    return true;
  }
  // The same with the entries of a table of the same bound.
  bool Adopt(BoundedArray& table) { return table.bound_ == bound_ && Adopt(table.data_); }

 private:
  void check(int i) const {
    if (i < 0 || i > bound_) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
  }

  int bound_;
  std::vector<T> data_;
};

}  // namespace tessel
