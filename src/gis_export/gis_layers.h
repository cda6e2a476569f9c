#pragma once
// The layers of a job as a GIS sees them: each a name, a kind of geometry, typed fields and its
// features, built from the stores without any file format in mind. Geometry is in job units.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "model/session.h"

namespace tessel {

enum class GeometryKind { Point, LineString, Polygon };
enum class FieldType { Integer, Real, Text };

struct FieldDef {
  std::string name;  // ten characters at most, so that a Shapefile keeps it whole
  FieldType type = FieldType::Text;
};

// No value (null), an integer, a real or a text.
using FieldValue = std::variant<std::monostate, std::int64_t, double, std::string>;

struct Vertex {
  double x = 0.0;
  double y = 0.0;
};

struct GisFeature {
  // A point has one vertex, a line two or more, a polygon's ring three or more and closed.
  std::vector<Vertex> vertices;
  std::vector<FieldValue> values;  // one for each field of the layer, in order
  // The text a drawing shows at a point (its identifier, the parcel's text, the polygon's tag);
  // empty for none.
  std::string label;
};

struct GisLayer {
  std::string name;
  GeometryKind kind = GeometryKind::Point;
  std::vector<FieldDef> fields;
  std::vector<GisFeature> features;
};

// The layers in the order they are written.
inline constexpr std::string_view kGisLayerNames[] = {"points",       "network_lines", "chains",
                                                      "record_lines", "parcels",       "parcel_rings",
                                                      "raw_polygons", "cama_links"};
bool IsGisLayerName(std::string_view name);

// One link record of the CAMA link file: the parcel's area point (as the file writes it) and
// chain, its assessor geocode, and whether it is linked, at its place in the job.
struct CamaLinkRecord {
  std::string point;
  std::string chain;
  std::string geocode;
  bool linked = false;
  double x = 0.0;
  double y = 0.0;
};

struct GisBuildOptions {
  // The layers asked for; empty for all.
  std::vector<std::string> layers;
  // The link records, when the job's link file has been read; without them there is no
  // cama_links layer.
  std::optional<std::vector<CamaLinkRecord>> camaLinks;
};

struct GisBuildResult {
  std::vector<GisLayer> layers;
  // What could not be written as it stands: unknown points, features without geometry. Past
  // twenty of one layer the rest of that layer are counted in one line.
  std::vector<std::string> warnings;
};

// Builds the layers asked for from the stores. Never fails: what cannot be placed is left out and
// told in the warnings.
GisBuildResult BuildGisLayers(const Session& session, const GisBuildOptions& options);

enum class PointKindCode : std::uint8_t { Coordinate, Control, Temporary };
// The kind of each entry 0..PointCount of the store: Temporary for a point the record reader
// placed, Control for the point a control station's identifier finds, Coordinate for the others.
std::vector<PointKindCode> PointKinds(const Session& session);
const char* PointKindText(PointKindCode kind);

// The distance unit of a survey by its "DU:" caption: "chains", "feet", "metres", or empty when
// it has none (or for survey 0, no survey).
std::string SurveyDistanceUnits(const SurveyStore& surveys, int survey);

}  // namespace tessel
