#include "surveys/ui/survey_forms.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "datasets/identity.h"
#include "model/dialog_memory.h"
#include "model/fault.h"
#include "model/text.h"
#include "paint/qt_text.h"
#include "surveys/print_columns.h"
#include "surveys/survey_file.h"
#include "forms/ui/named_widgets.h"

namespace tessel {

namespace {

double TwipsPerPixel(const QWidget* w) { return 1440.0 / w->logicalDpiX(); }

// Text boxes hold CR LF line ends as the job's files do; the editor shows LF.
QString Shown(const std::string& bytes) {
  QString text = FromBytes(bytes);
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  return text;
}
std::string Typed(const QString& text) {
  QString out = text;
  out.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  out.replace(QStringLiteral("\n"), QStringLiteral("\r\n"));
  return ToBytes(out);
}

constexpr const char* kSidProperties[14] = {"",
                                            "Error Estimate - Distances Constant",
                                            "Error Estimate - Distances PPM",
                                            "Error Estimate - Bearings  (seconds)",
                                            "Survey Identifier (SID)",
                                            "Comments ",
                                            "Error Estimate - Control Easting",
                                            "Error Estimate -Control Northing",
                                            "Distance Units",
                                            "Distance Type",
                                            "Distance Correction (+ / -) ",
                                            "Bearing Type",
                                            "Bearing Correction (dd.mmss)",
                                            "Convert bearings to angles?"};

}  // namespace

// --- frmSidEdit ---------------------------------------------------------------------------

SidEditForm::SidEditForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmSidEdit"));
  setWindowTitle(QStringLiteral("Survey ID Properties"));
  auto* layout = new QVBoxLayout(this);
  auto* explanation = new QLabel(QString::fromLatin1(kSidExplanation), this);
  explanation->setObjectName(QStringLiteral("lblExplanation"));
  explanation->setWordWrap(true);
  layout->addWidget(explanation);

  auto* upper = new QWidget(this);
  new QGridLayout(upper);
  layout->addWidget(upper);
  constant_ = AddText(upper, kBoxConstant, "txtConstant", 3);
  ppm_ = AddText(upper, kBoxPpm, "txtPpm", 1);
  seconds_ = AddText(upper, kBoxSeconds, "txtSeconds", 1);
  name_ = AddText(upper, kBoxName, "txtName", -1);
  name_->setMaxLength(kSurveyNameWidth);
  comments_ = new QPlainTextEdit(upper);
  comments_->setObjectName(QStringLiteral("txtComments"));
  comments_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  {
    auto* grid = static_cast<QGridLayout*>(upper->layout());
    const int row = grid->rowCount();
    ticks_[kBoxComments] = new QCheckBox(upper);
    ticks_[kBoxComments]->setObjectName(QStringLiteral("chkProperty5"));
    grid->addWidget(ticks_[kBoxComments], row, 0);
    grid->addWidget(new QLabel(QString::fromLatin1(kSidProperties[kBoxComments]), upper), row, 1);
    grid->addWidget(comments_, row, 2);
    connect(comments_, &QPlainTextEdit::textChanged, this, [this] {
      if (!showing_) ticks_[kBoxComments]->setChecked(true);
    });
  }
  easting_ = AddText(upper, kBoxEasting, "txtEasting", -1);
  northing_ = AddText(upper, kBoxNorthing, "txtNorthing", -1);

