#include "gis_export/gdal_support.h"

#ifdef TESSEL_WITH_GDAL

#include <cpl_conv.h>

#include <cstdint>
#include <variant>

namespace tessel {

GdalMessages::GdalMessages() { CPLPushErrorHandlerEx(&GdalMessages::Handler, this); }
GdalMessages::~GdalMessages() { CPLPopErrorHandler(); }

void CPL_STDCALL GdalMessages::Handler(CPLErr level, CPLErrorNum, const char* text) {
  auto* self = static_cast<GdalMessages*>(CPLGetErrorHandlerUserData());
  if (self == nullptr) return;
  if (level == CE_Failure || level == CE_Fatal) self->failures.emplace_back(text ? text : "");
  else if (level == CE_Warning) self->warnings.emplace_back(text ? text : "");
}

ScopedConfig::ScopedConfig(const char* key, const char* value) : key_(key) {
  if (const char* was = CPLGetThreadLocalConfigOption(key, nullptr); was != nullptr) was_ = was;
  CPLSetThreadLocalConfigOption(key, value);
}

ScopedConfig::~ScopedConfig() { CPLSetThreadLocalConfigOption(key_.c_str(), was_ ? was_->c_str() : nullptr); }

std::string Utf8(const std::string& bytes) {
  std::string out;
  out.reserve(bytes.size() + 8);
  for (const char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    if (c < 0x80) {
      out.push_back(ch);
    } else {
      out.push_back(static_cast<char>(0xC0 | (c >> 6)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }
  return out;
}

OGRwkbGeometryType WkbOf(GeometryKind kind) {
  switch (kind) {
    case GeometryKind::Point: return wkbPoint;
    case GeometryKind::LineString: return wkbLineString;
    case GeometryKind::Polygon: return wkbPolygon;
  }
  return wkbUnknown;
}

OGRGeometryH GeometryOf(GeometryKind kind, const std::vector<Vertex>& vertices) {
  if (kind == GeometryKind::Point) {
    OGRGeometryH g = OGR_G_CreateGeometry(wkbPoint);
    if (!vertices.empty()) OGR_G_SetPoint_2D(g, 0, vertices[0].x, vertices[0].y);
    return g;
  }
  if (kind == GeometryKind::LineString) {
    OGRGeometryH g = OGR_G_CreateGeometry(wkbLineString);
    OGR_G_SetPointCount(g, static_cast<int>(vertices.size()));
    for (std::size_t k = 0; k < vertices.size(); ++k) {
      OGR_G_SetPoint_2D(g, static_cast<int>(k), vertices[k].x, vertices[k].y);
    }
    return g;
  }
  OGRGeometryH ring = OGR_G_CreateGeometry(wkbLinearRing);
  OGR_G_SetPointCount(ring, static_cast<int>(vertices.size()));
  for (std::size_t k = 0; k < vertices.size(); ++k) {
    OGR_G_SetPoint_2D(ring, static_cast<int>(k), vertices[k].x, vertices[k].y);
  }
  OGRGeometryH g = OGR_G_CreateGeometry(wkbPolygon);
  OGR_G_AddGeometryDirectly(g, ring);
  return g;
}

OGRFieldType OgrTypeOf(FieldType type) {
  switch (type) {
    case FieldType::Integer: return OFTInteger64;
    case FieldType::Real: return OFTReal;
    case FieldType::Text: return OFTString;
  }
  return OFTString;
}

void SetFeatureValues(OGRFeatureH f, const std::vector<int>& columns, const GisFeature& feature) {
  for (std::size_t k = 0; k < columns.size() && k < feature.values.size(); ++k) {
    const int index = columns[k];
    const FieldValue& value = feature.values[k];
    if (const auto* i = std::get_if<std::int64_t>(&value)) OGR_F_SetFieldInteger64(f, index, *i);
    else if (const auto* d = std::get_if<double>(&value)) OGR_F_SetFieldDouble(f, index, *d);
    else if (const auto* t = std::get_if<std::string>(&value)) OGR_F_SetFieldString(f, index, Utf8(*t).c_str());
    else OGR_F_SetFieldNull(f, index);
  }
}

}  // namespace tessel

#endif
