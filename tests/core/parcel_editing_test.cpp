// Editing parcels: the attribute line split into its fields, the properties dialog's Apply,
// Delete and New parcel, the writes of Save and of the dialogs' OK compared byte for byte, quick
// edit, the id selection from the .lld listing, the raw polygon tags, banding and the locator.

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "model/paths.h"
#include "model/selection_checks.h"
#include "model/text.h"
#include "model/text_file.h"
#include "parcels/banding.h"
#include "parcels/parcel_attributes.h"
#include "parcels/parcel_file.h"
#include "parcels/parcel_listings.h"
#include "parcels/parcel_locator.h"
#include "parcels/parcel_properties.h"
#include "parcels/quick_edit.h"
#include "parcels/raw_polygon_tags.h"
#include "parcels/raw_polygons.h"
#include "test_support.h"

namespace tessel::test {
namespace {

const std::string kLine1 = "Sec_001 A T_L 1              39.510 T12NR04E-01-00001";
const std::string kLine2 = "Sec_001 B T_L 2              39.341 T12NR04E-01-00002";
const std::string kLine3 = "Sec_001 C T_W                40.000 T12NR04E-01-00003";
const std::string kRing1 = " 660660 700660 700700 660700 660660";
const std::string kRing2 = " 640660 660660 660700 640700 640660";
const std::string kLoc1 = " PARCEL N,E      507423.319     2129650.815";
const std::string kLoc2 = " PARCEL N,E      507416.883     2128338.512";
const std::string kMarker = "  * * * This file has been edited by Tessel  * * *  ";

// Parcel 1 alone; parcels 2 and 3 a group sharing one ring and location.
const std::vector<std::string> kIid = {"T12NR04E PARCELS", kLine1, kRing1, kLoc1, kLine2, kLine3, kRing2, kLoc2};

class ParcelEditing : public JobFixture {
 protected:
  void SetUp() override {
    UseJob("T12NR04E");
    WriteJob("T12NR04E.IID", kIid);
    ReadParcels(session);
    session.display = &display;
  }
  // Picks parcels as the parcel tool does: the list entry and the index.
  void Select(std::initializer_list<int> parcels) {
    for (int p : parcels) {
      session.selection.AddParcelEntry(session.parcels.ParcelLine.get(p), {PickKind::Parcel, p, session.parcels.Reading});
      session.selection.SelectedParcels.at(session.SelectionCount) = static_cast<std::int16_t>(p);
      ++session.SelectionCount;
    }
  }
  // Selects the parcel and opens the properties dialog on it.
  bool OpenOn(int parcel) {
    Select({parcel});
    return form.Open();
  }
  std::string Iid() const { return ReadJob("T12NR04E.IID"); }
  RecordingDisplay display;
  ParcelProperties form{session};
};

TEST(ParcelAttributes, SplitFieldsWrittenFormsAndTheColumnOverwrite) {
  const auto split = [](const std::string& line) {
    const ParcelAttributes a = SplitAttributeLine(line);
    return Joined({a.section, a.location, a.surveyType, a.number, a.suffix, a.note, a.acreage, a.tail});
  };
  EXPECT_EQ(split("Sec_012 K T_M 4521 B    C   123.456 T12NR04E-12-00042"), "012|K|M|4521|B|C|123.456|T12NR04E-12-00042");
  // A line that ends early leaves the later fields empty, its tail being its last 17 characters;
  // nothing is read past its end.
  EXPECT_EQ(split("Sec_3"), "3|||||||Sec_3");
  EXPECT_EQ(split(""), "|||||||");
  // An acreage wider than 9 is not cut.
  EXPECT_EQ(Joined({WrittenAcreage("5"), WrittenAcreage("123456.789"), WrittenNumber(""), WrittenSuffix("A"),
                    WrittenNote("<none>"), WrittenNote("X - Exceptions")}),
            "    5.000|123456.789|     |A | |X");
  EXPECT_EQ(WrittenNumber(UnnumberedLotNumber("7")) + "|" + UnnumberedLotNumber("1234"), "007  |1234");
  EXPECT_EQ(OverwriteColumns("Sec_012 K", 5, 3, "1"), "Sec_112 K");
  EXPECT_EQ(OverwriteColumns("Sec_012 K", 9, 5, "LONGER"), "Sec_012 L");  // kept to the line's length
  EXPECT_EQ(EchoSection(kLine1, "0123"), "Sec_012" + kLine1.substr(7));
  EXPECT_EQ(EchoSection(kLine1, "1"), "Sec_1  " + kLine1.substr(7));
  EXPECT_EQ(EchoSurveyType(kLine1, "M"), "Sec_001 A T_M" + kLine1.substr(13));
}

TEST_F(ParcelEditing, OpeningWithoutSelectionRefusesAndShowingFillsTheFields) {
  EXPECT_FALSE(form.Open());
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"No parcel selected"});
  ASSERT_TRUE(OpenOn(3));
  EXPECT_EQ(Joined({form.working, form.indexText, form.section, form.location, form.typeEntry, form.noteText,
                    form.acreage, form.ring, form.locationText}),
            Joined({kLine3, "3", "001", "C", "W - Water", " ", "40.000", kRing2, "507416.883 , 2128338.512"}));
  // The shown parcel gets a red circle of 120 units after the refresh.
  ASSERT_EQ(canvas.Of("Circle").size(), 1u);
  EXPECT_EQ(canvas.Of("Circle")[0].args, (std::vector<double>{2128338.512, 507416.883, 120.0}));
  EXPECT_EQ(display.calls.back(), "RefreshView");
}

