#pragma once
// Where a database export goes: a PostgreSQL/PostGIS database named by a GDAL connection text
// ("PG:service=county" or "PG:host=... dbname=..."), or a GeoPackage that gathers townships.
// The connection texts Tessel builds never hold a password: libpq finds it in the user's
// password file (~/.pgpass) or service file, or the dialog asks for it each time.

#include <string>
#include <string_view>

namespace tessel {

// True for a "PG:" connection text, the prefix in any case.
bool IsDatabaseTarget(std::string_view target);

// What the export dialog keeps of a database: never the password.
struct DbConnection {
  std::string service;  // a libpq service name; the other fields then only add to it
  std::string host;
  std::string port;
  std::string database;
  std::string user;
  std::string schema;  // empty for the database's default (public)
};

// The connection text of the fields: "PG:" and each field given as key=value, a value with
// spaces, quotes or backslashes quoted as libpq reads it. `password`, when not empty, is added
// for this connection only.
std::string ConnectionText(const DbConnection& connection, const std::string& password = {});

// The connection text fit to be shown: a password in it replaced by "********".
std::string RedactedTarget(std::string_view target);

// A message of GDAL or libpq about a database in one line: its first line, without the
// driver's prefixes, and any password in it hidden.
std::string OneLineDbError(std::string_view message);

// A township's name as an SQL string literal: in single quotes, quotes doubled.
std::string SqlText(std::string_view text);

}  // namespace tessel
