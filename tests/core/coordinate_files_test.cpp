// The point store and its files: lookups that answer as a full walk over the entries, .COR and
// the control and points sections of .LSA, and the .COR writer.

#include <random>
#include <string>
#include <vector>

#include "datasets/coordinate_files.h"
#include "model/point_store.h"
#include "model/text.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;

class CoordinateFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
  // "id x y" of entries `first` to `last`, or to PointCount.
  Strings Points(int first = 1) const { return Points(first, session.points.PointCount()); }
  Strings Points(int first, int last) const {
    Strings out;
    for (int i = first; i <= last; ++i) {
      out.push_back(session.points.PointIds(i) + " " + std::to_string(session.points.PointX(i)) + " " +
                    std::to_string(session.points.PointY(i)));
    }
    return out;
  }
  // MinX, MaxX, MinY, MaxY.
  std::string Extents() const {
    const JobExtents& e = session.extents;
    return std::to_string(e.MinX) + " " + std::to_string(e.MaxX) + " " + std::to_string(e.MinY) + " " +
           std::to_string(e.MaxY);
  }
  void WriteLsaPoints(const Strings& points, Eol eol = Eol::CrLf) const {
    WriteJob("T1N2E.LSA", LsaFile({ControlRow("S1", "1", "1")}, {LsaLineRow("S1", "S1")}, points), eol);
  }
};

TEST_F(CoordinateFiles, ReadCorStoresFieldsAndExtentsFromTheirSentinels) {
  // Column 1 is not read, and text behind column 45 is not part of Y.
  std::string last = CorRow("100300   ", "1200", "2500.125") + "999";
  last[0] = 'X';
  WriteJob("T1N2E.COR", {CorRow("100100", "1000.000", "2000.000"), CorRow("  A7", "1500.5", "1800.25"), last,
                         CorRow("P", "60000000.000", "abc")},
           Eol::Lf);
  ReadCor(session);
  // Identifiers are right-trimmed, their leading blanks kept.
  EXPECT_EQ(Points(), (Strings{"100100 1000.000000 2000.000000", "  A7 1500.500000 1800.250000",
                               "100300 1200.000000 2500.125000", "P 60000000.000000 0.000000"}));
  // MinX starts from 50000000: nothing lies below it; zero takes part.
  EXPECT_EQ(Extents(), "1000.000000 60000000.000000 0.000000 2500.125000");
  EXPECT_EQ(user.status[1], (Strings{"Reading Coordinates", "Verifying LSA Coordinates"}));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(CoordinateFiles, EmptyCorGivesNoPointsAndMissingCorGivesMinusOne) {
  // With .LSA points to merge, the empty file's count of 0 lets them start at entry 1.
  WriteLsaPoints({LsaPointRow("L1", "11.0", "12.0"), LsaPointRow("L2", "21.0", "22.0")});
  WriteJobBytes("T1N2E.COR", "");
  ReadCor(session);
  EXPECT_EQ(Points(), (Strings{"L1 11.000000 12.000000", "L2 21.000000 22.000000"}));

  // A missing .COR takes the same route from a count of -1, so the first merged point goes to
  // entry 0; the extents are left alone.
  std::filesystem::remove(jobPath / "T1N2E.COR");
  session.points.Clear();
  session.extents = JobExtents{1, 2, 3, 4};
  ReadCor(session);
  EXPECT_EQ(Points(0, 1), (Strings{"L1 11.000000 12.000000", "L2 21.000000 22.000000"}));
  EXPECT_EQ(Extents(), "1.000000 2.000000 3.000000 4.000000");
  std::filesystem::remove(jobPath / "T1N2E.LSA");
  session.points.Clear();
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), -1);
}

