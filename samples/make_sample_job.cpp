// Writes the demonstration job T12NR04E into the folder named by the first argument.
//
// The job is one township of 36 sections on the nominal grid: section corners, quarter corners
// and sixteenth corners, with coordinates in US survey feet on a State Plane grid. The sections
// are not perfect squares, the township is turned slightly off grid north, and the quarter
// corners on the lines closing against the north and west boundaries stand at 40 chains from
// the regular corner, so that the excess and deficiency fall into the last half mile. The output
// depends on nothing but this program: a fixed seed, no clock, no locale.
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <numbers>
#include <string>
#include <vector>

#include "jobgen/job_files.h"

namespace {

using namespace tessel::jobgen;

constexpr const char* kJob = "T12NR04E";
constexpr std::uint64_t kSeed = 1855;
constexpr double kOriginX = 2098745.0;  // southwest township corner, easting
constexpr double kOriginY = 476318.0;   // and northing
constexpr double kRotation = 0.1875;    // degrees counterclockwise from grid north: 0 11 15
constexpr double kMile = 5280.0;
constexpr double kHalfMile = 2640.0;
constexpr double kFeetPerChain = 66.0;
constexpr double kFeetPerMeter = 3.2808333333;
constexpr int kNodes = 25;  // nominal ordinates along one axis, 100 to 700

struct Vec {
  double u = 0.0;
  double v = 0.0;
};

Vec Mid(const Vec& a, const Vec& b) {
  return {(a.u + b.u) / 2.0, (a.v + b.v) / 2.0};
}

Vec Toward(const Vec& from, const Vec& to, double distance) {
  const double du = to.u - from.u;
  const double dv = to.v - from.v;
  const double length = std::hypot(du, dv);
  return {from.u + du / length * distance, from.v + dv / length * distance};
}

// Intersection of the line p1-p2 with the line p3-p4.
Vec Intersect(const Vec& p1, const Vec& p2, const Vec& p3, const Vec& p4) {
  const double d = (p1.u - p2.u) * (p3.v - p4.v) - (p1.v - p2.v) * (p3.u - p4.u);
  const double a = p1.u * p2.v - p1.v * p2.u;
  const double b = p3.u * p4.v - p3.v * p4.u;
  return {(a * (p3.u - p4.u) - (p1.u - p2.u) * b) / d, (a * (p3.v - p4.v) - (p1.v - p2.v) * b) / d};
}

double Round3(double value) {
  return std::round(value * 1000.0) / 1000.0;
}

// Nominal ordinate of node index n (0..24): 100, 120, 140, 160, 200, ... 700.
int Ordinate(int n) {
  return 100 + 100 * (n / 4) + 20 * (n % 4);
}

std::string NodeId(int i, int j) {
  return std::to_string(Ordinate(i) * 1000 + Ordinate(j));
}

// The township's nodes: local positions in feet from the southwest corner, then grid
// coordinates after the turn and the shift.
class Township {
 public:
  explicit Township(Random& random) {
    // Section corners.
    for (int a = 0; a <= 6; ++a) {
      for (int b = 0; b <= 6; ++b) {
        Vec p{a * kMile + random.Uniform(-22.0, 22.0), b * kMile + random.Uniform(-22.0, 22.0)};
        if (b == 6) p.v -= 31.7;  // the north boundary closes short
        if (a == 0) p.u += 18.4;  // the west boundary stands east of its record place
        if (a == 0 && b == 0) p = {0.0, 0.0};
        local_[4 * a][4 * b] = p;
      }
    }
    // Quarter corners: midway on regular lines, at 40 chains from the regular corner on the
    // lines that close against the north and the west boundary.
    for (int a = 0; a <= 6; ++a) {
      for (int b = 0; b < 6; ++b) {
        const Vec& south = local_[4 * a][4 * b];
        const Vec& north = local_[4 * a][4 * b + 4];
        Vec q = (b == 5) ? Toward(south, north, kHalfMile) : Mid(south, north);
        q.u += random.Uniform(-3.0, 3.0);
        q.v += random.Uniform(-3.0, 3.0);
        local_[4 * a][4 * b + 2] = q;
      }
    }
    for (int b = 0; b <= 6; ++b) {
      for (int a = 0; a < 6; ++a) {
        const Vec& west = local_[4 * a][4 * b];
        const Vec& east = local_[4 * a + 4][4 * b];
        Vec q = (a == 0) ? Toward(east, west, kHalfMile) : Mid(west, east);
        q.u += random.Uniform(-3.0, 3.0);
        q.v += random.Uniform(-3.0, 3.0);
        local_[4 * a + 2][4 * b] = q;
      }
    }
    // Sixteenth corners on the section lines, midway between corner and quarter corner.
    for (int a = 0; a <= 6; ++a) {
      for (int j = 0; j < kNodes - 1; j += 2) {
        local_[4 * a][j + 1] = Mid(local_[4 * a][j], local_[4 * a][j + 2]);
      }
    }
    for (int b = 0; b <= 6; ++b) {
      for (int i = 0; i < kNodes - 1; i += 2) {
        local_[i + 1][4 * b] = Mid(local_[i][4 * b], local_[i + 2][4 * b]);
      }
    }
    // Interior points: the centre of section, the interior sixteenths and the centres of the
    // quarters, where the lines between opposite points on the section's boundary cross.
    for (int i = 0; i < kNodes; ++i) {
      for (int j = 0; j < kNodes; ++j) {
        if (i % 4 == 0 || j % 4 == 0) continue;
        const int a = i / 4;
        const int b = j / 4;
        local_[i][j] = Intersect(local_[i][4 * b], local_[i][4 * b + 4], local_[4 * a][j],
                                 local_[4 * a + 4][j]);
      }
    }
    const double angle = kRotation * std::numbers::pi / 180.0;
    for (int i = 0; i < kNodes; ++i) {
      for (int j = 0; j < kNodes; ++j) {
        const Vec& p = local_[i][j];
        x_[i][j] = Round3(kOriginX + p.u * std::cos(angle) - p.v * std::sin(angle));
        y_[i][j] = Round3(kOriginY + p.u * std::sin(angle) + p.v * std::cos(angle));
      }
    }
  }

