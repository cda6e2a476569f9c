#include "batch/adjust_command.h"

#include <cmath>
#include <exception>
#include <filesystem>
#include <iostream>

#include <nlohmann/json.hpp>

#include "adjustment/adjustment_report.h"
#include "model/platform.h"
#include "model/text.h"

namespace tessel {

namespace {

using namespace adjustment;

nlohmann::json Optional(const std::optional<double>& value) {
  return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
}

nlohmann::json ToJson(const Adjustment& a) {
  nlohmann::json out;
  out["units"] = UnitsName(a.units);
  out["iterations"] = a.iterations;
  out["converged"] = a.converged;
  out["dof"] = a.dof;
  out["sigma0"] = Optional(a.sigma0);
  out["chi2_pass"] = a.chi2Pass ? nlohmann::json(*a.chi2Pass) : nlohmann::json(nullptr);
  out["stations"] = nlohmann::json::array();
  for (const StationResult& s : a.stations) {
    out["stations"].push_back({{"id", s.id}, {"x", s.x}, {"y", s.y}, {"sx", s.sx}, {"sy", s.sy}, {"a", s.a},
                               {"b", s.b}, {"theta_deg", s.thetaDeg}});
  }
  out["orientations"] = nlohmann::json::array();
  for (const OrientationResult& o : a.orientations) {
    out["orientations"].push_back({{"survey", o.survey}, {"value_sec", o.valueSec}, {"sigma_sec", o.sigmaSec}});
  }
  out["observations"] = nlohmann::json::array();
  for (const ObservationResult& r : a.observations) {
    const Observation& o = r.observation;
    out["observations"].push_back({{"record", o.record}, {"kind", KindName(o.kind)}, {"from", o.from}, {"to", o.to},
                                   {"survey", o.survey}, {"residual", r.residual},
                                   {"std_residual", Optional(r.stdResidual)}, {"flagged", r.flagged}});
  }
  out["skipped"] = {{"unknown_survey", a.skipped.unknownSurvey},
                    {"empty_or_equal_ids", a.skipped.emptyOrEqualIds},
                    {"bad_quadrant", a.skipped.badQuadrant}};
  out["disconnected"] = a.disconnected;
  return out;
}

int Fail(const std::string& message) {
  std::cerr << "tessel-batch: " << message << "\n";
  return 2;
}

}  // namespace

int RunAdjust(const std::string& def, const std::optional<std::string>& controlSigma, bool json) {
  Options options;
  if (controlSigma) {
    const std::string text = Trim(*controlSigma);
    char* end = nullptr;
    const double sigma = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(sigma) || sigma <= 0) {
      return Fail("--control-sigma takes a standard error greater than 0, in the job's units");
    }
    options.controlSigma = sigma;
  }
  const std::string jobBase = JobBaseOf(PathBytes(std::filesystem::absolute(NativePath(def))));
  try {
    const Outcome outcome = AdjustJob(jobBase, options);
    if (!outcome.adjustment) return Fail(outcome.error);
    WriteReport(*outcome.adjustment, jobBase, options);
    if (json) {
      // Identifiers are single-byte text, not UTF-8: bytes that do not form UTF-8 are replaced.
      std::cout << ToJson(*outcome.adjustment).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
    } else {
      std::cout << ReportText(*outcome.adjustment, jobBase, options);
    }
    return 0;
  } catch (const std::exception& fault) {
    return Fail(fault.what());
  }
}

}  // namespace tessel