// The forms that edit parcels take the parcels the list's entries really are: not a link record
// picked with "CAMA Parcels" checked, not a parcel of an earlier reading of the store, and not
// whatever SelectedParcels holds at the entry's position.
TEST_F(ParcelEditing, TheEditorsTakeOnlyTheParcelsTheEntriesAre) {
  Select({3});
  // A link record among the entries: refused by each editor, and nothing is written.
  session.selection.AddParcelEntry("06041201100000002", {PickKind::LinkRecord, 1, session.cama.LinkReading});
  user.messages.clear();
  EXPECT_FALSE(form.Open());
  EXPECT_FALSE(QuickEditOpen(session));
  QuickEditFields fields;
  fields.useSection = true;
  fields.section = "009";
  EXPECT_FALSE(QuickEditOk(session, fields));
  std::vector<ListingRecord> records;
  WriteJob("T12NR04E.lld", {"listing"});
  EXPECT_FALSE(StartMultipleAttributes(session, records));
  MoveParcelLocation(session, 1.0, 2.0);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>(5, kMsgSelectionHoldsLinks));
  EXPECT_EQ(Iid(), Text(kIid));

  // Parcels of an earlier reading name nothing in this one.
  session.selection.ClearParcelList();
  Select({1});
  ReadParcels(session);
  session.SelectionCount = 1;  // the reading sets the shared count back; another tool's picks count
  user.messages.clear();
  EXPECT_FALSE(form.Open());
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{kMsgParcelsReadAgain});
}

// The open dialog follows the selection: the parcel shown stays while it is selected, with what
// was typed for it; once it has left the selection the fields are empty and Apply writes nowhere,
// nor onto an index the box does not name a parcel by.
TEST_F(ParcelEditing, TheOpenDialogFollowsTheSelectionAndWritesOnlyToAParcel) {
  ASSERT_TRUE(OpenOn(1));
  form.acreage = "7";
  Select({2});
  form.Follow();
  EXPECT_EQ(form.entries, (std::vector<std::string>{kLine1, kLine2}));
  EXPECT_EQ(form.indexText + "|" + form.acreage, "1|7");
  form.ShowSelectionRow(1);
  EXPECT_EQ(form.indexText, "2");

  session.selection.RemoveParcelEntry(1);
  form.Follow();
  EXPECT_EQ(form.entries, std::vector<std::string>{kLine1});
  EXPECT_EQ(form.indexText + form.working + form.ring, "");
  form.Apply();
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{kMsgNoParcelShown});
  form.Show(0);
  for (const char* index : {"0", "4", "x"}) {
    form.indexText = index;
    form.Apply();
    EXPECT_EQ(user.MessageTexts().back(), kMsgNotAParcel + std::string(index) + ".");
  }
  EXPECT_EQ(std::tuple(session.parcels.ParcelDirty, session.parcels.ParcelLine.get(0)), std::tuple(0, ""));
}

