// Where tool windows open: beside the main window below its menu bar, inside the screen, and
// remembered places that lie off every screen brought onto the nearest.

#include <gtest/gtest.h>

#include "model/window_placing.h"

namespace tessel::test {
namespace {

const PixelRect kScreen{0, 0, 1920, 1080};

TEST(WindowPlacing, AFirstWindowOpensBesideTheMainWindowBelowItsMenuBar) {
  // Room on the right: just outside the main window, top at the client area.
  EXPECT_EQ(PlaceBesideMain({100, 50, 1000, 750}, 80, kScreen, 360, 300), (PixelRect{1100, 80, 360, 300}));
  // No room: inside the main window's right edge, still below the menu bar.
  EXPECT_EQ(PlaceBesideMain({0, 0, 1800, 1000}, 30, kScreen, 360, 300), (PixelRect{1440, 30, 360, 300}));
  // A main window off the screen's bottom: the window stays within the screen.
  EXPECT_EQ(PlaceBesideMain({0, 900, 800, 600}, 930, kScreen, 360, 300), (PixelRect{800, 780, 360, 300}));
  // Larger than the screen: shrunk to it.
  EXPECT_EQ(PlaceBesideMain({0, 0, 800, 600}, 30, {0, 0, 640, 480}, 900, 900), (PixelRect{0, 0, 640, 480}));
}

TEST(WindowPlacing, RememberedPlacesOffEveryScreenComeBackToTheNearest) {
  const std::vector<PixelRect> screens{{0, 0, 1920, 1080}, {1920, 0, 1280, 1024}};
  // On a screen, or on the second: kept, even across the seam.
  EXPECT_EQ(OntoScreens({100, 100, 300, 200}, screens), (PixelRect{100, 100, 300, 200}));
  EXPECT_EQ(OntoScreens({1800, 100, 300, 200}, screens), (PixelRect{1800, 100, 300, 200}));
  // Far right of both: onto the second screen's right edge.
  EXPECT_EQ(OntoScreens({5000, 100, 300, 200}, screens), (PixelRect{2900, 100, 300, 200}));
  // Above the first: onto its top.
  EXPECT_EQ(OntoScreens({200, -900, 300, 200}, screens), (PixelRect{200, 0, 300, 200}));
  // Only a sliver on screen is not enough to grab it.
  EXPECT_EQ(OntoScreens({-290, 100, 300, 200}, screens), (PixelRect{0, 100, 300, 200}));
  // No screens known: as it was.
  EXPECT_EQ(OntoScreens({-5000, -5000, 10, 10}, {}), (PixelRect{-5000, -5000, 10, 10}));
}

}  // namespace
}  // namespace tessel::test
