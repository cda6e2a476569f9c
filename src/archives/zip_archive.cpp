#include "archives/zip_archive.h"

#include <zip.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "archives/file_patterns.h"
#include "model/paths.h"
#include "model/text_file.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

// The components of a member name, split at either separator; empty components dropped.
std::vector<std::string> Components(std::string_view name) {
  std::vector<std::string> parts;
  std::string part;
  for (char c : name) {
    if (IsSeparator(c)) {
      if (!part.empty()) parts.push_back(part);
      part.clear();
    } else {
      part += c;
    }
  }
  if (!part.empty()) parts.push_back(part);
  return parts;
}

void Tell(std::string* problem, const std::string& text) {
  if (problem) *problem = text;
}

struct ArchiveCloser {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveCloser>;

struct FileCloser {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};

struct SourceFree {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};

// The member's whole contents, read through its checksum; false when it does not read back whole.
bool ReadMember(zip_t* archive, zip_uint64_t index, std::uint64_t size, std::string* out) {
  std::unique_ptr<zip_file_t, FileCloser> file(zip_fopen_index(archive, index, 0));
  if (!file) return false;
  std::string contents;
  char buffer[1 << 15];
  std::uint64_t total = 0;
  for (;;) {
    const zip_int64_t got = zip_fread(file.get(), buffer, sizeof buffer);
    if (got < 0) return false;
    if (got == 0) break;
    total += static_cast<std::uint64_t>(got);
    if (total > size) return false;
    if (out) contents.append(buffer, static_cast<std::size_t>(got));
  }
  if (total != size) return false;
  if (out) *out = std::move(contents);
  return true;
}

struct Member {
  zip_uint64_t index = 0;
  std::string name;
  std::uint64_t size = 0;
  std::time_t mtime = 0;
  bool hasTime = false;
};

// Where a watched piece of work stands: its text, and the share of the whole from `from` to `to`
// that this step covers.
struct Watch {
  Progress* progress = nullptr;
  std::string what;
  double from = 0.0;
  double to = 1.0;
  void At(double share) const { Report(progress, what, from + (to - from) * std::clamp(share, 0.0, 1.0)); }
};

// Checks the opened archive; the members in their order. A cancel is heeded between members.
std::int16_t CheckMembers(const std::string& zipFile, Archive& archive, std::vector<Member>& members,
                          std::string* problem, const Watch& watch = {}) {
  const zip_int64_t count = zip_get_num_entries(archive.get(), 0);
  for (zip_int64_t i = 0; i < count; ++i) {
    watch.At(static_cast<double>(i) / static_cast<double>(count));
    if (CancelAsked(watch.progress)) return kZipCancelled;
    const auto index = static_cast<zip_uint64_t>(i);
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive.get(), index, 0, &stat) != 0 || !(stat.valid & ZIP_STAT_NAME) ||
        !(stat.valid & ZIP_STAT_SIZE)) {
      Tell(problem, "\"" + zipFile + "\" is damaged: member " + std::to_string(i + 1) + " cannot be read.");
      return kZipDamaged;
    }
    Member member;
    member.index = index;
    member.name = stat.name;
    member.size = stat.size;
    member.hasTime = (stat.valid & ZIP_STAT_MTIME) != 0;
    member.mtime = stat.mtime;
    if (!ZipNameIsSafe(member.name)) {
      Tell(problem, "\"" + zipFile + "\" holds \"" + member.name +
                        "\", whose path leaves the target folder; nothing was extracted.");
      return kZipUnsafeName;
    }
    if (member.size > kZipMemberLimit) {
      Tell(problem, "\"" + zipFile + "\" holds \"" + member.name + "\", which is too large to extract.");
      return kZipTooLarge;
    }
    if (!ReadMember(archive.get(), index, member.size, nullptr)) {
      Tell(problem, "\"" + zipFile + "\" is damaged: \"" + member.name + "\" does not read back whole.");
      return kZipDamaged;
    }
    members.push_back(std::move(member));
  }
  return kZipOk;
}

