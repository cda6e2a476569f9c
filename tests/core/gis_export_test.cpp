// Exporting a job to GIS and CAD files: the layers built from the stores, and the files GDAL
// writes, read back through GDAL.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>

#include "cama/link_chain.h"
#include "db_export/db_export.h"
#include "db_export/db_target.h"
#include "db_export/region_export.h"
#include "gis_export/gis_export.h"
#include "gis_export/gpkg_rtree.h"
#include "job/load_sequence.h"
#include "model/progress.h"
#include "model/text_file.h"
#include "test_support.h"

#if __has_include(<ogr_api.h>)
#define TESSEL_TEST_GDAL 1
#include <gdal.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>
#endif

namespace fs = std::filesystem;

namespace tessel {
namespace {

using test::JobFixture;

const GisLayer* LayerNamed(const GisBuildResult& built, const std::string& name) {
  for (const GisLayer& layer : built.layers) {
    if (layer.name == name) return &layer;
  }
  return nullptr;
}

// The value of a field of a feature, by the field's name.
const FieldValue& ValueOf(const GisLayer& layer, const GisFeature& feature, const std::string& field) {
  for (std::size_t k = 0; k < layer.fields.size(); ++k) {
    if (layer.fields[k].name == field) return feature.values.at(k);
  }
  static const FieldValue none;
  ADD_FAILURE() << "no field " << field << " in " << layer.name;
  return none;
}

// The values of named fields of a feature, each of its own type.
void ExpectFields(const GisLayer& layer, const GisFeature& feature,
                  std::initializer_list<std::pair<const char*, FieldValue>> expected) {
  for (const auto& [field, value] : expected) EXPECT_EQ(ValueOf(layer, feature, field), value) << field;
}

// The sample township, opened as File Open opens it.
class SampleJob : public JobFixture {
 protected:
  void SetUp() override {
    for (const auto& entry : fs::directory_iterator(TESSEL_SAMPLES_DIR)) {
      if (entry.path().stem() == "T12NR04E") fs::copy_file(entry.path(), jobPath / entry.path().filename());
    }
    OpenJob(session, (jobPath / "T12NR04E.def").string(), "T12NR04E.def");
    ASSERT_GT(session.points.PointCount(), 0);
  }