  double X(int i, int j) const { return x_[i][j]; }
  double Y(int i, int j) const { return y_[i][j]; }

  // Grid position of a local offset (feet east and north of the southwest corner, before the
  // turn): used for stations that are not on the nominal grid.
  static void Place(double u, double v, double& x, double& y) {
    const double angle = kRotation * std::numbers::pi / 180.0;
    x = Round3(kOriginX + u * std::cos(angle) - v * std::sin(angle));
    y = Round3(kOriginY + u * std::sin(angle) + v * std::cos(angle));
  }

 private:
  std::array<std::array<Vec, kNodes>, kNodes> local_{};
  std::array<std::array<double, kNodes>, kNodes> x_{};
  std::array<std::array<double, kNodes>, kNodes> y_{};
};

// All stations that have coordinates somewhere: nodes of the grid and the few others.
struct Station {
  std::string id;
  double x = 0.0;
  double y = 0.0;
};

class Stations {
 public:
  void Add(std::string id, double x, double y) { list_.push_back({std::move(id), x, y}); }
  const Station& Get(const std::string& id) const {
    for (const Station& s : list_) {
      if (s.id == id) return s;
    }
    std::fprintf(stderr, "no station %s\n", id.c_str());
    static const Station none;
    return none;
  }

 private:
  std::vector<Station> list_;
};

bool IsNetworkNode(int i, int j) {
  return (i % 4 == 0 && j % 2 == 0) || (j % 4 == 0 && i % 2 == 0);
}

// Section numbers run boustrophedon from the northeast corner; a = column from the west,
// b = tier from the south.
int SectionNumber(int a, int b) {
  const int tier = 5 - b;  // 0 north
  return tier % 2 == 0 ? tier * 6 + (6 - a) : tier * 6 + a + 1;
}

void SectionColumnTier(int section, int& a, int& b) {
  for (a = 0; a < 6; ++a) {
    for (b = 0; b < 6; ++b) {
      if (SectionNumber(a, b) == section) return;
    }
  }
}

// Quarter-quarter letters, A in the northeast, running like the sections.
char QuarterQuarterLetter(int qx, int qy) {
  static const char* rows[4] = {"DCBA", "EFGH", "LKJI", "MNOP"};
  return rows[3 - qy][qx];
}

// Ring of node ids round a rectangle of nodes, counterclockwise from the southwest, closed.
std::vector<std::string> RectRing(int i0, int j0, int i1, int j1) {
  std::vector<std::string> ids;
  for (int i = i0; i < i1; ++i) ids.push_back(NodeId(i, j0));
  for (int j = j0; j < j1; ++j) ids.push_back(NodeId(i1, j));
  for (int i = i1; i > i0; --i) ids.push_back(NodeId(i, j1));
  for (int j = j1; j > j0; --j) ids.push_back(NodeId(i0, j));
  ids.push_back(NodeId(i0, j0));
  return ids;
}

// Area in square feet and centroid of a closed ring.
void RingAreaCentroid(const Stations& stations, const std::vector<std::string>& ring, double& area,
                      double& cx, double& cy) {
  double twice = 0.0;
  double sx = 0.0;
  double sy = 0.0;
  const Station& base = stations.Get(ring.front());
  for (std::size_t k = 0; k + 1 < ring.size(); ++k) {
    const Station& p = stations.Get(ring[k]);
    const Station& q = stations.Get(ring[k + 1]);
    const double px = p.x - base.x;
    const double py = p.y - base.y;
    const double qx = q.x - base.x;
    const double qy = q.y - base.y;
    const double cross = px * qy - qx * py;
    twice += cross;
    sx += (px + qx) * cross;
    sy += (py + qy) * cross;
  }
  area = std::fabs(twice) / 2.0;
  cx = Round3(base.x + sx / (3.0 * twice));
  cy = Round3(base.y + sy / (3.0 * twice));
}

std::string Path(const std::filesystem::path& folder, const char* extension) {
  return (folder / (std::string(kJob) + extension)).string();
}

struct RawRecord {
  std::string from;
  std::string to;
  double distance = 0.0;
  Bearing bearing;
  std::string survey;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: make_sample_job <folder>\n");
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);

