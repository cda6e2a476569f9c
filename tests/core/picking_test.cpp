// Picking on the canvas: hit windows, the line tool's measure, picks by click and by window in
// every tool, the shared selection counter, duplicate points removed while events are served,
// the buttons of the list windows, and the move of a parcel location through .IID.

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/recording_ports.h"
#include "model/text.h"
#include "parcels/parcel_file.h"
#include "viewer/picking.h"
#include "viewer/tool_modes.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;
using Ints = std::vector<int>;
using Places = std::vector<std::tuple<std::string, double, double>>;

constexpr MouseButton kLeft = MouseButton::Left;

// Positions 0 to n - 1 of a selection array.
template <typename T>
Ints Mapped(const BoundedArray<T>& table, std::size_t n) {
  Ints out;
  for (std::size_t i = 0; i < n; ++i) out.push_back(table.get(static_cast<int>(i)));
  return out;
}

// A session on a recording canvas with a view of 1000 by 1000 job units, so that a click hits
// what lies within 10 units less a little.
class Picking : public JobFixture {
 protected:
  void SetUp() override {
    s.display = &display;
    View(1000.0f, 1000.0f);
  }
  void View(float right, float top, float bottom = 0.0f) {
    ViewState& v = s.view;
    std::tie(v.ViewLeft, v.ViewBottom, v.ViewRight, v.ViewTop) = std::tuple(0.0f, bottom, right, top);
  }
  void Points(const Places& points) {
    s.points.Clear();
    int i = 0;
    for (const auto& [id, x, y] : points) s.points.Set(++i, id, x, y);
    s.points.SetCount(static_cast<std::int16_t>(i));
  }
  // Record lines between stations of the point store.
  void Lines(std::initializer_list<std::pair<std::string, std::string>> ends) {
    for (const auto& [from, to] : ends) Raw(from, to);
  }
  void Raw(const std::string& from, const std::string& to, const std::string& distance = "100.00",
           const std::string& survey = "S1") {
    RawLineStore& r = s.raw;
    ++r.RawLineCount;
    r.RawLineFields.at(r.RawLineCount) = RawFields{"", from, to, distance, "1", "45.0000", survey};
    r.RawLineEnds.at(r.RawLineCount) = RawEnds{static_cast<std::int16_t>(s.points.Find(from)),
                                               static_cast<std::int16_t>(s.points.Find(to)), 1};
  }
  // Parcels by attribute line and location (x easting, y northing).
  void Parcels(const Places& parcels) {
    ParcelStore& p = s.parcels;
    p.Clear();
    for (const auto& [line, x, y] : parcels) {
      ++p.ParcelCount;
      p.ParcelLine.at(p.ParcelCount) = line;
      p.ParcelX.at(p.ParcelCount) = x;
      p.ParcelY.at(p.ParcelCount) = y;
      p.ParcelIdx.at(p.ParcelCount) = p.ParcelCount;
    }
  }
  void Click(MouseButton button, float x, float y, bool shift = false) {
    CanvasMouseDown(s, drag, button, x, y);
    CanvasMouseUp(s, drag, button, shift, x, y);
  }
  void ClickEach(std::initializer_list<float> diagonal) {
    for (float v : diagonal) Click(kLeft, v, v);
  }
  // A zoom-window drag with the left button, which the pick tools take as a window and disarm.
  void Drag(float x0, float y0, float x1, float y1) {
    s.view.ZoomWindowArmed = -1;
    CanvasMouseDown(s, drag, kLeft, x0, y0);
    CanvasMouseUp(s, drag, kLeft, false, x1, y1);
    EXPECT_EQ(s.view.ZoomWindowArmed, 0) << "tool " << static_cast<int>(s.ToolMode);
  }
  // Job T1N2E open, with its .IID written and read.
  void Load(const Strings& lines) {
    s.JobFolder = s.CurrentFolder = JobDir();
    std::tie(s.JobBase, s.JobName) = std::tuple(JobDir() + "T1N2E", "T1N2E");
    WriteJob("T1N2E.iid", lines);
    ReadParcels(s);
  }
  int Refreshes() const {
    return static_cast<int>(std::count(display.calls.begin(), display.calls.end(), "RefreshView"));
  }

