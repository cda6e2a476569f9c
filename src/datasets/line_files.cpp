#include "datasets/line_files.h"

#include <cmath>
#include <vector>

#include "datasets/coordinate_files.h"
#include "model/fault.h"
#include "model/field_reader.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

double DmsToRadians(double packed) {
  const double pi = 4.0 * std::atan(1.0);
  // A whole number below a million, the common case, is cut by arithmetic on its digits: the
  // same fields as the text's, overlaps included.
  if (packed >= 0.0 && packed < 1e6 && packed == std::floor(packed)) {
    const auto n = static_cast<int>(packed);
    const int length = n >= 100000 ? 6 : n >= 10000 ? 5 : n >= 1000 ? 4 : n >= 100 ? 3 : n >= 10 ? 2 : 1;
    static constexpr int kPowers[] = {1, 10, 100, 1000, 10000};
    int degrees = 0, minutes = 0, seconds = 0;
    if (length >= 5) {
      degrees = n / kPowers[length - 2];
      minutes = n / kPowers[length - 4] % 100;
      seconds = n % 100;
    } else if (length >= 3) {
      minutes = n / kPowers[length - 2];
      seconds = n % 100;
    } else {
      seconds = n;
    }
    return pi * (degrees + minutes / 60.0 + seconds / 3600.0) / 180.0;
  }
  const std::string s = ShortestText(packed);
  const int length = static_cast<int>(s.size());
  double degrees = 0.0, minutes = 0.0, seconds = 0.0;
  if (length == 5 || length == 6) {
    degrees = Val(Left(s, 2));
    minutes = Val(Mid(s, 3, 2));
    seconds = Val(Right(s, 2));
  } else if (length == 3 || length == 4) {
    minutes = Val(Left(s, 2));
    seconds = Val(Right(s, 2));
  } else if (length == 1 || length == 2) {
    seconds = Val(s);
  }
  return pi * (degrees + minutes / 60.0 + seconds / 3600.0) / 180.0;
}

LsaLineIds ReadLsaLineIds(const std::string& path) {
  LsaLineIds read;
  try {
    LineReader lsa(path);
    PassLsaSections(lsa, 1);
    read.passed = true;
    // One line past the table's bound is enough: storing it is the subscript fault.
    while (read.lines.size() <= static_cast<std::size_t>(LsaLineStore::kBound)) {
      const std::string_view line = lsa.ReadLineView();
      const int flag = LastCharAsInt(line);
      read.lines.push_back({std::string(TrimView(MidView(line, 2, 16))), std::string(TrimView(MidView(line, 28, 16))), flag == 1});
      if (flag == 1) break;
    }
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
  return read;
}

void ReadLsaLines(Session& session, LsaLineIds* ahead) {
  session.user.Status(1, "Reading LSA Lines");
  LsaLineIds direct;
  if (!ahead) {
    direct = ReadLsaLineIds(session.DatasetPath(".LSA"));
    ahead = &direct;
  }
  if (!ahead->passed) return;
  LsaLineStore& store = session.lsa;
  store.LsaLineCount = 1;
  try {
    for (const LsaLineIds::Line& line : ahead->lines) {
      LineEnds& ends = store.LsaLineEnds.at(store.LsaLineCount);
      ends.from = static_cast<std::int16_t>(session.points.Find(line.from));
      ends.to = static_cast<std::int16_t>(session.points.Find(line.to));
      store.LsaLineCount = Add16(store.LsaLineCount, 1);
      if (line.last) break;
    }
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
}

namespace {

struct LxnRecord {
  int count = 0;
  std::string text;
};

// A count is a 32-bit integer: rounded half to even, out of range an overflow.
int ToLong(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded > INT32_MIN && rounded <= INT32_MAX)) throw RuntimeFault(FaultKind::Overflow, "Overflow");
  return static_cast<int>(rounded);
}

}  // namespace

void ReadLxn(Session& session) {
  session.user.Status(1, "Reading LXN Lines");
  const std::string path = session.DatasetPath(".LXN");
  if (!FileExistsAnyCase(path)) return;
  LxnLineStore& store = session.lxn;
  std::string bytes;
  if (!ReadFileBytes(path, bytes)) return;
  FieldReader in(std::move(bytes));
  StepOver([&] { in.ReadLine(); });
  StepOver([&] { in.ReadLine(); });
  store.LxnRecordCount = 1;

  // Records: a count, then a line of identifiers. A count of 999999 marks a record whose count
  // follows; the file ends with such a marker.
  std::vector<LxnRecord> records(1);
  int count = 0;
  std::string text;
  while (!in.Eof()) {
    StepOver([&] { count = ToLong(in.ReadNumber()); });
    if (count == 999999) {
      if (in.Eof()) break;
      StepOver([&] { count = ToLong(in.ReadNumber()); });
    }
    StepOver([&] { text = in.ReadLine(); });
    const int index = store.LxnRecordCount;
    if (index <= LxnLineStore::kRecordBound) {
      records.resize(static_cast<std::size_t>(index) + 1);
      records[static_cast<std::size_t>(index)].count = count;
      if (index <= LxnLineStore::kTextBound) records[static_cast<std::size_t>(index)].text = text;
    }
    StepOver([&] { store.LxnRecordCount = Add16(store.LxnRecordCount, 1); });
    if (store.LxnRecordCount == index) break;  // the record counter is full
  }

  for (std::size_t r = 1; r < records.size(); ++r) {
    StepOver([&] { store.LxnSegmentCount = Add16(store.LxnSegmentCount, records[r].count - 1); });
  }

  // Segments past the table are stepped over, so the walk can stop there.
  int segment = 0;
  for (std::size_t r = 1; r < records.size() && segment < LxnLineStore::kSegmentBound; ++r) {
    const LxnRecord& record = records[r];
    for (int k = 1; k <= record.count - 1 && segment < LxnLineStore::kSegmentBound; ++k) {
      ++segment;
      const std::string_view from = MidView(record.text, 6 * (k - 1) + 1, 6);
      const std::string_view to = MidView(record.text, 6 * k + 1, 6);
      if (Val(to) == 0.0) continue;
      LineEnds& ends = store.LxnLineEnds.at(segment);
      if (const int f = session.points.Find(from)) ends.from = static_cast<std::int16_t>(f);
      if (const int t = session.points.Find(to)) ends.to = static_cast<std::int16_t>(t);
    }
  }
}

}  // namespace tessel
