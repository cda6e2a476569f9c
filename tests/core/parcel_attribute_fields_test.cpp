// The attribute line of a parcel split into typed fields.

#include <gtest/gtest.h>

#include "model/text.h"
#include "parcels/parcel_attribute_fields.h"
#include "test_support.h"

namespace tessel {
namespace {

// Every field of the line, "-" for a number that is not there.
std::string Fields(const std::string& line) {
  const ParcelAttributeFields a = ParseParcelAttributes(line);
  EXPECT_EQ(a.line, line);
  return test::Joined({a.sectionText, a.section ? std::to_string(*a.section) : "-", a.nominalLocation,
                       a.surveyTypeLetter, a.surveyTypeCaption, a.surveyNumber, a.suffix, a.noteLetter, a.noteCaption,
                       a.acreage ? ShortestText(*a.acreage) : "-", a.tail});
}

TEST(ParcelAttributeFields, SplitsEveryFieldByItsColumnsAndNeverReadsPastTheLine) {
  EXPECT_EQ(Fields("Sec_014 K T_M 18304B1   A  156.901 T12NR04E-14-00042"),
            "014|14|K|M|Mineral Survey|18304|B1|A|Approximate acreage figure|156.901|T12NR04E-14-00042");
  // An aliquot part with no location letter, number, suffix or note: empty fields.
  EXPECT_EQ(Fields("SEC_001   T_A               156.901"), "001|1||A|Aliquot Part|||||156.901|");
  // Columns that hold no number give none.
  EXPECT_EQ(Fields("Sec_1A2 B T_%                 12,5"), "1A2|-|B|%||||||-|");
  // Short and empty lines.
  EXPECT_EQ(Fields(""), "|-||||||||-|");
  EXPECT_EQ(Fields("Sec_006 B T_"), "006|6|B|||||||-|");
}

TEST(ParcelAttributeFields, CaptionsOfTheListsEdgeLetters) {
  EXPECT_EQ(SurveyTypeCaption("K"), "Block & lot in Townsite");
  EXPECT_EQ(SurveyTypeCaption("2"), "Tract (non-cadastral)");
  EXPECT_EQ(SurveyTypeCaption("?"), "Unknown");
  EXPECT_EQ(SurveyTypeCaption("V") + SurveyTypeCaption("l"), "");
  EXPECT_EQ(ParcelNoteCaption("S"), "Salt water when Survey Type is \"W\"");
  EXPECT_EQ(ParcelNoteCaption("X"), "Exceptions");
  EXPECT_EQ(ParcelNoteCaption("B") + ParcelNoteCaption("AX"), "");
}

}  // namespace
}  // namespace tessel
