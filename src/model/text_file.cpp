#include "model/text_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "model/fault.h"
#include "model/platform.h"
#include "model/ports.h"

namespace tessel {

bool ReadFileBytes(const std::string& path, std::string& out) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  in.seekg(0, std::ios::end);
  const auto size = in.tellg();
  if (size < 0) return false;
  out.resize(static_cast<std::size_t>(size));
  in.seekg(0, std::ios::beg);
  in.read(out.data(), size);
  return static_cast<bool>(in) || in.eof();
}

namespace {
constexpr std::size_t kChunk = 1 << 16;
}

LineReader::LineReader(const std::string& path) {
  std::FILE* f = path.empty() ? nullptr : std::fopen(path.c_str(), "rb");
  if (!f) throw RuntimeFault(FaultKind::FileNotFound, "File not found: " + path);
  file_.reset(f);
}

LineReader LineReader::FromText(std::string text) {
  LineReader reader;
  reader.buffer_ = std::move(text);
  return reader;
}

bool LineReader::Fill() {
  if (!file_) return false;
  // Keep the unread part and append the next chunk behind it.
  buffer_.erase(0, pos_);
  pos_ = 0;
  const std::size_t kept = buffer_.size();
  buffer_.resize(kept + kChunk);
  const std::size_t got = std::fread(buffer_.data() + kept, 1, kChunk, file_.get());
  buffer_.resize(kept + got);
  if (got == 0) file_.reset();
  return got > 0;
}

bool LineReader::Eof() { return pos_ >= buffer_.size() && !Fill(); }

std::string_view LineReader::ReadLineView() {
  if (Eof()) throw RuntimeFault(FaultKind::ReadPastEnd, "Input past end of file");
  std::size_t newline;
  while ((newline = buffer_.find('\n', pos_)) == std::string::npos && Fill()) {
  }
  const std::size_t stop = newline == std::string::npos ? buffer_.size() : newline;
  std::string_view line(buffer_.data() + pos_, stop - pos_);
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  pos_ = newline == std::string::npos ? buffer_.size() : newline + 1;
  return line;
}

void LineReader::ReadLine(std::string& line) { line.assign(ReadLineView()); }

std::string LineReader::ReadLine() {
  std::string line;
  ReadLine(line);
  return line;
}

namespace {

thread_local WriteFaults* installedFaults = nullptr;

bool Fails(WriteStep step, const std::string& path) {
  return installedFaults != nullptr && installedFaults->Fails(step, path);
}

[[noreturn]] void WriteFailed(const std::string& path) {
  throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + path);
}

// The temporary beside the file, so that the rename stays on one file system.
std::string TemporaryBeside(const std::string& path) {
  const std::filesystem::path target = NativePath(path);
  std::string name = "~";
  name += PathBytes(target.filename());
  name += ".tmp";
  return PathBytes(target.parent_path() / NativePath(name));
}

}  // namespace

void WriteFileBytes(const std::string& path, std::string_view bytes, Durability durability) {
  if (path.empty()) WriteFailed(path);
  const std::string temporary = TemporaryBeside(path);
  std::FILE* f = Fails(WriteStep::Open, path) ? nullptr : std::fopen(temporary.c_str(), "wb");
  if (!f) WriteFailed(path);
  // A disk that fills up takes part of the bytes.
  const bool diskFull = Fails(WriteStep::Write, path);
  const std::size_t wanted = diskFull ? bytes.size() / 2 : bytes.size();
  bool written = std::fwrite(bytes.data(), 1, wanted, f) == wanted && !diskFull;
  written = std::fflush(f) == 0 && !Fails(WriteStep::Flush, path) && written;
  written = written && (durability == Durability::Scratch || FlushToDisk(f));
  // A full disk may only show at the close.
  written = std::fclose(f) == 0 && !Fails(WriteStep::Close, path) && written;
  ReplaceResult replaced = ReplaceResult::Failed;
  if (written) replaced = Fails(WriteStep::Rename, path) ? ReplaceResult::Failed : ReplaceByRename(temporary, path);
  if (replaced != ReplaceResult::Replaced) {
    std::error_code ignored;
    std::filesystem::remove(NativePath(temporary), ignored);
    if (replaced == ReplaceResult::HeldOpen) {
      throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + path +
                                                     " is held open by another program; close it there and try again");
    }
    WriteFailed(path);
  }
}

bool WriteFileOrTell(UserPort& user, const std::string& path, std::string_view bytes, Durability durability) {
  try {
    WriteFileBytes(path, bytes, durability);
    return true;
  } catch (const std::exception& fault) {
    TellFileFault(user, fault);
    return false;
  }
}

void TellFileFault(UserPort& user, const std::exception& fault) { user.Message(fault.what(), Icon::Exclamation); }

WriteFaults::WriteFaults() : outer_(installedFaults) { installedFaults = this; }
WriteFaults::~WriteFaults() { installedFaults = outer_; }

std::string JoinCrLf(const std::vector<std::string>& lines) {
  std::string out;
  for (const auto& line : lines) {
    out += line;
    out += "\r\n";
  }
  return out;
}

}  // namespace tessel