  options_ = new QWidget(this);
  options_->setObjectName(QStringLiteral("fraOptions"));
  new QGridLayout(options_);
  layout->addWidget(options_);
  units_ = AddList(options_, kBoxDistanceUnits, "cboDistanceUnits", kDistanceUnitsList.data(),
                   static_cast<int>(kDistanceUnitsList.size()));
  type_ = AddList(options_, kBoxDistanceType, "cboDistanceType", kDistanceTypeList.data(),
                  static_cast<int>(kDistanceTypeList.size()));
  correctionConstant_ = AddText(options_, kBoxDistanceCorrection, "txtCorrectionConstant", 3);
  {
    auto* grid = static_cast<QGridLayout*>(options_->layout());
    const int row = grid->rowCount() - 1;
    correctionPpm_ = new QLineEdit(options_);
    correctionPpm_->setObjectName(QStringLiteral("txtCorrectionPpm"));
    grid->addWidget(correctionPpm_, row, 3);
    connect(correctionPpm_, &QLineEdit::textEdited, this, [this] { ticks_[kBoxDistanceCorrection]->setChecked(true); });
    connect(correctionPpm_, &QLineEdit::editingFinished, this,
            [this] { correctionPpm_->setText(FromBytes(PictureText(ToBytes(correctionPpm_->text()), 1))); });
  }
  bearing_ = AddList(options_, kBoxBearingType, "cboBearingType", kBearingTypeList.data(),
                     static_cast<int>(kBearingTypeList.size()));
  bearingCorrection_ = AddText(options_, kBoxBearingCorrection, "txtBearingCorrection", 5);
  {
    auto* grid = static_cast<QGridLayout*>(options_->layout());
    grid->addWidget(new QLabel(QStringLiteral("( + rotate clockwise )"), options_), grid->rowCount() - 1, 3);
  }
  angleError_ = AddText(options_, kBoxAngles, "txtAngleError", 5);
  {
    auto* grid = static_cast<QGridLayout*>(options_->layout());
    const int row = grid->rowCount() - 1;
    // The box's own caption names the property; the field beside it is the conversion's tick.
    convert_ = new QCheckBox(QString::fromLatin1(kSidProperties[kBoxAngles]), options_);
    convert_->setObjectName(QStringLiteral("chkConvertAngles"));
    auto* label = qobject_cast<QLabel*>(grid->itemAtPosition(row, 1)->widget());
    label->setText(QStringLiteral("Error Est. (dd.mmss)"));
    grid->addWidget(convert_, row, 3);
    connect(convert_, &QCheckBox::clicked, this, [this] { ticks_[kBoxAngles]->setChecked(true); });
  }
  options_->hide();

