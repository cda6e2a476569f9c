#include "app/view_window.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPrintDialog>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>
#include <tuple>

#include "app/legend_dock.h"
#include "app/notice_bar.h"
#include "app/subsystem_forms.h"
#include "app/tool_log_dock.h"
#include "app/toolbar_icons.h"
#include "forms/ui/interface_thread.h"
#include "forms/ui/long_work.h"
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

namespace {

// The viewer for the session: a refresh asked from long work on a worker thread is painted on
// the interface thread, which alone paints the canvas, while the work waits.
class InterfaceDisplay : public Display {
 public:
  InterfaceDisplay(QObject& window, Display& viewer) : window_(window), viewer_(viewer) {}
  void RefreshViewAfterExtents() override {
    OnInterfaceThread(window_, [this] { viewer_.RefreshViewAfterExtents(); });
  }
  void RefreshView() override {
    OnInterfaceThread(window_, [this] { viewer_.RefreshView(); });
  }
  void ClearCanvas() override {
    OnInterfaceThread(window_, [this] { viewer_.ClearCanvas(); });
  }

 private:
  QObject& window_;
  Display& viewer_;
};

}  // namespace

ViewWindow::ViewWindow(const QString& toolFolder, QWidget* parent) : QMainWindow(parent) {
  setObjectName(QStringLiteral("View"));
  setWindowTitle(QStringLiteral("Tessel"));
  // The notice bar stands over the canvas, which takes the rest of the window.
  auto* centre = new QWidget(this);
  auto* column = new QVBoxLayout(centre);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  notices_ = new NoticeBar(centre);
  column->addWidget(notices_);
  canvas_ = new CanvasWidget(centre);
  column->addWidget(canvas_, 1);
  setCentralWidget(centre);
  BuildStatusBar();

  user_ = std::make_unique<QtUserPort>(*this, std::array<QLabel*, 5>{panels_[0], panels_[1], panels_[2], panels_[3], hiddenLabels_});
  user_->SetPopupHandler([this](const std::string& menu, const std::vector<std::string>& visible,
                                const std::vector<std::string>& hidden) { ShowPopup(menu, visible, hidden); });
  processes_ = std::make_unique<QtProcessPort>(*this);
  session_ = std::make_unique<Session>(*user_, *canvas_, *processes_);
  processes_->Attach(session_.get());
  toolLog_ = new ToolLogDock(session_->toolLog, this);
  addDockWidget(Qt::BottomDockWidgetArea, toolLog_);
  toolLog_->hide();
  connect(notices_, &NoticeBar::toolLogAsked, toolLog_, [this] {
    toolLog_->show();
    toolLog_->raise();
  });
  processes_->OnLogged([this](const ToolLogEntry& entry) {
    toolLog_->Append(entry);
    const std::string notice = session_->toolLog.NoticeFor(entry);
    if (!notice.empty()) notices_->Add(QString::fromLocal8Bit(notice.c_str()));
  });
  legend_ = new LegendDock(*session_, this);
  addDockWidget(Qt::RightDockWidgetArea, legend_);
  // Hidden until the window is placed (PlaceOnScreen shows it as it was left, and the first time);
  // the window keeps the canvas in the view's shape, docks or not.
  legend_->hide();
  viewer_ = std::make_unique<Viewer>(*session_);
  display_ = std::make_unique<InterfaceDisplay>(*this, *viewer_);
  session_->display = display_.get();
  session_->ToolFolder = QDir::toNativeSeparators(toolFolder).toLocal8Bit().toStdString();
  session_->CurrentFolder = session_->ToolFolder;

  new SelectedPointsForm(*session_, this);
  new SelectedParcelsForm(*session_, this);
  new SelectedLinesForm(*session_, this);
  new ReportForm(this);
  new ToolboxForm(*session_, this);
  new Wizard2Form(this);
  BuildMenus();
  BuildPopup();
  BuildToolBar();
  // After the popups, which the forms extend too.
  InstallSubsystemForms(*this, *session_);
  // The legend greys the rows of a layer switched off.
  for (const LayerRow& layer : kLayers) {
    if (auto* entry = findChild<QAction*>(QString::fromLatin1(layer.menu))) {
      connect(entry, &QAction::toggled, legend_, &LegendDock::Refill);
    }
  }
  if (auto* cama = findChild<QAction*>(QStringLiteral("mnuViewCama"))) {
    connect(cama, &QAction::toggled, legend_, &LegendDock::Refill);
  }

  Session& s = *session_;
  connect(canvas_, &CanvasWidget::mousePressed, this, [this, &s](Qt::MouseButton b, QPointF w) {
    pressPixel_ = canvas_->ToPixel(w.x(), w.y());
    CanvasMouseDown(s, drag_, b == Qt::RightButton ? MouseButton::Right : MouseButton::Left, float(w.x()), float(w.y()));
  });
  connect(canvas_, &CanvasWidget::mouseMoved, this, [this, &s](Qt::MouseButtons b, QPointF w) {
    ShowCursorPosition(w);
    // The picture follows a drag pan; the pan itself happens at the release, as ever. It is taken
    // before the band is drawn on it, so the band never moves with it.
    if (b.testFlag(Qt::LeftButton) && PanDragging()) {
      canvas_->PanPreview((canvas_->ToPixel(w.x(), w.y()) - pressPixel_).toPoint());
    }
    CanvasMouseMove(s, drag_, b != Qt::NoButton, float(w.x()), float(w.y()));
  });
  connect(canvas_, &CanvasWidget::mouseReleased, this, [this, &s](Qt::MouseButton b, QPointF w) {
    const bool shift = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    canvas_->EndPanPreview();
    // A window pick that does not refresh would leave its band on the picture.
    if (s.view.ZoomWindowArmed && s.ToolMode != ToolMode::ZoomPan) EraseBand(s, drag_);
    CanvasMouseUp(s, drag_, b == Qt::RightButton ? MouseButton::Right : MouseButton::Left, shift, float(w.x()),
                  float(w.y()));
  });
  connect(canvas_, &CanvasWidget::doubleClicked, this, [&s](QPointF) { CanvasDoubleClick(s); });
  connect(canvas_, &CanvasWidget::resized, this, &ViewWindow::CanvasResized);
  // The wheel zooms at once on the last picture; the layers are painted once it has settled.
  connect(canvas_, &CanvasWidget::wheeled, this, [this, &s](int steps, QPointF w) {
    if (s.JobBase.empty() || s.ToolMode == ToolMode::Locked) return;
    bool zoomed = false;
    for (int k = 0; k < std::abs(steps); ++k) zoomed = ZoomAboutUnpainted(s, w.x(), w.y(), steps > 0) || zoomed;
    if (zoomed) canvas_->PreviewScale();
  });
  connect(canvas_, &CanvasWidget::previewSettled, this, [&s] {
    if (!s.JobBase.empty()) Redraw(s);
  });
  resize(1024, 768);
}

