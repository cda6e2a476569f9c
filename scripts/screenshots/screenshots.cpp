// Makes the pictures of the user's manual from the program itself: the main window with the
// sample job, the help window and the forms the manual shows, each grabbed as it stands.
//
//   manual-screenshots OUT_DIR SAMPLES_DIR
//
// scripts/screenshots.sh runs it under a virtual X server and adds the picture that
// tessel-batch render makes.

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QStatusBar>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <functional>
#include <iostream>

#include "app/legend_dock.h"
#include "app/view_window.h"
#include "cama/cama_import.h"
#include "forms/ui/long_work.h"
#include "help/ui/help_forms.h"
#include "job/load_sequence.h"

namespace {

QString g_out;
int g_failures = 0;

void Settle(int ms = 150) { QTest::qWait(ms); }

bool Save(QWidget& widget, const QString& file) {
  Settle();
  const bool saved = widget.grab().save(QDir(g_out).filePath(file));
  std::cout << (saved ? "wrote " : "could not write ") << file.toStdString() << "\n";
  if (!saved) ++g_failures;
  return saved;
}

QWidget* FindForm(const QString& name) {
  for (QWidget* w : QApplication::allWidgets()) {
    if (w->objectName() == name && w->isVisible()) return w;
  }
  return nullptr;
}

// Triggers a menu entry or toolbar key and grabs the form it opens, modal or not, then closes it.
void Shoot(tessel::ViewWindow& window, const char* action, const QString& form, const QString& file,
           const std::function<void(QWidget&)>& prepare = {}) {
  bool shot = false;
  QTimer::singleShot(400, &window, [&] {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal->objectName() != form) return;
    if (prepare) prepare(*modal);
    shot = Save(*modal, file);
    if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->reject();
  });
  QAction* entry = window.findChild<QAction*>(QString::fromLatin1(action));
  if (!entry) {
    std::cout << "no entry " << action << "\n";
    ++g_failures;
    return;
  }
  entry->trigger();
  if (shot) return;
  Settle(450);
  QWidget* shown = FindForm(form);
  if (!shown) {
    std::cout << "no form " << form.toStdString() << "\n";
    ++g_failures;
    return;
  }
  if (prepare) prepare(*shown);
  Save(*shown, file);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  if (argc != 3) {
    std::cerr << "usage: manual-screenshots OUT_DIR SAMPLES_DIR\n";
    return 2;
  }
  g_out = QString::fromLocal8Bit(argv[1]);
  QDir().mkpath(g_out);
  const QDir samples(QString::fromLocal8Bit(argv[2]));
  QTemporaryDir tools, jobs;
  for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
    QFile::copy(samples.filePath(name), jobs.filePath(name));
  }

  tessel::ViewWindow window(tools.path());
  window.resize(1024, 768);
  window.show();
  window.Load();
  const QString def = jobs.filePath(QStringLiteral("T12NR04E.def"));
  tessel::OpenJob(window.session(), QDir::toNativeSeparators(def).toStdString(), "T12NR04E.def");
  Settle(400);
  Save(window, QStringLiteral("main-window.png"));

  // The legend beside the canvas, and long work's progress with its Cancel in the status bar.
  window.legend().show();
  Settle(300);
  QTimer::singleShot(900, &window, [&window] {
    Save(window, QStringLiteral("legend-and-progress.png"));
    if (auto* cancel = window.statusBar()->findChild<QPushButton*>(QStringLiteral("cmdLongWorkCancel"))) cancel->click();
  });
  tessel::RunLongWork(window, [](tessel::Progress& progress) {
    progress.Report(tessel::kCamaReadingStep, 0.42);
    while (!progress.CancelAsked()) QThread::msleep(10);
  });
  window.legend().hide();
  Settle(300);

  Shoot(window, "mnuFileConfig", QStringLiteral("frmConfig"), QStringLiteral("configuration.png"));
  Shoot(window, "mnuRegionBuild", QStringLiteral("frmRegion"), QStringLiteral("region-console.png"),
        [](QWidget& form) { form.resize(900, 620); });
  if (QWidget* region = FindForm(QStringLiteral("frmRegion"))) region->close();
  Shoot(window, "mnuCommandCadastralIrregular", QStringLiteral("frmTWP"), QStringLiteral("township-diagram.png"),
        [](QWidget& form) {
          if (auto* define = form.findChild<QPushButton*>(QStringLiteral("cmdDefine"))) define->click();
        });
  if (QWidget* township = FindForm(QStringLiteral("frmTWP"))) {
    if (auto* section = township->findChild<QPushButton*>(QStringLiteral("cmdSection6"))) section->click();
    Settle(400);
    if (QWidget* irr = FindForm(QStringLiteral("frmIRR"))) {
      Save(*irr, QStringLiteral("section-dialog.png"));
      irr->close();
    } else {
      std::cout << "no form frmIRR\n";
      ++g_failures;
    }
    township->close();
  }
  Shoot(window, "mnuCommandAdjust", QStringLiteral("frmAdjustment"), QStringLiteral("adjustment-window.png"),
        [](QWidget& form) {
          form.resize(860, 560);
          if (auto* run = form.findChild<QPushButton*>(QStringLiteral("cmdRun"))) run->click();
          auto* accept = form.findChild<QPushButton*>(QStringLiteral("cmdAccept"));
          for (int waited = 0; accept && !accept->isEnabled() && waited < 10000; waited += 100) Settle(100);
        });
  if (QWidget* adjustment = FindForm(QStringLiteral("frmAdjustment"))) {
    // The canvas with the error ellipses the window draws over the job.
    Save(window, QStringLiteral("adjustment-ellipses.png"));
    adjustment->close();
  }
  Shoot(window, "mnuHelpContents", QStringLiteral("frmHelp"), QStringLiteral("help-window.png"), [](QWidget& form) {
    form.resize(1000, 680);
    if (auto* help = qobject_cast<tessel::HelpWindow*>(&form)) help->Search(QStringLiteral("double corner"));
  });
  tessel::FileClose(window.session());
  return g_failures == 0 ? 0 : 1;
}
