#pragma once
// Starting suite tools with QProcess: blocking, blocking with the exit code, watched while the
// interface stays alive, or detached. A tool inherits the program's standard handles. A blocking
// command that names a .bat file is the scripted form: cmd runs it on Windows; elsewhere the
// program of its first line runs with the file that line redirects as its standard input.
// Every launch goes into the session's Tool Log; one that fails also leaves a note in the last
// status panel.

#include <QMainWindow>
#include <functional>

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

 private:
  int Blocking(LaunchKind kind, const Launch& launch, const std::string& folder);
  void Log(ToolLogEntry entry);
  std::string ToolFolder() const;

  QMainWindow& window_;
  Session* session_ = nullptr;
  std::function<void(const ToolLogEntry&)> logged_;
};

}  // namespace tessel
