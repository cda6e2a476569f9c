// The boundary match test: its described answers on small cases, the grid against the walk over
// every pair, the preview's tagged load and the overlay drawn at each refresh.

#include <gtest/gtest.h>

#include <random>
#include <tuple>

#include "regions/match_test.h"
#include "regions/region_console.h"
#include "regions/region_preview.h"
#include "test_support.h"
#include "viewer/drawing.h"

namespace tessel::test {
namespace {

using Points = std::vector<std::tuple<std::string, double, double>>;

class RegionMatch : public JobFixture {
 protected:
  std::vector<int> Both(const Points& points, double t) {
    SetPoints(points);
    const auto fast = FindMatchPoints(session.points, t);
    EXPECT_EQ(fast, FindMatchPointsByScan(session.points, t)) << "tolerance " << t;
    return fast;
  }
  // Two projects, TA and TB, over the same `spots` places in a row: every point has a partner.
  void SetPairedPoints(int spots) {
    Points points;
    for (int k = 0; k < spots; ++k) {
      points.emplace_back("100100TA", 1000.0 + 10 * k, 500.0);
      points.emplace_back("100100TB", 1000.0 + 10 * k, 500.0);
    }
    SetPoints(points);
  }
};

TEST_F(RegionMatch, WindowIsASquareWithInclusiveBoundsTagsFromColumnSevenInTheWalksOrder) {
  // Exactly T apart on both axes matches; a hair beyond does not.
  EXPECT_EQ(Both({{"100100TA", 1000, 1000}, {"100100TB", 1010, 1010}}, 10), (std::vector<int>{2, 1}));
  EXPECT_TRUE(Both({{"100100TA", 1000, 1000}, {"100100TB", 1010.001, 1000}}, 10).empty());
  // 1.2 T along the diagonal, each axis below T: still a match.
  EXPECT_EQ(Both({{"100100TA", 1000, 1000}, {"100100TB", 1008.5, 1008.5}}, 10).size(), 2u);
  // T = 0: only equal coordinates, which the inclusive bounds let match.
  EXPECT_EQ(Both({{"100100TA", 1000, 1000}, {"200200TB", 1000, 1000}, {"300300TB", 1000, 1000.0001}}, 0),
            (std::vector<int>{2, 1}));
  // One project: never, however near.
  EXPECT_TRUE(Both({{"100100TA", 1000, 1000}, {"100120TA", 1000, 1000}}, 10).empty());
  // The identifier's own characters shift the comparison: from column 7 these tags agree.
  EXPECT_TRUE(Both({{"10010XTA", 1000, 1000}, {"100100TA", 1000, 1000}}, 10).empty());
  // A negative tolerance leaves every window empty.
  EXPECT_TRUE(Both({{"100100TA", 1000, 1000}, {"100100TB", 1000, 1000}}, -1).empty());
  // Point 1 has X = 0: it is skipped as i, yet point 2 finds it; point 2 itself is never found.
  EXPECT_EQ(Both({{"100100TA", 0, 100}, {"100100TB", 3, 100}}, 10), (std::vector<int>{1}));
  // The order is the walk's: i = 1 finds 3 and 4; i = 3 adds 1; i = 4 adds nothing new; 2 is alone.
  EXPECT_EQ(Both({{"100100TA", 100, 100}, {"200200TB", 900, 900}, {"100100TB", 101, 100}, {"100100TC", 100, 101}}, 5),
            (std::vector<int>{3, 4, 1}));
}

TEST_F(RegionMatch, GridGivesTheWalksAnswerOnRandomRegions) {
  std::mt19937 engine(17);
  for (int round = 0; round < 60; ++round) {
    Points points;
    const int n = 20 + static_cast<int>(engine() % 300);
    const double spread = round % 3 == 0 ? 50.0 : 2000.0;
    std::uniform_real_distribution<double> coord(-spread, spread);
    for (int k = 0; k < n; ++k) {
      std::string tag(1, 'T');
      tag += std::to_string(engine() % 4);
      double x = 2.0e6 + std::round(coord(engine) * 4) / 4, y = 5.0e5 + std::round(coord(engine) * 4) / 4;
      if (engine() % 25 == 0) x = 0.0;
      if (engine() % 25 == 0 && k > 0) std::tie(std::ignore, x, y) = points[engine() % points.size()];
      points.emplace_back("100100" + tag, x, y);
    }
    for (double t : {0.0, 0.25, 3.0, 10.0, 75.0, 5000.0}) Both(points, t);
  }
}

TEST_F(RegionMatch, MatchLinesNeedBothEndsMatched) {
  SetPoints({{"100100TA", 100, 100}, {"100200TA", 100, 200}, {"100100TB", 100, 100}, {"100200TB", 100, 200},
             {"900900TB", 900, 900}});
  session.lsa.LsaLineCount = 4;  // lines 1..3, counted one ahead
  session.lsa.LsaLineEnds.at(1) = {1, 2};
  session.lsa.LsaLineEnds.at(2) = {3, 5};  // one end only
  session.lsa.LsaLineEnds.at(3) = {4, 3};
  const auto matched = FindMatchPoints(session.points, 1);
  EXPECT_EQ(FindMatchLines(session.lsa, matched, session.points.PointCount()),
            (std::vector<std::pair<int, int>>{{1, 2}, {4, 3}}));
}

TEST_F(RegionMatch, ComparisonStopsAtTheTablesBound) {
  SetPairedPoints(16001);
  std::vector<std::string> panels;
  CompareCoordinates(session, 1, [&](int, const std::string& text) { panels.push_back(text); });
  EXPECT_EQ(std::tuple(session.region.match.MatchPointCount, session.region.match.MatchLineCount),
            std::tuple(RegionMatchStore::kBound, 0));
  EXPECT_TRUE(panels.empty());
}

TEST_F(RegionMatch, ComparisonTellsItsProgressAndACancelKeepsNoMatch) {
  SetPairedPoints(3000);
  RegionConsole console(session);
  console.txtTolerance = "1";

  // Watched to its end: the comparing told as it goes, the tables filled, the lines drawn.
  StopAfter watched(StopAfter::kNever);
  ASSERT_TRUE(console.CompareForTest(&watched));
  console.ShowTest(true);
  EXPECT_EQ(watched.steps, (std::vector<std::string>{"Comparing coordinates", "Comparing coordinates"}));
  EXPECT_TRUE(std::is_sorted(watched.fractions.begin(), watched.fractions.end()));
  EXPECT_EQ(session.region.match.MatchPointCount, 6000);
  EXPECT_EQ(console.statusPanel[2], "Points matching: 6000. Lines: 0");
  EXPECT_TRUE(console.enabled.cmdDetails);

  // Stopped at either report: the tables stay empty, the panel says so, the status bar is ready
  // again and the pointer back, and the test's drawing states are as the test left them.
  for (std::size_t at : {0u, 1u}) {
    RegionConsole again(session);
    again.txtTolerance = "1";
    user.statusNow.clear();
    StopAfter stop(at + 1);
    EXPECT_FALSE(again.CompareForTest(&stop)) << at;
    again.ShowTest(false);
    EXPECT_EQ(std::tuple(session.region.match.MatchPointCount, session.region.match.MatchLineCount,
                         again.enabled.cmdDetails, again.chkLines, user.pointers.back()),
              std::tuple(0, 0, false, false, Pointer::Default))
        << at;
    EXPECT_EQ(again.statusPanel[2] + "|" + user.statusNow[1], "Test cancelled: no match was kept.|Ready") << at;
  }
}

class RegionPreview : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("REG");
    session.RegionJobFolder = JobDir();
    session.RegionJobName = "REG";
    // T1 has .COR and .LSA (control 500500 not in .COR, a line over it); T2 has only .LSA.
    WriteJob("T1.COR", {CorRow("100100", "1000.000", "2000.000"), CorRow("100200", "1000.000", "2100.000")});
    WriteJob("T1.LSA", LsaFile({ControlRow("100100", "1000.0", "2000.0"), ControlRow("500500", "1500.0", "2500.0")},
                               {LsaLineRow("100100", "100200"), LsaLineRow("100200", "500500")},
                               {LsaPointRow("100100", "1", "1")}));
    WriteJob("T2.LSA", LsaFile({ControlRow("100100", "1000.0", "2000.0")}, {LsaLineRow("100100", "200200")},
                               {LsaPointRow("100100", "1000.5", "2000.5"), LsaPointRow("200200", "1200", "2000")}));
  }
};

