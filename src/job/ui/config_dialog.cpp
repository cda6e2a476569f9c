#include "job/ui/config_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QVariant>
#include <cstdint>

#include "paint/qt_text.h"
#include "job/config_actions.h"
#include "model/text.h"
#include "tools/tool_runner.h"

namespace tessel {

namespace {

constexpr int kEditorEntry = 13;
constexpr int kRunnerEntry = 14;

const char* const kZoomHint =
    "Hint: Large Zoom Increments work well for mouse zooming, Smaller Values work well for \"GoTo\" functions.  "
    "Varying these can result in a wide variey of effects.   Pan Increments have no effect on mouse panning, only "
    "apply to keyboard and menu pan options.";
const char* const kSaveHint =
    "Choose \"OK\" for temporary change, \"Save\" to store a configuration file which will be used next time you "
    "start the application.";

template <typename W>
W* Named(W* widget, const char* name) {
  widget->setObjectName(QString::fromLatin1(name));
  return widget;
}

template <std::size_t N>
QComboBox* ListCombo(const char* name, const std::array<const char*, N>& texts) {
  auto* combo = Named(new QComboBox, name);
  for (const char* text : texts) combo->addItem(QString::fromLatin1(text));
  return combo;
}

QSpinBox* SizeBox(const char* name) {
  auto* box = Named(new QSpinBox, name);
  box->setRange(0, INT16_MAX);
  return box;
}

QDoubleSpinBox* PercentBox(const char* name) {
  auto* box = Named(new QDoubleSpinBox, name);
  box->setDecimals(3);
  box->setRange(0.0, 100000.0);
  return box;
}

// A spin box keeps the value it was filled with, even one outside its range or beyond its
// decimals, until the user changes what it shows.
constexpr const char* kShown = "shownValue";

template <typename Box, typename T>
void SetNumber(Box* box, T value) {
  box->setValue(static_cast<decltype(box->value())>(value));
  box->setProperty(kShown, box->value());
}

template <typename Box, typename T>
T Number(const Box* box, T filled) {
  if (box->property(kShown) == QVariant(box->value())) return filled;
  return static_cast<T>(box->value());
}

// A colour list shows colour number n at index n.
void SetColour(QComboBox* combo, std::int16_t value) {
  combo->setCurrentIndex(value >= 0 && value < combo->count() ? value : -1);
}

std::int16_t Colour(const QComboBox* combo, std::int16_t filled) {
  const int index = combo->currentIndex();
  return index >= 0 ? static_cast<std::int16_t>(index) : filled;
}

// A line style is the number in front of its text.
std::int16_t StyleOf(const QString& text) { return static_cast<std::int16_t>(Val(ToBytes(text))); }

void SetStyle(QComboBox* combo, std::int16_t value) {
  combo->setCurrentIndex(-1);
  for (int i = 0; i < combo->count(); ++i) {
    if (StyleOf(combo->itemText(i)) == value) combo->setCurrentIndex(i);
  }
}

std::int16_t Style(const QComboBox* combo, std::int16_t filled) {
  return combo->currentIndex() >= 0 ? StyleOf(combo->currentText()) : filled;
}

void SetCheck(QCheckBox* box, std::int16_t value) { box->setChecked(value == 1); }
std::int16_t Check(const QCheckBox* box) { return box->isChecked() ? 1 : 0; }

}  // namespace

ConfigDialog::ConfigDialog(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmConfig"));
  setWindowTitle(QStringLiteral("Configuration Options"));

  tabs_ = Named(new QTabWidget, "tabConfig");
  tabs_->addTab(BuildPointsAndLines(), QStringLiteral("Points and Lines"));
  tabs_->addTab(BuildToolEntries(1, 6), QStringLiteral("Setup user-defined program buttons # 1-6"));
  tabs_->addTab(BuildToolEntries(7, 12), QStringLiteral("Setup User Defined program buttons # 7 - 12"));
  tabs_->addTab(BuildViewing(), QStringLiteral("Default Viewing Setup"));

  auto* hint = Named(new QLabel(QString::fromLatin1(kSaveHint)), "lblSaveHint");
  hint->setWordWrap(true);

  auto* ok = Named(new QPushButton(QStringLiteral("OK")), "cmdOK");
  auto* save = Named(new QPushButton(QStringLiteral("Save")), "cmdSave");
  auto* cancel = Named(new QPushButton(QStringLiteral("Cancel")), "cmdCancel");
  auto* restore = Named(new QPushButton(QStringLiteral("Restore Defaults")), "cmdRestore");
  ok->setDefault(true);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(ok);
  buttons->addWidget(save);
  buttons->addWidget(cancel);
  buttons->addStretch(1);
  buttons->addWidget(restore);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tabs_);
  layout->addWidget(hint);
  layout->addLayout(buttons);

