#include "db_export/db_writer.h"

#include <filesystem>
#include <system_error>

#include "db_export/db_target.h"

#ifdef TESSEL_WITH_GDAL
#include <cpl_conv.h>
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include "gis_export/gdal_support.h"
#endif

namespace tessel {

#ifndef TESSEL_WITH_GDAL

GisWriteResult ReplaceTownship(const std::vector<GisLayer>&, const std::string&, const std::string&,
                               const std::optional<GisCrs>&, SpatialIndex) {
  GisWriteResult result;
  result.error = kNoGdalText;
  return result;
}

std::string MakeMissingSpatialIndexes(const std::string&, const std::vector<std::string>&) { return kNoGdalText; }

#else

namespace {

// The key of the advisory lock under which an export makes tables: "TSSL". Townships are locked
// under the key after it, with their names' hashes.
constexpr const char* kTableLock = "SELECT pg_advisory_xact_lock(1414746956)";

class OpenDataset {
 public:
  explicit OpenDataset(GDALDatasetH h) : h_(h) {}
  ~OpenDataset() {
    if (h_ != nullptr) GDALClose(h_);
  }
  OpenDataset(const OpenDataset&) = delete;
  OpenDataset& operator=(const OpenDataset&) = delete;
  GDALDatasetH get() const { return h_; }

