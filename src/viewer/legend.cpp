#include "viewer/legend.h"

#include "cama/link_chain.h"
#include "parcels/banding.h"
#include "viewer/drawing.h"

namespace tessel {

namespace {

using Symbol = LegendRow::Symbol;

// A colour number of the configuration out of the palette paints nothing: its row shows the
// fore colour rather than fail.
unsigned Palette(int number, int mode) {
  return number >= 0 && number <= 15 ? PaletteColour(number) : ForeColour(mode);
}

std::string Joined(const std::vector<std::string>& keys) {
  std::string text;
  for (const std::string& key : keys) text += (text.empty() ? "" : " ") + key;
  return text;
}

}  // namespace

std::vector<LegendRow> LegendRows(const Session& s) {
  const Config& c = s.config;
  const ViewChecks& v = s.checks;
  const int mode = c.BackgroundMode;
  std::vector<LegendRow> rows;
  const auto add = [&rows](const char* group, std::string text, unsigned colour, Symbol symbol, int style, bool shown) {
    rows.push_back({group, std::move(text), colour, symbol, style, shown});
  };

  const char* layers = "Layers";
  add(layers, "Control Stations", Palette(c.CtrlColor, mode), Symbol::Dot, 0, v.mnuOptionsControl);
  add(layers, "Points", Palette(c.CorColor, mode), Symbol::Dot, 0, v.mnuViewPoints);
  add(layers, "Lines  (LXN)", Palette(c.LxnColor, mode), Symbol::Line, c.LineTypeLXN, v.mnuOptionsLinesLXN);
  add(layers, "Lines  (LSA)", Palette(c.LsaColor, mode), Symbol::Line, c.LineTypeLSA, v.mnuOptionsLinesLSA);
  add(layers, "Lines (RAW): to an uncomputed point", ForeColour(mode), Symbol::Dot, 0, v.mnuViewLinesRaw);
  add(layers, "Multiple Attributes", kRed, Symbol::Ring, 0, v.mnuOptionsMultiAtt);
  for (const auto& [tag, number] : {std::pair{"S", 8}, std::pair{"I", 1}, std::pair{"O", 2}}) {
    add(layers, std::string("Raw Polygons tagged ") + tag, PaletteColour(number), Symbol::Dot, 0, v.mnuViewRPO);
  }

  // The record lines take their survey's colour, cycling through the palette in survey order.
  for (int i = 1; i <= s.surveys.SurveyCount; ++i) {
    add("Record lines (RAW) by survey", SurveyName(s.surveys.SurveyTable.get(i)),
        PaletteColour(SurveyColourNumber(i, mode)), Symbol::Line, c.LineTypeLSA, v.mnuViewLinesRaw);
  }

  const bool parcels = v.mnuOptionsParcel || v.mnuOptionsParcelBrief || v.mnuOptionsParcelDetail ||
                       v.mnuOptionsParcelFull;
  for (const char* tag : {"T_W", "T_?", "T_L", "T_A"}) {
    const std::string line = std::string(10, ' ') + tag;
    add("Parcels", std::string("Parcel type ") + tag + (std::string(tag) == "T_A" ? " (aliquot part)" : ""),
        ParcelColour(line, mode), Symbol::Dot, 0, parcels);
  }
  add("Parcels", "Parcel of any other type", ParcelColour(std::string(13, ' '), mode), Symbol::Dot, 0, parcels);

  // A band is painted once over the picture: it is shown until the next refresh, never a layer.
  const std::pair<BandKind, const char*> bands[] = {{BandKind::EW, "Nominal E-W"},
                                                    {BandKind::NS, "Nominal N-S"},
                                                    {BandKind::EWSection, "Sections E-W"},
                                                    {BandKind::NSSection, "Sections N-S"}};
  for (const auto& [kind, name] : bands) {
    for (const auto& [keys, number] : BandTable(kind)) {
      add("Banding", std::string(name) + ": " + Joined(keys), PaletteColour(number), Symbol::Dot, 0, false);
    }
  }

  const std::pair<const char*, const char*> links[] = {{kLinkRed, "Provisional, no link"},
                                                       {kLinkGreen, "Linked"},
                                                       {kLinkYellow, "Numbered survey, not matched"},
                                                       {kLinkBlue, "Numbered survey, matched"}};
  for (const auto& [colour, meaning] : links) {
    add("CAMA links", meaning, LinkCanvasColour(colour), Symbol::Dot, 0, v.mnuViewCama);
  }
  return rows;
}

}  // namespace tessel
