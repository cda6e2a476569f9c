#pragma once
// The export dialog's database: its fields kept between sessions in tessel-db.conn in the tool
// folder (host, port, database, user, schema, service; never a password), and the dialog's Export
// to it.

#include <string>

#include "db_export/db_target.h"
#include "gis_export/gis_export.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kDbConnectionFile = "tessel-db.conn";

std::string DbConnectionPath(const Session& session);
// The fields last used; empty ones when there is no file or it cannot be read.
DbConnection ReadDbConnection(const Session& session);
// Writes the fields (through a temporary file); false, with `error` naming the file, when it
// cannot be written.
bool WriteDbConnection(const Session& session, const DbConnection& connection, std::string& error);

// The dialog's Export to a database: the fields are kept (the password never is), the job's
// township replaced there, and a box tells the result. `password` is for this export only; empty
// leaves it to libpq's password file or service file. With `writePrj` the code given is first
// written to the job's .prj, as for a file. True when it was written.
bool RunDbExport(Session& session, const DbConnection& connection, const std::string& password,
                 GisExportRequest request, bool writePrj);

}  // namespace tessel
