// The session's change notes: who hears what, and observers that end their own or another's
// observation, or outlive the notifier, while changes are told.

#include <gtest/gtest.h>

#include <memory>

#include "model/session_changes.h"

namespace tessel {
namespace {

TEST(SessionChanges, ObserversMayEndObservationsWhileBeingToldAndOutliveTheNotifier) {
  auto notifier = std::make_unique<ChangeNotifier>();
  // Only the kinds an observer asked for reach it.
  Changes heard = 0;
  auto cama = notifier->Observe(Change::Cama, [&](Changes c) { heard |= c; });
  notifier->Notify(Change::Selection);
  notifier->Notify(Change::Cama | Change::Parcels);
  EXPECT_EQ(heard, Change::Cama | Change::Parcels);
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
