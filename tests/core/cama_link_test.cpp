// The linking chain on small crafted jobs: .clot, .mtc and .phd compared whole, each settled
// point of the chain and the translator, the failures that must leave no .mtc, and the indexed
// chain against the described loops on random jobs.

#include <gtest/gtest.h>

#include <random>

#include "cama/free_format.h"
#include "cama/legal_tokens.h"
#include "cama/link_chain.h"
#include "cama_test_support.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "test_support.h"

namespace tessel::test {
namespace {

constexpr const char* kCode = "120N040E";

class CamaChainTest : public JobFixture {
 protected:
  CamaChainTest() { UseJob("T12NR04E"); }

  void WriteCama(const std::vector<std::string>& lines) { WriteJob("T12NR04E.cama", lines); }
  std::string Link(int r) const { return session.cama.LinkGeocode.get(r); }
  std::string Colour(int r) const { return session.cama.LinkColor.get(r); }

  // The settled points in one job: cells, numbered surveys, a whole section, a section
  // without CAMA rows, the first-occurrence test and the last record winning.
  void SettledJob() {
    WriteCama({
        CamaLine("11111107100000001", "BROWN", kCode, "NW4NE4,SENE"),
        CamaLine("22222207400000002", "JONES", kCode, "SESE, M.S. 1234"),
        CamaLine("33333307200000003", "SMITH 1234", kCode, "MS 1234"),
        CamaLine("44444405000000004", "GREEN", kCode, "ALL"),
        CamaLine("55555507100000005", "WHITE", kCode, "NE"),
    });
    AddParcel(session, "Sec_007 B T_A               40.000 T12NR04E-07-00001", 1000.5, 2000.25);
    AddParcel(session, "Sec_007 M T_?               40.000 T12NR04E-07-00002", 1100, 2100);
    AddParcel(session, "Sec_007 P T_L 3             40.000 T12NR04E-07-00003", 1200, 2200);
    AddParcel(session, "Sec_007 K T_M 1,234         40.000 T12NR04E-07-00004", 1300, 2300);
    AddParcel(session, "Sec_005 A T_H 34            40.000 T12NR04E-05-00005", 1400, 2400);
    AddParcel(session, "Sec_009 A T_A               40.000 T12NR04E-09-00006", 1500, 2500);
    AddParcel(session, "Sec_007 D T_A               40.000 T12NR04E-07-00007", 1600, 2600);
    AddParcel(session, "Sec_007 H T_A               40.000 T12NR04E-07-00008", 1700, 2700, "");
  }

  std::string ClotLine(const std::string& text, const std::string& x, const std::string& y) {
    const std::string first = PadTo(text, (text.size() / 14 + 1) * 14) + x;
    return PadTo(first, (first.size() / 14 + 1) * 14) + y;
  }

