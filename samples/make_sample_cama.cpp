// Writes a county assessor's CAMA database around the sample township T12NR04E:
//
//   make_sample_cama OUT.txt
//
// Rows of the township and of its neighbours (another township, another range, a fractional
// township), a row whose code is in lower case, short lines and an empty line; in the township,
// rows for sections 1, 6, 22 and 35 with legal texts that hit the token table (quarters, halves,
// quarter-quarters with and without their "4"), a whole-section "ALL" row, lots, mineral and
// homestead entry surveys with commas in their numbers, and texts that miss the table (lower
// case, a written fraction, a trailing period, two tokens without a comma between them).
// The sample job's .cama is `tessel-batch cama-import T12NR04E.def OUT.txt` on this file.

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

struct Row {
  const char* code;     // township and range, columns 202-209
  int section;
  int quadrant;
  const char* owner;
  const char* legal;
};

std::string Line(const Row& row, int serial) {
  std::string line(370, ' ');
  char key[40];
  std::snprintf(key, sizeof key, "060412%02d%d%08d", row.section, row.quadrant, serial);
  line.replace(0, 17, key);
  // Columns 18-38: the rest of the long key.
  char longKey[24];
  std::snprintf(longKey, sizeof longKey, "-%03d-PARCEL", serial % 1000);
  line.replace(17, std::string(longKey).size(), longKey);
  line.replace(40, std::string(row.owner).size(), row.owner);
  line.replace(201, 8, row.code);
  const std::string legal = row.legal;
  line.replace(250, legal.size() > 120 ? 120 : legal.size(), legal.substr(0, 120));
  return line;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_sample_cama OUT.txt\n");
    return 2;
  }
  const char* kTwp = "120N040E";
  const std::vector<Row> rows = {
      {"130N040E", 1, 1, "NORTHERN LAND CO", "NE4NE4"},
      {kTwp, 1, 1, "ANDERSON, CARL", "NENE, LOT 1"},
      {kTwp, 1, 1, "BAKER FARMS LLC", "NWNE,SWNE"},
      {"120N050E", 1, 1, "EASTERN RANCH", "SENE"},
      {kTwp, 1, 1, "CARTER, ANN", "LOT 4 IN SENE"},
      {kTwp, 1, 2, "DIAZ, MARIA", "NW4NW4"},
      {"125N040E", 1, 2, "FRACTIONAL TRUST", "NW"},
      {kTwp, 1, 4, "EVANS, ROBERT & JUNE", "N2SE"},
      {"120n040E", 1, 4, "LOWER CASE CODE", "SESE"},
      {kTwp, 6, 1, "FOSTER, H", "NE4NE4"},
      {kTwp, 6, 1, "GRANT RANCH INC", "LOT 2 AND LOT 3"},
      {kTwp, 6, 1, "GRANT RANCH INC", "W2NE4"},
      {kTwp, 6, 2, "HUGHES, PAT", "NENW"},
      {kTwp, 6, 3, "IRWIN, LEE", "E2SW4"},
      {kTwp, 6, 4, "JONES, M", "se4se4"},
      {kTwp, 6, 4, "KELLY, SEAN", "W2SE, EXCEPT RAILROAD ROW"},
      {kTwp, 6, 4, "LOPEZ, R", "NE1/4 SE1/4"},
      {kTwp, 22, 1, "MOUNTAIN MINING CO", "ALL"},
      {kTwp, 22, 2, "NASH, T", "NESW SESW"},
      {kTwp, 22, 3, "OWENS, D", "S2SW"},
      {kTwp, 22, 4, "PRICE, A", "SESE."},
      {kTwp, 35, 4, "QUARTZ HILL MINES", "M.S. 1,234 QUARTZ LODE"},
      {kTwp, 35, 4, "REED, HOMESTEAD", "H.E.S. 2,051"},
      {kTwp, 35, 4, "STONE, E", "SWSE,NWSE"},
      {kTwp, 35, 2, "TAYLOR, B", "S2N2"},
      {kTwp, 35, 2, "UNDERWOOD, F", "NE NE"},
      {"120N040W", 35, 1, "WEST RANGE LLC", "NE"},
  };
  std::ofstream out(argv[1], std::ios::binary);
  int serial = 0;
  for (const Row& row : rows) {
    out << Line(row, ++serial) << "\r\n";
    if (serial == 5) out << "060412011SHORT LINE, NO CODE\r\n";
    if (serial == 12) out << "\r\n";
  }
  // A line that ends inside the code.
  out << std::string(205, ' ').replace(0, 17, "06041201100009999") << "\r\n";
  return out ? 0 : 1;
}
