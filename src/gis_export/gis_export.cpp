#include "gis_export/gis_export.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "cama/link_file.h"
#include "model/cama_store.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

std::string JobPrjPath(const Session& session) { return session.DatasetPath(".prj"); }

bool ResolveExportCrs(const Session& session, const std::string& crsText, std::optional<GisCrs>& crs,
                      std::vector<std::string>& warnings, std::string& error) {
  crs.reset();
  if (!Trim(crsText).empty()) {
    const std::optional<int> code = ParseEpsgCode(crsText);
    if (!code) {
      error = "The coordinate reference system must be given as EPSG:NNNN, for example EPSG:3435; \"" + crsText +
              "\" is not.";
      return false;
    }
    crs = CrsFromEpsg(*code, error);
    return crs.has_value();
  }
  const std::string prj = JobPrjPath(session);
  if (!session.JobBase.empty() && FileExistsAnyCase(prj)) {
    std::string text;
    if (!ReadFileBytes(prj, text)) {
      error = prj + " cannot be read.";
      return false;
    }
    std::string why;
    crs = CrsFromPrjText(text, why);
    if (!crs) {
      error = prj + ": " + why;
      return false;
    }
    return true;
  }
  warnings.push_back(kNoCrsWarning);
  return true;
}

std::optional<std::vector<CamaLinkRecord>> JobCamaLinks(const Session& session, std::vector<std::string>& warnings) {
  if (session.JobBase.empty() || !session.DatasetExists(".mtc")) return std::nullopt;
  const std::string path = session.DatasetPath(".mtc");
  std::string bytes;
  if (!ReadFileBytes(path, bytes)) {
    warnings.push_back("The job's link file " + path + " could not be read, so there is no cama_links layer.");
    return std::nullopt;
  }
  const std::vector<LinkFileRecord> records = ReadLinkRecords(std::move(bytes), CamaStore::kBound);
  std::vector<CamaLinkRecord> links;
  links.reserve(records.size());
  for (const LinkFileRecord& r : records) {
    if (!r.complete) {
      warnings.push_back("The job's link file " + path + " holds a number too large to read in record " +
                         std::to_string(links.size() + 1) + "; the records from there on are not exported.");
      break;
    }
    links.push_back(CamaLinkRecord{r.areaPoint, r.chain, r.geocode, IsLinkedGeocode(r.geocode), r.x, r.y});
  }
  return links;
}

bool PrepareGisExport(const Session& session, const GisExportRequest& request, GisExportPlan& plan,
                      GisExportReport& report) {
  for (const std::string& name : request.layers) {
    if (!IsGisLayerName(name)) {
      report.error = "There is no layer " + name + ".";
      return false;
    }
  }
  if (!GdalAvailable()) {
    report.error = kNoGdalText;
    return false;
  }
  if (!ResolveExportCrs(session, request.crs, plan.crs, report.warnings, report.error)) return false;
  if (plan.crs) {
    report.crsName = plan.crs->authority.empty() ? plan.crs->name : plan.crs->name + " (" + plan.crs->authority + ")";
  }

  GisBuildOptions options;
  options.layers = request.layers;
  options.camaLinks = request.camaLinks;
  const bool camaWanted =
      request.layers.empty() || std::find(request.layers.begin(), request.layers.end(), "cama_links") != request.layers.end();
  if (camaWanted && !options.camaLinks) options.camaLinks = JobCamaLinks(session, report.warnings);
  GisBuildResult built = BuildGisLayers(session, options);
  report.warnings.insert(report.warnings.end(), built.warnings.begin(), built.warnings.end());
  if (built.layers.empty()) {
    report.error = "There is nothing to export: the job has none of the layers asked for.";
    return false;
  }
  plan.layers = std::move(built.layers);
  return true;
}

void FinishGisExport(const GisExportPlan& plan, const GisWriteResult& written, GisExportReport& report) {
  if (!written.ok) {
    report.error = written.error;
    return;
  }
  for (const std::string& w : written.warnings) report.warnings.push_back("GDAL: " + w);
  report.files = written.files;
  for (const GisLayer& layer : plan.layers) report.counts.emplace_back(layer.name, layer.features.size());
  report.ok = true;
}

std::string GisExportCancelledText(const std::string& out) {
  return "GIS export cancelled: " + out + " was left as it was.";
}

GisExportReport ExportJobToGis(const Session& session, const GisExportRequest& request, Progress* progress) {
  GisExportReport report;
  const std::optional<GisFormat> format = GisFormatOf(request.out);
  if (!format) {
    report.error = request.out + ": the file type says which format to write; use .gpkg, .geojson, .shp or .dxf.";
    return report;
  }
  GisExportPlan plan;
  if (!PrepareGisExport(session, request, plan, report)) return report;
  GisWriteResult written;
  try {
    written = WriteGisLayers(plan.layers, request.out, *format, plan.crs, progress);
  } catch (const std::exception& fault) {
    written.ok = false;
    written.error = request.out + " cannot be written: " + fault.what();
  }
  if (written.cancelled) {
    report.cancelled = true;
    return report;
  }
  FinishGisExport(plan, written, report);
  return report;
}

bool WriteJobPrj(const Session& session, int epsg, std::string& error) {
  if (session.JobBase.empty()) {
    error = "No job is open.";
    return false;
  }
  std::optional<GisCrs> crs = CrsFromEpsg(epsg, error);
  if (!crs) return false;
  std::optional<std::string> text = PrjTextOf(*crs, error);
  if (!text) return false;
  const std::string path = JobPrjPath(session);
  try {
    WriteFileBytes(path, *text);
  } catch (const std::exception& fault) {
    error = fault.what();
    return false;
  }
  return true;
}

bool WriteExportPrj(Session& session, const std::string& crs) {
  std::string error;
  const std::optional<int> code = ParseEpsgCode(crs);
  if (!code) {
    session.user.Message("Choose a coordinate reference system (EPSG:NNNN) to write to the job's .prj.",
                         Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (!WriteJobPrj(session, *code, error)) {
    session.user.Message(error, Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  return true;
}

bool RunGisExport(Session& session, const GisExportRequest& request, bool writePrj, Progress* progress) {
  if (session.JobBase.empty()) {
    session.user.Message("You must first Open or Create a job.", Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (Trim(request.out).empty()) {
    session.user.Message("Choose the file to export to.", Icon::Exclamation, Buttons::Ok, kGisExportTitle);
    return false;
  }
  if (writePrj && !WriteExportPrj(session, request.crs)) return false;
  session.user.SetPointer(Pointer::Hourglass);
  const GisExportReport report = ExportJobToGis(session, request, progress);
  session.user.SetPointer(Pointer::Default);
  if (report.cancelled) {
    session.user.Note(GisExportCancelledText(request.out));
    return false;
  }
  std::string text;
  for (const std::string& line : GisExportSummary(report)) text += (text.empty() ? "" : "\r\n") + line;
  session.user.Message(text, report.ok ? Icon::Information : Icon::Exclamation, Buttons::Ok, kGisExportTitle);
  return report.ok;
}

std::vector<std::string> GisExportSummary(const GisExportReport& report) {
  std::vector<std::string> lines;
  if (!report.ok) {
    lines.push_back(report.error);
    return lines;
  }
  for (const std::string& file : report.files) lines.push_back("Written: " + file);
  for (const auto& [name, count] : report.counts) lines.push_back(name + ": " + std::to_string(count) + " features");
  lines.push_back("Coordinate reference system: " + (report.crsName.empty() ? std::string("none") : report.crsName));
  for (const std::string& warning : report.warnings) lines.push_back(warning);
  return lines;
}

}  // namespace tessel
