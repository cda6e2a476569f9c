#include "test_support.h"

#include <fstream>
#include <random>
#include <sstream>
#include <tuple>

#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace fs = std::filesystem;

namespace tessel::test {

namespace {

void WriteFile(const fs::path& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw std::runtime_error("cannot write " + path.string());
}

std::string Flagged(std::string row, char flag) {
  if (row.size() < 69) row.resize(69, ' ');
  return row + flag;
}

void AddSection(std::vector<std::string>& out, const std::vector<std::string>& rows) {
  for (std::size_t i = 0; i < rows.size(); ++i) out.push_back(Flagged(rows[i], i + 1 == rows.size() ? '1' : '0'));
}

}  // namespace

std::string Text(const std::vector<std::string>& lines, Eol eol) {
  std::string out;
  for (const auto& line : lines) out += line + (eol == Eol::CrLf ? "\r\n" : "\n");
  return out;
}

std::string Joined(const std::vector<std::string>& texts, const std::string& sep) {
  std::string out;
  for (std::size_t i = 0; i < texts.size(); ++i) out += (i ? sep : "") + texts[i];
  return out;
}

void WriteBytes(const fs::path& path, const std::string& bytes) { WriteFile(path, bytes); }

void WriteLines(const fs::path& path, const std::vector<std::string>& lines, Eol eol) {
  WriteFile(path, Text(lines, eol));
}

std::string Row(std::initializer_list<std::pair<int, std::string>> fields) {
  std::string line;
  for (const auto& [column, text] : fields) {
    const auto at = static_cast<std::size_t>(column - 1);
    if (line.size() < at + text.size()) line.resize(at + text.size(), ' ');
    line.replace(at, text.size(), text);
  }
  return line;
}

std::string ReadBytes(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return "<missing>";
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string CorRow(const std::string& id, const std::string& x, const std::string& y) {
  return Row({{2, id}, {20, PadLeft(x, 12)}, {33, PadLeft(y, 13)}});
}

std::string ControlRow(const std::string& id, const std::string& x, const std::string& y) {
  return Row({{2, id}, {20, PadLeft(x, 15)}, {37, PadLeft(y, 15)}});
}

std::string LsaLineRow(const std::string& from, const std::string& to) { return Row({{2, from}, {28, to}}); }

std::string LsaPointRow(const std::string& id, const std::string& x, const std::string& y) {
  return Row({{2, id}, {29, PadLeft(x, 11)}, {53, PadLeft(y, 11)}});
}

std::vector<std::string> LsaFile(const std::vector<std::string>& control, const std::vector<std::string>& lines,
                                 const std::vector<std::string>& points) {
  std::vector<std::string> out;
  AddSection(out, control);
  AddSection(out, lines);
  AddSection(out, {" section three"});
  AddSection(out, {" section four"});
  AddSection(out, points);
  return out;
}

std::string LocationRow(const std::string& north, const std::string& east) {
  return Row({{1, " PARCEL N,E"}, {17, PadLeft(north, 11)}, {33, PadLeft(east, 11)}});
}

std::string RawRow(const std::string& from, const std::string& to, const std::string& distance,
                   const std::string& quadrant, const std::string& bearing, const std::string& survey) {
  return Row({{1, from}, {10, to}, {17, distance}, {27, quadrant}, {31, bearing}, {40, survey}});
}

std::vector<std::string> RawFile(const std::vector<std::string>& records) {
  std::vector<std::string> out = {"RECORD DATA", "  999999"};
  out.insert(out.end(), records.begin(), records.end());
  out.push_back("999998");
  return out;
}

std::vector<std::string> DefFile(int unitCode) {
  std::string code = " ";
  code.append(std::to_string(unitCode)).append(" ");
  return {"T1N R2E", "TEST TOWNSHIP", "0", code, "0", "0", "Y"};
}

JobFixture::JobFixture() {
  // No point in any folder name: the identity of a job cuts its path at the first one.
  std::random_device seed;
  std::mt19937_64 engine(seed());
  for (;;) {
    root = fs::temp_directory_path() / ("tessel-test-" + std::to_string(engine() % 1000000000000ULL));
    if (fs::create_directory(root)) break;
  }
  jobPath = root / "job";
  toolPath = root / "tool";
  fs::create_directory(jobPath);
  fs::create_directory(toolPath);
  session.ToolFolder = toolPath.string();
  session.CurrentFolder = root.string();
  processes.log = &session.toolLog;
  processes.toolFolder = session.ToolFolder;
}

JobFixture::~JobFixture() {
  std::error_code ec;
  fs::remove_all(root, ec);
}

std::string JobFixture::JobDir() const { return jobPath.string() + PathSeparator(); }

void JobFixture::WriteJob(const std::string& name, const std::vector<std::string>& lines, Eol eol) const {
  WriteFile(jobPath / name, Text(lines, eol));
}

void JobFixture::WriteJobBytes(const std::string& name, const std::string& bytes) const {
  WriteFile(jobPath / name, bytes);
}

void JobFixture::WriteTool(const std::string& name, const std::vector<std::string>& lines, Eol eol) const {
  WriteFile(toolPath / name, Text(lines, eol));
}

bool JobFixture::JobHas(const std::string& name) const {
  for (const auto& entry : fs::directory_iterator(jobPath)) {
    if (entry.path().filename().string() == name) return true;
  }
  return false;
}

void JobFixture::UseJob(const std::string& name) {
  session.JobFolder = JobDir();
  session.JobBase = JobDir() + name;
  session.JobName = Upper(name);
  session.CurrentFolder = JobDir();
}

void JobFixture::SetPoints(const std::vector<std::tuple<std::string, double, double>>& points) {
  session.points.Clear();
  int i = 0;
  for (const auto& [id, x, y] : points) session.points.Set(++i, id, x, y);
  session.points.SetCount(static_cast<std::int16_t>(i));
}

#ifdef _WIN32
FileHeldOpen::FileHeldOpen(const std::string& path) {
  const HANDLE handle = CreateFileW(NativePath(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle != INVALID_HANDLE_VALUE) handle_ = handle;
}

FileHeldOpen::~FileHeldOpen() {
  if (handle_) CloseHandle(static_cast<HANDLE>(handle_));
}
#else
FileHeldOpen::FileHeldOpen(const std::string&) {}
FileHeldOpen::~FileHeldOpen() = default;
#endif

}  // namespace tessel::test
