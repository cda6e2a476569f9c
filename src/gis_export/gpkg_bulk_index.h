#pragma once
// A GeoPackage layer's spatial index made in one pass. GDAL keeps the index up to date feature by
// feature through triggers, which for a hundred thousand features costs more than writing them.
// Instead the index is made while the layer is empty (GDAL writes its table and triggers), the
// triggers are lifted while the features are written, the index's nodes are then written whole
// and the triggers put back, all inside the layer's transaction. Only with GDAL.

#ifdef TESSEL_WITH_GDAL

#include <gdal.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "gis_export/gdal_support.h"
#include "gis_export/gpkg_rtree.h"

namespace tessel {

class GpkgBulkIndex {
 public:
  // Makes the index of the new, empty layer and lifts its triggers; false, with `error` set, when
  // GDAL cannot.
  bool Begin(GDALDatasetH ds, OGRLayerH layer, GdalMessages& messages, std::string& error);
  // The envelope of a feature written.
  void Add(std::int64_t fid, const std::vector<Vertex>& vertices);
  // Writes the index and puts the triggers back.
  bool Finish(GdalMessages& messages, std::string& error);

 private:
  bool Run(const std::string& sql, GdalMessages& messages);
  GDALDatasetH ds_ = nullptr;
  std::string index_;  // rtree_<table>_<geometry column>
  std::vector<std::pair<std::string, std::string>> triggers_;  // name, statement
  std::vector<RtreeEntry> entries_;
};

}  // namespace tessel

#endif
