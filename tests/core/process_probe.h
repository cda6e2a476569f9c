#pragma once
// A process port that records like RecordingProcessPort and also the show mode and the locked
// entries, lets a test look at the job folder while the "tool" runs, and can fail a launch.

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/recording_ports.h"

namespace tessel::test {

class ProcessProbe : public RecordingProcessPort {
 public:
  void Run(const Launch& launch, const std::string& folder) override {
    RecordingProcessPort::Run(launch, folder);
    After(ShowMode::Normal, {});
  }
  int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) override {
    RecordingProcessPort::RunCode(launch, folder, mode);
    After(mode, {});
    return 0;
  }
  void Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>& lockedEntries) override {
    RecordingProcessPort::Watch(launch, folder, lockedEntries);
    After(ShowMode::Normal, lockedEntries);
  }
  void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) override {
    RecordingProcessPort::Spawn(launch, folder, mode);
    After(mode, {});
  }
  bool SpawnReported(const Launch& launch, const std::string& folder, ShowMode mode, SpawnEnded ended) override {
    const bool started = RecordingProcessPort::SpawnReported(launch, folder, mode, std::move(ended));
    After(mode, {});
    return started;
  }

  std::vector<ShowMode> modes;
  std::vector<std::vector<std::string>> locked;
  // Runs while the launch is "alive", after it has been recorded.
  std::function<void()> during;
  // Every launch fails after being recorded.
  bool fail = false;

 private:
  void After(ShowMode mode, const std::vector<std::string>& entries) {
    modes.push_back(mode);
    locked.push_back(entries);
    if (during) during();
    if (fail) throw std::runtime_error("File not found");
  }
};

}  // namespace tessel::test
