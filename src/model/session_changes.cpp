#include "model/session_changes.h"

#include <algorithm>

namespace tessel {

struct ChangeNotifierState {
  struct Entry {
    int id;
    Changes interest;
    std::shared_ptr<ChangeNotifier::Observer> observer;
  };
  std::vector<Entry> entries;
  int next = 1;

  void Remove(int id) {
    entries.erase(std::remove_if(entries.begin(), entries.end(), [id](const Entry& e) { return e.id == id; }),
                  entries.end());
  }
  bool Has(int id) const {
    return std::any_of(entries.begin(), entries.end(), [id](const Entry& e) { return e.id == id; });
  }
};

ChangeNotifier::Subscription::Subscription(Subscription&& other) noexcept
    : state_(std::move(other.state_)), id_(other.id_) {
  other.id_ = 0;
}

ChangeNotifier::Subscription& ChangeNotifier::Subscription::operator=(Subscription&& other) noexcept {
  if (this != &other) {
    Reset();
    state_ = std::move(other.state_);
    id_ = other.id_;
    other.id_ = 0;
  }
  return *this;
}

ChangeNotifier::Subscription::~Subscription() { Reset(); }

void ChangeNotifier::Subscription::Reset() {
  if (auto state = state_.lock()) state->Remove(id_);
  state_.reset();
  id_ = 0;
}

ChangeNotifier::ChangeNotifier() : state_(std::make_shared<ChangeNotifierState>()) {}

ChangeNotifier::Subscription ChangeNotifier::Observe(Changes interest, Observer observer) {
  const int id = state_->next++;
  state_->entries.push_back({id, interest, std::make_shared<Observer>(std::move(observer))});
  return Subscription(state_, id);
}

void ChangeNotifier::Notify(Changes what) {
  // The observers of this moment, each asked again before it runs: one may have ended another.
  std::vector<std::pair<int, std::shared_ptr<Observer>>> due;
  for (const auto& e : state_->entries) {
    if (e.interest & what) due.emplace_back(e.id, e.observer);
  }
  const auto state = state_;  // an observer may destroy the session that owns this notifier
  for (const auto& [id, observer] : due) {
    if (state->Has(id)) (*observer)(what);
  }
}

}  // namespace tessel
