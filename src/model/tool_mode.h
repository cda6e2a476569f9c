#pragma once
// What a click on the canvas does. The values are those the program has always stored (a 16-bit
// number); no tool has the value 3 or 8.

#include <cstdint>

namespace tessel {

enum class ToolMode : std::int16_t {
  None = 0,          // before the main form has loaded
  PickPoints = 1,    // toolbar Select
  ZoomPan = 2,       // toolbar Zoom; the default
  PickParcels = 4,   // toolbar Centroid; the parcel dialogs on closing
  PickPolygons = 5,  // toolbar CRPO
  PickLines = 6,     // toolbar sid
  MoveParcel = 7,    // moving the picked parcels' location
  Locked = 9,        // the canvas is locked while a selection dialog is in use
};

}  // namespace tessel
