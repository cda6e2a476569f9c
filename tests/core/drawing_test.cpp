// The refresh as the canvas receives it: the order of the layers, colours, pens, record lines and
// their unknown ends, parcels and their texts, raw polygons, hidden lines, selection marks, and the
// outline of one parcel's ring.

#include <cmath>
#include <initializer_list>
#include <iomanip>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "datasets/line_files.h"
#include "model/recording_ports.h"
#include "model/text.h"
#include "viewer/drawing.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Calls = std::vector<std::string>;
using V = ViewChecks;

std::string Show(const CanvasCall& call) {
  std::ostringstream out;
  out << call.op;
  for (double a : call.args) out << ' ' << a;
  if (call.op == "Dot" || call.op == "Line")
    out << " #" << std::hex << std::uppercase << std::setw(6) << std::setfill('0') << call.colour;
  if (call.op == "Text") out << " '" << call.text << "'";
  return out.str();
}

// Attribute lines of five parcel types, with their fields at the columns of .IID.
const std::string kTypeW = Row({{1, "Sec_001"}, {9, "A"}, {10, " T_W"}, {15, "123"}, {20, "B"}, {27, "   40.000"}});
const std::string kTypeA = Row({{1, "Sec_002"}, {9, "B"}, {10, " T_A"}, {15, "7"}, {27, "    2.500"}});
const std::string kTypeQ = Row({{1, "Sec_003"}, {10, " T_?"}, {15, "44"}, {27, "  160.000"}});
const std::string kTypeL = Row({{1, "Sec_004"}, {9, "Q"}, {10, " T_L"}, {15, "9"}, {20, "XY"}, {27, "    1.000"}});
const std::string kTypeP = Row({{1, "SEC_005"}, {9, "C"}, {10, " T_P"}, {15, "12345"}, {27, "   10.000"}});

class Drawing : public JobFixture {
 protected:
  void SetUp() override {
    WriteJob("T1N2E.def", DefFile(2));  // feet
    s.CurrentFolder = JobDir();
    s.JobBase = JobDir() + "T1N2E";
    // The defaults (colours 4, 14, 3, 9, control width 8, LXN style 1) differ from each other;
    // these two are moved off values that would hide a fault.
    s.config.PtSizeCor = 5;
    s.config.LineTypeLSA = 2;
  }

  // Only these marks of the View menu on.
  void Marks(std::initializer_list<bool ViewChecks::*> marks) {
    s.checks = ViewChecks{};
    for (auto mark : marks) s.checks.*mark = true;
  }
  void Points(const std::vector<std::tuple<std::string, double, double>>& points) {
    int i = 0;
    for (const auto& [id, x, y] : points) s.points.Set(++i, id, x, y);
    s.points.SetCount(std::int16_t(i));
  }
  void AddParcel(const std::string& line, double x, double y, int multi = 0) {
    const int i = ++s.parcels.ParcelCount;
    s.parcels.ParcelLine.at(i) = line;
    s.parcels.ParcelX.at(i) = x;
    s.parcels.ParcelY.at(i) = y;
    s.parcels.ParcelMulti.at(i) = std::int16_t(multi);
  }
  // A record line of 10 chains at 30 degrees.
  void AddRaw(int from, int to, int survey, const std::string& quadrant = "1") {
    const int i = ++s.raw.RawLineCount;
    s.raw.RawLineEnds.at(i) = RawEnds{std::int16_t(from), std::int16_t(to), std::int16_t(survey)};
    s.raw.RawLineFields.at(i) = RawFields{"", "", "", "10", quadrant, "300000", "GLO"};
    s.raw.RawLineMeasures.at(i) = RawMeasure{10.0, DmsToRadians(300000), static_cast<std::int8_t>(Val(quadrant))};
  }
  void AddPolygon(const std::string& tag, double x, double y) {
    const int i = ++s.polygons.RawPolygonCount;
    s.polygons.RawPolygonTag.at(i) = tag;
    s.polygons.RawPolygonX.at(i) = x;
    s.polygons.RawPolygonY.at(i) = y;
  }
  // Entries in the three selection lists, each mapped to the given point, line or parcel.
  void Pick(const std::vector<int>& points, const std::vector<int>& lines, const std::vector<int>& parcels) {
    Selection& sel = s.selection;
    sel.PointList.assign(points.size(), "point");
    sel.LineList.assign(lines.size(), "line");
    sel.ParcelList.assign(parcels.size(), "parcel");
    for (std::size_t i = 0; i < points.size(); ++i) sel.SelectedPoints.at(int(i)) = points[i];
    for (std::size_t i = 0; i < lines.size(); ++i) sel.SelectedLines.at(int(i)) = std::int16_t(lines[i]);
    for (std::size_t i = 0; i < parcels.size(); ++i) sel.SelectedParcels.at(int(i)) = std::int16_t(parcels[i]);
  }

