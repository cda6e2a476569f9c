// The refresh as the canvas receives it: the order of the layers, colours from the palette and
// the direct colours, pen widths and styles, the survey colours of record lines, the unknown ends
// of record lines, parcel dots and their texts, raw polygons, hidden lines, selection marks, and
// the outline of one parcel's ring.

#include <cmath>
#include <cstdio>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "core/recording_ports.h"
#include "viewer/drawing.h"
#include "test_support.h"

namespace tessel::test {
namespace {

std::string Show(const CanvasCall& call) {
  std::ostringstream out;
  out << call.op;
  for (double a : call.args) out << ' ' << a;
  if (call.op == "Dot" || call.op == "Line") {
    char hex[16];
    std::snprintf(hex, sizeof hex, " #%06X", call.colour);
    out << hex;
  }
  if (call.op == "Text") out << " '" << call.text << "'";
  return out.str();
}

using Calls = std::vector<std::string>;

// Attribute lines of five parcel types, with their fields at the columns of .IID.
const std::string kTypeW = Row({{1, "Sec_001"}, {9, "A"}, {10, " T_W"}, {15, "123"}, {20, "B"}, {27, "   40.000"}});
const std::string kTypeA = Row({{1, "Sec_002"}, {9, "B"}, {10, " T_A"}, {15, "7"}, {27, "    2.500"}});
const std::string kTypeQ = Row({{1, "Sec_003"}, {10, " T_?"}, {15, "44"}, {27, "  160.000"}});
const std::string kTypeL = Row({{1, "Sec_004"}, {9, "Q"}, {10, " T_L"}, {15, "9"}, {20, "XY"}, {27, "    1.000"}});
const std::string kTypeP = Row({{1, "SEC_005"}, {9, "C"}, {10, " T_P"}, {15, "12345"}, {27, "   10.000"}});

class Drawing : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("T1N2E");
    WriteJob("T1N2E.def", DefFile(2));
    s.ToolFolder = session.ToolFolder;
    s.CurrentFolder = session.CurrentFolder;
    s.JobFolder = session.JobFolder;
    s.JobBase = session.JobBase;
    s.JobName = session.JobName;
    // The defaults (colours 4, 14, 3, 9, control width 8, LXN style 1) differ from each other;
    // these two are moved off values that would hide a fault.
    s.config.PtSizeCor = 5;
    s.config.LineTypeLSA = 2;
  }

  void Points(const std::vector<std::tuple<std::string, double, double>>& points) {
    int i = 0;
    for (const auto& [id, x, y] : points) s.points.Set(++i, id, x, y);
    s.points.SetCount(static_cast<std::int16_t>(i));
  }

  void AddParcel(const std::string& line, double x, double y, int multi = 0) {
    const int i = ++s.parcels.ParcelCount;
    s.parcels.ParcelLine.at(i) = line;
    s.parcels.ParcelX.at(i) = x;
    s.parcels.ParcelY.at(i) = y;
    s.parcels.ParcelMulti.at(i) = static_cast<std::int16_t>(multi);
  }

  void AddRaw(int from, int to, int survey, const std::string& distance = "10", const std::string& quadrant = "1",
              const std::string& bearing = "300000") {
    const int i = ++s.raw.RawLineCount;
    s.raw.RawLineEnds.at(i) = RawEnds{static_cast<std::int16_t>(from), static_cast<std::int16_t>(to),
                                      static_cast<std::int16_t>(survey)};
    s.raw.RawLineFields.at(i) = RawFields{"", "", "", distance, quadrant, bearing, "GLO"};
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
    for (int p : points) {
      sel.SelectedPoints.at(static_cast<int>(sel.PointList.size())) = p;
      sel.PointList.push_back("point");
    }
    for (int l : lines) {
      sel.SelectedLines.at(static_cast<int>(sel.LineList.size())) = static_cast<std::int16_t>(l);
      sel.LineList.push_back("line");
    }
    for (int p : parcels) {
      sel.SelectedParcels.at(static_cast<int>(sel.ParcelList.size())) = static_cast<std::int16_t>(p);
      sel.ParcelList.push_back("parcel");
    }
  }

