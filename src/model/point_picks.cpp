#include "model/point_picks.h"

#include <algorithm>

#include "model/session.h"
#include "model/text.h"

namespace tessel {

int ChoosePickField(const std::vector<std::string>& texts, WhenFull whenFull) {
  for (std::size_t k = 0; k < texts.size(); ++k) {
    if (TrimView(texts[k]).empty()) return static_cast<int>(k);
  }
  if (texts.empty() || whenFull == WhenFull::Dropped) return -1;
  return static_cast<int>(texts.size()) - 1;
}

int PointPickDispatcher::Register(PickTarget target) {
  const int handle = next_++;
  targets_.push_back({handle, std::move(target)});
  return handle;
}

void PointPickDispatcher::Unregister(int handle) {
  targets_.erase(std::remove_if(targets_.begin(), targets_.end(), [&](const Entry& e) { return e.handle == handle; }),
                 targets_.end());
}

std::optional<PickDialog> PointPickDispatcher::Offer(const std::string& id) {
  // A copy: filling a field may open or close a dialog, which changes the registrations.
  std::vector<Entry> order = targets_;
  std::stable_sort(order.begin(), order.end(), [](const Entry& a, const Entry& b) {
    return static_cast<int>(a.target.dialog) < static_cast<int>(b.target.dialog);
  });
  for (const Entry& entry : order) {
    const PickTarget& target = entry.target;
    std::vector<PickField> fields = target.fields ? target.fields() : std::vector<PickField>{};
    if (fields.empty()) continue;
    std::vector<std::string> texts;
    texts.reserve(fields.size());
    for (const PickField& field : fields) texts.push_back(field.text);
    const int k = ChoosePickField(texts, target.whenFull);
    if (k >= 0 && fields[static_cast<std::size_t>(k)].set) fields[static_cast<std::size_t>(k)].set(id);
    if (target.raise) target.raise();
    return target.dialog;
  }
  return std::nullopt;
}

void SetPointPick(Session& session, bool on) {
  Selection& selection = session.selection;
  selection.PointPickActive = on;
  session.ToolMode = on ? ToolMode::PickPoints : ToolMode::ZoomPan;
  session.user.SetChecked("Select", on);
  session.user.SetChecked("Centroid", false);
  session.user.SetChecked("Zoom", !on);
  session.user.Status(1, on ? kStatusSelectPoint : kStatusPanZoom);
}

}  // namespace tessel
