#include "job/job_menus.h"

#include "model/layers.h"

namespace tessel {

void EnableJobMenus(Session& session, bool withArchives) {
  for (const char* name : kJobMenus) session.user.SetEnabled(name, true);
  if (withArchives) {
    for (const char* name : kArchiveMenus) session.user.SetEnabled(name, true);
  }
  for (const char* name : kJobMenusKeptAfterClose) session.user.SetEnabled(name, true);
  for (const char* name : kJobEntries) session.user.SetEnabled(name, true);
  session.user.SetEnabled("mnuFileOpen", false);
}

void DisableJobMenus(Session& session) {
  for (const char* name : kJobMenus) session.user.SetEnabled(name, false);
  for (const char* name : kArchiveMenus) session.user.SetEnabled(name, false);
  for (const char* name : kJobEntries) session.user.SetEnabled(name, false);
  session.user.SetEnabled("mnuFileOpen", true);
}

void InitialMenus(Session& session) {
  DisableJobMenus(session);
  for (const char* name : kJobMenusKeptAfterClose) session.user.SetEnabled(name, false);
}

void ApplyViewOptions(Session& session) {
  const Config& c = session.config;
  ViewChecks& checks = session.checks;
  // Only a value of 1 turns a layer on; the menu's check and the toolbar key follow.
  for (const LayerRow& layer : kLayers) {
    if (!layer.startFlag) continue;
    const bool on = c.*(layer.startFlag) == 1;
    checks.*(layer.check) = on;
    session.user.SetChecked(layer.menu, on);
    if (layer.toolbarKey) session.user.SetChecked(layer.toolbarKey, on);
  }
  session.canvas.SetColours(BackColour(c.BackgroundMode), ForeColour(c.BackgroundMode));
}

}  // namespace tessel
