#pragma once
// Line-by-line reading of a text file, with the end-of-file rules the readers depend on: the
// file is read whole when opened, lines end in LF or CR LF, a final line without a line end
// still counts, and a read after the last line is a read-past-end fault.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

class LineReader {
 public:
  // Opens and reads the file; a file that cannot be opened is a file-not-found fault.
  explicit LineReader(const std::string& path);
  // Reads the lines of a text already in memory.
  static LineReader FromText(std::string text);

  // The next line without its line end.
  std::string ReadLine();
  // True when every line has been read.
  bool Eof() const { return pos_ >= text_.size(); }

  // The unread rest of the text, for readers that tokenise it themselves.
  std::string_view Rest() const { return std::string_view(text_).substr(pos_); }
  void Advance(std::size_t n) { pos_ += n; }

 private:
  LineReader() = default;
  std::string text_;
  std::size_t pos_ = 0;
};

// Whole-file helpers. ReadFileBytes returns false when the file cannot be read.
bool ReadFileBytes(const std::string& path, std::string& out);
// Replaces the file; a file that cannot be written is a file-access fault.
void WriteFileBytes(const std::string& path, std::string_view bytes);
// Joins lines with CR LF, each line ended, as the suite's tools expect.
std::string JoinCrLf(const std::vector<std::string>& lines);

}  // namespace tessel
