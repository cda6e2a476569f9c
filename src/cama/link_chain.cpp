#include "cama/link_chain.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "cama/free_format.h"
#include "cama/legal_tokens.h"
#include "cama/link_file.h"
#include "cama/manual_link.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

std::string TwoDigits(int section) {
  return std::string(1, static_cast<char>('0' + section / 10)) + static_cast<char>('0' + section % 10);
}

// Columns 7-8 of a CAMA line as a section 0 to 36: blanks around digits are allowed, nothing
// else. -1 when the field is no such number.
int SectionField(const std::string& record) {
  const std::string field = Trim(Mid(record, 7, 2));
  if (field.empty()) return -1;
  int value = 0;
  for (char ch : field) {
    if (ch < '0' || ch > '9') return -1;
    value = value * 10 + (ch - '0');
  }
  return value <= 36 ? value : -1;
}

// A needle of at most five characters as one key: its length, then its bytes.
std::uint64_t NeedleKey(std::string_view needle) {
  std::uint64_t key = needle.size();
  for (unsigned char ch : needle) key = (key << 8) | ch;
  return key;
}

std::uint32_t CellKey(std::string_view section, char letter) {
  const auto byte = [](std::string_view text, std::size_t i) -> std::uint32_t {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u;
  };
  return (byte(section, 0) << 16) | (byte(section, 1) << 8) | static_cast<unsigned char>(letter);
}

// The chain's own failures end it before anything is written; the tables are emptied, so that
// nothing half-linked is drawn.
bool Stop(Session& s, const std::string& message) {
  ClearCamaVariables(s);
  s.user.Message(message, Icon::Exclamation);
  s.user.Status(1, s.JobBase);
  return false;
}

// The link tables emptied and numbered anew, without telling anyone: the caller fills or tells.
void EmptyLinkTables(CamaStore& c) {
  ++c.LinkReading;
  c.CamaRecords.clear();
  c.ClotLines.clear();
  c.LinkGeocode.clear();
  c.LinkChain.clear();
  c.LinkX.clear();
  c.LinkY.clear();
  c.LinkColor.clear();
  c.CamaPickIndex.clear();
  c.SectionCamaCounts.fill(0);
  c.LinkCount = 0;
  c.CamaCount = 0;
  c.LinkLoadedCount = 0;
}

// The CAMA parcel list follows the records it lists, and every window of the link is told.
void LinkTablesChanged(Session& s) {
  if (!s.cama.CamaParcelSection.empty()) FillCamaParcelRows(s, s.cama.CamaParcelSection);
  s.Changed(Change::Cama);
}

}  // namespace

unsigned LinkCanvasColour(const std::string& colour) {
  const double value = Val(colour);
  const auto bgr = value >= 0 && value <= 16777215.0 ? static_cast<unsigned>(value) : 0u;
  return ((bgr & 0xFFu) << 16) | (bgr & 0xFF00u) | ((bgr >> 16) & 0xFFu);
}

bool AppendPhd(Session& s, const std::vector<std::string>& lines) {
  const std::string path = s.DatasetPath(".phd");
  std::string bytes;
  if (FileExistsAnyCase(path) && !ReadFileBytes(path, bytes)) {
    s.user.Message("The file " + path + " could not be read; its statistics were not added.", Icon::Exclamation);
    return false;
  }
  for (const std::string& line : lines) bytes += line + "\r\n";
  return WriteFileOrTell(s.user, path, bytes);
}

void RedrawLinks(Session& s) {
  if (s.display) s.display->RefreshView();
}

