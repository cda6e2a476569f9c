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
    session.display = &display;
    View(1000.0f, 1000.0f);
  }
  void View(float right, float top, float bottom = 0.0f) {
    ViewState& v = session.view;
    std::tie(v.ViewLeft, v.ViewBottom, v.ViewRight, v.ViewTop) = std::tuple(0.0f, bottom, right, top);
  }
  // Record lines between stations of the point store.
  void Lines(std::initializer_list<std::pair<std::string, std::string>> ends) {
    for (const auto& [from, to] : ends) Raw(from, to);
  }
  void Raw(const std::string& from, const std::string& to, const std::string& distance = "100.00",
           const std::string& survey = "S1") {
    RawLineStore& r = session.raw;
    ++r.RawLineCount;
    r.RawLineFields.at(r.RawLineCount) = RawFields{"", from, to, distance, "1", "45.0000", survey};
    r.RawLineEnds.at(r.RawLineCount) = RawEnds{static_cast<std::int16_t>(session.points.Find(from)),
                                               static_cast<std::int16_t>(session.points.Find(to)), 1};
  }
  // Parcels by attribute line and location (x easting, y northing).
  void Parcels(const Places& parcels) {
    ParcelStore& p = session.parcels;
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
    CanvasMouseDown(session, drag, button, x, y);
    CanvasMouseUp(session, drag, button, shift, x, y);
  }
  void ClickEach(std::initializer_list<float> diagonal) {
    for (float v : diagonal) Click(kLeft, v, v);
  }
  // A zoom-window drag with the left button, which the pick tools take as a window and disarm.
  void Drag(float x0, float y0, float x1, float y1) {
    session.view.ZoomWindowArmed = -1;
    CanvasMouseDown(session, drag, kLeft, x0, y0);
    CanvasMouseUp(session, drag, kLeft, false, x1, y1);
    EXPECT_EQ(session.view.ZoomWindowArmed, 0) << "tool " << static_cast<int>(session.ToolMode);
  }
  // Job T1N2E open, with its .IID written and read.
  void Load(const Strings& lines) {
    session.JobFolder = session.CurrentFolder = JobDir();
    std::tie(session.JobBase, session.JobName) = std::tuple(JobDir() + "T1N2E", "T1N2E");
    WriteJob("T1N2E.iid", lines);
    ReadParcels(session);
  }
  int Refreshes() const {
    return static_cast<int>(std::count(display.calls.begin(), display.calls.end(), "RefreshView"));
  }

  RecordingDisplay display;
  DragState drag;
  Selection& sel = session.selection;
};

using PickLines = Picking;
using PickPoints = Picking;
using SelectionLists = Picking;
using ParcelLocationMove = Picking;

TEST_F(PickLines, TheNearestLineByTheToolsMeasureInsideItsWidenedBox) {
  const struct {
    const char* why;
    Places points;  // lines run 100001-100002, 100003-100004, 100005-100006 as far as there are points
    float x, y;
    int line;
  } cases[] = {
      // 100000.3 is 100000.296875 in single precision: the box widened by one holds 99999.296875.
      {"box edge", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 99999.296875f, 5050.0f, 1},
      {"outside", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 99999.2890625f, 5050.0f, 0},
      {"far side", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 100001.4f, 5050.0f, 0},
      {"top", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 100000.3f, 5101.0f, 1},
      {"over top", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 100000.3f, 5101.001f, 0},
      {"under", {{"100001", 100000.3, 5000.0}, {"100002", 100000.3, 5100.0}}, 100000.3f, 4998.9f, 0},
      {"verticals", {{"100001", 100, 0}, {"100002", 100, 100}, {"100003", 101, 0}, {"100004", 101, 100}}, 100.8f, 50, 2},
      // A click on the first end of a horizontal line measures 0 by the substitute dy.
      {"horizontal", {{"100001", 0.05, -5}, {"100002", 0.05, 5}, {"100003", 0, 0}, {"100004", 100, 0}}, 0, 0, 2},
      // Under 45 degrees the root is negative: the line keeps the distance of the line before.
      {"negative root", {{"100001", 0, 0}, {"100002", 100, 0}, {"100003", 50.1, -5}, {"100004", 50.1, 5}}, 50, 0.9f, 1},
      {"negative root later",
       {{"100001", 50.1, -5}, {"100002", 50.1, 5}, {"100003", 0, 0}, {"100004", 100, 0}, {"100005", 40, -5},
        {"100006", 60, 5}},
       50, 0.9f, 1},
      // The vertical line lies 0.5 from the click, the slope-2 line 0.537, yet measures about 0.416.
      {"difference of squares", {{"100001", 0.5, -10}, {"100002", 0.5, 10}, {"100003", -4.4, -10}, {"100004", 5.6, 10}},
       0, 0, 2},
  };
  for (const auto& c : cases) {
    SetPoints(c.points);
    session.raw.Clear();
    for (std::size_t k = 0; k + 1 < c.points.size(); k += 2) Raw(std::get<0>(c.points[k]), std::get<0>(c.points[k + 1]));
    EXPECT_EQ(PickRawLine(session, c.x, c.y), c.line) << c.why;
  }
}

