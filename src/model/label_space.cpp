#include "model/label_space.h"

#include <cstdint>

namespace tessel {

namespace {

// The cell of a pixel coordinate, rounding down for pixels left of or above the origin.
long long CellOf(long long pixel, int cell) { return pixel >= 0 ? pixel / cell : -((-pixel + cell - 1) / cell); }

long long Key(long long column, long long row) {
  return static_cast<long long>(static_cast<std::uint64_t>(column) << 32 ^ static_cast<std::uint32_t>(row));
}

}  // namespace

template <typename F>
void LabelSpace::ForEachCell(const LabelBox& box, F&& visit) const {
  const long long left = CellOf(box.x, cell_), right = CellOf(static_cast<long long>(box.x) + box.width - 1, cell_);
  const long long top = CellOf(box.y, cell_), bottom = CellOf(static_cast<long long>(box.y) + box.height - 1, cell_);
  for (long long row = top; row <= bottom; ++row) {
    for (long long column = left; column <= right; ++column) visit(Key(column, row));
  }
}

void LabelSpace::Clear() {
  boxes_.clear();
  cells_.clear();
}

bool LabelSpace::Take(const LabelBox& box) {
  if (box.Empty()) return true;
  bool free = true;
  ForEachCell(box, [&](long long key) {
    if (!free) return;
    const auto it = cells_.find(key);
    if (it == cells_.end()) return;
    for (const std::size_t k : it->second) {
      if (boxes_[k].Overlaps(box)) {
        free = false;
        return;
      }
    }
  });
  if (!free) return false;
  const std::size_t index = boxes_.size();
  boxes_.push_back(box);
  ForEachCell(box, [&](long long key) { cells_[key].push_back(index); });
  return true;
}

}  // namespace tessel
