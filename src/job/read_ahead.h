#pragma once
// The reading a load can do ahead of its turn. The network lines of .LSA, .raw's record lines and
// .IID's parcels are cut from their files without anything of the files read before them; only
// linking them needs the point store. So one thread of their own cuts them, in the order the load
// takes them, while .COR and .LSA's points are read into the store, and each is stored when the
// load comes to it. What the files hold when the load starts reaches the stores exactly as a
// reading in turn would put it, faults included. (.LSA's points are left to the load itself: on two cores the thread would
// otherwise finish after the load wants them.)

#include <future>
#include <string>
#include <thread>

#include "datasets/line_files.h"
#include "parcels/parcel_file.h"

namespace tessel {

class ReadAhead {
 public:
  // Starts reading the files that are there now (parcels only when the load reads them), unless
  // the machine has a single core.
  ReadAhead(const Session& session, bool parcels);
  // Waits for the thread.
  ~ReadAhead();
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;

  // What was read of the file, waiting for it; null when it was not read ahead or the file's
  // name is no longer the one read (the reader then reads it in its turn). Each is taken once.
  LsaLineIds* LsaLines(const Session& session);
  RawRecords* Raw(const Session& session);
  ParcelFileRead* Parcels(const Session& session);

 private:
  template <typename T>
  struct Pending {
    std::string path;
    std::promise<T> promise;
    std::future<T> future;
    T result;
    bool Want(const std::string& file);
    void Read(T (*read)(const std::string&));
    T* Take(const std::string& now);
  };
  Pending<LsaLineIds> lsaLines_;
  Pending<RawRecords> raw_;
  Pending<ParcelFileRead> parcels_;
  std::thread thread_;
};

}  // namespace tessel
