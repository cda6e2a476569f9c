#pragma once
// frmSplash: shown at start, closed by its timer or by a click on it.

#include <QDialog>

namespace tessel {

class SplashForm : public QDialog {
  Q_OBJECT

 public:
  explicit SplashForm(int milliseconds = 2500, QWidget* parent = nullptr);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
};

}  // namespace tessel
