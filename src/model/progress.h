#pragma once
// How far a long piece of work has come, and whether the user has asked it to stop. The work
// reports what it is doing now and then, and looks at CancelAsked only where stopping leaves
// every file whole: before its result is written, never between a temporary file's write and
// its rename, and never once the first of the job's files has been replaced. A null Progress is
// work nobody watches: nothing is reported and no cancel is ever asked.

#include <string>

namespace tessel {

class Progress {
 public:
  virtual ~Progress() = default;
  // `fraction` from 0 to 1 of the whole; below 0 when the share done is not known.
  virtual void Report(const std::string& what, double fraction) = 0;
  virtual bool CancelAsked() const = 0;
};

inline void Report(Progress* progress, const std::string& what, double fraction) {
  if (progress) progress->Report(what, fraction);
}
inline bool CancelAsked(const Progress* progress) { return progress && progress->CancelAsked(); }

}  // namespace tessel
