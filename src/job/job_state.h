#pragma once
// What belongs to the open job, and the one place that empties it. Open, Close, Exit, the reloads
// and the region's views of its projects all go through here, so that nothing of one job (a
// store, a pick, a link, a flag, a window) is drawn, listed or asked about in another.

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgParcelEditsUnsaved =
    "Parcel attribute edits have not been saved.\r\nWould you like to save file now?";

// Close's question about unsaved parcel edits, and its Yes. False when the edits were to be saved
// and could not be: the user has been told, and the edits are still in memory. Asked too before a
// reload empties the parcel store, which it then keeps, edits and all, on false.
bool AskToSaveParcels(Session& session);

// The job's windows are told to close, then every store, table, selection, link table and flag
// of the job is emptied (the parcel edits' flag with them), the view is forgotten and the tool
// is back to Zoom / Pan. The identity strings are the caller's.
void ResetJobState(Session& session);

// The stores a load fills, emptied before it reads them again: points, control, network, chain
// and record lines, surveys, raw polygons, and the parcels with their selection unless
// `keepParcels`. Picked points keep their entries (they are found again by identifier after the
// load); the selection of parcels goes with the store it points into.
void ClearStores(Session& session, bool keepParcels = false);

}  // namespace tessel
