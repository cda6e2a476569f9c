#pragma once
// The scripted runs of splitplan that the subdivision forms start: the answers each one feeds the
// tool, and the run itself through t1$.001 and temp.bat. The answer file and temp.bat stay in
// the job folder after the run (Exit removes them), which is why a run whose files could not be
// written is not started.

#include <string>
#include <vector>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgCompleteInformation = "You must complete the information requested.";

// Township diagram, "Compute": six empty lines.
std::vector<std::string> ComputeAnswers();
// Section dialog buttons.
std::vector<std::string> AutoIrrAnswers(int section);
std::vector<std::string> NoSubdivisionAnswers(int section);
std::vector<std::string> ThreeMileAnswers(int section);

// What the wizards ask for, as typed.
struct ElongatedInput {
  std::string section;    // "Section number or NOMGRID center of section ID"
  std::string direction;  // "N", "S", "E", "W", or empty when none is chosen
  std::string rows;       // "Number of rows of elongated lots"
};
struct ShortSectionInput {
  std::string section;
  int closingDirection = 0;  // North 1, West 2, South 3, East 4; 0 when none is chosen
  int howShort = 0;          // 20 ch. 1, 40 ch. 2, 60 ch. 3; 0 when none is chosen
};
struct MinorInput {
  std::string parcel;  // the parcel's point id
  std::string half;    // "W" (north and south halves), "N" (east and west halves), empty for quarters
};

std::vector<std::string> ElongatedAnswers(const ElongatedInput& input);
std::vector<std::string> ShortSectionAnswers(const ShortSectionInput& input);
std::vector<std::string> MinorAnswers(const MinorInput& input);

// Writes t1$.001 in the job folder with the answers, temp.bat in the current folder with the
// command line of splitplan reading it and "exit", and runs temp.bat, blocking. When either file
// cannot be written whole, a box names it and nothing is run: false.
bool RunSplitplanScript(Session& session, const std::vector<std::string>& answers);

// The wizards' Finish: a field left empty gives the critical box "You must complete the
// information requested." and false (the wizard stays); otherwise the run, under the busy
// pointer, and the reload of the calculation lists. A run refused for a file that could not be
// written is false too, and the wizard stays with what was typed.
bool FinishElongated(Session& session, const ElongatedInput& input);
bool FinishShortSection(Session& session, const ShortSectionInput& input);
bool FinishMinor(Session& session, const MinorInput& input);

// The township diagram's "Compute": the run, then the job reread and redrawn (not when the run
// was refused).
void ComputeSubdivision(Session& session);
// The section dialog's "AutoIRR", "No Subdivision" and "3 Mile": the run under the busy pointer;
// false when it was refused, and the dialog then stays open.
bool RunSectionScript(Session& session, const std::vector<std::string>& answers);

// Rereads the post-adjustment calculation lists after splitplan has added to them (with a job
// open), so that an open frmADD shows the new entries.
void ReloadCalculationLists(Session& session);

}  // namespace tessel