TEST_F(RegionPreview, LoadsEveryProjectTaggedAndSkipsKeywordsAndMissingFolders) {
  RegionConsole console(session);
  console.rows = {"T1", "FIXED", JobDir() + "T2", "/no/such/folder/T9", "NOREL"};
  std::vector<std::string> panels;
  console.onStatus = [&](int panel, const std::string& text) { panels.push_back(std::to_string(panel) + text); };
  console.Preview();

  const PointStore& p = session.points;
  ASSERT_EQ(p.PointCount(), 5);
  // The control station appended, not in .COR, is the third.
  EXPECT_EQ(Joined({p.PointIds(1), p.PointIds(3), p.PointIds(4), p.PointIds(5)}),
            "100100TT1|500500TT1|100100TT2|200200TT2");
  EXPECT_DOUBLE_EQ(p.PointX(4), 1000.5);
  // Lines found by their tagged ends; the .LSA-only project brings its own line.
  EXPECT_EQ(std::tuple(HeldLineCount(session), session.lsa.LsaLineEnds.get(2).to, session.lsa.LsaLineEnds.get(3).from,
                       session.lsa.LsaLineEnds.get(3).to),
            std::tuple(3, 3, 4, 5));
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{"Viewing LSA coordinates"}));
  EXPECT_EQ(Joined({user.status[2].back(), user.title, panels.front(), panels.back()}),
            "Project folder not found: /no/such/folder/T9|" + std::string(kTitlePreview) +
                "|1... |1Total Points = 5. Total Lines = 3.");
  EXPECT_TRUE(console.enabled.cmdTest);

  console.txtTolerance = "1";
  console.Test();
  EXPECT_EQ(panels.back(), "2Points matching: 2. Lines: 0");
  EXPECT_EQ(console.DetailsLines(), (std::vector<std::string>{" Matching Lines: "}));
  EXPECT_TRUE(console.enabled.cmdDetails && console.chkLines);
}

