// Survey records: the .sid block as written (tabulation, padding, the directive table and its
// odd strings), the directives read back for the editor, every save route of frmSidEdit with
// the whole file compared, the .raw writer and .ra2, the record edit, the SID change, the
// selection by survey and the weight rebuild with its temporary files in order.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "job/load_sequence.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "surveys/print_columns.h"
#include "surveys/raw_records.h"
#include "surveys/survey_editor.h"
#include "surveys/survey_file.h"
#include "surveys/weight_rebuild.h"
#include "test_support.h"

namespace tessel::test {
namespace {

namespace fs = std::filesystem;

std::string SLine(const std::string& name, const std::string& c, const std::string& p, const std::string& s,
                  const std::string& e, const std::string& n) {
  return Row({{1, "S" + name}, {20, c}, {27, p}, {35, s}, {43, e}, {52, n}});
}

const std::string kGlo = SLine("GLO 1854", "   .050", "   200.0", "    60.0", "    0.100", "    0.100");
const std::string kBlm = SLine("BLM 1978", "   .020", "    50.0", "    20.0", "    0.050", "    0.050");
const std::string kDu = "C DU:C     <DISTANCE UNITS ARE CHAINS>";
const std::string kDt = "C DT:G     <GROUND DISTANCES>";
const std::string kDc = "C DC:           0.010          2.000   <DISTANCE CORRECTION CONST+PPM>";
const std::string kAngles = "C BT:MA    0.0010 <MEAN BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
const std::string kBc = "C BC:    0.0030  <BEARING ROTATION CORRECTION (DD.MMSS)>";

const std::vector<std::string> kSid = {kGlo, "C ORIGINAL SURVEY", kDu, kDt, kDc, kAngles, kBc, kBlm, "C RESURVEY"};

std::vector<std::string> Records() {
  return {RawRow("100100", "100200", "  80.000", "1", " 10000.0", "GLO 1854"),
          RawRow("100200", "100300", "  79.500", "4", "   500.0", "BLM 1978"),
          RawRow("100300", "100400", "  80.250", "1", "  1200.0", "GLO 1854")};
}

// A small job: points, a network of one control station, two surveys and three records, opened
// through the load sequence so that every save can reload it.
class SurveyRecordsTest : public JobFixture {
 protected:
  void SetUp() override {
    WriteJob("T1N2E.def", DefFile(2));
    WriteJob("T1N2E.COR", {CorRow("100100", "1000.000", "1000.000"), CorRow("100200", "1000.000", "6280.000"),
                           CorRow("100300", "1100.000", "11500.000"), CorRow("100400", "1200.000", "16780.000")});
    WriteJob("T1N2E.LSA", LsaFile({ControlRow("100100", "1000.000", "1000.000")}, {LsaLineRow("100100", "100200")},
                                  {LsaPointRow("100100", "1000.000", "1000.000")}));
    WriteJob("T1N2E.sd", {"   0.020   0.020", "sd line of a measurement"});
    WriteJob("T1N2E.sid", kSid);
    WriteJob("T1N2E.raw", RawFile(Records()));
    WriteTool("recpad.exe", {"stand-in"});
    session.CurrentFolder = JobDir();
    OpenJob(session, JobDir() + "T1N2E.def", "T1N2E.def");
    ASSERT_EQ(session.surveys.SurveyCount, 2);
    ASSERT_EQ(session.raw.RawLineCount, 3);
    user.messages.clear();
  }

  // The lines of the job's file, as the readers see them.
  std::string Sid() const { return ReadJob("T1N2E.sid"); }

  SidForm Loaded(int entry) {
    SidForm form;
    LoadSidForm(session, entry, form);
    return form;
  }

