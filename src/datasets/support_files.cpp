#include "datasets/support_files.h"

#include <cstring>

#include "model/fault.h"
#include "model/paths.h"
#include "model/resources.h"
#include "model/text_file.h"

namespace tessel {

std::string SupportFileText(const char* name) {
  for (const EmbeddedText& text : EmbeddedTexts()) {
    if (std::strcmp(text.name, name) == 0) return std::string(text.bytes) + "\r\n";
  }
  return "\r\n";
}

void WriteSupportFiles(Session& session) {
  // The four stand in one folder: the first that cannot be written is told, and the rest are
  // not tried.
  for (const char* name : kSupportFiles) {
    if (!WriteFileOrTell(session.user, session.JobFile(name), SupportFileText(name), Durability::Scratch)) return;
  }
}

void RemoveSupportFiles(Session& session) {
  if (session.JobFolder.empty() || session.JobInToolFolder()) return;
  for (const char* name : {"NAD27.CON", "NAD83.CON", "TABLE.DAT", "ZONE.DAT"}) {
    DeleteAnyCase(session.JobFile(name));
  }
}

}  // namespace tessel
