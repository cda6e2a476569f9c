// The line stores: network lines of .LSA, display chains of .LXN, and the record lines of .raw
// with the temporary points of stations that have no coordinates.

#include <cmath>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/line_files.h"
#include "surveys/survey_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class LineFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }

  // A job in feet (unit code 2) or metres (1), with the given surveys and record lines.
  void RawJob(int unitCode, const std::vector<std::string>& sid, const std::vector<std::string>& records) {
    WriteJob("T1N2E.def", DefFile(unitCode));
    if (!sid.empty()) {
      WriteJob("T1N2E.sid", sid);
      ReadSurveys(session);
    }
    WriteJob("T1N2E.raw", RawFile(records));
    user.status.clear();
  }

  void ExpectPoint(int i, const std::string& id, double x, double y) {
    EXPECT_EQ(session.points.PointIds(i), id) << "entry " << i;
    EXPECT_DOUBLE_EQ(session.points.PointX(i), x) << id;
    EXPECT_DOUBLE_EQ(session.points.PointY(i), y) << id;
  }

  void ExpectEnds(int line, int from, int to) {
    EXPECT_EQ(session.raw.RawLineEnds.get(line).from, from) << "line " << line;
    EXPECT_EQ(session.raw.RawLineEnds.get(line).to, to) << "line " << line;
  }
};

TEST_F(LineFiles, LsaLinesMatchBothEndsWithTheLastEntryAndZeroForUnknown) {
  SetPoints({{"A", 0, 0}, {"B", 0, 0}, {"C", 0, 0}, {"A", 1, 1}});
  WriteJob("T1N2E.LSA", LsaFile({ControlRow("A", "1", "1")},
                                {LsaLineRow("A", "B"), LsaLineRow("  B", "X"), LsaLineRow("C", "  A  ")},
                                {LsaPointRow("A", "1", "1")}));
  ReadLsaLines(session);
  ASSERT_EQ(session.lsa.LsaLineCount, 4);
  const std::pair<int, int> expected[] = {{4, 2}, {2, 0}, {3, 4}};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(session.lsa.LsaLineEnds.get(i).from, expected[i - 1].first) << "line " << i;
    EXPECT_EQ(session.lsa.LsaLineEnds.get(i).to, expected[i - 1].second) << "line " << i;
  }
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading LSA Lines"});

  // A line without a digit at its end stops the read; what came before stays.
  std::vector<std::string> lsa = LsaFile({ControlRow("A", "1", "1")}, {LsaLineRow("A", "B"), LsaLineRow("B", "C"),
                                                                       LsaLineRow("C", "A")},
                                         {LsaPointRow("A", "1", "1")});
  lsa[2].back() = '-';
  WriteJob("T1N2E.LSA", lsa);
  session.lsa.Clear();
  ReadLsaLines(session);
  EXPECT_EQ(session.lsa.LsaLineCount, 2);
  EXPECT_EQ(session.lsa.LsaLineEnds.get(1).from, 4);
  EXPECT_EQ(session.lsa.LsaLineEnds.get(2).from, 0);
}

TEST_F(LineFiles, LxnChainsGiveSegmentsAndSkipThoseEndingOnZero) {
  SetPoints({{"100100", 0, 0}, {"100200", 0, 0}, {"100300", 0, 0}, {"200100", 0, 0}, {"200200", 0, 0},
             {"300100", 0, 0}, {"000000", 0, 0}, {"300300", 0, 0}, {"300400", 0, 0}, {"400100", 0, 0},
             {"400200", 0, 0}});
  WriteJob("T1N2E.LXN", {"LINE CHAINS", "  TWP 1N 2E", "3", "100100100200100300", "4",
                         "300100000000300300300400", "999999", "2", "200100200200",
                         "x",  // a bad count: the one before stays
                         "400100400200", "999999"});
  ReadLxn(session);
  EXPECT_EQ(session.lxn.LxnRecordCount, 5);
  ASSERT_EQ(session.lxn.LxnSegmentCount, 7);
  const std::pair<int, int> expected[] = {{1, 2}, {2, 3}, {0, 0}, {7, 8}, {8, 9}, {4, 5}, {10, 11}};
  for (int s = 1; s <= 7; ++s) {
    EXPECT_EQ(session.lxn.LxnLineEnds.get(s).from, expected[s - 1].first) << "segment " << s;
    EXPECT_EQ(session.lxn.LxnLineEnds.get(s).to, expected[s - 1].second) << "segment " << s;
  }
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading LXN Lines"});

  // Without the file nothing changes.
  std::filesystem::remove(jobPath / "T1N2E.LXN");
  session.lxn.Clear();
  ReadLxn(session);
  EXPECT_EQ(session.lxn.LxnRecordCount, 0);
  EXPECT_EQ(session.lxn.LxnSegmentCount, 0);
}