TEST_F(RegionPreview, OverlayIsDrawnAtEveryRefreshOnceTested) {
  RecordingCanvas recording;
  Session drawn{user, recording, processes};
  drawn.RegionJobFolder = JobDir();
  drawn.RegionJobName = "REG";
  drawn.config.PtSizeCor = 3;
  RegionConsole console(drawn);
  console.rows = {"T1", "T2"};
  console.txtTolerance = "";  // read as 0: nothing matches
  console.Preview();
  EXPECT_TRUE(drawn.checks.mnuOptionsLinesLSA);
  drawn.checks.mnuOptionsLinesLSA = false;  // only the overlay draws lines from here
  RefreshView(drawn);
  EXPECT_TRUE(recording.Of("Line").empty());

  console.txtTolerance = "1";
  console.chkEnds = true;
  console.Test();
  ASSERT_EQ(drawn.region.match.MatchLineCount, 0);
  // Give the two matched points a line of their own, then refresh.
  drawn.lsa.LsaLineEnds.at(drawn.lsa.LsaLineCount) = {1, 4};
  drawn.lsa.LsaLineCount = static_cast<std::int16_t>(drawn.lsa.LsaLineCount + 1);
  console.Test();
  recording.calls.clear();
  RefreshView(drawn);
  int yellow = 0;
  int blue = 0;
  for (const CanvasCall& c : recording.calls) {
    if (c.op == "Line" && c.colour == kYellow) ++yellow;
    if (c.op == "Dot" && c.colour == kBlue) ++blue;
  }
  EXPECT_EQ(std::tuple(yellow, blue), std::tuple(1, 2));
  EXPECT_NE(std::find(recording.calls.begin(), recording.calls.end(), CanvasCall{"PenWidth", {6.0}, 0, {}}),
            recording.calls.end());

  // A click on a row marks its project's points in red.
  recording.calls.clear();
  console.ClickRow(1);
  int red = 0;
  for (const CanvasCall& c : recording.calls) red += c.op == "Dot" && c.colour == kRed;
  EXPECT_EQ(red, 2);
}

}  // namespace
}  // namespace tessel::test
