// Window places in ts$002.cfg and the find box of the calculation lists.

#include "model/dialog_memory.h"
#include "test_support.h"

namespace tessel::test {
namespace {

class DialogMemory : public JobFixture {
 protected:
  std::filesystem::path Places() const { return toolPath / "ts$002.cfg"; }
};

TEST_F(DialogMemory, AMissingFileKeepsTheDefaultAndIsMadeAtClosing) {
  EXPECT_FALSE(ReadWindowPlace(session, "frmSelectedPoints").has_value());
  WriteWindowPlace(session, "frmSelectedPoints", {1200, 300.5f, 4000, 5000});
  EXPECT_EQ(ReadBytes(Places()), "frmSelectedPoints,1200,300.5,4000,5000\r\n");
  const auto place = ReadWindowPlace(session, "frmSelectedPoints");
  ASSERT_TRUE(place.has_value());
  EXPECT_EQ(place->top, 1200.0f);
  EXPECT_EQ(place->left, 300.5f);
  EXPECT_EQ(place->height, 4000.0f);
  EXPECT_EQ(place->width, 5000.0f);
}

TEST_F(DialogMemory, RewriteReplacesEveryLineOfTheKeyAndKeepsTheOthers) {
  WriteLines(Places(), {"frmAttributes,1,2,3,4", "frmSelectedLines,5,6,7,8", "frmAttributes,9,9,9,9"});
  WriteWindowPlace(session, "frmAttributes", {10, 20, 30, 40});
  EXPECT_EQ(ReadBytes(Places()), Text({"frmAttributes,10,20,30,40", "frmSelectedLines,5,6,7,8", "frmAttributes,10,20,30,40"}));
  // The rewrite went through the scratch copy, which holds the file as it was.
  EXPECT_EQ(ReadBytes(toolPath / "tstemp.cfg"),
            Text({"frmAttributes,1,2,3,4", "frmSelectedLines,5,6,7,8", "frmAttributes,9,9,9,9"}));

  // A key not yet in the file is added at the end.
  WriteWindowPlace(session, "frmSelectedParcels", {1, 1, 1, 1});
  EXPECT_EQ(ReadBytes(Places()), Text({"frmAttributes,10,20,30,40", "frmSelectedLines,5,6,7,8",
                                       "frmAttributes,10,20,30,40", "frmSelectedParcels,1,1,1,1"}));
}

TEST_F(DialogMemory, KeysMatchByTheirFirstCharacters) {
  // A key that begins another takes that line too, on reading and on writing.
  WriteLines(Places(), {"frmADDCalcs,1,1,1,1", "frmADD,2,2,2,2"});
  EXPECT_EQ(ReadWindowPlace(session, "frmADD")->top, 2.0f);
  EXPECT_EQ(ReadWindowPlace(session, "frmADDCalcs")->top, 1.0f);
  WriteWindowPlace(session, "frmADD", {7, 7, 7, 7});
  EXPECT_EQ(ReadBytes(Places()), Text({"frmADD,7,7,7,7", "frmADD,7,7,7,7"}));
}

TEST(FindBox, SearchesFromColumnFourAndFromTheEntryAfterTheSelected) {
  const std::vector<std::string> entries = {" 1 100100 ...", " 1 100200 ...", " 2 950101 ...", " 1 100210 ..."};
  EXPECT_EQ(FindEntry(entries, "1002", 0), 1);
  EXPECT_EQ(FindEntry(entries, "1002", 2), 3);  // Find Next after the second entry
  EXPECT_EQ(FindEntry(entries, "950", 0), 2);
  EXPECT_FALSE(FindEntry(entries, "1002", 4).has_value());
  EXPECT_FALSE(FindEntry(entries, "1 100", 0).has_value());  // columns 1 to 3 are not searched
  EXPECT_EQ(NotFoundText("777"), "Point identifier 777 not found.");
}

}  // namespace
}  // namespace tessel::test