  Random random(kSeed);
  const Township township(random);
  Stations stations;
  for (int i = 0; i < kNodes; ++i) {
    for (int j = 0; j < kNodes; ++j) stations.Add(NodeId(i, j), township.X(i, j), township.Y(i, j));
  }

  // Stations off the nominal grid: a traverse from a control monument in section 15 to the
  // corner of sections 15, 16, 21, 22 (only the adjustment knows them), and two control
  // monuments that only the control section holds.
  struct Offgrid {
    const char* id;
    double u;
    double v;
  };
  const Offgrid traverse[] = {{"800101", 17120.0, 16905.0},
                              {"800102", 16610.0, 16480.0},
                              {"800103", 16102.0, 16110.0},
                              {"800104", 16930.0, 16010.0},
                              {"800105", 17805.0, 15990.0}};
  const Offgrid monuments[] = {{"KQ1234", 17690.0, 17070.0}, {"KQ1301", 33830.0, 12475.0}};
  for (const Offgrid& o : traverse) {
    double x = 0.0;
    double y = 0.0;
    Township::Place(o.u, o.v, x, y);
    stations.Add(o.id, x, y);
  }
  for (const Offgrid& o : monuments) {
    double x = 0.0;
    double y = 0.0;
    Township::Place(o.u, o.v, x, y);
    stations.Add(o.id, x, y);
  }

  // ------------------------------------------------------------------------------------------
  // .def
  ProjectProperties properties;
  properties.title = "T12N R04E SIXTH PRINCIPAL MERIDIAN - DEMONSTRATION TOWNSHIP";
  properties.zone = "NORTH ZONE 3301";
  properties.datum = "NAD83";
  properties.unit_code = 2;
  properties.mean_elevation = "1520.0";
  properties.scale_factor = "0.99994120";
  properties.errors_from_sd = true;
  std::vector<std::string> def = DefLines(properties);

  // ------------------------------------------------------------------------------------------
  // .COR: every nominal point of the township, in identifier order.
  std::vector<std::string> cor;
  for (int i = 0; i < kNodes; ++i) {
    for (int j = 0; j < kNodes; ++j)
      cor.push_back(CorLine(NodeId(i, j), township.X(i, j), township.Y(i, j)));
  }

