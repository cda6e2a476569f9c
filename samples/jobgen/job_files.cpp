#include "jobgen/job_files.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <numbers>
#include <system_error>

namespace tessel::jobgen {

// ---------------------------------------------------------------------------------------------
// Text helpers

std::string Fixed(double value, int decimals) {
  char buffer[64];
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  if (result.ec != std::errc()) return "0";
  std::string text(buffer, result.ptr);
  if (!text.empty() && text.front() == '-' &&
      text.find_first_not_of("0.", 1) == std::string::npos) {
    text.erase(0, 1);  // "-0.000" is zero
  }
  return text;
}

std::string Picture(double value, int decimals, bool leading_zero) {
  std::string text = Fixed(value, decimals);
  if (!leading_zero) {
    const std::size_t digit = (!text.empty() && text.front() == '-') ? 1 : 0;
    if (text.size() > digit + 1 && text[digit] == '0' && text[digit + 1] == '.') {
      text.erase(digit, 1);
    }
  }
  return text;
}

std::string PadLeft(std::string_view text, std::size_t width) {
  std::string out;
  if (text.size() < width) out.assign(width - text.size(), ' ');
  out.append(text);
  return out;
}

std::string PadRight(std::string_view text, std::size_t width) {
  std::string out(text);
  if (out.size() < width) out.append(width - out.size(), ' ');
  return out;
}

LineBuilder& LineBuilder::At(std::size_t column, std::string_view text) {
  if (column >= 1 && line_.size() < column - 1) line_.append(column - 1 - line_.size(), ' ');
  line_.append(text);
  return *this;
}

bool WriteLines(const std::string& path, const std::vector<std::string>& lines) {
  std::string data;
  std::size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 2;
  data.reserve(size);
  for (const std::string& line : lines) {
    data.append(line);
    data.append("\r\n");
  }
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(data.data(), static_cast<std::streamsize>(data.size()));
  return static_cast<bool>(out);
}

// ---------------------------------------------------------------------------------------------
// Bearings and the random source

double Bearing::Packed() const {
  return static_cast<double>(degrees * 10000 + minutes * 100 + seconds);
}

double Bearing::DdMmSs() const {
  return degrees + minutes / 100.0 + seconds / 10000.0;
}

double Bearing::Azimuth() const {
  const double angle = (degrees + minutes / 60.0 + seconds / 3600.0) * std::numbers::pi / 180.0;
  switch (quadrant) {
    case 2: return std::numbers::pi - angle;
    case 3: return std::numbers::pi + angle;
    case 4: return 2.0 * std::numbers::pi - angle;
    default: return angle;
  }
}

namespace {

Bearing FromSeconds(int quadrant, long total) {
  Bearing b;
  b.quadrant = quadrant;
  b.degrees = static_cast<int>(total / 3600);
  b.minutes = static_cast<int>((total / 60) % 60);
  b.seconds = static_cast<int>(total % 60);
  return b;
}

}  // namespace

Bearing BearingOf(double d_east, double d_north, int step_seconds) {
  int quadrant = 1;
  if (d_north >= 0.0 && d_east >= 0.0)
    quadrant = 1;
  else if (d_north < 0.0 && d_east >= 0.0)
    quadrant = 2;
  else if (d_north < 0.0)
    quadrant = 3;
  else
    quadrant = 4;
  const double angle = std::atan2(std::fabs(d_east), std::fabs(d_north)) * 180.0 / std::numbers::pi;
  const double step = step_seconds > 0 ? step_seconds : 1;
  const long total = std::lround(angle * 3600.0 / step) * static_cast<long>(step);
  return FromSeconds(quadrant, total);
}

Bearing BearingFromDegrees(int quadrant, double degrees) {
  return FromSeconds(quadrant, std::lround(degrees * 3600.0));
}

void Offset(const Bearing& bearing, double distance, double& d_east, double& d_north) {
  const double azimuth = bearing.Azimuth();
  d_east = distance * std::sin(azimuth);
  d_north = distance * std::cos(azimuth);
}

std::uint64_t Random::Next() {
  std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ULL);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  return z ^ (z >> 31);
}

double Random::Uniform() {
  return static_cast<double>(Next() >> 11) * (1.0 / 9007199254740992.0);
}

double Random::Uniform(double low, double high) {
  return low + (high - low) * Uniform();
}

int Random::Below(int n) {
  if (n <= 0) return 0;
  return static_cast<int>(Next() % static_cast<std::uint64_t>(n));
}

// ---------------------------------------------------------------------------------------------
// .def

std::vector<std::string> DefLines(const ProjectProperties& p) {
  return {p.title,
          p.zone,
          p.datum,
          std::to_string(p.unit_code),
          p.mean_elevation,
          p.scale_factor,
          p.errors_from_sd ? "Y" : "N"};
}

