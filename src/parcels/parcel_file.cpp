#include "parcels/parcel_file.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <functional>
#include <tuple>
#include <vector>

#include "model/fault.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/selection_checks.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

bool IsDigitAt(std::string_view line, int column) {
  const std::string_view c = MidView(line, column, 1);
  return !c.empty() && c[0] >= '0' && c[0] <= '9';
}

bool IsBlankAt(std::string_view line, int column) { return MidView(line, column, 1) == " "; }

bool IsAttributeLine(std::string_view line) { return line.starts_with("Sec_") || line.starts_with("SEC_"); }

bool IsLocationLine(std::string_view line) { return line.starts_with(" PARCEL N,E"); }

// Parcels at exactly the same location are flagged as multiple, each of them. Sorted by place,
// equal places stand together; a place that is not a number equals nothing.
void FlagMultiple(ParcelStore& store) {
  struct Place {
    double y, x;
    int parcel;
  };
  std::vector<Place> places;
  places.reserve(static_cast<std::size_t>(std::max<int>(store.ParcelCount, 0)));
  for (int i = 1; i <= store.ParcelCount; ++i) {
    const double y = store.ParcelY.get(i), x = store.ParcelX.get(i);
    if (!std::isnan(y) && !std::isnan(x)) places.push_back({y, x, i});
  }
  const auto before = [](const Place& a, const Place& b) { return a.y < b.y || (a.y == b.y && a.x < b.x); };
  std::sort(places.begin(), places.end(), before);
  for (std::size_t k = 0; k < places.size();) {
    std::size_t end = k + 1;
    while (end < places.size() && places[end].y == places[k].y && places[end].x == places[k].x) ++end;
    if (end - k > 1) {
      for (std::size_t m = k; m < end; ++m) store.ParcelMulti.at(places[m].parcel) = 1;
    }
    k = end;
  }
}

}  // namespace

bool IsRingLine(const std::string& line) {
  return IsBlankAt(line, 1) && IsBlankAt(line, 8) && IsBlankAt(line, 15) && IsDigitAt(line, 6) &&
         IsDigitAt(line, 13) && IsDigitAt(line, 20);
}

namespace {

// The lines of .IID into the four tables. Each attribute line is the next parcel; a ring line and
// a location line go to the parcels since the last location line, and past them on purpose:
// entries above are overwritten by their own lines.
void FillParcelTables(const std::string& path, BoundedArray<std::string>& lines, BoundedArray<std::string>& rings,
                      BoundedArray<double>& ys, BoundedArray<double>& xs, int& next) {
  LineReader in(path);
  int pending = 0;
  std::string line;
  while (!in.Eof()) {
    in.ReadLine(line);
    // The three kinds of line exclude one another by their first columns.
    if (IsAttributeLine(line)) {
      lines.at(next) = line;
      ++next;
      ++pending;
    } else if (IsRingLine(line)) {
      for (int i = next - pending; i <= next + pending; ++i) rings.at(i) = line;
    } else if (IsLocationLine(line)) {
      const double y = Val(MidView(line, 17, 11));
      const double x = Val(MidView(line, 33, 11));
      for (int i = next - pending; i <= next + pending; ++i) {
        ys.at(i) = y;
        xs.at(i) = x;
      }
      pending = 0;
    }
  }
}

}  // namespace

ParcelFileRead ReadParcelFile(const std::string& path) {
  ParcelFileRead read;
  try {
    FillParcelTables(path, read.lines, read.rings, read.ys, read.xs, read.next);
  } catch (...) {
    read.fault = std::current_exception();
  }
  return read;
}

