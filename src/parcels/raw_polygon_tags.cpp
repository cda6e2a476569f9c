#include "parcels/raw_polygon_tags.h"

#include <vector>

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

std::string PolygonsSelectedText(const Session& session) {
  return std::to_string(session.SelectionCount) + " polygons selected";
}

bool SetRawPolygonTags(Session& session, const std::string& tag) {
  RawPolygonStore& store = session.polygons;
  for (int j = 0; j < session.SelectionCount; ++j) {
    StepOver([&] { store.RawPolygonTag.at(session.selection.SelectedPolygons.get(j)) = tag; });
  }
  const std::string rpo = session.DatasetPath(".rpo");
  const std::string copy = session.DatasetPath(".rp2");
  bool written = false;
  try {
    CopyFileReplacing(rpo, copy);
    LineReader in(copy);
    std::vector<std::string> out;
    std::string line;
    while (!EndsWith(Trim(line), "POLYGONS FOUND")) {
      in.ReadLine(line);
      out.push_back(line);
    }
    // The line the reader passes over.
    out.emplace_back();
    for (int i = 1; i <= store.RawPolygonCount; ++i) {
      out.push_back(store.RawPolygonTag.get(i) + " " + store.RawPolygonRing.get(i));
    }
    WriteFileBytes(rpo, JoinCrLf(out));
    written = true;
  } catch (const RuntimeFault& fault) {
    // A heading that never ends writes nothing: .RPO keeps its polygons.
    if (fault.kind() == FaultKind::ReadPastEnd) {
      session.user.Message(rpo + " has no line ending in \"POLYGONS FOUND\": it was not rewritten.", Icon::Exclamation);
    } else {
      TellFileFault(session.user, fault);
    }
  }
  DeleteAnyCase(copy);
  session.ToolMode = ToolMode::ZoomPan;
  if (session.display) session.display->RefreshView();
  return written;
}

void CancelRawPolygonTags(Session& session) { session.ToolMode = ToolMode::ZoomPan; }

}  // namespace tessel
