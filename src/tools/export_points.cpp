#include "tools/export_points.h"

#include <exception>
#include <filesystem>
#include <vector>

#include "model/paths.h"
#include "model/platform.h"
#include "model/text.h"
#include "model/text_file.h"

namespace tessel {

namespace {

constexpr int kLongestAligned = 12;

}  // namespace

std::string ExportLine(const std::string& id, double x, double y, ExportAlignment& alignment) {
  // "########.000" and "#######.000": no digit before the point below 1.
  const std::string xText = Trim(FormatPicture(x, 3, 0));
  const std::string yText = Trim(FormatPicture(y, 3, 0));
  const int xLength = static_cast<int>(xText.size());
  const int yLength = static_cast<int>(yText.size());
  if (xLength <= kLongestAligned) alignment.xColumn = 32 - xLength;
  if (yLength <= kLongestAligned) alignment.yBlanks = 14 - yLength;

  std::string line = " G" + Trim(id);
  const auto xStart = static_cast<std::size_t>(alignment.xColumn - 1);
  if (line.size() < xStart) line.resize(xStart, ' ');
  line += xText;
  line.append(static_cast<std::size_t>(alignment.yBlanks), ' ');
  line += yText;
  return line;
}

std::string ExportLine(const std::string& id, double x, double y) {
  ExportAlignment fresh;
  return ExportLine(id, x, y, fresh);
}

std::string ReplaceDefQuestion(const std::string& defPath) {
  return defPath + " already exists. Replace it with the project definition of this job?";
}

void ExportSelectedPoints(Session& session) {
  session.user.Status(2, "Selected points written to a .cor file");
  const Selection& sel = session.selection;
  if (sel.PointList.empty()) {
    session.user.Message("Select points first, then choose Export");
    return;
  }
  FileRequest request;
  request.filter = "Cor files *.cor)|*.cor";
  request.defaultExtension = ".cor";
  request.save = true;
  request.overwritePrompt = true;
  request.initialFolder = session.JobFolder;
  const auto choice = session.user.ChooseFile(request);
  if (!choice) return;
  const std::string& fileName = choice->fileName;
  if (fileName.size() < 4) return;
  const std::string stem = fileName.substr(0, fileName.size() - 4);
  if (Trim(stem) == Trim(session.JobBase)) {
    session.user.Message("You MUST enter a different name for the exported file.", Icon::Stop);
    return;
  }
  try {
    std::vector<std::string> lines;
    ExportAlignment alignment;
    for (std::size_t j = 0; j < sel.PointList.size(); ++j) {
      const int p = sel.SelectedPoints.get(static_cast<int>(j));
      lines.push_back(ExportLine(session.points.PointIds(p), session.points.PointX(p), session.points.PointY(p),
                                 alignment));
    }
    WriteFileBytes(fileName, JoinCrLf(lines));
    // The exported set opens as a job of its own. A .def already there may be another job's: it
    // is replaced only when the user agrees.
    const std::string def = stem + ".def";
    const std::string source = session.DatasetPath(".def");
    if (FileExistsAnyCase(def)) {
      std::error_code ec;
      // The job's own .def, named in another case, is already what the copy would make.
      if (std::filesystem::equivalent(NativePath(ResolveCase(def)), NativePath(ResolveCase(source)), ec)) return;
      if (session.user.Message(ReplaceDefQuestion(ResolveCase(def)), Icon::Question, Buttons::YesNo) != Answer::Yes) {
        return;
      }
    }
    CopyFileReplacing(source, def);
  } catch (const std::exception& fault) {
    // A file that cannot be written or copied ends the export, and the user is told which.
    TellFileFault(session.user, fault);
  }
}

}  // namespace tessel
