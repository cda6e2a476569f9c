#pragma once
// A process port that records like RecordingProcessPort and also the show mode and the locked
// entries, lets a test look at the job folder while the "tool" runs, can fail a launch, and logs
// each launch in a Tool Log as the desktop's port does.

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/recording_ports.h"
#include "model/tool_log.h"

namespace tessel::test {

class ProcessProbe : public RecordingProcessPort {
 public:
  void Run(const Launch& launch, const std::string& folder) override {
    RecordingProcessPort::Run(launch, folder);
    After(launch, folder, ShowMode::Normal, {});
  }
  int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) override {
    RecordingProcessPort::RunCode(launch, folder, mode);
    After(launch, folder, mode, {});
    return outcome == LaunchOutcome::Ended ? exitCode : -1;
  }
  void Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>& lockedEntries) override {
    RecordingProcessPort::Watch(launch, folder, lockedEntries);
    After(launch, folder, ShowMode::Normal, lockedEntries);
  }
  void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) override {
    RecordingProcessPort::Spawn(launch, folder, mode);
    After(launch, folder, mode, {});
  }
  bool SpawnReported(const Launch& launch, const std::string& folder, ShowMode mode, SpawnEnded ended) override {
    const bool started = RecordingProcessPort::SpawnReported(launch, folder, mode, std::move(ended));
    After(launch, folder, mode, {});
    return started;
  }

  std::vector<ShowMode> modes;
  std::vector<std::vector<std::string>> locked;
  // Runs while the launch is "alive", after it has been recorded; not for a launch whose
  // outcome says it never started.
  std::function<void()> during;
  // Every launch fails after being recorded.
  bool fail = false;
  // Where each launch is logged, when set: with `outcome`, `exitCode` for one that ended, and
  // the desktop's reason for a program that is not there.
  ToolLog* log = nullptr;
  LaunchOutcome outcome = LaunchOutcome::Ended;
  int exitCode = 0;
  std::string toolFolder;

 private:
  void After(const Launch& launch, const std::string& folder, ShowMode mode, const std::vector<std::string>& entries) {
    modes.push_back(mode);
    locked.push_back(entries);
    const bool started = outcome != LaunchOutcome::NotFound && outcome != LaunchOutcome::CouldNotStart;
    if (log) {
      ToolLogEntry entry;
      entry.launch = launch;
      entry.folder = folder;
      entry.outcome = outcome;
      if (outcome == LaunchOutcome::Ended) entry.exitCode = exitCode;
      if (outcome == LaunchOutcome::NotFound) entry.reason = NotFoundReason(launch.program, toolFolder);
      log->Add(std::move(entry));
    }
    if (started && during) during();
    if (fail) throw std::runtime_error("File not found");
  }
};

}  // namespace tessel::test