  Calls Shown() const {
    Calls out;
    for (const auto& call : paint.calls) out.push_back(Show(call));
    return out;
  }
  Calls Paint() {
    paint.calls.clear();
    RefreshView(s);
    return Shown();
  }
  // The shown calls of one kind, after a refresh.
  Calls PaintOnly(const std::string& op) {
    Paint();
    Calls out;
    for (const auto& call : paint.Of(op)) out.push_back(Show(call));
    return out;
  }

  RecordingCanvas paint;
  Session s{user, paint, processes};
};

TEST_F(Drawing, EveryLayerInPaintingOrder) {
  Points({{"100100", 1000, 1000}, {"100200", 2000, 1000}, {"100300", 2000, 2000}});
  s.control.Control.at(1) = ControlStation{"CTL", 1500, 1500};
  s.control.ControlCount = 1;
  s.lxn.LxnLineEnds.at(1) = LineEnds{1, 2};
  s.lxn.LxnSegmentCount = 1;
  s.lsa.LsaLineEnds.at(1) = LineEnds{2, 3};
  s.lsa.LsaLineCount = 2;  // the next free index; its entry is empty and left out
  AddRaw(1, 3, 2);
  AddParcel(kTypeW, 1200, 1300, 1);
  AddPolygon("S", 1600, 1400);
  s.notes.NoteLineEnds.at(1) = LineEnds{1, 3};
  s.notes.NoteLineCount = 1;
  Pick({2}, {1}, {1});
  ViewChecks& v = s.checks;
  v.mnuOptionsControl = v.mnuViewPoints = v.mnuOptionsID = v.mnuOptionsLinesLXN = v.mnuOptionsLinesLSA = true;
  v.mnuViewLinesRaw = v.mnuOptionsMultiAtt = v.mnuOptionsParcel = v.mnuOptionsParcelFull = v.mnuViewRPO = true;

  EXPECT_EQ(Paint(), (Calls{
                         "Clear",
                         // control stations
                         "PenWidth 8", "Dot 1500 1500 #FFFF00",
                         // points with their identifiers
                         "PenWidth 5", "Dot 1000 1000 #800000", "Text '100100'",
                         "PenWidth 5", "Dot 2000 1000 #800000", "Text '100200'",
                         "PenWidth 5", "Dot 2000 2000 #800000", "Text '100300'",
                         "PenWidth 1",
                         // .LXN, .LSA, raw
                         "PenWidth 1", "PenStyle 1", "Line 1000 1000 2000 1000 #0000FF",
                         "PenWidth 1", "PenStyle 2", "Line 2000 1000 2000 2000 #008080",
                         "PenWidth 1", "PenStyle 2", "Line 1000 1000 2000 2000 #008000",
                         // multiple attributes
                         "PenWidth 20", "Dot 1200 1300 #FF0000", "PenWidth 10", "Dot 1200 1300 #0000FF", "PenWidth 1",
                         // parcel dots, then full text
                         "PenWidth 10", "Dot 1200 1300 #0000FF", "PenWidth 10", "PenWidth 1",
                         "PenWidth 10", "Dot 1200 1300 #0000FF", "PenWidth 1", "Text '001A,W 123,B,40.000'",
                         "PenWidth 10", "PenWidth 1",
                         // raw polygons, hidden lines in the back colour
                         "PenWidth 10", "Dot 1600 1400 #808080", "Text 'S '", "PenWidth 1",
                         "PenWidth 1", "PenStyle 2", "Line 1000 1000 2000 2000 #FFFFFF",
                         // selection marks: points, lines, parcels
                         "PenWidth 15", "Dot 2000 1000 #FF00FF", "PenWidth 1",
                         "PenWidth 3", "Line 1000 1000 2000 2000 #FFFF00", "PenWidth 1",
                         "Line 1000 1000 2000 2000 #000003",
                         "PenWidth 15", "Dot 1200 1300 #FF0000", "PenWidth 1",
                     }));
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Arrow}));
  EXPECT_TRUE(user.messages.empty());

  // With every mark off only the clear is left.
  s.checks = ViewChecks{};
  s.selection = Selection{};
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenWidth 1"}));
}

