#pragma once
// tessel-batch adjust: the built-in least squares adjustment of a job's record data.

#include <optional>
#include <string>

namespace tessel {

// Adjusts the job of `def`, writes the report beside it and prints the report, or with `json`
// one JSON object. 0 when the adjustment ran to its end, converged or not; 2 with a one-line
// message on standard error when it could not start or finish.
int RunAdjust(const std::string& def, const std::optional<std::string>& controlSigma, bool json);

}  // namespace tessel
