// Times the built-in adjustment: the full-size job (every statistic included) and a generated
// network of 100 000 stations, with the peak memory of the run.
//
//   bench-adjust FULLJOB.def FOLDER [STATIONS]


#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "adjustment/least_squares.h"
#include "jobgen/survey_network.h"
#include "model/platform.h"

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

namespace {

double Seconds(Clock::time_point a, Clock::time_point b) { return std::chrono::duration<double>(b - a).count(); }

double PeakMegabytes() { return static_cast<double>(tessel::PeakMemoryKiB()) / 1024.0; }

// Adjusts the job and prints its size and time; the time, or a negative number on failure.
double Time(const std::string& label, const std::string& jobBase) {
  const auto t0 = Clock::now();
  const tessel::adjustment::Outcome outcome = tessel::adjustment::AdjustJob(jobBase, {});
  const auto t1 = Clock::now();
  if (!outcome.adjustment) {
    std::fprintf(stderr, "bench-adjust: %s: %s\n", label.c_str(), outcome.error.c_str());
    return -1;
  }
  const auto& a = *outcome.adjustment;
  std::printf("%s: %zu stations, %d observations, %d unknowns, %d iterations, %.3f s\n", label.c_str(),
              a.stations.size(), a.observationCount, a.unknownCount, a.iterations, Seconds(t0, t1));
  return Seconds(t0, t1);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: bench-adjust FULLJOB.def FOLDER [STATIONS]\n");
    return 2;
  }
  const fs::path def = fs::absolute(argv[1]);
  const fs::path folder = fs::absolute(argv[2]);
  const int stations = argc > 3 ? std::max(100, std::atoi(argv[3])) : 100000;

  std::vector<double> full;
  for (int round = 0; round < 3; ++round) full.push_back(Time("full-size job", (def.parent_path() / def.stem()).string()));
  std::sort(full.begin(), full.end());
  const double fullSeconds = full[1];

  tessel::jobgen::NetworkShape shape;
  shape.columns = static_cast<int>(std::ceil(std::sqrt(stations)));
  shape.rows = (stations + shape.columns - 1) / shape.columns;
  shape.controlEvery = 25;
  fs::create_directories(folder);
  if (!tessel::jobgen::WriteNetworkJob(tessel::jobgen::MakeSurveyNetwork(shape), folder.string(), "REGION")) {
    std::fprintf(stderr, "bench-adjust: cannot write the network into %s\n", folder.string().c_str());
    return 1;
  }
  const double regionSeconds = Time(std::to_string(shape.columns * shape.rows) + "-station region",
                                    (folder / "REGION").string());
  const double peak = PeakMegabytes();
  std::printf("full-size job %.3f s (median of 3) = %.2f of its 1 s target; region %.1f s = %.2f of its 60 s target;"
              " peak memory %.0f MB = %.2f of its 2048 MB target\n",
              fullSeconds, fullSeconds / 1.0, regionSeconds, regionSeconds / 60.0, peak, peak / 2048.0);
  const bool ok = fullSeconds >= 0 && fullSeconds < 1.0 && regionSeconds >= 0 && regionSeconds < 60.0 && peak < 2048;
  std::printf("%s\n", ok ? "within target" : "OUTSIDE TARGET");
  return ok ? 0 : 1;
}
