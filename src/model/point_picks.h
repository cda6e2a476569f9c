#pragma once
// The hand-over of a point picked on the canvas to the dialog waiting for it. Each open dialog
// that can take a point registers here, saying which of its fields take one; a pick offers the
// identifier to the dialogs in one fixed order and the first that takes it gets it and comes to
// the front.

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessel {

class UserPort;
struct Session;

// The dialogs that take picked points, in the order they are offered one.
enum class PickDialog {
  Intersect,          // frmIntersect
  DoubleCorner,       // frmDblCor
  SubstitutePointId,  // frmSubPtId
  AddCalcs,           // frmADDCalcs
  NotWiz2,            // frmNotWiz2
  SelectedPoints,     // frmSelectedPoints
};

// A field that can take the identifier now: its text, and how to fill it.
struct PickField {
  std::string text;
  std::function<void(const std::string&)> set;
};

// What to do when every field of a dialog already holds something.
enum class WhenFull {
  LastTakes,  // the last field is overwritten
  Dropped,    // the identifier is dropped, and goes to no other dialog
};

struct PickTarget {
  PickDialog dialog = PickDialog::SelectedPoints;
  WhenFull whenFull = WhenFull::LastTakes;
  // The fields that take a point as the dialog stands now, in order. None: the dialog passes
  // the identifier on.
  std::function<std::vector<PickField>()> fields;
  // Brings the dialog to the front.
  std::function<void()> raise;
};

// Which of the fields takes the identifier: the first empty one (blanks count as empty), else
// the last or none, as `whenFull` says; -1 for none.
int ChoosePickField(const std::vector<std::string>& texts, WhenFull whenFull);

class PointPickDispatcher {
 public:
  // A dialog opening; the handle takes it away again.
  int Register(PickTarget target);
  void Unregister(int handle);

  // Offers a picked identifier: to the dialogs in the order of PickDialog (among dialogs of one
  // kind, the first registered first). The dialog that took or dropped it, or nothing when no
  // dialog has a field for it.
  std::optional<PickDialog> Offer(const std::string& id);

  bool Empty() const { return targets_.empty(); }

 private:
  struct Entry {
    int handle;
    PickTarget target;
  };
  std::vector<Entry> targets_;
  int next_ = 1;
};

inline constexpr const char* kStatusSelectPoint = "Select a point";
inline constexpr const char* kStatusPanZoom = "Pan/Zoom";

// The small pick button beside a dialog's fields: on, the canvas picks points ("Select a
// point"); off, it goes back to panning and zooming ("Pan/Zoom").
void SetPointPick(Session& session, bool on);

}  // namespace tessel
