#include "db_export/db_export.h"

#include <exception>
#include <mutex>
#include <set>

#include "db_export/db_target.h"
#include "db_export/db_writer.h"
#include "model/text.h"

namespace tessel {

std::string TownshipOf(const Session& session) { return Trim(session.JobName); }

bool PrepareDatabaseExport(const Session& session, const GisExportRequest& request, GisExportPlan& plan,
                           GisExportReport& report) {
  if (session.JobBase.empty() || TownshipOf(session).empty()) {
    report.error = "You must first Open or Create a job.";
    return false;
  }
  if (!IsDatabaseTarget(request.out) && GisFormatOf(request.out) != GisFormat::GeoPackage) {
    report.error = request.out + ": townships are gathered in a database (PG:...) or a GeoPackage (.gpkg).";
    return false;
  }
  return PrepareGisExport(session, request, plan, report);
}

GisWriteResult WriteDatabaseExport(const GisExportPlan& plan, const std::string& target, const std::string& township,
                                   SpatialIndex spatialIndex) {
  try {
    return ReplaceTownship(plan.layers, target, township, plan.crs, spatialIndex);
  } catch (const std::exception& fault) {
    GisWriteResult written;
    written.error = RedactedTarget(target) + ": " + township + " was not written, " + fault.what();
    return written;
  }
}

RegionExportResult ExportRegionTo(const std::string& target, const std::vector<RegionTownship>& townships,
                                  const TownshipPrepare& prepare, const std::function<void(const std::string&)>& line,
                                  std::string& indexError) {
  const bool database = IsDatabaseTarget(target);
  std::mutex mutex;
  std::set<std::string> tables;
  const RegionExportResult result = ExportRegion(
      townships, prepare,
      [&](const PreparedTownship& prepared) {
        {
          std::lock_guard lock(mutex);
          for (const GisLayer& layer : prepared.plan.layers) tables.insert(layer.name);
        }
        return WriteDatabaseExport(prepared.plan, target, prepared.township, SpatialIndex::Later);
      },
      line, database ? 2 : 1);
  indexError = database && !tables.empty() ? MakeMissingSpatialIndexes(target, {tables.begin(), tables.end()}) : "";
  return result;
}

GisExportReport ExportJobToDatabase(const Session& session, const GisExportRequest& request) {
  GisExportReport report;
  GisExportPlan plan;
  if (!PrepareDatabaseExport(session, request, plan, report)) return report;
  FinishGisExport(plan, WriteDatabaseExport(plan, request.out, TownshipOf(session)), report);
  return report;
}

}  // namespace tessel