  // Selects records 1 to 3 as the line tool would.
  void SelectAll() {
    for (int j = 1; j <= 3; ++j) {
      session.selection.SelectedLines.at(j - 1) = static_cast<std::int16_t>(j);
      session.selection.LineList.push_back(RawLineText(session.raw.RawLineFields.get(j)));
    }
  }
};

TEST(SurveyBlock, FieldsAreTabulatedPaddedAndNeverCut) {
  SurveyBlock b{"GLO 1854", "   .050", "   200.0", "    60.0", "    0.100", "    0.100", "C ONE\r\n", {kDu, ""}};
  EXPECT_EQ(SurveyBlockText(b), Text({kGlo, "C ONE", "", kDu, ""}));

  // Eighteen characters reach column 19, so the constant follows without a blank.
  b = {"ABCDEFGHIJKLMNOPQR", "   .050", "   200.0", "    60.0", "    0.100", "    0.100", "", {}};
  EXPECT_EQ(Left(SurveyBlockText(b), 26), "SABCDEFGHIJKLMNOPQR   .050");
  // A nineteenth character pushes past column 20: the tabulation goes on on the next line.
  b.name = "ABCDEFGHIJKLMNOPQRS";
  EXPECT_EQ(SurveyBlockText(b), Text({"SABCDEFGHIJKLMNOPQRS", Row({{20, "   .050"}, {27, "   200.0"}, {35, "    60.0"},
                                                                  {43, "    0.100"}, {52, "    0.100"}}),
                                      ""}));
  // A constant wider than its seven columns moves the parts per million to a line of their own.
  b = {"X", "12345678", "   200.0", "", "", "", "", {}};
  EXPECT_EQ(Left(SurveyBlockText(b), 63), Row({{1, "SX"}, {20, "12345678"}}) + "\r\n" + std::string(26, ' ') + "   200.0");
}

TEST(SurveyBlock, DirectiveTableKeepsItsStrings) {
  EXPECT_EQ(DistanceUnitsLine("F - US Survey Foot"), "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>");
  EXPECT_EQ(DistanceUnitsLine("M - Meters"), "C DU:M     <DISTANCE UNITS ARE METERS>");
  EXPECT_EQ(DistanceTypeLine("E - Ellipsoid"), "C DT:E     <ELLIPSOIDAL DISTANCES>");
  // The list's own texts for plane distances and compass bearings match nothing.
  EXPECT_EQ(DistanceTypeLine(kDistanceTypeList[2]), "");
  EXPECT_EQ(DistanceTypeLine("P - Plane(grid)"), "C DT:P     <PLANE (GRID) DISTANCES>");
  EXPECT_EQ(BearingTypeLine(kBearingTypeList[3]), "");
  EXPECT_EQ(AnglesLine(kBearingTypeList[3], ".001"), "");
  EXPECT_EQ(BearingTypeLine("C -Compass / Magnetic"), "C BT:C  <COMPASS (MAGNETIC) BEARINGS>");
  EXPECT_EQ(BearingTypeLine(kBearingTypeList[4]), "C BT:L  <LOCAL OR ASSUMED BEARINGS>");
  EXPECT_EQ(AnglesLine(kBearingTypeList[2], ".00100"), "C BT:GA    .00100 <GRID BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>");
  EXPECT_EQ(DistanceCorrectionLine(".010", "2.0"), "C DC:            .010            2.0   <DISTANCE CORRECTION CONST+PPM>");
  // Widths of 15 and 9 are kept while shorter; a longer value shifts what follows.
  EXPECT_EQ(DistanceCorrectionLine("1234567890123456", "1"), "C DC: 1234567890123456              1   <DISTANCE CORRECTION CONST+PPM>");
  EXPECT_EQ(BearingCorrectionLine("1234567890"), "C BC: 1234567890  <BEARING ROTATION CORRECTION (DD.MMSS)>");
}

TEST(SurveyBlock, PicturesFormatNumbersAndLeaveTextAlone) {
  EXPECT_EQ(Joined({PictureText("0.05", 3), PictureText(" 200 ", 1), PictureText("-1.23456", 3),
                    PictureText("893700", 1), PictureText("abc", 3), PictureText("1.2.3", 3), PictureText("", 3)}),
            ".050|200.0|-1.235|893700.0|abc|1.2.3|");
}

TEST_F(SurveyRecordsTest, DirectivesAreReadWithTheirOffsets) {
  const SurveyDirectives d = ReadSurveyDirectives(session.surveys, 1);
  EXPECT_EQ(std::tuple(d.anyDirective, d.distanceUnits, d.distanceType, d.bearingType, d.convertToAngles),
            std::tuple(true, 0, 0, 0, true));
  // The bearing correction is read from columns 6-14 of a value written in 7-15: its last
  // character is lost.
  EXPECT_EQ(Joined({d.comments, d.correctionConstant, d.correctionPpm, d.angleError, d.bearingCorrection}),
            "C ORIGINAL SURVEY\r\n|0.010|2.000|0.0010|0.003");
  EXPECT_EQ(SurveyCommentLabel(session, 0), "C ORIGINAL SURVEY\r\n" + std::string(kDirectivesDefined));
  EXPECT_EQ(SurveyCommentLabel(session, 1), "C RESURVEY\r\n");
  EXPECT_EQ(SurveyListEntries(session), (std::vector<std::string>{Left(kGlo, 42), Left(kBlm, 42)}));

  // Values that fill their fields: the reader starts one column late in DC and one early in BC.
  WriteJob("T1N2E.sid", {kGlo, DistanceCorrectionLine("123456789012345", "987654321098765"),
                         BearingCorrectionLine("123456789"), "C no key here", "S EMPTY"});
  session.surveys.Clear();
  ReadSurveys(session);
  const SurveyDirectives full = ReadSurveyDirectives(session.surveys, 1);
  EXPECT_EQ(Joined({full.correctionConstant, full.correctionPpm, full.bearingCorrection, full.comments}),
            "123456789012345|87654321098765|12345678|C no key here\r\n");
  const SurveyDirectives none = ReadSurveyDirectives(session.surveys, 2);
  EXPECT_EQ(std::tuple(none.comments, none.anyDirective), std::tuple("", false));
}

TEST_F(SurveyRecordsTest, LoadingTicksOnlyTheBoxesItShould) {
  const SidForm form = Loaded(0);
  for (int box : {1, 2, 3, 4, 6, 7, 10, 12, 13}) EXPECT_FALSE(form.ticked[static_cast<std::size_t>(box)]) << box;
  for (int box : {5, 8, 9, 11}) EXPECT_TRUE(form.ticked[static_cast<std::size_t>(box)]) << box;
  EXPECT_EQ(Joined({form.name, form.constant, form.northing}), "GLO 1854|.050|0.100");
  // The second survey has no directives: its lists are empty and their boxes stay clear.
  const SidForm second = Loaded(1);
  EXPECT_EQ(std::tuple(second.distanceUnits, bool(second.ticked[kBoxDistanceUnits]), bool(second.ticked[kBoxComments])),
            std::tuple(-1, false, true));
}

TEST_F(SurveyRecordsTest, SavingCommentsOnlyRewritesTheBlockAndDropsUntickedCorrections) {
  SidForm form = Loaded(0);
  form.comments = "C NEW COMMENT\r\n";
  ASSERT_TRUE(SaveSidForm(session, form));
  // No question; the control errors come from the 42-character list entry, which has none; DC, BC
  // and the conversion to angles are dropped and the plain bearing type written instead; the
  // comment's own line end leaves an empty line.
  EXPECT_EQ(Sid(), Text({SLine("GLO 1854", "   .050", "   200.0", "    60.0", "         ", "         "), "C NEW COMMENT", "", kDu, kDt,
                         "C BT:M  <MEAN GEODETIC BEARINGS>", kBlm, "C RESURVEY"}));
  EXPECT_TRUE(user.messages.empty());
  // The reload read the file again.
  EXPECT_EQ(session.surveys.SurveyCount, 2);
  EXPECT_EQ(SurveyCommentLabel(session, 0), "C NEW COMMENT\r\n" + std::string(kDirectivesDefined));
}

TEST_F(SurveyRecordsTest, SavingWithCorrectionsTickedAgainKeepsThem) {
  SidForm form = Loaded(0);
  for (int box : {kBoxEasting, kBoxNorthing, kBoxDistanceCorrection, kBoxBearingCorrection, kBoxAngles}) {
    form.ticked[static_cast<std::size_t>(box)] = true;
  }
  user.answers = {Answer::No};
  ASSERT_TRUE(SaveSidForm(session, form));
  EXPECT_EQ(Sid(), Text({kGlo, "C ORIGINAL SURVEY", "", kDu, kDt,
                         "C DC:           0.010          2.000   <DISTANCE CORRECTION CONST+PPM>", kAngles,
                         "C BC:     0.003  <BEARING ROTATION CORRECTION (DD.MMSS)>", kBlm, "C RESURVEY"}));
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{"SID file updated\r\nUpdate weights based upon new error estimates?",
                                                           "alright I won't"}));
  EXPECT_TRUE(processes.launches.empty());
}

