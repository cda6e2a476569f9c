#pragma once
// The legend: what the canvas shows, row by row, in the colours and line styles the refresh
// paints with the present configuration and job: the layers, the record lines of each survey,
// the parcel marks, the banding colours and the CAMA link colours.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

struct LegendRow {
  enum class Symbol { Dot, Line, Ring };
  std::string group;
  std::string text;
  unsigned colour = 0;  // 0xRRGGBB
  Symbol symbol = Symbol::Dot;
  int penStyle = 0;     // the canvas's pen style, for a line
  bool shown = false;   // its layer is on in the View menu
};

// The groups in order: "Layers", "Record lines (RAW) by survey", "Parcels", "Banding",
// "CAMA links".
std::vector<LegendRow> LegendRows(const Session& session);

}  // namespace tessel
