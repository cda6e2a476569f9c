#pragma once
// The link tables of the assessor (CAMA) linking: the township's CAMA lines, one link record per
// parcel of a linked section with its link text, ring, position and colour, and what the three
// CAMA dialogs show. Parallel arrays from index 1, bound 5000 (the chain text 20000).

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "model/bounded_array.h"

namespace tessel {

struct CamaStore {
  static constexpr int kBound = 5000;
  BoundedArray<std::string> CamaRecords{kBound};
  std::int16_t CamaCount = 0;
  BoundedArray<std::string> ClotLines{kBound};
  BoundedArray<std::string> LinkGeocode{kBound};
  BoundedArray<std::string> LinkChain{20000};
  BoundedArray<double> LinkX{kBound};
  BoundedArray<double> LinkY{kBound};
  // The colour as decimal text of a blue-green-red number: "255" red, "65280" green, "65535"
  // yellow, "16711680" blue.
  BoundedArray<std::string> LinkColor{kBound};
  std::int16_t LinkCount = 0;
  // Link records as last read from .mtc.
  std::int16_t LinkLoadedCount = 0;
  // Counts the times the link records were numbered anew (read, cleared, built by the chain): a
  // record picked before may now be another.
  unsigned LinkReading = 0;
  // Row of frmCamaParcel's list (from 0) to its CamaRecords index.
  BoundedArray<std::int16_t> CamaPickIndex{kBound};
  std::array<std::int16_t, 37> SectionCamaCounts{};

  // frmCama: the legal text box and its three labels.
  std::string CamaText;
  std::array<std::string, 3> CamaLabels;
  // frmCamaParcel: the section it lists, its caption, list rows and three labels.
  std::string CamaParcelSection;
  std::string CamaParcelCaption;
  std::vector<std::string> CamaParcelRows;
  std::array<std::string, 3> CamaParcelLabels;
  // frmUnusedCama: the geocodes that no loaded link record carries.
  std::vector<std::string> UnusedRows;
};

}  // namespace tessel
