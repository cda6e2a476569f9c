// Writes a job at the design limits of the program into the folder named by the first argument:
// job name FULLJOB, an optional second argument the seed.
//
// The point counts are chosen so that a load ends on exactly 32767 points, the most the 16-bit
// point count holds: the .COR points, then the points only .LSA section 5 has, then the control
// stations only .LSA section 1 has, then one temporary point for each station that only the
// record data name. Points stand on a jittered grid of 200-foot cells with six-digit numeric
// identifiers in sequence, so that every lookup is an exact match of a unique identifier.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "jobgen/job_files.h"

namespace {

using namespace tessel::jobgen;

constexpr const char* kJob = "FULLJOB";

// Limits of the design and the numbers that meet them.
constexpr int kPointCapacity = 32767;  // 16-bit point count
constexpr int kColumns = 175;
constexpr int kRows = 160;
constexpr int kCorPoints = kColumns * kRows;  // 28000
constexpr int kLsaOnlyPoints = 600;
constexpr int kMergeBound = 10000;  // section 5 lines the merge looks at
constexpr int kControlStations = 400;
constexpr int kControlOnly = 200;
constexpr int kUnknownStations = kPointCapacity - kCorPoints - kLsaOnlyPoints - kControlOnly;
constexpr int kLsaLines = 32000;
constexpr int kLxnSegments = 15000;
constexpr int kRawRecords = 16000;
constexpr int kSurveys = 200;
constexpr int kCaptionBound = 600;
constexpr int kParcels = 8998;  // the parcel reader's ring loop reaches count + 2 <= 9000
constexpr int kPolygons = 5000;
constexpr int kNotePoints = 40;
constexpr int kNoteSegments = 300;

static_assert(kCorPoints == 28000);
static_assert(kUnknownStations == 3967);
static_assert(kLsaOnlyPoints * 16 <= kMergeBound);
static_assert(kRawRecords % kSurveys == 0);

constexpr int kFirstId = 100000;
constexpr double kOriginX = 2084000.0;
constexpr double kOriginY = 458000.0;
constexpr double kCell = 200.0;
constexpr double kFeetPerChain = 66.0;
constexpr double kFeetPerMeter = 3.2808333333;

double Round3(double value) {
  return std::round(value * 1000.0) / 1000.0;
}

struct Point {
  std::string id;
  double x = 0.0;
  double y = 0.0;
};

int GridIndex(int row, int column) {
  return row * kColumns + column;
}

// Section numbers run boustrophedon from the northeast corner; a = column from the west,
// b = tier from the south.
int SectionNumber(int a, int b) {
  const int tier = 5 - b;
  return tier % 2 == 0 ? tier * 6 + (6 - a) : tier * 6 + a + 1;
}

char QuarterQuarterLetter(int qx, int qy) {
  static const char* rows[4] = {"DCBA", "EFGH", "LKJI", "MNOP"};
  return rows[3 - qy][qx];
}

struct Job {
  std::vector<Point> grid;          // the .COR points, row by row from the south
  std::vector<Point> lsa_only;      // in .LSA section 5 only
  std::vector<Point> control_only;  // in .LSA section 1 only
  std::vector<int> control_in_cor;  // grid indexes of the control stations that .COR has too
};

// Ring of a grid cell: its four corners counterclockwise from the southwest, closed.
std::vector<std::string> CellRing(const Job& job, int row, int column) {
  return {job.grid[GridIndex(row, column)].id, job.grid[GridIndex(row, column + 1)].id,
          job.grid[GridIndex(row + 1, column + 1)].id, job.grid[GridIndex(row + 1, column)].id,
          job.grid[GridIndex(row, column)].id};
}

void CellAreaCentroid(const Job& job, int row, int column, double& area, double& cx, double& cy) {
  const Point* corners[5] = {
      &job.grid[GridIndex(row, column)], &job.grid[GridIndex(row, column + 1)],
      &job.grid[GridIndex(row + 1, column + 1)], &job.grid[GridIndex(row + 1, column)],
      &job.grid[GridIndex(row, column)]};
  const double bx = corners[0]->x;
  const double by = corners[0]->y;
  double twice = 0.0;
  double sx = 0.0;
  double sy = 0.0;
  for (int k = 0; k < 4; ++k) {
    const double px = corners[k]->x - bx;
    const double py = corners[k]->y - by;
    const double qx = corners[k + 1]->x - bx;
    const double qy = corners[k + 1]->y - by;
    const double cross = px * qy - qx * py;
    twice += cross;
    sx += (px + qx) * cross;
    sy += (py + qy) * cross;
  }
  area = std::fabs(twice) / 2.0;
  cx = Round3(bx + sx / (3.0 * twice));
  cy = Round3(by + sy / (3.0 * twice));
}

// Survey categories, in the order of the survey table and of the record data: surveys in
// chains first, then feet, then meters.
enum class Units { Chains, Feet, Meters };

struct Survey {
  std::string name;
  Units units = Units::Chains;
  double feet_per_unit = kFeetPerChain;
  double places = 100.0;  // distances recorded to 1 / places of the unit
};

Survey MakeSurvey(int s) {  // s from 1
  char name[24];
  Survey survey;
  if (s <= 120) {
    std::snprintf(name, sizeof name, "%s %03d", s <= 60 ? "GLO" : "BLM", s);
  } else if (s <= 170) {
    std::snprintf(name, sizeof name, "RLS %03d", s);
    survey.units = Units::Feet;
    survey.feet_per_unit = 1.0;
  } else {
    std::snprintf(name, sizeof name, "DOT %03d", s);
    survey.units = Units::Meters;
    survey.feet_per_unit = kFeetPerMeter;
    survey.places = 1000.0;
  }
  survey.name = name;
  return survey;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: make_full_job <folder> [seed]\n");
    return 2;
  }
  const auto started = std::chrono::steady_clock::now();
  const std::filesystem::path folder = argv[1];
  const std::uint64_t seed = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 32767;
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  Random random(seed);

