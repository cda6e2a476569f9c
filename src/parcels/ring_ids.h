#pragma once
// The ring of a parcel or raw polygon: point identifiers in fields of seven columns, a blank and
// a six-character identifier each. The centroids and the parcel outline read it differently, and
// both readings are kept here beside each other.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

inline constexpr int kRingFieldWidth = 7;

// As the centroids take it: every field from column 1, trimmed, the last one possibly short;
// empty fields passed over and a closing repeat of the first identifier dropped.
std::vector<std::string> RingIds(std::string_view ring);

// As the parcel outline takes it: the ring's length over 7 fields, the first from columns 2 to 8
// and the next from columns 8, 15, 22 and so on, each trimmed and empty ones kept.
std::vector<std::string> RingOutlineIds(std::string_view ring);

}  // namespace tessel