TEST_F(SurveyRecordsTest, PlaneAndCompassChoicesWriteEmptyLines) {
  SidForm form = Loaded(1);
  form.distanceType = 2;  // "P - Plane (grid)"
  form.bearingType = 3;   // "C - Compass / Magnetic"
  form.ticked[kBoxDistanceType] = form.ticked[kBoxBearingType] = true;
  ASSERT_TRUE(SaveSidForm(session, form));
  EXPECT_EQ(Sid(), Text({kGlo, "C ORIGINAL SURVEY", kDu, kDt, kDc, kAngles, kBc,
                         SLine("BLM 1978", "   .020", "    50.0", "    20.0", "         ", "         "), "C RESURVEY", "", "", ""}));
  // Read back, the lists are empty.
  const SidForm again = Loaded(1);
  EXPECT_EQ(std::pair(again.distanceType, again.bearingType), std::pair(-1, -1));
}

TEST_F(SurveyRecordsTest, RenamingCarriesTheNameIntoTheRecords) {
  SidForm form = Loaded(0);
  form.name = "GLO 1854 RENAMED XTRA";
  form.ticked[kBoxName] = true;
  ASSERT_TRUE(SaveSidForm(session, form));
  EXPECT_EQ(user.MessageTexts(),
            (std::vector<std::string>{"SID file updated\r\nSID Name changed, update raw file records?",
                                      "GLO 1854 will be updated to GLO 1854 RENAMED X"}));
  EXPECT_EQ(Left(Sid(), 26), "SGLO 1854 RENAMED X   .050");
  EXPECT_EQ(ReadJob("T1N2E.raw"),
            Text({"RECORD DATA", "  999999", RawRow("100100", "100200", "  80.000", "1", " 10000.0", "GLO 1854 RENAMED X"),
                  Records()[1], RawRow("100300", "100400", "  80.250", "1", "  1200.0", "GLO 1854 RENAMED X"), "999998"}));
  EXPECT_EQ(ReadJob("T1N2E.ra2"), Text(RawFile(Records())));
  // After the reload the records still belong to the first survey.
  EXPECT_EQ(std::tuple(session.raw.RawLineEnds.get(1).survey, session.raw.RawLineEnds.get(3).survey), std::tuple(1, 1));

  // Renaming to a name another survey has is not refused, and a No leaves the records.
  form = Loaded(1);
  form.name = "GLO 1854 RENAMED X";
  form.ticked[kBoxName] = true;
  user.answers = {Answer::No};
  user.messages.clear();
  ASSERT_TRUE(SaveSidForm(session, form));
  EXPECT_EQ(std::tuple(user.messages.size(), session.surveys.SurveyCount), std::tuple(1u, 2));
  EXPECT_EQ(SurveyName(session.surveys.SurveyTable.get(2)), "GLO 1854 RENAMED X");
}

