#include "adjustment/adjustment_report.h"

#include <cmath>
#include <cstdio>
#include <numbers>
#include <unordered_map>
#include <unordered_set>

#include "datasets/coordinate_files.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel::adjustment {

namespace {

template <typename... Args>
std::string Format(const char* format, Args... args) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format, args...);
  return buffer;
}

std::string ObservedText(const ObservationResult& r, double value) {
  if (r.observation.kind == ObservationKind::Azimuth) return AzimuthText(value);
  return Format("%.4f", value);
}

// The names after a heading, as many to a line as fit in a hundred columns.
void List(std::vector<std::string>& out, const std::string& heading, const std::vector<std::string>& names) {
  if (names.empty()) return;
  std::string line = heading;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string item = names[i] + (i + 1 < names.size() ? "," : "");
    if (line.size() + 1 + item.size() > 100 && line.size() > 4) {
      out.push_back(line);
      line = "   ";
    }
    line += " " + item;
  }
  out.push_back(line);
}

std::string ObservationLine(const ObservationResult& r) {
  const Observation& o = r.observation;
  const std::string stdResidual = r.stdResidual ? Format("%8.2f", *r.stdResidual) : std::string("       -");
  return Format("%6d  %-9s %-18s %-8s %-18s %15s %15s %11.4f %s %s", o.record, KindName(o.kind), o.from.c_str(),
                o.to.c_str(), o.survey.c_str(), ObservedText(r, o.value).c_str(), ObservedText(r, r.adjusted).c_str(),
                r.residual, stdResidual.c_str(), r.flagged ? "BLUNDER?" : "");
}

}  // namespace

std::string AzimuthText(double radians) {
  double degrees = std::fmod(radians * 180.0 / std::numbers::pi, 360.0);
  if (degrees < 0) degrees += 360.0;
  long tenths = std::lround(degrees * 36000.0);
  if (tenths >= 360L * 36000L) tenths -= 360L * 36000L;
  return Format("%03ld-%02ld-%04.1f", tenths / 36000, tenths / 600 % 60, static_cast<double>(tenths % 600) / 10.0);
}

