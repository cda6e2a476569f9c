#pragma once
// Readers of the point store (.COR, the points and control sections of .LSA) and the .COR
// writer. Each reader traps its own faults and ends quietly, keeping what it read.

#include <string>
#include <string_view>

#include "model/session.h"

namespace tessel {

// .LSA sections 1 to 4 end with a line whose last character converts to 1; any other last
// character that is not a digit is a type mismatch fault.
void PassLsaSections(class LineReader& lsa, int sections);

// The fields of a point's line as they are cut, before reading.
struct CoordinateFields {
  std::string_view id, x, y;
};
// .COR: identifier 2-19, X 20-31, Y 33-45.
CoordinateFields CorFields(std::string_view line);
// .LSA section 1, control: identifier 2-19, X 20-34, Y 37-51.
CoordinateFields ControlFields(std::string_view line);

void ReadCor(Session& session);
void VerifyLsaPoints(Session& session);
// The points of .LSA's last section into the store; true when the section was read to its end.
bool ReadLsaPoints(Session& session);
void ReadControl(Session& session);

// The line of one point as the .COR writer puts it; empty when the point is left out because a
// coordinate reads back as 0.
std::string CorLine(const std::string& id, double x, double y);
// Replaces .COR with entries 1 to PointCount.
void WriteCorFromStore(Session& session);

}  // namespace tessel
