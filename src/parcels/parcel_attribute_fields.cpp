#include "parcels/parcel_attribute_fields.h"

#include <cctype>
#include <vector>

#include "model/text.h"
#include "parcels/parcel_attributes.h"

namespace tessel {

namespace {

// The caption of a list entry "L - Lot, Numbered" (some entries are written "K- ..." or end in
// a blank): what follows the letter and its dash, trimmed.
std::string Caption(const std::vector<std::string>& entries, std::string_view letter) {
  if (letter.size() != 1) return {};
  for (const std::string& entry : entries) {
    if (entry.empty() || entry[0] != letter[0]) continue;
    const std::size_t dash = entry.find('-');
    return dash == std::string::npos ? std::string() : Trim(std::string_view(entry).substr(dash + 1));
  }
  return {};
}

bool AllDigits(std::string_view text) {
  if (text.empty()) return false;
  for (const char c : text) {
    if (!std::isdigit(static_cast<unsigned char>(c))) return false;
  }
  return true;
}

// A number with an optional sign, digits and one decimal point, nothing else.
bool IsPlainNumber(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  bool digit = false, point = false;
  for (const char c : text) {
    if (std::isdigit(static_cast<unsigned char>(c))) {
      digit = true;
    } else if (c == '.' && !point) {
      point = true;
    } else {
      return false;
    }
  }
  return digit;
}

}  // namespace

std::string SurveyTypeCaption(std::string_view letter) { return Caption(SurveyTypeEntries(), letter); }
std::string ParcelNoteCaption(std::string_view letter) { return Caption(SurveyNoteEntries(), letter); }

ParcelAttributeFields ParseParcelAttributes(std::string_view line) {
  const ParcelAttributes split = SplitAttributeLine(line);
  ParcelAttributeFields a;
  a.line = std::string(line);
  a.sectionText = Trim(split.section);
  if (AllDigits(a.sectionText)) a.section = static_cast<int>(Val(a.sectionText));
  a.nominalLocation = Trim(split.location);
  a.surveyTypeLetter = Trim(split.surveyType);
  a.surveyTypeCaption = SurveyTypeCaption(a.surveyTypeLetter);
  a.surveyNumber = split.number;
  a.suffix = split.suffix;
  a.noteLetter = Trim(split.note);
  a.noteCaption = ParcelNoteCaption(a.noteLetter);
  if (IsPlainNumber(split.acreage)) a.acreage = Val(split.acreage);
  // The free field from column 36, however long the line (the split's tail is its last 17).
  a.tail = Trim(Mid(line, 36));
  return a;
}

}  // namespace tessel
