// The parcel file .IID (reading, and saving by copy and replace) and the centroids of the raw
// polygons of .RPO: the area centroid of each ring from the point store, the mean of the points
// for a ring without area, and .CRP as the raw polygon reader takes it.

#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/text.h"
#include "parcels/centroids.h"
#include "parcels/parcel_file.h"
#include "parcels/raw_polygons.h"
#include "viewer/tool_modes.h"
#include "test_support.h"

namespace tessel::test {
namespace {

const std::string kRing1 = " 100100 100200 100300 100100";
const std::string kRing2 = " 200100 200200 200300 200100";
const std::string kRing3 = " 300100 300200 300300 300100";

class ParcelFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
  const ParcelStore& P() const { return session.parcels; }
};

// Each parcel as "line | ring | northing easting | multiple".
std::vector<std::string> Parcels(const ParcelStore& p) {
  std::vector<std::string> out;
  for (int i = 1; i <= p.ParcelCount; ++i) {
    out.push_back(p.ParcelLine.get(i) + " | " + p.ParcelRing.get(i) + " | " + ShortestText(p.ParcelY.get(i)) + " " +
                  ShortestText(p.ParcelX.get(i)) + " | " + std::to_string(p.ParcelMulti.get(i)));
  }
  return out;
}

TEST_F(ParcelFiles, ReaderGroupsAttributeLinesBeforeTheirRingAndLocation) {
  // A group's ring and location reach one entry beyond it: the last parcel has none of its own
  // and keeps what the group before wrote there.
  WriteJob("T1N2E.iid",
           {"RINGFORM PARCELS", "Sec_001  A T_W  12345     C   40.000", kRing1, LocationRow("1000.000", "2000.000"),
            "  heading between groups", "Sec_002  B T_?  22         10.000", "SEC_003  C T_L  33          5.500",
            " 999999 999999 999999", kRing2, LocationRow("  3000.500", "4000.250"), "Sec_004 D"},
           Eol::Lf);
  session.SelectionCount = 3;
  ReadParcels(session);
  EXPECT_EQ(Parcels(P()), (std::vector<std::string>{
                              "Sec_001  A T_W  12345     C   40.000 | " + kRing1 + " | 1000 2000 | 0",
                              "Sec_002  B T_?  22         10.000 | " + kRing2 + " | 3000.5 4000.25 | 1",
                              "SEC_003  C T_L  33          5.500 | " + kRing2 + " | 3000.5 4000.25 | 1",
                              "Sec_004 D | " + kRing2 + " | 3000.5 4000.25 | 1"}));
  for (int i = 1; i <= 4; ++i) EXPECT_EQ(P().ParcelIdx.get(i), i);
  EXPECT_EQ(session.SelectionCount, 0);  // the reading sets the shared count back
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading parcels"});

  // A reread clears what the old count covered, but not the multiple flags.
  WriteJob("T1N2E.iid", {"  * * * This file has been edited by Tessel  * * *  "});
  ReadParcels(session);
  EXPECT_EQ(std::tuple(P().ParcelCount, P().ParcelLine.get(1) + P().ParcelRing.get(4), P().ParcelMulti.get(4)),
            std::tuple(0, "", 1));
  std::filesystem::remove(jobPath / "T1N2E.iid");
  ReadParcels(session);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{".IID file not found"});
  EXPECT_EQ(user.messages[0].icon, Icon::Information);
}

