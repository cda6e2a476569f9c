#include "job/read_ahead.h"

#include <exception>
#include <system_error>

#include "model/paths.h"

namespace tessel {

template <typename T>
bool ReadAhead::Pending<T>::Want(const std::string& file) {
  if (!FileExistsAnyCase(file)) return false;
  path = file;
  future = promise.get_future();
  return true;
}

template <typename T>
void ReadAhead::Pending<T>::Read(T (*read)(const std::string&)) {
  if (!future.valid()) return;
  try {
    promise.set_value(read(path));
  } catch (...) {
    // Raised where the load takes it, as a reading in turn would raise it there.
    promise.set_exception(std::current_exception());
  }
}

template <typename T>
T* ReadAhead::Pending<T>::Take(const std::string& now) {
  if (!future.valid()) return nullptr;
  result = future.get();
  return now == path ? &result : nullptr;
}

ReadAhead::ReadAhead(const Session& session, bool parcels) {
  if (std::thread::hardware_concurrency() < 2) return;
  bool any = lsaLines_.Want(session.DatasetPath(".LSA"));
  any = raw_.Want(session.DatasetPath(".raw")) || any;
  if (parcels) any = parcels_.Want(session.DatasetPath(".IID")) || any;
  if (!any) return;
  try {
    thread_ = std::thread([this] {
      lsaLines_.Read(&ReadLsaLineIds);
      raw_.Read(&ReadRawRecords);
      parcels_.Read(&ReadParcelFile);
    });
  } catch (const std::system_error&) {
    // No thread to be had: each file is read in its turn.
    lsaLines_.future = {};
    raw_.future = {};
    parcels_.future = {};
  }
}

ReadAhead::~ReadAhead() {
  if (thread_.joinable()) thread_.join();
}

LsaLineIds* ReadAhead::LsaLines(const Session& session) { return lsaLines_.Take(session.DatasetPath(".LSA")); }

RawRecords* ReadAhead::Raw(const Session& session) { return raw_.Take(session.DatasetPath(".raw")); }

ParcelFileRead* ReadAhead::Parcels(const Session& session) { return parcels_.Take(session.DatasetPath(".IID")); }

}  // namespace tessel
