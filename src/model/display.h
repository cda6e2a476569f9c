#pragma once
// What the load sequence asks of the viewer: painting lives there, and the core only says when.

namespace tessel {

class Display {
 public:
  virtual ~Display() = default;
  // Clears the canvas, fits the view to the job's extents and paints every layer.
  virtual void RefreshViewAfterExtents() = 0;
  // Paints every layer in the present view.
  virtual void RefreshView() = 0;
  virtual void ClearCanvas() = 0;
};

}  // namespace tessel
