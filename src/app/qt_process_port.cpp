#include "app/qt_process_port.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include "model/paths.h"
#include "tools/launching.h"

namespace tessel {

namespace {

QString Local(const std::string& text) { return QString::fromLocal8Bit(text.c_str()); }

bool NamesBatchFile(const QString& program) { return program.endsWith(QStringLiteral(".bat"), Qt::CaseInsensitive); }

#ifndef _WIN32
// A path written for the suite's own platform, as it stands on this one: relative to the
// folder of the run, backslashes read as separators when the name as written does not exist,
// and its last component in whatever case it exists.
std::string PathHere(std::string path, const std::string& folder) {
  if (QFileInfo(Local(path)).isRelative() && !folder.empty()) {
    path = QDir(Local(folder)).filePath(Local(path)).toLocal8Bit().toStdString();
  }
  if (!FileExistsAnyCase(path)) {
    std::string slashed = path;
    for (char& c : slashed) {
      if (c == '\\') c = '/';
    }
    if (FileExistsAnyCase(slashed)) path = slashed;
  }
  return ResolveCase(path);
}
#endif

// A batch file of the scripted form. cmd runs it where there is one; elsewhere its one command is
// run directly, with the file it redirects fed as standard input. False when there is nothing
// to run: the batch file cannot be read or its command has another shape.
bool PrepareBatch(QProcess& process, const QString& batchFile, const std::string& folder) {
#ifdef _WIN32
  process.setProgram(QStringLiteral("cmd"));
  process.setArguments({QStringLiteral("/c"), batchFile});
#else
  const auto command = ReadBatchCommand(PathHere(batchFile.toLocal8Bit().toStdString(), folder));
  if (!command || command->program.empty()) return false;
  process.setProgram(Local(PathHere(command->program, folder)));
  if (!command->input.empty()) process.setStandardInputFile(Local(PathHere(command->input, folder)));
#endif
  if (!folder.empty()) process.setWorkingDirectory(Local(folder));
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  return true;
}

// The program and its arguments go to the process as they are, each whole: a folder or a file
// name with blanks or quotes in it stays one. The tool inherits the program's standard handles.
// False when there is nothing to start.
bool Prepare(QProcess& process, const Launch& launch, const std::string& folder) {
  if (launch.program.empty()) return false;
  process.setProgram(Local(launch.program));
  QStringList arguments;
  for (const std::string& argument : launch.arguments) arguments << Local(argument);
  process.setArguments(arguments);
  if (!folder.empty()) process.setWorkingDirectory(Local(folder));
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.setInputChannelMode(QProcess::ForwardedInputChannel);
  return true;
}

// The blocking forms: a batch file of the scripted form, or a tool.
bool PrepareBlocking(QProcess& process, const Launch& launch, const std::string& folder) {
  if (NamesBatchFile(Local(launch.program))) return PrepareBatch(process, Local(launch.program), folder);
  return Prepare(process, launch, folder);
}

int Wait(QProcess& process) {
  if (!process.waitForStarted(-1)) return -1;
  process.waitForFinished(-1);
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

}  // namespace

void QtProcessPort::Run(const Launch& launch, const std::string& folder) {
  QProcess process;
  if (!PrepareBlocking(process, launch, folder)) return;
  process.start();
  Wait(process);
}

int QtProcessPort::RunCode(const Launch& launch, const std::string& folder, ShowMode) {
  QProcess process;
  if (!PrepareBlocking(process, launch, folder)) return -1;
  process.start();
  return Wait(process);
}

void QtProcessPort::Watch(const Launch& launch, const std::string& folder,
                          const std::vector<std::string>& lockedEntries) {
  QProcess process;
  Prepare(process, launch, folder);
  process.start();
  const auto lock = [&](bool enabled) {
    for (const auto& name : lockedEntries) {
      if (auto* action = window_.findChild<QAction*>(QString::fromStdString(name))) action->setEnabled(enabled);
    }
  };
  lock(false);
  // Poll ten times a second while the interface goes on. The events may include the process's
  // own end, after which waitForFinished no longer reports it: the state is what tells.
  if (process.waitForStarted(-1)) {
    do {
      QCoreApplication::processEvents();
    } while (process.state() != QProcess::NotRunning && !process.waitForFinished(100));
  }
  lock(true);
}

void QtProcessPort::Spawn(const Launch& launch, const std::string& folder, ShowMode) {
  QProcess process;
  if (!Prepare(process, launch, folder)) return;
  process.startDetached();
}

}  // namespace tessel