TEST_F(SurveyRecordsTest, NothingTickedWritesNothingAndANewSurveyIsAppendedWhenComplete) {
  SidForm form = Loaded(0);
  form.ticked = {};
  EXPECT_FALSE(SaveSidForm(session, form));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Nothing to do!"});
  EXPECT_EQ(Sid(), Text(kSid));

  user.messages.clear();
  form = SidForm{};
  NewSidForm(form);
  form.name = "NEW ONE";
  form.constant = ".030";
  form.ppm = "100.0";
  EXPECT_FALSE(SaveSidForm(session, form));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You have not completely filled out the form."});
  EXPECT_EQ(Sid(), Text(kSid));

  form.seconds = "30.0";
  form.comments = "C ADDED\r\n";
  form.easting = "0.2";
  form.distanceUnits = 3;
  form.ticked[kBoxDistanceUnits] = true;
  ASSERT_TRUE(SaveSidForm(session, form));
  std::vector<std::string> expected = kSid;
  for (const std::string& line : {SLine("NEW ONE", "   .030", "   100.0", "    30.0", "      0.2", "         "), std::string("C ADDED"),
                                  std::string(), std::string("C DU:M     <DISTANCE UNITS ARE METERS>")}) {
    expected.push_back(line);
  }
  EXPECT_EQ(Sid(), Text(expected));
  EXPECT_EQ(std::tuple(session.surveys.SurveyCount, ReadSurveyDirectives(session.surveys, 3).distanceUnits),
            std::tuple(3, 3));

  // A file whose last line has no line end gets one before the new block.
  WriteJobBytes("T1N2E.sid", "SA\r\nC last");
  AppendSurvey(session, "SB\r\n");
  EXPECT_EQ(Sid(), "SA\r\nC last\r\nSB\r\n");
}

