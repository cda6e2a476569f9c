// The State Plane support files: written into the job folder at open, byte for byte as carried,
// and removed again at close unless the job lives in the program's own folder.

#include <filesystem>
#include <string>

#include "model/paths.h"
#include "datasets/support_files.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

class SupportFiles : public JobFixture {
 protected:
  void SetUp() override { UseJob("T1N2E"); }
};

TEST_F(SupportFiles, WrittenInTheirOwnCaseAsTheCarriedBytesAndALineEnd) {
  WriteJob("Zone.dat", {"stale"});
  WriteSupportFiles(session);
  for (const char* name : {"Nad27.con", "Nad83.con", "Table.dat", "Zone.dat"}) {
    const std::string carried = ReadBytes(fs::path(TESSEL_RESOURCE_DIR) / name);
    ASSERT_NE(carried, "<missing>") << name;
    EXPECT_TRUE(JobHas(name)) << name;
    EXPECT_EQ(ReadJob(name), carried + "\r\n") << name;
    EXPECT_EQ(SupportFileText(name), carried + "\r\n") << name;
  }
}

TEST_F(SupportFiles, RemovedInAnyCaseExceptFromTheToolFolder) {
  WriteSupportFiles(session);
  fs::rename(jobPath / "Zone.dat", jobPath / "zone.DAT");
  WriteJob("T1N2E.COR", {"x"});
  WriteJob("Nad27.txt", {"x"});
  RemoveSupportFiles(session);
  for (const char* name : {"Nad27.con", "Nad83.con", "Table.dat", "zone.DAT"}) EXPECT_FALSE(JobHas(name)) << name;
  EXPECT_TRUE(JobHas("T1N2E.COR"));
  EXPECT_TRUE(JobHas("Nad27.txt"));

  // No job folder: nothing is touched, not even in the current folder.
  WriteSupportFiles(session);
  session.JobFolder.clear();
  RemoveSupportFiles(session);
  EXPECT_TRUE(JobHas("Nad27.con"));

  // The master copies in the program's folder stay.
  session.JobFolder = ToolDir() + PathSeparator();
  session.JobBase = session.JobFolder + "T1N2E";
  WriteSupportFiles(session);
  RemoveSupportFiles(session);
  for (const char* name : kSupportFiles) EXPECT_TRUE(fs::exists(toolPath / name)) << name;
}

}  // namespace
}  // namespace tessel::test
