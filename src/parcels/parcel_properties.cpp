#include "parcels/parcel_properties.h"

#include <algorithm>

#include "model/fault.h"
#include "model/paths.h"
#include "model/selection_checks.h"
#include "model/text.h"
#include "model/text_file.h"
#include "parcels/parcel_attributes.h"
#include "parcels/parcel_file.h"

namespace tessel {

namespace {

constexpr unsigned kRed = 0xFF0000;

// The entry of a list whose first character is the letter; none when no entry has it.
const std::string* EntryOf(const std::vector<std::string>& entries, const std::string& letter) {
  if (letter.empty()) return nullptr;
  for (const std::string& e : entries) {
    if (e.compare(0, 1, letter) == 0) return &e;
  }
  return nullptr;
}

void Refresh(Session& s) {
  if (s.display) s.display->RefreshView();
}

}  // namespace

int ParcelProperties::Target() {
  const std::string shown = Trim(indexText);
  if (shown.empty() || working.empty()) {
    session_.user.Message(kMsgNoParcelShown, Icon::Exclamation);
    return 0;
  }
  const double value = Val(shown);
  if (reading_ != session_.parcels.Reading) {
    session_.user.Message(kMsgParcelsReadAgain, Icon::Exclamation);
    return 0;
  }
  if (!(value >= 1 && value <= session_.parcels.ParcelCount) || value != static_cast<int>(value)) {
    session_.user.Message(kMsgNotAParcel + shown + ".", Icon::Exclamation);
    return 0;
  }
  return static_cast<int>(value);
}

bool ParcelProperties::Open() {
  if (session_.SelectionCount == 0) {
    session_.user.Message("No parcel selected");
    return false;
  }
  const auto picked = SelectedParcelIndexes(session_);
  if (!picked || picked->empty()) return false;
  entries = session_.selection.ParcelList();
  parcels_ = *picked;
  reading_ = session_.parcels.Reading;
  Show(0);
  return true;
}

void ParcelProperties::Show(int index) {
  if (index < 0 || index >= static_cast<int>(entries.size()) || index >= static_cast<int>(parcels_.size())) return;
  listIndex = index;
  working = entries[static_cast<std::size_t>(index)];
  const int p = parcels_[static_cast<std::size_t>(index)];
  StepOver([&] {
    indexText = std::to_string(p);
    const ParcelAttributes a = SplitAttributeLine(working);
    section = a.section;
    number = a.number;
    suffix = a.suffix;
    acreage = a.acreage;
    ring = session_.parcels.ParcelRing.get(p);
    if (!a.location.empty() && kLocationLetters.find(a.location) != std::string_view::npos && a.location != " ") {
      location = a.location;
    }
    if (const std::string* type = EntryOf(SurveyTypeEntries(), a.surveyType)) typeEntry = *type;
    const std::string* note = a.note == "<" ? nullptr : EntryOf(SurveyNoteEntries(), a.note);
    noteText = note ? *note : " ";
    const double y = session_.parcels.ParcelY.get(p), x = session_.parcels.ParcelX.get(p);
    locationText = FormatPicture(y, 3) + " , " + FormatPicture(x, 3);
    Refresh(session_);
    session_.canvas.Circle(x, y, kShownParcelRadius, kRed);
  });
}

void ParcelProperties::EmptyFields() {
  listIndex = -1;
  working.clear();
  indexText.clear();
  section.clear();
  location.clear();
  typeEntry.clear();
  number.clear();
  suffix.clear();
  noteText.clear();
  acreage.clear();
  ring.clear();
  locationText.clear();
}

void ParcelProperties::Follow() {
  const int shown = listIndex >= 0 && listIndex < static_cast<int>(parcels_.size())
                        ? parcels_[static_cast<std::size_t>(listIndex)]
                        : 0;
  const bool sameReading = reading_ == session_.parcels.Reading;
  // An entry applied to shows its new text until the dialog is opened again.
  std::vector<std::string> oldEntries = std::move(entries);
  const std::vector<int> oldParcels = std::move(parcels_);
  entries.clear();
  parcels_.clear();
  const Selection& sel = session_.selection;
  for (std::size_t j = 0; j < sel.ParcelPicks().size(); ++j) {
    const ParcelPick& pick = sel.ParcelPicks()[j];
    if (pick.kind != PickKind::Parcel || pick.reading != session_.parcels.Reading) continue;
    const auto old = std::find(oldParcels.begin(), oldParcels.end(), pick.index);
    const bool kept = sameReading && old != oldParcels.end() && old - oldParcels.begin() < std::ssize(oldEntries);
    entries.push_back(kept ? oldEntries[static_cast<std::size_t>(old - oldParcels.begin())] : sel.ParcelList()[j]);
    parcels_.push_back(pick.index);
  }
  const auto at = std::find(parcels_.begin(), parcels_.end(), shown);
  if (sameReading && shown != 0 && at != parcels_.end()) {
    listIndex = static_cast<int>(at - parcels_.begin());
    // The entry shows the line as it stands now, the working line what was typed.
    return;
  }
  reading_ = session_.parcels.Reading;
  EmptyFields();
}

void ParcelProperties::ShowSelectionRow(int row) {
  const auto& picks = session_.selection.ParcelPicks();
  if (row < 0 || row >= static_cast<int>(picks.size())) return;
  const ParcelPick& pick = picks[static_cast<std::size_t>(row)];
  if (pick.kind != PickKind::Parcel || pick.reading != reading_) return;
  const auto at = std::find(parcels_.begin(), parcels_.end(), pick.index);
  if (at != parcels_.end()) Show(static_cast<int>(at - parcels_.begin()));
}

void ParcelProperties::SetSection(const std::string& text) {
  section = text;
  working = EchoSection(working, text);
}

void ParcelProperties::PressLocation(const std::string& letter) {
  location = letter;
  working = EchoLocation(working, letter);
}

void ParcelProperties::ChooseSurveyType(const std::string& entry) {
  typeEntry = entry;
  working = EchoSurveyType(working, Left(entry, 1));
}

bool ParcelProperties::LeaveSection() {
  if (section.size() == 3) return true;
  session_.user.Message(kSectionLengthText, Icon::Stop);
  return false;
}

void ParcelProperties::Apply() {
  if (working == "(Deleted)") return;
  const int p = Target();
  if (p == 0) return;
  StepOver([&] {
    const std::string letter = location.empty() ? " " : location;
    const std::string line = Left(working, 4) + Left(section, 3) + Mid(working, 8, 1) + letter + " T_" +
                             Left(typeEntry, 1) + Mid(working, 14, 1) + WrittenNumber(number) + WrittenSuffix(suffix) +
                             Mid(working, 22, 3) + WrittenNote(noteText) + Mid(working, 26, 1) +
                             WrittenAcreage(acreage) + Right(working, 17);
    ParcelStore& store = session_.parcels;
    store.ParcelEdit.at(p) = store.ParcelLine.get(p);
    store.ParcelLine.at(p) = Trim(line);
    store.ParcelDirty = -1;
    working = store.ParcelLine.get(p);
    if (listIndex >= 0 && listIndex < static_cast<int>(entries.size())) {
      entries[static_cast<std::size_t>(listIndex)] = working;
    }
  });
  session_.Changed(Change::Parcels);
}

void ParcelProperties::Delete() {
  const int p = Target();
  if (p == 0) return;
  StepOver([&] {
    ParcelStore& store = session_.parcels;
    store.ParcelEdit.at(p) = "(Deleted)" + working;
    working = "(Deleted)";
    store.ParcelLine.at(p).clear();
    store.ParcelDirty = -1;
  });
  session_.Changed(Change::Parcels);
}

void ParcelProperties::NewParcel() {
  session_.user.Status(1, kNewParcelStatus);
  const int shown = Target();
  if (shown == 0) return;
  StepOver([&] {
    ParcelStore& store = session_.parcels;
    const int added = Add16(store.ParcelCount, 1);
    store.ParcelRing.at(added) = store.ParcelRing.get(shown);
    store.ParcelY.at(added) = store.ParcelY.get(shown);
    store.ParcelX.at(added) = store.ParcelX.get(shown);
    store.ParcelIdx.at(added) = static_cast<std::int16_t>(added);
    store.ParcelCount = static_cast<std::int16_t>(added);
    store.ParcelEdit.at(shown) = "DBLATT " + std::to_string(added);
    indexText = std::to_string(added);
    store.ParcelDirty = -1;
  });
  session_.Changed(Change::Parcels);
}

bool ParcelProperties::Ok() {
  if (!WriteEditedParcels(session_)) return false;
  RereadParcelsAfterWrite(session_);
  return true;
}

void ParcelProperties::ClearSelectionList() {
  session_.selection.ClearParcelList();
  session_.Changed(Change::Selection);
}

void ParcelProperties::Cancel() {
  ring.clear();
  locationText.clear();
  session_.SelectionCount = 0;
  session_.ToolMode = ToolMode::PickParcels;
  ClearSelectionList();
  session_.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  session_.parcels.ParcelDirty = 0;
  session_.user.SetPointer(Pointer::Hourglass);
  StepOver([&] { ReadParcels(session_); });
  Refresh(session_);
  session_.user.SetPointer(Pointer::Arrow);
}

void ParcelProperties::Closed() {
  session_.SelectionCount = 0;
  session_.ToolMode = ToolMode::PickParcels;
  ClearSelectionList();
  session_.user.Status(2, "");
  Refresh(session_);
}

bool ParcelProperties::Listing(const char* extension, const char* missing, bool lld,
                               std::vector<ListingRecord>& records) {
  const std::string path = session_.DatasetPath(extension);
  std::string text;
  if (!FileExistsAnyCase(path) || !ReadFileBytes(path, text)) {
    session_.user.Message(missing);
    return false;
  }
  records = lld ? ReadLldSection(text, Val(section)) : ReadLotSection(text, Val(section));
  session_.ToolMode = ToolMode::Locked;
  return true;
}

bool ParcelProperties::LldListing(std::vector<ListingRecord>& records) {
  return Listing(".lld", "LLD file not found", true, records);
}

bool ParcelProperties::LotListing(std::vector<ListingRecord>& records) {
  return Listing(".lot", "LOT file not found", false, records);
}

void ParcelProperties::FillFromRecord(const ListingRecord& r) {
  SetSection(r.section);
  acreage = r.acreage;
  number = r.number;
  suffix = r.suffix;
  const std::string* note = EntryOf(SurveyNoteEntries(), r.note == " " ? "<" : r.note);
  noteText = note ? *note : " ";
}

}  // namespace tessel