  RecordingCanvas rc;
  RecordingDisplay display;
  DragState drag;
  Session s{user, rc, processes};
  Selection& sel = s.selection;
};

using PickLines = Picking;
using PickPoints = Picking;
using SelectionLists = Picking;
using ParcelLocationMove = Picking;

TEST_F(Picking, HitWindowIsRoundedHalfToEvenAndItsEdgesAreOutsideInSinglePrecision) {
  View(250.5f, 109.5f, 10.0f);
  EXPECT_EQ(HitWindow::Of(s.view).W, 250);
  EXPECT_EQ(HitWindow::Of(s.view).H, 100);
  // A click takes every point in its window: 0.01 of 252 (not 251.5) is just over 2.515.
  Points({{"100001", 102.505, 100.0}, {"100002", 102.515, 100.0}});
  ToolbarSelect(s);
  View(251.5f, 110.5f, 10.0f);
  EXPECT_EQ(HitWindow::Of(s.view).H, 100);
  Click(kLeft, 100.0f, 100.0f);
  EXPECT_EQ(sel.PointList.size(), 2u);
  const HitWindow hw{1000, 1000};
  const double half = static_cast<double>(0.01f) * 1000.0;  // 9.99999977648258
  for (const double off : {half, -half}) {
    EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0 + off, 500.0)) << off;
    EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0, 500.0 + off)) << off;
  }
  EXPECT_TRUE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 509.9999997, 490.0000003));
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 509.9999998, 500.0));  // inside by 0.01 exactly
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0, 490.0000002));
}

TEST_F(PickLines, TheBoxIsWidenedByOneInSinglePrecision) {
  // 100000.3 is 100000.296875 in single precision, so 99999.296875 is inside, not by the doubles.
  Points({{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}});
  Lines({{"100001", "100002"}});
  EXPECT_EQ(PickRawLine(s, 99999.296875f, 5050.0f), 1);
  EXPECT_EQ(PickRawLine(s, 99999.2890625f, 5050.0f), 0);
  EXPECT_EQ(PickRawLine(s, 100001.4f, 5050.0f), 0);
  EXPECT_EQ(PickRawLine(s, 100000.3f, 5101.0f), 1);
  EXPECT_EQ(PickRawLine(s, 100000.3f, 5101.001f), 0);
  EXPECT_EQ(PickRawLine(s, 100000.3f, 4998.9f), 0);
}

TEST_F(PickLines, VerticalAndHorizontalLinesTakeTheSubstitutes) {
  Points({{"100001", 100.0, 0.0}, {"100002", 100.0, 100.0}, {"100003", 101.0, 0.0}, {"100004", 101.0, 100.0}});
  Lines({{"100001", "100002"}, {"100003", "100004"}});
  EXPECT_EQ(PickRawLine(s, 100.3f, 50.0f), 1);
  EXPECT_EQ(PickRawLine(s, 100.8f, 50.0f), 2);  // the later line is nearer
  // A click on the first end of a horizontal line measures 0 by the substitute dy.
  Points({{"100001", 0.05, -5.0}, {"100002", 0.05, 5.0}, {"100003", 0.0, 0.0}, {"100004", 100.0, 0.0}});
  EXPECT_EQ(PickRawLine(s, 0.0f, 0.0f), 2);
}

TEST_F(PickLines, TheDifferenceOfTheSquaresRanksAndANegativeRootKeepsThePreviousDistance) {
  // Under 45 degrees the root's value is negative: the line keeps the distance of the line before,
  // 0 before the first. The vertical line lies 0.1 from the click.
  Points({{"100001", 0.0, 0.0}, {"100002", 100.0, 0.0}, {"100003", 50.1, -5.0}, {"100004", 50.1, 5.0},
          {"100005", 40.0, -5.0}, {"100006", 60.0, 5.0}});
  Lines({{"100001", "100002"}, {"100003", "100004"}});
  EXPECT_EQ(PickRawLine(s, 50.0f, 0.9f), 1);
  s.raw.Clear();
  Lines({{"100003", "100004"}, {"100001", "100002"}, {"100005", "100006"}});
  EXPECT_EQ(PickRawLine(s, 50.0f, 0.9f), 1);
  // The vertical line lies 0.5 from the click and the line of slope 2 about 0.537, yet the
  // measure of the latter is smaller (about 0.416).
  Points({{"100001", 0.5, -10.0}, {"100002", 0.5, 10.0}, {"100003", -4.4, -10.0}, {"100004", 5.6, 10.0}});
  s.raw.Clear();
  Lines({{"100001", "100002"}, {"100003", "100004"}});
  EXPECT_EQ(PickRawLine(s, 0.0f, 0.0f), 2);
}

