#pragma once
// Run-time faults of the job readers. Each reader traps them for itself, as the file formats
// require (keep what was read, end quietly); none ever reaches the user as an exception.

#include <cmath>
#include <cstdint>
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
  const int sum = value + delta;
  if (sum > INT16_MAX || sum < INT16_MIN) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<std::int16_t>(sum);
}

// Assigning a number to a 16-bit counter: rounded half to even, out of range is an overflow.
inline std::int16_t To16(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= INT16_MIN && rounded <= INT16_MAX)) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<std::int16_t>(rounded);
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
