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
// Enabled when a job opens and left enabled by a close.
inline constexpr std::array<const char*, 2> kJobMenusKeptAfterClose = {"mnuFileReload", "mnuFileImport"};

// The File Open step: job menus on (with the archive entries unless told not to), Open off.
void EnableJobMenus(Session& session, bool withArchives = true);
// The close step: job menus off but the two that stay, Open on.
void DisableJobMenus(Session& session);
// The state at start: every job menu off, Open on.
void InitialMenus(Session& session);

// The View menu checks, toolbar keys and colours from the configuration.
void ApplyViewOptions(Session& session);

}  // namespace tessel