TEST_F(ParcelEditing, ApplyBuildsTheLineFromTheFieldsWhichSaveWritesAndTheSectionCheckRefusesTwoCharacters) {
  ASSERT_TRUE(OpenOn(1));
  form.SetSection("12");
  EXPECT_FALSE(form.LeaveSection());
  EXPECT_EQ(user.messages.back().text,
            "Section Number must be 3 characters long.\r\n(Example: Enter Section 1 as 001)");
  EXPECT_EQ(user.messages.back().icon, Icon::Stop);
  form.SetSection("012");
  EXPECT_TRUE(form.LeaveSection());
  form.PressLocation("Q");
  form.ChooseSurveyType("M - Mineral Survey");
  EXPECT_EQ(form.working, "Sec_012 Q T_M 1              39.510 T12NR04E-01-00001");  // the live echo
  // The new line is put together from the fields and the working line's columns 1-4, 8, 14,
  // 22-24 and 26 and its last 17 characters: column 36 is not among them.
  form.number = "4521";
  form.suffix = "B";
  form.noteText = "C - Conflict ";
  form.acreage = "5";
  form.Apply();
  EXPECT_EQ(session.parcels.ParcelLine.get(1), "Sec_012 Q T_M 4521 B    C     5.000T12NR04E-01-00001");
  EXPECT_EQ(std::tuple(session.parcels.ParcelEdit.get(1), session.parcels.ParcelDirty), std::tuple(kLine1, -1));
  // A second Apply keeps only the last step as the note; a wide acreage lengthens the line.
  form.acreage = "123456.789";
  form.Apply();
  EXPECT_EQ(session.parcels.ParcelEdit.get(1), "Sec_012 Q T_M 4521 B    C     5.000T12NR04E-01-00001");
  const std::string edited = session.parcels.ParcelLine.get(1);
  EXPECT_EQ(edited, "Sec_012 Q T_M 4521 B    C 123456.789T12NR04E-01-00001");
  EXPECT_EQ(form.entries[0], edited);
  // Saved, the note is the last step's; saved again, the note is written once more.
  const std::string note = "Tessel Edited: Sec_012 Q T_M 4521 B    C     5.000T12NR04E-01-00001";
  ASSERT_TRUE(WriteParcels(session));
  EXPECT_EQ(Iid(), Text({kMarker, note, edited, kRing1, kLoc1, kLine2, kLine3, kRing2, kLoc2}));
  EXPECT_EQ(ReadJob("T12NR04E.iib"), Text(kIid));
  EXPECT_EQ(session.parcels.ParcelDirty, 0);
  ASSERT_TRUE(WriteParcels(session));
  EXPECT_EQ(Iid(), Text({kMarker, note, note, edited, kRing1, kLoc1, kLine2, kLine3, kRing2, kLoc2}));
}

TEST_F(ParcelEditing, DeleteThenOkDropsTheLineAndDeleteThenSaveLeavesABlank) {
  ASSERT_TRUE(OpenOn(2));
  form.Delete();
  EXPECT_EQ(form.working, "(Deleted)");
  form.Apply();  // nothing happens
  EXPECT_EQ(session.parcels.ParcelLine.get(2), "");
  ASSERT_TRUE(WriteParcels(session));
  EXPECT_EQ(Iid(), Text({kMarker, kLine1, kRing1, kLoc1, "Tessel Edited: (Deleted)" + kLine2, "", kLine3, kRing2, kLoc2}));

  WriteJob("T12NR04E.IID", kIid);
  ReadParcels(session);
  session.selection = Selection{};
  session.SelectionCount = 0;
  Select({2});
  ParcelProperties again(session);
  ASSERT_TRUE(again.Open());
  again.Delete();
  ASSERT_TRUE(again.Ok());
  EXPECT_EQ(Iid(), Text({kMarker, kLine1, kRing1, kLoc1, "Tessel Edited: (Deleted)" + kLine2, kLine3, kRing2, kLoc2}));
  // The store is read again: the deleted parcel is gone, the tool is the parcel tool again.
  EXPECT_EQ(std::tuple(session.parcels.ParcelCount, session.parcels.ParcelLine.get(2), session.SelectionCount,
                       session.selection.ParcelList().size(), session.ToolMode, session.parcels.ParcelDirty),
            std::tuple(2, kLine3, 0, 0u, ToolMode::PickParcels, 0));
}

