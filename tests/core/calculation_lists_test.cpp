// The post-adjustment calculation lists: the .add line of every definition kind, the kind read
// back from the field lengths, the checks in their order, and the files .add, .ads and .not after
// new, edit, delete and range delete, with their backups and a failing disk.

#include <gtest/gtest.h>

#include <map>

#include "calculations/add_file.h"
#include "calculations/calculation_files.h"
#include "calculations/definition_editor.h"
#include "model/text.h"
#include "model/text_file.h"
#include "test_support.h"

namespace tessel {
namespace {

using test::Row;
using test::Text;
using F = LineField;

LineInput Line(std::array<std::string, 5> fields, int lineType, int kind) {
  LineInput line;
  line.fields = fields;
  line.lineType = lineType;
  line.kind = kind;
  return line;
}

DefinitionInput Traverse(const std::string& point, const std::string& quadrant, const std::string& bearing,
                         const std::string& distance) {
  DefinitionInput input;
  input.type = 1;
  input.newPoint = point;
  input.lines[0] = Line({"100100", quadrant, bearing, distance, ""}, 1, 1);
  return input;
}

DefinitionInput Intersection(const std::string& point, LineInput first, LineInput second) {
  DefinitionInput input;
  input.type = 2;
  input.newPoint = point;
  input.lines = {first, second};
  return input;
}

// Rows of .add as the columns say: field 1 at 2, the others ending in 9, 16, 23, 33, 36, 46, 56.
std::string AddRow(const std::string& f1, const std::string& f2, const std::string& f3, const std::string& f4,
                   const std::string& f5, const std::string& f6, const std::string& f7, const std::string& f8) {
  auto end = [](int last, const std::string& t) { return std::pair<int, std::string>{last - int(t.size()) + 1, t}; };
  return Row({{2, f1}, end(9, f2), end(16, f3), end(23, f4), end(33, f5), {36, f6}, end(46, f7), end(56, f8)});
}

TEST(AddLines, EveryKindWritesItsFieldsInTheirColumns) {
  EXPECT_EQ(DefinitionLines(Traverse("100200", "1", "45.3015", "12.5"))[0],
            AddRow("1", "100200", "100100", "1", "45.30150", "1", "12.500", ".000"));
  DefinitionInput proportion;
  proportion.type = 1;
  proportion.newPoint = "100150";
  proportion.lines[0] = Line({"100100", "100200", "", "", ""}, 2, 0);
  ASSERT_FALSE(CheckDefinition(proportion));
  EXPECT_EQ(DefinitionLines(proportion)[0], AddRow("1", "100150", "100100", "100200", ".00000", "2", ".000", ".000"));

  const auto lines = DefinitionLines(Intersection("120140", Line({"120100", "120200", "", "", ""}, 1, 0),
                                                  Line({"100140", "200140", "", "", ""}, 2, 0)));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], AddRow("2", "120140", "120100", "120200", ".00000", "1", ".000", ".000"));
  // Parallel on line 1, weighted mean on line 2: the ids encoded by their field.
  const auto encoded = DefinitionLines(Intersection("120140", Line({"120100", "300100", "300200", "", ""}, 1, 2),
                                                    Line({"100140", "100100", "100200", "200100", "200200"}, 2, 3)));
  EXPECT_EQ(encoded[0], AddRow("2", "120140", "120100", "300100", "300.20000", "1", ".000", ".000"));
  EXPECT_EQ(encoded[1], AddRow("2", "0", "100140", "100100", "100.20000", "2", "200.100", "200.200"));
  // A range with its flag left empty; a working point puts "0" in field 1 of the second line.
  const auto range = DefinitionLines(Intersection("950100", Line({"120100", "1", "45.3", "", ""}, 1, 1),
                                                  Line({"100100", "100700", "", "", ""}, 1, 4)));
  EXPECT_EQ(range[0], AddRow("2", "950100", "120100", "1", "45.30000", "1", ".000", ".000"));
  EXPECT_EQ(range[1], AddRow("0", "0", "100100", "100700", "999.99900", "1", ".000", ".000"));

