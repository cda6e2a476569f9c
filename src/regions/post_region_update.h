#pragma once
// The post-region update frmGML without its window: after twpsplit has written the adjusted
// coordinates into the townships, up to five suite tools run unattended on each project of the
// listing, in the project's own folder, up to the first keyword.

#include <array>
#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgPolygonTolerance = "You must enter a distance tolerance for testing polygons.";
inline constexpr const char* kMsgUpdateComplete =
    "Post-regional update is complete.\r\nUse 'View Items' to browse the projects.";
// The listing's table holds at most this many rows; later rows are not read.
inline constexpr int kUpdateRowBound = 500;

struct UpdateStep {
  const char* caption;  // the check box
  const char* tool;     // the tool's name
  const char* status;   // behind JobName in status panel 1
  bool scripted;        // fed its answers through temp.bat
};
inline constexpr std::array<UpdateStep, 5> kUpdateSteps = {{
    {"SPLITPLAN - Subdivision / Proportioning", "splitplan", " ... Proportioning", true},
    {"MERCGRID - Create UTM Coordinates", "mercgrid", " ... Creating UTM", false},
    {"FLATTEN - Create .LX file format", "flatten", " ... Creating LX", false},
    {"RINGCHECK - Check polygons, create .AN", "ringcheck", " ... Verifying polygons, creating AN", true},
    {"DESCOUT - Translate attributes to .GLD", "descout", " ... Translating AN to GLD", false},
}};

struct UpdateOptions {
  std::array<bool, 5> steps{true, true, true, true, true};
  // "Distance Tolerance for polygons (FT) :"
  std::string tolerance = "100";
};

// A number as free-format printing writes it: a blank for the sign (or "-"), the shortest
// digits without a leading zero before the point, and a trailing blank.
std::string FreeFormatNumber(double value);

// The first line of a scripted step's temp.bat for a project in `jobFolder`.
std::string UpdateScriptCommand(const Session& session, const std::string& tool, const std::string& jobFolder,
                                bool twoBlanks);

// "Ok": false (after the message) when the tolerance is missing; otherwise the batch has run,
// the job strings are the region's again (JobName from the project-name field) and the closing
// message has been shown.
bool RunPostRegionUpdate(Session& session, const UpdateOptions& options, const std::string& projectField);

}  // namespace tessel
