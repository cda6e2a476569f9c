#pragma once
// Shared pieces of the core tests: a temporary job folder and tool folder with a session on
// recording ports, and small builders for the fixed-column lines of the job files.

#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "model/display.h"
#include "model/fault.h"
#include "model/progress.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "process_probe.h"

namespace tessel::test {

enum class Eol { CrLf, Lf };

// The lines, each ended with the chosen line end.
std::string Text(const std::vector<std::string>& lines, Eol eol = Eol::CrLf);

// One line with each text starting at its 1-based column and blanks between; a later text
// overwrites an earlier one where they meet.
std::string Row(std::initializer_list<std::pair<int, std::string>> fields);

// The texts with `sep` between them: several fields compared in one check.
std::string Joined(const std::vector<std::string>& texts, const std::string& sep = "|");

// Writes the bytes, replacing the file.
void WriteBytes(const std::filesystem::path& path, const std::string& bytes);
// Writes the lines, each ended, replacing the file.
void WriteLines(const std::filesystem::path& path, const std::vector<std::string>& lines, Eol eol = Eol::CrLf);

// The whole file, or "<missing>" when it cannot be read.
std::string ReadBytes(const std::filesystem::path& path);

// Lines of .COR as the reader cuts them: identifier at 2, X in 20-31, Y in 33-45.
std::string CorRow(const std::string& id, const std::string& x, const std::string& y);
// .LSA rows: control (identifier 2, X 20, Y 37), lines (from 2, to 28), points (identifier 2,
// X 29, Y 53).
std::string ControlRow(const std::string& id, const std::string& x, const std::string& y);
std::string LsaLineRow(const std::string& from, const std::string& to);
std::string LsaPointRow(const std::string& id, const std::string& x, const std::string& y);
// A whole .LSA: each row gets a last character in column 70, "1" on the last row of its
// section and "0" on the others; sections 3 and 4 hold one line each.
std::vector<std::string> LsaFile(const std::vector<std::string>& control, const std::vector<std::string>& lines,
                                 const std::vector<std::string>& points);
// The location line of a parcel in .IID: northing in columns 17-27, easting in 33-43.
std::string LocationRow(const std::string& north, const std::string& east);
// A record line of .raw with its fields at columns 1, 10, 17, 27, 31 and 40.
std::string RawRow(const std::string& from, const std::string& to, const std::string& distance,
                   const std::string& quadrant, const std::string& bearing, const std::string& survey);
// A .raw: a heading, "999999", the records, "999998".
std::vector<std::string> RawFile(const std::vector<std::string>& records);
// A .def of seven lines whose fourth line holds the unit code.
std::vector<std::string> DefFile(int unitCode);

// The statement must end in a run-time fault of this kind.
template <typename F>
void ExpectFault(FaultKind kind, F&& statement) {
  try {
    statement();
    ADD_FAILURE() << "no run-time fault";
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.kind(), kind) << fault.what();
  }
}

// The same, and the fault's text must be exactly `what`.
template <typename F>
void ExpectFault(FaultKind kind, const std::string& what, F&& statement) {
  try {
    statement();
    ADD_FAILURE() << "no run-time fault";
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.kind(), kind) << fault.what();
    EXPECT_EQ(std::string(fault.what()), what);
  }
}

// Holds a file open the way an editor or a spreadsheet on Windows does, sharing it with no one,
// for as long as it lives. Elsewhere nothing stops another program from replacing such a file,
// and `holds()` is false.
class FileHeldOpen {
 public:
  explicit FileHeldOpen(const std::string& path);
  ~FileHeldOpen();
  FileHeldOpen(const FileHeldOpen&) = delete;
  FileHeldOpen& operator=(const FileHeldOpen&) = delete;
  bool holds() const { return handle_ != nullptr; }

 private:
  void* handle_ = nullptr;
};

// A watcher of long work that records what it is told and asks the work to stop once it has
// heard `stopAfter` reports.
struct StopAfter : Progress {
  static constexpr std::size_t kNever = ~std::size_t{0};
  explicit StopAfter(std::size_t reports) : stopAfter(reports) {}
  void Report(const std::string& what, double fraction) override {
    steps.push_back(what);
    fractions.push_back(fraction);
  }
  bool CancelAsked() const override { return fractions.size() >= stopAfter; }
  std::size_t stopAfter;
  std::vector<std::string> steps;
  std::vector<double> fractions;
};

// Records what the load asks of the viewer.
class RecordingDisplay : public Display {
 public:
  void RefreshViewAfterExtents() override { calls.push_back("RefreshViewAfterExtents"); }
  void RefreshView() override { calls.push_back("RefreshView"); }
  void ClearCanvas() override { calls.push_back("ClearCanvas"); }
  std::vector<std::string> calls;
};

// A fresh temporary folder holding "job" and "tool", removed again at the end of the test, and
// a session on recording ports (the probe for processes) whose ToolFolder is "tool".
class JobFixture : public ::testing::Test {
 protected:
  JobFixture();
  ~JobFixture() override;

  // The job folder with a separator at its end, as JobFolder holds it.
  std::string JobDir() const;
  std::string ToolDir() const { return toolPath.string(); }

  void WriteJob(const std::string& name, const std::vector<std::string>& lines, Eol eol = Eol::CrLf) const;
  void WriteJobBytes(const std::string& name, const std::string& bytes) const;
  void WriteTool(const std::string& name, const std::vector<std::string>& lines, Eol eol = Eol::CrLf) const;
  std::string ReadJob(const std::string& name) const { return ReadBytes(jobPath / name); }
  std::string ReadTool(const std::string& name) const { return ReadBytes(toolPath / name); }
  // Exactly this spelling exists in the job folder.
  bool JobHas(const std::string& name) const;

  // Sets the identity of job `name` in the job folder without any file effect, as an open job
  // has it; the readers can then run one by one.
  void UseJob(const std::string& name = "T1N2E");
  // The points of the store, as the tests set them up: entries 1..n and PointCount n.
  void SetPoints(const std::vector<std::tuple<std::string, double, double>>& points);

  std::filesystem::path root;
  std::filesystem::path jobPath;
  std::filesystem::path toolPath;
  RecordingUserPort user;
  RecordingCanvas canvas;
  ProcessProbe processes;
  Session session{user, canvas, processes};
};

}  // namespace tessel::test
