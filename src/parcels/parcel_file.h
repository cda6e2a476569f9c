#pragma once
// The parcel file .IID: reading it into the parcel store and saving attribute edits by copying
// the file line by line, replacing only the attribute lines.

#include <functional>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kEditedMarker = "  * * * This file has been edited by Tessel  * * *  ";

// A ring line: columns 1, 8 and 15 blank, columns 6, 13 and 20 digits.
bool IsRingLine(const std::string& line);

// Faults (a parcel index past 9000) are not trapped here: they go to the caller.
void ReadParcels(Session& session);
// The frame of every rewrite of .IID: the file is copied to .iib, the copy is read, its title
// line gives way to the edited marker, and `each` writes what stands for every further line.
// Faults go to the caller.
void RewriteParcelFile(Session& session,
                       const std::function<void(const std::string& line, std::vector<std::string>& out)>& each);

// File Save: .IID is copied to .iib and written back with the edited attribute lines. False when
// it could not be: the user is told, naming the file, and the edits stay unsaved.
bool WriteParcels(Session& session);
// The parcels of the selection list take the location (x, y): their location lines in .IID are
// rewritten and marked, and the parcels are read again. When .IID cannot be rewritten the user is
// told and the parcels stay where they were.
void MoveParcelLocation(Session& session, double x, double y);

}  // namespace tessel