TEST_F(Drawing, IdentifiersOnlyWithThePointsLayer) {
  Points({{"100100", 1000, 1000}, {"UNKNWN", 0, 0}});
  s.checks.mnuOptionsID = true;
  EXPECT_TRUE(PaintOnly("Dot").empty());
  EXPECT_TRUE(PaintOnly("Text").empty());

  // Points without identifiers; a point at 0, 0 is painted there.
  s.checks.mnuOptionsID = false;
  s.checks.mnuViewPoints = true;
  EXPECT_EQ(PaintOnly("Dot"), (Calls{"Dot 1000 1000 #800000", "Dot 0 0 #800000"}));
  EXPECT_TRUE(paint.Of("Text").empty());

  s.config.CorColor = 12;
  s.checks.mnuOptionsID = true;
  EXPECT_EQ(PaintOnly("Dot"), (Calls{"Dot 1000 1000 #FF0000", "Dot 0 0 #FF0000"}));
  const Calls shown = Shown();
  ASSERT_GE(shown.size(), 7u);
  EXPECT_EQ(shown[3], "Text '100100'");
  EXPECT_EQ(shown[6], "Text 'UNKNWN'");
}

TEST_F(Drawing, ControlStationsOnlyWithTheirOwnMark) {
  Points({{"100100", 1000, 1000}});
  s.control.Control.at(1) = ControlStation{"CTL1", 1500, 1500};
  s.control.Control.at(2) = ControlStation{"CTL2", 2500, 500};
  s.control.ControlCount = 2;
  s.checks.mnuViewPoints = true;
  EXPECT_EQ(PaintOnly("Dot"), (Calls{"Dot 1000 1000 #800000"}));

  s.checks.mnuViewPoints = false;
  s.checks.mnuOptionsControl = true;
  s.config.PtSizeCtrl = 6;
  s.config.CtrlColor = 10;
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 6", "Dot 1500 1500 #00FF00", "PenWidth 6", "Dot 2500 500 #00FF00",
                            "PenWidth 1", "PenWidth 1"}));
}

TEST_F(Drawing, NetworkAndChainLinesLeaveOutAnEndAtAZeroCoordinate) {
  Points({{"XZERO", 0, 500}, {"B", 1000, 1000}, {"YZERO", 1000, 0}, {"D", 2000, 2000}});
  const std::vector<LineEnds> ends = {{1, 2}, {2, 3}, {2, 4}, {0, 4}, {4, 1}, {3, 2}};
  for (std::size_t i = 0; i < ends.size(); ++i) {
    s.lsa.LsaLineEnds.at(static_cast<int>(i) + 1) = ends[i];
    s.lxn.LxnLineEnds.at(static_cast<int>(i) + 1) = ends[i];
  }
  s.lsa.LsaLineCount = static_cast<std::int16_t>(ends.size());
  s.lxn.LxnSegmentCount = static_cast<std::int16_t>(ends.size());

  s.checks.mnuOptionsLinesLSA = true;
  s.checks.mnuViewPoints = true;
  EXPECT_EQ(PaintOnly("Line"), (Calls{"Line 1000 1000 2000 2000 #008080"}));
  // The points of the lines left out are painted all the same.
  EXPECT_EQ(paint.Of("Dot").size(), 4u);
  EXPECT_EQ(Show(paint.Of("Dot")[0]), "Dot 0 500 #800000");
  EXPECT_EQ(paint.Of("PenStyle").size(), 1u);

  s.checks.mnuOptionsLinesLSA = false;
  s.checks.mnuViewPoints = false;
  s.checks.mnuOptionsLinesLXN = true;
  s.config.LxnColor = 5;
  EXPECT_EQ(PaintOnly("Line"), (Calls{"Line 1000 1000 2000 2000 #800080"}));
  EXPECT_EQ(Shown()[1], "PenWidth 1");
  EXPECT_EQ(Shown()[2], "PenStyle 1");
}

