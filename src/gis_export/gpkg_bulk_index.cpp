#include "gis_export/gpkg_bulk_index.h"

#ifdef TESSEL_WITH_GDAL

#include <ogr_api.h>

namespace tessel {

namespace {

std::string SqlString(const std::string& text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'') out.push_back('\'');
    out.push_back(c);
  }
  return out + "'";
}

std::string Ident(const std::string& name) {
  std::string out = "\"";
  for (const char c : name) {
    if (c == '"') out.push_back('"');
    out.push_back(c);
  }
  return out + "\"";
}

std::string Hex(const std::string& bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string out = "X'";
  out.reserve(bytes.size() * 2 + 3);
  for (const char c : bytes) {
    const auto b = static_cast<unsigned char>(c);
    out.push_back(kDigits[b >> 4]);
    out.push_back(kDigits[b & 0x0F]);
  }
  return out + "'";
}

// The rows of a query, each as texts.
std::vector<std::vector<std::string>> Rows(GDALDatasetH ds, const std::string& sql) {
  std::vector<std::vector<std::string>> rows;
  OGRLayerH result = GDALDatasetExecuteSQL(ds, sql.c_str(), nullptr, nullptr);
  if (result == nullptr) return rows;
  while (OGRFeatureH f = OGR_L_GetNextFeature(result)) {
    std::vector<std::string> row;
    for (int k = 0; k < OGR_F_GetFieldCount(f); ++k) row.emplace_back(OGR_F_GetFieldAsString(f, k));
    rows.push_back(std::move(row));
    OGR_F_Destroy(f);
  }
  GDALDatasetReleaseResultSet(ds, result);
  return rows;
}

}  // namespace

bool GpkgBulkIndex::Run(const std::string& sql, GdalMessages& messages) {
  const std::size_t before = messages.failures.size();
  OGRLayerH result = GDALDatasetExecuteSQL(ds_, sql.c_str(), nullptr, nullptr);
  if (result != nullptr) GDALDatasetReleaseResultSet(ds_, result);
  return messages.failures.size() == before;
}

bool GpkgBulkIndex::Begin(GDALDatasetH ds, OGRLayerH layer, GdalMessages& messages, std::string& error) {
  ds_ = ds;
  const std::string table = OGR_L_GetName(layer);
  const std::string column = OGR_L_GetGeometryColumn(layer);
  index_ = "rtree_" + table + "_" + column;
  // The extensions table, which GDAL makes only when a layer first needs one.
  if (!Run("CREATE TABLE IF NOT EXISTS gpkg_extensions (table_name TEXT, column_name TEXT, extension_name TEXT NOT "
           "NULL, definition TEXT NOT NULL, scope TEXT NOT NULL, CONSTRAINT ge_tce UNIQUE (table_name, column_name, "
           "extension_name))",
           messages) ||
      !Run("SELECT gpkgAddSpatialIndex(" + SqlString(table) + ", " + SqlString(column) + ")", messages)) {
    error = "its spatial index cannot be made: " + messages.LastFailure();
    return false;
  }
  for (const auto& row : Rows(ds, "SELECT name, sql FROM sqlite_master WHERE type = 'trigger' AND tbl_name = " +
                                      SqlString(table) + " AND name LIKE " + SqlString(index_ + "_%"))) {
    if (row.size() == 2) triggers_.emplace_back(row[0], row[1]);
  }
  if (triggers_.empty()) {
    error = "its spatial index has no triggers";
    return false;
  }
  for (const auto& [name, sql] : triggers_) {
    if (!Run("DROP TRIGGER " + Ident(name), messages)) {
      error = "its spatial index cannot be filled: " + messages.LastFailure();
      return false;
    }
  }
  return true;
}

void GpkgBulkIndex::Add(std::int64_t fid, const std::vector<Vertex>& vertices) {
  if (!vertices.empty()) entries_.push_back(RtreeEntryOf(fid, vertices));
}

bool GpkgBulkIndex::Finish(GdalMessages& messages, std::string& error) {
  const auto size = Rows(ds_, "SELECT length(data) FROM " + Ident(index_ + "_node") + " WHERE nodeno = 1");
  const long long nodeSize = size.empty() || size[0].empty() ? 0 : std::atoll(size[0][0].c_str());
  if (nodeSize < 100) {
    error = "its spatial index has no root";
    return false;
  }
  const RtreeRows rows = PackRtree(std::move(entries_), static_cast<std::size_t>(nodeSize));
  bool ok = rows.nodes.empty() || Run("DELETE FROM " + Ident(index_ + "_node"), messages);
  for (const auto& [number, bytes] : rows.nodes) {
    if (!ok) break;
    ok = Run("INSERT INTO " + Ident(index_ + "_node") + " VALUES (" + std::to_string(number) + ", " + Hex(bytes) + ")",
             messages);
  }
  // Pairs in statements of a thousand rows.
  auto pairs = [&](const std::string& suffix, const std::vector<std::pair<std::int64_t, std::int64_t>>& values) {
    for (std::size_t start = 0; ok && start < values.size(); start += 1000) {
      std::string sql = "INSERT INTO " + Ident(index_ + suffix) + " VALUES ";
      for (std::size_t k = start; k < std::min(values.size(), start + 1000); ++k) {
        sql += (k == start ? "(" : ",(") + std::to_string(values[k].first) + "," + std::to_string(values[k].second) + ")";
      }
      ok = Run(sql, messages);
    }
  };
  pairs("_rowid", rows.rowids);
  pairs("_parent", rows.parents);
  for (const auto& [name, sql] : triggers_) ok = ok && Run(sql, messages);
  if (!ok) error = "its spatial index cannot be written: " + messages.LastFailure();
  return ok;
}

}  // namespace tessel

#endif
