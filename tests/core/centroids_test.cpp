// The centroids of the raw polygons: the area centroid of each ring of .RPO from the point
// store, the mean of the vertices for a ring without area, and .CRP as the reader takes it.

#include <string>
#include <vector>

#include "model/text.h"
#include "parcels/centroids.h"
#include "parcels/raw_polygons.h"
#include "test_support.h"
#include "viewer/tool_modes.h"

namespace tessel::test {
namespace {

std::string CrpRow(const std::string& x, const std::string& y) { return PadLeft(x, 15) + PadLeft(y, 15); }

class Centroids : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    SetPoints({
        // A square of 100 by 100 at state plane size.
        {"100100", 2098700.0, 476300.0},
        {"100200", 2098800.0, 476300.0},
        {"100300", 2098800.0, 476400.0},
        {"100400", 2098700.0, 476400.0},
        // A right triangle with legs of 60 and 30.
        {"200100", 1000.0, 5000.0},
        {"200200", 1060.0, 5000.0},
        {"200300", 1000.0, 5030.0},
        // Three points on one line.
        {"300100", 10.0, 20.0},
        {"300200", 20.0, 40.0},
        {"300300", 40.0, 80.0},
    });
  }

  void WriteRpo(const std::vector<std::string>& polygons, const std::string& count) const {
    std::vector<std::string> lines = {"RAW POLYGONS  T1N2E", "SECTION 22", count + " POLYGONS FOUND", ""};
    lines.insert(lines.end(), polygons.begin(), polygons.end());
    WriteJob("T1N2E.RPO", lines);
  }
};

TEST_F(Centroids, ShowingRawPolygonsComputesMissingCentroidsFirst) {
  WriteRpo({"S 100100 100200 100300 100400 100100"}, "  1");
  ToggleLayer(session, "mnuViewRPO");
  EXPECT_TRUE(session.checks.mnuViewRPO);
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("2098750.000", "476350.000")}));
  ASSERT_EQ(session.polygons.RawPolygonCount, 1);
  EXPECT_EQ(session.polygons.RawPolygonX.get(1), 2098750.0);
  EXPECT_EQ(session.polygons.RawPolygonTag.get(1), "S");

  // With both files there, showing them reads them as they stand.
  WriteJob("T1N2E.CRP", {CrpRow("1.000", "2.000")});
  ToggleLayer(session, "mnuViewRPO");
  ToggleLayer(session, "mnuViewRPO");
  EXPECT_EQ(session.polygons.RawPolygonX.get(1), 1.0);
}

TEST_F(Centroids, AHeadingThatNeverEndsWritesNothingAndSaysWhy) {
  WriteJob("T1N2E.CRP", {CrpRow("1.000", "2.000"), CrpRow("3.000", "4.000")});
  const std::string before = ReadJob("T1N2E.CRP");
  WriteJob("T1N2E.RPO", {"RAW POLYGONS  T1N2E", "  2 POLYGONS FOUN", "S 100100 100200 100300 100400 100100"});
  EXPECT_FALSE(ComputeCentroids(session));
  EXPECT_EQ(ReadJob("T1N2E.CRP"), before);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{NoPolygonHeadingText(JobDir() + "T1N2E.RPO",
                                                                               JobDir() + "T1N2E.CRP")});
  // An empty .RPO has no heading either.
  WriteJob("T1N2E.RPO", {});
  EXPECT_FALSE(ComputeCentroids(session));
  EXPECT_EQ(ReadJob("T1N2E.CRP"), before);
}

TEST_F(Centroids, SquareTriangleAndALineInTheOrderOfTheFile) {
  WriteRpo({"S 100100 100200 100300 100400 100100", "I 200100 200200 200300 200100", "O 300100 300200 300300"},
           "  3");
  ComputeCentroids(session);
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("2098750.000", "476350.000"), CrpRow("1020.000", "5010.000"),
                                        CrpRow("23.333", "46.667")}));
}