  std::string Out(const std::string& name) const { return (root / name).string(); }
};

TEST_F(SampleJob, LayersHoldEveryStoreEntryWithItsTypedFields) {
  const GisBuildResult built = BuildGisLayers(session, {});
  ASSERT_EQ(built.layers.size(), 7u) << "no cama_links without link records";
  EXPECT_TRUE(built.warnings.empty()) << built.warnings.front();

  const GisLayer* points = LayerNamed(built, "points");
  ASSERT_NE(points, nullptr);
  EXPECT_EQ(points->features.size(), static_cast<std::size_t>(session.points.PointCount()));
  std::map<std::string, std::string> kinds;
  for (const GisFeature& f : points->features) kinds[std::get<std::string>(ValueOf(*points, f, "point_id"))] =
      std::get<std::string>(ValueOf(*points, f, "kind"));
  EXPECT_EQ(kinds["KQ1234"], "control");  // a station only .LSA knows
  EXPECT_EQ(kinds["100100"], "control");  // a station that .COR also holds
  EXPECT_EQ(kinds["900101"], "temporary");  // placed from a record line
  EXPECT_EQ(kinds["100140"], "coordinate");
  // The temporary points are the ones the record reader appended after the control stations.
  const int temporary = session.points.PointCount() - session.points.Find("KQ1301");
  EXPECT_GT(temporary, 0);
  EXPECT_EQ(std::count_if(kinds.begin(), kinds.end(), [](const auto& k) { return k.second == "temporary"; }),
            temporary);

  for (const auto& [name, count] : {std::pair<const char*, int>{"network_lines", session.lsa.LsaLineCount - 1},
                                     {"record_lines", session.raw.RawLineCount},
                                     {"parcels", session.parcels.ParcelCount},
                                     {"parcel_rings", session.parcels.ParcelCount},
                                     {"raw_polygons", session.polygons.RawPolygonCount}}) {
    EXPECT_EQ(LayerNamed(built, name)->features.size(), static_cast<std::size_t>(count)) << name;
  }

  // The chains leave out the segments that a hidden line of .not covers, in either direction.
  int hiddenSegments = 0;
  for (int i = 1; i <= session.lxn.LxnSegmentCount; ++i) {
    const LineEnds& e = session.lxn.LxnLineEnds.get(i);
    for (int n = 1; n <= session.notes.NoteLineCount; ++n) {
      const LineEnds& h = session.notes.NoteLineEnds.get(n);
      if ((h.from == e.from && h.to == e.to) || (h.from == e.to && h.to == e.from)) {
        ++hiddenSegments;
        break;
      }
    }
  }
  EXPECT_GT(hiddenSegments, 0);
  EXPECT_EQ(LayerNamed(built, "chains")->features.size(),
            static_cast<std::size_t>(session.lxn.LxnSegmentCount - hiddenSegments));

  const GisLayer* records = LayerNamed(built, "record_lines");
  const GisFeature& first = records->features.front();
  // The survey has no captions, so no distance units.
  ExpectFields(*records, first, {{"from_id", "700100"}, {"to_id", "700140"}, {"distance", 39.98},
                                 {"quadrant", std::int64_t{4}}, {"bearing", "1800.0"}, {"survey", "GLO 1854 EXT"},
                                 {"dist_units", std::monostate{}}});
  // "1800.0" reads as 18 minutes, as the drawing reads it; quadrant 4 turns it to the north-west.
  EXPECT_NEAR(std::get<double>(ValueOf(*records, first, "bearing_dd")), 0.3, 1e-9);
  EXPECT_NEAR(std::get<double>(ValueOf(*records, first, "azimuth_dd")), 359.7, 1e-9);
  std::set<std::string> units;
  for (const GisFeature& f : records->features) {
    if (const auto* u = std::get_if<std::string>(&ValueOf(*records, f, "dist_units"))) units.insert(*u);
  }
  EXPECT_EQ(units, (std::set<std::string>{"chains", "feet", "metres"}));

  const GisLayer* parcels = LayerNamed(built, "parcels");
  const GisFeature& lot1 = parcels->features.front();
  ExpectFields(*parcels, lot1, {{"section", std::int64_t{1}}, {"nominal", "A"}, {"type_name", "Lot, Numbered"},
                                {"survey_no", "1"}, {"acreage", 39.51}, {"tail", "T12NR04E-01-00001"}});
  EXPECT_EQ(lot1.vertices.at(0).x, 2129650.815);
  EXPECT_EQ(lot1.vertices.at(0).y, 507423.319);
  int multiple = 0;
  for (const GisFeature& f : parcels->features) multiple += std::get<std::int64_t>(ValueOf(*parcels, f, "multiple")) == 1;
  EXPECT_GT(multiple, 1);

  const GisLayer* rings = LayerNamed(built, "parcel_rings");
  const std::vector<Vertex>& ring = rings->features.front().vertices;
  ASSERT_EQ(ring.size(), 5u);
  EXPECT_EQ(ring.front().x, ring.back().x);
  EXPECT_EQ(ring.front().y, ring.back().y);
  const int corner = session.points.Find("700660");
  EXPECT_EQ(ring[1].x, session.points.PointX(corner));
}

TEST_F(SampleJob, LayersAskedForAreTheOnlyOnesAndLinkRecordsMakeTheirLayer) {
  GisBuildOptions options;
  options.layers = {"parcels", "cama_links"};
  options.camaLinks = std::vector<CamaLinkRecord>{{"100100", "A1", "12-34-100-001", true, 10.0, 20.0},
                                                  {"100140", "", "12-34-100-002", false, NAN, 1.0}};
  const GisBuildResult built = BuildGisLayers(session, options);
  ASSERT_EQ(built.layers.size(), 2u);
  EXPECT_EQ(built.layers[0].name, "parcels");
  const GisLayer& links = built.layers[1];
  EXPECT_EQ(links.name, "cama_links");
  ASSERT_EQ(links.features.size(), 1u);
  EXPECT_EQ(std::get<std::string>(ValueOf(links, links.features[0], "geocode")), "12-34-100-001");
  EXPECT_EQ(std::get<std::int64_t>(ValueOf(links, links.features[0], "linked")), 1);
  ASSERT_EQ(built.warnings.size(), 1u);
  EXPECT_NE(built.warnings[0].find("12-34-100-002"), std::string::npos);
}

TEST(GisExportNames, FormatsOutputsAndEpsgCodes) {
  EXPECT_EQ(GisFormatOf("a/b.GPKG"), GisFormat::GeoPackage);
  EXPECT_EQ(GisFormatOf("b.geojson"), GisFormat::GeoJson);
  EXPECT_EQ(GisFormatOf("b.Shp"), GisFormat::Shapefile);
  EXPECT_EQ(GisFormatOf("b.dxf"), GisFormat::Dxf);
  EXPECT_FALSE(GisFormatOf("b.kml"));
  EXPECT_FALSE(GisFormatOf("gpkg"));

  EXPECT_EQ(GisOutputFiles("d/j.gpkg", GisFormat::GeoPackage, {"points", "chains"}),
            std::vector<std::string>{"d/j.gpkg"});
  EXPECT_EQ(GisOutputFiles("d/j.shp", GisFormat::Shapefile, {"points"}), std::vector<std::string>{"d/j.shp"});
  EXPECT_EQ(GisOutputFiles("d/j.geojson", GisFormat::GeoJson, {"points", "chains"}),
            (std::vector<std::string>{"d/j_points.geojson", "d/j_chains.geojson"}));

  EXPECT_EQ(ParseEpsgCode("EPSG:3435"), 3435);
  EXPECT_EQ(ParseEpsgCode(" epsg:26771 "), 26771);
  EXPECT_FALSE(ParseEpsgCode("EPSG:"));
  EXPECT_FALSE(ParseEpsgCode("EPSG:0"));
  EXPECT_FALSE(ParseEpsgCode("EPSG:12a"));
  EXPECT_FALSE(ParseEpsgCode("EPSG:12345678"));
  EXPECT_FALSE(ParseEpsgCode("3435"));
  EXPECT_FALSE(ParseEpsgCode("/etc/passwd"));
}

#ifdef TESSEL_TEST_GDAL

GisExportRequest Request(std::string out, std::string crs = "EPSG:3435", std::vector<std::string> layers = {}) {
  GisExportRequest request;
  request.out = std::move(out);
  request.crs = std::move(crs);
  request.layers = std::move(layers);
  return request;
}

struct Dataset {
  explicit Dataset(const std::string& path, bool update = false)
      : h(GDALOpenEx(path.c_str(), GDAL_OF_VECTOR | (update ? GDAL_OF_UPDATE : GDAL_OF_READONLY), nullptr, nullptr,
                     nullptr)) {}
  ~Dataset() {
    if (h) GDALClose(h);
  }
  Dataset(const Dataset&) = delete;
  Dataset& operator=(const Dataset&) = delete;
  GDALDatasetH h;
};

std::string AuthorityCode(OGRLayerH layer) {
  OGRSpatialReferenceH srs = OGR_L_GetSpatialRef(layer);
  if (!srs) return "";
  const char* code = OSRGetAuthorityCode(srs, nullptr);
  return code ? code : "";
}

// The first feature the filter finds; the caller destroys it.
OGRFeatureH FirstWhere(OGRLayerH layer, const char* filter) {
  OGR_L_SetAttributeFilter(layer, filter);
  OGR_L_ResetReading(layer);
  return OGR_L_GetNextFeature(layer);
}

std::string FieldText(OGRFeatureH f, const char* field) {
  const int index = OGR_F_GetFieldIndex(f, field);
  return index < 0 ? "<no field>" : OGR_F_GetFieldAsString(f, index);
}

class SampleExport : public SampleJob {
 protected:
  void SetUp() override {
    SampleJob::SetUp();
    if (!GdalAvailable()) GTEST_SKIP() << "built without GDAL";
    GDALAllRegister();
  }

