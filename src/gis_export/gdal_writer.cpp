#include "gis_export/gdal_writer.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <tuple>

#include "model/paths.h"
#include "model/text.h"

#ifdef TESSEL_WITH_GDAL
#include <cpl_conv.h>
#include <cpl_error.h>
#include <cpl_string.h>
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include "gis_export/gdal_support.h"
#include "gis_export/gpkg_bulk_index.h"
#endif

namespace fs = std::filesystem;

namespace tessel {

namespace {

std::string LowerExtension(std::string_view path) {
  std::string ext = fs::path(std::string(path)).extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ext;
}

}  // namespace

std::optional<GisFormat> GisFormatOf(std::string_view path) {
  const std::string ext = LowerExtension(path);
  if (ext == ".gpkg") return GisFormat::GeoPackage;
  if (ext == ".geojson" || ext == ".json") return GisFormat::GeoJson;
  if (ext == ".shp") return GisFormat::Shapefile;
  if (ext == ".dxf") return GisFormat::Dxf;
  return std::nullopt;
}

const char* GisFormatName(GisFormat format) {
  switch (format) {
    case GisFormat::GeoPackage: return "GeoPackage";
    case GisFormat::GeoJson: return "GeoJSON";
    case GisFormat::Shapefile: return "Shapefile";
    case GisFormat::Dxf: return "DXF";
  }
  return "";
}

std::optional<int> ParseEpsgCode(std::string_view text) {
  text = TrimView(text);
  if (text.size() < 6 || Upper(text.substr(0, 5)) != "EPSG:") return std::nullopt;
  const std::string_view digits = text.substr(5);
  if (digits.empty() || digits.size() > 6) return std::nullopt;
  int code = 0;
  for (const char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    code = code * 10 + (c - '0');
  }
  if (code == 0) return std::nullopt;
  return code;
}

std::vector<std::string> GisOutputFiles(const std::string& out, GisFormat format,
                                        const std::vector<std::string>& layerNames) {
  const bool oneFile = format == GisFormat::GeoPackage || format == GisFormat::Dxf || layerNames.size() == 1;
  if (oneFile) return {out};
  // Cut by text, so that the folder stays as it was written, with its own separators.
  const std::size_t cut = out.find_last_of(std::string("/") + PathSeparator());
  const std::string folder = cut == std::string::npos ? std::string() : out.substr(0, cut + 1);
  const std::string name = out.substr(folder.size());
  const std::size_t dot = name.rfind('.');
  const bool hasExtension = dot != std::string::npos && dot != 0 && name != "..";
  const std::string stem = hasExtension ? name.substr(0, dot) : name;
  const std::string extension = hasExtension ? name.substr(dot) : std::string();
  std::vector<std::string> files;
  for (const std::string& layer : layerNames) files.push_back(folder + stem + "_" + layer + extension);
  return files;
}

#ifndef TESSEL_WITH_GDAL

bool GdalAvailable() { return false; }
std::optional<GisCrs> CrsFromEpsg(int, std::string& error) {
  error = kNoGdalText;
  return std::nullopt;
}
std::optional<GisCrs> CrsFromPrjText(const std::string&, std::string& error) {
  error = kNoGdalText;
  return std::nullopt;
}
std::optional<std::string> PrjTextOf(const GisCrs&, std::string& error) {
  error = kNoGdalText;
  return std::nullopt;
}
std::vector<CrsEntry> StatePlaneZones() { return {}; }
GisWriteResult WriteGisLayers(const std::vector<GisLayer>&, const std::string&, GisFormat,
                              const std::optional<GisCrs>&, Progress*) {
  GisWriteResult result;
  result.error = kNoGdalText;
  return result;
}

#else

namespace {

struct Srs {
  OGRSpatialReferenceH h = OSRNewSpatialReference(nullptr);
  Srs() { OSRSetAxisMappingStrategy(h, OAMS_TRADITIONAL_GIS_ORDER); }
  ~Srs() { OSRDestroySpatialReference(h); }
  Srs(const Srs&) = delete;
  Srs& operator=(const Srs&) = delete;
};

std::string TakeCplString(char* text) {
  std::string out = text ? text : "";
  CPLFree(text);
  return out;
}

std::optional<GisCrs> Describe(OGRSpatialReferenceH h, std::string& error) {
  char* wkt = nullptr;
  const char* options[] = {"FORMAT=WKT2_2019", nullptr};
  if (OSRExportToWktEx(h, &wkt, options) != OGRERR_NONE) {
    CPLFree(wkt);
    error = "The coordinate reference system cannot be described.";
    return std::nullopt;
  }
  GisCrs crs;
  crs.wkt = TakeCplString(wkt);
  const char* name = OSRGetName(h);
  crs.name = name ? name : "";
  const char* authority = OSRGetAuthorityName(h, nullptr);
  const char* code = OSRGetAuthorityCode(h, nullptr);
  if (authority && code) crs.authority = std::string(authority) + ":" + code;
  return crs;
}

const char* DriverOf(GisFormat format) {
  switch (format) {
    case GisFormat::GeoPackage: return "GPKG";
    case GisFormat::GeoJson: return "GeoJSON";
    case GisFormat::Shapefile: return "ESRI Shapefile";
    case GisFormat::Dxf: return "DXF";
  }
  return "";
}

// A label's text inside an OGR style string, where a double quote would end it.
std::string StyleText(const std::string& text) {
  std::string out = Utf8(text);
  std::replace(out.begin(), out.end(), '"', '\'');
  return out;
}

// The height of label texts in a drawing: a five-hundredth of the drawing's larger span.
double LabelHeight(const std::vector<GisLayer>& layers) {
  double minX = HUGE_VAL, minY = HUGE_VAL, maxX = -HUGE_VAL, maxY = -HUGE_VAL;
  for (const GisLayer& layer : layers) {
    for (const GisFeature& f : layer.features) {
      for (const Vertex& v : f.vertices) {
        minX = std::min(minX, v.x);
        maxX = std::max(maxX, v.x);
        minY = std::min(minY, v.y);
        maxY = std::max(maxY, v.y);
      }
    }
  }
  const double span = std::max(maxX - minX, maxY - minY);
  if (!std::isfinite(span) || span <= 0.0) return 1.0;
  return std::max(span / 500.0, 1e-3);
}

class Dataset {
 public:
  Dataset(GisFormat format, const std::string& path) {
    GDALDriverH driver = GDALGetDriverByName(DriverOf(format));
    if (driver != nullptr) h_ = GDALCreate(driver, path.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
  }
  ~Dataset() {
    if (h_ != nullptr) GDALClose(h_);
  }
  Dataset(const Dataset&) = delete;
  Dataset& operator=(const Dataset&) = delete;

  GDALDatasetH get() const { return h_; }
  // Flushes and closes; false when GDAL reported a failure on the way.
  bool Close(const GdalMessages& messages) {
    if (h_ == nullptr) return true;
    const std::size_t before = messages.failures.size();
    GDALClose(h_);
    h_ = nullptr;
    return messages.failures.size() == before;
  }

 private:
  GDALDatasetH h_ = nullptr;
};

// The features written of all, told now and then; a cancel asked is heard at the same moments.
// The files are all in the scratch folder then, so stopping leaves the output as it was.
class WriteSteps {
 public:
  WriteSteps(Progress* progress, const std::vector<GisLayer>& layers) : progress_(progress) {
    for (const GisLayer& layer : layers) total_ += layer.features.size();
  }
  // False once the user has asked to stop.
  bool Next(const std::string& layer) {
    if ((++done_ % 1024) != 0) return true;
    Report(progress_, "Writing " + layer,
           total_ == 0 ? -1.0 : static_cast<double>(done_) / static_cast<double>(total_));
    cancelled_ = CancelAsked(progress_);
    return !cancelled_;
  }
  bool cancelled() const { return cancelled_; }

