#pragma once
// Everything that differs between the operating systems, in one place: the rest of the program
// uses only the standard library and these functions.
//
// File names are bytes, as the job's files are: on Windows in the local code page (the one the
// suite's tools and the C runtime's narrow calls use), elsewhere as the file system holds them.

#include <cstdio>
#include <filesystem>
#include <string>

namespace tessel {

// The path of the file name's bytes, and back: on Windows through the local code page, so that a
// name with bytes above 127 names the same file for std::filesystem as for fopen.
std::filesystem::path NativePath(const std::string& bytes);
std::string PathBytes(const std::filesystem::path& path);

// True where the file system treats names that differ only in case as one file.
bool FileNamesIgnoreCase();

// Where names ignore case: the last component of an existing path as the folder spells it
// ("SeedXY.EXE" for "seedxy.exe"); empty where unknown or elsewhere.
std::string StoredName(const std::string& path);

// Writes the file's buffered bytes through to the disk; false when the disk refused them.
bool FlushToDisk(std::FILE* file);

// How a rename of a finished temporary over its target ended.
enum class ReplaceResult { Replaced, HeldOpen, Failed };
// Renames `from` over `to`, replacing it. On Windows a target that another program holds open
// cannot be replaced; that is told apart, after a few short retries for a scanner that only
// looks at the file for a moment.
ReplaceResult ReplaceByRename(const std::string& from, const std::string& to);

// The running program's own file, or empty when the system cannot say.
std::string RunningProgramPath();

// This process's identifier, for names of scratch folders that must not meet another run's.
long long ProcessId();

// The largest resident memory of this process so far, in KiB (0 where unknown).
long long PeakMemoryKiB();

// Sets an environment variable of this process, or removes it.
void SetEnvironment(const std::string& name, const std::string& value);
void UnsetEnvironment(const std::string& name);

}  // namespace tessel
