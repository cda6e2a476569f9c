#pragma once
// frmAdjustment, "Adjust Record Data": the built-in least squares adjustment of the job's record
// data. Runs the adjustment on a worker thread with its progress shown and a Cancel, then shows
// the summary, sortable tables of stations and observations (a click zooms the canvas there),
// the report it wrote, and draws the error ellipses and flagged observations over the job while
// it holds the result. Accept writes the adjusted stations into .COR and reads the job again.

#include <QWidget>

#include <atomic>
#include <memory>
#include <optional>
#include <string>

#include "adjustment/least_squares.h"
#include "forms/ui/session_view.h"
#include "model/session.h"

class QDoubleSpinBox;
class QLabel;
class QMainWindow;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QTableWidget;
class QTabWidget;
class QThread;

namespace tessel {

class AdjustmentForm : public QWidget {
  Q_OBJECT
 public:
  AdjustmentForm(Session& session, QMainWindow& window);
  ~AdjustmentForm() override;

  // Starts the adjustment of the open job with the options as they are set.
  void Run();
  // Tells the run under way to stop at its next step.
  void CancelRun();
  // Accept: the adjusted stations into .COR, then the job read again.
  void Accept();
  bool Running() const { return worker_ != nullptr; }
  const std::optional<adjustment::Adjustment>& Result() const { return result_; }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ShowProgress(const QString& step, int done, int of);
  void Finished(adjustment::Outcome outcome, bool cancelled, const std::string& jobBase);
  void ShowResult();
  void ClearResult();
  void DrawOverlay();
  void ZoomTo(double x0, double y0, double x1, double y1);
  void SetIdle(bool idle);

  Session& session_;
  QRadioButton* controlFixed_;
  QRadioButton* controlWeighted_;
  QDoubleSpinBox* controlSigma_;
  QDoubleSpinBox* ellipseScale_;
  QPushButton* run_;
  QPushButton* cancel_;
  QPushButton* accept_;
  QProgressBar* progress_;
  QLabel* status_;
  QLabel* summary_;
  QTabWidget* tabs_;
  QTableWidget* stations_;
  QTableWidget* observations_;
  QPlainTextEdit* report_;

  QThread* worker_ = nullptr;
  std::shared_ptr<std::atomic<bool>> cancelled_;
  std::optional<adjustment::Adjustment> result_;
  adjustment::Options options_;
  std::string jobBase_;  // the job the result belongs to
  std::unique_ptr<SessionView> view_;
};

// Adds "Adjust Record Data (Tessel)" at the end of Command > Data Quality Tools, and its window.
void InstallAdjustmentForms(QMainWindow& window, Session& session);

}  // namespace tessel