  // The shown calls of one kind, or all of them.
  Calls Only(const std::string& op = "") const {
    Calls out;
    for (const auto& call : paint.calls)
      if (op.empty() || call.op == op) out.push_back(Show(call));
    return out;
  }
  Calls Paint(const std::string& op = "") {
    paint.calls.clear();
    RefreshView(s);
    return Only(op);
  }

  RecordingCanvas paint;
  Session s{user, paint, processes};
};

TEST_F(Drawing, EveryLayerInPaintingOrder) {
  Points({{"100100", 1, 1}, {"100200", 2, 1}, {"100300", 2, 2}});
  s.control.Control.at(1) = ControlStation{"CTL", 5, 5};
  s.control.ControlCount = 1;
  s.lxn.LxnLineEnds.at(1) = LineEnds{1, 2};
  s.lxn.LxnSegmentCount = 1;
  s.lsa.LsaLineEnds.at(1) = LineEnds{2, 3};
  s.lsa.LsaLineCount = 2;  // the next free index; its entry is empty and left out
  AddRaw(1, 3, 2);
  AddParcel(kTypeW, 4, 3, 1);
  AddPolygon("S", 6, 4);
  s.notes.NoteLineEnds.at(1) = LineEnds{1, 3};
  s.notes.NoteLineCount = 1;
  Pick({2}, {1}, {1});
  Marks({&V::mnuOptionsControl, &V::mnuViewPoints, &V::mnuOptionsID, &V::mnuOptionsLinesLXN, &V::mnuOptionsLinesLSA,
         &V::mnuViewLinesRaw, &V::mnuOptionsMultiAtt, &V::mnuOptionsParcel, &V::mnuOptionsParcelFull, &V::mnuViewRPO});

  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 8", "Dot 5 5 #FFFF00",  // control stations
                            // points with their identifiers
                            "PenWidth 5", "Dot 1 1 #800000", "Text '100100'", "PenWidth 5", "Dot 2 1 #800000",
                            "Text '100200'", "PenWidth 5", "Dot 2 2 #800000", "Text '100300'", "PenWidth 1",
                            // .LXN, .LSA, raw
                            "PenWidth 1", "PenStyle 1", "Line 1 1 2 1 #0000FF", "PenWidth 1", "PenStyle 2",
                            "Line 2 1 2 2 #008080", "PenWidth 1", "PenStyle 2", "Line 1 1 2 2 #008000",
                            // multiple attributes, parcel dots, full text
                            "PenWidth 20", "Dot 4 3 #FF0000", "PenWidth 10", "Dot 4 3 #0000FF", "PenWidth 1",
                            "PenWidth 10", "Dot 4 3 #0000FF", "PenWidth 10", "PenWidth 1", "PenWidth 10",
                            "Dot 4 3 #0000FF", "PenWidth 1", "Text '001A,W 123,B,40.000'", "PenWidth 10", "PenWidth 1",
                            // raw polygons, hidden lines in the back colour
                            "PenWidth 10", "Dot 6 4 #808080", "Text 'S '", "PenWidth 1", "PenWidth 1", "PenStyle 2",
                            "Line 1 1 2 2 #FFFFFF",
                            // selection marks: points, lines, parcels
                            "PenWidth 15", "Dot 2 1 #FF00FF", "PenWidth 1", "PenWidth 3", "Line 1 1 2 2 #FFFF00",
                            "PenWidth 1", "Line 1 1 2 2 #000003", "PenWidth 15", "Dot 4 3 #FF0000", "PenWidth 1"}));
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Arrow}));

  // With every mark off only the clear is left; identifiers come only with the points.
  s.selection = Selection{};
  Marks({&V::mnuOptionsID});
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenWidth 1"}));
}