  auto* buttons = new QHBoxLayout;
  layout->addLayout(buttons);
  connect(Button(this, buttons, "cmdOptions", QStringLiteral("Options")), &QPushButton::clicked, this,
          [this] { options_->setVisible(!options_->isVisible()); });
  connect(Button(this, buttons, "cmdOK", QStringLiteral("OK")), &QPushButton::clicked, this, [this] { Save(); });
  connect(Button(this, buttons, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  // A save finds its survey again by its S line; the form only closes with the job.
  view_ = std::make_unique<SessionView>(*this, session_);
}

QLineEdit* SidEditForm::AddText(QWidget* owner, int box, const char* name, int decimals) {
  auto* grid = static_cast<QGridLayout*>(owner->layout());
  const int row = grid->rowCount();
  auto* tick = new QCheckBox(owner);
  tick->setObjectName(QStringLiteral("chkProperty%1").arg(box));
  ticks_[static_cast<std::size_t>(box)] = tick;
  auto* field = new QLineEdit(owner);
  field->setObjectName(QString::fromLatin1(name));
  grid->addWidget(tick, row, 0);
  grid->addWidget(new QLabel(QString::fromLatin1(kSidProperties[box]), owner), row, 1);
  grid->addWidget(field, row, 2);
  connect(field, &QLineEdit::textEdited, tick, [tick] { tick->setChecked(true); });
  if (decimals >= 0) {
    connect(field, &QLineEdit::editingFinished, field,
            [field, decimals] { field->setText(FromBytes(PictureText(ToBytes(field->text()), decimals))); });
  }
  return field;
}

QComboBox* SidEditForm::AddList(QWidget* owner, int box, const char* name, const char* const* items, int count) {
  auto* grid = static_cast<QGridLayout*>(owner->layout());
  const int row = grid->rowCount();
  auto* tick = new QCheckBox(owner);
  tick->setObjectName(QStringLiteral("chkProperty%1").arg(box));
  ticks_[static_cast<std::size_t>(box)] = tick;
  auto* list = new QComboBox(owner);
  list->setObjectName(QString::fromLatin1(name));
  for (int i = 0; i < count; ++i) list->addItem(QString::fromLatin1(items[i]));
  list->setCurrentIndex(-1);
  grid->addWidget(tick, row, 0);
  grid->addWidget(new QLabel(QString::fromLatin1(kSidProperties[box]), owner), row, 1);
  grid->addWidget(list, row, 2);
  connect(list, &QComboBox::activated, tick, [tick] { tick->setChecked(true); });
  return list;
}

void SidEditForm::Show(const SidForm& form) {
  showing_ = true;
  form_ = form;
  constant_->setText(FromBytes(form.constant));
  ppm_->setText(FromBytes(form.ppm));
  seconds_->setText(FromBytes(form.seconds));
  name_->setText(FromBytes(form.name));
  if (comments_->toPlainText() != Shown(form.comments)) comments_->setPlainText(Shown(form.comments));
  easting_->setText(FromBytes(form.easting));
  northing_->setText(FromBytes(form.northing));
  units_->setCurrentIndex(form.distanceUnits);
  type_->setCurrentIndex(form.distanceType);
  correctionConstant_->setText(FromBytes(form.correctionConstant));
  correctionPpm_->setText(FromBytes(form.correctionPpm));
  bearing_->setCurrentIndex(form.bearingType);
  bearingCorrection_->setText(FromBytes(form.bearingCorrection));
  convert_->setChecked(form.convertToAngles);
  angleError_->setText(FromBytes(form.angleError));
  for (int box = 1; box <= 13; ++box) ticks_[static_cast<std::size_t>(box)]->setChecked(form.ticked[static_cast<std::size_t>(box)]);
  showing_ = false;
}

SidForm SidEditForm::Form() const {
  SidForm form = form_;
  form.constant = ToBytes(constant_->text());
  form.ppm = ToBytes(ppm_->text());
  form.seconds = ToBytes(seconds_->text());
  form.name = ToBytes(name_->text());
  form.comments = Typed(comments_->toPlainText());
  form.easting = ToBytes(easting_->text());
  form.northing = ToBytes(northing_->text());
  form.distanceUnits = units_->currentIndex();
  form.distanceType = type_->currentIndex();
  form.correctionConstant = ToBytes(correctionConstant_->text());
  form.correctionPpm = ToBytes(correctionPpm_->text());
  form.bearingType = bearing_->currentIndex();
  form.bearingCorrection = ToBytes(bearingCorrection_->text());
  form.convertToAngles = convert_->isChecked();
  form.angleError = ToBytes(angleError_->text());
  for (int box = 1; box <= 13; ++box) form.ticked[static_cast<std::size_t>(box)] = ticks_[static_cast<std::size_t>(box)]->isChecked();
  return form;
}

void SidEditForm::Save() {
  if (SaveSidForm(session_, Form())) accept();
}

// --- frmListSurveys -----------------------------------------------------------------------

ListSurveysForm::ListSurveysForm(Session& session, SidEditForm* editor, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), session_(session), editor_(editor) {
  setObjectName(QString::fromLatin1(kSurveyListForm));
  setWindowTitle(QStringLiteral("Survey ID's"));
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName(QStringLiteral("lstSurveys"));
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  list_->setSelectionMode(QAbstractItemView::MultiSelection);
  layout->addWidget(list_);
  comments_ = new QLabel(this);
  comments_->setObjectName(QStringLiteral("lblComments"));
  comments_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(comments_);
  auto* buttons = new QHBoxLayout;
  layout->addLayout(buttons);
  connect(Button(this, buttons, "cmdClose", QStringLiteral("Close")), &QPushButton::clicked, this, &QWidget::close);
  connect(Button(this, buttons, "cmdProperties", QStringLiteral("Properties")), &QPushButton::clicked, this, [this] {
    const int entry = list_->currentRow();
    if (entry < 0) return;
    SidForm form = editor_->Form();
    OpenSidProperties(session_, entry, form);
    editor_->Show(form);
    editor_->show();
    editor_->raise();
  });
  connect(Button(this, buttons, "cmdSelectBySid", QStringLiteral("Select by SID")), &QPushButton::clicked, this,
          [this] { SelectBySid(session_, Chosen()); });
  connect(Button(this, buttons, "cmdCreateNew", QStringLiteral("Create New")), &QPushButton::clicked, this, [this] {
    SidForm form;
    NewSidForm(form);
    editor_->Show(form);
    editor_->show();
    editor_->raise();
  });
  connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Clicked(list_->row(item)); });
  resize(420, 360);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Surveys, [this] { Reload(); });
}

