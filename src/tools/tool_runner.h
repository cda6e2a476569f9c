#pragma once
// Suite tools that are Windows programs, on a system that does not start those itself: the
// program file's header tells (never its name), and a runner starts it. The runner is Wine,
// found on the search path, unless the user names another program or none. The setting is kept
// in tessel-tools.ini in ToolFolder, beside Tessel.cfg, whose lines stay as they are.

#include <functional>
#include <string>

namespace tessel {

inline constexpr const char* kToolRunnerFile = "tessel-tools.ini";
inline constexpr const char* kDefaultToolRunner = "wine";
// The setting that starts Windows programs like any other (a system that runs them itself).
inline constexpr const char* kNoToolRunner = "none";
// What the configuration dialog says of the setting.
inline constexpr const char* kToolRunnerHint =
    "Suite tools that are Windows programs are started through this program where the system does not run "
    "them itself (Linux, macOS): \"wine\", the path of another runner, or \"none\". Saved in tessel-tools.ini.";

// True when the file is a Windows executable: "MZ" at its start and, at the offset held in
// its bytes 0x3C to 0x3F (little-endian), the signature "PE" followed by two zero bytes. False
// for a file that cannot be read or is too short.
bool IsWindowsProgram(const std::string& path);

// The setting as the program uses it: trimmed, and the default runner for an empty one.
std::string NormalToolRunner(const std::string& setting);

// The runner setting of tessel-tools.ini: its "runner=" line (the last one wins). The default
// runner when the file, the line or its value is missing.
std::string ReadToolRunner(const std::string& path);
// Writes the runner setting into tessel-tools.ini, keeping its other lines; the file is
// replaced whole or not at all, and a failure is a file-access fault naming it.
void WriteToolRunner(const std::string& path, const std::string& setting);

// How a program is started here.
struct RunnerChoice {
  // The runner that starts the program, as found; empty to start the program itself.
  std::string runner;
  // Why it cannot be started, e.g. "fitmain.exe is a Windows program; install Wine to run it";
  // empty when it can.
  std::string refusal;
};

// Finds a runner: a bare name on the search path, a path as it stands; empty when it is not
// there (or cannot be run).
using RunnerFinder = std::function<std::string(const std::string& runner)>;

// The choice for `program`, whose header says whether it is a Windows program. On a system that
// runs Windows programs itself, or with the setting "none", every program starts itself.
RunnerChoice ChooseRunner(const std::string& program, bool windowsProgram, bool systemRunsWindowsPrograms,
                          const std::string& setting, const RunnerFinder& find);

}  // namespace tessel
