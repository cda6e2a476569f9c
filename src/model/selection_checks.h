#pragma once
// What a form may take from frmTesting's list before it writes. The list holds parcels, or link
// records while "CAMA Parcels" is checked, or both; the forms that edit parcels take parcels only
// and the forms of the CAMA link take link records only, each by what the entry really is, never
// by the position of SelectedParcels (which a shared pick counter and the list's own buttons can
// put out of step with the list).

#include <optional>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgSelectionHoldsLinks =
    "The selection holds CAMA link records, not parcels, so no parcel attributes can be edited through it.\r\n"
    "Clear the selection, turn off View > CAMA Parcels and pick the parcels again.";
inline constexpr const char* kMsgParcelsReadAgain =
    "The parcels were read again from the parcel file since they were picked.\r\n"
    "Clear the selection and pick the parcels again.";
inline constexpr const char* kMsgRowHoldsParcel =
    "The chosen row of the selected parcels is a parcel, not a CAMA link record.\r\n"
    "Choose the row of a CAMA link record (picked with View > CAMA Parcels on).";
inline constexpr const char* kMsgLinksReadAgain =
    "The CAMA links were read again since this row was picked.\r\n"
    "Clear the selection and pick the CAMA parcel again.";

// The parcel store index of each entry of the list, in list order, for a form that edits
// parcels. Nothing, with the user told why, when an entry is a link record or a parcel of an
// earlier reading of the store.
std::optional<std::vector<int>> SelectedParcelIndexes(Session& session);
// The link record of row `row` of the list, for a form of the CAMA link. 0, with the user told
// why, when the row is a parcel or a record of an earlier reading of the link tables; 0 without
// a word for a row that is not in the list (each form has its own message for that).
int SelectedLinkRecord(Session& session, int row);
// The same without telling the user: the row's link record, or 0.
int LinkRecordOfRow(const Session& session, int row);

}  // namespace tessel
