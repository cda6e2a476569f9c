#pragma once
// The stores of a loaded job as one JSON object, each key named after the store it shows.

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

nlohmann::json DumpStores(const Session& session, const std::vector<std::string>& messages,
                          const std::vector<std::string>& status);

}  // namespace tessel