bool IdentifyCentroids(Session& s) {
  CamaStore& c = s.cama;
  const std::string camaPath = s.DatasetPath(".cama");
  if (!FileExistsAnyCase(camaPath)) {
    ClearCamaVariables(s);
    s.user.Message(kMsgImportCamaFirst);
    return false;
  }
  s.user.Status(1, kStatusIdentifying);

  std::vector<std::string> records;
  try {
    LineReader in(camaPath);
    while (!in.Eof()) {
      if (records.size() == static_cast<std::size_t>(CamaStore::kBound)) return Stop(s, kMsgTooManyCama);
      records.push_back(in.ReadLine());
    }
  } catch (const RuntimeFault&) {
    return Stop(s, "The file " + camaPath + " could not be read. No .mtc was written.");
  }
  std::array<bool, 37> present{};
  for (std::size_t j = 0; j < records.size(); ++j) {
    const int section = SectionField(records[j]);
    if (section < 0) {
      return Stop(s, kMsgBadSection + std::to_string(j + 1) + ": \"" + Mid(records[j], 7, 2) + "\".");
    }
    present[static_cast<std::size_t>(section)] = true;
  }

  // Per section text ("07"): its record count, the prefix of its last record, its last "ALL".
  std::array<int, 37> lastRecord{}, lastAll{};
  std::array<std::int16_t, 37> counts{};
  for (std::size_t j = 0; j < records.size(); ++j) {
    const std::string field = Mid(records[j], 7, 2);
    for (int section = 0; section <= 36; ++section) {
      if (!present[static_cast<std::size_t>(section)] || field != TwoDigits(section)) continue;
      const auto k = static_cast<std::size_t>(section);
      ++counts[k];
      lastRecord[k] = static_cast<int>(j) + 1;
      if (Mid(records[j], 251, 3) == "ALL") lastAll[k] = static_cast<int>(j) + 1;
      break;
    }
  }

  // The parcels by the section text of their attribute lines, in store order.
  std::unordered_map<std::string, std::vector<int>> parcelsBySection;
  for (int p = 1; p <= s.parcels.ParcelCount; ++p) {
    const std::string& line = s.parcels.ParcelLine.get(p);
    if (line.size() >= 6) parcelsBySection[Mid(line, 6, 2)].push_back(p);
  }

  struct Link {
    std::string text, colour, chain;
    double x = 0.0, y = 0.0;
  };
  std::vector<Link> links;
  std::string clot;
  std::string prefix, quadrant;
  for (int section = 0; section <= 36; ++section) {
    if (!present[static_cast<std::size_t>(section)]) continue;
    const std::string sectionText = TwoDigits(section);
    const auto bucket = parcelsBySection.find(sectionText);
    if (bucket == parcelsBySection.end()) continue;
    for (int p : bucket->second) {
      if (links.size() == static_cast<std::size_t>(CamaStore::kBound)) return Stop(s, kMsgTooManyLinks);
      const std::string& line = s.parcels.ParcelLine.get(p);
      Link link{{}, {}, s.parcels.ParcelRing.get(p), s.parcels.ParcelX.get(p), s.parcels.ParcelY.get(p)};
      const std::string kind = Mid(line, 13, 1);
      std::string number;
      const bool numbered = kind == "M" || kind == "H";
      if (numbered) {
        for (char ch : Mid(line, 15, 5)) {
          if (ch != ',') number += ch;
        }
      }
      const std::string cell = Mid(line, 9, 1);
      // A letter outside A-P keeps the quadrant of the parcel before it.
      if (!cell.empty() && QuadrantDigit(cell[0]) != 0) quadrant = std::string(1, QuadrantDigit(cell[0]));
      // The prefix of the section's last record; a section without one keeps the prefix before.
      if (const int last = lastRecord[static_cast<std::size_t>(section)]; last > 0) {
        prefix = Left(records[static_cast<std::size_t>(last - 1)], 6);
      }
      if (numbered) {
        link.text = prefix + sectionText + quadrant + kind + number;
        link.colour = kLinkGreen;
      } else {
        link.text = prefix + sectionText + quadrant + cell + "?";
        link.colour = kLinkRed;
      }
      clot += FreeLine().Text(link.text).Zone().Number(link.x).Zone().Number(link.y).str() + "\r\n";
      links.push_back(std::move(link));
    }
  }
  if (links.empty()) return Stop(s, kMsgNoLinkRecords);

  if (!WriteFileOrTell(s.user, s.DatasetPath(".clot"), clot)) {
    ClearCamaVariables(s);
    return false;
  }

  ++c.LinkReading;
  for (std::size_t j = 0; j < records.size(); ++j) c.CamaRecords.at(static_cast<int>(j) + 1) = records[j];
  c.CamaCount = static_cast<std::int16_t>(records.size());
  c.SectionCamaCounts = counts;
  for (std::size_t r = 0; r < links.size(); ++r) {
    const int k = static_cast<int>(r) + 1;
    c.LinkGeocode.at(k) = links[r].text;
    c.LinkColor.at(k) = links[r].colour;
    c.LinkChain.at(k) = links[r].chain;
    c.LinkX.at(k) = links[r].x;
    c.LinkY.at(k) = links[r].y;
  }
  c.LinkCount = static_cast<std::int16_t>(links.size());

  // Whole sections: the last "ALL" record of a section links every record of that section,
  // numbered ones too.
  for (int r = 1; r <= c.LinkCount; ++r) {
    const double section = Val(Mid(c.LinkGeocode.get(r), 7, 2));
    if (!(section >= 1 && section <= 36) || section != std::floor(section)) continue;
    const int all = lastAll[static_cast<std::size_t>(section)];
    if (all == 0) continue;
    c.LinkGeocode.at(r) = Left(c.CamaRecords.get(all), 17);
    c.LinkColor.at(r) = kLinkGreen;
  }
  s.user.Status(1, s.JobBase);
  return true;
}

