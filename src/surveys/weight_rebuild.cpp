#include "surveys/weight_rebuild.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <vector>

#include "datasets/identity.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "tools/launching.h"

namespace tessel {

namespace {

constexpr const char* kRecpad = "recpad.exe";

// The lines of a file; none when it does not exist.
std::vector<std::string> LinesOf(const std::string& path, std::string& bytes) {
  std::vector<std::string> lines;
  bytes.clear();
  if (!FileExistsAnyCase(path)) return lines;
  if (!ReadFileBytes(path, bytes)) throw RuntimeFault(FaultKind::FileNotFound, "The file " + path + " cannot be read.");
  LineReader in = LineReader::FromText(bytes);
  while (!in.Eof()) lines.push_back(in.ReadLine());
  return lines;
}

// The first `count` lines, or all of them when there are fewer: a file shorter than the control
// block gives what it has.
std::vector<std::string> Head(const std::vector<std::string>& lines, int count) {
  const auto n = static_cast<std::size_t>(count < 0 ? 0 : count);
  return {lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(std::min(n, lines.size()))};
}

// What follows the fourth section, each section ending on a line whose last character is "1".
std::vector<std::string> TailAfterFourSections(const std::vector<std::string>& lines) {
  std::size_t i = 0;
  for (int section = 0; section < 4 && i < lines.size(); ++i) {
    if (Right(lines[i], 1) == "1") ++section;
  }
  return {lines.begin() + static_cast<std::ptrdiff_t>(i), lines.end()};
}

std::vector<std::string> Joined(std::vector<std::string> a, const std::vector<std::string>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

void Remove(const std::string& path) {
  StepOver([&] { DeleteAnyCase(path); });
}

}  // namespace

std::string RecpadFailedText(const Session& session) {
  return "The tool recpad (" + session.ToolFile(kRecpad) + ") did not run to its end in " + session.JobFolder +
         ". The job's .lsa and .sd hold their control blocks only.";
}

void WeightRebuild(Session& session) {
  if (!JobGuard(session, kMsgOpenOrCreateJob)) return;
  const std::string lsaPath = session.DatasetPath(".lsa");
  const std::string sdPath = session.DatasetPath(".sd");
  const std::string heads = session.DatasetPath(".002");
  const std::string tailCopy = session.DatasetPath(".t$2");
  const std::string lsaCopy = session.DatasetPath(".t$3");
  const int blockLines = session.control.ControlCount - 1;

  std::string lsaBytes, sdBytes;
  bool lsaReplaced = false;
  try {
    const std::vector<std::string> lsa = LinesOf(lsaPath, lsaBytes);
    const std::vector<std::string> sd = LinesOf(sdPath, sdBytes);
    const std::vector<std::string> lsaHead = Head(lsa, blockLines);
    const std::vector<std::string> sdHead = Head(sd, blockLines);
    WriteFileBytes(heads, JoinCrLf(Joined(lsaHead, sdHead)));
    WriteFileBytes(tailCopy, JoinCrLf(TailAfterFourSections(lsa)));
    // Each file is replaced by its block whole, which is what deleting it and writing the block
    // from .002 leaves.
    WriteFileBytes(lsaPath, JoinCrLf(lsaHead));
    lsaReplaced = true;
    WriteFileBytes(sdPath, JoinCrLf(sdHead));
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
    // Only the last write can fail after .lsa was cut back: .lsa gets its bytes again.
    if (lsaReplaced) StepOver([&] { WriteFileBytes(lsaPath, lsaBytes); });
    Remove(heads);
    Remove(tailCopy);
    return;
  }

  const bool present = FileExistsAnyCase(session.ToolFile(kRecpad));
  const std::optional<int> code = RunRecpadScript(session);
  if (!present || !code || *code != 0) session.user.Message(RecpadFailedText(session), Icon::Exclamation);

  // The tool's .lsa, copied aside and written back line by line.
  try {
    std::string bytes;
    const std::vector<std::string> rebuilt = LinesOf(lsaPath, bytes);
    if (FileExistsAnyCase(lsaPath)) {
      WriteFileBytes(lsaCopy, bytes);
      WriteFileBytes(lsaPath, JoinCrLf(rebuilt));
    }
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
  }
  Remove(lsaCopy);
  Remove(tailCopy);

  ReloadJobFiles(session);
  if (session.display) session.display->RefreshView();
}

}  // namespace tessel