  connect(ok, &QPushButton::clicked, this, [this] {
    ApplyConfig(session_, Collect());
    ApplyToolRunner(session_, CollectToolRunner());
    accept();
  });
  connect(save, &QPushButton::clicked, this, [this] {
    SaveConfig(session_, Collect());
    SaveToolRunner(session_, CollectToolRunner());
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(restore, &QPushButton::clicked, this, [this] {
    if (RestoreDefaults(session_)) accept();
  });
  // Only a click changes the setting; filling the field does not.
  connect(chkLxn_, &QCheckBox::clicked, this, [this](bool checked) { SetLoadLxn(session_, checked); });

  chooser_ = [this](int, const QString& current) {
    const QString folder = current.trimmed().isEmpty() || current.trimmed() == QStringLiteral("none")
                               ? FromBytes(session_.ToolFolder)
                               : QFileInfo(current).absolutePath();
    const QString chosen = QFileDialog::getOpenFileName(this, QStringLiteral("Browse"), folder);
    return chosen.isEmpty() ? chosen : QDir::toNativeSeparators(chosen);
  };

  Fill(session_.config);
  toolRunner_->setText(FromBytes(NormalToolRunner(session_.toolRunner)));
}

QWidget* ConfigDialog::BuildPointsAndLines() {
  auto* page = Named(new QWidget, "tabPointsLines");
  ptSizeCor_ = SizeBox("PtSizeCor");
  ptSizeCtrl_ = SizeBox("PtSizeCtrl");
  corColor_ = ListCombo("CorColor", kColourListTexts);
  ctrlColor_ = ListCombo("CtrlColor", kColourListTexts);
  lsaColor_ = ListCombo("LsaColor", kColourListTexts);
  lxnColor_ = ListCombo("LxnColor", kColourListTexts);
  lineTypeLsa_ = ListCombo("LineTypeLSA", kLineStyleTexts);
  lineTypeLxn_ = ListCombo("LineTypeLXN", kLineStyleTexts);
  panPercent_ = PercentBox("PanPercent");
  zoomPercent_ = PercentBox("ZoomPercent");
  chkLxn_ = Named(new QCheckBox(QStringLiteral("load LXN lines")), "chkLXN");

  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel(QStringLiteral("Color")), 0, 2);
  const auto row = [grid](int r, const QString& label, QWidget* value, QWidget* colour) {
    auto* text = new QLabel(label);
    text->setBuddy(value);
    grid->addWidget(text, r, 0);
    grid->addWidget(value, r, 1);
    grid->addWidget(colour, r, 2);
  };
  row(1, QStringLiteral("Point Size for COR file"), ptSizeCor_, corColor_);
  row(2, QStringLiteral("Point Size for Control Points"), ptSizeCtrl_, ctrlColor_);
  row(3, QStringLiteral("LSA Line Style"), lineTypeLsa_, lsaColor_);
  row(4, QStringLiteral("LXN Line Style"), lineTypeLxn_, lxnColor_);

  auto* increments = new QGridLayout;
  auto* pan = new QLabel(QStringLiteral("Pan Increment"));
  pan->setBuddy(panPercent_);
  auto* zoom = new QLabel(QStringLiteral("Zoom Increment"));
  zoom->setBuddy(zoomPercent_);
  increments->addWidget(pan, 0, 0);
  increments->addWidget(panPercent_, 0, 1);
  increments->addWidget(zoom, 1, 0);
  increments->addWidget(zoomPercent_, 1, 1);
  increments->setColumnStretch(2, 1);

  auto* hint = Named(new QLabel(QString::fromLatin1(kZoomHint)), "lblZoomHint");
  hint->setWordWrap(true);

  auto* layout = new QVBoxLayout(page);
  layout->addLayout(grid);
  layout->addWidget(chkLxn_);
  layout->addLayout(increments);
  layout->addWidget(hint);
  layout->addStretch(1);
  return page;
}

QWidget* ConfigDialog::BuildToolEntries(int first, int last) {
  auto* page = new QWidget;
  page->setObjectName(QStringLiteral("tabTools%1").arg(first));
  auto* grid = new QGridLayout(page);
  grid->addWidget(new QLabel(QStringLiteral("Program")), 0, 1);
  grid->addWidget(new QLabel(QStringLiteral("Caption")), 0, 2);
  for (int k = first; k <= last; ++k) {
    const auto i = static_cast<std::size_t>(k - 1);
    const int r = k - first + 1;
    auto* path = new QLineEdit;
    path->setObjectName(QStringLiteral("txtPath%1").arg(k));
    auto* caption = new QLineEdit;
    caption->setObjectName(QStringLiteral("txtCaption%1").arg(k));
    auto* browse = new QPushButton(QStringLiteral("Browse..."));
    browse->setObjectName(QStringLiteral("cmdBrowse%1").arg(k));
    connect(browse, &QPushButton::clicked, this, [this, k] { Browse(k); });
    paths_[i] = path;
    captions_[i] = caption;
    grid->addWidget(new QLabel(QString::number(k)), r, 0);
    grid->addWidget(path, r, 1);
    grid->addWidget(caption, r, 2);
    grid->addWidget(browse, r, 3);
  }
  grid->setColumnStretch(1, 3);
  grid->setColumnStretch(2, 1);
  grid->setRowStretch(last - first + 2, 1);
  return page;
}

QWidget* ConfigDialog::BuildViewing() {
  auto* page = Named(new QWidget, "tabViewing");
  chkLinesLsa_ = Named(new QCheckBox(QStringLiteral("LSA Lines")), "chkLinesLSA");
  chkLinesLxn_ = Named(new QCheckBox(QStringLiteral("LXN Lines")), "chkLinesLXN");
  chkLinesRaw_ = Named(new QCheckBox(QStringLiteral("RAW Lines")), "chkLinesRAW");
  chkRpo_ = Named(new QCheckBox(QStringLiteral("Raw Polygons")), "chkRPO");
  chkPoints_ = Named(new QCheckBox(QStringLiteral("Points")), "chkPoints");
  chkControl_ = Named(new QCheckBox(QStringLiteral("Control Points")), "chkControl");
  chkParcels_ = Named(new QCheckBox(QStringLiteral("Parcels")), "chkParcels");

  auto* layers = new QVBoxLayout;
  for (QCheckBox* box : {chkLinesLsa_, chkLinesLxn_, chkLinesRaw_, chkRpo_, chkPoints_, chkControl_, chkParcels_}) {
    layers->addWidget(box);
  }
  layers->addStretch(1);

  auto* background = Named(new QGroupBox(QStringLiteral("Background Color / Text")), "fraBackground");
  darkOnLight_ = Named(new QRadioButton(QStringLiteral("Dark Text on Light Background")), "optBackground1");
  lightOnDark_ = Named(new QRadioButton(QStringLiteral("Light Text on Dark Background")), "optBackground2");
  auto* backgroundLayout = new QVBoxLayout(background);
  backgroundLayout->addWidget(darkOnLight_);
  backgroundLayout->addWidget(lightOnDark_);

  auto* editor = Named(new QGroupBox(QStringLiteral("Text Editor")), "fraEditor");
  editorPath_ = Named(new QLineEdit, "EditorPath");
  auto* browse = new QPushButton(QStringLiteral("Browse..."));
  browse->setObjectName(QStringLiteral("cmdBrowse%1").arg(kEditorEntry));
  connect(browse, &QPushButton::clicked, this, [this] { Browse(kEditorEntry); });
  auto* editorLayout = new QHBoxLayout(editor);
  editorLayout->addWidget(editorPath_, 1);
  editorLayout->addWidget(browse);

  auto* runner = Named(new QGroupBox(QStringLiteral("Windows Programs")), "fraToolRunner");
  toolRunner_ = Named(new QLineEdit, "txtToolRunner");
  auto* browseRunner = Named(new QPushButton(QStringLiteral("Browse...")), "cmdBrowseRunner");
  connect(browseRunner, &QPushButton::clicked, this, [this] { Browse(kRunnerEntry); });
  auto* runnerHint = Named(new QLabel(QString::fromLatin1(kToolRunnerHint)), "lblToolRunnerHint");
  runnerHint->setWordWrap(true);
  auto* runnerLayout = new QGridLayout(runner);
  runnerLayout->addWidget(toolRunner_, 0, 0);
  runnerLayout->addWidget(browseRunner, 0, 1);
  runnerLayout->addWidget(runnerHint, 1, 0, 1, 2);

  auto* right = new QVBoxLayout;
  right->addWidget(background);
  right->addStretch(1);

  auto* top = new QHBoxLayout;
  top->addLayout(layers);
  top->addLayout(right);

  auto* layout = new QVBoxLayout(page);
  layout->addLayout(top);
  layout->addWidget(editor);
  layout->addWidget(runner);
  return page;
}

void ConfigDialog::showEvent(QShowEvent* event) {
  Fill(session_.config);
  toolRunner_->setText(FromBytes(NormalToolRunner(session_.toolRunner)));
  QDialog::showEvent(event);
}

QLineEdit* ConfigDialog::BrowseTarget(int entry) const {
  if (entry == kEditorEntry) return editorPath_;
  if (entry == kRunnerEntry) return toolRunner_;
  if (entry < 1 || entry > static_cast<int>(paths_.size())) return nullptr;
  return paths_[static_cast<std::size_t>(entry - 1)];
}

void ConfigDialog::Browse(int entry) {
  QLineEdit* target = BrowseTarget(entry);
  if (!target || !chooser_) return;
  const QString chosen = chooser_(entry, target->text());
  if (!chosen.isEmpty()) target->setText(chosen);
}

void ConfigDialog::Fill(const Config& c) {
  filled_ = c;
  SetNumber(ptSizeCor_, c.PtSizeCor);
  SetNumber(ptSizeCtrl_, c.PtSizeCtrl);
  SetColour(corColor_, c.CorColor);
  SetColour(ctrlColor_, c.CtrlColor);
  SetColour(lsaColor_, c.LsaColor);
  SetColour(lxnColor_, c.LxnColor);
  SetStyle(lineTypeLsa_, c.LineTypeLSA);
  SetStyle(lineTypeLxn_, c.LineTypeLXN);
  SetNumber(panPercent_, c.PanPercent);
  SetNumber(zoomPercent_, c.ZoomPercent);
  SetCheck(chkLxn_, c.chkLXN);
  for (std::size_t i = 0; i < paths_.size(); ++i) {
    paths_[i]->setText(FromBytes(c.ToolButton[i].path));
    captions_[i]->setText(FromBytes(c.ToolButton[i].caption));
  }
  SetCheck(chkLinesLsa_, c.chkLinesLSA);
  SetCheck(chkLinesLxn_, c.chkLinesLXN);
  SetCheck(chkLinesRaw_, c.chkLinesRAW);
  SetCheck(chkRpo_, c.chkRPO);
  SetCheck(chkPoints_, c.chkPoints);
  SetCheck(chkControl_, c.chkControl);
  SetCheck(chkParcels_, c.chkParcels);
  // Neither option is on for a mode that is neither 1 nor 2.
  darkOnLight_->setAutoExclusive(false);
  lightOnDark_->setAutoExclusive(false);
  darkOnLight_->setChecked(c.BackgroundMode == 1);
  lightOnDark_->setChecked(c.BackgroundMode == 2);
  darkOnLight_->setAutoExclusive(true);
  lightOnDark_->setAutoExclusive(true);
  editorPath_->setText(FromBytes(c.EditorPath));
}

Config ConfigDialog::Collect() const {
  Config c = filled_;
  c.PtSizeCor = Number(ptSizeCor_, filled_.PtSizeCor);
  c.PtSizeCtrl = Number(ptSizeCtrl_, filled_.PtSizeCtrl);
  c.CorColor = Colour(corColor_, filled_.CorColor);
  c.CtrlColor = Colour(ctrlColor_, filled_.CtrlColor);
  c.LsaColor = Colour(lsaColor_, filled_.LsaColor);
  c.LxnColor = Colour(lxnColor_, filled_.LxnColor);
  c.LineTypeLSA = Style(lineTypeLsa_, filled_.LineTypeLSA);
  c.LineTypeLXN = Style(lineTypeLxn_, filled_.LineTypeLXN);
  c.PanPercent = Number(panPercent_, filled_.PanPercent);
  c.ZoomPercent = Number(zoomPercent_, filled_.ZoomPercent);
  c.chkLXN = Check(chkLxn_);
  for (std::size_t i = 0; i < paths_.size(); ++i) {
    c.ToolButton[i].path = ToBytes(paths_[i]->text());
    c.ToolButton[i].caption = ToBytes(captions_[i]->text());
  }
  c.chkLinesLSA = Check(chkLinesLsa_);
  c.chkLinesLXN = Check(chkLinesLxn_);
  c.chkLinesRAW = Check(chkLinesRaw_);
  c.chkRPO = Check(chkRpo_);
  c.chkPoints = Check(chkPoints_);
  c.chkControl = Check(chkControl_);
  c.chkParcels = Check(chkParcels_);
  if (darkOnLight_->isChecked()) c.BackgroundMode = 1;
  if (lightOnDark_->isChecked()) c.BackgroundMode = 2;
  c.EditorPath = ToBytes(editorPath_->text());
  return c;
}

std::string ConfigDialog::CollectToolRunner() const { return NormalToolRunner(ToBytes(toolRunner_->text())); }

}  // namespace tessel
