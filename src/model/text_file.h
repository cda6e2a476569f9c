#pragma once
// Line-by-line reading of a text file, with the end-of-file rules the readers depend on: lines
// end in LF or CR LF, a final line without a line end still counts, and a read after the last
// line is a read-past-end fault.

#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

class UserPort;

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
  // The same as a view into the reader's buffer, good until the next read: for lines that are
  // only looked at.
  std::string_view ReadLineView();
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
// What a write owes the disk. A scratch file (TEMP.JOB and the support files, written anew at
// every open and removed at the close) is not waited for: a crash loses nothing that the next
// open does not write again, and on a network share each flush would cost the open a round trip.
enum class Durability { Flushed, Scratch };
// Replaces the file whole or not at all: the bytes go to a temporary file in the same folder,
// which is flushed to the disk (unless scratch), closed and checked at every step before it is
// renamed over the file. Any failure leaves the file as it was and is a file-access fault naming
// it; one that another program holds open (Windows) is told as such.
void WriteFileBytes(const std::string& path, std::string_view bytes, Durability durability = Durability::Flushed);
// Writes as WriteFileBytes does; a failure is told to the user in a box naming the file, and
// gives false.
bool WriteFileOrTell(UserPort& user, const std::string& path, std::string_view bytes,
                     Durability durability = Durability::Flushed);
// Tells the user of a fault: its text, which names the file, in an exclamation box.
void TellFileFault(UserPort& user, const std::exception& fault);

// The steps of a write, each of which can fail as a disk or a folder would.
enum class WriteStep { Open, Write, Flush, Close, Rename };

// A seam for tests: while installed, every step of every write asks it first, and a step it
// answers true for fails as the disk would (a write stops half way, a close reports the full
// disk, a rename leaves the temporary). It is per thread and installed for one scope only.
class WriteFaults {
 public:
  WriteFaults();
  ~WriteFaults();
  WriteFaults(const WriteFaults&) = delete;
  WriteFaults& operator=(const WriteFaults&) = delete;

  // True when `step` of writing `path` (the file asked for, not its temporary) is to fail.
  virtual bool Fails(WriteStep step, const std::string& path) = 0;

 private:
  WriteFaults* outer_;
};

// Joins lines with CR LF, each line ended, as the suite's tools expect.
std::string JoinCrLf(const std::vector<std::string>& lines);

}  // namespace tessel
