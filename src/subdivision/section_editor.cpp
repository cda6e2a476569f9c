#include "subdivision/section_editor.h"

#include <cmath>

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"
#include "subdivision/nominal.h"

namespace tessel {

namespace {

std::size_t U(int i) { return static_cast<std::size_t>(i); }

SectionDefinitions& Defs(Session& session, const SectionForm& form) {
  return session.sectionDefinitions.sections[U(form.section)];
}

bool ValidPosition(const SectionForm& form, int position) {
  return form.section >= 1 && form.section <= 36 && position >= 1 && position <= 25;
}

// The identifier standing at a position: its substitute, or else its nominal identifier.
std::int32_t StandingId(const SectionDefinitions& d, int section, int position) {
  const std::int32_t substitute = d.Substitute[U(position)];
  return substitute != 0 ? substitute : NominalId(section, position);
}

// A typed identifier as a number; text that is no number, or one beyond 32 bits, gives 0.
std::int32_t TypedId(const std::string& text) {
  std::int32_t id = 0;
  StepOver([&] {
    const double value = std::nearbyint(Val(text));
    if (value >= INT32_MIN && value <= INT32_MAX) id = static_cast<std::int32_t>(value);
  });
  return id;
}

constexpr const char* kDirections[5] = {"", "N", "E", "S", "W"};

std::int16_t DirectionCode(const std::string& letter) {
  const std::string l = Upper(Trim(letter));
  for (std::int16_t k = 1; k <= 4; ++k) {
    if (l == kDirections[k]) return k;
  }
  return 0;
}

void RemoveDoubleCorners(SectionDefinitionStore& store, std::int32_t nominal) {
  std::int16_t kept = 0;
  for (int i = 1; i <= store.DoubleCornerCount; ++i) {
    if (store.DoubleCorners[U(i)].nominal == nominal) continue;
    store.DoubleCorners[U(++kept)] = store.DoubleCorners[U(i)];
  }
  for (int i = kept + 1; i <= store.DoubleCornerCount; ++i) store.DoubleCorners[U(i)] = {};
  store.DoubleCornerCount = kept;
}

// The bearings of a line definition in the picture "####.00000".
void FormatBearings(LinePair& pair, std::size_t offset) {
  const int type = static_cast<int>(std::nearbyint(Val(pair[offset])));
  std::vector<std::size_t> bearings;
  if (type == 3) bearings = {2, 4};
  if (type == 5) bearings = {2};
  if (type == 6) bearings = {4};
  for (std::size_t k : bearings) {
    std::string& field = pair[offset + k];
    if (!Trim(field).empty()) StepOver([&] { field = FormatPicture(Val(field), 5, 0); });
  }
}

bool InRange(int position, int from, int to) { return position >= from && position <= to; }

}  // namespace

SectionForm OpenSection(Session& session, int section) {
  SectionForm form;
  form.section = section;
  form.caption = "Section " + std::to_string(section);
  form.shades.fill(Shade::System);
  for (int p = 1; p <= 25; ++p) form.labels[U(p)] = IdText(NominalId(section, p));
  MarkLabels(session, form);

  std::string text;
  if (session.DatasetExists(".irr")) ReadFileBytes(session.DatasetPath(".irr"), text);
  const IrrBlockRead read = ReadIrrBlock(text, section, session.sectionDefinitions);
  if (section >= 1 && section <= 36) {
    const SectionDefinitions& d = session.sectionDefinitions.sections[U(section)];
    for (int p = 1; p <= 25; ++p) {
      form.shades[U(p)] = read.shades[U(p)];
      if (d.Substitute[U(p)] != 0) form.labels[U(p)] = IdText(d.Substitute[U(p)]);
    }
  }
  MarkLabels(session, form);
  return form;
}

void MarkLabels(const Session& session, SectionForm& form) {
  for (int p = 1; p <= 25; ++p) {
    const std::string id = Trim(form.labels[U(p)]);
    form.emphasised[U(p)] = !id.empty() && session.points.Find(id) != 0;
  }
}

GridPlace PositionPlace(int position) {
  if (position < 1 || position > 25) return {};
  // Section 1's identifiers give the place: ordinates 00, 20, 40, 60 and the next 00.
  const std::int32_t id = NominalId(1, position);
  auto index = [](std::int32_t ordinate) {
    const std::int32_t step = ordinate - 600;
    return step >= 100 ? 4 : static_cast<int>(step / 20);
  };
  return {4 - index(id % 1000), index(id / 1000)};
}

const std::vector<PopupEntry>& SectionPopupEntries() {
  static const std::vector<PopupEntry> entries = {
      {"mnuIRRSubstitution", "Point ID Substitution"},
      {"mnuIRRCenter", "Define Center of Section"},
      {"mnuIRRDoubleCorner", "Define Double Section Corner"},
      {"mnuIRRQuarterNC", "Non-computable Quarter Corner"},
      {"mnuIRRProportion", "Interior 1/16th proportion "},
      {"mnuIRRQuarterCenter", "Define Center of Quarter Section"},
      {"mnuIRRExteriorNC", "Non-computable Exterior 1/16th"},
      {"mnuIRROffset", "Offset to line"},
  };
  return entries;
}

bool PopupEnabled(const std::string& entry, int position) {
  if (position < 1 || position > 25) return false;
  if (entry == "mnuIRRSubstitution") return true;
  if (entry == "mnuIRRCenter") return position == 1;
  if (entry == "mnuIRRDoubleCorner") return InRange(position, 2, 5);
  if (entry == "mnuIRRQuarterNC") return InRange(position, 6, 9);
  if (entry == "mnuIRRProportion") return InRange(position, 10, 13);
  if (entry == "mnuIRRQuarterCenter") return InRange(position, 14, 17);
  if (entry == "mnuIRRExteriorNC") return InRange(position, 18, 25);
  if (entry == "mnuIRROffset") return InRange(position, 6, 9) || InRange(position, 18, 25);
  return false;
}

std::string SubstitutionLabel(const SectionForm& form, int position) {
  return "Substitution for nominal " + IdText(NominalId(form.section, position));
}

void ApplySubstitution(Session& session, SectionForm& form, int position, const std::string& value) {
  if (!ValidPosition(form, position)) return;
  const std::int32_t id = TypedId(value);
  if (id != 0) {
    SectionDefinitions& d = Defs(session, form);
    d.Substitute[0] = 1;
    d.Substitute[U(position)] = id;
    form.labels[U(position)] = IdText(id);
    if (id != NominalId(form.section, position)) form.shades[U(position)] = Shade::Yellow;
  }
  MarkLabels(session, form);
}

std::string DoubleCornerHeading(const SectionForm& form, int position) {
  return PositionName(position) + " Corner of Section " + std::to_string(form.section);
}

std::array<DoubleCornerRow, 2> DoubleCornerPrefill(const Session& session, const SectionForm& form, int position) {
  std::array<DoubleCornerRow, 2> rows{};
  if (!ValidPosition(form, position) || !InRange(position, 2, 5)) return rows;
  // The records of the position before this one: the lookup is one row lower than the save.
  const std::int32_t nominal = NominalId(form.section, position - 1);
  const SectionDefinitionStore& store = session.sectionDefinitions;
  std::size_t filled = 0;
  for (int i = 1; i <= store.DoubleCornerCount && filled < rows.size(); ++i) {
    const DoubleCornerRecord& r = store.DoubleCorners[U(i)];
    if (r.nominal != nominal) continue;
    rows[filled].point = IdText(r.point);
    rows[filled].direction = r.direction >= 1 && r.direction <= 4 ? kDirections[r.direction] : "";
    ++filled;
  }
  return rows;
}

bool ApplyDoubleCorner(Session& session, SectionForm& form, int position, const std::array<DoubleCornerRow, 2>& rows) {
  if (!ValidPosition(form, position) || !InRange(position, 2, 5)) return false;
  for (const DoubleCornerRow& row : rows) {
    if (Trim(row.point).empty() || Trim(row.direction).empty()) return false;
  }
  SectionDefinitionStore& store = session.sectionDefinitions;
  const std::int32_t nominal = NominalId(form.section, position);
  const auto corner = static_cast<std::int16_t>(position - 1);
  Defs(session, form).DoubleFlag[U(corner)] = true;
  RemoveDoubleCorners(store, nominal);
  const bool added = StepOver([&] {
    for (const DoubleCornerRow& row : rows) {
      store.AddDoubleCorner({nominal, TypedId(row.point), corner, DirectionCode(row.direction)});
    }
  });
  form.shades[U(position)] = Shade::Green;
  return added;
}

void DeleteDoubleCorner(Session& session, SectionForm& form, int position) {
  if (!ValidPosition(form, position) || !InRange(position, 2, 5)) return;
  RemoveDoubleCorners(session.sectionDefinitions, NominalId(form.section, position));
  Defs(session, form).DoubleFlag[U(position - 1)] = false;
  form.shades[U(position)] = Shade::System;
}

void ToggleNonComputable(Session& session, SectionForm& form, int position) {
  if (!ValidPosition(form, position)) return;
  SectionDefinitions& d = Defs(session, form);
  bool* flag = nullptr;
  if (InRange(position, 6, 9)) flag = &d.QuarterFlag[U(position - 5)];
  if (InRange(position, 18, 25)) flag = &d.ExteriorFlag[U(position - 17)];
  if (!flag) return;
  *flag = !*flag;
  d.NonComputable[U(position)] = *flag ? StandingId(d, form.section, position) : 0;
  form.shades[U(position)] = *flag ? Shade::Red : Shade::System;
}

void ToggleOffset(Session& session, SectionForm& form, int position) {
  if (!ValidPosition(form, position) || !PopupEnabled("mnuIRROffset", position)) return;
  SectionDefinitions& d = Defs(session, form);
  bool& flag = d.OffsetFlag[U(position)];
  flag = !flag;
  d.Offset[U(position)] = flag ? StandingId(d, form.section, position) : 0;
  form.shades[U(position)] = flag ? Shade::Cyan : Shade::System;
}

std::string ProportionHeading(const SectionForm& form, int position) {
  return "Proportion definition for " + PositionName(position) + " Section " + std::to_string(form.section);
}

ProportionDefinition ProportionPrefill(const Session& session, const SectionForm& form, int position) {
  if (!ValidPosition(form, position) || !InRange(position, 10, 13)) return {};
  return session.sectionDefinitions.sections[U(form.section)].Proportions[U(position - 9)];
}

void ApplyProportion(Session& session, SectionForm& form, int position, const std::string& parenthetical,
                     const std::string& total, bool deleteDefinition) {
  if (!ValidPosition(form, position) || !InRange(position, 10, 13)) return;
  SectionDefinitions& d = Defs(session, form);
  const int k = position - 9;
  if (deleteDefinition) {
    d.ProportionFlag[U(k)] = false;
    d.Proportions[U(k)] = ProportionDefinition{};
    form.shades[U(position)] = Shade::System;
    return;
  }
  auto format = [](const std::string& field) {
    const std::string text = Trim(field).empty() ? "0" : field;
    std::string out = "0.000";
    StepOver([&] { out = FormatPicture(Val(text), 3, 1); });
    return out;
  };
  d.Proportions[U(k)] = {IdText(StandingId(d, form.section, position)), format(parenthetical), format(total)};
  d.ProportionFlag[U(k)] = true;
  form.shades[U(position)] = Shade::Green;
}

std::string IntersectHeading(const SectionForm& form, int position) {
  const std::string section = std::to_string(form.section);
  const std::string label = position >= 1 && position <= 25 ? form.labels[U(position)] : std::string();
  if (position == 1) return "For Center of Section " + section + ", Point " + label;
  return "For " + PositionName(position) + " Section " + section + ", Point " + label;
}

LinePair IntersectPrefill(const Session& session, const SectionForm& form, int position) {
  if (!ValidPosition(form, position)) return {};
  const SectionDefinitions& d = session.sectionDefinitions.sections[U(form.section)];
  if (position == 1) return d.Centre;
  if (InRange(position, 14, 17)) return d.QuarterCentre[U(position - 13)];
  return {};
}

void ApplyIntersect(Session& session, SectionForm& form, int position, const LinePair& pair) {
  if (!ValidPosition(form, position) || (position != 1 && !InRange(position, 14, 17))) return;
  SectionDefinitions& d = Defs(session, form);
  LinePair stored = pair;
  FormatBearings(stored, 0);
  FormatBearings(stored, 5);
  if (position == 1) {
    d.Centre = stored;
    d.CentreFlag = true;
  } else {
    d.QuarterCentre[U(position - 13)] = stored;
    d.QuarterCentreFlag[U(position - 13)] = true;
  }
  const bool bothMissing = Trim(stored[0]) == "7" && Trim(stored[5]) == "7";
  form.shades[U(position)] = bothMissing ? Shade::Red : Shade::Green;
}

std::optional<IntersectProblem> CheckIntersect(const LinePair& pair) {
  static const char* const kLines[2] = {"North-South line", "East-West line"};
  for (int line = 0; line < 2; ++line) {
    const std::size_t base = static_cast<std::size_t>(line) * 5;
    const std::string name = kLines[line];
    const std::string type = Trim(pair[base]);
    if (type.size() != 1 || type[0] < '1' || type[0] > '7') {
      return IntersectProblem{"No line type is chosen for the " + name + ": choose one under \"" + name + " is:\".",
                              line, 0};
    }
    const auto labels = LineFieldLabels(type[0] - '0');
    const auto groups = LineGroupLabels(type[0] - '0');
    for (std::size_t k = 0; k < 4; ++k) {
      if (labels[k].empty() || !Trim(pair[base + k + 1]).empty()) continue;
      const std::string& group = groups[k / 2];
      return IntersectProblem{"The field \"" + labels[k] + "\"" + (group.empty() ? "" : " under \"" + group + "\"") +
                                  " of the " + name + " is empty.",
                              line, static_cast<int>(k) + 1};
    }
  }
  return std::nullopt;
}

std::array<std::string, 4> LineFieldLabels(int type) {
  switch (type) {
    case 2:
      return {"From", "To", "From", "To"};
    case 3:
      return {"Quadrant", "Bearing (DD.MMSS)", "Quadrant", "Bearing (DD.MMSS)"};
    case 4:
      return {"From", "To", "", ""};
    case 5:
      return {"Quadrant", "Bearing (DD.MMSS)", "", ""};
    case 6:
      return {"Point From", "Distance (chains)", "Quadrant", "Bearing (DD.MMSS)"};
    default:
      return {"", "", "", ""};
  }
}

std::array<std::string, 2> LineGroupLabels(int type) {
  switch (type) {
    case 2:
    case 3:
      return {"First Line", "Second Line"};
    case 4:
      return {"Parallel to:", ""};
    default:
      return {"", ""};
  }
}

void ResetSection(Session& session, SectionForm& form) {
  if (form.section < 1 || form.section > 36) return;
  SectionDefinitions& d = Defs(session, form);
  d.Substitute.fill(0);
  d.Marker = false;
  d.CentreFlag = false;
  d.DoubleFlag.fill(false);
  d.ProportionFlag.fill(false);
  d.QuarterFlag.fill(false);
  d.ExteriorFlag.fill(false);
  d.QuarterCentreFlag.fill(false);
  d.Centre.fill(std::string());
  for (LinePair& pair : d.QuarterCentre) pair.fill(std::string());
  d.Proportions.fill(ProportionDefinition{});
  for (int p : {6, 7, 8, 9, 18, 19, 20, 21, 22, 23, 24, 25}) d.NonComputable[U(p)] = 0;
  // The double corner records stay and are written at the next save; the offsets cleared are
  // those of section 36, whichever section is open.
  SectionDefinitions& last = session.sectionDefinitions.sections[36];
  last.OffsetFlag.fill(false);
  for (int p = 1; p <= 25; ++p) {
    form.shades[U(p)] = Shade::System;
    form.labels[U(p)] = IdText(NominalId(form.section, p));
  }
  MarkLabels(session, form);
}

}  // namespace tessel
