// Keeping labels apart: the grid-filed space decides every label as a plain scan of all the
// labels taken before it would.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "model/label_space.h"

namespace tessel {
namespace {

TEST(LabelSpace, TakesWhatOverlapsNothingTakenBefore) {
  LabelSpace space(16);
  EXPECT_TRUE(space.Take({0, 0, 40, 12}));
  EXPECT_FALSE(space.Take({39, 11, 5, 5})) << "one shared pixel is an overlap";
  EXPECT_TRUE(space.Take({40, 0, 10, 12})) << "touching at the edge is not";
  EXPECT_TRUE(space.Take({0, 12, 10, 12}));
  EXPECT_FALSE(space.Take({-30, -5, 31, 6})) << "left of and above the origin too";
  EXPECT_TRUE(space.Take({-30, -5, 30, 5}));
  EXPECT_TRUE(space.Take({5, 5, 0, 9})) << "an empty box overlaps nothing";
  EXPECT_EQ(space.size(), 4u);
  space.Clear();
  EXPECT_TRUE(space.Take({39, 11, 5, 5}));
}

// Random labels, small and wide, some spanning many cells, on and around a small device.
TEST(LabelSpace, DecidesAsAScanOfEveryLabelTaken) {
  std::mt19937 random(20261123);
  for (const int cell : {1, 7, 64, 1000}) {
    std::uniform_int_distribution<int> place(-300, 900), narrow(0, 60), wide(0, 700), height(0, 20);
    LabelSpace space(cell);
    std::vector<LabelBox> taken;
    int refused = 0;
    for (int k = 0; k < 3000; ++k) {
      const LabelBox box{place(random), place(random), k % 50 == 0 ? wide(random) : narrow(random), height(random)};
      bool free = true;
      for (const LabelBox& before : taken) free = free && !before.Overlaps(box);
      ASSERT_EQ(space.Take(box), free) << "cell " << cell << ", label " << k;
      if (free && !box.Empty()) taken.push_back(box);
      refused += free ? 0 : 1;
    }
    EXPECT_EQ(space.size(), taken.size());
    EXPECT_GT(refused, 1000) << "the labels crowd, so the test decides both ways";
    EXPECT_GT(taken.size(), 50u);
  }
}

}  // namespace
}  // namespace tessel
