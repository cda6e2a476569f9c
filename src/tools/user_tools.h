#pragma once
// The user's own programs: the twelve toolbox buttons, the toolbar keys usr1 to usr10 and bat.

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgSetupToolbox = "Setup toolbox/toolbar under Advanced Configuration";
inline constexpr const char* kMsgSetupToolbar = "Setup toolbox/toolbar under Configuration Options";

// Toolbox button k (1 to 12).
void ToolboxClick(Session& session, int k);
// Toolbar key usr<k> (1 to 10).
void ToolbarUserClick(Session& session, int k);
// Toolbar key bat: JobBase + ".bat" spawned when it exists.
void ToolbarBat(Session& session);

}  // namespace tessel
