#pragma once
// Readers of the line stores: network lines of .LSA section 2, display chains of .LXN, and the
// record lines of .raw with the temporary points of stations that have no coordinates.

#include <array>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace tessel {

// .LSA section 2 as its lines' identifiers, trimmed, up to the section's last line or a fault:
// the part of the reading that needs nothing of the point store, so that a load can do it on a
// second thread.
struct LsaLineIds {
  struct Line {
    std::string from, to;
    bool last = false;  // the section's last line
  };
  bool passed = false;  // section 1 was passed
  std::vector<Line> lines;
};
LsaLineIds ReadLsaLineIds(const std::string& path);
// `ahead` holds the section read beforehand; without it the file is read here.
void ReadLsaLines(Session& session, LsaLineIds* ahead = nullptr);
void ReadLxn(Session& session);
// .raw's record lines as the file gives them, cut into fields and measured: the part of the
// reading that needs nothing else of the job, so that a load can do it on a second thread.
struct RawRecords {
  // Laid out as the store's tables, record line 1 at 1, so that an empty store takes them whole.
  std::vector<RawFields> fields = std::vector<RawFields>(1);
  std::vector<RawMeasure> measures = std::vector<RawMeasure>(1);
  std::exception_ptr fault;  // what ended the reading early, raised when the records are stored
};
RawRecords ReadRawRecords(const std::string& path);
// Faults are not trapped here: they end the read and go to the caller, once the records read
// before them are stored. `ahead` holds the file's records read beforehand (they are moved into
// the store); without it the file is read here.
void ReadRaw(Session& session, RawRecords* ahead = nullptr);
// The six fields of a .raw record, 1 to 6 (0 stays empty): fields 3 and 6 are cut from the
// trimmed line, the others from the line as it stands.
std::array<std::string_view, 7> RawFieldViews(std::string_view line);

// Packed degrees, minutes and seconds to radians, by the length of the number's shortest text:
// 5 or 6 characters are DD MM SS (overlapping at 5), 3 or 4 are MM SS, 1 or 2 are SS, any other
// length gives 0.
double DmsToRadians(double packed);

}  // namespace tessel
