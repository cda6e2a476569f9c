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

#include "app/legend_dock.h"
#include "app/subsystem_forms.h"
#include "app/tool_log_dock.h"
#include "app/toolbar_icons.h"
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

// Keeps a View menu tick in step with the window it shows, however that window is shown or closed.
class TickFollower : public QObject {
 public:
  TickFollower(QWidget* window, QAction* tick) : QObject(tick), tick_(tick) { window->installEventFilter(this); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    // A minimised main window hides its tool windows too (spontaneously): no tick changes then.
    if ((event->type() == QEvent::Show || event->type() == QEvent::Hide) && !event->spontaneous()) {
      const bool shown = event->type() == QEvent::Show;
      if (tick_->isChecked() != shown) {
        const QSignalBlocker quiet(tick_);
        tick_->setChecked(shown);
      }
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QAction* tick_;
};

void FollowVisibility(QWidget* window, QAction* tick) {
  if (window && tick) new TickFollower(window, tick);
}

}  // namespace

QAction* ViewWindow::AddEntry(QMenu* menu, const char* name, const QString& caption) {
  QAction* action = menu->addAction(caption);
  action->setObjectName(QString::fromLatin1(name));
  return action;
}

QAction* ViewWindow::AddCheck(QMenu* menu, const char* name, const QString& caption) {
  QAction* action = AddEntry(menu, name, caption);
  action->setCheckable(true);
  // The check mark follows the core, which inverts it and repaints.
  connect(action, &QAction::triggered, this, [this, action, name] {
    action->setChecked(!action->isChecked());
    ToggleLayer(*session_, name);
  });
  return action;
}

void ViewWindow::OpenChosenJob() {
  Session& s = *session_;
  const auto choice = ChooseJob(s);
  if (!choice) return;
  RunLongWork(
      *this, [&](Progress& progress) { OpenJob(s, choice->fileName, choice->fileTitle, &progress); },
      CancelOffer::None);
}

void ViewWindow::BuildMenus() {
  Session& s = *session_;
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->setObjectName(QStringLiteral("mnuFile"));
  connect(AddEntry(file, "mnuFileOpen", QStringLiteral("&Open...")), &QAction::triggered, this,
          [this] { OpenChosenJob(); });
  connect(AddEntry(file, "mnuFileNew", QStringLiteral("&New Job Wizard")), &QAction::triggered, this, [this, &s] {
    StartupWizardForm wizard(s, this);
    wizard.exec();
  });
  connect(AddEntry(file, "mnuFileReload", QStringLiteral("Reload Current")), &QAction::triggered, this,
          [&s] { ReloadJob(s); });
  connect(AddEntry(file, "mnuFileClose", QStringLiteral("&Close")), &QAction::triggered, this, [&s] { FileClose(s); });
  file->addSeparator();
  AddCommandRows(file);
  if (QMenu* exportMenu = file->findChild<QMenu*>(QStringLiteral("mnuFileExport"))) {
    connect(AddEntry(exportMenu, "mnuFileExportCor", QStringLiteral("Ostrel Records System (.COR)")),
            &QAction::triggered, this, [&s] { ExportSelectedPoints(s); });
  }
  file->addSeparator();
  connect(AddEntry(file, "mnuFilePrintSetup", QStringLiteral("Print &Setup")), &QAction::triggered, this, [this] {
    QPrintDialog dialog(printer_.get(), this);
    dialog.exec();
  });
  connect(AddEntry(file, "mnuFilePrint", QStringLiteral("&Print")), &QAction::triggered, this, [this] { Print(); });
  connect(AddEntry(file, "mnuFilePrintPdf", QStringLiteral("Print to PDF...")), &QAction::triggered, this,
          [this] { PrintToPdf(); });
  file->addSeparator();
  connect(AddEntry(file, "mnuFileConfig", QStringLiteral("Configuration Options...")), &QAction::triggered, this,
          [this, &s] {
            ConfigDialog dialog(s, this);
            dialog.SetProgramChooser([this](int, const QString& current) {
              BrowseForm browse(QFileInfo(current).absolutePath(), this);
              return browse.exec() == QDialog::Accepted ? browse.Selected() : current;
            });
            dialog.exec();
            if (auto* toolbox = findChild<ToolboxForm*>()) toolbox->Reload();
            // What the dialog changed (Restore Defaults too) shows on the canvas at once.
            const int mode = s.config.BackgroundMode;
            s.canvas.SetColours(BackColour(mode), ForeColour(mode));
            s.canvas.SetPenStyle(s.config.LineTypeLSA);
            legend_->Refill();
            Redraw(s);
          });
  file->addSeparator();
  connect(AddEntry(file, "mnuFileExit", QStringLiteral("E&xit")), &QAction::triggered, this, [this] { close(); });

  QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  edit->setObjectName(QStringLiteral("mnuEdit"));
  AddCommandRows(edit);

  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->setObjectName(QStringLiteral("mnuView"));
  int group = kLayers.front().menuGroup;
  for (const LayerRow& layer : kLayers) {
    if (layer.menuGroup != group) {
      // The list of picked parcels closes the group of parcel displays.
      if (group == FindLayer("mnuOptionsParcel")->menuGroup) {
        QAction* parcelIds = AddEntry(view, "mnuOptionsParcelIds", QStringLiteral("Selected Parcel Id's"));
        parcelIds->setCheckable(true);
        connect(parcelIds, &QAction::toggled, this, [this](bool on) {
          if (auto* form = findChild<QWidget*>(QStringLiteral("frmTesting"))) form->setVisible(on);
        });
      }
      view->addSeparator();
      group = layer.menuGroup;
    }
    AddCheck(view, layer.menu, QString::fromLatin1(layer.caption));
  }
  view->addSeparator();
  connect(AddEntry(view, "mnuZoomExtents", QStringLiteral("Zoom &Extents")), &QAction::triggered, this,
          [&s] { MenuZoomExtents(s); });
  view->addSeparator();
  QAction* textWindow = AddEntry(view, "mnuViewTextWindow", QStringLiteral("Text Window"));
  textWindow->setCheckable(true);
  connect(textWindow, &QAction::toggled, this, [this](bool on) { findChild<ReportForm*>()->setVisible(on); });
  QAction* toolbox = AddEntry(view, "mnuViewToolbox", QStringLiteral("Tool Box"));
  toolbox->setCheckable(true);
  connect(toolbox, &QAction::toggled, this, [this](bool on) { findChild<ToolboxForm*>()->setVisible(on); });
  // The ticks follow their windows also when those are closed by their own close button.
  FollowVisibility(findChild<ReportForm*>(), textWindow);
  FollowVisibility(findChild<ToolboxForm*>(), toolbox);
  if (auto* parcelIds = findChild<QAction*>(QStringLiteral("mnuOptionsParcelIds"))) {
    FollowVisibility(findChild<QWidget*>(QStringLiteral("frmTesting")), parcelIds);
  }
  view->addSeparator();
  QAction* toolLog = toolLog_->toggleViewAction();
  toolLog->setObjectName(QStringLiteral("mnuViewToolLog"));
  toolLog->setText(QStringLiteral("Tool Log"));
  view->addAction(toolLog);
  QAction* legend = legend_->toggleViewAction();
  legend->setObjectName(QStringLiteral("mnuViewLegend"));
  legend->setText(QStringLiteral("Legend"));
  view->addAction(legend);
  QAction* allLabels = AddEntry(view, "mnuViewAllLabels", QStringLiteral("Draw All Labels"));
  allLabels->setCheckable(true);
  connect(allLabels, &QAction::toggled, this, [&s](bool on) {
    if (on != s.checks.mnuViewAllLabels) DrawAllLabels(s, on);
  });
  QAction* scaleBar = AddEntry(view, "mnuViewScaleBar", QStringLiteral("Scale Bar"));
  scaleBar->setCheckable(true);
  connect(scaleBar, &QAction::toggled, this, [this](bool on) { canvas_->ShowScaleBar(on); });

  QMenu* command = menuBar()->addMenu(QStringLiteral("&Command"));
  command->setObjectName(QStringLiteral("mnuCommand"));
  AddCommandRows(command);

  QMenu* tools = menuBar()->addMenu(QStringLiteral("&Tools"));
  tools->setObjectName(QStringLiteral("mnuTools"));
  QAction* refresh = AddEntry(tools, "mnuToolsRefresh", QStringLiteral("&Refresh"));
  refresh->setShortcut(QKeySequence(Qt::Key_F5));
  connect(refresh, &QAction::triggered, this, [&s] { MenuRefresh(s); });
  tools->addSeparator();
  connect(AddEntry(tools, "mnuToolsZoomIn", QStringLiteral("Zoom &In")), &QAction::triggered, this,
          [&s] { MenuZoomIn(s); });
  connect(AddEntry(tools, "mnuToolsZoomOut", QStringLiteral("Zoom &Out")), &QAction::triggered, this,
          [&s] { MenuZoomOut(s); });
  connect(AddEntry(tools, "mnuToolsZoomWin", QStringLiteral("Zoom &Window")), &QAction::triggered, this,
          [&s] { MenuZoomWindow(s); });
  connect(AddEntry(tools, "mnuToolsZoomPrevious", QStringLiteral("Zoom &Previous")), &QAction::triggered, this,
          [&s] { MenuZoomPrevious(s); });
  tools->addSeparator();
  connect(AddEntry(tools, "mnuToolsPanUp", QStringLiteral("Pan &Up")), &QAction::triggered, this,
          [&s] { Pan(s, PanDirection::Up); });
  connect(AddEntry(tools, "mnuToolsPanDown", QStringLiteral("Pan &Down")), &QAction::triggered, this,
          [&s] { Pan(s, PanDirection::Down); });
  connect(AddEntry(tools, "mnuToolsPanLeft", QStringLiteral("Pan &Left")), &QAction::triggered, this,
          [&s] { Pan(s, PanDirection::Left); });
  connect(AddEntry(tools, "mnuToolsPanRight", QStringLiteral("Pan Ri&ght")), &QAction::triggered, this,
          [&s] { Pan(s, PanDirection::Right); });
  tools->addSeparator();
  connect(AddEntry(tools, "mnuGoto", QStringLiteral("&Goto Point")), &QAction::triggered, this,
          [&s] { GoToPoint(s); });

  QMenu* attributes = menuBar()->addMenu(QStringLiteral("&Attributes"));
  attributes->setObjectName(QStringLiteral("mnuAttributes"));
  connect(AddEntry(attributes, "mnuAttributesMoveCentroid", QStringLiteral("Move Parcel Location")),
          &QAction::triggered, this, [&s] { MoveCentroidCommand(s); });
  attributes->addSeparator();
  AddCommandRows(attributes);

  QMenu* regions = menuBar()->addMenu(QStringLiteral("Re&gions"));
  regions->setObjectName(QStringLiteral("mnuRegions"));
  AddCommandRows(regions);

  QMenu* reports = menuBar()->addMenu(QStringLiteral("&Reports"));
  reports->setObjectName(QStringLiteral("mnuReports"));
  for (const ReportRow& row : ReportTable()) {
    if (row.name.empty()) continue;
    connect(AddEntry(reports, row.name.c_str(), MenuCaption(row.caption)), &QAction::triggered, this,
            [&s, &row] { OpenReport(s, row); });
  }
  connect(AddEntry(reports, "mnuReportsProject", QStringLiteral("Project Reports")), &QAction::triggered, this,
          [&s] { ProjectReports(s); });
  AddEntry(reports, "mnuReportsOther", QStringLiteral("other report..."));
}

void ViewWindow::BuildPopup() {
  Session& s = *session_;
  popup_ = new QMenu(this);
  popup_->setObjectName(QStringLiteral("mnuPopup"));
  connect(AddEntry(popup_, "mnuPopupCancel", QStringLiteral("Cancel")), &QAction::triggered, this,
          [&s] { PopupCancel(s); });
  connect(AddEntry(popup_, "mnuPopupZE", QStringLiteral("Zoom Extents")), &QAction::triggered, this,
          [&s] { MenuZoomExtents(s); });
  connect(AddEntry(popup_, "mnuPopupZoomOut", QStringLiteral("Zoom Out")), &QAction::triggered, this,
          [&s] { MenuZoomOut(s); });
  connect(AddEntry(popup_, "mnuPopupZoomP", QStringLiteral("Zoom Previous")), &QAction::triggered, this,
          [&s] { MenuZoomPrevious(s); });
  // Entries kept in the popup that do nothing.
  AddEntry(popup_, "mnuPopupHelp", QStringLiteral("Help"));
  AddEntry(popup_, "mnuPopupOther", QStringLiteral("Other"));
  AddEntry(popup_, "mnuPopupEditCRPO", QStringLiteral("Edit Raw Polygon(s)"));

  auto* parcel = new QMenu(this);
  parcel->setObjectName(QStringLiteral("mnuPopupParcel"));
  connect(AddEntry(parcel, "mnuPopupParcelMoveCentroid", QStringLiteral("Move Parcel Location")), &QAction::triggered,
          this, [&s] { MoveCentroidCommand(s); });
  connect(AddEntry(parcel, "mnuPopupParcelDisplay", QStringLiteral("Display Selected Parcel Id's")),
          &QAction::triggered, this, [this] { findChild<QAction*>(QStringLiteral("mnuOptionsParcelIds"))->trigger(); });
  connect(AddEntry(parcel, "mnuPopupParcelPanZoom", QStringLiteral("Pan/Zoom")), &QAction::triggered, this,
          [&s] { PopupParcelPanZoom(s); });
  AddEntry(parcel, "mnuPopupParcelDeselect", QStringLiteral("Deselect"));
  parcel->addSeparator();
  connect(AddEntry(parcel, "mnuPopupParcelCancel", QStringLiteral("Cancel")), &QAction::triggered, this,
          [&s] { PopupParcelCancel(s); });

  auto* line = new QMenu(this);
  line->setObjectName(QStringLiteral("mnuPopupline"));
  connect(AddEntry(line, "mnuPopuplineList", QStringLiteral("Selected Lines...")), &QAction::triggered, this,
          [&s] { s.user.ShowForm("frmSelectedLines"); });
}

void ViewWindow::ShowPopup(const std::string& menu, const std::vector<std::string>& visible,
                           const std::vector<std::string>& hidden) {
  QMenu* target = findChild<QMenu*>(QString::fromStdString(menu));
  if (!target) return;
  for (const auto& name : visible) {
    if (auto* a = target->findChild<QAction*>(QString::fromStdString(name))) a->setVisible(true);
  }
  for (const auto& name : hidden) {
    if (auto* a = target->findChild<QAction*>(QString::fromStdString(name))) a->setVisible(false);
  }
  target->popup(QCursor::pos());
}

QAction* ViewWindow::AddKey(const char* name, const QString& text, const QString& tip) {
  QAction* action = toolbar_->addAction(text);
  action->setObjectName(QString::fromLatin1(name));
  action->setIcon(ToolbarIcon(action->objectName()));
  // The caption is the tip too, so that a key shown by its icon alone still says what it is.
  action->setToolTip(tip.isEmpty() || tip == text ? text : text + QStringLiteral(": ") + tip);
  return action;
}

void ViewWindow::BuildToolBar() {
  Session& s = *session_;
  toolbar_ = addToolBar(QStringLiteral("Toolbar"));
  toolbar_->setObjectName(QStringLiteral("Toolbar1"));
  toolbar_->setMovable(false);
  toolbar_->setIconSize(QSize(24, 24));
  toolbar_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  connect(AddKey("Open", QStringLiteral("Open"), QStringLiteral("Open a job")), &QAction::triggered, this,
          [this, &s] {
            if (CloseBeforeOpen(s)) OpenChosenJob();
          });
  connect(AddKey("Reload", QStringLiteral("Reload"), QStringLiteral("Reload the current job")), &QAction::triggered,
          this, [&s] {
            ReloadJob(s);
            Redraw(s);
          });
  toolbar_->addSeparator();
  // The three exclusive tool buttons; the core pushes and raises them.
  for (const auto& [key, text, tip] : {std::tuple{"Select", "Select", "Select points"},
                                       std::tuple{"Centroid", "Pick Parcels", "Select parcels for editing"},
                                       std::tuple{"Zoom", "Zoom", "Zoom / Pan"}}) {
    QAction* mode = AddKey(key, QString::fromLatin1(text), QString::fromLatin1(tip));
    mode->setCheckable(true);
    const std::string name = key;
    connect(mode, &QAction::triggered, this, [&s, mode, name] {
      mode->setChecked(!mode->isChecked());
      if (name == "Select") ToolbarSelect(s);
      if (name == "Centroid") SetToolMode(s, ToolMode::PickParcels);
      if (name == "Zoom") SetToolMode(s, ToolMode::ZoomPan);
    });
  }
  connect(AddKey("CRPO", QStringLiteral("Polygons"), QStringLiteral("Edit raw polygons")), &QAction::triggered, this,
          [&s] { SetToolMode(s, ToolMode::PickPolygons); });
  connect(AddKey("sid", QStringLiteral("Lines"), QStringLiteral("Select record lines")), &QAction::triggered, this,
          [&s] { ToolbarLines(s); });
  AddKey("Chain", QStringLiteral("Chain"), QStringLiteral("Chain"));
  toolbar_->addSeparator();
  connect(AddKey("Zoomin", QStringLiteral("In"), QStringLiteral("Zoom in")), &QAction::triggered, this,
          [&s] { ToolbarZoomIn(s); });
  connect(AddKey("zoomout", QStringLiteral("Out"), QStringLiteral("Zoom out")), &QAction::triggered, this,
          [&s] { ToolbarZoomOut(s); });
  connect(AddKey("Zoomext", QStringLiteral("Extents"), QStringLiteral("Zoom extents")), &QAction::triggered, this,
          [&s] { ToolbarZoomExtents(s); });
  connect(AddKey("Zoomwin", QStringLiteral("Window"), QStringLiteral("Zoom window")), &QAction::triggered, this,
          [&s] { ToolbarZoomWindow(s); });
  connect(AddKey("ZoomPrev", QStringLiteral("Previous"), QStringLiteral("Zoom previous")), &QAction::triggered, this,
          [&s] { ToolbarZoomPrevious(s); });
  connect(AddKey("goto", QStringLiteral("Go To"), QStringLiteral("Go to a point")), &QAction::triggered, this,
          [&s] { GoToPoint(s); });
  toolbar_->addSeparator();
  for (int slot = 1; slot <= 4; ++slot) {
    const QByteArray name = QStringLiteral("view%1").arg(slot).toLatin1();
    QAction* key = AddKey(name.constData(), QStringLiteral("V%1").arg(slot), QStringLiteral("Saved view %1").arg(slot));
    connect(key, &QAction::triggered, this, [&s, slot] { RecallSavedView(s, slot); });
  }
  connect(AddKey("ViewReset", QStringLiteral("Set View"), QStringLiteral("Set or reset a saved view")),
          &QAction::triggered, this, [this, &s] {
            ResetViewForm form(s, this);
            form.exec();
          });
  toolbar_->addSeparator();
  std::vector<const LayerRow*> keys;
  for (const LayerRow& layer : kLayers) {
    if (layer.toolbarKey) keys.push_back(&layer);
  }
  std::sort(keys.begin(), keys.end(), [](const LayerRow* a, const LayerRow* b) { return a->toolbarSlot < b->toolbarSlot; });
  for (const LayerRow* layer : keys) {
    const QString text = QString::fromLatin1(layer->toolbarText);
    QAction* key = AddKey(layer->toolbarKey, text, text);
    key->setCheckable(true);
    const std::string menu = layer->menu;
    connect(key, &QAction::triggered, this, [&s, key, menu] {
      key->setChecked(!key->isChecked());
      ToggleLayer(s, menu);
    });
  }
  toolbar_->addSeparator();
  for (int k = 1; k <= 10; ++k) {
    const QByteArray name = QStringLiteral("usr%1").arg(k).toLatin1();
    QAction* key = AddKey(name.constData(), QStringLiteral("U%1").arg(k), QString());
    key->setVisible(false);
    connect(key, &QAction::triggered, this, [&s, k] { ToolbarUserClick(s, k); });
  }
  connect(AddKey("bat", QStringLiteral("Bat"), QStringLiteral("Run the job's batch file")), &QAction::triggered, this,
          [&s] { ToolbarBat(s); });
}

void ViewWindow::AddCommandRows(QMenu* menu) {
  Session& s = *session_;
  const QString name = menu->objectName();
  for (const SubmenuRow& sub : SubmenuTable()) {
    if (QString::fromStdString(sub.parent) != name) continue;
    QMenu* child = menu->addMenu(MenuCaption(sub.caption));
    child->setObjectName(QString::fromStdString(sub.name));
    AddCommandRows(child);
  }
  for (const CommandRow& row : CommandTable()) {
    if (QString::fromStdString(row.menu) != name) continue;
    QAction* action = AddEntry(menu, row.name.c_str(), MenuCaption(row.caption));
    connect(action, &QAction::triggered, this, [&s, &row] { RunCommand(s, row); });
  }
}

}  // namespace tessel
