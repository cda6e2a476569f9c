#include "app/qt_process_port.h"

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTime>

#include <memory>
#include <utility>

#include "model/paths.h"
#include "model/session.h"
#include "tools/launching.h"
#include "tools/tool_runner.h"

namespace tessel {

namespace {

QString Local(const std::string& text) { return QString::fromLocal8Bit(text.c_str()); }
std::string Bytes(const QString& text) { return text.toLocal8Bit().toStdString(); }

bool NamesBatchFile(const QString& program) { return program.endsWith(QStringLiteral(".bat"), Qt::CaseInsensitive); }

#ifndef _WIN32
// A path written for the suite's own platform, as it stands on this one: relative to the
// folder of the run, backslashes read as separators when the name as written does not exist,
// and its last component in whatever case it exists.
std::string PathHere(std::string path, const std::string& folder) {
  if (QFileInfo(Local(path)).isRelative() && !folder.empty()) {
    path = Bytes(QDir(Local(folder)).filePath(Local(path)));
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

ToolLogEntry NewEntry(LaunchKind kind, const Launch& launch, const std::string& folder) {
  ToolLogEntry entry;
  entry.time = Bytes(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")));
  entry.kind = kind;
  entry.launch = launch;
  entry.folder = folder;
  return entry;
}

// What a launch is prepared with besides itself: the folder of the run, ToolFolder (which the
// reason for a missing program names) and the setting of the runner of Windows programs.
struct Context {
  std::string folder;
  std::string toolFolder;
  std::string runner;
};

Context ContextFor(const Session* session, const std::string& folder) {
  if (!session) return {folder, {}, {}};
  return {folder, session->ToolFolder, session->toolRunner};
}

#ifdef _WIN32
constexpr bool kSystemRunsWindowsPrograms = true;
#else
constexpr bool kSystemRunsWindowsPrograms = false;
#endif

// The file a program names: a path as it stands or relative to the folder of the run, a bare
// name on the search path or in that folder; empty when there is none.
QString ProgramFile(const QString& program, const std::string& folder) {
  const QString inFolder = folder.empty() ? QString() : QDir(Local(folder)).filePath(program);
  if (program.contains(QLatin1Char('/')) || program.contains(QLatin1Char('\\'))) {
    if (QFileInfo(program).isFile()) return program;
    if (QFileInfo(program).isRelative() && !inFolder.isEmpty() && QFileInfo(inFolder).isFile()) return inFolder;
    return {};
  }
  const QString found = QStandardPaths::findExecutable(program);
  if (!found.isEmpty()) return found;
  return !inFolder.isEmpty() && QFileInfo(inFolder).isFile() ? inFolder : QString();
}

// A runner as the setting names it: a path that can be run, or a bare name on the search path.
std::string FindRunner(const std::string& runner) {
  const QString name = Local(runner);
  if (name.contains(QLatin1Char('/')) || name.contains(QLatin1Char('\\'))) {
    const QFileInfo file(name);
    return file.isFile() && file.isExecutable() ? runner : std::string();
  }
  return Bytes(QStandardPaths::findExecutable(name));
}

// Sets the process to start the program with its arguments: itself, or through the runner when
// it is a Windows program this system does not start itself. False, with the entry's outcome and
// reason, when the program is not there or its runner is missing.
bool SetProgram(QProcess& process, const QString& program, QStringList arguments, ToolLogEntry& entry,
                const Context& context) {
  const QString file = ProgramFile(program, context.folder);
  if (file.isEmpty()) {
    entry.outcome = LaunchOutcome::NotFound;
    entry.reason = NotFoundReason(Bytes(program), context.toolFolder);
    return false;
  }
  const RunnerChoice choice = ChooseRunner(Bytes(program), IsWindowsProgram(Bytes(file)), kSystemRunsWindowsPrograms,
                                           context.runner, FindRunner);
  if (!choice.refusal.empty()) {
    entry.outcome = LaunchOutcome::NoRunner;
    entry.reason = choice.refusal;
    entry.runner = NormalToolRunner(context.runner);
    return false;
  }
  if (choice.runner.empty()) {
    process.setProgram(program);
  } else {
    // The runner is given the program's whole path: it does not search the folder of the run.
    entry.runner = choice.runner;
    process.setProgram(Local(choice.runner));
    arguments.prepend(QFileInfo(file).absoluteFilePath());
  }
  process.setArguments(arguments);
  return true;
}

// A batch file of the scripted form. cmd runs it where there is one; elsewhere its one command is
// run directly, with the file it redirects fed as standard input. False when there is nothing
// to run: the batch file cannot be read or its command has another shape.
bool PrepareBatch(QProcess& process, const QString& batchFile, ToolLogEntry& entry, const Context& context) {
  const std::string& folder = context.folder;
#ifdef _WIN32
  process.setProgram(QStringLiteral("cmd"));
  process.setArguments({QStringLiteral("/c"), batchFile});
  (void)entry;
#else
  const auto command = ReadBatchCommand(PathHere(Bytes(batchFile), folder));
  if (!command || command->program.empty()) {
    entry.outcome = LaunchOutcome::CouldNotStart;
    entry.reason = "the batch file " + Bytes(batchFile) + " holds no command to run";
    return false;
  }
  const std::string program = PathHere(command->program, folder);
  entry.launch = Launch{program, {}};
  if (!command->input.empty()) {
    entry.answerFile = PathHere(command->input, folder);
    process.setStandardInputFile(Local(entry.answerFile));
  }
  if (!SetProgram(process, Local(program), {}, entry, context)) return false;
#endif
  if (!folder.empty()) process.setWorkingDirectory(Local(folder));
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  return true;
}

// The program and its arguments go to the process as they are, each whole: a folder or a file
// name with blanks or quotes in it stays one. The tool inherits the program's standard handles.
// False when there is nothing to start.
bool Prepare(QProcess& process, const Launch& launch, ToolLogEntry& entry, const Context& context) {
  if (launch.program.empty()) {
    entry.outcome = LaunchOutcome::CouldNotStart;
    entry.reason = "no program is named";
    return false;
  }
  QStringList arguments;
  for (const std::string& argument : launch.arguments) arguments << Local(argument);
  if (!SetProgram(process, Local(launch.program), arguments, entry, context)) return false;
  if (!context.folder.empty()) process.setWorkingDirectory(Local(context.folder));
  process.setProcessChannelMode(QProcess::ForwardedChannels);
  process.setInputChannelMode(QProcess::ForwardedInputChannel);
  return true;
}

// The blocking forms: a batch file of the scripted form, or a tool.
bool PrepareBlocking(QProcess& process, const Launch& launch, ToolLogEntry& entry, const Context& context) {
  if (NamesBatchFile(Local(launch.program))) return PrepareBatch(process, Local(launch.program), entry, context);
  return Prepare(process, launch, entry, context);
}

// After the process has ended or failed to start: the outcome and the exit code as the port
// gives it (-1 for a tool that did not start or did not end normally).
int Finish(QProcess& process, ToolLogEntry& entry, bool started, const QElapsedTimer& clock) {
  if (!started) {
    entry.outcome = LaunchOutcome::CouldNotStart;
    entry.reason = Bytes(process.errorString());
    return -1;
  }
  entry.seconds = static_cast<double>(clock.elapsed()) / 1000.0;
  if (process.exitStatus() != QProcess::NormalExit) {
    entry.outcome = LaunchOutcome::Crashed;
    return -1;
  }
  entry.outcome = LaunchOutcome::Ended;
  entry.exitCode = process.exitCode();
  return process.exitCode();
}

}  // namespace

void QtProcessPort::Log(ToolLogEntry entry) {
  if (!session_) return;
  const std::string note = ToolLogNote(entry);
  session_->toolLog.Add(std::move(entry));
  if (!note.empty()) session_->user.Status(4, note);
  if (logged_) logged_(session_->toolLog.entries.back());
}

int QtProcessPort::Blocking(LaunchKind kind, const Launch& launch, const std::string& folder) {
  ToolLogEntry entry = NewEntry(kind, launch, folder);
  QProcess process;
  int code = -1;
  if (PrepareBlocking(process, launch, entry, ContextFor(session_, folder))) {
    QElapsedTimer clock;
    clock.start();
    process.start();
    const bool started = process.waitForStarted(-1);
    if (started) process.waitForFinished(-1);
    code = Finish(process, entry, started, clock);
  }
  Log(std::move(entry));
  return code;
}

void QtProcessPort::Run(const Launch& launch, const std::string& folder) { Blocking(LaunchKind::Run, launch, folder); }

int QtProcessPort::RunCode(const Launch& launch, const std::string& folder, ShowMode) {
  return Blocking(LaunchKind::RunCode, launch, folder);
}

void QtProcessPort::Watch(const Launch& launch, const std::string& folder,
                          const std::vector<std::string>& lockedEntries) {
  ToolLogEntry entry = NewEntry(LaunchKind::Watch, launch, folder);
  QProcess process;
  if (!Prepare(process, launch, entry, ContextFor(session_, folder))) {
    Log(std::move(entry));
    return;
  }
  QElapsedTimer clock;
  clock.start();
  process.start();
  const auto lock = [&](bool enabled) {
    for (const auto& name : lockedEntries) {
      if (auto* action = window_.findChild<QAction*>(QString::fromStdString(name))) action->setEnabled(enabled);
    }
  };
  lock(false);
  // Poll ten times a second while the interface goes on. The events may include the process's
  // own end, after which waitForFinished no longer reports it: the state is what tells.
  const bool started = process.waitForStarted(-1);
  if (started) {
    do {
      QCoreApplication::processEvents();
    } while (process.state() != QProcess::NotRunning && !process.waitForFinished(100));
  }
  lock(true);
  Finish(process, entry, started, clock);
  Log(std::move(entry));
}

void QtProcessPort::Spawn(const Launch& launch, const std::string& folder, ShowMode) {
  ToolLogEntry entry = NewEntry(LaunchKind::Spawn, launch, folder);
  QProcess process;
  if (Prepare(process, launch, entry, ContextFor(session_, folder))) {
    if (process.startDetached()) {
      entry.outcome = LaunchOutcome::Started;
    } else {
      entry.outcome = LaunchOutcome::CouldNotStart;
      entry.reason = Bytes(process.errorString());
    }
  }
  Log(std::move(entry));
}

bool QtProcessPort::SpawnReported(const Launch& launch, const std::string& folder, ShowMode, SpawnEnded ended) {
  ToolLogEntry entry = NewEntry(LaunchKind::Spawn, launch, folder);
  // Not the window's child: a process still running when the program ends is left to finish.
  auto* process = new QProcess;
  if (Prepare(*process, launch, entry, ContextFor(session_, folder))) {
    auto clock = std::make_shared<QElapsedTimer>();
    QObject::connect(process, &QProcess::finished, reports_.get(), [this, process, entry, clock, ended] {
      ToolLogEntry end = entry;
      Finish(*process, end, true, *clock);
      SpawnEnd told;
      told.crashed = end.outcome == LaunchOutcome::Crashed;
      told.exitCode = end.exitCode.value_or(-1);
      process->deleteLater();
      Log(std::move(end));
      if (ended) ended(told);
    });
    clock->start();
    process->start();
    if (process->waitForStarted(-1)) {
      entry.outcome = LaunchOutcome::Started;
      Log(std::move(entry));
      return true;
    }
    entry.outcome = LaunchOutcome::CouldNotStart;
    entry.reason = Bytes(process->errorString());
  }
  delete process;
  SpawnEnd told;
  told.started = false;
  told.reason = entry.reason;
  Log(std::move(entry));
  if (ended) ended(told);
  return false;
}

}  // namespace tessel
