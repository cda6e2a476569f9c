// The survey identifiers of .sid and the hidden line segments of .not.

#include <string>
#include <vector>

#include "calculations/note_file.h"
#include "model/fault.h"
#include "model/text.h"
#include "surveys/survey_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class SurveyAndNoteFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
};

TEST_F(SurveyAndNoteFiles, SurveysKeepTheirSLineAndTheRangeOfTheirCLines) {
  const std::vector<std::string> sid = {
      Row({{1, "SGLO 1856"}, {20, "  0.500"}, {27, "   100.0"}, {35, "    30.0"}}) + "   ",
      "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>",
      "C a comment, kept word for word",
      "not a survey line",
      "",
      "SBLM 1978",
      "S18CHARACTERSNAME01",
      "C DT:G     <GROUND DISTANCES>",
  };
  for (const Eol eol : {Eol::CrLf, Eol::Lf}) {
    WriteJob("T1N2E.sid", sid, eol);
    user.status.clear();
    ReadSurveys(session);  // a second read starts again from 0
    ASSERT_EQ(session.surveys.SurveyCount, 3);
    ASSERT_EQ(session.surveys.SurveyCaptionCount, 3);
    const SurveyEntry& first = session.surveys.SurveyTable.get(1);
    EXPECT_EQ(first.sLine, RTrim(sid[0]));
    EXPECT_EQ(SurveyName(first), "GLO 1856");
    EXPECT_EQ(first.first, 1);
    EXPECT_EQ(first.last, 2);
    // A survey without C lines: its last lies below its first.
    const SurveyEntry& second = session.surveys.SurveyTable.get(2);
    EXPECT_EQ(SurveyName(second), "BLM 1978");
    EXPECT_EQ(second.first, 3);
    EXPECT_EQ(second.last, 2);
    const SurveyEntry& third = session.surveys.SurveyTable.get(3);
    EXPECT_EQ(SurveyName(third), "18CHARACTERSNAME01");
    EXPECT_EQ(third.first, 3);
    EXPECT_EQ(third.last, 3);
    EXPECT_EQ(session.surveys.SurveyCaptions.get(2), "C a comment, kept word for word");
    EXPECT_EQ(session.surveys.SurveyCaptions.get(3), "C DT:G     <GROUND DISTANCES>");
    EXPECT_EQ(user.status[1], std::vector<std::string>{"Reading Survey Identifiers"});
  }
}

TEST_F(SurveyAndNoteFiles, SurveysPastTheTableAreAFaultForTheCaller) {
  std::vector<std::string> sid;
  for (int s = 1; s <= 201; ++s) sid.push_back("SSURVEY" + std::to_string(s));
  WriteJob("T1N2E.sid", sid);
  EXPECT_THROW(ReadSurveys(session), RuntimeFault);
  EXPECT_EQ(SurveyName(session.surveys.SurveyTable.get(200)), "SURVEY200");
}

TEST_F(SurveyAndNoteFiles, NoteSegmentsResolveToPointIndexes) {
  SetPoints({{"100100", 0, 0}, {"100200", 0, 0}, {"100300", 0, 0}, {"100100", 1, 1}});
  WriteJob("T1N2E.not", {"     2", "100100", "", "100200", "     3", "100100 100200", "", "100300 999999",
                         "  1002 100300"},
           Eol::Lf);
  ReadNotes(session);
  ASSERT_EQ(session.notes.NoteLineCount, 3);
  const std::pair<int, int> expected[] = {{4, 2}, {3, 0}, {0, 3}};
  for (int k = 1; k <= 3; ++k) {
    EXPECT_EQ(session.notes.NoteLineEnds.get(k).from, expected[k - 1].first) << "segment " << k;
    EXPECT_EQ(session.notes.NoteLineEnds.get(k).to, expected[k - 1].second) << "segment " << k;
  }

  // A short file keeps the segments read; a missing one gives none.
  WriteJob("T1N2E.not", {"     0", "     3", "100200 100300"});
  ReadNotes(session);
  EXPECT_EQ(session.notes.NoteLineCount, 1);
  EXPECT_EQ(session.notes.NoteLineEnds.get(1).from, 2);
  std::filesystem::remove(jobPath / "T1N2E.not");
  ReadNotes(session);
  EXPECT_EQ(session.notes.NoteLineCount, 0);

  // The table holds 1000 segments.
  std::vector<std::string> many = {"     0", "  1001"};
  for (int k = 1; k <= 1001; ++k) many.push_back("100100 100300");
  WriteJob("T1N2E.not", many);
  ReadNotes(session);
  EXPECT_EQ(session.notes.NoteLineCount, 1000);
  EXPECT_EQ(session.notes.NoteLineEnds.get(1000).to, 3);
}

}  // namespace
}  // namespace tessel::test
