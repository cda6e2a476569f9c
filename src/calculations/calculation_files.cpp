#include "calculations/calculation_files.h"

#include <algorithm>
#include <unordered_set>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

// Every line of a file as it stands; a missing file gives none, a fault keeps what was read.
std::vector<std::string> FileLines(const std::string& path) {
  std::vector<std::string> lines;
  if (!FileExistsAnyCase(path)) return lines;
  try {
    LineReader in(path);
    while (!in.Eof()) lines.push_back(in.ReadLine());
  } catch (const RuntimeFault&) {
  }
  return lines;
}

std::string FileText(const std::string& path) {
  std::string text;
  if (FileExistsAnyCase(path)) ReadFileBytes(path, text);
  return text;
}

// The dataset's backup with the changed last letter: an old one goes first.
void Backup(Session& session, const char* extension, const char* backup) {
  const std::string path = session.DatasetPath(extension);
  if (!FileExistsAnyCase(path)) return;
  DeleteAnyCase(session.DatasetPath(backup));
  CopyFileReplacing(path, session.DatasetPath(backup));
}

// Runs the writes of one rewrite; a fault is told and gives false.
template <typename F>
bool Rewrite(Session& session, F&& write) {
  try {
    write();
    return true;
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
    return false;
  }
}

// .ads through its working copy .as2: the copy is written first, then .ads, then the copy goes.
void WriteAds(Session& session, const std::vector<std::string>& lines) {
  const std::string bytes = JoinCrLf(lines);
  const std::string working = session.DatasetPath(".as2");
  WriteFileBytes(working, bytes);
  WriteFileBytes(session.DatasetPath(".ads"), bytes);
  DeleteAnyCase(working);
}

void WriteNot(Session& session, const std::vector<std::string>& points, const std::vector<std::string>& lines) {
  Backup(session, ".not", ".noZ");
  WriteFileBytes(session.DatasetPath(".not"), NotText(points, lines));
}

bool Ask(Session& session, const std::string& prompt) {
  return session.user.Message(prompt, Icon::Question, Buttons::YesNo) == Answer::Yes;
}

bool InRange(int index, std::size_t size) { return index >= 0 && static_cast<std::size_t>(index) < size; }

}  // namespace

std::vector<AdsEntry> ParseAds(const std::vector<std::string>& lines) {
  std::vector<AdsEntry> entries;
  for (const std::string& line : lines) {
    if (TrimView(line).empty()) continue;
    entries.push_back({Trim(MidView(line, 2, 6)), Trim(Mid(line, 9))});
  }
  return entries;
}

std::string AdsLine(const std::string& id, const std::string& survey) {
  // Tab(2) id, Tab(9) survey; an id too long for its columns keeps one blank before the survey.
  std::string line(1, ' ');
  line.append(Trim(id));
  line.resize(line.size() >= 8 ? line.size() + 1 : 8, ' ');
  line.append(survey);
  return line;
}

void ParseNot(const std::string& text, std::vector<std::string>& points, std::vector<std::string>& lines) {
  points.clear();
  lines.clear();
  LineReader in = LineReader::FromText(text);
  // Empty lines do not count.
  auto next = [&in] {
    std::string line;
    do {
      line = in.ReadLine();
    } while (TrimView(line).empty());
    return line;
  };
  try {
    const double pointCount = Val(next());
    for (double k = 1; k <= pointCount; ++k) points.push_back(Trim(next()));
    const double lineCount = Val(next());
    for (double k = 1; k <= lineCount; ++k) {
      const std::string line = next();
      lines.push_back(Trim(MidView(line, 1, 6)) + " " + Trim(MidView(line, 8, 6)));
    }
  } catch (const RuntimeFault&) {
    // A short file keeps what was read.
  }
}