// Opens and checks the archive file.
std::int16_t Check(const std::string& zipFile, Archive& archive, std::vector<Member>& members, std::string* problem,
                   const Watch& watch = {}) {
  int error = 0;
  archive.reset(zip_open(zipFile.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error));
  if (!archive) {
    Tell(problem, "\"" + zipFile + "\" cannot be opened as a ZIP file; it is missing or damaged.");
    return kZipCannotOpen;
  }
  return CheckMembers(zipFile, archive, members, problem, watch);
}

// libzip's calls while it compresses: how far it has come, and whether to stop.
void CompressProgress(zip_t*, double share, void* watch) { static_cast<const Watch*>(watch)->At(share); }
int CompressCancel(zip_t*, void* watch) { return CancelAsked(static_cast<const Watch*>(watch)->progress) ? 1 : 0; }

void SetModified(const fs::path& path, std::time_t when) {
  std::error_code error;
  const auto system = std::chrono::system_clock::from_time_t(when);
  fs::last_write_time(path, std::chrono::file_clock::from_sys(system), error);
}

std::time_t Modified(const std::string& path) {
  std::error_code error;
  const auto when = fs::last_write_time(path, error);
  if (error) return std::time(nullptr);
  return std::chrono::system_clock::to_time_t(std::chrono::file_clock::to_sys(when));
}

}  // namespace

bool ZipNameIsSafe(std::string_view name) {
  if (name.empty() || IsSeparator(name.front())) return false;
  if (name.size() >= 2 && name[1] == ':') return false;
  if (name.find('\0') != std::string_view::npos) return false;
  const auto parts = Components(name);
  if (parts.empty()) return false;
  return std::none_of(parts.begin(), parts.end(), [](const std::string& p) { return p == ".."; });
}

std::string ZipMemberName(std::string_view path) {
  std::string name(path);
  if (name.size() >= 2 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0]))) name.erase(0, 2);
  std::size_t root = 0;
  while (root < name.size() && (name[root] == '/' || name[root] == PathSeparator())) ++root;
  name.erase(0, root);
  for (char& c : name) {
    if (c == PathSeparator()) c = '/';
  }
  return name;
}

std::vector<std::string> SplitZipItems(const std::string& items) {
  std::vector<std::string> out;
  std::size_t at = 0;
  while (at < items.size()) {
    while (at < items.size() && items[at] == ' ') ++at;
    if (at == items.size()) break;
    std::size_t end;
    if (items[at] == '"') {
      // A name in double quotes runs to the closing quote, or to the end of the list.
      end = std::min(items.find('"', at + 1), items.size());
      if (end > at + 1) out.push_back(items.substr(at + 1, end - at - 1));
      at = end + 1;
      continue;
    }
    end = std::min(items.find(' ', at), items.size());
    out.push_back(items.substr(at, end - at));
    at = end;
  }
  return out;
}

std::string ZipListItem(const std::string& path) {
  if (path.find(' ') == std::string::npos) return path;
  return "\"" + path + "\"";
}

std::vector<ZipItem> ExpandZipItems(const std::string& items, const std::string& folder) {
  std::vector<ZipItem> out;
  for (const std::string& item : SplitZipItems(items)) {
    const std::size_t cut = item.find_last_of(std::string("/") + PathSeparator());
    if (!HasWildcard(cut == std::string::npos ? item : item.substr(cut + 1))) {
      std::error_code error;
      const std::string path =
          folder.empty() || fs::path(item).is_absolute() ? item : (fs::path(folder) / item).string();
      if (fs::is_regular_file(path, error)) out.push_back({item, path});
      continue;
    }
    const PatternFiles found = ExpandPattern(item, folder);
    for (const auto& name : found.names) out.push_back({found.folder + name, found.Path(name)});
  }
  return out;
}

std::string LfToCrLf(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 16);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) out += '\r';
    out += bytes[i];
  }
  return out;
}

std::int16_t TestZipArchive(const std::string& zipFile, std::string* problem) {
  Archive archive;
  std::vector<Member> members;
  return Check(zipFile, archive, members, problem);
}

