#pragma once
// The side listings of a township's parcel descriptions, and the id selection that turns their
// records into attribute lines.
//
// .lld (written by desclink), one record a line:
//   1-20 description id, 23-25 section, 27 survey type, 29-33 survey number, 34-35 suffix
//   (",," for none), 38-53 sixteen flags, "X" marking locations "A" to "P", 55-62 acreage of
//   eight characters with leading zeros ("0039.510"), 64 note ("," for none).
// .lot, one lot a line:
//   1-2 lot number, 4-5 location " 1" to "17" for "A" to "Q", 7 survey type, 9-13 survey number,
//   15-16 suffix, 23-25 section, 27-34 acreage as in .lld, 36 note.
// Both are taken for a section when the value at column 23 equals the section's.
//
// The selection dialog shows an .lld record as an entry of its own columns, under the heading
// "Sec T Num   S  ABCDEFGHIJKLMNOP Acreage N": 1-3 section, 5 survey type, 7-11 survey number,
// 13-14 suffix, 16-31 the flags, 33-40 acreage, 42 note. A .lot record shows as it stands.

#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kLldHeading = "Sec T Num   S  ABCDEFGHIJKLMNOP Acreage N";
inline constexpr const char* kLotHeading = " S N  E1  E2 #    Acres  T # X";
inline constexpr const char* kScratchName = "ts$0001.001";

// One record of a listing, with the fields that fill the properties dialog.
struct ListingRecord {
  std::string entry;     // the text of its list entry
  std::string section;   // three characters
  std::string surveyType;
  std::string number;    // trimmed
  std::string suffix;    // trimmed, ",," read as none
  std::string location;  // "A" to "Q", or blank
  std::string acreage;   // leading zeros cut, trimmed
  std::string note;      // one character, "," read as a blank
};

// Pure readers of the listings' text: the records of the section of value `section`. Any text
// reads; a line too short for a field gives that field empty.
std::vector<ListingRecord> ReadLldSection(std::string_view text, double section);
std::vector<ListingRecord> ReadLotSection(std::string_view text, double section);
// The entry of an .lld line in the selection dialog's columns.
std::string LldEntry(std::string_view lldLine);

// The acreage of a listing with its leading zeros cut and replaced by blanks.
std::string CutLeadingZeros(std::string_view acreage);
// The attribute line built from a selection entry, with the tail of `oldLine`.
std::string AttributeLineFromEntry(std::string_view entry, std::string_view oldLine);
// False for a record whose survey type is not in the list of types.
bool SurveyTypeKnown(std::string_view entry);

// The parcel popup's multi-attribute tool: the selected parcels' lines are taken off the store
// into the scratch file, and the .lld records of their section are given for the selection
// dialog. False, with the user told, when the tool cannot start.
bool StartMultipleAttributes(Session& session, std::vector<ListingRecord>& records);

// The id selection: the records chosen.
class ParcelIdSelection {
 public:
  explicit ParcelIdSelection(Session& session) : session_(session) {}
  // The canvas is locked while the dialog is loaded.
  void Open(std::vector<ListingRecord> records);
  // A double click in the first list (moves it to the third) and in the third (moves it back).
  void Choose(int position);
  void Unchoose(int position);
  // OK: false (the dialog stays) when nothing was chosen or the file could not be written.
  bool Ok();
  // Cancel and closing the window: the lines taken off come back from the file.
  void Cancel();

  const std::vector<ListingRecord>& offered() const { return offered_; }
  const std::vector<ListingRecord>& chosen() const { return chosen_; }

 private:
  Session& session_;
  std::vector<ListingRecord> offered_;
  std::vector<ListingRecord> chosen_;
};

}  // namespace tessel
