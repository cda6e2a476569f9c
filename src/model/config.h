#pragma once
// Tessel.cfg: the display preferences, the external editor and the twelve user tool entries.
// Global, not per job; read once at start, written only by the configuration dialog's Save.

#include <array>
#include <cstdint>
#include <string>

namespace tessel {

struct ToolButtonEntry {
  std::string path = "none";  // "none" means not set
  std::string caption;
};

struct Config {
  std::int16_t PtSizeCor = 4;
  std::int16_t CorColor = 4;
  std::int16_t PtSizeCtrl = 8;
  std::int16_t CtrlColor = 14;
  std::int16_t LineTypeLSA = 0;
  std::int16_t LsaColor = 3;
  std::int16_t LineTypeLXN = 1;
  std::int16_t LxnColor = 9;
  float PanPercent = 10.0f;
  float ZoomPercent = 10.0f;
  std::int16_t chkLXN = 1;
  std::string EditorPath = "Notepad.exe";
  std::array<ToolButtonEntry, 12> ToolButton{};
  std::int16_t chkLinesLSA = 1;
  std::int16_t chkLinesLXN = 0;
  std::int16_t chkLinesRAW = 0;
  std::int16_t chkRPO = 0;
  std::int16_t chkPoints = 1;
  std::int16_t chkControl = 1;
  std::int16_t chkParcels = 0;
  std::int16_t BackgroundMode = 1;

  bool operator==(const Config&) const = default;
};

bool operator==(const ToolButtonEntry& a, const ToolButtonEntry& b);

// The settings of a Tessel.cfg; any failure at any item (a missing file, a missing line, text
// where a number belongs) drops everything read and gives the defaults.
Config ReadConfig(const std::string& path);

// Replaces Tessel.cfg with the settings, one item or pair a line in the file's order.
void WriteConfig(const std::string& path, const Config& config);

// The texts of the colour lists ("0 - Black" ... "15 - Bright White") and of the line style
// lists ("0- Solid" ... "5- Inside Fill").
extern const std::array<const char*, 16> kColourListTexts;
extern const std::array<const char*, 6> kLineStyleTexts;

// The sixteen-colour palette of colour numbers 0 to 15, as 0xRRGGBB.
extern const std::array<unsigned, 16> kPalette;
unsigned PaletteColour(int number);

}  // namespace tessel
