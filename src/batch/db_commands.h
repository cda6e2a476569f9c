#pragma once
// tessel-batch's exports into a shared database or GeoPackage: `export PATH.def PG:...` for one
// job and `export-region REGION.def TARGET` for every township of a region listing.

#include <string>
#include <vector>

namespace tessel {

struct DbExportOptions {
  std::string target;               // "PG:..." or a .gpkg
  std::string crs;                  // "EPSG:NNNN", or empty for each job's .prj
  std::vector<std::string> layers;  // empty for every layer
  std::string toolFolder;
};

// One job into the database: its counts to standard output, warnings and the error to standard
// error. 0 when written, 2 (as for a file) when not.
int RunDatabaseExport(const std::string& def, const DbExportOptions& options);

// Every township of the region: a progress line each and a summary to standard output, each
// failure to standard error as well. 0 when every township was written.
int RunRegionExport(const std::string& regionDef, const DbExportOptions& options);

}  // namespace tessel
