#pragma once
// What every writer through GDAL shares: GDAL's messages kept instead of printed, texts in UTF-8,
// geometries and fields of the layers in OGR's terms. Only with GDAL.

#ifdef TESSEL_WITH_GDAL

#include <cpl_error.h>
#include <ogr_api.h>

#include <optional>
#include <string>
#include <vector>

#include "gis_export/gis_layers.h"

namespace tessel {

// GDAL's messages of one operation, kept instead of printed.
class GdalMessages {
 public:
  GdalMessages();
  ~GdalMessages();
  GdalMessages(const GdalMessages&) = delete;
  GdalMessages& operator=(const GdalMessages&) = delete;

  std::vector<std::string> failures;
  std::vector<std::string> warnings;

  std::string LastFailure() const { return failures.empty() ? std::string() : failures.back(); }

 private:
  static void CPL_STDCALL Handler(CPLErr level, CPLErrorNum, const char* text);
};

// A GDAL configuration option set for this thread while the object lives, then put back.
class ScopedConfig {
 public:
  ScopedConfig(const char* key, const char* value);
  ~ScopedConfig();
  ScopedConfig(const ScopedConfig&) = delete;
  ScopedConfig& operator=(const ScopedConfig&) = delete;

 private:
  std::string key_;
  std::optional<std::string> was_;
};

// File contents are single-byte text; GDAL takes UTF-8. Each byte stands for the character of
// the same number.
std::string Utf8(const std::string& bytes);

OGRwkbGeometryType WkbOf(GeometryKind kind);
OGRGeometryH GeometryOf(GeometryKind kind, const std::vector<Vertex>& vertices);
OGRFieldType OgrTypeOf(FieldType type);

// Sets the feature's values: value k into the field columns[k].
void SetFeatureValues(OGRFeatureH f, const std::vector<int>& columns, const GisFeature& feature);

}  // namespace tessel

#endif
