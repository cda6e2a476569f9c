#include "calculations/note_file.h"

#include "model/fault.h"
#include "model/paths.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {
// Empty lines do not count in .not.
std::string NextLine(LineReader& in) {
  std::string line;
  do {
    line = in.ReadLine();
  } while (Trim(line).empty());
  return line;
}
}  // namespace

void ReadNotes(Session& session) {
  NoteLineStore& store = session.notes;
  store.NoteLineCount = 0;
  const std::string path = session.DatasetPath(".not");
  if (!FileExistsAnyCase(path)) return;
  try {
    LineReader in(path);
    // The points section: a count, then one identifier a line.
    const double pointCount = Val(NextLine(in));
    for (double k = 1; k <= pointCount; ++k) NextLine(in);
    // The segments: a count, then "from to" in columns 1-6 and 8-13.
    const double segmentCount = Val(NextLine(in));
    for (int k = 1; k <= segmentCount; ++k) {
      const std::string line = NextLine(in);
      LineEnds& ends = store.NoteLineEnds.at(k);
      ends.from = static_cast<std::int16_t>(session.points.Find(TrimView(MidView(line, 1, 6))));
      ends.to = static_cast<std::int16_t>(session.points.Find(TrimView(MidView(line, 8, 6))));
      store.NoteLineCount = static_cast<std::int16_t>(k);
    }
  } catch (const RuntimeFault&) {
    // Keep what was read.
  }
}

}  // namespace tessel
