#include "parcels/ring_ids.h"

#include "model/text.h"

namespace tessel {

namespace {

// The field of seven columns from `column`, trimmed.
std::string Field(std::string_view ring, int column) { return Trim(Mid(ring, column, kRingFieldWidth)); }

}  // namespace

std::vector<std::string> RingIds(std::string_view ring) {
  std::vector<std::string> ids;
  for (int column = 1; column <= static_cast<int>(ring.size()); column += kRingFieldWidth) {
    std::string id = Field(ring, column);
    if (!id.empty()) ids.push_back(std::move(id));
  }
  if (ids.size() > 1 && ids.back() == ids.front()) ids.pop_back();
  return ids;
}

std::vector<std::string> RingOutlineIds(std::string_view ring) {
  const int fields = static_cast<int>(ring.size()) / kRingFieldWidth;
  std::vector<std::string> ids{Field(ring, 2)};
  for (int k = 1; k < fields; ++k) ids.push_back(Field(ring, kRingFieldWidth * k + 1));
  return ids;
}

}  // namespace tessel
