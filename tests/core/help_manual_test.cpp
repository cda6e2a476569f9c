// The manual as the help window reads it: heading anchors as on GitHub, the form names of the
// headings, links and pictures, the search over every page.

#include <gtest/gtest.h>

#include <set>

#include "help/manual.h"

namespace tessel {
namespace {

// Level, line, title, anchor and form names of a heading.
std::string Show(const ManualHeading& h) {
  std::string text = std::to_string(h.level) + " " + std::to_string(h.line) + " " + h.title + " #" + h.anchor;
  for (const std::string& name : h.names) text += " " + name;
  return text;
}
std::string Show(const ManualReference& r) {
  return std::to_string(r.line) + (r.image ? " image " : " link ") + r.target;
}
std::string Show(const ManualHit& hit) { return hit.place.file + "#" + hit.place.anchor + " " + std::to_string(hit.count); }
template <typename T>
std::vector<std::string> Shown(const std::vector<T>& items) {
  std::vector<std::string> out;
  for (const T& item : items) out.push_back(Show(item));
  return out;
}

TEST(ManualAnchors, FollowGitHubRules) {
  const std::pair<const char*, const char*> cases[] = {
      {"The township diagram (`frmTWP`)", "the-township-diagram-frmtwp"},
      {"Selected Parcel Id's (`frmTesting`)", "selected-parcel-ids-frmtesting"},
      {"dump: what a job holds", "dump-what-a-job-holds"},
      {"Lines (LSA) & chains", "lines-lsa--chains"},
      {"Tessel.hst and ts$002.cfg", "tesselhst-and-ts002cfg"},
      {"snake_case stays", "snake_case-stays"},
      {"Zip options set by hand", "zip-options-set-by-hand"},
  };
  for (const auto& [title, anchor] : cases) {
    AnchorMaker maker;
    EXPECT_EQ(maker.Next(title), anchor) << title;
  }
  AnchorMaker repeated;
  EXPECT_EQ(repeated.Next("Notes"), "notes");
  EXPECT_EQ(repeated.Next("Notes"), "notes-1");
  EXPECT_EQ(repeated.Next("notes"), "notes-2");
  EXPECT_EQ(repeated.Next("Notes 1"), "notes-1-1");
}

TEST(ManualHeadings, OnlyProseHeadingsWithTheirFormNames) {
  const std::string page =
      "# Title\r\n"
      "Text with #hashtag\n"
      "```sh\n"
      "# a shell comment, not a heading\n"
      "```\n"
      "## The section dialog (`frmIRR`) ##\n"
      "#NoBlank is text\n"
      "   ### Indented (`frmA`, `frmB`)\n"
      "    #### four blanks make code\n"
      "~~~\n"
      "## inside a tilde fence\n"
      "~~~\n"
      "####### seven is text\n"
      "## C#\n";
  EXPECT_EQ(Shown(ManualHeadings(page)),
            (std::vector<std::string>{"1 1 Title #title", "2 6 The section dialog (`frmIRR`) #the-section-dialog-frmirr frmIRR",
                                      "3 8 Indented (`frmA`, `frmB`) #indented-frma-frmb frmA frmB", "2 14 C# #c"}));
}

TEST(ManualReferences, LinksAndPicturesOutsideCode) {
  const std::string page =
      "See [the canvas](viewer.md#layers) and ![a picture](images/a.png \"title\").\n"
      "`[not a link](x.md)` but [a link](#local).\n"
      "```\n"
      "[in a fence](fenced.md)\n"
      "```\n"
      "[![linked picture](images/b.png)](batch.md)\n"
      "[unclosed](\n";
  EXPECT_EQ(Shown(ManualReferences(page)),
            (std::vector<std::string>{"1 link viewer.md#layers", "1 image images/a.png", "2 link #local",
                                      "6 image images/b.png", "6 link batch.md"}));
}

std::vector<ManualPage> SmallManual() {
  return {{"index.md", "# Manual\n[B](b.md) then [A](a.md)\n"},
          {"a.md", "# A\n## The diagram (`frmTWP`)\nsplitplan runs. Splitplan again.\n## Other\nnothing\n"},
          {"b.md", "Before any heading: splitplan.\n# B\n## List (`frmList`, `frmTWP`)\nthe SPLITPLAN report\n"}};
}

TEST(ManualSections, BrokenReferencesAreNamed) {
  std::vector<ManualPage> pages = {
      {"index.md",
       "# Manual\n"
       "[ok](a.md) [ok](a.md#the-part) [ok](#manual) [web](https://example.org/x.md)\n"
       "[no page](missing.md) [no anchor](a.md#nowhere) [no local](#nowhere)\n"
       "![ok](images/here.png) ![gone](images/gone.png) ![out](../images/here.png)\n"
       "[out](../../README.md) [abs](/etc/passwd) [scheme](file:///tmp/x.md) [empty]()\n"},
      {"a.md", "# A\n## The part\n"}};
  const std::set<std::string> files{"images/here.png"};
  const std::vector<std::string> broken =
      BrokenReferences(pages, [&files](const std::string& f) { return files.count(f) > 0; });
  const std::vector<std::string> expected = {
      "index.md:3: missing.md",         "index.md:3: a.md#nowhere",      "index.md:3: #nowhere",
      "index.md:4: images/gone.png",    "index.md:4: ../images/here.png", "index.md:5: ../../README.md",
      "index.md:5: /etc/passwd",        "index.md:5: file:///tmp/x.md",  "index.md:5: "};
  EXPECT_EQ(broken, expected);
}

TEST(ManualSections, FormsFoundByTheirHeadingsAndSectionsHoldingEveryWord) {
  const std::vector<ManualPage> pages = InManualOrder(SmallManual(), "index.md");
  ASSERT_EQ(pages.size(), 3u);
  EXPECT_EQ(pages[0].file, "index.md");
  EXPECT_EQ(pages[1].file, "b.md");
  EXPECT_EQ(pages[2].file, "a.md");

  const auto list = FindFormSection(pages, "frmList");
  ASSERT_TRUE(list);
  EXPECT_EQ(list->file, "b.md");
  EXPECT_EQ(list->anchor, "list-frmlist-frmtwp");
  // Named twice: the first in manual order, and the test of the manual refuses it.
  EXPECT_EQ(FindFormSection(pages, "frmTWP")->file, "b.md");
  EXPECT_EQ(NamesInSeveralHeadings(pages), std::vector<std::string>{"frmTWP"});
  EXPECT_FALSE(FindFormSection(pages, "frmMissing"));
  EXPECT_FALSE(FindFormSection(pages, "frmtwp"));  // exact, case included

  // Manual order: b.md's text before its first heading, its list section, then a.md.
  EXPECT_EQ(Shown(SearchManual(pages, "  SplitPlan ")),
            (std::vector<std::string>{"b.md# 1", "b.md#list-frmlist-frmtwp 1", "a.md#the-diagram-frmtwp 2"}));
  const std::vector<ManualHit> both = SearchManual(pages, "splitplan report");
  ASSERT_EQ(both.size(), 1u);
  EXPECT_EQ(both[0].place.title, "List (`frmList`, `frmTWP`)");
  EXPECT_EQ(both[0].count, 2);
  EXPECT_TRUE(SearchManual(pages, "   ").empty());
  EXPECT_TRUE(SearchManual(pages, "splitplan absent").empty());
}

}  // namespace
}  // namespace tessel
