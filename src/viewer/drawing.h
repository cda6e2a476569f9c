#pragma once
// The refresh: every shown layer painted from the stores in one pass, in a fixed order, so that
// a later layer covers an earlier one. What is shown is held in the View menu's check marks.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgLoadPolygons = "You must load Polygons before viewing.";

inline constexpr unsigned kYellow = 0xFFFF00;
inline constexpr unsigned kRed = 0xFF0000;
inline constexpr unsigned kBlue = 0x0000FF;
inline constexpr unsigned kGreen = 0x00FF00;

// The status bar field after the four panels that tells how many labels a refresh left out
// because they would have overprinted others of their layer.
inline constexpr int kLabelsPanel = 5;
// "n labels hidden", or empty for none.
std::string LabelsHiddenText(int hidden);

void RefreshView(Session& session);
// View > "Draw All Labels": on, every label is drawn as it falls; off, a label that would lie
// over one already drawn in its layer is left out. Refreshes an open job.
void DrawAllLabels(Session& session, bool on);
// Clear, zoom extents, then the refresh: the first drawing of a job.
void RefreshViewAfterExtents(Session& session);

// The colour of a parcel from the type tag in columns 11 to 13 of its attribute line.
unsigned ParcelColour(const std::string& parcelLine, int backgroundMode);
// The colour number of a survey's record lines: the palette in survey order, with the colour
// that would vanish on the background swapped.
int SurveyColourNumber(int survey, int backgroundMode);
// "Detailed" label of a parcel: section and location, type and number, suffix, acreage.
std::string ParcelDetailText(const std::string& parcelLine);

// Marks a picked record line: wide yellow, then thin in LsaColor taken as a direct colour.
void MarkRawLine(Session& session, int line);

// Outlines one parcel's ring of 7-column point fields.
void DrawParcelRing(Session& session, const std::string& ring);
// The same with another pen width.
void DrawParcelRing(Session& session, const std::string& ring, int penWidth);

// The link records of the CAMA linking, one wide dot each in its link colour.
void DrawLinkPoints(Session& session);

// The viewer as the load sequence sees it.
class Viewer : public Display {
 public:
  explicit Viewer(Session& session) : session_(session) {}
  void RefreshViewAfterExtents() override;
  void RefreshView() override;
  void ClearCanvas() override;

 private:
  Session& session_;
};

}  // namespace tessel
