// tessel-batch: the headless companion of Tessel.
//
//   tessel-batch dump PATH.def [--tool-folder DIR] [--pretty]
//
// opens the job as File Open does (identity, TEMP.JOB, support files, every reader in order),
// prints its stores as one JSON object, and closes it again as Close does.

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "batch/job_dump.h"
#include "core/load_sequence.h"
#include "core/paths.h"
#include "core/recording_ports.h"
#include "viewer/drawing.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kUsage = "usage: tessel-batch dump PATH.def [--tool-folder DIR] [--pretty]";

int Fail(const std::string& message) {
  std::cerr << "tessel-batch: " << message << "\n";
  return 2;
}

int Dump(const fs::path& def, const std::string& toolFolder, bool pretty) {
  tessel::RecordingUserPort user;
  tessel::NullCanvas canvas;
  tessel::RecordingProcessPort processes;
  tessel::Session session(user, canvas, processes);
  // The first drawing is part of File Open (its messages too), painted here on nothing.
  tessel::Viewer viewer(session);
  session.display = &viewer;
  session.ToolFolder = toolFolder;
  std::error_code ec;
  session.CurrentFolder = fs::current_path(ec).string();

  tessel::MainFormLoad(session);
  const std::size_t firstStatus = user.status[1].size();
  const std::size_t firstMessage = user.messages.size();

  const fs::path absolute = fs::absolute(def);
  tessel::OpenJob(session, absolute.string(), absolute.filename().string());

  const auto& panel1 = user.status[1];
  const std::vector<std::string> status(panel1.begin() + static_cast<std::ptrdiff_t>(firstStatus), panel1.end());
  std::vector<std::string> messages;
  for (std::size_t i = firstMessage; i < user.messages.size(); ++i) messages.push_back(user.messages[i].text);
  const nlohmann::json stores = tessel::DumpStores(session, messages, status);

  tessel::FileClose(session);
  // File contents are single-byte text, not UTF-8: bytes that do not form UTF-8 are replaced.
  std::cout << stores.dump(pretty ? 1 : -1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty() || args[0] != "dump") return Fail(kUsage);
  std::string path;
  std::string toolFolder = tessel::ProgramFolder(argv[0]);
  bool pretty = false;
  for (std::size_t i = 1; i < args.size(); ++i) {
    if (args[i] == "--tool-folder" && i + 1 < args.size()) {
      toolFolder = args[++i];
    } else if (args[i] == "--pretty") {
      pretty = true;
    } else if (!args[i].starts_with("--") && path.empty()) {
      path = args[i];
    } else {
      return Fail(kUsage);
    }
  }
  if (path.empty()) return Fail(kUsage);
  std::error_code ec;
  if (!fs::is_regular_file(fs::path(path), ec)) return Fail("no such job definition: " + path);
  while (toolFolder.size() > 1 && (toolFolder.back() == '/' || toolFolder.back() == tessel::PathSeparator())) {
    toolFolder.pop_back();
  }
  return Dump(fs::path(path), toolFolder, pretty);
}