TEST_F(CoordinateFiles, VerifyAppendsOnlyPointsThatLsaAloneKnowsAndNoMoreThanTenThousand) {
  WriteJob("T1N2E.COR", {CorRow("A", "100", "100"), CorRow("B", "200", "200")});
  WriteLsaPoints({LsaPointRow("B", "999.0", "999.0"), LsaPointRow("C", "300.0", "310.0"),
                  LsaPointRow("", "400.0", "400.0"), LsaPointRow("D", "90000.0", "91000.0")});
  ReadCor(session);
  // .COR keeps its coordinates, and the merge leaves the extents alone.
  EXPECT_EQ(Points(2), (Strings{"B 200.000000 200.000000", "C 300.000000 310.000000", "D 90000.000000 91000.000000"}));
  EXPECT_EQ(Extents(), "100.000000 200.000000 100.000000 200.000000");

  Strings points;
  for (int i = 1; i <= 10005; ++i) points.push_back(LsaPointRow(std::string("P").append(std::to_string(i)), "1.0", "2.0"));
  WriteLsaPoints(points);
  WriteJob("T1N2E.COR", {CorRow("P1", "1", "2")});
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 10000);
  EXPECT_EQ(session.points.PointIds(10000), "P10000");
  EXPECT_EQ(session.points.Find("P10001"), 0);
}

TEST_F(CoordinateFiles, ReadLsaPointsLeavesTheCountOneTooHighAndKeepsItsOwnSentinel) {
  WriteLsaPoints({LsaPointRow("P1", "20000000.50", "2000.25"), LsaPointRow(" P2", "30000000.00", "1500.0")}, Eol::Lf);
  ReadLsaPoints(session);
  EXPECT_EQ(Points(), (Strings{"P1 20000000.500000 2000.250000", " P2 30000000.000000 1500.000000", " 0.000000 0.000000"}));
  EXPECT_EQ(Extents(), "10000000.000000 30000000.000000 1500.000000 2000.250000");
}

TEST_F(CoordinateFiles, WriterPutsColumnsTwoTwentyOneThirtySixAndDropsZeroCoordinates) {
  SetPoints({{"100100", 1000.12345, 2000.5}, {"XZERO", 0.0004, 55.0}, {"YZERO", 12.0, 0.0},
             {"TINY", 0.00049, -7.25}, {"NORTH", 1234567.8915, 7654321.129}, {"", 0.0, 0.0}});
  WriteCorFromStore(session);
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({Row({{2, "100100"}, {21, "1000.123"}, {36, "2000.500"}}),
                                        Row({{2, "TINY"}, {21, "0.001"}, {36, "-7.250"}}),
                                        Row({{2, "NORTH"}, {21, "1234567.892"}, {36, "7654321.129"}})}));
  // Read back, Y stops at column 45: the last digit of a seven-digit Y is not seen.
  ReadCor(session);
  EXPECT_EQ(Points(), (Strings{"100100 1000.123000 2000.500000", "TINY 0.001000 -7.250000",
                               "NORTH 1234567.892000 7654321.120000"}));
}

// The walk the index stands for.
int WalkFind(const PointStore& store, const std::string& id) {
  int found = 0;
  for (int i = 1; i <= store.PointCount(); ++i) {
    if (store.PointIds(i) == id) found = i;
  }
  return found;
}

TEST(PointStore, FindAnswersAsTheWalkThroughSetsAppendsAndCountChanges) {
  const std::vector<std::string> ids = {"A", "B", " A", "", "a", "100100", "100100 "};
  std::mt19937 random(7);
  const auto pick = [&](std::size_t n) { return static_cast<int>(random() % n); };
  PointStore store;
  for (int round = 0; round < 4000; ++round) {
    switch (pick(6)) {
      case 0:
      case 1:
        store.Set(1 + pick(60), ids[static_cast<std::size_t>(pick(ids.size()))], round, -round);
        break;
      case 2:
        if (store.PointCount() < 70) store.Append(ids[static_cast<std::size_t>(pick(ids.size()))], round, 0);
        break;
      case 3:
        store.SetCount(static_cast<std::int16_t>(pick(72) - 1));
        break;
      case 4:
        if (round % 500 == 0) store.Clear();
        break;
      default:
        break;
    }
    for (const std::string& id : ids) ASSERT_EQ(store.Find(id), WalkFind(store, id)) << "round " << round << " '" << id << "'";
  }
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
