// ZIP archives over libzip: round trips with the system's zip and unzip, members replaced and
// kept, the job pattern, refusal of damaged archives and of members leaving the target folder,
// and the extract and wizard commands with their texts.

#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "archives/zip_archive.h"
#include "archives/zip_commands.h"
#include "model/paths.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace tessel::test {
namespace {

// Runs a shell command; its exit status.
int Shell(const std::string& command) { return std::system((command + " >/dev/null 2>&1").c_str()); }

// What a shell command printed.
std::string Output(const std::string& command) {
  std::string out;
  if (FILE* pipe = popen(command.c_str(), "r")) {
    char buffer[4096];
    std::size_t got;
    while ((got = std::fread(buffer, 1, sizeof buffer, pipe)) > 0) out.append(buffer, got);
    pclose(pipe);
  }
  return out;
}

std::string Q(const fs::path& path) {
  std::string quoted(1, '\'');
  quoted += path.string();
  quoted += '\'';
  return quoted;
}

// Every file under a folder, relative, sorted.
std::vector<std::string> FilesUnder(const fs::path& folder) {
  std::vector<std::string> names;
  if (!fs::exists(folder)) return names;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) names.push_back(fs::relative(entry.path(), folder).generic_string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

// An archive with members of any name, stored uncompressed, written by libzip directly.
void WriteRawZip(const fs::path& path, const std::vector<std::pair<std::string, std::string>>& members) {
  int error = 0;
  zip_t* archive = zip_open(path.string().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
  ASSERT_NE(archive, nullptr);
  for (const auto& [name, data] : members) {
    zip_source_t* source = zip_source_buffer(archive, data.data(), data.size(), 0);
    const zip_int64_t index = zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
    ASSERT_GE(index, 0) << name;
    zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
  }
  ASSERT_EQ(zip_close(archive), 0);
}

class ZipTest : public JobFixture {
 protected:
  void SetUp() override {
    if (Shell("command -v zip") != 0 || Shell("command -v unzip") != 0) GTEST_SKIP() << "zip and unzip are needed";
    UseJob("T1");
    WriteJob("T1.def", {"T1", "1", "2", "2"});
    WriteJob("T1.raw", {"HEADING", "999999", "999998"});
    WriteJobBytes("T1.bin", std::string("\x00\x01\n\x02\xff", 5));
    WriteJob("other.txt", {"not the job"});
  }
  fs::path Out() const { return root / "out"; }
};

TEST_F(ZipTest, ArchiveWrittenHereOpensWithUnzipWithPathsStoredLessTheirRootAndMembersReplaced) {
  const fs::path zip = root / "t1.zip";
  ASSERT_EQ(ZipArchive(zip.string(), "T1.*", jobPath.string()), kZipOk);
  EXPECT_EQ(Shell("unzip -tq " + Q(zip)), 0);
  EXPECT_EQ(Output("unzip -Z1 " + Q(zip)), "T1.bin\nT1.def\nT1.raw\n");
  ASSERT_EQ(Shell("unzip -q " + Q(zip) + " -d " + Q(Out())), 0);
  for (const char* name : {"T1.bin", "T1.def", "T1.raw"}) {
    EXPECT_EQ(ReadBytes(Out() / name), ReadJob(name)) << name;
  }

  const fs::path paths = root / "paths.zip";
  fs::create_directory(jobPath / "sub");
  WriteJob("sub/a.txt", {"a"});
  ASSERT_EQ(ZipArchive(paths.string(), "sub/a.txt " + JobDir() + "T1.def", jobPath.string()), kZipOk);
  const std::string absolute = ZipMemberName(JobDir() + "T1.def");
  EXPECT_TRUE(!absolute.empty() && absolute.front() != '/') << absolute;
  EXPECT_EQ(Output("unzip -Z1 " + Q(paths)), "sub/a.txt\n" + absolute + "\n");

  // Adding replaces the members of the same name and keeps the others.
  const fs::path added = root / "added.zip";
  ASSERT_EQ(ZipArchive(added.string(), "T1.def other.txt", jobPath.string()), kZipOk);
  WriteJob("T1.def", {"CHANGED"});
  ASSERT_EQ(ZipArchive(added.string(), "T1.def T1.raw", jobPath.string()), kZipOk);
  EXPECT_EQ(Output("unzip -Z1 " + Q(added)), "T1.def\nother.txt\nT1.raw\n");
  EXPECT_EQ(Output("unzip -p " + Q(added) + " T1.def") + Output("unzip -p " + Q(added) + " other.txt"),
            "CHANGED\r\nnot the job\r\n");
  EXPECT_EQ(Shell("unzip -tq " + Q(added)), 0);
}

TEST_F(ZipTest, ArchiveWrittenByZipOpensHere) {
  fs::create_directory(jobPath / "sub");
  WriteJobBytes("sub/lf.txt", "one\ntwo\r\nthree\n");
  const fs::path zip = root / "byzip.zip";
  ASSERT_EQ(Shell("cd " + Q(jobPath) + " && zip -q " + Q(zip) + " T1.def T1.bin sub/lf.txt"), 0);

  ASSERT_EQ(UnzipArchive(zip.string(), Out().string(), "*.*"), kZipOk);
  EXPECT_EQ(FilesUnder(Out()), (std::vector<std::string>{"T1.bin", "T1.def", "sub/lf.txt"}));
  EXPECT_EQ(ReadBytes(Out() / "sub/lf.txt") + ReadBytes(Out() / "T1.bin"), "one\ntwo\r\nthree\n" + ReadJob("T1.bin"));

  // Again with the line-end conversion, over the files now there: text converted, the member
  // with a NUL byte left as it is.
  ASSERT_EQ(UnzipArchive(zip.string(), Out().string(), "*.*", true), kZipOk);
  EXPECT_EQ(ReadBytes(Out() / "sub/lf.txt") + ReadBytes(Out() / "T1.bin"), "one\r\ntwo\r\nthree\r\n" + ReadJob("T1.bin"));

  // An item pattern picks members by their last component.
  fs::remove_all(Out());
  ASSERT_EQ(UnzipArchive(zip.string(), Out().string(), "*.txt"), kZipOk);
  EXPECT_EQ(FilesUnder(Out()), std::vector<std::string>{"sub/lf.txt"});
}

TEST_F(ZipTest, CurrentJobPatternTakesInTheArchiveOfTheSameBaseName) {
  const std::string zip = ZipCurrentDefault(session);
  EXPECT_EQ(zip, JobDir() + "T1.zip");
  ASSERT_EQ(ZipCurrentJob(session, zip), kZipOk);
  const std::string first = ReadJob("T1.zip");
  EXPECT_EQ(Output("unzip -Z1 " + Q(zip)).find("T1.zip"), std::string::npos);
  ASSERT_EQ(ZipCurrentJob(session, zip), kZipOk);
  const std::string members = Output("unzip -Z1 " + Q(zip));
  EXPECT_NE(members.find("T1.zip"), std::string::npos) << members;
  EXPECT_EQ(members.find("other.txt"), std::string::npos) << members;
  // The member is the archive as it stood before.
  EXPECT_EQ(Output("unzip -p " + Q(zip) + " T1.zip"), first);
}

TEST_F(ZipTest, CurrentJobInAFolderWithBlanksExtractsIntoAnyFolderByteForByte) {
  // A copy of the sample job in a folder whose path has blanks.
  const fs::path folder = root / "x y" / "My Jobs" / "T12NR04E";
  fs::create_directories(folder);
  std::vector<std::string> job;
  for (const auto& entry : fs::directory_iterator(TESSEL_SAMPLES_DIR)) {
    const std::string name = entry.path().filename().string();
    if (name.rfind("T12NR04E.", 0) != 0) continue;
    fs::copy_file(entry.path(), folder / name);
    job.push_back(name);
  }
  std::sort(job.begin(), job.end());
  ASSERT_GE(job.size(), 10u);
  session.JobFolder = folder.string() + PathSeparator();
  session.JobBase = session.JobFolder + "T12NR04E";
  session.JobName = "T12NR04E";
  session.CurrentFolder = session.JobFolder;

  const std::string zip = ZipCurrentDefault(session);
  ASSERT_EQ(ZipCurrentJob(session, zip), kZipOk);
  EXPECT_TRUE(user.messages.empty());
  // The members are named as in the job's folder, so the job opens wherever they are put.
  std::string names;
  for (const auto& name : job) names += name + "\n";
  EXPECT_EQ(Output("unzip -Z1 " + Q(zip)), names);
  const fs::path elsewhere = root / "other place";
  ASSERT_EQ(Shell("unzip -q " + Q(zip) + " -d " + Q(elsewhere)), 0);
  ASSERT_EQ(UnzipArchive(zip, Out().string(), "*.*"), kZipOk);
  EXPECT_EQ(FilesUnder(elsewhere), job);
  EXPECT_EQ(FilesUnder(Out()), job);
  for (const auto& name : job) {
    EXPECT_EQ(ReadBytes(elsewhere / name), ReadBytes(folder / name)) << name;
    EXPECT_EQ(ReadBytes(Out() / name), ReadBytes(folder / name)) << name;
  }
}

TEST_F(ZipTest, AFailedAddIsToldInABoxNamingTheArchive) {
  // Zip current job into a folder that is not there, then into a file that is no archive.
  const std::string nowhere = (root / "no such folder" / "T1.zip").string();
  EXPECT_EQ(ZipCurrentJob(session, nowhere), kZipWriteFailed);
  EXPECT_FALSE(fs::exists(nowhere));
  WriteLines(root / "bad.zip", {"junk"});
  EXPECT_EQ(ZipCurrentJob(session, (root / "bad.zip").string()), kZipCannotOpen);
  EXPECT_EQ(ReadBytes(root / "bad.zip"), "junk\r\n");
  // The same from the manual page, which closes as it did.
  EXPECT_TRUE(ZipManualFinish(session, nowhere, "T1.def"));
  ASSERT_EQ(user.messages.size(), 3u);
  for (const auto& [message, zip] : {std::pair{user.messages[0], nowhere},
                                     std::pair{user.messages[1], (root / "bad.zip").string()},
                                     std::pair{user.messages[2], nowhere}}) {
    EXPECT_EQ(message.icon, Icon::Exclamation);
    EXPECT_EQ(message.text.rfind("The ZIP file " + zip + " was not written.", 0), 0u) << message.text;
  }
  EXPECT_NE(user.messages[1].text.find("not a ZIP file"), std::string::npos) << user.messages[1].text;
}

TEST_F(ZipTest, NothingToAddOrADamagedArchiveLeavesTheArchiveAsItWas) {
  const fs::path zip = root / "t1.zip";
  ASSERT_EQ(ZipArchive(zip.string(), "T1.def", jobPath.string()), kZipOk);
  const std::string before = ReadBytes(zip);
  EXPECT_EQ(ZipArchive(zip.string(), "none.* missing.txt", jobPath.string()), kZipNothingToDo);
  EXPECT_EQ(ZipArchive(zip.string(), "   ", jobPath.string()), kZipNothingToDo);
  EXPECT_EQ(ReadBytes(zip), before);

  const fs::path bad = root / "bad.zip";
  WriteLines(bad, {"this is not a zip file"});
  std::string problem;
  EXPECT_EQ(ZipArchive(bad.string(), "T1.def", jobPath.string(), &problem), kZipCannotOpen);
  EXPECT_EQ(ReadBytes(bad), "this is not a zip file\r\n");
  EXPECT_NE(problem.find("bad.zip"), std::string::npos);
}

TEST_F(ZipTest, MembersLeavingTheTargetAreRefusedAndNothingIsExtracted) {
  const std::vector<std::string> escapes = {"../evil.txt", "/tmp/tessel-evil.txt", "sub/../../evil.txt",
                                            "..\\evil.txt", "C:/evil.txt"};
  for (const std::string& name : escapes) {
    const fs::path zip = root / "escape.zip";
    WriteRawZip(zip, {{"good.txt", "good"}, {name, "evil"}});
    std::string problem;
    EXPECT_EQ(UnzipArchive(zip.string(), Out().string(), "*.*", false, &problem), kZipUnsafeName) << name;
    EXPECT_NE(problem.find(name), std::string::npos) << problem;
    EXPECT_TRUE(FilesUnder(Out()).empty()) << name;
    EXPECT_FALSE(fs::exists(root / "evil.txt"));
    EXPECT_FALSE(fs::exists("/tmp/tessel-evil.txt"));
  }
}

TEST_F(ZipTest, DamagedArchivesAreRefusedBeforeAnythingIsWritten) {
  const fs::path good = root / "good.zip";
  const std::string content(5000, 'x');
  WriteRawZip(good, {{"a.txt", "first"}, {"b.txt", content}});
  const std::string bytes = ReadBytes(good);
  fs::create_directory(Out());
  WriteLines(Out() / "a.txt", {"kept"});

  // Cut short, empty, not a ZIP at all.
  for (const std::string& damaged : {bytes.substr(0, bytes.size() / 2), std::string(), std::string("PK\x03\x04junk")}) {
    const fs::path zip = root / "damaged.zip";
    WriteBytes(zip, damaged);
    std::string problem;
    EXPECT_NE(UnzipArchive(zip.string(), Out().string(), "*.*", false, &problem), kZipOk);
    EXPECT_FALSE(problem.empty());
    EXPECT_EQ(FilesUnder(Out()), std::vector<std::string>{"a.txt"});
    EXPECT_EQ(ReadBytes(Out() / "a.txt"), "kept\r\n");
  }

  // A stored member whose data no longer matches its checksum: the second member is damaged,
  // and the first is not extracted either.
  std::string flipped = bytes;
  const std::size_t at = flipped.find(content.substr(0, 100));
  ASSERT_NE(at, std::string::npos);
  flipped[at + 10] = 'y';
  const fs::path zip = root / "crc.zip";
  WriteBytes(zip, flipped);
  EXPECT_EQ(UnzipArchive(zip.string(), Out().string(), "*.*"), kZipDamaged);
  EXPECT_EQ(TestZipArchive(zip.string()), kZipDamaged);
  EXPECT_EQ(ReadBytes(Out() / "a.txt"), "kept\r\n");
  EXPECT_EQ(TestZipArchive(good.string()), kZipOk);
  EXPECT_EQ(TestZipBytes(bytes), kZipOk);
  EXPECT_EQ(TestZipBytes(flipped), kZipDamaged);
  // Every archive cut short is refused, whatever the cut.
  for (std::size_t size = 0; size < bytes.size(); size += 7) {
    EXPECT_NE(TestZipBytes(std::string_view(bytes).substr(0, size)), kZipOk) << size;
  }
  EXPECT_EQ(TestZipArchive((root / "missing.zip").string()), kZipCannotOpen);
}

TEST(ZipNames, SafeNamesStayInsideTheTargetAndLineEndsConvertOnlyLoneLineFeeds) {
  for (const char* name : {"a.txt", "sub/a.txt", "sub\\a.txt", "a..b", "..a/b", "sub/"}) {
    EXPECT_TRUE(ZipNameIsSafe(name)) << name;
  }
  for (const char* name : {"", "/", "/a", "\\a", "..", "../a", "a/../../b", "a/..", "C:a", "c:\\a", "./.."}) {
    EXPECT_FALSE(ZipNameIsSafe(name)) << name;
  }
  EXPECT_EQ(Joined({LfToCrLf("a\nb\r\nc\n\n"), LfToCrLf("\n"), LfToCrLf("\r\r\n"), LfToCrLf("")}),
            "a\r\nb\r\nc\r\n\r\n|\r\n|\r\r\n|");
}

TEST_F(ZipTest, ExtractAsksFirstCanMakeTheTargetTheJobFolderAndANewFolderInsideIt) {
  const fs::path zip = root / "t1.zip";
  ASSERT_EQ(ZipArchive(zip.string(), "T1.def", jobPath.string()), kZipOk);
  fs::create_directory(Out());

  user.answers.push_back(Answer::No);
  EXPECT_EQ(UnzipCommand(session, zip.string(), Out().string(), true, false), -1);
  EXPECT_EQ(user.MessageTexts(), std::vector<std::string>{"Unzip " + zip.string() + "\nto folder " + Out().string() + "?"});
  EXPECT_EQ(user.messages[0].buttons, Buttons::YesNo);
  EXPECT_EQ(std::tuple(FilesUnder(Out()).size(), session.JobFolder), std::tuple(0u, JobDir()));

  user.messages.clear();
  EXPECT_EQ(UnzipCommand(session, zip.string(), Out().string(), true, false), kZipOk);
  EXPECT_EQ(FilesUnder(Out()), std::vector<std::string>{"T1.def"});
  ASSERT_EQ(user.messages.size(), 2u);
  EXPECT_EQ(user.messages[1].text + "|" + session.JobFolder,
            "Choose File, Open to view this job|" + Out().string() + PathSeparator());

  // A refused archive is told, and the folder still changes when asked.
  user.messages.clear();
  session.JobFolder = JobDir();
  WriteLines(root / "bad.zip", {"junk"});
  EXPECT_EQ(UnzipCommand(session, (root / "bad.zip").string(), Out().string(), true, false), kZipCannotOpen);
  ASSERT_EQ(user.messages.size(), 3u);
  EXPECT_EQ(user.messages[1].icon, Icon::Stop);
  EXPECT_NE(user.messages[1].text.find("bad.zip"), std::string::npos);
  EXPECT_EQ(user.messages[2].text + "|" + session.JobFolder,
            "Choose File, Open to view this job|" + Out().string() + PathSeparator());

  // A new folder is made inside the target.
  user.inputs.push_back(std::string("fresh"));
  EXPECT_EQ(UnzipNewFolder(session, root.string()), (root / "fresh").string());
  EXPECT_TRUE(fs::is_directory(root / "fresh"));
  EXPECT_EQ(user.prompts, std::vector<std::string>{"Enter a name for the new folder"});
  // Cancelled or empty: nothing.
  user.inputs = {std::nullopt, std::string("  ")};
  EXPECT_EQ(UnzipNewFolder(session, root.string()) + UnzipNewFolder(session, root.string()), "");
}

TEST_F(ZipTest, ProgressIsToldAndACancelLeavesTheArchiveAsItWasAndNothingBesideIt) {
  // Large enough for libzip to tell its compressing in several steps.
  std::string big;
  for (int k = 0; big.size() < (3u << 20); ++k) big += std::to_string(k * 7919) + " survey line\n";
  WriteJobBytes("T1.pts", big);
  const std::string zip = (root / "t1.zip").string();
  const auto filesBeside = [&] { return FilesUnder(root).size(); };
  const std::size_t alone = filesBeside();

  // Watched to its end: the reading and the compressing told, the share rising to the whole.
  StopAfter watched(StopAfter::kNever);
  ASSERT_EQ(ZipCurrentJob(session, zip, &watched), kZipOk);
  ASSERT_GT(watched.fractions.size(), 6u);
  EXPECT_TRUE(std::is_sorted(watched.fractions.begin(), watched.fractions.end()));
  EXPECT_GE(watched.fractions.back(), 0.99);
  EXPECT_EQ(watched.steps.front(), "Reading the files for " + zip);
  EXPECT_EQ(watched.steps.back(), "Compressing into " + zip);
  EXPECT_EQ(user.notes.back(), ZipWrittenNote(4, zip));
  const std::string before = ReadBytes(zip);

  // Stopped at each report in turn: the archive byte for byte as it was, nothing left beside it,
  // and the status bar says so; then the same with no archive there before.
  for (const bool existed : {true, false}) {
    if (!existed) fs::remove(zip);
    for (std::size_t at = 0; at < watched.fractions.size(); ++at) {
      StopAfter stop(at);
      user.notes.clear();
      EXPECT_EQ(ZipCurrentJob(session, zip, &stop), kZipCancelled) << at;
      if (existed) EXPECT_EQ(ReadBytes(zip), before) << at;
      else EXPECT_FALSE(fs::exists(zip)) << at;
      EXPECT_EQ(filesBeside(), alone + (existed ? 1 : 0)) << at;
      EXPECT_EQ(user.notes, std::vector<std::string>{ZipCancelledNote(zip, existed)}) << at;
    }
  }
  EXPECT_EQ(ZipCancelledNote(zip, true), "ZIP archive cancelled: " + zip + " was left as it was.");
  EXPECT_EQ(ZipCancelledNote(zip, false), "ZIP archive cancelled: " + zip + " was not made.");
  EXPECT_TRUE(user.messages.empty());

  // The wizard's manual page: the same.
  StopAfter stopManual(1);
  user.notes.clear();
  EXPECT_TRUE(ZipManualFinish(session, zip, "T1.*", &stopManual));
  EXPECT_FALSE(fs::exists(zip));
  EXPECT_EQ(user.notes, std::vector<std::string>{ZipCancelledNote(zip, false)});
}

TEST_F(ZipTest, ExtractionCancelsOnlyWhileTheArchiveIsTested) {
  const fs::path zip = root / "t1.zip";
  ASSERT_EQ(ZipArchive(zip.string(), "T1.*", jobPath.string()), kZipOk);
  StopAfter watched(StopAfter::kNever);
  ASSERT_EQ(UnzipArchive(zip.string(), Out().string(), "*.*", false, nullptr, &watched), kZipOk);
  // Three members tested, then three extracted.
  ASSERT_EQ(watched.steps.size(), 6u);
  EXPECT_EQ(watched.steps[0], "Testing " + zip.string());
  EXPECT_EQ(watched.steps[3], "Extracting " + zip.string());
  EXPECT_TRUE(std::is_sorted(watched.fractions.begin(), watched.fractions.end()));
  for (std::size_t at = 0; at < watched.steps.size(); ++at) {
    fs::remove_all(Out());
    fs::create_directory(Out());
    StopAfter stop(at);
    user.messages.clear();
    user.notes.clear();
    user.answers.push_back(Answer::Yes);
    const int code = UnzipCommand(session, zip.string(), Out().string(), true, false, &stop);
    if (at <= 3) {
      // Asked by the time the last member is tested: nothing extracted, no box, JobFolder as it
      // was.
      EXPECT_EQ(code, kZipCancelled) << at;
      EXPECT_TRUE(FilesUnder(Out()).empty()) << at;
      EXPECT_EQ(user.notes, std::vector<std::string>{UnzipCancelledNote(zip.string())}) << at;
      EXPECT_EQ(user.messages.size(), 1u) << at;
      EXPECT_EQ(session.JobFolder, JobDir()) << at;
    } else {
      // Once files are written the extraction runs to its end.
      EXPECT_EQ(code, kZipOk) << at;
      EXPECT_EQ(FilesUnder(Out()), (std::vector<std::string>{"T1.bin", "T1.def", "T1.raw"})) << at;
      session.JobFolder = JobDir();
    }
  }
  EXPECT_EQ(UnzipCancelledNote("a.zip"), "Extraction cancelled: nothing was extracted from a.zip.");
}

TEST_F(ZipTest, TheWizardNeedsAJobForTheCurrentJobAndANameAndItemsForTheManualPage) {
  EXPECT_TRUE(ZipWizardNext(session, true));
  session.JobBase.clear();
  EXPECT_TRUE(ZipWizardNext(session, false));
  EXPECT_TRUE(user.messages.empty());
  EXPECT_FALSE(ZipWizardNext(session, true));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_EQ(user.messages[0].text, "No job is open");
  EXPECT_EQ(user.messages[0].icon, Icon::Stop);
  user.messages.clear();
  UseJob("T1");

  const std::string zip = (root / "manual.zip").string();
  EXPECT_FALSE(ZipManualFinish(session, " ", "T1.def"));
  EXPECT_FALSE(ZipManualFinish(session, zip, "  "));
  EXPECT_EQ(user.MessageTexts(),
            (std::vector<std::string>{"You must supply a zip file name", "You must select files to include"}));
  EXPECT_FALSE(fs::exists(zip));
  EXPECT_TRUE(ZipManualFinish(session, zip, JobDir() + "*.raw " + JobDir() + "other.txt"));
  EXPECT_EQ(Shell("unzip -tq " + Q(zip)), 0);
  EXPECT_EQ(Output("unzip -Z1 " + Q(zip)),
            ZipMemberName(JobDir() + "T1.raw") + "\n" + ZipMemberName(JobDir() + "other.txt") + "\n");

  // A path with a blank stays whole in double quotes, as the page adds it; relative names are
  // stored as typed.
  const fs::path spaced = root / "a folder";
  fs::create_directory(spaced);
  WriteLines(spaced / "b c.txt", {"bc"});
  const std::string item = ZipListItem((spaced / "b c.txt").string());
  EXPECT_EQ(item, "\"" + (spaced / "b c.txt").string() + "\"");
  EXPECT_EQ(ZipWildcardItem(spaced.string(), "*.txt"), "\"" + (spaced / "*.txt").string() + "\"");
  EXPECT_EQ(ZipWildcardItem(JobDir(), "*.raw"), JobDir() + "*.raw");
  EXPECT_EQ(SplitZipItems(" a  \"b c\" d\"\" \"e"), (std::vector<std::string>{"a", "b c", "d\"\"", "e"}));
  const std::string quoted = (root / "quoted.zip").string();
  EXPECT_TRUE(ZipManualFinish(session, quoted, item + " T1.def " + ZipWildcardItem(spaced.string(), "b*")));
  EXPECT_EQ(Output("unzip -Z1 " + Q(quoted)), ZipMemberName((spaced / "b c.txt").string()) + "\nT1.def\n");
  EXPECT_EQ(user.messages.size(), 2u);
}

}  // namespace
}  // namespace tessel::test
