#pragma once
// Which menu entries live with an open job, and the View settings applied at start.

#include <array>

#include "model/session.h"

namespace tessel {

// Enabled when a job opens, disabled again at close.
inline constexpr std::array<const char*, 12> kJobMenus = {
    "mnuFileClose", "mnuFileConvert", "mnuFileExport", "mnuFilePrint", "mnuFileProperties",
    "mnuEdit", "mnuCommand", "mnuTools", "mnuReports",
    "mnuOptionsLinesLSA", "mnuOptionsControl", "mnuOptionsID"};
// The archive entries, which live with an open job too but which the new job wizard leaves off.
inline constexpr std::array<const char*, 2> kArchiveMenus = {"mnuLzhSave", "mnuLzhSaveAs"};
// Enabled when a job opens and left enabled by a close; the toolbar's "Reload" runs the same
// command as Reload Current and goes with it.
inline constexpr std::array<const char*, 3> kJobMenusKeptAfterClose = {"mnuFileReload", "mnuFileImport", "Reload"};
// Entries and toolbar keys that act on the job beyond the lists above: they live with an open
// job too, so that nothing offers to save, print, pick, zoom to or run what is not there. The
// Zoomext and Zoomwin keys are not among them (they answer with their own message), nor are
// the region console, the ZIP wizard and the LZH extraction, which work without a job.
inline constexpr std::array<const char*, 26> kJobEntries = {
    "mnuFileSave", "mnuFilePrintPdf", "mnuZoomExtents", "mnuAttributes", "mnuOptionsNonAliquot", "mnuBand",
    "mnuRegionsTwpjoin", "mnuRegionsTwprel", "mnuRegionsTwpmatch", "mnuRegionsRingcheck", "mnuRegionsTwpsplit",
    "Select", "Centroid", "Zoom", "CRPO", "sid", "Zoomin", "zoomout", "ZoomPrev", "goto",
    "view1", "view2", "view3", "view4", "ViewReset", "bat"};

// The File Open step: job menus on (with the archive entries unless told not to), Open off.
void EnableJobMenus(Session& session, bool withArchives = true);
// The close step: job menus off but the two that stay, Open on.
void DisableJobMenus(Session& session);
// The state at start: every job menu off, Open on.
void InitialMenus(Session& session);

// The View menu checks, toolbar keys and colours from the configuration.
void ApplyViewOptions(Session& session);

}  // namespace tessel
