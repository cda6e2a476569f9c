#pragma once
// The grammar of the legal descriptions: a closed table of 84 tokens, each naming a set of the
// sixteen quarter-quarter cells of a section by their letters, and the split of a legal text
// into tokens at its commas.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

struct LegalToken {
  const char* token;
  const char* cells;  // cell letters A to P, in the table's order
};

// The whole table, shortest tokens first.
const std::vector<LegalToken>& LegalTokenTable();

// The cells of a token matched whole, exactly and case-sensitively; nullptr when it is not in
// the table. Tokens shorter than 2 or longer than 6 characters are never in it.
const char* TokenCells(std::string_view token);

// The texts between neighbouring commas of the text with a comma put at each end: a text
// without a comma is one token, an empty stretch is a token of length zero. Not trimmed.
std::vector<std::string_view> SplitAtCommas(std::string_view text);

// The quadrant digit of a cell letter: A-D "1", E-H "2", I-L "3", M-P "4"; 0 for any other.
char QuadrantDigit(char letter);

}  // namespace tessel
