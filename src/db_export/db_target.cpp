#include "db_export/db_target.h"

#include <cctype>
#include <vector>

#include "model/text.h"

namespace tessel {

namespace {

// A value as libpq's key=value texts take it.
std::string ConninfoValue(const std::string& value) {
  const bool plain = !value.empty() && value.find_first_of(" \t'\\") == std::string::npos;
  if (plain) return value;
  std::string out = "'";
  for (const char c : value) {
    if (c == '\'' || c == '\\') out.push_back('\\');
    out.push_back(c);
  }
  out.push_back('\'');
  return out;
}

bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && Upper(text.substr(0, prefix.size())) == Upper(prefix);
}

}  // namespace

bool IsDatabaseTarget(std::string_view target) { return StartsWithNoCase(TrimView(target), "PG:"); }

std::string ConnectionText(const DbConnection& connection, const std::string& password) {
  std::string text = "PG:";
  auto add = [&text](const char* key, const std::string& raw) {
    const std::string value = Trim(raw);
    if (value.empty()) return;
    if (text.size() > 3) text.push_back(' ');
    text += key;
    text.push_back('=');
    text += ConninfoValue(value);
  };
  add("service", connection.service);
  add("host", connection.host);
  add("port", connection.port);
  add("dbname", connection.database);
  add("user", connection.user);
  add("active_schema", connection.schema);
  if (!password.empty()) {
    if (text.size() > 3) text.push_back(' ');
    text += "password=" + ConninfoValue(password);
  }
  return text;
}

std::string RedactedTarget(std::string_view target) {
  std::string out(target);
  std::size_t from = 0;
  while (true) {
    std::size_t at = std::string::npos;
    for (std::size_t k = from; k + 9 <= out.size(); ++k) {
      if ((k == 0 || !std::isalnum(static_cast<unsigned char>(out[k - 1]))) && Upper(out.substr(k, 9)) == "PASSWORD=") {
        at = k;
        break;
      }
    }
    if (at == std::string::npos) return out;
    const std::size_t start = at + 9;
    std::size_t end = start;
    if (end < out.size() && out[end] == '\'') {
      for (++end; end < out.size() && out[end] != '\''; ++end) {
        if (out[end] == '\\') ++end;
      }
      if (end < out.size()) ++end;
    } else {
      while (end < out.size() && !std::isspace(static_cast<unsigned char>(out[end]))) ++end;
    }
    out.replace(start, end - start, "********");
    from = start + 8;
  }
}

std::string OneLineDbError(std::string_view message) {
  // libpq's messages span lines: GDAL's own line first, then the connection's, then hints.
  std::string line;
  std::size_t start = 0;
  while (start <= message.size() && line.empty()) {
    const std::size_t end = std::min(message.find('\n', start), message.size());
    line = Trim(message.substr(start, end - start));
    if (line == "PQconnectdb failed.") line.clear();
    start = end + 1;
  }
  // "connection to server on socket "..." failed: FATAL:  reason" comes down to the reason.
  bool unreachable = false;
  if (line.starts_with("connection to server ")) {
    const std::size_t failed = line.find(" failed: ");
    if (failed != std::string::npos) {
      line = Trim(line.substr(failed + 9));
      unreachable = true;
    }
  }
  for (const std::string_view prefix : {std::string_view("FATAL:  "), std::string_view("ERROR:  ")}) {
    if (line.starts_with(prefix)) {
      line = Trim(line.substr(prefix.size()));
      unreachable = false;
    }
  }
  if (unreachable) line = "the server cannot be reached (" + line + ")";
  if (line.empty()) line = "the database gave no reason";
  return RedactedTarget(line);
}

std::string SqlText(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'') out.push_back('\'');
    out.push_back(c);
  }
  out.push_back('\'');
  return out;
}

}  // namespace tessel
