#include "batch/region_test.h"

#include <filesystem>

#include "model/platform.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "model/text.h"
#include "regions/how_file.h"
#include "regions/region_console.h"

namespace fs = std::filesystem;

namespace tessel {

namespace {

// Records like the batch's port, and keeps every status text of every panel in one order.
class StatusLogPort : public RecordingUserPort {
 public:
  explicit StatusLogPort(std::vector<std::string>& log) : log_(log) {}
  void Status(int panel, const std::string& text) override {
    RecordingUserPort::Status(panel, text);
    log_.push_back(text);
  }

 private:
  std::vector<std::string>& log_;
};

}  // namespace

nlohmann::json RegionTest(const RegionTestOptions& options, std::string& error) {
  std::vector<std::string> statusLog;
  StatusLogPort user(statusLog);
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session session(user, canvas, processes);
  session.ToolFolder = options.toolFolder;

  const fs::path def = fs::absolute(NativePath(options.def));
  const std::string title = PathBytes(def.filename());
  const std::string name = title.substr(0, title.find('.'));
  std::string folder = PathBytes(def.parent_path());
  if (folder.empty() || folder.back() != fs::path::preferred_separator) folder += fs::path::preferred_separator;
  session.JobFolder = folder;
  session.JobName = Upper(name);
  session.JobBase = folder + name;
  session.CurrentFolder = folder;
  session.RegionJobFolder = folder;
  session.RegionJobName = name;

  RegionConsole console(session);
  console.txtProject = session.JobName;
  console.txtTolerance = options.tolerance;
  console.onStatus = [&statusLog](int, const std::string& text) { statusLog.push_back(text); };
  if (!ReadHowListing(console.RegionFile(".how"), console.rows)) {
    error = "no region listing: " + console.RegionFile(".how");
    return nlohmann::json::object();
  }
  console.Preview();
  const int pointCount = session.points.PointCount();
  const int lineCount = HeldLineCount(session);
  console.Test();

  const RegionMatchStore& m = session.region.match;
  nlohmann::json points = nlohmann::json::array();
  for (int k = 1; k <= m.MatchPointCount; ++k) points.push_back(session.points.PointIds(m.MatchPoints.get(k)));
  nlohmann::json lines = nlohmann::json::array();
  for (int k = 1; k <= m.MatchLineCount; ++k) {
    const auto [a, b] = m.MatchLines.get(k);
    lines.push_back({session.points.PointIds(a), session.points.PointIds(b)});
  }
  nlohmann::json out;
  out["PointCount"] = pointCount;
  out["LineCount"] = lineCount;
  out["MatchPoints"] = points;
  out["MatchLines"] = lines;
  out["status"] = statusLog;
  out["messages"] = user.MessageTexts();
  return out;
}

}  // namespace tessel
