#include "regions/post_region_update.h"

#include <filesystem>
#include <vector>

#include "datasets/support_files.h"
#include "job/command_table.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"
#include "model/text_file.h"
#include "regions/how_file.h"
#include "regions/region_preview.h"
#include "tools/launching.h"

namespace tessel {

namespace {

constexpr const char* kAnswers = "t1$.001";
constexpr const char* kBatch = "temp.bat";

bool EndsWithSeparator(const std::string& folder) {
  return !folder.empty() && (folder.back() == '\\' || folder.back() == '/' || folder.back() == PathSeparator());
}

std::string InFolder(const std::string& folder, const std::string& name) {
  return ResolveCase(folder + (EndsWithSeparator(folder) ? "" : std::string(1, PathSeparator())) + name);
}

void RunScripted(Session& session, const UpdateStep& step, const std::string& answers, bool twoBlanks) {
  const std::string& folder = session.JobFolder;
  StepOver([&] { WriteFileBytes(InFolder(folder, kAnswers), answers); });
  StepOver([&] {
    WriteFileBytes(InFolder(folder, kBatch), UpdateScriptCommand(session, step.tool, folder, twoBlanks) + "\r\nexit\r\n");
  });
  StepOver([&] { session.processes.RunCode({kBatch, {}}, folder, ShowMode::Hidden); });
  DeleteAnyCase(InFolder(folder, kAnswers));
  DeleteAnyCase(InFolder(folder, kBatch));
}

bool IsFolder(const std::string& folder) {
  std::error_code error;
  return std::filesystem::is_directory(NativePath(folder), error);
}

}  // namespace

std::string FreeFormatNumber(double value) {
  std::string digits = ShortestText(value < 0 ? -value : value);
  if (StartsWith(digits, "0.")) digits.erase(0, 1);
  return (value < 0 ? "-" : " ") + digits + " ";
}

std::string UpdateScriptCommand(const Session& session, const std::string& tool, const std::string& jobFolder,
                                bool twoBlanks) {
  const std::string program = ToolCommandLine(session, tool);
  const bool ended = EndsWithSeparator(jobFolder);
  const std::string redirect = twoBlanks && ended ? "  <" : " <";
  return QuotePath(program) + redirect + QuotePath(jobFolder + (ended ? "" : std::string(1, PathSeparator())) + kAnswers);
}

bool RunPostRegionUpdate(Session& session, const UpdateOptions& options, const std::string& projectField) {
  std::vector<std::string> table;
  const std::string how = session.DatasetPath(".how");
  if (FileExistsAnyCase(how)) ReadHowListing(how, table);
  if (table.size() > static_cast<std::size_t>(kUpdateRowBound)) table.resize(kUpdateRowBound);

  if (options.steps[3] && Trim(options.tolerance).empty()) {
    session.user.Message(kMsgPolygonTolerance, Icon::Stop);
    return false;
  }
  session.user.SetPointer(Pointer::Hourglass);
  const std::string regionFolder = RegionFolder(session);

  for (const std::string& entry : table) {
    const std::string row = Trim(entry);
    if (IsRegionKeyword(row)) break;
    if (RowHasFolder(row)) {
      session.JobName = RowProjectName(row);
      session.JobFolder = row.substr(0, row.size() - session.JobName.size());
    } else {
      session.JobName = row;
      session.JobFolder = regionFolder + PathSeparator();
    }
    session.JobBase = row;
    if (!IsFolder(session.JobFolder)) {
      // A project whose folder is gone is passed over; no tool runs in another project's folder.
      session.user.Status(2, "Project folder not found: " + session.JobFolder);
      continue;
    }
    session.CurrentFolder = session.JobFolder;
    StepOver([&] { WriteFileBytes(InFolder(session.JobFolder, "TEMP.JOB"), session.JobName + "\r\n"); });
    StepOver([&] {
      for (const char* name : kSupportFiles) WriteFileBytes(InFolder(session.JobFolder, name), SupportFileText(name));
    });

    for (std::size_t k = 0; k < kUpdateSteps.size(); ++k) {
      if (!options.steps[k]) continue;
      const UpdateStep& step = kUpdateSteps[k];
      session.user.Status(1, session.JobName + step.status);
      if (k == 0) {
        RunScripted(session, step, "6\r\n3\r\n", true);
      } else if (k == 3) {
        double tolerance = 0.0;
        StepOver([&] { tolerance = Val(options.tolerance); });
        RunScripted(session, step, FreeFormatNumber(tolerance) + "\r\n\r\n", false);
      } else {
        StepOver([&] { session.processes.RunCode(ToolLaunch(session, step.tool), session.JobFolder, ShowMode::Hidden); });
      }
    }

    if (!session.JobInToolFolder() && session.JobFolder != session.ToolFolder + PathSeparator() + PathSeparator()) {
      for (const char* name : {"NAD27.CON", "NAD83.CON", "TABLE.DAT", "ZONE.DAT"}) {
        DeleteAnyCase(InFolder(session.JobFolder, name));
      }
    }
  }

  session.JobFolder = regionFolder;
  session.JobName = projectField;
  session.JobBase = session.JobFolder + session.JobName;
  session.CurrentFolder = session.JobFolder;
  session.user.Status(1, "Ready");
  session.user.SetPointer(Pointer::Default);
  session.user.UnloadForm("frmGML");
  session.user.Message(kMsgUpdateComplete);
  return true;
}

}  // namespace tessel