  DefinitionInput connecting;
  connecting.type = 3;
  connecting.lines[0] = Line({"100100", "100200", "", "", ""}, 0, -1);
  EXPECT_EQ(DefinitionLines(connecting)[0], AddRow("3", "100100", "100200", "0", ".00000", "0", ".000", ".000"));
}

TEST(AddLines, KindIsReadOffTheFieldLengthsInOrder) {
  auto kind = [](const std::string& line) { return DetectKind(CutAddLine(line)); };
  EXPECT_EQ(kind(AddRow("2", "0", "1", "2", "999.99900", "1", "200.100", "200.200")), AddKind::Range);
  EXPECT_EQ(kind(AddRow("2", "1", "1", "120200", ".00000", "1", ".000", ".000")), AddKind::PointIds);
  EXPECT_EQ(kind(AddRow("2", "1", "1", "120200", "300.20000", "1", ".000", ".000")), AddKind::Parallel);
  EXPECT_EQ(kind(AddRow("2", "1", "1", "120200", "300.20000", "1", "200.100", "200.200")), AddKind::WeightedMean);
  EXPECT_EQ(kind(AddRow("2", "1", "1", "120200", "300.20000", "1", "1.000", ".000")), AddKind::QuadrantBearing);
  // A five-character point to is no identifier to the reader.
  EXPECT_EQ(kind(AddRow("2", "1", "1", "12020", ".00000", "1", ".000", ".000")), AddKind::QuadrantBearing);
  EXPECT_EQ(DetectTraverseKind(CutAddLine(AddRow("1", "1", "1", "3", "10.00000", "1", "1.000", ".000"))),
            AddKind::Traverse);
  EXPECT_EQ(DecodeId(EncodeBearingId("300200")), "300200");
  EXPECT_EQ(DecodeId(EncodeDistanceId("200100")), "200100");
}

TEST(AddLines, EditingReadsBackWhatWasWrittenAndDescribesAnyBearing) {
  RecordingUserPort user;
  RecordingCanvas canvas;
  RecordingProcessPort processes;
  Session session(user, canvas, processes);
  session.calculations.Ads = {{"120140", "SURVEY A"}, {"120140", "SURVEY B"}};
  session.calculations.AdsById["120140"] = 1;
  const DefinitionInput written = Intersection("120140", Line({"120100", "300100", "300200", "", ""}, 1, 2),
                                               Line({"100140", "100100", "100200", "200100", "200200"}, 2, 3));
  const DefinitionInput read = InputFromLines(session, DefinitionLines(written));
  EXPECT_EQ(read.type, 2);
  EXPECT_EQ(read.survey, "SURVEY B");
  EXPECT_EQ(read.lines[0].kind, 2);
  EXPECT_EQ(read.lines[1].kind, 3);
  EXPECT_EQ(read.lines[1].fields, (std::array<std::string, 5>{"100140", "100100", "100200", "200100", "200200"}));
  EXPECT_EQ(DefinitionLines(read), DefinitionLines(written));
  // Garbage and short lines come back as lines of no known kind, never a fault.
  for (const std::string line : {"", "x", " 2", " 2 ABCDEFGHIJKLMNOPQRSTUVWXYZ 999.99900", "\t\t\t"}) {
    const DefinitionInput garbage = InputFromLines(session, {line, line});
    (void)DefinitionLines(garbage);
    const Description d = Describe(session, {line, line}, 1);
    if (TypeOfLine(line) == AddType::Unknown) {
      EXPECT_EQ(d.text, line);
    }
  }

  // A traverse's description gives the bearing's whole degrees; a bearing too large for any
  // integer (a damaged .add) is shown as the number it is.
  std::vector<std::string> lines = DefinitionLines(Traverse("100200", "1", "45.3015", "10"));
  EXPECT_NE(Describe(session, lines, 0).text.find("Quad # 1, 45 (DD.MMSS 45.30150)"), std::string::npos);
  // The same line with the bearing's columns damaged into a number of 300 digits.
  const std::size_t at = lines[0].find("45.30150");
  ASSERT_NE(at, std::string::npos);
  lines[0].replace(at, 8, "4.5E+300");
  const std::string huge = Describe(session, lines, 0).text;
  EXPECT_NE(huge.find("Quad # 1, " + ShortestText(4.5e300) + " (DD.MMSS 4.5E+300)"), std::string::npos) << huge;
}

