#pragma once
// The adjustment's network: which records give which observations, which stations are unknowns
// and in what order, and where each station starts (its approximate coordinates).

#include <optional>
#include <string>
#include <vector>

#include "adjustment/adjustment_input.h"

namespace tessel::adjustment {

struct Options {
  // Each control coordinate an observation with this standard error (job units) instead of fixed.
  std::optional<double> controlSigma;
};

enum class ObservationKind { Distance, Azimuth, ControlX, ControlY };
// "distance", "azimuth", "control_x", "control_y".
const char* KindName(ObservationKind kind);

struct Observation {
  ObservationKind kind = ObservationKind::Distance;
  int record = 0;  // 1-based among the records; 0 for control
  std::string from, to, survey;
  int fromStation = -1, toStation = -1;  // indexes into Network::stations; the station of control
  int orientation = -1;  // index into Network::orientations for a survey whose bearings became angles
  double value = 0;  // job units; azimuths in radians from grid north
  double sigma = 0;  // the same units
};

struct NetworkStation {
  std::string id;
  double x = 0, y = 0;  // control coordinates, or the approximate ones of an unknown
  int unknown = -1;  // index of x among the unknowns (y follows it); -1 for a fixed station
};

struct Skipped {
  int unknownSurvey = 0, emptyOrEqualIds = 0, badQuadrant = 0;
};

struct Network {
  JobUnits units = JobUnits::UsSurveyFeet;
  std::vector<NetworkStation> stations;  // the unknown stations in their order, then fixed control
  std::vector<std::string> orientations;  // the surveys of the orientation unknowns, in .sid order
  std::vector<Observation> observations;
  int unknownCount = 0;
  std::vector<double> initialOrientations;  // radians, one per orientation
  int recordCount = 0;  // the records after "999999"
  Skipped skipped;
  std::vector<std::string> disconnected;
  std::vector<std::string> nonGridSurveys;  // surveys with observations whose bearings are not grid
};

// Builds the network, or gives the one-line reason it cannot be adjusted: no control station
// reached, or stations that no record places.
std::optional<Network> BuildNetwork(const AdjustmentInput& input, const Options& options, std::string& error);

// One survey distance unit in job units.
double UnitFactor(char distanceUnit, JobUnits units);
// The angle wrapped to (-pi, pi].
double WrapAngle(double radians);

}  // namespace tessel::adjustment