TEST_F(Centroids, RingDirectionAndClosingRepeatDoNotMatter) {
  WriteRpo({"S 200300 200200 200100", "S 200100 200200 200300 200100", "S 200300 200200 200100 200300"}, "  3");
  ComputeCentroids(session);
  const std::string triangle = CrpRow("1020.000", "5010.000");
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({triangle, triangle, triangle}));
}

TEST_F(Centroids, RingWithoutAreaTakesTheMeanOfItsPoints) {
  session.points.Append("400100", 500.0, 700.0);
  WriteRpo({"S 300100 300200 300300 300100", "S 400100", "S 400100 400100 400100", "S 999999 888888"}, "  4");
  ComputeCentroids(session);
  // A ring of points that are not in the store has no points: 0, 0.
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("23.333", "46.667"), CrpRow("500.000", "700.000"),
                                        CrpRow("500.000", "700.000"), CrpRow("0.000", "0.000")}));
}

TEST_F(Centroids, UnknownIdentifiersAreLeftOutAndTheLastEntryOfAnIdentifierCounts) {
  // 100300 again, later in the store: the square becomes a triangle 100100, 100200, (2098700, 476500).
  session.points.Append("100300", 2098700.0, 476500.0);
  WriteRpo({"S 100100 100200 ZZZZZZ 100300"}, "  1");
  ComputeCentroids(session);
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("2098733.333", "476366.667")}));
}

TEST_F(Centroids, HeadingAndCountAreTakenAsTheReaderTakesThem) {
  // The count is the first three characters of the heading line; the polygons past it are left.
  WriteJob("T1N2E.RPO", {"  9 POLYGONS IN ALL", "  2 POLYGONS FOUND", "S 100100 100200 100300 100400",
                         "S 200100 200200 200300", "S 200100 200200 200300", "S 200100 200200 200300"});
  ComputeCentroids(session);
  // The line after the heading is passed over, whatever it holds.
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("1020.000", "5010.000"), CrpRow("1020.000", "5010.000")}));
}

TEST_F(Centroids, ShortFileGivesTheCentroidsItHoldsAndNoFileNothing) {
  ComputeCentroids(session);
  EXPECT_FALSE(JobHas("T1N2E.CRP"));

  WriteRpo({"S 200100 200200 200300"}, "  5");
  ComputeCentroids(session);
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text({CrpRow("1020.000", "5010.000")}));
}

TEST_F(Centroids, ExistingCrpIsReplacedInItsOwnSpelling) {
  WriteJob("T1N2E.crp", {"OLD", "OLD"});
  WriteRpo({"S 200100 200200 200300"}, "  1");
  ComputeCentroids(session);
  EXPECT_FALSE(JobHas("T1N2E.CRP"));
  EXPECT_EQ(ReadJob("T1N2E.crp"), Text({CrpRow("1020.000", "5010.000")}));
}

TEST_F(Centroids, CentroidsReadBackThroughTheRawPolygonReader) {
  SetPoints({{"A", 2098700.0, 476300.0}, {"B", 2098800.0, 476300.0}, {"C", 2098800.0, 476400.0},
             // Northing longer than easting: the easting's field must not run into it.
             {"D", 500.0, 12000.0}, {"E", 530.0, 12000.0}, {"F", 500.0, 12030.0},
             {"G", -40.0, -10.0}, {"H", -10.0, -10.0}, {"J", -40.0, -100.0}});
  WriteRpo({"S A      B      C", "I D      E      F", "O G      H      J"}, "  3");
  ComputeCentroids(session);
  ReadRawPolygons(session);
  ASSERT_EQ(session.polygons.RawPolygonCount, 3);
  EXPECT_EQ(session.polygons.RawPolygonTag.get(2), "I");
  EXPECT_EQ(session.polygons.RawPolygonRing.get(2), "D      E      F");
  const double want[][2] = {{2098766.667, 476333.333}, {510.0, 12010.0}, {-30.0, -40.0}};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_NEAR(session.polygons.RawPolygonX.get(i), want[i - 1][0], 1e-9) << i;
    EXPECT_NEAR(session.polygons.RawPolygonY.get(i), want[i - 1][1], 1e-9) << i;
  }
}

}  // namespace
}  // namespace tessel::test
