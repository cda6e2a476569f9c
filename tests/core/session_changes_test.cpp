// The session's change notes: who hears what, and observers that end their own or another's
// observation, or outlive the session, while changes are told.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "model/session_changes.h"

namespace tessel {
namespace {

TEST(SessionChanges, EachObserverHearsWhatConcernsItUntilItsSubscriptionEnds) {
  ChangeNotifier notifier;
  std::vector<std::string> heard;
  auto parcels = notifier.Observe(Change::Parcels | Change::Selection, [&](Changes c) {
    heard.push_back("parcels " + std::to_string(c));
  });
  auto cama = notifier.Observe(Change::Cama, [&](Changes) { heard.push_back("cama"); });
  notifier.Notify(Change::Selection);
  notifier.Notify(Change::Cama | Change::Parcels);
  notifier.Notify(Change::Calculations);
  cama.Reset();
  notifier.Notify(Change::Cama);
  EXPECT_EQ(heard, (std::vector<std::string>{"parcels " + std::to_string(Change::Selection),
                                             "parcels " + std::to_string(Change::Cama | Change::Parcels), "cama"}));
}

TEST(SessionChanges, ObserversMayEndObservationsWhileBeingToldAndOutliveTheNotifier) {
  auto notifier = std::make_unique<ChangeNotifier>();
  int first = 0, second = 0;
  ChangeNotifier::Subscription later;
  // The first ends the second's observation (a window closing another): the second hears nothing.
  auto earlier = notifier->Observe(Change::Job, [&](Changes) {
    ++first;
    later.Reset();
  });
  later = notifier->Observe(Change::Job, [&](Changes) { ++second; });
  notifier->Notify(Change::Job);
  notifier->Notify(Change::Job);
  EXPECT_EQ(first, 2);
  EXPECT_EQ(second, 0);
  // An observer that ends its own observation, and a new one made while told.
  ChangeNotifier::Subscription self;
  ChangeNotifier::Subscription made;
  int selfCount = 0, madeCount = 0;
  self = notifier->Observe(Change::Stores, [&](Changes) {
    ++selfCount;
    self.Reset();
    made = notifier->Observe(Change::Stores, [&](Changes) { ++madeCount; });
  });
  notifier->Notify(Change::Stores);
  notifier->Notify(Change::Stores);
  EXPECT_EQ(selfCount, 1);
  EXPECT_EQ(madeCount, 1);
  // Subscriptions ended after the notifier is gone do nothing.
  notifier.reset();
  earlier.Reset();
  made.Reset();
}

}  // namespace
}  // namespace tessel
