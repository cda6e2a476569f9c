#include "batch/batch_session.h"

#include "job/load_sequence.h"
#include "model/platform.h"

namespace tessel {

BatchSession::BatchSession(CanvasPort& canvas, const std::string& toolFolder)
    : session_(user_, canvas, processes_), viewer_(session_) {
  // The first drawing is part of File Open, its messages too.
  session_.display = &viewer_;
  session_.ToolFolder = toolFolder;
  std::error_code ec;
  session_.CurrentFolder = PathBytes(std::filesystem::current_path(ec));
}

void BatchSession::Start() { MainFormLoad(session_); }

void BatchSession::Open(const std::string& def) {
  firstStatus_ = user_.status[1].size();
  firstMessage_ = user_.messages.size();
  const std::filesystem::path absolute = std::filesystem::absolute(NativePath(def));
  OpenJob(session_, PathBytes(absolute), PathBytes(absolute.filename()));
}

void BatchSession::Close() { FileClose(session_); }

std::vector<std::string> BatchSession::Messages() const {
  std::vector<std::string> texts;
  for (std::size_t i = firstMessage_; i < user_.messages.size(); ++i) texts.push_back(user_.messages[i].text);
  return texts;
}

std::vector<std::string> BatchSession::Status() const {
  const auto found = user_.status.find(1);
  if (found == user_.status.end()) return {};
  return {found->second.begin() + static_cast<std::ptrdiff_t>(firstStatus_), found->second.end()};
}

}  // namespace tessel
