#pragma once
// The view of the canvas and the check marks of the View menu, which decide what is painted.

namespace tessel {

struct ViewRect {
  float left = 0.0f;
  float top = 0.0f;
  float right = 0.0f;
  float bottom = 0.0f;
};

struct ViewState {
  // The canvas scale: a world point (x, y) lands at pixel ((x - ScaleLeft) / ScaleWidth * width,
  // (y - ScaleTop) / ScaleHeight * height); ScaleHeight is negative.
  float ScaleLeft = 0.0f;
  float ScaleTop = 0.0f;
  float ScaleWidth = 1.0f;
  float ScaleHeight = -1.0f;
  // The nominal window of the present view; top is the larger y.
  float ViewLeft = 0.0f;
  float ViewTop = 0.0f;
  float ViewRight = 0.0f;
  float ViewBottom = 0.0f;
  float SpanX = 0.0f;
  float SpanY = 0.0f;
  ViewRect PreviousView;
  ViewRect SavedViews[5];  // slots 1 to 4; a slot whose left is 0 is empty
  int SavedViewSlot = 0;
  // 0 or -1: the next drag on the canvas is a zoom window.
  int ZoomWindowArmed = 0;

  // True once a view has been set, which a reload keeps.
  bool EverSet() const { return ViewLeft != 0.0f || ViewTop != 0.0f; }
  // Forgets the view and the saved views, as a close does.
  void Reset() {
    for (auto& slot : SavedViews) slot.left = 0.0f;
    ViewLeft = 0.0f;
    ViewTop = 0.0f;
  }
};

// The layers of the View menu, by the names of their entries.
struct ViewChecks {
  bool mnuOptionsControl = false;
  bool mnuViewPoints = false;
  bool mnuOptionsID = false;
  bool mnuOptionsLinesLXN = false;
  bool mnuOptionsLinesLSA = false;
  bool mnuViewLinesRaw = false;
  bool mnuOptionsMultiAtt = false;
  bool mnuOptionsParcel = false;
  bool mnuOptionsParcelBrief = false;
  bool mnuOptionsParcelDetail = false;
  bool mnuOptionsParcelFull = false;
  bool mnuViewCama = false;
  bool mnuViewRPO = false;
  // Every label drawn even where it overprints another; off, the labels of a layer are kept apart.
  bool mnuViewAllLabels = false;
};

// Back and fore colours of a background mode: 1 black on white, 2 white on black.
inline unsigned BackColour(int backgroundMode) { return backgroundMode == 2 ? 0x000000u : 0xFFFFFFu; }
inline unsigned ForeColour(int backgroundMode) { return backgroundMode == 2 ? 0xFFFFFFu : 0x000000u; }

}  // namespace tessel