TEST_F(Drawing, RecordLinesCycleThroughThePaletteBySurvey) {
  Points({{"A", 100, 100}, {"B", 200, 200}});
  const std::vector<int> surveys = {1, 7, 16, 23, 0, 15, 13, 39};
  for (int survey : surveys) AddRaw(1, 2, survey);
  s.checks.mnuViewLinesRaw = true;

  // On white, light grey (7) would vanish and is painted black.
  std::vector<unsigned> colours;
  Paint();
  for (const auto& line : paint.Of("Line")) colours.push_back(line.colour);
  EXPECT_EQ(colours, (std::vector<unsigned>{0x000080, 0x000000, 0x000000, 0x000000, 0x000000, 0xFFFFFF, 0xFF00FF,
                                            0x000000}));
  // Each line sets its own pen.
  EXPECT_EQ(paint.Of("PenStyle").size(), surveys.size());
  const Calls shown = Shown();
  EXPECT_EQ(Calls(shown.begin(), shown.begin() + 4),
            (Calls{"Clear", "PenWidth 1", "PenStyle 2", "Line 100 100 200 200 #000080"}));

  // On black, black (0) would vanish and is painted light grey; 7 stays.
  s.config.BackgroundMode = 2;
  colours.clear();
  Paint();
  for (const auto& line : paint.Of("Line")) colours.push_back(line.colour);
  EXPECT_EQ(colours, (std::vector<unsigned>{0x000080, 0xC0C0C0, 0xC0C0C0, 0xC0C0C0, 0xC0C0C0, 0xFFFFFF, 0xFF00FF,
                                            0xC0C0C0}));
}

class UnknownEnds : public Drawing {
 protected:
  void SetUp() override {
    Drawing::SetUp();
    Points({{"100100", 10000, 20000}});
    s.checks.mnuViewLinesRaw = true;
  }

  // The far end of each line and the dot there, which must agree.
  std::vector<std::pair<double, double>> Ends() {
    Paint();
    std::vector<std::pair<double, double>> ends;
    const auto lines = paint.Of("Line");
    const auto dots = paint.Of("Dot");
    EXPECT_EQ(lines.size(), dots.size());
    for (std::size_t i = 0; i < lines.size() && i < dots.size(); ++i) {
      EXPECT_DOUBLE_EQ(dots[i].args[0], lines[i].args[2]);
      EXPECT_DOUBLE_EQ(dots[i].args[1], lines[i].args[3]);
      ends.emplace_back(lines[i].args[2], lines[i].args[3]);
    }
    return ends;
  }
};

TEST_F(UnknownEnds, QuadrantSignsFromEitherKnownEnd) {
  // 10 chains at 30 degrees in feet: 330 across, 571.58 up.
  const double dx = 330.0, dy = 660.0 * std::cos(std::acos(-1.0) / 6);
  struct Case {
    const char* quadrant;
    int fromX, fromY;  // signs with the from end known
    int toX, toY;      // signs with the to end known
  };
  const Case cases[] = {{"1", 1, 1, -1, -1}, {"2", 1, -1, -1, 1}, {"3", -1, -1, 1, 1}, {"4", -1, 1, 1, -1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string("quadrant ") + c.quadrant);
    s.raw.Clear();
    AddRaw(1, 0, 1, "10", c.quadrant, "300000");
    AddRaw(0, 1, 1, "10", c.quadrant, "300000");
    const auto ends = Ends();
    ASSERT_EQ(ends.size(), 2u);
    EXPECT_NEAR(ends[0].first, 10000 + c.fromX * dx, 1e-3);
    EXPECT_NEAR(ends[0].second, 20000 + c.fromY * dy, 1e-3);
    EXPECT_NEAR(ends[1].first, 10000 + c.toX * dx, 1e-3);
    EXPECT_NEAR(ends[1].second, 20000 + c.toY * dy, 1e-3);
    // Both lines start at the known point.
    for (const auto& line : paint.Of("Line")) {
      EXPECT_EQ(line.args[0], 10000);
      EXPECT_EQ(line.args[1], 20000);
    }
  }
}