TEST_F(ParcelFiles, SaveReplacesTheTitleAndEachParcelsLine) {
  const std::vector<std::string> original = {
      "RINGFORM PARCELS",         "Sec_001  A T_W  1", kRing1, LocationRow("1.0", "2.0"),
      "Sec_002  B T_W  2",        kRing2,              LocationRow("3.0", "4.0"),
      "Sec_003  C T_W  3",        kRing3,              LocationRow("5.0", "6.0"),
      "Tessel Edited: kept as is"};
  WriteJob("T1N2E.IID", original, Eol::Lf);
  ReadParcels(session);
  ASSERT_EQ(P().ParcelCount, 3);
  session.parcels.ParcelLine.at(1) = "Sec_001  A T_W  1 EDITED";
  session.parcels.ParcelEdit.at(1) = "Sec_001  A T_W  1";
  session.parcels.ParcelLine.at(2) = "Sec_002  B T_W  2 EDITED";
  session.parcels.ParcelDirty = -1;
  ASSERT_TRUE(WriteParcels(session));

  const std::vector<std::string> saved = {
      "  * * * This file has been edited by Tessel  * * *  ",
      "Tessel Edited: Sec_001  A T_W  1",
      "Sec_001  A T_W  1 EDITED", kRing1, LocationRow("1.0", "2.0"),
      "Sec_002  B T_W  2 EDITED", kRing2, LocationRow("3.0", "4.0"),
      "Sec_003  C T_W  3",        kRing3, LocationRow("5.0", "6.0"),
      "Tessel Edited: kept as is"};
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(saved));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(original, Eol::Lf));
  EXPECT_EQ(std::tuple(P().ParcelDirty, user.pointers.back()), std::tuple(0, Pointer::Arrow));

  // A second save writes the note again below the copied one.
  ASSERT_TRUE(WriteParcels(session));
  std::vector<std::string> again = saved;
  again.insert(again.begin() + 2, "Tessel Edited: Sec_001  A T_W  1");
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(again));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(saved));

  // A deleted parcel leaves its note and a blank line.
  session.parcels.ParcelLine.at(1) = "";
  session.parcels.ParcelEdit.at(1) = "(Deleted)Sec_001  A T_W  1 EDITED";
  ASSERT_TRUE(WriteParcels(session));
  std::vector<std::string> deleted = again;
  deleted[3] = "Tessel Edited: (Deleted)Sec_001  A T_W  1 EDITED";
  deleted.insert(deleted.begin() + 4, "");
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(deleted));
  EXPECT_TRUE(user.messages.empty());

  // The blank line is no parcel to the writer: a further save would put parcel 1's line where
  // parcel 2's stands, and so on down the file. It is refused, and nothing is touched.
  session.parcels.ParcelLine.at(2) = "Sec_002  B T_W  2 AGAIN";
  session.parcels.ParcelDirty = -1;
  EXPECT_FALSE(WriteParcels(session));
  const std::string iid = session.DatasetPath(".IID");
  EXPECT_EQ(user.MessageTexts().back(), kMsgParcelFileOutOfStepBefore + iid + kMsgParcelFileOutOfStepAfter);
  EXPECT_EQ(user.messages.back().icon, Icon::Exclamation);
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(deleted));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(again));
  EXPECT_EQ(P().ParcelDirty, -1);
}

// The writers put parcel k's line on the k-th line after the title that begins with "Sec_". When
// the file's lines are not the parcels' in the store's order, every writer refuses before it
// touches .IID or .iib, and the edits stay in memory.
TEST_F(ParcelFiles, AWriteThatWouldPutLinesOntoOtherParcelsIsRefused) {
  const std::vector<std::string> upper = {
      "RINGFORM PARCELS",  "Sec_001  A T_W  1", kRing1, LocationRow("1.0", "2.0"),
      "SEC_002  B T_W  2", kRing2,              LocationRow("3.0", "4.0"),
      "Sec_003  C T_W  3", kRing3,              LocationRow("5.0", "6.0")};
  const std::vector<std::string> plain = {
      "RINGFORM PARCELS",  "Sec_001  A T_W  1", kRing1, LocationRow("1.0", "2.0"),
      "Sec_002  B T_W  2", kRing2,              LocationRow("3.0", "4.0")};
  struct Case {
    const char* what;
    std::vector<std::string> read;     // the file the store is read from
    std::vector<std::string> written;  // what stands there at the write
  };
  const std::vector<std::string> reordered = {plain[0], plain[4], plain[5], plain[6], plain[1], plain[2], plain[3]};
  for (const Case& c : {Case{"a SEC_ line the reader counts and the writer does not", upper, upper},
                        Case{"a tool has rewritten the file in another order", plain, reordered}}) {
    SCOPED_TRACE(c.what);
    for (const std::string writer : {"save", "ok", "move"}) {
      SCOPED_TRACE(writer);
      std::filesystem::remove(jobPath / "T1N2E.iib");
      WriteJob("T1N2E.IID", c.read);
      ReadParcels(session);
      WriteJob("T1N2E.IID", c.written);
      session.parcels.ParcelLine.at(2) = "Sec_002  B T_W  2 EDITED";
      session.parcels.ParcelDirty = -1;
      user.messages.clear();
      if (writer == "save") { EXPECT_FALSE(WriteParcels(session)); }
      if (writer == "ok") { EXPECT_FALSE(WriteEditedParcels(session)); }
      if (writer == "move") {
        session.selection.AddParcelEntry("Sec_001", {PickKind::Parcel, 1, P().Reading});
        MoveParcelLocation(session, 10.0, 20.0);
        session.selection.ClearParcelList();
        EXPECT_EQ(P().ParcelX.get(1), 2.0);  // not moved in memory either
      }
      ASSERT_EQ(user.messages.size(), 1u);
      EXPECT_EQ(user.messages[0].text,
                kMsgParcelFileOutOfStepBefore + session.DatasetPath(".IID") + kMsgParcelFileOutOfStepAfter);
      EXPECT_EQ(ReadJob("T1N2E.IID"), Text(c.written));
      EXPECT_FALSE(std::filesystem::exists(jobPath / "T1N2E.iib"));
      EXPECT_EQ(P().ParcelDirty, -1);
    }
  }
}

