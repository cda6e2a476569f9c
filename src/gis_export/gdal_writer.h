#pragma once
// Writing the layers of a job to GIS and CAD files through GDAL, and the coordinate reference
// systems GDAL knows. Every file is first written whole into a scratch folder beside the output
// and only then moved to its name, so a failed export leaves no half-written file behind.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "gis_export/gis_layers.h"
#include "model/progress.h"

namespace tessel {

enum class GisFormat { GeoPackage, GeoJson, Shapefile, Dxf };

// The format of an output by its extension, in any case: .gpkg, .geojson (or .json), .shp, .dxf.
std::optional<GisFormat> GisFormatOf(std::string_view path);
const char* GisFormatName(GisFormat format);

// False when Tessel was built without GDAL; every export then fails with kNoGdalText.
bool GdalAvailable();
inline constexpr const char* kNoGdalText = "This build of Tessel has no GDAL, so it cannot write GIS or CAD files.";

// A coordinate reference system as GDAL describes it.
struct GisCrs {
  std::string wkt;   // WKT 2, as GDAL takes it back
  std::string name;  // "NAD83 / Illinois East (ftUS)"
  std::string authority;  // "EPSG:3435", or empty when the system has no code
};

// "EPSG:NNNN" (the prefix in any case) into its code; nullopt for any other text.
std::optional<int> ParseEpsgCode(std::string_view text);
// The system of an EPSG code; nullopt, with `error` set, when GDAL does not know it.
std::optional<GisCrs> CrsFromEpsg(int code, std::string& error);
// The system a .prj holds (WKT in the flavour GIS programs write); nullopt, with `error` set,
// when the text is no system GDAL can read.
std::optional<GisCrs> CrsFromPrjText(const std::string& text, std::string& error);
// The text of a .prj for the system: WKT in the flavour GIS programs read beside a Shapefile.
std::optional<std::string> PrjTextOf(const GisCrs& crs, std::string& error);

struct CrsEntry {
  int code = 0;
  std::string name;
};
// The State Plane zones of GDAL's EPSG registry (NAD27 and NAD83 in their realisations, feet
// and metres), by name; empty without GDAL.
std::vector<CrsEntry> StatePlaneZones();

struct GisWriteResult {
  bool ok = false;
  std::string error;                  // why nothing was written, naming the file
  std::vector<std::string> files;     // the files written, in order
  std::vector<std::string> warnings;  // what GDAL said along the way
  bool cancelled = false;             // stopped on the user's word: nothing was written
};

// The files the layers go to: the output itself for a GeoPackage or a DXF, and for GeoJSON and
// Shapefile the output when there is one layer, otherwise "<name>_<layer>.<ext>" beside it.
std::vector<std::string> GisOutputFiles(const std::string& out, GisFormat format,
                                        const std::vector<std::string>& layerNames);

// Writes the layers, replacing files of the same names. `crs` is nullopt for none. `progress`
// hears of the features written and may stop the export until the first file is moved into
// place; a stopped export leaves every file as it was.
GisWriteResult WriteGisLayers(const std::vector<GisLayer>& layers, const std::string& out, GisFormat format,
                              const std::optional<GisCrs>& crs, Progress* progress = nullptr);

}  // namespace tessel
