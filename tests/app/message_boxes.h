#pragma once
// Answers the program's message boxes as they come, for tests that drive the real windows: each
// box gets the next prepared button (or its default one) and its text is kept.

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>
#include <deque>

namespace tessel {

class MessageBoxes : public QObject {
 public:
  MessageBoxes() {
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      texts << box->text();
      QAbstractButton* button = nullptr;
      if (!answers.empty()) {
        button = box->button(answers.front());
        answers.pop_front();
      }
      if (!button) button = box->defaultButton() ? box->defaultButton() : box->buttons().value(0);
      button->click();
    });
    timer_.start();
  }
  // Whether a box said `part`.
  bool Asked(const QString& part) const { return !texts.filter(part).isEmpty(); }

  std::deque<QMessageBox::StandardButton> answers;
  QStringList texts;

 private:
  QTimer timer_;
};

}  // namespace tessel
