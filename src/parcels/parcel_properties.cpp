#include "parcels/parcel_properties.h"

#include "model/fault.h"
#include "model/paths.h"
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

int ParcelProperties::Index() const { return static_cast<int>(Val(indexText)); }

bool ParcelProperties::Open() {
  if (session_.SelectionCount == 0) {
    session_.user.Message("No parcel selected");
    return false;
  }
  entries = session_.selection.ParcelList;
  if (entries.empty()) return false;
  Show(0);
  return true;
}

void ParcelProperties::Show(int index) {
  if (index < 0 || index >= static_cast<int>(entries.size())) return;
  listIndex = index;
  working = entries[static_cast<std::size_t>(index)];
  StepOver([&] {
    const int p = session_.selection.SelectedParcels.get(index);
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
  StepOver([&] {
    const std::string letter = location.empty() ? " " : location;
    const std::string line = Left(working, 4) + Left(section, 3) + Mid(working, 8, 1) + letter + " T_" +
                             Left(typeEntry, 1) + Mid(working, 14, 1) + WrittenNumber(number) + WrittenSuffix(suffix) +
                             Mid(working, 22, 3) + WrittenNote(noteText) + Mid(working, 26, 1) +
                             WrittenAcreage(acreage) + Right(working, 17);
    const int p = Index();
    ParcelStore& store = session_.parcels;
    store.ParcelEdit.at(p) = store.ParcelLine.get(p);
    store.ParcelLine.at(p) = Trim(line);
    store.ParcelDirty = -1;
    working = store.ParcelLine.get(p);
    entries[static_cast<std::size_t>(listIndex)] = working;
  });
}

void ParcelProperties::Delete() {
  StepOver([&] {
    const int p = Index();
    ParcelStore& store = session_.parcels;
    store.ParcelEdit.at(p) = "(Deleted)" + working;
    working = "(Deleted)";
    store.ParcelLine.at(p).clear();
    store.ParcelDirty = -1;
  });
}

void ParcelProperties::NewParcel() {
  session_.user.Status(1, kNewParcelStatus);
  StepOver([&] {
    ParcelStore& store = session_.parcels;
    const int shown = Index();
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
}

bool ParcelProperties::Ok() {
  if (!WriteEditedParcels(session_)) return false;
  RereadParcelsAfterWrite(session_);
  return true;
}

void ParcelProperties::ClearSelectionList() {
  session_.selection.ParcelList.clear();
  session_.user.ListChanged("frmTesting");
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
