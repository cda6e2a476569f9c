#include "adjustment/network.h"

#include <cmath>
#include <numbers>
#include <unordered_map>

namespace tessel::adjustment {

namespace {

constexpr double kSecond = std::numbers::pi / (180.0 * 3600.0);
constexpr double kUsFootMeters = 1200.0 / 3937.0;

// What a record gives once it passed the checks: its model values, and which of them are
// observations.
struct RecordModel {
  const Record* record = nullptr;
  const Survey* survey = nullptr;
  int surveyIndex = -1;
  double distance = 0, distanceSigma = 0;  // job units
  double azimuth = 0, azimuthSigma = 0;    // radians
  bool useDistance = false, useAzimuth = false;
  int from = -1, to = -1;  // station indexes in first-met order
};

class UnionFind {
 public:
  int Add() {
    parent_.push_back(static_cast<int>(parent_.size()));
    return parent_.back();
  }
  int Root(int i) {
    while (parent_[static_cast<std::size_t>(i)] != i) {
      auto& p = parent_[static_cast<std::size_t>(i)];
      p = parent_[static_cast<std::size_t>(p)];
      i = p;
    }
    return i;
  }
  void Join(int a, int b) { parent_[static_cast<std::size_t>(Root(a))] = Root(b); }

 private:
  std::vector<int> parent_;
};

template <typename T>
T& At(std::vector<T>& v, int i) {
  return v[static_cast<std::size_t>(i)];
}
template <typename T>
const T& At(const std::vector<T>& v, int i) {
  return v[static_cast<std::size_t>(i)];
}

RecordModel ModelOf(const Record& r, const Survey& s, JobUnits units) {
  RecordModel m;
  m.record = &r;
  m.survey = &s;
  const double factor = UnitFactor(s.distanceUnit, units);
  m.distance = (r.distance + s.correctionConstant + r.distance * s.correctionPpm * 1e-6) * factor;
  m.distanceSigma = (s.errorConstant + s.errorPpm * r.distance * 1e-6) * factor;
  m.useDistance = r.distance > 0 && s.errorConstant + s.errorPpm > 0 && m.distanceSigma > 0;
  const double b = PackedBearingDegrees(r.bearing);
  double azimuth = b;
  if (r.quadrant == 2) azimuth = 180.0 - b;
  if (r.quadrant == 3) azimuth = 180.0 + b;
  if (r.quadrant == 4) azimuth = 360.0 - b;
  m.azimuth = WrapAngle((azimuth + s.rotationDeg) * std::numbers::pi / 180.0);
  m.azimuthSigma = (s.toAngles ? s.angleErrorSec : s.bearingErrorSec) * kSecond;
  m.useAzimuth = s.bearingErrorSec > 0 && m.azimuthSigma > 0;
  return m;
}

// Places the stations that have no coordinates from those that have, along the records: a
// record with a distance places its unknown end from its known one, in file order, round after
// round; a station reached only by bearings is placed where two of them cross.
void Place(std::vector<RecordModel>& models, std::vector<char>& known, std::vector<double>& x, std::vector<double>& y) {
  for (bool progress = true; progress;) {
    progress = false;
    for (const RecordModel& m : models) {
      if (m.record->distance <= 0) continue;
      const double dx = m.distance * std::sin(m.azimuth), dy = m.distance * std::cos(m.azimuth);
      if (At(known, m.from) && !At(known, m.to)) {
        At(x, m.to) = At(x, m.from) + dx, At(y, m.to) = At(y, m.from) + dy;
        At(known, m.to) = 1, progress = true;
      } else if (At(known, m.to) && !At(known, m.from)) {
        At(x, m.from) = At(x, m.to) - dx, At(y, m.from) = At(y, m.to) - dy;
        At(known, m.from) = 1, progress = true;
      }
    }
    if (progress) continue;
    // Rays from known stations towards unknown ones: origin and direction.
    struct Ray {
      double x, y, dx, dy;
    };
    std::unordered_map<int, std::vector<Ray>> rays;
    for (const RecordModel& m : models) {
      if (!m.useAzimuth) continue;
      const double sx = std::sin(m.azimuth), sy = std::cos(m.azimuth);
      if (At(known, m.from) && !At(known, m.to)) rays[m.to].push_back({At(x, m.from), At(y, m.from), sx, sy});
      if (At(known, m.to) && !At(known, m.from)) rays[m.from].push_back({At(x, m.to), At(y, m.to), -sx, -sy});
    }
    for (auto& [station, list] : rays) {
      for (std::size_t i = 0; i < list.size() && !At(known, station); ++i) {
        for (std::size_t j = i + 1; j < list.size(); ++j) {
          const Ray &a = list[i], &b = list[j];
          const double det = a.dx * (-b.dy) - a.dy * (-b.dx);
          if (std::fabs(det) < 1e-6) continue;
          const double t = ((b.x - a.x) * (-b.dy) - (b.y - a.y) * (-b.dx)) / det;
          At(x, station) = a.x + t * a.dx, At(y, station) = a.y + t * a.dy;
          At(known, station) = 1, progress = true;
          break;
        }
      }
    }
  }
}

}  // namespace

const char* KindName(ObservationKind kind) {
  switch (kind) {
    case ObservationKind::Distance: return "distance";
    case ObservationKind::Azimuth: return "azimuth";
    case ObservationKind::ControlX: return "control_x";
    case ObservationKind::ControlY: return "control_y";
  }
  return "";
}

double UnitFactor(char distanceUnit, JobUnits units) {
  double meters = 66.0 * kUsFootMeters;  // chains
  if (distanceUnit == 'F') meters = kUsFootMeters;
  if (distanceUnit == 'I') meters = 0.3048;
  if (distanceUnit == 'M') meters = 1.0;
  return units == JobUnits::Meters ? meters : meters / kUsFootMeters;
}

double WrapAngle(double radians) {
  double a = std::fmod(radians, 2.0 * std::numbers::pi);
  if (a > std::numbers::pi) a -= 2.0 * std::numbers::pi;
  if (a <= -std::numbers::pi) a += 2.0 * std::numbers::pi;
  return a;
}

std::optional<Network> BuildNetwork(const AdjustmentInput& input, const Options& options, std::string& error) {
  Network net;
  net.units = input.units;
  net.recordCount = static_cast<int>(input.records.size());

  // Lookups by identifier: the last of equal identifiers wins.
  std::unordered_map<std::string, int> surveyIndex, controlIndex, corIndex;
  for (std::size_t i = 0; i < input.surveys.size(); ++i) surveyIndex[input.surveys[i].id] = static_cast<int>(i);
  for (std::size_t i = 0; i < input.control.size(); ++i) controlIndex[input.control[i].id] = static_cast<int>(i);
  for (std::size_t i = 0; i < input.coordinates.size(); ++i) corIndex[input.coordinates[i].id] = static_cast<int>(i);

  // The records that give observations, and the stations they reach in first-met order.
  std::vector<RecordModel> models;
  std::vector<std::string> ids;
  std::unordered_map<std::string, int> stationOf;
  UnionFind components;
  const auto station = [&](const std::string& id) {
    auto [it, added] = stationOf.try_emplace(id, static_cast<int>(ids.size()));
    if (added) {
      ids.push_back(id);
      components.Add();
    }
    return it->second;
  };
  for (const Record& r : input.records) {
    const auto s = surveyIndex.find(r.survey);
    if (s == surveyIndex.end()) {
      ++net.skipped.unknownSurvey;
    } else if (r.from.empty() || r.to.empty() || r.from == r.to) {
      ++net.skipped.emptyOrEqualIds;
    } else if (r.quadrant == 0) {
      ++net.skipped.badQuadrant;
    } else {
      RecordModel m = ModelOf(r, At(input.surveys, s->second), input.units);
      m.surveyIndex = s->second;
      if (!m.useDistance && !m.useAzimuth) continue;
      m.from = station(r.from);
      m.to = station(r.to);
      components.Join(m.from, m.to);
      models.push_back(m);
    }
  }

  // Only the parts of the network that hold a control station can be adjusted.
  std::vector<char> rootHasControl(ids.size(), 0);
  bool anyControl = false;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (controlIndex.count(ids[i])) {
      At(rootHasControl, components.Root(static_cast<int>(i))) = 1;
      anyControl = true;
    }
  }
  if (!anyControl) {
    error = "no control station is reached: no record that gives an observation touches a station of the "
            ".LSA control section";
    return std::nullopt;
  }
  std::vector<char> connected(ids.size(), 0);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    connected[i] = At(rootHasControl, components.Root(static_cast<int>(i)));
    if (!connected[i]) net.disconnected.push_back(ids[i]);
  }
  std::erase_if(models, [&](const RecordModel& m) { return !At(connected, m.from); });

  // Where each station starts: control, then .COR, then placed along the records.
  std::vector<char> known(ids.size(), 0);
  std::vector<double> x(ids.size(), 0.0), y(ids.size(), 0.0);
  std::vector<char> isControl(ids.size(), 0);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (!connected[i]) continue;
    if (auto c = controlIndex.find(ids[i]); c != controlIndex.end()) {
      const Station& s = At(input.control, c->second);
      x[i] = s.x, y[i] = s.y, known[i] = 1, isControl[i] = 1;
    } else if (auto p = corIndex.find(ids[i]); p != corIndex.end()) {
      const Station& s = At(input.coordinates, p->second);
      x[i] = s.x, y[i] = s.y, known[i] = 1;
    }
  }
  Place(models, known, x, y);
  std::string unplaced;
  int unplacedCount = 0;
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (connected[i] && !known[i] && ++unplacedCount <= 10) unplaced += (unplaced.empty() ? "" : ", ") + ids[i];
  }
  if (unplacedCount > 0) {
    error = "the network cannot fix " + std::to_string(unplacedCount) + (unplacedCount == 1 ? " station" : " stations") +
            " that no distance or crossing bearings place: " + unplaced + (unplacedCount > 10 ? ", ..." : "");
    return std::nullopt;
  }

  // The unknowns: stations in first-met order (control too when it is observed), then one
  // orientation per survey whose bearings became angles.
  std::vector<int> networkIndex(ids.size(), -1);
  const bool controlFree = options.controlSigma.has_value();
  for (const RecordModel& m : models) {
    for (int s : {m.from, m.to}) {
      if (At(networkIndex, s) >= 0 || (At(isControl, s) && !controlFree)) continue;
      At(networkIndex, s) = static_cast<int>(net.stations.size());
      net.stations.push_back({At(ids, s), At(x, s), At(y, s), net.unknownCount});
      net.unknownCount += 2;
    }
  }
  for (const RecordModel& m : models) {
    for (int s : {m.from, m.to}) {
      if (At(networkIndex, s) >= 0) continue;
      At(networkIndex, s) = static_cast<int>(net.stations.size());
      net.stations.push_back({At(ids, s), At(x, s), At(y, s), -1});
    }
  }
  std::vector<int> orientationOf(input.surveys.size(), -1);
  std::vector<char> surveyUsed(input.surveys.size(), 0);
  for (const RecordModel& m : models) {
    At(surveyUsed, m.surveyIndex) = 1;
    if (m.useAzimuth && m.survey->toAngles) At(orientationOf, m.surveyIndex) = 0;
  }
  for (std::size_t s = 0; s < input.surveys.size(); ++s) {
    if (surveyUsed[s] && input.surveys[s].bearingType != 'G') net.nonGridSurveys.push_back(input.surveys[s].id);
    if (orientationOf[s] < 0) continue;
    orientationOf[s] = static_cast<int>(net.orientations.size());
    net.orientations.push_back(input.surveys[s].id);
    ++net.unknownCount;
  }

  // The observations in record order, a record's distance before its azimuth.
  std::vector<double> orientationSum(net.orientations.size(), 0.0);
  std::vector<int> orientationCount(net.orientations.size(), 0);
  for (const RecordModel& m : models) {
    Observation o;
    o.record = m.record->number;
    o.from = m.record->from, o.to = m.record->to, o.survey = m.survey->id;
    o.fromStation = At(networkIndex, m.from), o.toStation = At(networkIndex, m.to);
    if (m.useDistance) {
      o.kind = ObservationKind::Distance, o.value = m.distance, o.sigma = m.distanceSigma;
      net.observations.push_back(o);
    }
    if (m.useAzimuth) {
      o.kind = ObservationKind::Azimuth, o.value = m.azimuth, o.sigma = m.azimuthSigma;
      o.orientation = m.survey->toAngles ? At(orientationOf, m.surveyIndex) : -1;
      if (o.orientation >= 0) {
        // The orientation starts as the mean turn from these bearings to the starting places.
        const double computed = std::atan2(At(x, m.to) - At(x, m.from), At(y, m.to) - At(y, m.from));
        At(orientationSum, o.orientation) += WrapAngle(computed - m.azimuth);
        ++At(orientationCount, o.orientation);
      }
      net.observations.push_back(o);
    }
  }
  for (std::size_t k = 0; k < net.orientations.size(); ++k) {
    net.initialOrientations.push_back(orientationCount[k] > 0 ? orientationSum[k] / orientationCount[k] : 0.0);
  }
  if (controlFree) {
    for (const Station& c : input.control) {
      const auto s = stationOf.find(c.id);
      if (s == stationOf.end() || !At(connected, s->second)) continue;
      // Of equal identifiers only the last is the station's control.
      if (&At(input.control, controlIndex.at(c.id)) != &c) continue;
      for (ObservationKind kind : {ObservationKind::ControlX, ObservationKind::ControlY}) {
        Observation o;
        o.kind = kind;
        o.from = c.id;
        o.fromStation = At(networkIndex, s->second);
        o.value = kind == ObservationKind::ControlX ? c.x : c.y;
        o.sigma = *options.controlSigma;
        net.observations.push_back(o);
      }
    }
  }
  return net;
}

}  // namespace tessel::adjustment
