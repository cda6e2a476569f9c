#include "model/point_store.h"

#include <algorithm>

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

PointStore::Key PointStore::KeyOf(std::string_view id) {
  if (id.size() > 7) {
    // FNV-1a, then a final mix so that identifiers in sequence spread over the table.
    std::uint32_t h = 2166136261u;
    for (const char c : id) h = (h ^ static_cast<unsigned char>(c)) * 16777619u;
    h ^= h >> 16;
    h *= 0x85ebca6bu;
    h ^= h >> 13;
    return {kLongKey, h};
  }
  // A short key is its bytes and its length; the hash mixes that word (a 64-bit finaliser).
  std::uint64_t packed = static_cast<std::uint64_t>(id.size()) << 56;
  for (std::size_t b = 0; b < id.size(); ++b) packed |= static_cast<std::uint64_t>(static_cast<unsigned char>(id[b])) << (8 * b);
  std::uint64_t h = packed;
  h ^= h >> 33;
  h *= 0xff51afd7ed558ccdull;
  h ^= h >> 33;
  h *= 0xc4ceb9fe1a85ec53ull;
  h ^= h >> 33;
  return {packed, static_cast<std::uint32_t>(h)};
}

std::ptrdiff_t PointStore::Lookup(std::string_view id, const Key& key) const {
  if (slots_.empty()) return -1;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t k = key.hash & mask;; k = (k + 1) & mask) {
    const Slot& slot = slots_[k];
    if (slot.head == kFree) return -1;
    if (slot.head != kDeleted && slot.hash == key.hash && slot.key == key.packed &&
        (key.packed != kLongKey || ids_[static_cast<std::size_t>(slot.head)] == id)) {
      return static_cast<std::ptrdiff_t>(k);
    }
  }
}

PointStore::Slot& PointStore::Claim(std::string_view id, const Key& key) {
  if (const std::ptrdiff_t found = Lookup(id, key); found >= 0) return slots_[static_cast<std::size_t>(found)];
  // At most half full, counting deleted slots, so that every probe ends soon.
  if ((used_ + 1) * 2 > slots_.size()) Rehash(std::max<std::size_t>(64, slots_.size() * 2));
  const std::size_t mask = slots_.size() - 1;
  std::size_t k = key.hash & mask;
  while (slots_[k].head > 0) k = (k + 1) & mask;
  if (slots_[k].head == kFree) ++used_;
  slots_[k] = Slot{key.packed, key.hash, 0};
  return slots_[k];
}

void PointStore::Rehash(std::size_t capacity) {
  std::vector<Slot> old(capacity);
  old.swap(slots_);
  used_ = 0;
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.head <= 0) continue;
    std::size_t k = slot.hash & mask;
    while (slots_[k].head != kFree) k = (k + 1) & mask;
    slots_[k] = slot;
    ++used_;
  }
}

void PointStore::Register(int i, const std::string& id) {
  if (i == 0) return;
  Slot& slot = Claim(id, KeyOf(id));
  int& lower = lower_[static_cast<std::size_t>(i)];
  if (slot.head < i) {
    lower = slot.head;
    slot.head = i;
  } else if (slot.head != i) {
    // Written below the highest entry of its identifier: put it in its place in the chain.
    int above = slot.head;
    while (lower_[static_cast<std::size_t>(above)] > i) above = lower_[static_cast<std::size_t>(above)];
    if (lower_[static_cast<std::size_t>(above)] != i) {
      lower = lower_[static_cast<std::size_t>(above)];
      lower_[static_cast<std::size_t>(above)] = i;
    }
  }
}

void PointStore::Unregister(int i, const std::string& id) {
  if (i == 0) return;
  const std::ptrdiff_t found = Lookup(id, KeyOf(id));
  if (found < 0) return;
  Slot& slot = slots_[static_cast<std::size_t>(found)];
  if (slot.head == i) {
    const int next = lower_[static_cast<std::size_t>(i)];
    // The last entry of an identifier gone: the slot stays taken for the probes that pass it.
    slot.head = next > 0 ? next : kDeleted;
    return;
  }
  for (int above = slot.head; above >= 1; above = lower_[static_cast<std::size_t>(above)]) {
    if (lower_[static_cast<std::size_t>(above)] == i) {
      lower_[static_cast<std::size_t>(above)] = lower_[static_cast<std::size_t>(i)];
      return;
    }
  }
}

void PointStore::Set(int i, const std::string& id, double x, double y) {
  if (i < 0 || i > kBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
  const auto at = static_cast<std::size_t>(i);
  if (at == ids_.size() && at < ids_.capacity()) {
    // The next entry of a store being read: appended in place.
    ids_.push_back(id);
    xs_.push_back(x);
    ys_.push_back(y);
    lower_.push_back(0);
    Register(i, id);
    return;
  }
  if (at >= ids_.size()) {
    if (ids_.capacity() <= at) {
      // A job's readers append point after point: room for the whole table at once, which
      // costs only address space until it is written.
      constexpr auto kRoom = static_cast<std::size_t>(kBound) + 1;
      ids_.reserve(kRoom);
      xs_.reserve(kRoom);
      ys_.reserve(kRoom);
      lower_.reserve(kRoom);
    }
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
  const std::ptrdiff_t found = Lookup(id, KeyOf(id));
  if (found < 0) return 0;
  // Every entry of the chain holds the identifier (a write takes an entry out of its old chain),
  // so the first counted one answers.
  for (int i = slots_[static_cast<std::size_t>(found)].head; i >= 1; i = lower_[static_cast<std::size_t>(i)]) {
    if (i <= count_) return i;
  }
  return 0;
}

void PointStore::Clear() {
  ids_.assign(1, std::string());
  xs_.assign(1, 0.0);
  ys_.assign(1, 0.0);
  lower_.assign(1, 0);
  slots_.clear();
  used_ = 0;
  count_ = 0;
}

}  // namespace tessel
