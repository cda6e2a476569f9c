// A stand-in for any of the suite's console tools, for the tests of launching. It acts as the
// tool it is started as (the base name of argv[0], lower case, without ".exe"):
//
// - every tool appends one line to "standin.log" in its current folder: the name, the current
//   folder, the first line of TEMP.JOB (or "<none>"), what came on standard input with CR shown
//   as \r and LF as \n, and which of the side files cogopad.hlp, conus.las, conus.los stand in
//   the current folder (or "<none>"), separated by tabs;
// - "fitmain" adds 1.000 to every X of the job's .COR;
// - "ringform" writes a .RPO of two polygons over the first points of the .COR;
// - "desclink" writes a .iid of one parcel over the first four points of the .COR;
// - "exitcode" ends with exit code 3;
// - any other name writes nothing more.
//
// The job is the one named in TEMP.JOB; its datasets are found in the current folder whatever
// the case of their names. Files are written with CR LF line ends, as the suite writes them.

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#define STANDIN_ISATTY _isatty
#define STANDIN_FILENO _fileno
#else
#include <unistd.h>
#define STANDIN_ISATTY isatty
#define STANDIN_FILENO fileno
#endif

namespace fs = std::filesystem;

namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

std::string Trim(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Characters from a 1-based column, at most `length` of them; empty past the end.
std::string Mid(const std::string& text, std::size_t column, std::size_t length = std::string::npos) {
  if (column < 1 || column > text.size()) return {};
  return text.substr(column - 1, length);
}

std::string PadRight(std::string text, std::size_t width) {
  if (text.size() < width) text.append(width - text.size(), ' ');
  return text;
}

std::string PadLeft(const std::string& text, std::size_t width) {
  return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::string Fixed3(double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.3f", value);
  return buffer;
}

// The name the program was started as: "RINGFORM.EXE" and "ringform" are both "ringform".
std::string ToolName(const char* argv0) {
  std::string name = Lower(fs::path(argv0 ? argv0 : "").filename().string());
  if (name.size() > 4 && name.compare(name.size() - 4, 4, ".exe") == 0) name.resize(name.size() - 4);
  return name;
}

// The file of that name in the folder, in whatever case it exists there.
std::optional<fs::path> FindAnyCase(const fs::path& folder, const std::string& name) {
  const fs::path exact = folder / name;
  std::error_code error;
  if (fs::is_regular_file(exact, error)) return exact;
  const std::string wanted = Lower(name);
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.is_regular_file(error) && Lower(entry.path().filename().string()) == wanted) return entry.path();
  }
  return std::nullopt;
}

std::vector<std::string> ReadLines(const fs::path& path) {
  std::vector<std::string> lines;
  std::ifstream in(path, std::ios::binary);
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

bool WriteLines(const fs::path& path, const std::vector<std::string>& lines) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  for (const auto& line : lines) out << line << "\r\n";
  return static_cast<bool>(out);
}

std::string Escaped(const std::string& bytes) {
  std::string shown;
  for (char c : bytes) {
    switch (c) {
      case '\r': shown += "\\r"; break;
      case '\n': shown += "\\n"; break;
      case '\t': shown += "\\t"; break;
      case '\\': shown += "\\\\"; break;
      default: shown += c;
    }
  }
  return shown;
}

// Standard input to its end, unless it is a console (then nothing is waiting for us).
std::string ReadInput() {
  if (STANDIN_ISATTY(STANDIN_FILENO(stdin))) return {};
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
}

struct Point {
  std::string id;
  double x = 0.0;
  double y = 0.0;
};

// The points of a .COR: identifier in columns 2-19, X from column 20, Y from column 33.
std::vector<Point> ReadCor(const fs::path& path) {
  std::vector<Point> points;
  for (const auto& line : ReadLines(path)) {
    if (Trim(line).empty()) continue;
    Point p;
    p.id = Trim(Mid(line, 2, 18));
    p.x = std::strtod(Trim(Mid(line, 20, 13)).c_str(), nullptr);
    p.y = std::strtod(Trim(Mid(line, 33)).c_str(), nullptr);
    points.push_back(p);
  }
  return points;
}

