#include "adjustment/ui/adjustment_form.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCloseEvent>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTabWidget>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>

#include <algorithm>
#include <exception>
#include <iterator>
#include <limits>
#include <utility>

#include "adjustment/adjustment_report.h"
#include "adjustment/adjustment_view.h"
#include "datasets/identity.h"
#include "forms/ui/form_placing.h"
#include "forms/ui/named_widgets.h"
#include "model/text_file.h"
#include "paint/qt_text.h"
#include "viewer/view_transform.h"

namespace tessel {

using namespace adjustment;

namespace {

constexpr int kIndexRole = Qt::UserRole + 1;  // the row's place in the result, on its first cell
constexpr int kSortRole = Qt::UserRole + 2;

// A number shown with fixed decimals and sorted by its value.
class NumberItem : public QTableWidgetItem {
 public:
  NumberItem(double value, int decimals) : QTableWidgetItem(QString::number(value, 'f', decimals)) {
    setData(kSortRole, value);
    setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  // An empty cell, sorted before every number.
  NumberItem() { setData(kSortRole, -std::numeric_limits<double>::infinity()); }
  bool operator<(const QTableWidgetItem& other) const override {
    return data(kSortRole).toDouble() < other.data(kSortRole).toDouble();
  }
};

template <std::size_t N>
QTableWidget* Table(QWidget* parent, const char* name, const char* const (&columns)[N]) {
  auto* table = new QTableWidget(0, static_cast<int>(N), parent);
  table->setObjectName(QString::fromLatin1(name));
  QStringList headers;
  for (const char* column : columns) headers << QString::fromLatin1(column);
  table->setHorizontalHeaderLabels(headers);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::SingleSelection);
  table->verticalHeader()->setVisible(false);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
  table->horizontalHeader()->setStretchLastSection(true);
  // First by the first column, rising: stations by id, observations by record (a record's
  // distance before its azimuth, as they were put in).
  table->horizontalHeader()->setSortIndicator(0, Qt::AscendingOrder);
  table->setSortingEnabled(true);
  return table;
}

QTableWidgetItem* TextItem(const std::string& text) { return new QTableWidgetItem(FromBytes(text)); }

// Beside the main window where the screen has room for it, so that the canvas its rows zoom stays
// in sight; otherwise where every tool window opens.
void PlaceForm(QWidget& form, const QWidget& window) {
  const QScreen* screen = window.screen();
  const QRect main = window.frameGeometry();
  const int room = screen ? screen->availableGeometry().right() - main.right() : 0;
  if (room < std::max(600, form.minimumSizeHint().width() + 8)) {
    PlaceBesideMainWindow(form);
    return;
  }
  form.resize(std::min(form.width(), room - 8), std::max(form.height(), main.height() - 40));
  form.move(main.right() + 4, main.top());
}

// The result's index of a table row, as sorted now.
int IndexOfRow(const QTableWidget* table, int row) {
  const QTableWidgetItem* first = table->item(row, 0);
  return first ? first->data(kIndexRole).toInt() : -1;
}

}  // namespace

AdjustmentForm::AdjustmentForm(Session& session, QMainWindow& window)
    : QWidget(&window, Qt::Tool), session_(session) {
  setObjectName(QStringLiteral("frmAdjustment"));
  setWindowTitle(QString::fromLatin1(kAdjustTitle));

  controlFixed_ = new QRadioButton(tr("Hold control fixed"), this);
  controlFixed_->setObjectName(QStringLiteral("optControlFixed"));
  controlFixed_->setChecked(true);
  controlWeighted_ = new QRadioButton(tr("Control standard error:"), this);
  controlWeighted_->setObjectName(QStringLiteral("optControlSigma"));
  controlSigma_ = new QDoubleSpinBox(this);
  controlSigma_->setObjectName(QStringLiteral("txtControlSigma"));
  controlSigma_->setDecimals(4);
  controlSigma_->setRange(0.0001, 1.0e6);
  controlSigma_->setValue(0.1);
  controlSigma_->setSuffix(tr(" job units"));
  controlSigma_->setEnabled(false);
  connect(controlWeighted_, &QRadioButton::toggled, controlSigma_, &QWidget::setEnabled);
  ellipseScale_ = new QDoubleSpinBox(this);
  ellipseScale_->setObjectName(QStringLiteral("txtEllipseScale"));
  ellipseScale_->setDecimals(0);
  ellipseScale_->setRange(1, 100000);
  ellipseScale_->setValue(kDefaultEllipseScale);
  ellipseScale_->setPrefix(QStringLiteral("x "));
  connect(ellipseScale_, &QDoubleSpinBox::valueChanged, this, [this] {
    if (result_) DrawOverlay();
  });

  run_ = Button(this, "cmdRun", tr("Run"));
  run_->setDefault(true);
  cancel_ = Button(this, "cmdCancel", tr("Cancel"));
  cancel_->setEnabled(false);
  accept_ = Button(this, "cmdAccept", tr("Accept"));
  accept_->setEnabled(false);
  QPushButton* close = Button(this, "cmdClose", tr("Close"));
  connect(run_, &QPushButton::clicked, this, &AdjustmentForm::Run);
  connect(cancel_, &QPushButton::clicked, this, &AdjustmentForm::CancelRun);
  connect(accept_, &QPushButton::clicked, this, &AdjustmentForm::Accept);
  connect(close, &QPushButton::clicked, this, &QWidget::close);

  progress_ = new QProgressBar(this);
  progress_->setObjectName(QStringLiteral("prgAdjust"));
  progress_->setRange(0, kMaxIterations + 1);
  progress_->setValue(0);
  status_ = new QLabel(this);
  status_->setObjectName(QStringLiteral("lblStatus"));
  summary_ = new QLabel(this);
  summary_->setObjectName(QStringLiteral("lblSummary"));
  summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  summary_->setWordWrap(true);

  stations_ = Table(this, "grdStations", kStationColumns);
  observations_ = Table(this, "grdObservations", kObservationColumns);
  report_ = new QPlainTextEdit(this);
  report_->setObjectName(QStringLiteral("txtReport"));
  report_->setReadOnly(true);
  report_->setLineWrapMode(QPlainTextEdit::NoWrap);
  report_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  tabs_ = new QTabWidget(this);
  tabs_->setObjectName(QStringLiteral("tabResult"));
  tabs_->addTab(stations_, tr("Stations"));
  tabs_->addTab(observations_, tr("Observations"));
  tabs_->addTab(report_, tr("Report"));

  connect(stations_, &QTableWidget::cellClicked, this, [this](int row) {
    const int index = IndexOfRow(stations_, row);
    if (!result_ || index < 0) return;
    const ZoomBox box = StationBox(*result_, index, session_.UnitsPerChain, kAspect);
    ZoomTo(box.x0, box.y0, box.x1, box.y1);
  });
  connect(observations_, &QTableWidget::cellClicked, this, [this](int row) {
    const int index = IndexOfRow(observations_, row);
    if (!result_ || index < 0) return;
    if (const auto box = ObservationBox(*result_, index, session_.UnitsPerChain, kAspect)) ZoomTo(box->x0, box->y0, box->x1, box->y1);
  });

  auto* control = new QGroupBox(tr("Control"), this);
  auto* controlRows = new QVBoxLayout(control);
  controlRows->addWidget(controlFixed_);
  auto* sigmaRow = new QHBoxLayout;
  sigmaRow->addWidget(controlWeighted_);
  sigmaRow->addWidget(controlSigma_);
  controlRows->addLayout(sigmaRow);
  auto* ellipses = new QGroupBox(tr("Error ellipses"), this);
  auto* ellipseRow = new QHBoxLayout(ellipses);
  ellipseRow->addWidget(new QLabel(tr("Scale:"), ellipses));
  ellipseRow->addWidget(ellipseScale_);
  auto* options = new QHBoxLayout;
  options->addWidget(control);
  options->addWidget(ellipses);
  options->addStretch();
  auto* runButtons = new QVBoxLayout;
  runButtons->addWidget(run_);
  runButtons->addWidget(cancel_);
  options->addLayout(runButtons);
  auto* progressRow = new QHBoxLayout;
  progressRow->addWidget(progress_, 1);
  progressRow->addWidget(status_, 2);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(accept_);
  buttons->addStretch();
  buttons->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(options);
  layout->addLayout(progressRow);
  layout->addWidget(summary_);
  layout->addWidget(tabs_, 1);
  layout->addLayout(buttons);
  resize(860, 560);

  // A result belongs to its job: the window closes with it.
  view_ = std::make_unique<SessionView>(*this, session_);
}

AdjustmentForm::~AdjustmentForm() {
  if (worker_) {
    cancelled_->store(true);
    worker_->wait();
    delete worker_;
  }
}

void AdjustmentForm::Run() {
  if (worker_ || !JobGuard(session_, kMsgOpenOrCreateJob)) return;
  ClearResult();
  options_ = Options{};
  if (controlWeighted_->isChecked()) options_.controlSigma = controlSigma_->value();
  const std::string jobBase = session_.JobBase;
  const Options options = options_;
  cancelled_ = std::make_shared<std::atomic<bool>>(false);
  auto outcome = std::make_shared<Outcome>();
  // The worker reads only the job's files and its own copies; progress comes back queued to the
  // window, and the window's Cancel is read at every step.
  worker_ = QThread::create([this, jobBase, options, outcome, cancelled = cancelled_] {
    try {
      *outcome = AdjustJob(jobBase, options, [this, cancelled](const std::string& step, int done, int of) {
        QMetaObject::invokeMethod(
            this, [this, text = QString::fromStdString(step), done, of] { ShowProgress(text, done, of); },
            Qt::QueuedConnection);
        return !cancelled->load();
      });
    } catch (const std::exception& fault) {
      outcome->adjustment.reset();
      outcome->error = fault.what();
    }
  });
  connect(worker_, &QThread::finished, this, [this, outcome, cancelled = cancelled_, jobBase] {
    Finished(std::move(*outcome), cancelled->load(), jobBase);
  });
  SetIdle(false);
  progress_->setValue(0);
  status_->setText(tr("Reading the job"));
  worker_->start();
}

void AdjustmentForm::CancelRun() {
  if (cancelled_) cancelled_->store(true);
}

void AdjustmentForm::ShowProgress(const QString& step, int done, int of) {
  if (!worker_) return;
  progress_->setRange(0, of);
  progress_->setValue(done);
  status_->setText(step);
}

void AdjustmentForm::Finished(Outcome outcome, bool cancelled, const std::string& jobBase) {
  worker_->deleteLater();
  worker_ = nullptr;
  SetIdle(true);
  // A run stopped, or overtaken by a closed window or another job, leaves nothing.
  if (cancelled || !isVisible() || session_.JobBase != jobBase) {
    progress_->setValue(0);
    status_->setText(QString::fromLatin1(kAdjustCancelledStatus));
    return;
  }
  progress_->setValue(progress_->maximum());
  if (!outcome.adjustment) {
    const std::string text = AdjustFailedText(outcome.error);
    status_->setText(FromBytes(text));
    session_.user.Message(text, Icon::Exclamation, Buttons::Ok, kAdjustTitle);
    return;
  }
  result_ = std::move(outcome.adjustment);
  jobBase_ = jobBase;
  try {
    status_->setText(tr("Report written to %1").arg(FromBytes(WriteReport(*result_, jobBase_, options_))));
  } catch (const std::exception& fault) {
    status_->setText(FromBytes(fault.what()));
    TellFileFault(session_.user, fault);
  }
  ShowResult();
}

void AdjustmentForm::ShowResult() {
  const Adjustment& a = *result_;
  summary_->setText(FromBytes(SummaryText(a)));

  stations_->setSortingEnabled(false);
  stations_->setRowCount(static_cast<int>(a.stations.size()));
  for (int row = 0; row < stations_->rowCount(); ++row) {
    const StationResult& s = a.stations[static_cast<std::size_t>(row)];
    QTableWidgetItem* id = TextItem(s.id);
    id->setData(kIndexRole, row);
    stations_->setItem(row, 0, id);
    const double values[] = {s.x, s.y, s.sx, s.sy, s.a, s.b, s.thetaDeg};
    for (std::size_t k = 0; k < std::size(values); ++k) {
      stations_->setItem(row, static_cast<int>(k) + 1, new NumberItem(values[k], k == 6 ? 2 : 4));
    }
  }
  stations_->setSortingEnabled(true);
  stations_->resizeColumnsToContents();

  observations_->setSortingEnabled(false);
  observations_->setRowCount(static_cast<int>(a.observations.size()));
  const QColor flaggedBack(255, 200, 200);
  for (int row = 0; row < observations_->rowCount(); ++row) {
    const ObservationResult& r = a.observations[static_cast<std::size_t>(row)];
    const Observation& o = r.observation;
    auto* record = new NumberItem(o.record, 0);
    record->setData(kIndexRole, row);
    observations_->setItem(row, 0, record);
    observations_->setItem(row, 1, TextItem(KindName(o.kind)));
    observations_->setItem(row, 2, TextItem(o.from));
    observations_->setItem(row, 3, TextItem(o.to));
    observations_->setItem(row, 4, TextItem(o.survey));
    observations_->setItem(row, 5, new NumberItem(r.residual, o.kind == ObservationKind::Azimuth ? 1 : 4));
    observations_->setItem(row, 6, r.stdResidual ? new NumberItem(*r.stdResidual, 2) : new NumberItem());
    observations_->setItem(row, 7, TextItem(r.flagged ? "yes" : ""));
    if (r.flagged) {
      for (int column = 0; column < observations_->columnCount(); ++column) {
        QTableWidgetItem* cell = observations_->item(row, column);
        cell->setBackground(flaggedBack);
        QFont bold = cell->font();
        bold.setBold(true);
        cell->setFont(bold);
      }
    }
  }
  observations_->setSortingEnabled(true);
  observations_->resizeColumnsToContents();

  report_->setPlainText(FromBytes(ReportText(a, jobBase_, options_)));
  // The blunders first, when there are any: they are what the surveyor looks at.
  tabs_->setCurrentWidget(a.blunders.empty() ? static_cast<QWidget*>(stations_) : observations_);
  accept_->setEnabled(!a.stations.empty());
  DrawOverlay();
}

void AdjustmentForm::ClearResult() {
  result_.reset();
  summary_->clear();
  stations_->setRowCount(0);
  observations_->setRowCount(0);
  report_->clear();
  accept_->setEnabled(false);
  if (!session_.adjustmentOverlay.Empty()) {
    session_.adjustmentOverlay.Clear();
    if (JobGuard(session_)) Redraw(session_);
  }
}

void AdjustmentForm::DrawOverlay() {
  session_.adjustmentOverlay = BuildOverlay(*result_, ellipseScale_->value());
  Redraw(session_);
}

void AdjustmentForm::ZoomTo(double x0, double y0, double x1, double y1) {
  SavePrevious(session_);
  ZoomWindow(session_, x0, y0, x1, y1);
}

void AdjustmentForm::SetIdle(bool idle) {
  run_->setEnabled(idle);
  cancel_->setEnabled(!idle);
  controlFixed_->setEnabled(idle);
  controlWeighted_->setEnabled(idle);
  controlSigma_->setEnabled(idle && controlWeighted_->isChecked());
  if (!idle) accept_->setEnabled(false);
}

void AdjustmentForm::Accept() {
  if (!result_ || worker_ || session_.JobBase != jobBase_) return;
  const int stations = static_cast<int>(result_->stations.size());
  if (session_.user.Message(AcceptQuestion(jobBase_, stations), Icon::Question, Buttons::YesNo, kAdjustTitle) !=
      Answer::Yes) {
    return;
  }
  int written = 0;
  try {
    written = AcceptAdjustment(*result_, jobBase_);
  } catch (const std::exception& fault) {
    TellFileFault(session_.user, fault);
    return;
  }
  // Written once: a second Accept would replace the backup of the former file with this one.
  accept_->setEnabled(false);
  ReloadJobFiles(session_);
  session_.user.Message(AcceptedText(jobBase_, written), Icon::Information, Buttons::Ok, kAdjustTitle);
}

void AdjustmentForm::closeEvent(QCloseEvent* event) {
  CancelRun();
  ClearResult();
  status_->clear();
  progress_->setValue(0);
  QWidget::closeEvent(event);
}

void InstallAdjustmentForms(QMainWindow& window, Session& session) {
  auto* quality = window.findChild<QMenu*>(QStringLiteral("mnuCommandQuality"));
  if (quality == nullptr) return;
  auto* form = new AdjustmentForm(session, window);
  form->hide();
  quality->addSeparator();
  QAction* entry = quality->addAction(QString::fromLatin1(kAdjustEntryCaption));
  entry->setObjectName(QString::fromLatin1(kAdjustEntryName));
  Session* s = &session;
  QObject::connect(entry, &QAction::triggered, form, [s, form] {
    if (!JobGuard(*s, kMsgOpenOrCreateJob)) return;
    if (!form->isVisible()) PlaceForm(*form, *form->parentWidget());
    form->show();
    form->raise();
    form->activateWindow();
  });
}

}  // namespace tessel