TEST_F(PickLines, OneClickTakesEveryRecordBetweenTheSameStationsOnce) {
  SetPoints({{"100100", 0.0, 0.0}, {"100200", 10.0, 20.0}, {"200100", 20.0, 0.0}});
  Raw("100100", "100200", "22.36", "S1");
  Raw("100100", "200100", "20.00", "S1");
  Raw("100100", "100200", "22.40", "S2");
  Raw("200100", "100100", "20.00", "S1");
  Raw("100100", "100200", "22.36", "S1");  // the same text as the first
  ToolbarLines(session);
  Click(kLeft, 4.0f, 10.0f);
  EXPECT_EQ(sel.LineList, (Strings{"100100 100200 22.36 1 45.0000 S1", "100100 100200 22.40 1 45.0000 S2"}));
  EXPECT_EQ(Mapped(sel.SelectedLines, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Line(s) Selected");
}

TEST_F(Picking, WindowsTakeWhatLiesStrictlyInsideInEveryToolAndDragDirection) {
  // 100.000001 and 199.9999999 are 100 and 200 in single precision: on the edge.
  SetPoints({{"100001", 150.0, 150.0}, {"100002", 100.0, 150.0}, {"100003", 100.000001, 150.0},
          {"100004", 150.0, 199.9999999}, {"100005", 199.99, 100.01}, {"100006", 250.0, 150.0}});
  Parcels({{"Sec_001 A", 150.0, 150.0}, {"Sec_002 B", 100.0, 150.0}, {"Sec_003 C", 150.0, 200.0000001},
           {"Sec_004 D", 199.0, 101.0}});
  // Lines with one end outside, one on the edge, and the text of the first again.
  Lines({{"100001", "100005"}, {"100001", "100006"}, {"100001", "100003"}, {"100005", "100001"}, {"100001", "100005"}});
  for (const auto& [x0, y0, x1, y1] : std::vector<std::tuple<float, float, float, float>>{
           {100, 100, 200, 200}, {200, 200, 100, 100}, {100, 200, 200, 100}, {200, 100, 100, 200}}) {
    SCOPED_TRACE(::testing::Message() << "from " << x0 << "," << y0);
    ParcelsClearAll(session);  // back to the parcel tool, which needs no display mark for a window
    EXPECT_EQ(std::tuple(Mapped(sel.SelectedParcels, 2), session.ToolMode),
              std::tuple(Ints{0, 0}, ToolMode::PickParcels));
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.ParcelList(), (Strings{"Sec_001 A", "Sec_004 D"}));
    PointsClear(session);  // back to point picking
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.PointList, (Strings{"100001    150     150", "100005    100.01     199.99"}));
    EXPECT_EQ(user.statusNow[3], "");  // a window reports no point
    ToolbarLines(session);
    sel.LineList.clear();
    Drag(x0, y0, x1, y1);
    EXPECT_EQ(sel.LineList, (Strings{"100001 100005 100.00 1 45.0000 S1", "100005 100001 100.00 1 45.0000 S1"}));
  }
  // Two parcel locations: a window disables the location commands but that of the attributes menu.
  EXPECT_FALSE(user.enabled.at("mnuPopupParcelMultiple") || user.enabled.at("mnuPopupParcelMoveCentroid"));
  EXPECT_EQ(user.enabled.count("mnuAttributesMoveCentroid"), 0u);
}

TEST_F(PickPoints, AClickListsEachPointFillsThePanelsAndEntriesMapBackByTheirFirstSixCharacters) {
  SetPoints({{"100100", 1000.5, 5280.25}, {"100200", 1003.0, 5283.0}, {"100100", 900.0, 900.0},
          {"3003001", 200.0, 200.0}, {"300300", 700.0, 700.0}});
  ToolbarSelect(session);
  user.status.clear();
  Click(kLeft, 1001.0f, 5281.0f);
  EXPECT_EQ(user.status[2], (Strings{"Station 100100", "Station 100200"}));
  EXPECT_EQ(user.statusNow[3] + "|" + user.statusNow[4], "Northing =5283|Easting =1003");
  Click(kLeft, 200.0f, 200.0f);
  EXPECT_EQ(sel.PointList, (Strings{"100100    5280.25     1000.5", "100200    5283     1003", "3003001    200     200"}));
  // The last entry of "100100" and the last whose first six characters are "300300".
  EXPECT_EQ(Mapped(sel.SelectedPoints, 3), (Ints{3, 2, 5}));
  PointsClicked(session, 0);  // a click on an entry marks the point it maps to
  EXPECT_EQ(canvas.Of("Circle").at(0).args, (std::vector<double>{900.0, 900.0, 500.0}));
}

