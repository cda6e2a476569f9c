#include "parcels/parcel_attributes.h"

#include "model/text.h"

namespace tessel {

ParcelAttributes SplitAttributeLine(std::string_view line) {
  ParcelAttributes a;
  a.section = Mid(line, 5, 3);
  a.location = Mid(line, 9, 1);
  a.surveyType = Mid(line, 13, 1);
  a.number = Trim(Mid(line, 15, 5));
  a.suffix = Trim(Mid(line, 20, 2));
  a.note = Mid(line, 25, 1);
  a.acreage = Trim(Mid(line, 27, 9));
  a.tail = Right(line, 17);
  return a;
}

const std::vector<std::string>& SurveyTypeEntries() {
  static const std::vector<std::string> entries = {
      "A - Aliquot Part",       "B - Aliquot < 40 ac.",        "C - Coal Survey",
      "D - Allotment Survey",   "E - Metes and Bounds",        "F - Farm Unit",
      "G - Land Grant",         "H - Homestead Entry Survey",  "I - Indian Allotment",
      "J - Small Holding Claim", "K- Block & lot in Townsite", "L - Lot, Numbered",
      "M - Mineral Survey",     "N - Townsite",                "O - Un-numbered Lot",
      "P - Parcel",             "Q - Donation Claim",          "R - Private Survey",
      "S - U.S. Survey",        "T - Tract",                   "U - Unsurveyed (protracted)",
      "W - Water",              "X - Exchange survey",         "Y - Townsite outlot",
      "Z - Unsurveyed, unprotracted", "2 - Tract (non-cadastral)", "? - Unknown"};
  return entries;
}

const std::vector<std::string>& SurveyNoteEntries() {
  static const std::vector<std::string> entries = {"<none>",
                                                   "A - Approximate acreage figure",
                                                   "C - Conflict ",
                                                   "D - Non-add acres; area overlap",
                                                   "M - Indicates negative areage (error) ",
                                                   "N - PLS not coded due to complexity",
                                                   "P - Records problem - acreage",
                                                   "R - Survey description replaced",
                                                   "S - Salt water when Survey Type is \"W\"",
                                                   "X - Exceptions"};
  return entries;
}

std::string WrittenNumber(std::string_view number) {
  std::string out(number);
  if (out.size() < 5) out.append(5 - out.size(), ' ');
  return out;
}

std::string WrittenSuffix(std::string_view suffix) {
  if (suffix.empty()) return "  ";
  if (suffix.size() == 1) return std::string(suffix) + " ";
  return std::string(suffix);
}

std::string WrittenNote(std::string_view noteText) {
  if (noteText.empty() || noteText == "<none>" || noteText == "<none> ") return " ";
  return std::string(noteText.substr(0, 1));
}

std::string WrittenAcreage(std::string_view acreage) { return PadLeft(FormatPicture(Val(acreage), 3), 9); }

std::string UnnumberedLotNumber(std::string_view number) {
  std::string out(number);
  if (out.size() == 1 || out.size() == 2) out.insert(0, 3 - out.size(), '0');
  return out;
}

std::string EchoSection(std::string_view line, std::string_view section) {
  // A section still being typed stands padded, so that the rest of the line keeps its columns.
  std::string field = Left(section, 3);
  field.append(3 - field.size(), ' ');
  return Left(line, 4) + field + Mid(line, 8);
}

std::string EchoLocation(std::string_view line, std::string_view letter) {
  return Left(line, 8) + std::string(letter) + Mid(line, 10);
}

std::string EchoSurveyType(std::string_view line, std::string_view letter) {
  return Left(line, 12) + std::string(letter) + Mid(line, 14);
}

std::string OverwriteColumns(std::string_view line, int column, int width, std::string_view value) {
  std::string out(line);
  const auto start = static_cast<std::size_t>(column - 1);
  for (std::size_t k = 0; k < static_cast<std::size_t>(width) && k < value.size(); ++k) {
    if (start + k >= out.size()) break;
    out[start + k] = value[k];
  }
  return out;
}

}  // namespace tessel
