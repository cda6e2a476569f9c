#pragma once
// Texts carried inside the program: the support files the suite's tools need in a job folder.

#include <string>
#include <string_view>
#include <vector>

namespace tessel {

struct EmbeddedText {
  const char* name;
  std::string_view bytes;
};

// Generated from the files under resources/.
const std::vector<EmbeddedText>& EmbeddedTexts();

}  // namespace tessel
