// Times a full refresh of every layer of a job painted with QPainter into a window-sized image,
// as the desktop canvas paints it, each layer alone, and a frame of the wheel's preview.
//
//   bench-refresh PATH.def [ROUNDS] [WIDTHxHEIGHT]

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "paint/painter_canvas.h"
#include "job/load_sequence.h"
#include "model/layers.h"
#include "model/recording_ports.h"
#include "viewer/drawing.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: bench-refresh PATH.def [ROUNDS] [WIDTHxHEIGHT]\n");
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  const fs::path def = fs::absolute(argv[1]);
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 10;
  int width = 1280, height = 960;
  if (argc > 3) std::sscanf(argv[3], "%dx%d", &width, &height);

  QImage image(width, height, QImage::Format_RGB32);
  tessel::PainterCanvas canvas(&image);
  tessel::RecordingUserPort user;
  tessel::RecordingProcessPort processes;
  tessel::Session session(user, canvas, processes);
  tessel::Viewer viewer(session);
  session.display = &viewer;
  const fs::path tools = fs::temp_directory_path() / "tessel-bench-tools";
  fs::create_directories(tools);
  session.ToolFolder = tools.string();
  tessel::MainFormLoad(session);
  tessel::OpenJob(session, def.string(), def.filename().string());

  // Every layer, with the full parcel labels and the point names.
  tessel::ViewChecks& c = session.checks;
  c.mnuOptionsControl = c.mnuViewPoints = c.mnuOptionsID = c.mnuOptionsLinesLXN = c.mnuOptionsLinesLSA = true;
  c.mnuViewLinesRaw = c.mnuOptionsMultiAtt = c.mnuOptionsParcelFull = c.mnuViewRPO = true;

  std::vector<double> times;
  for (int r = 0; r < rounds; ++r) {
    const auto t0 = std::chrono::steady_clock::now();
    tessel::RefreshView(session);
    canvas.Flush();
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count());
  }
  std::sort(times.begin(), times.end());
  const double median = times[times.size() / 2];
  // A frame of a wheel zoom's preview: the last picture drawn scaled about a point, as the canvas
  // shows it until the refresh.
  QImage frame(width, height, QImage::Format_RGB32);
  std::vector<double> previews;
  for (int r = 0; r < rounds; ++r) {
    const auto t0 = std::chrono::steady_clock::now();
    QPainter painter(&frame);
    painter.fillRect(frame.rect(), Qt::white);
    painter.setTransform(QTransform(1.25, 0, 0, 1.25, -0.25 * width * 0.3, -0.25 * height * 0.6));
    painter.drawImage(0, 0, image);
    painter.end();
    previews.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count());
  }
  std::sort(previews.begin(), previews.end());
  const double preview = previews[previews.size() / 2];
  // Each layer alone, the clear included.
  const tessel::ViewChecks all = c;
  std::vector<std::pair<const char*, double>> layers;
  for (const tessel::LayerRow& row : tessel::kLayers) {
    if (!(all.*row.check)) continue;
    c = tessel::ViewChecks{};
    c.*row.check = true;
    if (row.check == &tessel::ViewChecks::mnuOptionsID) c.mnuViewPoints = true;
    std::vector<double> alone;
    for (int r = 0; r < rounds; ++r) {
      const auto t0 = std::chrono::steady_clock::now();
      tessel::RefreshView(session);
      canvas.Flush();
      alone.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count());
    }
    std::sort(alone.begin(), alone.end());
    layers.emplace_back(row.caption, alone[alone.size() / 2]);
  }
  c = all;
  std::printf("job: %s, %d points, %d network lines, %d chain segments, %d record lines, %d parcels, %d polygons\n",
              def.string().c_str(), session.points.PointCount(), session.lsa.LsaLineCount - 1,
              session.lxn.LxnSegmentCount, session.raw.RawLineCount, session.parcels.ParcelCount,
              session.polygons.RawPolygonCount);
  std::printf("full refresh of every layer at %dx%d: %.1f ms (median of %d)\n", width, height, median, rounds);
  std::printf("wheel preview from the last picture: %.2f ms, %.0f times less than the refresh\n", preview,
              median / preview);
  for (const auto& [caption, ms] : layers) std::printf("  %-40s %7.1f ms\n", caption, ms);
  // One frame at 60 per second.
  const bool ok = median < 16.0;
  std::printf("%s\n", ok ? "within target (under 16 ms)" : "OUTSIDE TARGET");
  tessel::FileClose(session);
  return ok ? 0 : 1;
}
