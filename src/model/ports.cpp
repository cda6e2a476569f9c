#include "model/ports.h"

namespace tessel {

namespace {

std::string Shown(const std::string& part) {
  if (!part.empty() && part.find_first_of(" \t\"") == std::string::npos) return part;
  std::string out = "\"";
  for (const char c : part) {
    out += c;
    if (c == '"') out += '"';
  }
  return out + "\"";
}

}  // namespace

std::string Launch::Text() const {
  std::string text = Shown(program);
  for (const std::string& argument : arguments) {
    text += ' ';
    text += Shown(argument);
  }
  return text;
}

}  // namespace tessel
