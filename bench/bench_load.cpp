// Times the load of a job (everything File Open reads, with its lookups and temporary points)
// against a plain read of the same files line by line.
//
//   bench-load PATH.def [ROUNDS]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "model/text_file.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Reads every file of the job line by line and keeps the lines, as a reader would at least do.
std::size_t PlainRead(const fs::path& folder, const std::string& job) {
  std::size_t lines = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(job + ".", 0) != 0) continue;
    tessel::LineReader in(entry.path().string());
    std::vector<std::string> kept;
    while (!in.Eof()) kept.push_back(in.ReadLine());
    lines += kept.size();
  }
  return lines;
}

// Notes the time of every change of the first status panel, so that the load's steps can be
// timed by the texts that announce them.
class TimingUserPort : public tessel::RecordingUserPort {
 public:
  void Status(int panel, const std::string& text) override {
    if (panel == 1 && (steps.empty() || steps.back().first != text)) steps.emplace_back(text, Clock::now());
  }
  std::vector<std::pair<std::string, Clock::time_point>> steps;
};

struct LoadResult {
  double openMs = 0;  // File Open, without the program's start and the job's close
  int points = 0;
  int rawLines = 0;
  int parcels = 0;
  std::vector<std::pair<std::string, double>> steps;  // text, milliseconds until the next
};

LoadResult Load(const fs::path& def, const std::string& toolFolder) {
  TimingUserPort user;
  tessel::NullCanvas canvas;
  tessel::RecordingProcessPort processes;
  tessel::Session session(user, canvas, processes);
  session.ToolFolder = toolFolder;
  tessel::MainFormLoad(session);
  user.steps.clear();
  const auto start = Clock::now();
  tessel::OpenJob(session, def.string(), def.filename().string());
  const auto end = Clock::now();
  LoadResult result{std::chrono::duration<double, std::milli>(end - start).count(), session.points.PointCount(),
                    session.raw.RawLineCount, session.parcels.ParcelCount, {}};
  for (std::size_t i = 0; i < user.steps.size(); ++i) {
    const auto next = i + 1 < user.steps.size() ? user.steps[i + 1].second : end;
    result.steps.emplace_back(user.steps[i].first, std::chrono::duration<double, std::milli>(next - user.steps[i].second).count());
  }
  tessel::FileClose(session);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench-load PATH.def [ROUNDS]\n");
    return 2;
  }
  const fs::path def = fs::absolute(argv[1]);
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 5;
  const std::string job = def.stem().string();
  const fs::path toolFolder = fs::temp_directory_path() / "tessel-bench-tools";
  fs::create_directories(toolFolder);

  std::vector<double> plain, load, open;
  std::size_t lines = 0;
  LoadResult loaded;
  for (int r = 0; r < rounds; ++r) {
    auto t0 = Clock::now();
    lines = PlainRead(def.parent_path(), job);
    auto t1 = Clock::now();
    loaded = Load(def, toolFolder.string());
    auto t2 = Clock::now();
    plain.push_back(std::chrono::duration<double, std::milli>(t1 - t0).count());
    load.push_back(std::chrono::duration<double, std::milli>(t2 - t1).count());
    open.push_back(loaded.openMs);
  }
  const double plainMs = Median(plain), loadMs = Median(load), openMs = Median(open);
  std::printf("job: %s (%zu lines)\n", def.string().c_str(), lines);
  std::printf("loaded: %d points, %d record lines, %d parcels\n", loaded.points, loaded.rawLines, loaded.parcels);
  std::printf("plain read: %.1f ms   load (File Open): %.1f ms   ratio: %.2f   (median of %d)\n", plainMs, openMs,
              openMs / plainMs, rounds);
  std::printf("with the program's start and the job's close: %.1f ms   ratio: %.2f\n", loadMs, loadMs / plainMs);
  // The time under each status text, summed over its appearances (the record reader announces
  // every record and every temporary point).
  std::vector<std::pair<std::string, double>> byText;
  for (const auto& step : loaded.steps) {
    auto it = std::find_if(byText.begin(), byText.end(), [&](const auto& e) { return e.first == step.first; });
    if (it == byText.end()) byText.push_back(step); else it->second += step.second;
  }
  for (const auto& [text, ms] : byText) std::printf("  %-55s %7.1f ms\n", text.c_str(), ms);
  const bool ok = openMs < 1000.0 && openMs <= 2.0 * plainMs;
  std::printf("%s\n", ok ? "within target (under 1 s, at most 2 times the plain read)" : "OUTSIDE TARGET");
  return ok ? 0 : 1;
}
