#include "db_export/region_export.h"

#include <exception>
#include <filesystem>
#include <fstream>

#include "model/paths.h"
#include "model/text.h"
#include "regions/how_file.h"

namespace fs = std::filesystem;

namespace tessel {

bool RegionTownships(const std::string& regionDef, std::vector<RegionTownship>& townships, std::string& error) {
  townships.clear();
  const fs::path def = fs::absolute(fs::path(regionDef));
  const std::string title = def.filename().string();
  const std::string name = title.substr(0, title.find('.'));
  std::string folder = def.parent_path().string();
  if (folder.empty() || folder.back() != fs::path::preferred_separator) folder += fs::path::preferred_separator;
  const std::string how = ResolveCase(folder + name + ".how");
  std::vector<std::string> rows;
  if (!ReadHowListing(how, rows)) {
    error = "no region listing: " + how;
    return false;
  }
  for (const std::string& raw : rows) {
    const std::string row = Trim(raw);
    if (IsRegionKeyword(row)) continue;
    const std::string project = RowHasFolder(row) ? row : folder + row;
    townships.push_back({RowProjectName(row), ResolveCase(project + ".def")});
  }
  if (townships.empty()) {
    error = how + " lists no township.";
    return false;
  }
  return true;
}

bool JobFilesReadable(const std::string& def, std::string& error) {
  const fs::path path(def);
  const std::string stem = Upper(path.stem().string());
  std::error_code ec;
  fs::directory_iterator it(path.parent_path().empty() ? fs::path(".") : path.parent_path(), ec);
  if (ec) {
    error = "the folder of " + def + " cannot be read: " + ec.message();
    return false;
  }
  for (const fs::directory_entry& entry : it) {
    const fs::path& file = entry.path();
    if (Upper(file.stem().string()) != stem || file.extension().empty()) continue;
    std::ifstream in(file, std::ios::binary);
    if (!entry.is_regular_file(ec) || !in) {
      error = file.string() + " cannot be read";
      return false;
    }
  }
  return true;
}

RegionExportResult ExportRegion(const std::vector<RegionTownship>& townships, const TownshipExport& exportOne,
                                const std::function<void(const std::string&)>& line) {
  RegionExportResult result;
  const std::string total = std::to_string(townships.size());
  for (std::size_t k = 0; k < townships.size(); ++k) {
    const RegionTownship& township = townships[k];
    std::string head(1, '[');
    head += std::to_string(k + 1) + "/" + total + "] " + township.name + ": ";
    GisExportReport report;
    try {
      report = exportOne(township);
    } catch (const std::exception& fault) {
      report.ok = false;
      report.error = fault.what();
    }
    if (!report.ok) {
      result.failed.push_back(township.name);
      line(head + "FAILED: " + report.error);
      continue;
    }
    std::size_t features = 0;
    for (const auto& [layer, count] : report.counts) features += count;
    result.features += features;
    result.exported.push_back(township.name);
    line(head + std::to_string(features) + " features");
  }
  std::string summary = std::to_string(result.exported.size()) + " of " + total + " townships exported, " +
                        std::to_string(result.features) + " features";
  if (!result.failed.empty()) {
    summary += "; failed:";
    for (const std::string& name : result.failed) summary += " " + name;
  }
  line(summary);
  return result;
}

}  // namespace tessel
