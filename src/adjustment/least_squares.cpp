#include "adjustment/least_squares.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <Eigen/OrderingMethods>
#include <Eigen/SparseCholesky>

#include "adjustment/chi_square.h"
#include "adjustment/selected_inverse.h"

namespace tessel::adjustment {

namespace {

constexpr double kRadiansToSeconds = 180.0 * 3600.0 / std::numbers::pi;
// A pivot this small beside its diagonal means the unknown is not fixed by the observations.
constexpr double kPivotRatio = 1e-10;
// An observation whose residual variance is this small a part of its own has no redundancy:
// below it, what is left is the rounding of the computation.
constexpr double kNoRedundancy = 1e-9;

using SparseMatrix = Eigen::SparseMatrix<double>;
using Factor = Eigen::SimplicialLDLT<SparseMatrix, Eigen::Lower, Eigen::AMDOrdering<int>>;

// One linearized observation: its value at the current unknowns and up to five coefficients.
struct Row {
  double computed = 0;
  int count = 0;
  int column[5] = {};
  double coefficient[5] = {};
  void Add(int c, double v) {
    if (c < 0) return;
    column[count] = c, coefficient[count] = v;
    ++count;
  }
};

class Model {
 public:
  explicit Model(const Network& net)
      : net_(net), coordinates_(0), unknowns_(Eigen::VectorXd::Zero(net.unknownCount)) {
    for (const NetworkStation& s : net.stations) {
      if (s.unknown < 0) continue;
      unknowns_[s.unknown] = s.x, unknowns_[s.unknown + 1] = s.y;
      coordinates_ += 2;
    }
    for (std::size_t k = 0; k < net.orientations.size(); ++k) {
      unknowns_[coordinates_ + static_cast<int>(k)] = net.initialOrientations[k];
    }
  }

  int Coordinates() const { return coordinates_; }
  Eigen::VectorXd& Unknowns() { return unknowns_; }
  const Eigen::VectorXd& Unknowns() const { return unknowns_; }
  double X(int station) const { return Place(station, 0); }
  double Y(int station) const { return Place(station, 1); }
  int OrientationUnknown(int k) const { return k < 0 ? -1 : coordinates_ + k; }

  // The row of an observation; false when its two stations lie at one place.
  bool Linearize(const Observation& o, Row& row) const {
    row = Row{};
    if (o.kind == ObservationKind::ControlX || o.kind == ObservationKind::ControlY) {
      const int axis = o.kind == ObservationKind::ControlX ? 0 : 1;
      row.computed = Place(o.fromStation, axis);
      row.Add(Unknown(o.fromStation, axis), 1.0);
      return true;
    }
    const double dx = X(o.toStation) - X(o.fromStation), dy = Y(o.toStation) - Y(o.fromStation);
    const double r2 = dx * dx + dy * dy, r = std::sqrt(r2);
    if (!(r > 1e-9)) return false;
    const int fx = Unknown(o.fromStation, 0), fy = Unknown(o.fromStation, 1);
    const int tx = Unknown(o.toStation, 0), ty = Unknown(o.toStation, 1);
    if (o.kind == ObservationKind::Distance) {
      row.computed = r;
      row.Add(fx, -dx / r), row.Add(fy, -dy / r), row.Add(tx, dx / r), row.Add(ty, dy / r);
    } else {
      // A survey whose bearings became angles reads azimuth minus its orientation.
      const int ou = OrientationUnknown(o.orientation);
      row.computed = std::atan2(dx, dy) - (ou >= 0 ? unknowns_[ou] : 0.0);
      row.Add(fx, -dy / r2), row.Add(fy, dx / r2), row.Add(tx, dy / r2), row.Add(ty, -dx / r2);
      row.Add(ou, -1.0);
    }
    return true;
  }

  // Observed minus computed, azimuths the short way round.
  static double Misclosure(const Observation& o, double computed) {
    const double w = o.value - computed;
    return o.kind == ObservationKind::Azimuth ? WrapAngle(w) : w;
  }

  // What an unknown is, for a message: "station X" or "the orientation of survey S".
  std::string Describe(int unknown) const {
    if (unknown >= coordinates_) {
      return "the orientation of survey " + net_.orientations[static_cast<std::size_t>(unknown - coordinates_)];
    }
    for (const NetworkStation& s : net_.stations) {
      if (s.unknown == unknown - unknown % 2) return "station " + s.id;
    }
    return "unknown " + std::to_string(unknown);
  }

 private:
  int Unknown(int station, int axis) const {
    const int u = net_.stations[static_cast<std::size_t>(station)].unknown;
    return u < 0 ? -1 : u + axis;
  }
  double Place(int station, int axis) const {
    const NetworkStation& s = net_.stations[static_cast<std::size_t>(station)];
    if (s.unknown >= 0) return unknowns_[s.unknown + axis];
    return axis == 0 ? s.x : s.y;
  }

