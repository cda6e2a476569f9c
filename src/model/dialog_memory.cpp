#include "model/dialog_memory.h"

#include <charconv>
#include <vector>

#include "model/fault.h"
#include "model/field_reader.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

std::string Number(float value) {
  char buf[64];
  const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
  return std::string(buf, result.ptr);
}

std::string PlaceLine(const std::string& key, const WindowPlace& p) {
  return key + "," + Number(p.top) + "," + Number(p.left) + "," + Number(p.height) + "," + Number(p.width);
}

}  // namespace

std::optional<WindowPlace> ReadWindowPlace(const Session& session, const std::string& key) {
  const std::string path = session.ToolFile("ts$002.cfg");
  if (!FileExistsAnyCase(path)) return std::nullopt;
  std::optional<WindowPlace> place;
  try {
    LineReader in(path);
    std::string line;
    while (!in.Eof()) {
      in.ReadLine(line);
      if (Left(line, static_cast<int>(key.size())) != key) continue;
      FieldReader fields(line);
      fields.ReadString();  // the key
      WindowPlace p;
      p.top = ToSingle(fields.ReadNumber());
      p.left = ToSingle(fields.ReadNumber());
      p.height = ToSingle(fields.ReadNumber());
      p.width = ToSingle(fields.ReadNumber());
      place = p;
    }
  } catch (const RuntimeFault&) {
    // A damaged line leaves the window where it was.
  }
  return place;
}

void WriteWindowPlace(const Session& session, const std::string& key, const WindowPlace& place) {
  const std::string path = session.ToolFile("ts$002.cfg");
  const std::string line = PlaceLine(key, place);
  try {
    if (!FileExistsAnyCase(path)) {
      WriteFileBytes(path, line + "\r\n");
      return;
    }
    const std::string scratch = session.ToolFile("tstemp.cfg");
    CopyFileReplacing(path, scratch);
    DeleteAnyCase(path);
    std::vector<std::string> out;
    bool found = false;
    LineReader in(scratch);
    std::string old;
    while (!in.Eof()) {
      in.ReadLine(old);
      if (Left(old, static_cast<int>(key.size())) != key) {
        out.push_back(old);
      } else {
        out.push_back(line);
        found = true;
      }
    }
    if (!found) out.push_back(line);
    WriteFileBytes(path, JoinCrLf(out));
  } catch (const RuntimeFault& fault) {
    // The place is not remembered, and the user is told; a file already moved aside stands in
    // tstemp.cfg.
    TellFileFault(session.user, fault);
  }
}

std::optional<int> FindEntry(const std::vector<std::string>& entries, const std::string& text, int start) {
  for (int i = std::max(start, 0); i < static_cast<int>(entries.size()); ++i) {
    if (Mid(entries[static_cast<std::size_t>(i)], 4, static_cast<int>(text.size())) == text) return i;
  }
  return std::nullopt;
}

std::string NotFoundText(const std::string& text) { return "Point identifier " + text + " not found."; }

}  // namespace tessel
