// The parcel file .IID (reading, and saving by copy and replace) and the raw polygons of .RPO
// with their centroids in .CRP.

#include <string>
#include <vector>

#include "model/text.h"
#include "parcels/parcel_file.h"
#include "parcels/raw_polygons.h"
#include "test_support.h"

namespace tessel::test {
namespace {

const std::string kRing1 = " 100100 100200 100300 100100";
const std::string kRing2 = " 200100 200200 200300 200100";
const std::string kRing3 = " 300100 300200 300300 300100";

std::string Location(const std::string& north, const std::string& east) {
  return Row({{1, " PARCEL N,E"}, {17, PadLeft(north, 11)}, {33, PadLeft(east, 11)}});
}

class ParcelFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
  const ParcelStore& P() const { return session.parcels; }
};

TEST_F(ParcelFiles, ReaderGroupsAttributeLinesBeforeTheirRingAndLocation) {
  WriteJob("T1N2E.iid",
           {"RINGFORM PARCELS", "Sec_001  A T_W  12345     C   40.000", kRing1, Location("1000.000", "2000.000"),
            "  heading between groups", "Sec_002  B T_?  22         10.000", "SEC_003  C T_L  33          5.500",
            " 999999 999999 999999", kRing2, Location("  3000.500", "4000.250")},
           Eol::Lf);
  session.SelectionCount = 3;
  ReadParcels(session);
  ASSERT_EQ(P().ParcelCount, 3);
  EXPECT_EQ(P().ParcelLine.get(1), "Sec_001  A T_W  12345     C   40.000");
  EXPECT_EQ(P().ParcelLine.get(3), "SEC_003  C T_L  33          5.500");
  EXPECT_EQ(P().ParcelRing.get(1), kRing1);
  EXPECT_EQ(P().ParcelRing.get(2), kRing2);  // the last ring line of the group
  EXPECT_EQ(P().ParcelRing.get(3), kRing2);
  EXPECT_DOUBLE_EQ(P().ParcelY.get(1), 1000.0);
  EXPECT_DOUBLE_EQ(P().ParcelX.get(1), 2000.0);
  EXPECT_DOUBLE_EQ(P().ParcelY.get(3), 3000.5);
  EXPECT_DOUBLE_EQ(P().ParcelX.get(3), 4000.25);
  EXPECT_EQ(P().ParcelMulti.get(1), 0);
  EXPECT_EQ(P().ParcelMulti.get(2), 1);
  EXPECT_EQ(P().ParcelMulti.get(3), 1);
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(P().ParcelIdx.get(i), i);
  EXPECT_EQ(session.SelectionCount, 0);
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading parcels"});
}

TEST_F(ParcelFiles, RingAndLocationReachOneEntryBeyondTheirGroup) {
  // The last parcel has no ring or location of its own: it keeps what the group before it
  // wrote one entry too far, and so shares that parcel's location.
  WriteJob("T1N2E.iid", {"TITLE", "Sec_001 A", kRing1, Location("100.0", "200.0"), "Sec_002 B", kRing2,
                         Location("300.0", "400.0"), "Sec_003 C"});
  ReadParcels(session);
  ASSERT_EQ(P().ParcelCount, 3);
  EXPECT_EQ(P().ParcelRing.get(3), kRing2);
  EXPECT_DOUBLE_EQ(P().ParcelY.get(3), 300.0);
  EXPECT_EQ(P().ParcelMulti.get(1), 0);
  EXPECT_EQ(P().ParcelMulti.get(2), 1);
  EXPECT_EQ(P().ParcelMulti.get(3), 1);

  // A reread clears what the old count covered, but not the multiple flags.
  WriteJob("T1N2E.iid", {"  * * * This file has been edited by Tessel  * * *  "});
  ReadParcels(session);
  EXPECT_EQ(P().ParcelCount, 0);
  EXPECT_EQ(P().ParcelLine.get(1), "");
  EXPECT_EQ(P().ParcelRing.get(3), "");
  EXPECT_EQ(P().ParcelMulti.get(3), 1);

  std::filesystem::remove(jobPath / "T1N2E.iid");
  ReadParcels(session);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, ".IID file not found");
  EXPECT_EQ(user.messages[0].icon, Icon::Information);
}

