// tessel-batch: the headless companion of Tessel.
//
//   tessel-batch dump PATH.def [--tool-folder DIR] [--pretty]
//   tessel-batch irr PATH.def
//   tessel-batch render PATH.def OUT.png|OUT.pdf [--size WxH] [--layers a,b,...] [--background 1|2]
//                       [--all-labels] [--tool-folder DIR]
//   tessel-batch apd-import PATH.def [--tool-folder DIR]
//   tessel-batch region-test REGION.def [--tolerance T] [--pretty]
//   tessel-batch cama-import PATH.def DATABASE [--code CODE] [--append]
//   tessel-batch cama-link PATH.def [--tool-folder DIR]
//   tessel-batch cama-unused PATH.def
//   tessel-batch export PATH.def OUT.gpkg|OUT.geojson|OUT.shp|OUT.dxf|PG:... [--crs EPSG:NNNN] [--layers a,b,...]
//                       [--tool-folder DIR]
//   tessel-batch export-region REGION.def PG:...|OUT.gpkg [--crs EPSG:NNNN] [--layers a,b,...] [--tool-folder DIR]
//   tessel-batch adjust PATH.def [--control-sigma S] [--json]
//
// dump and render open the job as File Open does (identity, TEMP.JOB, support files, every
// reader in order, the first drawing) and close it again as Close does. dump prints the stores as
// one JSON object; render writes the picture the desktop canvas would show at that size. irr
// prints the irregular sections of the job's .irr as one JSON object, without opening the job.
// apd-import runs the APD wizard's Finish on the project: it prints the file list, the progress
// texts and the closing message, and ends with 0 when the import ran to its end.
// cama-import appends the township's rows of an assessor's database to the job's .cama,
// cama-link runs the link chain on the opened job, and cama-unused reports the CAMA records no
// link carries after loading .mtc; their messages go to standard error.
// export opens the job as dump does and writes its layers to a GIS or CAD file through GDAL: the
// files written and the feature counts to standard output, warnings to standard error. To a
// PostGIS database ("PG:...") it replaces the job's township there instead; export-region does so
// for every township of a region listing, into a database or one GeoPackage.
// adjust runs the built-in least squares adjustment of the record data on the job's files, without
// opening the job: it writes the report <job>.tla and prints it, or with --json one JSON object.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "archives/apd_import.h"
#include "batch/adjust_command.h"
#include "batch/batch_session.h"
#include "batch/cama_commands.h"
#include "batch/db_commands.h"
#include "batch/irr_dump.h"
#include "batch/job_dump.h"
#include "batch/region_test.h"
#include "datasets/tool_folder.h"
#include "db_export/db_target.h"
#include "gis_export/gis_export.h"
#include "model/paths.h"
#include "model/platform.h"
#ifdef TESSEL_WITH_RENDER
#include "batch/job_render.h"
#endif

namespace fs = std::filesystem;

