#include "model/tool_log.h"

#include <cctype>
#include <cstdio>
#include <utility>

#include "model/paths.h"

namespace tessel {

namespace {

const char* KindText(LaunchKind kind) {
  switch (kind) {
    case LaunchKind::Run: return "run";
    case LaunchKind::RunCode: return "run";
    case LaunchKind::Watch: return "watch";
    case LaunchKind::Spawn: return "start";
  }
  return "run";
}

// The last component of a path written with either separator.
std::string FileName(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? path : path.substr(cut + 1);
}

std::string Folder(const std::string& path) {
  const std::size_t cut = path.find_last_of("/\\");
  return cut == std::string::npos ? std::string() : path.substr(0, cut);
}

std::string Unslashed(std::string path) {
  while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.pop_back();
  for (char& c : path) {
    if (c == '\\') c = '/';
  }
  return path;
}

}  // namespace

std::string NotFoundReason(const std::string& program, const std::string& toolFolder) {
  const std::string folder = Folder(program);
  if (!toolFolder.empty() && !folder.empty() && SamePathText(Unslashed(folder), Unslashed(toolFolder))) {
    return "not found in ToolFolder";
  }
  return "not found";
}

bool LaunchFailed(const ToolLogEntry& entry) {
  return LaunchNotStarted(entry) || entry.outcome == LaunchOutcome::Crashed;
}

bool LaunchNotStarted(const ToolLogEntry& entry) {
  return entry.outcome == LaunchOutcome::NotFound || entry.outcome == LaunchOutcome::CouldNotStart ||
         entry.outcome == LaunchOutcome::NoRunner;
}

std::string ToolLogLine(const ToolLogEntry& e) {
  std::string line = e.time + "  " + KindText(e.kind) + "  " + e.launch.Text();
  if (!e.runner.empty() && e.outcome != LaunchOutcome::NoRunner) line += "  through " + e.runner;
  if (!e.folder.empty()) line += "  in " + e.folder;
  if (!e.answerFile.empty()) line += "  answers " + e.answerFile;
  line += "  ";
  switch (e.outcome) {
    case LaunchOutcome::Ended:
      line += e.exitCode ? "exit code " + std::to_string(*e.exitCode) : std::string("ended");
      break;
    case LaunchOutcome::Started: line += "started"; break;
    case LaunchOutcome::NotFound: line += e.reason.empty() ? std::string("not found") : e.reason; break;
    case LaunchOutcome::CouldNotStart:
      line += "could not start";
      if (!e.reason.empty()) line += ": " + e.reason;
      break;
    case LaunchOutcome::Crashed: line += "crashed"; break;
    case LaunchOutcome::NoRunner: line += e.reason; break;
  }
  if (e.seconds) {
    char duration[32];
    std::snprintf(duration, sizeof duration, "  %.1f s", *e.seconds);
    line += duration;
  }
  return line;
}

std::string ToolLogNote(const ToolLogEntry& e) {
  if (!LaunchFailed(e)) return {};
  const std::string name = FileName(e.launch.program);
  switch (e.outcome) {
    case LaunchOutcome::NotFound: return name + ": " + (e.reason.empty() ? std::string("not found") : e.reason);
    case LaunchOutcome::CouldNotStart: return name + ": could not start";
    case LaunchOutcome::NoRunner: return e.reason;
    default: return name + ": crashed";
  }
}

std::string ToolNotice(const ToolLogEntry& e) {
  if (!LaunchNotStarted(e)) return {};
  constexpr const char* kSeeLog = ". The Tool Log (View > Tool Log) lists every start of this session.";
  if (e.outcome == LaunchOutcome::NoRunner) return e.reason + kSeeLog;
  const std::string why = e.outcome == LaunchOutcome::NotFound ? (e.reason.empty() ? std::string("not found") : e.reason)
                                                               : (e.reason.empty() ? std::string("could not start") : e.reason);
  return FileName(e.launch.program) + " could not be run: " + why + kSeeLog;
}

std::string ToolLog::NoticeFor(const ToolLogEntry& entry) {
  if (!LaunchNotStarted(entry)) return {};
  // Keys of programs are file names; a runner's key cannot be one.
  std::string key = entry.outcome == LaunchOutcome::NoRunner ? "runner/" + entry.runner : FileName(entry.launch.program);
  for (char& c : key) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (!noticed.insert(key).second) return {};
  return ToolNotice(entry);
}

void ToolLog::Add(ToolLogEntry entry) {
  if (entries.size() >= kKept) {
    const std::size_t excess = entries.size() - kKept + 1;
    entries.erase(entries.begin(), entries.begin() + static_cast<std::ptrdiff_t>(excess));
    dropped += excess;
  }
  entries.push_back(std::move(entry));
}

std::string ToolLog::Text() const {
  std::string text;
  for (const ToolLogEntry& e : entries) text += ToolLogLine(e) + "\n";
  return text;
}

}  // namespace tessel
