#pragma once
// Starting suite tools with QProcess: blocking, blocking with the exit code, watched while the
// interface stays alive, or detached. A tool inherits the program's standard handles. A blocking
// command that names a .bat file is the scripted form: cmd runs it on Windows; elsewhere the
// program of its first line runs with the file that line redirects as its standard input.

#include <QMainWindow>

#include "model/ports.h"

namespace tessel {

class QtProcessPort : public ProcessPort {
 public:
  explicit QtProcessPort(QMainWindow& window) : window_(window) {}

  void Run(const Launch& launch, const std::string& folder) override;
  int RunCode(const Launch& launch, const std::string& folder, ShowMode mode) override;
  void Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>& lockedEntries) override;
  void Spawn(const Launch& launch, const std::string& folder, ShowMode mode) override;

 private:
  QMainWindow& window_;
};

}  // namespace tessel