std::string NotText(const std::vector<std::string>& points, const std::vector<std::string>& lines) {
  std::vector<std::string> out;
  out.push_back(PadLeft(std::to_string(points.size()), 6));
  for (const std::string& id : points) out.push_back(id);
  out.push_back(PadLeft(std::to_string(lines.size()), 6));
  for (const std::string& entry : lines) {
    // "from to": the from id fills columns 1-6, so that the to id stands from column 8.
    const std::size_t blank = entry.find(' ');
    std::string from = entry.substr(0, blank);
    const std::string to = blank == std::string::npos ? std::string() : Trim(entry.substr(blank + 1));
    if (from.size() < 6) from.resize(6, ' ');
    out.push_back(from + " " + to);
  }
  return JoinCrLf(out);
}

bool LoadCalculationLists(Session& session) {
  if (session.JobBase.empty()) {
    session.user.Message(kMsgNeedProject);
    return false;
  }
  CalculationLists& lists = session.calculations;
  lists.Clear();
  lists.Definitions = FileLines(session.DatasetPath(".add"));
  for (int s = 1; s <= session.surveys.SurveyCount; ++s) {
    StepOver([&] { lists.Surveys.push_back(Trim(MidView(session.surveys.SurveyTable.at(s).sLine, 2, 18))); });
  }
  std::sort(lists.Surveys.begin(), lists.Surveys.end());
  lists.Surveys.erase(std::unique(lists.Surveys.begin(), lists.Surveys.end()), lists.Surveys.end());
  lists.Ads = ParseAds(FileLines(session.DatasetPath(".ads")));
  for (std::size_t k = 0; k < lists.Ads.size(); ++k) lists.AdsById[lists.Ads[k].id] = static_cast<int>(k);
  ParseNot(FileText(session.DatasetPath(".not")), lists.NotPoints, lists.NotLines);
  session.Changed(Change::Calculations);
  return true;
}

std::vector<std::string> SpliceDefinitions(const std::vector<std::string>& list, int first, int behind,
                                           const std::vector<std::string>& lines) {
  const int count = static_cast<int>(list.size());
  first = std::clamp(first, 0, count);
  behind = std::clamp(behind, first, count);
  std::vector<std::string> out(list.begin(), list.begin() + first);
  out.insert(out.end(), lines.begin(), lines.end());
  out.insert(out.end(), list.begin() + behind, list.end());
  return out;
}

std::vector<std::string> SetAdsSurvey(const std::vector<std::string>& adsLines, const std::string& id,
                                      const std::string& survey) {
  const std::string key = Trim(id);
  const bool none = Trim(survey) == kNoSurvey || Trim(survey).empty();
  std::vector<std::string> out;
  bool placed = false;
  for (const std::string& line : adsLines) {
    if (Trim(MidView(line, 2, 6)) != key) {
      out.push_back(line);
    } else if (!placed) {
      placed = true;
      if (!none) out.push_back(AdsLine(key, survey));
    }
  }
  if (!placed && !none) out.push_back(AdsLine(key, survey));
  return out;
}

EditedEntry EditedDefinition(const std::vector<std::string>& list, int index) {
  if (index < 0 || index >= static_cast<int>(list.size())) return {};
  const DefinitionSpan span = SpanOf(list, index);
  return {span.first, std::vector<std::string>(list.begin() + span.first, list.begin() + span.behind)};
}

std::optional<DefinitionSpan> RefindEntry(const std::vector<std::string>& list, const EditedEntry& entry) {
  const int count = static_cast<int>(list.size());
  if (entry.IsNew()) return DefinitionSpan{count, count};
  const int size = static_cast<int>(entry.lines.size());
  const auto holds = [&](int at) {
    return at >= 0 && at + size <= count && std::equal(entry.lines.begin(), entry.lines.end(), list.begin() + at);
  };
  // Outward from the old place: an equal definition elsewhere in the list is taken only when the
  // one edited has moved.
  for (int distance = 0; distance <= count; ++distance) {
    const int before = entry.first - distance, after = entry.first + distance;
    if (holds(before)) return DefinitionSpan{before, before + size};
    if (distance > 0 && holds(after)) return DefinitionSpan{after, after + size};
  }
  return std::nullopt;
}

