#pragma once
// The linking chain: a link record for every parcel in a section of the job's .cama
// (IdentifyCentroids, with .clot), Geocodes for the numbered surveys found in the legal texts
// (PreliminaryLink), Geocodes from the legal descriptions' tokens (TranslateLegalDescriptions),
// and the link file .mtc (WriteLinkFile), read back by LoadLinkFile. .phd collects the
// statistics of each run and is only ever appended to.

#include <string>

#include "model/session.h"

namespace tessel {

inline constexpr const char* kMsgImportCamaFirst = "you must first import the CAMA file";
inline constexpr const char* kMsgAlreadyLinked =
    "You have already performed preliminary linking.\r\nWould you like to load parcels instead?";
inline constexpr const char* kMsgDeleteBeforeRecompute = "You MUST delete your mtc & clot files prior to recomputing";
inline constexpr const char* kStatusIdentifying = "Identifying parcel centroids";
inline constexpr const char* kStatusPreliminary = "Performing preliminary link";
inline constexpr const char* kStatusTranslating = "Translating Legal Description";
inline constexpr const char* kStatusWritingMtc = "Writing .MTC file";

// The colours of the link records, as their texts hold them.
inline constexpr const char* kLinkRed = "255";
inline constexpr const char* kLinkGreen = "65280";
inline constexpr const char* kLinkYellow = "65535";
inline constexpr const char* kLinkBlue = "16711680";

// The failures that end a chain before anything is written: no .mtc, .clot and .phd as they
// were.
inline constexpr const char* kMsgNoLinkRecords =
    "No parcel of the job lies in a section of the CAMA file, so there is nothing to link. No .mtc was written.";
inline constexpr const char* kMsgTooManyCama =
    "The CAMA file holds more than 5000 lines, more than linking can hold. No .mtc was written.";
inline constexpr const char* kMsgTooManyLinks =
    "More than 5000 parcels lie in the sections of the CAMA file, more than linking can hold. No .mtc was written.";
// Followed by the line number and the field.
inline constexpr const char* kMsgBadSection =
    "The section in columns 7-8 of the CAMA file is not a number from 0 to 36 on line ";

// The canvas colour 0xRRGGBB of a link colour text (a blue-green-red number).
unsigned LinkCanvasColour(const std::string& colour);

// The chain's four steps, in order. Each gives false when the chain is to stop; the first has
// then told the user why and written nothing.
bool IdentifyCentroids(Session& session);
bool PreliminaryLink(Session& session);
bool TranslateLegalDescriptions(Session& session);
bool WriteLinkFile(Session& session);
// The whole chain; true when .mtc was written.
bool RunLinkChain(Session& session);

// Clears the tables and reads them back from .mtc and .cama. False (the tables empty) when
// .mtc cannot be read.
bool LoadLinkFile(Session& session);

// "Link Parcels with CAMA": with a .mtc present offers to load it, else runs the chain.
void LinkParcelsWithCama(Session& session);
// The status bar's word after the link was computed (`computed`) or loaded from .mtc: how many
// link records hold a Geocode, and the files written.
std::string CamaLinkNote(const Session& session, bool computed);

// Empties the link tables.
void ClearCamaVariables(Session& session);
// "Delete Old Cama": removes .clot and .mtc, then empties the tables; .phd and .cama stay.
void DeleteOldCama(Session& session);

// Appends lines, each with CR LF, to .phd, keeping its bytes; false when that failed (told).
bool AppendPhd(Session& session, const std::vector<std::string>& lines);

// Repaints the canvas when a viewer is attached.
void RedrawLinks(Session& session);

}  // namespace tessel
