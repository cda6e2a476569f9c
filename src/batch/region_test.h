#pragma once
// tessel-batch region-test: Preview and Test of a region's listing, without windows, as one
// JSON object.

#include <nlohmann/json.hpp>
#include <string>

namespace tessel {

struct RegionTestOptions {
  std::string def;         // the region's .def
  std::string tolerance;   // the tolerance field's text
  std::string toolFolder;
};

// The result object; `error` is set (and the object empty) when the listing cannot be read.
nlohmann::json RegionTest(const RegionTestOptions& options, std::string& error);

}  // namespace tessel
