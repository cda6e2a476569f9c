// One fuzz target for one reader (chosen by TESSEL_FUZZ_TARGET from targets.def): the input
// becomes the reader's file in a copy of the sample job, the reader runs on a fresh session and,
// for a dataset, the job is drawn on a canvas that keeps nothing. Built with libFuzzer under
// clang, or with driver.cpp, which replays files and folders of inputs.

#include <cstddef>
#include <cstdlib>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "adjustment/least_squares.h"
#include "archives/apd_import.h"
#include "calculations/calculation_files.h"
#include "calculations/computing.h"
#include "calculations/note_file.h"
#include "cama/cama_import.h"
#include "cama/link_chain.h"
#include "cama/manual_link.h"
#include "datasets/coordinate_files.h"
#include "datasets/identity.h"
#include "datasets/line_files.h"
#include "model/config.h"
#include "model/dialog_memory.h"
#include "model/fault.h"
#include "model/platform.h"
#include "model/recording_ports.h"
#include "model/session.h"
#include "model/text_file.h"
#include "parcels/centroids.h"
#include "parcels/parcel_file.h"
#include "parcels/parcel_listings.h"
#include "parcels/raw_polygons.h"
#include "regions/how_file.h"
#include "regions/region_preview.h"
#include "subdivision/irr_file.h"
#include "surveys/raw_records.h"
#include "surveys/survey_editor.h"
#include "surveys/survey_file.h"
#include "tools/launching.h"
#include "viewer/drawing.h"
#include "viewer/view_transform.h"

namespace fs = std::filesystem;

namespace tessel::fuzz {
namespace {

constexpr const char* kJob = "T12NR04E";

std::string TargetPath(const Session& s);

// The input as the reader of a whole file takes it.
std::string InputBytes(const Session& s) {
  std::string bytes;
  (void)ReadFileBytes(TargetPath(s), bytes);
  return bytes;
}

// Every section block of .irr, in the order of their headers, into the section store.
void ReadEveryIrrBlock(Session& s) {
  const std::string text = InputBytes(s);
  for (const int section : IrrBlockSections(text)) (void)ReadIrrBlock(text, section, s.sectionDefinitions);
}

// The rows of a listing; each bare project name is previewed from the job's folder, the sample
// job for its own name. Rows with a folder could name any file on the machine and are left out.
void PreviewHowListing(Session& s) {
  s.RegionJobFolder = s.JobFolder;
  for (const std::string& row : ParseHowListing(InputBytes(s))) {
    if (!IsRegionKeyword(row) && !RowHasFolder(row)) LoadPreviewProject(s, ProjectPath(s, row));
  }
}

// The APD import's reading of .raw: the lines split off and turned into the .add lines.
void BuildAddFromRaw(Session& s) {
  const ApdSplit split = SplitApdRaw(TextLines(InputBytes(s)));
  (void)BuildAddLines(split.apd, [] { return true; });
}

// What the survey editor reads of every survey: the comment label, the loaded form and the block
// a save would write.
void LoadEverySurvey(Session& s) {
  for (int entry = 0; entry < s.surveys.SurveyCount; ++entry) {
    (void)SurveyCommentLabel(s, entry);
    SidForm form;
    LoadSidForm(s, entry, form);
    form.ticked.fill(true);
    (void)SidBlockText(s, form);
  }
}

// The calculation lists read, and every entry described, taken into the editor and written
// again as the editor would.
void ReadCalculationLists(Session& s) {
  LoadCalculationLists(s);
  const std::vector<std::string>& list = s.calculations.Definitions;
  for (int k = 0; k < static_cast<int>(list.size()); ++k) {
    (void)Describe(s, list, k);
    const DefinitionSpan span = SpanOf(list, k);
    DefinitionInput input = InputFromLines(s, {list.begin() + span.first, list.begin() + span.behind});
    (void)CheckDefinition(input);
    (void)DefinitionLines(input);
    (void)DeletePrompt(list, k);
  }
  (void)MarkRange(list, kRangeStartDefault, kRangeEndDefault);
}

// The status of a few definitions of every type from the job's .sub.
void ReadSubStatus(Session& s) {
  for (const char* entry : {" 1 100200", " 2 950100", " 3 100100 100200", ""}) (void)DefinitionStatus(s, entry);
}

struct Target {
  std::string_view file;
  void (*steps)(Session& s);
};

#define FUZZ_TARGET(name, file, ...) \
  constexpr Target name{file, [](Session & s) { __VA_ARGS__; }};
#include "targets.def"
#undef FUZZ_TARGET

constexpr const Target& kTarget = TESSEL_FUZZ_TARGET;

// A folder of its own for this process: job/ holds a copy of the sample job, tool/ is the
// program's folder.
const fs::path& Root() {
  static const fs::path root = [] {
    std::error_code ec;
    fs::path base = fs::is_directory("/dev/shm", ec) ? fs::path("/dev/shm") : fs::temp_directory_path();
    fs::path dir = base / ("tessel-fuzz-" + std::to_string(tessel::ProcessId()));
    fs::create_directories(dir / "job");
    fs::create_directories(dir / "tool");
    std::atexit([] {
      std::error_code ignored;
      fs::remove_all(Root(), ignored);
    });
    for (const auto& entry : fs::directory_iterator(TESSEL_SAMPLES_DIR)) {
      if (entry.path().filename().string().starts_with(kJob)) {
        fs::copy_file(entry.path(), dir / "job" / entry.path().filename(), fs::copy_options::overwrite_existing);
      }
    }
    return dir;
  }();
  return root;
}

std::string TargetPath(const Session& s) {
  if (kTarget.file.starts_with('@')) return s.ToolFile(kTarget.file.substr(1));
  return s.JobBase + std::string(kTarget.file);
}

}  // namespace

void RunOne(const std::uint8_t* data, std::size_t size) {
  RecordingUserPort user;
  NullCanvas canvas;
  RecordingProcessPort processes;
  Session s(user, canvas, processes);
  const std::string sep(1, static_cast<char>(fs::path::preferred_separator));
  s.ToolFolder = (Root() / "tool").string();
  s.JobFolder = (Root() / "job").string() + sep;
  s.JobBase = s.JobFolder + kJob;
  s.JobName = kJob;
  s.CurrentFolder = s.JobFolder;
  WriteFileBytes(TargetPath(s), std::string_view(reinterpret_cast<const char*>(data), size));
  // A run-time fault is how a reader ends on a bad file, and its caller traps it as the load
  // does; anything else escaping is a fault of the reader.
  try {
    kTarget.steps(s);
  } catch (const RuntimeFault&) {
  }
  if (!kTarget.file.starts_with('@')) {
    Viewer viewer(s);
    s.display = &viewer;
    // Every layer but the assessor's links, with names and full parcel labels.
    ViewChecks& c = s.checks;
    c.mnuOptionsControl = c.mnuViewPoints = c.mnuOptionsID = c.mnuOptionsLinesLXN = c.mnuOptionsLinesLSA = true;
    c.mnuViewLinesRaw = c.mnuOptionsMultiAtt = c.mnuOptionsParcel = c.mnuOptionsParcelFull = c.mnuViewRPO = true;
    viewer.RefreshViewAfterExtents();
  }
}

}  // namespace tessel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tessel::fuzz::RunOne(data, size);
  return 0;
}
