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
    for (long long column = left; column <= right; ++column) visit(column, row);
  }
}

namespace {

// The grid index of a cell, or -1 for a cell outside the grid.
long long GridIndex(long long column, long long row, int first, int cells) {
  const long long c = column - first, r = row - first;
  if (c < 0 || r < 0 || c >= cells || r >= cells) return -1;
  return r * cells + c;
}

}  // namespace

const std::vector<std::size_t>* LabelSpace::Boxes(long long column, long long row) const {
  const long long index = GridIndex(column, row, kGridFirst, kGridCells);
  if (index >= 0) {
    const auto& boxes = grid_[static_cast<std::size_t>(index)];
    return boxes.empty() ? nullptr : &boxes;
  }
  const auto it = cells_.find(Key(column, row));
  return it == cells_.end() ? nullptr : &it->second;
}

std::vector<std::size_t>& LabelSpace::File(long long column, long long row) {
  const long long index = GridIndex(column, row, kGridFirst, kGridCells);
  if (index < 0) return cells_[Key(column, row)];
  auto& boxes = grid_[static_cast<std::size_t>(index)];
  if (boxes.empty()) filled_.push_back(static_cast<std::size_t>(index));
  return boxes;
}

void LabelSpace::Clear() {
  boxes_.clear();
  for (const std::size_t index : filled_) grid_[index].clear();
  filled_.clear();
  cells_.clear();
}

bool LabelSpace::Take(const LabelBox& box) {
  if (box.Empty()) return true;
  bool free = true;
  ForEachCell(box, [&](long long column, long long row) {
    if (!free) return;
    const std::vector<std::size_t>* filed = Boxes(column, row);
    if (!filed) return;
    for (const std::size_t k : *filed) {
      if (boxes_[k].Overlaps(box)) {
        free = false;
        return;
      }
    }
  });
  if (!free) return false;
  const std::size_t index = boxes_.size();
  boxes_.push_back(box);
  ForEachCell(box, [&](long long column, long long row) { File(column, row).push_back(index); });
  return true;
}

}  // namespace tessel
