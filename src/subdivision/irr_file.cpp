#include "subdivision/irr_file.h"

#include <algorithm>
#include <cmath>
#include <exception>

#include "model/fault.h"
#include "model/text.h"
#include "subdivision/nominal.h"

namespace tessel {

namespace {

// The lines of a block, read one after the other; a read past the last is the end of reading.
class Cursor {
 public:
  Cursor(const std::vector<std::string>& lines, std::size_t at) : lines_(lines), at_(at) {}
  const std::string& Next() {
    if (at_ >= lines_.size()) throw RuntimeFault(FaultKind::ReadPastEnd, "Input past end of file");
    return lines_[at_++];
  }

 private:
  const std::vector<std::string>& lines_;
  std::size_t at_;
};

// A field read as a number and taken as an identifier or a code; a value beyond 32 bits is an
// overflow and ends the reading.
std::int32_t Number(std::string_view field) {
  const double value = std::nearbyint(Val(field));
  if (!(value >= INT32_MIN && value <= INT32_MAX)) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<std::int32_t>(value);
}

std::int32_t IdField(const std::string& line) { return Number(MidView(line, 1, 6)); }

std::string Field(const std::string& line, int start, int length) { return Trim(MidView(line, start, length)); }

// The position of `id` among `from`..`to`, by its nominal identifier or its substitute; 0 when
// none.
int FindPosition(const SectionDefinitions& d, int section, std::int32_t id, int from, int to, bool bySubstitute) {
  for (int p = from; p <= to; ++p) {
    if (NominalId(section, p) == id) return p;
    if (bySubstitute && d.Substitute[static_cast<std::size_t>(p)] != 0 && d.Substitute[static_cast<std::size_t>(p)] == id) {
      return p;
    }
  }
  return 0;
}

std::size_t U(int i) { return static_cast<std::size_t>(i); }

// The parameters of a line definition of `type` into pair[offset + 1..4]. Types 1, 7 and any
// other have no second line.
void ReadParameters(Cursor& in, std::int32_t type, LinePair& pair, std::size_t offset, bool quarter) {
  if (type < 2 || type > 6) return;
  const std::string& line = in.Next();
  auto set = [&](std::size_t k, int start, int length) { pair[offset + k] = Field(line, start, length); };
  switch (type) {
    case 2:
      set(1, 1, 6), set(2, 8, 6), set(3, 15, 6), set(4, 22, 6);
      break;
    case 3:
      set(1, 1, 1), set(2, 3, 9), set(3, 13, 1), set(4, 15, 9);
      break;
    case 4:
      set(1, 1, 6), set(2, 8, 6);
      break;
    case 5:
      if (quarter) set(1, 6, 1), set(2, 8, 9);
      else set(1, 1, 1), set(2, 3, 9);
      break;
    default:  // 6
      set(1, 1, 6), set(2, 8, 9), set(3, 18, 1), set(4, 20, 9);
      break;
  }
}

// A whole line definition: its type line, then its parameters.
std::int32_t ReadDefinition(Cursor& in, LinePair& pair, std::size_t offset, bool quarter) {
  const std::int32_t type = IdField(in.Next());
  pair[offset] = type == 0 ? std::string() : std::to_string(type);
  ReadParameters(in, type, pair, offset, quarter);
  return type;
}

Shade PairShade(std::int32_t northSouth, std::int32_t eastWest) {
  return northSouth == 7 && eastWest == 7 ? Shade::Red : Shade::Green;
}

bool IsLastLine(std::string_view line) { return TrimView(line) == kIrrLastLine; }

// Index of the first line of each block's header, with the section it names (0 for none).
std::vector<std::pair<std::size_t, int>> Headers(const std::vector<std::string>& lines) {
  std::vector<std::pair<std::size_t, int>> headers;
  bool atHeader = true;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (atHeader) {
      if (TrimView(lines[i]).empty()) continue;
      int section = 0;
      StepOver([&] { section = SectionOfCentre(IdField(lines[i])); });
      headers.emplace_back(i, section);
      atHeader = false;
    } else if (IsLastLine(lines[i])) {
      atHeader = true;
    }
  }
  return headers;
}

void WriteDefinition(std::vector<std::string>& out, const LinePair& pair, std::size_t offset, bool quarter) {
  const std::string type = Trim(pair[offset]);
  out.push_back(std::string(5, ' ') + (type.empty() ? "0" : type));
  const int kind = static_cast<int>(std::nearbyint(Val(type)));
  if (kind < 2 || kind > 6) return;
  auto p = [&](std::size_t k) { return Trim(pair[offset + k]); };
  std::string line;
  auto right = [&](const std::string& text, int firstColumn) {
    PutAt(line, RightJustifiedColumn(text.size(), firstColumn), text);
  };
  switch (kind) {
    case 2:
      PutAt(line, 1, p(1)), PutAt(line, 8, p(2)), PutAt(line, 15, p(3)), PutAt(line, 22, p(4));
      break;
    case 3:
      PutAt(line, 1, p(1)), right(p(2), 6), PutAt(line, 13, p(3)), right(p(4), 18);
      break;
    case 4:
      PutAt(line, 1, p(1)), PutAt(line, 8, p(2));
      break;
    case 5:
      if (quarter) PutAt(line, 6, p(1)), right(p(2), 11);
      else PutAt(line, 1, p(1)), right(p(2), 6);
      break;
    default:  // 6
      PutAt(line, 1, p(1)), right(p(2), 11), PutAt(line, 18, p(3)), right(p(4), 23);
      break;
  }
  out.push_back(line);
}

bool TypeSet(const std::string& type) { return std::nearbyint(Val(type)) != 0.0; }

}  // namespace

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t newline = text.find('\n', at);
    const std::size_t stop = newline == std::string_view::npos ? text.size() : newline;
    std::string line(text.substr(at, stop - at));
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
    at = newline == std::string_view::npos ? text.size() : newline + 1;
  }
  return lines;
}

