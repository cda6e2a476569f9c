#include "model/recording_ports.h"

#include <utility>

namespace tessel {

Answer RecordingUserPort::Message(const std::string& text, Icon icon, Buttons buttons, const std::string& caption) {
  messages.push_back({text, icon, buttons, caption});
  if (!answers.empty()) {
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
  }
  return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ? Answer::Yes : Answer::Ok;
}

std::optional<std::string> RecordingUserPort::Input(const std::string& prompt, const std::string&,
                                                    const std::string&) {
  prompts.push_back(prompt);
  if (inputs.empty()) return std::nullopt;
  auto reply = inputs.front();
  inputs.pop_front();
  return reply;
}

std::optional<FileChoice> RecordingUserPort::ChooseFile(const FileRequest& request) {
  fileRequests.push_back(request);
  if (files.empty()) return std::nullopt;
  auto reply = files.front();
  files.pop_front();
  return reply;
}

void RecordingUserPort::Status(int panel, const std::string& text) {
  status[panel].push_back(text);
  statusNow[panel] = text;
}

std::vector<std::string> RecordingUserPort::MessageTexts() const {
  std::vector<std::string> texts;
  for (const auto& m : messages) texts.push_back(m.text);
  return texts;
}

void RecordingProcessPort::Run(const Launch& launch, const std::string& folder) {
  launches.push_back({"Run", launch.Text(), folder, launch});
}

int RecordingProcessPort::RunCode(const Launch& launch, const std::string& folder, ShowMode) {
  launches.push_back({"RunCode", launch.Text(), folder, launch});
  return 0;
}

void RecordingProcessPort::Watch(const Launch& launch, const std::string& folder, const std::vector<std::string>&) {
  launches.push_back({"Watch", launch.Text(), folder, launch});
}

void RecordingProcessPort::Spawn(const Launch& launch, const std::string& folder, ShowMode) {
  launches.push_back({"Spawn", launch.Text(), folder, launch});
}

bool RecordingProcessPort::SpawnReported(const Launch& launch, const std::string& folder, ShowMode, SpawnEnded ended) {
  launches.push_back({"Spawn", launch.Text(), folder, launch});
  if (notStarted.empty()) {
    running.push_back(std::move(ended));
    return true;
  }
  SpawnEnd end;
  end.started = false;
  end.reason = notStarted;
  if (ended) ended(end);
  return false;
}

}  // namespace tessel
