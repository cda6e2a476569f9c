// The line stores and what they rest on: .LXN chains, the record lines of .raw with the temporary
// points of stations without coordinates, the surveys of .sid and the hidden segments of .not.

#include <cmath>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "calculations/note_file.h"
#include "datasets/line_files.h"
#include "job/load_sequence.h"
#include "model/fault.h"
#include "model/text.h"
#include "surveys/survey_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;
using Pairs = std::vector<std::pair<int, int>>;
const std::string kRaw = "Reading RAW Lines";
const std::string kComputing = "Computing temporary coordinates for unknown points";

// The from and to ends of lines 1 to n.
template <typename Ends>
Pairs EndsOf(const Ends& ends, int n) {
  Pairs out;
  for (int i = 1; i <= n; ++i) out.emplace_back(ends.get(i).from, ends.get(i).to);
  return out;
}

class LineFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }

  // A job in feet (unit code 2) or metres (1), with the given surveys and record lines, read.
  void ReadRawJob(int unitCode, const Strings& sid, const Strings& records) {
    WriteJob("T1N2E.def", DefFile(unitCode));
    if (!sid.empty()) {
      WriteJob("T1N2E.sid", sid);
      ReadSurveys(session);
    }
    WriteJob("T1N2E.raw", RawFile(records));
    user.status.clear();
    ReadRaw(session);
  }
  // "id x y" of the points from entry `first` to the last.
  Strings PointsFrom(int first) const {
    Strings out;
    for (int i = first; i <= session.points.PointCount(); ++i) {
      out.push_back(session.points.PointIds(i) + " " + std::to_string(session.points.PointX(i)) + " " +
                    std::to_string(session.points.PointY(i)));
    }
    return out;
  }
};

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
  EXPECT_EQ(EndsOf(session.lxn.LxnLineEnds, 7), (Pairs{{1, 2}, {2, 3}, {0, 0}, {7, 8}, {8, 9}, {4, 5}, {10, 11}}));
  EXPECT_EQ(user.status[1], Strings{"Reading LXN Lines"});
}

TEST_F(LineFiles, ASegmentCountNearTheThirtyTwoBitBoundOverflowsTheCounterAlone) {
  // 2147483647 - 1 added to the 16-bit counter is an overflow fault of that record alone; the
  // sum must not overflow first, and the walk stops at the segment table's bound.
  SetPoints({{"100100", 0, 0}, {"100200", 1, 0}, {"100300", 2, 0}});
  WriteJob("T1N2E.LXN", {"LINE CHAINS", "  TWP 1N 2E", "3", "100100100200100300", "2147483647", "100300100100",
                         "-2147483647", "100100100200", "999999"});
  ReadLxn(session);
  EXPECT_EQ(session.lxn.LxnRecordCount, 4);
  EXPECT_EQ(session.lxn.LxnSegmentCount, 2);
  EXPECT_EQ(EndsOf(session.lxn.LxnLineEnds, 3), (Pairs{{1, 2}, {2, 3}, {3, 1}}));
  ExpectFault(FaultKind::Overflow, [] { Add16(2, 2147483646); });
  ExpectFault(FaultKind::Overflow, [] { Add16(-2, -2147483647 - 1); });
  EXPECT_EQ(std::tuple(Add16(32766, 1), Add16(-32767, -1)), std::tuple(32767, -32768));
}

TEST(Bearings, PackedDegreesMinutesSecondsByTheLengthOfTheirText) {
  const double degree = std::atan(1.0) / 45.0;
  const std::pair<double, double> cases[] = {
      {51530, 51 + 53 / 60.0 + 30 / 3600.0},  // five characters overlap: 51 53 30
      {453000, 45 + 30 / 60.0},        {900000, 90},
      {4530, 45 / 60.0 + 30 / 3600.0}, {530, 53 / 60.0 + 30 / 3600.0},
      {100, 10 / 60.0},                {45, 45 / 3600.0},
      {5, 5 / 3600.0},                 {0, 0},
      {1234567, 0},                    {451530.5, 0},  // longer than six
      {12.5, 12 / 60.0 + 0.5 / 3600.0},
  };
  for (const auto& [packed, degrees] : cases) EXPECT_NEAR(DmsToRadians(packed), degrees * degree, 1e-12) << packed;
  // Every whole number a bearing field can hold, against the fields cut from its text.
  const double pi = 4.0 * std::atan(1.0);
  for (int n = 0; n < 1000000; ++n) {
    const std::string s = std::to_string(n);
    const auto field = [&](std::size_t from, std::size_t count) { return std::stod(s.substr(from, count)); };
    double d = 0, m = 0, sec = 0;
    if (s.size() >= 5) d = field(0, 2), m = field(2, 2), sec = field(s.size() - 2, 2);
    else if (s.size() >= 3) m = field(0, 2), sec = field(s.size() - 2, 2);
    else sec = field(0, 2);
    const double want = pi * (d + m / 60.0 + sec / 3600.0) / 180.0;
    if (DmsToRadians(n) != want) {
      ADD_FAILURE() << n << ": " << DmsToRadians(n) << " != " << want;
      break;
    }
  }
}