  // ------------------------------------------------------------------------------------------
  // .LSA
  std::vector<std::string> lsa;
  // Section 1: control. The four township corners are also in .COR; the two monuments are not.
  const char* control[] = {"KQ1234", "100100", "700100", "KQ1301", "700700", "100700"};
  const std::size_t control_count = sizeof control / sizeof control[0];
  for (std::size_t k = 0; k < control_count; ++k) {
    const Station& s = stations.Get(control[k]);
    lsa.push_back(LsaControlLine(s.id, s.x, s.y, 0.020, 0.020, k + 1 == control_count));
  }
  // Section 2: network lines along the section lines, then the traverse and the ties.
  struct Line {
    std::string from;
    std::string to;
  };
  std::vector<Line> network;
  for (int a = 0; a <= 6; ++a) {
    for (int j = 0; j < kNodes - 1; j += 2)
      network.push_back({NodeId(4 * a, j), NodeId(4 * a, j + 2)});
  }
  for (int b = 0; b <= 6; ++b) {
    for (int i = 0; i < kNodes - 1; i += 2)
      network.push_back({NodeId(i, 4 * b), NodeId(i + 2, 4 * b)});
  }
  const Line ties[] = {{"KQ1234", "800101"}, {"800101", "800102"}, {"800102", "800103"},
                       {"800103", "400400"}, {"800102", "800104"}, {"800104", "800105"},
                       {"800105", "440400"}, {"KQ1301", "700340"}};
  for (const Line& t : ties) network.push_back(t);
  for (std::size_t k = 0; k < network.size(); ++k) {
    const Station& f = stations.Get(network[k].from);
    const Station& t = stations.Get(network[k].to);
    const double de = t.x - f.x;
    const double dn = t.y - f.y;
    lsa.push_back(
        LsaNetworkLine(f.id, t.id, std::hypot(de, dn), BearingOf(de, dn), k + 1 == network.size()));
  }
  // Section 3: turned angles along the traverse, at / back / forward / angle DD.MMSS.
  const std::array<std::array<const char*, 3>, 3> angles = {{{"800101", "KQ1234", "800102"},
                                                             {"800102", "800101", "800103"},
                                                             {"800103", "800102", "400400"}}};
  for (std::size_t k = 0; k < angles.size(); ++k) {
    const Station& at = stations.Get(angles[k][0]);
    const Station& back = stations.Get(angles[k][1]);
    const Station& ahead = stations.Get(angles[k][2]);
    double turned =
        std::atan2(ahead.x - at.x, ahead.y - at.y) - std::atan2(back.x - at.x, back.y - at.y);
    while (turned < 0.0) turned += 2.0 * std::numbers::pi;
    const long seconds = std::lround(turned * 180.0 / std::numbers::pi * 3600.0);
    const double dms = static_cast<double>(seconds / 3600) +
                       static_cast<double>((seconds / 60) % 60) / 100.0 +
                       static_cast<double>(seconds % 60) / 10000.0;
    LineBuilder b;
    b.At(1, at.id)
        .At(10, back.id)
        .At(19, ahead.id)
        .At(28, PadLeft(Fixed(dms, 4), 10))
        .At(41, "3.0");
    lsa.push_back(LsaTextLine(b.Text(), k + 1 == angles.size()));
  }
  // Section 4: fixed bearings between control stations, from / to / quadrant / DD.MMSS.
  const Line fixed[] = {{"100100", "100700"}, {"100100", "700100"}};
  for (std::size_t k = 0; k < 2; ++k) {
    const Station& f = stations.Get(fixed[k].from);
    const Station& t = stations.Get(fixed[k].to);
    const Bearing bearing = BearingOf(t.x - f.x, t.y - f.y);
    LineBuilder b;
    b.At(1, f.id)
        .At(10, t.id)
        .At(19, std::to_string(bearing.quadrant))
        .At(21, PadLeft(Fixed(bearing.DdMmSs(), 4), 10));
    lsa.push_back(LsaTextLine(b.Text(), k == 1));
  }
  // Section 5: adjusted positions of the section and quarter corners and the traverse.
  std::vector<std::string> adjusted;
  for (int i = 0; i < kNodes; ++i) {
    for (int j = 0; j < kNodes; ++j) {
      if (IsNetworkNode(i, j)) adjusted.push_back(NodeId(i, j));
    }
  }
  for (const Offgrid& o : traverse) adjusted.push_back(o.id);
  for (std::size_t k = 0; k < adjusted.size(); ++k) {
    const Station& s = stations.Get(adjusted[k]);
    const double sigma = 0.040 + 0.010 * static_cast<double>(random.Below(25));
    lsa.push_back(LsaPointLine(s.id, s.x, s.y, sigma,
                               sigma + 0.010 * static_cast<double>(random.Below(5)),
                               k + 1 == adjusted.size()));
  }

  // ------------------------------------------------------------------------------------------
  // .LXN: section lines and quarter lines as chains of 25 points.
  std::vector<std::string> lxn = {"T12NR04E  LINE CHAINS FOR DISPLAY",
                                  "  SECTION AND QUARTER LINES"};
  std::vector<std::vector<std::string>> chains;
  for (int i = 0; i < kNodes; i += 2) {
    std::vector<std::string> chain;
    for (int j = 0; j < kNodes; ++j) chain.push_back(NodeId(i, j));
    chains.push_back(chain);
  }
  for (int j = 0; j < kNodes; j += 2) {
    std::vector<std::string> chain;
    for (int i = 0; i < kNodes; ++i) chain.push_back(NodeId(i, j));
    chains.push_back(chain);
  }
  for (std::size_t k = 0; k < chains.size(); ++k) {
    if (k == chains.size() / 2) lxn.push_back(LxnMarkerLine());
    lxn.push_back(LxnCountLine(static_cast<int>(chains[k].size())));
    lxn.push_back(LxnChainLine(chains[k]));
  }
  lxn.push_back(LxnMarkerLine());

