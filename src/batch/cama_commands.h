#pragma once
// The CAMA linking's commands of tessel-batch: cama-import, cama-link and cama-unused.

#include <optional>
#include <string>

namespace tessel {

// The township's rows of the database appended to the job's .cama; an existing .cama is
// refused unless `append`. The code is the query dialog's default unless given.
int RunCamaImport(const std::string& def, const std::string& database, const std::optional<std::string>& code,
                  bool append, const std::string& toolFolder);
// The link chain on the opened job, as the menu runs it with no .mtc present.
int RunCamaLink(const std::string& def, const std::string& toolFolder);
// LoadLinkFile, then the report of unused CAMA records: .phd gets its lines, the list is printed.
int RunCamaUnused(const std::string& def, const std::string& toolFolder);

}  // namespace tessel
