#pragma once
// The irregular section definitions of the township: what the job's .irr says about each
// section's exceptions to the regular subdivision, as the section dialog edits them. Sections
// 1 to 36 and positions 1 to 25 (the nominal positions of a section); index 0 exists and stays
// empty, save Substitute[0], which is set to 1 once a section has had a substitution.

#include <array>
#include <cstdint>
#include <string>

#include "model/fault.h"

namespace tessel {

// One record of a double section corner: the nominal corner it stands for, the point that
// stands there, the corner code (1 NE, 2 SE, 3 SW, 4 NW) and the controlling direction
// (1 N, 2 E, 3 S, 4 W).
struct DoubleCornerRecord {
  std::int32_t nominal = 0;
  std::int32_t point = 0;
  std::int16_t corner = 0;
  std::int16_t direction = 0;

  bool operator==(const DoubleCornerRecord&) const = default;
};

// A proportion of an interior sixteenth: its point, the parenthetical and the total distance.
struct ProportionDefinition {
  std::string id;
  std::string parenthetical = ".000";
  std::string total = ".000";

  bool operator==(const ProportionDefinition&) const = default;
};

// Two line definitions, north-south then east-west: each a type (1 to 7, empty when not set)
// and four parameters.
using LinePair = std::array<std::string, 10>;

struct SectionDefinitions {
  std::array<std::int32_t, 26> Substitute{};
  // Positions 6-9 and 18-25: the identifier marked non-computable.
  std::array<std::int32_t, 26> NonComputable{};
  // Quarter corners by position - 5 (1 to 4), exterior sixteenths by position - 17 (1 to 8).
  std::array<bool, 5> QuarterFlag{};
  std::array<bool, 9> ExteriorFlag{};
  // Interior sixteenths by position - 9 (1 to 4).
  std::array<bool, 5> ProportionFlag{};
  std::array<ProportionDefinition, 5> Proportions{};
  // Double corners by corner code (1 to 4).
  std::array<bool, 5> DoubleFlag{};
  LinePair Centre{};
  bool CentreFlag = false;
  // Centres of quarter sections by position - 13 (1 to 4).
  std::array<LinePair, 5> QuarterCentre{};
  std::array<bool, 5> QuarterCentreFlag{};
  std::array<std::int32_t, 26> Offset{};
  std::array<bool, 26> OffsetFlag{};
  // Set when the section's block is rewritten.
  bool Marker = false;
};

struct SectionDefinitionStore {
  // Two records for each of the four corners.
  static constexpr int kDoubleCornerBound = 8;

  std::array<SectionDefinitions, 37> sections{};
  // The double corner records of the section being edited, entries 1..DoubleCornerCount.
  std::array<DoubleCornerRecord, kDoubleCornerBound + 1> DoubleCorners{};
  std::int16_t DoubleCornerCount = 0;

  // Appends a record; a ninth is a subscript fault and changes nothing.
  void AddDoubleCorner(const DoubleCornerRecord& record) {
    if (DoubleCornerCount >= kDoubleCornerBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
    ++DoubleCornerCount;
    DoubleCorners[static_cast<std::size_t>(DoubleCornerCount)] = record;
  }

  void Clear() { *this = SectionDefinitionStore{}; }
};

}  // namespace tessel
