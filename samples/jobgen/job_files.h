// Line layouts of a job folder's text files, for the programs that generate demonstration
// and full-size jobs. Each function returns one line without its line end; WriteLines adds
// CR LF. Columns named in the comments are 1-based, as the readers count them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::jobgen {

// ---------------------------------------------------------------------------------------------
// Text helpers

// Fixed notation with the given number of decimals, C locale, no negative zero.
std::string Fixed(double value, int decimals);

// Numeric picture such as "####.000", "####0.000" or "#######0.000": the value with the
// picture's number of decimals; with leading_zero false a value below 1 prints without its
// integer digit (".500"), as a picture of only '#' before the point does.
std::string Picture(double value, int decimals, bool leading_zero);

std::string PadLeft(std::string_view text, std::size_t width);   // right-justify
std::string PadRight(std::string_view text, std::size_t width);  // left-justify

// Builds a line by print positions: At(column, text) fills with blanks up to the column and
// puts the text there. Text that already reaches past the column is followed directly.
class LineBuilder {
 public:
  LineBuilder& At(std::size_t column, std::string_view text);
  const std::string& Text() const { return line_; }

 private:
  std::string line_;
};

// Writes the lines, each ended with CR LF, replacing the file. False when it cannot be written.
bool WriteLines(const std::string& path, const std::vector<std::string>& lines);

// ---------------------------------------------------------------------------------------------
// Bearings and a reproducible random source

// A bearing as the record data state it: quadrant 1 NE, 2 SE, 3 SW, 4 NW, and an angle from the
// meridian in whole degrees, minutes and seconds.
struct Bearing {
  int quadrant = 1;
  int degrees = 0;
  int minutes = 0;
  int seconds = 0;

  // Packed DDMMSS as a number: 45 deg 15 min 30 sec is 451530.
  double Packed() const;
  // DD.MMSS: 45 deg 15 min 30 sec is 45.1530.
  double DdMmSs() const;
  // Angle from north, clockwise, in radians.
  double Azimuth() const;
};

// Bearing of the direction (d_east, d_north), rounded to the given step in seconds
// (1 for seconds, 60 for whole minutes).
Bearing BearingOf(double d_east, double d_north, int step_seconds = 1);

// Bearing with the given quadrant and decimal angle from the meridian, rounded to seconds.
Bearing BearingFromDegrees(int quadrant, double degrees);

// Offset (d_east, d_north) of a bearing and distance.
void Offset(const Bearing& bearing, double distance, double& d_east, double& d_north);

// splitmix64: the same sequence on every platform and standard library.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  double Uniform();  // [0, 1)
  double Uniform(double low, double high);
  int Below(int n);  // 0 .. n-1

 private:
  std::uint64_t state_;
};

// ---------------------------------------------------------------------------------------------
// .def: project properties, seven lines. Line 4 is the unit code (1 metres, 2 feet), line 7
// says whether the error estimates come from the .sd file.
struct ProjectProperties {
  std::string title;
  std::string zone;
  std::string datum;
  int unit_code = 2;
  std::string mean_elevation;
  std::string scale_factor;
  bool errors_from_sd = true;
};
std::vector<std::string> DefLines(const ProjectProperties& properties);

// ---------------------------------------------------------------------------------------------
// .COR: identifier at column 2, X at column 21, Y at column 36, each rounded to 4 decimals and
// shown with the picture "#######0.000".
std::string CorLine(std::string_view id, double x, double y);

// ---------------------------------------------------------------------------------------------
// .LSA: five sections; every line ends in a digit at column kLsaFlagColumn, "1" on the last
// line of a section and "0" on the others.
inline constexpr std::size_t kLsaFlagColumn = 80;

// Section 1, control: identifier 2-19, X 20-34, Y 37-51, standard errors 52-61 and 62-71.
std::string LsaControlLine(std::string_view id, double x, double y, double sigma_x, double sigma_y,
                           bool last);
// Section 2, network line: from 2-17, to 28-43, distance 44-55, quadrant 58, bearing DD.MMSS 60-69.
std::string LsaNetworkLine(std::string_view from, std::string_view to, double distance,
                           const Bearing& bearing, bool last);
