#pragma once
// The actions of the configuration dialog frmConfig on a running session: OK, Save, Restore
// Defaults and the "load LXN lines" check, which takes effect at once.

#include "model/config.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kConfigFileName = "Tessel.cfg";
inline constexpr const char* kRestoreQuestion =
    "Restore original values? Clicking yes will overwrite any custom settings your have setup.";

// Every user tool entry whose path, trimmed, is not "none" gives its caption to toolbox button k
// and, for the first ten, to the toolbar key "usr<k>". Entries set to "none" are left alone.
void ApplyToolButtons(Session& session);

// OK: the settings become `config`, the tool buttons take their captions, the View menu checks,
// toolbar keys and colours follow, and the job is redrawn. Nothing is written.
void ApplyConfig(Session& session, const Config& config);

// Save: the same as OK, then Tessel.cfg in the tool folder is replaced by the settings. Returns
// false when the file could not be written; the settings stay applied either way.
bool SaveConfig(Session& session, const Config& config);

// Restore Defaults: asks first. On Yes, Tessel.cfg is deleted when it exists, every setting
// takes its default and true is returned (the dialog closes); on No nothing changes.
bool RestoreDefaults(Session& session);

// The runner of the suite's Windows programs from the dialog's field ("wine" when it is empty):
// OK sets it for this session; Save also writes it into tessel-tools.ini in the tool folder, and
// gives false when that file could not be written (the user is told, naming it). Tessel.cfg is
// not touched, and Restore Defaults leaves the runner alone.
void ApplyToolRunner(Session& session, const std::string& runner);
bool SaveToolRunner(Session& session, const std::string& runner);

// The "load LXN lines" check, applied as soon as it is clicked: 1 when checked, 0 when not.
void SetLoadLxn(Session& session, bool checked);

}  // namespace tessel