bool SaveDefinition(Session& session, const DefinitionInput& input, int first, int behind) {
  const std::vector<std::string> lines = DefinitionLines(input);
  const std::vector<std::string> text = SpliceDefinitions(session.calculations.Definitions, first, behind, lines);
  const bool written = Rewrite(session, [&] {
    Backup(session, ".add", ".adZ");
    Backup(session, ".ads", ".asZ");
    WriteFileBytes(session.DatasetPath(".add"), JoinCrLf(text));
    if (input.type != 3) {
      WriteAds(session, SetAdsSurvey(FileLines(session.DatasetPath(".ads")), input.newPoint, input.survey));
    }
  });
  LoadCalculationLists(session);
  return written;
}

std::string DeletePrompt(const std::vector<std::string>& list, int index) {
  const DefinitionSpan span = SpanOf(list, index);
  const std::string& line = list[static_cast<std::size_t>(span.first)];
  const AddFields f = CutAddLine(line);
  std::string what;
  switch (TypeOfLine(line)) {
    case AddType::Traverse: what = "Traverse / Proportion definition of " + f[2]; break;
    case AddType::Intersection: what = "Intersection definition of " + f[2]; break;
    case AddType::ConnectingLine: what = "Connecting line between " + f[2] + " and " + f[3]; break;
    default: what = "Definition " + Trim(line); break;
  }
  return what + kLineEnd + "Confirm Delete?";
}

bool DeleteDefinition(Session& session, int index) {
  const std::vector<std::string>& list = session.calculations.Definitions;
  if (!InRange(index, list.size())) {
    session.user.Message(kMsgSelectForDeletion);
    return false;
  }
  if (!Ask(session, DeletePrompt(list, index))) return false;
  const DefinitionSpan span = SpanOf(list, index);
  const std::string id = CutAddLine(list[static_cast<std::size_t>(span.first)])[2];
  const std::vector<std::string> text = SpliceDefinitions(list, span.first, span.behind, {});
  const bool written = Rewrite(session, [&] {
    Backup(session, ".add", ".adZ");
    Backup(session, ".ads", ".asZ");
    WriteFileBytes(session.DatasetPath(".add"), JoinCrLf(text));
    if (session.DatasetExists(".ads")) {
      WriteAds(session, SetAdsSurvey(FileLines(session.DatasetPath(".ads")), id, kNoSurvey));
    }
  });
  if (written) session.user.Message("Definition for point " + id + " deleted.");
  LoadCalculationLists(session);
  return written;
}

bool DeleteNotPoint(Session& session, int index) {
  CalculationLists& lists = session.calculations;
  if (!InRange(index, lists.NotPoints.size())) {
    session.user.Message(kMsgSelectForDeletion);
    return false;
  }
  const std::string& id = lists.NotPoints[static_cast<std::size_t>(index)];
  if (!Ask(session, "Point ID " + id + " chosen for Deletion." + kLineEnd + "Confirm delete?")) return false;
  std::vector<std::string> points = lists.NotPoints;
  points.erase(points.begin() + index);
  const bool written = Rewrite(session, [&] { WriteNot(session, points, lists.NotLines); });
  LoadCalculationLists(session);
  return written;
}

bool DeleteNotLine(Session& session, int index) {
  CalculationLists& lists = session.calculations;
  if (!InRange(index, lists.NotLines.size())) {
    session.user.Message(kMsgSelectForDeletion);
    return false;
  }
  const std::string& entry = lists.NotLines[static_cast<std::size_t>(index)];
  if (!Ask(session, "Line segment " + entry + " chosen for Deletion." + kLineEnd + "Confirm delete?")) return false;
  std::vector<std::string> lines = lists.NotLines;
  lines.erase(lines.begin() + index);
  const bool written = Rewrite(session, [&] { WriteNot(session, lists.NotPoints, lines); });
  LoadCalculationLists(session);
  return written;
}

