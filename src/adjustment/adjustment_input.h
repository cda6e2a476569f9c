#pragma once
// What the built-in adjustment reads from a job: the linear unit of .def, the surveys of .sid
// with their error estimates and directives, the line records of .raw, the control stations of
// .LSA's first section and the coordinates of .COR. Every reader takes the file's text, so the
// rules can be tried without files; ReadAdjustmentInput puts them together for a job.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel::adjustment {

enum class JobUnits { UsSurveyFeet, Meters };
// "US survey feet" or "meters", as the report and the JSON name them.
const char* UnitsName(JobUnits units);

// One survey of .sid, its figures as the block states them.
struct Survey {
  std::string id;               // columns 2-19 of the S line, trimmed
  double errorConstant = 0;     // columns 20-26, in the survey's distance unit
  double errorPpm = 0;          // columns 27-34
  double bearingErrorSec = 0;   // columns 35-42
  char distanceUnit = 'C';      // DU: C, F, I or M
  double correctionConstant = 0, correctionPpm = 0;  // DC
  double rotationDeg = 0;       // BC, positive clockwise
  char bearingType = 'M';       // BT: M, F, G, C or L; mean geodetic without a line
  bool toAngles = false;        // BT:xA
  double angleErrorSec = 0;     // the xA error estimate
};

// One line record after "999999", its fields cut as the display's reader cuts them.
struct Record {
  int number = 0;  // 1-based among the records after "999999"
  std::string from, to, survey;
  double distance = 0;
  int quadrant = 0;  // 0 when the field is not a whole 1 to 4
  double bearing = 0;  // packed DDMMSS with decimals of seconds
};

struct Station {
  std::string id;
  double x = 0, y = 0;
};

struct AdjustmentInput {
  JobUnits units = JobUnits::UsSurveyFeet;
  std::vector<Survey> surveys;
  std::vector<Record> records;
  std::vector<Station> control;  // .LSA section 1, in file order
  std::vector<Station> coordinates;  // .COR, in file order
};

// The unit of the job from the fourth line of .def; none for a code other than 1 or 2.
std::optional<JobUnits> ParseUnitCode(std::string_view defText);
std::vector<Survey> ParseSurveys(std::string_view sidText);
std::vector<Record> ParseRecords(std::string_view rawText);
// The stations of the first section, which ends with a line whose last character is "1".
std::vector<Station> ParseControl(std::string_view lsaText);
std::vector<Station> ParseCoordinates(std::string_view corText);

// DD.MMSS as the directives write an angle ("-0.1115" is minus 11 minutes 15 seconds), in degrees.
double DdMmSsDegrees(std::string_view text);
// The bearing field's packed DDMMSS value (453015.5 is 45 degrees 30 minutes 15.5 seconds), in
// degrees.
double PackedBearingDegrees(double value);

// Reads the job whose files start with `jobBase` (the path up to the .def's first point). A
// file that is missing or unreadable gives the one-line message that says which, in `error`.
std::optional<AdjustmentInput> ReadAdjustmentInput(const std::string& jobBase, std::string& error);

// The path of the job's files up to the first point of the whole path, as File Open takes it.
std::string JobBaseOf(const std::string& defPath);

}  // namespace tessel::adjustment