TEST(Bearings, PackedDegreesMinutesSecondsByTheLengthOfTheirText) {
  const double degree = std::atan(1.0) / 45.0;
  const struct {
    double packed;
    double degrees;
  } cases[] = {
      {51530, 51 + 53 / 60.0 + 30 / 3600.0},  // five characters overlap: 51 53 30
      {453000, 45 + 30 / 60.0},
      {900000, 90},
      {4530, 45 / 60.0 + 30 / 3600.0},
      {530, 53 / 60.0 + 30 / 3600.0},
      {100, 10 / 60.0},
      {45, 45 / 3600.0},
      {5, 5 / 3600.0},
      {0, 0},
      {1234567, 0},   // longer than six
      {451530.5, 0},  // seconds with decimals
      {12.5, 12 / 60.0 + 0.5 / 3600.0},
  };
  for (const auto& c : cases) EXPECT_NEAR(DmsToRadians(c.packed), c.degrees * degree, 1e-12) << c.packed;
}

TEST_F(LineFiles, RawFieldsAreCutFromTheLineAndFromTheTrimmedLine) {
  SetPoints({{"100100", 0, 0}, {"100200", 0, 0}, {"  1001", 0, 0}});
  std::vector<std::string> records = {RawRow("100100", "100200", "12.5", "2", "45.3000", "SURV1"),
                                      RawRow("  1001", "100200", "12.50000", "1", "45.3000", "SURV1"),
                                      RawRow("100200", "100100", "3", "4", "900000", "SURV2")};
  RawJob(2, {"SSURV1", "SSURV2", Row({{1, "SSURV2"}, {20, "1.000"}})}, records);
  std::vector<std::string> file = RawFile(records);
  file.push_back(RawRow("999", "999", "1", "1", "1", "SURV1"));  // behind 999998: not read
  WriteJob("T1N2E.raw", file, Eol::Lf);
  ReadRaw(session);

  ASSERT_EQ(session.raw.RawLineCount, 3);
  using F = RawFields;
  EXPECT_EQ(session.raw.RawLineFields.get(1), (F{"", "100100", "100200", "12.5    ", "2", "45.3000 ", "SURV1"}));
  // The leading blank shifts the two fields taken from the trimmed line, and only those.
  EXPECT_EQ(session.raw.RawLineFields.get(2), (F{"", "  1001", "100200", ".50000  ", "1", "45.3000 ", "RV1"}));
  EXPECT_EQ(session.raw.RawLineFields.get(3), (F{"", "100200", "100100", "3       ", "4", "900000  ", "SURV2"}));
  ExpectEnds(1, 1, 2);
  ExpectEnds(2, 3, 2);
  ExpectEnds(3, 2, 1);
  EXPECT_EQ(session.raw.RawLineEnds.get(1).survey, 1);
  EXPECT_EQ(session.raw.RawLineEnds.get(2).survey, 0);
  EXPECT_EQ(session.raw.RawLineEnds.get(3).survey, 3);  // the last survey of the name
  EXPECT_EQ(session.points.PointCount(), 3);
  EXPECT_EQ(user.status[1], std::vector<std::string>(4, "Reading RAW Lines"));
}

TEST_F(LineFiles, TemporaryPointsTakeTheQuadrantSignsForwardAndBack) {
  SetPoints({{"100000", 1000, 1000}});
  session.extents = JobExtents{1, 2, 3, 4};
  std::vector<std::string> records;
  for (int q = 1; q <= 4; ++q) records.push_back(RawRow("100000", "90000" + std::to_string(q), "1", std::to_string(q), "300000", "NONE"));
  for (int q = 1; q <= 4; ++q) records.push_back(RawRow("90001" + std::to_string(q), "100000", "1", std::to_string(q), "300000", "NONE"));
  RawJob(2, {}, records);
  ReadRaw(session);

  // Feet, distance in chains, no unit caption: 66 x 1 x sin 30 = 33 east, 66 x cos 30 north,
  // through "######0.000".
  ASSERT_EQ(session.points.PointCount(), 9);
  ExpectPoint(2, "900001", 1033.0, 1057.158);
  ExpectPoint(3, "900002", 1033.0, 942.842);
  ExpectPoint(4, "900003", 967.0, 942.842);
  ExpectPoint(5, "900004", 967.0, 1057.158);
  ExpectPoint(6, "900011", 967.0, 942.842);
  ExpectPoint(7, "900012", 967.0, 1057.158);
  ExpectPoint(8, "900013", 1033.0, 1057.158);
  ExpectPoint(9, "900014", 1033.0, 942.842);
  for (int i = 1; i <= 4; ++i) ExpectEnds(i, 1, i + 1);
  for (int i = 5; i <= 8; ++i) ExpectEnds(i, i + 1, 1);
  EXPECT_DOUBLE_EQ(session.extents.MinX, 1.0);
  EXPECT_DOUBLE_EQ(session.extents.MaxY, 4.0);
  ASSERT_GE(user.status[1].size(), 4u);
  EXPECT_EQ(std::vector<std::string>(user.status[1].begin(), user.status[1].begin() + 4),
            (std::vector<std::string>{"Reading RAW Lines", "Reading RAW Lines",
                                      "Computing temporary coordinates for unknown points", "Reading RAW Lines"}));
}

