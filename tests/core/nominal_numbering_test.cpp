// The nominal numbering of a township: section centres, the 25 positions of each section, the
// section found by its centre.

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "subdivision/nominal.h"

namespace tessel {
namespace {

// The centres, tier by tier from the north, as the surveyor's township plat numbers them.
const std::map<int, int> kCentres = {
    {1, 640640},  {2, 540640},  {3, 440640},  {4, 340640},  {5, 240640},  {6, 140640},
    {7, 140540},  {8, 240540},  {9, 340540},  {10, 440540}, {11, 540540}, {12, 640540},
    {13, 640440}, {14, 540440}, {15, 440440}, {16, 340440}, {17, 240440}, {18, 140440},
    {19, 140340}, {20, 240340}, {21, 340340}, {22, 440340}, {23, 540340}, {24, 640340},
    {25, 640240}, {26, 540240}, {27, 440240}, {28, 340240}, {29, 240240}, {30, 140240},
    {31, 140140}, {32, 240140}, {33, 340140}, {34, 440140}, {35, 540140}, {36, 640140}};

// Offsets of positions 1 to 25 from the centre, and section 1's identifiers.
const int kOffsets[26] = {0,      0,      60060,  59960,  -40040, -39940, 60000,  -40,    -40000,
                          60,     20000,  -20,    -20000, 20,     20020,  19980,  -20020, -19980,
                          60020,  59980,  19960,  -20040, -40020, -39980, -19940, 20060};
const int kSection1[26] = {0,      640640, 700700, 700600, 600600, 600700, 700640, 640600, 600640,
                           640700, 660640, 640620, 620640, 640660, 660660, 660620, 620620, 620660,
                           700660, 700620, 660600, 620600, 600620, 600660, 620700, 660700};

TEST(NominalTable, EverySectionAndPositionIsItsCentrePlusTheFixedOffset) {
  for (const auto& [section, centre] : kCentres) {
    EXPECT_EQ(SectionCentres()[static_cast<std::size_t>(section)], centre) << section;
    for (int p = 1; p <= 25; ++p) {
      EXPECT_EQ(NominalId(section, p), centre + kOffsets[p]) << "section " << section << " position " << p;
    }
  }
  for (int p = 1; p <= 25; ++p) EXPECT_EQ(NominalId(1, p), kSection1[p]) << p;
}

TEST(NominalTable, CornersOfTheTownshipEntriesOutsideTheTableAndNoTerminators) {
  EXPECT_EQ((std::vector{NominalId(36, 2), NominalId(31, 4), NominalId(6, 5)}), (std::vector{700200, 100100, 100700}));
  // Neighbours share their common corner.
  EXPECT_EQ(NominalId(1, 5), NominalId(2, 2));
  EXPECT_EQ((std::vector{SectionCentres()[0], SectionCentres()[37], NominalId(0, 1), NominalId(37, 1), NominalId(5, 0),
                         NominalId(5, 26)}),
            std::vector(6, 0));
  // The terminators are never nominal identifiers.
  for (int s = 1; s <= 36; ++s) {
    for (int p = 1; p <= 25; ++p) {
      const int id = NominalId(s, p);
      EXPECT_TRUE(id != 0 && id != 999999 && id != 999998) << id;
    }
  }
}

TEST(NominalTable, SectionOfCentreIsTheFirstMatchOfTheLoopOverSections) {
  auto brute = [](int centre) {
    for (int s = 1; s <= 36; ++s) {
      if (Nominals()[static_cast<std::size_t>(s)][1] == centre) return s;
    }
    return 0;
  };
  for (int id : {640640, 140140, 440340, 640141, 0, 999999, 700700, -640640}) {
    EXPECT_EQ(SectionOfCentre(id), brute(id)) << id;
  }
  for (const auto& [section, centre] : kCentres) EXPECT_EQ(SectionOfCentre(centre), section);
}

TEST(NominalTable, PositionNamesOfTheDialogs) {
  std::vector<std::string> names;
  for (int p : {2, 5, 11, 14, 17, 1, 25, -1}) names.push_back(PositionName(p));
  EXPECT_EQ(names, (std::vector<std::string>{"NE", "NW", "CS 1/16", "Northeast 1/16th", "Northwest 1/16th", "", "", ""}));
}

}  // namespace
}  // namespace tessel
