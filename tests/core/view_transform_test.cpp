// The view of the canvas in job units: zoom extents with its uneven margins, the aspect rule,
// zoom in and out with the guard of the menu, zoom window, zoom previous, the pans, go to point
// and the four saved views.

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/recording_ports.h"
#include "core/session.h"
#include "viewer/view_transform.h"
#include "test_support.h"

namespace tessel::test {
namespace {

// A redraw leaves a marker among the primitives, so the order of scale and redraw shows.
class MarkingDisplay : public Display {
 public:
  explicit MarkingDisplay(RecordingCanvas& canvas) : canvas_(canvas) {}
  void RefreshViewAfterExtents() override { canvas_.calls.push_back({"RedrawAfterExtents", {}, 0, {}}); }
  void RefreshView() override { canvas_.calls.push_back({"Redraw", {}, 0, {}}); }
  void ClearCanvas() override { canvas_.Clear(); }

 private:
  RecordingCanvas& canvas_;
};

class ViewTransform : public ::testing::Test {
 protected:
  void SetUp() override { s.display = &display; }

  void Extents(double minX, double maxX, double minY, double maxY) {
    s.extents.MinX = minX;
    s.extents.MaxX = maxX;
    s.extents.MinY = minY;
    s.extents.MaxY = maxY;
  }

  // Sets the nominal window and its scale, as a finished command leaves them, and forgets the
  // primitives so far.
  void View(float left, float top, float right, float bottom) {
    s.view.ViewLeft = left;
    s.view.ViewTop = top;
    s.view.ViewRight = right;
    s.view.ViewBottom = bottom;
    SetWindow(s, left, top, right, bottom);
    canvas.calls.clear();
  }

  // Four values of a window, a scale or a slot, in single precision as the view holds them.
  static void Expect4(const char* what, std::array<float, 4> got, std::array<double, 4> want) {
    for (std::size_t i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(got[i], static_cast<float>(want[i])) << what << " " << i;
  }
  void ExpectNominal(double left, double top, double right, double bottom) const {
    Expect4("nominal", {s.view.ViewLeft, s.view.ViewTop, s.view.ViewRight, s.view.ViewBottom}, {left, top, right, bottom});
  }
  void ExpectPrevious(double left, double top, double right, double bottom) const {
    const ViewRect& p = s.view.PreviousView;
    Expect4("previous", {p.left, p.top, p.right, p.bottom}, {left, top, right, bottom});
  }
  // The scale held by the view and the last one the canvas was given.
  void ExpectScale(double left, double top, double width, double height) const {
    const ViewState& v = s.view;
    Expect4("scale", {v.ScaleLeft, v.ScaleTop, v.ScaleWidth, v.ScaleHeight}, {left, top, width, height});
    const auto scales = canvas.Of("Scale");
    ASSERT_FALSE(scales.empty());
    const auto& a = scales.back().args;
    Expect4("canvas", {float(a[0]), float(a[1]), float(a[2]), float(a[3])}, {left, top, width, height});
  }

  std::optional<Pointer> LastPointer() const {
    if (user.pointers.empty()) return std::nullopt;
    return user.pointers.back();
  }

  std::vector<std::string> Ops() const {
    std::vector<std::string> ops;
    for (const auto& call : canvas.calls) ops.push_back(call.op);
    return ops;
  }

  RecordingUserPort user;
  RecordingCanvas canvas;
  RecordingProcessPort processes;
  Session s{user, canvas, processes};
  MarkingDisplay display{canvas};
};

using OpList = std::vector<std::string>;

TEST_F(ViewTransform, ZoomExtentsIsSquareOnTheLargerSpanWithUnevenMargins) {
  // A tall job: 500 across, 1000 up.
  Extents(2000, 2500, 4000, 5000);
  ZoomExtents(s);
  EXPECT_FLOAT_EQ(s.view.SpanY, 1000.0f);
  EXPECT_FLOAT_EQ(s.view.SpanX, 500.0f);
  ExpectNominal(1980, 5100, 3050, 3950);
  ExpectScale(1980, 5100, 1150 * 1.33333, -1150);
  // Zoom extents leaves the redraw to its caller.
  EXPECT_EQ(Ops(), (OpList{"Scale"}));

  // A wide job: the across span decides, the margins still hang on MaxY and MinX.
  canvas.calls.clear();
  Extents(100, 1100, 200, 600);
  ZoomExtents(s);
  EXPECT_FLOAT_EQ(s.view.SpanX, 1000.0f);
  EXPECT_FLOAT_EQ(s.view.SpanY, 400.0f);
  ExpectNominal(80, 700, 1150, -450);
  ExpectScale(80, 700, 1150 * 1.33333, -1150);

  // Equal spans: the same window from either branch.
  Extents(0, 800, 1000, 1800);
  ZoomExtents(s);
  ExpectNominal(-16, 1880, 840, 960);
  ExpectScale(-16, 1880, 920 * 1.33333, -920);
}

TEST_F(ViewTransform, TheAspectRuleTakesTheWidthFromTheHeight) {
  // The width asked for is ignored; the literal 1.33333 and not 4/3 gives it.
  SetWindow(s, 1000, 301000, 99999, 1000);
  ExpectScale(1000, 301000, 399999, -300000);
  EXPECT_NE(s.view.ScaleWidth, 400000.0f);

  // A window command keeps the right edge it was asked for in the nominal window.
  ZoomWindow(s, 0, 0, 500, 100);
  ExpectScale(0, 100, 133.333, -100);
  ExpectNominal(0, 100, 500, 0);
}

TEST_F(ViewTransform, ZoomInGuardRefusesASmallWindowOnlyOnTheMenuPath) {
  // 24.9 units across, 100 up.
  View(1000, 1100, 1024.9f, 1000);
  s.view.ZoomWindowArmed = -1;
  if (ZoomInGuard(s)) ZoomIn(s);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "Unable to zoom in");
  EXPECT_EQ(user.messages[0].icon, Icon::None);
  EXPECT_EQ(Ops(), (OpList{"Redraw"}));
  EXPECT_EQ(s.view.ZoomWindowArmed, 0);
  EXPECT_EQ(LastPointer(), Pointer::Arrow);
  ExpectNominal(1000, 1100, 1024.9f, 1000);

