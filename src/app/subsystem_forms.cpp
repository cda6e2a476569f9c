#include "app/subsystem_forms.h"

#include "archives/ui/archive_forms.h"
#include "gis_export/ui/gis_export_form.h"
#include "subdivision/ui/subdivision_forms.h"
#include "regions/ui/region_forms.h"

namespace tessel {

void InstallSubsystemForms(QMainWindow& window, Session& session) {
  // One line per subsystem form library, in menu order.
  InstallArchivesForms(window, session);
  InstallSubdivisionForms(window, session);
  InstallRegionForms(window, session);
  InstallGisExportForms(window, session);
}

}  // namespace tessel
