#include "model/point_store.h"

#include "model/fault.h"

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
  auto [it, inserted] = last_.try_emplace(id, i);
  int& lower = lower_[static_cast<std::size_t>(i)];
  if (inserted) {
    lower = 0;
  } else if (it->second < i) {
    lower = it->second;
    it->second = i;
  } else if (it->second != i) {
    // Written below the highest entry of its identifier: put it in its place in the chain.
    int above = it->second;
    while (lower_[static_cast<std::size_t>(above)] > i) above = lower_[static_cast<std::size_t>(above)];
    if (lower_[static_cast<std::size_t>(above)] != i) {
      lower = lower_[static_cast<std::size_t>(above)];
      lower_[static_cast<std::size_t>(above)] = i;
    }
  }
}

void PointStore::Unregister(int i, const std::string& id) {
  if (i == 0) return;
  const auto it = last_.find(id);
  if (it == last_.end()) return;
  if (it->second == i) {
    it->second = lower_[static_cast<std::size_t>(i)];
    return;
  }
  for (int above = it->second; above >= 1; above = lower_[static_cast<std::size_t>(above)]) {
    if (lower_[static_cast<std::size_t>(above)] == i) {
      lower_[static_cast<std::size_t>(above)] = lower_[static_cast<std::size_t>(i)];
      return;
    }
  }
}

void PointStore::Set(int i, const std::string& id, double x, double y) {
  if (i < 0 || i > kBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
  const auto at = static_cast<std::size_t>(i);
  if (at >= ids_.size()) {
    const std::size_t old = ids_.size();
    ids_.resize(at + 1);
    xs_.resize(at + 1, 0.0);
    ys_.resize(at + 1, 0.0);
    lower_.resize(at + 1, 0);
    // Entries between the old end and i are empty entries and are found as such.
    for (std::size_t k = old; k < at; ++k) Register(static_cast<int>(k), kEmpty);
  } else {
    Unregister(i, ids_[at]);
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

int PointStore::Find(std::string_view id) const {
  if (count_ < 1) return 0;
  // Entries past the written ones are empty, so the last of them answers an empty identifier.
  if (id.empty() && count_ >= static_cast<int>(ids_.size())) return count_;
  const auto found = last_.find(id);
  if (found == last_.end()) return 0;
  for (int i = found->second; i >= 1; i = lower_[static_cast<std::size_t>(i)]) {
    if (i <= count_ && ids_[static_cast<std::size_t>(i)] == id) return i;
  }
  return 0;
}

void PointStore::Clear() {
  ids_.assign(1, std::string());
  xs_.assign(1, 0.0);
  ys_.assign(1, 0.0);
  lower_.assign(1, 0);
  last_.clear();
  count_ = 0;
}

}  // namespace tessel
