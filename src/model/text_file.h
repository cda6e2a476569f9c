#pragma once
// Line-by-line reading of a text file, with the end-of-file rules the readers depend on: lines
// end in LF or CR LF, a final line without a line end still counts, and a read after the last
// line is a read-past-end fault.

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

class LineReader {
 public:
  // Opens the file; a file that cannot be opened is a file-not-found fault. Only as much of
  // the file is read as the lines asked for.
  explicit LineReader(const std::string& path);
  // Reads the lines of a text already in memory.
  static LineReader FromText(std::string text);

  // The next line without its line end.
  std::string ReadLine();
  // The same into `line`, reusing its storage.
  void ReadLine(std::string& line);
  // True when every line has been read.
  bool Eof();

 private:
  LineReader() = default;
  // More of the file into the buffer; false at the end of the file.
  bool Fill();

  struct Closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
  };
  std::unique_ptr<std::FILE, Closer> file_;
  std::string buffer_;
  std::size_t pos_ = 0;
};

// Whole-file helpers. ReadFileBytes returns false when the file cannot be read.
bool ReadFileBytes(const std::string& path, std::string& out);
// Replaces the file whole or not at all: the bytes go to a temporary file in the same folder,
// which is flushed, closed and checked at every step before it is renamed over the file. Any
// failure leaves the file as it was and is a file-access fault naming it.
void WriteFileBytes(const std::string& path, std::string_view bytes);
// Joins lines with CR LF, each line ended, as the suite's tools expect.
std::string JoinCrLf(const std::vector<std::string>& lines);

}  // namespace tessel