 private:
  Progress* progress_;
  std::size_t total_ = 0;
  std::size_t done_ = 0;
  bool cancelled_ = false;
};

// One layer into an open dataset, in one transaction where the format has them.
bool WriteLayer(GDALDatasetH ds, const GisLayer& layer, GisFormat format, OGRSpatialReferenceH srs,
                GdalMessages& messages, WriteSteps& steps, std::string& error) {
  const char* shpOptions[] = {"ENCODING=UTF-8", nullptr};
  // A GeoPackage's spatial index is made in one pass after the features (GpkgBulkIndex).
  const char* gpkgOptions[] = {"SPATIAL_INDEX=NO", nullptr};
  const char* const* options = format == GisFormat::Shapefile    ? shpOptions
                               : format == GisFormat::GeoPackage ? gpkgOptions
                                                                 : nullptr;
  OGRLayerH out = GDALDatasetCreateLayer(ds, layer.name.c_str(), srs, WkbOf(layer.kind), const_cast<char**>(options));
  if (out == nullptr) {
    error = "The layer " + layer.name + " cannot be created: " + messages.LastFailure();
    return false;
  }
  for (const FieldDef& field : layer.fields) {
    const OGRFieldType type = OgrTypeOf(field.type);
    OGRFieldDefnH def = OGR_Fld_Create(field.name.c_str(), type);
    if (format == GisFormat::Shapefile && type == OFTString) OGR_Fld_SetWidth(def, 254);
    if (format == GisFormat::Shapefile && type == OFTInteger64) OGR_Fld_SetWidth(def, 10);
    const OGRErr made = OGR_L_CreateField(out, def, TRUE);
    OGR_Fld_Destroy(def);
    if (made != OGRERR_NONE) {
      error = "The field " + field.name + " of " + layer.name + " cannot be created: " + messages.LastFailure();
      return false;
    }
  }
  GpkgBulkIndex index;
  const bool indexed = format == GisFormat::GeoPackage;
  if (indexed && !index.Begin(ds, out, messages, error)) {
    error = "The layer " + layer.name + " cannot be written: " + error;
    return false;
  }
  const bool transaction = OGR_L_TestCapability(out, OLCTransactions) != 0;
  if (transaction && OGR_L_StartTransaction(out) != OGRERR_NONE) {
    error = "The layer " + layer.name + " cannot be written: " + messages.LastFailure();
    return false;
  }
  OGRFeatureDefnH defn = OGR_L_GetLayerDefn(out);
  std::vector<int> columns(layer.fields.size());
  for (std::size_t k = 0; k < columns.size(); ++k) columns[k] = static_cast<int>(k);
  for (const GisFeature& feature : layer.features) {
    OGRFeatureH f = OGR_F_Create(defn);
    SetFeatureValues(f, columns, feature);
    OGR_F_SetGeometryDirectly(f, GeometryOf(layer.kind, feature.vertices));
    const OGRErr written = OGR_L_CreateFeature(out, f);
    if (indexed) index.Add(OGR_F_GetFID(f), feature.vertices);
    OGR_F_Destroy(f);
    if (written != OGRERR_NONE) {
      if (transaction) OGR_L_RollbackTransaction(out);
      error = "A feature of " + layer.name + " cannot be written: " + messages.LastFailure();
      return false;
    }
    if (!steps.Next(layer.name)) {
      if (transaction) OGR_L_RollbackTransaction(out);
      return false;
    }
  }
  if (indexed && !index.Finish(messages, error)) {
    if (transaction) OGR_L_RollbackTransaction(out);
    error = "The layer " + layer.name + " cannot be written: " + error;
    return false;
  }
  if (transaction && OGR_L_CommitTransaction(out) != OGRERR_NONE) {
    error = "The layer " + layer.name + " cannot be written: " + messages.LastFailure();
    return false;
  }
  return true;
}

// Every layer into the one CAD layer table of a DXF: each feature on the CAD layer of its
// layer's name, and each label as a text on "<layer>_labels".
bool WriteDxf(GDALDatasetH ds, const std::vector<GisLayer>& layers, GdalMessages& messages, WriteSteps& steps,
              std::string& error) {
  OGRLayerH out = GDALDatasetCreateLayer(ds, "entities", nullptr, wkbUnknown, nullptr);
  if (out == nullptr) {
    error = "The drawing cannot be created: " + messages.LastFailure();
    return false;
  }
  OGRFeatureDefnH defn = OGR_L_GetLayerDefn(out);
  const int layerField = OGR_FD_GetFieldIndex(defn, "Layer");
  const double height = LabelHeight(layers);
  auto add = [&](const std::string& cadLayer, OGRGeometryH geometry, const std::string* label) {
    OGRFeatureH f = OGR_F_Create(defn);
    if (layerField >= 0) OGR_F_SetFieldString(f, layerField, cadLayer.c_str());
    OGR_F_SetGeometryDirectly(f, geometry);
    if (label != nullptr) {
      const std::string style = "LABEL(f:\"Arial\",t:\"" + StyleText(*label) + "\",s:" + std::to_string(height) + "g)";
      OGR_F_SetStyleString(f, style.c_str());
    }
    const OGRErr written = OGR_L_CreateFeature(out, f);
    OGR_F_Destroy(f);
    return written == OGRERR_NONE;
  };
  for (const GisLayer& layer : layers) {
    for (const GisFeature& feature : layer.features) {
      bool ok = add(layer.name, GeometryOf(layer.kind, feature.vertices), nullptr);
      if (ok && !feature.label.empty() && !feature.vertices.empty()) {
        // A polygon's label stands at its first vertex's mean with the others: its centre of
        // vertices.
        Vertex at = feature.vertices[0];
        if (layer.kind != GeometryKind::Point) {
          const std::size_t n = feature.vertices.size() - (layer.kind == GeometryKind::Polygon ? 1 : 0);
          double sx = 0.0, sy = 0.0;
          for (std::size_t k = 0; k < n; ++k) {
            sx += feature.vertices[k].x;
            sy += feature.vertices[k].y;
          }
          at = {sx / static_cast<double>(n), sy / static_cast<double>(n)};
        }
        ok = add(layer.name + "_labels", GeometryOf(GeometryKind::Point, {at}), &feature.label);
      }
      if (!ok) {
        error = "A feature of " + layer.name + " cannot be written: " + messages.LastFailure();
        return false;
      }
      if (!steps.Next(layer.name)) return false;
    }
  }
  return true;
}

// A scratch folder beside the output, removed with what is left in it.
class ScratchFolder {
 public:
  explicit ScratchFolder(const fs::path& beside) {
    std::error_code ec;
    for (int attempt = 0; attempt < 1000; ++attempt) {
      fs::path candidate = beside / (".tessel-export-" + std::to_string(attempt));
      if (fs::create_directory(candidate, ec)) {
        path_ = candidate;
        return;
      }
    }
  }
  ~ScratchFolder() {
    std::error_code ec;
    if (!path_.empty()) fs::remove_all(path_, ec);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

}  // namespace

bool GdalAvailable() { return true; }

std::optional<GisCrs> CrsFromEpsg(int code, std::string& error) {
  GdalMessages messages;
  Srs srs;
  if (OSRImportFromEPSG(srs.h, code) != OGRERR_NONE) {
    error = "EPSG:" + std::to_string(code) + " is not a coordinate reference system GDAL knows.";
    return std::nullopt;
  }
  return Describe(srs.h, error);
}

std::optional<GisCrs> CrsFromPrjText(const std::string& text, std::string& error) {
  GdalMessages messages;
  Srs srs;
  const std::string wkt = Trim(text);
  if (wkt.empty() || OSRImportFromWkt(srs.h, std::vector<char*>{const_cast<char*>(wkt.c_str())}.data()) != OGRERR_NONE) {
    error = "It holds no coordinate reference system GDAL can read.";
    return std::nullopt;
  }
  // A system written by a GIS program often carries no code: the registry's system that GDAL
  // finds the same, when there is one, stands for it.
  if (OSRGetAuthorityCode(srs.h, nullptr) == nullptr) {
    int count = 0;
    int* confidence = nullptr;
    OGRSpatialReferenceH* matches = OSRFindMatches(srs.h, nullptr, &count, &confidence);
    std::optional<GisCrs> found;
    if (matches != nullptr && count > 0 && confidence != nullptr && confidence[0] >= 90) {
      found = Describe(matches[0], error);
    }
    OSRFreeSRSArray(matches);
    CPLFree(confidence);
    if (found) return found;
  }
  return Describe(srs.h, error);
}

std::optional<std::string> PrjTextOf(const GisCrs& crs, std::string& error) {
  GdalMessages messages;
  Srs srs;
  if (OSRImportFromWkt(srs.h, std::vector<char*>{const_cast<char*>(crs.wkt.c_str())}.data()) != OGRERR_NONE) {
    error = "The coordinate reference system cannot be read back.";
    return std::nullopt;
  }
  char* wkt = nullptr;
  const char* options[] = {"FORMAT=WKT1_ESRI", nullptr};
  if (OSRExportToWktEx(srs.h, &wkt, options) != OGRERR_NONE) {
    CPLFree(wkt);
    error = "The coordinate reference system has no form a .prj can hold.";
    return std::nullopt;
  }
  return TakeCplString(wkt);
}

std::vector<CrsEntry> StatePlaneZones() {
  GdalMessages messages;
  int count = 0;
  OSRCRSInfo** list = OSRGetCRSInfoListFromDatabase("EPSG", nullptr, &count);
  std::vector<CrsEntry> zones;
  if (list == nullptr) return zones;
  static constexpr std::string_view kDatums[] = {"NAD27 / ", "NAD83 / ", "NAD83(HARN) / ", "NAD83(NSRS2007) / ",
                                                 "NAD83(2011) / ", "NAD83(CORS96) / ", "NAD83(FBN) / ",
                                                 "NAD83(HARN Corrected) / ", "NAD83(PA11) / ", "NAD83(MA11) / "};
  // Projected systems of the United States on those datums that are not one of the national
  // or statewide grids beside the State Plane zones.
  static constexpr std::string_view kOthers[] = {"UTM", "BLM", "Albers", "Conus", "Centric", "GDL", "Lambert",
                                                 "Oblique Mercator", "Great Lakes", "Alaska Albers", "Wisconsin Transverse",
                                                 "Michigan Oblique", "Kansas LCC", "Oregon GIC", "Oregon LCC"};
  for (int i = 0; i < count; ++i) {
    const OSRCRSInfo* info = list[i];
    if (info == nullptr || info->eType != OSR_CRS_TYPE_PROJECTED || info->bDeprecated) continue;
    const std::string_view name = info->pszName ? info->pszName : "";
    const std::string_view area = info->pszAreaName ? info->pszAreaName : "";
    if (!area.starts_with("United States (USA)")) continue;
    if (std::none_of(std::begin(kDatums), std::end(kDatums), [&](std::string_view d) { return name.starts_with(d); })) continue;
    if (std::any_of(std::begin(kOthers), std::end(kOthers),
                    [&](std::string_view o) { return name.find(o) != std::string_view::npos; })) {
      continue;
    }
    const std::optional<int> code = ParseEpsgCode("EPSG:" + std::string(info->pszCode ? info->pszCode : ""));
    if (code) zones.push_back({*code, std::string(name)});
  }
  OSRDestroyCRSInfoList(list);
  std::sort(zones.begin(), zones.end(), [](const CrsEntry& a, const CrsEntry& b) {
    return std::tie(a.name, a.code) < std::tie(b.name, b.code);
  });
  return zones;
}

GisWriteResult WriteGisLayers(const std::vector<GisLayer>& layers, const std::string& out, GisFormat format,
                              const std::optional<GisCrs>& crs, Progress* progress) {
  GisWriteResult result;
  WriteSteps steps(progress, layers);
  GDALAllRegister();
  GdalMessages messages;

  Srs srs;
  if (crs && OSRImportFromWkt(srs.h, std::vector<char*>{const_cast<char*>(crs->wkt.c_str())}.data()) != OGRERR_NONE) {
    result.error = "The coordinate reference system " + crs->name + " cannot be used: " + messages.LastFailure();
    return result;
  }
  OGRSpatialReferenceH srsHandle = crs ? srs.h : nullptr;

  const fs::path target(out);
  const fs::path folder = target.parent_path().empty() ? fs::path(".") : target.parent_path();
  ScratchFolder scratch(folder);
  if (scratch.path().empty()) {
    result.error = "The folder " + folder.string() + " cannot be written to, so " + out + " cannot be written.";
    return result;
  }

  std::vector<std::string> names;
  for (const GisLayer& layer : layers) names.push_back(layer.name);
  const std::vector<std::string> files = GisOutputFiles(out, format, names);

  // Each output file with the layers it holds.
  std::vector<std::pair<std::string, std::vector<const GisLayer*>>> plan;
  if (files.size() == 1 && (format == GisFormat::GeoPackage || format == GisFormat::Dxf || layers.size() <= 1)) {
    std::vector<const GisLayer*> all;
    for (const GisLayer& layer : layers) all.push_back(&layer);
    plan.emplace_back(files[0], all);
  } else {
    for (std::size_t k = 0; k < layers.size(); ++k) plan.emplace_back(files[k], std::vector<const GisLayer*>{&layers[k]});
  }

  // The files are written in the scratch folder and moved into place only when whole: SQLite
  // need neither keep a journal nor wait for the disk on the way.
  const ScopedConfig journal("OGR_SQLITE_JOURNAL", "OFF");
  const ScopedConfig synchronous("OGR_SQLITE_SYNCHRONOUS", "OFF");
  for (const auto& [file, held] : plan) {
    const std::string name = fs::path(file).filename().string();
    const std::string scratchFile = (scratch.path() / name).string();
    Dataset ds(format, scratchFile);
    if (ds.get() == nullptr) {
      result.error = file + " cannot be written: " + messages.LastFailure();
      return result;
    }
    std::string error;
    bool ok = true;
    if (format == GisFormat::Dxf) {
      std::vector<GisLayer> copies;
      for (const GisLayer* layer : held) copies.push_back(*layer);
      ok = WriteDxf(ds.get(), copies, messages, steps, error);
    } else {
      for (const GisLayer* layer : held) {
        // A layer of a Shapefile is named by its file.
        GisLayer named = *layer;
        if (format == GisFormat::Shapefile) named.name = fs::path(file).stem().string();
        ok = WriteLayer(ds.get(), named, format, srsHandle, messages, steps, error);
        if (!ok) break;
      }
    }
    if (ok && !ds.Close(messages)) {
      ok = false;
      error = messages.LastFailure();
    }
    if (steps.cancelled()) {
      result.cancelled = true;
      return result;
    }
    if (!ok) {
      result.error = file + " cannot be written: " + error;
      return result;
    }
  }
  // The last moment a stop leaves everything as it was.
  if (CancelAsked(progress)) {
    result.cancelled = true;
    return result;
  }

  // Every file is whole: move them to their names, replacing older ones.
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(scratch.path(), ec)) {
    const fs::path to = folder / entry.path().filename();
    fs::rename(entry.path(), to, ec);
    if (ec) {
      result.error = to.string() + " cannot be written: " + ec.message();
      return result;
    }
  }
  if (ec) {
    result.error = out + " cannot be written: " + ec.message();
    return result;
  }
  result.files = files;
  result.warnings = messages.warnings;
  result.ok = true;
  return result;
}

#endif

}  // namespace tessel
