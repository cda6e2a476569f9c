#pragma once
// A parcel's attribute line as typed fields for other programs (the GIS export): the split of
// parcel_attributes.h, trimmed, with numbers parsed and the letters' captions from the lists of
// the parcel dialog.

#include <optional>
#include <string>
#include <string_view>

namespace tessel {

struct ParcelAttributeFields {
  std::string line;                // the line as it stands
  std::string sectionText;         // columns 5-7, trimmed
  std::optional<int> section;      // the same as a number, when it is all digits
  std::string nominalLocation;     // column 9, "A" to "Q", empty when blank
  std::string surveyTypeLetter;    // column 13, empty when blank
  std::string surveyTypeCaption;   // the caption of that letter, empty for a letter not in the list
  std::string surveyNumber;        // columns 15-19, trimmed
  std::string suffix;              // columns 20-21, trimmed
  std::string noteLetter;          // column 25, empty when blank
  std::string noteCaption;         // the caption of that letter, empty for a letter not in the list
  std::optional<double> acreage;   // columns 27-35, when they hold a number
  std::string tail;                // columns 36 on, trimmed: the line's closing free field
};

// Any text is accepted: a short line gives empty fields for the columns it does not reach.
ParcelAttributeFields ParseParcelAttributes(std::string_view line);

// The captions of the survey type and note letters ("L" gives "Lot, Numbered"); empty for an
// unknown letter.
std::string SurveyTypeCaption(std::string_view letter);
std::string ParcelNoteCaption(std::string_view letter);

}  // namespace tessel
