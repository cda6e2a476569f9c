#include "cama/link_file.h"

#include <utility>

#include "model/fault.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

bool IsLinkedGeocode(const std::string& geocode) { return geocode.size() == 17; }

std::vector<LinkFileRecord> ReadLinkRecords(std::string bytes, int bound) {
  std::vector<LinkFileRecord> records;
  LineReader in = LineReader::FromText(std::move(bytes));
  try {
    if (!in.Eof()) in.ReadLine();
    while (!in.Eof() && static_cast<int>(records.size()) < bound) {
      const std::string a = in.ReadLine();
      const std::string b = in.Eof() ? std::string() : in.ReadLine();
      const std::string code = in.Eof() ? std::string() : in.ReadLine();
      if (!in.Eof()) in.ReadLine();
      LinkFileRecord& r = records.emplace_back();
      r.complete = false;
      r.x = Val(Trim(Mid(a, 25, 14)));
      r.y = Val(Trim(Mid(a, 40, 14)));
      r.areaPoint = Trim(Mid(a, 25));
      r.chain = Mid(b, 16);
      r.geocode = Trim(Mid(code, 10));
      r.complete = true;
    }
  } catch (const RuntimeFault&) {
  }
  return records;
}

}  // namespace tessel
