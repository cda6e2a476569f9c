#include "datasets/coordinate_files.h"

#include <vector>

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

constexpr double kCorMinSentinel = 5.0e7;
constexpr double kLsaMinSentinel = 1.0e7;
constexpr int kMergeBound = 10000;

struct PointLine {
  std::string id;
  double x = 0.0;
  double y = 0.0;
};

// Section 5 of .LSA: identifier 2-19, X 29-39, Y 53-63.
PointLine LsaPointFields(const std::string& line) {
  return {std::string(RTrimView(MidView(line, 2, 18))), Val(MidView(line, 29, 11)), Val(MidView(line, 53, 11))};
}

}  // namespace

CoordinateFields CorFields(std::string_view line) {
  return {MidView(line, 2, 18), MidView(line, 20, 12), MidView(line, 33, 13)};
}

CoordinateFields ControlFields(std::string_view line) {
  return {MidView(line, 2, 18), MidView(line, 20, 15), MidView(line, 37, 15)};
}

void PassLsaSections(LineReader& lsa, int sections) {
  for (int passed = 0; passed < sections;) {
    if (LastCharAsInt(lsa.ReadLineView()) == 1) ++passed;
  }
}

void ReadCor(Session& session) {
  session.user.Status(1, "Reading Coordinates");
  PointStore& points = session.points;
  try {
    LineReader cor(session.DatasetPath(".COR"));
    session.extents.Reset(kCorMinSentinel);
    points.SetCount(1);
    std::int16_t i = 1;
    std::string line;
    do {
      cor.ReadLine(line);
      // Val reads past leading blanks, so the fields need no trimming first.
      const CoordinateFields f = CorFields(line);
      const double x = Val(f.x);
      const double y = Val(f.y);
      points.Set(i, std::string(RTrimView(f.id)), x, y);
      session.extents.Include(x, y);
      points.SetCount(Add16(points.PointCount(), 1));
      i = Add16(i, 1);
    } while (!cor.Eof());
  } catch (const RuntimeFault&) {
    // The error route ends like the end of the file.
  }
  points.SetCount(Add16(points.PointCount(), -1));
  VerifyLsaPoints(session);
}

void VerifyLsaPoints(Session& session) {
  session.user.Status(1, "Verifying LSA Coordinates");
  std::vector<PointLine> local(1);  // entry 0 unused
  int next = 1;
  try {
    LineReader lsa(session.DatasetPath(".LSA"));
    PassLsaSections(lsa, 4);
    std::string line;
    for (;;) {
      lsa.ReadLine(line);
      if (next > kMergeBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
      local.push_back(LsaPointFields(line));
      ++next;
      if (Right(line, 1) == "1") break;
    }
  } catch (const RuntimeFault&) {
    // Merge what was read.
  }
  // The entry the index ends on was never filled: it is empty and so never appended.
  try {
    for (std::size_t k = 1; k < local.size(); ++k) {
      const PointLine& p = local[k];
      if (!p.id.empty() && session.points.Find(p.id) == 0) session.points.Append(p.id, p.x, p.y);
    }
  } catch (const RuntimeFault&) {
    // A full store ends the merge.
  }
}

bool ReadLsaPoints(Session& session) {
  session.user.Status(1, "Reading LSA Coordinates");
  PointStore& points = session.points;
  bool ended = false;
  try {
    LineReader lsa(session.DatasetPath(".LSA"));
    PassLsaSections(lsa, 4);
    session.extents.Reset(kLsaMinSentinel);
    points.SetCount(1);
    std::int16_t i = 1;
    std::string line;
    for (;;) {
      lsa.ReadLine(line);
      const PointLine p = LsaPointFields(line);
      points.Set(i, p.id, p.x, p.y);
      session.extents.Include(p.x, p.y);
      // The count runs one ahead of the points read and is left so: the last entry stays empty.
      points.SetCount(Add16(points.PointCount(), 1));
      i = Add16(i, 1);
      if (Right(line, 1) == "1") break;
    }
    ended = true;
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
  return ended;
}

void ReadControl(Session& session) {
  session.user.Status(1, "Reading Control Coordinates");
  ControlStore& control = session.control;
  try {
    LineReader lsa(session.DatasetPath(".LSA"));
    control.ControlCount = 1;
    std::string line;
    for (;;) {
      lsa.ReadLine(line);
      const int flag = LastCharAsInt(line);
      ControlStation& station = control.Control.at(control.ControlCount);
      const CoordinateFields f = ControlFields(line);
      station.id = Trim(f.id);
      station.x = Val(f.x);
      station.y = Val(f.y);
      control.ControlCount = Add16(control.ControlCount, 1);
      if (flag == 1) break;
    }
    // Match every station first, then append the unmatched ones in order.
    std::vector<int> match(1);
    for (int st = 1; st < control.ControlCount; ++st) {
      if (st > ControlStore::kMatchBound) throw RuntimeFault(FaultKind::Subscript, "Subscript out of range");
      match.push_back(session.points.Find(control.Control.get(st).id));
    }
    for (int st = 1; st < control.ControlCount; ++st) {
      if (match[static_cast<std::size_t>(st)] != 0) continue;
      const ControlStation& station = control.Control.get(st);
      session.points.Append(station.id, station.x, station.y);
    }
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
}

std::string CorLine(const std::string& id, double x, double y) {
  const std::string xText = FormatPicture(RoundDecimals(x, 4), 3);
  const std::string yText = FormatPicture(RoundDecimals(y, 4), 3);
  if (Val(xText) == 0.0 || Val(yText) == 0.0) return {};
  // Identifier from column 2, X from column 21, Y from column 36; a long field pushes the next.
  std::string line = " " + id;
  if (line.size() < 20) line.resize(20, ' ');
  line += xText;
  if (line.size() < 35) line.resize(35, ' ');
  line += yText;
  return line;
}

void WriteCorFromStore(Session& session) {
  std::vector<std::string> lines;
  for (int i = 1; i <= session.points.PointCount(); ++i) {
    std::string line = CorLine(session.points.PointIds(i), session.points.PointX(i), session.points.PointY(i));
    if (!line.empty()) lines.push_back(std::move(line));
  }
  WriteFileBytes(session.DatasetPath(".COR"), JoinCrLf(lines));
}

}  // namespace tessel
