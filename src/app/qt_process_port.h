#pragma once
// Starting suite tools with QProcess: blocking, blocking with the exit code, watched while the
// interface stays alive, detached, or started at once with its end reported when it comes. A
// tool inherits the program's standard handles. A blocking command that names a .bat file is
// the scripted form: cmd runs it on Windows; elsewhere the program of its first line runs with
// the file that line redirects as its standard input.
// A Windows program (by its file's header) is started through the session's runner, Wine unless
// set otherwise, on a system that does not start it itself; without the runner it is not started.
// Every launch goes into the session's Tool Log; one that fails also leaves a note in the last
// status panel.

#include <QMainWindow>
#include <QObject>
#include <functional>
#include <memory>

#include "model/ports.h"
#include "model/tool_log.h"

namespace tessel {

struct Session;

class QtProcessPort : public ProcessPort {
 public:
  explicit QtProcessPort(QMainWindow& window) : window_(window) {}

  // The session whose Tool Log and status bar the launches report to.
  void Attach(Session* session) { session_ = session; }
  // Called after each entry is added to the log.
  void OnLogged(std::function<void(const ToolLogEntry&)> listener) { logged_ = std::move(listener); }

  void Run(const Launch& launch, const std::string& folder) override;
  int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) override;
  void Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>& lockedEntries) override;
  void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) override;
  // Logs the start at once, and the end with its exit code when it comes.
  bool SpawnReported(const Launch& launch, const std::string& folder, ShowMode mode, SpawnEnded ended) override;

 private:
  int Blocking(LaunchKind kind, const Launch& launch, const std::string& folder);
  void Log(ToolLogEntry entry);

  QMainWindow& window_;
  Session* session_ = nullptr;
  std::function<void(const ToolLogEntry&)> logged_;
  // The receiver of the reported spawns' ends: gone with the port, so that none is told after.
  std::unique_ptr<QObject> reports_ = std::make_unique<QObject>();
};

}  // namespace tessel
