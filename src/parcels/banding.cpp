#include "parcels/banding.h"

#include <string>
#include <utility>
#include <vector>

#include "model/text.h"

namespace tessel {

const BandRows& BandTable(BandKind kind) {
  using Rows = BandRows;
  static const Rows ew = {{{"A", "B", "E", "F"}, 5}, {{"C", "D", "G", "H"}, 9}, {{"I", "J", "M", "N"}, 10},
                          {{"K", "L", "O", "P"}, 11}};
  static const Rows ns = {{{"A", "D", "M", "P"}, 5}, {{"B", "C", "N", "O"}, 9}, {{"E", "H", "I", "L"}, 10},
                          {{"F", "G", "J", "K"}, 11}};
  static const Rows ewSection = [] {
    Rows rows;
    const int colours[] = {5, 9, 2, 10, 3, 11};
    for (int row = 0; row < 6; ++row) {
      std::vector<std::string> keys;
      for (int k = 1; k <= 6; ++k) {
        const std::string n = std::to_string(row * 6 + k);
        keys.push_back(std::string(3 - n.size(), '0') + n);
      }
      rows.emplace_back(keys, colours[row]);
    }
    return rows;
  }();
  static const Rows nsSection = {{{"006", "007", "018", "019", "030", "031"}, 5},
                                 {{"005", "008", "017", "020", "029", "032"}, 9},
                                 {{"004", "009", "016", "021", "028", "033"}, 2},
                                 {{"003", "010", "015", "022", "027", "034"}, 10},
                                 {{"002", "011", "014", "023", "026", "035"}, 3},
                                 {{"001", "012", "013", "024", "025", "036"}, 11}};
  switch (kind) {
    case BandKind::EW: return ew;
    case BandKind::NS: return ns;
    case BandKind::EWSection: return ewSection;
    case BandKind::NSSection: break;
  }
  return nsSection;
}

int BandColourNumber(BandKind kind, const std::string& key) {
  for (const auto& [keys, colour] : BandTable(kind)) {
    for (const std::string& k : keys) {
      if (k == key) return colour;
    }
  }
  return 0;
}

std::string BandKey(BandKind kind, const std::string& parcelLine) {
  return kind == BandKind::EW || kind == BandKind::NS ? Mid(parcelLine, 9, 1) : Mid(parcelLine, 5, 3);
}

void BandParcels(Session& session, BandKind kind) {
  CanvasPort& canvas = session.canvas;
  canvas.SetPenWidth(3 * session.config.PtSizeCor);
  int colour = 0;
  const ParcelStore& store = session.parcels;
  for (int i = 1; i <= store.ParcelCount; ++i) {
    const int number = BandColourNumber(kind, BandKey(kind, store.ParcelLine.get(i)));
    if (number != 0) colour = number;
    canvas.Dot(store.ParcelX.get(i), store.ParcelY.get(i), PaletteColour(colour));
  }
  canvas.SetPenWidth(1);
}

}  // namespace tessel
