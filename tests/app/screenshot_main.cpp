// The README's screenshot: the sample job in the main window, filling the screen it is given
// (scripts/screenshot.sh runs it under Xvfb at 1600x1000), written as a PNG.
//
//   tessel_screenshot <samples folder> <out.png>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>

#include "app/view_window.h"
#include "job/load_sequence.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: tessel_screenshot <samples folder> <out.png>\n");
    return 2;
  }
  QTemporaryDir tools, jobs;
  const QDir samples(QString::fromLocal8Bit(argv[1]));
  for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
    if (!QFile::copy(samples.filePath(name), jobs.filePath(name))) return 1;
  }
  tessel::ViewWindow window(tools.path());
  // Without a window manager nothing maximises a window: it is held at the screen's size instead.
  if (const QScreen* screen = window.screen()) {
    window.setGeometry(screen->availableGeometry());
    window.setFixedSize(screen->availableGeometry().size());
  }
  window.show();
  window.Load();
  tessel::OpenJob(window.session(), jobs.filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
  window.findChild<QAction*>(QStringLiteral("mnuViewScaleBar"))->trigger();
  int result = 1;
  QTimer::singleShot(1500, [&] {
    const QImage shot = window.grab().toImage();
    result = shot.save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
    std::printf("%dx%d written to %s\n", shot.width(), shot.height(), argv[2]);
    window.close();
    app.quit();
  });
  app.exec();
  return result;
}
