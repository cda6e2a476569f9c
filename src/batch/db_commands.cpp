#include "batch/db_commands.h"

#include <filesystem>
#include <iostream>

#include "batch/batch_session.h"
#include "db_export/db_export.h"
#include "db_export/db_target.h"
#include "db_export/region_export.h"
#include "model/platform.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// Opens the job, builds its layers and closes it again. A job with a file that cannot be read,
// or whose File Open stopped with an error, is not exported: its layers would be those of a
// half-read job.
PreparedTownship PrepareOne(const std::string& def, const DbExportOptions& options) {
  PreparedTownship prepared;
  std::error_code ec;
  if (!fs::is_regular_file(NativePath(def), ec)) {
    prepared.report.error = "no such job definition: " + def;
    return prepared;
  }
  if (std::string why; !JobFilesReadable(def, why)) {
    prepared.report.error = why;
    return prepared;
  }
  NullCanvas canvas;
  BatchSession batch(canvas, options.toolFolder);
  batch.Start();
  const std::size_t before = batch.user().messages.size();
  batch.Open(def);
  for (std::size_t k = before; k < batch.user().messages.size(); ++k) {
    const RecordedMessage& message = batch.user().messages[k];
    if (message.icon == Icon::Stop) {
      prepared.report.error = "the job cannot be read: " + message.text;
      batch.Close();
      return prepared;
    }
  }
  GisExportRequest request;
  request.out = options.target;
  request.crs = options.crs;
  request.layers = options.layers;
  prepared.township = TownshipOf(batch.session());
  prepared.ok = PrepareDatabaseExport(batch.session(), request, prepared.plan, prepared.report);
  batch.Close();
  return prepared;
}

}  // namespace

int RunDatabaseExport(const std::string& def, const DbExportOptions& options) {
  PreparedTownship prepared = PrepareOne(def, options);
  GisExportReport& report = prepared.report;
  if (prepared.ok) FinishGisExport(prepared.plan, WriteDatabaseExport(prepared.plan, options.target, prepared.township), report);
  if (!report.ok) {
    std::cerr << "tessel-batch: " << report.error << "\n";
    return 2;
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
  const bool database = IsDatabaseTarget(options.target);
  std::cout << "exporting " << townships.size() << " townships to "
            << (database ? RedactedTarget(options.target) : options.target) << "\n";
  std::string indexError;
  const RegionExportResult result = ExportRegionTo(
      options.target, townships, [&](const RegionTownship& township) { return PrepareOne(township.def, options); },
      [](const std::string& line) { std::cout << line << std::endl; }, indexError);
  if (!indexError.empty()) {
    std::cerr << "tessel-batch: " << indexError << "\n";
    return 1;
  }
  return result.ok() ? 0 : 1;
}

}  // namespace tessel
