#include "gis_export/gis_layers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <set>
#include <tuple>

#include "model/text.h"
#include "parcels/parcel_attribute_fields.h"
#include "parcels/ring_ids.h"

namespace tessel {

namespace {

// Past this many warnings of one layer the rest are only counted, so that one layer's flood
// does not hide another's.
constexpr std::size_t kWarningsShown = 20;

class Warnings {
 public:
  explicit Warnings(std::vector<std::string>& out) : out_(out) {}
  // The warnings from here on are of this layer.
  void Layer(std::string name) {
    Finish();
    layer_ = std::move(name);
  }
  void Add(std::string text) {
    if (shown_ < kWarningsShown) {
      out_.push_back(std::move(text));
      ++shown_;
    } else {
      ++more_;
    }
  }
  void Finish() {
    if (more_ > 0) out_.push_back("... and " + std::to_string(more_) + " more in " + layer_ + ".");
    shown_ = 0;
    more_ = 0;
  }

 private:
  std::vector<std::string>& out_;
  std::string layer_;
  std::size_t shown_ = 0;
  std::size_t more_ = 0;
};

// A store's count, kept within its table: a count past the bound reaches no further entries.
int Upto(int count, int bound) { return std::min(count, bound); }

FieldValue Text(std::string text) { return FieldValue(std::move(text)); }
FieldValue Int(std::int64_t value) { return FieldValue(value); }
FieldValue Real(double value) { return std::isfinite(value) ? FieldValue(value) : FieldValue(); }

struct Builder {
  const Session& s;
  Warnings& warnings;
  std::vector<PointKindCode> kinds;

  int PointCount() const { return std::max<int>(0, s.points.PointCount()); }

  // A point index of a store whose coordinates can be written: within the store and finite.
  bool Placeable(int index) const {
    if (index < 1 || index > PointCount()) return false;
    return std::isfinite(s.points.PointX(index)) && std::isfinite(s.points.PointY(index));
  }
  Vertex At(int index) const { return {s.points.PointX(index), s.points.PointY(index)}; }
  std::string IdAt(int index) const { return index >= 1 && index <= PointCount() ? s.points.PointIds(index) : ""; }

  GisLayer Points() {
    GisLayer layer{"points", GeometryKind::Point,
                   {{"point_id", FieldType::Text}, {"easting", FieldType::Real}, {"northing", FieldType::Real},
                    {"kind", FieldType::Text}},
                   {}};
    for (int i = 1; i <= PointCount(); ++i) {
      const std::string& id = s.points.PointIds(i);
      // The empty entry the .LSA point reader leaves at its end is no point.
      if (id.empty()) continue;
      if (!Placeable(i)) {
        warnings.Add("Point " + id + " has no finite coordinates; not written.");
        continue;
      }
      layer.features.push_back(GisFeature{{At(i)},
                                          {Text(id), Real(s.points.PointX(i)), Real(s.points.PointY(i)),
                                           Text(PointKindText(kinds[static_cast<std::size_t>(i)]))},
                                          RTrim(id)});
    }
    return layer;
  }

  // A line between two point indexes; false, with a warning, when an end cannot be placed.
  bool Segment(const LineEnds& ends, const std::string& what, GisFeature& feature) {
    for (const int end : {ends.from, ends.to}) {
      if (!Placeable(end)) {
        const std::string id = IdAt(end);
        warnings.Add(what + ": " + (id.empty() ? std::string("an end has no point") : "point " + id + " cannot be placed") +
                     "; not written.");
        return false;
      }
    }
    feature.vertices = {At(ends.from), At(ends.to)};
    return true;
  }

  GisLayer NetworkLines() {
    GisLayer layer{"network_lines", GeometryKind::LineString,
                   {{"line", FieldType::Integer}, {"from_id", FieldType::Text}, {"to_id", FieldType::Text}},
                   {}};
    for (int i = 1; i < Upto(s.lsa.LsaLineCount, LsaLineStore::kBound + 1); ++i) {
      const LineEnds& ends = s.lsa.LsaLineEnds.get(i);
      GisFeature f;
      if (!Segment(ends, "Network line " + std::to_string(i), f)) continue;
      f.values = {Int(i), Text(IdAt(ends.from)), Text(IdAt(ends.to))};
      layer.features.push_back(std::move(f));
    }
    return layer;
  }

  // The ends of a segment by their coordinates, in either direction.
  static std::array<double, 4> SegmentKey(const Vertex& a, const Vertex& b) {
    if (std::tie(a.x, a.y) <= std::tie(b.x, b.y)) return {a.x, a.y, b.x, b.y};
    return {b.x, b.y, a.x, a.y};
  }

