#include "regions/ui/region_forms.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "forms/ui/interface_thread.h"
#include "forms/ui/long_work.h"
#include "regions/how_file.h"

namespace tessel {

namespace {

QString FromBytes(const std::string& text) { return QString::fromLocal8Bit(text.data(), static_cast<qsizetype>(text.size())); }
std::string ToBytes(const QString& text) { return text.toLocal8Bit().toStdString(); }

double TwipsPerPixel(const QWidget& widget) { return 1440.0 / std::max(1, widget.logicalDpiX()); }

}  // namespace

RegionForm::RegionForm(Session& session, QMainWindow& window)
    : QWidget(&window, Qt::Window), session_(session), window_(window), console_(session) {
  setObjectName(QStringLiteral("frmRegion"));
  setWindowTitle(QStringLiteral("Build / Edit  Region"));
  auto* layout = new QVBoxLayout(this);

  auto* top = new QHBoxLayout;
  QPushButton* folder = AddButton("cmdFolder", QString(), QStringLiteral("Open or Create a regional adjustment project."));
  folder->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
  top->addWidget(folder);
  project_ = new QLineEdit(this);
  project_->setObjectName(QStringLiteral("txtProject"));
  top->addWidget(project_);
  layout->addLayout(top);

  auto* middle = new QHBoxLayout;
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstRegion"));
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  middle->addWidget(list_, 1);
  auto* edits = new QVBoxLayout;
  QPushButton* add = AddButton("cmdAdd", QStringLiteral("Add "), QStringLiteral("Select a project to add to the listing"));
  QPushButton* fixed = AddButton("cmdFixed", QStringLiteral("Fixed"), QStringLiteral("Insert Keyword."));
  QPushButton* norel = AddButton("cmdNoRel", QStringLiteral("No rel"), QStringLiteral("Insert Keyword."));
  QPushButton* remove = AddButton("cmdRemove", QStringLiteral("Remove"), QStringLiteral("Remove highlighted item from the listing."));
  QPushButton* up = AddButton("cmdUp", QString(), QStringLiteral("Move selected item UP in the listing."));
  up->setIcon(style()->standardIcon(QStyle::SP_ArrowUp));
  QPushButton* down = AddButton("cmdDown", QString(), QStringLiteral("Move the selected item DOWN in the listing."));
  down->setIcon(style()->standardIcon(QStyle::SP_ArrowDown));
  QPushButton* save = AddButton("cmdSave", QStringLiteral("Save"), QStringLiteral("Save/update regional .how listing."));
  for (QPushButton* b : {add, fixed, norel, remove, up, down, save}) edits->addWidget(b);
  noPath_ = new QCheckBox(QStringLiteral("Do not include path."), this);
  noPath_->setObjectName(QStringLiteral("chkNoPath"));
  edits->addWidget(noPath_);
  edits->addStretch();
  middle->addLayout(edits);
  layout->addLayout(middle);

  auto* test = new QGridLayout;
  test->addWidget(new QLabel(QStringLiteral("Distance Tolerance for merge test (FT): "), this), 0, 0);
  tolerance_ = new QLineEdit(this);
  tolerance_->setObjectName(QStringLiteral("txtTolerance"));
  test->addWidget(tolerance_, 0, 1);
  QPushButton* preview = AddButton("cmdPreview", QStringLiteral("Preview"), QStringLiteral("Preview the region."));
  QPushButton* viewItem = AddButton("cmdViewItem", QStringLiteral("View Item"), QStringLiteral("Load selected project for viewing & editing."));
  QPushButton* testButton = AddButton("cmdTest", QStringLiteral("Test"), QStringLiteral("Perform testing on project boundaries prior to merging."));
  QPushButton* details = AddButton("cmdDetails", QStringLiteral("Details"), QString());
  test->addWidget(preview, 1, 0);
  test->addWidget(viewItem, 1, 1);
  test->addWidget(testButton, 2, 0);
  test->addWidget(details, 2, 1);
  lines_ = new QCheckBox(QStringLiteral("View Matchup Lines"), this);
  lines_->setObjectName(QStringLiteral("chkLines"));
  lines_->setToolTip(QStringLiteral("Toggle viewing of Test lines."));
  ends_ = new QCheckBox(QStringLiteral("Draw endpoints"), this);
  ends_->setObjectName(QStringLiteral("chkEnds"));
  ends_->setToolTip(QStringLiteral("Toggle viewing of Test lines."));
  test->addWidget(lines_, 3, 0);
  test->addWidget(ends_, 3, 1);
  layout->addLayout(test);

  auto* flow = new QGridLayout;
  QPushButton* merge = AddButton("cmdMerge", QStringLiteral("Merge"), QStringLiteral("Merge projects with TWPJOIN."));
  QPushButton* adjust = AddButton("cmdAdjust", QStringLiteral("Adjust"), QStringLiteral("Adjust region with FITMAIN"));
  QPushButton* parse = AddButton("cmdParse", QStringLiteral("Parse"), QStringLiteral("Parse adjusted region to individual projects with TWPSPLIT"));
  QPushButton* rel = AddButton("cmdReliabilities", QStringLiteral("Reliabilities"), QStringLiteral("Compute coordinate reliabilities with TWPREL."));
  QPushButton* update = AddButton("cmdUpdate", QStringLiteral("Update"), QStringLiteral("Perform batch update procedures on individual updated projects."));
  QPushButton* viewRegion = AddButton("cmdViewRegion", QStringLiteral("View Region"), QStringLiteral("Load the region project data."));
  QPushButton* close = AddButton("cmdClose", QStringLiteral("Close"), QStringLiteral("Close this window."));
  int k = 0;
  for (QPushButton* b : {merge, adjust, parse, rel, update, viewRegion, close}) flow->addWidget(b, k / 4, k % 4), ++k;
  layout->addLayout(flow);

  auto* status = new QHBoxLayout;
  panel1_ = new QLabel(this);
  panel1_->setObjectName(QStringLiteral("lblStatus1"));
  panel2_ = new QLabel(this);
  panel2_->setObjectName(QStringLiteral("lblStatus2"));
  for (QLabel* panel : {panel1_, panel2_}) {
    panel->setFrameShape(QFrame::StyledPanel);
    status->addWidget(panel, 1);
  }
  layout->addLayout(status);

  console_.onStatus = [this](int panel, const std::string& text) {
    // The test tells its panels from its worker.
    OnInterfaceThread(*this, [&] {
      (panel == 2 ? panel2_ : panel1_)->setText(FromBytes(text));
      panel1_->repaint();
    });
  };

  connect(folder, &QPushButton::clicked, this, [this] { Command([this] { console_.FolderButton(); }); });
  connect(add, &QPushButton::clicked, this, [this] { Command([this] { console_.Add(); }); });
  connect(fixed, &QPushButton::clicked, this, [this] { Command([this] { console_.InsertKeyword(kKeywordFixed); }); });
  connect(norel, &QPushButton::clicked, this, [this] { Command([this] { console_.InsertKeyword(kKeywordNorel); }); });
  connect(remove, &QPushButton::clicked, this, [this] { Command([this] { console_.Remove(); }); });
  connect(up, &QPushButton::clicked, this, [this] { Command([this] { console_.MoveUp(); }); });
  connect(down, &QPushButton::clicked, this, [this] { Command([this] { console_.MoveDown(); }); });
  connect(save, &QPushButton::clicked, this, [this] { Command([this] { console_.Save(); }); });
  connect(preview, &QPushButton::clicked, this, [this] { Command([this] { console_.Preview(); }); });
  connect(viewItem, &QPushButton::clicked, this, [this] { Command([this] { console_.ViewItem(); }); });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Command([this] { console_.ViewItem(); }); });
  connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
    Command([this, item] { console_.ClickRow(list_->row(item)); });
  });
  connect(testButton, &QPushButton::clicked, this, [this] {
    // A county's region holds points by the hundred thousand: they are compared beside the form,
    // with progress and a Cancel at its foot, and drawn here once compared.
    Command([this] {
      bool compared = false;
      RunLongWork(*this, [&](Progress& progress) { compared = console_.CompareForTest(&progress); });
      console_.ShowTest(compared);
    });
  });
  connect(details, &QPushButton::clicked, this, [this] { ShowDetails(); });
  connect(lines_, &QCheckBox::toggled, this, [this](bool on) {
    if (!syncing_) Command([this, on] { console_.SetShowLines(on); });
  });
  connect(ends_, &QCheckBox::toggled, this, [this](bool on) {
    if (!syncing_) Command([this, on] { console_.SetShowEnds(on); });
  });
  connect(merge, &QPushButton::clicked, this, [this] { Command([this] { console_.Merge(); }); });
  connect(adjust, &QPushButton::clicked, this, [this] { Command([this] { console_.Adjust(); }); });
  connect(parse, &QPushButton::clicked, this, [this] { Command([this] { console_.Parse(); }); });
  connect(rel, &QPushButton::clicked, this, [this] { Command([this] { console_.ReliabilitiesCommand(); }); });
  connect(update, &QPushButton::clicked, this, [this] { OpenUpdate(); });
  connect(viewRegion, &QPushButton::clicked, this, [this] { Command([this] { console_.ViewRegion(); }); });
  connect(close, &QPushButton::clicked, this, &QWidget::close);
  // The fields start with the console's defaults ("10" for the tolerance).
  Sync();
  resize(560, 520);
}