TEST(DefinitionChecks, InTheirOrderWithMessageAndFocus) {
  auto failure = [](DefinitionInput input) {
    const auto f = CheckDefinition(input);
    return f ? f->message : std::string("ok");
  };
  DefinitionInput blank = Traverse("", "5", "95", "0");
  blank.lines[0].fields[4] = "3";
  EXPECT_EQ(failure(blank), kMsgNeedPoint);
  DefinitionInput total = Traverse("100200", "5", "95", "0");
  total.lines[0].fields[4] = "3";
  EXPECT_EQ(failure(total), kMsgTraverseTotal);
  EXPECT_EQ(failure(Traverse("100200", "5", "95", "0")), kMsgInvalidQuadrant);
  EXPECT_EQ(failure(Traverse("100200", "0", "95", "0")), kMsgNeedDistance);  // quadrant 0 passes
  EXPECT_EQ(failure(Traverse("100200", "4", "90", "1")), kMsgInvalidBearing);
  EXPECT_EQ(failure(Traverse("100200", "4", "89.5959", "1")), "ok");
  DefinitionInput ids = Traverse("100200", "100300", "1.2", "");
  ids.lines[0].kind = 0;
  EXPECT_EQ(failure(ids), kMsgBearingZero);
  DefinitionInput noLineType = Traverse("100200", "1", "10", "1");
  noLineType.lines[0].lineType = 0;
  EXPECT_EQ(failure(noLineType), kMsgNeedLineType);
  DefinitionInput second = Intersection("1", Line({"1", "2", "", "", ""}, 1, 0), Line({"3", "4", "", "", ""}, 0, 0));
  const auto f = CheckDefinition(second);
  ASSERT_TRUE(f);
  EXPECT_EQ(f->message, kMsgNeedLineType);
  EXPECT_EQ(f->focus.line, 1);
  second.lines[1].lineType = 2;
  second.lines[1].kind = -1;
  EXPECT_EQ(failure(second), kMsgNeedKind);
  DefinitionInput connecting;
  connecting.type = 3;
  connecting.lines[0] = Line({"100100", "", "", "", ""}, 0, -1);
  const auto c = CheckDefinition(connecting);
  ASSERT_TRUE(c);
  EXPECT_EQ(c->message, kMsgNeedPoint);
  EXPECT_EQ(c->focus.field, F::To);
  // The empty fields were set on the way.
  EXPECT_EQ(connecting.lines[0].at(F::Bearing), ".00000");
  EXPECT_EQ(connecting.lines[1].at(F::Total), ".000");

  // Last, the ids a line's kind uses must be there: an intersection of blank lines is refused at
  // the first blank, by its caption and line, and so is a traverse without its quadrant.
  DefinitionInput blankLines = Intersection("100200", Line({"", "", "", "", ""}, 1, 1), Line({"", "", "", "", ""}, 1, 1));
  const auto b = CheckDefinition(blankLines);
  ASSERT_TRUE(b);
  EXPECT_EQ(b->message, "The field \"Point From\" of line 1 is empty.");
  EXPECT_EQ(b->focus.line, 0);
  EXPECT_EQ(b->focus.field, F::From);
  blankLines.lines[0].at(F::From) = "100100";
  blankLines.lines[0].at(F::To) = "1";
  blankLines.lines[1].at(F::From) = "100300";
  EXPECT_EQ(failure(blankLines), "The field \"Quadrant\" of line 2 is empty.");
  blankLines.lines[1].at(F::To) = "2";
  EXPECT_EQ(failure(blankLines), "ok");
  EXPECT_EQ(failure(Traverse("100200", "", "10", "1")), "The field \"Quadrant\" is empty.");
}