std::string ReportText(const Adjustment& a, const std::string& jobBase, const Options& options) {
  std::vector<std::string> out;
  const auto line = [&](std::string text) { out.push_back(std::move(text)); };
  line("TESSEL LEAST SQUARES ADJUSTMENT OF RECORD DATA");
  line("Job: " + jobBase);
  line(std::string("Units: ") + UnitsName(a.units) + "; azimuths as DDD-MM-SS.S, their residuals in seconds");
  line(options.controlSigma ? Format("Control: observed, standard error %.4f", *options.controlSigma)
                            : std::string("Control: held fixed"));
  line("");
  line("SUMMARY");
  line(Format("  Records read                 %d", a.recordCount));
  line(Format("  Records skipped              %d unknown survey, %d empty or equal ids, %d bad quadrant",
              a.skipped.unknownSurvey, a.skipped.emptyOrEqualIds, a.skipped.badQuadrant));
  line(Format("  Observations                 %d", a.observationCount));
  line(Format("  Unknowns                     %d", a.unknownCount));
  line(Format("  Degrees of freedom           %d", a.dof));
  line(a.converged ? Format("  Iterations                   %d, converged", a.iterations)
                   : Format("  Iterations                   %d, DID NOT CONVERGE", a.iterations));
  line(Format("  vTPv                         %.4f", a.vtpv));
  if (a.sigma0) {
    line(Format("  Standard error of unit weight %.4f", *a.sigma0));
    line(Format("  Chi-square test (95 %%)       %s: vTPv %s [%.4f, %.4f]", *a.chi2Pass ? "PASSED" : "FAILED",
                *a.chi2Pass ? "within" : "outside", a.chi2Lower, a.chi2Upper));
  } else {
    line("  Standard error of unit weight none: no degrees of freedom");
  }
  line(Format("  Possible blunders            %zu (|standardized residual| > %.2f)", a.blunders.size(), kBlunderLimit));
  line(Format("  Uncontrolled observations    %zu", a.uncontrolled.size()));
  List(out, "  Bearings taken as grid azimuths, though not of grid type:", a.nonGridSurveys);
  List(out, "  Not connected to control, left out:", a.disconnected);
  line("");
  line("ADJUSTED STATIONS (standard errors and ellipse axes a priori, theta from grid north)");
  line(Format("  %-18s %15s %15s %9s %9s %9s %9s %7s", "Station", "X", "Y", "SX", "SY", "A", "B", "Theta"));
  for (const StationResult& s : a.stations) {
    line(Format("  %-18s %15.4f %15.4f %9.4f %9.4f %9.4f %9.4f %7.2f", s.id.c_str(), s.x, s.y, s.sx, s.sy, s.a, s.b,
                s.thetaDeg));
  }
  if (!a.fixedStations.empty()) {
    line("");
    line("FIXED CONTROL STATIONS");
    for (const NetworkStation& s : a.fixedStations) line(Format("  %-18s %15.4f %15.4f", s.id.c_str(), s.x, s.y));
  }
  if (!a.orientations.empty()) {
    line("");
    line("ORIENTATIONS OF SURVEYS WHOSE BEARINGS ARE ANGLES (seconds)");
    for (const OrientationResult& o : a.orientations) {
      line(Format("  %-18s %12.2f +/- %.2f", o.survey.c_str(), o.valueSec, o.sigmaSec));
    }
  }
  const std::string header = Format("%6s  %-9s %-18s %-8s %-18s %15s %15s %11s %8s", "Record", "Kind", "From", "To",
                                    "Survey", "Observed", "Adjusted", "Residual", "Std res");
  line("");
  line("OBSERVATIONS");
  line(header);
  for (const ObservationResult& r : a.observations) line(ObservationLine(r));
  line("");
  line(Format("FLAGGED OBSERVATIONS, POSSIBLE BLUNDERS (|standardized residual| > %.2f), largest first", kBlunderLimit));
  if (a.blunders.empty()) line("  none");
  else line(header);
  for (int i : a.blunders) line(ObservationLine(a.observations[static_cast<std::size_t>(i)]));
  line("");
  line("UNCONTROLLED OBSERVATIONS (no redundancy: an error in them cannot be seen)");
  if (a.uncontrolled.empty()) line("  none");
  else line(header);
  for (int i : a.uncontrolled) line(ObservationLine(a.observations[static_cast<std::size_t>(i)]));
  return JoinCrLf(out);
}

std::string WriteReport(const Adjustment& adjustment, const std::string& jobBase, const Options& options) {
  const std::string path = ResolveCase(jobBase + kReportExtension);
  WriteFileBytes(path, ReportText(adjustment, jobBase, options));
  return path;
}

int AcceptAdjustment(const Adjustment& adjustment, const std::string& jobBase) {
  const std::string path = ResolveCase(jobBase + ".COR");
  std::unordered_map<std::string, const StationResult*> adjusted;
  for (const StationResult& s : adjustment.stations) adjusted[s.id] = &s;

  std::string bytes;
  const bool exists = ReadFileBytes(path, bytes);
  std::vector<std::string> lines;
  std::unordered_set<std::string> written;
  for (LineReader in = LineReader::FromText(std::move(bytes)); exists && !in.Eof();) {
    std::string text = in.ReadLine();
    const std::string_view field = CorFields(text).id;
    const std::string id = Trim(field);
    if (auto s = adjusted.find(id); s != adjusted.end()) {
      const std::string replaced = CorLine(RTrim(field), s->second->x, s->second->y);
      if (!replaced.empty()) text = replaced;
      written.insert(id);
    }
    lines.push_back(std::move(text));
  }
  for (const StationResult& s : adjustment.stations) {
    if (!written.insert(s.id).second) continue;
    const std::string added = CorLine(s.id, s.x, s.y);
    if (!added.empty()) lines.push_back(added);
  }
  if (exists) CopyFileReplacing(path, ResolveCase(jobBase + kCorBackupExtension));
  WriteFileBytes(path, JoinCrLf(lines));
  return static_cast<int>(adjustment.stations.size());
}

}  // namespace tessel::adjustment