TEST_F(ParcelEditing, NewParcelApplyOkPutsTheNewLineAboveItsParent) {
  ASSERT_TRUE(OpenOn(1));
  form.NewParcel();
  EXPECT_EQ(user.statusNow[1], "Create new Parcel ID, 'Apply' to set and 'ok' to save");
  EXPECT_EQ(Joined({form.indexText, session.parcels.ParcelEdit.get(1), session.parcels.ParcelRing.get(4)}),
            "4|DBLATT 4|" + kRing1);
  form.ChooseSurveyType("M - Mineral Survey");
  form.number = "88";
  form.Apply();
  const std::string added = "Sec_001 A T_M 88             39.510T12NR04E-01-00001";
  EXPECT_EQ(session.parcels.ParcelLine.get(4) + "|" + session.parcels.ParcelLine.get(1), added + "|" + kLine1);
  ASSERT_TRUE(form.Ok());
  EXPECT_EQ(Iid(), Text({kMarker, added, kLine1, kRing1, kLoc1, kLine2, kLine3, kRing2, kLoc2}));
  // Read again, the two lines are one group with one ring, both flagged multiple.
  EXPECT_EQ(std::tuple(session.parcels.ParcelCount, session.parcels.ParcelRing.get(1), session.parcels.ParcelRing.get(2),
                       session.parcels.ParcelMulti.get(1)),
            std::tuple(4, kRing1, kRing1, 1));
}

TEST_F(ParcelEditing, CancelDropsTheEditsAndClosingKeepsThem) {
  ASSERT_TRUE(OpenOn(1));
  form.acreage = "1";
  form.Apply();
  form.Closed();
  EXPECT_EQ(session.parcels.ParcelLine.get(1), "Sec_001 A T_L 1               1.000T12NR04E-01-00001");
  EXPECT_EQ(std::tuple(session.parcels.ParcelDirty, session.ToolMode, session.SelectionCount),
            std::tuple(-1, ToolMode::PickParcels, 0));
  ASSERT_TRUE(OpenOn(1));
  form.Cancel();
  EXPECT_EQ(std::tuple(session.parcels.ParcelDirty, session.parcels.ParcelLine.get(1)), std::tuple(0, kLine1));
  EXPECT_EQ(Iid(), Text(kIid));
}

TEST_F(ParcelEditing, AFailedOkLeavesTheFileAndTheEdits) {
  class FailRename : public WriteFaults {
    bool Fails(WriteStep step, const std::string& path) override {
      return step == WriteStep::Rename && path.ends_with(".IID");
    }
  };
  ASSERT_TRUE(OpenOn(1));
  form.Delete();
  {
    FailRename disk;
    EXPECT_FALSE(form.Ok());
  }
  EXPECT_EQ(Iid(), Text(kIid));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_NE(user.messages[0].text.find("T12NR04E.IID"), std::string::npos);
  EXPECT_EQ(std::tuple(session.parcels.ParcelDirty, session.parcels.ParcelEdit.get(1)),
            std::tuple(-1, "(Deleted)" + kLine1));
  for (const auto& entry : std::filesystem::directory_iterator(jobPath)) {
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(name == "T12NR04E.IID" || name == "T12NR04E.iib") << name;
  }
}

