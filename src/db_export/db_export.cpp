#include "db_export/db_export.h"

#include <exception>

#include "db_export/db_target.h"
#include "db_export/db_writer.h"
#include "model/text.h"

namespace tessel {

std::string TownshipOf(const Session& session) { return Trim(session.JobName); }

GisExportReport ExportJobToDatabase(const Session& session, const GisExportRequest& request) {
  GisExportReport report;
  const std::string township = TownshipOf(session);
  if (session.JobBase.empty() || township.empty()) {
    report.error = "You must first Open or Create a job.";
    return report;
  }
  if (!IsDatabaseTarget(request.out) && GisFormatOf(request.out) != GisFormat::GeoPackage) {
    report.error = request.out + ": townships are gathered in a database (PG:...) or a GeoPackage (.gpkg).";
    return report;
  }
  GisExportPlan plan;
  if (!PrepareGisExport(session, request, plan, report)) return report;
  GisWriteResult written;
  try {
    written = ReplaceTownship(plan.layers, request.out, township, plan.crs);
  } catch (const std::exception& fault) {
    written.ok = false;
    written.error = RedactedTarget(request.out) + ": " + township + " was not written, " + fault.what();
  }
  FinishGisExport(plan, written, report);
  return report;
}

}  // namespace tessel
