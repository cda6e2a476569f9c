#pragma once
// The reports of the suite opened in the configured editor, and the listings of the same shape.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

struct ReportRow {
  std::string name;       // object name of the menu entry; empty for the listings no menu reaches
  std::string caption;    // "Section Closure Report (GEN)"; the listings' own description otherwise
  std::string extension;  // ".GEN"
  std::string message;    // "GEN file not found"
};

const std::vector<ReportRow>& ReportTable();

// JobBase plus the extension in the editor (EditorPath, a blank, the path, unquoted), spawned;
// or the message with the stop icon when the file is not there.
void OpenReport(Session& session, const ReportRow& row);
// "Project Reports": the report dialog over the job's files; the choice opens quoted.
void ProjectReports(Session& session);

}  // namespace tessel