TEST(DefinitionChecks, KindChoiceClearsUnusedFieldsAndNamesPickFields) {
  LineInput line = Line({"1", "2", "3", "4", "5"}, 1, 0);
  ApplyKind(line, AddKind::Parallel);
  EXPECT_EQ(line.fields, (std::array<std::string, 5>{"1", "2", "3", ".000", ".000"}));
  ApplyKind(line, AddKind::WeightedMean);
  EXPECT_EQ(line.fields, (std::array<std::string, 5>{"1", "2", "3", "", ""}));
  ApplyKind(line, AddKind::Range);
  EXPECT_EQ(line.at(F::Bearing), "999.999");
  EXPECT_EQ(FieldLabels(AddKind::Range)[2], "Flag");

  DefinitionInput input = Intersection("1", Line({}, 1, 3), Line({}, 1, 4));
  EXPECT_EQ(PickFields(input), (std::vector<std::pair<int, LineField>>{
                                   {0, F::From}, {0, F::To}, {0, F::Bearing}, {0, F::Prop}, {0, F::Total},
                                   {1, F::From}, {1, F::To}}));
  input.type = 1;
  input.lines[0].kind = 1;
  EXPECT_EQ(PickFields(input), (std::vector<std::pair<int, LineField>>{{0, F::From}}));
}

// A definition open in its editor while the list changes: found where its lines stand now, the
// place nearest its old one when they stand twice, and not at all when they are gone.
TEST(EditedEntries, AreFoundAgainByTheirLines) {
  using List = std::vector<std::string>;
  const std::string A = AddRow("1", "100200", "100100", "1", "45.30150", "1", "12.500", ".000");
  const std::string X = AddRow("1", "100300", "100100", "1", "45.30150", "1", "12.500", ".000");
  const std::string B1 = AddRow("2", "950140", "120100", "120200", ".00000", "1", ".000", ".000");
  const std::string B2 = AddRow("0", "0", "100140", "200140", ".00000", "2", ".000", ".000");
  const std::string C = AddRow("3", "100100", "100200", "0", ".00000", "0", ".000", ".000");
  const List list = {A, B1, B2, C};
  const EditedEntry b = EditedDefinition(list, 2);  // opened from the second line
  EXPECT_EQ(b.first, 1);
  EXPECT_EQ(b.lines, (List{B1, B2}));
  const auto at = [](const List& l, const EditedEntry& e) {
    const auto span = RefindEntry(l, e);
    return span ? std::pair{span->first, span->behind} : std::pair{-1, -1};
  };
  EXPECT_EQ(at(list, b), (std::pair{1, 3}));
  EXPECT_EQ(at(List{B1, B2, C}, b), (std::pair{0, 2}));             // A deleted before it
  EXPECT_EQ(at(List{A, X, B1, B2, C}, b), (std::pair{2, 4}));       // one put in front
  EXPECT_EQ(at(List{B1, B2, A, C, B1, B2}, b), (std::pair{0, 2}));  // twice: the nearer
  EXPECT_EQ(at(List{A, B1, C}, b), (std::pair{-1, -1}));            // changed
  EXPECT_EQ(at(List{A, C}, b), (std::pair{-1, -1}));                // deleted
  // A new entry goes to the end of the list as it stands.
  EXPECT_EQ(at(List{A, C}, EditedEntry{}), (std::pair{2, 2}));
  EXPECT_TRUE(EditedDefinition(list, 4).IsNew());
}

class CalculationFiles : public test::JobFixture {
 protected:
  CalculationFiles() {
    UseJob();
    WriteJob("T1N2E.add", {kFirst, kInter1, kInter2, kConnect});
    WriteJob("T1N2E.ads", {" 100200 OLD SURVEY", " 120140 SURVEY A"});
    LoadCalculationLists(session);
  }
  const std::string kFirst = AddRow("1", "100200", "100100", "1", "45.30150", "1", "12.500", ".000");
  const std::string kInter1 = AddRow("2", "950140", "120100", "120200", ".00000", "1", ".000", ".000");
  const std::string kInter2 = AddRow("0", "0", "100140", "200140", ".00000", "2", ".000", ".000");
  const std::string kConnect = AddRow("3", "100100", "100200", "0", ".00000", "0", ".000", ".000");
};

