#pragma once
// Export of the selected points to a .cor file of their own, with the job's .def beside it.

#include <string>

#include "model/session.h"

namespace tessel {

// Where the alignment table left X and Y: a coordinate text longer than the table knows (13
// characters or more) is placed where the line before it left these.
struct ExportAlignment {
  int xColumn = 20;  // the column X starts at
  int yBlanks = 2;   // the blanks between X and Y
};

// One exported line: "G" and the trimmed identifier from column 2, X ("########.000") ending in
// column 31, Y ("#######.000") ending in column 45, by the alignment table of the export: an X
// text of up to 12 characters starts at column 32 less its length (22, 21, 20 for 10, 11, 12),
// a Y text of up to 12 characters follows 14 less its length blanks; a longer text keeps the
// alignment's last setting.
std::string ExportLine(const std::string& id, double x, double y, ExportAlignment& alignment);
// The same for a line with nothing before it.
std::string ExportLine(const std::string& id, double x, double y);

// The question asked before the export replaces a .def that stands where the job's is copied to.
std::string ReplaceDefQuestion(const std::string& defPath);

// File, Export, "Ostrel Records System (.COR)".
void ExportSelectedPoints(Session& session);

}  // namespace tessel