std::int16_t TestZipBytes(std::string_view bytes, std::string* problem) {
  const std::string name = "the archive";
  // An empty buffer would pass for an empty archive; an empty file is no ZIP file.
  if (bytes.empty()) {
    Tell(problem, name + " is empty.");
    return kZipCannotOpen;
  }
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
  zip_error_fini(&error);
  if (!source) return kZipCannotOpen;
  zip_error_init(&error);
  Archive archive(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error));
  zip_error_fini(&error);
  if (!archive) {
    zip_source_free(source);
    Tell(problem, name + " cannot be opened as a ZIP file; it is damaged.");
    return kZipCannotOpen;
  }
  std::vector<Member> members;
  return CheckMembers(name, archive, members, problem);
}

std::int16_t UnzipArchive(const std::string& zipFile, const std::string& destination, const std::string& items,
                          bool convertLf, std::string* problem, Progress* progress) {
  Archive archive;
  std::vector<Member> members;
  const std::int16_t checked = Check(zipFile, archive, members, problem, {progress, "Testing " + zipFile, 0.0, 0.5});
  if (checked == kZipCancelled) Tell(problem, "Nothing was extracted from \"" + zipFile + "\".");
  if (checked != kZipOk) return checked;
  const std::string pattern = items.empty() ? std::string("*.*") : items;
  const fs::path target(destination);
  // From the first file written on, the extraction runs to its end: a cancel would leave the
  // folder half old, half new.
  const Watch extracting{progress, "Extracting " + zipFile, 0.5, 1.0};
  for (std::size_t at = 0; at < members.size(); ++at) {
    const Member& member = members[at];
    extracting.At(static_cast<double>(at) / static_cast<double>(members.size()));
    const auto parts = Components(member.name);
    fs::path path = target;
    for (const auto& part : parts) path /= part;
    const bool isFolder = IsSeparator(member.name.back());
    std::error_code error;
    if (isFolder) {
      fs::create_directories(path, error);
      if (error) {
        Tell(problem, "The folder \"" + path.string() + "\" cannot be made.");
        return kZipWriteFailed;
      }
      continue;
    }
    if (!WildcardMatch(pattern, parts.back())) continue;
    std::string contents;
    if (!ReadMember(archive.get(), member.index, member.size, &contents)) {
      Tell(problem, "\"" + zipFile + "\" is damaged: \"" + member.name + "\" does not read back whole.");
      return kZipDamaged;
    }
    if (convertLf && contents.find('\0') == std::string::npos) contents = LfToCrLf(contents);
    fs::create_directories(path.parent_path(), error);
    try {
      WriteFileBytes(path.string(), contents);
    } catch (const std::exception&) {
      Tell(problem, "\"" + path.string() + "\" cannot be written.");
      return kZipWriteFailed;
    }
    if (member.hasTime) SetModified(path, member.mtime);
  }
  return kZipOk;
}

std::int16_t ZipArchive(const std::string& zipFile, const std::string& items, const std::string& folder,
                        std::string* problem, Progress* progress) {
  const std::vector<ZipItem> files = ExpandZipItems(items, folder);
  if (files.empty()) {
    Tell(problem, "No file matches \"" + items + "\".");
    return kZipNothingToDo;
  }
  return ZipFiles(zipFile, files, problem, progress);
}

