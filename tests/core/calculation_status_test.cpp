// What frmADD tells of a definition from the report .sub, the run of splitplan behind "Compute "
// and the test button, and the hand-over of a picked point to the open dialogs in their order.

#include <gtest/gtest.h>

#include "calculations/computing.h"
#include "model/paths.h"
#include "model/point_picks.h"
#include "test_support.h"

namespace tessel {
namespace {

using test::Row;

const std::string kTraverse = Row({{2, "1"}, {4, "100200"}, {11, "100100"}});
const std::string kConnect = Row({{2, "3"}, {4, "100100"}, {11, "100200"}});

TEST(CalculationStatus, ReportLinesNonComputableListAndConnectingLines) {
  const std::vector<std::string> sub = {
      "REPORT",
      Row({{1, "CORNER"}, {9, "100200"}, {20, "PROPORTIONED"}}),
      "   FROM 100100 DIST 12.5",
      "   CHECK OK",
      "  LINE 100100 100200",
      Row({{1, "LINE"}, {25, "100100"}, {42, "100200"}}),
      "WARNING - FOLLOWING CORNERS IN ADD LIST COULD NOT BE COMPUTED",
      "  100200",
      "  100300",
      "END OF ADD NON-COMPUTABLE LIST",
      "  100400",
  };
  // The report wins over the non-computable list; its lines come left-trimmed up to the next record.
  EXPECT_EQ(StatusFromReport(sub, kTraverse),
            "Status: \r\n" + sub[1] + "\r\nFROM 100100 DIST 12.5\r\nCHECK OK");
  EXPECT_EQ(StatusFromReport(sub, Row({{2, "2"}, {4, "100300"}})),
            "Status: \r\nCORNER 100300 COULD NOT BE COMPUTED AS DEFINED.\r\nCHECK DEFINITION AND TRY AGAIN.");
  // Past the end of the list nothing counts.
  EXPECT_EQ(StatusFromReport(sub, Row({{2, "1"}, {4, "100400"}})), kStatusNotFound);
  EXPECT_EQ(StatusFromReport(sub, kConnect), "Status: \r\n" + sub[5]);
  EXPECT_EQ(StatusFromReport(sub, Row({{2, "3"}, {4, "100200"}, {11, "100100"}})), kStatusLineNotFound);
  EXPECT_EQ(StatusFromReport({}, "garbage"), kStatusNotFound);
}

class CalculationRun : public test::JobFixture {
 protected:
  CalculationRun() { UseJob(); }
};

TEST_F(CalculationRun, StatusWithoutReportAndComputeScripts) {
  EXPECT_EQ(DefinitionStatus(session, kTraverse), kStatusNotComputed);
  ComputeCalculations(session, ComputeAllAnswers());
  EXPECT_EQ(ReadJob("t1$.001"), "6\r\n3\r\n");
  EXPECT_EQ(ReadJob("temp.bat"),
            std::string(1, '"') + ToolDir() + PathSeparator() + "splitplan.exe\"  <\"" + JobDir() + "t1$.001\"\r\nexit\r\n\r\n");
  ASSERT_EQ(processes.launches.size(), 1u);
  EXPECT_EQ(processes.launches[0].kind, "Run");
  EXPECT_EQ(user.status[1], (std::vector<std::string>{kStatusComputing, ""}));
  EXPECT_EQ(user.pointers, (std::vector<Pointer>{Pointer::Hourglass, Pointer::Default}));
  ComputeCalculations(session, TestRunAnswers());
  EXPECT_EQ(ReadJob("t1$.001"), "6\r\n2\r\n");
}

// A dialog that holds its fields' texts and counts its raises.
struct FakeDialog {
  std::vector<std::string> texts;
  int raised = 0;
  PickTarget Target(PickDialog dialog, WhenFull whenFull = WhenFull::LastTakes) {
    PickTarget t;
    t.dialog = dialog;
    t.whenFull = whenFull;
    t.fields = [this] {
      std::vector<PickField> fields;
      for (std::size_t k = 0; k < texts.size(); ++k) fields.push_back({texts[k], [this, k](const std::string& id) { texts[k] = id; }});
      return fields;
    };
    t.raise = [this] { ++raised; };
    return t;
  }
};

TEST(PointPicks, OfferedInTheOrderOfTheDialogsWhateverTheOrderTheyOpened) {
  PointPickDispatcher picks;
  FakeDialog notWiz{{"", ""}}, calcs{{"100100", ""}}, dblCor{{"", ""}}, intersect{{"1", "2"}};
  picks.Register(notWiz.Target(PickDialog::NotWiz2));
  const int calcsHandle = picks.Register(calcs.Target(PickDialog::AddCalcs));
  const int dblHandle = picks.Register(dblCor.Target(PickDialog::DoubleCorner));
  EXPECT_EQ(picks.Offer("200200"), PickDialog::DoubleCorner);
  EXPECT_EQ(dblCor.texts, (std::vector<std::string>{"200200", ""}));
  EXPECT_EQ(picks.Offer("200300"), PickDialog::DoubleCorner);
  EXPECT_EQ(picks.Offer("200400"), PickDialog::DoubleCorner);  // both full: the second is overwritten
  EXPECT_EQ(dblCor.texts, (std::vector<std::string>{"200200", "200400"}));
  EXPECT_EQ(dblCor.raised, 3);
  picks.Unregister(dblHandle);
  EXPECT_EQ(picks.Offer("300300"), PickDialog::AddCalcs);
  EXPECT_EQ(calcs.texts, (std::vector<std::string>{"100100", "300300"}));
  // A full frmIntersect drops the identifier: no other dialog gets it.
  picks.Register(intersect.Target(PickDialog::Intersect, WhenFull::Dropped));
  EXPECT_EQ(picks.Offer("400400"), PickDialog::Intersect);
  EXPECT_EQ(intersect.texts, (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(notWiz.texts, (std::vector<std::string>{"", ""}));
  // A dialog with no field for a point passes it on.
  intersect.texts.clear();
  picks.Unregister(calcsHandle);
  EXPECT_EQ(picks.Offer("500500"), PickDialog::NotWiz2);
  EXPECT_EQ(notWiz.texts, (std::vector<std::string>{"500500", ""}));
  PointPickDispatcher empty;
  EXPECT_FALSE(empty.Offer("1"));
  EXPECT_EQ(ChoosePickField({" ", "x"}, WhenFull::Dropped), 0);
  EXPECT_EQ(ChoosePickField({"a", "x"}, WhenFull::Dropped), -1);
  EXPECT_EQ(ChoosePickField({}, WhenFull::LastTakes), -1);
}

TEST_F(CalculationRun, PickButtonSwitchesTheCanvasTool) {
  SetPointPick(session, true);
  EXPECT_TRUE(session.selection.PointPickActive);
  EXPECT_EQ(session.ToolMode, ToolMode::PickPoints);
  EXPECT_EQ(user.statusNow[1], kStatusSelectPoint);
  SetPointPick(session, false);
  EXPECT_EQ(session.ToolMode, ToolMode::ZoomPan);
  EXPECT_EQ(user.statusNow[1], kStatusPanZoom);
  EXPECT_TRUE(user.checked["Zoom"]);
}

}  // namespace
}  // namespace tessel
