#pragma once
// Window places of the tool windows, kept in ts$002.cfg beside the program: one line a window,
// "key,top,left,height,width" in twips. tstemp.cfg is the scratch copy of a rewrite.

#include <optional>
#include <string>

#include "model/session.h"

namespace tessel {

struct WindowPlace {
  float top = 0.0f;
  float left = 0.0f;
  float height = 0.0f;
  float width = 0.0f;
};

// The place of the window `key`; the last line whose first characters are the key counts.
std::optional<WindowPlace> ReadWindowPlace(const Session& session, const std::string& key);
// Replaces every line that begins with the key by the new place, or adds one.
void WriteWindowPlace(const Session& session, const std::string& key, const WindowPlace& place);

// frmFind: the first entry from `start` whose characters from column 4 on begin with `text`.
std::optional<int> FindEntry(const std::vector<std::string>& entries, const std::string& text, int start);
// "Point identifier " + text + " not found."
std::string NotFoundText(const std::string& text);

}  // namespace tessel