void ReadParcels(Session& session, ParcelFileRead* ahead) {
  session.user.Status(1, "Reading parcels");
  ParcelStore& store = session.parcels;
  for (int i = 1; i <= store.ParcelCount; ++i) {
    store.ParcelLine.at(i).clear();
    store.ParcelRing.at(i).clear();
    store.ParcelY.at(i) = 0.0;
    store.ParcelX.at(i) = 0.0;
    store.ParcelIdx.at(i) = 0;
    store.ParcelEdit.at(i).clear();
  }
  store.ParcelCount = 0;
  store.FileLines.clear();
  ++store.Reading;
  session.SelectionCount = 0;

  const std::string path = session.DatasetPath(".IID");
  if (!FileExistsAnyCase(path)) {
    session.user.Message(".IID file not found", Icon::Information);
    session.Changed(Change::Parcels);
    return;
  }
  int next = 1;
  // Tables read ahead are what the reading leaves in tables with nothing written, so only such
  // tables take them; others are read into here.
  if (ahead && store.ParcelLine.empty() && store.ParcelRing.empty() && store.ParcelY.empty() && store.ParcelX.empty()) {
    store.ParcelLine.Adopt(ahead->lines);
    store.ParcelRing.Adopt(ahead->rings);
    store.ParcelY.Adopt(ahead->ys);
    store.ParcelX.Adopt(ahead->xs);
    if (ahead->fault) std::rethrow_exception(ahead->fault);
    next = ahead->next;
  } else {
    FillParcelTables(path, store.ParcelLine, store.ParcelRing, store.ParcelY, store.ParcelX, next);
  }
  store.ParcelCount = Add16(To16(next), -1);
  for (int i = 1; i <= store.ParcelCount; ++i) {
    store.ParcelIdx.at(i) = static_cast<std::int16_t>(i);
    store.FileLines.push_back(store.ParcelLine.get(i));
  }
  FlagMultiple(store);
  session.Changed(Change::Parcels);
}

std::vector<std::string> CountedAttributeLines(const std::string& bytes) {
  std::vector<std::string> counted;
  LineReader in = LineReader::FromText(bytes);
  if (!in.Eof()) in.ReadLine();  // the title, which every write replaces
  std::string line;
  while (!in.Eof()) {
    in.ReadLine(line);
    if (StartsWith(line, "Sec_")) counted.push_back(line);
  }
  return counted;
}

void RewriteParcelFile(Session& session, const std::function<void(const std::string&, std::vector<std::string>&)>& each) {
  const std::string iid = session.DatasetPath(".IID");
  const std::string backup = session.DatasetPath(".iib");
  std::string current;
  if (!ReadFileBytes(iid, current)) throw RuntimeFault(FaultKind::FileAccess, "Unable to read " + iid);
  // The writers put parcel k's line where the file has its k-th counted attribute line: only
  // while those are the lines of parcels 1, 2, ... in order does each line land on its parcel.
  if (CountedAttributeLines(current) != session.parcels.FileLines) {
    throw RuntimeFault(FaultKind::FileAccess, kMsgParcelFileOutOfStepBefore + iid + kMsgParcelFileOutOfStepAfter);
  }
  CopyFileReplacing(iid, backup);
  LineReader in(backup);
  std::vector<std::string> out;
  // The title line always gives way to the marker.
  in.ReadLine();
  out.emplace_back(kEditedMarker);
  std::string line;
  while (!in.Eof()) {
    in.ReadLine(line);
    each(line, out);
  }
  WriteFileBytes(iid, JoinCrLf(out));
}

void WriteAttributeLines(Session& session, const ParcelWriteRule& rule) {
  const ParcelStore& store = session.parcels;
  const bool ok = rule.kind == ParcelWriteRule::Kind::Ok;
  int k = 0;
  RewriteParcelFile(session, [&](const std::string& line, std::vector<std::string>& out) {
    if (!StartsWith(line, "Sec_")) {
      out.push_back(line);
      return;
    }
    ++k;
    const std::string& note = store.ParcelEdit.get(k);
    if (ok && rule.obsoleteLines && StartsWith(note, "(OBSOLETE)")) {
      out.insert(out.end(), rule.obsoleteLines->begin(), rule.obsoleteLines->end());
      return;
    }
    if (ok && StartsWith(note, "DBLATT")) {
      out.push_back(store.ParcelLine.get(static_cast<int>(Val(Trim(Mid(note, 7))))));
    } else if (!note.empty()) {
      out.push_back("Tessel Edited: " + note);
    }
    if (!ok || !store.ParcelLine.get(k).empty()) out.push_back(store.ParcelLine.get(k));
  });
  // A save leaves parcel k's line in the file, empty or not; the dialogs' writes are followed by
  // a new reading of the file.
  if (!ok) {
    ParcelStore& written = session.parcels;
    for (std::size_t j = 0; j < written.FileLines.size(); ++j) {
      written.FileLines[j] = written.ParcelLine.get(static_cast<int>(j) + 1);
    }
  }
}

