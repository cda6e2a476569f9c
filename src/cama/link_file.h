#pragma once
// The records of a link file (.mtc) as it stands on disk: a heading line, then a group of four
// lines a record — the parcel's area point, its chain, its geocode and a blank line.

#include <string>
#include <vector>

namespace tessel {

struct LinkFileRecord {
  std::string areaPoint;  // the X and Y as the record's first line holds them
  double x = 0.0;
  double y = 0.0;
  std::string chain;
  std::string geocode;
  // False for the record whose number ended the reading: it keeps what was read before the fault
  // (its X when only the Y failed) and nothing after.
  bool complete = true;
};

// A geocode of the full 17 characters is a linked record; any other is not linked yet.
bool IsLinkedGeocode(const std::string& geocode);

// The records of the file's bytes, at most `bound` of them. A group cut short by the end of the
// file keeps what it has; a number too large for a double ends the reading there.
std::vector<LinkFileRecord> ReadLinkRecords(std::string bytes, int bound);

}  // namespace tessel
