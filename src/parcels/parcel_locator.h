#pragma once
// The parcel locator (frmParcelLocator): lists of the parcels, their non-aliquot parcels, their
// sections and nominal locations, each entry mapped back to a parcel by LocatorIndex.

#include <cstdint>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

// An "All Parcels" entry: the start of the attribute line, up to the acreage.
inline constexpr int kLocatorEntryWidth = 35;

class ParcelLocator {
 public:
  explicit ParcelLocator(Session& session) : session_(session) {}

  // "All Parcels": every parcel.
  void AllParcels();
  // "Non-Aliquot": parcels whose type (column 13) is neither "?" nor "A", equal neighbours
  // removed.
  void NonAliquot();
  // "Sections": "Sec_" and the section of each parcel, equal neighbours removed.
  void Sections();
  // "Nominal": "Sec_", the section and the nominal location, equal neighbours removed.
  void Nominal();
  // The parcel of list position `position`, 0 for none.
  int ParcelAt(int position) const;

  std::vector<std::string> entries;
  // For each list position the parcel index.
  std::vector<std::int16_t> LocatorIndex;

 private:
  void Walk(bool nonAliquotOnly, int width);
  void RemoveEqualNeighbours();
  Session& session_;
};

}  // namespace tessel