TEST_F(PickLines, ATieKeepsTheEarlierLineAndItsDirection) {
  Points({{"100100", 0.0, 0.0}, {"100200", 10.0, 20.0}});
  Lines({{"100200", "100100"}, {"100100", "100200"}});
  s.ToolMode = ToolMode::PickLines;
  Click(kLeft, 4.0f, 10.0f);
  EXPECT_EQ(sel.LineList, Strings{"100200 100100 100.00 1 45.0000 S1"});
}

TEST_F(PickLines, OneClickTakesEveryRecordBetweenTheSameStationsOnce) {
  Points({{"100100", 0.0, 0.0}, {"100200", 10.0, 20.0}, {"200100", 20.0, 0.0}});
  Raw("100100", "100200", "22.36", "S1");
  Raw("100100", "200100", "20.00", "S1");
  Raw("100100", "100200", "22.40", "S2");
  Raw("200100", "100100", "20.00", "S1");
  Raw("100100", "100200", "22.36", "S1");  // the same text as the first
  ToolbarLines(s);
  Click(kLeft, 4.0f, 10.0f);
  EXPECT_EQ(sel.LineList, (Strings{"100100 100200 22.36 1 45.0000 S1", "100100 100200 22.40 1 45.0000 S2"}));
  EXPECT_EQ(Mapped(sel.SelectedLines, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Line(s) Selected");
}

TEST_F(Picking, WindowsTakeWhatLiesStrictlyInsideInEveryToolAndDragDirection) {
  // 100.000001 and 199.9999999 are 100 and 200 in single precision: on the edge.
  Points({{"100001", 150.0, 150.0}, {"100002", 100.0, 150.0}, {"100003", 100.000001, 150.0},
          {"100004", 150.0, 199.9999999}, {"100005", 199.99, 100.01}, {"100006", 250.0, 150.0}});
  Parcels({{"Sec_001 A", 150.0, 150.0}, {"Sec_002 B", 100.0, 150.0}, {"Sec_003 C", 150.0, 200.0000001},
           {"Sec_004 D", 199.0, 101.0}});
  // Lines with one end outside, one on the edge, and the text of the first again.
  Lines({{"100001", "100005"}, {"100001", "100006"}, {"100001", "100003"}, {"100005", "100001"}, {"100001", "100005"}});
  for (const auto& [x0, y0, x1, y1] : std::vector<std::tuple<float, float, float, float>>{
           {100, 100, 200, 200}, {200, 200, 100, 100}, {100, 200, 200, 100}, {200, 100, 100, 200}}) {
    SCOPED_TRACE(::testing::Message() << "from " << x0 << "," << y0);
    ParcelsClearAll(s);  // back to the parcel tool, which needs no display mark for a window
    EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (Ints{0, 0}));
    EXPECT_EQ(s.ToolMode, ToolMode::PickParcels);
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_004 D"}));
    PointsClear(s);  // back to point picking
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.PointList, (Strings{"100001    150     150", "100005    100.01     199.99"}));
    EXPECT_EQ(user.statusNow[3], "");  // a window reports no point
    ToolbarLines(s);
    sel.LineList.clear();
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.LineList, (Strings{"100001 100005 100.00 1 45.0000 S1", "100005 100001 100.00 1 45.0000 S1"}));
  }
  // Two parcel locations: a window disables the location commands but that of the attributes menu.
  EXPECT_FALSE(user.enabled.at("mnuPopupParcelMultiple"));
  EXPECT_FALSE(user.enabled.at("mnuPopupParcelMoveCentroid"));
  EXPECT_EQ(user.enabled.count("mnuAttributesMoveCentroid"), 0u);
}