// ---------------------------------------------------------------------------------------------
// .COR

namespace {

std::string CorCoordinate(double value) {
  return Picture(std::round(value * 10000.0) / 10000.0, 3, true);
}

std::string Flagged(std::string line, bool last) {
  if (line.size() < kLsaFlagColumn - 1) line.append(kLsaFlagColumn - 1 - line.size(), ' ');
  line.push_back(last ? '1' : '0');
  return line;
}

}  // namespace

std::string CorLine(std::string_view id, double x, double y) {
  LineBuilder b;
  b.At(2, id).At(21, CorCoordinate(x)).At(36, CorCoordinate(y));
  return b.Text();
}

// ---------------------------------------------------------------------------------------------
// .LSA

std::string LsaControlLine(std::string_view id, double x, double y, double sigma_x, double sigma_y,
                           bool last) {
  LineBuilder b;
  b.At(2, PadRight(id, 18))
      .At(20, PadLeft(Fixed(x, 4), 15))
      .At(37, PadLeft(Fixed(y, 4), 15))
      .At(52, PadLeft(Fixed(sigma_x, 3), 10))
      .At(62, PadLeft(Fixed(sigma_y, 3), 10));
  return Flagged(b.Text(), last);
}

std::string LsaNetworkLine(std::string_view from, std::string_view to, double distance,
                           const Bearing& bearing, bool last) {
  LineBuilder b;
  b.At(2, PadRight(from, 16))
      .At(28, PadRight(to, 16))
      .At(44, PadLeft(Fixed(distance, 3), 12))
      .At(58, std::to_string(bearing.quadrant))
      .At(60, PadLeft(Fixed(bearing.DdMmSs(), 4), 10));
  return Flagged(b.Text(), last);
}

std::string LsaTextLine(std::string_view text, bool last) {
  LineBuilder b;
  b.At(2, text);
  return Flagged(b.Text(), last);
}

std::string LsaPointLine(std::string_view id, double x, double y, double sigma_x, double sigma_y,
                         bool last) {
  LineBuilder b;
  b.At(2, PadRight(id, 18))
      .At(29, PadLeft(Fixed(x, 3), 11))
      .At(43, PadLeft(Fixed(sigma_x, 3), 8))
      .At(53, PadLeft(Fixed(y, 3), 11))
      .At(66, PadLeft(Fixed(sigma_y, 3), 8));
  return Flagged(b.Text(), last);
}

// ---------------------------------------------------------------------------------------------
// .LXN

std::string LxnCountLine(int count) {
  return PadLeft(std::to_string(count), 6);
}

std::string LxnChainLine(const std::vector<std::string>& ids) {
  std::string line;
  line.reserve(ids.size() * 6);
  for (const std::string& id : ids) line.append(PadRight(id, 6));
  return line;
}

std::string LxnMarkerLine() {
  return "999999";
}

// ---------------------------------------------------------------------------------------------
// .raw

std::string RawRecordLine(std::string_view from, std::string_view to, double distance,
                          const Bearing& bearing, std::string_view survey) {
  LineBuilder b;
  b.At(1, from)
      .At(10, to)
      .At(17, PadLeft(Picture(distance, 3, false), 8))
      .At(27, std::to_string(bearing.quadrant))
      .At(31, PadLeft(Picture(bearing.Packed(), 1, false), 8))
      .At(40, survey);
  return b.Text();
}

std::string RawHeadEndLine() {
  return "999999";
}

std::string RawEndLine() {
  return "999998";
}

// ---------------------------------------------------------------------------------------------
// .sid

std::string SidSurveyLine(std::string_view survey, double distance_constant, double distance_ppm,
                          double bearing_seconds, std::string_view control_easting,
                          std::string_view control_northing) {
  LineBuilder b;
  b.At(1, "S")
      .At(2, survey)
      .At(20, PadLeft(Picture(distance_constant, 3, false), 7))
      .At(27, PadLeft(Picture(distance_ppm, 1, false), 8))
      .At(35, PadLeft(Picture(bearing_seconds, 1, false), 8))
      .At(43, PadLeft(control_easting, 9))
      .At(52, PadLeft(control_northing, 9));
  return b.Text();
}

std::string SidCommentLine(std::string_view text) {
  std::string line = "C ";
  line.append(text);
  return line;
}

std::string SidDistanceUnitsLine(DistanceUnits units) {
  switch (units) {
    case DistanceUnits::UsFeet: return "C DU:F     <DISTANCE UNITS ARE US SURVEY FEET>";
    case DistanceUnits::InternationalFeet:
      return "C DU:I     <DISTANCE UNITS ARE INTERNATIONAL FEET>";
    case DistanceUnits::Meters: return "C DU:M     <DISTANCE UNITS ARE METERS>";
    case DistanceUnits::Chains: break;
  }
  return "C DU:C     <DISTANCE UNITS ARE CHAINS>";
}

