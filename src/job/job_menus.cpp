#include "job/job_menus.h"

namespace tessel {

void EnableJobMenus(Session& session, bool withArchives) {
  for (const char* name : kJobMenus) session.user.SetEnabled(name, true);
  if (withArchives) {
    for (const char* name : kArchiveMenus) session.user.SetEnabled(name, true);
  }
  for (const char* name : kJobMenusKeptAfterClose) session.user.SetEnabled(name, true);
  session.user.SetEnabled("mnuFileOpen", false);
}

void DisableJobMenus(Session& session) {
  for (const char* name : kJobMenus) session.user.SetEnabled(name, false);
  for (const char* name : kArchiveMenus) session.user.SetEnabled(name, false);
  session.user.SetEnabled("mnuFileOpen", true);
}

void InitialMenus(Session& session) {
  DisableJobMenus(session);
  for (const char* name : kJobMenusKeptAfterClose) session.user.SetEnabled(name, false);
}

void ApplyViewOptions(Session& session) {
  const Config& c = session.config;
  ViewChecks& checks = session.checks;
  // Only a value of 1 turns a layer on.
  checks.mnuOptionsLinesLSA = c.chkLinesLSA == 1;
  checks.mnuOptionsLinesLXN = c.chkLinesLXN == 1;
  checks.mnuViewLinesRaw = c.chkLinesRAW == 1;
  checks.mnuViewRPO = c.chkRPO == 1;
  checks.mnuViewPoints = c.chkPoints == 1;
  checks.mnuOptionsControl = c.chkControl == 1;
  checks.mnuOptionsParcel = c.chkParcels == 1;

  struct Mirror {
    const char* menu;
    const char* toolbar;  // nullptr when the layer has no toolbar key
    bool on;
  };
  const Mirror mirrors[] = {
      {"mnuOptionsLinesLSA", "Lsa", checks.mnuOptionsLinesLSA},
      {"mnuOptionsLinesLXN", "Lxn", checks.mnuOptionsLinesLXN},
      {"mnuViewLinesRaw", "Raw", checks.mnuViewLinesRaw},
      {"mnuViewRPO", nullptr, checks.mnuViewRPO},
      {"mnuViewPoints", nullptr, checks.mnuViewPoints},
      {"mnuOptionsControl", nullptr, checks.mnuOptionsControl},
      {"mnuOptionsParcel", "parcel", checks.mnuOptionsParcel},
  };
  for (const Mirror& m : mirrors) {
    session.user.SetChecked(m.menu, m.on);
    if (m.toolbar) session.user.SetChecked(m.toolbar, m.on);
  }
  session.canvas.SetColours(BackColour(c.BackgroundMode), ForeColour(c.BackgroundMode));
}

}  // namespace tessel
