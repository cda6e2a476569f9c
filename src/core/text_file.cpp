#include "core/text_file.h"

#include <fstream>
#include <iterator>

#include "core/fault.h"

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

LineReader::LineReader(const std::string& path) {
  if (path.empty() || !ReadFileBytes(path, text_)) {
    throw RuntimeFault(FaultKind::FileNotFound, "File not found: " + path);
  }
}

LineReader LineReader::FromText(std::string text) {
  LineReader reader;
  reader.text_ = std::move(text);
  return reader;
}

std::string LineReader::ReadLine() {
  if (Eof()) throw RuntimeFault(FaultKind::ReadPastEnd, "Input past end of file");
  const auto newline = text_.find('\n', pos_);
  const std::size_t stop = newline == std::string::npos ? text_.size() : newline;
  std::string line = text_.substr(pos_, stop - pos_);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  pos_ = newline == std::string::npos ? text_.size() : newline + 1;
  return line;
}

void WriteFileBytes(const std::string& path, std::string_view bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + path);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!out) throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + path);
}

std::string JoinCrLf(const std::vector<std::string>& lines) {
  std::string out;
  for (const auto& line : lines) {
    out += line;
    out += "\r\n";
  }
  return out;
}

}  // namespace tessel