std::string SidDistanceTypeLine(DistanceType type) {
  switch (type) {
    case DistanceType::Ellipsoidal: return "C DT:E     <ELLIPSOIDAL DISTANCES>";
    case DistanceType::Plane: return "C DT:P     <PLANE (GRID) DISTANCES>";
    case DistanceType::Ground: break;
  }
  return "C DT:G     <GROUND DISTANCES>";
}

std::string SidDistanceCorrectionLine(std::string_view constant, std::string_view ppm) {
  return "C DC: " + PadLeft(constant, 15) + PadLeft(ppm, 15) + "   <DISTANCE CORRECTION CONST+PPM>";
}

std::string SidBearingTypeLine(BearingType type) {
  switch (type) {
    case BearingType::ForwardGeodetic: return "C BT:F  <FORWARD GEODETIC BEARINGS>";
    case BearingType::Grid: return "C BT:G  <GRID (STATE PLANE) BEARINGS>";
    case BearingType::Compass: return "C BT:C  <COMPASS (MAGNETIC) BEARINGS>";
    case BearingType::Local: return "C BT:L  <LOCAL OR ASSUMED BEARINGS>";
    case BearingType::MeanGeodetic: break;
  }
  return "C BT:M  <MEAN GEODETIC BEARINGS>";
}

std::string SidBearingAnglesLine(BearingType type, std::string_view error_estimate) {
  const std::string value = PadLeft(error_estimate, 9);
  switch (type) {
    case BearingType::ForwardGeodetic:
      return "C BT:FA " + value + " <FORWARD BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
    case BearingType::Grid:
      return "C BT:GA " + value + " <GRID BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
    case BearingType::Compass:
      return "C BT:CA " + value + " <COMPASS BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
    case BearingType::Local:
      return "C BT:LA " + value + " <LOCAL BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
    case BearingType::MeanGeodetic: break;
  }
  return "C BT:MA " + value + " <MEAN BRGS., CONVERT TO ANGLES (ERR. EST DD.MMSS)>";
}

std::string SidBearingRotationLine(std::string_view rotation) {
  return "C BC: " + PadLeft(rotation, 9) + "  <BEARING ROTATION CORRECTION (DD.MMSS)>";
}

// ---------------------------------------------------------------------------------------------
// .IID

std::string IidAttributeLine(int section, char location, char type, std::string_view number,
                             std::string_view suffix, char note, double acreage,
                             std::string_view reference) {
  std::string sec = std::to_string(section);
  if (sec.size() < 3) sec.insert(0, 3 - sec.size(), '0');
  std::string line = "Sec_";
  line += sec;
  line += ' ';
  line += location;
  line += " T_";
  line += type;
  line += ' ';
  line += PadRight(number, 5);
  line += PadRight(suffix, 2);
  line += "   ";
  line += note;
  line += ' ';
  line += PadLeft(Picture(acreage, 3, true), 9);
  line += ' ';
  line += PadRight(reference.substr(0, 17), 17);
  return line;
}

std::string IidRingLine(const std::vector<std::string>& ids) {
  std::string line;
  line.reserve(ids.size() * 7);
  for (const std::string& id : ids) {
    line += ' ';
    line += PadRight(id, 6);
  }
  return line;
}

std::string IidLocationLine(double northing, double easting) {
  return " PARCEL N,E" + std::string(5, ' ') + PadLeft(Picture(northing, 3, true), 11) +
         std::string(5, ' ') + PadLeft(Picture(easting, 3, true), 11);
}

// ---------------------------------------------------------------------------------------------
// .RPO, .CRP

std::string RpoCountLine(int count) {
  return PadLeft(std::to_string(count), 4) + " POLYGONS FOUND";
}

std::string RpoPolygonLine(char tag, const std::vector<std::string>& ids) {
  std::string line(1, tag);
  for (const std::string& id : ids) {
    line += ' ';
    line += id;
  }
  return line;
}

std::string CrpLine(double x, double y) {
  return PadLeft(Fixed(x, 3), 15) + PadLeft(Fixed(y, 3), 15);
}

// ---------------------------------------------------------------------------------------------
// .not

std::string NotCountLine(int count) {
  return PadLeft(std::to_string(count), 6);
}

std::string NotPointLine(std::string_view id) {
  return std::string(id);
}

std::string NotSegmentLine(std::string_view from, std::string_view to) {
  return PadRight(from, 6) + " " + std::string(to);
}

}  // namespace tessel::jobgen
