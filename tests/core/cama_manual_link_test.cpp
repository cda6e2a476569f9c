// Linking by hand on a loaded link file: frmCama, frmCamaParcel's Apply, Multi-att, OK and
// Cancel, Delete, the move of a link point, the unused report, and the plot and picks of the
// canvas while "CAMA Parcels" is checked.

#include <gtest/gtest.h>

#include "cama/link_chain.h"
#include "cama/manual_link.h"
#include "cama_test_support.h"
#include "model/selection_checks.h"
#include "viewer/drawing.h"
#include "viewer/picking.h"
#include "test_support.h"

namespace tessel::test {
namespace {

constexpr const char* kCode = "120N040E";

class CamaManualTest : public JobFixture {
 protected:
  CamaManualTest() {
    UseJob("T12NR04E");
    WriteJob("T12NR04E.cama", {CamaLine("11111107100000001LONGKEY-0001", "BROWN", kCode, "NE"),
                               CamaLine("22222207400000002", "JONES", kCode, "LOT 3 OF THE SOUTHEAST"),
                               CamaLine("33333305200000003", "SMITH", kCode, "SW"),
                               CamaLine("22222207400000002", "JONES", kCode, "SE CORNER LOT")});
    AddParcel(session, "Sec_007 A T_A", 1000, 2000, " 100100 100200");
    AddParcel(session, "Sec_007 P T_L 3", 1100, 2100, " 100200 100300");
    LinkParcelsWithCama(session);
    LoadLinkFile(session);
    session.checks.mnuViewCama = true;
  }

  // Puts link record r in frmTesting's list as the pick would.
  void Select(int r) {
    Selection& sel = session.selection;
    sel.SelectedParcels.at(static_cast<int>(sel.ParcelList().size())) = static_cast<std::int16_t>(r);
    sel.AddParcelEntry(session.cama.LinkGeocode.get(r), {PickKind::LinkRecord, r, session.cama.LinkReading});
    ++session.SelectionCount;
  }