  // ------------------------------------------------------------------------------------------
  // Points.
  Job job;
  int next_id = kFirstId;
  job.grid.reserve(kCorPoints);
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column < kColumns; ++column) {
      job.grid.push_back({std::to_string(next_id++),
                          Round3(kOriginX + column * kCell + random.Uniform(-30.0, 30.0)),
                          Round3(kOriginY + row * kCell + random.Uniform(-30.0, 30.0))});
    }
  }
  // Points only the adjustment has, and control stations only the control section has, stand
  // inside grid cells. Each takes a different cell.
  constexpr int kCells = (kRows - 1) * (kColumns - 1);
  std::vector<int> lsa_only_cell;
  std::vector<int> control_only_cell;
  for (int k = 0; k < kLsaOnlyPoints; ++k) {
    const int stride = kCells / kLsaOnlyPoints;
    const int cell = k * stride + random.Below(stride / 2);
    lsa_only_cell.push_back(cell);
    const int row = cell / (kColumns - 1);
    const int column = cell % (kColumns - 1);
    job.lsa_only.push_back({std::to_string(next_id++),
                            Round3(kOriginX + (column + 0.5) * kCell + random.Uniform(-20.0, 20.0)),
                            Round3(kOriginY + (row + 0.5) * kCell + random.Uniform(-20.0, 20.0))});
  }
  for (int k = 0; k < kControlOnly; ++k) {
    const int stride = kCells / kControlOnly;
    const int cell = k * stride + stride / 2 + random.Below(stride / 2);
    control_only_cell.push_back(cell);
    const int row = cell / (kColumns - 1);
    const int column = cell % (kColumns - 1);
    job.control_only.push_back(
        {std::to_string(next_id++),
         Round3(kOriginX + (column + 0.5) * kCell + random.Uniform(-20.0, 20.0)),
         Round3(kOriginY + (row + 0.5) * kCell + random.Uniform(-20.0, 20.0))});
  }
  for (int k = 0; k < kControlStations - kControlOnly; ++k) {
    const int stride = kCorPoints / (kControlStations - kControlOnly);
    job.control_in_cor.push_back(k * stride + random.Below(stride));
  }
  const int first_unknown_id = next_id;

  // ------------------------------------------------------------------------------------------
  // .def
  ProjectProperties properties;
  properties.title = "FULLJOB - FULL-SIZE JOB AT THE DESIGN LIMITS";
  properties.zone = "NORTH ZONE 3301";
  properties.datum = "NAD83";
  properties.unit_code = 2;
  properties.mean_elevation = "1250.0";
  properties.scale_factor = "0.99996000";
  properties.errors_from_sd = true;
  const std::vector<std::string> def = DefLines(properties);

  // ------------------------------------------------------------------------------------------
  // .COR
  std::vector<std::string> cor;
  cor.reserve(kCorPoints);
  for (const Point& p : job.grid) cor.push_back(CorLine(p.id, p.x, p.y));

  // ------------------------------------------------------------------------------------------
  // .LSA
  std::vector<std::string> lsa;
  lsa.reserve(kControlStations + kLsaLines + kCorPoints + kLsaOnlyPoints + 16);
  // Section 1: control, stations in .COR and stations only here taking turns.
  for (int k = 0; k < kControlStations; ++k) {
    const Point& p = (k % 2 == 0) ? job.grid[job.control_in_cor[k / 2]] : job.control_only[k / 2];
    lsa.push_back(LsaControlLine(p.id, p.x, p.y, 0.020, 0.020, k + 1 == kControlStations));
  }
  // Section 2: ties of the stations off the grid to the corners of their cells, then grid
  // edges: all the east-west ones and a share of the north-south ones.
  struct Edge {
    const Point* from;
    const Point* to;
  };
  std::vector<Edge> edges;
  edges.reserve(kLsaLines);
  for (int row = 0; row < kRows; ++row) {
    for (int column = 0; column + 1 < kColumns; ++column) {
      edges.push_back({&job.grid[GridIndex(row, column)], &job.grid[GridIndex(row, column + 1)]});
    }
  }
  const int tie_lines = 2 * (kLsaOnlyPoints + kControlOnly);
  const int vertical = kLsaLines - static_cast<int>(edges.size()) - tie_lines;
  {
    const int available = (kRows - 1) * kColumns;
    const int stride = available / vertical;
    for (int k = 0; k < vertical; ++k) {
      const int e = k * stride + random.Below(stride);
      const int row = e / kColumns;
      const int column = e % kColumns;
      edges.push_back({&job.grid[GridIndex(row, column)], &job.grid[GridIndex(row + 1, column)]});
    }
  }
  auto tie = [&](const Point& station, int cell) {
    const int row = cell / (kColumns - 1);
    const int column = cell % (kColumns - 1);
    edges.push_back({&job.grid[GridIndex(row, column)], &station});
    edges.push_back({&station, &job.grid[GridIndex(row + 1, column + 1)]});
  };
  for (int k = 0; k < kLsaOnlyPoints; ++k) tie(job.lsa_only[k], lsa_only_cell[k]);
  for (int k = 0; k < kControlOnly; ++k) tie(job.control_only[k], control_only_cell[k]);
  for (std::size_t k = 0; k < edges.size(); ++k) {
    const double de = edges[k].to->x - edges[k].from->x;
    const double dn = edges[k].to->y - edges[k].from->y;
    lsa.push_back(LsaNetworkLine(edges[k].from->id, edges[k].to->id, std::hypot(de, dn),
                                 BearingOf(de, dn), k + 1 == edges.size()));
  }
  // Sections 3 and 4: a few angle and fixed bearing records.
  for (int k = 0; k < 4; ++k) {
    const Point& at = job.grid[GridIndex(10 + k, 10)];
    const Point& back = job.grid[GridIndex(10 + k, 9)];
    const Point& ahead = job.grid[GridIndex(11 + k, 10)];
    LineBuilder b;
    b.At(1, at.id).At(10, back.id).At(19, ahead.id).At(28, PadLeft("270.0000", 10)).At(41, "3.0");
    lsa.push_back(LsaTextLine(b.Text(), k == 3));
  }
  for (int k = 0; k < 3; ++k) {
    const Point& f = job.grid[job.control_in_cor[k]];
    const Point& t = job.grid[job.control_in_cor[k + 1]];
    const Bearing bearing = BearingOf(t.x - f.x, t.y - f.y);
    LineBuilder b;
    b.At(1, f.id)
        .At(10, t.id)
        .At(19, std::to_string(bearing.quadrant))
        .At(21, PadLeft(Fixed(bearing.DdMmSs(), 4), 10));
    lsa.push_back(LsaTextLine(b.Text(), k == 2));
  }
  // Section 5: the .COR points with the points only the adjustment has, every sixteenth line
  // among the first, so that all of them lie inside the lines the merge looks at.
  {
    const int total = kCorPoints + kLsaOnlyPoints;
    int next_grid = 0;
    int next_only = 0;
    for (int line = 0; line < total; ++line) {
      const bool only = line % 16 == 0 && next_only < kLsaOnlyPoints;
      const Point& p = only ? job.lsa_only[next_only++] : job.grid[next_grid++];
      const double sigma = 0.030 + 0.005 * static_cast<double>(random.Below(20));
      lsa.push_back(LsaPointLine(p.id, p.x, p.y, sigma, sigma, line + 1 == total));
    }
  }

  // ------------------------------------------------------------------------------------------
  // .LXN: chains of 2 to 12 points along the grid rows, each starting where the last ended.
  std::vector<std::vector<std::string>> chains;
  {
    int segments = 0;
    int row = 0;
    int column = 0;
    while (segments < kLxnSegments) {
      if (column >= kColumns - 1) {
        ++row;
        column = 0;
      }
      int length = 2 + random.Below(11);
      length = std::min(length, kColumns - column);
      length = std::min(length, kLxnSegments - segments + 1);
      std::vector<std::string> chain;
      for (int k = 0; k < length; ++k) chain.push_back(job.grid[GridIndex(row, column + k)].id);
      chains.push_back(std::move(chain));
      segments += length - 1;
      column += length - 1;
    }
  }
  std::vector<std::string> lxn = {"FULLJOB  LINE CHAINS FOR DISPLAY", "  GRID ROWS"};
  lxn.reserve(2 * chains.size() + 4);
  for (std::size_t k = 0; k < chains.size(); ++k) {
    if (k == chains.size() / 2) lxn.push_back(LxnMarkerLine());
    lxn.push_back(LxnCountLine(static_cast<int>(chains[k].size())));
    lxn.push_back(LxnChainLine(chains[k]));
  }
  lxn.push_back(LxnMarkerLine());

  // ------------------------------------------------------------------------------------------
  // .sid
  std::vector<Survey> surveys;
  std::vector<std::string> sid;
  int captions = 0;
  auto caption = [&](std::string line) {
    sid.push_back(std::move(line));
    ++captions;
  };
  for (int s = 1; s <= kSurveys; ++s) {
    const Survey survey = MakeSurvey(s);
    surveys.push_back(survey);
    char comment[80];
    switch (survey.units) {
      case Units::Chains:
        sid.push_back(SidSurveyLine(survey.name, s <= 60 ? 0.05 : 0.02, s <= 60 ? 200.0 : 50.0,
                                    s <= 60 ? 60.0 : 20.0, "0.100", "0.100"));
        std::snprintf(comment, sizeof comment, "%s, FIELD NOTES VOL. R-%d",
                      s <= 60 ? "ORIGINAL SURVEY" : "DEPENDENT RESURVEY", 100 + s);
        caption(SidCommentLine(comment));
        if (s % 3 == 0) caption(SidDistanceUnitsLine(DistanceUnits::Chains));
        if (s % 4 == 0) caption(SidBearingTypeLine(BearingType::MeanGeodetic));
        break;
      case Units::Feet:
        sid.push_back(SidSurveyLine(survey.name, 0.05, 20.0, 10.0, "0.030", "0.030"));
        std::snprintf(comment, sizeof comment, "RECORD OF SURVEY, BOOK %d OF SURVEYS PAGE %d",
                      10 + s / 10, 2 * s);
        caption(SidCommentLine(comment));
        caption(SidDistanceUnitsLine(DistanceUnits::UsFeet));
        caption(SidDistanceTypeLine(DistanceType::Ground));
        caption(SidBearingTypeLine(BearingType::Grid));
        break;
      case Units::Meters:
        sid.push_back(SidSurveyLine(survey.name, 0.015, 5.0, 5.0, "0.020", "0.020"));
        std::snprintf(comment, sizeof comment, "RIGHT OF WAY SURVEY, PROJECT %d", 4000 + s);
        caption(SidCommentLine(comment));
        caption(SidDistanceUnitsLine(DistanceUnits::Meters));
        caption(SidDistanceTypeLine(DistanceType::Plane));
        caption(SidDistanceCorrectionLine("0.000", "-12.5"));
        caption(SidBearingTypeLine(BearingType::Grid));
        break;
    }
  }
  if (captions > kCaptionBound) {
    std::fprintf(stderr, "too many survey captions: %d\n", captions);
    return 1;
  }

  // ------------------------------------------------------------------------------------------
  // .raw: the surveys' records in the order of the survey table, each survey working in its
  // own block of the grid. A record to an unknown station comes from a known one; records
  // after it may run from or to that station.
  struct Unknown {
    std::string id;
    double x = 0.0;
    double y = 0.0;
  };
  std::vector<std::string> raw = {
      "FULLJOB  RECORD DATA", "FROM     TO      DISTANCE  Q   BEARING SURVEY", RawHeadEndLine()};
  raw.reserve(kRawRecords + 4);
  int unknown_made = 0;
  int later_records = 0;
  const int per_survey = kRawRecords / kSurveys;
  for (int s = 0; s < kSurveys; ++s) {
    const Survey& survey = surveys[s];
    int unknown_left = kUnknownStations / kSurveys + (s < kUnknownStations % kSurveys ? 1 : 0);
    int later_left = 5;
    int known_left = per_survey - unknown_left - later_left;
    const int row0 = random.Below(kRows - 12);
    const int column0 = random.Below(kColumns - 12);
    std::vector<Unknown> introduced;
    auto record = [&](const std::string& from, const std::string& to, double de, double dn) {
      const double distance =
          std::round(std::hypot(de, dn) / survey.feet_per_unit * survey.places) / survey.places;
      raw.push_back(RawRecordLine(from, to, distance, BearingOf(de, dn), survey.name));
    };
    while (unknown_left + later_left + known_left > 0) {
      const int total = unknown_left + (introduced.empty() ? 0 : later_left) + known_left;
      int pick = random.Below(total);
      if (pick < unknown_left) {
        // To a new station, from a grid point of the block or now and then from a station off
        // the grid.
        // Draws are taken one statement at a time, so that the job does not depend on the
        // order in which a compiler evaluates arguments.
        const int from_row = row0 + random.Below(12);
        const int from_column = column0 + random.Below(12);
        const Point* from = &job.grid[GridIndex(from_row, from_column)];
        const int kind = random.Below(100);
        if (kind < 5)
          from = &job.lsa_only[random.Below(kLsaOnlyPoints)];
        else if (kind < 8)
          from = &job.control_only[random.Below(kControlOnly)];
        const int quadrant = 1 + random.Below(4);
        const double degrees = random.Uniform(10.0, 89.0);
        const Bearing bearing = BearingFromDegrees(quadrant, degrees);
        const double distance =
            std::round(random.Uniform(40.0, 600.0) / survey.feet_per_unit * survey.places) /
            survey.places;
        double de = 0.0;
        double dn = 0.0;
        Offset(bearing, distance * survey.feet_per_unit, de, dn);
        Unknown station{std::to_string(first_unknown_id + unknown_made), from->x + de,
                        from->y + dn};
        raw.push_back(RawRecordLine(from->id, station.id, distance, bearing, survey.name));
        introduced.push_back(station);
        ++unknown_made;
        --unknown_left;
        continue;
      }
      pick -= unknown_left;
      if (!introduced.empty() && pick < later_left) {
        // Between a station introduced before and the nearest grid point.
        const Unknown& u =
            introduced[static_cast<std::size_t>(random.Below(static_cast<int>(introduced.size())))];
        const int row =
            std::clamp(static_cast<int>(std::lround((u.y - kOriginY) / kCell)), 0, kRows - 1);
        const int column =
            std::clamp(static_cast<int>(std::lround((u.x - kOriginX) / kCell)), 0, kColumns - 1);
        const Point& p = job.grid[GridIndex(row, column)];
        if (random.Below(2) == 0)
          record(u.id, p.id, p.x - u.x, p.y - u.y);
        else
          record(p.id, u.id, u.x - p.x, u.y - p.y);
        ++later_records;
        --later_left;
        continue;
      }
      // Between two neighbouring grid points of the block.
      const int row = row0 + random.Below(11);
      const int column = column0 + random.Below(11);
      const Point& f = job.grid[GridIndex(row, column)];
      const int step = random.Below(3);
      const Point& t = job.grid[GridIndex(row + (step == 0 ? 0 : 1), column + (step == 1 ? 0 : 1))];
      record(f.id, t.id, t.x - f.x, t.y - f.y);
      --known_left;
    }
  }
  raw.push_back(RawEndLine());

  // ------------------------------------------------------------------------------------------
  // .IID: one parcel group on every third cell; now and then two or three attribute lines
  // share a ring. The last group has one line.
  std::vector<std::string> iid = {"FULLJOB  PARCEL IDENTIFICATION FILE"};
  iid.reserve(kParcels + 2 * kParcels + 2);
  int parcels = 0;
  int groups = 0;
  int multiple_groups = 0;
  const char types[] = "AAAAAAAAAAAALLLWW??RMHE";
  const int type_count = static_cast<int>(sizeof types - 1);
  for (int g = 0; parcels < kParcels; ++g) {
    const int cell = 3 * g;
    const int row = cell / (kColumns - 1);
    const int column = cell % (kColumns - 1);
    int size = (g % 53 == 7) ? 2 : (g % 211 == 100) ? 3 : 1;
    if (kParcels - parcels <= 3) size = 1;
    double area = 0.0;
    double cx = 0.0;
    double cy = 0.0;
    CellAreaCentroid(job, row, column, area, cx, cy);
    const int section = SectionNumber(column * 6 / (kColumns - 1), row * 6 / (kRows - 1));
    const char location =
        QuarterQuarterLetter(column * 24 / (kColumns - 1) % 4, row * 24 / (kRows - 1) % 4);
    const double acres = std::round(area / 43560.0 * 1000.0) / 1000.0;
    for (int k = 0; k < size; ++k) {
      ++parcels;
      const char type = types[random.Below(type_count)];
      std::string number;
      std::string suffix;
      char note = ' ';
      switch (type) {
        case 'L': number = std::to_string(1 + random.Below(12)); break;
        case 'W': note = random.Below(4) == 0 ? 'A' : ' '; break;
        case '?': note = random.Below(3) == 0 ? 'C' : ' '; break;
        case 'A': break;
        default:
          number = std::to_string(100 + random.Below(99900));
          if (random.Below(8) == 0) suffix = "A";
          break;
      }
      char reference[32];
      std::snprintf(reference, sizeof reference, "%s-%02d-%06d", kJob, section, parcels);
      iid.push_back(
          IidAttributeLine(section, location, type, number, suffix, note, acres, reference));
    }
    if (size > 1) ++multiple_groups;
    ++groups;
    iid.push_back(IidRingLine(CellRing(job, row, column)));
    iid.push_back(IidLocationLine(cy, cx));
  }

  // ------------------------------------------------------------------------------------------
  // .RPO and .CRP: raw polygons on every fifth cell.
  std::vector<std::string> rpo = {"RAW POLYGONS  FULLJOB", "GRID CELLS", RpoCountLine(kPolygons),
                                  ""};
  std::vector<std::string> crp;
  rpo.reserve(kPolygons + 4);
  crp.reserve(kPolygons);
  for (int k = 0; k < kPolygons; ++k) {
    const int cell = 5 * k + 1;
    const int row = cell / (kColumns - 1);
    const int column = cell % (kColumns - 1);
    const int draw = random.Below(100);
    const char tag = draw < 5 ? 'I' : draw < 8 ? 'O' : 'S';
    double area = 0.0;
    double cx = 0.0;
    double cy = 0.0;
    CellAreaCentroid(job, row, column, area, cx, cy);
    rpo.push_back(RpoPolygonLine(tag, CellRing(job, row, column)));
    crp.push_back(CrpLine(cx, cy));
  }

  // ------------------------------------------------------------------------------------------
  // .not
  std::vector<std::string> note = {NotCountLine(kNotePoints)};
  for (int k = 0; k < kNotePoints; ++k) note.push_back(NotPointLine(job.grid[k * 691 + 17].id));
  note.push_back(NotCountLine(kNoteSegments));
  for (int k = 0; k < kNoteSegments; ++k) {
    const int row = 1 + (k * 7) % (kRows - 2);
    const int column = (k * 13) % (kColumns - 1);
    note.push_back(NotSegmentLine(job.grid[GridIndex(row, column)].id,
                                  job.grid[GridIndex(row, column + 1)].id));
  }

  // ------------------------------------------------------------------------------------------
  const struct {
    const char* extension;
    const std::vector<std::string>* lines;
  } files[] = {{".def", &def}, {".COR", &cor}, {".LSA", &lsa}, {".LXN", &lxn}, {".raw", &raw},
               {".sid", &sid}, {".IID", &iid}, {".RPO", &rpo}, {".CRP", &crp}, {".not", &note}};
  for (const auto& f : files) {
    const std::string path = (folder / (std::string(kJob) + f.extension)).string();
    if (!WriteLines(path, *f.lines)) {
      std::fprintf(stderr, "cannot write %s\n", path.c_str());
      return 1;
    }
  }

  const int total = kCorPoints + kLsaOnlyPoints + kControlOnly + unknown_made;
  std::printf("%s in %s (seed %llu)\n", kJob, folder.string().c_str(),
              static_cast<unsigned long long>(seed));
  std::printf(
      "  points: %d .COR + %d only in .LSA section 5 + %d control only + %d unknown stations = "
      "%d\n",
      kCorPoints, kLsaOnlyPoints, kControlOnly, unknown_made, total);
  std::printf("  control stations %d (%d also in .COR); .LSA section 5 lines %d\n",
              kControlStations, kControlStations - kControlOnly, kCorPoints + kLsaOnlyPoints);
  std::printf(
      "  .LSA lines %zu; .LXN segments %d in %zu chains; .raw records %zu (%d to unknown stations, "
      "%d more through them)\n",
      edges.size(), kLxnSegments, chains.size(), raw.size() - 4, unknown_made, later_records);
  std::printf(
      "  surveys %d with %d captions; parcels %d in %d groups (%d multiple); raw polygons %d; .not "
      "%d points, %d segments\n",
      kSurveys, captions, parcels, groups, multiple_groups, kPolygons, kNotePoints, kNoteSegments);
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  std::printf("  written in %.2f s\n", seconds);
  return total == kPointCapacity ? 0 : 1;
}