  GisLayer Chains() {
    GisLayer layer{"chains", GeometryKind::LineString,
                   {{"segment", FieldType::Integer}, {"from_id", FieldType::Text}, {"to_id", FieldType::Text}},
                   {}};
    // The hidden lines of .not rub their segments out of the drawing; they are left out here.
    std::set<std::array<double, 4>> hidden;
    for (int i = 1; i <= Upto(s.notes.NoteLineCount, NoteLineStore::kBound); ++i) {
      const LineEnds& e = s.notes.NoteLineEnds.get(i);
      if (Placeable(e.from) && Placeable(e.to)) hidden.insert(SegmentKey(At(e.from), At(e.to)));
    }
    for (int i = 1; i <= Upto(s.lxn.LxnSegmentCount, LxnLineStore::kSegmentBound); ++i) {
      const LineEnds& ends = s.lxn.LxnLineEnds.get(i);
      GisFeature f;
      if (!Segment(ends, "Chain segment " + std::to_string(i), f)) continue;
      if (hidden.count(SegmentKey(f.vertices[0], f.vertices[1])) != 0) continue;
      f.values = {Int(i), Text(IdAt(ends.from)), Text(IdAt(ends.to))};
      layer.features.push_back(std::move(f));
    }
    return layer;
  }

  GisLayer RecordLines() {
    GisLayer layer{"record_lines", GeometryKind::LineString,
                   {{"line", FieldType::Integer},
                    {"from_id", FieldType::Text},
                    {"to_id", FieldType::Text},
                    {"distance", FieldType::Real},
                    {"quadrant", FieldType::Integer},
                    {"bearing", FieldType::Text},
                    {"bearing_dd", FieldType::Real},
                    {"azimuth_dd", FieldType::Real},
                    {"survey", FieldType::Text},
                    {"dist_units", FieldType::Text}},
                   {}};
    std::vector<std::string> units(static_cast<std::size_t>(std::max(0, Upto(s.surveys.SurveyCount, SurveyStore::kBound))) + 1);
    for (int k = 1; k <= Upto(s.surveys.SurveyCount, SurveyStore::kBound); ++k) {
      units[static_cast<std::size_t>(k)] = SurveyDistanceUnits(s.surveys, k);
    }
    for (int i = 1; i <= Upto(s.raw.RawLineCount, RawLineStore::kBound); ++i) {
      const RawFields& f = s.raw.RawLineFields.get(i);
      const RawEnds& e = s.raw.RawLineEnds.get(i);
      const RawMeasure& m = s.raw.RawLineMeasures.get(i);
      const std::string what = "Record line " + std::to_string(i) + " (" + Trim(f[1]) + " to " + Trim(f[2]) + ")";
      GisFeature feature;
      if (!Segment({e.from, e.to}, what, feature)) continue;
      const double degrees = m.bearing * 180.0 / std::numbers::pi;
      FieldValue azimuth;
      switch (m.quadrant) {
        case 1: azimuth = Real(degrees); break;
        case 2: azimuth = Real(180.0 - degrees); break;
        case 3: azimuth = Real(180.0 + degrees); break;
        case 4: azimuth = Real(degrees == 0.0 ? 0.0 : 360.0 - degrees); break;
        default: break;
      }
      const std::string quadrant = Trim(f[4]);
      const std::string unit =
          e.survey >= 1 && e.survey < static_cast<int>(units.size()) ? units[static_cast<std::size_t>(e.survey)] : "";
      feature.values = {Int(i),
                        Text(Trim(f[1])),
                        Text(Trim(f[2])),
                        Real(m.distance),
                        quadrant.size() == 1 && quadrant[0] >= '0' && quadrant[0] <= '9' ? Int(quadrant[0] - '0')
                                                                                           : FieldValue(),
                        Text(Trim(f[5])),
                        Real(degrees),
                        azimuth,
                        Text(Trim(f[6])),
                        unit.empty() ? FieldValue() : Text(unit)};
      layer.features.push_back(std::move(feature));
    }
    return layer;
  }