  // ------------------------------------------------------------------------------------------
  // .sid
  std::vector<std::string> sid;
  sid.push_back(SidSurveyLine("GLO 1854 EXT", 0.05, 200.0, 60.0, "0.100", "0.100"));
  sid.push_back(SidSurveyLine("GLO 1855", 0.05, 200.0, 60.0, "0.100", "0.100"));
  sid.push_back(SidCommentLine("ORIGINAL SURVEY OF THE SUBDIVISIONAL LINES, T12N R04E"));
  sid.push_back(SidCommentLine("GENERAL LAND OFFICE, FIELD NOTES VOL. R-114, PLAT APPROVED 1856"));
  sid.push_back(SidDistanceUnitsLine(DistanceUnits::Chains));
  sid.push_back(SidDistanceTypeLine(DistanceType::Ground));
  sid.push_back(SidBearingTypeLine(BearingType::MeanGeodetic));
  sid.push_back(SidSurveyLine("BLM 1978 DEP", 0.02, 50.0, 20.0, "0.050", "0.050"));
  sid.push_back(
      SidCommentLine("BUREAU OF LAND MANAGEMENT DEPENDENT RESURVEY OF THE EAST BOUNDARY"));
  sid.push_back(SidCommentLine("PLAT ACCEPTED 1979"));
  sid.push_back(SidDistanceUnitsLine(DistanceUnits::Chains));
  sid.push_back(SidDistanceTypeLine(DistanceType::Ground));
  sid.push_back(SidBearingAnglesLine(BearingType::MeanGeodetic, "0.0010"));
  sid.push_back(SidSurveyLine("RLS 18304 1996", 0.05, 20.0, 10.0, "0.030", "0.030"));
  sid.push_back(SidCommentLine("RECORD OF SURVEY, SECTION 22, BOOK 14 OF SURVEYS PAGE 212"));
  sid.push_back(SidDistanceUnitsLine(DistanceUnits::UsFeet));
  sid.push_back(SidDistanceTypeLine(DistanceType::Ground));
  sid.push_back(SidBearingRotationLine("-0.1115"));
  sid.push_back(SidBearingTypeLine(BearingType::Local));
  sid.push_back(SidSurveyLine("SR 20 ROW 2004", 0.015, 5.0, 5.0, "0.020", "0.020"));
  sid.push_back(SidCommentLine("STATE ROUTE 20 RIGHT OF WAY SURVEY, MP 14.20 TO 16.85"));
  sid.push_back(SidDistanceUnitsLine(DistanceUnits::Meters));
  sid.push_back(SidDistanceTypeLine(DistanceType::Plane));
  sid.push_back(SidDistanceCorrectionLine("0.000", "-12.5"));
  sid.push_back(SidBearingTypeLine(BearingType::Grid));

  // ------------------------------------------------------------------------------------------
  // .raw
  std::vector<RawRecord> records;
  // A measured record between two stations with coordinates: distance in the survey's unit,
  // bearing rounded to the survey's step, with small field errors.
  auto measured = [&](const std::string& from, const std::string& to, const char* survey,
                      double feet_per_unit, int step_seconds, double distance_error,
                      double rotation_degrees) {
    const Station& f = stations.Get(from);
    const Station& t = stations.Get(to);
    double de = t.x - f.x;
    double dn = t.y - f.y;
    if (rotation_degrees != 0.0) {
      const double r = rotation_degrees * std::numbers::pi / 180.0;
      const double e = de * std::cos(r) + dn * std::sin(r);
      const double n = -de * std::sin(r) + dn * std::cos(r);
      de = e;
      dn = n;
    }
    const double turn =
        random.Uniform(-1.0, 1.0) * step_seconds / 3600.0 * std::numbers::pi / 180.0;
    const double e = de * std::cos(turn) + dn * std::sin(turn);
    const double n = -de * std::sin(turn) + dn * std::cos(turn);
    const double distance =
        std::hypot(de, dn) / feet_per_unit + random.Uniform(-distance_error, distance_error);
    const double places = feet_per_unit == kFeetPerMeter ? 1000.0 : 100.0;
    records.push_back(
        {from, to, std::round(distance * places) / places, BearingOf(e, n, step_seconds), survey});
  };
  // A record to or from a station that has no coordinates in any file.
  auto stated = [&](const char* from, const char* to, double distance, const Bearing& bearing,
                    const char* survey) {
    records.push_back({from, to, distance, bearing, survey});
  };

