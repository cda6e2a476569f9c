// What a load reads ahead on a thread of its own (.LSA's network lines, .raw's records, .IID's
// parcels) reaches the stores as a reading in turn puts it, also when a fault ends the reading
// part way: everything before the fault stored, the fault raised, the counts left as they were.

#include <string>
#include <vector>

#include "datasets/coordinate_files.h"
#include "datasets/line_files.h"
#include "job/read_ahead.h"
#include "parcels/parcel_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;

const std::string kRing = " 12345  12345  12345";

class ReadAheadTest : public JobFixture {
 protected:
  ReadAheadTest() {
    UseJob();
    WriteJob("T1N2E.def", DefFile(2));
  }

  // The reading of .raw and .IID, ahead or in turn.
  void ReadBoth(bool ahead) {
    ReadAhead early(session, true);
    const auto step = [&](auto&& read) {
      try {
        read();
      } catch (const RuntimeFault& fault) {
        faults.push_back(fault.kind());
      }
    };
    step([&] { ReadRaw(session, ahead ? early.Raw(session) : nullptr); });
    step([&] { ReadParcels(session, ahead ? early.Parcels(session) : nullptr); });
  }

  static Strings Records(int count) {
    Strings records;
    for (int k = 1; k <= count; ++k) records.push_back(RawRow(std::to_string(100000 + k), "100001", "1", "1", "1", "S"));
    return records;
  }
  // n attribute lines, then a ring line: the ring's range is 1 .. 2n + 1.
  static Strings Parcels(int count) {
    Strings lines = {"TITLE"};
    for (int k = 1; k <= count; ++k) lines.push_back("Sec_" + std::to_string(k));
    lines.push_back(kRing);
    lines.push_back(Row({{1, " PARCEL N,E"}, {17, "100.5"}, {33, "200.25"}}));
    return lines;
  }

  std::vector<FaultKind> faults;
};

TEST_F(ReadAheadTest, FaultsEndTheReadingAfterWhatCameBeforeThemIsStored) {
  struct Case {
    const char* what;
    Strings raw;
    Strings iid;
    std::vector<FaultKind> faults;
    int storedRecords;  // the last record line stored, by its from field
    int rawCount;
    int ringsStored;  // the last parcel entry given the ring line
    int parcelCount;
  };
  Strings noEnd = RawFile(Records(3));
  noEnd.pop_back();
  Strings noStart = Records(3);
  noStart.push_back("999998");
  const std::vector<Case> cases = {
      {"whole files", RawFile(Records(3)), Parcels(2), {}, 3, 3, 5, 2},
      {"a record past the bound", RawFile(Records(16001)), Parcels(2), {FaultKind::Subscript}, 16000, 0, 5, 2},
      {"the records run to the file's end", noEnd, Parcels(2), {FaultKind::ReadPastEnd}, 3, 0, 5, 2},
      {"no line 999999", noStart, Parcels(2), {FaultKind::ReadPastEnd}, 0, 0, 5, 2},
      {"a ring range past the bound", RawFile(Records(1)), Parcels(4500), {FaultKind::Subscript}, 1, 1, 9000, 0},
  };
  for (const Case& c : cases) {
    for (const bool ahead : {true, false}) {
      SCOPED_TRACE(std::string(c.what) + (ahead ? ", read ahead" : ", read in turn"));
      session.raw.Clear();
      session.parcels.Clear();
      faults.clear();
      WriteJob("T1N2E.raw", c.raw);
      WriteJob("T1N2E.IID", c.iid);
      ReadBoth(ahead);

      EXPECT_EQ(faults, c.faults);
      EXPECT_EQ(session.raw.RawLineCount, c.rawCount);
      if (c.storedRecords > 0) {
        EXPECT_EQ(session.raw.RawLineFields.get(c.storedRecords)[1], std::to_string(100000 + c.storedRecords));
        EXPECT_EQ(session.raw.RawLineMeasures.get(c.storedRecords).quadrant, 1);
      }
      if (c.storedRecords < RawLineStore::kBound) {
        EXPECT_EQ(session.raw.RawLineFields.get(c.storedRecords + 1)[1], "");
      }
      EXPECT_EQ(session.parcels.ParcelCount, c.parcelCount);
      EXPECT_EQ(session.parcels.ParcelRing.get(c.ringsStored), kRing);
      if (c.ringsStored < ParcelStore::kBound) {
        EXPECT_EQ(session.parcels.ParcelRing.get(c.ringsStored + 1), "");
      }
      // The place follows the ring line: a fault there leaves every parcel without one.
      EXPECT_EQ(session.parcels.ParcelY.get(1), c.faults.empty() || c.iid.size() < 10 ? 100.5 : 0.0);
    }
  }
}

TEST_F(ReadAheadTest, LsaLinesReadAheadAreLinkedAsInTurn) {
  WriteJob("T1N2E.COR", {CorRow("A", "1", "1")});
  const Strings whole = LsaFile({ControlRow("C", "0", "0")}, {LsaLineRow("A", "B"), LsaLineRow("B", "N"), LsaLineRow("N", "A")},
                                {LsaPointRow("N", "5", "6"), LsaPointRow("A", "9", "9")});
  Strings badFlag = whole;
  badFlag[2].back() = 'x';  // the second network line: a type mismatch
  const struct {
    const char* what;
    Strings lsa;
    int lineCount;
    std::vector<std::pair<int, int>> ends;
    int pointCount;
  } cases[] = {
      {"whole sections", whole, 4, {{1, 2}, {2, 3}, {3, 1}}, 3},
      {"a flag that is not a digit", badFlag, 2, {{1, 2}}, 2},
  };
  for (const auto& c : cases) {
    for (const bool ahead : {true, false}) {
      SCOPED_TRACE(std::string(c.what) + (ahead ? ", read ahead" : ", read in turn"));
      WriteJob("T1N2E.LSA", c.lsa);
      SetPoints({{"A", 1, 1}, {"B", 2, 2}});
      session.lsa.Clear();
      ReadAhead early(session, false);
      VerifyLsaPoints(session);
      ReadLsaLines(session, ahead ? early.LsaLines(session) : nullptr);

      EXPECT_EQ(session.points.PointCount(), c.pointCount);
      EXPECT_EQ(session.lsa.LsaLineCount, c.lineCount);
      std::vector<std::pair<int, int>> ends;
      for (int i = 1; i < session.lsa.LsaLineCount; ++i) {
        ends.emplace_back(session.lsa.LsaLineEnds.get(i).from, session.lsa.LsaLineEnds.get(i).to);
      }
      EXPECT_EQ(ends, c.ends);
    }
  }
}

}  // namespace
}  // namespace tessel::test