  GisLayer Parcels() {
    GisLayer layer{"parcels", GeometryKind::Point,
                   {{"parcel", FieldType::Integer},
                    {"section", FieldType::Integer},
                    {"nominal", FieldType::Text},
                    {"type", FieldType::Text},
                    {"type_name", FieldType::Text},
                    {"survey_no", FieldType::Text},
                    {"suffix", FieldType::Text},
                    {"note", FieldType::Text},
                    {"note_name", FieldType::Text},
                    {"acreage", FieldType::Real},
                    {"tail", FieldType::Text},
                    {"attr_line", FieldType::Text},
                    {"multiple", FieldType::Integer}},
                   {}};
    for (int i = 1; i <= Upto(s.parcels.ParcelCount, ParcelStore::kBound); ++i) {
      const std::string& line = s.parcels.ParcelLine.get(i);
      // A parcel deleted in the properties dialog keeps its entry with an empty line until the
      // save; it is gone from the job.
      if (line.empty()) continue;
      const double x = s.parcels.ParcelX.get(i), y = s.parcels.ParcelY.get(i);
      if (!std::isfinite(x) || !std::isfinite(y)) {
        warnings.Add("Parcel " + std::to_string(i) + " has no finite location; not written.");
        continue;
      }
      const ParcelAttributeFields a = ParseParcelAttributes(line);
      auto optionalText = [](const std::string& t) { return t.empty() ? FieldValue() : Text(t); };
      GisFeature f;
      f.vertices = {{x, y}};
      f.values = {Int(i),
                  a.section ? Int(*a.section) : FieldValue(),
                  optionalText(a.nominalLocation),
                  optionalText(a.surveyTypeLetter),
                  optionalText(a.surveyTypeCaption),
                  optionalText(a.surveyNumber),
                  optionalText(a.suffix),
                  optionalText(a.noteLetter),
                  optionalText(a.noteCaption),
                  a.acreage ? Real(*a.acreage) : FieldValue(),
                  optionalText(a.tail),
                  Text(line),
                  Int(s.parcels.ParcelMulti.get(i) == 1 ? 1 : 0)};
      // The parcel's text as the full display shows it.
      f.label = Mid(line, 5, 3) + Mid(line, 9, 1) + "," + Trim(Mid(line, 13, 6)) + "," + Trim(Mid(line, 20, 2)) + "," +
                Trim(Mid(line, 27, 9));
      layer.features.push_back(std::move(f));
    }
    return layer;
  }

  // A closed ring from point identifiers; the unknown ones are listed in `missing` and left out.
  // False when fewer than three distinct places remain.
  bool Ring(const std::vector<std::string>& ids, std::vector<Vertex>& ring, std::vector<std::string>& missing) {
    ring.clear();
    for (const std::string& id : ids) {
      const int index = id.empty() ? 0 : s.points.Find(id);
      if (!Placeable(index)) {
        if (!id.empty()) missing.push_back(id);
        continue;
      }
      const Vertex v = At(index);
      if (!ring.empty() && ring.back().x == v.x && ring.back().y == v.y) continue;
      ring.push_back(v);
    }
    while (ring.size() > 1 && ring.front().x == ring.back().x && ring.front().y == ring.back().y) ring.pop_back();
    std::set<std::pair<double, double>> distinct;
    for (const Vertex& v : ring) distinct.emplace(v.x, v.y);
    if (distinct.size() < 3) return false;
    ring.push_back(ring.front());
    return true;
  }

  static std::string Joined(const std::vector<std::string>& ids) {
    std::string out;
    for (const std::string& id : ids) out += (out.empty() ? "" : " ") + id;
    return out;
  }

  GisLayer ParcelRings() {
    GisLayer layer{"parcel_rings", GeometryKind::Polygon,
                   {{"parcel", FieldType::Integer}, {"ring", FieldType::Text}, {"missing", FieldType::Text}},
                   {}};
    for (int i = 1; i <= Upto(s.parcels.ParcelCount, ParcelStore::kBound); ++i) {
      if (s.parcels.ParcelLine.get(i).empty()) continue;
      const std::string& ringLine = s.parcels.ParcelRing.get(i);
      if (Trim(ringLine).empty()) continue;
      GisFeature f;
      std::vector<std::string> missing;
      const bool closed = Ring(RingOutlineIds(ringLine), f.vertices, missing);
      const std::string what = "Parcel " + std::to_string(i);
      if (!closed) {
        warnings.Add(what + ": its ring has fewer than three known points" +
                     (missing.empty() ? std::string() : " (not found: " + Joined(missing) + ")") + "; not written.");
        continue;
      }
      if (!missing.empty()) warnings.Add(what + ": ring points not found, left out: " + Joined(missing) + ".");
      f.values = {Int(i), Text(Trim(ringLine)), missing.empty() ? FieldValue() : Text(Joined(missing))};
      layer.features.push_back(std::move(f));
    }
    return layer;
  }

  GisLayer RawPolygons() {
    GisLayer layer{"raw_polygons", GeometryKind::Polygon,
                   {{"polygon", FieldType::Integer},
                    {"tag", FieldType::Text},
                    {"centroid_x", FieldType::Real},
                    {"centroid_y", FieldType::Real},
                    {"missing", FieldType::Text}},
                   {}};
    for (int i = 1; i <= Upto(s.polygons.RawPolygonCount, RawPolygonStore::kBound); ++i) {
      GisFeature f;
      std::vector<std::string> missing;
      const std::string what = "Raw polygon " + std::to_string(i);
      if (!Ring(RingIds(s.polygons.RawPolygonRing.get(i)), f.vertices, missing)) {
        warnings.Add(what + ": its ring has fewer than three known points" +
                     (missing.empty() ? std::string() : " (not found: " + Joined(missing) + ")") + "; not written.");
        continue;
      }
      if (!missing.empty()) warnings.Add(what + ": ring points not found, left out: " + Joined(missing) + ".");
      const std::string tag = s.polygons.RawPolygonTag.get(i);
      f.values = {Int(i), tag.empty() ? FieldValue() : Text(tag), Real(s.polygons.RawPolygonX.get(i)),
                  Real(s.polygons.RawPolygonY.get(i)), missing.empty() ? FieldValue() : Text(Joined(missing))};
      f.label = tag;
      layer.features.push_back(std::move(f));
    }
    return layer;
  }