void ListSurveysForm::Reload() {
  list_->clear();
  for (const std::string& entry : SurveyListEntries(session_)) list_->addItem(FromBytes(entry));
  comments_->clear();
}

std::vector<int> ListSurveysForm::Chosen() const {
  std::vector<int> entries;
  for (int i = 0; i < list_->count(); ++i) {
    if (list_->item(i)->isSelected()) entries.push_back(i);
  }
  return entries;
}

void ListSurveysForm::Clicked(int entry) {
  ShowSurveyLines(session_, Chosen());
  comments_->setText(Shown(SurveyCommentLabel(session_, entry)));
  SidForm form = editor_->Form();
  LoadSidForm(session_, entry, form);
  editor_->Show(form);
}

void ListSurveysForm::showEvent(QShowEvent* event) {
  Reload();
  if (const auto place = ReadWindowPlace(session_, kSurveyListForm)) {
    const double t = TwipsPerPixel(this);
    setGeometry(int(place->left / t), int(place->top / t), int(place->width / t), int(place->height / t));
  }
  QWidget::showEvent(event);
}

void ListSurveysForm::closeEvent(QCloseEvent* event) {
  const double t = TwipsPerPixel(this);
  const QRect g = geometry();
  StepOver([&] {
    WriteWindowPlace(session_, kSurveyListForm,
                     {float(g.top() * t), float(g.left() * t), float(g.height() * t), float(g.width() * t)});
  });
  QWidget::closeEvent(event);
}

// --- frmEditRawData -----------------------------------------------------------------------