  // The toolbar's Zoomin has no guard and zooms at any size.
  user.messages.clear();
  canvas.calls.clear();
  ZoomIn(s);
  EXPECT_TRUE(user.messages.empty());
  ExpectNominal(1000 + 2.49, 1090, 1024.9 - 2.49, 1010);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));

  // The height is guarded too; 25 by 25 is large enough.
  View(0, 24.9f, 1000, 0);
  EXPECT_FALSE(ZoomInGuard(s));
  View(0, 25, 25, 0);
  user.messages.clear();
  EXPECT_TRUE(ZoomInGuard(s));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_TRUE(canvas.calls.empty());
}

TEST_F(ViewTransform, ZoomInAndOutMoveEachEdgeByAPercentOfThePresentSize) {
  View(0, 750, 1000, 0);
  ZoomIn(s);
  ExpectNominal(100, 675, 900, 75);
  ExpectScale(100, 675, 600 * 1.33333, -600);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));

  // The step of zoom out is taken from the smaller window, so it does not undo the zoom in.
  ZoomOut(s);
  ExpectNominal(20, 735, 980, 15);
  ExpectScale(20, 735, 720 * 1.33333, -720);

  // ZoomPercent sets the step; zooming never saves the previous view by itself.
  s.config.ZoomPercent = 25;
  View(0, 400, 400, 0);
  ZoomIn(s);
  ExpectNominal(100, 300, 300, 100);
  ExpectPrevious(0, 0, 0, 0);
}

TEST_F(ViewTransform, ZoomWindowFromAnyDragDirectionAndItsRefusalUnder25Units) {
  // Drags to and from every corner; a 30 by 24 and a 24 by 30 drag refuse.
  const std::vector<std::array<double, 4>> drags = {{100, 200, 400, 500}, {400, 500, 100, 200}, {100, 500, 400, 200},
                                                    {400, 200, 100, 500}, {100, 100, 130, 124}, {100, 100, 124, 130}};
  for (const auto& d : drags) {
    SCOPED_TRACE(testing::Message() << d[0] << "," << d[1] << " to " << d[2] << "," << d[3]);
    const bool refused = d[1] == 100;
    View(0, 1000, 1000, 0);
    user.messages.clear();
    user.pointers.clear();
    s.view.ZoomWindowArmed = -1;
    ZoomWindow(s, d[0], d[1], d[2], d[3]);
    EXPECT_EQ(s.view.ZoomWindowArmed, 0);
    EXPECT_EQ(LastPointer(), Pointer::Arrow);
    if (refused) {
      EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Unable to perform Zoom Window"});
      EXPECT_EQ(Ops(), (OpList{"Redraw"}));
      ExpectNominal(0, 1000, 1000, 0);
    } else {
      EXPECT_TRUE(user.messages.empty());
      EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));
      ExpectNominal(100, 500, 400, 200);
      ExpectScale(100, 500, 300 * 1.33333, -300);
    }
  }
  // 25 by 25 is a window.
  user.messages.clear();
  ZoomWindow(s, 100, 100, 125, 125);
  EXPECT_TRUE(user.messages.empty());
  ExpectNominal(100, 125, 125, 100);
}