bool WriteParcels(Session& session) {
  session.user.SetPointer(Pointer::Hourglass);
  bool saved = false;
  try {
    WriteAttributeLines(session, {ParcelWriteRule::Kind::Save, nullptr});
    session.parcels.ParcelDirty = 0;
    saved = true;
    const std::string iid = PathBytes(NativePath(ResolveCase(session.DatasetPath(".IID"))).filename());
    session.user.Note("Parcel attributes saved to " + iid + " (the file as it was is kept in " + session.JobName +
                      ".iib)");
  } catch (const RuntimeFault& fault) {
    // The edits stay in memory, still unsaved, and .IID stays as it was.
    TellFileFault(session.user, fault);
  }
  session.user.SetPointer(Pointer::Arrow);
  return saved;
}

bool WriteEditedParcels(Session& session, const std::vector<std::string>* obsoleteLines) {
  try {
    WriteAttributeLines(session, {ParcelWriteRule::Kind::Ok, obsoleteLines});
    return true;
  } catch (const RuntimeFault& fault) {
    TellFileFault(session.user, fault);
    return false;
  }
}

void RereadParcelsAfterWrite(Session& session) {
  session.parcels.Clear();
  session.SelectionCount = 0;
  session.user.Status(2, "");
  session.selection.ClearParcelList();
  session.Changed(Change::Selection);
  session.user.SetEnabled("frmTesting/cmdRemoveItem", false);
  StepOver([&] { ReadParcels(session); });
  session.ToolMode = ToolMode::PickParcels;
  session.parcels.ParcelDirty = 0;
  if (session.display) session.display->RefreshView();
}

void MoveParcelLocation(Session& session, double x, double y) {
  const auto picked = SelectedParcelIndexes(session);
  if (!picked) return;
  session.user.SetPointer(Pointer::Hourglass);
  ParcelStore& store = session.parcels;
  Selection& sel = session.selection;
  // The locations as they were, put back when the file cannot be rewritten.
  std::vector<std::tuple<int, double, double>> before;
  bool rewritten = false;
  try {
    BoundedArray<std::int16_t> moved(ParcelStore::kBound);
    for (const int p : *picked) {
      moved.at(p) = -1;
      before.emplace_back(p, store.ParcelX.get(p), store.ParcelY.get(p));
      store.ParcelY.at(p) = RoundDecimals(y, 3);
      store.ParcelX.at(p) = RoundDecimals(x, 3);
    }
    int k = 0;
    // The blanks before each number keep it in its columns for a text of 10 or 11 characters;
    // any other length takes the blanks of the line before.
    int w = 0, v = 0;
    const auto blanks = [](const std::string& number, int& count) {
      if (number.size() == 10) count = 6;
      if (number.size() == 11) count = 5;
      return std::string(static_cast<std::size_t>(count), ' ');
    };
    RewriteParcelFile(session, [&](const std::string& line, std::vector<std::string>& out) {
      if (StartsWith(line, "Sec_")) ++k;
      if (!StartsWith(line, " PARCEL N,E") || moved.get(k) == 0) {
        out.push_back(line);
        return;
      }
      const std::string north = Trim(FormatPicture(store.ParcelY.get(k), 3));
      const std::string east = Trim(FormatPicture(store.ParcelX.get(k), 3));
      const std::string wBlanks = blanks(north, w);
      const std::string vBlanks = blanks(east, v);
      out.push_back(" PARCEL N,E" + wBlanks + north + vBlanks + east + "  (Tessel moved)");
    });
    rewritten = true;
    session.ToolMode = ToolMode::PickParcels;
    session.SelectionCount = 0;
    sel.ClearParcelList();
    session.Changed(Change::Selection);
    ReadParcels(session);
    if (session.display) session.display->RefreshView();
    session.user.SetEnabled("frmTesting/cmdRemoveItem", false);
    session.user.Status(2, "");
    session.user.Status(1, "Select a Parcel");
  } catch (const RuntimeFault& fault) {
    if (!rewritten) {
      // Nothing moved in the file, so nothing moves in the store.
      for (auto it = before.rbegin(); it != before.rend(); ++it) {
        const auto& [p, x0, y0] = *it;
        store.ParcelX.at(p) = x0;
        store.ParcelY.at(p) = y0;
      }
    }
    if (fault.kind() == FaultKind::FileAccess) TellFileFault(session.user, fault);
  }
  session.user.SetPointer(Pointer::Arrow);
}

}  // namespace tessel