  FixedDate date_;
};

TEST_F(CamaManualTest, FrmCamaShowsTheRecordOfALinkedRow) {
  ASSERT_EQ(session.cama.LinkCount, 2);
  ASSERT_EQ(session.cama.LinkGeocode.get(1), "11111107100000001");
  Select(1);
  Select(2);
  EXPECT_EQ(CamaListClicked(session, 0), 1);
  EXPECT_EQ(user.shownForms.back(), "frmCama");
  EXPECT_EQ(session.cama.CamaText, PadTo("NE", 30) + "\r\n" + std::string(30, ' ') + "\r\n" + std::string(30, ' ') +
                                       "\r\n" + std::string(30, ' '));
  EXPECT_EQ(session.cama.CamaLabels[0], "Owners Name " + PadTo("BROWN", 30));
  EXPECT_EQ(session.cama.CamaLabels[1], "geocode = 11111107100000001");
  EXPECT_EQ(session.cama.CamaLabels[2], "Section 07");
  // A provisional code stands in no CAMA record: the dialog stays closed.
  user.shownForms.clear();
  EXPECT_EQ(CamaListClicked(session, 1), 2);
  EXPECT_TRUE(user.shownForms.empty());

  // The canvas: redrawn, the ring at width 2, the red circle of 120.
  canvas.calls.clear();
  SetPoints({{"100100", 10, 10}, {"100200", 20, 20}, {"100300", 30, 30}});
  ParcelsClicked(session, 0);
  const auto circles = canvas.Of("Circle");
  ASSERT_EQ(circles.size(), 1u);
  EXPECT_EQ(circles[0], (CanvasCall{"Circle", {1000, 2000, 120}, 0xFF0000u, {}}));
  EXPECT_EQ(canvas.Of("Line").size(), 1u);
}

TEST_F(CamaManualTest, ApplyThenCancelRestoresApplyThenOkSaves) {
  Select(2);
  EXPECT_EQ(OpenCamaParcels(session, -1), 0);
  EXPECT_EQ(session.cama.CamaParcelCaption, "Cama Parcels for Section 07");
  EXPECT_EQ(session.cama.CamaParcelRows,
            (std::vector<std::string>{"Sec 07 NE", "Sec 07 LOT 3 OF THE SOUTHEAST", "Sec 07 SE CORNER LOT"}));
  EXPECT_EQ(CamaParcelClicked(session, -1), 2);
  EXPECT_EQ(session.cama.CamaParcelLabels[1], "geocode = " + PadTo("22222207400000002", 38));

  CamaApply(session, -1, 0);
  EXPECT_EQ(user.messages.back().text, kMsgSelectCamaParcel);
  EXPECT_EQ(user.messages.back().icon, Icon::Stop);

  const std::string mtc = ReadJob("T12NR04E.mtc");
  canvas.calls.clear();
  CamaApply(session, 1, 0);
  EXPECT_EQ(session.cama.LinkGeocode.get(2), "22222207400000002");
  EXPECT_EQ(session.cama.LinkColor.get(2), kLinkGreen);
  EXPECT_EQ(canvas.calls.back(), (CanvasCall{"PenWidth", {1}, 0, {}}));
  EXPECT_EQ(canvas.Of("Dot").back(), (CanvasCall{"Dot", {1100, 2100}, 0x00FF00u, {}}));
  EXPECT_EQ(ReadJob("T12NR04E.mtc"), mtc);  // the tables, not the file
  CamaParcelCancel(session);
  EXPECT_EQ(session.cama.LinkGeocode.get(2), "222222074P?");

  OpenCamaParcels(session, 0);  // the dialog opens afresh after its Cancel
  CamaApply(session, 1, 0);
  CamaParcelOk(session);
  EXPECT_EQ(session.cama.LinkGeocode.get(2), "22222207400000002");
  EXPECT_NE(ReadJob("T12NR04E.mtc").find("GeoCode = 22222207400000002"), std::string::npos);
}

TEST_F(CamaManualTest, MultiAttThenDeleteLeavesTheOther) {
  Select(1);
  OpenCamaParcels(session, 0);
  CamaMultiAtt(session, 2, 0);
  EXPECT_EQ(session.cama.LinkCount, 3);
  CamaParcelOk(session);
  const std::string group = PointLine(" 1000 ", " 2000 ") + "\r\nParcel chain =  100100 100200\r\n";
  const std::string mtc = ReadJob("T12NR04E.mtc");
  EXPECT_NE(mtc.find(group + "GeoCode = 11111107100000001\r\n"), std::string::npos);
  EXPECT_NE(mtc.find(group + "GeoCode = 22222207400000002\r\n"), std::string::npos);
  EXPECT_EQ(session.cama.LinkLoadedCount, 3);

  // Delete with no row chosen, then the first record: the second keeps the point.
  CamaDeleteLink(session, -1);
  EXPECT_EQ(user.messages.back().text, kMsgSelectCamaParcel);
  CamaDeleteLink(session, 0);
  EXPECT_EQ(session.SelectionCount, 0);
  EXPECT_TRUE(session.selection.ParcelList().empty());
  EXPECT_FALSE(user.enabled["frmTesting/cmdRemoveItem"]);
  EXPECT_EQ(user.statusNow[2], "0 Polygons Selected");
  EXPECT_EQ(session.cama.LinkCount, 2);
  EXPECT_EQ(session.cama.LinkGeocode.get(2), "22222207400000002");
  EXPECT_EQ(session.cama.LinkX.get(2), 1000);
}

// The rows of the selection list and of frmCamaParcel stay true across every rewrite and reading
// of the link file: a deleted record's followers move up, and so do their rows; the CAMA
// parcel list keeps listing its section, never records of a reading that is gone.
TEST_F(CamaManualTest, RowsFollowTheLinkRecordsAcrossAReadingOfTheLinkFile) {
  Select(1);
  Select(2);
  OpenCamaParcels(session, 1);
  const std::vector<std::string> rows = session.cama.CamaParcelRows;
  // Record 1 deleted through row 0: record 2 is record 1 in the file read back, and its row says so.
  CamaDeleteLink(session, 0);
  ASSERT_EQ(session.cama.LinkCount, 1);
  EXPECT_EQ(LinkRecordOfRow(session, 0), 1);
  EXPECT_EQ(session.cama.LinkGeocode.get(1), session.selection.ParcelList()[0]);
  // The CAMA parcel list was filled again for its section: Apply takes the record of the row shown.
  EXPECT_EQ(session.cama.CamaParcelRows, rows);
  CamaApply(session, 1, 0);
  EXPECT_EQ(session.cama.LinkGeocode.get(1), "22222207400000002");
  CamaParcelCancel(session);
  EXPECT_EQ(LinkRecordOfRow(session, 0), 1);

  // A parcel's row is no link record, and one of a reading that is gone names nothing: refused.
  session.selection.AddParcelEntry("Sec_007 A T_A", {PickKind::Parcel, 1, session.parcels.Reading});
  session.selection.AddParcelEntry("old", {PickKind::LinkRecord, 1, session.cama.LinkReading - 1});
  user.messages.clear();
  for (const int row : {1, 2}) {
    CamaApply(session, 0, row);
    OpenCamaParcels(session, row);
    CamaDeleteLink(session, row);
  }
  EXPECT_EQ(user.MessageTexts(), (std::vector<std::string>{kMsgRowHoldsParcel, kMsgRowHoldsParcel,
                                                           kMsgRowHoldsParcel, kMsgLinksReadAgain,
                                                           kMsgLinksReadAgain, kMsgLinksReadAgain}));
  EXPECT_EQ(session.cama.LinkCount, 1);
  EXPECT_EQ(session.cama.LinkGeocode.get(1), "222222074P?");
}

TEST_F(CamaManualTest, MovingALinkPointRewritesTheLinkFile) {
  Select(2);
  session.ToolMode = ToolMode::MoveParcel;
  PickMouseUp(session, true, true, 0, 0, 1234.56789f, 2345.5f);
  EXPECT_NEAR(session.cama.LinkX.get(2), 1234.568, 1e-9);
  EXPECT_EQ(session.cama.LinkY.get(2), 2345.5);
  EXPECT_NE(ReadJob("T12NR04E.mtc").find(PointLine(" 1234.568 ", " 2345.5 ")), std::string::npos);
}

TEST_F(CamaManualTest, UnusedReportAppendsToPhd) {
  const std::string phd = ReadJob("T12NR04E.phd");
  ShowUnusedCama(session);
  // Record 1 is linked; records 2 and 4 share a key and stand apart, record 3 is another.
  EXPECT_EQ(session.cama.UnusedRows,
            (std::vector<std::string>{"22222207400000002", "33333305200000003", "22222207400000002"}));
  EXPECT_EQ(user.shownForms.back(), "frmUnusedCama");
  EXPECT_EQ(ReadJob("T12NR04E.phd"), phd + Text({"Total CAMA Parcels =  4 ", "CAMA NOT Linked parcels =  3 ",
                                                 "CAMA Linked geocodes =  1 ", "Percent of CAMA Match = 25 %"}));
  // Equal neighbours collapse.
  session.cama.CamaRecords.at(3) = session.cama.CamaRecords.get(2);
  ShowUnusedCama(session);
  EXPECT_EQ(session.cama.UnusedRows, (std::vector<std::string>{"22222207400000002"}));
  EXPECT_NE(ReadJob("T12NR04E.phd").find("Percent of CAMA Match = 75 %"), std::string::npos);

  // Nothing loaded: every record is unused; no records: no division, no lines.
  ClearCamaVariables(session);
  const std::string before = ReadJob("T12NR04E.phd");
  ShowUnusedCama(session);
  EXPECT_TRUE(session.cama.UnusedRows.empty());
  EXPECT_EQ(ReadJob("T12NR04E.phd"), before);
}

TEST_F(CamaManualTest, PlotAndPicksOfLinkRecords) {
  canvas.calls.clear();
  RefreshView(session);
  std::vector<CanvasCall> plot;
  for (const auto& call : canvas.calls) {
    if (call.op == "Dot" || call.op == "PenWidth") plot.push_back(call);
  }
  ASSERT_GE(plot.size(), 4u);
  plot.resize(4);
  EXPECT_EQ(plot, (std::vector<CanvasCall>{{"PenWidth", {4}, 0, {}},
                                           {"Dot", {1000, 2000}, 0x00FF00u, {}},
                                           {"Dot", {1100, 2100}, 0xFF0000u, {}},
                                           {"PenWidth", {1}, 0, {}}}));

  // The parcel tool picks the link record under the click, marked yellow.
  session.view.ViewLeft = 0;
  session.view.ViewRight = 3000;
  session.view.ViewTop = 3000;
  session.view.ViewBottom = 0;
  session.ToolMode = ToolMode::PickParcels;
  PickMouseUp(session, true, false, 1100, 2100, 1100, 2100);
  ASSERT_EQ(session.selection.ParcelList().size(), 1u);
  EXPECT_EQ(session.selection.ParcelList()[0], session.cama.LinkGeocode.get(2));
  EXPECT_EQ(session.selection.SelectedParcels.get(0), 2);
  EXPECT_EQ(user.statusNow[2], "1 Parcel(s) Selected");
  canvas.calls.clear();
  RefreshView(session);
  EXPECT_EQ(canvas.Of("Dot").back(), (CanvasCall{"Dot", {1100, 2100}, 0xFFFF00u, {}}));

  // With the plot off nothing of the link records is drawn or picked.
  session.checks.mnuViewCama = false;
  canvas.calls.clear();
  RefreshView(session);
  EXPECT_TRUE(canvas.Of("Dot").empty());
}

}  // namespace
}  // namespace tessel::test
