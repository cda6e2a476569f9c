#include "parcels/parcel_listings.h"

#include "model/fault.h"
#include "model/selection_checks.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "parcels/parcel_attributes.h"
#include "parcels/parcel_file.h"

namespace tessel {

namespace {

constexpr std::string_view kFlagLetters = "ABCDEFGHIJKLMNOP";

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  LineReader in = LineReader::FromText(std::string(text));
  while (!in.Eof()) lines.push_back(in.ReadLine());
  return lines;
}

bool InSection(std::string_view line, double section) { return Val(MidView(line, 23, 3)) == section; }

std::string Suffix(std::string_view field) { return field == ",," ? "" : Trim(field); }
std::string Note(std::string_view field) { return field.empty() || field == "," ? " " : std::string(field); }

// The location of sixteen flags: the letter of the one set, "X" for more than one.
std::string FlagLocation(std::string_view flags) {
  std::string letter;
  int set = 0;
  for (std::size_t k = 0; k < flags.size() && k < kFlagLetters.size(); ++k) {
    if (flags[k] != 'X') continue;
    if (++set == 1) letter = std::string(1, kFlagLetters[k]);
  }
  return set > 1 ? "X" : letter;
}

std::string Pad(std::string_view text, std::size_t width) {
  std::string out(text.substr(0, std::min(text.size(), width)));
  out.append(width - out.size(), ' ');
  return out;
}

// The scratch file's lines; none when it is missing.
std::vector<std::string> ReadScratch(const Session& session) {
  std::string bytes;
  if (!ReadFileBytes(session.JobFile(kScratchName), bytes)) return {};
  return Lines(bytes);
}

}  // namespace

std::string LldEntry(std::string_view line) {
  std::string entry = Pad(MidView(line, 23, 3), 3) + " " + Pad(MidView(line, 27, 1), 1) + " " +
                      Pad(MidView(line, 29, 5), 5) + " " + Pad(MidView(line, 34, 2), 2) + " " +
                      Pad(MidView(line, 38, 16), 16) + " " + Pad(MidView(line, 55, 8), 8) + " " +
                      Pad(MidView(line, 64, 1), 1);
  return RTrim(entry);
}

std::vector<ListingRecord> ReadLldSection(std::string_view text, double section) {
  std::vector<ListingRecord> records;
  for (const std::string& line : Lines(text)) {
    if (!InSection(line, section)) continue;
    ListingRecord r;
    r.entry = LldEntry(line);
    r.section = Mid(line, 23, 3);
    r.surveyType = Mid(line, 27, 1);
    r.number = Trim(Mid(line, 29, 5));
    r.suffix = Suffix(Mid(line, 34, 2));
    const std::string location = FlagLocation(Mid(line, 38, 16));
    r.location = location == "X" || location.empty() ? " " : location;
    r.acreage = Trim(CutLeadingZeros(Mid(line, 55, 8)));
    r.note = Note(Mid(line, 64, 1));
    records.push_back(std::move(r));
  }
  return records;
}

std::vector<ListingRecord> ReadLotSection(std::string_view text, double section) {
  std::vector<ListingRecord> records;
  for (const std::string& line : Lines(text)) {
    if (!InSection(line, section)) continue;
    ListingRecord r;
    r.entry = line;
    r.section = Mid(line, 23, 3);
    const double code = Val(MidView(line, 4, 2));
    r.location = code >= 1 && code <= 17 && code == static_cast<int>(code)
                     ? std::string(1, kLocationLetters[static_cast<std::size_t>(code) - 1])
                     : " ";
    r.surveyType = Mid(line, 7, 1);
    r.number = Trim(Mid(line, 9, 5));
    r.suffix = Suffix(Mid(line, 15, 2));
    r.acreage = Trim(CutLeadingZeros(Mid(line, 27, 8)));
    r.note = Note(Mid(line, 36, 1));
    records.push_back(std::move(r));
  }
  return records;
}

std::string CutLeadingZeros(std::string_view acreage) {
  for (std::size_t zeros = 5; zeros >= 1; --zeros) {
    if (acreage.substr(0, std::min(acreage.size(), zeros)) == std::string(zeros, '0')) {
      return std::string(zeros, ' ') + std::string(acreage.substr(zeros));
    }
  }
  return std::string(acreage);
}

bool SurveyTypeKnown(std::string_view entry) {
  const std::string letter = Mid(entry, 5, 1);
  if (letter.empty() || letter == " ") return false;
  for (const std::string& type : SurveyTypeEntries()) {
    if (type.substr(0, 1) == letter) return true;
  }
  return false;
}