TEST_F(LineFiles, RawFieldsAreCutFromTheLineAndFromTheTrimmedLine) {
  SetPoints({{"100100", 0, 0}, {"100200", 0, 0}, {"  1001", 0, 0}});
  WriteJob("T1N2E.def", DefFile(2));
  WriteJob("T1N2E.sid", {"SSURV1", "SSURV2", Row({{1, "SSURV2"}, {20, "1.000"}})});
  ReadSurveys(session);
  Strings file = RawFile({RawRow("100100", "100200", "12.5", "2", "45.3000", "SURV1"),
                          RawRow("  1001", "100200", "12.50000", "1", "45.3000", "SURV1"),
                          RawRow("100200", "100100", "3", "4", "900000", "SURV2")});
  file.push_back(RawRow("999", "999", "1", "1", "1", "SURV1"));  // behind 999998: not read
  WriteJob("T1N2E.raw", file, Eol::Lf);
  user.status.clear();
  ReadRaw(session);

  ASSERT_EQ(session.raw.RawLineCount, 3);
  using F = RawFields;
  EXPECT_EQ(session.raw.RawLineFields.get(1), (F{"", "100100", "100200", "12.5    ", "2", "45.3000 ", "SURV1"}));
  // The leading blank shifts the two fields taken from the trimmed line, and only those.
  EXPECT_EQ(session.raw.RawLineFields.get(2), (F{"", "  1001", "100200", ".50000  ", "1", "45.3000 ", "RV1"}));
  EXPECT_EQ(session.raw.RawLineFields.get(3), (F{"", "100200", "100100", "3       ", "4", "900000  ", "SURV2"}));
  EXPECT_EQ(EndsOf(session.raw.RawLineEnds, 3), (Pairs{{1, 2}, {3, 2}, {2, 1}}));
  // The survey of the line by its name, the last survey of a name winning; none for "RV1".
  EXPECT_EQ((std::vector<int>{session.raw.RawLineEnds.get(1).survey, session.raw.RawLineEnds.get(2).survey,
                              session.raw.RawLineEnds.get(3).survey}),
            (std::vector<int>{1, 0, 3}));
  EXPECT_EQ(session.points.PointCount(), 3);
  EXPECT_EQ(user.status[1], Strings(4, kRaw));
}

TEST_F(LineFiles, TemporaryPointsTakeTheQuadrantSignsForwardAndBack) {
  SetPoints({{"100000", 1000, 1000}});
  session.extents = JobExtents{1, 2, 3, 4};
  Strings forward, back;
  for (const std::string q : {"1", "2", "3", "4"}) {
    forward.push_back(RawRow("100000", "90000" + q, "1", q, "300000", "NONE"));
    back.push_back(RawRow("90001" + q, "100000", "1", q, "300000", "NONE"));
  }
  forward.insert(forward.end(), back.begin(), back.end());
  ReadRawJob(2, {}, forward);

  // Feet, distance in chains, no unit caption: 66 x 1 x sin 30 = 33 east, 66 x cos 30 north,
  // through "######0.000".
  EXPECT_EQ(PointsFrom(2), (Strings{"900001 1033.000000 1057.158000", "900002 1033.000000 942.842000",
                                    "900003 967.000000 942.842000", "900004 967.000000 1057.158000",
                                    "900011 967.000000 942.842000", "900012 967.000000 1057.158000",
                                    "900013 1033.000000 1057.158000", "900014 1033.000000 942.842000"}));
  EXPECT_EQ(EndsOf(session.raw.RawLineEnds, 8), (Pairs{{1, 2}, {1, 3}, {1, 4}, {1, 5}, {6, 1}, {7, 1}, {8, 1}, {9, 1}}));
  EXPECT_EQ(std::tuple(session.extents.MinX, session.extents.MaxY), std::tuple(1.0, 4.0));  // the extents stay
  ASSERT_GE(user.status[1].size(), 4u);
  EXPECT_EQ(Strings(user.status[1].begin(), user.status[1].begin() + 4), (Strings{kRaw, kRaw, kComputing, kRaw}));
}

