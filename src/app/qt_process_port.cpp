#include "app/qt_process_port.h"

#include <QAction>
#include <QCoreApplication>
#include <QProcess>
#include <QThread>

namespace tessel {

namespace {

// A command line is the program followed by its arguments, split at blanks (a plain tool
// command has no quotes, so a folder with blanks in it breaks it, as it always has).
void Prepare(QProcess& process, const std::string& commandLine, const std::string& folder) {
  QStringList parts = QProcess::splitCommand(QString::fromLocal8Bit(commandLine.c_str()));
  if (parts.isEmpty()) return;
  process.setProgram(parts.takeFirst());
  process.setArguments(parts);
  if (!folder.empty()) process.setWorkingDirectory(QString::fromLocal8Bit(folder.c_str()));
  process.setProcessChannelMode(QProcess::ForwardedChannels);
}

int Wait(QProcess& process) {
  if (!process.waitForStarted(-1)) return -1;
  process.waitForFinished(-1);
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

}  // namespace

void QtProcessPort::Run(const std::string& commandLine, const std::string& folder) {
  QProcess process;
  Prepare(process, commandLine, folder);
  process.start();
  Wait(process);
}

int QtProcessPort::RunCode(const std::string& commandLine, const std::string& folder, ShowMode) {
  QProcess process;
  Prepare(process, commandLine, folder);
  process.start();
  return Wait(process);
}

void QtProcessPort::Watch(const std::string& commandLine, const std::string& folder,
                          const std::vector<std::string>& lockedEntries) {
  QProcess process;
  Prepare(process, commandLine, folder);
  process.start();
  const auto lock = [&](bool enabled) {
    for (const auto& name : lockedEntries) {
      if (auto* action = window_.findChild<QAction*>(QString::fromStdString(name))) action->setEnabled(enabled);
    }
  };
  lock(false);
  // Poll ten times a second while the interface goes on.
  if (process.waitForStarted(-1)) {
    do {
      QCoreApplication::processEvents();
    } while (!process.waitForFinished(100));
  }
  lock(true);
}

void QtProcessPort::Spawn(const std::string& commandLine, const std::string& folder, ShowMode) {
  QProcess process;
  Prepare(process, commandLine, folder);
  process.startDetached();
}

}  // namespace tessel