TEST_F(Picking, OneSelectionCounterServesPointsParcelsAndPolygons) {
  View(10000.0f, 10000.0f);  // points and parcels within 100, polygons within 200
  Points({{"100100", 1000.0, 1000.0}, {"200200", 2000.0, 1000.0}});
  Parcels({{"Sec_001 A", 3000.0, 3000.0}, {"Sec_002 B", 4150.0, 4000.0}});
  s.polygons.RawPolygonCount = 1;
  s.polygons.RawPolygonX.at(1) = 4150.0;
  s.polygons.RawPolygonY.at(1) = 4000.0;
  s.checks.mnuOptionsParcel = true;
  ToolbarSelect(s);
  Click(kLeft, 1000.0f, 1000.0f);
  Click(kLeft, 2000.0f, 1000.0f);
  SetToolMode(s, ToolMode::PickParcels);
  ClickEach({3000.0f, 4000.0f});  // the second 150 off: outside the parcel window
  EXPECT_EQ(sel.ParcelList.size(), 1u);
  EXPECT_EQ(sel.SelectedParcels.get(2), 1);  // at the counter's place, not the list's
  EXPECT_EQ(user.statusNow[2], "3 Parcel(s) Selected");
  SetToolMode(s, ToolMode::PickPolygons);
  Click(kLeft, 4000.0f, 4000.0f);  // 150 off: inside the polygon window
  EXPECT_EQ(sel.SelectedPolygons.get(3), 1);
  EXPECT_EQ(user.statusNow[2], "4 Polygons Selected");
}

