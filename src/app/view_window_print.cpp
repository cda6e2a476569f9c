#include "app/view_window.h"

#include <QActionGroup>
#include <algorithm>
#include <tuple>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPrintDialog>
#include <QStatusBar>

#include "app/subsystem_forms.h"
#include "app/tool_log_dock.h"
#include "app/toolbar_icons.h"
#include "model/layers.h"
#include "job/ui/config_dialog.h"
#include "viewer/ui/reset_view_form.h"
#include "job/ui/job_forms.h"
#include "viewer/ui/selection_forms.h"
#include "job/job_menus.h"
#include "job/command_table.h"
#include "tools/export_points.h"
#include "job/reports.h"
#include "tools/user_tools.h"
#include "viewer/drawing.h"
#include "viewer/picking.h"
#include "job/load_sequence.h"
#include "viewer/view_transform.h"

namespace tessel {

bool ViewWindow::PrintOn(QPrinter& printer, std::string& reason) {
  Session& s = *session_;
  if (printer.outputFormat() == QPrinter::NativeFormat && printer.printerName().isEmpty()) {
    reason = "no printer is set up";
    return false;
  }
  if (printer.outputFormat() == QPrinter::PdfFormat && printer.outputFileName().isEmpty()) {
    reason = "no file is named for the PDF";
    return false;
  }
  // Paper is white: a dark screen is printed dark on light.
  if (s.config.BackgroundMode == 2) canvas_->SetColours(BackColour(1), ForeColour(1));
  const ScaleRect screen = CurrentScale(s);
  canvas_->PaintOn(&printer);
  // The page shows the view widened to its shape, at the printer's own resolution.
  int width = 0, height = 0;
  const bool paged = canvas_->PixelSize(width, height);
  if (paged) {
    const ScaleRect page = FitScaleToShape(screen, static_cast<double>(width) / height);
    SetScale(s, page.left, page.top, page.width, page.height);
    Redraw(s);
  }
  canvas_->EndPaintOn();
  const bool printed = paged && printer.printerState() != QPrinter::Error;
  if (!printed) reason = paged ? "the printer refused the page" : "the page has no size";
  if (s.config.BackgroundMode == 2) canvas_->SetColours(BackColour(2), ForeColour(2));
  SetScale(s, screen.left, screen.top, screen.width, screen.height);
  Redraw(s);
  return printed;
}

void ViewWindow::Print() {
  Session& s = *session_;
  std::string reason;
  if (!PrintOn(*printer_, reason)) {
    s.user.Message("Unable to print: " + reason + ".", Icon::Exclamation);
    // A printer left in error would refuse every later print and setup.
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return;
  }
  s.user.Message("Printing Complete.", Icon::Information);
}

void ViewWindow::PrintToPdf() {
  Session& s = *session_;
  FileRequest request;
  request.title = "Print to PDF";
  request.filter = "PDF file (*.pdf)|*.pdf";
  request.initialFolder = s.JobFolder.empty() ? s.CurrentFolder : s.JobFolder;
  request.defaultExtension = "pdf";
  request.save = true;
  request.overwritePrompt = true;
  request.fileName = s.JobName.empty() ? std::string("Tessel.pdf") : s.JobName + ".pdf";
  const auto choice = s.user.ChooseFile(request);
  if (!choice) return;
  QPrinter pdf(QPrinter::HighResolution);
  pdf.setOutputFormat(QPrinter::PdfFormat);
  pdf.setOutputFileName(QString::fromLocal8Bit(choice->fileName.c_str()));
  pdf.setPageLayout(printer_->pageLayout());
  std::string reason;
  if (!PrintOn(pdf, reason)) {
    s.user.Message("Unable to print: " + reason + ".", Icon::Exclamation);
    return;
  }
  s.user.Message("Printing Complete.", Icon::Information);
}

}  // namespace tessel
