#pragma once
// The user's manual: Markdown pages read as the help window and the manual's tests read them.
// A heading names the forms it describes by their object names written as code spans
// ("## The township diagram (`frmTWP`)"); F1 on a form opens the section so named. Anchors are
// the heading's GitHub-style anchor, so links between pages work on the web as in the program.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

// One page of the manual: its file name ("viewer.md") and its Markdown text.
struct ManualPage {
  std::string file;
  std::string text;
};

struct ManualHeading {
  int level = 0;       // 1 to 6
  int line = 0;        // 1-based line of the page
  std::string title;   // the heading's text as written, without the leading #s
  std::string anchor;  // the anchor a link uses: "#the-township-diagram-frmtwp"'s part after #
  std::vector<std::string> names;  // the code spans of the heading: the forms it describes
};

// A link or an image of a page, as written between the parentheses.
struct ManualReference {
  int line = 0;
  bool image = false;
  std::string target;
};

// Where a section stands: page, anchor and heading.
struct ManualPlace {
  std::string file;
  std::string anchor;
  std::string title;
};

// A section holding every word searched for, with how often the words occur in it.
struct ManualHit {
  ManualPlace place;
  int count = 0;
};

// Gives the anchors of one page's headings in order: the heading text in lower case, with every
// character but letters, digits, blanks, '-' and '_' dropped and blanks turned into '-'; a
// repeated anchor gets "-1", "-2", ... as on GitHub.
class AnchorMaker {
 public:
  std::string Next(std::string_view title);

 private:
  std::vector<std::string> made_;
};

// The pages in the manual's order: `first` (the title page), then the pages in the order of its
// links to them, then the others by name.
std::vector<ManualPage> InManualOrder(std::vector<ManualPage> pages, std::string_view first);

// The headings of a page (ATX headings outside fenced code blocks).
std::vector<ManualHeading> ManualHeadings(std::string_view markdown);

// The inline links and images of a page, outside code spans and fenced code blocks.
std::vector<ManualReference> ManualReferences(std::string_view markdown);

// The section whose heading names `objectName`; the first in page order when several do.
std::optional<ManualPlace> FindFormSection(const std::vector<ManualPage>& pages, std::string_view objectName);

// Every object name named by more than one heading, once each.
std::vector<std::string> NamesInSeveralHeadings(const std::vector<ManualPage>& pages);

// The references that lead nowhere, each as "<file>:<line>: <target>". A link must name a page of
// the manual (and an anchor of it, when it has one) or an anchor of its own page; an image must
// name a file for which `otherFile` holds. Web addresses (http:, https:, mailto:) are not
// followed. Nothing may lead out of the manual's folder: the program carries the folder alone.
std::vector<std::string> BrokenReferences(const std::vector<ManualPage>& pages,
                                          const std::function<bool(const std::string&)>& otherFile);

// The sections, in manual order, whose text holds every word of `words` (blank-separated,
// without regard to case); empty when `words` holds none.
std::vector<ManualHit> SearchManual(const std::vector<ManualPage>& pages, std::string_view words);

}  // namespace tessel
