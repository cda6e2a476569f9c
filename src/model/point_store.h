#pragma once
// The point store: every line, parcel and survey of a job refers to points by their index here.
// Entries run from 1; entry 0 exists and is only written when a point is appended to a store
// whose count is -1. Lookups by identifier give exactly the answer of a walk over entries 1 to
// PointCount without early exit (the last match wins, no match gives 0), through an index kept
// in step with every write.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

class PointStore {
 public:
  static constexpr int kBound = 97200;

  std::int16_t PointCount() const { return count_; }
  const std::string& PointIds(int i) const;
  double PointX(int i) const;
  double PointY(int i) const;

  // Writes entry i (0..kBound, else a subscript fault).
  void Set(int i, const std::string& id, double x, double y);
  // Sets the count; a count is 16-bit, so the callers step it with Add16.
  void SetCount(std::int16_t count) { count_ = count; }
  // PointCount + 1 (an overflow fault past 32767), then the point at the new count.
  int Append(const std::string& id, double x, double y);
  // The last entry 1..PointCount with this identifier, or 0.
  int Find(std::string_view id) const;
  // Empties every entry and sets the count to 0.
  void Clear();

 private:
  // A slot of the identifier index: the highest entry written with an identifier, the key's
  // hash, and the key itself when it is short (up to seven characters, with its length); a
  // longer key is compared with that entry's own identifier text.
  struct Slot {
    std::uint64_t key = 0;
    std::uint32_t hash = 0;
    std::int32_t head = kFree;
  };
  static constexpr std::int32_t kFree = 0;
  static constexpr std::int32_t kDeleted = -1;
  static constexpr std::uint64_t kLongKey = ~std::uint64_t{0};

  struct Key {
    std::uint64_t packed;
    std::uint32_t hash;
  };
  static Key KeyOf(std::string_view id);
  // The slot holding this identifier, or -1.
  std::ptrdiff_t Lookup(std::string_view id, const Key& key) const;
  // The slot holding this identifier, made with head 0 when missing.
  Slot& Claim(std::string_view id, const Key& key);
  void Rehash(std::size_t capacity);
  void Register(int i, const std::string& id);
  void Unregister(int i, const std::string& id);

  std::vector<std::string> ids_{std::string()};
  std::vector<double> xs_{0.0};
  std::vector<double> ys_{0.0};
  std::int16_t count_ = 0;
  // The identifier index: a flat open-addressing table (linear probing, power-of-two size) from
  // each identifier to the highest entry written with it, and for each entry the next lower
  // entry written with the same identifier (0 at the end): a chain from the last match down.
  // Entry 0 is never indexed, since no lookup answers with it.
  std::vector<Slot> slots_;
  std::size_t used_ = 0;  // slots live or deleted
  std::vector<int> lower_{0};
};

// The extents of the job, set only by the two coordinate readers.
struct JobExtents {
  double MinX = 0.0;
  double MaxX = 0.0;
  double MinY = 0.0;
  double MaxY = 0.0;

  void Reset(double minSentinel) {
    MaxX = 0.0;
    MaxY = 0.0;
    MinX = minSentinel;
    MinY = minSentinel;
  }
  void Include(double x, double y) {
    if (x > MaxX) MaxX = x;
    if (y > MaxY) MaxY = y;
    if (x < MinX) MinX = x;
    if (y < MinY) MinY = y;
  }
};

}  // namespace tessel
