#include "job/config_actions.h"

#include <cstddef>

#include "model/fault.h"
#include "job/job_menus.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "tools/tool_runner.h"
#include "viewer/view_transform.h"

namespace tessel {

namespace {

// Writes a file of the tool folder; a failure is told, naming the file. The values applied still
// hold until the program ends, and the file keeps its former ones.
template <typename Write>
bool WrittenOrTold(Session& session, Write&& write) {
  try {
    write();
  } catch (const RuntimeFault& fault) {
    TellFileFault(session.user, fault);
    return false;
  }
  return true;
}

}  // namespace

void ApplyToolButtons(Session& session) {
  for (int k = 1; k <= static_cast<int>(session.config.ToolButton.size()); ++k) {
    const ToolButtonEntry& entry = session.config.ToolButton[static_cast<std::size_t>(k - 1)];
    if (Trim(entry.path) != "none") session.user.SetToolButton(k, entry.caption);
  }
}

void ApplyConfig(Session& session, const Config& config) {
  session.config = config;
  ApplyToolButtons(session);
  ApplyViewOptions(session);
  Redraw(session);
}

bool SaveConfig(Session& session, const Config& config) {
  ApplyConfig(session, config);
  return WrittenOrTold(session, [&] { WriteConfig(session.ToolFile(kConfigFileName), session.config); });
}

bool RestoreDefaults(Session& session) {
  if (session.user.Message(kRestoreQuestion, Icon::None, Buttons::YesNo) != Answer::Yes) return false;
  DeleteAnyCase(session.ToolFile(kConfigFileName));
  session.config = Config{};
  return true;
}

void ApplyToolRunner(Session& session, const std::string& runner) { session.toolRunner = NormalToolRunner(runner); }

bool SaveToolRunner(Session& session, const std::string& runner) {
  ApplyToolRunner(session, runner);
  return WrittenOrTold(session, [&] { WriteToolRunner(session.ToolFile(kToolRunnerFile), session.toolRunner); });
}

void SetLoadLxn(Session& session, bool checked) { session.config.chkLXN = checked ? 1 : 0; }

}  // namespace tessel
