// The import of the township's rows from an assessor's database into .cama: the query string,
// the filter on columns 202-209, appending, and a disk that fails.

#include <gtest/gtest.h>

#include <fstream>

#include "cama/cama_import.h"
#include "cama_test_support.h"
#include "model/progress.h"
#include "model/text_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class CamaImportTest : public JobFixture {
 protected:
  CamaImportTest() {
    UseJob("T12NR04E");
    database = (root / "county.txt").string();
  }

  // A database of several townships, fractional codes, lower case and short lines.
  void WriteDatabase(Eol eol = Eol::CrLf, bool lastLineEnded = true) {
    rows = {CamaLine("A", "", "120N040E", "NE"),  CamaLine("B", "", "125N040E", "NE"), CamaLine("C", "", "120n040E", "NE"),
            CamaLine("D", "", "130N040E", "NE"),  std::string(205, 'x'),               "",
            CamaLine("E", "", "120N040E", "SW"),  CamaLine("F", "", "120N045E", "SW")};
    rows[5] = std::string(201, ' ') + "120N040E";  // a line that ends with the code
    std::string bytes = Text(rows, eol);
    if (!lastLineEnded) bytes.erase(bytes.size() - (eol == Eol::CrLf ? 2 : 1));
    std::ofstream(database, std::ios::binary) << bytes;
  }

  void ChooseDatabase() { user.files.push_back(FileChoice{database, "county.txt"}); }

  std::string database;
  std::vector<std::string> rows;
};

TEST_F(CamaImportTest, CopiesTheTownshipsRowsByteForByte) {
  for (Eol eol : {Eol::CrLf, Eol::Lf}) {
    for (bool ended : {true, false}) {
      std::filesystem::remove(jobPath / "T12NR04E.cama");
      WriteDatabase(eol, ended);
      ASSERT_TRUE(CamaImportBegin(session));
      ChooseDatabase();
      ASSERT_TRUE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
      EXPECT_EQ(ReadJob("T12NR04E.cama"), Text({rows[0], rows[5], rows[6]}));
    }
  }
  EXPECT_EQ(user.fileRequests.back().title, kCamaChooserTitle);
  EXPECT_EQ(user.fileRequests.back().filter, kCamaChooserFilter);
  EXPECT_EQ(user.status[1], (std::vector<std::string>{kStatusBuildingCama, session.JobBase, kStatusBuildingCama,
                                                       session.JobBase, kStatusBuildingCama, session.JobBase,
                                                       kStatusBuildingCama, session.JobBase}));
  EXPECT_TRUE(user.messages.empty());
}

TEST_F(CamaImportTest, FractionalAndLowerCaseCodesAreOtherTownships) {
  // The query's fields are neither padded nor trimmed.
  EXPECT_EQ(QueryCode({"2", "0", "N", "04", "0", "E"}), "20N040E");
  WriteDatabase();
  ChooseDatabase();
  ASSERT_TRUE(CamaImportQuery(session, {"12", "5", "N", "04", "0", "E"}));
  EXPECT_EQ(ReadJob("T12NR04E.cama"), Text({rows[1]}));
  std::filesystem::remove(jobPath / "T12NR04E.cama");
  ChooseDatabase();
  ASSERT_TRUE(CamaImportQuery(session, {"12", "0", "n", "04", "0", "E"}));
  EXPECT_EQ(ReadJob("T12NR04E.cama"), Text({rows[2]}));
}

TEST_F(CamaImportTest, AppendingAndRefusing) {
  WriteDatabase();
  ChooseDatabase();
  ASSERT_TRUE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
  const std::string once = ReadJob("T12NR04E.cama");

  // No: the file stays and the dialog does not open.
  user.answers = {Answer::No};
  EXPECT_FALSE(CamaImportBegin(session));
  EXPECT_EQ(user.messages.back().text, kMsgCamaAppend);
  EXPECT_EQ(user.messages.back().buttons, Buttons::YesNo);

  // Yes and the same query: every row twice.
  user.answers = {Answer::Yes};
  EXPECT_TRUE(CamaImportBegin(session));
  ChooseDatabase();
  ASSERT_TRUE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
  EXPECT_EQ(ReadJob("T12NR04E.cama"), once + once);

  // A cancelled chooser writes nothing.
  EXPECT_FALSE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
  EXPECT_EQ(ReadJob("T12NR04E.cama"), once + once);
}

