// .COR and the control and points sections of .LSA: the readers of the point store and the
// .COR writer.

#include <string>
#include <vector>

#include "core/coordinate_files.h"
#include "core/text.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class CoordinateFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
  std::vector<std::string> Panel1() { return user.status[1]; }
};

TEST_F(CoordinateFiles, ReadCorStoresFieldsAndExtentsThenVerifies) {
  WriteJob("T1N2E.COR", {CorRow("100100", "1000.000", "2000.000"), CorRow("  A7", "1500.5", "1800.25"),
                         CorRow("100300   ", "1200", "2500.125")},
           Eol::Lf);
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 3);
  EXPECT_EQ(session.points.PointIds(1), "100100");
  EXPECT_EQ(session.points.PointIds(2), "  A7");  // right-trimmed, leading blanks kept
  EXPECT_EQ(session.points.PointIds(3), "100300");
  EXPECT_DOUBLE_EQ(session.points.PointX(2), 1500.5);
  EXPECT_DOUBLE_EQ(session.points.PointY(2), 1800.25);
  EXPECT_DOUBLE_EQ(session.points.PointY(3), 2500.125);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1000.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 1500.5);
  EXPECT_DOUBLE_EQ(session.extents.MinY, 1800.25);
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 2500.125);
  EXPECT_EQ(Panel1(), (std::vector<std::string>{"Reading Coordinates", "Verifying LSA Coordinates"}));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(CoordinateFiles, ReadCorExtentsStartFromTheirSentinelsAndZeroTakesPart) {
  // Column 1 is not read, and text behind column 45 is not part of Y.
  std::string line = CorRow("BIG", "60000000.000", "100.000");
  line[0] = 'X';
  line += "999";
  WriteJob("T1N2E.COR", {line});
  ReadCor(session);
  EXPECT_EQ(session.points.PointIds(1), "BIG");
  EXPECT_DOUBLE_EQ(session.points.PointY(1), 100.0);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 5.0e7);  // nothing below the sentinel
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 6.0e7);
  EXPECT_DOUBLE_EQ(session.extents.MinY, 100.0);

  WriteJob("T1N2E.COR", {CorRow("ORIGIN", "0.000", "0.000"), CorRow("P", "10", "abc")});
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), 2);
  EXPECT_DOUBLE_EQ(session.points.PointY(2), 0.0);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 0.0);
  EXPECT_DOUBLE_EQ(session.extents.MinY, 0.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 10.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 0.0);
}

TEST_F(CoordinateFiles, EmptyCorGivesNoPointsAndMissingCorGivesMinusOne) {
  WriteJobBytes("T1N2E.COR", "");
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), 0);

  // With .LSA points to merge, the empty file's count of 0 lets them start at entry 1.
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("C1", "1", "1")}, {LsaLineRow("C1", "C1")},
                                {LsaPointRow("L1", "11.0", "12.0"), LsaPointRow("L2", "21.0", "22.0")}));
  session.points.Clear();
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), 2);
  EXPECT_EQ(session.points.PointIds(1), "L1");

  // A missing .COR takes the same route from a count of 0: -1, so the first merged point goes
  // to entry 0.
  std::filesystem::remove(jobPath / "T1N2E.COR");
  session.points.Clear();
  session.extents = JobExtents{1, 2, 3, 4};
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), 1);
  EXPECT_EQ(session.points.PointIds(0), "L1");
  EXPECT_EQ(session.points.PointIds(1), "L2");
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1.0);  // untouched
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 4.0);

  std::filesystem::remove(jobPath / "T1N2E.LSA");
  session.points.Clear();
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), -1);
}

TEST_F(CoordinateFiles, VerifyAppendsOnlyPointsThatLsaAloneKnows) {
  WriteJob("T1N2E.COR", {CorRow("A", "100", "100"), CorRow("B", "200", "200")});
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("A", "1", "1")}, {LsaLineRow("A", "B")},
                                {LsaPointRow("B", "999.0", "999.0"), LsaPointRow("C", "300.0", "310.0"),
                                 LsaPointRow("", "400.0", "400.0"), LsaPointRow("D", "90000.0", "91000.0")}));
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 4);
  EXPECT_EQ(session.points.PointIds(3), "C");
  EXPECT_EQ(session.points.PointIds(4), "D");
  EXPECT_DOUBLE_EQ(session.points.PointX(2), 200.0);  // .COR keeps its coordinates
  EXPECT_DOUBLE_EQ(session.points.PointX(3), 300.0);
  EXPECT_DOUBLE_EQ(session.points.PointY(3), 310.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 200.0);  // the merge leaves the extents alone
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 200.0);
}

TEST_F(CoordinateFiles, VerifyMergesNoMoreThanTenThousandLsaPoints) {
  std::vector<std::string> points;
  for (int i = 1; i <= 10005; ++i) points.push_back(LsaPointRow(std::string("P").append(std::to_string(i)), "1.0", "2.0"));
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("P1", "1", "1")}, {LsaLineRow("P1", "P2")}, points));
  WriteJob("T1N2E.COR", {CorRow("P1", "1", "2")});
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 10000);
  EXPECT_EQ(session.points.PointIds(2), "P2");
  EXPECT_EQ(session.points.PointIds(10000), "P10000");
  EXPECT_EQ(session.points.Find("P10001"), 0);
}

