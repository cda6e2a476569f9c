#pragma once
// Parcel properties (frmAttributes): the attribute line of the selected parcels edited field by
// field. Edits go to a working copy of the line, reach the store with Apply and the file with OK.
// The dialog shows these fields and forwards every change here.

#include <string>
#include <vector>

#include "model/session.h"
#include "parcels/parcel_listings.h"

namespace tessel {

inline constexpr const char* kSectionLengthText =
    "Section Number must be 3 characters long.\r\n(Example: Enter Section 1 as 001)";
inline constexpr const char* kNewParcelStatus = "Create new Parcel ID, 'Apply' to set and 'ok' to save";
inline constexpr const char* kAttributesRuler = "12345678901234567890123456789012345678901234567890123";
inline constexpr double kShownParcelRadius = 120.0;
inline constexpr const char* kMsgNoParcelShown =
    "No parcel is shown. Choose one of the selected parcels in the drop-down first.";
// Followed by the index box's text.
inline constexpr const char* kMsgNotAParcel = "There is no parcel of this job with the index ";

class ParcelProperties {
 public:
  explicit ParcelProperties(Session& session) : session_(session) {}

  // With nothing selected: "No parcel selected", and false; false too, with the reason told, when
  // the selection holds link records or parcels of an earlier reading. Otherwise the selected
  // parcels' lines fill the drop-down and the first is shown.
  bool Open();
  // Choosing entry `listIndex` of the drop-down.
  void Show(int listIndex);
  // The selection or the parcels changed while the dialog is open: the drop-down takes the parcels
  // selected now. The parcel shown stays, with what was typed for it, while it is among them; when
  // it has left the selection, or the parcels were read again, the fields are emptied.
  void Follow();
  // A click on row `row` of the selection list (frmTesting): its parcel shown, when it is one of
  // the drop-down's.
  void ShowSelectionRow(int row);

  // The live echo of the fields into the working line.
  void SetSection(const std::string& text);
  void PressLocation(const std::string& letter);
  void ChooseSurveyType(const std::string& entry);
  // Leaving the section field: false, with the message, unless it holds 3 characters.
  bool LeaveSection();

  void Apply();
  void Delete();
  void NewParcel();
  // The write of OK; false (the dialog stays) when .IID could not be rewritten.
  bool Ok();
  void Cancel();
  // Closing the window: the applied edits stay in the store.
  void Closed();

  // The listings of the shown section, "LLD file not found" / "LOT file not found" when missing.
  bool LldListing(std::vector<ListingRecord>& records);
  bool LotListing(std::vector<ListingRecord>& records);
  // A double click in a listing fills the fields from its record.
  void FillFromRecord(const ListingRecord& record);

  // What the dialog shows.
  std::vector<std::string> entries;
  int listIndex = 0;
  std::string working;
  // The parcel index box, taken by value.
  std::string indexText;
  std::string section;
  std::string location;    // "A" to "Q", empty when no button is pressed
  std::string typeEntry;   // the chosen entry of the survey types, empty for none
  std::string number;
  std::string suffix;
  std::string noteText;    // the chosen note entry, or its text
  std::string acreage;
  std::string ring;
  std::string locationText;

 private:
  // The parcel that Apply, Delete and New parcel work on: the index box's value when it names a
  // parcel of the store as it was read when the parcel was shown; 0, with the user told, else.
  int Target();
  void EmptyFields();
  bool Listing(const char* extension, const char* missing, bool lld, std::vector<ListingRecord>& records);
  void ClearSelectionList();
  Session& session_;
  // The parcel index of each drop-down entry, and the reading of the store they belong to.
  std::vector<int> parcels_;
  unsigned reading_ = 0;
};

}  // namespace tessel
