// The Tool Log's entries: what a line says for each way a launch can end, the short status note
// of a failed one, the reason for a missing program, and the bound on what a session keeps.

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "model/platform.h"
#include "model/tool_log.h"

namespace tessel::test {
namespace {

ToolLogEntry Entry(LaunchOutcome outcome) {
  ToolLogEntry e;
  e.time = "10:02:11";
  e.kind = LaunchKind::Run;
  e.launch = Launch{"/opt/tessel/fitmain.exe", {"T1 N.def", "-q"}};
  e.folder = "/jobs/T1";
  e.outcome = outcome;
  return e;
}

TEST(ToolLog, EachOutcomeHasItsLineAndOnlyFailuresANote) {
  ToolLogEntry ended = Entry(LaunchOutcome::Ended);
  ended.exitCode = 3;
  ended.seconds = 1.25;
  ended.answerFile = "/jobs/T1/t1$.001";
  EXPECT_EQ(ToolLogLine(ended),
            "10:02:11  run  /opt/tessel/fitmain.exe \"T1 N.def\" -q  in /jobs/T1  answers /jobs/T1/t1$.001  "
            "exit code 3  1.2 s");
  EXPECT_EQ(std::pair(LaunchFailed(ended), ToolLogNote(ended)), std::pair(false, std::string()));

  ToolLogEntry missing = Entry(LaunchOutcome::NotFound);
  missing.kind = LaunchKind::Spawn;
  missing.reason = "not found in ToolFolder";
  EXPECT_EQ(ToolLogLine(missing),
            "10:02:11  start  /opt/tessel/fitmain.exe \"T1 N.def\" -q  in /jobs/T1  not found in ToolFolder");
  EXPECT_EQ(ToolLogNote(missing), "fitmain.exe: not found in ToolFolder");

  ToolLogEntry refused = Entry(LaunchOutcome::CouldNotStart);
  refused.kind = LaunchKind::Watch;
  refused.reason = "Permission denied";
  EXPECT_NE(ToolLogLine(refused).find("  watch  "), std::string::npos);
  EXPECT_NE(ToolLogLine(refused).find("could not start: Permission denied"), std::string::npos);
  EXPECT_EQ(ToolLogNote(refused), "fitmain.exe: could not start");

  ToolLogEntry crashed = Entry(LaunchOutcome::Crashed);
  crashed.seconds = 0.04;
  EXPECT_NE(ToolLogLine(crashed).find("crashed  0.0 s"), std::string::npos);
  EXPECT_EQ(ToolLogNote(crashed), "fitmain.exe: crashed");

  const ToolLogEntry detached = Entry(LaunchOutcome::Started);
  EXPECT_NE(ToolLogLine(detached).find("  started"), std::string::npos);
  EXPECT_EQ(ToolLogNote(detached), "");
}

TEST(ToolLog, AToolThatDoesNotStartIsNoticedOncePerProgram) {
  ToolLog log;
  ToolLogEntry missing = Entry(LaunchOutcome::NotFound);
  missing.reason = "not found in ToolFolder";
  EXPECT_EQ(log.NoticeFor(missing),
            "fitmain.exe could not be run: not found in ToolFolder. The Tool Log (View > Tool Log) lists every start "
            "of this session.");
  // The same program again, in another case or from another menu entry: the log has it, no
  // second notice.
  EXPECT_EQ(log.NoticeFor(missing), "");
  ToolLogEntry upper = missing;
  upper.launch.program = "/opt/tessel/FITMAIN.EXE";
  EXPECT_EQ(log.NoticeFor(upper), "");
  // Another program has its own notice; a crash is no failure to start, and a run that ended
  // has nothing to tell.
  ToolLogEntry refused = Entry(LaunchOutcome::CouldNotStart);
  refused.launch.program = "/opt/tessel/seedxy.exe";
  refused.reason = "Permission denied";
  EXPECT_EQ(log.NoticeFor(refused), "seedxy.exe could not be run: Permission denied. The Tool Log (View > Tool Log) "
                                    "lists every start of this session.");
  ToolLogEntry crashed = Entry(LaunchOutcome::Crashed);
  crashed.launch.program = "/opt/tessel/ringform.exe";
  EXPECT_EQ(log.NoticeFor(crashed), "");
  EXPECT_EQ(log.NoticeFor(Entry(LaunchOutcome::Ended)), "");
}

TEST(ToolLog, AWindowsProgramShowsItsRunnerAndAMissingRunnerIsNoticedOnce) {
  ToolLogEntry through = Entry(LaunchOutcome::Ended);
  through.runner = "/usr/bin/wine";
  through.exitCode = 0;
  EXPECT_EQ(ToolLogLine(through),
            "10:02:11  run  /opt/tessel/fitmain.exe \"T1 N.def\" -q  through /usr/bin/wine  in /jobs/T1  exit code 0");

  ToolLog log;
  ToolLogEntry noWine = Entry(LaunchOutcome::NoRunner);
  noWine.runner = "wine";
  noWine.reason = "fitmain.exe is a Windows program; install Wine to run it";
  EXPECT_TRUE(LaunchFailed(noWine) && LaunchNotStarted(noWine));
  EXPECT_EQ(ToolLogLine(noWine), "10:02:11  run  /opt/tessel/fitmain.exe \"T1 N.def\" -q  in /jobs/T1  "
                                 "fitmain.exe is a Windows program; install Wine to run it");
  EXPECT_EQ(ToolLogNote(noWine), "fitmain.exe is a Windows program; install Wine to run it");
  EXPECT_EQ(log.NoticeFor(noWine), "fitmain.exe is a Windows program; install Wine to run it. The Tool Log (View > "
                                   "Tool Log) lists every start of this session.");
  // Another Windows program without Wine: said already. Another runner set meanwhile and also
  // missing is said again; a program missing for its own part still has its notice.
  ToolLogEntry other = noWine;
  other.launch.program = "/opt/tessel/ringform.exe";
  other.reason = "ringform.exe is a Windows program; install Wine to run it";
  EXPECT_EQ(log.NoticeFor(other), "");
  other.runner = "/opt/box/wine";
  other.reason = "ringform.exe is a Windows program; its runner /opt/box/wine (Configuration Options) was not found";
  EXPECT_EQ(log.NoticeFor(other), other.reason + ". The Tool Log (View > Tool Log) lists every start of this session.");
  ToolLogEntry missing = Entry(LaunchOutcome::NotFound);
  missing.reason = "not found in ToolFolder";
  EXPECT_NE(log.NoticeFor(missing), "");
}

TEST(ToolLog, MissingProgramsNameToolFolderOnlyWhenLookedForThere) {
  const std::string there = "not found in ToolFolder", elsewhere = "not found";
  // The tool folder in another case is the tool folder where names ignore case (Windows).
  for (const auto& [program, folder, reason] :
       {std::tuple{"/opt/tessel/seedxy.exe", "/opt/tessel", there}, {"/opt/tessel/seedxy.exe", "/opt/tessel/", there},
        {"C:\\Tessel\\seedxy.exe", "C:\\Tessel", there}, {"/usr/bin/notepad", "/opt/tessel", elsewhere},
        {"C:\\TESSEL\\seedxy.exe", "c:\\tessel", FileNamesIgnoreCase() ? there : elsewhere},
        {"notepad", "/opt/tessel", elsewhere}, {"/opt/tessel/seedxy.exe", "", elsewhere}}) {
    EXPECT_EQ(NotFoundReason(program, folder), reason) << program << " in " << folder;
  }
}

TEST(ToolLog, KeepsTheNewestEntriesAndCopiesThemAll) {
  ToolLog log;
  for (std::size_t i = 0; i < ToolLog::kKept + 5; ++i) {
    ToolLogEntry e = Entry(LaunchOutcome::Ended);
    e.exitCode = static_cast<int>(i);
    log.Add(e);
  }
  ASSERT_EQ(log.entries.size(), ToolLog::kKept);
  EXPECT_EQ(std::tuple(log.dropped, *log.entries.front().exitCode, *log.entries.back().exitCode),
            std::tuple(std::size_t{5}, 5, static_cast<int>(ToolLog::kKept + 4)));
  const std::string text = log.Text();
  EXPECT_EQ(text.substr(0, text.find('\n')), ToolLogLine(log.entries.front()));
  std::size_t lines = 0;
  for (const char c : text) lines += c == '\n';
  EXPECT_EQ(lines, ToolLog::kKept);
}

}  // namespace
}  // namespace tessel::test