TEST_F(ParcelEditing, QuickEditOverwritesTheCheckedColumnsOfEachSelectedParcel) {
  EXPECT_FALSE(QuickEditOpen(session));
  Select({2});  // one member of the group
  ASSERT_TRUE(QuickEditOpen(session));
  QuickEditFields f;
  f.useSection = f.useType = f.useNumber = f.useNote = true;
  f.section = "1";
  f.typeEntry = "O - Un-numbered Lot";
  f.number = "7";
  f.noteEntry = kQuickEditNoNote;
  ASSERT_TRUE(QuickEditOk(session, f));
  const std::string edited = "Sec_101 B T_O 007            39.341 T12NR04E-01-00002";
  EXPECT_EQ(Iid(), Text({kMarker, kLine1, kRing1, kLoc1, "Tessel Edited: " + kLine2, edited, kLine3, kRing2, kLoc2}));
  EXPECT_EQ(session.parcels.ParcelLine.get(3) + "|" + user.statusNow[2], kLine3 + "|0 Parcel(s) Selected");

  // With no box checked every selected parcel still gets its note and the file is rewritten.
  Select({1});
  ASSERT_TRUE(QuickEditOk(session, QuickEditFields{}));
  EXPECT_EQ(Iid(), Text({kMarker, "Tessel Edited: " + kLine1, kLine1, kRing1, kLoc1, "Tessel Edited: " + kLine2, edited,
                         kLine3, kRing2, kLoc2}));
}

// The described pass over a list: from entry 0, compare each entry with the next and remove the
// equal one.
std::vector<std::string> RemoveByComparingNeighbours(std::vector<std::string> list) {
  std::size_t k = 0;
  while (k + 1 < list.size()) {
    if (list[k] == list[k + 1]) list.erase(list.begin() + static_cast<std::ptrdiff_t>(k) + 1);
    else ++k;
  }
  return list;
}

TEST_F(ParcelEditing, QuickEditListIsSortedWithoutAliquotAndUnknownAndRemovesDuplicatesAsTheNeighbourPass) {
  WriteJob("T12NR04E.IID", {"t", "Sec_001 A T_M 12   B        1.000", "Sec_001 B T_A        2.000",
                            "Sec_001 C T_? 9", "Sec_002 D T_L 3", "Sec_001 E T_M 12   B        3.000", kRing1, kLoc1});
  ReadParcels(session);
  std::vector<std::string> list = QuickEditListEntries(session);
  EXPECT_EQ(list, (std::vector<std::string>{"L 3", "M 12   B ", "M 12   B "}));
  RemoveNeighbourDuplicates(session, list);
  EXPECT_EQ(list, (std::vector<std::string>{"L 3", "M 12   B "}));
  EXPECT_GT(user.yields, 0);

  const std::vector<std::vector<std::string>> cases = {
      {}, {"a"}, {"a", "a", "a"}, {"a", "b", "a", "a", "c", "c"}, {"x", "x", "y", "y", "y", "z", "x"}};
  for (const auto& input : cases) {
    std::vector<std::string> fast = input;
    RemoveNeighbourDuplicates(session, fast);
    EXPECT_EQ(fast, RemoveByComparingNeighbours(input));
  }

  QuickEditFields f;
  FillFromQuickEditEntry("M 12   B", f);
  EXPECT_EQ(Joined({f.typeEntry, f.number, f.suffix}), "M - Mineral Survey|12|B");
  EXPECT_TRUE(f.useType && f.useNumber && f.useSuffix && f.useNote);
  QuickEditFields v;
  FillFromQuickEditEntry("V 1", v);
  EXPECT_EQ(v.typeEntry, "");
}

TEST_F(ParcelEditing, CopyKeepsTheLineAtPositionSelectionCount) {
  std::string kept = "unchanged";
  CopyParcelLine(session, kept);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"No parcel selected"});
  Select({1, 2});
  session.selection.SelectedParcels.at(2) = 3;
  CopyParcelLine(session, kept);
  EXPECT_EQ(kept, kLine3);
}

// .lld records of section 1 and one of section 2.
const std::vector<std::string> kLld = {
    Row({{1, "T12NR04E-01-00001"}, {23, "001"}, {27, "L"}, {29, "1"}, {34, ",,"}, {38, "X..............."},
         {55, "0039.510"}, {64, ","}}),
    Row({{1, "T12NR04E-01-00010"}, {23, "001"}, {27, "A"}, {29, "0"}, {34, "B"}, {38, "..X.X..........."},
         {55, "0160.000"}, {64, "C"}}),
    Row({{1, "T12NR04E-01-00011"}, {23, "001"}, {27, "V"}, {29, "5"}, {38, "....X..........."}, {55, "0001.000"}}),
    Row({{1, "T12NR04E-02-00001"}, {23, "002"}, {27, "L"}, {29, "3"}, {38, "X"}, {55, "0040.000"}}),
};

