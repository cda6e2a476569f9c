// A survey network of known true coordinates, written as a job's record data: a grid of stations
// joined by lines measured with random errors of known size, for the adjustment's tests and
// benchmark.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessel::jobgen {

struct NetworkShape {
  int columns = 8, rows = 8;
  double spacingChains = 40.0;
  double distanceSigmaChains = 0.02;  // the survey's error estimates, and the size of the noise
  double bearingSigmaSeconds = 20.0;
  int controlEvery = 0;  // control every n-th station along both axes, the four corners always
  bool diagonals = true;  // one diagonal in every cell besides the grid's lines
  std::uint64_t seed = 1;
};

struct TruePoint {
  std::string id;
  double x = 0, y = 0;  // US survey feet
};

struct NetworkJob {
  std::vector<std::string> def, sid, raw, lsa;
  std::vector<TruePoint> truth;  // every station, control first in .LSA order, then the rest
  int records = 0;
};

// Identifiers are six digits from 100000 in row order; the job is in US survey feet and its one
// survey "GEN NET" measures in chains with grid bearings.
NetworkJob MakeSurveyNetwork(const NetworkShape& shape);
// Writes <folder>/<name>.def, .sid, .raw and .LSA; false when a file cannot be written.
bool WriteNetworkJob(const NetworkJob& job, const std::string& folder, const std::string& name);

}  // namespace tessel::jobgen
