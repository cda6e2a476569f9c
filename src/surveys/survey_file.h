#pragma once
// The survey identifier file .sid: reading it into the survey store, the directive lines of
// units and corrections, and the two writers (the whole file with one block replaced, and a
// block appended).

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "model/session.h"

namespace tessel {

// Faults (a survey past 200, a C line past 600) are not trapped here: they go to the caller.
void ReadSurveys(Session& session);

// The choices of the survey editor's lists, in their order.
inline constexpr std::array<const char*, 4> kDistanceUnitsList = {"C - Chains", "F - US Survey Foot",
                                                                  "I - International Foot", "M - Meters"};
inline constexpr std::array<const char*, 3> kDistanceTypeList = {"G - Ground", "E - Ellipsoid", "P - Plane (grid)"};
inline constexpr std::array<const char*, 5> kBearingTypeList = {"M - Mean Geodetic", "F - Forward Geodetic",
                                                                 "G - Grid (State Plane)", "C - Compass / Magnetic",
                                                                 "L - Local / Assumed"};

// The directive lines, built from a list's text. A text that matches none of the directive's
// own strings gives an empty line: "P - Plane (grid)" and "C - Compass / Magnetic" are two such
// texts, since the strings they are compared with are "P - Plane(grid)" and "C -Compass / Magnetic".
std::string DistanceUnitsLine(std::string_view listText);
std::string DistanceTypeLine(std::string_view listText);
std::string BearingTypeLine(std::string_view listText);
// The bearings of that type converted to angles, with the angle error estimate padded to 9.
std::string AnglesLine(std::string_view listText, std::string_view error);
// Constant and parts per million, each padded to 15.
std::string DistanceCorrectionLine(std::string_view constant, std::string_view ppm);
// The rotation padded to 9.
std::string BearingCorrectionLine(std::string_view rotation);

// What the C lines of one survey say, as the editor shows it. List choices are indexes into the
// lists above, -1 for none.
struct SurveyDirectives {
  std::string comments;  // each comment line followed by CR LF
  bool anyDirective = false;
  int distanceUnits = -1;
  int distanceType = -1;
  std::string correctionConstant;  // columns 7-21 of DC
  std::string correctionPpm;       // columns 23-37 of DC, one past where the writer puts it
  int bearingType = -1;
  bool convertToAngles = false;
  std::string angleError;          // columns 9-17 of BT:xA
  std::string bearingCorrection;   // columns 6-14 of BC, one before where the writer puts it
};
// Survey `s` (1-based) of the store.
SurveyDirectives ReadSurveyDirectives(const SurveyStore& store, int s);
// What one C line adds to them.
void ReadDirectiveLine(SurveyDirectives& directives, const std::string& line);

// One block as this program writes it. The S line's numbers go out as they are given (the
// editor pads them); each is reached by tabulation, so a field wider than its room pushes the
// next one to a line of its own.
struct SurveyBlock {
  std::string name;
  std::string constant, ppm, seconds, easting, northing;
  // Printed as it stands and then ended, so text that ends in a line end leaves an empty line.
  std::string comments;
  // Each printed as a line, in the order given.
  std::vector<std::string> directives;
};
std::string SurveyBlockText(const SurveyBlock& block);

// Rewrites .sid from the store with survey `replace` (1-based) given by `blockText`; every other
// block is the stored S line and its C lines. A failure is a file fault naming .sid, which is
// then as it was.
void RewriteSurveys(Session& session, int replace, const std::string& blockText);
// Adds the block at the end of .sid (made when there is none); the bytes before it stay.
void AppendSurvey(Session& session, const std::string& blockText);

}  // namespace tessel