EditRawDataForm::EditRawDataForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmEditRawData"));
  setWindowTitle(QStringLiteral(" Edit Line Segment"));
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  layout->addLayout(grid);
  const char* labels[] = {"Point From", "Point To", "Distance", "Bearing Quadrant", "Bearing", "Survey ID"};
  const char* names[] = {"txtPointFrom", "txtPointTo", "txtDistance", "txtQuadrant", "txtBearing"};
  for (int k = 1; k <= 6; ++k) {
    auto* tick = new QCheckBox(this);
    tick->setObjectName(QStringLiteral("chkField%1").arg(k));
    ticks_[static_cast<std::size_t>(k)] = tick;
    grid->addWidget(tick, k, 0);
    grid->addWidget(new QLabel(QString::fromLatin1(labels[k - 1]), this), k, 1);
    if (k == 6) {
      survey_ = new QComboBox(this);
      survey_->setObjectName(QStringLiteral("cboSurvey"));
      survey_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
      grid->addWidget(survey_, k, 2);
      connect(survey_, &QComboBox::activated, tick, [tick] { tick->setChecked(true); });
      continue;
    }
    auto* text = new QLineEdit(this);
    text->setObjectName(QString::fromLatin1(names[k - 1]));
    texts_[static_cast<std::size_t>(k - 1)] = text;
    grid->addWidget(text, k, 2);
    connect(text, &QLineEdit::textEdited, tick, [tick] { tick->setChecked(true); });
  }
  // The pictures the distance and the bearing take when the focus leaves them.
  for (const auto& [text, decimals] : {std::pair{texts_[2], 3}, std::pair{texts_[4], 1}}) {
    QLineEdit* field = text;
    const int places = decimals;
    connect(field, &QLineEdit::editingFinished, field,
            [field, places] { field->setText(FromBytes(PictureText(ToBytes(field->text()), places))); });
  }
  auto* buttons = new QHBoxLayout;
  layout->addLayout(buttons);
  connect(Button(this, buttons, "cmdOK", QStringLiteral("OK")), &QPushButton::clicked, this, [this] { Save(); });
  connect(Button(this, buttons, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  // A save finds its record again by its fields; the form only closes with the job.
  view_ = std::make_unique<SessionView>(*this, session_);
}

bool EditRawDataForm::Open(int entry) {
  if (!LoadRawEdit(session_, entry, form_)) return false;
  survey_->clear();
  int chosen = -1;
  for (const std::string& name : SurveyChoices(session_)) {
    if (Trim(name) == form_.fields[6]) chosen = survey_->count();
    survey_->addItem(FromBytes(name));
  }
  for (std::size_t k = 0; k < texts_.size(); ++k) {
    if (texts_[k]) texts_[k]->setText(FromBytes(form_.fields[k + 1]));
  }
  survey_->setCurrentIndex(chosen);
  for (int k = 1; k <= 6; ++k) ticks_[static_cast<std::size_t>(k)]->setChecked(false);
  show();
  raise();
  return true;
}

void EditRawDataForm::Save() {
  for (std::size_t k = 0; k < texts_.size(); ++k) {
    if (texts_[k]) form_.fields[k + 1] = ToBytes(texts_[k]->text());
  }
  form_.fields[6] = ToBytes(survey_->currentText());
  for (int k = 1; k <= 6; ++k) form_.ticked[static_cast<std::size_t>(k)] = ticks_[static_cast<std::size_t>(k)]->isChecked();
  // The dialog is closed before the rebuild question; it comes back when nothing was stored.
  hide();
  if (SaveRawEdit(session_, form_)) {
    accept();
  } else {
    show();
  }
}

// --- frmSwitchSID -------------------------------------------------------------------------

SwitchSidForm::SwitchSidForm(Session& session, QWidget* parent) : QDialog(parent), session_(session) {
  setObjectName(QStringLiteral("frmSwitchSID"));
  setWindowTitle(QStringLiteral("Change SID Assignment"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Change SID for all selected lines to: "), this));
  survey_ = new QComboBox(this);
  survey_->setObjectName(QStringLiteral("cboSurvey"));
  survey_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(survey_);
  auto* buttons = new QHBoxLayout;
  layout->addLayout(buttons);
  connect(Button(this, buttons, "cmdOK", QStringLiteral("OK")), &QPushButton::clicked, this, [this] {
    if (survey_->currentIndex() < 0) return;
    if (SwitchSid(session_, ToBytes(survey_->currentText()))) accept();
  });
  connect(Button(this, buttons, "cmdCancel", QStringLiteral("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  view_ = std::make_unique<SessionView>(*this, session_, Change::Surveys, [this] { FillNames(); });
}

void SwitchSidForm::FillNames() {
  const QString chosen = survey_->currentText();
  survey_->clear();
  for (const std::string& name : SurveyChoices(session_)) survey_->addItem(FromBytes(name));
  if (const int at = survey_->findText(chosen); at >= 0) survey_->setCurrentIndex(at);
}

void SwitchSidForm::Open() {
  FillNames();
  // Beside the list of selected lines.
  if (QWidget* lines = parentWidget() ? parentWidget()->findChild<QWidget*>(QString::fromLatin1(kLinesFormName)) : nullptr) {
    move(lines->frameGeometry().topRight());
  }
  show();
  raise();
}

// --- installation -------------------------------------------------------------------------

void InstallSurveysForms(QMainWindow& window, Session& session) {
  auto* editor = new SidEditForm(session, &window);
  auto* surveys = new ListSurveysForm(session, editor, &window);
  surveys->hide();
  auto* editRaw = new EditRawDataForm(session, &window);
  auto* switchSid = new SwitchSidForm(session, &window);

  if (QMenu* edit = window.findChild<QMenu*>(QStringLiteral("mnuEdit"))) {
    edit->addSeparator();
    QAction* entry = edit->addAction(QStringLiteral("Survey ID's..."));
    entry->setObjectName(QStringLiteral("mnuEditSurveys"));
    QObject::connect(entry, &QAction::triggered, surveys, [surveys, &session] {
      if (!JobGuard(session, kMsgOpenOrCreateJob)) return;
      surveys->show();
      surveys->raise();
    });
  }

  QWidget* lines = window.findChild<QWidget*>(QString::fromLatin1(kLinesFormName));
  if (!lines) return;
  auto* list = lines->findChild<QListWidget*>(QStringLiteral("lstItems"));
  if (auto* key = lines->findChild<QPushButton*>(QStringLiteral("cmdEditLine")); key && list) {
    QObject::connect(key, &QPushButton::clicked, editRaw, [editRaw, list] { editRaw->Open(list->currentRow()); });
  }
  if (auto* key = lines->findChild<QPushButton*>(QStringLiteral("cmdChangeSID"))) {
    QObject::connect(key, &QPushButton::clicked, switchSid, [switchSid, &session] {
      if (AskChangeSid(session)) switchSid->Open();
    });
  }
}

}  // namespace tessel
