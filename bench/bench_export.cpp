// Times the export of a job to a GeoPackage (every layer, one transaction each) against the load
// of the same job in the same run; given a PostGIS database, also a region of 100 townships of
// that size into it (the job under 100 names, each township replaced in its transaction).
//
//   bench-export PATH.def [ROUNDS] [PG:... [TOWNSHIPS]]

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "db_export/db_export.h"
#include "db_export/db_target.h"
#include "db_export/region_export.h"
#include "gis_export/gis_export.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

double Ms(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double, std::milli>(to - from).count();
}

// A session on recording ports, its tool folder set and the main form loaded.
struct QuietSession {
  explicit QuietSession(const fs::path& toolFolder) {
    session.ToolFolder = toolFolder.string();
    tessel::MainFormLoad(session);
  }
  tessel::RecordingUserPort user;
  tessel::NullCanvas canvas;
  tessel::RecordingProcessPort processes;
  tessel::Session session{user, canvas, processes};
};

// The job exported under `townships` names into the database as export-region does it, a region
// of that many townships of its size: each township's layers built in turn and written by two
// threads; the first export makes the tables.
bool BenchRegion(const fs::path& def, const fs::path& toolFolder, const std::string& target, int townships) {
  QuietSession quiet(toolFolder);
  tessel::Session& session = quiet.session;
  tessel::OpenJob(session, def.string(), def.filename().string());
  tessel::GisExportRequest request;
  request.out = target;
  request.crs = "EPSG:3435";
  std::vector<tessel::RegionTownship> region;
  for (int k = 1; k <= std::max(1, townships); ++k) {
    char name[16];
    std::snprintf(name, sizeof name, "T%03dN", k);
    region.push_back({name, def.string()});
  }
  std::string failure;
  const auto t0 = Clock::now();
  std::string indexError;
  const tessel::RegionExportResult result = tessel::ExportRegionTo(
      target, region,
      [&](const tessel::RegionTownship& township) {
        tessel::PreparedTownship prepared;
        session.JobName = township.name;
        prepared.township = township.name;
        prepared.ok = tessel::PrepareDatabaseExport(session, request, prepared.plan, prepared.report);
        return prepared;
      },
      [&](const std::string& line) {
        if (line.find("FAILED") != std::string::npos && failure.empty()) failure = line;
      },
      indexError);
  if (!indexError.empty()) failure = indexError;
  const double totalS = Ms(t0, Clock::now()) / 1000.0;
  tessel::FileClose(session);
  if (!result.ok() || !failure.empty()) {
    std::fprintf(stderr, "bench-export: %s\n", failure.c_str());
    return false;
  }
  std::printf("region into PostGIS: %d townships, %zu features in %.1f s (%.0f features/s, two writers)\n",
              townships, result.features, totalS, static_cast<double>(result.features) / totalS);
  const bool ok = totalS < 60.0;
  std::printf("%s\n", ok ? "within target (region under 60 s)" : "OUTSIDE TARGET (region under 60 s)");
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench-export PATH.def [ROUNDS] [PG:... [TOWNSHIPS]]\n");
    return 2;
  }
  if (!tessel::GdalAvailable()) {
    std::fprintf(stderr, "bench-export: %s\n", tessel::kNoGdalText);
    return 1;
  }
  const fs::path def = fs::absolute(argv[1]);
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
  const fs::path toolFolder = fs::temp_directory_path() / "tessel-bench-tools";
  const fs::path out = fs::temp_directory_path() / "tessel-bench-export" / (def.stem().string() + ".gpkg");
  fs::create_directories(toolFolder);
  fs::create_directories(out.parent_path());

  std::vector<double> load, exportMs;
  tessel::GisExportReport report;
  for (int r = 0; r < rounds; ++r) {
    QuietSession quiet(toolFolder);
    tessel::Session& session = quiet.session;
    const auto t0 = Clock::now();
    tessel::OpenJob(session, def.string(), def.filename().string());
    const auto t1 = Clock::now();
    tessel::GisExportRequest request;
    request.out = out.string();
    request.crs = "EPSG:3435";
    report = tessel::ExportJobToGis(session, request);
    const auto t2 = Clock::now();
    tessel::FileClose(session);
    if (!report.ok) {
      std::fprintf(stderr, "bench-export: %s\n", report.error.c_str());
      return 1;
    }
    load.push_back(Ms(t0, t1));
    exportMs.push_back(Ms(t1, t2));
  }
  const double loadMs = Median(load), writeMs = Median(exportMs);
  std::printf("job: %s\n", def.string().c_str());
  std::size_t features = 0;
  for (const auto& [name, count] : report.counts) {
    std::printf("  %-14s %7zu features\n", name.c_str(), count);
    features += count;
  }
  std::printf("load: %.1f ms   export to GeoPackage: %.1f ms (%zu features)   ratio: %.2f   (median of %d)\n",
              loadMs, writeMs, features, writeMs / loadMs, rounds);
  bool ok = writeMs < 600.0;
  std::printf("%s\n", ok ? "within target (export under 0.6 s)" : "OUTSIDE TARGET (export under 0.6 s)");
  fs::remove(out);
  if (argc > 3 && tessel::IsDatabaseTarget(argv[3])) ok = BenchRegion(def, toolFolder, argv[3], argc > 4 ? std::atoi(argv[4]) : 100) && ok;
  return ok ? 0 : 1;
}