TEST_F(ParcelFiles, SaveReplacesTheTitleAndOnlyTheSecLinesItCounts) {
  const std::vector<std::string> original = {
      "RINGFORM PARCELS",         "Sec_001  A T_W  1", kRing1, Location("1.0", "2.0"),
      "SEC_002  B T_W  2",        kRing2,              Location("3.0", "4.0"),
      "Sec_003  C T_W  3",        kRing3,              Location("5.0", "6.0"),
      "Tessel Edited: kept as is"};
  WriteJob("T1N2E.IID", original, Eol::Lf);
  ReadParcels(session);
  ASSERT_EQ(P().ParcelCount, 3);
  session.parcels.ParcelLine.at(1) = "Sec_001  A T_W  1 EDITED";
  session.parcels.ParcelEdit.at(1) = "Sec_001  A T_W  1";
  session.parcels.ParcelLine.at(2) = "SEC_002  B T_W  2 EDITED";
  session.parcels.ParcelDirty = -1;
  WriteParcels(session);

  // "SEC_" is a parcel to the reader but not to the writer: the third parcel's line takes the
  // second's text.
  const std::vector<std::string> saved = {
      "  * * * This file has been edited by Tessel  * * *  ",
      "Tessel Edited: Sec_001  A T_W  1",
      "Sec_001  A T_W  1 EDITED", kRing1, Location("1.0", "2.0"),
      "SEC_002  B T_W  2",        kRing2, Location("3.0", "4.0"),
      "SEC_002  B T_W  2 EDITED", kRing3, Location("5.0", "6.0"),
      "Tessel Edited: kept as is"};
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(saved));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(original, Eol::Lf));
  EXPECT_EQ(P().ParcelDirty, 0);
  EXPECT_EQ(user.pointers.back(), Pointer::Arrow);

  // A second save writes the note again below the copied one.
  WriteParcels(session);
  std::vector<std::string> again = saved;
  again.insert(again.begin() + 2, "Tessel Edited: Sec_001  A T_W  1");
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(again));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(saved));

  // A deleted parcel leaves its note and a blank line.
  session.parcels.ParcelLine.at(1) = "";
  session.parcels.ParcelEdit.at(1) = "(Deleted)Sec_001  A T_W  1 EDITED";
  WriteParcels(session);
  std::vector<std::string> deleted = again;
  deleted[3] = "Tessel Edited: (Deleted)Sec_001  A T_W  1 EDITED";
  deleted.insert(deleted.begin() + 4, "");
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(deleted));
}

TEST_F(ParcelFiles, RawPolygonsCountFromTheHeadingAndCentroidsFromBothEnds) {
  WriteJob("T1N2E.RPO", {"RINGFORM", "  5 LINES READ", "  3 POLYGONS FOUND  ", "------", "S 100100 100200 100300",
                         "I 200100 200200", "O"});
  WriteJob("T1N2E.CRP", {"       1000.123       2000.456", "  1.5  2.5", "  3 4"});
  ReadRawPolygons(session);
  const RawPolygonStore& r = session.polygons;
  ASSERT_EQ(r.RawPolygonCount, 3);
  EXPECT_EQ(r.RawPolygonTag.get(1), "S");
  EXPECT_EQ(r.RawPolygonRing.get(1), "100100 100200 100300");
  EXPECT_EQ(r.RawPolygonTag.get(2), "I");
  EXPECT_EQ(r.RawPolygonRing.get(3), "");
  EXPECT_DOUBLE_EQ(r.RawPolygonX.get(1), 1000.123);
  EXPECT_DOUBLE_EQ(r.RawPolygonY.get(1), 2000.456);
  // A short line: both fields read from the same text.
  EXPECT_DOUBLE_EQ(r.RawPolygonX.get(2), 1.52);
  EXPECT_DOUBLE_EQ(r.RawPolygonY.get(2), 1.52);
  EXPECT_DOUBLE_EQ(r.RawPolygonX.get(3), 34.0);
  EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading raw polygons"});

  // Four digits read as three; the file then ends early and keeps what it had.
  WriteJob("T1N2E.RPO", {"1234 POLYGONS FOUND", "", "S 1", "O 2"});
  session.polygons.Clear();
  ReadRawPolygons(session);
  EXPECT_EQ(r.RawPolygonCount, 123);
  EXPECT_EQ(r.RawPolygonTag.get(2), "O");
  EXPECT_DOUBLE_EQ(r.RawPolygonX.get(1), 0.0);
}

}  // namespace
}  // namespace tessel::test
