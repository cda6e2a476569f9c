#pragma once
// tessel-batch render: the job painted as the desktop canvas paints it, into a PNG image or a
// PDF page.

#include <optional>
#include <string>
#include <vector>

namespace tessel {

struct RenderOptions {
  std::string def;
  std::string out;  // ends in .png or .pdf
  std::string toolFolder;
  int width = 1280;
  int height = 960;
  // View menu layers to show instead of the start-up ones.
  std::optional<std::vector<std::string>> layers;
  std::optional<int> background;  // 1 dark on light, 2 light on dark
  // Every label drawn, as View > Draw All Labels does; otherwise labels that would overprint
  // others of their layer are left out.
  bool allLabels = false;
};

// The View menu entry of a layer name: a short name ("points", "control", "lsa", "lxn", "raw",
// "ids", "multi", "parcels", "brief", "detailed", "full", "polygons") or the entry's own name.
std::optional<std::string> LayerEntry(const std::string& name);

// Writes the picture; the load's messages go to standard error. Returns the exit code.
int RenderJob(const RenderOptions& options);

}  // namespace tessel
