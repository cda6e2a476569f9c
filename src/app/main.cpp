// Tessel: the desktop workstation for the measurement records of a township.

#include <QApplication>

#include "app/splash_form.h"
#include "app/view_window.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tessel"));
  tessel::SplashForm splash;
  splash.exec();
  tessel::ViewWindow view(QCoreApplication::applicationDirPath());
  view.PlaceOnScreen();
  view.show();
  view.Load();
  return QApplication::exec();
}
