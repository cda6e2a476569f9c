#include "db_export/db_settings.h"

#include <exception>
#include <utility>
#include <vector>

#include "db_export/db_export.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

// The fields by their keys in the file, in the file's order.
std::vector<std::pair<const char*, std::string DbConnection::*>> Fields() {
  return {{"service", &DbConnection::service}, {"host", &DbConnection::host},   {"port", &DbConnection::port},
          {"dbname", &DbConnection::database}, {"user", &DbConnection::user}, {"schema", &DbConnection::schema}};
}

}  // namespace

std::string DbConnectionPath(const Session& session) {
  std::string folder = session.ToolFolder;
  if (!folder.empty() && folder.back() != '/' && folder.back() != '\\') folder.push_back('/');
  return folder + kDbConnectionFile;
}

DbConnection ReadDbConnection(const Session& session) {
  DbConnection connection;
  std::string bytes;
  if (!ReadFileBytes(DbConnectionPath(session), bytes)) return connection;
  std::size_t start = 0;
  while (start < bytes.size()) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    std::string_view raw = std::string_view(bytes).substr(start, end - start);
    if (raw.ends_with('\r')) raw.remove_suffix(1);
    const std::string line = Trim(raw);
    start = end + 1;
    const std::size_t eq = line.find('=');
    if (eq == std::string::npos) continue;
    const std::string key = Trim(line.substr(0, eq));
    for (const auto& [name, member] : Fields()) {
      if (key == name) connection.*member = Trim(line.substr(eq + 1));
    }
  }
  return connection;
}

bool WriteDbConnection(const Session& session, const DbConnection& connection, std::string& error) {
  std::string text;
  for (const auto& [name, member] : Fields()) text += std::string(name) + "=" + Trim(connection.*member) + "\r\n";
  try {
    WriteFileBytes(DbConnectionPath(session), text);
  } catch (const std::exception& fault) {
    error = fault.what();
    return false;
  }
  return true;
}

bool RunDbExport(Session& session, const DbConnection& connection, const std::string& password,
                 GisExportRequest request, bool writePrj) {
  if (session.JobBase.empty()) {
    session.user.Message("You must first Open or Create a job.", Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (Trim(connection.service).empty() && Trim(connection.database).empty()) {
    session.user.Message("Give the database, or a service that names it.", Icon::Exclamation, Buttons::Ok,
                         kGisExportTitle);
    return false;
  }
  if (std::string error; !WriteDbConnection(session, connection, error)) {
    session.user.Message(error, Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (writePrj && !WriteExportPrj(session, request.crs)) return false;
  request.out = ConnectionText(connection, password);
  session.user.SetPointer(Pointer::Hourglass);
  const GisExportReport report = ExportJobToDatabase(session, request);
  session.user.SetPointer(Pointer::Default);
  std::string text;
  for (const std::string& line : GisExportSummary(report)) text += (text.empty() ? "" : "\r\n") + line;
  session.user.Message(text, report.ok ? Icon::Information : Icon::Exclamation, Buttons::Ok, kGisExportTitle);
  return report.ok;
}

}  // namespace tessel