TEST_F(CalculationFiles, NewGoesToTheEndAndEditReplacesItsOwnLines) {
  DefinitionInput input = Traverse("100300", "2", "10", "5");
  input.survey = "SURVEY C";
  const int end = static_cast<int>(session.calculations.Definitions.size());
  ASSERT_TRUE(SaveDefinition(session, input, end, end));
  const std::string added = DefinitionLines(input)[0];
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kFirst, kInter1, kInter2, kConnect, added}));
  EXPECT_EQ(ReadJob("T1N2E.adZ"), Text({kFirst, kInter1, kInter2, kConnect}));
  EXPECT_EQ(ReadJob("T1N2E.ads"), Text({" 100200 OLD SURVEY", " 120140 SURVEY A", " 100300 SURVEY C"}));
  EXPECT_EQ(ReadJob("T1N2E.asZ"), Text({" 100200 OLD SURVEY", " 120140 SURVEY A"}));
  EXPECT_FALSE(JobHas("T1N2E.as2"));
  EXPECT_EQ(session.calculations.Definitions.size(), 5u);

  // Editing the intersection from its second line: both lines replaced, in place, by one.
  const DefinitionSpan span = SpanOf(session.calculations.Definitions, 2);
  EXPECT_EQ(span.first, 1);
  EXPECT_EQ(span.behind, 3);
  DefinitionInput edit = InputFromLines(session, {kInter1, kInter2});
  edit.newPoint = "950140";
  edit.lines[1].at(F::To) = "200150";
  ASSERT_TRUE(SaveDefinition(session, edit, span.first, span.behind));
  const auto lines = DefinitionLines(edit);
  EXPECT_EQ(lines[1], AddRow("0", "0", "100140", "200150", ".00000", "2", ".000", ".000"));
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kFirst, lines[0], lines[1], kConnect, added}));
  // The survey "<none>" takes the point's line out of .ads.
  DefinitionInput first = InputFromLines(session, {kFirst});
  EXPECT_EQ(first.survey, "OLD SURVEY");
  first.survey = kNoSurvey;
  ASSERT_TRUE(SaveDefinition(session, first, 0, 1));
  EXPECT_EQ(ReadJob("T1N2E.ads"), Text({" 120140 SURVEY A", " 100300 SURVEY C"}));
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kFirst, lines[0], lines[1], kConnect, added}));
}

TEST_F(CalculationFiles, DeleteAsksAndTakesBothLinesOfAnIntersection) {
  user.answers = {Answer::No};
  EXPECT_FALSE(DeleteDefinition(session, 2));
  EXPECT_EQ(user.messages.back().text, "Intersection definition of 950140\r\nConfirm Delete?");
  EXPECT_FALSE(DeleteDefinition(session, -1));
  EXPECT_EQ(user.messages.back().text, kMsgSelectForDeletion);
  EXPECT_EQ(DeletePrompt(session.calculations.Definitions, 3), "Connecting line between 100100 and 100200\r\nConfirm Delete?");

  EXPECT_TRUE(DeleteDefinition(session, 0));
  EXPECT_EQ(user.messages.back().text, "Definition for point 100200 deleted.");
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kInter1, kInter2, kConnect}));
  EXPECT_EQ(ReadJob("T1N2E.ads"), Text({" 120140 SURVEY A"}));
  EXPECT_TRUE(DeleteDefinition(session, 0));
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kConnect}));
  EXPECT_EQ(ReadJob("T1N2E.adZ"), Text({kInter1, kInter2, kConnect}));
}

TEST_F(CalculationFiles, RangeDeleteMarksBothLinesAndRewritesAds) {
  WriteJob("T1N2E.ads", {" 100200 OLD SURVEY", " 950140 W", " 120140 SURVEY A"});
  ASSERT_TRUE(DeleteRange(session, kRangeStartDefault, kRangeEndDefault));
  EXPECT_EQ(ReadJob("T1N2E.add"), Text({kFirst, kConnect}));
  EXPECT_EQ(ReadJob("T1N2E.ads"), Text({" 100200 OLD SURVEY", " 120140 SURVEY A"}));
  EXPECT_EQ(ReadJob("T1N2E.as2"), Text({" 100200 OLD SURVEY", " 950140 W", " 120140 SURVEY A"}));
  EXPECT_EQ(ReadJob("T1N2E.adZ"), Text({kFirst, kInter1, kInter2, kConnect}));
  // Inclusive at both ends.
  EXPECT_EQ(MarkRange({kFirst, kConnect}, 100100, 100200).marked, (std::vector<bool>{true, true}));
  EXPECT_EQ(MarkRange({kFirst, kConnect}, 100101, 100199).ids.size(), 0u);
}