bool PreliminaryLink(Session& s) {
  CamaStore& c = s.cama;
  s.user.Status(1, kStatusPreliminary);
  if (!s.DatasetExists(".cama")) return true;
  const std::string clotPath = s.DatasetPath(".clot");
  std::vector<std::string> needles(static_cast<std::size_t>(c.LinkCount) + 1);
  try {
    LineReader in(clotPath);
    for (int r = 1; r <= c.LinkCount; ++r) {
      const std::string line = in.ReadLine();
      c.ClotLines.at(r) = line;
      const std::string code = Mid(line, 10, 6);
      if ((StartsWith(code, "M") || StartsWith(code, "H")) && Mid(code, 2, 1) != "?") c.LinkColor.at(r) = kLinkYellow;
      needles[static_cast<std::size_t>(r)] = Trim(Mid(code, 2, 5));
    }
  } catch (const RuntimeFault&) {
    ClearCamaVariables(s);
    s.user.Message("The file " + clotPath + " could not be read back. No .mtc was written.", Icon::Exclamation);
    return false;
  }

  // Every needle's hits: the records, in file order, whose first occurrence of the needle
  // starts in columns 251 to 371. A record is walked once over its starts in that range, and a
  // text there counts only when it is a needle and its first occurrence is right there.
  std::unordered_map<std::uint64_t, std::vector<int>> hits;
  std::array<unsigned char, 256> lengthsByFirst{};
  for (int r = 1; r <= c.LinkCount; ++r) {
    const std::string& needle = needles[static_cast<std::size_t>(r)];
    if (needle.empty()) continue;  // an empty needle is found at column 1, outside the range
    hits.try_emplace(NeedleKey(needle));
    lengthsByFirst[static_cast<unsigned char>(needle[0])] |= static_cast<unsigned char>(1u << needle.size());
  }
  for (int j = 1; j <= c.CamaCount; ++j) {
    const std::string& record = c.CamaRecords.get(j);
    const std::string_view view(record);
    for (std::size_t start = 250; start < 371 && start < view.size(); ++start) {
      const unsigned char lengths = lengthsByFirst[static_cast<unsigned char>(view[start])];
      if (lengths == 0) continue;
      for (std::size_t length = 1; length <= 5 && start + length <= view.size(); ++length) {
        if ((lengths & (1u << length)) == 0) continue;
        const std::string_view text = view.substr(start, length);
        const auto found = hits.find(NeedleKey(text));
        if (found == hits.end() || view.find(text) != start) continue;
        found->second.push_back(j);
      }
    }
  }

  long long matched = 0;
  for (int r = 1; r <= c.LinkCount; ++r) {
    const std::string& needle = needles[static_cast<std::size_t>(r)];
    if (needle.empty()) continue;
    const std::vector<int>& records = hits[NeedleKey(needle)];
    if (records.empty()) continue;
    matched += static_cast<long long>(records.size());
    c.LinkGeocode.at(r) = Left(c.CamaRecords.get(records.back()), 17);
    c.LinkColor.at(r) = kLinkBlue;
  }

  return AppendPhd(s, {"Cama Linked on " + LinkDateText(),
                       "Total number of clot records (centroids)= " + FreeNumber(c.LinkCount - 1),
                       "Total number of cama records = " + FreeNumber(c.CamaCount - 1),
                       "Preliminary link (numbered surveys) matched = " + FreeNumber(static_cast<double>(matched))});
}

