#pragma once
// Builders for the CAMA tests: assessor lines with their fields in place, parcels in the store,
// and a fixed date for the linking files.

#include <cstdlib>
#include <string>

#include "model/platform.h"
#include "model/session.h"

namespace tessel::test {

// A CAMA line of 370 columns: key in 1-17, owner in 41-70, township code in 202-209, legal
// text in 251-370.
inline std::string CamaLine(const std::string& key, const std::string& owner, const std::string& code,
                            const std::string& legal) {
  std::string line(370, ' ');
  line.replace(0, key.size(), key);
  line.replace(40, owner.size(), owner);
  line.replace(201, code.size(), code);
  line.replace(250, legal.size(), legal);
  return line;
}

// Appends a parcel with its attribute line, ring and location.
inline void AddParcel(Session& s, const std::string& line, double x, double y, const std::string& ring = " 100100 100200") {
  const int i = ++s.parcels.ParcelCount;
  s.parcels.ParcelLine.at(i) = line;
  s.parcels.ParcelRing.at(i) = ring;
  s.parcels.ParcelX.at(i) = x;
  s.parcels.ParcelY.at(i) = y;
  s.parcels.ParcelIdx.at(i) = static_cast<std::int16_t>(i);
}

// The linking files print 1/2/2024 while this lives.
class FixedDate {
 public:
  FixedDate() { SetEnvironment("SOURCE_DATE_EPOCH", "1704153600"); }
  ~FixedDate() { UnsetEnvironment("SOURCE_DATE_EPOCH"); }
};

// Text padded with blanks to `width` columns.
inline std::string PadTo(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

// Line a of a .mtc group: X from column 25, Y in the next print zone.
inline std::string PointLine(const std::string& x, const std::string& y) {
  const std::string first = "Parcel area point(X,Y)= " + x;
  return PadTo(first, (first.size() / 14 + 1) * 14) + y;
}

}  // namespace tessel::test
