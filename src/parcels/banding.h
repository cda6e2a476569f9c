#pragma once
// Banding: the parcel dots painted once over the picture in colour bands, by nominal location in
// east-west rows or north-south columns of a section, or by section in rows or columns of the
// township. Not a layer: the next refresh wipes it.

#include <string>
#include <utility>
#include <vector>

#include "model/session.h"

namespace tessel {

enum class BandKind { EW, NS, EWSection, NSSection };

// The rows of a band: the keys of each row and its colour number, in order.
using BandRows = std::vector<std::pair<std::vector<std::string>, int>>;
const BandRows& BandTable(BandKind kind);
// The colour number of a key, or 0 when the key is in no row of the band's table.
int BandColourNumber(BandKind kind, const std::string& key);
// The key of a parcel line for the band: column 9, or columns 5 to 7.
std::string BandKey(BandKind kind, const std::string& parcelLine);
// Paints the band. A parcel whose key is in no row takes the colour of the parcel before it.
void BandParcels(Session& session, BandKind kind);

}  // namespace tessel