  GisExportReport Export(const std::string& out, const std::string& crs = "EPSG:3435",
                         std::vector<std::string> layers = {}) {
    return ExportJobToGis(session, Request(out, crs, std::move(layers)));
  }

  // Every layer of the stores, by name, with its feature count.
  std::map<std::string, long long> Expected() {
    std::map<std::string, long long> counts;
    for (const GisLayer& layer : BuildGisLayers(session, {}).layers) {
      counts[layer.name] = static_cast<long long>(layer.features.size());
    }
    return counts;
  }

  // Checks a known parcel, its ring and a known point of the layers of a file.
  void CheckKnownFeatures(OGRLayerH parcels, OGRLayerH rings, OGRLayerH points) {
    OGRFeatureH lot = FirstWhere(parcels, "parcel = 1");
    ASSERT_NE(lot, nullptr);
    EXPECT_EQ(FieldText(lot, "section"), "1");
    EXPECT_EQ(FieldText(lot, "type"), "L");
    EXPECT_EQ(FieldText(lot, "type_name"), "Lot, Numbered");
    EXPECT_NEAR(OGR_F_GetFieldAsDouble(lot, OGR_F_GetFieldIndex(lot, "acreage")), 39.51, 1e-9);
    EXPECT_EQ(FieldText(lot, "attr_line"), session.parcels.ParcelLine.get(1));
    OGRGeometryH at = OGR_F_GetGeometryRef(lot);
    EXPECT_NEAR(OGR_G_GetX(at, 0), 2129650.815, 1e-6);
    EXPECT_NEAR(OGR_G_GetY(at, 0), 507423.319, 1e-6);
    OGR_F_Destroy(lot);

    OGRFeatureH ring = FirstWhere(rings, "parcel = 1");
    ASSERT_NE(ring, nullptr);
    OGRGeometryH polygon = OGR_F_GetGeometryRef(ring);
    ASSERT_EQ(wkbFlatten(OGR_G_GetGeometryType(polygon)), wkbPolygon);
    OGRGeometryH outer = OGR_G_GetGeometryRef(polygon, 0);
    ASSERT_EQ(OGR_G_GetPointCount(outer), 5);
    EXPECT_EQ(OGR_G_GetX(outer, 0), OGR_G_GetX(outer, 4));
    EXPECT_EQ(OGR_G_GetY(outer, 0), OGR_G_GetY(outer, 4));
    EXPECT_TRUE(OGR_G_IsValid(polygon));
    EXPECT_GT(OGR_G_Area(polygon), 1000.0);
    OGR_F_Destroy(ring);

    OGRFeatureH control = FirstWhere(points, "point_id = 'KQ1234'");
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(FieldText(control, "kind"), "control");
    OGR_F_Destroy(control);
  }
};

// A GeoPackage holds every layer; GeoJSON and shapefiles get one file per layer beside the output.
TEST_F(SampleExport, EveryFormatHoldsEveryLayerWithItsCountsFieldsAndSystem) {
  const auto expected = Expected();
  for (const std::string ext : {".gpkg", ".geojson", ".shp"}) {
    SCOPED_TRACE(ext);
    const GisExportReport report = Export(Out("job" + ext));
    ASSERT_TRUE(report.ok) << report.error;
    EXPECT_EQ(report.crsName, "NAD83 / Illinois East (ftUS) (EPSG:3435)");
    EXPECT_FALSE(fs::exists(root / ".tessel-export-0")) << "the scratch folder is gone";
    std::map<std::string, OGRLayerH> layers;
    std::vector<std::unique_ptr<Dataset>> open;
    if (ext == ".gpkg") {
      EXPECT_EQ(report.files, std::vector<std::string>{Out("job.gpkg")});
      open.push_back(std::make_unique<Dataset>(Out("job.gpkg")));
      ASSERT_NE(open.back()->h, nullptr);
      EXPECT_EQ(GDALDatasetGetLayerCount(open.back()->h), static_cast<int>(expected.size()));
      for (const auto& [name, count] : expected) layers[name] = GDALDatasetGetLayerByName(open.back()->h, name.c_str());
    } else {
      ASSERT_EQ(report.files.size(), expected.size());
      for (const auto& [name, count] : expected) {
        open.push_back(std::make_unique<Dataset>(Out("job_" + name + ext)));
        ASSERT_NE(open.back()->h, nullptr) << name;
        layers[name] = GDALDatasetGetLayer(open.back()->h, 0);
      }
    }
    for (const auto& [name, count] : expected) {
      ASSERT_NE(layers[name], nullptr) << name;
      EXPECT_EQ(OGR_L_GetFeatureCount(layers[name], TRUE), count) << name;
      EXPECT_EQ(AuthorityCode(layers[name]), "3435") << name;
    }
    CheckKnownFeatures(layers["parcels"], layers["parcel_rings"], layers["points"]);
    if (ext != ".gpkg") continue;
    OGRFeatureDefnH defn = OGR_L_GetLayerDefn(layers["points"]);
    EXPECT_EQ(OGR_Fld_GetType(OGR_FD_GetFieldDefn(defn, OGR_FD_GetFieldIndex(defn, "easting"))), OFTReal);
    defn = OGR_L_GetLayerDefn(layers["record_lines"]);
    EXPECT_EQ(OGR_Fld_GetType(OGR_FD_GetFieldDefn(defn, OGR_FD_GetFieldIndex(defn, "quadrant"))), OFTInteger64);
  }
  // One layer asked for: the output itself.
  const GisExportReport one = Export(Out("rings.shp"), "EPSG:3435", {"parcel_rings"});
  ASSERT_TRUE(one.ok) << one.error;
  Dataset ds(Out("rings.shp"));
  ASSERT_NE(ds.h, nullptr);
  EXPECT_EQ(OGR_L_GetFeatureCount(GDALDatasetGetLayer(ds.h, 0), TRUE), session.parcels.ParcelCount);
  EXPECT_TRUE(fs::exists(root / "rings.prj"));
  EXPECT_TRUE(fs::exists(root / "rings.dbf"));
}

// With the job's link file the export has its cama_links layer, read as the CAMA display loads
// it; a record whose number cannot be read ends the layer there, with a warning.
TEST_F(SampleExport, LinkFileOfTheJobBecomesTheCamaLinksLayer) {
  fs::copy_file(fs::path(TESSEL_GOLDEN_DIR) / "T12NR04E.mtc", jobPath / "T12NR04E.mtc");
  GisExportReport report = Export(Out("links.gpkg"), "EPSG:3435", {"cama_links"});
  ASSERT_TRUE(report.ok) << report.error;
  EXPECT_TRUE(report.warnings.empty()) << report.warnings.front();
  ASSERT_TRUE(LoadLinkFile(session));
  {
    Dataset ds(Out("links.gpkg"));
    ASSERT_NE(ds.h, nullptr);
    OGRLayerH links = GDALDatasetGetLayerByName(ds.h, "cama_links");
    ASSERT_NE(links, nullptr);
    EXPECT_EQ(OGR_L_GetFeatureCount(links, TRUE), session.cama.LinkCount);
    OGR_L_SetAttributeFilter(links, "linked = 1");
    EXPECT_EQ(OGR_L_GetFeatureCount(links, TRUE), 25);
    OGRFeatureH first = FirstWhere(links, "geocode = '06041201100000002'");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(FieldText(first, "point"), "2129650.815       507423.319");
    EXPECT_EQ(FieldText(first, "chain"), session.cama.LinkChain.get(1));
    OGRGeometryH at = OGR_F_GetGeometryRef(first);
    EXPECT_EQ(OGR_G_GetX(at, 0), session.cama.LinkX.get(1));
    EXPECT_EQ(OGR_G_GetY(at, 0), session.cama.LinkY.get(1));
    OGR_F_Destroy(first);
  }

  std::string mtc = ReadJob("T12NR04E.mtc");
  const std::size_t third = mtc.find("2127026.754");
  ASSERT_NE(third, std::string::npos);
  mtc.replace(third, 11, "1E999      ");
  WriteJobBytes("T12NR04E.mtc", mtc);
  report = Export(Out("cut.geojson"), "EPSG:3435", {"cama_links"});
  ASSERT_TRUE(report.ok) << report.error;
  ASSERT_EQ(report.warnings.size(), 1u);
  EXPECT_NE(report.warnings[0].find("T12NR04E.mtc"), std::string::npos);
  EXPECT_NE(report.warnings[0].find("record 3"), std::string::npos);
  EXPECT_EQ(report.counts, (std::vector<std::pair<std::string, std::size_t>>{{"cama_links", 2}}));

  fs::remove(jobPath / "T12NR04E.mtc");
  report = Export(Out("none.gpkg"), "EPSG:3435", {"parcels", "cama_links"});
  ASSERT_TRUE(report.ok) << report.error;
  EXPECT_EQ(report.counts.size(), 1u) << "no link file, no cama_links layer";
}

TEST_F(SampleExport, DxfPutsEachLayerOnItsCadLayerWithTexts) {
  const GisExportReport report = Export(Out("job.dxf"));
  ASSERT_TRUE(report.ok) << report.error;
  Dataset ds(Out("job.dxf"));
  ASSERT_NE(ds.h, nullptr);
  OGRLayerH entities = GDALDatasetGetLayer(ds.h, 0);
  std::map<std::string, long long> byLayer;
  std::string firstPointText;
  OGR_L_ResetReading(entities);
  while (OGRFeatureH f = OGR_L_GetNextFeature(entities)) {
    const std::string layer = FieldText(f, "Layer");
    ++byLayer[layer];
    if (layer == "points_labels" && firstPointText.empty()) firstPointText = FieldText(f, "Text");
    OGR_F_Destroy(f);
  }
  for (const auto& [name, count] : Expected()) EXPECT_EQ(byLayer[name], count) << name;
  EXPECT_EQ(byLayer["points_labels"], session.points.PointCount());
  EXPECT_EQ(byLayer["parcels_labels"], session.parcels.ParcelCount);
  EXPECT_EQ(firstPointText, session.points.PointIds(1));
}

TEST_F(SampleExport, SystemComesFromTheJobsPrjOrIsLeftOutWithAWarning) {
  GisExportReport report = Export(Out("none.gpkg"), "");
  ASSERT_TRUE(report.ok) << report.error;
  EXPECT_EQ(report.warnings, std::vector<std::string>{kNoCrsWarning});
  {
    Dataset ds(Out("none.gpkg"));
    // A GeoPackage stands an undefined system in for none, without a code.
    EXPECT_EQ(AuthorityCode(GDALDatasetGetLayerByName(ds.h, "points")), "");
  }

  std::string error;
  ASSERT_TRUE(WriteJobPrj(session, 26771, error)) << error;
  const std::string prj = test::ReadBytes(jobPath / "T12NR04E.prj");
  EXPECT_NE(prj.find("PROJCS["), std::string::npos) << prj;
  report = Export(Out("prj.gpkg"), "");
  ASSERT_TRUE(report.ok) << report.error;
  EXPECT_TRUE(report.warnings.empty());
  EXPECT_NE(report.crsName.find("Illinois East"), std::string::npos) << report.crsName;
  {
    Dataset ds(Out("prj.gpkg"));
    EXPECT_EQ(AuthorityCode(GDALDatasetGetLayerByName(ds.h, "points")), "26771");
  }

  // A code given wins over the .prj; a code GDAL does not know and a .prj it cannot read stop
  // the export before any file is written.
  report = Export(Out("given.gpkg"), "EPSG:3435");
  EXPECT_EQ(report.crsName, "NAD83 / Illinois East (ftUS) (EPSG:3435)");
  report = Export(Out("bad.gpkg"), "EPSG:1");
  EXPECT_FALSE(report.ok);
  EXPECT_EQ(report.error, "EPSG:1 is not a coordinate reference system GDAL knows.");
  report = Export(Out("bad.gpkg"), "Illinois");
  EXPECT_FALSE(report.ok);
  EXPECT_NE(report.error.find("EPSG:NNNN"), std::string::npos);
  WriteJobBytes("T12NR04E.prj", "not a system");
  report = Export(Out("bad.gpkg"), "");
  EXPECT_FALSE(report.ok);
  EXPECT_NE(report.error.find("T12NR04E.prj"), std::string::npos) << report.error;
  EXPECT_FALSE(fs::exists(root / "bad.gpkg"));
}

TEST_F(SampleExport, FailuresNameTheFileAndLeaveNothingBehind) {
  GisExportReport report = Export((root / "missing" / "job.gpkg").string());
  EXPECT_FALSE(report.ok);
  EXPECT_NE(report.error.find("missing"), std::string::npos) << report.error;
  report = Export(Out("job.kml"));
  EXPECT_FALSE(report.ok);
  EXPECT_NE(report.error.find("job.kml"), std::string::npos);
  report = Export(Out("job.gpkg"), "EPSG:3435", {"points", "roads"});
  EXPECT_EQ(report.error, "There is no layer roads.");
  EXPECT_FALSE(fs::exists(root / "job.gpkg"));
}

TEST_F(SampleExport, DialogExportTellsTheResultInOneBox) {
  GisExportRequest request = Request(Out("desk.gpkg"), "EPSG:3435", {"points", "parcels"});
  ASSERT_TRUE(RunGisExport(session, request, true));
  ASSERT_FALSE(user.messages.empty());
  const auto& box = user.messages.back();
  EXPECT_EQ(box.icon, Icon::Information);
  EXPECT_EQ(box.title, kGisExportTitle);
  EXPECT_EQ(box.text.rfind("Written: " + Out("desk.gpkg") + "\r\npoints: " +
                               std::to_string(session.points.PointCount()) + " features\r\nparcels: 30 features",
                           0),
            0u)
      << box.text;
  EXPECT_TRUE(fs::exists(jobPath / "T12NR04E.prj")) << "the system went to the job's .prj";

  request.crs = "";
  EXPECT_FALSE(RunGisExport(session, request, true));
  EXPECT_EQ(user.messages.back().icon, Icon::Exclamation);
  EXPECT_NE(user.messages.back().text.find(".prj"), std::string::npos);
}

// Stopped on the user's word, an export writes and replaces nothing: the file that stood there
// stays, no scratch folder is left, and instead of the box the status bar says so.
TEST_F(SampleExport, ACancelledExportLeavesEveryFileAsItWas) {
  struct Stop : Progress {
    void Report(const std::string&, double) override {}
    bool CancelAsked() const override { return true; }
  } stop;
  for (const char* name : {"desk.gpkg", "desk.dxf"}) {
    const std::string out = Out(name);
    WriteFileBytes(out, "earlier");
    const GisExportRequest request = Request(out);
    user.messages.clear();
    user.notes.clear();
    EXPECT_FALSE(RunGisExport(session, request, false, &stop));
    EXPECT_TRUE(user.messages.empty()) << user.messages.front().text;
    EXPECT_EQ(user.notes, std::vector<std::string>{"GIS export cancelled: " + out + " was left as it was."});
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(out, bytes));
    EXPECT_EQ(bytes, "earlier") << name;
  }
  for (const auto& entry : fs::directory_iterator(fs::path(Out("desk.gpkg")).parent_path())) {
    EXPECT_NE(entry.path().filename().string().rfind(".tessel-export", 0), 0u) << entry.path();
  }
}

TEST(GisExportCrs, StatePlaneZonesAreListedWithoutOtherGrids) {
  if (!GdalAvailable()) GTEST_SKIP() << "built without GDAL";
  const std::vector<CrsEntry> zones = StatePlaneZones();
  std::map<int, std::string> byCode;
  for (const CrsEntry& zone : zones) byCode[zone.code] = zone.name;
  EXPECT_EQ(byCode[3435], "NAD83 / Illinois East (ftUS)");
  EXPECT_EQ(byCode[26771], "NAD27 / Illinois East");
  EXPECT_EQ(byCode[32100], "NAD83 / Montana");
  EXPECT_EQ(byCode.count(26916), 0u) << "a UTM zone";
  EXPECT_EQ(byCode.count(5070), 0u) << "the national Albers grid";
  EXPECT_GT(zones.size(), 300u);
}

class OddJob : public JobFixture {};

TEST_F(OddJob, UnknownRingPointsAndAbsurdCoordinatesExportWithoutACrash) {
  if (!GdalAvailable()) GTEST_SKIP() << "built without GDAL";
  UseJob();
  SetPoints({{"100100", 1.0e300, -1.0e300}, {"100200", 1000.0, 0.0}, {"100300", 1000.0, 1000.0},
             {"100400", 0.0, 1000.0}, {"  7", -5.0e-300, 4.0e15}});
  ParcelStore& parcels = session.parcels;
  parcels.ParcelCount = 3;
  parcels.ParcelLine.at(1) = "Sec_001 A T_L 1              39.510";
  parcels.ParcelRing.at(1) = " 100200 100300 999999 100400 100200";
  parcels.ParcelX.at(1) = 500.0;
  parcels.ParcelY.at(1) = 500.0;
  parcels.ParcelLine.at(2) = "Sec_\xE9\x01";
  parcels.ParcelRing.at(2) = " 888888 777777 100200 100300";
  parcels.ParcelX.at(2) = NAN;
  parcels.ParcelLine.at(3) = "";  // deleted
  session.lsa.LsaLineCount = 3;
  session.lsa.LsaLineEnds.at(1) = {1, 2};
  session.lsa.LsaLineEnds.at(2) = {2, 0};
  session.lxn.LxnSegmentCount = 20000;  // a count past the table
  session.polygons.RawPolygonCount = 1;
  session.polygons.RawPolygonTag.at(1) = "S";
  session.polygons.RawPolygonRing.at(1) = "100200 100300 100400 100100";

  const GisBuildResult built = BuildGisLayers(session, {});
  EXPECT_EQ(LayerNamed(built, "points")->features.size(), 5u);
  EXPECT_EQ(LayerNamed(built, "network_lines")->features.size(), 1u);
  EXPECT_EQ(LayerNamed(built, "parcels")->features.size(), 1u);
  const GisLayer* rings = LayerNamed(built, "parcel_rings");
  ASSERT_EQ(rings->features.size(), 1u);
  EXPECT_EQ(rings->features[0].vertices.size(), 4u) << "three known corners, closed";
  EXPECT_EQ(std::get<std::string>(ValueOf(*rings, rings->features[0], "missing")), "999999");
  std::string warnings;
  for (const std::string& w : built.warnings) warnings += w + "\n";
  EXPECT_NE(warnings.find("Parcel 1: ring points not found, left out: 999999."), std::string::npos) << warnings;
  EXPECT_NE(warnings.find("Parcel 2 has no finite location"), std::string::npos) << warnings;
  EXPECT_NE(warnings.find("Network line 2: an end has no point"), std::string::npos) << warnings;
  EXPECT_NE(warnings.find("... and 14980 more in chains."), std::string::npos) << "the warnings are capped";

  for (const std::string ext : {".gpkg", ".geojson", ".shp", ".dxf"}) {
    const GisExportReport report = ExportJobToGis(session, Request((root / ("odd" + ext)).string(), ""));
    EXPECT_TRUE(report.ok) << ext << ": " << report.error;
  }
  Dataset ds((root / "odd.gpkg").string());
  ASSERT_NE(ds.h, nullptr);
  OGRFeatureH far = FirstWhere(GDALDatasetGetLayerByName(ds.h, "points"), "point_id = '100100'");
  ASSERT_NE(far, nullptr);
  EXPECT_EQ(OGR_G_GetX(OGR_F_GetGeometryRef(far), 0), 1.0e300);
  OGR_F_Destroy(far);
}

// The spatial index of a GeoPackage is written whole after the features: SQLite finds it sound,
// a box finds exactly the points inside it, and a feature added later (as a GIS editing the file
// would) goes into the index through its triggers, which are back in place.
TEST_F(SampleExport, GeoPackageSpatialIndexIsSoundAndKeptByItsTriggers) {
  ASSERT_TRUE(Export(Out("job.gpkg")).ok);
  Dataset ds(Out("job.gpkg"), true);
  ASSERT_NE(ds.h, nullptr);
  auto scalar = [&ds](const std::string& sql) {
    OGRLayerH rows = GDALDatasetExecuteSQL(ds.h, sql.c_str(), nullptr, nullptr);
    std::string value = "<no rows>";
    if (rows != nullptr) {
      if (OGRFeatureH f = OGR_L_GetNextFeature(rows)) {
        value = OGR_F_GetFieldAsString(f, 0);
        OGR_F_Destroy(f);
      }
      GDALDatasetReleaseResultSet(ds.h, rows);
    }
    return value;
  };
  for (const auto& [name, count] : Expected()) {
    EXPECT_EQ(scalar("SELECT rtreecheck('rtree_" + name + "_geom')"), "ok") << name;
    EXPECT_EQ(scalar("SELECT count(*) FROM rtree_" + name + "_geom"), std::to_string(count)) << name;
  }
  OGRLayerH points = GDALDatasetGetLayerByName(ds.h, "points");
  // A box of two miles around parcel 1.
  const double x0 = 2129650.0 - 5280.0, x1 = 2129650.0 + 5280.0, y0 = 507423.0 - 5280.0, y1 = 507423.0 + 5280.0;
  const std::string inside = "easting >= " + std::to_string(x0) + " AND easting <= " + std::to_string(x1) +
                             " AND northing >= " + std::to_string(y0) + " AND northing <= " + std::to_string(y1);
  OGR_L_SetAttributeFilter(points, inside.c_str());
  const GIntBig expected = OGR_L_GetFeatureCount(points, TRUE);
  OGR_L_SetAttributeFilter(points, nullptr);
  ASSERT_GT(expected, 10);
  ASSERT_LT(expected, OGR_L_GetFeatureCount(points, TRUE));
  OGR_L_SetSpatialFilterRect(points, x0, y0, x1, y1);
  EXPECT_EQ(OGR_L_GetFeatureCount(points, TRUE), expected);

  OGRFeatureH added = OGR_F_Create(OGR_L_GetLayerDefn(points));
  OGRGeometryH at = OGR_G_CreateGeometry(wkbPoint);
  OGR_G_SetPoint_2D(at, 0, (x0 + x1) / 2, (y0 + y1) / 2);
  OGR_F_SetGeometryDirectly(added, at);
  ASSERT_EQ(OGR_L_CreateFeature(points, added), OGRERR_NONE);
  OGR_F_Destroy(added);
  EXPECT_EQ(OGR_L_GetFeatureCount(points, TRUE), expected + 1);
  EXPECT_EQ(scalar("SELECT rtreecheck('rtree_points_geom')"), "ok");
}

// Packed nodes: every entry in one leaf, every node but the root under one parent, and the
// root, node 1, carrying the depth.
TEST(GisExportIndex, RtreeNodesHoldEveryEntryOnce) {
  std::vector<RtreeEntry> entries;
  for (std::int64_t k = 1; k <= 30000; ++k) {
    const auto x = static_cast<double>((k * 7919) % 1000), y = static_cast<double>((k * 104729) % 1000);
    entries.push_back(RtreeEntryOf(k, {{x, y}, {x + 0.1, y + 0.3}}));
  }
  const RtreeRows rows = PackRtree(entries, 4032);
  ASSERT_EQ(rows.rowids.size(), entries.size());
  std::set<std::int64_t> ids, nodes;
  for (const auto& [id, node] : rows.rowids) ids.insert(id);
  EXPECT_EQ(ids.size(), entries.size());
  for (const auto& [number, bytes] : rows.nodes) {
    EXPECT_EQ(bytes.size(), 4032u);
    nodes.insert(number);
  }
  EXPECT_EQ(rows.parents.size() + 1, rows.nodes.size());
  ASSERT_TRUE(nodes.count(1));
  const std::string& root = std::find_if(rows.nodes.begin(), rows.nodes.end(), [](const auto& n) { return n.first == 1; })->second;
  EXPECT_EQ((static_cast<unsigned char>(root[0]) << 8) | static_cast<unsigned char>(root[1]), 2) << "167 a node: 3 levels";
  const RtreeEntry e = RtreeEntryOf(1, {{0.1, 0.7}, {1e7 + 0.3, -2.2}});
  EXPECT_LE(e.minX, 0.1);
  EXPECT_GE(e.maxX, 1e7 + 0.3);
  EXPECT_LE(e.minY, -2.2);
  EXPECT_GE(e.maxY, 0.7);
}

// A GeoPackage gathers townships: each export replaces its own township's rows and no other's.
TEST_F(SampleExport, GeoPackageOfTownshipsReplacesOneTownshipOnReExport) {
  GisExportRequest request = Request(Out("county.gpkg"));
  const std::string own = session.JobName;
  ASSERT_TRUE(ExportJobToDatabase(session, request).ok);
  session.JobName = "T13NR04E";
  ASSERT_TRUE(ExportJobToDatabase(session, request).ok);
  session.JobName = own;
  const GisExportReport again = ExportJobToDatabase(session, request);
  ASSERT_TRUE(again.ok) << again.error;

  Dataset ds(Out("county.gpkg"));
  ASSERT_NE(ds.h, nullptr);
  for (const auto& [name, count] : Expected()) {
    OGRLayerH layer = GDALDatasetGetLayerByName(ds.h, name.c_str());
    ASSERT_NE(layer, nullptr) << name;
    EXPECT_EQ(AuthorityCode(layer), "3435") << name;
    for (const std::string& township : {own, std::string("T13NR04E")}) {
      OGR_L_SetAttributeFilter(layer, ("township = '" + township + "'").c_str());
      EXPECT_EQ(OGR_L_GetFeatureCount(layer, TRUE), count) << name << " of " << township;
    }
  }

  request.crs = "EPSG:26916";
  const GisExportReport refused = ExportJobToDatabase(session, request);
  EXPECT_FALSE(refused.ok);
  EXPECT_NE(refused.error.find("the table points is in NAD83 / Illinois East (ftUS)"), std::string::npos)
      << refused.error;
  request.out = Out("county.geojson");
  EXPECT_FALSE(ExportJobToDatabase(session, request).ok);
}

#endif

TEST(DatabaseTarget, ConnectionTextsHidePasswordsAndErrorsComeDownToOneLine) {
  EXPECT_TRUE(IsDatabaseTarget("pg:dbname=county"));
  EXPECT_FALSE(IsDatabaseTarget("county.gpkg"));
  DbConnection c{"", "gis.county.local", "5433", "land records", "clerk", "plss"};
  EXPECT_EQ(ConnectionText(c),
            "PG:host=gis.county.local port=5433 dbname='land records' user=clerk active_schema=plss");
  EXPECT_EQ(ConnectionText(DbConnection{"county", "", "", "", "", ""}, "it's"), "PG:service=county password='it\\'s'");
  EXPECT_EQ(RedactedTarget("PG:dbname=x password='a b' user=y"), "PG:dbname=x password=******** user=y");
  EXPECT_EQ(RedactedTarget("PG:PASSWORD=abc"), "PG:PASSWORD=********");
  EXPECT_EQ(OneLineDbError("PQconnectdb failed.\nconnection to server on socket \"/tmp/.s.PGSQL.5432\" failed: "
                           "FATAL:  password authentication failed for user \"clerk\"\n"),
            "password authentication failed for user \"clerk\"");
  EXPECT_EQ(OneLineDbError("PQconnectdb failed.\nconnection to server on socket \"/tmp/.s.PGSQL.1\" failed: No such "
                           "file or directory\n\tIs the server running locally?\n"),
            "the server cannot be reached (No such file or directory)");
  EXPECT_EQ(OneLineDbError("ERROR:  relation \"x\" does not exist\nLINE 1: ..."), "relation \"x\" does not exist");
  EXPECT_EQ(SqlText("O'Hare"), "'O''Hare'");
}

using RegionExport = JobFixture;

TEST_F(RegionExport, EveryTownshipIsTriedAndTheFailuresAreCounted) {
  const fs::path dir = jobPath;
  const fs::path region = dir / "COUNTY.def";
  WriteJob("COUNTY.def", {"COUNTY"});
  WriteJob("county.HOW", {"T1N", "FIXED", "  ", "/elsewhere/T2N/T2N", "T3N"});
  std::vector<RegionTownship> townships;
  std::string error;
  ASSERT_TRUE(RegionTownships(region.string(), townships, error)) << error;
  ASSERT_EQ(townships.size(), 3u);
  EXPECT_EQ(townships[0].def, (dir / "T1N.def").string());
  EXPECT_EQ(townships[1].name, "T2N");
  EXPECT_EQ(townships[1].def, "/elsewhere/T2N/T2N.def");

  // Read one after the other, written by two threads: each township is told once, the failures
  // of reading and of writing alike, and the summary comes last.
  std::vector<std::string> lines;
  const RegionExportResult result = ExportRegion(
      townships,
      [](const RegionTownship& t) {
        if (t.name == "T2N") throw std::runtime_error("disk gone");
        PreparedTownship p;
        p.township = t.name;
        p.ok = t.name != "T1N";
        p.report.error = "no such job definition: " + t.def;
        GisLayer points{"points", GeometryKind::Point, {}, std::vector<GisFeature>(5)};
        GisLayer parcels{"parcels", GeometryKind::Point, {}, std::vector<GisFeature>(2)};
        p.plan.layers = {points, parcels};
        return p;
      },
      [](const PreparedTownship& p) {
        GisWriteResult written;
        written.ok = p.township == "T3N";
        written.error = "refused";
        return written;
      },
      [&lines](const std::string& line) { lines.push_back(line); }, 2);
  EXPECT_FALSE(result.ok());
  EXPECT_EQ(lines, (std::vector<std::string>{"[1/3] T1N: FAILED: no such job definition: " + townships[0].def,
                                              "[2/3] T2N: FAILED: disk gone", "[3/3] T3N: 7 features",
                                              "1 of 3 townships exported, 7 features; failed: T1N T2N"}));

  fs::create_directory(dir / "T3N.COR");
  WriteJob("T3N.def", {"T3N"});
  EXPECT_FALSE(JobFilesReadable((dir / "T3N.def").string(), error));
  EXPECT_EQ(error, (dir / "T3N.COR").string() + " cannot be read");
  EXPECT_TRUE(JobFilesReadable(townships[0].def, error)) << "no files of the job at all is a missing job, told later";
  EXPECT_FALSE(RegionTownships((dir / "NONE.def").string(), townships, error));
}

}  // namespace
}  // namespace tessel