std::string CrpRow(const std::string& x, const std::string& y) { return PadLeft(x, 15) + PadLeft(y, 15); }

class Centroids : public JobFixture {
 protected:
  void SetUp() override {
    UseJob();
    // A square of 100 by 100 at state plane size, a right triangle with legs of 60 and 30, and
    // three points on one line.
    SetPoints({{"100100", 2098700.0, 476300.0}, {"100200", 2098800.0, 476300.0}, {"100300", 2098800.0, 476400.0},
               {"100400", 2098700.0, 476400.0}, {"200100", 1000.0, 5000.0},     {"200200", 1060.0, 5000.0},
               {"200300", 1000.0, 5030.0},      {"300100", 10.0, 20.0},         {"300200", 20.0, 40.0},
               {"300300", 40.0, 80.0}});
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
  EXPECT_EQ(std::tuple(session.polygons.RawPolygonCount, session.polygons.RawPolygonX.get(1),
                       session.polygons.RawPolygonTag.get(1)),
            std::tuple(1, 2098750.0, "S"));

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

TEST_F(Centroids, EachRingGivesItsAreaCentroidOrWithoutAreaByTheRoundingToleranceTheMeanOfItsPoints) {
  // Trapezoids 3000 long at state plane size. 0.000001 high, twice the area is 0.004, under the
  // tolerance of 1e-9 times the span squared (0.009): a line, so the mean of the four points.
  // 0.0001 high (0.4) is an area, whose centroid lies 83.333 west of the mean.
  for (const auto& [id, x, y] : std::vector<std::tuple<std::string, double, double>>{
           {"400100", 500.0, 700.0}, {"700100", 0.0, 0.0}, {"700100", 2098700.0, 476500.0},
           {"500100", 2098000.0, 476000.0}, {"500200", 2101000.0, 476000.0}, {"500300", 2101000.0, 476000.000001},
           {"500400", 2100000.0, 476000.000001}, {"600300", 2101000.0, 476000.0001}, {"600400", 2100000.0, 476000.0001}}) {
    session.points.Append(id, x, y);
  }
  const std::pair<std::string, std::vector<std::string>> rings[] = {
      {"S 100100 100200 100300 100400 100100", {"2098750.000", "476350.000"}},  // the square
      {"I 200100 200200 200300 200100", {"1020.000", "5010.000"}},              // the triangle
      {"S 200300 200200 200100", {"1020.000", "5010.000"}},          // the other way round, not closed
      {"S 200300 200200 200100 200300", {"1020.000", "5010.000"}},
      {"O 300100 300200 300300", {"23.333", "46.667"}},              // points on one line: their mean
      {"S 400100", {"500.000", "700.000"}},
      {"S 400100 400100 400100", {"500.000", "700.000"}},
      {"S 999999 888888", {"0.000", "0.000"}},                       // no point in the store
      // Unknown identifiers are left out, and the later 700100 counts: a triangle.
      {"S 100100 100200 ZZZZZZ 700100", {"2098733.333", "476366.667"}},
      // Nearly collinear rings, decided by the rounding tolerance.
      {"S 500100 500200 500300 500400", {"2100000.000", "476000.000"}},
      {"S 500100 500200 600300 600400", {"2099916.667", "476000.000"}},
  };
  std::vector<std::string> rpo, crp;
  for (const auto& [ring, centroid] : rings) {
    rpo.push_back(ring);
    crp.push_back(CrpRow(centroid[0], centroid[1]));
  }
  WriteRpo(rpo, " 11");
  ComputeCentroids(session);
  EXPECT_EQ(ReadJob("T1N2E.CRP"), Text(crp));
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
  EXPECT_EQ(session.polygons.RawPolygonTag.get(2) + "|" + session.polygons.RawPolygonRing.get(2), "I|D      E      F");
  const double want[][2] = {{2098766.667, 476333.333}, {510.0, 12010.0}, {-30.0, -40.0}};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_NEAR(session.polygons.RawPolygonX.get(i), want[i - 1][0], 1e-9) << i;
    EXPECT_NEAR(session.polygons.RawPolygonY.get(i), want[i - 1][1], 1e-9) << i;
  }
}

}  // namespace
}  // namespace tessel::test
