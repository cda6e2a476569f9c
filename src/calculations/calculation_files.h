#pragma once
// Reading the post-adjustment calculation lists (.add, .ads, .not and the job's surveys) into
// the session, and every rewrite of .add, .ads and .not that frmADD and its dialogs make. Each
// rewrite keeps its backup (.adZ, .asZ, .noZ) and goes through the one safe writer; a failure
// is told to the user naming the file, and the file stays as it was.

#include <optional>
#include <string>
#include <vector>

#include "calculations/definition_editor.h"
#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgNeedProject = "You must first open or create a project";
inline constexpr const char* kMsgSelectForDeletion = "Select the item for deletion.";
inline constexpr const char* kMsgNoMultiNot = "Multiple deletion of .not entries not available.";
inline constexpr double kRangeStartDefault = 950100;
inline constexpr double kRangeEndDefault = 999999;
// At most this many identifiers are collected by a range delete.
inline constexpr int kRangeDeleteBound = 5000;

// The lists of frmADD, read again: without a job the message "You must first open or create a
// project" and false. frmADD is told to show them again.
bool LoadCalculationLists(Session& session);

// .ads as text, and one of its lines: Tab(2) id, Tab(9) survey.
std::vector<AdsEntry> ParseAds(const std::vector<std::string>& lines);
std::string AdsLine(const std::string& id, const std::string& survey);
// The two lists of .not from its text: points, and segments "from to".
void ParseNot(const std::string& text, std::vector<std::string>& points, std::vector<std::string>& lines);
// The text of .not from the two lists.
std::string NotText(const std::vector<std::string>& points, const std::vector<std::string>& lines);

// The .add text with the entries [first, behind) of the list replaced by `lines`.
std::vector<std::string> SpliceDefinitions(const std::vector<std::string>& list, int first, int behind,
                                           const std::vector<std::string>& lines);
// The .ads lines with the line of `id` replaced (at its place, else at the end) by one for
// `survey`, or left out when the survey is "<none>".
std::vector<std::string> SetAdsSurvey(const std::vector<std::string>& adsLines, const std::string& id,
                                      const std::string& survey);

// An entry of a list being edited in a dialog that stays open while the lists can change: where
// its lines stood when the dialog opened, and the lines. A new entry has no place.
struct EditedEntry {
  int first = -1;
  std::vector<std::string> lines;
  bool IsNew() const { return first < 0; }
};
inline constexpr const char* kMsgDefinitionGone =
    "The definition being edited is no longer in the list: it was changed or deleted meanwhile. The editor is "
    "closed and nothing was saved.";
inline constexpr const char* kMsgOmissionGone =
    "The entry being edited is no longer in the list of points and lines to leave out: it was changed or deleted "
    "meanwhile. The editor is closed and nothing was saved.";
// The entry of the definition list [first, behind) at `index` with its second line, as frmADD
// opens it for editing.
EditedEntry EditedDefinition(const std::vector<std::string>& list, int index);
// Where the entry stands in `list` now, as [first, behind): a new entry at the end; an edited one
// at its old place while its lines still stand there, else at the place holding them that lies
// nearest the old one. Nothing when its lines are in the list no more.
std::optional<DefinitionSpan> RefindEntry(const std::vector<std::string>& list, const EditedEntry& entry);

// Writes a checked definition over the list entries [first, behind) (a new one has both at the
// end of the list), with its survey in .ads, and reloads the lists. False when a file could not
// be written (the user has been told).
bool SaveDefinition(Session& session, const DefinitionInput& input, int first, int behind);

// The delete of the current entry of either tab; `index` -1 when none is chosen. Asks, rewrites
// and reloads. False when nothing was deleted.
bool DeleteDefinition(Session& session, int index);
bool DeleteNotPoint(Session& session, int index);
bool DeleteNotLine(Session& session, int index);

// The prompt of a definition's delete.
std::string DeletePrompt(const std::vector<std::string>& list, int index);

// frmMultiDelete: the list entries whose field 2 lies in [start, end] (both lines of an
// intersection), and the identifiers collected from them (at most 5000).
struct RangeMarks {
  std::vector<bool> marked;
  std::vector<std::string> ids;
};
RangeMarks MarkRange(const std::vector<std::string>& list, double start, double end);
// The .ads lines without those of the identifiers.
std::vector<std::string> AdsWithout(const std::vector<std::string>& adsLines, const std::vector<std::string>& ids);
bool DeleteRange(Session& session, double start, double end);

// frmNotWiz2: a new or edited point or segment (`index` -1 for a new one); the message and false
// when a field is empty.
inline constexpr const char* kMsgEnterPoint = "Enter Point ID";
inline constexpr const char* kMsgEnterToPoint = "Enter TO Point ID";
bool SaveNotPoint(Session& session, int index, const std::string& id);
bool SaveNotLine(Session& session, int index, const std::string& from, const std::string& to);

// The text under the second tab's lists for a chosen entry.
std::string NotPointCaption(const std::string& id);
std::string NotLineCaption(const std::string& entry);

}  // namespace tessel
