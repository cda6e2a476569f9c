#pragma once
// Writing one township's layers into a shared dataset through GDAL: a PostGIS database or a
// GeoPackage holding many townships. Every table carries a `township` column; a township's rows
// are replaced in one transaction, so a reader sees its old rows or its new ones, never a mix.

#include <optional>
#include <string>
#include <vector>

#include "gis_export/gdal_writer.h"
#include "gis_export/gis_layers.h"

namespace tessel {

// The column every table of a shared dataset carries: the township's (the job's) name.
inline constexpr const char* kTownshipColumn = "township";

// Replaces the rows of `township` in every layer's table of `target` (a "PG:" connection text,
// or a GeoPackage, created when missing) with the layers' features, in one transaction. Missing
// tables are made, with the system given, a spatial index and an index on the township; the
// layers' tables of a database are made one export at a time, so that concurrent exports of
// other townships wait for them rather than fail. A failure rolls the whole township back; its
// error is one line.
//
// A database's tables made by a region's export may leave their spatial index for the end
// (`SpatialIndex::Later`): one index built over all the region's rows is made far sooner than one
// kept up row by row. MakeMissingSpatialIndexes then makes it.
enum class SpatialIndex { WithTable, Later };
GisWriteResult ReplaceTownship(const std::vector<GisLayer>& layers, const std::string& target,
                               const std::string& township, const std::optional<GisCrs>& crs,
                               SpatialIndex spatialIndex = SpatialIndex::WithTable);

// Makes the spatial index of each of the database's `tables` that has none; the error in one line,
// or empty.
std::string MakeMissingSpatialIndexes(const std::string& target, const std::vector<std::string>& tables);

}  // namespace tessel