// A click in the list keeps a form begun with "Create New" new: OK appends, and the survey
// clicked keeps its block; "Properties" is what edits an existing one.
TEST_F(SurveyRecordsTest, ANewSurveyStaysNewAfterAClickInTheList) {
  SidForm form;
  NewSidForm(form);
  LoadSidForm(session, 1, form);
  EXPECT_TRUE(form.isNew);
  form.name = "NEW ONE";
  form.constant = ".030";
  form.ppm = "100.0";
  form.seconds = "30.0";
  form.comments = "C ADDED";
  for (int box : {kBoxName, kBoxConstant, kBoxPpm, kBoxSeconds, kBoxComments}) form.ticked[std::size_t(box)] = true;
  const std::string before = Sid();
  ASSERT_TRUE(SaveSidForm(session, form));
  EXPECT_EQ(Sid().substr(0, before.size()), before);
  EXPECT_EQ(Left(Sid().substr(before.size()), 8), "SNEW ONE");
  OpenSidProperties(session, 1, form);
  EXPECT_FALSE(form.isNew);
}

// A survey loaded into the form is saved where it stands when the file was read again meanwhile,
// and not at all when it is gone: never onto the survey that took its place.
TEST_F(SurveyRecordsTest, ASaveFindsItsSurveyAgainOrWritesNothing) {
  SidForm form;
  OpenSidProperties(session, 1, form);  // BLM 1978
  form.comments = "C MOVED";
  form.ticked[kBoxComments] = true;
  // The surveys read again with another survey in front.
  WriteJob("T1N2E.sid", {kGlo, "C FIRST", kGlo, kBlm});
  ReloadJobFiles(session);
  ASSERT_TRUE(SaveSidForm(session, form));
  // (The form's list entry is the S line's first 42 characters, so the control errors go.)
  const std::string blm = SLine("BLM 1978", "   .020", "    50.0", "    20.0", "         ", "         ");
  EXPECT_EQ(Sid(), Text({kGlo, "C FIRST", kGlo, blm, "C MOVED"}));

  WriteJob("T1N2E.sid", {kGlo});
  ReloadJobFiles(session);
  user.messages.clear();
  EXPECT_FALSE(SaveSidForm(session, form));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{kMsgSurveyGone + Trim(Mid(kBlm, 2, 18)) + kMsgSurveyGoneAfter});
  EXPECT_EQ(Sid(), Text({kGlo}));
}

