#pragma once
// tessel-batch irr: the irregular sections of a job's .irr as the section dialog reads them.

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace tessel {

// {"sections": {"<n>": {...}}}: every section 1 to 36 with a block, as the reader stores it.
nlohmann::json DumpIrrSections(std::string_view irrText);

// Prints the sections of the .irr beside the job definition `def`; 0 when the file was read,
// otherwise a one-line error on standard error and 2.
int RunIrrCommand(const std::string& def);

}  // namespace tessel