TEST_F(LineFiles, DistanceUnitCarriesForwardToSurveysWithoutAndIsIgnoredBackward) {
  SetPoints({{"100000", 1000, 1000}});
  ReadRawJob(1, {"SMETRIC", "C DU:M     <DISTANCE UNITS ARE METERS>", "SPLAIN", "C a plain comment"},
             {RawRow("100000", "900000", "1", "1", "900000", "PLAIN"),
              RawRow("100000", "900001", "100", "1", "900000", "METRIC"),
              RawRow("100000", "900002", "50", "1", "900000", "PLAIN"),
              RawRow("900003", "100000", "2", "1", "900000", "METRIC")});
  EXPECT_FLOAT_EQ(session.UnitsPerChain, static_cast<float>(66 / 3.2808333333));
  // The first line has no unit yet: chains, so one chain of 20.1168 metres. The third line's
  // survey has no unit caption: the metres of the line before stay. The last is placed back
  // from its to end in chains, the unit left aside.
  EXPECT_EQ(PointsFrom(2), (Strings{"900000 1020.117000 1000.000000", "900001 1100.000000 1000.000000",
                                    "900002 1050.000000 1000.000000", "900003 959.766000 1000.000000"}));
  EXPECT_EQ(session.raw.RawLineEnds.get(4).from, 5);
}

TEST_F(LineFiles, RecordWithBothEndsUnknownPlacesBothAndLaterLinesUseThem) {
  SetPoints({{"100000", 1000, 1000}});
  ReadRawJob(2, {"SFEET", "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>"},
             {RawRow("900001", "900002", "1", "1", "300000", "FEET"),
              RawRow("900002", "900003", "66", "2", "900000", "FEET")});
  // From the origin in feet, back from it without the unit, then from the temporary point.
  EXPECT_EQ(PointsFrom(2), (Strings{"900002 0.500000 0.866000", "900001 -32.500000 -56.292000",
                                    "900003 66.500000 0.866000"}));
  EXPECT_EQ(EndsOf(session.raw.RawLineEnds, 2), (Pairs{{3, 2}, {2, 4}}));
  EXPECT_EQ(user.status[1], (Strings{kRaw, kRaw, kComputing, kComputing, kRaw, kComputing}));
}

// A survey table counted past its bound (as a .sid of too many surveys leaves it) stops the
// linking at the first line, after that line's ends and before anything else is linked.

// Each load starts the unit factor afresh: a job whose unit code is neither metres nor feet does
// not draw or place its records with the factor of the job opened before it.
TEST_F(LineFiles, EachLoadStartsTheUnitFactorAfreshAndSurveysPastTheirBoundStopTheLinking) {
  session.UnitsPerChain = 66.0f;
  WriteJob("T1N2E.def", DefFile(3));
  WriteJob("T1N2E.COR", {});
  WriteJob("T1N2E.raw", RawFile({RawRow("100100", "100200", "1", "1", "300000", "GLO")}));
  LoadOnly(session);
  EXPECT_EQ(std::tuple(session.raw.RawLineCount, session.UnitsPerChain), std::tuple(1, 0.0f));

  SetPoints({{"100100", 10, 10}, {"100200", 20, 20}});
  for (int s = 1; s <= SurveyStore::kBound; ++s) session.surveys.SurveyTable.at(s).sLine = "SGLO";
  session.surveys.SurveyCount = SurveyStore::kBound + 1;
  WriteJob("T1N2E.def", DefFile(2));
  WriteJob("T1N2E.raw", RawFile({RawRow("100100", "100200", "1", "1", "300000", "GLO"),
                                 RawRow("100200", "100100", "1", "1", "300000", "GLO")}));
  ExpectFault(FaultKind::Subscript, [&] { ReadRaw(session); });
  EXPECT_EQ(EndsOf(session.raw.RawLineEnds, 2), (Pairs{{1, 2}, {0, 0}}));
  EXPECT_EQ(session.raw.RawLineEnds.get(1).survey, SurveyStore::kBound);  // the last of the name
  EXPECT_EQ(session.UnitsPerChain, 0.0f);  // the unit code is read after the linking
}