  // Exterior boundaries of 1854, run north and west from the southeast corner.
  for (int j = 0; j < kNodes - 1; j += 2)
    measured(NodeId(24, j), NodeId(24, j + 2), "GLO 1854 EXT", kFeetPerChain, 60, 0.15, 0.0);
  for (int i = kNodes - 1; i > 0; i -= 2)
    measured(NodeId(i, 24), NodeId(i - 2, 24), "GLO 1854 EXT", kFeetPerChain, 60, 0.15, 0.0);
  for (int i = kNodes - 1; i > 0; i -= 2)
    measured(NodeId(i, 0), NodeId(i - 2, 0), "GLO 1854 EXT", kFeetPerChain, 60, 0.15, 0.0);
  for (int j = 0; j < kNodes - 1; j += 2)
    measured(NodeId(0, j), NodeId(0, j + 2), "GLO 1854 EXT", kFeetPerChain, 60, 0.15, 0.0);
  // Subdivisional lines of 1855: north lines, then east-west lines run west.
  for (int a = 5; a >= 1; --a) {
    for (int j = 0; j < kNodes - 1; j += 2)
      measured(NodeId(4 * a, j), NodeId(4 * a, j + 2), "GLO 1855", kFeetPerChain, 60, 0.12, 0.0);
  }
  for (int b = 1; b <= 5; ++b) {
    for (int i = kNodes - 1; i > 0; i -= 2)
      measured(NodeId(i, 4 * b), NodeId(i - 2, 4 * b), "GLO 1855", kFeetPerChain, 60, 0.12, 0.0);
  }
  // Witness corner and bearing tree of the corner of sections 22, 23, 26, 27; a meander corner
  // tied back to the corner of sections 8, 9, 16, 17; and a pair of bearing trees of a lost
  // corner whose ends are both unknown.
  stated("500300", "900101", 1.85, Bearing{4, 35, 0, 0}, "GLO 1855");
  stated("900101", "900102", 0.62, Bearing{3, 52, 30, 0}, "GLO 1855");
  stated("900201", "300500", 3.75, Bearing{1, 62, 15, 0}, "GLO 1855");
  stated("900301", "900302", 5.00, Bearing{2, 75, 0, 0}, "GLO 1855");
  // Dependent resurvey of the east boundary.
  for (int j = 0; j < 12; j += 2)
    measured(NodeId(24, j), NodeId(24, j + 2), "BLM 1978 DEP", kFeetPerChain, 1, 0.02, 0.0);
  stated("700400", "900401", 0.45, Bearing{4, 22, 10, 0}, "BLM 1978 DEP");
  // Record of survey of section 22 on an assumed basis: the section line taken as north, so
  // its bearings are turned 0 11 15 clockwise from grid.
  const std::pair<int, int> section22[] = {{12, 8},  {13, 8},  {14, 8}, {14, 9},
                                           {14, 10}, {14, 11}, {14, 12}};
  for (std::size_t k = 0; k + 1 < std::size(section22); ++k) {
    measured(NodeId(section22[k].first, section22[k].second),
             NodeId(section22[k + 1].first, section22[k + 1].second), "RLS 18304 1996", 1.0, 1,
             0.04, 0.1875);
  }
  for (int i = 12; i < 16; ++i)
    measured(NodeId(i, 10), NodeId(i + 1, 10), "RLS 18304 1996", 1.0, 1, 0.04, 0.1875);
  stated("440340", "900501", 25.00, Bearing{2, 45, 0, 0}, "RLS 18304 1996");
  // Highway right of way along the south line of sections 26 and 25.
  for (int i = 16; i < 24; i += 2)
    measured(NodeId(i, 4), NodeId(i + 2, 4), "SR 20 ROW 2004", kFeetPerMeter, 1, 0.005, 0.0);
  stated("600200", "900601", 30.48, Bearing{1, 12, 30, 0}, "SR 20 ROW 2004");

  std::vector<std::string> raw = {"T12NR04E  RECORD DATA", "TOWNSHIP 12 NORTH, RANGE 4 EAST",
                                  "FROM     TO      DISTANCE  Q   BEARING SURVEY",
                                  RawHeadEndLine()};
  for (const RawRecord& r : records)
    raw.push_back(RawRecordLine(r.from, r.to, r.distance, r.bearing, r.survey));
  raw.push_back(RawEndLine());
  const int unknown_stations = 8;  // 900101, 900102, 900201, 900301, 900302, 900401, 900501, 900601

  // ------------------------------------------------------------------------------------------
  // .IID parcels: groups of attribute lines sharing one ring and one location.
  struct Attribute {
    char type;
    const char* number;
    char note;
    char location;  // 0: the quarter-quarter under the parcel's middle
  };
  struct Parcel {
    int section;
    int qx0, qy0, qx1, qy1;  // quarter-quarter rectangle inside the section, from the southwest
    std::vector<Attribute> attributes;
  };
  const std::vector<Parcel> parcels = {
      {1, 3, 3, 4, 4, {{'L', "1", ' ', 0}}},
      {1, 2, 3, 3, 4, {{'L', "2", ' ', 0}}},
      {1, 1, 3, 2, 4, {{'L', "3", ' ', 0}}},
      {1, 0, 3, 1, 4, {{'L', "4", ' ', 0}}},
      {1, 0, 2, 4, 3, {{'A', "", ' ', 0}}},
      {1, 0, 0, 4, 2, {{'A', "", ' ', 0}}},
      {6, 3, 3, 4, 4, {{'L', "1", ' ', 0}}},
      {6, 2, 3, 3, 4, {{'L', "2", ' ', 0}}},
      {6, 1, 3, 2, 4, {{'L', "3", ' ', 0}}},
      {6, 0, 3, 1, 4, {{'L', "4", ' ', 0}}},
      {6, 0, 2, 1, 3, {{'L', "5", ' ', 0}}},
      {6, 0, 1, 1, 2, {{'L', "6", ' ', 0}, {'W', "", 'A', 0}, {'?', "", 'C', 0}}},
      {6, 0, 0, 1, 1, {{'L', "7", ' ', 0}}},
      {6, 2, 0, 4, 2, {{'A', "", ' ', 0}}},
      {22, 2, 2, 4, 4, {{'A', "", ' ', 0}}},
      {22, 0, 2, 2, 4, {{'A', "", ' ', 0}, {'?', "", 'C', 0}}},
      {22, 1, 1, 3, 2, {{'W', "", 'A', 0}}},
      {22, 0, 1, 1, 2, {{'A', "", ' ', 0}}},
      {22, 3, 1, 4, 2, {{'A', "", ' ', 0}}},
      {22, 0, 0, 1, 1, {{'A', "", ' ', 0}}},
      {22, 1, 0, 2, 1, {{'A', "", ' ', 0}}},
      {22, 2, 0, 3, 1, {{'A', "", ' ', 0}}},
      {22, 3, 0, 4, 1, {{'A', "", ' ', 0}}},
      {35, 0, 0, 1, 1, {{'?', "", ' ', 0}}},
      {35, 1, 0, 2, 1, {{'?', "", 'P', 0}}},
      {35, 2, 0, 3, 1, {{'W', "", ' ', 0}}},
      {35, 0, 2, 4, 4, {{'A', "", ' ', 0}}},
  };
  std::vector<std::string> iid = {"T12NR04E  PARCEL IDENTIFICATION FILE"};
  int parcel_serial = 0;
  for (const Parcel& p : parcels) {
    int a = 0;
    int b = 0;
    SectionColumnTier(p.section, a, b);
    const std::vector<std::string> ring =
        RectRing(4 * a + p.qx0, 4 * b + p.qy0, 4 * a + p.qx1, 4 * b + p.qy1);
    double area = 0.0;
    double cx = 0.0;
    double cy = 0.0;
    RingAreaCentroid(stations, ring, area, cx, cy);
    const char middle = QuarterQuarterLetter((p.qx0 + p.qx1 - 1) / 2, (p.qy0 + p.qy1 - 1) / 2);
    const double acres = std::round(area / 43560.0 * 1000.0) / 1000.0;
    for (const Attribute& attribute : p.attributes) {
      ++parcel_serial;
      char reference[32];
      std::snprintf(reference, sizeof reference, "%s-%02d-%05d", kJob, p.section, parcel_serial);
      iid.push_back(IidAttributeLine(p.section, attribute.location ? attribute.location : middle,
                                     attribute.type, attribute.number, "", attribute.note, acres,
                                     reference));
    }
    iid.push_back(IidRingLine(ring));
    iid.push_back(IidLocationLine(cy, cx));
  }

