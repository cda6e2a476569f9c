#include "job/command_table.h"

#include <exception>
#include <initializer_list>
#include <string_view>

#include "datasets/coordinate_files.h"
#include "datasets/identity.h"
#include "job/load_sequence.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"
#include "parcels/centroids.h"
#include "parcels/parcel_file.h"
#include "parcels/raw_polygons.h"
#include "viewer/view_transform.h"

namespace tessel {

namespace {

using K = CommandKind;

constexpr const char* kRecpadEntry = "mnuEditRecpad";
constexpr const char* kSplitplanEntries[] = {"mnuEditSplitplan", "mnuCommandCadastralSplitplan"};

// The Yes/No question of a row that would overwrite an earlier run's results; true to go on.
bool Confirm(Session& session, const char* question) {
  return session.user.Message(question, Icon::None, Buttons::YesNo) == Answer::Yes;
}

// A side file the tool expects beside the job: copied in before the run.
void CopySideFile(Session& session, const char* name) {
  StepOver([&] { CopyFileReplacing(session.ToolFile(name), session.JobFile(name)); });
}

// ... and removed after it, unless the job lives in the program's folder, where the master stands.
void RemoveSideFile(Session& session, const char* name) {
  if (session.JobInToolFolder()) return;
  StepOver([&] { DeleteAnyCase(session.JobFile(name)); });
}

// A blocking run of the tool with the hourglass; `after` rereads what the tool changed.
template <typename F>
void BlockingRun(Session& session, const CommandRow& row, F&& after) {
  session.user.SetPointer(Pointer::Hourglass);
  StepOver([&] { session.processes.Run(ToolLaunch(session, row.tool), session.CurrentFolder); });
  after();
  session.user.SetPointer(Pointer::Default);
}

// cogopad and shift27: side files in, the tool in a normal window awaited, side files out.
void RunWithSideFiles(Session& session, const CommandRow& row, std::initializer_list<const char*> sideFiles) {
  for (const char* name : sideFiles) CopySideFile(session, name);
  session.user.SetPointer(Pointer::Hourglass);
  StepOver([&] { session.processes.RunCode(ToolLaunch(session, row.tool), session.CurrentFolder, ShowMode::Normal); });
  session.user.SetPointer(Pointer::Default);
  for (const char* name : sideFiles) RemoveSideFile(session, name);
}

void EditObsFile(Session& session) {
  FileRequest request;
  request.filter = kObsFilter;
  request.initialFolder = session.CurrentFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return;
  const Launch editor{PlatformProgram(session.config.EditorPath), {choice->fileName}};
  StepOver([&] { session.processes.Spawn(editor, session.CurrentFolder, ShowMode::Normal); });
}

// .COR from the points of .LSA. An .LSA whose points cannot be read through leaves .COR as it
// was, rather than replace it by whatever the store held before.
void Lsa2Cor(Session& session) {
  bool read = false;
  StepOver([&] { read = ReadLsaPoints(session); });
  if (!read) {
    session.user.Message(LsaPointsUnreadText(session.DatasetPath(".LSA"), session.DatasetPath(".COR")),
                         Icon::Exclamation);
    return;
  }
  try {
    WriteCorFromStore(session);
  } catch (const std::exception& fault) {
    TellFileFault(session.user, fault);
  }
}

// For the stand-ins of Windows programs, which a Windows build does without.
[[maybe_unused]] std::string LowerAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

}  // namespace

const std::vector<CommandRow>& CommandTable() {
  static const std::vector<CommandRow> rows = {
      // File
      {"mnuFile", "mnuFileConvert", "Convert FF to OBS", "freeobs", K::Plain},
      {"mnuFile", "mnuFileProperties", "&Properties (JOBPROPS)", "jobprops", K::Plain},
      {"mnuFile", "mnuFileNetsort", "Rebuild LSA & SD (NETSORT)", "netsort", K::Plain},
      // File, Import
      {"mnuFileImport", "mnuFileImportOstrel2tsl", "&Ostrel Records System (OSTREL2TSL)", "ostrel2tsl", K::Plain},
      {"mnuFileImport", "mnuFileImportUniqpts", "&MERIDA dataset (UNIQPTS)", "uniqpts", K::Plain},
      {"mnuFileImport", "mnuFileImportNetform", "FIELDPAD", "netform", K::Plain},
      {"mnuFileImport", "mnuFileImportCgostrel", "CG", "cgostrel", K::Plain},
      {"mnuFileImport", "mnuFileImportTotalin", "Lietz", "totalin", K::Plain},
      {"mnuFileImport", "mnuFileImportTdsin", "TDS", "tdsin", K::Plain},
      // File, Export
      {"mnuFileExport", "mnuFileExportCadout", "Drawing Interchange Format (CADOUT)", "cadout", K::Plain},
      {"mnuFileExport", "mnuFileExportOstrel2smi", "SMI", "ostrel2smi", K::Plain},
      {"mnuFileExport", "mnuFileExportOstrel2tds", "TDS", "ostrel2tds", K::Plain},
      {"mnuFileExport", "mnuFileExportOstrelcg", "CG", "ostrelcg", K::Plain},
      // Edit
      {"mnuEdit", kRecpadEntry, "Input / Edit &Record data (RECPAD)", "recpad", K::RecordEditor},
      {"mnuEdit", "mnuEditRecpad2", "Input / Edit Record data", "recpad2", K::Plain},
      {"mnuEdit", kSplitplanEntries[0], "Input / Edit &Subdivision data (SPLITPLAN)", "splitplan",
       K::SubdivisionEditor},
      {"mnuEdit", "mnuEditErrpad", "Input / Edit Individual Error Est. (ERRPAD)", "errpad", K::Plain},
      {"mnuEdit", "mnuEditIdswap", "&Change Point Identifiers (IDSWAP)", "idswap", K::Plain},
      {"mnuEdit", "mnuEditMeaspad", "Input / Edit measurements (MEASPAD)", "measpad", K::Plain},
      {"mnuEdit", "mnuEditFieldpad", "Cadastral Electronic Field Book (FIELDPAD)", "fieldpad", K::Plain},
      {"mnuEdit", "mnuEditObs", "Edit .OBS file", "", K::EditObs},
      // Command
      {"mnuCommand", "mnuCommandSeedxy", "&Generate Approx. Coords (SEEDXY)", "seedxy", K::Plain},
      {"mnuCommand", "mnuCommandFitmain", "&Least Squares Analysis (FITMAIN)", "fitmain", K::LeastSquares},
      {"mnuCommand", "mnuCommandFit386", "&Least Squares Analysis (FIT386)", "", K::NoAction},
      {"mnuCommand", "mnuCommandCogopad", "&Coordinate Geometry (COGOPAD)", "cogopad", K::Cogopad},
      {"mnuCommand", "mnuCommandPtshift", "Corner Move (PTSHIFT)", "ptshift", K::Plain},
      {"mnuCommand", "mnuCommandGridhop", "Change State Plane Zone (GRIDHOP)", "gridhop", K::Plain},
      {"mnuCommand", "mnuCommandShift27", "Datum Transformation NAD27<>NAD83 (SHIFT27)", "shift27", K::Shift27},
      {"mnuCommand", "mnuCommandShifthp", "Datum Transformation NAD83<>HPGN (SHIFTHP)", "shifthp", K::Plain},
      {"mnuCommand", "mnuCommandTolspan", "Positional Tolerance (TOLSPAN)", "tolspan", K::Plain},
      // Command, Cadastral Tools
      {"mnuCommandCadastral", "mnuCommandCadastralOldfit", "Misc. Adjustment Techniques (OLDFIT)", "oldfit", K::Plain},
      {"mnuCommandCadastral", "mnuCommandCadastralSplitrun", "Proportioning and Subdivision (SPLITRUN)", "splitrun",
       K::Plain},
      {"mnuCommandCadastral", kSplitplanEntries[1], "Auto Proportioning & Subdivision (SPLITPLAN)", "splitplan",
       K::SubdivisionEditor},
      {"mnuCommandCadastral", "mnuCommandCadastralTractview", "Section Subdivision Status (TRACTVIEW)", "tractview",
       K::Plain},
      {"mnuCommandCadastral", "mnuCommandCadastralLinesplit", "Proportioning  (LINESPLIT)", "linesplit", K::Plain},
      {"mnuCommandCadastral", "mnuCommandCadastralIdalias", "Assign pointid Alias (IDALIAS)", "idalias", K::Plain},
      // Command, Utilities
      {"mnuCommandUtilities", "mnuCommandUtilitiesMercgrid", "Create Univ. Transverse Mercator Coords (MERCGRID)",
       "mercgrid", K::Plain},
      {"mnuCommandUtilities", "mnuCommandUtilitiesFlatten", "Convert LXN to LX (FLATTEN)", "flatten", K::Plain},
      {"mnuCommandUtilities", "mnuCommandUtilitiesUnflatten", "Convert LX to LXN (UNFLATTEN)", "unflatten", K::Plain},
      {"mnuCommandUtilities", "mnuCommandUtilitiesArccalc", "Horizontal Curves (ARCCALC)", "arccalc", K::Plain},
      {"mnuCommandUtilities", "mnuCommandUtilitiesFilemerge", "Combine multiple files (FILEMERGE)", "filemerge",
       K::Plain},
      {"mnuCommandUtilities", "mnuCommandUtilitiesLsa2cor", "Lsa2Cor", "", K::Lsa2Cor},
      {"mnuCommandUtilities", "mnuCommandUtilitiesShell", "Shell to DOS", "", K::Shell},
      // Command, Data Quality Tools
      {"mnuCommandQuality", "mnuCommandQualityRawring", "Raw data Closures (RAWRING)", "rawring", K::Plain},
      {"mnuCommandQuality", "mnuCommandQualityFitfree", "Minimal Constraint Least Squares (FITFREE)", "fitfree",
       K::Plain},
      {"mnuCommandQuality", "mnuCommandQualityRingclose", "Run &Closure Checks (RINGCLOSE)", "ringclose", K::Plain},
      {"mnuCommandQuality", "mnuCommandQualityGaffe", "Blunder Detection", "gaffe", K::Plain},
      {"mnuCommandQuality", "mnuCommandQualityCoordiff", "Compare 2 coordinate files (COORDIFF)", "coordiff",
       K::Plain},
      {"mnuCommandQuality", "mnuCommandQualityCircuit", "Loop Closures (CIRCUIT)", "circuit", K::Plain},
      // Attributes
      {"mnuAttributes", "mnuAttributesDescin", "Convert MERIDA .an to .iid (DESCIN)", "descin", K::Plain},
      {"mnuAttributes", "mnuAttributesDescout", "Convert .AN to .GLD format (DESCOUT)", "descout", K::Plain},
      {"mnuAttributes", "mnuAttributesDescget", "Import LLD file (DESCGET)", "descget", K::RunOnly},
      {"mnuAttributes", "mnuAttributesDescget2", "Import Alternate LLD file (DESCGET2)", "descget2", K::RunOnly},
      {"mnuAttributes", "mnuAttributesDesclink", "Link Parcels with Descriptions (LLD)", "desclink",
       K::LinkDescriptions},
      {"mnuAttributes", "mnuAttributesRaw", "Compute Raw Polygons (RINGFORM)", "ringform", K::ComputePolygons},
      {"mnuAttributes", "mnuAttributesCRPO", "Compute Raw Polygon Centroids", "", K::Centroids},
      {"mnuAttributes", "mnuAttributesRingcheck", "Check Polygons (RINGCHECK)", "ringcheck", K::CheckPolygons},
      {"mnuAttributes", "mnuAttributesCadout", "Create DXF for glinking", "cadout", K::Plain},
      // Regions
      {"mnuRegions", "mnuRegionsTwpjoin", "Join Township Files (TWPJOIN)", "twpjoin", K::Plain},
      {"mnuRegions", "mnuRegionsTwprel", "Compute Indiv. Twp Reliabilities (TWPREL)", "twprel", K::Plain},
      {"mnuRegions", "mnuRegionsTwpmatch", "QC Region Match (TWPMATCH)", "twpmatch", K::Plain},
      {"mnuRegions", "mnuRegionsRingcheck", "Check Polygons (RINGCHECK)", "ringcheck", K::Plain},
      {"mnuRegions", "mnuRegionsTwpsplit", "Parse Individual Townships (TWPSPLIT)", "twpsplit", K::Plain},
  };
  return rows;
}

const std::vector<SubmenuRow>& SubmenuTable() {
  static const std::vector<SubmenuRow> rows = {
      {"mnuFile", "mnuFileImport", "&Import"},
      {"mnuFile", "mnuFileExport", "&Export"},
      {"mnuCommand", "mnuCommandCadastral", "Cadastral Tools"},
      {"mnuCommand", "mnuCommandUtilities", "Utilities"},
      {"mnuCommand", "mnuCommandQuality", "Data Quality Tools"},
  };
  return rows;
}

const CommandRow* FindCommand(const std::string& name) {
  for (const CommandRow& row : CommandTable()) {
    if (row.name == name) return &row;
  }
  return nullptr;
}

std::string ToolCommandLine(const Session& session, const std::string& tool) {
  const std::string bare = session.ToolFolder + PathSeparator() + tool;
  const std::string exe = bare + ".exe";
  if (FileExistsAnyCase(exe)) return ResolveCase(exe);
  if (FileExistsAnyCase(bare)) return ResolveCase(bare);
  return exe;
}

Launch ToolLaunch(const Session& session, const std::string& tool) { return {ToolCommandLine(session, tool), {}}; }

std::vector<std::string> LockedEntries(const CommandRow& row) {
  switch (row.kind) {
    case K::RecordEditor:
      return {row.name};
    case K::SubdivisionEditor:
      return {kSplitplanEntries[0], kSplitplanEntries[1]};
    default:
      return {};
  }
}

void RunCommand(Session& session, const CommandRow& row) {
  const std::string& folder = session.CurrentFolder;
  switch (row.kind) {
    case K::Plain:
      StepOver([&] { session.processes.Spawn(ToolLaunch(session, row.tool), folder, ShowMode::Normal); });
      break;
    case K::LeastSquares:
      // The reload redraws in the present view, so the same window shows the new coordinates.
      BlockingRun(session, row, [&] {
        StepOver([&] { ReloadJob(session); });
        StepOver([&] { Redraw(session); });
      });
      break;
    case K::LinkDescriptions:
      if (session.DatasetExists(".iid") && !Confirm(session, kAskRerunLld)) return;
      BlockingRun(session, row, [&] {
        StepOver([&] { ReadParcels(session); });
        StepOver([&] { Redraw(session); });
      });
      break;
    case K::ComputePolygons:
      if (session.DatasetExists(".RPO") && !Confirm(session, kAskRecomputePolygons)) return;
      BlockingRun(session, row, [&] {
        StepOver([&] { ComputeCentroids(session); });
        StepOver([&] { ReadRawPolygons(session); });
        session.user.Status(1, session.JobName);
      });
      break;
    case K::Centroids:
      StepOver([&] { ComputeCentroids(session); });
      break;
    case K::CheckPolygons:
      BlockingRun(session, row, [&] {
        StepOver([&] { ReadParcels(session); });
        StepOver([&] { Redraw(session); });
      });
      break;
    case K::RunOnly:
      BlockingRun(session, row, [] {});
      break;
    case K::Cogopad:
      RunWithSideFiles(session, row, {"cogopad.hlp"});
      break;
    case K::Shift27:
      RunWithSideFiles(session, row, {"conus.las", "conus.los"});
      break;
    case K::RecordEditor:
      if (!JobGuard(session, kMsgOpenOrCreateJob)) return;
      StepOver([&] { session.processes.Watch(ToolLaunch(session, row.tool), folder, LockedEntries(row)); });
      break;
    case K::SubdivisionEditor:
      session.user.UnloadForm("frmADD");
      StepOver([&] { session.processes.Watch(ToolLaunch(session, row.tool), folder, LockedEntries(row)); });
      break;
    case K::EditObs:
      EditObsFile(session);
      break;
    case K::Lsa2Cor:
      Lsa2Cor(session);
      break;
    case K::Shell:
      session.CurrentFolder = session.JobFolder;
      StepOver([&] {
        session.processes.Spawn({PlatformProgram("Command.com"), {}}, session.CurrentFolder, ShowMode::Normal);
      });
      break;
    case K::NoAction:
      break;
  }
}

std::string LsaPointsUnreadText(const std::string& lsaPath, const std::string& corPath) {
  return "The points of " + lsaPath + " could not be read to their end: " + corPath + " was not written.";
}

std::string PlatformProgram(const std::string& windowsName) {
#ifdef _WIN32
  return windowsName;
#else
  struct Stand {
    const char* windows;
    const char* here;
  };
  static constexpr Stand kStandIns[] = {
      {"notepad.exe", "xdg-open"},
      {"command.com", "x-terminal-emulator"},
      {"msinfo32.exe", "hardinfo"},
  };
  const std::string wanted = LowerAscii(windowsName);
  for (const Stand& s : kStandIns) {
    if (wanted == s.windows) return s.here;
  }
  return windowsName;
#endif
}

}  // namespace tessel
