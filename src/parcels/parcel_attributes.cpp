#include "parcels/parcel_attributes.h"

#include <cctype>
#include <utility>

#include "model/text.h"

namespace tessel {

namespace {

// The entries of the survey type and note lists: the letter, then the caption.
constexpr std::pair<char, const char*> kSurveyTypes[] = {
    {'A', "Aliquot Part"},
    {'B', "Aliquot < 40 ac."},
    {'C', "Coal Survey"},
    {'D', "Allotment Survey"},
    {'E', "Metes and Bounds"},
    {'F', "Farm Unit"},
    {'G', "Land Grant"},
    {'H', "Homestead Entry Survey"},
    {'I', "Indian Allotment"},
    {'J', "Small Holding Claim"},
    {'K', "Block & lot in Townsite"},
    {'L', "Lot, Numbered"},
    {'M', "Mineral Survey"},
    {'N', "Townsite"},
    {'O', "Un-numbered Lot"},
    {'P', "Parcel"},
    {'Q', "Donation Claim"},
    {'R', "Private Survey"},
    {'S', "U.S. Survey"},
    {'T', "Tract"},
    {'U', "Unsurveyed (protracted)"},
    {'W', "Water"},
    {'X', "Exchange survey"},
    {'Y', "Townsite outlot"},
    {'Z', "Unsurveyed, unprotracted"},
    {'2', "Tract (non-cadastral)"},
    {'?', "Unknown"},
};

constexpr std::pair<char, const char*> kNotes[] = {
    {'A', "Approximate acreage figure"},
    {'C', "Conflict"},
    {'D', "Non-add acres; area overlap"},
    {'M', "Indicates negative areage (error)"},
    {'N', "PLS not coded due to complexity"},
    {'P', "Records problem - acreage"},
    {'R', "Survey description replaced"},
    {'S', "Salt water when Survey Type is \"W\""},
    {'X', "Exceptions"},
};

template <std::size_t N>
std::string Caption(const std::pair<char, const char*> (&table)[N], std::string_view letter) {
  if (letter.size() != 1) return {};
  for (const auto& [key, caption] : table) {
    if (key == letter[0]) return caption;
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

std::string SurveyTypeCaption(std::string_view letter) { return Caption(kSurveyTypes, letter); }
std::string ParcelNoteCaption(std::string_view letter) { return Caption(kNotes, letter); }

ParcelAttributes ParseParcelAttributes(std::string_view line) {
  ParcelAttributes a;
  a.line = std::string(line);
  a.sectionText = Trim(MidView(line, 5, 3));
  if (AllDigits(a.sectionText)) a.section = static_cast<int>(Val(a.sectionText));
  a.nominalLocation = Trim(MidView(line, 9, 1));
  a.surveyTypeLetter = Trim(MidView(line, 13, 1));
  a.surveyTypeCaption = SurveyTypeCaption(a.surveyTypeLetter);
  a.surveyNumber = Trim(MidView(line, 15, 5));
  a.suffix = Trim(MidView(line, 20, 2));
  a.noteLetter = Trim(MidView(line, 25, 1));
  a.noteCaption = ParcelNoteCaption(a.noteLetter);
  const std::string acreage = Trim(MidView(line, 27, 9));
  if (IsPlainNumber(acreage)) a.acreage = Val(acreage);
  a.tail = Trim(Mid(line, 36));
  return a;
}

}  // namespace tessel