TEST_F(UnknownEnds, TheLineThenAFourPixelDotInTheForeColour) {
  AddRaw(1, 0, 3, "10", "3", "300000");
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenStyle 2", "Line 10000 20000 9670 19428.4 #008080", "PenWidth 4",
                            "Dot 9670 19428.4 #000000", "PenWidth 1", "PenWidth 1", "PenWidth 1"}));
  s.config.BackgroundMode = 2;
  EXPECT_EQ(PaintOnly("Dot"), (Calls{"Dot 9670 19428.4 #FFFFFF"}));
}

TEST_F(UnknownEnds, TheUnitCodeIsReadFromTheJobAtEachRefresh) {
  AddRaw(1, 0, 1, "10", "1", "300000");
  auto ends = Ends();
  ASSERT_EQ(ends.size(), 1u);
  EXPECT_NEAR(ends[0].first, 10330.0, 1e-3);

  // The same job changed to metres between two refreshes.
  WriteJob("T1N2E.def", DefFile(1));
  ends = Ends();
  ASSERT_EQ(ends.size(), 1u);
  const double metresPerChain = static_cast<float>(66.0 / 3.2808333333);
  EXPECT_NEAR(ends[0].first, 10000 + 0.5 * metresPerChain * 10, 1e-3);
  EXPECT_NEAR(ends[0].second, 20000 + std::sqrt(0.75) * metresPerChain * 10, 1e-3);
}

TEST_F(UnknownEnds, BothEndsUnknownTakeBothStepsFromTheOrigin) {
  AddRaw(0, 0, 1, "10", "1", "300000");
  const auto ends = Ends();
  ASSERT_EQ(ends.size(), 2u);
  EXPECT_NEAR(ends[0].first, 330.0, 1e-3);
  EXPECT_NEAR(ends[1].first, -330.0, 1e-3);
  EXPECT_NEAR(ends[1].second, -ends[0].second, 1e-9);
  for (const auto& line : paint.Of("Line")) {
    EXPECT_EQ(line.args[0], 0);
    EXPECT_EQ(line.args[1], 0);
  }
}

TEST_F(Drawing, ParcelColoursAndTheThreeTexts) {
  AddParcel(kTypeW, 100, 110);
  AddParcel(kTypeA, 200, 210);
  AddParcel(kTypeQ, 300, 310);
  AddParcel(kTypeL, 400, 410);
  AddParcel(kTypeP, 500, 510);

  s.checks.mnuOptionsParcelDetail = true;
  EXPECT_EQ(PaintOnly("Dot"), (Calls{"Dot 100 110 #0000FF", "Dot 200 210 #00FF00", "Dot 300 310 #FF0000",
                                     "Dot 400 410 #FFFF00", "Dot 500 510 #000000"}));
  // The aliquot part stays a plain green dot; type and number end at column 18.
  EXPECT_EQ(PaintOnly("Text"),
            (Calls{"Text '001A,W 123,B,40.000'", "Text '003 ,? 44,,160.000'", "Text '004Q,L 9,XY,1.000'",
                   "Text '005C,P 1234,,10.000'"}));
  const Calls shown = Shown();
  EXPECT_EQ(Calls(shown.begin() + 1, shown.begin() + 8),
            (Calls{"PenWidth 10", "Dot 100 110 #0000FF", "PenWidth 1", "Text '001A,W 123,B,40.000'", "PenWidth 10",
                   "PenWidth 10", "Dot 200 210 #00FF00"}));
  EXPECT_EQ(shown.back(), "PenWidth 1");

  s.checks.mnuOptionsParcelDetail = false;
  s.checks.mnuOptionsParcelFull = true;
  EXPECT_EQ(PaintOnly("Text")[1], "Text '002B,A 7,,2.500'");
  EXPECT_EQ(paint.Of("Text").size(), 5u);

  // Brief: columns 13 to 21 as they stand.
  s.checks.mnuOptionsParcelFull = false;
  s.checks.mnuOptionsParcelBrief = true;
  EXPECT_EQ(PaintOnly("Text"), (Calls{"Text 'W 123  B '", "Text '? 44     '", "Text 'L 9    XY'", "Text 'P 12345  '"}));

  // Dots alone; the colour of an unknown type follows the background.
  s.checks.mnuOptionsParcelBrief = false;
  s.checks.mnuOptionsParcel = true;
  s.config.BackgroundMode = 2;
  EXPECT_EQ(PaintOnly("Dot").back(), "Dot 500 510 #FFFFFF");
  EXPECT_TRUE(paint.Of("Text").empty());
}