// A .COR line: identifier at column 2, X at column 21, Y at column 36, three decimals.
std::string CorLine(const Point& p) {
  std::string line(1, ' ');
  line += PadRight(p.id, 19);
  line += PadRight(Fixed3(p.x), 15);
  line += Fixed3(p.y);
  return line;
}

// A ring in 7-column fields: a blank and the identifier right-justified in six.
std::string Ring(const std::vector<Point>& points, std::size_t count, bool closed) {
  std::string ring;
  const auto field = [&ring](const Point& p) {
    ring += ' ';
    ring += PadLeft(p.id, 6);
  };
  for (std::size_t i = 0; i < count && i < points.size(); ++i) field(points[i]);
  if (closed && !points.empty()) field(points.front());
  return ring;
}

class Job {
 public:
  Job(fs::path folder, std::string name) : folder_(std::move(folder)), name_(std::move(name)) {}

  bool Known() const { return !name_.empty(); }
  // The dataset as it exists, or the name to create it under.
  fs::path Dataset(const std::string& extension) const {
    if (auto found = FindAnyCase(folder_, name_ + extension)) return *found;
    return folder_ / (name_ + extension);
  }
  std::optional<fs::path> Existing(const std::string& extension) const { return FindAnyCase(folder_, name_ + extension); }

 private:
  fs::path folder_;
  std::string name_;
};

int Fitmain(const Job& job) {
  const auto cor = job.Existing(".COR");
  if (!cor) return 0;
  std::vector<std::string> lines;
  for (auto p : ReadCor(*cor)) {
    p.x += 1.0;
    lines.push_back(CorLine(p));
  }
  return WriteLines(*cor, lines) ? 0 : 1;
}

int Ringform(const Job& job) {
  const auto cor = job.Existing(".COR");
  const auto points = cor ? ReadCor(*cor) : std::vector<Point>{};
  if (points.size() < 4) return 0;
  const std::vector<std::string> lines{"  2 POLYGONS FOUND", "", Ring(points, 3, false).insert(0, "S"),
                                       Ring(points, 4, false).insert(0, "S")};
  return WriteLines(job.Dataset(".RPO"), lines) ? 0 : 1;
}

int Desclink(const Job& job, const std::string& jobName) {
  const auto cor = job.Existing(".COR");
  const auto points = cor ? ReadCor(*cor) : std::vector<Point>{};
  if (points.size() < 4) return 0;
  double north = 0.0, east = 0.0;
  for (std::size_t i = 0; i < 4; ++i) {
    north += points[i].y / 4.0;
    east += points[i].x / 4.0;
  }
  std::string location = " PARCEL N,E";
  location += std::string(5, ' ');
  location += PadLeft(Fixed3(north), 11);
  location += std::string(5, ' ');
  location += PadLeft(Fixed3(east), 11);
  return WriteLines(job.Dataset(".iid"),
                    {jobName + "  PARCEL IDENTIFICATION FILE", "Sec_001 A T_W 1", Ring(points, 4, true), location})
             ? 0
             : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string name = ToolName(argc > 0 ? argv[0] : nullptr);
  std::error_code error;
  const fs::path folder = fs::current_path(error);

  std::string jobLine = "<none>";
  if (const auto marker = FindAnyCase(folder, "TEMP.JOB")) {
    const auto lines = ReadLines(*marker);
    jobLine = lines.empty() ? std::string() : lines.front();
  }
  const std::string input = ReadInput();

  std::string sideFiles;
  for (const char* side : {"cogopad.hlp", "conus.las", "conus.los"}) {
    if (!FindAnyCase(folder, side)) continue;
    if (!sideFiles.empty()) sideFiles += ' ';
    sideFiles += side;
  }
  {
    std::ofstream log(folder / "standin.log", std::ios::binary | std::ios::app);
    log << name << '\t' << folder.string() << '\t' << jobLine << '\t' << Escaped(input) << '\t'
        << (sideFiles.empty() ? "<none>" : sideFiles) << '\n';
  }

  const std::string jobName = Upper(Trim(jobLine == "<none>" ? std::string() : jobLine));
  const Job job(folder, jobName);
  if (name == "exitcode") return 3;
  if (!job.Known()) return 0;
  if (name == "fitmain") return Fitmain(job);
  if (name == "ringform") return Ringform(job);
  if (name == "desclink") return Desclink(job, jobName);
  return 0;
}
