#include "parcels/parcel_locator.h"

#include "model/text.h"

namespace tessel {

void ParcelLocator::Walk(bool nonAliquotOnly, int width) {
  entries.clear();
  LocatorIndex.clear();
  const ParcelStore& store = session_.parcels;
  for (int i = 1; i <= store.ParcelCount; ++i) {
    const std::string& line = store.ParcelLine.get(i);
    if (nonAliquotOnly) {
      const std::string type = Trim(Mid(line, 13, 1));
      if (type == "?" || type == "A") continue;
    }
    entries.push_back(Left(line, width));
    LocatorIndex.push_back(static_cast<std::int16_t>(i));
  }
}

void ParcelLocator::RemoveEqualNeighbours() {
  // One pass keeps the first entry of each run of equal neighbours and its parcel.
  std::size_t kept = 0;
  for (std::size_t k = 0; k < entries.size(); ++k) {
    if (k > 0) session_.user.YieldEvents();
    if (kept > 0 && entries[k] == entries[kept - 1]) continue;
    if (kept != k) {
      entries[kept] = std::move(entries[k]);
      LocatorIndex[kept] = LocatorIndex[k];
    }
    ++kept;
  }
  entries.resize(kept);
  LocatorIndex.resize(kept);
}

void ParcelLocator::AllParcels() { Walk(false, kLocatorEntryWidth); }

void ParcelLocator::NonAliquot() {
  Walk(true, kLocatorEntryWidth);
  RemoveEqualNeighbours();
}

void ParcelLocator::Sections() {
  Walk(false, 7);
  RemoveEqualNeighbours();
}

void ParcelLocator::Nominal() {
  Walk(false, 9);
  RemoveEqualNeighbours();
}

int ParcelLocator::ParcelAt(int position) const {
  if (position < 0 || position >= static_cast<int>(LocatorIndex.size())) return 0;
  return LocatorIndex[static_cast<std::size_t>(position)];
}

}  // namespace tessel
