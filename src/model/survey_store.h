#pragma once
// The surveys of a job as read from .sid: for each survey its trimmed S line and the numbers of
// its first and last C line; the C lines themselves are numbered through the whole file.

#include <cstdint>
#include <string>

#include "model/bounded_array.h"

namespace tessel {

struct SurveyEntry {
  std::string sLine;        // the S line, trimmed
  std::int16_t first = 0;   // first C line of the survey
  std::int16_t last = 0;    // last C line; below `first` when the survey has none
};

struct SurveyStore {
  static constexpr int kBound = 200;
  static constexpr int kCaptionBound = 600;
  BoundedArray<SurveyEntry> SurveyTable{kBound};
  BoundedArray<std::string> SurveyCaptions{kCaptionBound};
  std::int16_t SurveyCount = 0;
  std::int16_t SurveyCaptionCount = 0;

  void Clear() {
    SurveyTable.clear();
    SurveyCaptions.clear();
    SurveyCount = 0;
    SurveyCaptionCount = 0;
  }
};

// The survey's name: columns 2 to 19 of its S line, trimmed.
std::string SurveyName(const SurveyEntry& survey);

}  // namespace tessel
