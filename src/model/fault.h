#pragma once
// Run-time faults of the job readers. Each reader traps them for itself, as the file formats
// require (keep what was read, end quietly); none ever reaches the user as an exception.

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace tessel {

enum class FaultKind {
  Overflow,      // a 16-bit counter passed 32767
  Subscript,     // an index outside a table's bound
  ReadPastEnd,   // a read after the last line of a file
  FileNotFound,  // a file that could not be opened
  TypeMismatch,  // text that had to be an integer was not
  FileAccess,    // a file that could not be written or copied
};

class RuntimeFault : public std::runtime_error {
 public:
  RuntimeFault(FaultKind kind, const std::string& what) : std::runtime_error(what), kind_(kind) {}
  FaultKind kind() const { return kind_; }

 private:
  FaultKind kind_;
};

// The counters of the stores are signed 16-bit: a step past 32767 (or below -32768) is an
// overflow fault, never a wrap.
inline std::int16_t Add16(std::int16_t value, int delta) {
  // Summed in 64 bits: a delta near the 32-bit bound must not overflow before the check.
  const std::int64_t sum = std::int64_t{value} + delta;
  if (sum > INT16_MAX || sum < INT16_MIN) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<std::int16_t>(sum);
}

// Assigning a number to a 16-bit counter: rounded half to even, out of range is an overflow.
inline std::int16_t To16(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<std::int16_t>(rounded);
}

// Assigning a number to a single-precision value: beyond its range is an overflow fault.
inline float ToSingle(double value) {
  if (std::isfinite(value) && std::fabs(value) > std::numeric_limits<float>::max()) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<float>(value);
}

// The same for a value the view keeps whatever it is: beyond the range it stops at the largest
// single, and a NaN stays NaN.
inline float ClampToSingle(double value) {
  constexpr float kLargest = std::numeric_limits<float>::max();
  if (value > kLargest) return kLargest;
  if (value < -kLargest) return -kLargest;
  return static_cast<float>(value);
}

// Runs one step of a command whose failure ends that step only: the command goes on with the
// next, as the suite's commands always have. Returns false when the step failed.
template <typename F>
bool StepOver(F&& step) {
  try {
    step();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace tessel