TEST_F(Drawing, EachParcelLayerAsksForPolygonsWhenNoneAreLoaded) {
  s.checks.mnuOptionsParcel = true;
  s.checks.mnuOptionsParcelFull = true;
  s.checks.mnuOptionsMultiAtt = true;
  Paint();
  ASSERT_EQ(user.messages.size(), 2u);
  for (const auto& m : user.messages) {
    EXPECT_EQ(m.text, "You must load Polygons before viewing.");
    EXPECT_EQ(m.icon, Icon::None);
  }
  EXPECT_TRUE(paint.Of("Dot").empty());

  // Without an open job nothing is said.
  user.messages.clear();
  s.JobBase.clear();
  Paint();
  EXPECT_TRUE(user.messages.empty());

  // Nor with parcels loaded.
  s.JobBase = session.JobBase;
  AddParcel(kTypeW, 100, 110);
  Paint();
  EXPECT_TRUE(user.messages.empty());
  EXPECT_EQ(paint.Of("Dot").size(), 2u);
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
  AddPolygon("X", 10, 11);
  AddPolygon("S", 20, 21);
  AddPolygon("Q", 30, 31);
  AddPolygon("I", 40, 41);
  AddPolygon("O", 50, 51);
  AddPolygon("", 60, 61);
  Points({{"A", 100, 100}, {"B", 300, 300}, {"C", 0, 50}, {"D", 50, 0}});
  const std::vector<LineEnds> hidden = {{1, 2}, {2, 3}, {4, 1}, {0, 1}, {2, 1}};
  for (std::size_t i = 0; i < hidden.size(); ++i) s.notes.NoteLineEnds.at(static_cast<int>(i) + 1) = hidden[i];
  s.notes.NoteLineCount = static_cast<std::int16_t>(hidden.size());

  // Without the polygon layer neither is painted.
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 1", "PenWidth 1"}));

  s.checks.mnuViewRPO = true;
  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 10",
                            // an unknown tag keeps the colour before it, black at the start
                            "Dot 10 11 #000000", "Text 'X '", "Dot 20 21 #808080", "Text 'S '",
                            "Dot 30 31 #808080", "Text 'Q '", "Dot 40 41 #000080", "Text 'I '",
                            "Dot 50 51 #008000", "Text 'O '", "Dot 60 61 #008000", "Text ' '", "PenWidth 1",
                            "PenWidth 1", "PenStyle 2", "Line 100 100 300 300 #FFFFFF",
                            "PenWidth 1", "PenStyle 2", "Line 300 300 100 100 #FFFFFF",
                            "PenWidth 1", "PenWidth 1"}));

  s.config.BackgroundMode = 2;
  EXPECT_EQ(PaintOnly("Line"), (Calls{"Line 100 100 300 300 #000000", "Line 300 300 100 100 #000000"}));
}

