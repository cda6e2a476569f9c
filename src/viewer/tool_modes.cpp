#include "viewer/tool_modes.h"

#include <cmath>

#include "model/config.h"
#include "model/layers.h"
#include "datasets/identity.h"
#include "model/paths.h"
#include "parcels/centroids.h"
#include "parcels/raw_polygons.h"
#include "viewer/drawing.h"
#include "viewer/picking.h"
#include "viewer/tool_switch.h"
#include "viewer/view_transform.h"

namespace tessel {

namespace {

// The rubber band from the drag's start to (x, y): a dotted rectangle while a zoom window is
// armed, otherwise a dotted line; drawn inverted so that drawing it again rubs it out.
void DrawBand(Session& s, const DragState& d, float x, float y) {
  if (s.view.ZoomWindowArmed) {
    s.canvas.Line(d.DragX0, d.DragY0, x, d.DragY0, 0);
    s.canvas.Line(x, d.DragY0, x, y, 0);
    s.canvas.Line(x, y, d.DragX0, y, 0);
    s.canvas.Line(d.DragX0, y, d.DragX0, d.DragY0, 0);
  } else {
    s.canvas.Line(d.DragX0, d.DragY0, x, y, 0);
  }
}

bool ToolbarNeedsJob(Session& s) {
  if (JobGuard(s)) return true;
  s.user.Message(kMsgOpenProject, Icon::Stop);
  return false;
}

void SetDrag(DragState& d, float x, float y) {
  d.DragX0 = d.RubberX = x;
  d.DragY0 = d.RubberY = y;
}

// The toolbar's zoom keys first switch to the zoom tool.
void ToolbarZoomTool(Session& s) { SetToolMode(s, ToolMode::ZoomPan); }

}  // namespace

void CanvasMouseDown(Session& s, DragState& d, MouseButton button, float x, float y) {
  if (s.ToolMode == ToolMode::Locked) return;
  d.PanDragging = s.ToolMode == ToolMode::ZoomPan ? -1 : 0;
  if (button == MouseButton::Right) {
    if (s.ToolMode == ToolMode::ZoomPan) {
      s.user.ShowPopup("mnuPopup", {"mnuPopupCancel", "mnuPopupZE", "mnuPopupZoomOut", "mnuPopupZoomP"},
                       {"mnuPopupHelp", "mnuPopupOther", "mnuPopupEditCRPO"});
    } else if (s.ToolMode == ToolMode::PickPoints) {
      // A right click leaves point picking.
      PushModeButton(s, ToolMode::ZoomPan);
      s.ToolMode = ToolMode::ZoomPan;
    } else if (s.ToolMode == ToolMode::PickParcels) {
      d.PanDragging = 0;
    }
    return;
  }
  if (s.ToolMode == ToolMode::ZoomPan) PushModeButton(s, ToolMode::ZoomPan);
  SetDrag(d, x, y);
}

void CanvasMouseMove(Session& s, DragState& d, bool buttonDown, float x, float y) {
  if (s.ToolMode == ToolMode::Locked || !buttonDown || (d.PanDragging == 0 && s.view.ZoomWindowArmed == 0)) return;
  s.canvas.SetDrawMode(DrawMode::Invert);
  s.canvas.SetPenStyle(2);
  DrawBand(s, d, d.RubberX, d.RubberY);
  DrawBand(s, d, x, y);
  d.RubberX = x;
  d.RubberY = y;
  s.canvas.SetPenStyle(s.config.LineTypeLSA);
  s.canvas.SetDrawMode(DrawMode::Copy);
}

void EraseBand(Session& s, const DragState& d) {
  if (d.RubberX == d.DragX0 && d.RubberY == d.DragY0) return;  // no band was drawn
  s.canvas.SetDrawMode(DrawMode::Invert);
  s.canvas.SetPenStyle(2);
  DrawBand(s, d, d.RubberX, d.RubberY);
  s.canvas.SetPenStyle(s.config.LineTypeLSA);
  s.canvas.SetDrawMode(DrawMode::Copy);
}

void CanvasMouseUp(Session& s, DragState& d, MouseButton button, bool shift, float x, float y) {
  d.PanDragging = 0;
  const bool left = button == MouseButton::Left;
  if (s.ToolMode == ToolMode::ZoomPan) {
    if (s.view.ZoomWindowArmed) {
      d.DragX1 = x;
      d.DragY1 = y;
      ZoomWindow(s, d.DragX0, d.DragY0, d.DragX1, d.DragY1);
      return;
    }
    if (left) {
      d.DragX1 = x;
      d.DragY1 = y;
      DragPan(s, d.DragX0, d.DragY0, d.DragX1, d.DragY1);
    }
    return;
  }
  if (left) {
    d.DragX1 = x;
    d.DragY1 = y;
  }
  PickMouseUp(s, left, shift, d.DragX0, d.DragY0, x, y);
}

void CanvasDoubleClick(Session& s) {
  if (s.ToolMode == ToolMode::PickParcels || s.ToolMode == ToolMode::Locked) return;
  if (s.ToolMode == ToolMode::ZoomPan) {
    if (!ZoomInGuard(s)) return;
    SavePrevious(s);
    ZoomIn(s);
  }
  s.user.SetPointer(Pointer::Arrow);
}

void CanvasKey(Session& s, ViewKey key) {
  switch (key) {
    case ViewKey::Home:
      ZoomExtents(s);
      Redraw(s);
      break;
    case ViewKey::PageDown:
      if (ZoomInGuard(s)) ZoomIn(s);
      break;
    case ViewKey::PageUp: ZoomOut(s); break;
    case ViewKey::W: MenuZoomWindow(s); break;
    case ViewKey::Up: Pan(s, PanDirection::Up); break;
    case ViewKey::Down: Pan(s, PanDirection::Down); break;
    case ViewKey::Left: Pan(s, PanDirection::Left); break;
    case ViewKey::Right: Pan(s, PanDirection::Right); break;
  }
}

void MenuRefresh(Session& s) { Redraw(s); }

void MenuZoomIn(Session& s) {
  if (!ZoomInGuard(s)) return;
  SavePrevious(s);
  ZoomIn(s);
}

void MenuZoomOut(Session& s) {
  SavePrevious(s);
  ZoomOut(s);
}

void MenuZoomExtents(Session& s) {
  SavePrevious(s);
  if (s.display) s.display->ClearCanvas();
  ZoomExtents(s);
  Redraw(s);
}

void MenuZoomWindow(Session& s) {
  s.user.SetPointer(Pointer::Crosshair);
  s.view.ZoomWindowArmed = -1;
}

void MenuZoomPrevious(Session& s) {
  double w = 0.0, h = 0.0;
  s.user.OuterSizeTwips(w, h);
  ZoomPrevious(s, w, h);
  Redraw(s);
}

void PopupCancel(Session& s) {
  s.ToolMode = ToolMode::ZoomPan;
  Redraw(s);
}

void ToolbarZoomIn(Session& s) {
  SavePrevious(s);
  ToolbarZoomTool(s);
  ZoomIn(s);
}

void ToolbarZoomOut(Session& s) {
  SavePrevious(s);
  ToolbarZoomTool(s);
  ZoomOut(s);
}

void ToolbarZoomExtents(Session& s) {
  if (!ToolbarNeedsJob(s)) return;
  SavePrevious(s);
  ToolbarZoomTool(s);
  if (s.display) s.display->ClearCanvas();
  ZoomExtents(s);
  Redraw(s);
}

void ToolbarZoomWindow(Session& s) {
  if (!ToolbarNeedsJob(s)) return;
  SavePrevious(s);
  ToolbarZoomTool(s);
  MenuZoomWindow(s);
  s.user.Status(2, "Select an area to zoom");
}

void ToolbarZoomPrevious(Session& s) {
  double w = 0.0, h = 0.0;
  s.user.OuterSizeTwips(w, h);
  ZoomPrevious(s, w, h);
}

void ToggleLayer(Session& s, const std::string& name) {
  const LayerRow* layer = FindLayer(name);
  if (!layer || name != layer->menu) return;
  ViewChecks& c = s.checks;
  const bool on = !(c.*(layer->check));
  c.*(layer->check) = on;
  s.user.SetChecked(layer->menu, on);
  if (layer->toolbarKey) s.user.SetChecked(layer->toolbarKey, on);

  // A parcel display switched on switches the other three off.
  if (IsParcelDisplay(name) && on) {
    for (const LayerRow& other : kLayers) {
      if (!IsParcelDisplay(other.menu) || name == other.menu) continue;
      c.*(other.check) = false;
      s.user.SetChecked(other.menu, false);
      if (other.toolbarKey) s.user.SetChecked(other.toolbarKey, false);
    }
  }
  if (name == "mnuViewRPO" && on && s.DatasetExists(".RPO")) {
    if (s.DatasetExists(".CRP")) {
      ReadRawPolygons(s);
    } else {
      // The centroids are computed first when only the polygons are there.
      s.user.SetPointer(Pointer::Hourglass);
      ComputeCentroids(s);
      ReadRawPolygons(s);
      s.user.SetPointer(Pointer::Arrow);
    }
    // Outside a load the reader's progress text would stay; the job's name is panel 1 at rest.
    s.user.Status(1, s.JobName);
  }
  Redraw(s);
}

}  // namespace tessel
