#include "job/read_ahead.h"

#include <system_error>
#include <utility>

#include "model/paths.h"

namespace tessel {

template <typename T>
T* ReadAhead::Pending<T>::Take(const std::string& now) {
  if (!future.valid() || taken) return nullptr;
  result = future.get();
  taken = true;
  // The load resolves the file's name again in its turn; a name that changed meanwhile is read
  // there.
  return now == path ? &result : nullptr;
}

namespace {

// A thread that cannot be started leaves the file to be read in its turn.
template <typename T>
void Start(std::string path, std::future<T>& future, T (*read)(const std::string&)) {
  if (!FileExistsAnyCase(path)) return;
  try {
    future = std::async(std::launch::async, read, std::move(path));
  } catch (const std::system_error&) {
  }
}

}  // namespace

ReadAhead::ReadAhead(const Session& session, bool parcels) {
  raw_.path = session.DatasetPath(".raw");
  Start(raw_.path, raw_.future, &ReadRawRecords);
  if (!parcels) return;
  parcels_.path = session.DatasetPath(".IID");
  Start(parcels_.path, parcels_.future, &ReadParcelFile);
}

ReadAhead::~ReadAhead() = default;

RawRecords* ReadAhead::Raw(const Session& session) { return raw_.Take(session.DatasetPath(".raw")); }

ParcelFileRead* ReadAhead::Parcels(const Session& session) { return parcels_.Take(session.DatasetPath(".IID")); }

}  // namespace tessel
