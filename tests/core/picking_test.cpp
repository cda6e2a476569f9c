// Picking on the canvas and the selection lists: hit windows and their single-precision edges,
// the line tool's own measure, picks by click and by window in every tool, the one selection
// counter shared by the tools, the removal of duplicate points while events are served, the
// buttons of the list windows, and the move of a parcel location through .IID.

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "core/config.h"
#include "core/recording_ports.h"
#include "core/text.h"
#include "parcels/parcel_file.h"
#include "viewer/drawing.h"
#include "viewer/picking.h"
#include "viewer/tool_modes.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Strings = std::vector<std::string>;
using Places = std::vector<std::tuple<std::string, double, double>>;

constexpr MouseButton kLeft = MouseButton::Left;
constexpr MouseButton kRight = MouseButton::Right;

std::string Show(const CanvasCall& call) {
  std::ostringstream out;
  out << call.op;
  for (double a : call.args) out << ' ' << a;
  if (call.op == "Dot" || call.op == "Line" || call.op == "Circle") out << " #" << std::hex << call.colour;
  return out.str();
}

bool Has(const Strings& texts, const std::string& text) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// A session on a recording canvas with a view of 1000 by 1000 job units, so that a click hits
// what lies within 10 units less a little.
class Picking : public JobFixture {
 protected:
  void SetUp() override {
    s.ToolFolder = session.ToolFolder;
    s.display = &display;
    s.config.PtSizeCor = 2;
    s.config.LsaColor = 3;
    View(0.0f, 0.0f, 1000.0f, 1000.0f);
  }

  void View(float left, float bottom, float right, float top) {
    s.view.ViewLeft = left;
    s.view.ViewBottom = bottom;
    s.view.ViewRight = right;
    s.view.ViewTop = top;
  }

  void Points(const Places& points) {
    s.points.Clear();
    int i = 0;
    for (const auto& [id, x, y] : points) s.points.Set(++i, id, x, y);
    s.points.SetCount(static_cast<std::int16_t>(i));
  }

  // A record line between two stations of the point store.
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

  // A zoom-window drag with the left button, which the pick tools take as a window.
  void Drag(float x0, float y0, float x1, float y1) {
    s.view.ZoomWindowArmed = -1;
    CanvasMouseDown(s, drag, kLeft, x0, y0);
    CanvasMouseUp(s, drag, kLeft, false, x1, y1);
  }

  // Positions 0 to n - 1 of a selection array.
  template <typename T>
  static std::vector<int> Mapped(const BoundedArray<T>& table, std::size_t n) {
    std::vector<int> out;
    for (std::size_t i = 0; i < n; ++i) out.push_back(table.get(static_cast<int>(i)));
    return out;
  }

  Strings Painted() const {
    Strings out;
    for (const auto& call : rc.calls) out.push_back(Show(call));
    return out;
  }

  int Refreshes() const { return static_cast<int>(std::count(display.calls.begin(), display.calls.end(), "RefreshView")); }

  RecordingCanvas rc;
  RecordingDisplay display;
  DragState drag;
  Session s{user, rc, processes};
  Selection& sel = s.selection;
};

const std::string kMagenta = [] {
  std::ostringstream out;
  out << std::hex << PaletteColour(13);
  return out.str();
}();

// --- Hit windows -------------------------------------------------------------------------------

using PickHitWindow = Picking;

TEST_F(PickHitWindow, WidthAndHeightAreRoundedHalfToEven) {
  View(0.0f, 10.0f, 250.5f, 109.5f);
  EXPECT_EQ(HitWindow::Of(s.view).W, 250);
  EXPECT_EQ(HitWindow::Of(s.view).H, 100);
  View(0.0f, 10.0f, 251.5f, 110.5f);
  EXPECT_EQ(HitWindow::Of(s.view).W, 252);
  EXPECT_EQ(HitWindow::Of(s.view).H, 100);

  // What a click takes shows it: 0.01 of 250 is just under 2.5, of 252 just over 2.515.
  Points({{"100001", 102.505, 100.0}, {"100002", 102.515, 100.0}});
  ToolbarSelect(s);
  View(0.0f, 0.0f, 250.5f, 250.5f);
  Click(kLeft, 100.0f, 100.0f);
  EXPECT_TRUE(sel.PointList.empty());
  View(0.0f, 0.0f, 251.5f, 251.5f);
  Click(kLeft, 100.0f, 100.0f);
  EXPECT_EQ(sel.PointList.size(), 2u);
}