QPushButton* RegionForm::AddButton(const char* name, const QString& caption, const QString& tip) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QString::fromLatin1(name));
  if (!tip.isEmpty()) button->setToolTip(tip);
  return button;
}

void RegionForm::showEvent(QShowEvent* event) {
  Pull();
  console_.Open();
  Sync();
  QWidget::showEvent(event);
}

void RegionForm::Pull() {
  console_.txtProject = ToBytes(project_->text());
  console_.txtTolerance = ToBytes(tolerance_->text());
  console_.chkNoPath = noPath_->isChecked();
  console_.selected = list_->currentRow();
}

template <typename F>
void RegionForm::Command(F&& command) {
  Pull();
  command();
  Sync();
}

void RegionForm::Sync() {
  syncing_ = true;
  project_->setText(FromBytes(console_.txtProject));
  tolerance_->setText(FromBytes(console_.txtTolerance));
  noPath_->setChecked(console_.chkNoPath);
  lines_->setChecked(console_.chkLines);
  ends_->setChecked(console_.chkEnds);
  list_->clear();
  int widest = 0;
  for (const std::string& row : console_.rows) {
    list_->addItem(FromBytes(row));
    widest = std::max(widest, list_->fontMetrics().horizontalAdvance(FromBytes(row)) + 5);
  }
  list_->setMinimumWidth(std::min(widest, 400));
  list_->setCurrentRow(console_.selected);
  panel1_->setText(FromBytes(console_.statusPanel[1]));
  panel2_->setText(FromBytes(console_.statusPanel[2]));
  const RegionCommands& e = console_.enabled;
  const std::pair<const char*, bool> states[] = {
      {"cmdMerge", e.cmdMerge},   {"cmdAdjust", e.cmdAdjust},   {"cmdParse", e.cmdParse},
      {"cmdUpdate", e.cmdUpdate}, {"cmdReliabilities", e.cmdReliabilities}, {"cmdViewRegion", e.cmdViewRegion},
      {"cmdTest", e.cmdTest},     {"cmdDetails", e.cmdDetails}};
  for (const auto& [name, on] : states) findChild<QPushButton*>(QString::fromLatin1(name))->setEnabled(on);
  if (console_.focusFolder) {
    console_.focusFolder = false;
    findChild<QPushButton*>(QStringLiteral("cmdFolder"))->setFocus();
  }
  syncing_ = false;
}

