#pragma once
// The toolbar's icons: SVG drawings carried inside the program (resources/icons), one per key.

#include <QIcon>
#include <vector>

#include "model/resources.h"

namespace tessel {

// Generated from resources/icons: "icons/<name>.svg" and its bytes.
const std::vector<EmbeddedText>& ToolbarIconFiles();

// The icon of a toolbar key by its object name; a null icon for a key without a drawing.
QIcon ToolbarIcon(const QString& key);

}  // namespace tessel
