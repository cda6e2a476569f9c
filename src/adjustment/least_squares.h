#pragma once
// The least squares adjustment of a job's record data: Gauss-Newton on the linearized
// observation equations, sparse normal equations, and the statistics a surveyor reads: the
// variance factor and its test, standard errors and ellipses, residuals and standardized
// residuals with the possible blunders.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "adjustment/network.h"

namespace tessel::adjustment {

inline constexpr double kConvergence = 0.00005;  // job units, the largest coordinate correction
inline constexpr int kMaxIterations = 20;
inline constexpr double kBlunderLimit = 3.29;

struct StationResult {
  std::string id;
  double x = 0, y = 0, sx = 0, sy = 0;
  double a = 0, b = 0, thetaDeg = 0;  // the standard error ellipse; theta from grid north, clockwise
};

struct OrientationResult {
  std::string survey;
  double valueSec = 0, sigmaSec = 0;
};

struct ObservationResult {
  Observation observation;
  double adjusted = 0;  // the value the adjusted coordinates give, in the observation's units
  double residual = 0;  // adjusted minus observed; seconds for azimuths
  std::optional<double> stdResidual;  // none for an observation without redundancy
  bool flagged = false;
};

struct Adjustment {
  JobUnits units = JobUnits::UsSurveyFeet;
  int iterations = 0;
  bool converged = false;
  int observationCount = 0, unknownCount = 0, dof = 0;
  double vtpv = 0;
  std::optional<double> sigma0;
  std::optional<bool> chi2Pass;
  double chi2Lower = 0, chi2Upper = 0;  // the 95 % bounds of vTPv
  std::vector<StationResult> stations;  // the unknown stations, in their order
  std::vector<OrientationResult> orientations;
  std::vector<ObservationResult> observations;
  std::vector<int> blunders;      // indexes of flagged observations, largest |std residual| first
  std::vector<int> uncontrolled;  // indexes of observations without redundancy
  std::vector<NetworkStation> fixedStations;
  int recordCount = 0;
  Skipped skipped;
  std::vector<std::string> disconnected, nonGridSurveys;
};

// Told the step ("Iteration 3", "Standard errors") and its number of `of`; returns false to stop.
using Progress = std::function<bool(const std::string& step, int done, int of)>;

struct Outcome {
  std::optional<Adjustment> adjustment;
  std::string error;  // one line: why the adjustment could not start or finish
};

Outcome Adjust(const Network& network, const Progress& progress = {});
// Reads the job and adjusts it.
Outcome AdjustJob(const std::string& jobBase, const Options& options, const Progress& progress = {});

}  // namespace tessel::adjustment