TEST_F(CalculationFiles, NotListsNewEditDelete) {
  WriteJob("T1N2E.not", {"     1", "100500", "", "     1", "100100 100200"});
  LoadCalculationLists(session);
  EXPECT_EQ(session.calculations.NotPoints, (std::vector<std::string>{"100500"}));
  EXPECT_EQ(session.calculations.NotLines, (std::vector<std::string>{"100100 100200"}));
  EXPECT_FALSE(SaveNotLine(session, -1, "100300", ""));
  EXPECT_EQ(user.messages.back().text, kMsgEnterToPoint);
  ASSERT_TRUE(SaveNotPoint(session, -1, "100600"));
  ASSERT_TRUE(SaveNotLine(session, 0, "100100", "100300"));
  ASSERT_TRUE(SaveNotLine(session, -1, "1001", "100400"));
  EXPECT_EQ(ReadJob("T1N2E.not"),
            Text({"     2", "100500", "100600", "     2", "100100 100300", "1001   100400"}));
  EXPECT_EQ(session.calculations.NotLines.back(), "1001 100400");
  EXPECT_EQ(NotLineCaption("1001 100400"), "Line segment 1001 to 100400 will not be included in LXN topology.");
  user.answers = {Answer::Yes};
  ASSERT_TRUE(DeleteNotPoint(session, 0));
  EXPECT_EQ(user.messages.back().text, "Point ID 100500 chosen for Deletion.\r\nConfirm delete?");
  EXPECT_EQ(ReadJob("T1N2E.not"), Text({"     1", "100600", "     2", "100100 100300", "1001   100400"}));
  EXPECT_EQ(ReadJob("T1N2E.noZ"),
            Text({"     2", "100500", "100600", "     2", "100100 100300", "1001   100400"}));
}

TEST_F(CalculationFiles, AFailingDiskLeavesTheFilesAndTellsTheUser) {
  struct Failing : WriteFaults {
    bool Fails(WriteStep step, const std::string& path) override {
      return step == WriteStep::Rename && path.size() >= 4 && path.substr(path.size() - 4) == ".add";
    }
  } failing;
  const std::string before = ReadJob("T1N2E.add");
  EXPECT_FALSE(SaveDefinition(session, Traverse("100300", "2", "10", "5"), 4, 4));
  EXPECT_EQ(ReadJob("T1N2E.add"), before);
  ASSERT_FALSE(user.messages.empty());
  EXPECT_NE(user.messages.back().text.find("T1N2E.add"), std::string::npos);
}

TEST(CalculationIndexes, AdsLookupAndRemovalMatchTheWalk) {
  std::vector<std::string> ads;
  std::vector<std::string> ids;
  for (int k = 0; k < 300; ++k) {
    const std::string id = std::to_string(100100 + (k * 37) % 50);
    std::string survey = "S";
    survey.append(std::to_string(k));
    ads.push_back(AdsLine(id, survey));
    if (k % 7 == 0) ids.push_back(id);
  }
  CalculationLists lists;
  lists.Ads = ParseAds(ads);
  for (std::size_t k = 0; k < lists.Ads.size(); ++k) lists.AdsById[lists.Ads[k].id] = static_cast<int>(k);
  for (int probe = 100090; probe < 100160; ++probe) {
    std::string walk = kNoSurvey;
    for (const AdsEntry& e : lists.Ads) {
      if (e.id == std::to_string(probe)) walk = e.survey;
    }
    EXPECT_EQ(SurveyOf(lists, std::to_string(probe)), walk) << probe;
  }
  std::vector<std::string> walk;
  for (const std::string& line : ads) {
    bool gone = false;
    for (const std::string& id : ids) gone = gone || Trim(Mid(line, 2, 6)) == id;
    if (!gone) walk.push_back(line);
  }
  EXPECT_EQ(AdsWithout(ads, ids), walk);
}

}  // namespace
}  // namespace tessel
