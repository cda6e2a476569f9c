#pragma once
// The adjustment's report: a plain text file beside the job, <job>.tla, laid out for a surveyor
// (summary, stations with standard errors and ellipses, observations with residuals, flagged
// blunders), and the .COR that accepting the adjustment writes.

#include <string>

#include "adjustment/least_squares.h"

namespace tessel::adjustment {

inline constexpr const char* kReportExtension = ".tla";
// The former .COR, kept when an adjustment is accepted.
inline constexpr const char* kCorBackupExtension = ".tlc";

std::string ReportText(const Adjustment& adjustment, const std::string& jobBase, const Options& options);
// Writes the report; a failure is a file fault naming the file. Returns the path written.
std::string WriteReport(const Adjustment& adjustment, const std::string& jobBase, const Options& options);

// An azimuth in radians as DDD-MM-SS.S, 0 to 360 degrees.
std::string AzimuthText(double radians);

// .COR with the adjusted stations: a line of an adjusted station is replaced by the writer's line
// for it, every other line stays as it was, and adjusted stations .COR does not hold are added
// at its end. The former file is copied to <job>.tlc first. Returns the number of stations written.
int AcceptAdjustment(const Adjustment& adjustment, const std::string& jobBase);

}  // namespace tessel::adjustment
