#include "subdivision/irr_save.h"

#include <exception>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "subdivision/irr_file.h"
#include "subdivision/nominal.h"

namespace tessel {

namespace {

// A line of the file with its own line end ("\r\n", "\n" or none), so that copied lines keep
// their bytes.
struct RawLine {
  std::string_view text;
  std::string_view end;
};

std::vector<RawLine> RawLines(std::string_view text) {
  std::vector<RawLine> lines;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t newline = text.find('\n', at);
    if (newline == std::string_view::npos) {
      lines.push_back({text.substr(at), {}});
      break;
    }
    std::size_t stop = newline;
    if (stop > at && text[stop - 1] == '\r') --stop;
    lines.push_back({text.substr(at, stop - at), text.substr(stop, newline + 1 - stop)});
    at = newline + 1;
  }
  return lines;
}

void Copy(std::string& out, const RawLine& line) {
  out.append(line.text);
  out.append(line.end);
}

void Append(std::string& out, const std::vector<std::string>& lines) {
  if (!out.empty() && out.back() != '\n') out.append("\r\n");
  out.append(JoinCrLf(lines));
}

bool IsLastLine(std::string_view line) { return TrimView(line) == kIrrLastLine; }

int HeaderSection(std::string_view line) {
  int section = 0;
  StepOver([&] {
    const double value = Val(MidView(line, 1, 6));
    if (value >= 0 && value <= 999999) section = SectionOfCentre(static_cast<std::int32_t>(value));
  });
  return section;
}

constexpr const char* kDefaultLines[9] = {"0      0", "0      0      0", "0", "0", "0", "0      .000      .000",
                                          "0", "0", "999999"};

}  // namespace

std::string ReplaceIrrBlock(std::string_view text, int section, const std::vector<std::string>& block) {
  const std::vector<RawLine> lines = RawLines(text);
  std::string out;
  out.reserve(text.size() + 256);
  bool replaced = false;
  bool atHeader = true;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const RawLine& line = lines[i];
    if (!atHeader) {
      Copy(out, line);
      if (IsLastLine(line.text)) atHeader = true;
      continue;
    }
    if (TrimView(line.text).empty()) {
      Copy(out, line);
      continue;
    }
    if (HeaderSection(line.text) == section) {
      Append(out, block);
      replaced = true;
      // The old block goes through its last line.
      while (i < lines.size() && !IsLastLine(lines[i].text)) ++i;
      continue;
    }
    Copy(out, line);
    atHeader = false;
  }
  if (!replaced) Append(out, block);
  return out;
}

bool IsDefaultIrrBlock(const std::vector<std::string>& block) {
  if (block.size() != 10) return false;
  for (std::size_t k = 0; k < 9; ++k) {
    if (TrimView(block[k + 1]) != kDefaultLines[k]) return false;
  }
  return true;
}

std::string WithoutDefaultIrrBlocks(std::string_view text) {
  const std::vector<RawLine> lines = RawLines(text);
  std::string out;
  out.reserve(text.size());
  std::size_t i = 0;
  while (i < lines.size()) {
    if (TrimView(lines[i].text).empty()) {
      Copy(out, lines[i++]);
      continue;
    }
    std::size_t end = i;
    while (end < lines.size() && !IsLastLine(lines[end].text)) ++end;
    if (end < lines.size()) ++end;
    std::vector<std::string> block;
    for (std::size_t k = i; k < end; ++k) block.emplace_back(lines[k].text);
    if (!IsDefaultIrrBlock(block)) {
      for (std::size_t k = i; k < end; ++k) Copy(out, lines[k]);
    }
    i = end;
  }
  return out;
}

std::string SaveFailedText(int section, const std::string& reason) {
  return "Section " + std::to_string(section) + " was not saved: " + reason +
         ". The irregular section file is as it was before the save.";
}

IrrSaveResult SaveSection(Session& session, int section) {
  IrrSaveResult result;
  if (section < 1 || section > 36) return result;
  SectionDefinitionStore& store = session.sectionDefinitions;
  SectionDefinitions& d = store.sections[static_cast<std::size_t>(section)];
  for (int p = 1; p <= 25; ++p) {
    if (d.Substitute[static_cast<std::size_t>(p)] == NominalId(section, p)) d.Substitute[static_cast<std::size_t>(p)] = 0;
  }
  d.Marker = true;
  const std::vector<std::string> block = WriteIrrBlock(store, section);

  const std::string irr = session.DatasetPath(".irr");
  const std::string backup = session.DatasetPath(".irB");
  const std::string building = session.DatasetPath(".ir2");
  const bool existed = session.DatasetExists(".irr");
  bool backedUp = false;
  try {
    std::string former;
    if (existed) {
      if (!ReadFileBytes(irr, former)) throw RuntimeFault(FaultKind::FileAccess, "Path/File access error: " + irr);
      WriteFileBytes(backup, former);
      backedUp = true;
    }
    const std::string replaced = ReplaceIrrBlock(former, section, block);
    WriteFileBytes(building, replaced);
    WriteFileBytes(irr, replaced);
    DeleteAnyCase(building);
    // The default blocks go, from a fresh copy of what was just written.
    WriteFileBytes(backup, replaced);
    backedUp = true;
    const std::string cleaned = WithoutDefaultIrrBlocks(replaced);
    WriteFileBytes(irr, cleaned);
    DeleteAnyCase(backup);
    result.saved = true;
    result.sectionsWithBlocks = IrrBlockSections(cleaned);
  } catch (const std::exception& fault) {
    if (backedUp) {
      StepOver([&] {
        std::string kept;
        if (ReadFileBytes(backup, kept)) {
          WriteFileBytes(irr, kept);
          DeleteAnyCase(backup);
        }
      });
    }
    StepOver([&] { DeleteAnyCase(building); });
    session.user.Message(SaveFailedText(section, fault.what()), Icon::Exclamation);
    std::string now;
    if (ReadFileBytes(session.DatasetPath(".irr"), now)) result.sectionsWithBlocks = IrrBlockSections(now);
  }
  return result;
}

}  // namespace tessel