TEST_F(SelectionLists, RemoveButtonsCloseTheGapAndNeedAnEntry) {
  SetPoints({{"100100", 100.0, 100.0}, {"200200", 300.0, 300.0}, {"300300", 500.0, 500.0}});
  Parcels({{"Sec_001 A", 100.0, 100.0}, {"Sec_002 B", 300.0, 300.0}, {"Sec_003 C", 500.0, 500.0}});
  session.checks.mnuOptionsParcel = true;
  ToolbarSelect(session);
  ClickEach({100.0f, 300.0f, 500.0f});
  PointsRemoveItem(session, 1);
  EXPECT_EQ(sel.PointList, (Strings{"100100    100     100", "300300    500     500"}));
  EXPECT_EQ(Mapped(sel.SelectedPoints, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Points Selected");
  PointsRemoveItem(session, -1);  // no entry chosen: the counter is lowered, then the step ends
  EXPECT_EQ(std::tuple(session.SelectionCount, sel.PointList.size()), std::tuple(1, 2u));
  PointsRemoveItem(session, 0);
  PointsRemoveItem(session, 0);
  EXPECT_FALSE(user.enabled.at("frmSelectedPoints/cmdRemoveItem"));
  PointsClosed(session);  // closing the window leaves point picking for the zoom tool
  EXPECT_EQ(session.ToolMode, ToolMode::ZoomPan);

  session.SelectionCount = 0;  // a fresh selection for each list
  session.ToolMode = ToolMode::PickParcels;
  ClickEach({100.0f, 300.0f, 500.0f});
  ParcelsRemoveItem(session, 1);
  EXPECT_EQ(sel.ParcelList(), (Strings{"Sec_001 A", "Sec_003 C"}));
  EXPECT_EQ(Mapped(sel.SelectedParcels, 2), (Ints{1, 3}));
  EXPECT_EQ(user.statusNow[2], "2 Polygons Selected");

  LinesRemoveLine(session, -1);  // the line list asks for an entry first
  EXPECT_EQ(user.MessageTexts(), Strings{"You must first select an item to remove it from a list."});
}

const std::string kAttr1 = "Sec_001  A T_W  12345     C   40.000", kAttr2 = "Sec_002  B T_?  22         10.000",
                  kAttr3 = "Sec_003  C T_L  33          5.500";
const std::string kRing1 = " 100100 100200 100300 100100", kRing3 = " 300100 300200 300300 300100";

TEST_F(ParcelLocationMove, AShiftClickRewritesTheSelectionsLocationLinesAndKeepsTheFileBefore) {
  const Strings original = {"PARCELS OF T1N R2E", kAttr1, kRing1, LocationRow("1000.000", "2000.000"), "",
                            kAttr2, " 200100 200200 200300 200100", LocationRow("3000.500", "4000.250"), kAttr3, kRing3,
                            LocationRow("5000.000", "6000.000") + "   old note"};
  Load(original);
  session.checks.mnuOptionsParcel = true;
  session.ToolMode = ToolMode::PickParcels;
  MoveCentroidCommand(session);
  EXPECT_EQ(user.MessageTexts(), Strings{"No parcel selected"});
  Click(kLeft, 2000.0f, 1000.0f);
  Click(kLeft, 6000.0f, 5000.0f);
  MoveCentroidCommand(session);
  ASSERT_EQ(session.ToolMode, ToolMode::MoveParcel);
  Click(kLeft, 1234567.25f, 123456.125f);  // without shift: nothing
  EXPECT_FALSE(JobHas("T1N2E.iib"));
  Click(kLeft, 1234567.25f, 123456.125f, true);
  Strings expected = original;
  expected[0] = kEditedMarker;
  expected[3] = expected[10] = " PARCEL N,E      123456.125     1234567.250  (Tessel moved)";
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(original));
  EXPECT_EQ(std::tuple(sel.ParcelList().size(), Refreshes()), std::tuple(0u, 1));
  // A second move of the same two, backed up from the first. 12345678.000 is neither 10 nor 11
  // characters: the northing keeps the blanks of the line before, none on the first moved line,
  // while the easting gets its six.
  Click(kLeft, 1234567.25f, 123456.125f);
  MoveCentroidCommand(session);
  Click(kLeft, 654321.5f, 12345678.0f, true);
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(expected));
  expected[3] = expected[10] = " PARCEL N,E12345678.000      654321.500  (Tessel moved)";
  EXPECT_EQ(ReadJob("T1N2E.iid"), Text(expected));
}

}  // namespace
}  // namespace tessel::test
