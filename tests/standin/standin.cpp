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
// - "twpjoin" merges the .COR of every project of the region's .how (keywords skipped) into the
//   region's .lsa (control: each project's first point; lines: each project's points in a chain;
//   points: every identifier once), with .sd, .mat and .pgc beside it;
// - "fitmain" writes a .COR from the .LSA points when the job has none;
// - "twpsplit" writes the region's .COR coordinates into every project's .COR, by identifier;
// - "twprel", "twpmatch", "mercgrid", "flatten", "descout" write a small .rel, .tmr, .utm, .LX
//   and .GLD of the job;
// - "recpad" rebuilds .lsa and .sd from .raw and .sid: .lsa keeps its first section (the control
//   block) and gets one network line a record, two short sections and the .COR points; .sd gets
//   one line a control station and then one line a record with the error estimates of the
//   record's survey;
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

std::vector<Point> LsaPoints(const fs::path& lsa);

int Fitmain(const Job& job) {
  const auto cor = job.Existing(".COR");
  if (!cor) {
    const auto lsa = job.Existing(".LSA");
    if (!lsa) return 0;
    std::vector<std::string> lines;
    for (const auto& p : LsaPoints(*lsa)) lines.push_back(CorLine(p));
    return WriteLines(job.Dataset(".cor"), lines) ? 0 : 1;
  }
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

// The projects of a region's .how: paths without extension, keywords left out.
std::vector<fs::path> RegionProjects(const Job& job, const fs::path& folder) {
  std::vector<fs::path> projects;
  const auto how = job.Existing(".how");
  if (!how) return projects;
  for (auto row : ReadLines(*how)) {
    row = Trim(row);
    if (row.empty() || row == "FIXED" || row == "NOREL") continue;
    if (row.find('/') != std::string::npos || row.find('\\') != std::string::npos) {
      projects.emplace_back(row);
    } else {
      projects.push_back(folder / row);
    }
  }
  return projects;
}

std::optional<fs::path> ProjectDataset(const fs::path& project, const std::string& extension) {
  return FindAnyCase(project.parent_path(), project.filename().string() + extension);
}

int Twpjoin(const Job& job, const fs::path& folder) {
  std::vector<std::string> control, lines, points, projects;
  std::vector<std::string> seen;
  for (const auto& project : RegionProjects(job, folder)) {
    projects.push_back(project.string());
    const auto cor = ProjectDataset(project, ".COR");
    if (!cor) continue;
    const auto read = ReadCor(*cor);
    for (std::size_t k = 0; k < read.size(); ++k) {
      const Point& p = read[k];
      if (k == 0) control.push_back(PadRight(" " + p.id, 19) + PadLeft(Fixed3(p.x), 15) + "  " + PadLeft(Fixed3(p.y), 15));
      if (k > 0) lines.push_back(PadRight(" " + read[k - 1].id, 27) + p.id);
      if (std::find(seen.begin(), seen.end(), p.id) != seen.end()) continue;
      seen.push_back(p.id);
      points.push_back(PadRight(" " + p.id, 28) + PadLeft(Fixed3(p.x), 11) + std::string(13, ' ') + PadLeft(Fixed3(p.y), 11));
    }
  }
  std::vector<std::string> out;
  const auto section = [&out](std::vector<std::string> rows) {
    if (rows.empty()) rows.push_back(" ");
    for (std::size_t k = 0; k < rows.size(); ++k) out.push_back(PadRight(rows[k], 69).substr(0, 69) + (k + 1 == rows.size() ? "1" : "0"));
  };
  section(control);
  section(lines);
  section({" section three"});
  section({" section four"});
  section(points);
  bool ok = WriteLines(job.Dataset(".lsa"), out);
  ok = WriteLines(job.Dataset(".sd"), std::vector<std::string>(control.size(), "     0.020     0.020")) && ok;
  ok = WriteLines(job.Dataset(".mat"), projects) && ok;
  ok = WriteLines(job.Dataset(".pgc"), {std::to_string(points.size()) + " POINTS"}) && ok;
  return ok ? 0 : 1;
}

std::vector<Point> LsaPoints(const fs::path& lsa) {
  std::vector<Point> points;
  int section = 1;
  for (const auto& line : ReadLines(lsa)) {
    const bool last = !line.empty() && line.back() == '1';
    if (section == 5) {
      Point p;
      p.id = Trim(Mid(line, 2, 18));
      p.x = std::strtod(Trim(Mid(line, 29, 11)).c_str(), nullptr);
      p.y = std::strtod(Trim(Mid(line, 53, 11)).c_str(), nullptr);
      points.push_back(p);
    }
    if (last) ++section;
  }
  return points;
}

int Twpsplit(const Job& job, const fs::path& folder) {
  const auto cor = job.Existing(".COR");
  if (!cor) return 0;
  const auto region = ReadCor(*cor);
  for (const auto& project : RegionProjects(job, folder)) {
    const auto own = ProjectDataset(project, ".COR");
    if (!own) continue;
    std::vector<std::string> lines;
    for (auto p : ReadCor(*own)) {
      for (const auto& q : region) {
        if (q.id == p.id) p = q;
      }
      lines.push_back(CorLine(p));
    }
    if (!WriteLines(*own, lines)) return 1;
  }
  return 0;
}

// A small file of the job named for what the tool makes.
int Report(const Job& job, const std::string& extension, const std::string& name) {
  const auto cor = job.Existing(".COR");
  const auto points = cor ? ReadCor(*cor) : std::vector<Point>{};
  return WriteLines(job.Dataset(extension), {name + " " + std::to_string(points.size()) + " POINTS"}) ? 0 : 1;
}

struct Record {
  std::string from, to, distance, quadrant, bearing, survey;
};

// The records of .raw: the lines between "999999" and "999998".
std::vector<Record> RawRecords(const fs::path& raw) {
  std::vector<Record> records;
  bool inRecords = false;
  for (const auto& line : ReadLines(raw)) {
    if (!inRecords) {
      inRecords = Trim(line) == "999999";
      continue;
    }
    if (line == "999998") break;
    records.push_back({Trim(Mid(line, 1, 6)), Trim(Mid(line, 10, 6)), Trim(Mid(line, 17, 8)), Trim(Mid(line, 27, 1)),
                       Trim(Mid(line, 31, 8)), Trim(Mid(line, 40))});
  }
  return records;
}

// A row of an .lsa section: the text padded to 79 and the section's flag, "1" on its last row.
std::string SectionRow(const std::string& text, bool last) { return PadRight(text, 79).substr(0, 79) + (last ? "1" : "0"); }

int Recpad(const Job& job) {
  const auto raw = job.Existing(".raw");
  const std::vector<Record> records = raw ? RawRecords(*raw) : std::vector<Record>{};
  struct Estimates {
    std::string name, constant, ppm, seconds;
  };
  std::vector<Estimates> surveys;
  if (const auto sid = job.Existing(".sid")) {
    for (const auto& line : ReadLines(*sid)) {
      if (Mid(line, 1, 1) != "S") continue;
      surveys.push_back({Trim(Mid(line, 2, 18)), Trim(Mid(line, 20, 7)), Trim(Mid(line, 27, 8)), Trim(Mid(line, 35, 8))});
    }
  }
  // The control block: the first section of .lsa; .sd opens with one line a station.
  const auto lsaFile = job.Existing(".lsa");
  std::vector<std::string> lsa, sd;
  for (const auto& line : lsaFile ? ReadLines(*lsaFile) : std::vector<std::string>{}) {
    lsa.push_back(line);
    sd.push_back(PadRight(Trim(Mid(line, 2, 18)), 14) + "     0.020     0.020");
    if (!line.empty() && line.back() == '1') break;
  }
  for (std::size_t k = 0; k < records.size(); ++k) {
    const Record& r = records[k];
    lsa.push_back(SectionRow(PadRight(" " + r.from, 27) + PadRight(r.to, 16) + PadLeft(r.distance, 12) + "  " +
                                 r.quadrant + PadLeft(r.bearing, 11),
                             k + 1 == records.size()));
    Estimates e{r.survey, "?", "?", "?"};
    for (const auto& s : surveys) {
      if (s.name == r.survey) e = s;
    }
    sd.push_back(PadRight(r.from, 7) + PadRight(r.to, 7) + PadLeft(e.constant, 10) + PadLeft(e.ppm, 10) +
                 PadLeft(e.seconds, 10) + "  " + r.survey);
  }
  if (records.empty()) lsa.push_back(SectionRow(" ", true));
  lsa.push_back(SectionRow(" section three", true));
  lsa.push_back(SectionRow(" section four", true));
  const auto cor = job.Existing(".COR");
  const auto points = cor ? ReadCor(*cor) : std::vector<Point>{};
  for (std::size_t k = 0; k < points.size(); ++k) {
    const Point& p = points[k];
    lsa.push_back(SectionRow(PadRight(" " + p.id, 28) + PadLeft(Fixed3(p.x), 11) + std::string(13, ' ') +
                                 PadLeft(Fixed3(p.y), 11),
                             k + 1 == points.size()));
  }
  bool ok = WriteLines(job.Dataset(".lsa"), lsa);
  ok = WriteLines(job.Dataset(".sd"), sd) && ok;
  return ok ? 0 : 1;
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
  if (name == "twpjoin") return Twpjoin(job, folder);
  if (name == "twpsplit") return Twpsplit(job, folder);
  if (name == "recpad") return Recpad(job);
  if (name == "twprel") return Report(job, ".rel", name);
  if (name == "twpmatch") return Report(job, ".tmr", name);
  if (name == "mercgrid") return Report(job, ".utm", name);
  if (name == "flatten") return Report(job, ".LX", name);
  if (name == "descout") return Report(job, ".GLD", name);
  return 0;
}