RangeMarks MarkRange(const std::vector<std::string>& list, double start, double end) {
  RangeMarks marks;
  marks.marked.assign(list.size(), false);
  for (std::size_t k = 0; k < list.size(); ++k) {
    if (IsSecondLine(list[k])) continue;
    const AddFields f = CutAddLine(list[k]);
    const double id = Val(f[2]);
    if (id < start || id > end) continue;
    const DefinitionSpan span = SpanOf(list, static_cast<int>(k));
    for (int m = span.first; m < span.behind; ++m) marks.marked[static_cast<std::size_t>(m)] = true;
    if (static_cast<int>(marks.ids.size()) < kRangeDeleteBound) marks.ids.push_back(f[2]);
  }
  return marks;
}

std::vector<std::string> AdsWithout(const std::vector<std::string>& adsLines, const std::vector<std::string>& ids) {
  const std::unordered_set<std::string> gone(ids.begin(), ids.end());
  std::vector<std::string> out;
  for (const std::string& line : adsLines) {
    if (gone.count(Trim(MidView(line, 2, 6))) == 0) out.push_back(line);
  }
  return out;
}

bool DeleteRange(Session& session, double start, double end) {
  const std::vector<std::string>& list = session.calculations.Definitions;
  session.user.SetPointer(Pointer::Hourglass);
  const RangeMarks marks = MarkRange(list, start, end);
  std::vector<std::string> text;
  for (std::size_t k = 0; k < list.size(); ++k) {
    if (!marks.marked[k]) text.push_back(list[k]);
  }
  const bool written = Rewrite(session, [&] {
    Backup(session, ".add", ".adZ");
    const std::string ads = session.DatasetPath(".ads");
    if (FileExistsAnyCase(ads)) {
      CopyFileReplacing(ads, session.DatasetPath(".as2"));
      WriteFileBytes(ads, JoinCrLf(AdsWithout(FileLines(ads), marks.ids)));
    }
    WriteFileBytes(session.DatasetPath(".add"), JoinCrLf(text));
  });
  session.user.SetPointer(Pointer::Default);
  LoadCalculationLists(session);
  return written;
}

bool SaveNotPoint(Session& session, int index, const std::string& id) {
  if (TrimView(id).empty()) {
    session.user.Message(kMsgEnterPoint);
    return false;
  }
  CalculationLists& lists = session.calculations;
  std::vector<std::string> points = lists.NotPoints;
  if (InRange(index, points.size())) points[static_cast<std::size_t>(index)] = Trim(id);
  else points.push_back(Trim(id));
  const bool written = Rewrite(session, [&] { WriteNot(session, points, lists.NotLines); });
  LoadCalculationLists(session);
  return written;
}

bool SaveNotLine(Session& session, int index, const std::string& from, const std::string& to) {
  if (TrimView(from).empty()) {
    session.user.Message(kMsgEnterPoint);
    return false;
  }
  if (TrimView(to).empty()) {
    session.user.Message(kMsgEnterToPoint);
    return false;
  }
  CalculationLists& lists = session.calculations;
  std::vector<std::string> lines = lists.NotLines;
  const std::string entry = Trim(from) + " " + Trim(to);
  if (InRange(index, lines.size())) lines[static_cast<std::size_t>(index)] = entry;
  else lines.push_back(entry);
  const bool written = Rewrite(session, [&] { WriteNot(session, lists.NotPoints, lines); });
  LoadCalculationLists(session);
  return written;
}

std::string NotPointCaption(const std::string& id) { return "Point " + id + " will not be calculated."; }

std::string NotLineCaption(const std::string& entry) {
  const std::size_t blank = entry.find(' ');
  const std::string from = entry.substr(0, blank);
  const std::string to = blank == std::string::npos ? std::string() : entry.substr(blank + 1);
  return "Line segment " + from + " to " + to + " will not be included in LXN topology.";
}

}  // namespace tessel