  GisLayer CamaLinks(const std::vector<CamaLinkRecord>& links) {
    GisLayer layer{"cama_links", GeometryKind::Point,
                   {{"point", FieldType::Text},
                    {"chain", FieldType::Text},
                    {"geocode", FieldType::Text},
                    {"linked", FieldType::Integer}},
                   {}};
    for (std::size_t k = 0; k < links.size(); ++k) {
      const CamaLinkRecord& link = links[k];
      if (!std::isfinite(link.x) || !std::isfinite(link.y)) {
        warnings.Add("Link record " + std::to_string(k + 1) + " (" + link.geocode +
                     ") has no finite place; not written.");
        continue;
      }
      layer.features.push_back(GisFeature{
          {{link.x, link.y}}, {Text(link.point), Text(link.chain), Text(link.geocode), Int(link.linked ? 1 : 0)}, link.geocode});
    }
    return layer;
  }
};

}  // namespace

bool IsGisLayerName(std::string_view name) {
  return std::find(std::begin(kGisLayerNames), std::end(kGisLayerNames), name) != std::end(kGisLayerNames);
}

const char* PointKindText(PointKindCode kind) {
  switch (kind) {
    case PointKindCode::Control: return "control";
    case PointKindCode::Temporary: return "temporary";
    case PointKindCode::Coordinate: break;
  }
  return "coordinate";
}

std::vector<PointKindCode> PointKinds(const Session& session) {
  const int count = std::max<int>(0, session.points.PointCount());
  std::vector<PointKindCode> kinds(static_cast<std::size_t>(count) + 1, PointKindCode::Coordinate);
  for (int c = 1; c < std::min<int>(session.control.ControlCount, ControlStore::kBound + 1); ++c) {
    const int index = session.points.Find(session.control.Control.get(c).id);
    if (index >= 1 && index <= count) kinds[static_cast<std::size_t>(index)] = PointKindCode::Control;
  }
  const int firstTemporary = session.raw.FirstTemporaryPoint;
  if (firstTemporary >= 1) {
    for (int i = firstTemporary; i <= count; ++i) kinds[static_cast<std::size_t>(i)] = PointKindCode::Temporary;
  }
  return kinds;
}

std::string SurveyDistanceUnits(const SurveyStore& surveys, int survey) {
  if (survey < 1 || survey > std::min<int>(surveys.SurveyCount, SurveyStore::kBound)) return {};
  const SurveyEntry& entry = surveys.SurveyTable.get(survey);
  std::string unit;
  for (int c = std::max<int>(entry.first, 1); c <= entry.last && c <= SurveyStore::kCaptionBound; ++c) {
    const std::string code = Mid(surveys.SurveyCaptions.get(c), 3, 4);
    if (code == "DU:C") unit = "chains";
    if (code == "DU:F") unit = "feet";
    if (code == "DU:M") unit = "metres";
  }
  return unit;
}

GisBuildResult BuildGisLayers(const Session& session, const GisBuildOptions& options) {
  GisBuildResult result;
  Warnings warnings(result.warnings);
  Builder b{session, warnings, PointKinds(session)};
  auto wanted = [&](std::string_view name) {
    return options.layers.empty() ||
           std::find(options.layers.begin(), options.layers.end(), name) != options.layers.end();
  };
  auto add = [&](std::string_view name, GisLayer (Builder::*make)()) {
    if (!wanted(name)) return;
    warnings.Layer(std::string(name));
    result.layers.push_back((b.*make)());
  };
  add("points", &Builder::Points);
  add("network_lines", &Builder::NetworkLines);
  add("chains", &Builder::Chains);
  add("record_lines", &Builder::RecordLines);
  add("parcels", &Builder::Parcels);
  add("parcel_rings", &Builder::ParcelRings);
  add("raw_polygons", &Builder::RawPolygons);
  if (wanted("cama_links") && options.camaLinks) {
    warnings.Layer("cama_links");
    result.layers.push_back(b.CamaLinks(*options.camaLinks));
  }
  warnings.Finish();
  return result;
}

}  // namespace tessel