  FixedDate date_;
};

TEST(CamaFreeFormat, NumbersAndZones) {
  EXPECT_EQ(FreeNumber(12), " 12 ");
  EXPECT_EQ(FreeNumber(-3.5), "-3.5 ");
  EXPECT_EQ(FreeNumber(0.25), " .25 ");
  EXPECT_EQ(FreeNumber(0), " 0 ");
  EXPECT_EQ(FreeNumber(2129650.815), " 2129650.815 ");
  EXPECT_EQ(FreeNumber(1.0 / 3.0), " .333333333333333 ");
  EXPECT_EQ(FreeNumber(1e16), " 1E+16 ");
  // A comma moves to column 15, 29, 43: past a zone that is already full too.
  EXPECT_EQ(FreeLine().Text("abc").Zone().Text("x").str(), PadTo("abc", 14) + "x");
  EXPECT_EQ(FreeLine().Text(std::string(14, 'a')).Zone().Text("x").str(), std::string(14, 'a') + std::string(14, ' ') + "x");
  EXPECT_EQ(FreeLine().Text("Parcel area point(X,Y)= ").Number(2129650.815).Zone().Number(507423.319).str(),
            "Parcel area point(X,Y)=  2129650.815 " + std::string(5, ' ') + " 507423.319 ");
  FixedDate date;
  EXPECT_EQ(LinkDateText(), "1/2/2024");
  EXPECT_EQ(ShortDate(1733011200), "12/1/2024");
}

TEST_F(CamaChainTest, SettledPointsWholeFiles) {
  SettledJob();
  ASSERT_TRUE(RunLinkChain(session));
  const CamaStore& c = session.cama;
  ASSERT_EQ(c.LinkCount, 7);  // section 9 has no CAMA row, so its parcel has no link record
  EXPECT_EQ(c.CamaCount, 5);
  EXPECT_EQ(c.LinkLoadedCount, 0);  // the chain does not load

  EXPECT_EQ(ReadJob("T12NR04E.clot"),
            Text({ClotLine("444444051H34   ", " 1400 ", " 2400 "), ClotLine("555555071B?", " 1000.5 ", " 2000.25 "),
                  ClotLine("555555074M?", " 1100 ", " 2100 "), ClotLine("555555074P?", " 1200 ", " 2200 "),
                  ClotLine("555555073M1234", " 1300 ", " 2300 "), ClotLine("555555071D?", " 1600 ", " 2600 "),
                  ClotLine("555555072H?", " 1700 ", " 2700 ")}));

  // Section 5's "ALL" row, then the number 34 found in record 2's legal text (another section)
  // and not in record 3, whose owner's name holds it first.
  // Section 5's "ALL" row, then the number 34 found in record 2's legal text (another section)
  // and not in record 3, whose owner's name holds it first; NW4NE4 of record 1, then NE of record
  // 5: the last wins; cell M is no survey kind, so column 11 holds "?"; M.S. 1,234 reads 1234.
  const std::pair<std::string, std::string> links[] = {
      {"22222207400000002", kLinkBlue},  {"55555507100000005", kLinkGreen}, {"555555074M?", kLinkRed},
      {"22222207400000002", kLinkGreen}, {"22222207400000002", kLinkBlue},  {"55555507100000005", kLinkGreen},
      {"555555072H?", kLinkRed}};
  for (int r = 1; r <= 7; ++r) {
    EXPECT_EQ(Link(r), links[r - 1].first) << r;
    EXPECT_EQ(Colour(r), links[r - 1].second) << r;
  }

  EXPECT_EQ(ReadJob("T12NR04E.phd"), Text({"Cama Linked on 1/2/2024", "Total number of clot records (centroids)=  6 ",
                                           "Total number of cama records =  4 ",
                                           "Preliminary link (numbered surveys) matched =  2 ", "Total # of parcels =  7 ",
                                           "Matched parcels =  5 ", "Unmatched parcels =  2 ", "Successfully linked 71%",
                                           "----------------------------"}));
  const std::vector<std::string> mtc = {"T12NR04E CAMA Linked Parcels 1/2/2024 Total linked = 7 ",
                                        PointLine(" 1400 ", " 2400 "),
                                        "Parcel chain =  100100 100200",
                                        "GeoCode = 22222207400000002",
                                        "",
                                        PointLine(" 1000.5 ", " 2000.25 "),
                                        "Parcel chain =  100100 100200",
                                        "GeoCode = 55555507100000005",
                                        ""};
  const std::string written = ReadJob("T12NR04E.mtc");
  EXPECT_EQ(written.substr(0, Text(mtc).size()), Text(mtc));
  EXPECT_NE(written.find(PointLine(" 1700 ", " 2700 ") + "\r\nParcel chain = \r\nGeoCode = 555555072H?\r\n\r\n"),
            std::string::npos);
  EXPECT_EQ(user.status[1].front(), kStatusIdentifying);
  EXPECT_EQ(user.statusNow[1], "Ready");
}

TEST_F(CamaChainTest, LoadReadsBackTwoColoursAndTheMenuOffersIt) {
  SettledJob();
  LinkParcelsWithCama(session);
  EXPECT_EQ(user.statusNow[1], "T12NR04E");
  ASSERT_TRUE(session.DatasetExists(".mtc"));
  const std::string phd = ReadJob("T12NR04E.phd");

  // Yes loads; after the load only red and green remain, by the text's length.
  user.answers = {Answer::Yes};
  LinkParcelsWithCama(session);
  EXPECT_EQ(user.messages.back().text, kMsgAlreadyLinked);
  EXPECT_EQ(user.messages.back().buttons, Buttons::YesNoCancel);
  const CamaStore& c = session.cama;
  EXPECT_EQ(c.LinkCount, 7);
  EXPECT_EQ(c.LinkLoadedCount, 7);
  EXPECT_EQ(c.CamaCount, 5);
  EXPECT_EQ(Colour(1), kLinkGreen);  // was blue
  EXPECT_EQ(Colour(3), kLinkRed);
  EXPECT_EQ(c.LinkX.get(2), 1000.5);
  EXPECT_EQ(c.LinkY.get(2), 2000.25);
  EXPECT_EQ(c.LinkChain.get(2), " 100100 100200");
  EXPECT_EQ(c.ClotLines.get(1), "");

  user.answers = {Answer::No};
  LinkParcelsWithCama(session);
  EXPECT_EQ(user.messages.back().text, kMsgDeleteBeforeRecompute);
  user.answers = {Answer::Cancel};
  const auto before = user.messages.size();
  LinkParcelsWithCama(session);
  EXPECT_EQ(user.messages.size(), before + 1);
  EXPECT_EQ(ReadJob("T12NR04E.phd"), phd);  // nothing ran again

  // Delete Old Cama removes .clot and .mtc only; a second chain grows .phd by nine lines.
  DeleteOldCama(session);
  EXPECT_FALSE(session.DatasetExists(".mtc"));
  EXPECT_FALSE(session.DatasetExists(".clot"));
  EXPECT_TRUE(session.DatasetExists(".cama"));
  EXPECT_EQ(session.cama.LinkCount, 0);
  EXPECT_EQ(session.cama.LinkLoadedCount, 0);
  LinkParcelsWithCama(session);
  EXPECT_EQ(ReadJob("T12NR04E.phd"), phd + phd);
}

TEST_F(CamaChainTest, LoadKeepsWhatAShortOrOddFileHolds) {
  WriteJob("T12NR04E.mtc", {"header", PointLine(" 10.5 ", " 20.25 "), "Parcel chain =  1 2", "GeoCode =  12345678901234567  ",
                            "", "Parcel area point(X,Y)=  x", "Parcel chain = ", "GeoCode = 1234"});
  ASSERT_TRUE(LoadLinkFile(session));
  EXPECT_EQ(session.cama.LinkCount, 2);
  EXPECT_EQ(session.cama.LinkX.get(1), 10.5);
  EXPECT_EQ(session.cama.LinkY.get(1), 20.25);
  EXPECT_EQ(Link(1), "12345678901234567");
  EXPECT_EQ(Colour(1), kLinkGreen);
  EXPECT_EQ(Colour(2), kLinkRed);
  EXPECT_EQ(session.cama.LinkX.get(2), 0.0);
  EXPECT_EQ(session.cama.CamaCount, 0);  // no .cama

  // A Y too large for a double ends the reading in its group: the X read before it stays, the
  // texts after it are not read, and the groups before keep everything.
  WriteJob("T12NR04E.mtc", {"header", PointLine(" 10.5 ", " 20.25 "), "Parcel chain =  1 2", "GeoCode =  12345678901234567",
                            "", PointLine(" 7.00 ", " 1E999 "), "Parcel chain =  3 4", "GeoCode = 76543210987654321", "",
                            PointLine(" 8.00 ", " 9.00 "), "Parcel chain =  5 6", "GeoCode = 1"});
  ASSERT_TRUE(LoadLinkFile(session));
  EXPECT_EQ(session.cama.LinkCount, 2);
  EXPECT_EQ(session.cama.LinkX.get(2), 7.0);
  EXPECT_EQ(session.cama.LinkY.get(2), 0.0);
  EXPECT_EQ(Link(2), "");
  EXPECT_EQ(Colour(2), "");
  EXPECT_EQ(session.cama.LinkChain.get(1), " 1 2");
  DeleteAnyCase(session.DatasetPath(".mtc"));
  EXPECT_FALSE(LoadLinkFile(session));
  EXPECT_EQ(session.cama.LinkCount, 0);
}

// Each failure tells its cause, writes no .mtc and leaves .cama and .phd as they were.
TEST_F(CamaChainTest, FailuresLeaveNoLinkFile) {
  AddParcel(session, "Sec_007 B T_A", 1, 1);
  WriteJob("T12NR04E.phd", {"earlier report"});
  const std::string phd = ReadJob("T12NR04E.phd");

  LinkParcelsWithCama(session);
  EXPECT_EQ(user.messages.back().text, kMsgImportCamaFirst);

  const auto expectFailure = [&](const std::vector<std::string>& cama, const std::string& message) {
    WriteCama(cama);
    const std::string before = ReadJob("T12NR04E.cama");
    LinkParcelsWithCama(session);
    EXPECT_EQ(user.messages.back().text, message);
    EXPECT_FALSE(session.DatasetExists(".mtc"));
    EXPECT_FALSE(session.DatasetExists(".clot"));
    EXPECT_EQ(ReadJob("T12NR04E.phd"), phd);
    EXPECT_EQ(ReadJob("T12NR04E.cama"), before);
    EXPECT_EQ(session.cama.LinkCount, 0);
  };
  expectFailure({CamaLine("11111108100000001", "", kCode, "NE")}, kMsgNoLinkRecords);
  expectFailure({CamaLine("11111107100000001", "", kCode, "NE"), CamaLine("1111110A", "", kCode, "NE")},
                std::string(kMsgBadSection) + "2: \"0A\".");
  expectFailure({CamaLine("11111137100000001", "", kCode, "NE")}, std::string(kMsgBadSection) + "1: \"37\".");
  expectFailure({"short"}, std::string(kMsgBadSection) + "1: \"\".");
  expectFailure(std::vector<std::string>(5001, CamaLine("11111107100000001", "", kCode, "NE")), kMsgTooManyCama);
  session.parcels.Clear();
  for (int i = 0; i < 5001; ++i) AddParcel(session, "Sec_007 B T_A", 1, 1);
  expectFailure({CamaLine("11111107100000001", "", kCode, "NE")}, kMsgTooManyLinks);

  // The bounds themselves still link: 5000 lines and 5000 records.
  session.parcels.Clear();
  for (int i = 0; i < 5000; ++i) AddParcel(session, "Sec_007 B T_A", 1, 1);
  WriteCama(std::vector<std::string>(5000, CamaLine("11111107100000001", "", kCode, "NE")));
  LinkParcelsWithCama(session);
  EXPECT_TRUE(session.DatasetExists(".mtc"));
  EXPECT_EQ(session.cama.LinkCount, 5000);
}

TEST_F(CamaChainTest, WriteFailureOfTheLinkFileLeavesNoLinkFile) {
  SettledJob();
  struct FailMtc : WriteFaults {
    bool Fails(WriteStep step, const std::string& path) override { return step == WriteStep::Rename && path.ends_with(".mtc"); }
  } faults;
  EXPECT_FALSE(RunLinkChain(session));
  EXPECT_FALSE(session.DatasetExists(".mtc"));
  EXPECT_NE(user.messages.back().text.find(".mtc"), std::string::npos);
}

// The translator's settled points on single records.
TEST_F(CamaChainTest, TranslatorTokens) {
  const auto linkOf = [&](const std::string& legal, const std::string& cell) {
    ClearCamaVariables(session);
    session.parcels.Clear();
    DeleteAnyCase(session.DatasetPath(".mtc"));
    AddParcel(session, "Sec_007 " + cell + " T_A", 1, 1);
    WriteCama({CamaLine("11111107100000001", "", kCode, legal)});
    RunLinkChain(session);
    return Link(1);
  };
  EXPECT_EQ(linkOf("NW4NE4,SENE", "B"), "11111107100000001");
  EXPECT_EQ(linkOf("NW4NE4,SENE", "D"), "11111107100000001");
  EXPECT_EQ(linkOf("NW4NE4,SENE", "A"), "111111071A?");
  EXPECT_EQ(linkOf("  SENE  ", "D"), "11111107100000001");  // blanks around a token go
  EXPECT_EQ(linkOf("ne", "A"), "111111071A?");                // no upper-casing
  EXPECT_EQ(linkOf("NENE SENE", "A"), "111111071A?");         // a blank does not split
  EXPECT_EQ(linkOf("NE NE", "A"), "111111071A?");
  EXPECT_EQ(linkOf("NE1/4", "A"), "111111071A?");
  EXPECT_EQ(linkOf("NE.", "A"), "111111071A?");
  EXPECT_EQ(linkOf("", "A"), "111111071A?");
  EXPECT_EQ(linkOf("LOT 3,,N2", "E"), "11111107100000001");
  EXPECT_EQ(linkOf("N2,N2NE", "B"), "11111107100000001");
}

TEST(CamaTokens, SplitAtCommas) {
  EXPECT_EQ(SplitAtCommas(""), std::vector<std::string_view>{""});
  EXPECT_EQ(SplitAtCommas("NE"), std::vector<std::string_view>{"NE"});
  EXPECT_EQ(SplitAtCommas(",A,,B,"), (std::vector<std::string_view>{"", "A", "", "B", ""}));
}

// Every token of the table against the ground: the cells a token names are those of the area
// its parts describe, read from the outermost part inwards.
TEST(CamaTokens, TableFollowsTheGeometry) {
  // Row from the north and column from the west of each cell letter on the ground.
  const std::string ground[4] = {"FEBA", "GHCD", "JINM", "KLOP"};
  struct Box {
    int top, left, size_rows, size_cols;
  };
  const auto apply = [](Box b, const std::string& part) {
    const int hr = b.size_rows / 2, hc = b.size_cols / 2;
    if (part == "NE" || part == "NE4") return Box{b.top, b.left + hc, hr, hc};
    if (part == "NW" || part == "NW4") return Box{b.top, b.left, hr, hc};
    if (part == "SW" || part == "SW4") return Box{b.top + hr, b.left, hr, hc};
    if (part == "SE" || part == "SE4") return Box{b.top + hr, b.left + hc, hr, hc};
    if (part == "N2") return Box{b.top, b.left, hr, b.size_cols};
    if (part == "S2") return Box{b.top + hr, b.left, hr, b.size_cols};
    if (part == "E2") return Box{b.top, b.left + hc, b.size_rows, hc};
    if (part == "W2") return Box{b.top, b.left, b.size_rows, hc};
    ADD_FAILURE() << "part " << part;
    return b;
  };
  const auto& table = LegalTokenTable();
  ASSERT_EQ(table.size(), 84u);
  for (const LegalToken& entry : table) {
    std::string token = entry.token;
    std::vector<std::string> parts;
    while (!token.empty()) {
      const std::size_t n = token.size() >= 3 && token[2] == '4' ? 3 : 2;
      parts.push_back(token.substr(0, n));
      token.erase(0, n);
    }
    Box box{0, 0, 4, 4};
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) box = apply(box, *part);
    std::string expected;
    for (char letter : std::string("ABCDEFGHIJKLMNOP")) {
      for (int r = box.top; r < box.top + box.size_rows; ++r) {
        for (int col = box.left; col < box.left + box.size_cols; ++col) {
          if (ground[r][col] == letter) expected += letter;
        }
      }
    }
    std::string cells = entry.cells;
    std::sort(cells.begin(), cells.end());
    EXPECT_EQ(cells, expected) << entry.token;
    EXPECT_STREQ(TokenCells(entry.token), entry.cells);
  }
  EXPECT_EQ(TokenCells("ALL"), nullptr);
  EXPECT_EQ(TokenCells("N2E2"), nullptr);  // mixed halves do not exist
}

// The described chain, loop for loop: records x parcels for the prefix, sections x records x
// link records for whole sections, link records x records with a first-occurrence search, and
// records x tokens x cells x link records in the translator.
struct Described {
  std::vector<std::string> text, colour;
  long long matched = 0;
};

Described DescribedChain(const std::vector<std::string>& records, const ParcelStore& parcels) {
  Described d;
  d.text.push_back("");
  d.colour.push_back("");
  std::vector<std::string> clot{""};
  const auto two = [](int s) { return std::string(1, char('0' + s / 10)) + char('0' + s % 10); };
  std::vector<bool> present(37);
  for (const auto& rec : records) present[std::stoi(Trim(Mid(rec, 7, 2)))] = true;
  std::vector<int> counts(37);
  for (int s = 0; s <= 36; ++s) {
    for (const auto& rec : records) {
      if (present[s] && Mid(rec, 7, 2) == two(s)) ++counts[s];
    }
  }
  std::string prefix, quadrant;
  for (int s = 0; s <= 36; ++s) {
    if (!present[s]) continue;
    for (int p = 1; p <= parcels.ParcelCount; ++p) {
      const std::string& line = parcels.ParcelLine.get(p);
      if (Mid(line, 6, 2) != two(s)) continue;
      std::string kind, number;
      if (Mid(line, 13, 1) == "M" || Mid(line, 13, 1) == "H") {
        kind = Mid(line, 13, 1);
        for (char ch : Mid(line, 15, 5)) if (ch != ',') number += ch;
      }
      const std::string cell = Mid(line, 9, 1);
      if (cell >= "A" && cell <= "D" && cell.size() == 1) quadrant = "1";
      else if (cell >= "E" && cell <= "H" && cell.size() == 1) quadrant = "2";
      else if (cell >= "I" && cell <= "L" && cell.size() == 1) quadrant = "3";
      else if (cell >= "M" && cell <= "P" && cell.size() == 1) quadrant = "4";
      for (const auto& rec : records) {
        if (Mid(rec, 7, 2) == two(s)) prefix = Left(rec, 6);
      }
      std::string text = !kind.empty() ? prefix + two(s) + quadrant + kind + number : prefix + two(s) + quadrant + cell + "?";
      d.text.push_back(text);
      d.colour.push_back(!kind.empty() ? "65280" : "255");
      clot.push_back(FreeLine().Text(text).Zone().Number(parcels.ParcelX.get(p)).Zone().Number(parcels.ParcelY.get(p)).str());
    }
  }
  const int links = static_cast<int>(d.text.size()) - 1;
  for (int s = 1; s <= 36; ++s) {
    if (counts[s] == 0) continue;
    for (const auto& rec : records) {
      if (Mid(rec, 7, 2) != two(s) || Mid(rec, 251, 3) != "ALL") continue;
      for (int r = 1; r <= links; ++r) {
        if (Val(Mid(d.text[r], 7, 2)) == s) {
          d.text[r] = Left(rec, 17);
          d.colour[r] = "65280";
        }
      }
    }
  }
  for (int r = 1; r <= links; ++r) {
    const std::string code = Mid(clot[r], 10, 6);
    if ((Left(code, 1) == "M" || Left(code, 1) == "H") && Mid(code, 2, 1) != "?") d.colour[r] = "65535";
    const std::string needle = Trim(Mid(code, 2, 5));
    for (const auto& rec : records) {
      const std::size_t at = rec.find(needle);
      const long long position = at == std::string::npos ? 0 : static_cast<long long>(at) + 1;
      if (position >= 251 && position <= 371) {
        d.text[r] = Left(rec, 17);
        d.colour[r] = "16711680";
        ++d.matched;
      }
    }
  }
  for (const auto& rec : records) {
    const std::string legal = Mid(rec, 251, 120);
    for (auto token : SplitAtCommas(legal)) {
      const std::string t = Trim(token);
      if (t.size() < 2 || t.size() > 6) continue;
      const char* cells = TokenCells(t);
      if (!cells) continue;
      for (const char* cell = cells; *cell; ++cell) {
        for (int r = 1; r <= links; ++r) {
          const std::string& line = clot[r];
          if (Mid(line, 7, 2) == Mid(rec, 7, 2) && Mid(line, 10, 1) == std::string(1, *cell) && Mid(line, 11, 1) == "?") {
            d.text[r] = Left(rec, 17);
            d.colour[r] = "65280";
          }
        }
      }
    }
  }
  return d;
}

TEST_F(CamaChainTest, IndexedChainEqualsTheDescribedLoops) {
  std::mt19937 random(20240102);
  const auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const auto& table = LegalTokenTable();
  const std::vector<std::string> junk = {"LOT 3", "M.S. 12", "HES 1,234", "?", "ALL", "ne", "NE 1/4", " ", "",
                                         "TRACT A", "S 12", "34", "H5"};
  for (int round = 0; round < 12; ++round) {
    session.parcels.Clear();
    ClearCamaVariables(session);
    DeleteOldCama(session);
    const int sections = 1 + pick(5);
    const int parcels = 20 + pick(200);
    const std::string letters = "ABCDEFGHIJKLMNOPQ ";
    for (int p = 0; p < parcels; ++p) {
      char line[64];
      const int kind = pick(6);
      std::snprintf(line, sizeof line, "Sec_%03d %c T_%c %-5s", 1 + pick(sections + 1), letters[pick(18)],
                    kind == 0 ? 'M' : kind == 1 ? 'H' : "A?LW"[pick(4)],
                    kind < 2 ? std::to_string(pick(40)).insert(0, pick(3) == 0 ? "1," : "").c_str() : "");
      AddParcel(session, line, 1000 + pick(500), pick(10) == 0 ? 0 : 2000 + pick(500));
    }
    std::vector<std::string> records;
    const int count = 5 + pick(300);
    for (int j = 0; j < count; ++j) {
      std::string legal;
      for (int k = pick(4); k >= 0; --k) {
        if (!legal.empty()) legal += pick(5) == 0 ? " , " : ",";
        legal += pick(3) == 0 ? junk[pick(static_cast<int>(junk.size()))]
                              : table[pick(84)].token;
      }
      char key[32];
      std::snprintf(key, sizeof key, "%06d%02d%d%08d", pick(3), 1 + pick(sections), 1 + pick(4), j);
      records.push_back(CamaLine(key, pick(4) == 0 ? "OWNER 12" : "OWNER", kCode, legal));
    }
    WriteCama(records);
    const Described d = DescribedChain(records, session.parcels);
    ASSERT_TRUE(RunLinkChain(session)) << round;
    ASSERT_EQ(session.cama.LinkCount, static_cast<int>(d.text.size()) - 1) << round;
    for (int r = 1; r <= session.cama.LinkCount; ++r) {
      ASSERT_EQ(Link(r), d.text[r]) << round << " record " << r;
      ASSERT_EQ(Colour(r), d.colour[r]) << round << " record " << r;
    }
    const std::string phd = ReadJob("T12NR04E.phd");
    const std::string expected = "Preliminary link (numbered surveys) matched = " + FreeNumber(double(d.matched)) + "\r\n";
    EXPECT_NE(phd.rfind(expected), std::string::npos) << round;
  }
}

}  // namespace
}  // namespace tessel::test
