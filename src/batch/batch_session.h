#pragma once
// A session of tessel-batch: recording ports instead of windows, the viewer painting on the
// canvas it is given, and File Open and Close as the desktop runs them.

#include <string>
#include <vector>

#include "model/recording_ports.h"
#include "model/session.h"
#include "viewer/drawing.h"

namespace tessel {

class BatchSession {
 public:
  BatchSession(CanvasPort& canvas, const std::string& toolFolder);

  // The main form's load: Tessel.cfg from the tool folder and the start-up settings.
  void Start();
  // File Open from the chosen .def on; the messages and status texts from here on are the load's.
  void Open(const std::string& def);
  // Close, with its file effects.
  void Close();

  // What the load showed, in order.
  std::vector<std::string> Messages() const;
  std::vector<std::string> Status() const;

  Session& session() { return session_; }
  const RecordingUserPort& user() const { return user_; }

 private:
  RecordingUserPort user_;
  RecordingProcessPort processes_;
  Session session_;
  Viewer viewer_;
  std::size_t firstMessage_ = 0;
  std::size_t firstStatus_ = 0;
};

}  // namespace tessel
