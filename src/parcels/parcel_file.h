#pragma once
// The parcel file .IID: reading it into the parcel store and saving attribute edits by copying
// the file line by line, replacing only the attribute lines.

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kEditedMarker = "  * * * This file has been edited by Tessel  * * *  ";
// Around the file's name: a write refused because the file's attribute lines are not those of the
// parcels in memory, in their order.
inline constexpr const char* kMsgParcelFileOutOfStepBefore = "The parcel file ";
inline constexpr const char* kMsgParcelFileOutOfStepAfter =
    " does not hold the parcels in the order of the parcels in memory, so writing it would put attribute lines "
    "onto the wrong parcels. Nothing was written.\r\n"
    "(Another program may have rewritten it, an attribute line may begin with \"SEC_\", or a parcel deleted and "
    "saved left a blank line in its place.) Use File > Reload Current and make the edits again.";

// A ring line: columns 1, 8 and 15 blank, columns 6, 13 and 20 digits.
bool IsRingLine(const std::string& line);

// .IID read into tables of the parcel store's own: what the reading leaves in tables with nothing
// written, up to a fault. The part of the reading that needs nothing else of the job, so that a
// load can do it on a second thread.
struct ParcelFileRead {
  BoundedArray<std::string> lines{ParcelStore::kBound};
  BoundedArray<std::string> rings{ParcelStore::kBound};
  BoundedArray<double> ys{ParcelStore::kBound};
  BoundedArray<double> xs{ParcelStore::kBound};
  int next = 1;              // one past the last attribute line's parcel
  std::exception_ptr fault;  // what ended the reading early, raised once the tables are stored
};
ParcelFileRead ReadParcelFile(const std::string& path);
// Faults (a parcel index past 9000) are not trapped here: they go to the caller. `ahead` holds
// the file read beforehand, taken whole by a store whose tables are empty; otherwise the file
// is read here.
void ReadParcels(Session& session, ParcelFileRead* ahead = nullptr);
// The attribute lines of .IID's bytes as the writers count them: after the title, each line that
// begins with "Sec_".
std::vector<std::string> CountedAttributeLines(const std::string& bytes);
// The frame of every rewrite of .IID: the file is copied to .iib, the copy is read, its title
// line gives way to the edited marker, and `each` writes what stands for every further line.
// Refused, before anything is touched, when the file's counted attribute lines are not the
// store's FileLines. Faults go to the caller.
void RewriteParcelFile(Session& session,
                       const std::function<void(const std::string& line, std::vector<std::string>& out)>& each);

// How the attribute lines of the store reach the file. Each line of the file that begins with
// "Sec_" is the next parcel k (a "SEC_" line is copied as it stands, and later parcels fall out
// of step, as the file has always been written).
//   Save: the edit note of k as "Tessel Edited: " and the note, then its line, even an empty one.
//   Ok (the dialogs' OK): a note "DBLATT n" writes the line of parcel n in its place, any other
//     note is written as above; the line is written only when it is not empty. With
//     `obsoleteLines`, a parcel whose note begins with "(OBSOLETE)" is replaced by all of them.
struct ParcelWriteRule {
  enum class Kind { Save, Ok } kind = Kind::Save;
  const std::vector<std::string>* obsoleteLines = nullptr;
};
// The one frame of every attribute write; faults go to the caller.
void WriteAttributeLines(Session& session, const ParcelWriteRule& rule);

// File Save: .IID is copied to .iib and written back with the edited attribute lines. False when
// it could not be: the user is told, naming the file, and the edits stay unsaved.
bool WriteParcels(Session& session);
// The write of the dialogs' OK (parcel properties, quick edit, the id selection). False when
// .IID could not be rewritten: the user is told, naming the file, .IID is as it was and the
// store keeps its edits.
bool WriteEditedParcels(Session& session, const std::vector<std::string>* obsoleteLines = nullptr);
// After such a write: the store emptied and .IID read again, the selection and its list emptied,
// the parcel tool back, the edits saved.
void RereadParcelsAfterWrite(Session& session);
// The parcels of the selection list take the location (x, y): their location lines in .IID are
// rewritten and marked, and the parcels are read again. When .IID cannot be rewritten the user is
// told and the parcels stay where they were.
void MoveParcelLocation(Session& session, double x, double y);

}  // namespace tessel