TEST_F(SurveyRecordsTest, RawWriterKeepsTheHeadAndTheFormerFile) {
  WriteJob("T1N2E.raw", {"HEAD ONE", "HEAD 999999 NOT THIS", "   999999  ", Records()[0], "999998", "TRAILING"}, Eol::Lf);
  const std::string first = ReadJob("T1N2E.raw");
  WriteRaw(session);
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({"HEAD ONE", "HEAD 999999 NOT THIS", "   999999  ", Records()[0], Records()[1],
                                        Records()[2], "999998"}));
  EXPECT_EQ(ReadJob("T1N2E.ra2"), first);
  // A second save overwrites .ra2 with the state before it.
  const std::string second = ReadJob("T1N2E.raw");
  session.raw.RawLineCount = 1;
  WriteRaw(session);
  EXPECT_EQ(ReadJob("T1N2E.ra2"), second);
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({"HEAD ONE", "HEAD 999999 NOT THIS", "   999999  ", Records()[0], "999998"}));

  // A distance wider than its field pushes the quadrant's tab stop to a new line.
  session.raw.RawLineFields.at(1)[3] = "123456789";
  EXPECT_EQ(Left(RawRecordsText(session.raw), 31), "100100   100200 123456789 1    ");
  session.raw.RawLineFields.at(1)[3] = "12345678901";
  EXPECT_EQ(RawRecordsText(session.raw),
            Text({"100100   100200 12345678901", Row({{27, "1"}, {31, " 10000.0"}, {40, "GLO 1854"}}), "999998"}));

  // Without "999999" the file is malformed: nothing is written.
  WriteJob("T1N2E.raw", {"NO SENTINEL", Records()[0]});
  const std::string malformed = ReadJob("T1N2E.raw");
  const std::string backup = ReadJob("T1N2E.ra2");
  ExpectFault(FaultKind::ReadPastEnd, [&] { WriteRaw(session); });
  EXPECT_EQ(ReadJob("T1N2E.raw"), malformed);
  EXPECT_EQ(ReadJob("T1N2E.ra2"), backup);
}

TEST_F(SurveyRecordsTest, EditingARecordWritesRawAndAsks) {
  SelectAll();
  RawEditForm form;
  EXPECT_FALSE(LoadRawEdit(session, 5, form));
  ASSERT_TRUE(LoadRawEdit(session, 1, form));
  EXPECT_EQ(form.fields[3] + "|" + form.fields[6], "79.500|BLM 1978");
  user.messages.clear();
  EXPECT_FALSE(SaveRawEdit(session, form));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Nothing to do!"});

  form.fields[3] = PictureText("79.6", 3);
  form.fields[5] = PictureText("630", 1);
  form.ticked[3] = form.ticked[5] = true;
  session.ToolMode = ToolMode::PickLines;
  user.messages.clear();
  user.answers = {Answer::No};
  ASSERT_TRUE(SaveRawEdit(session, form));
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({"RECORD DATA", "  999999", Records()[0],
                                        RawRow("100200", "100300", "  79.600", "4", "   630.0", "BLM 1978"), Records()[2],
                                        "999998"}));
  EXPECT_EQ(session.selection.LineList[1], "100200 100300   79.600 4    630.0 BLM 1978");
  EXPECT_EQ(user.MessageTexts(),
            std::vector<std::string>{"RAW file has changed.\r\nUpdate adjustment parameters based upon new values?"});
  EXPECT_TRUE(processes.launches.empty() && user.statusNow[1] == "Select line(s)") << user.statusNow[1];
  // The reload read the new record.
  EXPECT_EQ(session.raw.RawLineFields.get(2)[5], "   630.0");
}

