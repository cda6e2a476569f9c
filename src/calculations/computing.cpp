#include "calculations/computing.h"

#include "calculations/add_file.h"
#include "calculations/calculation_files.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "tools/launching.h"

namespace tessel {

namespace {

constexpr const char* kAnswerFile = "t1$.001";
constexpr const char* kBatchFile = "temp.bat";
constexpr const char* kWarning = "WARNING - FOLLOWING CORNERS IN ADD LIST COULD NOT BE COMPUTED";
constexpr const char* kWarningEnd = "END OF ADD NON-COMPUTABLE LIST";

std::string InCurrentFolder(const Session& session, const std::string& name) {
  const std::string& folder = session.CurrentFolder;
  if (folder.empty()) return ResolveCase(name);
  const char last = folder.back();
  const bool ended = last == '/' || last == PathSeparator();
  return ResolveCase(folder + (ended ? "" : std::string(1, PathSeparator())) + name);
}

// The first four characters of a left-trimmed line start the next record.
bool StartsRecord(const std::string& trimmed) {
  const std::string head = Left(trimmed, 4);
  return head == "CORN" || head == "LINE" || head == "****";
}

}  // namespace

std::vector<std::string> ComputeAllAnswers() { return {"6", "3"}; }
std::vector<std::string> TestRunAnswers() { return {"6", "2"}; }

void ComputeCalculations(Session& session, const std::vector<std::string>& answers) {
  session.user.SetPointer(Pointer::Hourglass);
  const bool written = StepOver([&] {
    try {
      WriteFileBytes(session.JobFile(kAnswerFile), JoinCrLf(answers));
      WriteFileBytes(InCurrentFolder(session, kBatchFile),
                     JoinCrLf({ScriptCommand(session, "splitplan.exe", kAnswerFile), "exit", ""}));
    } catch (const std::exception& fault) {
      TellFileFault(session.user, fault);
      throw;
    }
  });
  if (written) {
    session.user.Status(1, kStatusComputing);
    StepOver([&] { session.processes.Run({kBatchFile, {}}, session.CurrentFolder); });
    session.user.Status(1, "");
    // The job's lines are read again; parcel edits not yet saved stay in memory.
    if (session.reloadJobLines) ReloadJobLineFiles(session);
    else if (session.display) session.display->RefreshView();
  }
  session.user.SetPointer(Pointer::Default);
  LoadCalculationLists(session);
}

std::string StatusFromReport(const std::vector<std::string>& sub, const std::string& entry) {
  const AddFields f = CutAddLine(entry);
  const std::string id = f[2];
  if (TypeOfLine(entry) == AddType::ConnectingLine) {
    for (const std::string& line : sub) {
      if (Trim(MidView(line, 25, 6)) == f[2] && Trim(MidView(line, 42, 6)) == f[3]) {
        return std::string("Status: ") + kLineEnd + line;
      }
    }
    return kStatusLineNotFound;
  }
  std::string text = kStatusNotFound;
  bool found = false;
  for (std::size_t k = 0; k < sub.size() && !found; ++k) {
    if (MidView(sub[k], 9, 6) != id) continue;
    found = true;
    text = std::string("Status: ") + kLineEnd + sub[k];
    for (std::size_t m = k + 1; m < sub.size(); ++m) {
      const std::string trimmed = LTrim(sub[m]);
      if (StartsRecord(trimmed)) break;
      text += kLineEnd + trimmed;
    }
  }
  if (found) return text;
  bool inList = false;
  for (const std::string& line : sub) {
    if (!inList) {
      inList = Trim(line) == kWarning;
      continue;
    }
    if (Trim(line) == kWarningEnd) break;
    if (Trim(line) == id) {
      return std::string("Status: ") + kLineEnd + "CORNER " + id + " COULD NOT BE COMPUTED AS DEFINED." + kLineEnd +
             "CHECK DEFINITION AND TRY AGAIN.";
    }
  }
  return text;
}

std::string DefinitionStatus(const Session& session, const std::string& entry) {
  const std::string path = session.DatasetPath(".sub");
  if (!FileExistsAnyCase(path)) return kStatusNotComputed;
  std::vector<std::string> lines;
  try {
    LineReader in(path);
    while (!in.Eof()) lines.push_back(in.ReadLine());
  } catch (const RuntimeFault&) {
  }
  return StatusFromReport(lines, entry);
}

}  // namespace tessel
