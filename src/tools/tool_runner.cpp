#include "tools/tool_runner.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <vector>

#include "model/platform.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

constexpr const char* kRunnerKey = "runner";
// Where the header keeps the offset of the PE signature.
constexpr std::streamoff kPeOffsetAt = 0x3C;

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// The last component of a path written with either separator.
std::string FileName(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

// The lines of a text, each without its line end.
std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  LineReader in = LineReader::FromText(text);
  while (!in.Eof()) lines.push_back(in.ReadLine());
  return lines;
}

// The value of a "key=value" line whose key is the runner's, in any case; false for any other.
bool RunnerValue(const std::string& line, std::string& value) {
  const std::size_t eq = line.find('=');
  if (eq == std::string::npos || Lower(Trim(line.substr(0, eq))) != kRunnerKey) return false;
  value = Trim(line.substr(eq + 1));
  return true;
}

}  // namespace

bool IsWindowsProgram(const std::string& path) {
  std::ifstream in(NativePath(path), std::ios::binary);
  std::array<unsigned char, 4> bytes{};
  const auto read = [&in, &bytes](std::streamoff at, std::streamsize count) {
    in.seekg(at);
    return static_cast<bool>(in.read(reinterpret_cast<char*>(bytes.data()), count));
  };
  if (!in || !read(0, 2) || bytes[0] != 'M' || bytes[1] != 'Z') return false;
  if (!read(kPeOffsetAt, 4)) return false;
  const std::uint32_t offset = bytes[0] | (bytes[1] << 8) | (bytes[2] << 16) | (std::uint32_t{bytes[3]} << 24);
  return read(static_cast<std::streamoff>(offset), 4) && bytes == std::array<unsigned char, 4>{'P', 'E', 0, 0};
}

std::string NormalToolRunner(const std::string& setting) {
  const std::string runner = Trim(setting);
  return runner.empty() ? kDefaultToolRunner : runner;
}

std::string ReadToolRunner(const std::string& path) {
  std::string bytes;
  std::string runner;
  if (ReadFileBytes(path, bytes)) {
    for (const std::string& line : Lines(bytes)) RunnerValue(line, runner);
  }
  return NormalToolRunner(runner);
}

void WriteToolRunner(const std::string& path, const std::string& setting) {
  std::string bytes;
  std::vector<std::string> lines;
  if (ReadFileBytes(path, bytes)) lines = Lines(bytes);
  const std::string entry = std::string(kRunnerKey) + "=" + NormalToolRunner(setting);
  std::vector<std::string> out;
  bool written = false;
  std::string value;
  for (const std::string& line : lines) {
    if (!RunnerValue(line, value)) {
      out.push_back(line);
    } else if (!written) {
      out.push_back(entry);
      written = true;
    }
  }
  if (!written) out.push_back(entry);
  WriteFileBytes(path, JoinCrLf(out));
}

RunnerChoice ChooseRunner(const std::string& program, bool windowsProgram, bool systemRunsWindowsPrograms,
                          const std::string& setting, const RunnerFinder& find) {
  const std::string runner = NormalToolRunner(setting);
  if (!windowsProgram || systemRunsWindowsPrograms || Lower(runner) == kNoToolRunner) return {};
  if (std::string found = find ? find(runner) : std::string(); !found.empty()) return {found, {}};
  const std::string name = FileName(program);
  if (runner == kDefaultToolRunner) return {{}, name + " is a Windows program; install Wine to run it"};
  return {{}, name + " is a Windows program; its runner " + runner + " (Configuration Options) was not found"};
}

}  // namespace tessel
