// A stand-in for any of the suite's console tools, for the tests of launching. Started under a
// tool's name (the base name of argv[0], lower case, without ".exe"), it appends one line to
// "standin.log" in its current folder: the name, the current folder, the first line of TEMP.JOB
// (or "<none>"), its standard input with CR shown as \r and LF as \n, and which of the side files
// cogopad.hlp, conus.las, conus.los stand in the folder (or "<none>"), separated by tabs. Then
// "fitmain" adds 1.000 to every X of the job's .COR and "exitcode" ends with exit code 3.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::vector<std::string> ReadLines(const fs::path& path) {
  std::vector<std::string> lines;
  std::ifstream in(path, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

// .COR: identifier in columns 2-19, X from column 20 (13 wide), Y from column 33; written back
// with X at column 21 and Y at column 36, three decimals.
void Fitmain(const fs::path& cor) {
  std::vector<std::string> out;
  for (const std::string& line : ReadLines(cor)) {
    if (line.size() < 33) continue;
    char text[128];
    std::snprintf(text, sizeof text, " %-19s%-15.3f%.3f", line.substr(1, 18).c_str(),
                  std::stod(line.substr(19, 13)) + 1.0, std::stod(line.substr(32)));
    out.push_back(text);
  }
  std::ofstream file(cor, std::ios::binary | std::ios::trunc);
  for (const std::string& line : out) file << line << "\r\n";
}

}  // namespace

int main(int, char** argv) {
  std::string name = fs::path(argv[0]).filename().string();
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return char(std::tolower(c)); });
  if (name.size() > 4 && name.substr(name.size() - 4) == ".exe") name.resize(name.size() - 4);
  const fs::path folder = fs::current_path();

  const auto marker = ReadLines(folder / "TEMP.JOB");
  const std::string job = marker.empty() ? "<none>" : marker.front();
  std::string input;
  for (char c : std::string(std::istreambuf_iterator<char>(std::cin), {})) {
    input += c == '\r' ? "\\r" : c == '\n' ? "\\n" : std::string(1, c);
  }
  std::string side;
  for (const char* file : {"cogopad.hlp", "conus.las", "conus.los"}) {
    if (fs::exists(folder / file)) side.append(side.empty() ? "" : " ").append(file);
  }
  std::ofstream(folder / "standin.log", std::ios::binary | std::ios::app)
      << name << '\t' << folder.string() << '\t' << job << '\t' << input << '\t' << (side.empty() ? "<none>" : side)
      << '\n';

  if (name == "exitcode") return 3;
  if (name == "fitmain" && fs::exists(folder / (job + ".COR"))) Fitmain(folder / (job + ".COR"));
  return 0;
}
