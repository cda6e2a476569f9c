#include "help/manual.h"

#include <algorithm>
#include <map>
#include <set>

namespace tessel {
namespace {

std::vector<std::string_view> Lines(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view line = text.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    if (end == text.size()) break;
    start = end + 1;
  }
  return lines;
}

char Lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

std::string LowerText(std::string_view text) {
  std::string out(text);
  std::transform(out.begin(), out.end(), out.begin(), Lower);
  return out;
}

bool IsAlnum(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

// The lines of a page with their numbers, less those inside fenced code blocks (``` or ~~~).
struct PageLine {
  int number;
  std::string_view text;
};

std::vector<PageLine> ProseLines(std::string_view markdown) {
  std::vector<PageLine> prose;
  std::string fence;
  int number = 0;
  for (std::string_view line : Lines(markdown)) {
    ++number;
    std::string_view trimmed = line.substr(std::min(line.find_first_not_of(' '), line.size()));
    const bool fenceLine = trimmed.rfind("```", 0) == 0 || trimmed.rfind("~~~", 0) == 0;
    if (fence.empty()) {
      if (fenceLine) {
        fence = std::string(trimmed.substr(0, 3));
        continue;
      }
      prose.push_back({number, line});
    } else if (fenceLine && trimmed.substr(0, 3) == fence) {
      fence.clear();
    }
  }
  return prose;
}

// An ATX heading: up to three blanks, one to six #, then a blank or the end of the line.
std::optional<ManualHeading> ParseHeading(std::string_view line) {
  std::size_t at = 0;
  while (at < line.size() && at < 3 && line[at] == ' ') ++at;
  std::size_t hashes = 0;
  while (at + hashes < line.size() && line[at + hashes] == '#') ++hashes;
  if (hashes == 0 || hashes > 6) return std::nullopt;
  at += hashes;
  if (at < line.size() && line[at] != ' ' && line[at] != '\t') return std::nullopt;
  std::string_view title = line.substr(at);
  title.remove_prefix(std::min(title.find_first_not_of(" \t"), title.size()));
  // A closing run of #s preceded by a blank is not part of the title.
  std::size_t end = title.find_last_not_of(" \t");
  title = end == std::string_view::npos ? std::string_view() : title.substr(0, end + 1);
  std::size_t closing = title.find_last_not_of('#');
  if (closing != title.size() - 1 && (closing == std::string_view::npos || title[closing] == ' ')) {
    title = closing == std::string_view::npos ? std::string_view() : title.substr(0, closing);
    end = title.find_last_not_of(" \t");
    title = end == std::string_view::npos ? std::string_view() : title.substr(0, end + 1);
  }
  ManualHeading heading;
  heading.level = static_cast<int>(hashes);
  heading.title = std::string(title);
  for (std::size_t open = title.find('`'); open != std::string_view::npos; open = title.find('`', open)) {
    const std::size_t close = title.find('`', open + 1);
    if (close == std::string_view::npos) break;
    if (close > open + 1) heading.names.emplace_back(title.substr(open + 1, close - open - 1));
    open = close + 1;
  }
  return heading;
}

// The page part and the anchor part of a link target.
std::pair<std::string, std::string> SplitTarget(const std::string& target) {
  const std::size_t hash = target.find('#');
  if (hash == std::string::npos) return {target, ""};
  return {target.substr(0, hash), target.substr(hash + 1)};
}

std::size_t CountOf(const std::string& haystack, const std::string& needle) {
  std::size_t count = 0;
  for (std::size_t at = haystack.find(needle); at != std::string::npos; at = haystack.find(needle, at + needle.size())) {
    ++count;
  }
  return count;
}

}  // namespace

std::string AnchorMaker::Next(std::string_view title) {
  std::string anchor;
  for (char c : title) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsAlnum(c) || c == '-' || c == '_' || byte >= 0x80) {
      anchor += Lower(c);
    } else if (c == ' ') {
      anchor += '-';
    }
  }
  const std::string base = anchor;
  int repeat = 0;
  while (std::find(made_.begin(), made_.end(), anchor) != made_.end()) anchor = base + "-" + std::to_string(++repeat);
  made_.push_back(anchor);
  return anchor;
}

std::vector<ManualHeading> ManualHeadings(std::string_view markdown) {
  std::vector<ManualHeading> headings;
  AnchorMaker anchors;
  for (const PageLine& line : ProseLines(markdown)) {
    std::optional<ManualHeading> heading = ParseHeading(line.text);
    if (!heading) continue;
    heading->line = line.number;
    heading->anchor = anchors.Next(heading->title);
    headings.push_back(std::move(*heading));
  }
  return headings;
}

std::vector<ManualReference> ManualReferences(std::string_view markdown) {
  std::vector<ManualReference> references;
  for (const PageLine& line : ProseLines(markdown)) {
    const std::string_view text = line.text;
    bool inCode = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '`') inCode = !inCode;
      if (inCode || text[i] != ']' || i + 1 >= text.size() || text[i + 1] != '(') continue;
      // Back to the bracket that opens this text, minding nested brackets.
      int depth = 0;
      std::size_t open = i;
      for (std::size_t k = i + 1; k-- > 0;) {
        if (text[k] == ']') ++depth;
        if (text[k] == '[' && --depth == 0) {
          open = k;
          break;
        }
      }
      if (open == i) continue;
      const std::size_t close = text.find(')', i + 2);
      if (close == std::string_view::npos) continue;
      std::string_view target = text.substr(i + 2, close - i - 2);
      target = target.substr(0, std::min(target.find(' '), target.size()));  // less a "title"
      ManualReference reference;
      reference.line = line.number;
      reference.image = open > 0 && text[open - 1] == '!';
      reference.target = std::string(target);
      references.push_back(std::move(reference));
      i = close;
    }
  }
  return references;
}

