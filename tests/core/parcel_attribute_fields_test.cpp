// The attribute line of a parcel split into typed fields.

#include <gtest/gtest.h>

#include "parcels/parcel_attribute_fields.h"

namespace tessel {
namespace {

TEST(ParcelAttributeFields, SplitsEveryFieldByItsColumns) {
  const std::string line = "Sec_014 K T_M 18304B1   A  156.901 T12NR04E-14-00042";
  const ParcelAttributeFields a = ParseParcelAttributes(line);
  EXPECT_EQ(a.line, line);
  EXPECT_EQ(a.sectionText, "014");
  ASSERT_TRUE(a.section.has_value());
  EXPECT_EQ(*a.section, 14);
  EXPECT_EQ(a.nominalLocation, "K");
  EXPECT_EQ(a.surveyTypeLetter, "M");
  EXPECT_EQ(a.surveyTypeCaption, "Mineral Survey");
  EXPECT_EQ(a.surveyNumber, "18304");
  EXPECT_EQ(a.suffix, "B1");
  EXPECT_EQ(a.noteLetter, "A");
  EXPECT_EQ(a.noteCaption, "Approximate acreage figure");
  ASSERT_TRUE(a.acreage.has_value());
  EXPECT_DOUBLE_EQ(*a.acreage, 156.901);
  EXPECT_EQ(a.tail, "T12NR04E-14-00042");
}

TEST(ParcelAttributeFields, BlankColumnsGiveEmptyFieldsAndNoNumbers) {
  // An aliquot part with no location letter, number, suffix or note.
  const ParcelAttributeFields a = ParseParcelAttributes("SEC_001   T_A               156.901");
  EXPECT_EQ(a.sectionText, "001");
  EXPECT_EQ(a.section, 1);
  EXPECT_EQ(a.nominalLocation, "");
  EXPECT_EQ(a.surveyTypeLetter, "A");
  EXPECT_EQ(a.surveyTypeCaption, "Aliquot Part");
  EXPECT_EQ(a.surveyNumber, "");
  EXPECT_EQ(a.suffix, "");
  EXPECT_EQ(a.noteLetter, "");
  EXPECT_EQ(a.noteCaption, "");
  EXPECT_EQ(a.tail, "");

  const ParcelAttributeFields odd = ParseParcelAttributes("Sec_1A2 B T_%                 12,5");
  EXPECT_EQ(odd.sectionText, "1A2");
  EXPECT_FALSE(odd.section.has_value());
  EXPECT_EQ(odd.surveyTypeLetter, "%");
  EXPECT_EQ(odd.surveyTypeCaption, "");
  EXPECT_FALSE(odd.acreage.has_value());
}

TEST(ParcelAttributeFields, ShortAndEmptyLinesNeverReachPastTheirEnd) {
  const ParcelAttributeFields empty = ParseParcelAttributes("");
  EXPECT_EQ(empty.sectionText, "");
  EXPECT_FALSE(empty.section.has_value());
  EXPECT_FALSE(empty.acreage.has_value());

  const ParcelAttributeFields cut = ParseParcelAttributes("Sec_006 B T_");
  EXPECT_EQ(cut.section, 6);
  EXPECT_EQ(cut.nominalLocation, "B");
  EXPECT_EQ(cut.surveyTypeLetter, "");
  EXPECT_EQ(cut.surveyNumber, "");
}

TEST(ParcelAttributeFields, CaptionsOfTheListsEdgeLetters) {
  EXPECT_EQ(SurveyTypeCaption("K"), "Block & lot in Townsite");
  EXPECT_EQ(SurveyTypeCaption("2"), "Tract (non-cadastral)");
  EXPECT_EQ(SurveyTypeCaption("?"), "Unknown");
  EXPECT_EQ(SurveyTypeCaption("V"), "");
  EXPECT_EQ(SurveyTypeCaption("l"), "");
  EXPECT_EQ(ParcelNoteCaption("S"), "Salt water when Survey Type is \"W\"");
  EXPECT_EQ(ParcelNoteCaption("X"), "Exceptions");
  EXPECT_EQ(ParcelNoteCaption("B"), "");
  EXPECT_EQ(ParcelNoteCaption("AX"), "");
}

}  // namespace
}  // namespace tessel