TEST_F(PickHitWindow, EdgesAreOutsideAndTheToleranceIsSinglePrecision) {
  const HitWindow hw{1000, 1000};
  const double half = static_cast<double>(0.01f) * 1000.0;  // 9.99999977648258
  EXPECT_LT(half, 10.0);
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0 + half, 500.0));
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0 - half, 500.0));
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0, 500.0 + half));
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0, 500.0 - half));
  EXPECT_TRUE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 509.9999997, 490.0000003));
  // Inside if the tolerance were exactly 0.01.
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 509.9999998, 500.0));
  EXPECT_FALSE(hw.Hits(kPointTolerance, 500.0f, 500.0f, 500.0, 490.0000002));
  // Raw polygons: 0.02 is 0.0199999996.
  EXPECT_TRUE(hw.Hits(kPolygonTolerance, 500.0f, 500.0f, 519.9999995, 480.0000005));
  EXPECT_FALSE(hw.Hits(kPolygonTolerance, 500.0f, 500.0f, 519.9999996, 500.0));

  // A click takes every point in its window, not only the nearest.
  Points({{"100001", 509.9999997, 500.0}, {"100002", 509.9999998, 500.0}, {"100003", 500.0, 510.0},
          {"100004", 490.0000003, 490.0000003}, {"100005", 500.0, 500.0}});
  ToolbarSelect(s);
  Click(kLeft, 500.0f, 500.0f);
  EXPECT_EQ(Mapped(sel.SelectedPoints, sel.PointList.size()), (std::vector<int>{1, 4, 5}));
}

// --- The line tool ---------------------------------------------------------------------------

using PickLines = Picking;

TEST_F(PickLines, VerticalLinesTakeTheSubstituteDxAndTheNearerWins) {
  Points({{"100001", 100.0, 0.0}, {"100002", 100.0, 100.0}, {"100003", 101.0, 0.0}, {"100004", 101.0, 100.0}});
  Raw("100001", "100002");
  Raw("100003", "100004");
  EXPECT_EQ(PickRawLine(s, 100.3f, 50.0f), 1);
  EXPECT_EQ(PickRawLine(s, 100.8f, 50.0f), 2);  // the later line is nearer
  EXPECT_EQ(PickRawLine(s, 99.5f, 100.9f), 1);  // within the widened box past an end
  EXPECT_EQ(PickRawLine(s, 99.5f, 101.5f), 0);
  EXPECT_EQ(PickRawLine(s, 102.5f, 50.0f), 0);
}

TEST_F(PickLines, ShallowLinesKeepThePreviousDistance) {
  // Below 45 degrees the value under the root is negative: the horizontal line measures
  // nothing of its own and keeps the distance of the line before, 0 before the first.
  Points({{"100001", 0.0, 0.0}, {"100002", 100.0, 0.0}, {"100003", 50.1, -5.0}, {"100004", 50.1, 5.0},
          {"100005", 40.0, -5.0}, {"100006", 60.0, 5.0}});
  Raw("100001", "100002");  // horizontal
  Raw("100003", "100004");  // vertical, 0.1 from the click below
  EXPECT_EQ(PickRawLine(s, 50.0f, 0.9f), 1);
  EXPECT_EQ(PickRawLine(s, 10.0f, -0.95f), 1);
  EXPECT_EQ(PickRawLine(s, 10.0f, 1.5f), 0);

  s.raw.Clear();
  Raw("100003", "100004");
  Raw("100001", "100002");
  Raw("100005", "100006");  // slope 0.5
  EXPECT_EQ(PickRawLine(s, 50.0f, 0.9f), 1);
}

TEST_F(PickLines, SteepLinesRankByTheDifferenceOfTheSquares) {
  // The vertical line lies 0.5 from the click and the line of slope 2 about 0.537, yet the
  // measure of the latter is smaller (about 0.416).
  Points({{"100001", 0.5, -10.0}, {"100002", 0.5, 10.0}, {"100003", -4.4, -10.0}, {"100004", 5.6, 10.0}});
  Raw("100001", "100002");
  Raw("100003", "100004");
  EXPECT_EQ(PickRawLine(s, 0.0f, 0.0f), 2);
}

TEST_F(PickLines, TheBoxIsWidenedByOneInSinglePrecision) {
  // 100000.3 is 100000.296875 in single precision: a click at 99999.296875 is inside the box,
  // though not by the double values.
  Points({{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}});
  Raw("100001", "100002");
  EXPECT_EQ(PickRawLine(s, 99999.296875f, 5050.0f), 1);
  EXPECT_EQ(PickRawLine(s, 99999.2890625f, 5050.0f), 0);
  EXPECT_EQ(PickRawLine(s, 100000.3f, 5101.0f), 1);
  EXPECT_EQ(PickRawLine(s, 100000.3f, 5101.001f), 0);
}

