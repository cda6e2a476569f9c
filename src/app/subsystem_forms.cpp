#include "app/subsystem_forms.h"

#include "regions/ui/region_forms.h"

namespace tessel {

void InstallSubsystemForms(QMainWindow& window, Session& session) {
  // One line per subsystem form library, in menu order.
  InstallRegionForms(window, session);
}

}  // namespace tessel
