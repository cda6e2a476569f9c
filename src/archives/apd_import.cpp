#include "archives/apd_import.h"

#include <array>
#include <exception>

#include "datasets/identity.h"
#include "datasets/support_files.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "tools/launching.h"

namespace tessel {

namespace {

// Puts `text` into `line` from 1-based `column` on, padding with blanks; a later text overwrites
// an earlier one where they meet.
void Place(std::string& line, int column, std::string_view text) {
  const auto at = static_cast<std::size_t>(column - 1);
  if (line.size() < at + text.size()) line.resize(at + text.size(), ' ');
  line.replace(at, text.size(), text);
}

struct TableRow {
  char key;
  const char* from;
  const char* to;
};

constexpr std::array<TableRow, 7> kRowLines = {{{'1', "100100", "100700"},
                                                 {'2', "200100", "200700"},
                                                 {'3', "300100", "300700"},
                                                 {'4', "400100", "400700"},
                                                 {'5', "500100", "500700"},
                                                 {'6', "600100", "600700"},
                                                 {'7', "700100", "700700"}}};

constexpr std::array<TableRow, 7> kColumnLines = {{{'1', "100100", "700100"},
                                                    {'2', "100200", "700200"},
                                                    {'3', "100300", "700300"},
                                                    {'4', "100400", "700400"},
                                                    {'5', "100500", "700500"},
                                                    {'6', "100600", "700600"},
                                                    {'7', "100700", "700700"}}};

std::string Ending(const Session& session, const char* extension) { return session.JobName + extension; }

[[noreturn]] void Unreadable(const std::string& path) {
  throw RuntimeFault(FaultKind::FileNotFound, "The file " + path + " cannot be read.");
}

// Copies .raw to .ra2, then writes .apd (when asked) and the shortened .raw; each file whole or
// not at all, .ra2 first, so that the original survives any failure.
void SplitRawFile(Session& session, bool writeApd) {
  const std::string rawPath = session.DatasetPath(".raw");
  std::string bytes;
  if (!ReadFileBytes(rawPath, bytes)) Unreadable(rawPath);
  WriteFileBytes(session.DatasetPath(".ra2"), bytes);
  const ApdSplit split = SplitApdRaw(TextLines(bytes));
  if (writeApd) WriteFileBytes(session.DatasetPath(".apd"), JoinCrLf(split.apd));
  WriteFileBytes(rawPath, JoinCrLf(split.raw));
}

bool LotReadable(const Session& session) {
  try {
    LineReader lot(session.DatasetPath(".lot"));
    lot.ReadLine();
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

void WriteScript(Session& session) {
  WriteFileBytes(session.JobFile(kApdAnswerFile), ApdAnswerText());
  WriteFileBytes(session.JobFile(kApdBatchFile), ApdBatchText(session));
}

// Runs one step; a fault is told in a box naming the file. False when it failed.
template <typename F>
bool Told(Session& session, F&& step) {
  try {
    step();
    return true;
  } catch (const std::exception& fault) {
    session.user.Message(fault.what(), Icon::Stop, Buttons::Ok, kApdCaption);
    return false;
  }
}

}  // namespace

bool IsApdLine(std::string_view line) { return EndsWith(TrimView(line), kApdMarker); }

std::vector<std::string> TextLines(std::string_view bytes) {
  std::vector<std::string> lines;
  LineReader reader = LineReader::FromText(std::string(bytes));
  while (!reader.Eof()) lines.push_back(reader.ReadLine());
  return lines;
}

ApdSplit SplitApdRaw(const std::vector<std::string>& rawLines) {
  ApdSplit split;
  for (std::size_t i = 0; i < rawLines.size(); ++i) {
    if (i >= 2 && IsApdLine(rawLines[i])) {
      split.apd.push_back(rawLines[i]);
    } else {
      split.raw.push_back(rawLines[i]);
    }
  }
  return split;
}

std::string ApdBearingText(std::string_view line) {
  const double bearing = Val(MidView(line, 31, 8)) / 10000.0;
  return PadLeft(FormatPicture(bearing, 5, 0), 8);
}

TieLine ChooseTieLine(std::string_view second, const TieLine& previous) {
  TieLine tie = previous;
  if (second.size() >= 2 && second[0] == '9') {
    for (const TableRow& row : kRowLines) {
      if (second[1] == row.key) tie = {row.from, row.to};
    }
  }
  if (second.size() >= 5 && second[3] == '0') {
    for (const TableRow& row : kColumnLines) {
      if (second[4] == row.key) tie = {row.from, row.to};
    }
  }
  return tie;
}

std::vector<std::string> AddLinesForRecord(std::string_view apdLine, TieLine& tie) {
  const std::string first = Mid(apdLine, 1, 6);
  std::string second = Mid(apdLine, 10, 6);
  if (!second.empty() && second[0] == '0') second[0] = '9';
  const std::string bearing = ApdBearingText(apdLine);

  std::string bearingLine;
  Place(bearingLine, 2, "2");
  Place(bearingLine, 4, second);
  Place(bearingLine, 11, first);
  Place(bearingLine, 23, Mid(apdLine, 27, 1));
  Place(bearingLine, 26, bearing);
  Place(bearingLine, 36, "2");
  Place(bearingLine, 43, ".000");
  Place(bearingLine, 53, ".000");

  tie = ChooseTieLine(second, tie);
  std::string intersectLine;
  Place(intersectLine, 2, "2");
  Place(intersectLine, 9, "0");
  Place(intersectLine, 11, tie.from);
  Place(intersectLine, 18, tie.to);
  Place(intersectLine, 25, "999.99900");
  Place(intersectLine, 36, "2");
  Place(intersectLine, 43, ".000");
  Place(intersectLine, 53, ".000");
  return {bearingLine, intersectLine};
}

AddBuild BuildAddLines(const std::vector<std::string>& apdLines, const std::function<bool()>& lotReadable) {
  AddBuild build;
  TieLine tie;
  for (const std::string& line : apdLines) {
    std::vector<std::string> record;
    try {
      record = AddLinesForRecord(line, tie);
    } catch (const RuntimeFault&) {
      build.end = AddBuildEnd::BadBearing;
      return build;
    }
    build.lines.insert(build.lines.end(), record.begin(), record.end());
    if (!lotReadable()) {
      build.end = AddBuildEnd::LotUnreadable;
      return build;
    }
  }
  return build;
}

std::optional<std::string> LotFirstLine(std::string_view bytes) {
  if (bytes.empty()) return std::nullopt;
  LineReader reader = LineReader::FromText(std::string(bytes));
  return reader.ReadLine();
}

std::string ApdAnswerText() { return JoinCrLf({"4", "5", "1", "1", "9", "8", "N"}); }

std::string ApdBatchText(const Session& session) {
  return JoinCrLf({ScriptCommand(session, "recpad.exe", kApdAnswerFile), "exit"});
}

ApdFiles ApdFileList(const Session& session) {
  struct Wanted {
    const char* extension;
    const char* missing;
    bool needed;
  };
  static constexpr std::array<Wanted, 4> kWanted = {{{".raw", "Raw file (", true},
                                                     {".con", "Control file (", true},
                                                     {".sid", "Survey Identifiers (", true},
                                                     {".lot", "Lot file (", false}}};
  ApdFiles files;
  files.finishEnabled = true;
  for (const Wanted& wanted : kWanted) {
    if (session.DatasetExists(wanted.extension)) {
      files.lines.push_back(Ending(session, wanted.extension));
    } else {
      files.lines.push_back(wanted.missing + Ending(session, wanted.extension) + ") not found");
      if (wanted.needed) files.finishEnabled = false;
    }
  }
  return files;
}

ApdFiles ApdUseProject(Session& session, const std::string& fileName, const std::string& fileTitle) {
  OpenIdentity(session, fileName, fileTitle);
  // The job dialog leaves the current folder at the job's folder.
  session.CurrentFolder = session.JobFolder;
  return ApdFileList(session);
}

std::optional<ApdFiles> ApdBrowse(Session& session) {
  FileRequest request;
  request.title = kApdDialogTitle;
  request.filter = kApdDialogFilter;
  request.initialFolder = session.JobFolder.empty() ? RecallFolder(session) : session.JobFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return std::nullopt;
  return ApdUseProject(session, choice->fileName, choice->fileTitle);
}

bool ApdFinish(Session& session, const std::function<void(const std::string&)>& progress) {
  // Nothing to import before a project has been chosen.
  if (!JobGuard(session)) return false;
  std::string text = kApdAnalyzing;
  progress(text);
  if (!session.DatasetExists(".apd") && !Told(session, [&] { SplitRawFile(session, true); })) return false;

  text += "\n";
  text += kApdBuilding;
  progress(text);
  std::vector<std::string> apdLines;
  if (!Told(session, [&] {
        const std::string path = session.DatasetPath(".apd");
        std::string bytes;
        if (!ReadFileBytes(path, bytes)) Unreadable(path);
        apdLines = TextLines(bytes);
      })) {
    return false;
  }
  const AddBuild build = BuildAddLines(apdLines, [&] { return LotReadable(session); });
  if (!Told(session, [&] { WriteFileBytes(session.DatasetPath(".add"), JoinCrLf(build.lines)); })) return false;
  if (build.end == AddBuildEnd::LotUnreadable) {
    session.user.Message("Lot file (" + Ending(session, ".lot") +
                             ") not found or empty: the .add file is not complete.",
                         Icon::Stop, Buttons::Ok, kApdCaption);
    return false;
  }

  session.user.SetTitle("Tessel " + session.JobBase);
  if (!Told(session, [&] { WriteSupportFiles(session); })) return false;

  text += "\n";
  text += kApdImporting;
  progress(text);
  if (!Told(session, [&] { WriteScript(session); })) return false;

  session.user.Message(kApdComplete);
  return true;
}

void ImportApdCommand(Session& session) {
  if (!JobGuard(session, kMsgOpenOrCreateJob)) return;
  if (!session.DatasetExists(".RAW")) {
    session.user.Message(kApdRawNotFound, Icon::Stop);
    return;
  }
  if (!Told(session, [&] { SplitRawFile(session, true); })) return;
  if (!Told(session, [&] { WriteScript(session); })) return;
  StepOver([&] { session.processes.RunCode({kApdBatchFile, {}}, session.CurrentFolder, ShowMode::Hidden); });
  ReloadJobFiles(session);
  StepOver([&] { DeleteAnyCase(session.JobFile(kApdBatchFile)); });
}

}  // namespace tessel
