#include "subdivision/township.h"

#include "datasets/identity.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "subdivision/nominal.h"

namespace tessel {

namespace {

std::string ReadDataset(const Session& session, std::string_view extension, bool& exists) {
  std::string text;
  exists = session.DatasetExists(extension) && ReadFileBytes(session.DatasetPath(extension), text);
  return text;
}

int SectionNumber(std::string_view text) {
  int section = 0;
  StepOver([&] {
    const double value = Val(text);
    if (value >= 1 && value <= 36 && value == static_cast<int>(value)) section = static_cast<int>(value);
  });
  return section;
}

}  // namespace

std::vector<int> DefinedSections(std::string_view irrText) {
  std::vector<int> sections;
  for (const std::string& line : SplitLines(irrText)) {
    const std::string_view trimmed = TrimView(line);
    if (trimmed.size() != 6) continue;
    StepOver([&] {
      const double value = Val(trimmed);
      if (value < 0 || value > 999999) return;
      if (const int s = SectionOfCentre(static_cast<std::int32_t>(value)); s != 0 && value == NominalId(s, 1)) {
        sections.push_back(s);
      }
    });
  }
  return sections;
}

std::vector<int> ReportedSections(std::string_view subText) {
  std::vector<int> sections;
  for (const std::string& line : SplitLines(subText)) {
    if (MidView(line, 36, 8) != "SECTION ") continue;
    if (const int s = SectionNumber(MidView(line, 44, 1 << 20)); s != 0) sections.push_back(s);
  }
  return sections;
}

std::string SectionStatusText(std::string_view subText, int section) {
  const std::int32_t centre = NominalId(section, 1);
  const std::vector<std::string> lines = SplitLines(subText);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    bool match = false;
    StepOver([&] { match = centre != 0 && Val(MidView(lines[i], 63, 1 << 20)) == centre; });
    if (!match) continue;
    std::string text = lines[i];
    for (std::size_t k = i + 1; k < lines.size() && !StartsWith(lines[k], " ***"); ++k) {
      text += "\r\n" + lines[k];
    }
    return text;
  }
  return kNoIrregularSubdivision;
}

int SectionAt(int row, int column) {
  if (row < 0 || row > 5 || column < 0 || column > 5) return 0;
  // Odd tiers (from the north) run east to west, even tiers west to east.
  return row * 6 + (row % 2 == 0 ? 6 - column : column + 1);
}

bool OpenTownshipDiagram(Session& session) {
  if (!JobGuard(session, kMsgOpenOrCreateProject)) return false;
  if (session.DatasetExists(".irr") && !session.DatasetExists(".irZ")) {
    StepOver([&] { CopyFileReplacing(session.DatasetPath(".irr"), session.DatasetPath(".irZ")); });
  }
  return true;
}

void SetStatusMode(Session& session, TownshipDiagram& diagram, bool on) {
  diagram.statusMode = on;
  if (!on) {
    diagram.shades.fill(Shade::System);
    return;
  }
  bool exists = false;
  const std::string sub = ReadDataset(session, ".sub", exists);
  if (!exists) return;
  for (int s : ReportedSections(sub)) diagram.shades[static_cast<std::size_t>(s)] = Shade::Yellow;
}

void SetDefineMode(Session& session, TownshipDiagram& diagram, bool on) {
  diagram.defineMode = on;
  if (!on) {
    diagram.shades.fill(Shade::System);
    return;
  }
  bool exists = false;
  const std::string irr = ReadDataset(session, ".irr", exists);
  if (!exists) return;
  for (int s : DefinedSections(irr)) diagram.shades[static_cast<std::size_t>(s)] = Shade::Green;
}

SectionClick ClickSection(Session& session, TownshipDiagram& diagram, int section, SectionForm& editor) {
  SectionClick click;
  if (section < 1 || section > 36) return click;
  diagram.statusText = kNoIrregularSubdivision;
  diagram.current = section;
  diagram.statusCaption = "Section " + std::to_string(section);
  if (diagram.statusMode) {
    bool exists = false;
    const std::string sub = ReadDataset(session, ".sub", exists);
    if (exists) {
      diagram.statusText = SectionStatusText(sub, section);
      click.showStatus = true;
    }
  }
  if (diagram.defineMode) {
    diagram.shades[static_cast<std::size_t>(section)] = Shade::Green;
    editor = OpenSection(session, section);
    click.openEditor = true;
  }
  return click;
}

void RefreshAfterSave(Session& session, TownshipDiagram& diagram, const std::vector<int>& sectionsWithBlocks) {
  for (int s : sectionsWithBlocks) diagram.shades[static_cast<std::size_t>(s)] = Shade::System;
  if (diagram.defineMode) SetDefineMode(session, diagram, true);
}

}  // namespace tessel