TEST_F(ViewTransform, ZoomPreviousGoesBackOnceAndTakesTheOuterSizeInTwips) {
  View(100, 800, 600, 400);
  SavePrevious(s);
  View(0, 5000, 5000, 0);
  ZoomPrevious(s, 9600, 7200);
  ExpectScale(100, 800, 400 * 1.33333, -400);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));
  // The nominal window is the scale's corner plus the form's size in twips.
  ExpectNominal(100, 800, 9700, -6400);
  ExpectPrevious(100, 800, 600, 400);

  // A second zoom previous lands on the same place.
  canvas.calls.clear();
  ZoomPrevious(s, 9600, 7200);
  ExpectScale(100, 800, 400 * 1.33333, -400);
  ExpectNominal(100, 800, 9700, -6400);

  // A zoom in after it starts from the twips window: 10 % of 9600 across, of 7200 up.
  ZoomIn(s);
  ExpectNominal(1060, 80, 8740, -5680);
}

TEST_F(ViewTransform, PanStepsByPanPercentOfTheSpansWhateverTheZoom) {
  Extents(2000, 2500, 4000, 5000);  // SpanX 500, SpanY 1000
  ZoomExtents(s);
  canvas.calls.clear();
  Pan(s, PanDirection::Up);
  ExpectNominal(1980, 5200, 3050, 4050);
  ExpectScale(1980, 5200, 1150 * 1.33333, -1150);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));

  // Zoomed in far, one Up arrow still moves 100.
  View(2100, 4520, 2130, 4500);
  Pan(s, PanDirection::Up);
  ExpectNominal(2100, 4620, 2130, 4600);
  Pan(s, PanDirection::Down);
  Pan(s, PanDirection::Down);
  ExpectNominal(2100, 4420, 2130, 4400);
  Pan(s, PanDirection::Left);
  ExpectNominal(2050, 4420, 2080, 4400);
  Pan(s, PanDirection::Right);
  Pan(s, PanDirection::Right);
  ExpectNominal(2150, 4420, 2180, 4400);
  ExpectScale(2150, 4420, 20 * 1.33333, -20);

  s.config.PanPercent = 25;
  Pan(s, PanDirection::Up);
  ExpectNominal(2150, 4670, 2180, 4650);
  // No pan keeps a previous view.
  EXPECT_FLOAT_EQ(s.view.PreviousView.left, 0.0f);
}

TEST_F(ViewTransform, DragPanMovesScaleAndNominalWindowTogether) {
  View(1000, 2000, 1900, 1300);
  const float width = s.view.ScaleWidth, height = s.view.ScaleHeight;
  DragPan(s, 100, 200, 130, 150);  // 30 right, 50 down
  ExpectScale(970, 2050, width, height);
  ExpectNominal(970, 2050, 1870, 1350);
  EXPECT_EQ(Ops(), (OpList{"Clear", "Scale", "Redraw"}));
  EXPECT_FLOAT_EQ(s.view.PreviousView.left, 0.0f);

  // A scale not of the aspect rule's shape (a recalled saved view) keeps its shape.
  SetScale(s, 10, 20, 500, -100);
  DragPan(s, 0, 0, -10, 10);
  ExpectScale(20, 10, 500, -100);
}

class GoToPointTest : public ViewTransform {
 protected:
  void SetUp() override {
    ViewTransform::SetUp();
    s.points.Set(1, "100100", 1000, 2000);
    s.points.Set(2, "AbC", 3000, 4000);
    s.points.Set(3, "100100", 5000, 6000);
    s.points.SetCount(3);
    s.view.SpanX = 500;
    s.view.SpanY = 1000;
    s.config.PtSizeCor = 5;
    View(0, 9000, 9000, 0);
  }
};