TEST_F(PickLines, OneClickTakesEveryRecordBetweenTheSameStationsOnce) {
  Points({{"100100", 0.0, 0.0}, {"100200", 10.0, 20.0}, {"200100", 20.0, 0.0}});
  Raw("100100", "100200", "22.36", "S1");
  Raw("100100", "200100", "20.00", "S1");
  Raw("100100", "100200", "22.40", "S2");
  Raw("200100", "100100", "20.00", "S1");
  Raw("100100", "100200", "22.36", "S1");  // the same text as the first
  ToolbarLines(s);
  EXPECT_EQ(user.shownForms, Strings{"frmSelectedLines"});
  Click(kLeft, 4.0f, 10.0f);
  const Strings expected = {"100100 100200 22.36 1 45.0000 S1", "100100 100200 22.40 1 45.0000 S2"};
  EXPECT_EQ(sel.LineList, expected);
  EXPECT_EQ(Mapped(sel.SelectedLines, 2), (std::vector<int>{1, 3}));
  EXPECT_EQ(user.statusNow[1], "Select line(s)");
  EXPECT_EQ(user.statusNow[2], "2 Line(s) Selected");
  EXPECT_EQ(Painted(), (Strings{"PenWidth 3", "Line 0 0 10 20 #ffff00", "PenWidth 1", "Line 0 0 10 20 #3"}));

  Click(kLeft, 4.0f, 10.0f);
  Click(kLeft, 15.0f, 10.0f);  // in no line's box
  EXPECT_EQ(sel.LineList, expected);
  EXPECT_EQ(user.statusNow[2], "2 Line(s) Selected");

  Click(kRight, 4.0f, 10.0f);
  ASSERT_EQ(user.popups.size(), 1u);
  EXPECT_EQ(user.popups[0].menu, "mnuPopupline");
  EXPECT_EQ(user.pointers.back(), Pointer::Arrow);
  EXPECT_EQ(Refreshes(), 1);
  EXPECT_EQ(sel.LineList, expected);
}

TEST_F(PickLines, ATieKeepsTheEarlierLineAndItsDirection) {
  // Both directions of one line measure exactly alike; the records of the earlier one are taken.
  Points({{"100100", 0.0, 0.0}, {"100200", 10.0, 20.0}});
  Raw("100200", "100100", "22.36");
  Raw("100100", "100200", "22.36");
  s.ToolMode = 6;
  Click(kLeft, 4.0f, 10.0f);
  EXPECT_EQ(sel.LineList, Strings{"100200 100100 22.36 1 45.0000 S1"});

  s.raw.Clear();
  sel.LineList.clear();
  Raw("100100", "100200", "22.36");
  Raw("100200", "100100", "22.36");
  Click(kLeft, 4.0f, 10.0f);
  EXPECT_EQ(sel.LineList, Strings{"100100 100200 22.36 1 45.0000 S1"});
}

// --- Points by click ---------------------------------------------------------------------------

using PickPoints = Picking;

