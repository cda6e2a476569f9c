#pragma once
// What the built-in adjustment's window draws over the job while it shows a result: polylines in
// job units, each with its colour and pen width. Empty when no result is shown; it belongs to the
// open job and is emptied with it.

#include <vector>

namespace tessel {

struct OverlayPolyline {
  std::vector<double> xy;  // x0, y0, x1, y1, ...: joined in order
  unsigned colour = 0;     // 0xRRGGBB
  int penWidth = 1;
};

struct AdjustmentOverlay {
  std::vector<OverlayPolyline> lines;

  bool Empty() const { return lines.empty(); }
  void Clear() { lines.clear(); }
};

}  // namespace tessel
