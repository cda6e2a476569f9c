#pragma once
// The tags of the raw polygons (frmEditRPO): the selected polygons take one tag and .RPO is
// rewritten through its copy .rp2.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kEditRpoTitle = "Edit Raw Polygon(s)";

// The label of the dialog: the selection count and " polygons selected".
std::string PolygonsSelectedText(const Session& session);
// OK: the selected polygons take `tag` ("S", "I", "O", or empty when no option was chosen) and
// .RPO is written anew: its heading as it stands, one empty line, then every polygon's tag, a
// blank and its ring. False when .RPO could not be rewritten: the user is told and .RPO is as it
// was. The tool goes back to zoom and pan either way.
bool SetRawPolygonTags(Session& session, const std::string& tag);
// Cancel: the tool goes back to zoom and pan.
void CancelRawPolygonTags(Session& session);

}  // namespace tessel
