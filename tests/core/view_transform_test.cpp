// The view of the canvas in job units: zoom extents with its uneven margins, the aspect rule,
// zoom in and out with the guard of the menu, zoom window, zoom previous, the pans, go to point
// and the four saved views.

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/recording_ports.h"
#include "model/session.h"
#include "viewer/view_transform.h"
#include "test_support.h"

namespace tessel::test {
namespace {

using Quad = std::array<double, 4>;  // left, top, right, bottom; or left, top, width, height
using Texts = std::vector<std::string>;
constexpr double kA = 1.33333;

// The fixture is the display too: a redraw leaves a marker among the primitives.
class ViewTransform : public JobFixture, public Display {
 protected:
  void SetUp() override { s.display = this; }
  void RefreshViewAfterExtents() override {}
  void RefreshView() override { canvas.calls.push_back({"Redraw", {}, 0, {}}); }
  void ClearCanvas() override { canvas.Clear(); }

  // The nominal window and its scale as a finished command leaves them, with no primitives yet.
  void View(Quad w) {
    s.view.ViewLeft = float(w[0]), s.view.ViewTop = float(w[1]);
    s.view.ViewRight = float(w[2]), s.view.ViewBottom = float(w[3]);
    SetWindow(s, w[0], w[1], w[2], w[3]);
    canvas.calls.clear();
  }

  // Four values in single precision, as the view holds them.
  static void Expect(const char* what, const ViewRect& r, Quad w) {
    const float got[] = {r.left, r.top, r.right, r.bottom};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(got[i], float(w[i])) << what << " " << i;
  }
  void ExpectPrevious(Quad w) const { Expect("previous", s.view.PreviousView, w); }
  void ExpectNominal(Quad w) const { Expect("nominal", {v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom}, w); }
  void ExpectScale(Quad w) const { Expect("scale", {v.ScaleLeft, v.ScaleTop, v.ScaleWidth, v.ScaleHeight}, w); }
  // The nominal window and the scale the aspect rule makes of it.
  void ExpectWindow(Quad w) const {
    ExpectNominal(w);
    ExpectScale({w[0], w[1], (w[1] - w[3]) * kA, w[3] - w[1]});
  }
  Texts Ops() const {
    Texts ops;
    for (const auto& call : canvas.calls) ops.push_back(call.op);
    return ops;
  }