TEST_F(LineFiles, DistanceUnitOfASurveyCarriesToTheLinesOfSurveysWithout) {
  SetPoints({{"100000", 1000, 1000}});
  RawJob(1, {"SMETRIC", "C DU:M     <DISTANCE UNITS ARE METERS>", "SPLAIN", "C a plain comment"},
         {RawRow("100000", "900000", "1", "1", "900000", "PLAIN"),
          RawRow("100000", "900001", "100", "1", "900000", "METRIC"),
          RawRow("100000", "900002", "50", "1", "900000", "PLAIN")});
  ReadRaw(session);
  EXPECT_FLOAT_EQ(session.UnitsPerChain, static_cast<float>(66 / 3.2808333333));
  // The first line has no unit yet: chains, so one chain of 20.1168 metres.
  ExpectPoint(2, "900000", 1020.117, 1000.0);
  ExpectPoint(3, "900001", 1100.0, 1000.0);
  // Its survey has no unit caption: the metres of the line before stay.
  ExpectPoint(4, "900002", 1050.0, 1000.0);
}

TEST_F(LineFiles, BackwardPlacementIgnoresTheDistanceUnit) {
  SetPoints({{"100000", 1000, 1000}});
  RawJob(2, {"SFEET", "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>"},
         {RawRow("100000", "900001", "132", "1", "900000", "FEET"),
          RawRow("900002", "100000", "2", "1", "900000", "FEET")});
  ReadRaw(session);
  ExpectPoint(2, "900001", 1132.0, 1000.0);  // 66 x 132 / 66
  ExpectPoint(3, "900002", 868.0, 1000.0);   // 66 x 2, not divided
  ExpectEnds(2, 3, 1);
}

TEST_F(LineFiles, RecordWithBothEndsUnknownPlacesBothAndLaterLinesUseThem) {
  SetPoints({{"100000", 1000, 1000}});
  RawJob(2, {"SFEET", "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>"},
         {RawRow("900001", "900002", "1", "1", "300000", "FEET"),
          RawRow("900002", "900003", "66", "2", "900000", "FEET")});
  ReadRaw(session);
  ASSERT_EQ(session.points.PointCount(), 4);
  ExpectPoint(2, "900002", 0.5, 0.866);        // from the origin, in feet
  ExpectPoint(3, "900001", -32.5, -56.292);    // back from it, without the unit
  ExpectPoint(4, "900003", 66.5, 0.866);       // from the temporary point
  ExpectEnds(1, 3, 2);
  ExpectEnds(2, 2, 4);
  const std::string computing = "Computing temporary coordinates for unknown points";
  EXPECT_EQ(user.status[1], (std::vector<std::string>{"Reading RAW Lines", "Reading RAW Lines", computing, computing,
                                                      "Reading RAW Lines", computing}));
}

TEST_F(LineFiles, RawSentinelsBoundTheRecords) {
  SetPoints({{"100000", 1000, 1000}});
  WriteJob("T1N2E.def", DefFile(2));
  WriteJob("T1N2E.raw", {"HEAD", "999999", "999998", RawRow("100000", "900001", "1", "1", "1", "X")});
  ReadRaw(session);
  EXPECT_EQ(session.raw.RawLineCount, 0);
  EXPECT_EQ(session.points.PointCount(), 1);

  WriteJob("T1N2E.raw", {"999999", RawRow("100000", "900001", "1", "1", "1", "X")});
  EXPECT_THROW(ReadRaw(session), RuntimeFault);
  EXPECT_EQ(session.raw.RawLineCount, 0);

  WriteJob("T1N2E.raw", {RawRow("100000", "900001", "1", "1", "1", "X"), "999998"});
  EXPECT_THROW(ReadRaw(session), RuntimeFault);
  EXPECT_EQ(session.raw.RawLineCount, 0);

  std::filesystem::remove(jobPath / "T1N2E.raw");
  user.status.clear();
  ReadRaw(session);
  EXPECT_TRUE(user.status[1].empty());
}

}  // namespace
}  // namespace tessel::test
