#pragma once
// The layers of the canvas, one row each: the View menu entry that switches it and its caption,
// the check it sets, its toolbar key, the configuration flag that turns it on at start, and its
// name for `tessel-batch render --layers`. Everything that lists layers reads this table.

#include <array>
#include <cstdint>
#include <string_view>

#include "model/config.h"
#include "model/view_state.h"

namespace tessel {

struct LayerRow {
  const char* menu;                   // object name of the View menu entry
  const char* caption;                // its caption
  bool ViewChecks::*check;            // what it switches
  int menuGroup;                      // entries of one group stand between separators
  const char* toolbarKey;             // object name of its toolbar key, or nullptr
  const char* toolbarText;            // the key's caption
  int toolbarSlot;                    // place among the layer keys, from 1; 0 when none
  std::int16_t Config::*startFlag;    // the Tessel.cfg flag that sets it at start, or nullptr
  const char* renderName;             // its name for tessel-batch render
};

inline constexpr std::array<LayerRow, 12> kLayers = {{
    {"mnuOptionsControl", "Control Stations", &ViewChecks::mnuOptionsControl, 1, nullptr, nullptr, 0,
     &Config::chkControl, "control"},
    {"mnuViewPoints", "Points", &ViewChecks::mnuViewPoints, 1, nullptr, nullptr, 0, &Config::chkPoints, "points"},
    {"mnuOptionsID", "Point Names", &ViewChecks::mnuOptionsID, 1, "Pointids", "Names", 5, nullptr, "ids"},
    {"mnuOptionsLinesLXN", "Lines  (LXN)", &ViewChecks::mnuOptionsLinesLXN, 2, "Lxn", "LXN", 2, &Config::chkLinesLXN,
     "lxn"},
    {"mnuOptionsLinesLSA", "Lines  (LSA)", &ViewChecks::mnuOptionsLinesLSA, 2, "Lsa", "LSA", 1, &Config::chkLinesLSA,
     "lsa"},
    {"mnuViewLinesRaw", "Lines (RAW)", &ViewChecks::mnuViewLinesRaw, 2, "Raw", "RAW", 3, &Config::chkLinesRAW, "raw"},
    {"mnuOptionsMultiAtt", "Multiple Attributes", &ViewChecks::mnuOptionsMultiAtt, 3, nullptr, nullptr, 0, nullptr,
     "multi"},
    {"mnuOptionsParcel", "Parcels", &ViewChecks::mnuOptionsParcel, 3, "parcel", "Parcels", 4, &Config::chkParcels,
     "parcels"},
    {"mnuOptionsParcelBrief", "Parcels - Brief", &ViewChecks::mnuOptionsParcelBrief, 3, nullptr, nullptr, 0, nullptr,
     "brief"},
    {"mnuOptionsParcelDetail", "Parcels - Detailed", &ViewChecks::mnuOptionsParcelDetail, 3, nullptr, nullptr, 0,
     nullptr, "detailed"},
    {"mnuOptionsParcelFull", "Parcels - Full", &ViewChecks::mnuOptionsParcelFull, 3, nullptr, nullptr, 0, nullptr,
     "full"},
    {"mnuViewRPO", "Raw Polygons", &ViewChecks::mnuViewRPO, 4, nullptr, nullptr, 0, &Config::chkRPO, "polygons"},
}};

// The four parcel displays, of which at most one is checked.
inline bool IsParcelDisplay(std::string_view menu) {
  return menu == "mnuOptionsParcel" || menu == "mnuOptionsParcelBrief" || menu == "mnuOptionsParcelDetail" ||
         menu == "mnuOptionsParcelFull";
}

// The row of a View menu entry or a render name, or nullptr.
inline const LayerRow* FindLayer(std::string_view name) {
  for (const LayerRow& row : kLayers) {
    if (name == row.menu || name == row.renderName) return &row;
  }
  return nullptr;
}

}  // namespace tessel