ViewWindow::~ViewWindow() = default;

void ViewWindow::Load() {
  MainFormLoad(*session_);
  // The configuration just read sets the colours.
  legend_->Refill();
}

QString ViewWindow::PlaceFile() const { return QString::fromStdString(session_->ToolFile("tessel-window.ini")); }

void ViewWindow::PlaceOnScreen() {
  QSettings place(PlaceFile(), QSettings::IniFormat);
  // The legend shows the first time, so that a new user finds it; then as it was left.
  legend_->setVisible(place.value(QStringLiteral("main/legend"), true).toBool());
  if (restoreGeometry(place.value(QStringLiteral("main/geometry")).toByteArray())) return;
  const QScreen* screen = this->screen();
  if (screen == nullptr) return;
  // Nine tenths of the screen's height; the width then follows the canvas's shape.
  const QRect room = screen->availableGeometry();
  const int frame = frameGeometry().height() - height();
  resize(room.width() * 9 / 10, room.height() * 9 / 10 - frame);
  move(room.left() + (room.width() - frameGeometry().width()) / 2,
       room.top() + (room.height() - frameGeometry().height()) / 2);
}

void ViewWindow::ShowCursorPosition(QPointF world) {
  if (session_->JobBase.empty()) {
    coordinates_->clear();
    return;
  }
  coordinates_->setText(QString::fromStdString(CursorText(world.x(), world.y())));
}

bool ViewWindow::PanDragging() const {
  return session_->ToolMode == ToolMode::ZoomPan && drag_.PanDragging != 0 && session_->view.ZoomWindowArmed == 0;
}

