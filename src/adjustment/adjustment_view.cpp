#include "adjustment/adjustment_view.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <unordered_map>
#include <utility>

#include "adjustment/adjustment_report.h"
#include "model/platform.h"

namespace tessel::adjustment {

namespace {

constexpr int kEllipseSegments = 48;

std::string Fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

std::string FileName(const std::string& jobBase, const char* extension) {
  return PathBytes(NativePath(jobBase + extension).filename());
}

// Where every station of the result stands: the adjusted ones and the fixed control.
std::unordered_map<std::string, std::pair<double, double>> Places(const Adjustment& a) {
  std::unordered_map<std::string, std::pair<double, double>> places;
  for (const NetworkStation& s : a.fixedStations) places[s.id] = {s.x, s.y};
  for (const StationResult& s : a.stations) places[s.id] = {s.x, s.y};
  return places;
}

// A chain in job units, with the US foot's 66 when the job has told none.
double Chain(double unitsPerChain) { return unitsPerChain > 0 ? unitsPerChain : 66.0; }

// The box of the view's own shape that holds the two points with `margin` about them, centred on
// them: the aspect rule then keeps its centre where it is.
ZoomBox Around(double x0, double y0, double x1, double y1, double margin, double aspect) {
  const double height = std::max(std::fabs(y1 - y0) + 2 * margin, (std::fabs(x1 - x0) + 2 * margin) / aspect);
  const double width = height * aspect;
  const double cx = (x0 + x1) / 2, cy = (y0 + y1) / 2;
  return {cx - width / 2, cy - height / 2, cx + width / 2, cy + height / 2};
}

}  // namespace

std::string SummaryText(const Adjustment& a) {
  std::string text = "Iterations: " + std::to_string(a.iterations) + (a.converged ? ", converged" : ", did not converge");
  text += "    Degrees of freedom: " + std::to_string(a.dof);
  text += "    Standard error of unit weight: " + (a.sigma0 ? Fixed(*a.sigma0, 4) : std::string("none"));
  text += "\nChi-square test (95 %): ";
  text += a.chi2Pass ? (*a.chi2Pass ? "passed" : "FAILED") : "not made";
  text += "    Stations adjusted: " + std::to_string(a.stations.size());
  text += "    Observations: " + std::to_string(a.observationCount);
  text += "    Possible blunders: " + std::to_string(a.blunders.size());
  text += std::string("\nUnits: ") + UnitsName(a.units);
  return text;
}

std::string AdjustFailedText(const std::string& error) { return "The adjustment could not be made: " + error + "."; }

std::string AcceptQuestion(const std::string& jobBase, int stations) {
  return "Write the " + std::to_string(stations) + " adjusted stations into " + FileName(jobBase, ".COR") +
         "? Its other lines stay as they are, and the present file is kept as " +
         FileName(jobBase, kCorBackupExtension) + ". The job is then read again.";
}

std::string AcceptedText(const std::string& jobBase, int stations) {
  return std::to_string(stations) + " stations written to " + FileName(jobBase, ".COR") + "; the former file is " +
         FileName(jobBase, kCorBackupExtension) + ".";
}

AdjustmentOverlay BuildOverlay(const Adjustment& a, double ellipseScale) {
  AdjustmentOverlay overlay;
  for (const StationResult& s : a.stations) {
    if (!(s.a > 0) || !std::isfinite(s.a) || !std::isfinite(s.b)) continue;
    // The semi-major axis at theta from grid north, clockwise; the semi-minor square to it.
    const double theta = s.thetaDeg * std::numbers::pi / 180.0;
    const double ux = std::sin(theta), uy = std::cos(theta);
    const double major = s.a * ellipseScale, minor = s.b * ellipseScale;
    OverlayPolyline ring{{}, kEllipseColour, 1};
    ring.xy.reserve(2 * (kEllipseSegments + 1));
    for (int k = 0; k <= kEllipseSegments; ++k) {
      const double t = 2.0 * std::numbers::pi * k / kEllipseSegments;
      const double along = major * std::cos(t), across = minor * std::sin(t);
      ring.xy.push_back(s.x + along * ux + across * uy);
      ring.xy.push_back(s.y + along * uy - across * ux);
    }
    overlay.lines.push_back(std::move(ring));
  }
  const auto places = Places(a);
  for (const int index : a.blunders) {
    const Observation& o = a.observations[static_cast<std::size_t>(index)].observation;
    const auto from = places.find(o.from), to = places.find(o.to);
    if (from == places.end() || to == places.end()) continue;
    overlay.lines.push_back({{from->second.first, from->second.second, to->second.first, to->second.second},
                             kFlaggedColour, kFlaggedPenWidth});
  }
  return overlay;
}

ZoomBox StationBox(const Adjustment& a, int station, double unitsPerChain, double aspect) {
  const StationResult& s = a.stations.at(static_cast<std::size_t>(station));
  return Around(s.x, s.y, s.x, s.y, 5 * Chain(unitsPerChain), aspect);
}

std::optional<ZoomBox> ObservationBox(const Adjustment& a, int observation, double unitsPerChain, double aspect) {
  const Observation& o = a.observations.at(static_cast<std::size_t>(observation)).observation;
  const auto places = Places(a);
  const auto from = places.find(o.from);
  if (from == places.end()) return std::nullopt;
  const auto to = o.to.empty() ? from : places.find(o.to);
  if (to == places.end()) return std::nullopt;
  return Around(from->second.first, from->second.second, to->second.first, to->second.second,
                (o.to.empty() ? 5 : 2) * Chain(unitsPerChain), aspect);
}

}  // namespace tessel::adjustment
