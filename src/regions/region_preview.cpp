#include "regions/region_preview.h"

#include <filesystem>

#include "datasets/coordinate_files.h"
#include "model/fault.h"
#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"
#include "model/text_file.h"
#include "regions/how_file.h"

namespace tessel {

namespace {

constexpr double kPreviewMinSentinel = 5.0e7;

// The .LSA lines up to and including the one whose last character is "1".
template <typename F>
void ReadLsaBlock(LineReader& lsa, F&& each) {
  std::string line;
  for (;;) {
    lsa.ReadLine(line);
    each(line);
    if (Right(line, 1) == "1") break;
  }
}

// The identifier with its project's tag, into a reused string.
void Tagged(std::string& out, std::string_view id, const std::string& tag) {
  out.assign(id);
  out += tag;
}

void AppendPoint(Session& session, const std::string& id, double x, double y) {
  session.points.Append(id, x, y);
  session.extents.Include(x, y);
}

void ReadPreviewCor(Session& session, const std::string& path, const std::string& tag) {
  session.user.Status(1, "Reading Coordinates");
  LineReader cor(path);
  std::string line, id;
  while (!cor.Eof()) {
    cor.ReadLine(line);
    // The number reader passes over leading blanks itself, which is the fields' left trim.
    Tagged(id, RTrimView(MidView(line, 2, 18)), tag);
    AppendPoint(session, id, Val(MidView(line, 20, 12)), Val(MidView(line, 33, 13)));
  }
}

void ReadPreviewLsaPoints(Session& session, const std::string& path, const std::string& tag) {
  session.user.Status(1, "Reading LSA Coordinates");
  LineReader lsa(path);
  PassLsaSections(lsa, 4);
  std::string id;
  ReadLsaBlock(lsa, [&](const std::string& line) {
    Tagged(id, RTrimView(MidView(line, 2, 18)), tag);
    AppendPoint(session, id, Val(MidView(line, 29, 11)), Val(MidView(line, 53, 11)));
  });
}

void ReadPreviewControl(Session& session, const std::string& path, const std::string& tag) {
  session.user.Status(1, "Reading Control Coordinates");
  ControlStore& control = session.control;
  if (control.ControlCount < 1) control.ControlCount = 1;
  const std::int16_t first = control.ControlCount;
  LineReader lsa(path);
  ReadLsaBlock(lsa, [&](const std::string& line) {
    ControlStation& station = control.Control.at(control.ControlCount);
    station.id = Trim(Mid(line, 2, 18)) + tag;
    station.x = Val(MidView(line, 20, 15));
    station.y = Val(MidView(line, 37, 15));
    control.ControlCount = Add16(control.ControlCount, 1);
  });
  for (int st = first; st < control.ControlCount; ++st) {
    const ControlStation& station = control.Control.get(st);
    if (session.points.Find(station.id) == 0) session.points.Append(station.id, station.x, station.y);
  }
}

void ReadPreviewLines(Session& session, const std::string& path, const std::string& tag) {
  session.user.Status(1, "Reading LSA Lines");
  LsaLineStore& store = session.lsa;
  if (store.LsaLineCount < 1) store.LsaLineCount = 1;
  LineReader lsa(path);
  ReadLsaBlock(lsa, [](const std::string&) {});
  std::string id;
  ReadLsaBlock(lsa, [&](const std::string& line) {
    LineEnds& ends = store.LsaLineEnds.at(store.LsaLineCount);
    Tagged(id, TrimView(MidView(line, 2, 16)), tag);
    ends.from = static_cast<std::int16_t>(session.points.Find(id));
    Tagged(id, TrimView(MidView(line, 28, 16)), tag);
    ends.to = static_cast<std::int16_t>(session.points.Find(id));
    store.LsaLineCount = Add16(store.LsaLineCount, 1);
  });
}

bool FolderExists(const std::string& path) {
  std::error_code error;
  const std::filesystem::path parent = NativePath(path).parent_path();
  return parent.empty() || std::filesystem::is_directory(parent, error);
}

}  // namespace

std::string ProjectPath(const Session& session, const std::string& row) {
  return RowHasFolder(row) ? row : RegionFolder(session) + row;
}

std::string ProjectTag(const std::string& row) {
  std::string tag(1, 'T');
  tag += RowProjectName(row);
  return tag;
}

void LoadPreviewProject(Session& session, const std::string& path) {
  const std::string tag = ProjectTag(path);
  const std::string cor = ResolveCase(path + ".COR");
  const std::string lsa = ResolveCase(path + ".LSA");
  const bool hasCor = FileExistsAnyCase(cor);
  const bool hasLsa = FileExistsAnyCase(lsa);
  try {
    if (hasLsa && !hasCor) {
      session.user.Message("Viewing LSA coordinates", Icon::Information);
      StepOver([&] { ReadPreviewLsaPoints(session, lsa, tag); });
      ReadPreviewLines(session, lsa, tag);
      return;
    }
    ReadPreviewCor(session, cor, tag);
    if (hasLsa) {
      StepOver([&] { ReadPreviewControl(session, lsa, tag); });
      ReadPreviewLines(session, lsa, tag);
    }
  } catch (const RuntimeFault&) {
    // The project's load ends quietly with the stores as they stand.
  }
}

double ReadTolerance(const std::string& text) {
  try {
    return Val(text);
  } catch (const RuntimeFault&) {
    return 0.0;
  }
}

int HeldLineCount(const Session& session) { return session.lsa.LsaLineCount > 0 ? session.lsa.LsaLineCount - 1 : 0; }

std::string TotalsText(const Session& session) {
  return "Total Points = " + std::to_string(session.points.PointCount()) +
         ". Total Lines = " + std::to_string(HeldLineCount(session)) + ".";
}

void ShowLsaLinesOnly(Session& session) {
  session.checks.mnuViewLinesRaw = false;
  session.checks.mnuOptionsLinesLXN = false;
  session.checks.mnuOptionsLinesLSA = true;
  for (const char* name : {"mnuViewLinesRaw", "Raw", "mnuOptionsLinesLXN", "Lxn"}) session.user.SetChecked(name, false);
  for (const char* name : {"mnuOptionsLinesLSA", "Lsa"}) session.user.SetChecked(name, true);
}

void PreviewRegion(Session& session, const std::vector<std::string>& rows, const std::string& toleranceText,
                   const DialogStatus& dialogStatus) {
  session.user.SetTitle("Tessel - Previewing Region");
  ShowLsaLinesOnly(session);
  for (const char* form : {"frmADD", "frmIRR", "frmTWP"}) session.user.UnloadForm(form);

  session.region.match.Clear();
  session.points.Clear();
  session.control.Clear();
  session.lsa.Clear();
  session.extents.Reset(kPreviewMinSentinel);

  session.region.MatchTolerance = ReadTolerance(toleranceText);

  dialogStatus(1, "... ");
  for (const std::string& row : rows) {
    if (IsRegionKeyword(row)) continue;
    const std::string path = ProjectPath(session, row);
    dialogStatus(1, Right(path, 8));
    if (!FolderExists(path)) {
      // A row whose folder is gone is passed over, and said so.
      session.user.Status(2, "Project folder not found: " + path);
      continue;
    }
    LoadPreviewProject(session, path);
  }

  if (session.display) StepOver([&] { session.display->RefreshViewAfterExtents(); });
  session.user.Status(1, "Ready");
  dialogStatus(1, TotalsText(session));
}

}  // namespace tessel