int RightJustifiedColumn(std::size_t length, int firstColumn) {
  const int n = static_cast<int>(std::min<std::size_t>(length, 9));
  return n <= 6 ? firstColumn : firstColumn - (n - 6);
}

void PutAt(std::string& line, int column, std::string_view text) {
  const auto before = static_cast<std::size_t>(std::max(column - 1, 0));
  if (line.size() < before) line.append(before - line.size(), ' ');
  else if (line.size() > before) line.push_back(' ');
  line.append(text);
}

const std::array<const char*, 8>& LineTypeEntries() {
  static const std::array<const char*, 8> entries = {"",
                                                     "Straight line between Quarter Corners",
                                                     "Weighted mean of 2 bearings by Corner ID",
                                                     "Average of 2 input bearings",
                                                     "Paralled to bearing by Point Id's",
                                                     "Parallel to input bearing",
                                                     "From PointID, Bearing, Distance",
                                                     "Non-existant line"};
  return entries;
}

std::vector<int> IrrBlockSections(std::string_view text) {
  std::vector<int> sections;
  for (const auto& [at, section] : Headers(SplitLines(text))) {
    if (section != 0) sections.push_back(section);
  }
  return sections;
}

IrrBlockRead ReadIrrBlock(std::string_view text, int section, SectionDefinitionStore& store) {
  IrrBlockRead out;
  out.shades.fill(Shade::System);
  if (section < 1 || section > 36) return out;
  SectionDefinitions& d = store.sections[U(section)];
  d = SectionDefinitions{};
  store.DoubleCornerCount = 0;

  const std::vector<std::string> lines = SplitLines(text);
  std::size_t start = 0;
  for (const auto& [at, s] : Headers(lines)) {
    if (s == section) {
      start = at + 1;
      out.found = true;
      break;
    }
  }
  if (!out.found) return out;

  Cursor in(lines, start);
  auto& shade = out.shades;
  try {
    // Substitutions: nominal identifier, substitute.
    for (;;) {
      const std::string& line = in.Next();
      const std::int32_t nominal = IdField(line);
      if (nominal == 0) break;
      const std::int32_t substitute = Number(MidView(line, 8, 6));
      const int p = FindPosition(d, section, nominal, 1, 25, false);
      if (p == 0) continue;
      d.Substitute[U(p)] = substitute;
      d.Substitute[0] = 1;
      if (substitute != 0 && substitute != nominal) shade[U(p)] = Shade::Yellow;
    }
    // Double section corners: point, corner code, controlling direction.
    for (;;) {
      const std::string& line = in.Next();
      const std::int32_t point = IdField(line);
      if (point == 0) break;
      const std::int32_t corner = Number(MidView(line, 13, 1));
      const std::int32_t direction = Number(MidView(line, 20, 1));
      if (corner < 1 || corner > 4) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
      store.AddDoubleCorner({NominalId(section, corner + 1), point, static_cast<std::int16_t>(corner),
                             static_cast<std::int16_t>(direction)});
      d.DoubleFlag[U(corner)] = true;
      shade[U(corner + 1)] = Shade::Green;
    }
    // Non-computable quarter corners.
    for (;;) {
      const std::int32_t id = IdField(in.Next());
      if (id == 0) break;
      const int p = FindPosition(d, section, id, 6, 9, true);
      if (p == 0) continue;
      d.NonComputable[U(p)] = id;
      d.QuarterFlag[U(p - 5)] = true;
      shade[U(p)] = Shade::Red;
    }
    // Centre of section: a first type 0 means there is none, and nothing more is read for it.
    {
      const std::int32_t northSouth = ReadDefinition(in, d.Centre, 0, false);
      if (northSouth != 0) {
        const std::int32_t eastWest = ReadDefinition(in, d.Centre, 5, false);
        d.CentreFlag = true;
        shade[1] = PairShade(northSouth, eastWest);
      }
    }
    // Non-computable exterior sixteenths.
    for (;;) {
      const std::int32_t id = IdField(in.Next());
      if (id == 0) break;
      const int p = FindPosition(d, section, id, 18, 25, true);
      if (p == 0) continue;
      d.NonComputable[U(p)] = id;
      d.ExteriorFlag[U(p - 17)] = true;
      shade[U(p)] = Shade::Red;
    }
    // Interior sixteenth proportions: point, parenthetical distance, total distance.
    for (;;) {
      const std::string& line = in.Next();
      const std::int32_t id = IdField(line);
      if (id == 0) break;
      const int p = FindPosition(d, section, id, 10, 13, true);
      if (p == 0) continue;
      ProportionDefinition& proportion = d.Proportions[U(p - 9)];
      proportion = {Field(line, 1, 6), Field(line, 8, 9), Field(line, 18, 9)};
      d.ProportionFlag[U(p - 9)] = true;
      const bool zero = Val(proportion.parenthetical) == 0.0 && Val(proportion.total) == 0.0;
      shade[U(p)] = zero ? Shade::Red : Shade::Green;
    }
    // Centres of quarter sections, found by their nominal identifier only: one written with its
    // substitute is not found, and its lines are then taken as further entries of this list.
    for (;;) {
      const std::int32_t id = IdField(in.Next());
      if (id == 0) break;
      const int p = FindPosition(d, section, id, 14, 17, false);
      if (p == 0) continue;
      LinePair& pair = d.QuarterCentre[U(p - 13)];
      const std::int32_t northSouth = ReadDefinition(in, pair, 0, true);
      const std::int32_t eastWest = ReadDefinition(in, pair, 5, true);
      d.QuarterCentreFlag[U(p - 13)] = true;
      shade[U(p)] = PairShade(northSouth, eastWest);
    }
    // Offsets to a line.
    for (;;) {
      const std::int32_t id = IdField(in.Next());
      if (id == 0) break;
      int p = FindPosition(d, section, id, 6, 9, true);
      if (p == 0) p = FindPosition(d, section, id, 18, 25, true);
      if (p == 0) continue;
      d.Offset[U(p)] = id;
      d.OffsetFlag[U(p)] = true;
      shade[U(p)] = Shade::Cyan;
    }
    out.complete = IsLastLine(in.Next());
  } catch (const std::exception&) {
    // The reading ends here and keeps what it has.
  }
  return out;
}

