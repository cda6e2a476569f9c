#pragma once
// Exporting an open job into a shared dataset: a PostGIS database ("PG:...") or a GeoPackage of
// many townships. The layers, the system and the warnings are those of the file export; every
// row carries the job's name as its township, and a new export replaces the township's rows.

#include <string>

#include "db_export/db_writer.h"
#include "db_export/region_export.h"
#include "gis_export/gis_export.h"

namespace tessel {

// Checks the target and the township and builds the layers: everything of ExportJobToDatabase
// but the writing. False, with the report's error set, when there is nothing to write.
bool PrepareDatabaseExport(const Session& session, const GisExportRequest& request, GisExportPlan& plan,
                           GisExportReport& report);

// Writes the plan's layers as the township's rows of `target`; a fault is its error.
GisWriteResult WriteDatabaseExport(const GisExportPlan& plan, const std::string& target, const std::string& township,
                                   SpatialIndex spatialIndex = SpatialIndex::WithTable);

// Exports a region's townships into `target` as ExportRegion does: into a database two at a time,
// the tables it makes getting their spatial index once all the region's rows are in; into a
// GeoPackage one at a time. A spatial index that cannot be made is told in `indexError`.
RegionExportResult ExportRegionTo(const std::string& target, const std::vector<RegionTownship>& townships,
                                  const TownshipPrepare& prepare, const std::function<void(const std::string&)>& line,
                                  std::string& indexError);

// Exports the open job's layers into `request.out`, replacing the rows of the job's township
// there in one transaction. The report names the target (its password hidden) as its file.
GisExportReport ExportJobToDatabase(const Session& session, const GisExportRequest& request);

// The township a job's rows carry: the job's name.
std::string TownshipOf(const Session& session);

}  // namespace tessel
