#pragma once
// What the adjustment window shows of a result, and what it says, kept free of Qt: its texts,
// the figures of its summary, the canvas overlay of error ellipses and flagged observations, and
// the window of the view that a row of its tables zooms to.

#include <optional>
#include <string>

#include "adjustment/least_squares.h"
#include "model/adjustment_overlay.h"

namespace tessel::adjustment {

inline constexpr const char* kAdjustEntryName = "mnuCommandAdjust";
inline constexpr const char* kAdjustEntryCaption = "Adjust Record Data (Tessel)";
inline constexpr const char* kAdjustTitle = "Adjust Record Data";
inline constexpr const char* kAdjustCancelledStatus = "The adjustment was stopped; nothing was written.";

// The ellipses drawn this many times their size, so that a tenth of a foot shows on a township.
inline constexpr double kDefaultEllipseScale = 100.0;
inline constexpr unsigned kEllipseColour = 0xFF00FF;  // magenta: seen on the black and the white background
inline constexpr unsigned kFlaggedColour = 0xFF0000;
inline constexpr int kFlaggedPenWidth = 4;

// The columns of the window's tables.
inline constexpr const char* kStationColumns[] = {"Station", "X", "Y", "SX", "SY", "A", "B", "Theta"};
inline constexpr const char* kObservationColumns[] = {"Record", "Kind", "From", "To", "Survey",
                                                      "Residual", "Std residual", "Flagged"};

// The key figures of a result in a few lines.
std::string SummaryText(const Adjustment& adjustment);
// A run that could not start or finish.
std::string AdjustFailedText(const std::string& error);
// Accept's question, naming .COR and the backup; and what it tells once the file is written.
std::string AcceptQuestion(const std::string& jobBase, int stations);
std::string AcceptedText(const std::string& jobBase, int stations);

// The ellipses of the adjusted stations at `ellipseScale` times their size, then the flagged
// observations between their stations' adjusted places, wide and red.
AdjustmentOverlay BuildOverlay(const Adjustment& adjustment, double ellipseScale);

// A window of the view, corner to corner, in job units, of the view's shape (width over height
// `aspect`) and centred on what it shows.
struct ZoomBox {
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};
// Five chains above and below an adjusted station.
ZoomBox StationBox(const Adjustment& adjustment, int station, double unitsPerChain, double aspect);
// An observation's line with two chains about it, or its control station; none when its stations
// have no place in the result.
std::optional<ZoomBox> ObservationBox(const Adjustment& adjustment, int observation, double unitsPerChain,
                                      double aspect);

}  // namespace tessel::adjustment