std::vector<std::string> WriteIrrBlock(const SectionDefinitionStore& store, int section) {
  std::vector<std::string> out;
  if (section < 1 || section > 36) return out;
  const SectionDefinitions& d = store.sections[U(section)];
  out.push_back(IdText(NominalId(section, 1)));

  for (int p = 1; p <= 25; ++p) {
    const std::int32_t substitute = d.Substitute[U(p)];
    if (substitute != 0 && substitute != NominalId(section, p)) {
      out.push_back(IdText(NominalId(section, p)) + " " + IdText(substitute));
    }
  }
  out.push_back(kIrrEndSubstitutes);

  for (int i = 1; i <= store.DoubleCornerCount && i <= SectionDefinitionStore::kDoubleCornerBound; ++i) {
    const DoubleCornerRecord& r = store.DoubleCorners[U(i)];
    std::string line = IdText(r.point);
    PutAt(line, 13, std::to_string(r.corner));
    PutAt(line, 20, std::to_string(r.direction));
    out.push_back(line);
  }
  out.push_back(kIrrEndDoubleCorners);

  for (int p = 6; p <= 9; ++p) {
    if (d.QuarterFlag[U(p - 5)]) out.push_back(IdText(d.NonComputable[U(p)]));
  }
  out.push_back(kIrrEndList);

  if (TypeSet(d.Centre[0])) WriteDefinition(out, d.Centre, 0, false);
  if (TypeSet(d.Centre[5])) WriteDefinition(out, d.Centre, 5, false);
  else out.push_back(kIrrEndList);

  for (int p = 18; p <= 25; ++p) {
    if (d.ExteriorFlag[U(p - 17)]) out.push_back(IdText(d.NonComputable[U(p)]));
  }
  out.push_back(kIrrEndList);

  for (int k = 1; k <= 4; ++k) {
    if (!d.ProportionFlag[U(k)]) continue;
    const ProportionDefinition& proportion = d.Proportions[U(k)];
    std::string line = Trim(proportion.id);
    const std::string parenthetical = FormatPicture(Val(proportion.parenthetical), 3, 0);
    const std::string total = FormatPicture(Val(proportion.total), 3, 0);
    PutAt(line, RightJustifiedColumn(parenthetical.size(), 11), parenthetical);
    PutAt(line, RightJustifiedColumn(total.size(), 21), total);
    out.push_back(line);
  }
  out.push_back(kIrrEndProportions);

  for (int k = 1; k <= 4; ++k) {
    if (!d.QuarterCentreFlag[U(k)]) continue;
    const int p = 13 + k;
    const std::int32_t substitute = d.Substitute[U(p)];
    out.push_back(IdText(substitute != 0 ? substitute : NominalId(section, p)));
    WriteDefinition(out, d.QuarterCentre[U(k)], 0, true);
    WriteDefinition(out, d.QuarterCentre[U(k)], 5, true);
  }
  out.push_back(kIrrEndList);

  for (int p : {6, 7, 8, 9, 18, 19, 20, 21, 22, 23, 24, 25}) {
    if (d.OffsetFlag[U(p)]) out.push_back(IdText(d.Offset[U(p)]));
  }
  out.push_back(kIrrEndList);
  out.push_back(kIrrLastLine);
  return out;
}

}  // namespace tessel
