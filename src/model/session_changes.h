#pragma once
// What changed in a session, told to whoever shows it. The desktop's tool windows are views of
// the session: each observes the kinds of data it shows and shows them anew when they change, so
// that no window keeps what was true when it opened. The headless code says what it changed; it
// never knows which windows are open.

#include <functional>
#include <memory>
#include <vector>

namespace tessel {

// The kinds of session data a change concerns; one change can concern several.
struct Change {
  enum : unsigned {
    // The job is closed or replaced by another: the windows of the job close.
    Job = 1u << 0,
    // Points, control stations, the network, chain and record lines, centroids, omissions.
    Stores = 1u << 1,
    Surveys = 1u << 2,
    Parcels = 1u << 3,
    // The pick lists: points, parcels and link records, record lines.
    Selection = 1u << 4,
    // The link tables and what the CAMA windows show.
    Cama = 1u << 5,
    // The post-adjustment calculation lists.
    Calculations = 1u << 6,
  };
};
using Changes = unsigned;
// Everything a load fills.
inline constexpr Changes kLoadedData = Change::Stores | Change::Surveys | Change::Parcels | Change::Selection;
inline constexpr Changes kAllData = kLoadedData | Change::Cama | Change::Calculations;

class ChangeNotifier {
 public:
  using Observer = std::function<void(Changes)>;

  // Ends its observation when destroyed; it may outlive the notifier.
  class Subscription {
   public:
    Subscription() = default;
    Subscription(Subscription&& other) noexcept;
    Subscription& operator=(Subscription&& other) noexcept;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription();
    void Reset();

   private:
    friend class ChangeNotifier;
    Subscription(std::weak_ptr<struct ChangeNotifierState> state, int id) : state_(std::move(state)), id_(id) {}
    std::weak_ptr<struct ChangeNotifierState> state_;
    int id_ = 0;
  };

  ChangeNotifier();
  // `observer` runs for every change that concerns one of `interest`, with the kinds changed.
  [[nodiscard]] Subscription Observe(Changes interest, Observer observer);
  // Tells every observer interested. An observer may end its own or another's observation, or
  // observe anew, while it runs.
  void Notify(Changes what);

 private:
  std::shared_ptr<struct ChangeNotifierState> state_;
};

}  // namespace tessel
