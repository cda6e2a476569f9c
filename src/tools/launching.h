#pragma once
// Starting suite tools, and the scripted form that feeds an interactive tool its answers
// through temp.bat.

#include <optional>
#include <string>

#include "model/session.h"

namespace tessel {

// The first line of temp.bat for a scripted run: a double quote, ToolFolder, a separator and the
// program's file name ("recpad.exe", found in ToolFolder whatever its case), a double quote,
// "  <", a double quote, JobFolder, the answer file's bare name, a double quote. A double quote
// within either path is doubled (none can occur on Windows).
// A path in double quotes, as a batch file's command line holds it. A double quote within it is
// doubled: Windows allows none in a file name, so there the text is the plain quoted form, and
// elsewhere ReadBatchCommand reads it back.
std::string QuotePath(const std::string& path);

std::string ScriptCommand(const Session& session, const std::string& programFile, const std::string& answerFile);

// The record-data rebuild's scripted run of recpad: writes "\t1$.001" (six empty lines) and
// temp.bat in JobFolder, runs temp.bat hidden with ToolRunCode, then deletes temp.bat, the answer
// file and the job's .002. Without a job: "You must first Open or Create a job." and nothing.
// When either file cannot be written the user is told, naming it, and nothing is run.
// The run's exit code; nothing when it was not run or could not be started.
std::optional<int> RunRecpadScript(Session& session);

// Whether a launch started its program. When it did not, `why` says so in the Tool Log's words
// ("fitmain.exe: not found in ToolFolder") or in the fault's.
struct LaunchStart {
  bool started = true;
  std::string why;
};

// ToolRun: runs the launch blocking and tells whether the program was started. It was not when
// the process port logged the launch as not found or not startable, or when the launch raised a
// fault. A program that started counts whatever its end: exit codes are not read.
LaunchStart RunAndTellStart(Session& session, const Launch& launch, const std::string& folder);

// What temp.bat asks for where there is no command shell: the program of its first line and the
// file fed to it as standard input, both unquoted (a doubled quote read as one); nothing when the
// line has another shape.
struct BatchCommand {
  std::string program;
  std::string input;
};
std::optional<BatchCommand> ReadBatchCommand(const std::string& batchPath);

}  // namespace tessel
