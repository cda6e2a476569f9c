#include "batch/job_dump.h"

#include <algorithm>

namespace tessel {

namespace {

using nlohmann::json;

// Entries 1..count of a table, but never past its bound (a count can run ahead of its table
// when a reader stopped at the bound).
template <typename F>
json Entries(int count, int bound, F&& entry) {
  json out = json::array();
  for (int i = 1; i <= std::min(count, bound); ++i) out.push_back(entry(i));
  return out;
}

}  // namespace

json DumpStores(const Session& s, const std::vector<std::string>& messages, const std::vector<std::string>& status) {
  json j;
  j["JobBase"] = s.JobBase;
  j["JobFolder"] = s.JobFolder;
  j["JobName"] = s.JobName;
  j["messages"] = messages;
  j["status"] = status;

  const PointStore& p = s.points;
  const int pointCount = p.PointCount();
  j["PointCount"] = pointCount;
  j["PointIds"] = Entries(pointCount, PointStore::kBound, [&](int i) { return json(p.PointIds(i)); });
  j["PointX"] = Entries(pointCount, PointStore::kBound, [&](int i) { return json(p.PointX(i)); });
  j["PointY"] = Entries(pointCount, PointStore::kBound, [&](int i) { return json(p.PointY(i)); });

  const ControlStore& c = s.control;
  const int stations = c.ControlCount - 1;
  j["ControlCount"] = c.ControlCount;
  j["ControlIds"] = Entries(stations, ControlStore::kBound, [&](int i) { return json(c.Control.get(i).id); });
  j["ControlX"] = Entries(stations, ControlStore::kBound, [&](int i) { return json(c.Control.get(i).x); });
  j["ControlY"] = Entries(stations, ControlStore::kBound, [&](int i) { return json(c.Control.get(i).y); });

  j["JobExtents"] = {{"MinX", s.extents.MinX}, {"MaxX", s.extents.MaxX}, {"MinY", s.extents.MinY}, {"MaxY", s.extents.MaxY}};
  j["UnitsPerChain"] = static_cast<double>(s.UnitsPerChain);

  const auto ends = [](const LineEnds& e) { return json::array({e.from, e.to}); };
  j["LsaLineCount"] = s.lsa.LsaLineCount;
  j["LsaLineEnds"] = Entries(s.lsa.LsaLineCount - 1, LsaLineStore::kBound,
                             [&](int i) { return ends(s.lsa.LsaLineEnds.get(i)); });
  j["LxnRecordCount"] = s.lxn.LxnRecordCount;
  j["LxnSegmentCount"] = s.lxn.LxnSegmentCount;
  j["LxnLineEnds"] = Entries(s.lxn.LxnSegmentCount, LxnLineStore::kSegmentBound,
                             [&](int i) { return ends(s.lxn.LxnLineEnds.get(i)); });

  const RawLineStore& r = s.raw;
  j["RawLineCount"] = r.RawLineCount;
  j["RawLineFields"] = Entries(r.RawLineCount, RawLineStore::kBound, [&](int i) {
    const RawFields& f = r.RawLineFields.get(i);
    return json::array({f[1], f[2], f[3], f[4], f[5], f[6]});
  });
  j["RawLineEnds"] = Entries(r.RawLineCount, RawLineStore::kBound, [&](int i) {
    const RawEnds& e = r.RawLineEnds.get(i);
    return json::array({e.from, e.to, e.survey});
  });

  const SurveyStore& sv = s.surveys;
  j["SurveyCount"] = sv.SurveyCount;
  j["SurveyTable"] = Entries(sv.SurveyCount, SurveyStore::kBound, [&](int i) {
    const SurveyEntry& e = sv.SurveyTable.get(i);
    return json::array({e.sLine, e.first, e.last});
  });
  j["SurveyCaptionCount"] = sv.SurveyCaptionCount;
  j["SurveyCaptions"] = Entries(sv.SurveyCaptionCount, SurveyStore::kCaptionBound,
                                [&](int i) { return json(sv.SurveyCaptions.get(i)); });

  j["NoteLineCount"] = s.notes.NoteLineCount;
  j["NoteLineEnds"] = Entries(s.notes.NoteLineCount, NoteLineStore::kBound,
                              [&](int i) { return ends(s.notes.NoteLineEnds.get(i)); });

  const ParcelStore& pc = s.parcels;
  const int parcels = pc.ParcelCount;
  j["ParcelCount"] = parcels;
  j["ParcelLine"] = Entries(parcels, ParcelStore::kBound, [&](int i) { return json(pc.ParcelLine.get(i)); });
  j["ParcelRing"] = Entries(parcels, ParcelStore::kBound, [&](int i) { return json(pc.ParcelRing.get(i)); });
  j["ParcelX"] = Entries(parcels, ParcelStore::kBound, [&](int i) { return json(pc.ParcelX.get(i)); });
  j["ParcelY"] = Entries(parcels, ParcelStore::kBound, [&](int i) { return json(pc.ParcelY.get(i)); });
  j["ParcelMulti"] = Entries(parcels, ParcelStore::kBound, [&](int i) { return json(pc.ParcelMulti.get(i)); });

  const RawPolygonStore& rp = s.polygons;
  const int polygons = rp.RawPolygonCount;
  j["RawPolygonCount"] = polygons;
  j["RawPolygonTag"] = Entries(polygons, RawPolygonStore::kBound, [&](int i) { return json(rp.RawPolygonTag.get(i)); });
  j["RawPolygonRing"] = Entries(polygons, RawPolygonStore::kBound, [&](int i) { return json(rp.RawPolygonRing.get(i)); });
  j["RawPolygonX"] = Entries(polygons, RawPolygonStore::kBound, [&](int i) { return json(rp.RawPolygonX.get(i)); });
  j["RawPolygonY"] = Entries(polygons, RawPolygonStore::kBound, [&](int i) { return json(rp.RawPolygonY.get(i)); });
  return j;
}

}  // namespace tessel
