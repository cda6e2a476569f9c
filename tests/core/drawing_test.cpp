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
    session.CurrentFolder = JobDir();
    session.JobBase = JobDir() + "T1N2E";
    // The defaults (colours 4, 14, 3, 9, control width 8, LXN style 1) differ from each other;
    // these two are moved off values that would hide a fault.
    session.config.PtSizeCor = 5;
    session.config.LineTypeLSA = 2;
  }

  // Only these marks of the View menu on.
  void Marks(std::initializer_list<bool ViewChecks::*> marks) {
    session.checks = ViewChecks{};
    for (auto mark : marks) session.checks.*mark = true;
  }
  void AddParcel(const std::string& line, double x, double y, int multi = 0) {
    const int i = ++session.parcels.ParcelCount;
    session.parcels.ParcelLine.at(i) = line;
    session.parcels.ParcelX.at(i) = x;
    session.parcels.ParcelY.at(i) = y;
    session.parcels.ParcelMulti.at(i) = std::int16_t(multi);
  }
  // A record line of 10 chains at 30 degrees.
  void AddRaw(int from, int to, int survey, const std::string& quadrant = "1") {
    const int i = ++session.raw.RawLineCount;
    session.raw.RawLineEnds.at(i) = RawEnds{std::int16_t(from), std::int16_t(to), std::int16_t(survey)};
    session.raw.RawLineFields.at(i) = RawFields{"", "", "", "10", quadrant, "300000", "GLO"};
    session.raw.RawLineMeasures.at(i) =
        RawMeasure{10.0, DmsToRadians(300000), static_cast<std::int8_t>(Val(quadrant))};
  }
  void AddPolygon(const std::string& tag, double x, double y) {
    const int i = ++session.polygons.RawPolygonCount;
    session.polygons.RawPolygonTag.at(i) = tag;
    session.polygons.RawPolygonX.at(i) = x;
    session.polygons.RawPolygonY.at(i) = y;
  }
  // Entries in the three selection lists, each mapped to the given point, line or parcel.
  void Pick(const std::vector<int>& points, const std::vector<int>& lines, const std::vector<int>& parcels) {
    Selection& sel = session.selection;
    sel.PointList.assign(points.size(), "point");
    sel.LineList.assign(lines.size(), "line");
    for (int p : parcels) sel.AddParcelEntry("parcel", {PickKind::Parcel, p, session.parcels.Reading});
    for (std::size_t i = 0; i < points.size(); ++i) sel.SelectedPoints.at(int(i)) = points[i];
    for (std::size_t i = 0; i < lines.size(); ++i) sel.SelectedLines.at(int(i)) = std::int16_t(lines[i]);
    for (std::size_t i = 0; i < parcels.size(); ++i) sel.SelectedParcels.at(int(i)) = std::int16_t(parcels[i]);
  }

  // The shown calls of one kind, or all of them.
  Calls Only(const std::string& op = "") const {
    Calls out;
    for (const auto& call : canvas.calls)
      if (op.empty() || call.op == op) out.push_back(Show(call));
    return out;
  }
  // The picture of a refresh: what is painted, each dot with the pen width it is painted with and
  // each line with its width and style.
  Calls Picture() {
    canvas.calls.clear();
    RefreshView(session);
    Calls out;
    int width = 1, style = 0;
    for (const auto& call : canvas.calls) {
      if (call.op == "PenWidth") width = int(call.args[0]);
      if (call.op == "PenStyle") style = int(call.args[0]);
      if (call.op == "Dot") out.push_back(Show(call) + " w" + std::to_string(width));
      if (call.op == "Line") out.push_back(Show(call) + " w" + std::to_string(width) + " s" + std::to_string(style));
      if (call.op == "Text") out.push_back(Show(call));
    }
    return out;
  }
  Calls Paint(const std::string& op = "") {
    canvas.calls.clear();
    RefreshView(session);
    return Only(op);
  }

};

