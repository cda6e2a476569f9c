// Every writer against a disk that fails at each step of a write (the open in a read-only folder,
// a write or a close on a full disk, a rename refused): the job's files stay as they were (or
// stand in their backup), no temporary is left behind, and the user is told the file's name.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "datasets/identity.h"
#include "datasets/support_files.h"
#include "job/command_table.h"
#include "job/config_actions.h"
#include "job/load_sequence.h"
#include "model/dialog_memory.h"
#include "model/paths.h"
#include "model/text_file.h"
#include "parcels/centroids.h"
#include "parcels/parcel_file.h"
#include "process_probe.h"
#include "test_support.h"
#include "tools/export_points.h"
#include "tools/launching.h"

namespace tessel::test {
namespace {

namespace fs = std::filesystem;

constexpr std::pair<WriteStep, const char*> kSteps[] = {{WriteStep::Open, "open"},   {WriteStep::Write, "write"},
                                                        {WriteStep::Flush, "flush"}, {WriteStep::Close, "close"},
                                                        {WriteStep::Rename, "rename"}};

// Fails one step of every write whose file name ends with `suffix` (any file when it is empty).
class FailingDisk : public WriteFaults {
 public:
  FailingDisk(WriteStep step, std::string suffix) : step_(step), suffix_(std::move(suffix)) {}
  bool Fails(WriteStep step, const std::string& path) override {
    const bool hit = step == step_ && path.ends_with(suffix_);
    if (hit) failed.push_back(path);
    return hit;
  }
  std::vector<std::string> failed;