TEST_F(LineFiles, SurveysKeepTheirSLineAndTheRangeOfTheirCLinesAndPastTheTableAreAFault) {
  const std::vector<std::string> sid = {
      Row({{1, "SGLO 1856"}, {20, "  0.500"}, {27, "   100.0"}, {35, "    30.0"}}) + "   ",
      "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>",
      "C a comment, kept word for word",
      "not a survey line",
      "",
      "SBLM 1978",
      "S18CHARACTERSNAME01",
      "C DT:G     <GROUND DISTANCES>",
  };
  for (const Eol eol : {Eol::CrLf, Eol::Lf}) {
    WriteJob("T1N2E.sid", sid, eol);
    user.status.clear();
    ReadSurveys(session);  // a second read starts again from 0
    ASSERT_EQ(session.surveys.SurveyCount, 3);
    ASSERT_EQ(session.surveys.SurveyCaptionCount, 3);
    // A survey without C lines has its last below its first.
    std::vector<std::string> got;
    for (int k = 1; k <= 3; ++k) {
      const SurveyEntry& e = session.surveys.SurveyTable.get(k);
      got.push_back(SurveyName(e) + " " + std::to_string(e.first) + "-" + std::to_string(e.last));
    }
    EXPECT_EQ(got, (std::vector<std::string>{"GLO 1856 1-2", "BLM 1978 3-2", "18CHARACTERSNAME01 3-3"}));
    EXPECT_EQ(session.surveys.SurveyTable.get(1).sLine, RTrim(sid[0]));
    EXPECT_EQ(session.surveys.SurveyCaptions.get(2) + "|" + session.surveys.SurveyCaptions.get(3),
              "C a comment, kept word for word|C DT:G     <GROUND DISTANCES>");
    EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading Survey Identifiers"});
  }

  // Surveys past the table are a fault for the caller.
  std::vector<std::string> many;
  for (int s = 1; s <= 201; ++s) many.push_back("SSURVEY" + std::to_string(s));
  WriteJob("T1N2E.sid", many);
  EXPECT_THROW(ReadSurveys(session), RuntimeFault);
  EXPECT_EQ(SurveyName(session.surveys.SurveyTable.get(200)), "SURVEY200");
}

TEST_F(LineFiles, NoteSegmentsResolveToPointIndexes) {
  SetPoints({{"100100", 0, 0}, {"100200", 0, 0}, {"100300", 0, 0}, {"100100", 1, 1}});
  WriteJob("T1N2E.not", {"     2", "100100", "", "100200", "     3", "100100 100200", "", "100300 999999",
                         "  1002 100300"},
           Eol::Lf);
  ReadNotes(session);
  ASSERT_EQ(session.notes.NoteLineCount, 3);
  EXPECT_EQ(EndsOf(session.notes.NoteLineEnds, 3), (Pairs{{4, 2}, {3, 0}, {0, 3}}));

  // A short file keeps the segments read; a missing one gives none.
  WriteJob("T1N2E.not", {"     0", "     3", "100200 100300"});
  ReadNotes(session);
  EXPECT_EQ(EndsOf(session.notes.NoteLineEnds, session.notes.NoteLineCount), (Pairs{{2, 3}}));
  std::filesystem::remove(jobPath / "T1N2E.not");
  ReadNotes(session);
  EXPECT_EQ(session.notes.NoteLineCount, 0);

  // The table holds 1000 segments.
  std::vector<std::string> many = {"     0", "  1001"};
  for (int k = 1; k <= 1001; ++k) many.push_back("100100 100300");
  WriteJob("T1N2E.not", many);
  ReadNotes(session);
  EXPECT_EQ(session.notes.NoteLineCount, 1000);
  EXPECT_EQ(session.notes.NoteLineEnds.get(1000).to, 3);
}

}  // namespace
}  // namespace tessel::test