  // ------------------------------------------------------------------------------------------
  // .RPO and .CRP: the raw polygons of section 22, the quarter-quarters with the lake in the
  // middle of the south half as one polygon, the northwest quarter inside a special survey.
  struct Polygon {
    char tag;
    int qx0, qy0, qx1, qy1;
  };
  std::vector<Polygon> polygons;
  for (int qy = 3; qy >= 0; --qy) {
    for (int qx = 0; qx < 4; ++qx) {
      if (qy == 1 && qx == 2) continue;  // part of the lake
      if (qy == 1 && qx == 1) {
        polygons.push_back({'O', 1, 1, 3, 2});
        continue;
      }
      polygons.push_back({(qx < 2 && qy >= 2) ? 'I' : 'S', qx, qy, qx + 1, qy + 1});
    }
  }
  std::vector<std::string> rpo = {"RAW POLYGONS  T12NR04E", "SECTION 22",
                                  RpoCountLine(static_cast<int>(polygons.size())), ""};
  std::vector<std::string> crp;
  {
    int a = 0;
    int b = 0;
    SectionColumnTier(22, a, b);
    for (const Polygon& p : polygons) {
      const std::vector<std::string> ring =
          RectRing(4 * a + p.qx0, 4 * b + p.qy0, 4 * a + p.qx1, 4 * b + p.qy1);
      double area = 0.0;
      double cx = 0.0;
      double cy = 0.0;
      RingAreaCentroid(stations, ring, area, cx, cy);
      rpo.push_back(RpoPolygonLine(p.tag, ring));
      crp.push_back(CrpLine(cx, cy));
    }
  }

  // ------------------------------------------------------------------------------------------
  // .not: the points on the lake shore that are not computed and the lines across the lake.
  const char* hidden_points[] = {"440320", "420320"};
  const Line hidden_lines[] = {
      {"440300", "440320"}, {"440320", "440340"}, {"420320", "440320"}, {"440320", "460320"}};
  std::vector<std::string> note = {NotCountLine(static_cast<int>(std::size(hidden_points)))};
  for (const char* id : hidden_points) note.push_back(NotPointLine(id));
  note.push_back(NotCountLine(static_cast<int>(std::size(hidden_lines))));
  for (const Line& l : hidden_lines) note.push_back(NotSegmentLine(l.from, l.to));

  // ------------------------------------------------------------------------------------------
  // .irr: the irregular sections. Section 6, in the northwest corner of the township, has a
  // double northwest corner, a non-computable north quarter corner, a substitute on the west
  // line, its centre by a straight line and a parallel, and an offset on the north line.
  // Section 22 has the lake: its south interior sixteenth cannot be computed and the centre of
  // its southwest quarter is defined by a straight line with no east-west line.
  const std::vector<std::string> irr = {
      "140640",
      "100660 100661",
      "     0      0",
      "100700      4      1",
      "100702      4      2",
      "     0      0      0",
      "140700",
      "     0",
      "     1",
      "     4",
      "100640 200640",
      "     0",
      "     0      .000      .000",
      "     0",
      "120700",
      "     0",
      "999999",
      "440340",
      "     0      0",
      "     0      0      0",
      "     0",
      "     0",
      "     0",
      "440320    .000      .000",
      "     0      .000      .000",
      "420320",
      "     1",
      "     7",
      "     0",
      "     0",
      "999999",
  };

