#pragma once
// The main window `View`: menus, toolbar, canvas and the four-panel status bar, and the session
// they drive.

#include <QLabel>
#include <QMainWindow>
#include <QPrinter>
#include <QToolBar>
#include <array>
#include <memory>

#include "app/canvas_widget.h"
#include "app/qt_process_port.h"
#include "app/qt_user_port.h"
#include "model/session.h"
#include "viewer/drawing.h"
#include "viewer/tool_modes.h"

namespace tessel {

class ViewWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `toolFolder`: the program's folder, where Tessel.cfg, Tessel.hst and the tools stand.
  explicit ViewWindow(const QString& toolFolder, QWidget* parent = nullptr);
  ~ViewWindow() override;

  // The main form's load: configuration, tool buttons, View options, menus, status texts.
  void Load();
  // Where the window opens: where the user left it, or the first time most of its screen. The
  // place is kept in Tessel's own file in the tool folder, written when the program ends.
  void PlaceOnScreen();

  Session& session() { return *session_; }
  CanvasWidget& canvas() { return *canvas_; }
  // The printer of "Print Setup" and "Print".
  QPrinter& printer() { return *printer_; }
  // "Print": the canvas on paper, black on white.
  void Print();
  // "Print to PDF...": the same picture into a PDF file chosen by the user.
  void PrintToPdf();
  // The present view drawn on `printer`'s page at its own resolution, the view widened to the
  // page's shape; false with the reason when the print could not start.
  bool PrintOn(QPrinter& printer, std::string& reason);
  // The Tool Log window.
  class ToolLogDock& toolLog() { return *toolLog_; }
  // The Legend window.
  class LegendDock& legend() { return *legend_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString PlaceFile() const;
  void BuildMenus();
  // File Open after its job dialog: the job read beside the window, which keeps its last picture
  // until the job is drawn. A half-read job is no job, so the load has no Cancel.
  void OpenChosenJob();
  void BuildPopup();
  void BuildToolBar();
  void BuildStatusBar();
  QAction* AddEntry(QMenu* menu, const char* name, const QString& caption);
  QAction* AddKey(const char* name, const QString& text, const QString& tip);
  QAction* AddCheck(QMenu* menu, const char* name, const QString& caption);
  void ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                 const std::vector<std::string>& hidden);
  void AddCommandRows(QMenu* menu);
  void ShowCursorPosition(QPointF world);
  // The window keeps the shape of the view: the canvas 1.33333 times as wide as high.
  void KeepCanvasShape();
  // The canvas took a new size: the view fitted to it and the layers painted, or, while long
  // work has the session, once it has ended.
  void CanvasResized();
  // Whether the drag under way is a drag pan of the zoom tool.
  bool PanDragging() const;

  std::array<QLabel*, 4> panels_{};
  CanvasWidget* canvas_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  QMenu* popup_ = nullptr;
  std::unique_ptr<QtUserPort> user_;
  std::unique_ptr<QtProcessPort> processes_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<Viewer> viewer_;
  // The viewer as the session sees it: long work on a worker thread paints through it on the
  // interface thread.
  std::unique_ptr<Display> display_;
  bool redrawAfterWork_ = false;
  DragState drag_;
  std::unique_ptr<QPrinter> printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  class ToolLogDock* toolLog_ = nullptr;
  class NoticeBar* notices_ = nullptr;
  class LegendDock* legend_ = nullptr;
  QLabel* coordinates_ = nullptr;
  QLabel* hiddenLabels_ = nullptr;
  QPointF pressPixel_;
  bool exited_ = false;
  bool shaping_ = false;
};

}  // namespace tessel