TEST_F(Drawing, NetworkAndChainLinesLeaveOutAnEndAtAZeroCoordinate) {
  Points({{"XZERO", 0, 5}, {"B", 1, 1}, {"YZERO", 1, 0}, {"D", 2, 2}});
  const std::vector<LineEnds> ends = {{1, 2}, {2, 3}, {2, 4}, {0, 4}, {4, 1}, {3, 2}};
  for (int i = 1; i <= 6; ++i) s.lsa.LsaLineEnds.at(i) = s.lxn.LxnLineEnds.at(i) = ends[std::size_t(i - 1)];
  s.lsa.LsaLineCount = s.lxn.LxnSegmentCount = 6;
  Marks({&V::mnuOptionsLinesLXN, &V::mnuOptionsLinesLSA, &V::mnuViewPoints});
  EXPECT_EQ(Paint("Line"), (Calls{"Line 1 1 2 2 #0000FF", "Line 1 1 2 2 #008080"}));
  EXPECT_EQ(Only("Dot").size(), 4u);  // the points themselves are all painted, without identifiers
  EXPECT_TRUE(Only("Text").empty());
}

TEST_F(Drawing, RecordLinesTakeTheSurveyColourWithTheVanishingOneSwapped) {
  Points({{"A", 1, 1}, {"B", 2, 2}});
  for (int survey : {1, 7, 16, 23, 0, 15, 13, 39}) AddRaw(1, 2, survey);
  s.checks.mnuViewLinesRaw = true;
  // On white, light grey (7) would vanish and is painted black; each line sets its own pen.
  EXPECT_EQ(Paint("Line"), (Calls{"Line 1 1 2 2 #000080", "Line 1 1 2 2 #000000", "Line 1 1 2 2 #000000",
                                  "Line 1 1 2 2 #000000", "Line 1 1 2 2 #000000", "Line 1 1 2 2 #FFFFFF",
                                  "Line 1 1 2 2 #FF00FF", "Line 1 1 2 2 #000000"}));
  EXPECT_EQ(paint.Of("PenStyle").size(), 8u);
  // On black, black (0) would vanish and is painted light grey; 7 stays.
  s.config.BackgroundMode = 2;
  EXPECT_EQ(Paint("Line"), (Calls{"Line 1 1 2 2 #000080", "Line 1 1 2 2 #C0C0C0", "Line 1 1 2 2 #C0C0C0",
                                  "Line 1 1 2 2 #C0C0C0", "Line 1 1 2 2 #C0C0C0", "Line 1 1 2 2 #FFFFFF",
                                  "Line 1 1 2 2 #FF00FF", "Line 1 1 2 2 #C0C0C0"}));
}

TEST_F(Drawing, AnUnknownEndStepsFromTheKnownOneByQuadrantAndIsDotted) {
  Points({{"100100", 10000, 20000}});
  s.UnitsPerChain = 66.0f;  // as the load sets it from the job's unit code
  s.checks.mnuViewLinesRaw = true;
  const double dx = 330.0, dy = 660.0 * std::cos(std::acos(-1.0) / 6);  // 10 chains at 30 degrees in feet
  // The signs of the step with the from end known; with the to end known they turn over.
  Calls lines, dots;
  for (const auto& [quadrant, sx, sy] : {std::tuple{"1", 1, 1}, {"2", 1, -1}, {"3", -1, -1}, {"4", -1, 1}}) {
    // The from end known, the to end known, and neither: both steps, from the origin.
    for (const auto& [from, to] : {std::pair{1, 0}, {0, 1}, {0, 0}}) AddRaw(from, to, 1, quadrant);
    for (const auto& [x, y, sign] : {std::tuple{10000, 20000, 1}, {10000, 20000, -1}, {0, 0, 1}, {0, 0, -1}}) {
      const double ex = x + sign * sx * dx, ey = y + sign * sy * dy;
      lines.push_back(Show({"Line", {double(x), double(y), ex, ey}, 0x000080, {}}));
      dots.push_back(Show({"Dot", {ex, ey}, 0x000000, {}}));
    }
  }
  EXPECT_EQ(Paint("Line"), lines);
  EXPECT_EQ(Only("Dot"), dots);

  // The line, then a four-pixel dot in the fore colour.
  s.raw.Clear();
  AddRaw(1, 0, 3, "3");
  s.config.BackgroundMode = 2;
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenStyle 2", "Line 10000 20000 9670 19428.4 #008080", "PenWidth 4",
                            "Dot 9670 19428.4 #FFFFFF", "PenWidth 1", "PenWidth 1", "PenWidth 1"}));
  s.UnitsPerChain = static_cast<float>(66.0 / 3.2808333333);  // a job in metres
  EXPECT_EQ(Paint("Dot"), Calls{"Dot 9899.42 19825.8 #FFFFFF"});
}