// The line list changed under the record editor: the save goes to the record it was loaded
// from, found by its fields, or nowhere.
TEST_F(SurveyRecordsTest, ARecordEditFindsItsRecordAgainOrWritesNothing) {
  SelectAll();
  RawEditForm form;
  ASSERT_TRUE(LoadRawEdit(session, 1, form));  // record 2
  const std::string first = RawLineText(session.raw.RawLineFields.get(1));
  const std::string third = RawLineText(session.raw.RawLineFields.get(3));
  session.selection.LineList.erase(session.selection.LineList.begin());
  session.selection.SelectedLines.at(0) = 2;
  session.selection.SelectedLines.at(1) = 3;
  form.fields[3] = "99.000";
  form.ticked[3] = true;
  user.answers = {Answer::No};
  ASSERT_TRUE(SaveRawEdit(session, form));
  EXPECT_EQ(session.raw.RawLineFields.get(2)[3], "  99.000");
  EXPECT_EQ(RawLineText(session.raw.RawLineFields.get(1)) + RawLineText(session.raw.RawLineFields.get(3)), first + third);
  EXPECT_EQ(session.selection.LineList[0], RawLineText(session.raw.RawLineFields.get(2)));

  // The record is gone from the file: nothing is written.
  const std::string raw = ReadJob("T1N2E.raw");
  form.recordText = "no such record";
  user.messages.clear();
  EXPECT_FALSE(SaveRawEdit(session, form));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{kMsgRecordGone});
  EXPECT_EQ(ReadJob("T1N2E.raw"), raw);
}

TEST_F(SurveyRecordsTest, SelectingBySidTakesTheRecordsOfTheChosenSurveysAndChangingItMovesEverySelectedLine) {
  session.selection.LineList = {"old"};
  EXPECT_EQ(SelectBySid(session, {0}), 2);
  EXPECT_EQ(session.selection.LineList,
            (std::vector<std::string>{RawLineText(session.raw.RawLineFields.get(1)), RawLineText(session.raw.RawLineFields.get(3))}));
  EXPECT_EQ(session.selection.SelectedLines.get(1), 3);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"2 records selected"});
  EXPECT_EQ(SelectBySid(session, {0, 1}), 3);
  EXPECT_EQ(SelectBySid(session, {}), 0);

  session.selection = Selection{};
  SelectAll();
  session.selection.LineList.pop_back();  // records 1 and 2 only
  EXPECT_TRUE(AskChangeSid(session));
  EXPECT_EQ(SurveyChoices(session), (std::vector<std::string>{Mid(kGlo, 2, 18), Mid(kBlm, 2, 18)}));
  user.messages.clear();
  user.answers = {Answer::No};
  ASSERT_TRUE(SwitchSid(session, "BLM 1978"));
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text({"RECORD DATA", "  999999",
                                        RawRow("100100", "100200", "  80.000", "1", " 10000.0", "BLM 1978"), Records()[1],
                                        Records()[2], "999998"}));
  EXPECT_EQ(session.selection.LineList[0], "100100 100200   80.000 1  10000.0 BLM 1978");
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"RAW file updated\r\nUpdate weights based upon new SID assignment?"});
  EXPECT_EQ(session.raw.RawLineEnds.get(1).survey, 2);
}

std::vector<std::string> Rebuilt() {
  return LsaFile({ControlRow("100100", "1000.000", "1000.000")}, {LsaLineRow("100100", "100300")},
                 {LsaPointRow("100100", "1000.000", "1000.000")});
}

// The rebuild's files: what stands in the job folder while recpad runs, and after it.
TEST_F(SurveyRecordsTest, WeightRebuildCutsBackRunsRecpadAndCleansUp) {
  const std::string lsa = ReadJob("T1N2E.LSA");
  std::vector<std::string> during;
  processes.during = [&] {
    for (const char* name : {"T1N2E.002", "T1N2E.t$2", "T1N2E.t$3", "temp.bat", "t1$.001"}) {
      if (JobHas(name)) during.push_back(name);
    }
    // The heads: the one control line of each file, both in .002.
    EXPECT_EQ(ReadJob("T1N2E.LSA"), Text({LsaFile({ControlRow("100100", "1000.000", "1000.000")}, {}, {})[0]}));
    EXPECT_EQ(ReadJob("T1N2E.sd"), Text({"   0.020   0.020"}));
    EXPECT_EQ(ReadJob("T1N2E.002"), ReadJob("T1N2E.LSA") + ReadJob("T1N2E.sd"));
    EXPECT_EQ(ReadJob("T1N2E.t$2"), Text({LsaFile({}, {}, {LsaPointRow("100100", "1000.000", "1000.000")}).back()}));
    // The tool writes its .lsa with LF line ends; the program writes it back with CR LF.
    WriteJob("T1N2E.LSA", Rebuilt(), Eol::Lf);
  };
  WeightRebuild(session);
  EXPECT_EQ(during, (std::vector<std::string>{"T1N2E.002", "T1N2E.t$2", "temp.bat", "t1$.001"}));
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].launch.program, "temp.bat");
  EXPECT_EQ(ReadJob("T1N2E.LSA"), Text(Rebuilt()));
  for (const char* name : {"T1N2E.002", "T1N2E.t$2", "T1N2E.t$3", "temp.bat", "t1$.001"}) EXPECT_FALSE(JobHas(name)) << name;
  EXPECT_TRUE(user.messages.empty());
  EXPECT_NE(lsa, ReadJob("T1N2E.LSA"));
}