// Sections 3 and 4 carry observation text that this system passes over; the text is put at
// column 2 and the flag at the end.
std::string LsaTextLine(std::string_view text, bool last);
// Section 5, points: identifier 2-19, X 29-39, standard error 43-50, Y 53-63, standard error 66-73.
std::string LsaPointLine(std::string_view id, double x, double y, double sigma_x, double sigma_y,
                         bool last);

// ---------------------------------------------------------------------------------------------
// .LXN: two header lines, then records of a count line and a line of six-character identifiers.
// The marker record 999999 stands before a record and at the end of the file.
std::string LxnCountLine(int count);
std::string LxnChainLine(const std::vector<std::string>& ids);
std::string LxnMarkerLine();

// ---------------------------------------------------------------------------------------------
// .raw: a head ended by "999999", record lines, then "999998". A record prints its fields at
// columns 1, 10, 17, 27, 31 and 40: from, to, distance "####.000" right-justified in 8,
// quadrant, bearing packed DDMMSS "####.0" right-justified in 8, survey identifier.
std::string RawRecordLine(std::string_view from, std::string_view to, double distance,
                          const Bearing& bearing, std::string_view survey);
std::string RawHeadEndLine();
std::string RawEndLine();

// ---------------------------------------------------------------------------------------------
// .sid: S line opening a survey, then its C lines.

// S line: identifier 2-19; distance error constant "####.000" right-justified to column 26;
// parts per million "####.0" to 34; bearing seconds "####.0" to 42; control easting and
// northing errors, as given, to 51 and 60.
std::string SidSurveyLine(std::string_view survey, double distance_constant, double distance_ppm,
                          double bearing_seconds, std::string_view control_easting,
                          std::string_view control_northing);
// Comment: "C " and the text.
std::string SidCommentLine(std::string_view text);

enum class DistanceUnits { Chains, UsFeet, InternationalFeet, Meters };
enum class DistanceType { Ground, Ellipsoidal, Plane };
enum class BearingType { MeanGeodetic, ForwardGeodetic, Grid, Compass, Local };

std::string SidDistanceUnitsLine(DistanceUnits units);
std::string SidDistanceTypeLine(DistanceType type);
// "C DC: " and two values right-justified in 15 columns each.
std::string SidDistanceCorrectionLine(std::string_view constant, std::string_view ppm);
std::string SidBearingTypeLine(BearingType type);
// "C BT:xA " with the angle error estimate right-justified in 9 columns.
std::string SidBearingAnglesLine(BearingType type, std::string_view error_estimate);
// "C BC: " with the rotation right-justified in 9 columns.
std::string SidBearingRotationLine(std::string_view rotation);

// ---------------------------------------------------------------------------------------------
// .IID parcels.

// Attribute line, 53 columns: "Sec_", section 5-7, location letter 9, " T_" and type letter 13,
// survey number 15-19 and suffix 20-21 left-justified, note letter 25, acreage "####0.000"
// right-justified in 27-35, and a 17-character reference in 37-53.
std::string IidAttributeLine(int section, char location, char type, std::string_view number,
                             std::string_view suffix, char note, double acreage,
                             std::string_view reference);
// Ring line: seven columns an identifier, a blank and the six-character id.
std::string IidRingLine(const std::vector<std::string>& ids);
// Location line: " PARCEL N,E", northing right-justified in 17-27, easting in 33-43.
std::string IidLocationLine(double northing, double easting);

// ---------------------------------------------------------------------------------------------
// .RPO raw polygons and .CRP centroids.

// Closing heading line: the count right-justified in 4, " POLYGONS FOUND".
std::string RpoCountLine(int count);
// Polygon line: tag S, I or O, a blank, then the ring's identifiers separated by blanks.
std::string RpoPolygonLine(char tag, const std::vector<std::string>& ids);
// Centroid: x and y right-justified in 15 columns each.
std::string CrpLine(double x, double y);

// ---------------------------------------------------------------------------------------------
// .not: count lines right-justified to column 6, point lines, segment lines with the ends in
// columns 1-6 and 8-13.
std::string NotCountLine(int count);
std::string NotPointLine(std::string_view id);
std::string NotSegmentLine(std::string_view from, std::string_view to);

}  // namespace tessel::jobgen