TEST_F(Drawing, ParcelColoursAndTheThreeLabels) {
  for (const std::string& type : {kTypeW, kTypeA, kTypeQ, kTypeL, kTypeP}) AddParcel(type, 1, 2);
  // Detailed leaves out the aliquot part (T_A); type and number end at column 18.
  Marks({&V::mnuOptionsParcelDetail});
  EXPECT_EQ(Paint("Dot"), (Calls{"Dot 1 2 #0000FF", "Dot 1 2 #00FF00", "Dot 1 2 #FF0000", "Dot 1 2 #FFFF00",
                                 "Dot 1 2 #000000"}));
  EXPECT_EQ(Only("Text"), (Calls{"Text '001A,W 123,B,40.000'", "Text '003 ,? 44,,160.000'",
                                 "Text '004Q,L 9,XY,1.000'", "Text '005C,P 1234,,10.000'"}));
  Marks({&V::mnuOptionsParcelFull});  // full labels every parcel
  EXPECT_EQ(Paint("Text"), (Calls{"Text '001A,W 123,B,40.000'", "Text '002B,A 7,,2.500'", "Text '003 ,? 44,,160.000'",
                                  "Text '004Q,L 9,XY,1.000'", "Text '005C,P 1234,,10.000'"}));
  Marks({&V::mnuOptionsParcelBrief});  // columns 13 to 21 as they stand
  EXPECT_EQ(Paint("Text"), (Calls{"Text 'W 123  B '", "Text '? 44     '", "Text 'L 9    XY'", "Text 'P 12345  '"}));
  // Dots alone; the colour of an unknown type follows the background.
  Marks({&V::mnuOptionsParcel});
  s.config.BackgroundMode = 2;
  EXPECT_EQ(Paint("Dot").back(), "Dot 1 2 #FFFFFF");
  EXPECT_TRUE(Only("Text").empty());
}

TEST_F(Drawing, EachParcelLayerAsksForPolygonsWhenNoneAreLoaded) {
  Marks({&V::mnuOptionsParcel, &V::mnuOptionsParcelFull, &V::mnuOptionsMultiAtt});
  EXPECT_TRUE(Paint("Dot").empty());
  EXPECT_EQ(user.MessageTexts(), Calls(2, "You must load Polygons before viewing."));
  EXPECT_EQ(user.messages.at(0).icon, Icon::None);
  s.JobBase.clear();  // without an open job nothing is said
  Paint();
  s.JobBase = JobDir() + "T1N2E";
  AddParcel(kTypeW, 100, 110);  // nor with parcels loaded
  EXPECT_EQ(Paint("Dot").size(), 2u);
  EXPECT_EQ(user.messages.size(), 2u);
}

TEST_F(Drawing, ParcelsSharingALocationGetARedRing) {
  AddParcel(kTypeW, 500, 500, 1);
  AddParcel(kTypeL, 500, 500, 1);
  AddParcel(kTypeA, 800, 800, 0);
  s.checks.mnuOptionsMultiAtt = true;
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 20", "Dot 500 500 #FF0000", "PenWidth 10", "Dot 500 500 #0000FF",
                            "PenWidth 20", "Dot 500 500 #FF0000", "PenWidth 10", "Dot 500 500 #FFFF00", "PenWidth 1",
                            "PenWidth 1", "PenWidth 1"}));
}