TEST_F(SurveyRecordsTest, WeightRebuildTellsOfAMissingRecpadAndNeedsAJob) {
  fs::remove(toolPath / "recpad.exe");
  WeightRebuild(session);
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, RecpadFailedText(session));
  EXPECT_NE(user.messages[0].text.find("recpad"), std::string::npos);
  EXPECT_NE(user.messages[0].text.find(JobDir()), std::string::npos);
  // The heads are what stays.
  EXPECT_EQ(ReadJob("T1N2E.sd"), Text({"   0.020   0.020"}));

  Session none(user, canvas, processes);
  user.messages.clear();
  WeightRebuild(none);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You must first Open or Create a job."});
}

// Every writer here on a disk that fails: the job's files as they were, the user told.
class FailingWrites : public WriteFaults {
 public:
  explicit FailingWrites(std::string suffix) : suffix_(std::move(suffix)) {}
  bool Fails(WriteStep step, const std::string& path) override {
    return step == WriteStep::Rename && path.ends_with(suffix_);
  }

 private:
  std::string suffix_;
};

TEST_F(SurveyRecordsTest, FailedWritesLeaveTheJobAsItWas) {
  {
    FailingWrites disk(".sid");
    SidForm form = Loaded(0);
    form.ticked[kBoxName] = true;
    EXPECT_FALSE(SaveSidForm(session, form));
    SidForm added;
    NewSidForm(added);
    added.name = added.constant = added.ppm = added.seconds = added.comments = "1";
    EXPECT_FALSE(SaveSidForm(session, added));
  }
  EXPECT_EQ(Sid(), Text(kSid));
  ASSERT_EQ(user.messages.size(), 2u);
  EXPECT_NE(user.messages[0].text.find("T1N2E.sid"), std::string::npos);

  SelectAll();
  user.messages.clear();
  {
    FailingWrites disk(".raw");
    EXPECT_FALSE(SwitchSid(session, "X"));
    RawEditForm form;
    ASSERT_TRUE(LoadRawEdit(session, 0, form));
    form.ticked[1] = true;
    form.fields[1] = "999";
    EXPECT_FALSE(SaveRawEdit(session, form));
  }
  EXPECT_EQ(ReadJob("T1N2E.raw"), Text(RawFile(Records())));
  EXPECT_EQ(session.raw.RawLineFields.get(1)[1] + session.raw.RawLineFields.get(1)[6], "100100GLO 1854");
  ASSERT_EQ(user.messages.size(), 2u);
  EXPECT_NE(user.messages[1].text.find("T1N2E.raw"), std::string::npos);

  // The rebuild: .sd cannot be cut back, so .lsa gets its bytes again and nothing runs.
  const std::string lsa = ReadJob("T1N2E.LSA");
  user.messages.clear();
  {
    FailingWrites disk(".sd");
    WeightRebuild(session);
  }
  EXPECT_EQ(ReadJob("T1N2E.LSA"), lsa);
  EXPECT_EQ(ReadJob("T1N2E.sd"), Text({"   0.020   0.020", "sd line of a measurement"}));
  EXPECT_TRUE(processes.launches.empty() && !JobHas("T1N2E.002") && !JobHas("T1N2E.t$2"));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_NE(user.messages[0].text.find("T1N2E.sd"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
