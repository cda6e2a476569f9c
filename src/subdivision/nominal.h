#pragma once
// The nominal numbering of a township: the six-digit identifier XXXYYY of every corner that the
// subdivision of a section can produce. Sections are numbered back and forth from 1 in the
// northeast corner to 36 in the southeast; each section has 25 numbered positions (its centre,
// corners, quarter corners and sixteenth corners).

#include <array>
#include <cstdint>
#include <string>

namespace tessel {

// Centre of section for sections 1 to 36; entries 0 and 37 stay 0.
using SectionCentreTable = std::array<std::int32_t, 38>;
// Identifier of each position 1 to 25 of each section 1 to 36; other entries stay 0.
using NominalTable = std::array<std::array<std::int32_t, 26>, 38>;

const SectionCentreTable& SectionCentres();
// Built once, on first use, by deriving every position from the corners.
const NominalTable& Nominals();

// The nominal identifier of a position, 0 outside sections 1-36 and positions 1-25.
std::int32_t NominalId(int section, int position);

// The section whose centre is `centre`, first match among 1 to 36; 0 when none.
int SectionOfCentre(std::int32_t centre);

// The six-digit text of an identifier.
std::string IdText(std::int32_t id);

// The names of positions in the dialogs' texts: "NE", "SE", "SW", "NW" for 2-5, "CE 1/16" ...
// for 10-13, "Northeast 1/16th" ... for 14-17; empty for the others.
std::string PositionName(int position);

}  // namespace tessel