TEST_F(CoordinateFiles, ReadLsaPointsLeavesTheCountOneTooHigh) {
  WriteJob("T1N2E.LSA",
           LsaFile({ControlRow("S1", "5", "5")}, {LsaLineRow("S1", "P2")},
                   {LsaPointRow("P1", "20000000.50", "2000.25"), LsaPointRow(" P2", "30000000.00", "1500.0"),
                    LsaPointRow("P3", "25000000.00", "2500.0")}),
           Eol::Lf);
  ReadLsaPoints(session);
  ASSERT_EQ(session.points.PointCount(), 4);
  EXPECT_EQ(session.points.PointIds(2), " P2");
  EXPECT_EQ(session.points.PointIds(4), "");
  EXPECT_DOUBLE_EQ(session.points.PointX(1), 20000000.5);
  EXPECT_DOUBLE_EQ(session.points.PointY(1), 2000.25);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1.0e7);  // its own sentinel, not that of .COR
  EXPECT_DOUBLE_EQ(session.extents.MaxX, 3.0e7);
  EXPECT_DOUBLE_EQ(session.extents.MinY, 1500.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 2500.0);
  EXPECT_EQ(Panel1(), std::vector<std::string>{"Reading LSA Coordinates"});
}

TEST_F(CoordinateFiles, ReadControlCountsNextFreeAndAppendsUnknownStations) {
  WriteJob("T1N2E.COR", {CorRow("S1", "100", "100"), CorRow("P9", "300", "300")});
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("S1", "111.5", "112.5"), ControlRow("   S2  ", "5000", "6000"),
                                 ControlRow("S3", "-50", "-60")},
                                {LsaLineRow("S1", "S2")}, {LsaPointRow("P9", "1", "1")}));
  ReadCor(session);
  const JobExtents before = session.extents;
  user.status.clear();
  ReadControl(session);
  ASSERT_EQ(session.control.ControlCount, 4);
  EXPECT_EQ(session.control.Control.get(1).id, "S1");
  EXPECT_EQ(session.control.Control.get(2).id, "S2");  // trimmed on both sides
  EXPECT_DOUBLE_EQ(session.control.Control.get(1).x, 111.5);
  EXPECT_DOUBLE_EQ(session.control.Control.get(1).y, 112.5);
  ASSERT_EQ(session.points.PointCount(), 4);
  EXPECT_EQ(session.points.PointIds(3), "S2");
  EXPECT_EQ(session.points.PointIds(4), "S3");
  EXPECT_DOUBLE_EQ(session.points.PointX(3), 5000.0);
  EXPECT_DOUBLE_EQ(session.points.PointY(4), -60.0);
  EXPECT_DOUBLE_EQ(session.points.PointX(1), 100.0);  // S1 keeps its .COR coordinates
  EXPECT_DOUBLE_EQ(session.extents.MaxX, before.MaxX);
  EXPECT_DOUBLE_EQ(session.extents.MinY, before.MinY);
  EXPECT_EQ(Panel1(), std::vector<std::string>{"Reading Control Coordinates"});

  std::filesystem::remove(jobPath / "T1N2E.LSA");
  session.control.Clear();
  ReadControl(session);
  EXPECT_EQ(session.control.ControlCount, 0);
}

TEST_F(CoordinateFiles, NonDigitLastCharacterBeforeThePointsStopsEveryLsaReader) {
  std::vector<std::string> lsa = LsaFile({ControlRow("S1", "1", "1"), ControlRow("S2", "2", "2")},
                                         {LsaLineRow("S1", "S2")}, {LsaPointRow("P1", "10", "10")});
  lsa[1].back() = 'x';  // the second station, which would close section 1
  WriteJob("T1N2E.LSA", lsa);
  WriteJob("T1N2E.COR", {CorRow("A", "1", "1")});
  ReadCor(session);
  EXPECT_EQ(session.points.PointCount(), 1);  // nothing merged
  ReadControl(session);
  EXPECT_EQ(session.control.ControlCount, 2);  // S1 read, no station appended
  EXPECT_EQ(session.points.PointCount(), 1);

  lsa[1].back() = '1';
  lsa[3].back() = ' ';  // section 3
  WriteJob("T1N2E.LSA", lsa);
  session.points.Clear();
  session.extents = JobExtents{1, 2, 3, 4};
  ReadLsaPoints(session);
  EXPECT_EQ(session.points.PointCount(), 0);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1.0);
}

TEST_F(CoordinateFiles, WriterPutsColumnsTwoTwentyOneThirtySixAndDropsZeroCoordinates) {
  SetPoints({{"100100", 1000.12345, 2000.5},
             {"XZERO", 0.0004, 55.0},
             {"YZERO", 12.0, 0.0},
             {"TINY", 0.00049, -7.25},
             {"NORTH", 1234567.8915, 7654321.129},
             {"", 0.0, 0.0}});
  WriteCorFromStore(session);
  EXPECT_EQ(ReadJob("T1N2E.COR"), Text({Row({{2, "100100"}, {21, "1000.123"}, {36, "2000.500"}}),
                                        Row({{2, "TINY"}, {21, "0.001"}, {36, "-7.250"}}),
                                        Row({{2, "NORTH"}, {21, "1234567.892"}, {36, "7654321.129"}})}));

  // Read back, Y stops at column 45: the last digit of a seven-digit Y is not seen.
  ReadCor(session);
  ASSERT_EQ(session.points.PointCount(), 3);
  EXPECT_EQ(session.points.PointIds(3), "NORTH");
  EXPECT_DOUBLE_EQ(session.points.PointX(3), 1234567.892);
  EXPECT_DOUBLE_EQ(session.points.PointY(3), 7654321.12);
  EXPECT_DOUBLE_EQ(session.points.PointY(1), 2000.5);
  EXPECT_DOUBLE_EQ(session.points.PointX(2), 0.001);
}

}  // namespace
}  // namespace tessel::test
