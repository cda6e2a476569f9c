#include "model/selection_checks.h"

namespace tessel {

std::optional<std::vector<int>> SelectedParcelIndexes(Session& session) {
  std::vector<int> indexes;
  for (const ParcelPick& pick : session.selection.ParcelPicks()) {
    if (pick.kind != PickKind::Parcel) {
      session.user.Message(kMsgSelectionHoldsLinks, Icon::Exclamation);
      return std::nullopt;
    }
    if (pick.reading != session.parcels.Reading || pick.index < 1 || pick.index > session.parcels.ParcelCount) {
      session.user.Message(kMsgParcelsReadAgain, Icon::Exclamation);
      return std::nullopt;
    }
    indexes.push_back(pick.index);
  }
  return indexes;
}

int LinkRecordOfRow(const Session& session, int row) {
  const auto& picks = session.selection.ParcelPicks();
  if (row < 0 || row >= static_cast<int>(picks.size())) return 0;
  const ParcelPick& pick = picks[static_cast<std::size_t>(row)];
  if (pick.kind != PickKind::LinkRecord || pick.reading != session.cama.LinkReading) return 0;
  return pick.index >= 1 && pick.index <= session.cama.LinkCount ? pick.index : 0;
}

int SelectedLinkRecord(Session& session, int row) {
  const auto& picks = session.selection.ParcelPicks();
  if (row < 0 || row >= static_cast<int>(picks.size())) return 0;
  const int record = LinkRecordOfRow(session, row);
  if (record != 0) return record;
  const bool parcel = picks[static_cast<std::size_t>(row)].kind == PickKind::Parcel;
  session.user.Message(parcel ? kMsgRowHoldsParcel : kMsgLinksReadAgain, Icon::Exclamation);
  return 0;
}

}  // namespace tessel
