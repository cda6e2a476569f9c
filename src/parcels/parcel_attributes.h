#pragma once
// The attribute line of a parcel, split into its fields and put together again. Columns, from
// 1: "Sec_" 1-4, section 5-7, location letter 9, " T_" 10-12, survey type 13, survey number
// 15-19, suffix 20-21, note 25, acreage 27-35, and the 17-character tail at the end.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// The fields of one attribute line as they stand, each cut by its columns. Numbers and
// suffix are trimmed; section, location, type and note keep their blanks.
struct ParcelAttributes {
  std::string section;      // columns 5-7
  std::string location;     // column 9, "A" to "Q" or blank
  std::string surveyType;   // column 13
  std::string number;       // columns 15-19, trimmed
  std::string suffix;       // columns 20-21, trimmed
  std::string note;         // column 25
  std::string acreage;      // columns 27-35, trimmed
  std::string tail;         // the last 17 characters
};

// Pure: any text splits, a short line gives empty fields where it ends.
ParcelAttributes SplitAttributeLine(std::string_view line);

// The entries of the survey type and note lists; the letter of an entry is its first character.
const std::vector<std::string>& SurveyTypeEntries();
const std::vector<std::string>& SurveyNoteEntries();
// The locations of the buttons, "A" to "Q".
inline constexpr std::string_view kLocationLetters = "ABCDEFGHIJKLMNOPQ";

// The written forms of the fields.
// The number padded on the right with blanks to 5; a longer one stays as it is.
std::string WrittenNumber(std::string_view number);
// The suffix: two blanks for none, one blank behind a single character.
std::string WrittenSuffix(std::string_view suffix);
// The note letter: a blank for an empty note or "<none>", else the entry's first character.
std::string WrittenNote(std::string_view noteText);
// The acreage by value with the picture "####0.000", padded on the left to 9.
std::string WrittenAcreage(std::string_view acreage);
// For survey type "O" the number gets leading zeros up to three digits.
std::string UnnumberedLotNumber(std::string_view number);

// The live echo of a field into the working line. A section shorter than 3 characters is
// echoed padded with blanks, so that typing it keeps the columns of the rest of the line.
std::string EchoSection(std::string_view line, std::string_view section);
std::string EchoLocation(std::string_view line, std::string_view letter);
std::string EchoSurveyType(std::string_view line, std::string_view letter);

// Overwrites the columns from `column` of the line with `value`, keeping the line's length: a
// value longer than its columns is cut to them, and a line too short is left as far as it
// reaches.
std::string OverwriteColumns(std::string_view line, int column, int width, std::string_view value);

}  // namespace tessel