TEST(ParcelListings, LldAndLotRecordsOfASection) {
  const auto lld = ReadLldSection(Text(kLld), 1);
  ASSERT_EQ(lld.size(), 3u);
  EXPECT_EQ(Joined({lld[0].entry, lld[0].location, lld[0].suffix, lld[0].acreage, lld[0].note}),
            "001 L 1     ,, X............... 0039.510 ,|A||39.510| ");
  EXPECT_EQ(lld[1].location + "|" + lld[1].note, " |C");  // two flags
  const std::string lot = Row({{1, " 3"}, {4, "17"}, {7, "L"}, {9, "3"}, {15, ",,"}, {23, "002"}, {27, "0012.500"}, {36, ","}});
  const auto lots = ReadLotSection(Text({lot, Row({{4, " 1"}, {23, "003"}})}), 2);
  ASSERT_EQ(lots.size(), 1u);
  EXPECT_EQ(Joined({lots[0].entry, lots[0].location, lots[0].number, lots[0].acreage}), lot + "|Q|3|12.500");
  // Any bytes read; nothing past a line's end.
  EXPECT_TRUE(ReadLldSection(std::string("\0\r\n\r\r\n  ", 8), 0).size() <= 3u);
  EXPECT_EQ(Joined({CutLeadingZeros("00000.12"), CutLeadingZeros("0040.000"), CutLeadingZeros("1000.000")}),
            "     .12|  40.000|1000.000");
}

TEST_F(ParcelEditing, ListingsNeedTheirFiles) {
  ASSERT_TRUE(OpenOn(1));
  std::vector<ListingRecord> records;
  EXPECT_FALSE(form.LldListing(records));
  EXPECT_FALSE(form.LotListing(records));
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{"LLD file not found", "LOT file not found"}));
  WriteJob("T12NR04E.lld", kLld);
  ASSERT_TRUE(form.LldListing(records));
  EXPECT_EQ(std::tuple(records.size(), session.ToolMode), std::tuple(3u, ToolMode::Locked));
  form.FillFromRecord(records[1]);
  EXPECT_EQ(Joined({form.acreage, form.suffix, form.noteText, form.number}), "160.000|B|C - Conflict |0");
}

TEST_F(ParcelEditing, MultipleAttributesReplaceTheGroupWithTheChosenRecords) {
  std::vector<ListingRecord> records;
  EXPECT_FALSE(StartMultipleAttributes(session, records));
  WriteJob("T12NR04E.lld", kLld);
  EXPECT_FALSE(StartMultipleAttributes(session, records));
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{"LLD file not found", "You must select a parcel centroid"}));
  EXPECT_EQ(user.messages[1].icon, Icon::Stop);

  Select({1});
  ASSERT_TRUE(StartMultipleAttributes(session, records));
  EXPECT_EQ(ReadJob("ts$0001.001"), Text({"(OBSOLETE)" + kLine1}));
  EXPECT_EQ(session.parcels.ParcelLine.get(1), "");
  ParcelIdSelection selection(session);
  selection.Open(records);
  EXPECT_EQ(session.ToolMode, ToolMode::Locked);
  EXPECT_FALSE(selection.Ok());
  EXPECT_EQ(user.messages.back().text,
            "Improper use of Multiple attribute tool.\r\nYou must select at least one attribute.");
  selection.Choose(2);  // type "V" is not a survey type
  EXPECT_EQ(user.messages.back().text + "|" + std::to_string(selection.chosen().size()), "Survey Type not known|0");
  selection.Choose(0);
  selection.Choose(0);
  ASSERT_EQ(selection.chosen().size(), 2u);
  ASSERT_TRUE(selection.Ok());
  const std::string first = "Sec_001 A T_L 1              39.510 T12NR04E-01-00001";
  const std::string second = "Sec_001   T_A 0    B    C    40.000 T12NR04E-01-00001";
  EXPECT_EQ(ReadJob("ts$0001.001"), Text({"(OBSOLETE)" + kLine1, first, second}));
  EXPECT_EQ(Iid(), Text({kMarker, "(OBSOLETE)" + kLine1, first, second, kRing1, kLoc1, kLine2, kLine3, kRing2, kLoc2}));
  EXPECT_EQ(std::tuple(session.parcels.ParcelCount, session.ToolMode), std::tuple(4, ToolMode::PickParcels));
}