  Session& s = session;
  const ViewState& v = s.view;
};

TEST_F(ViewTransform, ZoomExtentsIsSquareOnTheLargerSpanWithUnevenMarginsAndTheWidthFromTheHeight) {
  s.extents = JobExtents{2000, 2500, 4000, 5000};  // a tall job: 500 across, 1000 up
  ZoomExtents(s);
  ExpectWindow({1980, 5100, 3050, 3950});
  EXPECT_EQ(Ops(), Texts{"Scale"});  // no redraw
  s.extents = JobExtents{100, 1100, 200, 600};  // a wide job: the margins still hang on MaxY and MinX
  ZoomExtents(s);
  ExpectWindow({80, 700, 1150, -450});
  SetWindow(s, 1000, 301000, 99999, 1000);  // the literal 1.33333 and not 4/3 gives the width
  ExpectScale({1000, 301000, 399999, -300000});
  EXPECT_EQ(canvas.calls.back().args, (std::vector<double>{v.ScaleLeft, v.ScaleTop, v.ScaleWidth, v.ScaleHeight}));
}

TEST_F(ViewTransform, ExtentsBeyondTheSinglesRangeStopAtItsLargestValue) {
  // A coordinate of 1E39 gives a span no single holds: the view stops at the largest single,
  // so every value stays a number and the points of the job are still in the picture.
  for (const double far : {1e39, 1e300}) {
    s.extents = JobExtents{0, far, 0, 1000};
    ZoomExtents(s);
    for (const float value : {v.SpanX, v.SpanY, v.ViewLeft, v.ViewTop, v.ViewRight, v.ViewBottom, v.ScaleLeft,
                              v.ScaleTop, v.ScaleWidth, v.ScaleHeight}) {
      EXPECT_TRUE(std::isfinite(value)) << far;
    }
    EXPECT_EQ(v.SpanX, std::numeric_limits<float>::max());
    EXPECT_LT(v.ScaleLeft, 0.0f);
    EXPECT_GT(v.ScaleWidth, 0.0f);
  }
  s.extents = JobExtents{-1e39, 0, -1e39, 0};
  ZoomExtents(s);
  EXPECT_TRUE(std::isfinite(v.ScaleTop) && std::isfinite(v.ScaleHeight));
}

TEST_F(ViewTransform, OnlyTheMenuPathGuardsZoomInAgainstASmallWindow) {
  View({1000, 1100, 1024.9, 1000});  // 24.9 across, 100 up
  if (ZoomInGuard(s)) ZoomIn(s);
  EXPECT_EQ(user.MessageTexts(), Texts{"Unable to zoom in"});
  ExpectWindow({1000, 1100, 1024.9, 1000});
  ZoomIn(s);  // the toolbar's Zoomin has no guard
  ExpectWindow({1000 + 2.49, 1090, 1024.9 - 2.49, 1010});
  View({0, 24.9, 1000, 0});  // the height is guarded too
  EXPECT_FALSE(ZoomInGuard(s));
  View({0, 25, 25, 0});
  EXPECT_TRUE(ZoomInGuard(s));
  EXPECT_EQ(user.messages.size(), 2u);
}

TEST_F(ViewTransform, ZoomWindowFromAnyDragDirectionAndItsRefusalUnder25Units) {
  // Drags to and from every corner; a 30 by 24 and a 24 by 30 drag refuse. The nominal window
  // keeps the right edge asked for.
  for (const Quad& d : {Quad{100, 200, 400, 500}, Quad{400, 500, 100, 200}, Quad{100, 500, 400, 200},
                        Quad{400, 200, 100, 500}, Quad{100, 100, 130, 124}, Quad{100, 100, 124, 130}}) {
    SCOPED_TRACE(testing::Message() << d[0] << "," << d[1] << " to " << d[2] << "," << d[3]);
    const bool refused = d[1] == 100;
    View({0, 1000, 1000, 0});
    user.messages.clear();
    s.view.ZoomWindowArmed = -1;
    ZoomWindow(s, d[0], d[1], d[2], d[3]);
    EXPECT_EQ(s.view.ZoomWindowArmed, 0);
    EXPECT_EQ(user.MessageTexts(), refused ? Texts{"Unable to perform Zoom Window"} : Texts{});
    ExpectWindow(refused ? Quad{0, 1000, 1000, 0} : Quad{100, 500, 400, 200});
  }
  ZoomWindow(s, 100, 100, 125, 125);  // 25 by 25 is a window
  ExpectWindow({100, 125, 125, 100});
}

TEST_F(ViewTransform, ZoomsStepByZoomPercentOfTheWindowAndPansByPanPercentOfTheSpans) {
  View({0, 750, 1000, 0});
  ZoomIn(s);
  ExpectWindow({100, 675, 900, 75});
  ZoomOut(s);  // the step is taken from the smaller window, so it does not undo the zoom in
  ExpectWindow({20, 735, 980, 15});
  s.view.SpanX = 500, s.view.SpanY = 1000;
  View({2100, 4520, 2130, 4500});  // zoomed in far, an arrow still moves 10 % of a span
  Pan(s, PanDirection::Up);
  ExpectWindow({2100, 4620, 2130, 4600});
  Pan(s, PanDirection::Left);
  ExpectWindow({2050, 4620, 2080, 4600});
  s.config.PanPercent = 25;
  Pan(s, PanDirection::Down);
  ExpectWindow({2050, 4370, 2080, 4350});
  Pan(s, PanDirection::Right);
  ExpectWindow({2175, 4370, 2205, 4350});
  EXPECT_EQ(Ops().back(), "Redraw");
  ExpectPrevious({0, 0, 0, 0});  // no zoom or pan keeps a previous view
  View({1000, 2000, 1900, 1300});
  DragPan(s, 100, 200, 130, 150);  // 30 right and 50 down move the window the other way
  ExpectWindow({970, 2050, 1870, 1350});
  SetScale(s, 10, 20, 500, -100);  // a recalled saved view keeps its shape through a drag
  DragPan(s, 0, 0, -10, 10);
  ExpectScale({20, 10, 500, -100});
}

TEST_F(ViewTransform, GoToPointCentresOnTheLastMatchAndKeepsThePreviousViewEvenWhenCancelled) {
  SetPoints({{"100100", 1000, 2000}, {"AbC", 3000, 4000}, {"100100", 5000, 6000}});
  s.view.SpanX = 500, s.view.SpanY = 1000;
  View({0, 9000, 9000, 0});
  user.inputs = {std::string("  100100  "), std::string("AbC"), std::nullopt, std::string("   "), std::string("abc")};
  GoToPoint(s);
  EXPECT_EQ(user.prompts, Texts{"Enter Point Name: (case sensitive)"});
  ExpectWindow({4950, 6100, 5050, 5900});  // 10 % of the spans each way from the later point
  EXPECT_EQ(canvas.Of("Dot").at(0), (CanvasCall{"Dot", {5000, 6000}, 0xFF00FF, {}}));
  s.config.ZoomPercent = 20;  // sizes the window
  GoToPoint(s);
  ExpectNominal({2900, 4200, 3100, 3800});
  // A cancelled box, a blank name and a name of another case go nowhere, but the present view
  // still becomes the previous one.
  canvas.calls.clear();
  for (int k = 0; k < 3; ++k) GoToPoint(s);
  EXPECT_TRUE(canvas.calls.empty());
  ExpectPrevious({2900, 4200, 3100, 3800});
  ExpectNominal({2900, 4200, 3100, 3800});
  EXPECT_EQ(user.MessageTexts(), Texts{"Point name not found. "});
  EXPECT_EQ(user.messages[0].icon, Icon::Information);
}

TEST_F(ViewTransform, AnEmptySlotTakesThePresentScaleAndASetSlotShowsIt) {
  View({100, 900, 500, 600});
  RecallSavedView(s, 2);
  Expect("slot 2", s.view.SavedViews[2], {100, 900, 100 + 300 * kA, 600});
  s.view.SavedViews[1] = ViewRect{0, 500, 300, 100};  // a left of 0 is empty whatever else it holds
  RecallSavedView(s, 1);
  Expect("slot 1", s.view.SavedViews[1], {100, 900, 100 + 300 * kA, 600});
  EXPECT_TRUE(canvas.calls.empty());
  // A set slot is shown as it stands, without the aspect rule, and the nominal window stays.
  s.view.SavedViews[3] = ViewRect{1000, 3000, 1200, 2600};
  RecallSavedView(s, 3);
  ExpectScale({1000, 3000, 200, -400});
  ExpectNominal({100, 900, 500, 600});
  SetScale(s, 50, 900, 200, -300);  // the OK of the dialog overwrites a set slot with the scale
  StoreSavedView(s, 3);
  Expect("slot 3", s.view.SavedViews[3], {50, 900, 250, 600});
}

// The view on canvases of their own shape: one job unit as many pixels across as up.
class CanvasShape : public JobFixture {
 protected:
  void Pixels(int w, int h) { canvas.pixelWidth = w, canvas.pixelHeight = h; }
  double UnitAcross() const { return canvas.pixelWidth / std::fabs(double(session.view.ScaleWidth)); }
  double UnitUp() const { return canvas.pixelHeight / std::fabs(double(session.view.ScaleHeight)); }
};

TEST_F(CanvasShape, EveryWindowCommandKeepsAUnitSquareWhateverTheCanvasShape) {
  session.extents = JobExtents{2000, 2500, 4000, 5000};
  for (const auto& [w, h] : {std::pair{1000, 750}, std::pair{1024, 697}, std::pair{1600, 1000}, std::pair{600, 900},
                             std::pair{1920, 1080}}) {
    SCOPED_TRACE(testing::Message() << w << "x" << h);
    Pixels(w, h);
    ZoomExtents(session);
    EXPECT_NEAR(UnitAcross() / UnitUp(), 1.0, 1e-5);
    ZoomIn(session);
    ZoomWindow(session, 2100, 4000, 2300, 4400);
    EXPECT_NEAR(UnitAcross() / UnitUp(), 1.0, 1e-5);
    session.view.PreviousView = ViewRect{2000, 5000, 3000, 4000};
    ZoomPrevious(session, 15000, 11000);
    EXPECT_NEAR(UnitAcross() / UnitUp(), 1.0, 1e-5);
  }
}

TEST_F(CanvasShape, ACanvasOfTheViewsShapeKeepsTheViewsOwnValues) {
  // 1000 x 750 is 1.33333 to within a pixel; no pixels at all is the view's shape too.
  for (const auto& [w, h] : {std::pair{1000, 750}, std::pair{0, 0}, std::pair{799, 600}}) {
    Pixels(w, h);
    EXPECT_EQ(CanvasAspect(session), kAspect) << w;
    SetWindow(session, 0, 300, 5, 0);
    EXPECT_FLOAT_EQ(session.view.ScaleWidth, float(-300 * -kAspect));
  }
  Pixels(803, 600);  // beyond a pixel off: the canvas's own shape
  EXPECT_DOUBLE_EQ(CanvasAspect(session), 803.0 / 600);
}

// On a canvas of another shape the window shows whole and centred; resized back, the canvas
// shows the window itself again.
TEST_F(CanvasShape, ACanvasOfAnotherShapeShowsTheWindowAndSavedViewsWholeAboutTheirCentre) {
  Pixels(1000, 750);
  SetWindow(session, 100, 900, 0, 300);  // 800 x 600 about (500, 600), width by the view's 1.33333
  const ViewState& v = session.view;
  const auto expect = [&](double left, double top, double width, double height) {
    for (const auto& [got, want] : {std::pair{v.ScaleLeft, left}, {v.ScaleTop, top}, {v.ScaleWidth, width},
                                    {v.ScaleHeight, height}}) EXPECT_NEAR(got, want, 0.01);
  };
  Pixels(1200, 600);  // wider: as high, widened about the centre
  FitScaleToCanvas(session);
  expect(-100, 900, 1200, -600);
  Pixels(500, 1000);  // taller: as wide, heightened about the centre
  FitScaleToCanvas(session);
  expect(100, 1400, 800, -1600);
  Pixels(1000, 750);
  FitScaleToCanvas(session);
  expect(100, 900, 800, -600);
  // Zoom extents on a tall canvas keeps the whole job in sight.
  Pixels(500, 1000);
  SetWindow(session, 100, 900, 0, 300);
  expect(100, 1400, 800, -1600);
  // Zoom Previous starts its nominal window where the previous view starts, whatever the shape.
  session.view.PreviousView = ViewRect{100, 900, 900, 300};
  for (const auto& [w, h] : {std::pair{1000, 750}, std::pair{1200, 600}, std::pair{500, 1000}}) {
    Pixels(w, h);
    ZoomPrevious(session, 15000, 11000);
    EXPECT_EQ(std::tuple(v.ViewLeft, v.ViewTop, v.ViewRight), std::tuple(100.0f, 900.0f, 15100.0f)) << w;
  }
  // Saved views are shown square too.
  session.view.SavedViews[2] = ViewRect{10, 1000, 1343.33f, 0};
  Pixels(1000, 750);
  RecallSavedView(session, 2);
  EXPECT_FLOAT_EQ(session.view.ScaleWidth, 1333.33f);  // the slot's own right edge
  Pixels(1000, 500);
  RecallSavedView(session, 2);
  EXPECT_NEAR(UnitAcross() / UnitUp(), 1.0, 1e-6);
}

TEST_F(CanvasShape, TheWheelZoomsAboutThePointerByTheKeysStep) {
  Pixels(1000, 750);
  ViewState& v = session.view;
  v.ViewLeft = 0, v.ViewTop = 750, v.ViewRight = 1000, v.ViewBottom = 0;
  SetWindow(session, 0, 750, 1000, 0);
  v.PreviousView = ViewRect{1, 2, 3, 4};
  // Where (x, y) lands in pixels, by the canvas's formula.
  const auto pixel = [&](double x, double y) {
    return std::pair{(x - v.ScaleLeft) / v.ScaleWidth * 1000, (y - v.ScaleTop) / v.ScaleHeight * 750};
  };
  const auto before = pixel(250, 600);
  ZoomAbout(session, 250, 600, true);
  const auto after = pixel(250, 600);
  EXPECT_NEAR(after.first, before.first, 1e-3);
  EXPECT_NEAR(after.second, before.second, 1e-3);
  // ZoomPercent 10 takes 20 % off each dimension, as PageDown does.
  EXPECT_NEAR(v.ViewRight - v.ViewLeft, 800, 1e-3);
  EXPECT_NEAR(v.ViewTop - v.ViewBottom, 600, 1e-3);
  EXPECT_NEAR(v.ScaleWidth, 1333.33 * 0.8 * 0.75, 1e-2);
  ZoomAbout(session, 250, 600, false);
  EXPECT_NEAR(v.ViewRight - v.ViewLeft, 800 * 1.2, 1e-3);
  EXPECT_FLOAT_EQ(v.PreviousView.left, 1);  // as PageDown and PageUp: no previous view kept
  // Under 25 units the wheel stops zooming in, without a box.
  v.ViewLeft = 0, v.ViewTop = 20, v.ViewRight = 30, v.ViewBottom = 0;
  SetWindow(session, 0, 20, 30, 0);
  ZoomAbout(session, 10, 10, true);
  EXPECT_FLOAT_EQ(v.ViewTop, 20);
  EXPECT_TRUE(user.messages.empty());
}

TEST(ViewShapes, PagesWidenTheViewToTheirShapeAndScaleBarsTakeRoundLengths) {
  const ScaleRect view{100, 900, 400, -300};  // 4:3
  const ScaleRect portrait = FitScaleToShape(view, 0.75);
  EXPECT_DOUBLE_EQ(portrait.width, 400);
  EXPECT_DOUBLE_EQ(portrait.height, -400 / 0.75);
  EXPECT_DOUBLE_EQ(portrait.left, 100);
  EXPECT_DOUBLE_EQ(portrait.top + portrait.height / 2, 750);  // the same centre
  const ScaleRect wide = FitScaleToShape(view, 2.0);
  EXPECT_EQ(std::tuple(wide.left, wide.height, wide.width), std::tuple(0.0, -300.0, 600.0));
  EXPECT_DOUBLE_EQ(FitScaleToShape(view, std::numeric_limits<double>::quiet_NaN()).width, 400);

  for (const auto& [span, bar] : {std::pair{6000.0, 1000.0}, {5000.0, 1000.0}, {4999.0, 500.0}, {2.4, 0.2}, {0.0, 0.0},
                                  {std::numeric_limits<double>::infinity(), 0.0}}) {
    EXPECT_DOUBLE_EQ(ScaleBarLength(span), bar) << span;
  }
  EXPECT_EQ(ScaleBarText(500) + "|" + ScaleBarText(0.2), "500|0.2");
  EXPECT_EQ(CursorText(2000.126, 5000.5), "N 5000.50  E 2000.13");  // the northing first
}

}  // namespace
}  // namespace tessel::test
