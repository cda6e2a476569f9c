#pragma once
// frmADD's "Compute " and test run through splitplan, and "Status": what the tool's report .sub
// says about a definition.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kStatusComputing = "Computing, please wait.";
inline constexpr const char* kStatusNotComputed = "Status: This point has not yet been computed.";
inline constexpr const char* kStatusNotFound = "Status for this definition not found.";
inline constexpr const char* kStatusLineNotFound = "Status for this connecting line definition not found.";
inline constexpr const char* kComputeTip =
    "Compute all post adjustment calculations, generate intersections, and build polygons.";
inline constexpr const char* kTestTip = "Compute the post - adjustments for testing.  No Intersections, No Parcels";
inline constexpr const char* kStatusTip = "Display the status of this calculation.";

// The answers of "Compute " and of the test run.
std::vector<std::string> ComputeAllAnswers();
std::vector<std::string> TestRunAnswers();

// Writes t1$.001 in the job folder and temp.bat (splitplan reading it, "exit", an empty line),
// runs it blocking under "Computing, please wait.", rereads and redraws the job and reloads the
// calculation lists.
void ComputeCalculations(Session& session, const std::vector<std::string>& answers);

// The status text of a list entry from the lines of .sub.
std::string StatusFromReport(const std::vector<std::string>& subLines, const std::string& entry);
// The same from the job's .sub; "Status: This point has not yet been computed." without one.
std::string DefinitionStatus(const Session& session, const std::string& entry);

}  // namespace tessel