TEST_F(CamaImportTest, EmptyOrUnreadableDatabase) {
  std::ofstream(database, std::ios::binary).flush();
  ChooseDatabase();
  ASSERT_TRUE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
  EXPECT_EQ(ReadJob("T12NR04E.cama"), "");
  EXPECT_TRUE(user.messages.empty());

  user.files.push_back(FileChoice{(root / "missing.txt").string(), "missing.txt"});
  EXPECT_FALSE(CamaImportQuery(session, DefaultTownshipQuery(session.JobName)));
  ASSERT_EQ(user.messages.size(), 1u);
  EXPECT_NE(user.messages[0].text.find("missing.txt"), std::string::npos);
}

TEST_F(CamaImportTest, AFailingDiskLeavesCamaAsItWas) {
  WriteDatabase();
  WriteJob("T12NR04E.cama", {"earlier row"});
  const std::string before = ReadJob("T12NR04E.cama");
  for (WriteStep step : {WriteStep::Open, WriteStep::Write, WriteStep::Flush, WriteStep::Close, WriteStep::Rename}) {
    struct Fail : WriteFaults {
      explicit Fail(WriteStep s) : step(s) {}
      bool Fails(WriteStep at, const std::string& path) override { return at == step && path.ends_with(".cama"); }
      WriteStep step;
    } faults(step);
    user.messages.clear();
    EXPECT_FALSE(CamaImportFrom(session, "120N040E", database));
    EXPECT_EQ(ReadJob("T12NR04E.cama"), before);
    ASSERT_EQ(user.messages.size(), 1u);
    EXPECT_NE(user.messages[0].text.find("T12NR04E.cama"), std::string::npos);
  }
  int files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(jobPath)) ++files;
  EXPECT_EQ(files, 1);  // no temporary left behind
}

TEST_F(CamaImportTest, ProgressFollowsTheDatabaseAndACancelLeavesCamaAsItWas) {
  // A database of three and a half reading parts, the township's rows in each.
  std::vector<std::string> big;
  while (big.size() * 372 < (7u << 20) / 2) {
    big.push_back(CamaLine(std::to_string(big.size()), "", big.size() % 2 ? "120N040E" : "130N040E", "NE"));
  }
  std::ofstream(database, std::ios::binary) << Text(big);
  WriteJob("T12NR04E.cama", {"earlier row"});
  const std::string before = ReadJob("T12NR04E.cama");

  // Watched to its end: every part told, the share read rising to the whole.
  StopAfter never(1000);
  long long appended = 0;
  ASSERT_TRUE(CamaImportFrom(session, "120N040E", database, &appended, &never));
  EXPECT_EQ(appended, static_cast<long long>(big.size() / 2));
  ASSERT_EQ(never.fractions.size(), 4u);
  EXPECT_NEAR(never.fractions[0], 2.0 / 7.0, 1e-3);
  EXPECT_EQ(never.fractions.back(), 1.0);
  EXPECT_EQ(never.steps[0], kCamaReadingStep);
  EXPECT_TRUE(user.notes.empty());

  // Stopped after the second part, mid-way through the database: .cama is as it was, byte for
  // byte, and the status bar says so after the first panel is back on the job.
  WriteJob("T12NR04E.cama", {"earlier row"});
  user.status.clear();
  StopAfter two(2);
  EXPECT_FALSE(CamaImportFrom(session, "120N040E", database, nullptr, &two));
  EXPECT_EQ(two.fractions.size(), 2u);
  EXPECT_EQ(ReadJob("T12NR04E.cama"), before);
  EXPECT_EQ(user.notes, std::vector<std::string>{CamaImportCancelledText(session.DatasetPath(".cama"))});
  EXPECT_EQ(user.notes[0], "CAMA import cancelled: " + (jobPath / "T12NR04E.cama").string() + " is as it was.");
  ASSERT_FALSE(user.status[1].empty());
  EXPECT_EQ(user.status[1].back(), session.JobBase);
  EXPECT_TRUE(user.messages.empty());
}

}  // namespace
}  // namespace tessel::test