TEST_F(Drawing, RawPolygonsByTagAndHiddenLinesInTheBackColour) {
  for (const char* tag : {"X", "S", "Q", "I", "O", ""}) AddPolygon(tag, 1, 2);
  Points({{"A", 1, 1}, {"B", 3, 3}, {"C", 0, 5}, {"D", 5, 0}});
  const LineEnds hidden[] = {{1, 2}, {2, 3}, {4, 1}, {0, 1}};
  for (int i = 1; i <= 4; ++i) s.notes.NoteLineEnds.at(i) = hidden[i - 1];
  s.notes.NoteLineCount = 4;
  s.checks.mnuViewRPO = true;
  // An unknown tag keeps the colour before it, black at the start; lines with a zero are left out.
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 10", "Dot 1 2 #000000", "Text 'X '", "Dot 1 2 #808080", "Text 'S '",
                            "Dot 1 2 #808080", "Text 'Q '", "Dot 1 2 #000080", "Text 'I '", "Dot 1 2 #008000",
                            "Text 'O '", "Dot 1 2 #008000", "Text ' '", "PenWidth 1", "PenWidth 1", "PenStyle 2",
                            "Line 1 1 3 3 #FFFFFF", "PenWidth 1", "PenWidth 1"}));
  s.config.BackgroundMode = 2;
  EXPECT_EQ(Paint("Line"), Calls{"Line 1 1 3 3 #000000"});
}

TEST_F(Drawing, SelectionMarksOfPointsLinesAndParcels) {
  Points({{"A", 1, 1}, {"B", 2, 2}, {"C", 3, 3}});
  AddRaw(1, 2, 1);
  AddRaw(1, 3, 1);
  AddParcel(kTypeW, 6, 6);
  AddParcel(kTypeL, 7, 8);
  Pick({3, 1}, {2}, {2});
  s.config.PtSizeCor = 4;
  s.config.LsaColor = 9;  // light blue as a palette number, nearly black as a direct colour
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 12", "Dot 3 3 #FF00FF", "PenWidth 12", "Dot 1 1 #FF00FF", "PenWidth 1",
                            "PenWidth 3", "Line 1 1 3 3 #FFFF00", "PenWidth 1", "Line 1 1 3 3 #000009",
                            "PenWidth 12", "PenWidth 1"}));  // no parcel layer on: no parcel mark
  // Any of the four parcel layers shows the parcel mark.
  for (auto mark : {&V::mnuOptionsParcel, &V::mnuOptionsParcelBrief, &V::mnuOptionsParcelDetail,
                    &V::mnuOptionsParcelFull}) {
    Marks({mark});
    EXPECT_EQ(Paint("Dot").back(), "Dot 7 8 #FF0000");
  }
}

TEST_F(Drawing, ParcelRingOutlinesSegmentsBetweenKnownPoints) {
  Points({{"100100", 1, 1}, {"100200", 2, 1}, {"100300", 2, 2}, {"100400", 0, 2}, {"100100", 3, 3}, {"10030", 4, 4}});
  const auto ring = [&](const std::string& line) {
    paint.calls.clear();
    DrawParcelRing(s, line);
    return Only();
  };
  // Five fields: the first id at columns 2 to 8, the next at 8, 15, 22, 29; the last match counts.
  EXPECT_EQ(ring(" 100100 100200 100300 100400 100100"),
            (Calls{"PenWidth 3", "Line 3 3 2 1 #FF0000", "Line 2 1 2 2 #FF0000", "PenWidth 1"}));
  // A cut field at the end is not a field.
  EXPECT_EQ(ring(" 100200 100300 10030"), (Calls{"PenWidth 3", "Line 2 1 2 2 #FF0000", "PenWidth 1"}));
  // An unknown id breaks the ring on both sides of it; yellow on black.
  s.config.BackgroundMode = 2;
  EXPECT_EQ(ring(" 100200 999999 100300 100200"), (Calls{"PenWidth 3", "Line 2 2 2 1 #FFFF00", "PenWidth 1"}));
}

TEST_F(Drawing, TheFirstDrawingOfAJobFitsTheViewFirst) {
  s.extents = JobExtents{2000, 2500, 4000, 5000};
  RefreshViewAfterExtents(s);
  EXPECT_EQ(Only(), (Calls{"Clear", "Scale 1980 5100 1533.33 -1150", "Clear", "PenWidth 1", "PenWidth 1"}));
}

}  // namespace
}  // namespace tessel::test