TEST_F(ParcelEditing, CancellingTheIdSelectionBringsTheLinesBack) {
  WriteJob("T12NR04E.lld", kLld);
  Select({2, 3});
  std::vector<ListingRecord> records;
  ASSERT_TRUE(StartMultipleAttributes(session, records));
  EXPECT_EQ(session.parcels.ParcelLine.get(3), "");
  ParcelIdSelection selection(session);
  selection.Open(records);
  selection.Cancel();
  EXPECT_EQ(session.parcels.ParcelLine.get(2) + session.parcels.ParcelLine.get(3), kLine2 + kLine3);
  EXPECT_FALSE(JobHas("ts$0001.001"));
  EXPECT_EQ(std::tuple(session.SelectionCount, session.ToolMode), std::tuple(0, ToolMode::PickParcels));
  EXPECT_EQ(Iid(), Text(kIid));
}

using RawPolygonTags = ParcelEditing;

TEST_F(RawPolygonTags, OkRewritesTagsBehindTheHeadingAndRemovesTheCopyAsFarAsTheHeadingCounts) {
  WriteJob("T12NR04E.RPO", {"RAW POLYGONS", "   3 POLYGONS FOUND", "dropped", "S 100 200", "I 300 400", "O 500 600"});
  WriteJob("T12NR04E.CRP", {"", "", ""});
  ReadRawPolygons(session);
  session.selection.SelectedPolygons.at(0) = 1;
  session.selection.SelectedPolygons.at(1) = 3;
  session.SelectionCount = 2;
  EXPECT_EQ(PolygonsSelectedText(session), "2 polygons selected");
  session.ToolMode = ToolMode::PickPolygons;
  ASSERT_TRUE(SetRawPolygonTags(session, "I"));
  EXPECT_EQ(ReadJob("T12NR04E.RPO"), Text({"RAW POLYGONS", "   3 POLYGONS FOUND", "", "I 100 200", "I 300 400", "I 500 600"}));
  EXPECT_FALSE(JobHas("T12NR04E.rp2"));
  // The selection counts on from here.
  EXPECT_EQ(std::tuple(session.ToolMode, session.SelectionCount), std::tuple(ToolMode::ZoomPan, 2));
  // No option chosen: the selected lines begin with a blank.
  session.SelectionCount = 1;
  ASSERT_TRUE(SetRawPolygonTags(session, ""));
  EXPECT_EQ(ReadJob("T12NR04E.RPO"), Text({"RAW POLYGONS", "   3 POLYGONS FOUND", "", " 100 200", "I 300 400", "I 500 600"}));

  // A four-digit count loses the later polygons; a heading without end writes nothing.
  std::vector<std::string> rpo = {"1234 POLYGONS FOUND", ""};
  for (int i = 1; i <= 125; ++i) rpo.push_back("S ring" + std::to_string(i));
  WriteJob("T12NR04E.RPO", rpo);
  WriteJob("T12NR04E.CRP", {});
  ReadRawPolygons(session);
  ASSERT_EQ(session.polygons.RawPolygonCount, 123);
  ASSERT_TRUE(SetRawPolygonTags(session, "S"));
  const std::vector<std::string> kept(rpo.begin(), rpo.begin() + 2 + 123);
  EXPECT_EQ(ReadJob("T12NR04E.RPO"), Text(kept));

  WriteJob("T12NR04E.RPO", {"no heading"});
  EXPECT_FALSE(SetRawPolygonTags(session, "S"));
  EXPECT_EQ(ReadJob("T12NR04E.RPO"), Text({"no heading"}));
  EXPECT_FALSE(JobHas("T12NR04E.rp2"));
  EXPECT_EQ(user.messages.size(), 1u);
}