void ViewWindow::BuildStatusBar() {
  for (std::size_t i = 0; i < panels_.size(); ++i) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("Panel%1").arg(i + 1));
    label->setFrameShape(QFrame::StyledPanel);
    label->setFrameShadow(QFrame::Sunken);
    statusBar()->addWidget(label, i == 0 ? 3 : 1);
    panels_[i] = label;
  }
  // How many labels the last refresh left out, and the pointer's northing and easting, at the
  // right end.
  hiddenLabels_ = new QLabel(this);
  hiddenLabels_->setObjectName(QStringLiteral("lblHiddenLabels"));
  hiddenLabels_->setToolTip(QStringLiteral("Labels left out where they would overprint others of their layer; "
                                           "View > Draw All Labels draws them all"));
  statusBar()->addPermanentWidget(hiddenLabels_);
  coordinates_ = new QLabel(this);
  coordinates_->setObjectName(QStringLiteral("lblCoordinates"));
  coordinates_->setFrameShape(QFrame::StyledPanel);
  coordinates_->setFrameShadow(QFrame::Sunken);
  coordinates_->setMinimumWidth(coordinates_->fontMetrics().horizontalAdvance(QStringLiteral("N 99999999.99  E 99999999.99")));
  statusBar()->addPermanentWidget(coordinates_);
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  // The captions show under the icons where the window is wide enough for all of them.
  if (toolbar_) {
    int wanted = 0;
    for (QAction* action : toolbar_->actions()) {
      if (!action->isVisible()) continue;
      wanted += action->isSeparator() ? 8
                                      : std::max(36, toolbar_->fontMetrics().horizontalAdvance(action->text()) + 12);
    }
    // A margin either way, since the captions make the canvas lower and so the locked window narrower.
    if (width() >= wanted + 40) toolbar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    if (width() < wanted) toolbar_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  }
  KeepCanvasShape();
}

void ViewWindow::KeepCanvasShape() {
  // The window keeps the shape of the view: the canvas is 1.33333 times as wide as high, so that
  // the view's own values hold on it. A maximised window takes the screen's shape; the view then
  // follows the canvas. Run for the window's own resize and for the canvas's, which a dock
  // opened or closed beside it changes alone.
  if (shaping_ || isMaximized() || isFullScreen()) return;
  // The centre's size, which the window's layout has set by now (the canvas follows it later):
  // the canvas is the centre less the notice bar when that shows.

  const QWidget* centre = centralWidget();
  const int canvasHeight = centre->height() - (notices_->isHidden() ? 0 : notices_->height());
  const int extra = width() - centre->width();
  const int wanted = static_cast<int>(std::lround(canvasHeight * kAspect)) + extra;
  if (wanted > 0 && wanted != width()) {
    shaping_ = true;
    resize(wanted, height());
    shaping_ = false;
  }
}

void ViewWindow::CanvasResized() {
  Session& s = *session_;
  if (LongWorkRunning(*this)) {
    redrawAfterWork_ = true;
    return;
  }
  // The window's shape once its layout has settled: a canvas resized by the window's own resize
  // sees the window's new size before the centre has it.
  QMetaObject::invokeMethod(this, &ViewWindow::KeepCanvasShape, Qt::QueuedConnection);
  // A canvas of a new shape keeps one job unit as long across as up.
  if (!s.JobBase.empty()) FitScaleToCanvas(s);
  Redraw(s);
}

bool ViewWindow::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  if (event->type() == QEvent::DynamicPropertyChange &&
      static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName() == kLongWorkProperty &&
      !property(kLongWorkProperty).toBool() && redrawAfterWork_) {
    redrawAfterWork_ = false;
    CanvasResized();
  }
  return handled;
}

void ViewWindow::keyPressEvent(QKeyEvent* event) {
  Session& s = *session_;
  switch (event->key()) {
    case Qt::Key_Home: CanvasKey(s, ViewKey::Home); break;
    case Qt::Key_PageDown: CanvasKey(s, ViewKey::PageDown); break;
    case Qt::Key_PageUp: CanvasKey(s, ViewKey::PageUp); break;
    case Qt::Key_W: CanvasKey(s, ViewKey::W); break;
    case Qt::Key_Up: CanvasKey(s, ViewKey::Up); break;
    case Qt::Key_Down: CanvasKey(s, ViewKey::Down); break;
    case Qt::Key_Left: CanvasKey(s, ViewKey::Left); break;
    case Qt::Key_Right: CanvasKey(s, ViewKey::Right); break;
    default: QMainWindow::keyPressEvent(event); return;
  }
  event->accept();
}

void ViewWindow::closeEvent(QCloseEvent* event) {
  if (!exited_) {
    // Parcel edits that could not be saved keep the program open.
    if (!FileExit(*session_)) {
      event->ignore();
      return;
    }
    exited_ = true;
  }
  QSettings place(PlaceFile(), QSettings::IniFormat);
  place.setValue(QStringLiteral("main/geometry"), saveGeometry());
  place.setValue(QStringLiteral("main/legend"), legend_->isVisible());
  event->accept();
}

}  // namespace tessel
