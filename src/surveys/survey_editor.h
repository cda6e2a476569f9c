#pragma once
// frmListSurveys ("Survey ID's") and frmSidEdit ("Survey ID Properties"): the list of surveys,
// what a click on one shows, the selection of its record lines, and the editor's thirteen tick
// boxes with the two saves (an existing survey, a new one).

#include <array>
#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kSurveyListForm = "frmListSurveys";
inline constexpr const char* kDirectivesDefined = "SID UNITS/CORRECTIONS ARE DEFINED - SEE PROPERTIES";
inline constexpr const char* kSidExplanation =
    "Tessel allows record information to be stored in native units and has the capability to perform systematic "
    "corrections to distances and directions, optionally, bearings can be converted and treated as angle "
    "measurements.  Unless defined here, distances are in chains at ground elevation and bearings are mean "
    "geodetic.";
// The longest survey name a record can hold.
inline constexpr int kSurveyNameWidth = 18;

// The tick boxes of frmSidEdit, numbered as the form numbers them.
enum SidBox : int {
  kBoxConstant = 1,
  kBoxPpm,
  kBoxSeconds,
  kBoxName,
  kBoxComments,
  kBoxEasting,
  kBoxNorthing,
  kBoxDistanceUnits,
  kBoxDistanceType,
  kBoxDistanceCorrection,
  kBoxBearingType,
  kBoxBearingCorrection,
  kBoxAngles,
};

// The fields of frmSidEdit. Lists hold an index into their choices (survey_file.h), -1 for none.
struct SidForm {
  std::array<bool, 14> ticked{};  // 1 to 13
  std::string constant, ppm, seconds, name, comments, easting, northing;
  int distanceUnits = -1;
  int distanceType = -1;
  std::string correctionConstant, correctionPpm;
  int bearingType = -1;
  std::string bearingCorrection;
  bool convertToAngles = false;
  std::string angleError;
  // True after "Create New", false after "Properties". A click in the list loads the fields but
  // keeps the mode: a survey begun with "Create New" is still appended.
  bool isNew = false;
  // The list entry the form was loaded from (0-based); -1 for none; and its S line then, by which
  // a save finds the survey again.
  int entry = -1;
  std::string entryLine;
};

// Around the survey's name: the survey the form was loaded from is no longer in the file.
inline constexpr const char* kMsgSurveyGone = "The survey ";
inline constexpr const char* kMsgSurveyGoneAfter =
    " is no longer in the survey file as it was loaded (the surveys were read again meanwhile). Nothing was "
    "saved; choose the survey in the list again.";

// The list: the first 42 characters of each stored S line, in file order.
std::vector<std::string> SurveyListEntries(const Session& session);
// The label under the list for entry `entry`: the survey's comment lines, each with CR LF, and
// kDirectivesDefined after them when any C line is a directive.
std::string SurveyCommentLabel(const Session& session, int entry);

// A click on entry `entry`: boxes 8 to 13 cleared, the fields filled from the S line, the
// comments and the directives (a refilled comment text that differs ticks box 5; a list that
// finds its choice ticks 8, 9 or 11), then boxes 1 to 4, 6 and 7 cleared. The mode stays.
void LoadSidForm(const Session& session, int entry, SidForm& form);
// "Properties": the same, in the mode for an existing survey.
void OpenSidProperties(const Session& session, int entry, SidForm& form);
// "Create New": empty fields, boxes 1 to 7 ticked.
void NewSidForm(SidForm& form);

// The block the form's values give: each of boxes 1 to 7 from its field when ticked, otherwise
// from the columns of the current list entry (whose 42 characters hold no control errors).
std::string SidBlockText(const Session& session, const SidForm& form);

// OK of frmSidEdit, for an existing survey or a new one by the form's mode, with every question
// and message on the way. True when the dialog is done and closes.
bool SaveSidForm(Session& session, const SidForm& form);

// The record lines of the chosen entries, on the canvas over the job.
void ShowSurveyLines(Session& session, const std::vector<int>& entries);
// "Select by SID": the record lines of the chosen entries become the selected lines; the count
// is reported. Returns it.
int SelectBySid(Session& session, const std::vector<int>& entries);

}  // namespace tessel
