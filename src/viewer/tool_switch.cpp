#include "viewer/tool_switch.h"

namespace tessel {

namespace {

const char* ModeText(ToolMode mode) {
  switch (mode) {
    case ToolMode::PickPoints: return "Select a point to display coordinates";
    case ToolMode::ZoomPan: return kStatusZoomPan;
    case ToolMode::PickParcels: return "Select Parcel(s) for editing";
    case ToolMode::PickPolygons: return "Edit Raw Polygons";
    case ToolMode::PickLines: return "Select line(s)";
    default: return "";
  }
}

}  // namespace

void PushModeButton(Session& s, ToolMode mode) {
  s.user.SetChecked("Select", mode == ToolMode::PickPoints);
  s.user.SetChecked("Centroid", mode == ToolMode::PickParcels);
  s.user.SetChecked("Zoom", mode == ToolMode::ZoomPan);
}

void SetToolMode(Session& s, ToolMode mode) {
  s.ToolMode = mode;
  s.user.Status(1, ModeText(mode));
  for (int panel = 2; panel <= 4; ++panel) s.user.Status(panel, "");
  PushModeButton(s, mode);
}

}  // namespace tessel
