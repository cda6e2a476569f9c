#pragma once
// The reading a load can do ahead of its turn: .raw's record lines and .IID's parcels need
// nothing of the files read before them, so they are read on threads of their own while the
// coordinates and the network are read, and stored when the load comes to them. What the files
// hold reaches the stores exactly as a reading in turn would put it, faults included.

#include <future>
#include <string>

#include "datasets/line_files.h"
#include "parcels/parcel_file.h"

namespace tessel {

class ReadAhead {
 public:
  // Starts reading each file that is there now; parcels only when the load reads them.
  ReadAhead(const Session& session, bool parcels);
  // Waits for what is still being read.
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  // What was read of the file, waiting for it; null when it was not read ahead or the file is
  // no longer the one read (the reader then reads it in its turn).
  RawRecords* Raw(const Session& session);
  ParcelFileRead* Parcels(const Session& session);

 private:
  template <typename T>
  struct Pending {
    std::string path;
    std::future<T> future;
    T result;
    bool taken = false;
    T* Take(const std::string& now);
  };
  Pending<RawRecords> raw_;
  Pending<ParcelFileRead> parcels_;
};

}  // namespace tessel