TEST_F(Drawing, SelectionMarksOfPointsLinesAndParcels) {
  Points({{"A", 100, 100}, {"B", 200, 200}, {"C", 300, 300}});
  AddRaw(1, 2, 1);
  AddRaw(1, 3, 1);
  AddParcel(kTypeW, 600, 650);
  AddParcel(kTypeL, 700, 800);
  Pick({3, 1}, {2}, {2});
  s.config.PtSizeCor = 4;
  s.config.LsaColor = 9;  // light blue as a palette number, nearly black as a direct colour

  EXPECT_EQ(Paint(), (Calls{"Clear", "PenWidth 12", "Dot 300 300 #FF00FF", "PenWidth 12", "Dot 100 100 #FF00FF",
                            "PenWidth 1", "PenWidth 3", "Line 100 100 300 300 #FFFF00", "PenWidth 1",
                            "Line 100 100 300 300 #000009",
                            // no parcel layer on: no parcel mark
                            "PenWidth 12", "PenWidth 1"}));

  for (bool ViewChecks::*mark : {&ViewChecks::mnuOptionsParcel, &ViewChecks::mnuOptionsParcelBrief,
                                 &ViewChecks::mnuOptionsParcelDetail, &ViewChecks::mnuOptionsParcelFull}) {
    s.checks = ViewChecks{};
    s.checks.*mark = true;
    const Calls shown = Paint();
    ASSERT_GE(shown.size(), 3u);
    EXPECT_EQ(Calls(shown.end() - 3, shown.end()), (Calls{"PenWidth 12", "Dot 700 800 #FF0000", "PenWidth 1"}));
  }
}

TEST_F(Drawing, ParcelRingOutlinesSegmentsBetweenKnownPoints) {
  Points({{"100100", 1000, 1000},
          {"100200", 2000, 1000},
          {"100300", 2000, 2000},
          {"100400", 0, 2000},
          {"100100", 1100, 1100},
          {"10030", 3000, 3000}});
  // Five fields: the first id at columns 2 to 8, the next at 8, 15, 22, 29.
  DrawParcelRing(s, " 100100 100200 100300 100400 100100");
  EXPECT_EQ(Shown(), (Calls{"PenWidth 3", "Line 1100 1100 2000 1000 #FF0000", "Line 2000 1000 2000 2000 #FF0000",
                            "PenWidth 1"}));

  // A cut field at the end is not a field.
  paint.calls.clear();
  DrawParcelRing(s, " 100200 100300 10030");
  EXPECT_EQ(Shown(), (Calls{"PenWidth 3", "Line 2000 1000 2000 2000 #FF0000", "PenWidth 1"}));

  // An unknown id breaks the ring on both sides of it; yellow on black.
  paint.calls.clear();
  s.config.BackgroundMode = 2;
  DrawParcelRing(s, " 100200 999999 100300 100200");
  EXPECT_EQ(Shown(), (Calls{"PenWidth 3", "Line 2000 2000 2000 1000 #FFFF00", "PenWidth 1"}));

  paint.calls.clear();
  DrawParcelRing(s, "");
  EXPECT_EQ(Shown(), (Calls{"PenWidth 3", "PenWidth 1"}));
}

TEST_F(Drawing, TheFirstDrawingOfAJobFitsTheViewFirst) {
  Points({{"A", 2000, 4000}});
  s.extents = JobExtents{2000, 2500, 4000, 5000};
  s.checks.mnuViewPoints = true;
  RefreshViewAfterExtents(s);
  const Calls shown = Shown();
  ASSERT_GE(shown.size(), 5u);
  EXPECT_EQ(Calls(shown.begin(), shown.begin() + 5),
            (Calls{"Clear", "Scale 1980 5100 1533.33 -1150", "Clear", "PenWidth 5", "Dot 2000 4000 #800000"}));
}

}  // namespace
}  // namespace tessel::test
