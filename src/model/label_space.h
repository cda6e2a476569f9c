#pragma once
// Keeping the labels of a map layer apart: each label's box, in device pixels, is taken only when
// it overlaps none taken before. Boxes are filed in a grid of square cells, so a label is tested
// against its neighbours alone and a layer of tens of thousands of labels stays fast.

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace tessel {

struct LabelBox {
  int x = 0, y = 0, width = 0, height = 0;
  bool Empty() const { return width <= 0 || height <= 0; }
  // Boxes overlap when they share a pixel; boxes that only touch do not, nor does an empty one.
  bool Overlaps(const LabelBox& other) const {
    return !Empty() && !other.Empty() && x < other.x + other.width && other.x < x + width &&
           y < other.y + other.height && other.y < y + height;
  }
};

class LabelSpace {
 public:
  explicit LabelSpace(int cell = 64) : cell_(cell), grid_(kGridCells * kGridCells) {}

  // Forgets every box taken: a new layer begins.
  void Clear();
  // Takes the box and gives true when it overlaps none taken; otherwise gives false and leaves
  // the space as it was. An empty box overlaps nothing and is not kept.
  bool Take(const LabelBox& box);
  std::size_t size() const { return boxes_.size(); }

 private:
  template <typename F>
  void ForEachCell(const LabelBox& box, F&& visit) const;
  // The boxes filed in a cell, or nullptr for a cell that holds none.
  const std::vector<std::size_t>* Boxes(long long column, long long row) const;
  std::vector<std::size_t>& File(long long column, long long row);

  // The cells of a screen from the origin stand in a flat grid, which is kept with its storage
  // from layer to layer and refresh to refresh; any other cell is found by its key.
  static constexpr int kGridCells = 128;
  static constexpr int kGridFirst = -2;

  int cell_;
  std::vector<LabelBox> boxes_;
  std::vector<std::vector<std::size_t>> grid_;
  std::vector<std::size_t> filled_;  // the grid cells holding boxes
  std::unordered_map<long long, std::vector<std::size_t>> cells_;
};

}  // namespace tessel
