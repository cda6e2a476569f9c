// Times Preview and Test of a region of three adjoining townships against the load of one of
// them, and the boundary match test through its grid against the walk over every pair.
//
//   bench-regions FOLDER [POINTS-PER-TOWNSHIP]
//
// The townships are written into FOLDER (T1, T2, T3 and the listing REGION.how). Their points
// share the region's one point store, whose count is 16-bit: three townships of 10900 points
// fill it to 32700; larger townships stop the preview at 32767 points, as the store does.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/text_file.h"
#include "regions/match_test.h"
#include "regions/region_console.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double Since(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

std::string Pad(const std::string& text, std::size_t width, bool left) {
  if (text.size() >= width) return text;
  return left ? std::string(width - text.size(), ' ') + text : text + std::string(width - text.size(), ' ');
}

std::string Fixed(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.3f", value);
  return buffer;
}

std::string Flagged(std::string row, bool last) {
  row.resize(69, ' ');
  return row + (last ? "1" : "0");
}

// Township k: a grid of points 50 ft apart whose first column lies on the last column of
// township k - 1, a few hundredths of a foot off, so that the boundaries nearly meet.
void WriteTownship(const fs::path& folder, int k, int points) {
  const int rows = 100;
  const int columns = (points + rows - 1) / rows;
  const double width = (columns - 1) * 50.0;
  std::vector<std::string> cor, control, lines, lsaPoints;
  for (int c = 0, n = 0; c < columns && n < points; ++c) {
    for (int r = 0; r < rows && n < points; ++r, ++n) {
      char id[16];
      std::snprintf(id, sizeof id, "%03d%03d", c + 1, r + 1);
      const double x = 2.0e6 + k * width + c * 50.0 + (c == 0 ? 0.03 * (r % 5) : 0.0);
      const double y = 5.0e5 + r * 50.0;
      cor.push_back(Pad(std::string(" ") + id, 19, false) + Pad(Fixed(x), 12, true) + " " + Pad(Fixed(y), 13, true));
      if (n < 10) control.push_back(Pad(std::string(" ") + id, 19, false) + Pad(Fixed(x), 15, true) + "  " + Pad(Fixed(y), 15, true));
      if (r > 0 && (c == 0 || c == columns - 1 || r % 3 == 0)) {
        char from[16];
        std::snprintf(from, sizeof from, "%03d%03d", c + 1, r);
        lines.push_back(Pad(std::string(" ") + from, 27, false) + id);
      }
      lsaPoints.push_back(Pad(std::string(" ") + id, 28, false) + Pad(Fixed(x), 11, true));
    }
  }
  std::vector<std::string> lsa;
  for (auto* section : {&control, &lines}) {
    for (std::size_t j = 0; j < section->size(); ++j) lsa.push_back(Flagged((*section)[j], j + 1 == section->size()));
  }
  lsa.push_back(Flagged(" three", true));
  lsa.push_back(Flagged(" four", true));
  for (std::size_t j = 0; j < lsaPoints.size(); ++j) lsa.push_back(Flagged(lsaPoints[j], j + 1 == lsaPoints.size()));
  const std::string name = "T" + std::to_string(k + 1);
  tessel::WriteFileBytes((folder / (name + ".COR")).string(), tessel::JoinCrLf(cor));
  tessel::WriteFileBytes((folder / (name + ".LSA")).string(), tessel::JoinCrLf(lsa));
  tessel::WriteFileBytes((folder / (name + ".def")).string(), tessel::JoinCrLf({name, "", "", "2", "", "", "Y"}));
}

struct Ports {
  tessel::RecordingUserPort user;
  tessel::NullCanvas canvas;
  tessel::RecordingProcessPort processes;
  tessel::Session session{user, canvas, processes};
};

void UseJob(tessel::Session& s, const std::string& folder, const std::string& name) {
  s.JobFolder = folder;
  s.JobBase = folder + name;
  s.JobName = name;
  s.CurrentFolder = folder;
  s.RegionJobFolder = folder;
  s.RegionJobName = name;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench-regions FOLDER [POINTS-PER-TOWNSHIP]\n");
    return 2;
  }
  const fs::path folder = fs::absolute(argv[1]);
  const int points = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10900;
  fs::create_directories(folder);
  for (int k = 0; k < 3; ++k) WriteTownship(folder, k, points);
  tessel::WriteFileBytes((folder / "REGION.how").string(), "T1\r\nT2\r\nT3\r\n");
  tessel::WriteFileBytes((folder / "REGION.def").string(), tessel::JoinCrLf({"REGION", "", "", "2", "", "", "Y"}));
  const std::string dir = folder.string() + "/";

  double loadOne = 1e300, region = 1e300, grid = 1e300;
  int matched = 0, lines = 0, total = 0;
  for (int round = 0; round < 7; ++round) {
    Ports one;
    UseJob(one.session, dir, "T1");
    auto start = Clock::now();
    tessel::LoadOnly(one.session);
    loadOne = std::min(loadOne, Since(start));

    Ports p;
    UseJob(p.session, dir, "REGION");
    tessel::RegionConsole console(p.session);
    console.rows = {"T1", "T2", "T3"};
    console.txtTolerance.assign(1, '1');
    start = Clock::now();
    console.Preview();
    console.Test();
    region = std::min(region, Since(start));
    total = p.session.points.PointCount();
    matched = p.session.region.match.MatchPointCount;
    lines = p.session.region.match.MatchLineCount;

    start = Clock::now();
    const auto fast = tessel::FindMatchPoints(p.session.points, 1.0);
    grid = std::min(grid, Since(start));
    if (round == 0) {
      start = Clock::now();
      const auto scan = tessel::FindMatchPointsByScan(p.session.points, 1.0);
      const double quadratic = Since(start);
      std::printf("match test over %d points: grid %.1f ms, walk over every pair %.1f ms, same answer: %s\n", total,
                  grid, quadratic, scan == fast ? "yes" : "NO");
      if (scan != fast) return 1;
    }
  }
  std::printf("load of one township (%d points): %.1f ms\n", points, loadOne);
  std::printf("Preview + Test of three townships (%d points, %d matched, %d match lines): %.1f ms, %.2f x one load\n",
              total, matched, lines, region, region / loadOne);
  return 0;
}
