#include "db_export/db_export.h"

#include <exception>

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

GisExportReport ExportJobToDatabase(const Session& session, const GisExportRequest& request) {
  GisExportReport report;
  GisExportPlan plan;
  if (!PrepareDatabaseExport(session, request, plan, report)) return report;
  FinishGisExport(plan, WriteDatabaseExport(plan, request.out, TownshipOf(session)), report);
  return report;
}

}  // namespace tessel
