#pragma once
// Exporting every township of a region listing (.how) into one database or GeoPackage: one line
// of progress a township, a township that fails told and the others exported, and a summary.

#include <functional>
#include <string>
#include <vector>

#include "gis_export/gis_export.h"

namespace tessel {

struct RegionTownship {
  std::string name;  // the project's name, as the listing gives it
  std::string def;   // its job definition
};

// The townships of the region whose .def is given: the projects of its listing, in order, the
// keywords left out; a project without a folder is in the region's folder. False, with `error`
// set, when the listing cannot be read.
bool RegionTownships(const std::string& regionDef, std::vector<RegionTownship>& townships, std::string& error);

// Checks the files of the job beside its .def (every name of the job's with an extension, in any
// case) before the job is opened: a load takes a file it cannot read for one that is missing,
// and the township would be exported half-read. False, with `error` naming the file, for one
// that is no file or cannot be read.
bool JobFilesReadable(const std::string& def, std::string& error);

// A township read and its layers built, ready to be written.
struct PreparedTownship {
  std::string township;  // the name its rows carry
  GisExportPlan plan;
  GisExportReport report;  // the warnings and system so far, or why it cannot be written
  bool ok = false;
};

// Opens one township, builds its layers and closes it again.
using TownshipPrepare = std::function<PreparedTownship(const RegionTownship&)>;
// Writes a prepared township; may run on a thread of its own beside other writes.
using TownshipWrite = std::function<GisWriteResult(const PreparedTownship&)>;

struct RegionExportResult {
  std::vector<std::string> exported;
  std::vector<std::string> failed;
  std::size_t features = 0;
  bool ok() const { return failed.empty() && !exported.empty(); }
};

// Exports each township: they are read one after the other, and written by `writers` threads
// while the next are read. `line` gets one progress line a township as each ends, and the summary
// last (from the calling thread only).
RegionExportResult ExportRegion(const std::vector<RegionTownship>& townships, const TownshipPrepare& prepare,
                                const TownshipWrite& write, const std::function<void(const std::string&)>& line,
                                int writers = 1);

}  // namespace tessel