TEST_F(Drawing, EveryLayerInPaintingOrder) {
  SetPoints({{"100100", 1, 1}, {"100200", 2, 1}, {"100300", 2, 2}});
  session.control.Control.at(1) = ControlStation{"CTL", 5, 5};
  session.control.ControlCount = 1;
  session.lxn.LxnLineEnds.at(1) = LineEnds{1, 2};
  session.lxn.LxnSegmentCount = 1;
  session.lsa.LsaLineEnds.at(1) = LineEnds{2, 3};
  session.lsa.LsaLineCount = 2;  // the next free index; its entry is empty and left out
  AddRaw(1, 3, 2);
  AddParcel(kTypeW, 4, 3, 1);
  AddPolygon("S", 6, 4);
  session.notes.NoteLineEnds.at(1) = LineEnds{1, 3};
  session.notes.NoteLineCount = 1;
  Pick({2}, {1}, {1});
  Marks({&V::mnuOptionsControl, &V::mnuViewPoints, &V::mnuOptionsID, &V::mnuOptionsLinesLXN, &V::mnuOptionsLinesLSA,
         &V::mnuViewLinesRaw, &V::mnuOptionsMultiAtt, &V::mnuOptionsParcel, &V::mnuOptionsParcelFull, &V::mnuViewRPO});

  // Control stations, points with their identifiers, .LXN, .LSA and raw lines, multiple attributes,
  // parcel dots and full text, raw polygons, hidden lines in the back colour, then the selection
  // marks of points, lines and parcels.
  EXPECT_EQ(Picture(), (Calls{"Dot 5 5 #FFFF00 w8", "Dot 1 1 #800000 w5", "Text '100100'",
                              "Dot 2 1 #800000 w5", "Text '100200'", "Dot 2 2 #800000 w5", "Text '100300'",
                              "Line 1 1 2 1 #0000FF w1 s1", "Line 2 1 2 2 #008080 w1 s2",
                              "Line 1 1 2 2 #008000 w1 s2", "Dot 4 3 #FF0000 w20", "Dot 4 3 #0000FF w10",
                              "Dot 4 3 #0000FF w10", "Dot 4 3 #0000FF w10", "Text '001A,W 123,B,40.000'",
                              "Dot 6 4 #808080 w10", "Text 'S '", "Line 1 1 2 2 #FFFFFF w1 s2",
                              "Dot 2 1 #FF00FF w15", "Line 1 1 2 2 #FFFF00 w3 s2",
                              "Line 1 1 2 2 #000003 w1 s2", "Dot 4 3 #FF0000 w15"}));
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Arrow}));

  // With every mark off nothing is painted; identifiers come only with the points.
  session.selection = Selection{};
  Marks({&V::mnuOptionsID});
  EXPECT_TRUE(Picture().empty());
}

TEST_F(Drawing, AnUnknownEndStepsFromTheKnownOneByQuadrantAndIsDotted) {
  SetPoints({{"100100", 10000, 20000}});
  session.UnitsPerChain = 66.0f;  // as the load sets it from the job's unit code
  session.checks.mnuViewLinesRaw = true;
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
  session.raw.Clear();
  AddRaw(1, 0, 3, "3");
  session.config.BackgroundMode = 2;
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenStyle 2", "Line 10000 20000 9670 19428.4 #008080", "PenWidth 4",
                            "Dot 9670 19428.4 #FFFFFF", "PenWidth 1", "PenWidth 1", "PenWidth 1"}));
  session.UnitsPerChain = static_cast<float>(66.0 / 3.2808333333);  // a job in metres
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
  EXPECT_EQ(Paint("Text").at(1), "Text '002B,A 7,,2.500'");
  Marks({&V::mnuOptionsParcelBrief});  // columns 13 to 21 as they stand
  EXPECT_EQ(Paint("Text"), (Calls{"Text 'W 123  B '", "Text '? 44     '", "Text 'L 9    XY'", "Text 'P 12345  '"}));
  // Dots alone; the colour of an unknown type follows the background.
  Marks({&V::mnuOptionsParcel});
  session.config.BackgroundMode = 2;
  EXPECT_EQ(Paint("Dot").back(), "Dot 1 2 #FFFFFF");
  EXPECT_TRUE(Only("Text").empty());
}

TEST_F(Drawing, ParcelRingOutlinesSegmentsBetweenKnownPoints) {
  SetPoints({{"100100", 1, 1}, {"100200", 2, 1}, {"100300", 2, 2}, {"100400", 0, 2}, {"100100", 3, 3}, {"10030", 4, 4}});
  const auto ring = [&](const std::string& line) {
    canvas.calls.clear();
    DrawParcelRing(session, line);
    return Only();
  };
  // Five fields: the first id at columns 2 to 8, the next at 8, 15, 22, 29; the last match counts.
  EXPECT_EQ(ring(" 100100 100200 100300 100400 100100"),
            (Calls{"PenWidth 3", "Line 3 3 2 1 #FF0000", "Line 2 1 2 2 #FF0000", "PenWidth 1"}));
  // A cut field at the end is not a field.
  EXPECT_EQ(ring(" 100200 100300 10030"), (Calls{"PenWidth 3", "Line 2 1 2 2 #FF0000", "PenWidth 1"}));
  // An unknown id breaks the ring on both sides of it; yellow on black.
  session.config.BackgroundMode = 2;
  EXPECT_EQ(ring(" 100200 999999 100300 100200"), (Calls{"PenWidth 3", "Line 2 2 2 1 #FFFF00", "PenWidth 1"}));
}

}  // namespace
}  // namespace tessel::test