std::int16_t ZipFiles(const std::string& zipFile, const std::vector<ZipItem>& files, std::string* problem,
                      Progress* progress) {
  if (files.empty()) {
    Tell(problem, "No file to add to \"" + zipFile + "\".");
    return kZipNothingToDo;
  }
  // The archive is built in memory from its present bytes and written back whole.
  std::string existing;
  const bool exists = fs::exists(zipFile);
  if (exists && !ReadFileBytes(zipFile, existing)) {
    Tell(problem, "\"" + zipFile + "\" cannot be read.");
    return kZipCannotOpen;
  }
  zip_error_t error;
  zip_error_init(&error);
  // libzip may keep pointing into the buffer until the archive is closed.
  std::unique_ptr<zip_source_t, SourceFree> source(
      zip_source_buffer_create(existing.empty() ? nullptr : existing.data(), existing.size(), 0, &error));
  zip_error_fini(&error);
  if (!source) {
    Tell(problem, "Out of memory.");
    return kZipCannotOpen;
  }
  zip_source_keep(source.get());
  zip_error_init(&error);
  zip_t* archive = zip_open_from_source(source.get(), existing.empty() ? ZIP_TRUNCATE : ZIP_CHECKCONS, &error);
  zip_error_fini(&error);
  if (!archive) {
    zip_source_free(source.get());  // the reference kept for an archive that never took it
    Tell(problem, "\"" + zipFile + "\" is not a ZIP file or is damaged; it was left as it was.");
    return kZipCannotOpen;
  }
  Archive guard(archive);
  const std::string cancelled = "\"" + zipFile + "\" " + (exists ? "was left as it was." : "was not made.");
  // Reading the files is the first fifth of the work, compressing them the rest.
  const Watch reading{progress, "Reading the files for " + zipFile, 0.0, 0.2};
  for (std::size_t at = 0; at < files.size(); ++at) {
    const ZipItem& item = files[at];
    reading.At(static_cast<double>(at) / static_cast<double>(files.size()));
    if (CancelAsked(progress)) {
      Tell(problem, cancelled);
      return kZipCancelled;
    }
    std::string bytes;
    if (!ReadFileBytes(item.path, bytes)) {
      Tell(problem, "\"" + item.path + "\" cannot be read.");
      return kZipCannotOpen;
    }
    void* copy = std::malloc(bytes.empty() ? 1 : bytes.size());
    if (!copy) {
      Tell(problem, "Out of memory.");
      return kZipCannotOpen;
    }
    if (!bytes.empty()) std::memcpy(copy, bytes.data(), bytes.size());
    zip_source_t* data = zip_source_buffer(archive, copy, bytes.size(), 1);
    if (!data) {
      std::free(copy);
      Tell(problem, "Out of memory.");
      return kZipCannotOpen;
    }
    const std::string name = ZipMemberName(item.given);
    const zip_int64_t index = zip_file_add(archive, name.c_str(), data, ZIP_FL_OVERWRITE | ZIP_FL_ENC_GUESS);
    if (index < 0) {
      zip_source_free(data);
      Tell(problem, "\"" + name + "\" cannot be stored: " + zip_strerror(archive));
      return kZipCannotOpen;
    }
    zip_file_set_mtime(archive, static_cast<zip_uint64_t>(index), Modified(item.path), 0);
  }
  Watch compressing{progress, "Compressing into " + zipFile, 0.2, 1.0};
  if (progress) {
    zip_register_progress_callback_with_state(archive, 0.01, CompressProgress, nullptr,
                                              &compressing);
    zip_register_cancel_callback_with_state(archive, CompressCancel, nullptr, &compressing);
  }
  if (zip_close(archive) != 0) {
    if (zip_error_code_zip(zip_get_error(archive)) == ZIP_ER_CANCELLED) {
      Tell(problem, cancelled);
      return kZipCancelled;
    }
    Tell(problem, std::string("\"") + zipFile + "\" cannot be written: " + zip_strerror(archive));
    return kZipWriteFailed;
  }
  guard.release();
  // The new bytes of the archive, now in the source.
  std::string written;
  zip_stat_t stat;
  zip_stat_init(&stat);
  if (zip_source_is_deleted(source.get()) == 0 && zip_source_stat(source.get(), &stat) == 0 &&
      zip_source_open(source.get()) == 0) {
    written.resize(static_cast<std::size_t>(stat.size));
    const zip_int64_t got = zip_source_read(source.get(), written.data(), stat.size);
    zip_source_close(source.get());
    if (got < 0 || static_cast<zip_uint64_t>(got) != stat.size) written.clear();
  }
  if (written.empty()) {
    Tell(problem, "\"" + zipFile + "\" cannot be written.");
    return kZipWriteFailed;
  }
  // The last point to stop: the file itself is replaced in one rename.
  if (CancelAsked(progress)) {
    Tell(problem, cancelled);
    return kZipCancelled;
  }
  try {
    WriteFileBytes(zipFile, written);
  } catch (const std::exception&) {
    Tell(problem, "\"" + zipFile + "\" cannot be written.");
    return kZipWriteFailed;
  }
  return kZipOk;
}

}  // namespace tessel
