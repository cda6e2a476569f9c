#include "batch/cama_commands.h"

#include <filesystem>
#include <iostream>

#include "batch/batch_session.h"
#include "cama/cama_import.h"
#include "cama/link_chain.h"
#include "cama/manual_link.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/recording_ports.h"
#include "model/text.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// The job's identity from its .def, without the file effects of File Open.
void UseIdentity(Session& s, const std::string& def) {
  const fs::path path = fs::absolute(NativePath(def));
  const std::string title = PathBytes(path.filename());
  const std::string stem = title.substr(0, title.find('.'));
  s.JobFolder = PathBytes(path.parent_path()) + PathSeparator();
  s.JobBase = s.JobFolder + stem;
  s.JobName = Upper(stem);
  s.CurrentFolder = s.JobFolder;
}

void PrintMessages(const RecordingUserPort& user) {
  for (const auto& message : user.messages) std::cerr << message.text << "\n";
}

}  // namespace

int RunCamaImport(const std::string& def, const std::string& database, const std::optional<std::string>& code,
                  bool append, const std::string& toolFolder) {
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session session(user, canvas, processes);
  session.ToolFolder = toolFolder;
  UseIdentity(session, def);
  // The append question, answered by --append.
  user.answers.push_back(append ? Answer::Yes : Answer::No);
  if (!CamaImportBegin(session)) {
    std::cerr << kMsgCamaAppend << "\n" << session.DatasetPath(".cama") << " exists; give --append to append to it\n";
    return 1;
  }
  user.messages.clear();
  const std::string query = code.value_or(QueryCode(DefaultTownshipQuery(session.JobName)));
  long long appended = 0;
  const bool done = CamaImportFrom(session, query, database, &appended);
  PrintMessages(user);
  if (!done) return 1;
  std::cerr << appended << " rows of " << query << " appended to " << session.DatasetPath(".cama") << "\n";
  return 0;
}

int RunCamaLink(const std::string& def, const std::string& toolFolder) {
  NullCanvas canvas;
  BatchSession batch(canvas, toolFolder);
  batch.Start();
  batch.Open(def);
  Session& session = batch.session();
  const std::size_t first = batch.Messages().size();
  int code = 0;
  if (session.DatasetExists(".mtc")) {
    std::cerr << kMsgDeleteBeforeRecompute << "\n";
    code = 1;
  } else {
    LinkParcelsWithCama(session);
    const auto messages = batch.Messages();
    for (std::size_t i = first; i < messages.size(); ++i) std::cerr << messages[i] << "\n";
    code = session.DatasetExists(".mtc") ? 0 : 1;
    if (code == 0) std::cerr << session.cama.LinkCount << " link records written to " << session.DatasetPath(".mtc") << "\n";
  }
  batch.Close();
  return code;
}

int RunCamaUnused(const std::string& def, const std::string& toolFolder) {
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session session(user, canvas, processes);
  session.ToolFolder = toolFolder;
  UseIdentity(session, def);
  if (!session.DatasetExists(".mtc")) {
    std::cerr << "no link file " << session.DatasetPath(".mtc") << "; run cama-link first\n";
    return 1;
  }
  const bool loaded = LoadLinkFile(session);
  if (loaded) ShowUnusedCama(session);
  PrintMessages(user);
  if (!loaded || session.cama.CamaCount == 0) return 1;
  for (const std::string& row : session.cama.UnusedRows) std::cout << row << "\n";
  return 0;
}

}  // namespace tessel
