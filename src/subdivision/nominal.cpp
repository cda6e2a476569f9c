#include "subdivision/nominal.h"

namespace tessel {

namespace {

NominalTable Build() {
  NominalTable t{};
  const SectionCentreTable& centres = SectionCentres();
  for (int s = 1; s <= 36; ++s) {
    auto& p = t[static_cast<std::size_t>(s)];
    const std::int32_t c = centres[static_cast<std::size_t>(s)];
    p[1] = c;
    // The four corners of the section.
    p[2] = c + 60060;
    p[3] = c + 59960;
    p[4] = c - 40040;
    p[5] = c - 39940;
    // Everything else from what is already there, in this order.
    p[6] = p[3] + 40;
    p[7] = p[4] + 40000;
    p[8] = p[4] + 40;
    p[9] = p[5] + 40000;
    p[10] = p[1] + 20000;
    p[11] = p[7] + 20;
    p[12] = p[8] + 20000;
    p[13] = p[1] + 20;
    p[14] = p[10] + 20;
    p[15] = p[11] + 20000;
    p[16] = p[12] - 20;
    p[17] = p[12] + 20;
    p[18] = p[6] + 20;
    p[19] = p[3] + 20;
    p[20] = p[7] + 20000;
    p[21] = p[4] + 20000;
    p[22] = p[4] + 20;
    p[23] = p[8] + 20;
    p[24] = p[5] + 20000;
    p[25] = p[9] + 20000;
  }
  return t;
}

}  // namespace

const SectionCentreTable& SectionCentres() {
  static const SectionCentreTable table = [] {
    SectionCentreTable t{};
    // Tier by tier from the north: east to west, then west to east.
    for (int tier = 0; tier < 6; ++tier) {
      const std::int32_t y = 640 - 100 * tier;
      for (int k = 0; k < 6; ++k) {
        const int section = tier * 6 + k + 1;
        const std::int32_t x = tier % 2 == 0 ? 640 - 100 * k : 140 + 100 * k;
        t[static_cast<std::size_t>(section)] = x * 1000 + y;
      }
    }
    return t;
  }();
  return table;
}

const NominalTable& Nominals() {
  static const NominalTable table = Build();
  return table;
}

std::int32_t NominalId(int section, int position) {
  if (section < 1 || section > 36 || position < 1 || position > 25) return 0;
  return Nominals()[static_cast<std::size_t>(section)][static_cast<std::size_t>(position)];
}

int SectionOfCentre(std::int32_t centre) {
  for (int s = 1; s <= 36; ++s) {
    if (Nominals()[static_cast<std::size_t>(s)][1] == centre) return s;
  }
  return 0;
}

std::string IdText(std::int32_t id) { return std::to_string(id); }

std::string PositionName(int position) {
  static const char* const names[26] = {"",        "",        "NE",      "SE",      "SW",
                                        "NW",      "",        "",        "",        "",
                                        "CE 1/16", "CS 1/16", "CW 1/16", "CN 1/16", "Northeast 1/16th",
                                        "Southeast 1/16th",   "Southwest 1/16th",   "Northwest 1/16th",
                                        "",        "",        "",        "",        "",
                                        "",        "",        ""};
  if (position < 0 || position > 25) return {};
  return names[position];
}

}  // namespace tessel
