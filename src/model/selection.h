#pragma once
// What the pick tools have selected: the entries of the selection list windows, in list order,
// and the arrays that map each entry back to a point, parcel, polygon or record line.

#include <cstdint>
#include <string>
#include <vector>

#include "model/bounded_array.h"

namespace tessel {

struct Selection {
  // The list of frmSelectedPoints: "id    northing     easting".
  std::vector<std::string> PointList;
  // The list of frmTesting: the attribute lines of the picked parcels.
  std::vector<std::string> ParcelList;
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

  void ClearPoints() {
    PointList.clear();
    SelectedPoints.clear();
  }
};

}  // namespace tessel