namespace {

constexpr const char* kUsage =
    "usage: tessel-batch dump PATH.def [--pretty] | irr PATH.def | render PATH.def OUT.png|OUT.pdf "
    "[--size WxH] [--layers a,b,...] [--background 1|2] [--all-labels] | apd-import PATH.def | region-test REGION.def "
    "[--tolerance T] [--pretty] | cama-import PATH.def DATABASE [--code CODE] [--append] | cama-link PATH.def | "
    "cama-unused PATH.def | export PATH.def OUT.gpkg|.geojson|.shp|.dxf|PG:... [--crs EPSG:NNNN] [--layers a,b,...] | "
    "export-region REGION.def PG:...|OUT.gpkg [--crs EPSG:NNNN] [--layers a,b,...] | "
    "adjust PATH.def [--control-sigma S] [--json]; "
    "all but irr take "
    "[--tool-folder DIR]";

int Fail(const std::string& message) {
  std::cerr << "tessel-batch: " << message << "\n";
  return 2;
}

struct Arguments {
  std::string command;
  std::vector<std::string> positional;
  std::string toolFolder;
  bool pretty = false;
  std::optional<std::string> size, layers, background, tolerance, crs;
  std::optional<std::string> code, controlSigma;
  bool append = false;
  bool json = false;
  bool allLabels = false;
};

std::optional<Arguments> Parse(const std::vector<std::string>& args) {
  if (args.empty()) return std::nullopt;
  Arguments a;
  a.command = args[0];
  for (std::size_t i = 1; i < args.size(); ++i) {
    const std::string& arg = args[i];
    const bool hasValue = i + 1 < args.size();
    if (arg == "--tool-folder" && hasValue) a.toolFolder = args[++i];
    else if (arg == "--pretty") a.pretty = true;
    else if (arg == "--size" && hasValue) a.size = args[++i];
    else if (arg == "--layers" && hasValue) a.layers = args[++i];
    else if (arg == "--background" && hasValue) a.background = args[++i];
    else if (arg == "--tolerance" && hasValue) a.tolerance = args[++i];
    else if (arg == "--code" && hasValue) a.code = args[++i];
    else if (arg == "--append") a.append = true;
    else if (arg == "--all-labels") a.allLabels = true;
    else if (arg == "--crs" && hasValue) a.crs = args[++i];
    else if (arg == "--control-sigma" && hasValue) a.controlSigma = args[++i];
    else if (arg == "--json") a.json = true;
    else if (arg.starts_with("--")) return std::nullopt;
    else a.positional.push_back(arg);
  }
  while (a.toolFolder.size() > 1 && (a.toolFolder.back() == '/' || a.toolFolder.back() == tessel::PathSeparator())) {
    a.toolFolder.pop_back();
  }
  return a;
}

int Dump(const Arguments& a) {
  if (a.positional.size() != 1 || a.size || a.layers || a.background) return Fail(kUsage);
  tessel::NullCanvas canvas;
  tessel::BatchSession batch(canvas, a.toolFolder);
  batch.Start();
  batch.Open(a.positional[0]);
  const nlohmann::json stores = tessel::DumpStores(batch.session(), batch.Messages(), batch.Status());
  batch.Close();
  // File contents are single-byte text, not UTF-8: bytes that do not form UTF-8 are replaced.
  std::cout << stores.dump(a.pretty ? 1 : -1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
  return 0;
}

int ApdImport(const Arguments& a) {
  if (a.positional.size() != 1 || a.pretty || a.size || a.layers || a.background) return Fail(kUsage);
  tessel::RecordingUserPort user;
  tessel::NullCanvas canvas;
  tessel::RecordingProcessPort processes;
  tessel::Session session(user, canvas, processes);
  session.ToolFolder = a.toolFolder;
  const fs::path def = fs::absolute(tessel::NativePath(a.positional[0]));
  const tessel::ApdFiles files = tessel::ApdUseProject(session, tessel::PathBytes(def), tessel::PathBytes(def.filename()));
  for (const auto& line : files.lines) std::cout << line << "\n";
  if (!files.finishEnabled) return Fail("the project lacks a file the import needs");
  std::size_t printed = 0;
  const bool done = tessel::ApdFinish(session, [&](const std::string& text) {
    // Each step adds a line to the progress text; print the new ones.
    std::size_t start = 0;
    for (std::size_t line = 0; start <= text.size(); ++line) {
      const std::size_t end = std::min(text.find('\n', start), text.size());
      if (line >= printed) {
        std::cout << text.substr(start, end - start) << "\n";
        printed = line + 1;
      }
      start = end + 1;
    }
  });
  for (const auto& message : user.messages) {
    (message.icon == tessel::Icon::Stop ? std::cerr : std::cout) << message.text << "\n";
  }
  return done ? 0 : 1;
}

// Preview and Test of the region's listing; the tolerance is 10 unless given.
int RegionTestCommand(const Arguments& a) {
  if (a.positional.size() != 1 || a.size || a.layers || a.background) return Fail(kUsage);
  tessel::RegionTestOptions options;
  options.def = a.positional[0];
  options.toolFolder = a.toolFolder;
  options.tolerance = a.tolerance.value_or("10");
  char* end = nullptr;
  const double t = std::strtod(options.tolerance.c_str(), &end);
  if (options.tolerance.empty() || *end != '\0' || !(t >= 0.0) || t > 1.0e12) {
    return Fail("--tolerance must be a number not below 0");
  }
  std::string error;
  const nlohmann::json result = tessel::RegionTest(options, error);
  if (!error.empty()) return Fail(error);
  for (const auto& message : result["messages"]) std::cerr << message.get<std::string>() << "\n";
  std::cout << result.dump(a.pretty ? 1 : -1, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
  return 0;
}

// The job's layers to a GIS or CAD file.
int Export(const Arguments& a) {
  if (a.positional.size() != 2 || a.pretty || a.size || a.background || a.tolerance) return Fail(kUsage);
  tessel::GisExportRequest request;
  request.out = a.positional[1];
  request.crs = a.crs.value_or("");
  if (a.crs && !tessel::ParseEpsgCode(*a.crs)) return Fail("--crs must be EPSG:NNNN, for example EPSG:3435");
  const bool database = tessel::IsDatabaseTarget(request.out);
  const bool region = a.command == "export-region";
  if (region && !database && tessel::GisFormatOf(request.out) != tessel::GisFormat::GeoPackage) {
    return Fail("TARGET must be PG:... or end in .gpkg");
  }
  if (!database && !tessel::GisFormatOf(request.out)) return Fail("OUT must end in .gpkg, .geojson, .shp, .dxf or be PG:...");
  if (a.layers) {
    std::istringstream in(*a.layers);
    std::string name;
    while (std::getline(in, name, ',')) {
      if (name.empty()) continue;
      if (!tessel::IsGisLayerName(name)) return Fail("unknown layer: " + name);
      request.layers.push_back(name);
    }
    if (request.layers.empty()) return Fail("--layers names no layer");
  }
  if (database || region) {
    const tessel::DbExportOptions options{request.out, request.crs, request.layers, a.toolFolder};
    return region ? tessel::RunRegionExport(a.positional[0], options) : tessel::RunDatabaseExport(a.positional[0], options);
  }
  tessel::NullCanvas canvas;
  tessel::BatchSession batch(canvas, a.toolFolder);
  batch.Start();
  batch.Open(a.positional[0]);
  const tessel::GisExportReport report = tessel::ExportJobToGis(batch.session(), request);
  batch.Close();
  if (!report.ok) return Fail(report.error);
  for (const std::string& file : report.files) std::cout << file << "\n";
  for (const auto& [name, count] : report.counts) std::cout << name << ": " << count << "\n";
  std::cout << "crs: " << (report.crsName.empty() ? std::string("none") : report.crsName) << "\n";
  for (const std::string& warning : report.warnings) std::cerr << warning << "\n";
  return 0;
}

#ifdef TESSEL_WITH_RENDER
int Render(const Arguments& a) {
  if (a.positional.size() != 2 || a.pretty) return Fail(kUsage);
  tessel::RenderOptions options;
  options.def = a.positional[0];
  options.out = a.positional[1];
  options.toolFolder = a.toolFolder;
  options.allLabels = a.allLabels;
  const std::string ext = options.out.size() >= 4 ? options.out.substr(options.out.size() - 4) : "";
  if (ext != ".png" && ext != ".PNG" && ext != ".pdf" && ext != ".PDF") return Fail("OUT must end in .png or .pdf");
  if (a.size) {
    char x = 0;
    std::istringstream in(*a.size);
    if (!(in >> options.width >> x >> options.height) || (x != 'x' && x != 'X') || !in.eof() || options.width < 1 ||
        options.height < 1 || options.width > 20000 || options.height > 20000) {
      return Fail("--size must be WIDTHxHEIGHT, for example 1280x960");
    }
  }
  if (a.layers) {
    options.layers.emplace();
    std::istringstream in(*a.layers);
    std::string name;
    while (std::getline(in, name, ',')) {
      if (name.empty()) continue;
      const auto entry = tessel::LayerEntry(name);
      if (!entry) return Fail("unknown layer: " + name);
      options.layers->push_back(*entry);
    }
  }
  if (a.background) {
    if (*a.background != "1" && *a.background != "2") return Fail("--background must be 1 or 2");
    options.background = *a.background == "1" ? 1 : 2;
  }
  return tessel::RenderJob(options);
}
#endif

}  // namespace

int main(int argc, char** argv) {
  auto a = Parse(std::vector<std::string>(argv + 1, argv + argc));
  if (!a) return Fail(kUsage);
  if (a->toolFolder.empty()) {
    // Beside the program, or the user's own folder for an installed one.
    const tessel::ToolFolderChoice choice = tessel::ChooseToolFolder(tessel::ProgramFolder(argv[0]), std::getenv);
    if (!choice.problem.empty()) std::cerr << "tessel-batch: " << choice.problem << "\n";
    a->toolFolder = choice.folder;
  }
  if (!a->positional.empty()) {
    std::error_code ec;
    if (!fs::is_regular_file(tessel::NativePath(a->positional[0]), ec)) return Fail("no such job definition: " + a->positional[0]);
  }
  if (a->command == "dump") return Dump(*a);
  if (a->command == "apd-import") return ApdImport(*a);
  if (a->command == "irr") {
    if (a->positional.size() != 1 || a->pretty || a->size || a->layers || a->background) return Fail(kUsage);
    return tessel::RunIrrCommand(a->positional[0]);
  }
  if (a->command == "region-test") return RegionTestCommand(*a);
  if (a->command.starts_with("cama-")) {
    const bool import = a->command == "cama-import";
    if (a->positional.size() != (import ? 2u : 1u) || a->pretty || a->size || a->layers || a->background ||
        a->tolerance || a->crs || (!import && (a->code || a->append))) {
      return Fail(kUsage);
    }
    if (import) return tessel::RunCamaImport(a->positional[0], a->positional[1], a->code, a->append, a->toolFolder);
    if (a->command == "cama-link") return tessel::RunCamaLink(a->positional[0], a->toolFolder);
    if (a->command == "cama-unused") return tessel::RunCamaUnused(a->positional[0], a->toolFolder);
  }
  if (a->command == "export" || a->command == "export-region") return Export(*a);
  if (a->command == "adjust") {
    if (a->positional.size() != 1 || a->pretty || a->size || a->layers || a->background || a->tolerance || a->crs ||
        a->code || a->append) {
      return Fail(kUsage);
    }
    return tessel::RunAdjust(a->positional[0], a->controlSigma, a->json);
  }
#ifdef TESSEL_WITH_RENDER
  if (a->command == "render") return Render(*a);
#else
  if (a->command == "render") return Fail("render needs the Qt build");
#endif
  return Fail(kUsage);
}