void RegionForm::ShowDetails() {
  auto* report = window_.findChild<QWidget*>(QStringLiteral("frmReport"));
  if (!report) return;
  QString text;
  for (const std::string& line : console_.DetailsLines()) text += FromBytes(line) + QLatin1Char('\n');
  report->setWindowTitle(QStringLiteral("Matching Line Details"));
  if (auto* edit = report->findChild<QPlainTextEdit*>(QStringLiteral("txtReport"))) edit->setPlainText(text);
  report->hide();
  report->show();
  report->raise();
}

void RegionForm::OpenUpdate() {
  Pull();
  GmlForm form(session_, FromBytes(session_.JobBase), &window_);
  connect(form.findChild<QPushButton*>(QStringLiteral("cmdOk")), &QPushButton::clicked, &form, [this, &form] {
    if (RunPostRegionUpdate(session_, form.Options(), console_.txtProject)) {
      form.accept();
    } else {
      form.findChild<QLineEdit*>(QStringLiteral("txtTolerance"))->setFocus();
    }
  });
  form.exec();
  Sync();
}

ContinueForm::ContinueForm(RegionConsole& console, QMainWindow& window)
    : QWidget(&window, Qt::Tool | Qt::WindowStaysOnTopHint), window_(window) {
  setObjectName(QStringLiteral("frmContinue"));
  setWindowTitle(QStringLiteral("Reliabilities"));
  auto* layout = new QHBoxLayout(this);
  auto* go = new QPushButton(QStringLiteral("Continue -->"), this);
  go->setObjectName(QStringLiteral("cmdContinue"));
  go->setToolTip(QStringLiteral("Continue with reliabilities calculation"));
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  cancel->setToolTip(QStringLiteral("Cancel this operation."));
  layout->addWidget(go);
  layout->addWidget(cancel);
  const auto after = [this] {
    if (auto* form = window_.findChild<RegionForm*>()) form->Sync();
  };
  connect(go, &QPushButton::clicked, this, [&console, after] {
    console.ContinueReliabilities();
    after();
  });
  connect(cancel, &QPushButton::clicked, this, [&console, after] {
    console.CancelReliabilities();
    after();
  });
}

