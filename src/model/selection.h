#pragma once
// What the pick tools have selected: the entries of the selection list windows, in list order,
// and the arrays that map each entry back to a point, parcel, polygon or record line.
//
// The list of frmTesting holds parcels, and CAMA link records while "CAMA Parcels" is checked;
// SelectedParcels and the shared SelectionCount keep their old ways (a count shared by every
// pick tool, positions that fall out of step with the list). So beside the list the selection
// keeps, for each entry, what it really is: a parcel or a link record, its index, and the
// reading of the store it was picked from. The forms that edit parcels or links work from that.

#include <cstdint>
#include <string>
#include <vector>

#include "model/bounded_array.h"

namespace tessel {

enum class PickKind : std::uint8_t { Parcel, LinkRecord };

// One entry of frmTesting's list.
struct ParcelPick {
  PickKind kind = PickKind::Parcel;
  // The parcel's index in the parcel store, or the link record's in the link tables.
  int index = 0;
  // The reading of that store at the pick: an entry of an earlier reading names nothing.
  unsigned reading = 0;
  bool operator==(const ParcelPick&) const = default;
};

struct Selection {
  // The list of frmSelectedPoints: "id    northing     easting".
  std::vector<std::string> PointList;
  // The list of frmSelectedLines: the six fields of each record joined by one blank.
  std::vector<std::string> LineList;

  // Entry i of a list belongs to position i of its array.
  BoundedArray<int> SelectedPoints{97200};
  BoundedArray<std::int16_t> SelectedParcels{500};
  BoundedArray<std::int16_t> SelectedPolygons{100};
  BoundedArray<std::int16_t> SelectedLines{16000};

  // The position of the last parcel hit.
  double ClickedParcelY = 0.0;
  double ClickedParcelX = 0.0;
  // A dialog waiting for a picked point, and the point it gets.
  bool PointPickActive = false;
  std::string PickedPointId;

  // The list of frmTesting: the attribute lines of the picked parcels (the link texts of the
  // picked link records), and what each entry is.
  const std::vector<std::string>& ParcelList() const { return parcelList_; }
  const std::vector<ParcelPick>& ParcelPicks() const { return parcelPicks_; }
  void AddParcelEntry(std::string text, ParcelPick pick) {
    parcelList_.push_back(std::move(text));
    parcelPicks_.push_back(pick);
  }
  void RemoveParcelEntry(std::size_t entry) {
    if (entry >= parcelList_.size()) return;
    parcelList_.erase(parcelList_.begin() + static_cast<std::ptrdiff_t>(entry));
    parcelPicks_.erase(parcelPicks_.begin() + static_cast<std::ptrdiff_t>(entry));
  }
  void ClearParcelList() {
    parcelList_.clear();
    parcelPicks_.clear();
  }
  // A link record's new index after the link tables were rewritten and read back; `index` 0
  // for a record that is gone, whose entry then names nothing.
  void RenumberLinkRecord(std::size_t entry, int index, unsigned reading) {
    if (entry >= parcelPicks_.size()) return;
    parcelPicks_[entry].index = index;
    parcelPicks_[entry].reading = reading;
  }

  // Every list and array emptied, as a new job finds them.
  void Clear() { *this = Selection{}; }

 private:
  std::vector<std::string> parcelList_;
  std::vector<ParcelPick> parcelPicks_;
};

}  // namespace tessel