 private:
  GDALDatasetH h_;
};

// Runs a statement that returns no rows we need.
bool Execute(GDALDatasetH ds, const std::string& sql, GdalMessages& messages) {
  const std::size_t before = messages.failures.size();
  OGRLayerH rows = GDALDatasetExecuteSQL(ds, sql.c_str(), nullptr, nullptr);
  if (rows != nullptr) GDALDatasetReleaseResultSet(ds, rows);
  return messages.failures.size() == before;
}

// The number a query of one row and one column answers; nullopt when it fails.
std::optional<long long> Count(GDALDatasetH ds, const std::string& sql) {
  OGRLayerH rows = GDALDatasetExecuteSQL(ds, sql.c_str(), nullptr, nullptr);
  if (rows == nullptr) return std::nullopt;
  std::optional<long long> value;
  if (OGRFeatureH f = OGR_L_GetNextFeature(rows); f != nullptr) {
    value = OGR_F_GetFieldAsInteger64(f, 0);
    OGR_F_Destroy(f);
  }
  GDALDatasetReleaseResultSet(ds, rows);
  return value;
}

std::string Quoted(const std::string& name) { return "\"" + name + "\""; }

// The layer's table, made when missing (`made` then set); nullptr with `error` set when it
// cannot be.
OGRLayerH TableOf(GDALDatasetH ds, bool database, const GisLayer& layer, OGRSpatialReferenceH srs,
                  SpatialIndex spatialIndex, bool& made, GdalMessages& messages, std::string& error) {
  OGRLayerH table = GDALDatasetGetLayerByName(ds, layer.name.c_str());
  if (table != nullptr) {
    // The rows of a table share its system: a township in another would land in the wrong place.
    OGRSpatialReferenceH has = OGR_L_GetSpatialRef(table);
    if (srs != nullptr && has != nullptr && !OSRIsSame(has, srs)) {
      const char* name = OSRGetName(has);
      error = std::string("the table ") + layer.name + " is in " + (name ? name : "another system") + ", not in " +
              (OSRGetName(srs) ? OSRGetName(srs) : "the system asked for");
      return nullptr;
    }
    return table;
  }
  messages.failures.clear();
  const char* index = !database ? "SPATIAL_INDEX=YES"
                      : spatialIndex == SpatialIndex::Later ? "SPATIAL_INDEX=NONE"
                                                            : "SPATIAL_INDEX=GIST";
  const char* options[] = {"GEOMETRY_NAME=geom", "FID=fid", index, nullptr};
  table = GDALDatasetCreateLayer(ds, layer.name.c_str(), srs, WkbOf(layer.kind), const_cast<char**>(options));
  if (table == nullptr) {
    error = "the table " + layer.name + " cannot be made: " + OneLineDbError(messages.LastFailure());
    return nullptr;
  }
  std::vector<FieldDef> fields{{kTownshipColumn, FieldType::Text}};
  fields.insert(fields.end(), layer.fields.begin(), layer.fields.end());
  for (const FieldDef& field : fields) {
    OGRFieldDefnH def = OGR_Fld_Create(field.name.c_str(), OgrTypeOf(field.type));
    const OGRErr added = OGR_L_CreateField(table, def, TRUE);
    OGR_Fld_Destroy(def);
    if (added != OGRERR_NONE) {
      error = "the column " + field.name + " of " + layer.name + " cannot be made: " +
              OneLineDbError(messages.LastFailure());
      return nullptr;
    }
  }
  made = true;
  return table;
}

// The column of each of the layer's fields in the table; false, with `error` set, when the table
// lacks one (a table of the same name that Tessel did not make, or made for other fields).
bool ColumnsOf(OGRLayerH table, const GisLayer& layer, int& townshipColumn, std::vector<int>& columns,
               std::string& error) {
  OGRFeatureDefnH defn = OGR_L_GetLayerDefn(table);
  townshipColumn = OGR_FD_GetFieldIndex(defn, kTownshipColumn);
  if (townshipColumn < 0) {
    error = "the table " + layer.name + " has no " + kTownshipColumn + " column, so Tessel did not make it; " +
            "export to another schema or database";
    return false;
  }
  columns.clear();
  for (const FieldDef& field : layer.fields) {
    const int column = OGR_FD_GetFieldIndex(defn, field.name.c_str());
    if (column < 0) {
      error = "the table " + layer.name + " has no column " + field.name;
      return false;
    }
    columns.push_back(column);
  }
  return true;
}

bool WriteFeatures(OGRLayerH table, const GisLayer& layer, const std::string& township, GdalMessages& messages,
                   std::string& error) {
  int townshipColumn = -1;
  std::vector<int> columns;
  if (!ColumnsOf(table, layer, townshipColumn, columns, error)) return false;
  OGRFeatureDefnH defn = OGR_L_GetLayerDefn(table);
  const std::string name = Utf8(township);
  for (const GisFeature& feature : layer.features) {
    OGRFeatureH f = OGR_F_Create(defn);
    OGR_F_SetFieldString(f, townshipColumn, name.c_str());
    SetFeatureValues(f, columns, feature);
    OGR_F_SetGeometryDirectly(f, GeometryOf(layer.kind, feature.vertices));
    const OGRErr written = OGR_L_CreateFeature(table, f);
    OGR_F_Destroy(f);
    if (written != OGRERR_NONE) {
      error = "a feature of " + layer.name + " cannot be written: " + OneLineDbError(messages.LastFailure());
      return false;
    }
  }
  return true;
}

GDALDatasetH Open(const std::string& target, bool database, GdalMessages& messages, std::string& error) {
  GDALDatasetH ds = nullptr;
  if (database) {
    const char* drivers[] = {"PostgreSQL", nullptr};
    ds = GDALOpenEx(target.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, drivers, nullptr, nullptr);
  } else {
    std::error_code ec;
    if (std::filesystem::exists(target, ec)) {
      const char* drivers[] = {"GPKG", nullptr};
      ds = GDALOpenEx(target.c_str(), GDAL_OF_VECTOR | GDAL_OF_UPDATE, drivers, nullptr, nullptr);
    } else if (GDALDriverH driver = GDALGetDriverByName("GPKG"); driver != nullptr) {
      ds = GDALCreate(driver, target.c_str(), 0, 0, 0, GDT_Unknown, nullptr);
    }
  }
  if (ds == nullptr) {
    error = OneLineDbError(messages.LastFailure().empty() ? "it cannot be opened" : messages.LastFailure());
  }
  return ds;
}

}  // namespace

GisWriteResult ReplaceTownship(const std::vector<GisLayer>& layers, const std::string& target,
                               const std::string& township, const std::optional<GisCrs>& crs,
                               SpatialIndex spatialIndex) {
  GisWriteResult result;
  GDALAllRegister();
  GdalMessages messages;
  // GDAL's PostgreSQL driver writes the features with COPY rather than one INSERT each.
  const ScopedConfig copy("PG_USE_COPY", "YES");
  const bool database = IsDatabaseTarget(target);
  const std::string shown = database ? RedactedTarget(target) : target;

  OGRSpatialReferenceH srs = nullptr;
  struct SrsHolder {
    OGRSpatialReferenceH h = nullptr;
    ~SrsHolder() {
      if (h != nullptr) OSRDestroySpatialReference(h);
    }
  } holder;
  if (crs) {
    holder.h = OSRNewSpatialReference(nullptr);
    OSRSetAxisMappingStrategy(holder.h, OAMS_TRADITIONAL_GIS_ORDER);
    if (OSRImportFromWkt(holder.h, std::vector<char*>{const_cast<char*>(crs->wkt.c_str())}.data()) != OGRERR_NONE) {
      result.error = "The coordinate reference system " + crs->name + " cannot be used.";
      return result;
    }
    srs = holder.h;
  }

  std::string error;
  OpenDataset ds(Open(target, database, messages, error));
  if (ds.get() == nullptr) {
    result.error = shown + ": " + error;
    return result;
  }
  if (GDALDatasetStartTransaction(ds.get(), FALSE) != OGRERR_NONE) {
    result.error = shown + ": no transaction can be started: " + OneLineDbError(messages.LastFailure());
    return result;
  }
  // From here on a failure rolls the township back as it stood.
  auto fail = [&](const std::string& why) {
    GDALDatasetRollbackTransaction(ds.get());
    result.error = shown + ": " + township + " was not written, " + why;
    return result;
  };
  // Locks of the database are held to the end of the transaction.
  if (database) {
    // Two exports of one township take turns: the second removes the rows the first wrote,
    // rather than both removing the old ones and leaving two copies.
    if (!Execute(ds.get(), "SELECT pg_advisory_xact_lock(1414746957, hashtext(" + SqlText(Utf8(township)) + "))",
                 messages)) {
      return fail("the database refused its lock: " + OneLineDbError(messages.LastFailure()));
    }
    // Tables are made under a lock: an export that finds one missing waits for another export
    // making it, then finds it made. Exports into tables that all stand run side by side. Which
    // are missing is asked of the database itself: GDAL remembers a table it did not find.
    std::string names;
    for (const GisLayer& layer : layers) names += std::string(names.empty() ? "" : ",") + "(" + SqlText(layer.name) + ")";
    const std::optional<long long> missing = Count(
        ds.get(), "SELECT count(*) FROM (VALUES " + names + ") AS v(t) WHERE to_regclass(quote_ident(t)) IS NULL");
    if (!missing) return fail("the database cannot be read: " + OneLineDbError(messages.LastFailure()));
    if (*missing > 0 && !Execute(ds.get(), kTableLock, messages)) {
      return fail("the database refused its lock: " + OneLineDbError(messages.LastFailure()));
    }
  }
  for (const GisLayer& layer : layers) {
    bool made = false;
    OGRLayerH table = TableOf(ds.get(), database, layer, srs, spatialIndex, made, messages, error);
    if (table == nullptr) return fail(error);
    const std::string tableName = Quoted(OGR_L_GetName(table));
    // The township's index comes with the table: CREATE INDEX locks the table against writers to
    // the end of the transaction even when the index stands, which would make exports of other
    // townships wait for each other.
    if (made && !Execute(ds.get(),
                         "CREATE INDEX " + Quoted(layer.name + "_township") + " ON " + tableName + " (" +
                             kTownshipColumn + ")",
                         messages)) {
      return fail("the table " + layer.name + " cannot be indexed: " + OneLineDbError(messages.LastFailure()));
    }
    if (!Execute(ds.get(), "DELETE FROM " + tableName + " WHERE " + kTownshipColumn + " = " + SqlText(Utf8(township)),
                 messages)) {
      return fail("the old rows of " + layer.name + " cannot be removed: " + OneLineDbError(messages.LastFailure()));
    }
    if (!WriteFeatures(table, layer, township, messages, error)) return fail(error);
  }
  if (GDALDatasetCommitTransaction(ds.get()) != OGRERR_NONE) {
    result.error = shown + ": " + township + " was not written, " + OneLineDbError(messages.LastFailure());
    return result;
  }
  result.files.push_back(shown);
  result.warnings = messages.warnings;
  result.ok = true;
  return result;
}

std::string MakeMissingSpatialIndexes(const std::string& target, const std::vector<std::string>& tables) {
  GDALAllRegister();
  GdalMessages messages;
  std::string error;
  OpenDataset ds(Open(target, true, messages, error));
  if (ds.get() == nullptr) return RedactedTarget(target) + ": " + error;
  for (const std::string& table : tables) {
    // -1 for a table the export did not make (a layer without features in every township).
    const std::string regclass = "to_regclass(" + SqlText(Quoted(table)) + ")";
    const std::optional<long long> indexes =
        Count(ds.get(), "SELECT CASE WHEN " + regclass + " IS NULL THEN -1 ELSE (SELECT count(*) FROM pg_index i JOIN "
                        "pg_class c ON c.oid = i.indexrelid JOIN pg_am a ON a.oid = c.relam WHERE i.indrelid = " +
                            regclass + " AND a.amname = 'gist') END");
    if (!indexes) {
      return RedactedTarget(target) + ": the table " + table + " cannot be read: " + OneLineDbError(messages.LastFailure());
    }
    if (*indexes != 0) continue;
    if (!Execute(ds.get(),
                 "CREATE INDEX " + Quoted(table + "_geom_geom_idx") + " ON " + Quoted(table) + " USING GIST (geom)",
                 messages)) {
      return RedactedTarget(target) + ": the table " + table +
             " cannot be indexed: " + OneLineDbError(messages.LastFailure());
    }
  }
  return {};
}

#endif

}  // namespace tessel
