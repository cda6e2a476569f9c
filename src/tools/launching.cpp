#include "tools/launching.h"

#include <algorithm>
#include <exception>

#include "datasets/identity.h"
#include "model/paths.h"
#include "model/text_file.h"

namespace tessel {

namespace {

constexpr const char* kBatchFile = "temp.bat";
constexpr const char* kRecpadAnswers = "t1$.001";

// A bare name in the current folder.
std::string InCurrentFolder(const Session& session, const std::string& name) {
  const std::string& folder = session.CurrentFolder;
  if (folder.empty()) return ResolveCase(name);
  const char last = folder.back();
  const bool ended = last == '/' || last == PathSeparator();
  return ResolveCase(folder + (ended ? "" : std::string(1, PathSeparator())) + name);
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

void SkipBlanks(const std::string& text, std::size_t& at) {
  while (at < text.size() && IsBlank(text[at])) ++at;
}

// A double-quoted string at `at`; its text without the quotes, a doubled quote inside read as one.
std::optional<std::string> Quoted(const std::string& text, std::size_t& at) {
  if (at >= text.size() || text[at] != '"') return std::nullopt;
  std::string inside;
  for (std::size_t k = at + 1; k < text.size(); ++k) {
    if (text[k] != '"') {
      inside += text[k];
    } else if (k + 1 < text.size() && text[k + 1] == '"') {
      inside += '"';
      ++k;
    } else {
      at = k + 1;
      return inside;
    }
  }
  return std::nullopt;
}

}  // namespace

std::string QuotePath(const std::string& path) {
  std::string out = "\"";
  for (const char c : path) {
    out += c;
    if (c == '"') out += '"';
  }
  return out + "\"";
}

std::string ScriptCommand(const Session& session, const std::string& programFile, const std::string& answerFile) {
  const std::string program = ResolveCase(session.ToolFolder + PathSeparator() + programFile);
  return QuotePath(program) + "  <" + QuotePath(session.JobFolder + answerFile);
}

std::optional<int> RunRecpadScript(Session& session) {
  if (!JobGuard(session, kMsgOpenOrCreateJob)) return std::nullopt;
  // The answer file's name carries its own separator, which doubles the one JobFolder ends with.
  const std::string answers = session.JobFile(std::string(1, PathSeparator()) + kRecpadAnswers);
  // A temp.bat or an answer file that could not be written is not run: an older one may stand
  // in its place, and the tool would wait for answers that never come.
  const bool ready =
      WriteFileOrTell(session.user, answers, "\r\n\r\n\r\n\r\n\r\n\r\n") &&
      WriteFileOrTell(session.user, InCurrentFolder(session, kBatchFile),
                      ScriptCommand(session, "recpad.exe", kRecpadAnswers) + "\r\nexit\r\n");
  std::optional<int> code;
  if (ready) {
    StepOver([&] { code = session.processes.RunCode({kBatchFile, {}}, session.CurrentFolder, ShowMode::Hidden); });
  }
  StepOver([&] { DeleteAnyCase(InCurrentFolder(session, kBatchFile)); });
  StepOver([&] { DeleteAnyCase(InCurrentFolder(session, kRecpadAnswers)); });
  StepOver([&] { DeleteAnyCase(session.DatasetPath(".002")); });
  return code;
}

LaunchStart RunAndTellStart(Session& session, const Launch& launch, const std::string& folder) {
  const ToolLog& log = session.toolLog;
  const std::size_t before = log.Total();
  try {
    session.processes.Run(launch, folder);
  } catch (const std::exception& fault) {
    return {false, fault.what()};
  }
  // The launch's own entries are the newest; a port that keeps no log reports no failure.
  const std::size_t added = std::min(log.Total() - before, log.entries.size());
  for (std::size_t k = log.entries.size() - added; k < log.entries.size(); ++k) {
    if (LaunchNotStarted(log.entries[k])) return {false, ToolLogNote(log.entries[k])};
  }
  return {};
}

std::optional<BatchCommand> ReadBatchCommand(const std::string& batchPath) {
  std::string line;
  try {
    LineReader in(ResolveCase(batchPath));
    line = in.ReadLine();
  } catch (const std::exception&) {
    return std::nullopt;
  }
  std::size_t at = 0;
  SkipBlanks(line, at);
  auto program = Quoted(line, at);
  if (!program || program->empty()) return std::nullopt;
  SkipBlanks(line, at);
  if (at >= line.size() || line[at] != '<') return std::nullopt;
  ++at;
  SkipBlanks(line, at);
  auto input = Quoted(line, at);
  if (!input || input->empty()) return std::nullopt;
  SkipBlanks(line, at);
  if (at != line.size()) return std::nullopt;
  return BatchCommand{*program, *input};
}

}  // namespace tessel
