#include "batch/db_commands.h"

#include <filesystem>
#include <iostream>

#include "batch/batch_session.h"
#include "db_export/db_export.h"
#include "db_export/db_target.h"
#include "db_export/region_export.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// Opens the job, exports it and closes it again. A job with a file that cannot be read, or whose
// File Open stopped with an error, is not exported: its layers would be those of a half-read job.
GisExportReport ExportOne(const std::string& def, const DbExportOptions& options) {
  GisExportReport report;
  std::error_code ec;
  if (!fs::is_regular_file(fs::path(def), ec)) {
    report.error = "no such job definition: " + def;
    return report;
  }
  if (std::string why; !JobFilesReadable(def, why)) {
    report.error = why;
    return report;
  }
  NullCanvas canvas;
  BatchSession batch(canvas, options.toolFolder);
  batch.Start();
  const std::size_t before = batch.user().messages.size();
  batch.Open(def);
  for (std::size_t k = before; k < batch.user().messages.size(); ++k) {
    const RecordedMessage& message = batch.user().messages[k];
    if (message.icon == Icon::Stop) {
      report.error = "the job cannot be read: " + message.text;
      batch.Close();
      return report;
    }
  }
  GisExportRequest request;
  request.out = options.target;
  request.crs = options.crs;
  request.layers = options.layers;
  report = ExportJobToDatabase(batch.session(), request);
  batch.Close();
  return report;
}

}  // namespace

int RunDatabaseExport(const std::string& def, const DbExportOptions& options) {
  const GisExportReport report = ExportOne(def, options);
  if (!report.ok) {
    std::cerr << "tessel-batch: " << report.error << "\n";
    return 1;
  }
  for (const std::string& file : report.files) std::cout << file << "\n";
  for (const auto& [name, count] : report.counts) std::cout << name << ": " << count << "\n";
  std::cout << "crs: " << (report.crsName.empty() ? std::string("none") : report.crsName) << "\n";
  for (const std::string& warning : report.warnings) std::cerr << warning << "\n";
  return 0;
}

int RunRegionExport(const std::string& regionDef, const DbExportOptions& options) {
  std::vector<RegionTownship> townships;
  std::string error;
  if (!RegionTownships(regionDef, townships, error)) {
    std::cerr << "tessel-batch: " << error << "\n";
    return 2;
  }
  std::cout << "exporting " << townships.size() << " townships to "
            << (IsDatabaseTarget(options.target) ? RedactedTarget(options.target) : options.target) << "\n";
  const RegionExportResult result = ExportRegion(
      townships, [&](const RegionTownship& township) { return ExportOne(township.def, options); },
      [](const std::string& line) { std::cout << line << std::endl; });
  return result.ok() ? 0 : 1;
}

}  // namespace tessel
