#include "subdivision/splitplan_runs.h"

#include "calculations/calculation_files.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "tools/launching.h"

namespace tessel {

namespace {

constexpr const char* kBatchFile = "temp.bat";
constexpr const char* kAnswerFile = "t1$.001";

std::string InCurrentFolder(const Session& session, const std::string& name) {
  const std::string& folder = session.CurrentFolder;
  if (folder.empty()) return ResolveCase(name);
  const char last = folder.back();
  const bool ended = last == '/' || last == PathSeparator();
  return ResolveCase(folder + (ended ? "" : std::string(1, PathSeparator())) + name);
}

std::vector<std::string> Tail(std::vector<std::string> lines) {
  for (const char* line : {"9", "4", "3", "1"}) lines.emplace_back(line);
  return lines;
}

bool Empty(const std::string& field) { return Trim(field).empty(); }

bool Incomplete(Session& session) {
  session.user.Message(kMsgCompleteInformation, Icon::Stop);
  return false;
}

bool RunWithBusyPointer(Session& session, const std::vector<std::string>& answers) {
  session.user.SetPointer(Pointer::Hourglass);
  const bool ran = RunSplitplanScript(session, answers);
  session.user.SetPointer(Pointer::Default);
  return ran;
}

}  // namespace

std::vector<std::string> ComputeAnswers() { return std::vector<std::string>(6); }

std::vector<std::string> AutoIrrAnswers(int section) {
  return {"1", std::to_string(section), "11", "12", "", "", "3", "1"};
}

std::vector<std::string> NoSubdivisionAnswers(int section) {
  return {"1", std::to_string(section), "10", "12", "", "3", "1"};
}

std::vector<std::string> ThreeMileAnswers(int section) {
  return Tail({"2", "3", "8", "2", std::to_string(section), ""});
}

std::vector<std::string> ElongatedAnswers(const ElongatedInput& input) {
  return Tail({"2", "3", "5", input.section, input.direction, input.rows, ""});
}

std::vector<std::string> ShortSectionAnswers(const ShortSectionInput& input) {
  return Tail({"2", "3", "7", "2", input.section, std::to_string(input.closingDirection),
               std::to_string(input.howShort), ""});
}

std::vector<std::string> MinorAnswers(const MinorInput& input) {
  std::vector<std::string> lines = {"2", "3", "4"};
  if (!input.half.empty()) {
    lines.emplace_back("Y");
    lines.push_back(input.half);
  } else {
    lines.emplace_back("");
  }
  lines.push_back(input.parcel);
  lines.emplace_back("");
  return Tail(lines);
}

bool RunSplitplanScript(Session& session, const std::vector<std::string>& answers) {
  // Both files stay behind after every run, so a write that fails would leave splitplan reading
  // the answers of an earlier run, perhaps of another section: the run is refused instead.
  const bool ready =
      WriteFileOrTell(session.user, session.JobFile(kAnswerFile), JoinCrLf(answers)) &&
      WriteFileOrTell(session.user, InCurrentFolder(session, kBatchFile),
                      JoinCrLf({ScriptCommand(session, "splitplan.exe", kAnswerFile), "exit"}));
  if (!ready) return false;
  StepOver([&] { session.processes.Run({kBatchFile, {}}, session.CurrentFolder); });
  return true;
}

bool FinishElongated(Session& session, const ElongatedInput& input) {
  if (Empty(input.section) || Empty(input.rows)) return Incomplete(session);
  if (!RunWithBusyPointer(session, ElongatedAnswers(input))) return false;
  ReloadCalculationLists(session);
  return true;
}

bool FinishShortSection(Session& session, const ShortSectionInput& input) {
  if (Empty(input.section)) return Incomplete(session);
  if (!RunWithBusyPointer(session, ShortSectionAnswers(input))) return false;
  ReloadCalculationLists(session);
  return true;
}

bool FinishMinor(Session& session, const MinorInput& input) {
  if (Empty(input.parcel)) return Incomplete(session);
  if (!RunWithBusyPointer(session, MinorAnswers(input))) return false;
  ReloadCalculationLists(session);
  return true;
}

void ComputeSubdivision(Session& session) {
  session.user.SetPointer(Pointer::Hourglass);
  if (RunSplitplanScript(session, ComputeAnswers())) {
    // The job's lines are read again, which redraws; parcel edits not yet saved stay in memory.
    // Without a load sequence the picture is at least repainted.
    if (session.reloadJobLines) ReloadJobLineFiles(session);
    else if (session.display) session.display->RefreshView();
  }
  session.user.SetPointer(Pointer::Default);
}

bool RunSectionScript(Session& session, const std::vector<std::string>& answers) {
  return RunWithBusyPointer(session, answers);
}

void ReloadCalculationLists(Session& session) {
  if (!session.JobBase.empty()) LoadCalculationLists(session);
}

}  // namespace tessel
