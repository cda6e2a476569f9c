#include "batch/irr_dump.h"

#include <filesystem>
#include <iostream>

#include "model/paths.h"
#include "model/platform.h"
#include "model/section_definitions.h"
#include "model/text_file.h"
#include "subdivision/irr_file.h"

namespace tessel {

namespace {

nlohmann::json Pair(const LinePair& pair) {
  nlohmann::json out = nlohmann::json::array();
  for (const std::string& s : pair) out.push_back(s);
  return out;
}

nlohmann::json Section(const SectionDefinitionStore& store, int section) {
  const SectionDefinitions& d = store.sections[static_cast<std::size_t>(section)];
  nlohmann::json out = nlohmann::json::object();
  nlohmann::json substitute = nlohmann::json::object();
  nlohmann::json nonComputable = nlohmann::json::object();
  nlohmann::json offsets = nlohmann::json::array();
  for (int p = 1; p <= 25; ++p) {
    const auto k = static_cast<std::size_t>(p);
    if (d.Substitute[k] != 0) substitute[std::to_string(p)] = d.Substitute[k];
    const bool marked = (p >= 6 && p <= 9 && d.QuarterFlag[k - 5]) || (p >= 18 && d.ExteriorFlag[k - 17]);
    if (marked) nonComputable[std::to_string(p)] = d.NonComputable[k];
    if (d.OffsetFlag[k]) offsets.push_back(p);
  }
  out["Substitute"] = substitute;
  nlohmann::json doubles = nlohmann::json::array();
  for (int i = 1; i <= store.DoubleCornerCount; ++i) {
    const DoubleCornerRecord& r = store.DoubleCorners[static_cast<std::size_t>(i)];
    doubles.push_back({r.nominal, r.point, r.corner, r.direction});
  }
  out["DoubleCorners"] = doubles;
  out["NonComputable"] = nonComputable;
  if (d.CentreFlag) out["Centre"] = Pair(d.Centre);
  nlohmann::json proportions = nlohmann::json::object();
  nlohmann::json quarterCentres = nlohmann::json::object();
  for (std::size_t k = 1; k <= 4; ++k) {
    if (d.ProportionFlag[k]) {
      const ProportionDefinition& pr = d.Proportions[k];
      proportions[std::to_string(9 + k)] = {pr.id, pr.parenthetical, pr.total};
    }
    if (d.QuarterCentreFlag[k]) quarterCentres[std::to_string(13 + k)] = Pair(d.QuarterCentre[k]);
  }
  out["Proportions"] = proportions;
  out["QuarterCentres"] = quarterCentres;
  out["Offsets"] = offsets;
  return out;
}

}  // namespace

nlohmann::json DumpIrrSections(std::string_view irrText) {
  nlohmann::json sections = nlohmann::json::object();
  for (int section : IrrBlockSections(irrText)) {
    const std::string key = std::to_string(section);
    // A section with two blocks is read from its first, as the dialog reads it.
    if (sections.contains(key)) continue;
    SectionDefinitionStore store;
    ReadIrrBlock(irrText, section, store);
    sections[key] = Section(store, section);
  }
  return {{"sections", sections}};
}

int RunIrrCommand(const std::string& def) {
  namespace fs = std::filesystem;
  const fs::path path = NativePath(def);
  const std::string name = PathBytes(path.filename());
  const fs::path base = path.parent_path() / NativePath(name.substr(0, name.find('.')));
  const std::string irr = ResolveCase(PathBytes(base) + ".irr");
  std::string text;
  if (!FileExistsAnyCase(irr) || !ReadFileBytes(irr, text)) {
    std::cerr << "tessel-batch: cannot read " << irr << "\n";
    return 2;
  }
  std::cout << DumpIrrSections(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
  return 0;
}

}  // namespace tessel
