// The configuration dialog's actions: OK applies the settings to the tool buttons, the View
// menu, the toolbar and the canvas and redraws; Save also writes Tessel.cfg; Restore Defaults
// asks first; the LXN check takes effect at once.

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "core/config.h"
#include "core/config_actions.h"
#include "core/load_sequence.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class ConfigActions : public JobFixture {
 protected:
  void SetUp() override { viewed.display = &display; }

  std::string CfgPath() const { return (toolPath / "Tessel.cfg").string(); }

  static Config Custom() {
    Config c;
    c.PtSizeCor = 6;
    c.CorColor = 2;
    c.LsaColor = 12;
    c.PanPercent = 25.0f;
    c.chkLXN = 0;
    c.EditorPath = "/usr/bin/nano";
    c.ToolButton[0] = {"/opt/one", "One"};
    c.ToolButton[1] = {"  none  ", "Hidden"};  // trimmed, still "none"
    c.ToolButton[4] = {"None", "Five"};        // the test is by exact case
    c.ToolButton[9] = {"/opt/ten", ""};
    c.ToolButton[10] = {"/opt/eleven", "Eleven"};
    c.chkLinesLSA = 0;
    c.chkLinesLXN = 1;
    c.chkLinesRAW = 1;
    c.chkRPO = 1;
    c.chkPoints = 0;
    c.chkControl = 2;  // only 1 is on
    c.chkParcels = 1;
    c.BackgroundMode = 2;
    return c;
  }

  // A session of its own that also records the canvas and the viewer's redraws.
  RecordingUserPort viewUser;
  RecordingCanvas viewCanvas;
  RecordingDisplay display;
  Session viewed{viewUser, viewCanvas, processes};
};

TEST_F(ConfigActions, OkAppliesButtonsChecksColoursAndRedrawsWithoutWriting) {
  viewed.ToolFolder = ToolDir();
  ApplyConfig(viewed, Custom());

  EXPECT_EQ(viewed.config, Custom());
  const std::map<int, std::string> captions = {{1, "One"}, {5, "Five"}, {10, ""}, {11, "Eleven"}};
  EXPECT_EQ(viewUser.toolButtons, captions);

  const std::map<std::string, bool> checks = {
      {"mnuOptionsLinesLSA", false}, {"Lsa", false},         {"mnuOptionsLinesLXN", true}, {"Lxn", true},
      {"mnuViewLinesRaw", true},     {"Raw", true},          {"mnuViewRPO", true},         {"mnuViewPoints", false},
      {"mnuOptionsControl", false},  {"mnuOptionsParcel", true}, {"parcel", true}};
  EXPECT_EQ(viewUser.checked, checks);
  EXPECT_TRUE(viewed.checks.mnuViewLinesRaw);
  EXPECT_FALSE(viewed.checks.mnuOptionsControl);

  const auto colours = viewCanvas.Of("Colours");
  ASSERT_EQ(colours.size(), 1u);
  EXPECT_EQ(colours[0].args, (std::vector<double>{0.0, double(0xFFFFFF)}));
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
  EXPECT_FALSE(fs::exists(CfgPath()));
}

TEST_F(ConfigActions, OkWithoutViewerOnlyApplies) {
  ApplyConfig(session, Custom());
  EXPECT_EQ(session.config, Custom());
  EXPECT_EQ(user.toolButtons.at(11), "Eleven");
  EXPECT_TRUE(user.checked.at("parcel"));
}

TEST_F(ConfigActions, SaveReplacesTheFileWithTheAppliedSettings) {
  WriteTool("Tessel.cfg", {"garbage"});
  viewed.ToolFolder = ToolDir();
  EXPECT_TRUE(SaveConfig(viewed, Custom()));
  EXPECT_EQ(viewed.config, Custom());
  EXPECT_EQ(viewUser.toolButtons.at(1), "One");
  EXPECT_EQ(display.calls, std::vector<std::string>{"RefreshView"});
  // The reader drops the blanks around a string, so the padded "none" comes back bare.
  Config reread = Custom();
  reread.ToolButton[1].path = "none";
  EXPECT_EQ(ReadConfig(CfgPath()), reread);

  // The next start reads the saved settings and applies them the same way.
  session.ToolFolder = ToolDir();
  MainFormLoad(session);
  EXPECT_EQ(session.config, reread);
  EXPECT_EQ(user.toolButtons, viewUser.toolButtons);
  EXPECT_EQ(user.checked.at("Raw"), true);
}

TEST_F(ConfigActions, SaveToAFolderThatCannotBeWrittenStillApplies) {
  viewed.ToolFolder = (root / "no such folder").string();
  EXPECT_FALSE(SaveConfig(viewed, Custom()));
  EXPECT_EQ(viewed.config, Custom());
  EXPECT_TRUE(viewUser.checked.at("Lxn"));
  EXPECT_FALSE(fs::exists(root / "no such folder"));
}

TEST_F(ConfigActions, RestoreOnYesDeletesTheFileAndTakesTheDefaults) {
  WriteConfig(CfgPath(), Custom());
  session.config = Custom();
  user.answers.push_back(Answer::Yes);
  EXPECT_TRUE(RestoreDefaults(session));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text,
            "Restore original values? Clicking yes will overwrite any custom settings your have setup.");
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_FALSE(fs::exists(CfgPath()));
  EXPECT_EQ(session.config, Config{});
  // A restart then comes to the same defaults.
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});
}

TEST_F(ConfigActions, RestoreFindsTheFileInAnyCase) {
  WriteTool("TESSEL.CFG", {"1"});
  user.answers.push_back(Answer::Yes);
  EXPECT_TRUE(RestoreDefaults(session));
  EXPECT_FALSE(fs::exists(toolPath / "TESSEL.CFG"));
}

TEST_F(ConfigActions, RestoreWithoutAFileStillResets) {
  session.config = Custom();
  user.answers.push_back(Answer::Yes);
  EXPECT_TRUE(RestoreDefaults(session));
  EXPECT_EQ(session.config, Config{});
  EXPECT_FALSE(fs::exists(CfgPath()));
}

TEST_F(ConfigActions, RestoreOnNoChangesNothing) {
  WriteConfig(CfgPath(), Custom());
  const std::string before = ReadTool("Tessel.cfg");
  session.config = Custom();
  user.answers.push_back(Answer::No);
  EXPECT_FALSE(RestoreDefaults(session));
  EXPECT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(ReadTool("Tessel.cfg"), before);
  EXPECT_EQ(session.config, Custom());
}

TEST_F(ConfigActions, LoadLxnCheckSetsOneOrZeroAndNothingElse) {
  session.config = Custom();
  SetLoadLxn(session, true);
  EXPECT_EQ(session.config.chkLXN, 1);
  Config expected = Custom();
  expected.chkLXN = 1;
  EXPECT_EQ(session.config, expected);
  SetLoadLxn(session, false);
  EXPECT_EQ(session.config.chkLXN, 0);
  EXPECT_TRUE(user.checked.empty());
  EXPECT_FALSE(fs::exists(CfgPath()));
}

}  // namespace
}  // namespace tessel::test
