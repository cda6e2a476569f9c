#pragma once
// The State Plane support files: written into the job folder when a job opens, removed again
// when it closes, so that a job folder at rest holds only the job's own data.

#include <array>

#include "model/session.h"

namespace tessel {

// The names written, in this case.
inline constexpr std::array<const char*, 4> kSupportFiles = {"Nad27.con", "Nad83.con", "Table.dat", "Zone.dat"};

// The text of a support file: its embedded bytes, then a line end.
std::string SupportFileText(const char* name);

// Writes the four support files into the job folder; the first failure is told, naming the file.
void WriteSupportFiles(Session& session);
// Deletes the four from the job folder, unless the job lives in the program's own folder,
// where the master copies stand.
void RemoveSupportFiles(Session& session);

}  // namespace tessel
