#pragma once
// The Tool Log: every start of a suite tool, an editor or a shell in this session, with what was
// started, where, how it ended and how long it took. The process port fills it; the desktop shows
// it and lets it be copied. Nothing of it is written to disk.

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "model/ports.h"

namespace tessel {

// How the launch was asked for: blocking, blocking for the exit code, watched, or detached.
enum class LaunchKind { Run, RunCode, Watch, Spawn };
// How it went: ended (with an exit code), started and left running (detached), the program not
// there, the program there but not startable, ended by a crash, or a Windows program whose
// runner (Wine) is not there.
enum class LaunchOutcome { Ended, Started, NotFound, CouldNotStart, Crashed, NoRunner };

struct ToolLogEntry {
  std::string time;  // local time of the start, "HH:MM:SS"
  LaunchKind kind = LaunchKind::Run;
  // What was run: for a scripted run the program of temp.bat, with its answer file.
  Launch launch;
  std::string folder;
  std::string answerFile;
  // The runner that started a Windows program (Wine), empty for a program started itself; for
  // one without its runner, the runner that was not found.
  std::string runner;
  LaunchOutcome outcome = LaunchOutcome::Ended;
  std::optional<int> exitCode;
  // Seconds from the start to the end; none for a detached start or one that did not start.
  std::optional<double> seconds;
  // Why it did not start (the system's own words), empty otherwise.
  std::string reason;
};

// The reason given for a program that is not there: "not found in ToolFolder" when it was looked
// for in the program's folder, "not found" elsewhere.
std::string NotFoundReason(const std::string& program, const std::string& toolFolder);

// True for a launch that did not run its course: not found, not started (its runner missing
// too) or crashed.
bool LaunchFailed(const ToolLogEntry& entry);
// True for a launch whose program never started: not found, not startable, or without its
// runner. A crash is not one: the program ran and may have written its files.
bool LaunchNotStarted(const ToolLogEntry& entry);

// One line of the log: time, kind, program and arguments, runner, folder, answer file, the end
// and the duration, e.g.
// `10:02:11  run  /opt/tessel/fitmain.exe  through /usr/bin/wine  in /jobs/T1  exit code 0  1.2 s`.
std::string ToolLogLine(const ToolLogEntry& entry);

// The short note of a failed launch for the status bar, e.g. "fitmain.exe: not found in
// ToolFolder"; empty for a launch that ran.
std::string ToolLogNote(const ToolLogEntry& entry);

// The notice of a tool that did not start, shown once per program and session where it cannot be
// missed, e.g. "fitmain.exe could not be run: not found in ToolFolder. The Tool Log (View >
// Tool Log) lists every start of this session." A Windows program without its runner is told
// in the runner's words: "fitmain.exe is a Windows program; install Wine to run it. The Tool
// Log ...".
std::string ToolNotice(const ToolLogEntry& entry);

struct ToolLog {
  // The oldest entries give way beyond this many, so a long session stays small.
  static constexpr std::size_t kKept = 2000;
  std::vector<ToolLogEntry> entries;
  // Entries given way since the start.
  std::size_t dropped = 0;
  // The programs whose failure to start has been noticed, by lower-case file name.
  std::set<std::string> noticed;

  void Add(ToolLogEntry entry);
  // The notice for the entry just added when its program did not start and has had no notice
  // in this session yet (by the program's name, in any case); empty otherwise. A missing runner
  // is told once in a session, whichever Windows program asked for it first.
  std::string NoticeFor(const ToolLogEntry& entry);
  // Entries ever added, those given way included: taken before a launch, it finds the launch's
  // own entries afterwards.
  std::size_t Total() const { return dropped + entries.size(); }
  // Every line, each ended by a line feed: what Copy puts on the clipboard.
  std::string Text() const;
};

}  // namespace tessel
