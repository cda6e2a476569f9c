#include "job/job_state.h"

#include "parcels/parcel_file.h"
#include "viewer/tool_switch.h"

namespace tessel {

bool AskToSaveParcels(Session& session) {
  if (session.parcels.ParcelDirty == 0) return true;
  const Answer answer = session.user.Message(kMsgParcelEditsUnsaved, Icon::None, Buttons::YesNo);
  return answer != Answer::Yes || WriteParcels(session);
}

void ClearStores(Session& session, bool keepParcels) {
  session.points.Clear();
  session.control.Clear();
  session.lsa.Clear();
  session.lxn.Clear();
  session.raw.Clear();
  session.surveys.Clear();
  session.polygons.Clear();
  if (!keepParcels) {
    session.parcels.Clear();
    session.parcels.ParcelDirty = 0;
    session.selection.ClearParcelList();
    session.selection.SelectedParcels.clear();
    session.SelectionCount = 0;
  }
}

void ResetJobState(Session& session) {
  // The windows close first, each as its own close would leave things; what they leave is
  // emptied below.
  session.Changed(Change::Job);
  ClearStores(session);
  session.notes.Clear();
  session.calculations.Clear();
  session.sectionDefinitions.Clear();
  // The link tables: a new reading, so that no link record picked in this job names one of the
  // next.
  const unsigned linkReading = session.cama.LinkReading;
  session.cama = CamaStore{};
  session.cama.LinkReading = linkReading + 1;
  // The boundary match tables point into this job's point store; the console's own settings stay.
  session.region.match.Clear();
  session.adjustmentOverlay.Clear();
  session.selection.Clear();
  session.SelectionCount = 0;
  session.extents = JobExtents{};
  session.UnitsPerChain = 0.0f;
  session.view.Reset();
  session.view.ZoomWindowArmed = 0;
  session.ToolMode = ToolMode::ZoomPan;
  PushModeButton(session, ToolMode::ZoomPan);
  session.Changed(kAllData);
}

}  // namespace tessel