void ContinueForm::showEvent(QShowEvent* event) {
  const double twips = TwipsPerPixel(window_);
  const QRect main = window_.frameGeometry();
  const PanelPlace place = ContinuePanelPlace(main.left() * twips, main.top() * twips, main.width() * twips,
                                              main.height() * twips, frameGeometry().width() * twips);
  move(static_cast<int>(place.left / twips), static_cast<int>(place.top / twips));
  QWidget::showEvent(event);
}

GmlForm::GmlForm(Session& session, const QString& project, QWidget* parent) : QDialog(parent) {
  (void)session;
  setObjectName(QStringLiteral("frmGML"));
  setWindowTitle(QStringLiteral("Post Region Update"));
  auto* layout = new QVBoxLayout(this);
  auto* text = new QLabel(QStringLiteral(
      "Post region update is an efficient means for you to perform routine tasks on a list of townships stored in a "
      "regional adjustment .how file.  Update processing is performed AFTER Twpsplit is used to update the individual "
      "township coordinate files."), this);
  text->setWordWrap(true);
  layout->addWidget(text);
  auto* regionRow = new QHBoxLayout;
  regionRow->addWidget(new QLabel(QStringLiteral("Current Region"), this));
  auto* region = new QLineEdit(project, this);
  region->setObjectName(QStringLiteral("txtRegion"));
  region->setReadOnly(true);
  regionRow->addWidget(region);
  layout->addLayout(regionRow);
  for (std::size_t k = 0; k < kUpdateSteps.size(); ++k) {
    steps_[k] = new QCheckBox(QString::fromLatin1(kUpdateSteps[k].caption), this);
    steps_[k]->setObjectName(QStringLiteral("chkStep%1").arg(k + 1));
    steps_[k]->setChecked(true);
    layout->addWidget(steps_[k]);
  }
  auto* toleranceRow = new QHBoxLayout;
  toleranceLabel_ = new QLabel(QStringLiteral("Distance Tolerance for polygons (FT) :"), this);
  tolerance_ = new QLineEdit(QStringLiteral("100"), this);
  tolerance_->setObjectName(QStringLiteral("txtTolerance"));
  toleranceRow->addWidget(toleranceLabel_);
  toleranceRow->addWidget(tolerance_);
  layout->addLayout(toleranceRow);
  connect(steps_[3], &QCheckBox::toggled, this, [this](bool on) {
    toleranceLabel_->setVisible(on);
    tolerance_->setVisible(on);
    tolerance_->setEnabled(on);
  });
  auto* buttons = new QHBoxLayout;
  auto* ok = new QPushButton(QStringLiteral("Ok"), this);
  ok->setObjectName(QStringLiteral("cmdOk"));
  auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
  cancel->setObjectName(QStringLiteral("cmdCancel"));
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

UpdateOptions GmlForm::Options() const {
  UpdateOptions options;
  for (std::size_t k = 0; k < kUpdateSteps.size(); ++k) options.steps[k] = steps_[k]->isChecked();
  options.tolerance = ToBytes(tolerance_->text());
  return options;
}

void InstallRegionForms(QMainWindow& window, Session& session) {
  auto* form = new RegionForm(session, window);
  form->hide();
  auto* panel = new ContinueForm(form->console(), window);
  panel->hide();
  QMenu* regions = window.findChild<QMenu*>(QStringLiteral("mnuRegions"));
  if (!regions) return;
  regions->setTitle(QStringLiteral("Regio&ns"));
  auto* build = new QAction(QStringLiteral("Build / Edit Regions"), regions);
  build->setObjectName(QStringLiteral("mnuRegionBuild"));
  QAction* first = regions->actions().isEmpty() ? nullptr : regions->actions().first();
  regions->insertAction(first, build);
  if (first) regions->insertSeparator(first);
  QObject::connect(build, &QAction::triggered, form, [form] {
    form->show();
    form->raise();
  });
}

}  // namespace tessel
