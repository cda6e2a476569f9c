#pragma once
// Preview of a region: every project of the listing loaded into the one point store at once,
// each point's identifier tagged with its project, with the control stations and network lines
// of each project's .LSA, ready for the boundary match test.

#include <functional>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

using DialogStatus = std::function<void(int panel, const std::string& text)>;

// The region's folder (with its separator) and name: the copies of the job strings taken at
// every open, which bring the console back to the region after a member project was viewed.
inline const std::string& RegionFolder(const Session& session) { return session.RegionJobFolder; }
inline const std::string& RegionName(const Session& session) { return session.RegionJobName; }

// A row's project path without extension: the row itself when it names a folder, else the row
// in the region's folder.
std::string ProjectPath(const Session& session, const std::string& row);
// "T" and the project's name: what a previewed point carries behind its identifier.
std::string ProjectTag(const std::string& row);

// Loads one project into the stores with its tag. A project without .COR and .LSA is left out
// quietly; a store past its bound ends the project's load with what it holds.
void LoadPreviewProject(Session& session, const std::string& path);

// "Preview": the stores emptied, the tolerance read, every project row loaded in order, the view
// fitted to all points and the totals in the console's status panel.
void PreviewRegion(Session& session, const std::vector<std::string>& rows, const std::string& toleranceText,
                   const DialogStatus& dialogStatus);

// The tolerance field as a number: its leading number, 0 for text that is none (or too large).
double ReadTolerance(const std::string& text);

// The number of network lines held (the store counts one ahead).
int HeldLineCount(const Session& session);
// "Total Points = ", the count, ". Total Lines = ", the count, ".".
std::string TotalsText(const Session& session);

// The line display switched to .LSA lines: menu marks and toolbar keys.
void ShowLsaLinesOnly(Session& session);

}  // namespace tessel
