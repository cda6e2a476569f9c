#include "jobgen/survey_network.h"

#include <cmath>
#include <numbers>

#include "jobgen/job_files.h"

namespace tessel::jobgen {

namespace {

// A normal deviate by the Box-Muller transform, so that the noise is the same everywhere.
double Normal(Random& random) {
  const double u = 1.0 - random.Uniform(), v = random.Uniform();
  return std::sqrt(-2.0 * std::log(u)) * std::cos(2.0 * std::numbers::pi * v);
}

}  // namespace

NetworkJob MakeSurveyNetwork(const NetworkShape& shape) {
  NetworkJob job;
  Random random(shape.seed);
  const double spacing = shape.spacingChains * 66.0;
  const auto id = [&](int i, int j) { return std::to_string(100000 + j * shape.columns + i); };
  const auto isControl = [&](int i, int j) {
    const bool corner = (i == 0 || i == shape.columns - 1) && (j == 0 || j == shape.rows - 1);
    return corner || (shape.controlEvery > 0 && i % shape.controlEvery == 0 && j % shape.controlEvery == 0);
  };
  std::vector<double> x(static_cast<std::size_t>(shape.columns * shape.rows)), y(x.size());
  for (int j = 0; j < shape.rows; ++j) {
    for (int i = 0; i < shape.columns; ++i) {
      const std::size_t k = static_cast<std::size_t>(j * shape.columns + i);
      // Corners of the public land survey are never quite where the plat puts them.
      x[k] = 2000000.0 + i * spacing + random.Uniform(-30, 30);
      y[k] = 500000.0 + j * spacing + random.Uniform(-30, 30);
    }
  }
  std::vector<std::pair<int, int>> control;
  for (int j = 0; j < shape.rows; ++j) {
    for (int i = 0; i < shape.columns; ++i) {
      if (isControl(i, j)) control.emplace_back(i, j);
    }
  }
  for (std::size_t c = 0; c < control.size(); ++c) {
    const auto [i, j] = control[c];
    const std::size_t k = static_cast<std::size_t>(j * shape.columns + i);
    job.lsa.push_back(LsaControlLine(id(i, j), x[k], y[k], 0.02, 0.02, c + 1 == control.size()));
    job.truth.push_back({id(i, j), x[k], y[k]});
  }
  for (int j = 0; j < shape.rows; ++j) {
    for (int i = 0; i < shape.columns; ++i) {
      const std::size_t k = static_cast<std::size_t>(j * shape.columns + i);
      if (!isControl(i, j)) job.truth.push_back({id(i, j), x[k], y[k]});
    }
  }

  job.raw = {"GENERATED NETWORK", RawHeadEndLine()};
  const auto record = [&](int i, int j, int i2, int j2) {
    const std::size_t a = static_cast<std::size_t>(j * shape.columns + i), b = static_cast<std::size_t>(j2 * shape.columns + i2);
    const double dx = x[b] - x[a], dy = y[b] - y[a];
    const double turn = Normal(random) * shape.bearingSigmaSeconds / 3600.0 * std::numbers::pi / 180.0;
    const double chains = std::hypot(dx, dy) / 66.0 + Normal(random) * shape.distanceSigmaChains;
    const Bearing bearing = BearingOf(dx * std::cos(turn) + dy * std::sin(turn), dy * std::cos(turn) - dx * std::sin(turn));
    job.raw.push_back(RawRecordLine(id(i, j), id(i2, j2), chains, bearing, "GEN NET"));
    ++job.records;
  };
  for (int j = 0; j < shape.rows; ++j) {
    for (int i = 0; i < shape.columns; ++i) {
      if (i + 1 < shape.columns) record(i, j, i + 1, j);
      if (j + 1 < shape.rows) record(i, j, i, j + 1);
      if (shape.diagonals && i + 1 < shape.columns && j + 1 < shape.rows) record(i, j, i + 1, j + 1);
    }
  }
  job.raw.push_back(RawEndLine());

  job.sid = {SidSurveyLine("GEN NET", shape.distanceSigmaChains, 0.0, shape.bearingSigmaSeconds, "0.020", "0.020"),
             SidCommentLine("GENERATED NETWORK OF KNOWN TRUE COORDINATES"), SidDistanceUnitsLine(DistanceUnits::Chains),
             SidBearingTypeLine(BearingType::Grid)};
  ProjectProperties properties;
  properties.title = "GENERATED NETWORK";
  properties.zone = "NORTH ZONE 3301";
  properties.datum = "NAD83";
  properties.unit_code = 2;
  properties.mean_elevation = "1000.0";
  properties.scale_factor = "1.0";
  job.def = DefLines(properties);
  return job;
}

bool WriteNetworkJob(const NetworkJob& job, const std::string& folder, const std::string& name) {
  const std::string base = folder + "/" + name;
  return WriteLines(base + ".def", job.def) && WriteLines(base + ".sid", job.sid) && WriteLines(base + ".raw", job.raw) &&
         WriteLines(base + ".LSA", job.lsa);
}

}  // namespace tessel::jobgen
