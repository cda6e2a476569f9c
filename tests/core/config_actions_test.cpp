// The configuration dialog's actions: OK applies the settings to the tool buttons, the View
// menu, the toolbar and the canvas and redraws; Save also writes Tessel.cfg and keeps them
// applied when it cannot; Restore Defaults on Yes, with or without a file.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "model/config.h"
#include "job/config_actions.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class ConfigActions : public JobFixture {
 protected:
  std::string CfgPath() const { return (toolPath / "Tessel.cfg").string(); }

  static Config Custom() {
    Config c{.chkLXN = 0, .chkLinesLSA = 0, .chkLinesLXN = 1, .chkLinesRAW = 1, .chkRPO = 1, .chkPoints = 0,
             .chkControl = 2,  // only 1 is on
             .chkParcels = 1, .BackgroundMode = 2};
    c.ToolButton[0] = {"/opt/one", "One"};
    c.ToolButton[1] = {"  none  ", "Hidden"};  // trimmed, still "none"
    c.ToolButton[4] = {"None", "Five"};        // the test is by exact case
    c.ToolButton[9] = {"/opt/ten", ""};
    return c;
  }
};

TEST_F(ConfigActions, OkAppliesButtonsChecksColoursAndRedrawsWithoutWriting) {
  RecordingCanvas viewCanvas;
  RecordingDisplay display;
  Session viewed{user, viewCanvas, processes};
  viewed.display = &display;
  viewed.ToolFolder = ToolDir();
  ApplyConfig(viewed, Custom());

  EXPECT_EQ(viewed.config, Custom());
  EXPECT_EQ(user.toolButtons, (std::map<int, std::string>{{1, "One"}, {5, "Five"}, {10, ""}}));
  const std::map<std::string, bool> checks = {
      {"mnuOptionsLinesLSA", false}, {"Lsa", false},         {"mnuOptionsLinesLXN", true}, {"Lxn", true},
      {"mnuViewLinesRaw", true},     {"Raw", true},          {"mnuViewRPO", true},         {"mnuViewPoints", false},
      {"mnuOptionsControl", false},  {"mnuOptionsParcel", true}, {"parcel", true}};
  EXPECT_EQ(user.checked, checks);
  // Light text on a dark background.
  const auto colours = viewCanvas.Of("Colours");
  ASSERT_EQ(colours.size(), 1u);
  EXPECT_EQ(colours[0].args, (std::vector<double>{0.0, double(0xFFFFFF)}));
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
  EXPECT_FALSE(fs::exists(CfgPath()));
}

TEST_F(ConfigActions, SaveReplacesTheFileOrStillAppliesWhenItCannotWrite) {
  WriteTool("Tessel.cfg", {"garbage"});
  EXPECT_TRUE(SaveConfig(session, Custom()));
  Config reread = Custom();
  reread.ToolButton[1].path = "none";  // the reader drops the blanks around a string
  EXPECT_EQ(ReadConfig(CfgPath()), reread);

  // Without a viewer, into a folder that is not there.
  session.ToolFolder = (root / "no such folder").string();
  EXPECT_FALSE(SaveConfig(session, Config{}));
  EXPECT_EQ(session.config, Config{});
  EXPECT_TRUE(user.checked.at("Lsa"));
  EXPECT_FALSE(fs::exists(root / "no such folder"));
}

TEST_F(ConfigActions, RestoreOnYesDeletesTheFileInAnyCaseAndResetsEvenWithoutOne) {
  WriteTool("TESSEL.CFG", {"1"});
  user.answers = {Answer::Yes, Answer::Yes};
  for (int run = 0; run < 2; ++run) {  // the second time there is no file
    session.config = Custom();
    EXPECT_TRUE(RestoreDefaults(session));
    EXPECT_EQ(session.config, Config{});
  }
  EXPECT_FALSE(fs::exists(toolPath / "TESSEL.CFG"));
}

}  // namespace
}  // namespace tessel::test
