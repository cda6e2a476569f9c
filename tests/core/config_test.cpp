// Tessel.cfg: the defaults, the 39 lines in their order, and the error route that drops all
// that was read.

#include <string>
#include <vector>

#include "model/config.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class ConfigFile : public JobFixture {
 protected:
  std::string CfgPath() const { return (toolPath / "Tessel.cfg").string(); }

  // A file of 39 lines with no default in it; `editor` and the last tool entry can be varied.
  static std::vector<std::string> Lines(const std::string& editor = "C:\\Tools\\edit.exe",
                                        const std::string& lastPath = "C:\\bin\\twelve.exe",
                                        const std::string& lastCaption = "Twelve") {
    std::vector<std::string> lines = {"6 5", "10,12", "2,1", "3,11", "12.5, 25", "0", editor,
                                      "C:\\bin\\one.exe", "One"};
    for (int k = 2; k <= 11; ++k) {
      lines.push_back("none");
      lines.push_back("");
    }
    lines.push_back(lastPath);
    lines.push_back(lastCaption);
    for (const char* v : {"0", "1", "1", "0", "0", "1", "2", "1"}) lines.push_back(v);
    return lines;
  }

  static Config Expected() {
    Config c;
    c.PtSizeCor = 6;
    c.CorColor = 5;
    c.PtSizeCtrl = 10;
    c.CtrlColor = 12;
    c.LineTypeLSA = 2;
    c.LsaColor = 1;
    c.LineTypeLXN = 3;
    c.LxnColor = 11;
    c.PanPercent = 12.5f;
    c.ZoomPercent = 25.0f;
    c.chkLXN = 0;
    c.EditorPath = "C:\\Tools\\edit.exe";
    c.ToolButton[0] = {"C:\\bin\\one.exe", "One"};
    for (int k = 1; k <= 10; ++k) c.ToolButton[static_cast<std::size_t>(k)] = {"none", ""};
    c.ToolButton[11] = {"C:\\bin\\twelve.exe", "Twelve"};
    c.chkLinesLSA = 0;
    c.chkLinesLXN = 1;
    c.chkRPO = 1;
    c.chkPoints = 0;
    c.chkControl = 0;
    c.chkParcels = 1;
    c.BackgroundMode = 2;
    c.chkLinesRAW = 1;
    return c;
  }
};

TEST_F(ConfigFile, MissingFileGivesTheDefaults) {
  const Config c = ReadConfig(CfgPath());
  EXPECT_EQ(c, Config{});
  WriteConfig(CfgPath(), c);
  std::vector<std::string> defaults = {"4,4", "8,14", "0,3", "1,9", "10,10", "1", "Notepad.exe"};
  for (int k = 1; k <= 12; ++k) defaults.insert(defaults.end(), {"none", ""});
  defaults.insert(defaults.end(), {"1", "0", "0", "1", "1", "0", "1", "0"});
  EXPECT_EQ(ReadTool("Tessel.cfg"), Text(defaults));
}

TEST_F(ConfigFile, FullFileIsReadInOrderAndWrittenBackTheSame) {
  WriteTool("Tessel.cfg", Lines());
  const Config read = ReadConfig(CfgPath());
  EXPECT_EQ(read, Expected());
  EXPECT_EQ(read.chkLinesRAW, 1);
  EXPECT_EQ(read.BackgroundMode, 2);
  EXPECT_EQ(read.ToolButton[11].caption, "Twelve");

  WriteConfig(CfgPath(), read);
  std::vector<std::string> written = Lines();
  written[0] = "6,5";
  written[4] = "12.5,25";
  EXPECT_EQ(ReadTool("Tessel.cfg"), Text(written));
  EXPECT_EQ(ReadConfig(CfgPath()), Expected());

  WriteConfig(CfgPath(), Config{});
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});
}

TEST_F(ConfigFile, AnyFailureDropsEverythingReadForTheDefaults) {
  std::vector<std::string> lines = Lines();
  lines.pop_back();  // 38 lines: the read of line 39 fails
  WriteTool("Tessel.cfg", lines);
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});

  lines = Lines();
  lines[2] = "x,1";
  WriteTool("Tessel.cfg", lines);
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});

  lines = Lines();
  lines[31] = "on";
  WriteTool("Tessel.cfg", lines, Eol::Lf);
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});

  WriteTool("Tessel.cfg", Lines(), Eol::Lf);
  EXPECT_EQ(ReadConfig(CfgPath()), Expected());
}

TEST_F(ConfigFile, CommaInTheEditorPathShiftsEveryLaterItem) {
  // The last entry's caption is empty, so the line it shifts onto a number still reads as 0.
  WriteTool("Tessel.cfg", Lines("C:\\Tools\\my,editor.exe", "none", ""));
  const Config c = ReadConfig(CfgPath());
  EXPECT_EQ(c.PtSizeCor, 6);
  EXPECT_EQ(c.chkLXN, 0);
  EXPECT_EQ(c.EditorPath, "C:\\Tools\\my");
  EXPECT_EQ(c.ToolButton[0].path, "editor.exe");
  EXPECT_EQ(c.ToolButton[0].caption, "C:\\bin\\one.exe");
  EXPECT_EQ(c.ToolButton[1].path, "One");
  EXPECT_EQ(c.ToolButton[1].caption, "none");
  EXPECT_EQ(c.ToolButton[11].caption, "none");
  EXPECT_EQ(c.chkLinesLSA, 0);     // the empty caption line
  EXPECT_EQ(c.chkLinesLXN, 0);     // line 32
  EXPECT_EQ(c.chkPoints, 1);       // line 34, written for chkRPO
  EXPECT_EQ(c.BackgroundMode, 1);  // line 37
  EXPECT_EQ(c.chkLinesRAW, 2);     // line 38; line 39 is not read

  // A caption that now falls where a number belongs ends in the defaults.
  WriteTool("Tessel.cfg", Lines("C:\\Tools\\my,editor.exe"));
  EXPECT_EQ(ReadConfig(CfgPath()), Config{});
}

}  // namespace
}  // namespace tessel::test
