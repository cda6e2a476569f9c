#include "app/subsystem_forms.h"

namespace tessel {

void InstallSubsystemForms(QMainWindow& window, Session& session) {
  // One line per subsystem form library, in menu order.
  (void)window;
  (void)session;
}

}  // namespace tessel