  const Network& net_;
  int coordinates_;
  Eigen::VectorXd unknowns_;
};

// The weighted design matrix and misclosures at the current unknowns, sqrt(P) A and sqrt(P) w.
struct System {
  SparseMatrix weightedA;
  Eigen::VectorXd weightedW;
  std::vector<Row> rows;
};

bool Build(const Network& net, const Model& model, System& system, std::string& error) {
  const std::size_t n = net.observations.size();
  system.rows.resize(n);
  system.weightedW.resize(static_cast<Eigen::Index>(n));
  std::vector<Eigen::Triplet<double>> entries;
  entries.reserve(n * 5);
  for (std::size_t i = 0; i < n; ++i) {
    const Observation& o = net.observations[i];
    Row& row = system.rows[i];
    if (!model.Linearize(o, row)) {
      error = "stations " + o.from + " and " + o.to + " of record " + std::to_string(o.record) +
              " lie at one place, so their line has no direction";
      return false;
    }
    for (int k = 0; k < row.count; ++k) {
      entries.emplace_back(static_cast<int>(i), row.column[k], row.coefficient[k] / o.sigma);
    }
    system.weightedW[static_cast<Eigen::Index>(i)] = Model::Misclosure(o, row.computed) / o.sigma;
  }
  system.weightedA.resize(static_cast<Eigen::Index>(n), net.unknownCount);
  system.weightedA.setFromTriplets(entries.begin(), entries.end());
  return true;
}

// Factorizes the normal matrix; false, with the unknowns it cannot fix named, when it is singular.
bool Factorize(Factor& factor, const SparseMatrix& normal, const Model& model, std::string& error) {
  factor.factorize(normal);
  const Eigen::VectorXd d = factor.vectorD();
  const Eigen::VectorXi& place = factor.permutationP().indices();
  std::vector<int> unknownAt(static_cast<std::size_t>(place.size()));
  for (Eigen::Index i = 0; i < place.size(); ++i) unknownAt[static_cast<std::size_t>(place[i])] = static_cast<int>(i);
  std::vector<std::string> names;
  int count = 0;
  for (Eigen::Index k = 0; k < d.size(); ++k) {
    const int u = unknownAt[static_cast<std::size_t>(k)];
    const double diagonal = normal.coeff(u, u);
    const bool zero = d[k] == 0;
    if (zero || !std::isfinite(d[k]) || !(d[k] > kPivotRatio * diagonal)) {
      const std::string name = model.Describe(u);
      if (std::find(names.begin(), names.end(), name) == names.end()) {
        ++count;
        if (names.size() < 10) names.push_back(name);
      }
    }
    if (zero) break;  // the factor ends at a zero pivot
  }
  if (count == 0 && factor.info() == Eigen::Success) return true;
  error = "the network cannot fix ";
  for (std::size_t i = 0; i < names.size(); ++i) error += (i == 0 ? "" : ", ") + names[i];
  if (count > static_cast<int>(names.size())) error += ", ...";
  if (names.empty()) error += "its unknowns";
  error += ": each needs more observations (one line alone fixes a station in one direction only)";
  return false;
}

double EllipseAngle(double qxx, double qyy, double qxy) {
  double theta = 0.5 * std::atan2(2.0 * qxy, qyy - qxx) * 180.0 / std::numbers::pi;
  if (theta < 0) theta += 180.0;
  return theta >= 180.0 ? theta - 180.0 : theta;
}

void Statistics(const Network& net, const Model& model, const System& system, const SelectedInverse& q,
                Adjustment& out) {
  const std::vector<Observation>& obs = net.observations;
  out.vtpv = 0;
  for (std::size_t i = 0; i < obs.size(); ++i) {
    const Observation& o = obs[i];
    const Row& row = system.rows[i];
    ObservationResult r;
    r.observation = o;
    r.adjusted = row.computed;
    const double v = -Model::Misclosure(o, row.computed);
    out.vtpv += (v / o.sigma) * (v / o.sigma);
    r.residual = o.kind == ObservationKind::Azimuth ? v * kRadiansToSeconds : v;
    double aqa = 0;
    for (int a = 0; a < row.count; ++a) {
      for (int b = 0; b < row.count; ++b) {
        aqa += row.coefficient[a] * row.coefficient[b] * q(row.column[a], row.column[b]);
      }
    }
    const double variance = o.sigma * o.sigma - aqa;
    if (variance > kNoRedundancy * o.sigma * o.sigma) {
      r.stdResidual = v / std::sqrt(variance);
      r.flagged = std::fabs(*r.stdResidual) > kBlunderLimit;
    } else {
      out.uncontrolled.push_back(static_cast<int>(i));
    }
    if (r.flagged) out.blunders.push_back(static_cast<int>(i));
    out.observations.push_back(std::move(r));
  }
  std::stable_sort(out.blunders.begin(), out.blunders.end(), [&](int a, int b) {
    return std::fabs(*out.observations[static_cast<std::size_t>(a)].stdResidual) >
           std::fabs(*out.observations[static_cast<std::size_t>(b)].stdResidual);
  });

  for (const NetworkStation& s : net.stations) {
    if (s.unknown < 0) {
      out.fixedStations.push_back(s);
      continue;
    }
    const double qxx = q(s.unknown, s.unknown), qyy = q(s.unknown + 1, s.unknown + 1), qxy = q(s.unknown, s.unknown + 1);
    const double mean = 0.5 * (qxx + qyy), radius = std::hypot(0.5 * (qxx - qyy), qxy);
    StationResult r{s.id, model.Unknowns()[s.unknown], model.Unknowns()[s.unknown + 1], std::sqrt(std::max(0.0, qxx)),
                    std::sqrt(std::max(0.0, qyy)), std::sqrt(std::max(0.0, mean + radius)),
                    std::sqrt(std::max(0.0, mean - radius)), EllipseAngle(qxx, qyy, qxy)};
    out.stations.push_back(std::move(r));
  }
  for (std::size_t k = 0; k < net.orientations.size(); ++k) {
    const int u = model.OrientationUnknown(static_cast<int>(k));
    out.orientations.push_back({net.orientations[k], WrapAngle(model.Unknowns()[u]) * kRadiansToSeconds,
                                std::sqrt(std::max(0.0, q(u, u))) * kRadiansToSeconds});
  }

  out.observationCount = static_cast<int>(obs.size());
  out.unknownCount = net.unknownCount;
  out.dof = out.observationCount - out.unknownCount;
  if (out.dof > 0) {
    out.sigma0 = std::sqrt(out.vtpv / out.dof);
    out.chi2Lower = ChiSquareQuantile(0.025, out.dof);
    out.chi2Upper = ChiSquareQuantile(0.975, out.dof);
    out.chi2Pass = out.vtpv >= out.chi2Lower && out.vtpv <= out.chi2Upper;
  }
}

bool AllFinite(const Adjustment& a) {
  for (const StationResult& s : a.stations) {
    if (!std::isfinite(s.x + s.y + s.sx + s.sy + s.a + s.b + s.thetaDeg)) return false;
  }
  for (const ObservationResult& o : a.observations) {
    if (!std::isfinite(o.residual) || (o.stdResidual && !std::isfinite(*o.stdResidual))) return false;
  }
  return std::isfinite(a.vtpv);
}

}  // namespace

Outcome Adjust(const Network& net, const Progress& progress) {
  Outcome outcome;
  Model model(net);
  Adjustment out;
  out.units = net.units;
  out.recordCount = net.recordCount;
  out.skipped = net.skipped;
  out.disconnected = net.disconnected;
  out.nonGridSurveys = net.nonGridSurveys;
  const int steps = kMaxIterations + 1;
  const auto cancelled = [&](const std::string& step, int done) {
    if (!progress || progress(step, done, steps)) return false;
    outcome.error = "the adjustment was cancelled";
    return true;
  };

  System system;
  Factor factor;
  SparseMatrix normal;
  const auto factorizeAt = [&]() {
    if (!Build(net, model, system, outcome.error)) return false;
    normal = SparseMatrix(system.weightedA.transpose() * system.weightedA);
    factor.analyzePattern(normal);
    return Factorize(factor, normal, model, outcome.error);
  };

  if (net.unknownCount == 0) {
    // Records between fixed control stations only: nothing to solve, each a check on the control.
    if (!Build(net, model, system, outcome.error)) return outcome;
    out.converged = true;
    Statistics(net, model, system, SelectedInverse({}, {}, {}), out);
    outcome.adjustment = std::move(out);
    return outcome;
  }
  for (int iteration = 1; iteration <= kMaxIterations; ++iteration) {
    if (cancelled("Iteration " + std::to_string(iteration), iteration - 1)) return outcome;
    if (!factorizeAt()) return outcome;
    const Eigen::VectorXd correction = factor.solve(Eigen::VectorXd(system.weightedA.transpose() * system.weightedW));
    if (!correction.allFinite()) {
      outcome.error = "the adjustment gave no finite corrections in iteration " + std::to_string(iteration);
      return outcome;
    }
    model.Unknowns() += correction;
    out.iterations = iteration;
    const double largest = model.Coordinates() > 0 ? correction.head(model.Coordinates()).cwiseAbs().maxCoeff() : 0.0;
    if (largest < kConvergence) {
      out.converged = true;
      break;
    }
  }

  // The statistics at the adjusted unknowns.
  if (cancelled("Standard errors", kMaxIterations)) return outcome;
  if (!factorizeAt()) return outcome;
  const SelectedInverse q(factor.matrixL().nestedExpression(), factor.vectorD(), factor.permutationP().indices());
  Statistics(net, model, system, q, out);
  if (!AllFinite(out)) {
    outcome.error = "the adjustment gave numbers that are not finite: the network is too weak to adjust";
    return outcome;
  }
  outcome.adjustment = std::move(out);
  return outcome;
}

Outcome AdjustJob(const std::string& jobBase, const Options& options, const Progress& progress) {
  Outcome outcome;
  if (progress && !progress("Reading the job", 0, kMaxIterations + 1)) {
    outcome.error = "the adjustment was cancelled";
    return outcome;
  }
  const std::optional<AdjustmentInput> input = ReadAdjustmentInput(jobBase, outcome.error);
  if (!input) return outcome;
  const std::optional<Network> net = BuildNetwork(*input, options, outcome.error);
  if (!net) return outcome;
  return Adjust(*net, progress);
}

}  // namespace tessel::adjustment