bool TranslateLegalDescriptions(Session& s) {
  CamaStore& c = s.cama;
  s.user.Status(1, kStatusTranslating);
  // The last record, in file order, whose legal text names each cell of each section: the
  // record that the described walk over records, tokens and link records leaves on a parcel.
  std::unordered_map<std::uint32_t, int> lastNaming;
  for (int j = 1; j <= c.CamaCount; ++j) {
    const std::string& record = c.CamaRecords.get(j);
    const std::string section = Mid(record, 7, 2);
    const std::string legal = Mid(record, 251, 120);
    for (std::string_view token : SplitAtCommas(legal)) {
      const char* cells = TokenCells(TrimView(token));
      if (!cells) continue;
      for (const char* cell = cells; *cell; ++cell) lastNaming[CellKey(section, *cell)] = j;
    }
  }
  for (int r = 1; r <= c.LinkCount; ++r) {
    const std::string& line = c.ClotLines.get(r);
    if (Mid(line, 11, 1) != "?") continue;
    const std::string letter = Mid(line, 10, 1);
    const auto found = lastNaming.find(CellKey(Mid(line, 7, 2), letter.empty() ? '\0' : letter[0]));
    if (found == lastNaming.end()) continue;
    c.LinkGeocode.at(r) = Left(c.CamaRecords.get(found->second), 17);
    c.LinkColor.at(r) = kLinkGreen;
  }

  int matched = 0;
  for (int r = 1; r <= c.LinkCount; ++r) {
    if (Right(c.LinkGeocode.get(r), 1) != "?") ++matched;
  }
  if (c.LinkCount == 0) return Stop(s, kMsgNoLinkRecords);
  const double percent = static_cast<double>(matched) / c.LinkCount * 100.0;
  return AppendPhd(s, {"Total # of parcels = " + FreeNumber(c.LinkCount), "Matched parcels = " + FreeNumber(matched),
                       "Unmatched parcels = " + FreeNumber(c.LinkCount - matched),
                       "Successfully linked " + FormatPicture(percent, 0, 1) + "%", "----------------------------"});
}

bool WriteLinkFile(Session& s) {
  const CamaStore& c = s.cama;
  s.user.Status(1, kStatusWritingMtc);
  std::string bytes = FreeLine()
                          .Text(s.JobName)
                          .Text(" CAMA Linked Parcels ")
                          .Text(LinkDateText())
                          .Text(" Total linked =")
                          .Number(c.LinkCount)
                          .str() +
                      "\r\n";
  for (int r = 1; r <= c.LinkCount; ++r) {
    const double x = c.LinkX.get(r), y = c.LinkY.get(r);
    // A record at X or Y zero is a deleted one.
    if (x == 0.0 || y == 0.0) continue;
    bytes += FreeLine().Text("Parcel area point(X,Y)= ").Number(x).Zone().Number(y).str() + "\r\n";
    bytes += "Parcel chain = " + c.LinkChain.get(r) + "\r\n";
    bytes += "GeoCode = " + c.LinkGeocode.get(r) + "\r\n";
    bytes += "\r\n";
  }
  const bool written = WriteFileOrTell(s.user, s.DatasetPath(".mtc"), bytes);
  s.user.Status(1, "Ready");
  return written;
}

