#include "parcels/raw_polygons.h"

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

void ReadRpoHeading(LineReader& rpo, std::int16_t& count) {
  std::string line;
  while (!EndsWith(Trim(line), "POLYGONS FOUND")) {
    rpo.ReadLine(line);
    count = To16(Val(Left(Trim(line), 3)));
  }
  rpo.ReadLine(line);
}

void ReadRawPolygons(Session& session) {
  session.user.Status(1, "Reading raw polygons");
  RawPolygonStore& store = session.polygons;
  try {
    LineReader rpo(session.DatasetPath(".RPO"));
    ReadRpoHeading(rpo, store.RawPolygonCount);
    std::string line;
    for (int i = 1; i <= store.RawPolygonCount; ++i) {
      line = rpo.ReadLine();
      store.RawPolygonTag.at(i) = Left(line, 1);
      store.RawPolygonRing.at(i) = Mid(line, 3);
    }
    LineReader crp(session.DatasetPath(".CRP"));
    for (int i = 1; i <= store.RawPolygonCount; ++i) {
      line = Trim(crp.ReadLine());
      store.RawPolygonX.at(i) = Val(Left(line, 15));
      store.RawPolygonY.at(i) = Val(Right(line, 15));
    }
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
}

}  // namespace tessel
