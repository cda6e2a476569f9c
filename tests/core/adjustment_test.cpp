// The built-in least squares adjustment: the record data read as the model states, a small
// network against an independent dense computation, generated networks of known truth with a
// planted blunder, the defects it must name, and accepting its coordinates into .COR.

#include <gtest/gtest.h>

#include <Eigen/Dense>
#include <Eigen/OrderingMethods>
#include <Eigen/SparseCholesky>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <numbers>
#include <sstream>

#include "adjustment/adjustment_report.h"
#include "adjustment/chi_square.h"
#include "adjustment/selected_inverse.h"
#include "datasets/coordinate_files.h"
#include "jobgen/job_files.h"
#include "jobgen/survey_network.h"
#include "test_support.h"

namespace tessel::adjustment {
namespace {

namespace fs = std::filesystem;
using test::ReadBytes;
using test::Row;
using test::Text;

constexpr double kPi = std::numbers::pi;
constexpr double kSec = kPi / 648000.0;

Record MakeRecord(int number, std::string from, std::string to, double distance, const jobgen::Bearing& b,
                  std::string survey) {
  return {number, std::move(from), std::move(to), std::move(survey), distance, b.quadrant, b.Packed()};
}

TEST(AdjustmentInput, ReadsTheFieldsAndDirectivesByTheirColumns) {
  EXPECT_DOUBLE_EQ(PackedBearingDegrees(453015.5), 45 + 30 / 60.0 + 15.5 / 3600);
  EXPECT_DOUBLE_EQ(PackedBearingDegrees(439.0), 4 / 60.0 + 39 / 3600.0);
  EXPECT_DOUBLE_EQ(DdMmSsDegrees("-0.1115"), -(11 / 60.0 + 15 / 3600.0));
  EXPECT_DOUBLE_EQ(DdMmSsDegrees("1.3"), 1.5);

  // DC's second value is read one column after the writer puts it, BC's one column before: a
  // value that fills its field loses a digit, as the survey editor reads it.
  const std::vector<Survey> surveys = ParseSurveys(Text({
      "C BEFORE ANY SURVEY IS LOST",
      Row({{1, "SGLO 1854"}, {20, ".050"}, {27, "200.0"}, {35, "60.0"}}),
      "C BT:MA    0.0010 <MEAN BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>",
      Row({{1, "C DC:"}, {18, "0.25"}, {22, "123456789012345"}, {40, "<DISTANCE CORRECTION CONST+PPM>"}}),
      "C DU:M     <DISTANCE UNITS ARE METERS>",
      "C BC: 123.45678  <BEARING ROTATION CORRECTION (DD.MMSS)>",
      "SRLS 1996          .015    5.0     5.0",
      "C DU:X     <AN UNKNOWN UNIT STAYS CHAINS>",
      "C BT:G  <GRID (STATE PLANE) BEARINGS>",
  }));
  ASSERT_EQ(surveys.size(), 2u);
  const Survey& glo = surveys[0];
  EXPECT_EQ(glo.id, "GLO 1854");
  EXPECT_DOUBLE_EQ(glo.errorConstant, 0.05);
  EXPECT_DOUBLE_EQ(glo.errorPpm, 200);
  EXPECT_DOUBLE_EQ(glo.bearingErrorSec, 60);
  EXPECT_EQ(glo.distanceUnit, 'M');
  EXPECT_DOUBLE_EQ(glo.correctionConstant, 0.25);
  EXPECT_DOUBLE_EQ(glo.correctionPpm, 23456789012345.0);
  EXPECT_DOUBLE_EQ(glo.rotationDeg, DdMmSsDegrees("123.4567"));
  EXPECT_EQ(glo.bearingType, 'M');
  EXPECT_TRUE(glo.toAngles);
  EXPECT_DOUBLE_EQ(glo.angleErrorSec, 10);
  EXPECT_EQ(surveys[1].distanceUnit, 'C');
  EXPECT_EQ(surveys[1].bearingType, 'G');

  // Fields 3 and 6 come from the trimmed line, the others from the line as it stands.
  const std::vector<Record> records = ParseRecords(Text({
      "HEAD", " 999999 ",
      Row({{1, "100100"}, {10, "100140"}, {17, "  39.980"}, {27, "4"}, {31, "  1800.5"}, {40, "GLO 1854"}}),
      Row({{2, "A"}, {11, "B"}, {18, "   1.000"}, {28, "1"}, {32, "   100.0"}, {41, "RLS 1996"}}),
      "999998", Row({{1, "AFTER"}, {10, "END"}}),
  }));
  // Number, ends, distance, quadrant, bearing, survey; column 27 holds a blank on the shifted line.
  std::vector<std::string> shown;
  for (const Record& r : records) {
    std::ostringstream out;
    out << r.number << '|' << r.from << '|' << r.to << '|' << r.distance << '|' << r.quadrant << '|' << r.bearing << '|'
        << r.survey;
    shown.push_back(out.str());
  }
  EXPECT_EQ(shown, (std::vector<std::string>{"1|100100|100140|39.98|4|1800.5|GLO 1854", "2|A|B|1|0|100|RLS 1996"}));

  EXPECT_EQ(ParseUnitCode("T\r\nZ\r\nD\r\n 1 \r\n"), JobUnits::Meters);
  EXPECT_EQ(ParseUnitCode("T\nZ\nD\n2\n"), JobUnits::UsSurveyFeet);
  EXPECT_FALSE(ParseUnitCode("T\nZ\nD\n3\n"));
  EXPECT_FALSE(ParseUnitCode("T\nZ\n"));
  const std::vector<Station> control = ParseControl(Text({
      Row({{2, "KQ1234"}, {20, "2116379.0440"}, {37, "493445.7990"}, {80, "0"}}),
      Row({{2, "100700"}, {20, "2098645.0420"}, {37, "507971.1010"}, {80, "1"}}),
      Row({{2, "LINES"}, {80, "0"}}),
  }));
  ASSERT_EQ(control.size(), 2u);
  EXPECT_EQ(control[1].id, "100700");
  EXPECT_DOUBLE_EQ(control[1].y, 507971.101);
}

TEST(SelectedInverse, EqualsTheDenseInverseOnEveryPairTheNormalMatrixHolds) {
  // A normal matrix shaped as a network's: stations on a grid, two unknowns each, coupled with
  // their neighbours, plus a few long lines across; random values, diagonally dominant.
  constexpr int kSide = 9, kN = 2 * kSide * kSide;
  jobgen::Random random(3);
  std::vector<Eigen::Triplet<double>> entries;
  const auto couple = [&](int a, int b) {
    for (int i = 0; i < 2; ++i) {
      for (int k = 0; k < 2; ++k) {
        const double v = random.Uniform(-1, 1);
        entries.emplace_back(2 * a + i, 2 * b + k, v);
        entries.emplace_back(2 * b + k, 2 * a + i, v);
      }
    }
  };
  for (int s = 0; s < kSide * kSide; ++s) {
    if (s % kSide + 1 < kSide) couple(s, s + 1);
    if (s + kSide < kSide * kSide) couple(s, s + kSide);
    if (s % 17 == 0) couple(s, (s * 7 + 5) % (kSide * kSide) == s ? (s + 1) % (kSide * kSide) : (s * 7 + 5) % (kSide * kSide));
  }
  for (int i = 0; i < kN; ++i) entries.emplace_back(i, i, 40.0 + random.Uniform());
  Eigen::SparseMatrix<double> normal(kN, kN);
  normal.setFromTriplets(entries.begin(), entries.end());
  Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>, Eigen::Lower, Eigen::AMDOrdering<int>> factor(normal);
  ASSERT_EQ(factor.info(), Eigen::Success);
  const SelectedInverse q(factor.matrixL().nestedExpression(), factor.vectorD(), factor.permutationP().indices());
  const Eigen::MatrixXd dense = Eigen::MatrixXd(normal).inverse();
  int pairs = 0;
  for (int k = 0; k < normal.outerSize(); ++k) {
    for (Eigen::SparseMatrix<double>::InnerIterator it(normal, k); it; ++it, ++pairs) {
      ASSERT_NEAR(q(static_cast<int>(it.row()), k), dense(it.row(), k), 1e-12) << it.row() << "," << k;
    }
  }
  EXPECT_GT(pairs, 8 * kN);
}

// A network of fixed A and B, four stations between them, a side shot to P5 and a survey whose
// bearings became angles; the last two records are skipped and disconnected.
AdjustmentInput SmallNetwork(std::map<std::string, std::pair<double, double>>& truth) {
  truth = {{"A", {1000, 1000}}, {"B", {3000, 1100}}, {"P1", {1500, 2500}}, {"P2", {2600, 2400}},
           {"P3", {2000, 1800}}, {"P4", {1200, 1700}}, {"P5", {2300, 1500}}, {"Q1", {0, 0}}, {"Q2", {50, 50}}};
  AdjustmentInput in;
  in.units = JobUnits::UsSurveyFeet;
  Survey grid{"S1", 0.002, 0, 10, 'C', 0, 0, 0, 'G', false, 0};
  Survey angles{"S2", 0.03, 10, 5, 'F', 0.1, 100, 0, 'L', true, 3};
  Survey rotated{"S3", 0.03, 0, 8, 'F', 0, 0, DdMmSsDegrees("0.0125"), 'G', false, 0};
  in.surveys = {grid, angles, rotated};
  in.control = {{"A", 1000, 1000}, {"B", 3000, 1100}};
  // Small fixed errors on every record, so that each residual has something to show.
  const std::vector<std::tuple<std::string, std::string, std::string, double, double>> lines = {
      {"A", "P4", "S1", 0.02, 3}, {"P4", "P1", "S1", -0.03, -4}, {"P1", "P2", "S2", 0.04, 2},
      {"P2", "B", "S1", 0.01, -6}, {"A", "P3", "S2", -0.05, 5}, {"P3", "P2", "S3", 0.02, 4},
      {"P3", "B", "S1", -0.01, 2}, {"P4", "P3", "S2", 0.03, -3}, {"P1", "P3", "S3", -0.02, 7},
      {"P3", "P5", "S1", 0.0, 0}, {"Q1", "Q2", "S1", 0.0, 0}};
  int number = 0;
  for (const auto& [from, to, survey, error, turn] : lines) {
    const auto [x1, y1] = truth[from];
    const auto [x2, y2] = truth[to];
    // S3's bearings are turned back by its rotation, 1 minute 25 seconds.
    const double az = std::atan2(x2 - x1, y2 - y1) + (turn - (survey == "S3" ? 85 : 0)) * kSec;
    const double length = std::hypot(x2 - x1, y2 - y1) + error;
    const jobgen::Bearing b = jobgen::BearingOf(std::sin(az), std::cos(az));
    double distance = length / 66.0;  // chains
    if (survey != "S1") distance = length;  // S2 with DC read back below, S3 feet
    if (survey == "S2") distance = (length - 0.1) / (1 + 100e-6);
    in.records.push_back(MakeRecord(++number, from, to, distance, b, survey));
  }
  in.records.push_back(MakeRecord(++number, "X", "Y", 1, jobgen::Bearing{}, "NOT IN SID"));
  in.records.push_back(MakeRecord(++number, "X", "X", 1, jobgen::Bearing{}, "S1"));
  Record badQuadrant = MakeRecord(++number, "X", "Y", 1, jobgen::Bearing{}, "S1");
  badQuadrant.quadrant = 0;
  in.records.push_back(badQuadrant);
  return in;
}

// The same model computed without the library: dense, numerical derivatives, dense inverse.
struct DenseResult {
  Eigen::VectorXd unknowns;
  Eigen::MatrixXd q;
  Eigen::VectorXd residual, sigma, redundancyVariance;
  double vtpv = 0;
};

DenseResult DenseAdjustment(const AdjustmentInput& in, const std::vector<std::string>& order,
                            const std::map<std::string, std::pair<double, double>>& start) {
  std::map<std::string, int> at;
  for (std::size_t i = 0; i < order.size(); ++i) at[order[i]] = static_cast<int>(2 * i);
  const int orientation = static_cast<int>(2 * order.size());
  struct Obs {
    std::string from, to;
    bool distance, angles;
    double value, sigma;
  };
  std::vector<Obs> obs;
  for (const Record& r : in.records) {
    if (r.survey == "S1" && r.from != "Q1" && r.from != "X") {
      obs.push_back({r.from, r.to, true, false, r.distance * 66.0, 0.002 * 66.0});
      obs.push_back({r.from, r.to, false, false, jobgen::Bearing{r.quadrant, int(r.bearing / 10000), int(r.bearing / 100) % 100, int(std::fmod(r.bearing, 100))}.Azimuth(), 10 * kSec});
    } else if (r.survey == "S2") {
      obs.push_back({r.from, r.to, true, false, r.distance + 0.1 + r.distance * 100e-6, 0.03 + 10 * r.distance * 1e-6});
      obs.push_back({r.from, r.to, false, true, jobgen::Bearing{r.quadrant, int(r.bearing / 10000), int(r.bearing / 100) % 100, int(std::fmod(r.bearing, 100))}.Azimuth(), 3 * kSec});
    } else if (r.survey == "S3") {
      obs.push_back({r.from, r.to, true, false, r.distance, 0.03});
      obs.push_back({r.from, r.to, false, false, jobgen::Bearing{r.quadrant, int(r.bearing / 10000), int(r.bearing / 100) % 100, int(std::fmod(r.bearing, 100))}.Azimuth() + (1 / 60.0 + 25 / 3600.0) * kPi / 180, 8 * kSec});
    }
  }
  const int n = orientation + 1, m = static_cast<int>(obs.size());
  const auto coordinate = [&](const Eigen::VectorXd& u, const std::string& id, int axis) {
    if (id == "A") return axis == 0 ? 1000.0 : 1000.0;
    if (id == "B") return axis == 0 ? 3000.0 : 1100.0;
    return u[at.at(id) + axis];
  };
  const auto wrap = [](double a) { return std::remainder(a, 2 * kPi); };
  const auto misclosures = [&](const Eigen::VectorXd& u) {
    Eigen::VectorXd f(m);
    for (int i = 0; i < m; ++i) {
      const Obs& o = obs[static_cast<std::size_t>(i)];
      const double dx = coordinate(u, o.to, 0) - coordinate(u, o.from, 0), dy = coordinate(u, o.to, 1) - coordinate(u, o.from, 1);
      f[i] = o.distance ? std::hypot(dx, dy) - o.value : wrap(std::atan2(dx, dy) - (o.angles ? u[orientation] : 0) - o.value);
    }
    return f;
  };
  DenseResult r;
  r.unknowns = Eigen::VectorXd::Zero(n);
  for (const auto& id : order) r.unknowns[at[id]] = start.at(id).first, r.unknowns[at[id] + 1] = start.at(id).second;
  Eigen::VectorXd sigma(m);
  for (int i = 0; i < m; ++i) sigma[i] = obs[static_cast<std::size_t>(i)].sigma;
  const Eigen::MatrixXd p = sigma.cwiseInverse().cwiseAbs2().asDiagonal();
  Eigen::MatrixXd a(m, n);
  for (int iteration = 0; iteration < 10; ++iteration) {
    for (int j = 0; j < n; ++j) {
      Eigen::VectorXd plus = r.unknowns, minus = r.unknowns;
      const double h = j == orientation ? 1e-7 : 1e-4;
      plus[j] += h, minus[j] -= h;
      a.col(j) = (misclosures(plus) - misclosures(minus)) / (2 * h);
    }
    const Eigen::MatrixXd normal = a.transpose() * p * a;
    r.unknowns -= normal.ldlt().solve(a.transpose() * p * misclosures(r.unknowns));
    r.q = normal.inverse();
  }
  r.residual = misclosures(r.unknowns);
  r.sigma = sigma;
  r.vtpv = r.residual.transpose() * p * r.residual;
  r.redundancyVariance = (sigma.cwiseAbs2() - (a * r.q * a.transpose()).diagonal());
  return r;
}

TEST(Adjustment, AgreesWithAnIndependentDenseComputation) {
  std::map<std::string, std::pair<double, double>> truth;
  const AdjustmentInput input = SmallNetwork(truth);
  std::string error;
  const std::optional<Network> net = BuildNetwork(input, {}, error);
  ASSERT_TRUE(net) << error;
  EXPECT_EQ(net->skipped.unknownSurvey, 1);
  EXPECT_EQ(net->skipped.emptyOrEqualIds, 1);
  EXPECT_EQ(net->skipped.badQuadrant, 1);
  EXPECT_EQ(net->disconnected, (std::vector<std::string>{"Q1", "Q2"}));
  EXPECT_EQ(net->orientations, std::vector<std::string>{"S2"});
  EXPECT_EQ(net->nonGridSurveys, std::vector<std::string>{"S2"});

  const Outcome outcome = Adjust(*net);
  ASSERT_TRUE(outcome.adjustment) << outcome.error;
  const Adjustment& adj = *outcome.adjustment;
  std::vector<std::string> order;
  for (const StationResult& s : adj.stations) order.push_back(s.id);
  EXPECT_EQ(order, (std::vector<std::string>{"P4", "P1", "P2", "P3", "P5"}));  // first met, from before to

  const DenseResult dense = DenseAdjustment(input, order, truth);
  EXPECT_TRUE(adj.converged);
  EXPECT_EQ(adj.dof, 20 - 11);
  EXPECT_NEAR(adj.vtpv, dense.vtpv, 1e-6 * dense.vtpv);
  ASSERT_TRUE(adj.sigma0);
  EXPECT_NEAR(*adj.sigma0, std::sqrt(dense.vtpv / 9), 1e-6);
  for (std::size_t i = 0; i < order.size(); ++i) {
    const StationResult& s = adj.stations[i];
    const int u = static_cast<int>(2 * i);
    EXPECT_NEAR(s.x, dense.unknowns[u], 1e-5) << s.id;
    EXPECT_NEAR(s.y, dense.unknowns[u + 1], 1e-5) << s.id;
    const double qxx = dense.q(u, u), qyy = dense.q(u + 1, u + 1), qxy = dense.q(u, u + 1);
    EXPECT_NEAR(s.sx, std::sqrt(qxx), 1e-6 * std::sqrt(qxx)) << s.id;
    EXPECT_NEAR(s.sy, std::sqrt(qyy), 1e-6 * std::sqrt(qyy)) << s.id;
    Eigen::SelfAdjointEigenSolver<Eigen::Matrix2d> axes(Eigen::Matrix2d{{qxx, qxy}, {qxy, qyy}});
    EXPECT_NEAR(s.a, std::sqrt(axes.eigenvalues()[1]), 1e-6 * s.a) << s.id;
    EXPECT_NEAR(s.b, std::sqrt(axes.eigenvalues()[0]), 1e-6 * s.a) << s.id;
    const Eigen::Vector2d major = axes.eigenvectors().col(1);
    const double theta = std::fmod(std::atan2(major.x(), major.y()) * 180 / kPi + 360, 180.0);
    EXPECT_NEAR(std::remainder(s.thetaDeg - theta, 180.0), 0, 1e-4) << s.id;
  }
  EXPECT_NEAR(adj.orientations[0].valueSec, dense.unknowns[10] / kSec, 1e-3);
  EXPECT_NEAR(adj.orientations[0].sigmaSec, std::sqrt(dense.q(10, 10)) / kSec, 1e-4);

  // Residuals in record order, a record's distance first, azimuth residuals in seconds; the side
  // shot to P5 has no redundancy.
  ASSERT_EQ(adj.observations.size(), 20u);
  for (std::size_t i = 0; i < 20; ++i) {
    const ObservationResult& r = adj.observations[i];
    const bool azimuth = r.observation.kind == ObservationKind::Azimuth;
    EXPECT_EQ(azimuth, i % 2 == 1);
    EXPECT_EQ(r.observation.record, static_cast<int>(i / 2 + 1));
    EXPECT_NEAR(r.residual, dense.residual[static_cast<Eigen::Index>(i)] / (azimuth ? kSec : 1.0), 1e-5) << i;
    const double variance = dense.redundancyVariance[static_cast<Eigen::Index>(i)];
    if (r.observation.to == "P5") {
      EXPECT_FALSE(r.stdResidual) << i;
      EXPECT_FALSE(r.flagged);
    } else {
      ASSERT_TRUE(r.stdResidual) << i;
      EXPECT_NEAR(*r.stdResidual, dense.residual[static_cast<Eigen::Index>(i)] / std::sqrt(variance), 1e-4) << i;
    }
  }
  EXPECT_EQ(adj.uncontrolled, (std::vector<int>{18, 19}));
  EXPECT_NEAR(adj.chi2Lower, 2.7003895, 1e-6);  // chi-square quantiles of 9 degrees of freedom
  EXPECT_NEAR(adj.chi2Upper, 19.0227678, 1e-6);
  EXPECT_NEAR(ChiSquareQuantile(0.025, 1), 0.000982069, 1e-8);
  EXPECT_NEAR(ChiSquareQuantile(0.975, 100), 129.5612, 1e-3);
}

TEST(Adjustment, ControlObservedAddsTheControlStationsAsUnknownsAndTheirCoordinatesLast) {
  std::map<std::string, std::pair<double, double>> truth;
  AdjustmentInput input = SmallNetwork(truth);
  input.control.insert(input.control.begin(), Station{"P1", 1500.5, 2499.5});
  std::string error;
  const std::optional<Network> net = BuildNetwork(input, Options{0.05}, error);
  ASSERT_TRUE(net) << error;
  const Outcome outcome = Adjust(*net);
  ASSERT_TRUE(outcome.adjustment) << outcome.error;
  std::vector<std::string> order;
  for (const StationResult& s : outcome.adjustment->stations) order.push_back(s.id);
  EXPECT_EQ(order, (std::vector<std::string>{"A", "P4", "P1", "P2", "B", "P3", "P5"}));
  const std::vector<ObservationResult>& obs = outcome.adjustment->observations;
  ASSERT_EQ(obs.size(), 26u);
  const std::vector<std::pair<std::string, ObservationKind>> control = {
      {"P1", ObservationKind::ControlX}, {"P1", ObservationKind::ControlY}, {"A", ObservationKind::ControlX},
      {"A", ObservationKind::ControlY}, {"B", ObservationKind::ControlX}, {"B", ObservationKind::ControlY}};
  for (std::size_t k = 0; k < control.size(); ++k) {
    EXPECT_EQ(obs[20 + k].observation.from, control[k].first);
    EXPECT_EQ(obs[20 + k].observation.kind, control[k].second);
    EXPECT_EQ(obs[20 + k].observation.record, 0);
  }
  // P1 is held half a foot east of its true place with a finite weight: the records pull it
  // part of the way back, and its control residual says how far.
  const double x = outcome.adjustment->stations[2].x;
  EXPECT_GT(x, 1500.0);
  EXPECT_LT(x, 1500.5);
  EXPECT_NEAR(obs[20].residual, x - 1500.5, 1e-9);

  input.control = {{"Q9", 0, 0}};
  EXPECT_FALSE(BuildNetwork(input, {}, error));
  EXPECT_EQ(error.rfind("no control station is reached", 0), 0u) << error;
}

TEST(Adjustment, NamesWhatTheNetworkCannotFix) {
  std::map<std::string, std::pair<double, double>> truth;
  const AdjustmentInput base = SmallNetwork(truth);
  const auto outcomeWith = [&](const std::vector<Record>& extra, std::vector<Survey> surveys = {}) {
    AdjustmentInput in = base;
    in.records.insert(in.records.end(), extra.begin(), extra.end());
    in.surveys.insert(in.surveys.end(), surveys.begin(), surveys.end());
    std::string error;
    const std::optional<Network> net = BuildNetwork(in, {}, error);
    return net ? Adjust(*net) : Outcome{std::nullopt, error};
  };
  // A station on one distance only, its bearing not weighed.
  const Survey noBearings{"D", 0.01, 0, 0, 'F', 0, 0, 0, 'G', false, 0};
  Outcome o = outcomeWith({MakeRecord(30, "P2", "R1", 500, jobgen::BearingOf(1, 1), "D")}, {noBearings});
  EXPECT_FALSE(o.adjustment);
  EXPECT_NE(o.error.find("cannot fix station R1"), std::string::npos) << o.error;
  // A survey of angles with one line to a new station: its orientation and the station share
  // two observations.
  const Survey angles{"AN", 0.01, 0, 5, 'F', 0, 0, 0, 'G', true, 5};
  o = outcomeWith({MakeRecord(30, "P2", "R2", 500, jobgen::BearingOf(1, 1), "AN")}, {angles});
  EXPECT_FALSE(o.adjustment);
  EXPECT_TRUE(o.error.find("station R2") != std::string::npos || o.error.find("survey AN") != std::string::npos) << o.error;
  // A station reached only by a bearing cannot even be placed.
  const Survey bearingsOnly{"B", 0, 0, 5, 'F', 0, 0, 0, 'G', false, 0};
  o = outcomeWith({MakeRecord(30, "P2", "R3", 0, jobgen::BearingOf(1, 1), "B")}, {bearingsOnly});
  EXPECT_FALSE(o.adjustment);
  EXPECT_NE(o.error.find("R3"), std::string::npos) << o.error;
  // Two control stations at one place, joined by a record: its line has no direction.
  AdjustmentInput twins = base;
  twins.control.push_back({"B2", 3000, 1100});
  twins.records.push_back(MakeRecord(30, "B", "B2", 1, jobgen::BearingOf(1, 1), "S1"));
  std::string error;
  const std::optional<Network> net = BuildNetwork(twins, {}, error);
  ASSERT_TRUE(net) << error;
  o = Adjust(*net);
  EXPECT_FALSE(o.adjustment);
  EXPECT_EQ(o.error, "stations B and B2 of record 30 lie at one place, so their line has no direction");
}

class GeneratedNetwork : public test::JobFixture {
 protected:
  std::string Base() const { return (jobPath / "NET").string(); }
};

TEST_F(GeneratedNetwork, AdjustsWithinTheNoiseAndFlagsAPlantedBlunderFirst) {
  jobgen::NetworkShape shape;
  shape.columns = 10, shape.rows = 9, shape.controlEvery = 3, shape.seed = 7;
  jobgen::NetworkJob job = jobgen::MakeSurveyNetwork(shape);
  ASSERT_TRUE(jobgen::WriteNetworkJob(job, jobPath.string(), "NET"));
  Outcome clean = AdjustJob(Base(), {});
  ASSERT_TRUE(clean.adjustment) << clean.error;
  std::map<std::string, std::pair<double, double>> truth;
  for (const auto& p : job.truth) truth[p.id] = {p.x, p.y};
  for (const StationResult& s : clean.adjustment->stations) {
    EXPECT_LT(std::hypot(s.x - truth[s.id].first, s.y - truth[s.id].second), 5 * s.a) << s.id;
  }
  EXPECT_TRUE(clean.adjustment->blunders.empty());
  EXPECT_TRUE(*clean.adjustment->chi2Pass) << clean.adjustment->vtpv;

  // One chain added to the distance of record 40.
  std::string& line = job.raw[1 + 40];
  const double chains = std::stod(line.substr(16, 8)) + 1.0;
  line.replace(16, 8, jobgen::PadLeft(jobgen::Picture(chains, 3, false), 8));
  ASSERT_TRUE(jobgen::WriteNetworkJob(job, jobPath.string(), "NET"));
  const Outcome blunder = AdjustJob(Base(), {});
  ASSERT_TRUE(blunder.adjustment) << blunder.error;
  const Adjustment& a = *blunder.adjustment;
  ASSERT_FALSE(a.blunders.empty());
  const Observation& first = a.observations[static_cast<std::size_t>(a.blunders[0])].observation;
  EXPECT_EQ(first.record, 40);
  EXPECT_EQ(first.kind, ObservationKind::Distance);
  EXPECT_FALSE(*a.chi2Pass);

  // The report lays it out and names it first among the blunders.
  const std::string report = ReportText(a, Base(), {});
  const std::size_t flagged = report.find("FLAGGED OBSERVATIONS");
  ASSERT_NE(flagged, std::string::npos);
  EXPECT_NE(report.find("\r\n    40  distance", flagged), std::string::npos) << report.substr(flagged, 400);
  EXPECT_NE(report.find("Chi-square test (95 %)       FAILED"), std::string::npos);
}

TEST_F(GeneratedNetwork, AcceptReplacesTheAdjustedLinesOfCorAndKeepsTheRest) {
  jobgen::NetworkShape shape;
  shape.columns = 4, shape.rows = 3;
  const jobgen::NetworkJob job = jobgen::MakeSurveyNetwork(shape);
  ASSERT_TRUE(jobgen::WriteNetworkJob(job, jobPath.string(), "NET"));
  // .COR holds an unadjusted point, one adjusted station (twice), and odd spacing that must stay.
  const std::vector<std::string> before = {CorLine("999001", 1.5, 2.5), CorLine("100001", 1, 1), CorLine("100001", 7, 8),
                                           "   free text kept"};
  test::WriteLines(jobPath / "NET.COR", before);
  const Outcome outcome = AdjustJob(Base(), {});
  ASSERT_TRUE(outcome.adjustment) << outcome.error;
  const Adjustment& a = *outcome.adjustment;
  EXPECT_EQ(AcceptAdjustment(a, Base()), static_cast<int>(a.stations.size()));
  EXPECT_EQ(ReadBytes(jobPath / "NET.tlc"), Text(before));
  std::vector<std::string> expected = before;
  const StationResult& s1 = *std::find_if(a.stations.begin(), a.stations.end(), [](auto& s) { return s.id == "100001"; });
  expected[1] = CorLine("100001", s1.x, s1.y);
  expected[2] = expected[1];
  for (const StationResult& s : a.stations) {
    if (s.id != "100001") expected.push_back(CorLine(s.id, s.x, s.y));
  }
  EXPECT_EQ(ReadBytes(jobPath / "NET.COR"), Text(expected));

  // A job without .COR gets one and no backup; a job that cannot be read says which file.
  fs::remove(jobPath / "NET.COR");
  fs::remove(jobPath / "NET.tlc");
  AcceptAdjustment(a, Base());
  EXPECT_FALSE(fs::exists(jobPath / "NET.tlc"));
  std::vector<std::string> fresh;
  for (const StationResult& s : a.stations) fresh.push_back(CorLine(s.id, s.x, s.y));
  EXPECT_EQ(ReadBytes(jobPath / "NET.COR"), Text(fresh));
  fs::remove(jobPath / "NET.sid");
  const Outcome missing = AdjustJob(Base(), {});
  EXPECT_EQ(missing.error, "cannot read " + Base() + ".sid");
}

}  // namespace
}  // namespace tessel::adjustment
