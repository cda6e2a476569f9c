#include "model/platform.h"

#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <io.h>
#include <psapi.h>
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace tessel {

#ifdef _WIN32

namespace {

std::wstring Wide(const std::string& bytes) {
  if (bytes.empty()) return {};
  const int size = static_cast<int>(bytes.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), length);
  return wide;
}

std::string Narrow(const std::wstring& wide) {
  if (wide.empty()) return {};
  const int size = static_cast<int>(wide.size());
  const int length = WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), size, bytes.data(), length, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::filesystem::path NativePath(const std::string& bytes) { return std::filesystem::path(Wide(bytes)); }

std::string PathBytes(const std::filesystem::path& path) { return Narrow(path.native()); }

bool FileNamesIgnoreCase() { return true; }

std::string StoredName(const std::string& path) {
  if (path.find_first_of("*?") != std::string::npos) return {};
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW(Wide(path).c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return {};
  FindClose(search);
  return Narrow(found.cFileName);
}

bool FlushToDisk(std::FILE* file) {
  const HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
  return handle != INVALID_HANDLE_VALUE && FlushFileBuffers(handle) != 0;
}

ReplaceResult ReplaceByRename(const std::string& from, const std::string& to) {
  const std::wstring source = Wide(from);
  const std::wstring target = Wide(to);
  for (int attempt = 0;; ++attempt) {
    if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
      return ReplaceResult::Replaced;
    }
    const DWORD error = GetLastError();
    const bool held = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
                      (error == ERROR_ACCESS_DENIED && GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES &&
                       (GetFileAttributesW(target.c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) == 0);
    if (!held) return ReplaceResult::Failed;
    if (attempt == 4) return ReplaceResult::HeldOpen;
    Sleep(50);
  }
}

std::string RunningProgramPath() {
  std::wstring buffer(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0) return {};
    if (length < buffer.size()) {
      buffer.resize(length);
      return Narrow(buffer);
    }
    buffer.resize(buffer.size() * 2);
  }
}

long long ProcessId() { return static_cast<long long>(GetCurrentProcessId()); }

long long PeakMemoryKiB() {
  PROCESS_MEMORY_COUNTERS counters{};
  if (!K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters)) return 0;
  return static_cast<long long>(counters.PeakWorkingSetSize / 1024);
}

void SetEnvironment(const std::string& name, const std::string& value) { _putenv_s(name.c_str(), value.c_str()); }

// An empty value removes the variable on Windows.
void UnsetEnvironment(const std::string& name) { _putenv_s(name.c_str(), ""); }

#else

std::filesystem::path NativePath(const std::string& bytes) { return std::filesystem::path(bytes); }

std::string PathBytes(const std::filesystem::path& path) { return path.native(); }

bool FileNamesIgnoreCase() { return false; }

std::string StoredName(const std::string&) { return {}; }

bool FlushToDisk(std::FILE* file) { return ::fsync(::fileno(file)) == 0; }

ReplaceResult ReplaceByRename(const std::string& from, const std::string& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return error ? ReplaceResult::Failed : ReplaceResult::Replaced;
}

std::string RunningProgramPath() {
  std::error_code error;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string() : exe.native();
}

long long ProcessId() { return static_cast<long long>(::getpid()); }

long long PeakMemoryKiB() {
  rusage usage{};
  if (::getrusage(RUSAGE_SELF, &usage) != 0) return 0;
  return static_cast<long long>(usage.ru_maxrss);
}

void SetEnvironment(const std::string& name, const std::string& value) { ::setenv(name.c_str(), value.c_str(), 1); }

void UnsetEnvironment(const std::string& name) { ::unsetenv(name.c_str()); }

#endif

}  // namespace tessel
