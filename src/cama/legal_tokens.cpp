#include "cama/legal_tokens.h"

namespace tessel {

namespace {

// Cells run through the quarters NE, NW, SW, SE and inside each quarter in the same order:
// NE quarter A B C D, NW E F G H, SW I J K L, SE M N O P.
const std::vector<LegalToken> kTable = {
    // Two characters: quarters and halves.
    {"NE", "ABCD"}, {"SE", "MNOP"}, {"SW", "IJKL"}, {"NW", "EFGH"},
    {"E2", "ABCDMNOP"}, {"N2", "ABCDEFGH"}, {"W2", "EFGHIJKL"}, {"S2", "IJKLMNOP"},
    // Three characters.
    {"NE4", "ABCD"}, {"SE4", "MNOP"}, {"SW4", "IJKL"}, {"NW4", "EFGH"},
    // Four characters, one cell.
    {"NENE", "A"}, {"NWNE", "B"}, {"SWNE", "C"}, {"SENE", "D"},
    {"NENW", "E"}, {"NWNW", "F"}, {"SWNW", "G"}, {"SENW", "H"},
    {"NESW", "I"}, {"NWSW", "J"}, {"SWSW", "K"}, {"SESW", "L"},
    {"NESE", "M"}, {"NWSE", "N"}, {"SWSE", "O"}, {"SESE", "P"},
    // Four characters, a half of a quarter.
    {"N2NE", "AB"}, {"E2NE", "AD"}, {"S2NE", "CD"}, {"W2NE", "BC"},
    {"N2SE", "MN"}, {"E2SE", "MP"}, {"S2SE", "OP"}, {"W2SE", "NO"},
    {"N2SW", "IJ"}, {"E2SW", "IL"}, {"S2SW", "KL"}, {"W2SW", "JK"},
    {"N2NW", "EF"}, {"E2NW", "EH"}, {"S2NW", "GH"}, {"W2NW", "FG"},
    // Four characters, a half of a half.
    {"N2N2", "ABEF"}, {"S2N2", "CDGH"}, {"N2S2", "IJMN"}, {"S2S2", "KLOP"},
    {"E2E2", "ADMP"}, {"W2E2", "BCNO"}, {"E2W2", "EHIL"}, {"W2W2", "FGJK"},
    // Five characters: a half of a quarter written with its "4".
    {"N2NE4", "AB"}, {"E2NE4", "AD"}, {"S2NE4", "CD"}, {"W2NE4", "BC"},
    {"N2SE4", "MN"}, {"E2SE4", "MP"}, {"S2SE4", "OP"}, {"W2SE4", "NO"},
    {"N2SW4", "IJ"}, {"E2SW4", "IL"}, {"S2SW4", "KL"}, {"W2SW4", "JK"},
    {"N2NW4", "EF"}, {"E2NW4", "EH"}, {"S2NW4", "GH"}, {"W2NW4", "FG"},
    // Six characters: one cell written with both "4"s.
    {"NE4NE4", "A"}, {"NW4NE4", "B"}, {"SW4NE4", "C"}, {"SE4NE4", "D"},
    {"NE4NW4", "E"}, {"NW4NW4", "F"}, {"SW4NW4", "G"}, {"SE4NW4", "H"},
    {"NE4SW4", "I"}, {"NW4SW4", "J"}, {"SW4SW4", "K"}, {"SE4SW4", "L"},
    {"NE4SE4", "M"}, {"NW4SE4", "N"}, {"SW4SE4", "O"}, {"SE4SE4", "P"},
};

}  // namespace

const std::vector<LegalToken>& LegalTokenTable() { return kTable; }

const char* TokenCells(std::string_view token) {
  if (token.size() < 2 || token.size() > 6) return nullptr;
  for (const LegalToken& entry : kTable) {
    if (token == entry.token) return entry.cells;
  }
  return nullptr;
}

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
  std::vector<std::string_view> tokens;
  std::size_t start = 0;
  while (true) {
    const std::size_t comma = text.find(',', start);
    if (comma == std::string_view::npos) {
      tokens.push_back(text.substr(start));
      return tokens;
    }
    tokens.push_back(text.substr(start, comma - start));
    start = comma + 1;
  }
}

char QuadrantDigit(char letter) {
  if (letter >= 'A' && letter <= 'D') return '1';
  if (letter >= 'E' && letter <= 'H') return '2';
  if (letter >= 'I' && letter <= 'L') return '3';
  if (letter >= 'M' && letter <= 'P') return '4';
  return 0;
}

}  // namespace tessel
