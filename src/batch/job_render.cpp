#include "batch/job_render.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <cstdio>
#include <memory>

#include "batch/batch_session.h"
#include "model/layers.h"
#include "job/job_menus.h"
#include "paint/painter_canvas.h"
#include "viewer/tool_modes.h"

namespace tessel {

std::optional<std::string> LayerEntry(const std::string& name) {
  if (const LayerRow* layer = FindLayer(name)) return std::string(layer->menu);
  return std::nullopt;
}

namespace {

// Shows exactly the named layers, as if their View entries had been checked by hand before the
// job was opened (so nothing is painted yet).
void ShowOnly(Session& session, const std::vector<std::string>& entries) {
  Display* display = session.display;
  session.display = nullptr;
  session.checks = ViewChecks{};
  for (const std::string& entry : entries) ToggleLayer(session, entry);
  session.display = display;
}

bool IsPdf(const std::string& out) {
  return out.size() >= 4 && (out.compare(out.size() - 4, 4, ".pdf") == 0 || out.compare(out.size() - 4, 4, ".PDF") == 0);
}

}  // namespace

int RenderJob(const RenderOptions& options) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Standard error carries the load's messages, one a line: Qt's own notes stay out of it.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "tessel-batch: %s\n", qPrintable(text));
  });
  int argc = 1;
  char name[] = "tessel-batch";
  char* argv[] = {name, nullptr};
  QGuiApplication app(argc, argv);

  std::unique_ptr<QImage> image;
  std::unique_ptr<QPdfWriter> pdf;
  QPaintDevice* device = nullptr;
  const QString out = QString::fromLocal8Bit(options.out.c_str());
  if (IsPdf(options.out)) {
    // One page of the picture's shape, at 96 pixels to the inch like a screen.
    pdf = std::make_unique<QPdfWriter>(out);
    pdf->setResolution(96);
    pdf->setPageSize(QPageSize(QSizeF(options.width * 72.0 / 96, options.height * 72.0 / 96), QPageSize::Point));
    pdf->setPageMargins(QMarginsF(0, 0, 0, 0));
    device = pdf.get();
  } else {
    image = std::make_unique<QImage>(options.width, options.height, QImage::Format_RGB32);
    device = image.get();
  }

  PainterCanvas canvas(device);
  BatchSession batch(canvas, options.toolFolder);
  batch.Start();
  Session& session = batch.session();
  if (options.background) {
    session.config.BackgroundMode = static_cast<std::int16_t>(*options.background);
    session.canvas.SetColours(BackColour(*options.background), ForeColour(*options.background));
  }
  if (options.layers) ShowOnly(session, *options.layers);
  session.checks.mnuViewAllLabels = options.allLabels;

  batch.Open(options.def);
  // Ending the painting completes the image, and the PDF file with its one page.
  canvas.SetDevice(nullptr);
  for (const std::string& message : batch.Messages()) std::fprintf(stderr, "%s\n", message.c_str());
  batch.Close();

  const bool written = image ? image->save(out, "PNG") : QFileInfo(out).size() > 0;
  if (!written) {
    std::fprintf(stderr, "tessel-batch: cannot write %s\n", options.out.c_str());
    return 1;
  }
  return 0;
}

}  // namespace tessel
