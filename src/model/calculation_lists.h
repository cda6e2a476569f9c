#pragma once
// The post-adjustment calculation lists as frmADD shows them: the .add lines as they stand, the
// points and line segments of .not, the surveys a computed point can be assigned to, and the
// survey of each computed point from .ads.

#include <string>
#include <unordered_map>
#include <vector>

namespace tessel {

// One line of .ads: a computed point and the survey it belongs to.
struct AdsEntry {
  std::string id;
  std::string survey;
};

struct CalculationLists {
  // Every line of .add, in file order.
  std::vector<std::string> Definitions;
  // .not: the points not to compute, and the segments "from to" left out of the topology.
  std::vector<std::string> NotPoints;
  std::vector<std::string> NotLines;
  // The survey names of the job, sorted, without repeats; "<none>" is not among them.
  std::vector<std::string> Surveys;
  // .ads in file order.
  std::vector<AdsEntry> Ads;
  // Each identifier of .ads to its last line in Ads, as a walk over the whole table finds it.
  std::unordered_map<std::string, int> AdsById;

  void Clear() {
    Definitions.clear();
    NotPoints.clear();
    NotLines.clear();
    Surveys.clear();
    Ads.clear();
    AdsById.clear();
  }
};

}  // namespace tessel
