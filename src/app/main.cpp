// Tessel: the desktop workstation for the measurement records of a township.

#include <QApplication>
#include <QDir>
#include <QMessageBox>

#include <cstdlib>

#include "app/splash_form.h"
#include "app/view_window.h"
#include "datasets/tool_folder.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tessel"));
  // Beside the program, or the user's own folder for an installed one.
  const tessel::ToolFolderChoice toolFolder = tessel::ChooseToolFolder(
      QDir::toNativeSeparators(QCoreApplication::applicationDirPath()).toLocal8Bit().toStdString(), std::getenv);
  tessel::SplashForm splash;
  splash.exec();
  tessel::ViewWindow view(QString::fromLocal8Bit(toolFolder.folder.c_str()));
  view.PlaceOnScreen();
  view.show();
  if (!toolFolder.problem.empty()) {
    QMessageBox::warning(&view, QStringLiteral("Tessel"), QString::fromLocal8Bit(toolFolder.problem.c_str()));
  }
  view.Load();
  return QApplication::exec();
}
