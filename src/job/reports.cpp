#include "job/reports.h"

#include <exception>

#include "job/command_table.h"

namespace tessel {

namespace {

}  // namespace

const std::vector<ReportRow>& ReportTable() {
  static const std::vector<ReportRow> rows = {
      {"mnuReportsGen", "Section Closure Report (GEN)", ".GEN", "GEN file not found"},
      {"mnuReportsAdj", "Least Squares Analysis Report (ADJ)", ".ADJ", "ADJ file not found"},
      {"mnuReportsSub", "Proportioning & Subdivision Report (SUB)", ".SUB", "SUB file not found"},
      {"", "listing of closures", ".CHK", "CHK file not found"},
      {"", "listing of coordinates", ".COR", "COR file not found"},
      {"", "listing of polygon checks", ".PGC", "PGC file not found"},
      {"", "listing of control", ".CON", "CON file not found"},
      {"", "listing of record data", ".RAW", "RAW file not found"},
      {"", "listing of survey identifiers", ".SID", "SID file not found"},
      {"", "listing of intersections", ".INT", "INT file not found"},
  };
  return rows;
}

void OpenReport(Session& session, const ReportRow& row) {
  if (!session.DatasetExists(row.extension)) {
    session.user.Message(row.message, Icon::Stop);
    return;
  }
  // The path is one argument, whatever blanks it holds.
  const Launch editor{PlatformProgram(session.config.EditorPath), {session.DatasetPath(row.extension)}};
  StepOver([&] { session.processes.Spawn(editor, session.CurrentFolder, ShowMode::Normal); });
}

void ProjectReports(Session& session) {
  FileRequest request;
  request.title = "Select a Report or Text File to view";
  request.filter = "Project Files (" + session.JobName + ".*)|" + session.JobName + ".*|All Files (*.*)|*.*";
  request.initialFolder = session.JobFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return;
  const Launch editor{PlatformProgram(session.config.EditorPath), {choice->fileName}};
  StepOver([&] { session.processes.Spawn(editor, session.CurrentFolder, ShowMode::Normal); });
}

}  // namespace tessel