 private:
  WriteStep step_;
  std::string suffix_;
};

// Every file under the folder, by its path relative to it, with its bytes.
std::vector<std::pair<std::string, std::string>> Snapshot(const fs::path& folder) {
  std::vector<std::pair<std::string, std::string>> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.emplace_back(fs::relative(entry.path(), folder).string(), ReadBytes(entry.path()));
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool HasTemporary(const fs::path& folder) {
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.path().filename().string().ends_with(".tmp")) return true;
  }
  return false;
}

const std::string kRing = " 100100 100200 100300 100100";
const std::vector<std::string> kIid = {"TITLE", "Sec_001  A T_W  1", kRing,
                                       LocationRow("1333.333", "1666.667")};

class WriteFaultsTest : public JobFixture {
 protected:
  WriteFaultsTest() {
    UseJob();
    SetPoints({{"100100", 0, 0}, {"100200", 30, 0}, {"100300", 0, 30}});
  }
  std::string Told() const {
    std::string all;
    for (const auto& text : user.MessageTexts()) all += text + "\n";
    return all;
  }
};

TEST_F(WriteFaultsTest, WriteFileBytesReplacesWholeOrLeavesTheFileAsItWas) {
  const std::string path = (jobPath / "T1N2E.COR").string();
  WriteFileBytes(path, "old\r\n");
  for (const auto& [step, name] : kSteps) {
    SCOPED_TRACE(name);
    FailingDisk disk(step, "");
    ExpectFault(FaultKind::FileAccess, "Path/File access error: " + path,
                [&] { WriteFileBytes(path, std::string(5000, 'x')); });
    EXPECT_EQ(ReadBytes(path), "old\r\n");
    EXPECT_FALSE(HasTemporary(root));
  }
  // A small file on a full disk fails too: the fault shows only at the close.
  {
    FailingDisk disk(WriteStep::Close, "");
    EXPECT_FALSE(WriteFileOrTell(user, path, "TEMP\r\n"));
  }
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Path/File access error: " + path});
  EXPECT_EQ(user.messages.back().icon, Icon::Exclamation);
  // A folder that is not there is a real failure of the open.
  ExpectFault(FaultKind::FileAccess, [&] { WriteFileBytes((root / "none" / "x.txt").string(), "x"); });
  // Without the seam the write goes through, and the seams nest.
  WriteFileBytes(path, "new\r\n");
  EXPECT_EQ(ReadBytes(path), "new\r\n");
  {
    FailingDisk outer(WriteStep::Write, ".COR");
    {
      FailingDisk inner(WriteStep::Write, ".xyz");
    }
    ExpectFault(FaultKind::FileAccess, [&] { WriteFileBytes(path, "lost"); });
  }
  EXPECT_EQ(ReadBytes(path), "new\r\n");
}

// Where a file that another program holds open cannot be replaced (Windows), the write says so
// and names the file; the file and the folder stay as they were, and a write after the other
// program let go goes through.
TEST_F(WriteFaultsTest, AFileHeldOpenByAnotherProgramIsNamedAndLeftAsItWas) {
  const std::string path = (jobPath / "T1N2E.COR").string();
  WriteFileBytes(path, "old\r\n");
  {
    FileHeldOpen other(path);
    if (!other.holds()) GTEST_SKIP() << "this system lets a file held open be replaced";
    ExpectFault(FaultKind::FileAccess,
                "Path/File access error: " + path + " is held open by another program; close it there and try again",
                [&] { WriteFileBytes(path, "new\r\n"); });
    EXPECT_FALSE(HasTemporary(root));
  }
  EXPECT_EQ(ReadBytes(path), "old\r\n");
  WriteFileBytes(path, "new\r\n");
  EXPECT_EQ(ReadBytes(path), "new\r\n");
}

// One writer: what it starts from, what it does, and the file the user must be told of.
struct Writer {
  const char* name;
  std::function<void(WriteFaultsTest&)> prepare;
  std::function<void(WriteFaultsTest&)> act;
  std::string told;  // the end of the path the message must name
};

TEST_F(WriteFaultsTest, EveryWriterLeavesTheJobAsItWasAndNamesTheFile) {
  Session& s = session;
  // The told suffix picks the write that fails; an empty one fails the first write of all, which
  // for .IID is its backup.
  const std::vector<Writer> writers = {
      {"WriteParcels", [&](WriteFaultsTest&) { WriteJob("T1N2E.IID", kIid); },
       [&](WriteFaultsTest&) {
         ReadParcels(s);
         s.parcels.ParcelLine.at(1) = "Sec_001  A T_W  1 EDITED";
         s.parcels.ParcelDirty = 1;
         EXPECT_FALSE(WriteParcels(s));
         EXPECT_EQ(s.parcels.ParcelDirty, 1);  // still unsaved
       },
       ""},
      {"MoveParcelLocation", [&](WriteFaultsTest&) { WriteJob("T1N2E.IID", kIid); },
       [&](WriteFaultsTest&) {
         ReadParcels(s);
         s.selection.ClearParcelList();
         s.selection.AddParcelEntry("Sec_001", {PickKind::Parcel, 1, s.parcels.Reading});
         s.selection.SelectedParcels.at(0) = 1;
         MoveParcelLocation(s, 5.0, 6.0);  // the parcel stays where the file has it
         EXPECT_EQ(std::tuple(s.parcels.ParcelX.get(1), s.parcels.ParcelY.get(1)), std::tuple(1666.667, 1333.333));
       },
       ""},
      {"Tessel.cfg", [&](WriteFaultsTest&) { WriteTool("Tessel.cfg", {"old"}); },
       [&](WriteFaultsTest&) { EXPECT_FALSE(SaveConfig(s, Config{})); }, "Tessel.cfg"},
      {"Tessel.hst", [&](WriteFaultsTest&) { WriteTool("Tessel.hst", {"old"}); },
       [&](WriteFaultsTest&) { RememberFolder(s); }, "Tessel.hst"},
      {"TEMP.JOB", [&](WriteFaultsTest&) { WriteJob("TEMP.JOB", {"OLD"}); },
       [&](WriteFaultsTest&) { OpenIdentity(s, JobDir() + "T1N2E.def", "T1N2E.def"); }, "TEMP.JOB"},
      {"support files", [](WriteFaultsTest&) {}, [&](WriteFaultsTest&) { WriteSupportFiles(s); }, ""},
      {"ts$002.cfg", [&](WriteFaultsTest&) { WriteTool("ts$002.cfg", {"frmTesting,1,2,3,4"}); },
       [&](WriteFaultsTest&) { WriteWindowPlace(s, "frmTesting", WindowPlace{5, 6, 7, 8}); }, "cfg"},
      {".CRP", [&](WriteFaultsTest&) {
         WriteJob("T1N2E.RPO", {"  1 POLYGONS FOUND", "", "S 100100 100200 100300 100100"});
         WriteJob("T1N2E.CRP", {"old"});
       },
       [&](WriteFaultsTest&) { EXPECT_FALSE(ComputeCentroids(s)); }, ".CRP"},
      {"Lsa2Cor", [&](WriteFaultsTest&) {
         WriteJob("T1N2E.COR", {CorRow("100100", "1", "1")});
         WriteJob("T1N2E.LSA", LsaFile({ControlRow("100100", "1000", "1000")}, {LsaLineRow("100100", "100200")},
                                         {LsaPointRow("100100", "1000", "1000")}));
       },
       [&](WriteFaultsTest&) { RunCommand(s, *FindCommand("mnuCommandUtilitiesLsa2cor")); }, ".COR"},
      {"export", [&](WriteFaultsTest&) { WriteJob("T1N2E.def", DefFile(2)); },
       [&](WriteFaultsTest&) {
         s.selection.PointList = {"100100"};
         s.selection.SelectedPoints.at(0) = 1;
         user.files.push_back(FileChoice{JobDir() + "OUT.cor", "OUT.cor"});
         ExportSelectedPoints(s);
       },
       ""},
  };
  for (const Writer& writer : writers) {
    for (const auto& [step, stepName] : kSteps) {
      SCOPED_TRACE(std::string(writer.name) + " failing at " + stepName);
      fs::remove_all(jobPath);
      fs::remove_all(toolPath);
      fs::create_directories(jobPath);
      fs::create_directories(toolPath);
      user = RecordingUserPort{};
      writer.prepare(*this);
      const auto before = Snapshot(root);
      FailingDisk disk(step, writer.told);
      writer.act(*this);
      ASSERT_FALSE(disk.failed.empty()) << "the writer wrote nothing";
      // Nothing written at all, so every file is as it was; the user is told of the first.
      EXPECT_EQ(Snapshot(root), before);
      EXPECT_FALSE(HasTemporary(root));
      ASSERT_EQ(user.messages.size(), 1u) << Told();
      EXPECT_EQ(user.messages[0].text, "Path/File access error: " + disk.failed.front());
    }
  }
}

TEST_F(WriteFaultsTest, BackupsStandWhenOnlyTheRewriteFails) {
  // .IID: the backup is taken, the rewrite fails, .IID is as it was and .iib holds the same.
  WriteJob("T1N2E.IID", kIid);
  ReadParcels(session);
  session.parcels.ParcelLine.at(1) = "Sec_001  A T_W  1 EDITED";
  session.parcels.ParcelDirty = 1;
  {
    FailingDisk disk(WriteStep::Close, ".IID");
    EXPECT_FALSE(WriteParcels(session));
  }
  EXPECT_EQ(ReadJob("T1N2E.IID"), Text(kIid));
  EXPECT_EQ(ReadJob("T1N2E.iib"), Text(kIid));
  // Close then keeps the job open with its edits; once the disk has room the save goes through.
  user.answers = {Answer::Yes};
  {
    FailingDisk disk(WriteStep::Write, ".IID");
    EXPECT_FALSE(FileClose(session));
  }
  EXPECT_EQ(session.JobBase + "|" + session.parcels.ParcelLine.get(1), JobDir() + "T1N2E|Sec_001  A T_W  1 EDITED");
  user.answers = {Answer::Yes};
  EXPECT_TRUE(FileClose(session) && session.JobBase.empty());
  EXPECT_NE(ReadJob("T1N2E.IID").find("Sec_001  A T_W  1 EDITED"), std::string::npos);

  // ts$002.cfg: a failed rewrite leaves its former lines in tstemp.cfg.
  WriteTool("ts$002.cfg", {"frmTesting,1,2,3,4"});
  {
    FailingDisk disk(WriteStep::Rename, "ts$002.cfg");
    WriteWindowPlace(session, "frmTesting", WindowPlace{5, 6, 7, 8});
  }
  EXPECT_EQ(ReadTool("tstemp.cfg"), Text({"frmTesting,1,2,3,4"}));
}

TEST_F(WriteFaultsTest, AScriptThatCannotBeWrittenIsNotRun) {
  ProcessProbe& probe = processes;
  for (const char* file : {"temp.bat", "t1$.001"}) {
    WriteJob("temp.bat", {"\"old\"  <\"old\"", "exit"});
    user = RecordingUserPort{};
    probe.launches.clear();
    {
      FailingDisk disk(WriteStep::Close, file);
      RunRecpadScript(session);
    }
    EXPECT_TRUE(probe.launches.empty()) << file;
    ASSERT_EQ(user.messages.size(), 1u) << file;
    EXPECT_TRUE(user.messages[0].text.ends_with(file)) << user.messages[0].text;
  }
  user = RecordingUserPort{};
  RunRecpadScript(session);
  EXPECT_EQ(probe.launches.size(), 1u);
  EXPECT_TRUE(user.messages.empty());
}

}  // namespace
}  // namespace tessel::test
