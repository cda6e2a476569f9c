#include "cama/cama_import.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};

// Columns 202-209 of the line (without its line end) against the code.
bool CodeMatches(const char* line, std::size_t length, const std::string& code) {
  if (length < 202) return code.empty();
  const std::size_t cut = std::min<std::size_t>(8, length - 201);
  return cut == code.size() && std::memcmp(line + 201, code.data(), cut) == 0;
}

}  // namespace

TownshipQuery DefaultTownshipQuery(const std::string& jobName) {
  return {Mid(jobName, 2, 2), "0", Mid(jobName, 4, 1), Mid(jobName, 6, 2), "0", Mid(jobName, 8, 1)};
}

std::string QueryCode(const TownshipQuery& fields) {
  std::string code;
  for (const std::string& field : fields) code += field;
  return code;
}

std::string CamaImportCancelledText(const std::string& camaPath) {
  return "CAMA import cancelled: " + camaPath + " is as it was.";
}

CamaFilterResult FilterCamaDatabase(const std::string& databasePath, const std::string& code, Progress* progress) {
  CamaFilterResult result;
  std::unique_ptr<std::FILE, FileCloser> file(std::fopen(databasePath.c_str(), "rb"));
  if (!file) return result;
  result.opened = true;
  std::error_code sizeUnknown;
  const auto size = std::filesystem::file_size(databasePath, sizeUnknown);
  const double whole = sizeUnknown || size == 0 ? 0.0 : static_cast<double>(size);
  double read = 0.0;
  // The database streams through a fixed buffer; only the part line at its end is carried over.
  constexpr std::size_t kChunk = 1 << 20;
  std::vector<char> buffer(kChunk);
  std::string carry;
  auto take = [&](const char* line, std::size_t length) {
    if (length > 0 && line[length - 1] == '\r') --length;
    ++result.lines;
    if (!CodeMatches(line, length, code)) return;
    ++result.matched;
    result.rows.append(line, length);
    result.rows += "\r\n";
  };
  while (true) {
    // Nothing is written while the database is read, so the pass may stop between any two parts.
    if (CancelAsked(progress)) {
      result.cancelled = true;
      return result;
    }
    const std::size_t got = std::fread(buffer.data(), 1, kChunk, file.get());
    if (got == 0) break;
    read += static_cast<double>(got);
    Report(progress, kCamaReadingStep, whole > 0.0 ? std::min(1.0, read / whole) : -1.0);
    const char* data = buffer.data();
    std::size_t start = 0;
    while (start < got) {
      const void* found = std::memchr(data + start, '\n', got - start);
      if (!found) {
        carry.append(data + start, got - start);
        break;
      }
      const std::size_t end = static_cast<std::size_t>(static_cast<const char*>(found) - data);
      if (carry.empty()) {
        take(data + start, end - start);
      } else {
        carry.append(data + start, end - start);
        take(carry.data(), carry.size());
        carry.clear();
      }
      start = end + 1;
    }
  }
  if (std::ferror(file.get())) {
    result.opened = false;
    return result;
  }
  if (!carry.empty()) take(carry.data(), carry.size());
  return result;
}

bool CamaImportBegin(Session& s) {
  if (s.DatasetExists(".cama")) {
    if (s.user.Message(kMsgCamaAppend, Icon::Question, Buttons::YesNo) == Answer::No) return false;
  }
  return true;
}

bool CamaImportFrom(Session& s, const std::string& code, const std::string& databasePath, long long* appended,
                    Progress* progress) {
  const std::string cama = s.DatasetPath(".cama");
  std::string before;
  if (FileExistsAnyCase(cama) && !ReadFileBytes(cama, before)) {
    s.user.Message("The file " + cama + " could not be read; nothing was imported.", Icon::Exclamation);
    return false;
  }
  s.user.SetPointer(Pointer::Hourglass);
  const CamaFilterResult found = FilterCamaDatabase(databasePath, code, progress);
  s.user.SetPointer(Pointer::Default);
  if (found.cancelled) {
    s.user.Status(1, s.JobBase);
    s.user.Note(CamaImportCancelledText(cama));
    return false;
  }
  if (!found.opened) {
    s.user.Message("The CAMA database " + databasePath + " could not be read; nothing was imported.",
                   Icon::Exclamation);
    s.user.Status(1, s.JobBase);
    return false;
  }
  const bool written = WriteFileOrTell(s.user, cama, before + found.rows);
  if (written && appended) *appended = found.matched;
  s.user.Status(1, s.JobBase);
  return written;
}

bool CamaImportQuery(Session& s, const TownshipQuery& fields, Progress* progress) {
  const std::string code = QueryCode(fields);
  s.user.Status(1, kStatusBuildingCama);
  FileRequest request;
  request.title = kCamaChooserTitle;
  request.filter = kCamaChooserFilter;
  request.initialFolder = s.JobFolder;
  const auto choice = s.user.ChooseFile(request);
  if (!choice) {
    // A cancelled chooser ends the import before .cama is opened.
    s.user.Status(1, s.JobBase);
    return false;
  }
  return CamaImportFrom(s, code, choice->fileName, nullptr, progress);
}

}  // namespace tessel
