#include "app/subsystem_forms.h"

#include "adjustment/ui/adjustment_form.h"
#include "archives/ui/archive_forms.h"
#include "help/ui/help_forms.h"
#include "calculations/ui/calculation_forms.h"
#include "cama/ui/cama_forms.h"
#include "gis_export/ui/gis_export_form.h"
#include "subdivision/ui/subdivision_forms.h"
#include "regions/ui/region_forms.h"
#include "parcels/ui/parcel_forms.h"
#include "surveys/ui/survey_forms.h"

namespace tessel {

void InstallSubsystemForms(QMainWindow& window, Session& session) {
  // One line per subsystem form library, in menu order. Help comes first: its menu then ends
  // the menu bar, and every other installer finds `mnuHelp`.
  InstallHelpForms(window, session);
  InstallArchivesForms(window, session);
  InstallSubdivisionForms(window, session);
  InstallCalculationsForms(window, session);
  InstallRegionForms(window, session);
  InstallParcelsForms(window, session);
  InstallSurveysForms(window, session);
  InstallCamaForms(window, session);
  InstallGisExportForms(window, session);
  InstallAdjustmentForms(window, session);
}

}  // namespace tessel