TEST_F(ParcelEditing, BandsCarryTheColourOverKeysInNoRow) {
  WriteJob("T12NR04E.IID", {"t", "Sec_001 Q T_L", kRing1, kLoc1, "Sec_006 C T_L", kRing1, kLoc2, "Sec_007 Q T_L",
                            kRing1, " PARCEL N,E            1.000           2.000"});
  ReadParcels(session);
  canvas.calls.clear();
  BandParcels(session, BandKind::EW);
  const auto colours = [&] {
    std::vector<decltype(PaletteColour(0))> out;
    for (const auto& dot : canvas.Of("Dot")) out.push_back(dot.colour);
    return out;
  };
  // Q at the start: colour 0; C: 9; the second Q keeps the colour before it.
  EXPECT_EQ(colours(), (std::vector{PaletteColour(0), PaletteColour(9), PaletteColour(9)}));
  EXPECT_EQ(canvas.calls.front(), (CanvasCall{"PenWidth", {12.0}, 0, {}}));
  EXPECT_EQ(canvas.calls.back(), (CanvasCall{"PenWidth", {1.0}, 0, {}}));
  canvas.calls.clear();
  BandParcels(session, BandKind::NSSection);
  EXPECT_EQ(colours(), (std::vector{PaletteColour(11), PaletteColour(5), PaletteColour(5)}));
  EXPECT_EQ(std::vector({BandColourNumber(BandKind::EWSection, "018"), BandColourNumber(BandKind::NS, "K"),
                         BandColourNumber(BandKind::EWSection, "037")}),
            (std::vector{2, 11, 0}));
}

// The described walk of the locator's lists, with the neighbour pass of the quick edit list.
std::vector<std::pair<std::string, int>> LocatorByComparingNeighbours(const ParcelStore& store, int width,
                                                                      bool nonAliquot) {
  std::vector<std::pair<std::string, int>> list;
  for (int i = 1; i <= store.ParcelCount; ++i) {
    const std::string type = Trim(Mid(store.ParcelLine.get(i), 13, 1));
    if (nonAliquot && (type == "?" || type == "A")) continue;
    list.emplace_back(Left(store.ParcelLine.get(i), width), i);
  }
  std::size_t k = 0;
  while (k + 1 < list.size()) {
    if (list[k].first == list[k + 1].first) list.erase(list.begin() + static_cast<std::ptrdiff_t>(k) + 1);
    else ++k;
  }
  return list;
}

TEST_F(ParcelEditing, LocatorListsMapEachEntryToItsParcelAsTheNeighbourPassDoes) {
  std::vector<std::string> iid = {"t"};
  const char* lines[] = {"Sec_001 A T_L 1", "Sec_001 A T_A", "Sec_001 B T_M 4", "Sec_002 A T_?", "Sec_002 A T_M 4",
                         "Sec_001 C T_L 1", "Sec_001 C T_L 1", "Sec_003 Q T_W"};
  for (const char* line : lines) {
    iid.push_back(line);
    iid.push_back(kRing1);
    iid.push_back(kLoc1);
  }
  WriteJob("T12NR04E.IID", iid);
  ReadParcels(session);
  ParcelLocator locator(session);
  const auto check = [&](int width, bool nonAliquot) {
    const auto expected = LocatorByComparingNeighbours(session.parcels, width, nonAliquot);
    ASSERT_EQ(locator.entries.size(), expected.size());
    for (std::size_t k = 0; k < expected.size(); ++k) {
      EXPECT_EQ(locator.entries[k], expected[k].first);
      EXPECT_EQ(locator.ParcelAt(static_cast<int>(k)), expected[k].second);
    }
  };
  locator.AllParcels();
  EXPECT_EQ(locator.entries.size(), 8u);
  locator.NonAliquot();
  check(kLocatorEntryWidth, true);
  EXPECT_EQ(locator.entries.front(), "Sec_001 A T_L 1");
  locator.Sections();
  check(7, false);
  EXPECT_EQ(locator.entries, (std::vector<std::string>{"Sec_001", "Sec_002", "Sec_001", "Sec_003"}));
  locator.Nominal();
  check(9, false);
  EXPECT_EQ(locator.ParcelAt(-1), 0);
  EXPECT_EQ(locator.ParcelAt(99), 0);
}

}  // namespace
}  // namespace tessel::test