std::string AttributeLineFromEntry(std::string_view entry, std::string_view oldLine) {
  const std::string type = Mid(entry, 5, 1);
  const std::string acreage = type == "A" ? "   40.000" : PadLeft(CutLeadingZeros(Mid(entry, 33, 8)), 9);
  const std::string number = Pad(Trim(Mid(entry, 7, 5)), 5);
  std::string location = FlagLocation(Mid(entry, 16, 16));
  // "X", several locations, stands as a blank in the line.
  if (location.empty() || location == "X") location = " ";
  const std::string suffix = Suffix(Mid(entry, 13, 2));
  const std::string note = Note(Mid(entry, 42, 1));
  return "Sec_" + Pad(Mid(entry, 1, 3), 3) + " " + location + " T_" + Pad(type, 1) + " " + number +
         WrittenSuffix(suffix) + "   " + note + " " + acreage + " " + Right(oldLine, 17);
}

bool StartMultipleAttributes(Session& session, std::vector<ListingRecord>& records) {
  const std::string lld = session.DatasetPath(".lld");
  if (!FileExistsAnyCase(lld)) {
    session.user.Message("LLD file not found", Icon::Stop);
    return false;
  }
  if (session.SelectionCount == 0) {
    session.user.Message("You must select a parcel centroid", Icon::Stop);
    return false;
  }
  const auto picked = SelectedParcelIndexes(session);
  if (!picked) return false;
  ParcelStore& store = session.parcels;
  std::vector<std::string> scratch;
  std::vector<std::pair<int, std::string>> before;
  double section = 0.0;
  for (std::size_t j = 0; j < picked->size(); ++j) {
    StepOver([&] {
      const int p = (*picked)[j];
      if (j == 0) section = Val(Mid(store.ParcelLine.get(p), 5, 3));
      before.emplace_back(p, store.ParcelEdit.get(p));
      store.ParcelEdit.at(p) = "(OBSOLETE)" + store.ParcelLine.get(p);
      store.ParcelLine.at(p).clear();
      scratch.push_back(store.ParcelEdit.get(p));
    });
  }
  if (!WriteFileOrTell(session.user, session.JobFile(kScratchName), JoinCrLf(scratch))) {
    // The lines go back where they were.
    for (const auto& [p, note] : before) {
      store.ParcelLine.at(p) = Mid(store.ParcelEdit.get(p), 11);
      store.ParcelEdit.at(p) = note;
    }
    return false;
  }
  std::string text;
  ReadFileBytes(lld, text);
  records = ReadLldSection(text, section);
  return true;
}

void ParcelIdSelection::Open(std::vector<ListingRecord> records) {
  offered_ = std::move(records);
  chosen_.clear();
  session_.ToolMode = ToolMode::Locked;
}

void ParcelIdSelection::Choose(int position) {
  if (position < 0 || position >= static_cast<int>(offered_.size())) return;
  if (!SurveyTypeKnown(offered_[static_cast<std::size_t>(position)].entry)) {
    session_.user.Message("Survey Type not known");
    return;
  }
  chosen_.push_back(offered_[static_cast<std::size_t>(position)]);
  offered_.erase(offered_.begin() + position);
}

void ParcelIdSelection::Unchoose(int position) {
  if (position < 0 || position >= static_cast<int>(chosen_.size())) return;
  offered_.push_back(chosen_[static_cast<std::size_t>(position)]);
  chosen_.erase(chosen_.begin() + position);
}

bool ParcelIdSelection::Ok() {
  if (chosen_.empty()) {
    session_.user.Message("Improper use of Multiple attribute tool.\r\nYou must select at least one attribute.",
                          Icon::Stop);
    return false;
  }
  std::vector<std::string> scratch = ReadScratch(session_);
  const std::string oldLine = scratch.empty() ? std::string() : scratch.front();
  for (const ListingRecord& r : chosen_) scratch.push_back(AttributeLineFromEntry(r.entry, oldLine));
  if (!WriteFileOrTell(session_.user, session_.JobFile(kScratchName), JoinCrLf(scratch))) return false;
  if (!WriteEditedParcels(session_, &scratch)) return false;
  RereadParcelsAfterWrite(session_);
  return true;
}

void ParcelIdSelection::Cancel() {
  Selection& sel = session_.selection;
  for (int j = 0; j < session_.SelectionCount && j <= sel.SelectedParcels.bound(); ++j) sel.SelectedParcels.at(j) = 0;
  session_.SelectionCount = 0;
  sel.ClearParcelList();
  session_.Changed(Change::Selection);
  session_.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  session_.ToolMode = ToolMode::PickParcels;
  StepOver([&] { ReadParcels(session_); });
  if (session_.display) session_.display->RefreshView();
  DeleteAnyCase(session_.JobFile(kScratchName));
  offered_.clear();
  chosen_.clear();
}

}  // namespace tessel