TEST_F(GoToPointTest, TheLastMatchWinsAndIsMarked) {
  user.inputs.push_back(std::string("  100100  "));
  GoToPoint(s);
  EXPECT_EQ(user.prompts, std::vector<std::string>{"Enter Point Name: (case sensitive)"});
  // 10 % of the spans each way from the later point.
  ExpectNominal(4950, 6100, 5050, 5900);
  ExpectScale(4950, 6100, 200 * 1.33333, -200);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw", "PenWidth", "Dot", "PenWidth"}));
  EXPECT_EQ(canvas.calls[2].args, std::vector<double>{15});
  EXPECT_EQ(canvas.calls[3].args, (std::vector<double>{5000, 6000}));
  EXPECT_EQ(canvas.calls[3].colour, 0xFF00FFu);
  EXPECT_EQ(canvas.calls[4].args, std::vector<double>{1});
  // The view before the jump is the one to go back to.
  ExpectPrevious(0, 9000, 9000, 0);
  EXPECT_TRUE(user.messages.empty());

  // ZoomPercent sizes the window.
  s.config.ZoomPercent = 20;
  user.inputs.push_back(std::string("AbC"));
  GoToPoint(s);
  ExpectNominal(2900, 4200, 3100, 3800);
  EXPECT_FLOAT_EQ(s.view.PreviousView.left, 4950.0f);
}

TEST_F(GoToPointTest, AnUnknownNameIsReportedWithTheInformationIcon) {
  user.inputs.push_back(std::string("abc"));  // identifiers match with case
  GoToPoint(s);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "Point name not found. ");
  EXPECT_EQ(user.messages[0].icon, Icon::Information);
  EXPECT_TRUE(canvas.calls.empty());
  ExpectNominal(0, 9000, 9000, 0);
}

TEST_F(GoToPointTest, ACancelledBoxStillOverwritesThePreviousView) {
  View(100, 800, 600, 400);
  SavePrevious(s);
  View(2000, 3000, 2800, 2400);
  for (const std::optional<std::string>& reply : {std::optional<std::string>(), std::optional<std::string>("   ")}) {
    user.inputs.push_back(reply);
    GoToPoint(s);
    EXPECT_TRUE(user.messages.empty());
    EXPECT_TRUE(canvas.calls.empty());
    ExpectPrevious(2000, 3000, 2800, 2400);
  }
  // Zoom previous now stays on the present view, not the one saved before.
  ZoomPrevious(s, 9600, 7200);
  ExpectScale(2000, 3000, 600 * 1.33333, -600);
}

TEST_F(ViewTransform, AnEmptySlotTakesThePresentScaleAndASetSlotShowsIt) {
  View(100, 900, 500, 600);  // scale 100, 900, 399.999, -300
  const double right = 100 + static_cast<float>(300 * 1.33333);
  RecallSavedView(s, 2);
  const ViewRect& slot = s.view.SavedViews[2];
  Expect4("slot 2", {slot.left, slot.top, slot.right, slot.bottom}, {100, 900, right, 600});
  // Taking the scale does nothing else.
  EXPECT_TRUE(canvas.calls.empty());
  ExpectNominal(100, 900, 500, 600);

  // A set slot is shown as it stands, without the aspect rule, and the nominal window stays.
  s.view.SavedViews[3] = ViewRect{1000, 3000, 1200, 2600};
  View(0, 750, 1000, 0);
  RecallSavedView(s, 3);
  ExpectScale(1000, 3000, 200, -400);
  EXPECT_EQ(Ops(), (OpList{"Scale", "Redraw"}));
  ExpectNominal(0, 750, 1000, 0);
  // So a following zoom out starts from the view before the recall.
  ZoomOut(s);
  ExpectNominal(-100, 825, 1100, -75);

  // A slot whose left is 0 is empty whatever else it holds.
  s.view.SavedViews[1] = ViewRect{0, 500, 300, 100};
  View(10, 60, 50, 30);
  RecallSavedView(s, 1);
  EXPECT_FLOAT_EQ(s.view.SavedViews[1].left, 10.0f);
  EXPECT_FLOAT_EQ(s.view.SavedViews[1].top, 60.0f);
  EXPECT_TRUE(canvas.calls.empty());

  // The OK of the dialog overwrites a set slot with the present scale, moved by a drag pan.
  View(100, 900, 500, 600);
  DragPan(s, 0, 0, 50, 0);
  StoreSavedView(s, 3);
  const ViewRect& three = s.view.SavedViews[3];
  Expect4("slot 3", {three.left, three.top, three.right, three.bottom}, {50, 900, right - 50, 600});
}

}  // namespace
}  // namespace tessel::test
