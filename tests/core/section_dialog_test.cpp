// The township diagram and the section dialog without their widgets: colours from .sub and
// .irr, the click on a section, the popup by position, and what each dialog does to the store.

#include <gtest/gtest.h>

#include <initializer_list>
#include <tuple>
#include <utility>

#include "subdivision/irr_file.h"
#include "subdivision/irr_save.h"
#include "subdivision/nominal.h"
#include "subdivision/section_editor.h"
#include "subdivision/township.h"
#include "test_support.h"

namespace tessel {
namespace {

using test::Row;

// A .sub as splitplan reports: a section heading line, then a status block keyed by the centre.
std::vector<std::string> SubFile() {
  return {Row({{1, "SUBDIVISION REPORT"}, {36, "SECTION "}, {44, "5"}}),
          Row({{1, "status of section"}, {63, "240640"}}),
          "  corners proportioned",
          "  quarter corners set",
          " *** end",
          Row({{36, "SECTION "}, {44, "36"}}),
          Row({{36, "SECTION:"}, {44, "12"}}),
          Row({{36, "SECTION "}, {44, "40"}})};
}

// The shades of the given sections or positions, in that order.
template <typename Shades>
std::vector<typename Shades::value_type> ShadesAt(const Shades& shades, std::initializer_list<int> at) {
  std::vector<typename Shades::value_type> out;
  for (int k : at) out.push_back(shades[static_cast<std::size_t>(k)]);
  return out;
}

TEST(TownshipDiagram, SectionButtonsRunBackAndForthFromTheNortheast) {
  EXPECT_EQ((std::vector{SectionAt(0, 5), SectionAt(0, 0), SectionAt(1, 0), SectionAt(1, 5), SectionAt(5, 0),
                         SectionAt(5, 5)}),
            (std::vector{1, 6, 7, 12, 31, 36}));
  // Each button sits where its centre is.
  for (int row = 0; row < 6; ++row) {
    for (int column = 0; column < 6; ++column) {
      EXPECT_EQ(NominalId(SectionAt(row, column), 1), (140 + 100 * column) * 1000 + 640 - 100 * row);
    }
  }
}

TEST(TownshipDiagram, ScansOfSubAndIrr) {
  const std::string sub = test::Text(SubFile());
  EXPECT_EQ(ReportedSections(sub), (std::vector<int>{5, 36}));
  EXPECT_EQ(SectionStatusText(sub, 5), Row({{1, "status of section"}, {63, "240640"}}) +
                                           "\r\n  corners proportioned\r\n  quarter corners set");
  EXPECT_EQ(SectionStatusText(sub, 6), kNoIrregularSubdivision);
  const std::string irr = test::Text({"  640640  ", "640640 640641", "540640", "999999", "64064", "140140"});
  EXPECT_EQ(DefinedSections(irr), (std::vector<int>{1, 2, 31}));
}

class SectionDialog : public test::JobFixture {
 protected:
  SectionDialog() { UseJob(); }
};

TEST_F(SectionDialog, TogglesColourTheDiagramFromTheFiles) {
  TownshipDiagram diagram;
  SetStatusMode(session, diagram, true);
  EXPECT_EQ(diagram.shades[5], Shade::System);  // no .sub yet
  WriteJob("T1N2E.sub", SubFile());
  WriteJob("T1N2E.irr", WriteIrrBlock(session.sectionDefinitions, 7));
  SetStatusMode(session, diagram, true);
  SetDefineMode(session, diagram, true);
  EXPECT_EQ(ShadesAt(diagram.shades, {5, 36, 7, 12}),
            (std::vector{Shade::Yellow, Shade::Yellow, Shade::Green, Shade::System}));
  SetStatusMode(session, diagram, false);
  for (int s = 1; s <= 36; ++s) EXPECT_EQ(diagram.shades[static_cast<std::size_t>(s)], Shade::System) << s;
}

TEST_F(SectionDialog, AClickShowsTheStatusAndOpensTheSectionFromIrr) {
  SetPoints({{"300601", 1.0, 2.0}, {"240600", 3.0, 4.0}});
  WriteJob("T1N2E.sub", SubFile());
  SectionDefinitionStore file;
  file.sections[5].Substitute[3] = 300601;
  file.sections[5].QuarterFlag[2] = true;
  file.sections[5].NonComputable[7] = 240600;
  WriteJob("T1N2E.irr", WriteIrrBlock(file, 5));

  TownshipDiagram diagram;
  SectionForm form;
  // With neither mode on nothing shows.
  SectionClick click = ClickSection(session, diagram, 5, form);
  EXPECT_FALSE(click.showStatus || click.openEditor);
  EXPECT_EQ(diagram.statusText, kNoIrregularSubdivision);

  SetStatusMode(session, diagram, true);
  diagram.defineMode = true;
  click = ClickSection(session, diagram, 5, form);
  EXPECT_TRUE(click.showStatus && click.openEditor);
  EXPECT_EQ(diagram.statusText, SectionStatusText(test::Text(SubFile()), 5));
  EXPECT_EQ(diagram.shades[5], Shade::Green);
  EXPECT_EQ(test::Joined({diagram.statusCaption, form.caption, form.labels[3], form.labels[2]}),
            "Section 5|Section 5|300601|300700");
  EXPECT_EQ(ShadesAt(form.shades, {3, 7}), (std::vector{Shade::Yellow, Shade::Red}));
  EXPECT_EQ(ShadesAt(form.emphasised, {3, 7, 2}), (std::vector<bool>{true, true, false}));

  // A section .sub says nothing about keeps the text.
  click = ClickSection(session, diagram, 6, form);
  EXPECT_TRUE(click.showStatus);
  EXPECT_EQ(diagram.statusText, kNoIrregularSubdivision);
}

TEST_F(SectionDialog, PopupEntriesByPositionRange) {
  const std::map<std::string, std::vector<int>> enabled = {
      {"mnuIRRSubstitution", {1, 2, 6, 10, 14, 18, 25}}, {"mnuIRRCenter", {1}},
      {"mnuIRRDoubleCorner", {2, 3, 4, 5}},              {"mnuIRRQuarterNC", {6, 7, 8, 9}},
      {"mnuIRRProportion", {10, 11, 12, 13}},            {"mnuIRRQuarterCenter", {14, 15, 16, 17}},
      {"mnuIRRExteriorNC", {18, 19, 20, 21, 22, 23, 24, 25}},
      {"mnuIRROffset", {6, 7, 8, 9, 18, 19, 20, 21, 22, 23, 24, 25}}};
  for (const auto& entry : SectionPopupEntries()) {
    int count = 0;
    for (int p = 1; p <= 25; ++p) count += PopupEnabled(entry.name, p) ? 1 : 0;
    const auto& expected = enabled.at(entry.name);
    for (int p : expected) EXPECT_TRUE(PopupEnabled(entry.name, p)) << entry.name << " " << p;
    if (std::string(entry.name) != "mnuIRRSubstitution") EXPECT_EQ(count, static_cast<int>(expected.size())) << entry.name;
    else EXPECT_EQ(count, 25);
  }
}

TEST_F(SectionDialog, DiagramPlacesFollowTheSection) {
  // The NW corner, the SE corner, the centre, the north line's east half.
  for (const auto& [position, row, column] : {std::tuple{5, 0, 0}, {3, 4, 4}, {1, 2, 2}, {25, 0, 3}}) {
    EXPECT_EQ(std::pair(PositionPlace(position).row, PositionPlace(position).column), std::pair(row, column)) << position;
  }
  std::set<std::pair<int, int>> places;
  for (int p = 1; p <= 25; ++p) places.insert({PositionPlace(p).row, PositionPlace(p).column});
  EXPECT_EQ(places.size(), 25u);
}

TEST_F(SectionDialog, SubstitutionDoubleCornerToggles) {
  SectionForm form = OpenSection(session, 1);
  EXPECT_EQ(SubstitutionLabel(form, 6), "Substitution for nominal 700640");
  ApplySubstitution(session, form, 6, "700641");
  ApplySubstitution(session, form, 7, "640600");
  ApplySubstitution(session, form, 8, "");
  SectionDefinitions& d = session.sectionDefinitions.sections[1];
  EXPECT_EQ(std::tuple(d.Substitute[0], d.Substitute[8]), std::tuple(1, 0));
  EXPECT_EQ(ShadesAt(form.shades, {6, 7}), (std::vector{Shade::Yellow, Shade::System}));

  // The non-computable and offset marks take the substitute.
  ToggleNonComputable(session, form, 6);
  EXPECT_EQ(std::tuple(d.NonComputable[6], form.shades[6]), std::tuple(700641, Shade::Red));
  ToggleNonComputable(session, form, 6);
  EXPECT_EQ(d.NonComputable[6], 0);
  EXPECT_FALSE(d.QuarterFlag[1]);
  ToggleOffset(session, form, 20);
  EXPECT_EQ(std::tuple(d.Offset[20], form.shades[20]), std::tuple(660600, Shade::Cyan));
  ToggleOffset(session, form, 10);  // not an offset position
  EXPECT_FALSE(d.OffsetFlag[10]);

  EXPECT_EQ(DoubleCornerHeading(form, 3), "SE Corner of Section 1");
  EXPECT_FALSE(ApplyDoubleCorner(session, form, 3, {{{"700601", "N"}, {"", "E"}}}));
  EXPECT_EQ(session.sectionDefinitions.DoubleCornerCount, 0);
  EXPECT_TRUE(ApplyDoubleCorner(session, form, 3, {{{"700601", "N"}, {"700602", "e"}}}));
  EXPECT_TRUE(ApplyDoubleCorner(session, form, 3, {{{"700603", "S"}, {"700604", "W"}}}));
  ASSERT_EQ(session.sectionDefinitions.DoubleCornerCount, 2);
  EXPECT_EQ(session.sectionDefinitions.DoubleCorners[1], (DoubleCornerRecord{700600, 700603, 2, 3}));
  EXPECT_EQ(session.sectionDefinitions.DoubleCorners[2], (DoubleCornerRecord{700600, 700604, 2, 4}));
  EXPECT_EQ(std::tuple(bool(d.DoubleFlag[2]), form.shades[3]), std::tuple(true, Shade::Green));
  // The dialog of a corner is filled from the records of the corner before it.
  EXPECT_EQ(DoubleCornerPrefill(session, form, 3)[0].point, "");
  const auto next = DoubleCornerPrefill(session, form, 4);
  EXPECT_EQ(test::Joined({next[0].point, next[0].direction, next[1].point, next[1].direction}), "700603|S|700604|W");
  DeleteDoubleCorner(session, form, 3);
  EXPECT_EQ(std::tuple(session.sectionDefinitions.DoubleCornerCount, bool(d.DoubleFlag[2]), form.shades[3]),
            std::tuple(0, false, Shade::System));
}

TEST_F(SectionDialog, ProportionsAndLineDefinitions) {
  SectionForm form = OpenSection(session, 2);
  EXPECT_EQ(ProportionHeading(form, 11), "Proportion definition for CS 1/16 Section 2");
  ApplyProportion(session, form, 11, "19.8", "", false);
  const SectionDefinitions& d = session.sectionDefinitions.sections[2];
  EXPECT_EQ(d.Proportions[2], (ProportionDefinition{"540620", "19.800", "0.000"}));
  EXPECT_EQ(form.shades[11], Shade::Green);
  ApplyProportion(session, form, 11, "19.8", "40", true);
  EXPECT_EQ(std::tuple(bool(d.ProportionFlag[2]), d.Proportions[2], form.shades[11]),
            std::tuple(false, ProportionDefinition{}, Shade::System));

  EXPECT_EQ(IntersectHeading(form, 1), "For Center of Section 2, Point 540640");
  EXPECT_EQ(IntersectHeading(form, 16), "For Southwest 1/16th Section 2, Point 520620");
  // Two non-existent lines need no field; a line with no type, or a used field left blank, is
  // refused by its line and field.
  EXPECT_FALSE(CheckIntersect({"7", "", "", "", "", "7", "", "", "", ""}));
  const auto blank = CheckIntersect(LinePair{});
  ASSERT_TRUE(blank);
  EXPECT_EQ(blank->message, "No line type is chosen for the North-South line: choose one under \"North-South line is:\".");
  EXPECT_EQ(std::pair(blank->line, blank->field), std::pair(0, 0));
  const auto field = CheckIntersect({"1", "", "", "", "", "2", "100100", "", "100300", "100400"});
  ASSERT_TRUE(field);
  EXPECT_EQ(field->message, "The field \"To\" under \"First Line\" of the East-West line is empty.");
  EXPECT_EQ(std::pair(field->line, field->field), std::pair(1, 2));
  ApplyIntersect(session, form, 1, {"7", "", "", "", "", "7", "", "", "", ""});
  EXPECT_EQ(form.shades[1], Shade::Red);
  ApplyIntersect(session, form, 15, {"3", "1", "45.3015", "2", "1", "6", "520620", "40.000", "1", "0.5"});
  EXPECT_EQ(form.shades[15], Shade::Green);
  EXPECT_EQ(d.QuarterCentre[2], (LinePair{"3", "1", "45.30150", "2", "1.00000", "6", "520620", "40.000", "1", ".50000"}));
  EXPECT_EQ(IntersectPrefill(session, form, 15), d.QuarterCentre[2]);
  EXPECT_EQ(LineFieldLabels(6), (std::array<std::string, 4>{"Point From", "Distance (chains)", "Quadrant",
                                                            "Bearing (DD.MMSS)"}));
  EXPECT_EQ(LineGroupLabels(4)[0], "Parallel to:");
  EXPECT_EQ(LineFieldLabels(7)[0], "");
}

TEST_F(SectionDialog, ResetKeepsDoubleCornersAndClearsTheOffsetsOfSection36) {
  SectionForm form = OpenSection(session, 3);
  ApplySubstitution(session, form, 2, "500701");
  ToggleOffset(session, form, 7);
  ApplyDoubleCorner(session, form, 2, {{{"500702", "N"}, {"500703", "E"}}});
  session.sectionDefinitions.sections[36].OffsetFlag[7] = true;
  ResetSection(session, form);
  const SectionDefinitions& d = session.sectionDefinitions.sections[3];
  EXPECT_EQ(std::tuple(d.Substitute[2], bool(d.DoubleFlag[1]), session.sectionDefinitions.DoubleCornerCount,
                       bool(d.OffsetFlag[7]), bool(session.sectionDefinitions.sections[36].OffsetFlag[7])),
            std::tuple(0, false, 2, true, false));
  EXPECT_EQ(std::tuple(form.labels[2], form.shades[7]), std::tuple("500700", Shade::System));
  // What stayed is written at the next save.
  ASSERT_TRUE(SaveSection(session, 3).saved);
  SectionDefinitionStore read;
  ReadIrrBlock(ReadJob("T1N2E.irr"), 3, read);
  EXPECT_EQ(std::tuple(read.DoubleCornerCount, bool(read.sections[3].OffsetFlag[7])), std::tuple(2, true));
}

TEST_F(SectionDialog, OpeningTheDiagramNeedsAJobAndBacksUpIrrOnce) {
  session.JobBase.clear();
  EXPECT_FALSE(OpenTownshipDiagram(session));
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"You must first open or create a project"});
  UseJob();
  WriteJob("T1N2E.irr", {"first"});
  EXPECT_TRUE(OpenTownshipDiagram(session));
  WriteJob("T1N2E.irr", {"second"});
  EXPECT_TRUE(OpenTownshipDiagram(session));
  EXPECT_EQ(ReadJob("T1N2E.irZ"), "first\r\n");
}

TEST_F(SectionDialog, AfterASaveTheSavedSectionsReturnToTheSystemColourUntilDefineColoursThem) {
  TownshipDiagram diagram;
  diagram.shades[4] = Shade::Green;
  diagram.shades[9] = Shade::Yellow;
  RefreshAfterSave(session, diagram, {4, 9});
  EXPECT_EQ(ShadesAt(diagram.shades, {4, 9}), (std::vector{Shade::System, Shade::System}));
  WriteJob("T1N2E.irr", {"340640"});
  diagram.defineMode = true;
  RefreshAfterSave(session, diagram, {4});
  EXPECT_EQ(diagram.shades[4], Shade::Green);
}

}  // namespace
}  // namespace tessel
