#pragma once
// Linking by hand after the chain: the CAMA record of a picked link record (frmCama), the CAMA
// records of its section to apply (frmCamaParcel), deleting a link record, moving its point, and
// the report of the CAMA records that no loaded link record carries (frmUnusedCama). Every change
// becomes final by a rewrite of .mtc followed by LoadLinkFile.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgSelectCamaParcel = "You must select a CAMA parcel";
inline constexpr const char* kMsgLinkTableFull =
    "No more than 5000 link records can be held; the record was not added.";
inline constexpr const char* kCamaParcelCaption = "Cama Parcels for Section ";
inline constexpr const char* kCamaParcelInstruction =
    "Select CAMA parcel from the list above.  Click APPLY to assign this GEOCODE to the selected parcel(s).  "
    "Click MULTI-ATT to assign the cama parcel as a multiple-parcel area.  Click OK to save your assignments. ";

// A click on row `row` of frmTesting that holds a link record: fills frmCama from the CAMA record
// whose key equals the link record's text (the last such record) and shows it. Returns the row's
// link record, 0 when the row holds none.
int CamaListClicked(Session& session, int row);
// The forms of this file take from frmTesting's list only the rows that hold link records (see
// selection_checks.h); a row of a parcel is refused with a message.
// "Delete" of frmCama, on frmTesting's selected row (-1 for none).
void CamaDeleteLink(Session& session, int testingRow);
// "CAMA" of frmTesting: fills frmCamaParcel with the CAMA records of the section of the current
// row's link record and shows it. Returns the row made current (the last when none was), -1
// when the list is empty.
int OpenCamaParcels(Session& session, int testingRow);
// frmCamaParcel's rows, caption and CamaPickIndex: the CAMA records of `section`, in file order.
void FillCamaParcelRows(Session& session, const std::string& section);
// A click in frmCamaParcel's list: its three labels. Returns the row made current.
int CamaParcelClicked(Session& session, int row);
// "Apply" and "Multi-att" of frmCamaParcel, with its selected row and frmTesting's current row.
void CamaApply(Session& session, int camaRow, int testingRow);
void CamaMultiAtt(Session& session, int camaRow, int testingRow);
// "OK": saves and reloads. "Cancel": reloads, dropping what was applied since the last save.
void CamaParcelOk(Session& session);
void CamaParcelCancel(Session& session);

// The move of a link record's point by the location tool: the first selected entry takes the
// click, rounded to 3 decimals; .mtc is rewritten and reloaded.
void MoveLinkPoint(Session& session, double x, double y);

// "Show Unused Cama Parcels": fills the list of frmUnusedCama, appends the totals to .phd and
// shows the dialog.
void ShowUnusedCama(Session& session);

}  // namespace tessel