bool RunLinkChain(Session& s) {
  return IdentifyCentroids(s) && PreliminaryLink(s) && TranslateLegalDescriptions(s) && WriteLinkFile(s);
}

bool LoadLinkFile(Session& s) {
  CamaStore& c = s.cama;
  EmptyLinkTables(c);
  const std::string mtcPath = s.DatasetPath(".mtc");
  std::string mtc;
  if (!ReadFileBytes(mtcPath, mtc)) {
    LinkTablesChanged(s);
    s.user.Message("The link file " + mtcPath + " could not be read.", Icon::Exclamation);
    return false;
  }
  const std::vector<LinkFileRecord> records = ReadLinkRecords(std::move(mtc), CamaStore::kBound);
  int groups = 0;
  for (const LinkFileRecord& r : records) {
    ++groups;
    c.LinkX.at(groups) = r.x;
    c.LinkY.at(groups) = r.y;
    if (!r.complete) break;
    c.LinkChain.at(groups) = r.chain;
    c.LinkGeocode.at(groups) = r.geocode;
    c.LinkColor.at(groups) = IsLinkedGeocode(r.geocode) ? kLinkGreen : kLinkRed;
  }
  c.LinkCount = static_cast<std::int16_t>(groups);
  c.LinkLoadedCount = c.LinkCount;

  const std::string camaPath = s.DatasetPath(".cama");
  if (FileExistsAnyCase(camaPath)) {
    try {
      LineReader cama(camaPath);
      int count = 0;
      while (!cama.Eof()) {
        if (count == CamaStore::kBound) {
          s.user.Message(kMsgTooManyCama, Icon::Exclamation);
          break;
        }
        c.CamaRecords.at(++count) = cama.ReadLine();
        c.CamaCount = static_cast<std::int16_t>(count);
      }
    } catch (const RuntimeFault&) {
    }
  }
  LinkTablesChanged(s);
  return true;
}

void LinkParcelsWithCama(Session& s) {
  if (s.DatasetExists(".mtc")) {
    const Answer answer = s.user.Message(kMsgAlreadyLinked, Icon::Question, Buttons::YesNoCancel);
    if (answer == Answer::Yes) {
      s.user.SetPointer(Pointer::Hourglass);
      const bool loaded = LoadLinkFile(s);
      s.user.SetPointer(Pointer::Default);
      RedrawLinks(s);
      if (loaded) s.user.Note(CamaLinkNote(s, false));
    } else if (answer == Answer::No) {
      s.user.Message(kMsgDeleteBeforeRecompute);
    }
    return;
  }
  s.user.SetPointer(Pointer::Hourglass);
  const bool linked = RunLinkChain(s);
  s.Changed(Change::Cama);
  s.user.SetPointer(Pointer::Default);
  s.user.Status(1, s.JobName);
  RedrawLinks(s);
  if (linked) s.user.Note(CamaLinkNote(s, true));
}

std::string CamaLinkNote(const Session& s, bool computed) {
  const CamaStore& c = s.cama;
  int linked = 0;
  for (int i = 1; i <= c.LinkCount; ++i) {
    if (IsLinkedGeocode(c.LinkGeocode.get(i))) ++linked;
  }
  const std::string counts = std::to_string(linked) + " of " + std::to_string(c.LinkCount) + " parcel link records";
  if (!computed) return counts + " linked, loaded from " + s.JobName + ".mtc";
  return counts + " linked with CAMA; links written to " + s.JobName + ".mtc, statistics added to " + s.JobName +
         ".phd";
}


void ClearCamaVariables(Session& s) {
  EmptyLinkTables(s.cama);
  LinkTablesChanged(s);
}

void DeleteOldCama(Session& s) {
  for (const char* extension : {".clot", ".mtc"}) {
    const std::string path = s.DatasetPath(extension);
    if (FileExistsAnyCase(path) && !DeleteAnyCase(path)) {
      s.user.Message("The file " + path + " could not be deleted.", Icon::Exclamation);
    }
  }
  ClearCamaVariables(s);
}

}  // namespace tessel