  // ------------------------------------------------------------------------------------------
  // .lld and .lot: the parcel descriptions of sections 1, 6 and 22, as the desclink tool and the
  // protraction diagram list them, for the properties dialog's listings and the multi-attribute
  // tool.
  const auto at = [](std::string& line, int column, const std::string& text) {
    const std::size_t start = static_cast<std::size_t>(column - 1);
    if (line.size() < start + text.size()) line.resize(start + text.size(), ' ');
    line.replace(start, text.size(), text);
  };
  struct Description {
    const char* id;
    const char* section;
    const char* type;
    const char* number;
    const char* suffix;
    const char* flags;
    const char* acreage;
    const char* note;
  };
  const Description descriptions[] = {
      {"T12NR04E-01-00001", "001", "L", "1", ",,", "X...............", "0039.510", ","},
      {"T12NR04E-01-00002", "001", "L", "2", ",,", ".X..............", "0039.341", ","},
      {"T12NR04E-01-00005", "001", "A", "", ",,", ".....X..........", "0040.000", ","},
      {"T12NR04E-01-00006", "001", "A", "", ",,", ".........XX.....", "0080.000", ","},
      {"T12NR04E-01-00031", "001", "M", "4521", "A", "..........X.....", "0012.250", "A"},
      {"T12NR04E-06-00012", "006", "L", "6", ",,", "...........X....", "0039.739", ","},
      {"T12NR04E-06-00013", "006", "W", "", ",,", "...........X....", "0039.739", "A"},
      {"T12NR04E-22-00020", "022", "W", "", ",,", "..........XX....", "0080.056", "A"},
  };
  std::vector<std::string> lld;
  for (const Description& d : descriptions) {
    std::string line;
    at(line, 1, d.id);
    at(line, 23, d.section);
    at(line, 27, d.type);
    at(line, 29, d.number);
    at(line, 34, d.suffix);
    at(line, 38, d.flags);
    at(line, 55, d.acreage);
    at(line, 64, d.note);
    lld.push_back(line);
  }
  struct Lot {
    const char* lot;
    const char* location;
    const char* type;
    const char* number;
    const char* suffix;
    const char* section;
    const char* acreage;
    const char* note;
  };
  const Lot lots[] = {
      {" 1", " 1", "L", "1", ",,", "001", "0039.510", ","}, {" 2", " 2", "L", "2", ",,", "001", "0039.341", ","},
      {" 3", " 3", "L", "3", ",,", "001", "0039.130", ","}, {" 4", " 4", "L", "4", ",,", "001", "0038.941", ","},
      {" 1", " 1", "L", "1", ",,", "006", "0039.546", ","}, {" 6", "12", "L", "6", ",,", "006", "0039.739", ","},
      {" 7", "13", "L", "7", ",,", "006", "0039.703", ","},
  };
  std::vector<std::string> lot;
  for (const Lot& l : lots) {
    std::string line;
    at(line, 1, l.lot);
    at(line, 4, l.location);
    at(line, 7, l.type);
    at(line, 9, l.number);
    at(line, 15, l.suffix);
    at(line, 23, l.section);
    at(line, 27, l.acreage);
    at(line, 36, l.note);
    lot.push_back(line);
  }

  // ------------------------------------------------------------------------------------------
  const struct {
    const char* extension;
    const std::vector<std::string>* lines;
  } files[] = {{".def", &def}, {".COR", &cor}, {".LSA", &lsa}, {".LXN", &lxn}, {".raw", &raw},
               {".sid", &sid}, {".IID", &iid}, {".RPO", &rpo}, {".CRP", &crp}, {".not", &note},
               {".irr", &irr}, {".lld", &lld}, {".lot", &lot}};
  for (const auto& f : files) {
    if (!WriteLines(Path(folder, f.extension), *f.lines)) {
      std::fprintf(stderr, "cannot write %s\n", Path(folder, f.extension).c_str());
      return 1;
    }
  }

  const int cor_points = kNodes * kNodes;
  const int lsa_only = static_cast<int>(std::size(traverse));
  const int control_only = static_cast<int>(std::size(monuments));
  std::printf(
      "%s: %d .COR points, %d only in .LSA section 5, %d control stations only in section 1, "
      "%d unknown stations in .raw: %d points after loading\n",
      kJob, cor_points, lsa_only, control_only, unknown_stations,
      cor_points + lsa_only + control_only + unknown_stations);
  std::printf("  %zu .LSA network lines, %zu .raw records, %d parcels, %zu raw polygons\n",
              network.size(), records.size(), parcel_serial, polygons.size());
  return 0;
}