TEST_F(PickPoints, AClickListsEachPointAndFillsThePanels) {
  Points({{"100100", 1000.5, 5280.25}, {"100200", 1003.0, 5283.0}, {"100300", 1500.0, 5280.25}});
  ToolbarSelect(s);
  EXPECT_EQ(s.ToolMode, 1);
  EXPECT_EQ(user.shownForms, Strings{"frmSelectedPoints"});
  EXPECT_TRUE(user.checked["Select"]);
  sel.PointPickActive = true;
  user.status.clear();
  Click(kLeft, 1001.0f, 5281.0f);

  EXPECT_EQ(sel.PointList, (Strings{"100100    5280.25     1000.5", "100200    5283     1003"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (std::vector<int>{1, 2}));
  EXPECT_EQ(s.SelectionCount, 2);
  EXPECT_EQ(sel.PickedPointId, "100200");
  EXPECT_EQ(user.status[1].front(), "Select a point to display coordinates");
  EXPECT_EQ(user.status[2], (Strings{"Station 100100", "Station 100200"}));
  EXPECT_EQ(user.statusNow[1], "You selected ");
  EXPECT_EQ(user.statusNow[3], "Northing =5283");
  EXPECT_EQ(user.statusNow[4], "Easting =1003");
  EXPECT_EQ(Painted(), (Strings{"PenWidth 6", "Dot 1000.5 5280.25 #" + kMagenta, "PenWidth 1", "PenWidth 6",
                                "Dot 1003 5283 #" + kMagenta, "PenWidth 1"}));
}

TEST_F(PickPoints, NeighbouringDuplicatesGoAndAClickInTheMiddleIsServed) {
  Points({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  const std::string a = "100100    100     100", b = "200200    300     300", c = "300300    500     500";
  ToolbarSelect(s);
  Click(kLeft, 100.0f, 100.0f);
  Click(kLeft, 300.0f, 300.0f);
  Click(kLeft, 300.0f, 300.0f);
  EXPECT_EQ(sel.PointList, (Strings{a, b}));
  EXPECT_TRUE(Has(user.status[1], "Duplicate, removed"));
  EXPECT_EQ(s.SelectionCount, 3);  // the counter counts clicks, not entries
  EXPECT_GT(user.yields, 0);

  // While the list is cleaned after another click on B, a click on C arrives.
  DragState second;
  user.onYield = [&] {
    CanvasMouseDown(s, second, kLeft, 500.0f, 500.0f);
    CanvasMouseUp(s, second, kLeft, false, 500.0f, 500.0f);
  };
  Click(kLeft, 300.0f, 300.0f);
  EXPECT_EQ(sel.PointList, (Strings{a, b, c}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 3), (std::vector<int>{1, 2, 3}));
  const Strings& panel2 = user.status[2];
  ASSERT_GE(panel2.size(), 2u);
  EXPECT_EQ(panel2[panel2.size() - 2], "Station 300300");  // the inner click finishes first
  EXPECT_EQ(panel2.back(), "Station 200200");
  EXPECT_EQ(s.SelectionCount, 5);

  // Only neighbours are compared; after a removal the same place is compared again.
  Click(kLeft, 100.0f, 100.0f);
  EXPECT_EQ(sel.PointList, (Strings{a, b, c, a}));
  sel.PointList = {a, a, a, b, b, c, a};
  user.status.clear();
  RemoveDuplicatePoints(s);
  EXPECT_EQ(sel.PointList, (Strings{a, b, c, a}));
  EXPECT_EQ(user.status[1], (Strings{"Duplicate, removed", "Duplicate, removed", "Duplicate, removed"}));
}

TEST_F(PickPoints, AClearInTheMiddleEndsTheCleaning) {
  Points({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  ToolbarSelect(s);
  Click(kLeft, 100.0f, 100.0f);
  Click(kLeft, 300.0f, 300.0f);
  user.onYield = [&] { PointsClear(s); };
  Click(kLeft, 300.0f, 300.0f);
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_FALSE(Has(user.status[1], "Duplicate, removed"));
  EXPECT_EQ(s.ToolMode, 1);

  Click(kLeft, 500.0f, 500.0f);
  EXPECT_EQ(sel.PointList, Strings{"300300    500     500"});
  EXPECT_EQ(sel.SelectedPoints.get(0), 3);
}

TEST_F(PickPoints, EntriesMapBackByTheirFirstSixCharactersAndTheLastMatch) {
  Points({{"100100", 10.0, 10.0}, {"200200", 500.0, 500.0}, {"100100", 900.0, 900.0}, {"3003001", 200.0, 200.0},
          {"300300", 700.0, 700.0}});
  ToolbarSelect(s);
  Click(kLeft, 10.0f, 10.0f);
  Click(kLeft, 200.0f, 200.0f);
  EXPECT_EQ(sel.PointList, (Strings{"100100    10     10", "3003001    200     200"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (std::vector<int>{3, 5}));

  // A click on an entry marks the point it maps to.
  rc.calls.clear();
  PointsClicked(s, 0);
  EXPECT_EQ(Painted(), (Strings{"PenWidth 2", "Circle 900 900 500 #ff0000", "PenWidth 4", "Dot 900 900 #" + kMagenta,
                                "PenWidth 1"}));
  EXPECT_EQ(Refreshes(), 1);
}

// --- Windows -----------------------------------------------------------------------------------

using PickWindow = Picking;

// The four ways to drag the same window from (100, 100) to (200, 200).
const std::vector<std::tuple<float, float, float, float>> kDrags = {
    {100.0f, 100.0f, 200.0f, 200.0f}, {200.0f, 200.0f, 100.0f, 100.0f}, {100.0f, 200.0f, 200.0f, 100.0f},
    {200.0f, 100.0f, 100.0f, 200.0f}};

TEST_F(PickWindow, PointsStrictlyInsideInSinglePrecisionWhateverTheDragDirection) {
  // 100.000001 and 199.9999999 are 100 and 200 in single precision: on the edge.
  Points({{"100001", 150.0, 150.0}, {"100002", 100.0, 150.0}, {"100003", 100.000001, 150.0},
          {"100004", 150.0, 199.9999999}, {"100005", 199.99, 100.01}, {"100006", 250.0, 150.0}});
  ToolbarSelect(s);
  for (const auto& [x0, y0, x1, y1] : kDrags) {
    PointsClear(s);
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.PointList, (Strings{"100001    150     150", "100005    100.01     199.99"})) << x0 << "," << y0;
    EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (std::vector<int>{1, 5}));
    EXPECT_EQ(s.view.ZoomWindowArmed, 0);
    EXPECT_EQ(user.statusNow[1], "Select Point(s)");
  }
  EXPECT_TRUE(Has(user.status[1], "Select Points(window)"));
  for (const auto& text : user.status[2]) EXPECT_EQ(text, "");  // no station is reported
  EXPECT_EQ(user.pointers.back(), Pointer::Arrow);
}

TEST_F(PickWindow, ParcelsWhateverTheDragDirection) {
  Parcels({{"Sec_001 A", 150.0, 150.0}, {"Sec_002 B", 100.0, 150.0}, {"Sec_003 C", 150.0, 200.0000001},
           {"Sec_004 D", 199.0, 101.0}});
  s.ToolMode = 4;  // no parcel display mark is needed for a window
  for (const auto& [x0, y0, x1, y1] : kDrags) {
    ParcelsClearAll(s);
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_004 D"})) << x0 << "," << y0;
    EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (std::vector<int>{1, 4}));
    EXPECT_EQ(user.statusNow[2], "2 Parcel(s) Selected");
    EXPECT_EQ(user.statusNow[1], "Select Parcel(s) for editing");
    EXPECT_EQ(s.view.ZoomWindowArmed, 0);
  }
  EXPECT_TRUE(Has(user.status[1], "Select Parcels (window)"));
  // Two locations: a window disables two of the three location commands.
  EXPECT_FALSE(user.enabled.at("mnuPopupParcelMultiple"));
  EXPECT_FALSE(user.enabled.at("mnuPopupParcelMoveCentroid"));
  EXPECT_EQ(user.enabled.count("mnuAttributesMoveCentroid"), 0u);

  s.ToolMode = 1;
  ParcelsClearAll(s);
  EXPECT_EQ(s.SelectionCount, 0);
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (std::vector<int>{0, 0}));
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdRemoveItem"));
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdClearAll"));
  EXPECT_EQ(s.ToolMode, 4);
}

TEST_F(PickWindow, LinesWithBothEndsInsideWhateverTheDragDirection) {
  Points({{"100001", 120.0, 120.0}, {"100002", 180.0, 180.0}, {"100003", 250.0, 150.0}, {"100004", 100.0, 150.0},
          {"100005", 150.0, 150.0}});
  Raw("100001", "100002");
  Raw("100001", "100003");  // one end outside
  Raw("100001", "100004");  // one end on the edge
  Raw("100005", "100002");
  Raw("100001", "100002");  // the text of the first again
  ToolbarLines(s);
  for (const auto& [x0, y0, x1, y1] : kDrags) {
    sel.LineList.clear();
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.LineList, (Strings{"100001 100002 100.00 1 45.0000 S1", "100005 100002 100.00 1 45.0000 S1"}))
        << x0 << "," << y0;
    EXPECT_EQ(Mapped(sel.SelectedLines, 2), (std::vector<int>{1, 4}));
    EXPECT_EQ(user.statusNow[2], "2 line(s) selected");
    EXPECT_EQ(s.view.ZoomWindowArmed, 0);
  }
  EXPECT_EQ(user.statusNow[1], "Select lines (Window)");
  EXPECT_EQ(Refreshes(), 4);
}

TEST_F(PickWindow, OneSelectionCounterServesPointsParcelsAndPolygons) {
  View(0.0f, 0.0f, 10000.0f, 10000.0f);  // points and parcels within 100, polygons within 200
  Points({{"100100", 1000.0, 1000.0}, {"200200", 2000.0, 1000.0}});
  Parcels({{"Sec_001 A", 3000.0, 3000.0}, {"Sec_002 B", 4150.0, 4000.0}});
  s.polygons.RawPolygonCount = 1;
  s.polygons.RawPolygonX.at(1) = 4150.0;
  s.polygons.RawPolygonY.at(1) = 4000.0;
  s.checks.mnuOptionsParcel = true;

  ToolbarSelect(s);
  Click(kLeft, 1000.0f, 1000.0f);
  Click(kLeft, 2000.0f, 1000.0f);
  SetToolMode(s, 4);
  Click(kLeft, 3000.0f, 3000.0f);
  EXPECT_EQ(s.SelectionCount, 3);
  EXPECT_EQ(sel.SelectedParcels.get(2), 1);  // at the counter's place, not the list's
  EXPECT_EQ(sel.SelectedParcels.get(0), 0);
  EXPECT_EQ(user.statusNow[2], "3 Parcel(s) Selected");
  Click(kLeft, 4000.0f, 4000.0f);  // 150 off: outside the parcel window
  EXPECT_EQ(sel.ParcelList.size(), 1u);

  SetToolMode(s, 5);
  Click(kLeft, 4000.0f, 4000.0f);  // 150 off: inside the polygon window
  EXPECT_EQ(s.SelectionCount, 4);
  EXPECT_EQ(sel.SelectedPolygons.get(3), 1);
  EXPECT_EQ(user.statusNow[1], "Select a Polygon");
  EXPECT_EQ(user.statusNow[2], "4 Polygons Selected");

  Click(kRight, 4000.0f, 4000.0f);
  ASSERT_EQ(user.popups.size(), 1u);
  EXPECT_EQ(user.popups[0].menu, "mnuPopup");
  EXPECT_EQ(user.popups[0].visible, (Strings{"mnuPopupEditCRPO", "mnuPopupCancel"}));
  EXPECT_EQ(s.SelectionCount, 4);
}

// --- Parcels by click --------------------------------------------------------------------------

using PickParcels = Picking;

TEST_F(PickParcels, LocationCommandsWorkOnlyOnOneLocation) {
  const Strings commands = {"mnuPopupParcelMultiple", "mnuPopupParcelMoveCentroid", "mnuAttributesMoveCentroid"};
  const auto enabled = [&] {
    std::vector<bool> out;
    for (const auto& name : commands) out.push_back(user.enabled.at(name));
    return out;
  };
  const std::vector<bool> on = {true, true, true}, off = {false, false, false};
  Parcels({{"Sec_001 A", 1000.0, 1000.0}, {"Sec_002 B", 1000.0, 1000.0}, {"Sec_003 C", 3000.0, 3000.0}});
  s.ToolMode = 4;

  Click(kLeft, 1000.0f, 1000.0f);  // no parcel display mark: nothing is picked
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_EQ(user.statusNow[1], "Select Parcel(s) for editing");

  s.checks.mnuOptionsParcelBrief = true;
  Click(kLeft, 1003.0f, 998.0f);
  EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_002 B"}));
  EXPECT_EQ(enabled(), on);
  EXPECT_TRUE(user.enabled.at("frmTesting/cmdRemoveItem"));
  EXPECT_TRUE(user.enabled.at("frmTesting/cmdClearAll"));
  EXPECT_EQ(user.statusNow[2], "2 Parcel(s) Selected");
  EXPECT_EQ(rc.Of("Dot").size(), 2u);
  EXPECT_EQ(rc.Of("Dot")[0].colour, kRed);

  Click(kLeft, 3000.0f, 3000.0f);
  EXPECT_EQ(enabled(), off);
  EXPECT_DOUBLE_EQ(sel.ClickedParcelX, 3000.0);
  // A later pick at the first place enables them, and the comparison disables them again.
  Click(kLeft, 1000.0f, 1000.0f);
  EXPECT_EQ(enabled(), off);
  EXPECT_EQ(s.SelectionCount, 5);

  PopupParcelCancel(s);
  EXPECT_EQ(s.SelectionCount, 0);
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdRemoveItem"));
  EXPECT_EQ(user.statusNow[2], "");
  Click(kLeft, 1000.0f, 1000.0f);
  EXPECT_EQ(enabled(), on);

  Click(kRight, 1000.0f, 1000.0f);
  ASSERT_EQ(user.popups.size(), 1u);
  EXPECT_EQ(user.popups[0].menu, "mnuPopupParcel");
  EXPECT_EQ(sel.ParcelList.size(), 2u);
}

// --- The list windows and the commands on the selection ----------------------------------------

using SelectionLists = Picking;

TEST_F(SelectionLists, ParcelRemoveItemClosesTheGapAndCountsPolygons) {
  Parcels({{"Sec_001 A", 100.0, 100.0}, {"Sec_002 B", 300.0, 300.0}, {"Sec_003 C", 500.0, 500.0}});
  s.checks.mnuOptionsParcel = true;
  s.ToolMode = 4;
  Click(kLeft, 100.0f, 100.0f);
  Click(kLeft, 300.0f, 300.0f);
  Click(kLeft, 500.0f, 500.0f);
  const int refreshes = Refreshes();

  ParcelsRemoveItem(s, 1);
  EXPECT_EQ(sel.ParcelList, (Strings{"Sec_001 A", "Sec_003 C"}));
  EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (std::vector<int>{1, 3}));
  EXPECT_EQ(s.SelectionCount, 2);
  EXPECT_EQ(user.statusNow[2], "2 Polygons Selected");
  EXPECT_TRUE(Has(user.clearedLists, "frmAttributes"));
  EXPECT_TRUE(user.enabled.at("frmTesting/cmdRemoveItem"));
  EXPECT_EQ(Refreshes(), refreshes + 1);

  // No entry chosen: the counter is lowered, then the step ends.
  ParcelsRemoveItem(s, -1);
  EXPECT_EQ(s.SelectionCount, 1);
  EXPECT_EQ(sel.ParcelList.size(), 2u);
  EXPECT_EQ(user.statusNow[2], "2 Polygons Selected");
  EXPECT_EQ(Refreshes(), refreshes + 1);

  ParcelsRemoveItem(s, 0);
  EXPECT_EQ(sel.SelectedParcels.get(0), 3);
  ParcelsRemoveItem(s, 0);
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdRemoveItem"));
}

TEST_F(SelectionLists, PointRemoveItemRemapsAndClearKeepsTheTool) {
  Points({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  ToolbarSelect(s);
  Click(kLeft, 100.0f, 100.0f);
  Click(kLeft, 300.0f, 300.0f);
  Click(kLeft, 500.0f, 500.0f);

  PointsRemoveItem(s, 1);
  EXPECT_EQ(sel.PointList, (Strings{"100100    100     100", "300300    500     500"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (std::vector<int>{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Points Selected");
  EXPECT_TRUE(user.enabled.at("frmSelectedPoints/cmdRemoveItem"));

  const std::size_t panelWrites = user.status[2].size();
  PointsRemoveItem(s, -1);
  EXPECT_EQ(s.SelectionCount, 1);
  EXPECT_EQ(sel.PointList.size(), 2u);
  EXPECT_EQ(user.status[2].size(), panelWrites);

  PointsRemoveItem(s, 0);
  EXPECT_EQ(sel.SelectedPoints.get(0), 3);
  PointsRemoveItem(s, 0);
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_FALSE(user.enabled.at("frmSelectedPoints/cmdRemoveItem"));

  Click(kLeft, 300.0f, 300.0f);
  s.ToolMode = 6;
  PointsClear(s);
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_EQ(s.ToolMode, 1);
  EXPECT_EQ(user.statusNow[2], "");

  Click(kLeft, 300.0f, 300.0f);
  PointsClosed(s);
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_EQ(s.ToolMode, 2);
  EXPECT_TRUE(user.checked.at("Zoom"));
  EXPECT_FALSE(user.checked.at("Select"));
}

TEST_F(SelectionLists, RemoveLineNeedsAnEntryAndCountsDownToZero) {
  sel.LineList = {"A B 1 1 1 S1", "A C 2 1 1 S1", "B C 3 1 1 S2"};
  for (int i = 0; i < 3; ++i) sel.SelectedLines.at(i) = static_cast<std::int16_t>(7 + i);
  EXPECT_EQ(LinesClipboardText(s), "A B 1 1 1 S1\r\nA C 2 1 1 S1\r\nB C 3 1 1 S2\r\n");

  LinesRemoveLine(s, -1);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "You must first select an item to remove it from a list.");
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  EXPECT_EQ(sel.LineList.size(), 3u);
  EXPECT_EQ(Refreshes(), 0);

  LinesRemoveLine(s, 1);
  EXPECT_EQ(sel.LineList, (Strings{"A B 1 1 1 S1", "B C 3 1 1 S2"}));
  EXPECT_EQ(Mapped(sel.SelectedLines, 2), (std::vector<int>{7, 9}));
  EXPECT_EQ(user.statusNow[2], "2 line(s) selected");
  LinesRemoveLine(s, 1);
  EXPECT_EQ(user.statusNow[2], "1 line(s) selected");
  LinesRemoveLine(s, 0);
  EXPECT_TRUE(sel.LineList.empty());
  EXPECT_EQ(user.statusNow[2], "0 line(s) selected");
  EXPECT_EQ(Refreshes(), 3);
  EXPECT_EQ(LinesClipboardText(s), "");

  LinesRemoveLine(s, 0);  // nothing left to choose
  EXPECT_EQ(user.messages.size(), 2u);
}

TEST_F(SelectionLists, MoveCentroidNeedsASelection) {
  s.ToolMode = 4;
  MoveCentroidCommand(s);
  EXPECT_EQ(user.MessageTexts(), Strings{"No parcel selected"});
  EXPECT_EQ(s.ToolMode, 4);

  s.SelectionCount = 1;
  MoveCentroidCommand(s);
  EXPECT_EQ(s.ToolMode, 7);
  EXPECT_EQ(user.pointers.back(), Pointer::Crosshair);
  EXPECT_EQ(user.statusNow[1], "Hold shift and click new");

  PopupParcelPanZoom(s);
  EXPECT_EQ(s.ToolMode, 2);
  EXPECT_EQ(user.statusNow[1], "Pan/Zoom");
  EXPECT_EQ(user.statusNow[2], "");
  EXPECT_TRUE(user.checked.at("Zoom"));
  EXPECT_FALSE(user.checked.at("Centroid"));
}

TEST_F(SelectionLists, RightClickLeavesPointPickingAndOpensThePopupInZoom) {
  Points({{"100100", 100.0, 100.0}});
  ToolbarSelect(s);
  Click(kRight, 100.0f, 100.0f);
  EXPECT_EQ(s.ToolMode, 2);
  EXPECT_TRUE(user.popups.empty());
  EXPECT_TRUE(sel.PointList.empty());
  EXPECT_TRUE(user.checked.at("Zoom"));
  EXPECT_FALSE(user.checked.at("Select"));
  EXPECT_FALSE(user.checked.at("Centroid"));

  Click(kRight, 100.0f, 100.0f);
  ASSERT_EQ(user.popups.size(), 1u);
  EXPECT_EQ(user.popups[0].menu, "mnuPopup");
  Strings visible = user.popups[0].visible;
  std::sort(visible.begin(), visible.end());
  EXPECT_EQ(visible, (Strings{"mnuPopupCancel", "mnuPopupZE", "mnuPopupZoomOut", "mnuPopupZoomP"}));

  // The locked canvas ignores the mouse.
  s.ToolMode = 9;
  Click(kRight, 100.0f, 100.0f);
  EXPECT_EQ(user.popups.size(), 1u);
}

// --- Moving a parcel location ------------------------------------------------------------------

const std::string kAttr1 = "Sec_001  A T_W  12345     C   40.000";
const std::string kAttr2 = "Sec_002  B T_?  22         10.000";
const std::string kAttr3 = "Sec_003  C T_L  33          5.500";
const std::string kRing1 = " 100100 100200 100300 100100";
const std::string kRing2 = " 200100 200200 200300 200100";
const std::string kRing3 = " 300100 300200 300300 300100";

std::string Location(const std::string& north, const std::string& east) {
  return Row({{1, " PARCEL N,E"}, {17, PadLeft(north, 11)}, {33, PadLeft(east, 11)}});
}

// A location line as a move writes it, the numbers right-justified in their columns.
std::string Moved(const std::string& north, const std::string& east) {
  return Row({{1, " PARCEL N,E"}, {17, PadLeft(north, 11)}, {33, PadLeft(east, 11)}, {44, "  (Tessel moved)"}});
}

class ParcelLocationMove : public Picking {
 protected:
  void SetUp() override {
    Picking::SetUp();
    UseJob("T1N2E");
    s.JobFolder = session.JobFolder;
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    s.CurrentFolder = session.CurrentFolder;
  }

  void Select(const std::vector<int>& parcels) {
    sel.ParcelList.clear();
    for (int p : parcels) {
      sel.SelectedParcels.at(static_cast<int>(sel.ParcelList.size())) = static_cast<std::int16_t>(p);
      sel.ParcelList.push_back(s.parcels.ParcelLine.get(p));
    }
    s.SelectionCount = static_cast<std::int16_t>(parcels.size());
  }

  const Strings original = {"PARCELS OF T1N R2E", kAttr1, kRing1, Location("1000.000", "2000.000"), "",
                            kAttr2, kRing2, Location("3000.500", "4000.250"), kAttr3, kRing3,
                            Location("5000.000", "6000.000") + "   old note"};
};

TEST_F(ParcelLocationMove, ShiftClickRewritesTheLocationLinesOfTheSelection) {
  WriteJob("T1N2E.iid", original);
  ReadParcels(s);
  s.checks.mnuOptionsParcel = true;
  s.ToolMode = 4;
  Click(kLeft, 2000.0f, 1000.0f);
  Click(kLeft, 6000.0f, 5000.0f);
  ASSERT_EQ(sel.ParcelList, (Strings{kAttr1, kAttr3}));
  MoveCentroidCommand(s);
  ASSERT_EQ(s.ToolMode, 7);

  Click(kLeft, 1234567.25f, 123456.125f);  // without shift: nothing
  EXPECT_FALSE(JobHas("T1N2E.iib"));
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(original));

  Click(kLeft, 1234567.25f, 123456.125f, true);
  const std::string moved = " PARCEL N,E      123456.125     1234567.250  (Tessel moved)";
  EXPECT_EQ(moved, Moved("123456.125", "1234567.250"));
  Strings expected = original;
  expected[0] = kEditedMarker;
  expected[3] = moved;
  expected[10] = moved;
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(original));

  // The parcels are read again from the new file.
  EXPECT_EQ(s.parcels.ParcelCount, 3);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(1), 123456.125);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelX.get(1), 1234567.25);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(2), 3000.5);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelX.get(3), 1234567.25);
  EXPECT_EQ(s.ToolMode, 4);
  EXPECT_EQ(s.SelectionCount, 0);
  EXPECT_TRUE(sel.ParcelList.empty());
  EXPECT_FALSE(user.enabled.at("frmTesting/cmdRemoveItem"));
  EXPECT_EQ(user.statusNow[1], "Select a Parcel");
  EXPECT_EQ(user.statusNow[2], "");
  EXPECT_EQ(user.pointers.back(), Pointer::Arrow);
  EXPECT_TRUE(Has(display.calls, "RefreshView"));

  // A second move: the backup holds the file as it was before it.
  Select({2});
  s.ToolMode = 7;
  Click(kLeft, 654321.5f, 234567.25f, true);
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(expected));
  expected[7] = Moved("234567.250", "654321.500");
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
}

TEST_F(ParcelLocationMove, ATwelveCharacterNumberKeepsTheBlanksOfTheLineBefore) {
  // 12345678.000 is neither 10 nor 11 characters: the northing has the blanks count it had
  // before, none on the first moved line, while the easting gets its six.
  WriteJob("T1N2E.iid", original);
  ReadParcels(s);
  Select({1, 3});
  s.ToolMode = 7;
  Click(kLeft, 654321.5f, 12345678.0f, true);
  const std::string moved = " PARCEL N,E12345678.000      654321.500  (Tessel moved)";
  Strings expected = original;
  expected[0] = kEditedMarker;
  expected[3] = moved;
  expected[10] = moved;
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
}

TEST_F(ParcelLocationMove, AGroupMovesByItsLastMemberOnly) {
  const Strings group = {"TITLE", kAttr1, kAttr2, kRing1, Location("1000.000", "2000.000"), kAttr3, kRing3,
                         Location("5000.000", "6000.000")};
  WriteJob("T1N2E.iid", group);
  ReadParcels(s);
  Select({1});
  MoveParcelLocation(s, 700000.0, 800000.0);
  Strings expected = group;
  expected[0] = kEditedMarker;
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(1), 1000.0);

  Select({2});
  MoveParcelLocation(s, 700000.0, 800000.0);
  expected[4] = Moved("800000.000", "700000.000");
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(1), 800000.0);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelX.get(2), 700000.0);
  EXPECT_DOUBLE_EQ(s.parcels.ParcelY.get(3), 5000.0);
}

}  // namespace
}  // namespace tessel::test
