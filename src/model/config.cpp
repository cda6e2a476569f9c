#include "model/config.h"

#include <charconv>
#include <cmath>

#include "model/fault.h"
#include "model/field_reader.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

bool operator==(const ToolButtonEntry& a, const ToolButtonEntry& b) {
  return a.path == b.path && a.caption == b.caption;
}

const std::array<const char*, 16> kColourListTexts = {
    "0 - Black",      "1 - Blue",        "2 - Green",      "3 - Cyan",
    "4 - Red",        "5 - Magenta",     "6 - Yellow",     "7 - White",
    "8 - Gray",       "9 - Light Blue",  "10 - Light Green", "11 - Light Cyan",
    "12 - Light Red", "13 - Light Magenta", "14 - Light Yellow", "15 - Bright White"};

const std::array<const char*, 6> kLineStyleTexts = {"0- Solid", "1- Dash", "2- Dot",
                                                     "3- Dash-Dot", "4- Dash-Dot-Dot", "5- Inside Fill"};

const std::array<unsigned, 16> kPalette = {0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080,
                                           0x808000, 0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF,
                                           0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};

unsigned PaletteColour(int number) {
  if (number < 0 || number > 15) throw RuntimeFault(FaultKind::Subscript, "Invalid procedure call");
  return kPalette[static_cast<std::size_t>(number)];
}

namespace {

std::int16_t ReadInt16(FieldReader& in) { return To16(in.ReadNumber()); }

float ReadSingle(FieldReader& in) {
  return ToSingle(in.ReadNumber());
}

Config ParseConfig(FieldReader& in) {
  Config c;
  c.PtSizeCor = ReadInt16(in);
  c.CorColor = ReadInt16(in);
  c.PtSizeCtrl = ReadInt16(in);
  c.CtrlColor = ReadInt16(in);
  c.LineTypeLSA = ReadInt16(in);
  c.LsaColor = ReadInt16(in);
  c.LineTypeLXN = ReadInt16(in);
  c.LxnColor = ReadInt16(in);
  c.PanPercent = ReadSingle(in);
  c.ZoomPercent = ReadSingle(in);
  c.chkLXN = ReadInt16(in);
  c.EditorPath = in.ReadString();
  for (auto& button : c.ToolButton) {
    button.path = in.ReadString();
    button.caption = in.ReadString();
  }
  c.chkLinesLSA = ReadInt16(in);
  c.chkLinesLXN = ReadInt16(in);
  c.chkRPO = ReadInt16(in);
  c.chkPoints = ReadInt16(in);
  c.chkControl = ReadInt16(in);
  c.chkParcels = ReadInt16(in);
  c.BackgroundMode = ReadInt16(in);
  c.chkLinesRAW = ReadInt16(in);
  return c;
}

std::string Number(double value) { return ShortestText(value); }

// The shortest text of a single-precision value, so 0.1 is written as "0.1".
std::string Number(float value) {
  char buf[64];
  const auto result = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed);
  return std::string(buf, result.ptr);
}

}  // namespace

Config ReadConfig(const std::string& path) {
  std::string text;
  if (!ReadFileBytes(path, text)) return Config{};
  try {
    FieldReader in(std::move(text));
    return ParseConfig(in);
  } catch (const RuntimeFault&) {
    return Config{};
  }
}

void WriteConfig(const std::string& path, const Config& c) {
  std::vector<std::string> lines;
  const auto pair = [](double a, double b) { return Number(a) + "," + Number(b); };
  lines.push_back(pair(c.PtSizeCor, c.CorColor));
  lines.push_back(pair(c.PtSizeCtrl, c.CtrlColor));
  lines.push_back(pair(c.LineTypeLSA, c.LsaColor));
  lines.push_back(pair(c.LineTypeLXN, c.LxnColor));
  lines.push_back(Number(c.PanPercent) + "," + Number(c.ZoomPercent));
  lines.push_back(Number(static_cast<double>(c.chkLXN)));
  lines.push_back(c.EditorPath);
  for (const auto& button : c.ToolButton) {
    lines.push_back(button.path);
    lines.push_back(button.caption);
  }
  for (const std::int16_t v : {c.chkLinesLSA, c.chkLinesLXN, c.chkRPO, c.chkPoints, c.chkControl, c.chkParcels,
                               c.BackgroundMode, c.chkLinesRAW}) {
    lines.push_back(Number(static_cast<double>(v)));
  }
  WriteFileBytes(path, JoinCrLf(lines));
}

}  // namespace tessel
