// The point store: lookups give the answer of a full walk over entries 1..PointCount, in which
// the last match wins and no match gives 0, however the entries were written.

#include <algorithm>
#include <random>

#include "model/point_store.h"
#include "test_support.h"

namespace tessel::test {
namespace {

TEST(PointStore, FindGivesTheLastMatchAmongTheCountedEntries) {
  PointStore store;
  EXPECT_EQ(store.Find("A"), 0);
  store.Set(1, "A", 1, 1);
  store.Set(2, "B", 2, 2);
  store.Set(3, "A", 3, 3);
  store.Set(4, " A", 4, 4);
  store.SetCount(4);
  EXPECT_EQ(store.Find("A"), 3);
  EXPECT_EQ(store.Find("B"), 2);
  EXPECT_EQ(store.Find(" A"), 4);  // leading blanks are part of an identifier
  EXPECT_EQ(store.Find("a"), 0);
  EXPECT_EQ(store.Find("C"), 0);

  // Entries above the count are not seen.
  store.SetCount(2);
  EXPECT_EQ(store.Find("A"), 1);
  EXPECT_EQ(store.Find(" A"), 0);

  // An overwritten entry no longer answers for its old identifier.
  store.SetCount(4);
  store.Set(3, "C", 3, 3);
  EXPECT_EQ(store.Find("A"), 1);
  EXPECT_EQ(store.Find("C"), 3);
  store.Set(1, "D", 1, 1);
  EXPECT_EQ(store.Find("A"), 0);
  EXPECT_EQ(store.PointIds(3), "C");
  EXPECT_DOUBLE_EQ(store.PointX(4), 4.0);
}

// The index against the walk it stands for, over random writes, counts and clears on a small
// alphabet so that identifiers repeat, are overwritten and vanish.
TEST(PointStore, FindAgreesWithAFullWalkOverRandomWrites) {
  std::mt19937 random(7);
  const std::vector<std::string> names = {"", "A", "B", " A", "100100", "C"};
  PointStore store;
  std::vector<std::string> ids(200);  // what the walk sees
  int count = 0;
  const auto walk = [&](const std::string& id) {
    int found = 0;
    for (int i = 1; i <= count; ++i) {
      if (ids[static_cast<std::size_t>(i)] == id) found = i;
    }
    return found;
  };
  for (int step = 0; step < 20000; ++step) {
    const int action = static_cast<int>(random() % 100);
    if (action < 70) {
      const int i = static_cast<int>(random() % 150) + 1;
      const std::string& id = names[random() % names.size()];
      store.Set(i, id, 0, 0);
      ids[static_cast<std::size_t>(i)] = id;
    } else if (action < 95) {
      count = static_cast<int>(random() % 160);
      store.SetCount(static_cast<std::int16_t>(count));
    } else if (action < 99) {
      const std::string& id = names[random() % names.size()];
      if (count >= 199) continue;
      EXPECT_EQ(store.Append(id, 0, 0), ++count);
      ids[static_cast<std::size_t>(count)] = id;
    } else {
      store.Clear();
      std::fill(ids.begin(), ids.end(), std::string());
      count = 0;
    }
    for (const std::string& id : names) ASSERT_EQ(store.Find(id), walk(id)) << "step " << step << " id '" << id << "'";
  }
}

TEST(PointStore, EmptyIdentifierFindsTheLastEmptyCountedEntry) {
  PointStore store;
  store.Set(1, "A", 1, 1);
  store.Set(2, "B", 2, 2);
  store.SetCount(2);
  EXPECT_EQ(store.Find(""), 0);
  // A count one too high, as the .LSA point reader leaves it: the unwritten entry is empty.
  store.SetCount(3);
  EXPECT_EQ(store.Find(""), 3);
  store.SetCount(6);
  EXPECT_EQ(store.Find(""), 6);
  // An emptied entry in the middle counts too, and the last one wins.
  store.SetCount(2);
  store.Set(1, "", 0, 0);
  EXPECT_EQ(store.Find(""), 1);
  store.Set(5, "E", 5, 5);  // leaves 3 and 4 empty below it
  store.SetCount(5);
  EXPECT_EQ(store.Find(""), 4);
  EXPECT_EQ(store.Find("E"), 5);
}

TEST(PointStore, AppendsKeepTheLookupInStep) {
  PointStore store;
  store.Set(1, "A", 1, 1);
  store.SetCount(1);
  EXPECT_EQ(store.Append("B", 2, 20), 2);
  EXPECT_EQ(store.Append("A", 3, 30), 3);
  EXPECT_EQ(store.PointCount(), 3);
  EXPECT_EQ(store.Find("A"), 3);
  EXPECT_EQ(store.Find("B"), 2);
  EXPECT_DOUBLE_EQ(store.PointY(2), 20.0);

  // From a count one too high the append lands above the empty entry.
  store.SetCount(4);
  EXPECT_EQ(store.Append("C", 5, 50), 5);
  EXPECT_EQ(store.Find(""), 4);
  EXPECT_EQ(store.Find("C"), 5);

  store.Clear();
  EXPECT_EQ(store.PointCount(), 0);
  EXPECT_EQ(store.Find("A"), 0);
  EXPECT_EQ(store.PointIds(1), "");
  EXPECT_DOUBLE_EQ(store.PointX(3), 0.0);
}

TEST(PointStore, AppendingFromMinusOneWritesEntryZero) {
  PointStore store;
  store.SetCount(-1);
  EXPECT_EQ(store.Append("P", 7, 8), 0);
  EXPECT_EQ(store.PointCount(), 0);
  EXPECT_EQ(store.PointIds(0), "P");
  EXPECT_DOUBLE_EQ(store.PointX(0), 7.0);
  EXPECT_EQ(store.Find("P"), 0);  // entry 0 is never searched
  EXPECT_EQ(store.Append("Q", 9, 9), 1);
  EXPECT_EQ(store.Find("Q"), 1);
}

TEST(PointStore, CountOverflowsPast32767AndTheTableEndsAt97200) {
  PointStore store;
  store.SetCount(32766);
  EXPECT_EQ(store.Append("LAST", 1, 1), 32767);
  ExpectFault(FaultKind::Overflow, [&] { store.Append("OVER", 2, 2); });
  EXPECT_EQ(store.PointCount(), 32767);
  EXPECT_EQ(store.Find("LAST"), 32767);
  EXPECT_EQ(store.Find("OVER"), 0);

  store.Set(PointStore::kBound, "EDGE", 0, 0);
  EXPECT_EQ(store.PointIds(97200), "EDGE");
  ExpectFault(FaultKind::Subscript, [&] { store.Set(97201, "OUT", 0, 0); });
}

}  // namespace
}  // namespace tessel::test
