#pragma once
// Exporting an open job to a GIS or CAD file: the layers asked for, in the format of the
// output's extension, with the coordinate reference system given or found in the job's .prj.

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gis_export/gdal_writer.h"
#include "gis_export/gis_layers.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kGisExportMenuText = "GIS or CAD file (GeoPackage, GeoJSON, Shapefile, DXF)...";
inline constexpr const char* kGisExportFilter =
    "GeoPackage (*.gpkg)|*.gpkg|GeoJSON (*.geojson)|*.geojson|Shapefile (*.shp)|*.shp|DXF drawing (*.dxf)|*.dxf";
inline constexpr const char* kNoCrsWarning =
    "No coordinate reference system: none was given and the job has no .prj, so the data are written without one.";

struct GisExportRequest {
  std::string out;
  // "EPSG:NNNN", or empty to take the job's .prj when it has one.
  std::string crs;
  // Layer names; empty for every layer.
  std::vector<std::string> layers;
  // The CAMA link records to write; when not given, the job's .mtc is read.
  std::optional<std::vector<CamaLinkRecord>> camaLinks;
};

struct GisExportReport {
  bool ok = false;
  std::string error;                  // why nothing was written
  std::vector<std::string> files;     // what was written
  std::vector<std::string> warnings;  // what the user should know of what was written
  std::string crsName;                // the system the files carry, empty for none
  std::vector<std::pair<std::string, std::size_t>> counts;  // features of each layer written
  bool cancelled = false;             // stopped on the user's word before anything was written
};

// The status bar's word for an export the user stopped.
std::string GisExportCancelledText(const std::string& out);

// The .prj beside the job: JobBase and ".prj", in whatever case it exists.
std::string JobPrjPath(const Session& session);

// Resolves the system of the request: the code given, else the job's .prj, else none (with the
// warning). False, with `error` set, for a code or a .prj that cannot be used.
bool ResolveExportCrs(const Session& session, const std::string& crsText, std::optional<GisCrs>& crs,
                      std::vector<std::string>& warnings, std::string& error);

// The link records of the job's .mtc, as the CAMA display loads them; none when the job has no
// link file, or (with a warning) when it cannot be read.
std::optional<std::vector<CamaLinkRecord>> JobCamaLinks(const Session& session, std::vector<std::string>& warnings);

// The layers built and the system resolved: everything of an export but the writing.
struct GisExportPlan {
  std::vector<GisLayer> layers;
  std::optional<GisCrs> crs;
};

// Checks the request's layers, resolves its system and builds the layers; false, with the
// report's error set, when there is nothing to write. The report gathers the warnings and the
// system's name either way.
bool PrepareGisExport(const Session& session, const GisExportRequest& request, GisExportPlan& plan,
                      GisExportReport& report);
// The report of a write of the plan: its error, or the files, counts and GDAL's warnings.
void FinishGisExport(const GisExportPlan& plan, const GisWriteResult& written, GisExportReport& report);

// Exports the open job's stores; the cama_links layer from the request's link records, else from
// the job's .mtc. `progress` follows the writing and may stop it (see WriteGisLayers).
GisExportReport ExportJobToGis(const Session& session, const GisExportRequest& request, Progress* progress = nullptr);

// Writes the job's .prj for the EPSG code, replacing one that is there. False, with `error`
// naming the file, when it cannot be written.
bool WriteJobPrj(const Session& session, int epsg, std::string& error);

// The dialog's "Write this system to the job's .prj": the code given written there, or a box
// saying why not. True when it was written.
bool WriteExportPrj(Session& session, const std::string& crs);

// The dialog's Export: with `writePrj` the code given is first written to the job's .prj; then
// the export runs and a box tells its result, or why it could not run. True when it was written.
// An export stopped through `progress` shows no box: the status bar says that nothing was
// written (the .prj, asked for, was written before the export began and stays).
bool RunGisExport(Session& session, const GisExportRequest& request, bool writePrj, Progress* progress = nullptr);
inline constexpr const char* kGisExportTitle = "GIS Export";

// The report as the lines a user reads: the files, the counts, the system, the warnings.
std::vector<std::string> GisExportSummary(const GisExportReport& report);

}  // namespace tessel
