#include "core/point_store.h"

#include <algorithm>

#include "core/fault.h"

namespace tessel {

namespace {
const std::string kEmpty;
}

const std::string& PointStore::PointIds(int i) const {
  return i >= 0 && i < static_cast<int>(ids_.size()) ? ids_[static_cast<std::size_t>(i)] : kEmpty;
}

double PointStore::PointX(int i) const {
  return i >= 0 && i < static_cast<int>(xs_.size()) ? xs_[static_cast<std::size_t>(i)] : 0.0;
}

double PointStore::PointY(int i) const {
  return i >= 0 && i < static_cast<int>(ys_.size()) ? ys_[static_cast<std::size_t>(i)] : 0.0;
}

void PointStore::Register(int i, const std::string& id) {
  auto& entries = index_[id];
  if (entries.empty() || entries.back() < i) {
    entries.push_back(i);
  } else {
    const auto at = std::lower_bound(entries.begin(), entries.end(), i);
    if (at == entries.end() || *at != i) entries.insert(at, i);
  }
}

void PointStore::Set(int i, const std::string& id, double x, double y) {
  if (i < 0 || i > kBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
  const auto at = static_cast<std::size_t>(i);
  if (at >= ids_.size()) {
    // Entries between the old end and i are empty entries and are found as such.
    for (std::size_t k = ids_.size(); k < at; ++k) Register(static_cast<int>(k), kEmpty);
    ids_.resize(at + 1);
    xs_.resize(at + 1, 0.0);
    ys_.resize(at + 1, 0.0);
  }
  ids_[at] = id;
  xs_[at] = x;
  ys_[at] = y;
  Register(i, id);
}

int PointStore::Append(const std::string& id, double x, double y) {
  const std::int16_t next = Add16(count_, 1);
  count_ = next;
  Set(next, id, x, y);
  return next;
}

int PointStore::Find(const std::string& id) const {
  if (count_ < 1) return 0;
  // Entries past the written ones are empty, so the last of them answers an empty identifier.
  if (id.empty() && count_ >= static_cast<int>(ids_.size())) return count_;
  const auto found = index_.find(id);
  if (found == index_.end()) return 0;
  const auto& entries = found->second;
  for (auto it = entries.rbegin(); it != entries.rend(); ++it) {
    if (*it >= 1 && *it <= count_ && ids_[static_cast<std::size_t>(*it)] == id) return *it;
  }
  return 0;
}

void PointStore::Clear() {
  ids_.assign(1, std::string());
  xs_.assign(1, 0.0);
  ys_.assign(1, 0.0);
  index_.clear();
  count_ = 0;
}

}  // namespace tessel