std::vector<ManualPage> InManualOrder(std::vector<ManualPage> pages, std::string_view first) {
  std::sort(pages.begin(), pages.end(), [](const ManualPage& a, const ManualPage& b) { return a.file < b.file; });
  std::vector<std::string> order{std::string(first)};
  for (const ManualPage& page : pages) {
    if (page.file != first) continue;
    for (const ManualReference& reference : ManualReferences(page.text)) {
      if (reference.image) continue;
      const std::string file = SplitTarget(reference.target).first;
      if (!file.empty() && std::find(order.begin(), order.end(), file) == order.end()) order.push_back(file);
    }
  }
  auto rank = [&order](const ManualPage& page) {
    return static_cast<std::size_t>(std::find(order.begin(), order.end(), page.file) - order.begin());
  };
  std::stable_sort(pages.begin(), pages.end(),
                   [&rank](const ManualPage& a, const ManualPage& b) { return rank(a) < rank(b); });
  return pages;
}

std::optional<ManualPlace> FindFormSection(const std::vector<ManualPage>& pages, std::string_view objectName) {
  for (const ManualPage& page : pages) {
    for (const ManualHeading& heading : ManualHeadings(page.text)) {
      if (std::find(heading.names.begin(), heading.names.end(), objectName) != heading.names.end()) {
        return ManualPlace{page.file, heading.anchor, heading.title};
      }
    }
  }
  return std::nullopt;
}

std::vector<std::string> NamesInSeveralHeadings(const std::vector<ManualPage>& pages) {
  std::map<std::string, int> seen;
  std::vector<std::string> several;
  for (const ManualPage& page : pages) {
    for (const ManualHeading& heading : ManualHeadings(page.text)) {
      for (const std::string& name : std::set<std::string>(heading.names.begin(), heading.names.end())) {
        if (++seen[name] == 2) several.push_back(name);
      }
    }
  }
  return several;
}

std::vector<std::string> BrokenReferences(const std::vector<ManualPage>& pages,
                                          const std::function<bool(const std::string&)>& otherFile) {
  std::map<std::string, std::set<std::string>> anchors;
  for (const ManualPage& page : pages) {
    for (const ManualHeading& heading : ManualHeadings(page.text)) anchors[page.file].insert(heading.anchor);
  }
  std::vector<std::string> broken;
  for (const ManualPage& page : pages) {
    for (const ManualReference& reference : ManualReferences(page.text)) {
      const std::string& target = reference.target;
      if (target.rfind("http:", 0) == 0 || target.rfind("https:", 0) == 0 || target.rfind("mailto:", 0) == 0) continue;
      auto [file, anchor] = SplitTarget(target);
      bool found = false;
      const bool leaves = target.empty() || target.find("..") != std::string::npos || target.front() == '/' ||
                          target.find(':') != std::string::npos;
      if (leaves) {
        found = false;
      } else if (reference.image) {
        found = anchor.empty() && otherFile(file);
      } else {
        if (file.empty()) file = page.file;
        const auto page_anchors = anchors.find(file);
        found = page_anchors != anchors.end() && (anchor.empty() || page_anchors->second.count(anchor) > 0);
      }
      if (!found) broken.push_back(page.file + ":" + std::to_string(reference.line) + ": " + target);
    }
  }
  return broken;
}

std::vector<ManualHit> SearchManual(const std::vector<ManualPage>& pages, std::string_view words) {
  std::vector<std::string> wanted;
  for (std::size_t at = 0; at < words.size();) {
    const std::size_t start = words.find_first_not_of(" \t", at);
    if (start == std::string_view::npos) break;
    const std::size_t end = std::min(words.find_first_of(" \t", start), words.size());
    wanted.push_back(LowerText(words.substr(start, end - start)));
    at = end;
  }
  std::vector<ManualHit> hits;
  if (wanted.empty()) return hits;
  for (const ManualPage& page : pages) {
    const std::vector<ManualHeading> headings = ManualHeadings(page.text);
    const std::vector<std::string_view> lines = Lines(page.text);
    // Section k runs from heading k's line to the line before heading k + 1; the text before
    // the first heading is a section of its own, under the page's name.
    for (std::size_t k = 0; k <= headings.size(); ++k) {
      const int first = k == 0 ? 1 : headings[k - 1].line;
      const int last = k < headings.size() ? headings[k].line - 1 : static_cast<int>(lines.size());
      std::string text;
      for (int n = first; n <= last; ++n) {
        text += LowerText(lines[static_cast<std::size_t>(n - 1)]);
        text += '\n';
      }
      std::size_t count = 0;
      bool all = true;
      for (const std::string& word : wanted) {
        const std::size_t c = CountOf(text, word);
        all = all && c > 0;
        count += c;
      }
      if (!all) continue;
      ManualPlace place{page.file, "", page.file};
      if (k > 0) place = ManualPlace{page.file, headings[k - 1].anchor, headings[k - 1].title};
      hits.push_back({place, static_cast<int>(count)});
    }
  }
  return hits;
}

}  // namespace tessel