TEST_F(PickPoints, AClickListsEachPointAndFillsThePanels) {
  Points({{"100100", 1000.5, 5280.25}, {"100200", 1003.0, 5283.0}, {"100300", 1500.0, 5280.25}});
  ToolbarSelect(s);
  user.status.clear();
  Click(kLeft, 1001.0f, 5281.0f);
  EXPECT_EQ(sel.PointList, (Strings{"100100    5280.25     1000.5", "100200    5283     1003"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (Ints{1, 2}));
  EXPECT_EQ(user.status[2], (Strings{"Station 100100", "Station 100200"}));
  EXPECT_EQ(user.statusNow[3], "Northing =5283");
  EXPECT_EQ(user.statusNow[4], "Easting =1003");
}

TEST_F(PickPoints, NeighbouringDuplicatesGoWhileAClickArrivingInTheMiddleIsServed) {
  Points({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  const std::string a = "100100    100     100", b = "200200    300     300", c = "300300    500     500";
  ToolbarSelect(s);
  ClickEach({100.0f, 300.0f});
  // While the list is cleaned after another click on B, a click on C arrives.
  user.onYield = [&] { Click(kLeft, 500.0f, 500.0f); };
  Click(kLeft, 300.0f, 300.0f);
  EXPECT_EQ(sel.PointList, (Strings{a, b, c}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 3), (Ints{1, 2, 3}));
  EXPECT_EQ(s.SelectionCount, 4);  // the counter counts clicks, not entries
  user.onYield = [&] { PointsClear(s); };  // a clear in the middle ends the cleaning
  Click(kLeft, 500.0f, 500.0f);
  EXPECT_TRUE(sel.PointList.empty());
  // Only neighbours are compared; after a removal the same place is compared again.
  sel.PointList = {a, a, a, b, b, c, a};
  RemoveDuplicatePoints(s);
  EXPECT_EQ(sel.PointList, (Strings{a, b, c, a}));
}

TEST_F(PickPoints, EntriesMapBackByTheirFirstSixCharactersAndTheLastMatch) {
  Points({{"100100", 10.0, 10.0}, {"200200", 500.0, 500.0}, {"100100", 900.0, 900.0}, {"3003001", 200.0, 200.0},
          {"300300", 700.0, 700.0}});
  ToolbarSelect(s);
  ClickEach({10.0f, 200.0f});
  EXPECT_EQ(sel.PointList, (Strings{"100100    10     10", "3003001    200     200"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (Ints{3, 5}));
  PointsClicked(s, 0);  // a click on an entry marks the point it maps to
  EXPECT_EQ(rc.Of("Circle").at(0).args, (std::vector<double>{900.0, 900.0, 500.0}));
}

TEST_F(Picking, ParcelLocationCommandsWorkOnlyOnOneLocation) {
  const auto enabled = [&] {
    return std::vector<bool>{user.enabled.at("mnuPopupParcelMultiple"), user.enabled.at("mnuPopupParcelMoveCentroid"),
                             user.enabled.at("mnuAttributesMoveCentroid")};
  };
  const std::vector<bool> on(3, true), off(3, false);
  Parcels({{"Sec_001 A", 1000.0, 1000.0}, {"Sec_002 B", 1000.0, 1000.0}, {"Sec_003 C", 3000.0, 1000.0},
           {"Sec_004 D", 1000.0, 3000.0}});
  s.ToolMode = ToolMode::PickParcels;
  Click(kLeft, 1000.0f, 1000.0f);  // no parcel display mark: nothing is picked
  EXPECT_TRUE(sel.ParcelList.empty());
  s.checks.mnuOptionsParcelBrief = true;
  Click(kLeft, 1003.0f, 998.0f);
  EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_002 B"}));
  EXPECT_EQ(enabled(), on);
  Click(kLeft, 3000.0f, 1000.0f);  // another easting
  EXPECT_EQ(enabled(), off);
  Click(kLeft, 1000.0f, 1000.0f);  // the whole selection is compared, not the last pick
  EXPECT_EQ(enabled(), off);
  PopupParcelCancel(s);
  EXPECT_TRUE(sel.ParcelList.empty());
  Click(kLeft, 1000.0f, 1000.0f);
  EXPECT_EQ(enabled(), on);
  Click(kLeft, 1000.0f, 3000.0f);  // another northing
  EXPECT_EQ(enabled(), off);
}

TEST_F(SelectionLists, ParcelRemoveItemClosesTheGapAndCountsPolygons) {
  Parcels({{"Sec_001 A", 100.0, 100.0}, {"Sec_002 B", 300.0, 300.0}, {"Sec_003 C", 500.0, 500.0}});
  s.checks.mnuOptionsParcel = true;
  s.ToolMode = ToolMode::PickParcels;
  ClickEach({100.0f, 300.0f, 500.0f});
  ParcelsRemoveItem(s, 1);
  EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_003 C"}));
  EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Polygons Selected");
  ParcelsRemoveItem(s, -1);  // no entry chosen: the counter is lowered, then the step ends
  EXPECT_EQ(s.SelectionCount, 1);
  EXPECT_EQ(sel.ParcelList.size(), 2u);
  EXPECT_TRUE(user.enabled.at("frmTesting/cmdRemoveItem"));
  ParcelsRemoveItem(s, 0);
  ParcelsRemoveItem(s, 0);
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdRemoveItem"));
}

TEST_F(SelectionLists, PointRemoveItemRemapsAndClosingLeavesTheTool) {
  Points({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  ToolbarSelect(s);
  ClickEach({100.0f, 300.0f, 500.0f});
  PointsRemoveItem(s, 1);
  EXPECT_EQ(sel.PointList, (Strings{"100100    100     100", "300300    500     500"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Points Selected");
  PointsRemoveItem(s, -1);  // no entry chosen: the counter is lowered, then the step ends
  EXPECT_EQ(s.SelectionCount, 1);
  EXPECT_EQ(user.statusNow[2], "2 Points Selected");
  EXPECT_TRUE(user.enabled.at("frmSelectedPoints/cmdRemoveItem"));
  PointsRemoveItem(s, 0);
  PointsRemoveItem(s, 0);
  EXPECT_FALSE(user.enabled.at("frmSelectedPoints/cmdRemoveItem"));
  Click(kLeft, 300.0f, 300.0f);
  PointsClosed(s);  // closing the window leaves point picking for the zoom tool
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_EQ(s.ToolMode, ToolMode::ZoomPan);
}

TEST_F(SelectionLists, RemoveLineNeedsAnEntryAndCountsDownToZero) {
  sel.LineList = {"A B 1 1 1 S1", "A C 2 1 1 S1", "B C 3 1 1 S2"};
  for (int i = 0; i < 3; ++i) sel.SelectedLines.at(i) = static_cast<std::int16_t>(7 + i);
  EXPECT_EQ(LinesClipboardText(s), "A B 1 1 1 S1\r\nA C 2 1 1 S1\r\nB C 3 1 1 S2\r\n");
  LinesRemoveLine(s, -1);
  EXPECT_EQ(user.MessageTexts(), Strings{"You must first select an item to remove it from a list."});
  EXPECT_EQ(Refreshes(), 0);
  LinesRemoveLine(s, 1);
  EXPECT_EQ(sel.LineList, (Strings{"A B 1 1 1 S1", "B C 3 1 1 S2"}));
  EXPECT_EQ(Mapped(sel.SelectedLines, 2), (Ints{7, 9}));
  LinesRemoveLine(s, 1);
  LinesRemoveLine(s, 0);
  EXPECT_EQ(user.statusNow[2], "0 line(s) selected");
  LinesRemoveLine(s, 0);  // nothing left to choose
  EXPECT_EQ(user.messages.size(), 2u);
}

const std::string kAttr1 = "Sec_001  A T_W  12345     C   40.000", kAttr2 = "Sec_002  B T_?  22         10.000",
                  kAttr3 = "Sec_003  C T_L  33          5.500";
const std::string kRing1 = " 100100 100200 100300 100100", kRing3 = " 300100 300200 300300 300100";

std::string Location(const std::string& north, const std::string& east) {
  return Row({{1, " PARCEL N,E"}, {17, PadLeft(north, 11)}, {33, PadLeft(east, 11)}});
}

TEST_F(ParcelLocationMove, AShiftClickRewritesTheSelectionsLocationLinesAndKeepsTheFileBefore) {
  const Strings original = {"PARCELS OF T1N R2E", kAttr1, kRing1, Location("1000.000", "2000.000"), "",
                            kAttr2, " 200100 200200 200300 200100", Location("3000.500", "4000.250"), kAttr3, kRing3,
                            Location("5000.000", "6000.000") + "   old note"};
  Load(original);
  s.checks.mnuOptionsParcel = true;
  s.ToolMode = ToolMode::PickParcels;
  MoveCentroidCommand(s);
  EXPECT_EQ(user.MessageTexts(), Strings{"No parcel selected"});
  Click(kLeft, 2000.0f, 1000.0f);
  Click(kLeft, 6000.0f, 5000.0f);
  MoveCentroidCommand(s);
  ASSERT_EQ(s.ToolMode, ToolMode::MoveParcel);
  Click(kLeft, 1234567.25f, 123456.125f);  // without shift: nothing
  EXPECT_FALSE(JobHas("T1N2E.iib"));
  Click(kLeft, 1234567.25f, 123456.125f, true);
  Strings expected = original;
  expected[0] = kEditedMarker;
  expected[3] = expected[10] = " PARCEL N,E      123456.125     1234567.250  (Tessel moved)";
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(original));
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_EQ(Refreshes(), 1);
  // A second move of the same two, backed up from the first. 12345678.000 is neither 10 nor 11
  // characters: the northing keeps the blanks of the line before, none on the first moved line,
  // while the easting gets its six.
  Click(kLeft, 1234567.25f, 123456.125f);
  MoveCentroidCommand(s);
  Click(kLeft, 654321.5f, 12345678.0f, true);
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(expected));
  expected[3] = expected[10] = " PARCEL N,E12345678.000      654321.500  (Tessel moved)";
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
}

TEST_F(ParcelLocationMove, AGroupMovesByItsLastMemberOnly) {
  const Strings group = {"TITLE", kAttr1, kAttr2, kRing1, Location("1000.000", "2000.000"), kAttr3, kRing3,
                         Location("5000.000", "6000.000")};
  Load(group);
  sel.ParcelList = {kAttr1};
  sel.SelectedParcels.at(0) = 1;
  MoveParcelLocation(s, 700000.0, 800000.0);
  Strings expected = group;
  expected[0] = kEditedMarker;
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(1), 1000.0);  // read again from the file
  sel.ParcelList = {kAttr2};
  sel.SelectedParcels.at(0) = 2;
  MoveParcelLocation(s, 700000.0, 800000.0);
  expected[4] = " PARCEL N,E      800000.000      700000.000  (Tessel moved)";
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
}

}  // namespace
}  // namespace tessel::test
