#pragma once
// The bar above the canvas that tells what must not be missed (a suite tool that could not be
// run) without stopping the command under way: it stays until closed, and its key opens the
// Tool Log.

#include <QFrame>

class QLabel;

namespace tessel {

class NoticeBar : public QFrame {
  Q_OBJECT

 public:
  explicit NoticeBar(QWidget* parent);

  // Shows `text`, below the notices still shown.
  void Add(const QString& text);
  // The notices shown, one a line.
  QString Text() const;

 signals:
  void toolLogAsked();

 private:
  QLabel* text_ = nullptr;
};

}  // namespace tessel
