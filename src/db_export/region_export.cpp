#include "db_export/region_export.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <thread>

#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"
#include "regions/how_file.h"

namespace fs = std::filesystem;

namespace tessel {

bool RegionTownships(const std::string& regionDef, std::vector<RegionTownship>& townships, std::string& error) {
  townships.clear();
  const fs::path def = fs::absolute(NativePath(regionDef));
  const std::string title = PathBytes(def.filename());
  const std::string name = title.substr(0, title.find('.'));
  std::string folder = PathBytes(def.parent_path());
  if (folder.empty() || folder.back() != fs::path::preferred_separator) folder += fs::path::preferred_separator;
  const std::string how = ResolveCase(folder + name + ".how");
  std::vector<std::string> rows;
  if (!ReadHowListing(how, rows)) {
    error = "no region listing: " + how;
    return false;
  }
  for (const std::string& raw : rows) {
    const std::string row = Trim(raw);
    if (IsRegionKeyword(row)) continue;
    const std::string project = RowHasFolder(row) ? row : folder + row;
    townships.push_back({RowProjectName(row), ResolveCase(project + ".def")});
  }
  if (townships.empty()) {
    error = how + " lists no township.";
    return false;
  }
  return true;
}

bool JobFilesReadable(const std::string& def, std::string& error) {
  const fs::path path = NativePath(def);
  const std::string stem = Upper(PathBytes(path.stem()));
  std::error_code ec;
  fs::directory_iterator it(path.parent_path().empty() ? fs::path(".") : path.parent_path(), ec);
  if (ec) {
    error = "the folder of " + def + " cannot be read: " + ec.message();
    return false;
  }
  for (const fs::directory_entry& entry : it) {
    const fs::path& file = entry.path();
    if (Upper(PathBytes(file.stem())) != stem || file.extension().empty()) continue;
    std::ifstream in(file, std::ios::binary);
    if (!entry.is_regular_file(ec) || !in) {
      error = PathBytes(file) + " cannot be read";
      return false;
    }
  }
  return true;
}

namespace {

// What a writer hands back: the township's place in the listing and its report.
struct Written {
  std::size_t index = 0;
  GisExportReport report;
};

}  // namespace

RegionExportResult ExportRegion(const std::vector<RegionTownship>& townships, const TownshipPrepare& prepare,
                                const TownshipWrite& write, const std::function<void(const std::string&)>& line,
                                int writers) {
  RegionExportResult result;
  const std::string total = std::to_string(townships.size());
  auto tell = [&](const Written& done) {
    const RegionTownship& township = townships[done.index];
    std::string head(1, '[');
    head += std::to_string(done.index + 1) + "/" + total + "] " + township.name + ": ";
    if (!done.report.ok) {
      result.failed.push_back(township.name);
      line(head + "FAILED: " + done.report.error);
      return;
    }
    std::size_t features = 0;
    for (const auto& [layer, count] : done.report.counts) features += count;
    result.features += features;
    result.exported.push_back(township.name);
    line(head + std::to_string(features) + " features");
  };

  // Townships read and waiting for a writer, and the writes done and waiting to be told. At most
  // one township a writer waits, so that no more than that many are held in memory.
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::pair<std::size_t, PreparedTownship>> waiting;
  std::deque<Written> done;
  bool reading = true;
  const std::size_t threads = static_cast<std::size_t>(std::clamp(writers, 1, 8));
  std::vector<std::thread> pool;
  for (std::size_t t = 0; t < threads; ++t) {
    pool.emplace_back([&] {
      while (true) {
        std::pair<std::size_t, PreparedTownship> job;
        {
          std::unique_lock lock(mutex);
          changed.wait(lock, [&] { return !waiting.empty() || !reading; });
          if (waiting.empty()) return;
          job = std::move(waiting.front());
          waiting.pop_front();
          changed.notify_all();
        }
        Written w{job.first, std::move(job.second.report)};
        try {
          const GisWriteResult written = write(job.second);
          FinishGisExport(job.second.plan, written, w.report);
        } catch (const std::exception& fault) {
          w.report.ok = false;
          w.report.error = fault.what();
        }
        std::lock_guard lock(mutex);
        done.push_back(std::move(w));
        changed.notify_all();
      }
    });
  }
  auto tellDone = [&](std::unique_lock<std::mutex>& lock) {
    while (!done.empty()) {
      Written w = std::move(done.front());
      done.pop_front();
      lock.unlock();
      tell(w);
      lock.lock();
    }
  };
  for (std::size_t k = 0; k < townships.size(); ++k) {
    PreparedTownship prepared;
    try {
      prepared = prepare(townships[k]);
    } catch (const std::exception& fault) {
      prepared.ok = false;
      prepared.report.error = fault.what();
    }
    std::unique_lock lock(mutex);
    tellDone(lock);
    if (!prepared.ok) {
      lock.unlock();
      tell(Written{k, std::move(prepared.report)});
      continue;
    }
    changed.wait(lock, [&] { return waiting.size() < threads; });
    waiting.emplace_back(k, std::move(prepared));
    changed.notify_all();
  }
  {
    std::unique_lock lock(mutex);
    reading = false;
    changed.notify_all();
  }
  for (std::thread& t : pool) t.join();
  std::unique_lock lock(mutex);
  tellDone(lock);
  lock.unlock();

  std::string summary = std::to_string(result.exported.size()) + " of " + total + " townships exported, " +
                        std::to_string(result.features) + " features";
  if (!result.failed.empty()) {
    summary += "; failed:";
    for (const std::string& name : result.failed) summary += " " + name;
  }
  line(summary);
  return result;
}

}  // namespace tessel
