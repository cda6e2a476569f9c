// The forms of the suite commands on the offscreen platform: the new job wizard through its
// file dialog, the text window, the toolbox, and Print to a PDF file.

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>
#include <functional>

#include "app/view_window.h"
#include "job/load_sequence.h"

namespace tessel {

namespace {

// Answers modal windows as they come up, each by the first handler that accepts it.
class ModalAnswerer : public QObject {
 public:
  explicit ModalAnswerer(std::vector<std::function<bool(QWidget*)>> handlers) : handlers_(std::move(handlers)) {
    timer_.setInterval(20);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      QWidget* modal = QApplication::activeModalWidget();
      if (!modal || modal == last_) return;
      for (auto& handler : handlers_) {
        if (handler(modal)) {
          last_ = modal;
          return;
        }
      }
    });
    timer_.start();
  }

 private:
  std::vector<std::function<bool(QWidget*)>> handlers_;
  QTimer timer_;
  QWidget* last_ = nullptr;
};

}  // namespace

class SuiteFormsTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    tools_ = std::make_unique<QTemporaryDir>();
    jobs_ = std::make_unique<QTemporaryDir>();
    window_ = std::make_unique<ViewWindow>(tools_->path());
    window_->show();
    window_->Load();
  }

  void cleanup() {
    window_.reset();
    jobs_.reset();
    tools_.reset();
  }

  void newJobWizardSetsUpAJobWithoutFiles() {
    ViewWindow& w = *window_;
    QStringList seen;
    ModalAnswerer answers({
        [&](QWidget* modal) {
          if (modal->objectName() != QStringLiteral("frmStartupWiz")) return false;
          seen << modal->windowTitle();
          // Queued, so that this handler has returned before the wizard opens its own dialog.
          QMetaObject::invokeMethod(modal->findChild<QPushButton*>(QStringLiteral("cmdNext")), "click",
                                    Qt::QueuedConnection);
          return true;
        },
        [&](QWidget* modal) {
          auto* dialog = qobject_cast<QFileDialog*>(modal);
          if (!dialog) return false;
          seen << dialog->windowTitle();
          // A name that does not exist yet, typed into the name field as a user would.
          dialog->setDirectory(jobs_->path());
          dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(QStringLiteral("newjob"));
          QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
          return true;
        },
    });
    w.findChild<QAction*>(QStringLiteral("mnuFileNew"))->trigger();

    QCOMPARE(seen, (QStringList{QStringLiteral("New job wizard"), QStringLiteral("Select or Create a directory & Name the Job")}));
    QCOMPARE(w.session().JobName, std::string("NEWJOB"));
    QFile marker(jobs_->filePath(QStringLiteral("TEMP.JOB")));
    QVERIFY(marker.open(QIODevice::ReadOnly));
    QCOMPARE(marker.readAll(), QByteArray("NEWJOB\r\n"));
    QVERIFY(QFile::exists(jobs_->filePath(QStringLiteral("Zone.dat"))));
    QVERIFY(w.findChild<QAction*>(QStringLiteral("mnuFileClose"))->isEnabled());
    QVERIFY(!w.findChild<QAction*>(QStringLiteral("mnuFileOpen"))->isEnabled());
    QTRY_VERIFY(w.findChild<QWidget*>(QStringLiteral("frmWiz2"))->isVisible());
  }

  void textWindowGrowsAtEachShowing() {
    ViewWindow& w = *window_;
    QAction* entry = w.findChild<QAction*>(QStringLiteral("mnuViewTextWindow"));
    auto* text = w.findChild<QPlainTextEdit*>(QStringLiteral("txtReport"));
    entry->trigger();
    QCOMPARE(text->toPlainText(), QStringLiteral("new text\n"));
    entry->trigger();
    entry->trigger();
    QCOMPARE(text->toPlainText(), QStringLiteral("new text\nnew text\n"));
    QCOMPARE(w.findChild<QWidget*>(QStringLiteral("frmReport"))->windowTitle(), QStringLiteral("Project Information"));
  }

  void toolboxButtonWithoutAProgramAsksForSetup() {
    ViewWindow& w = *window_;
    QString shown;
    ModalAnswerer answers({[&](QWidget* modal) {
      auto* box = qobject_cast<QMessageBox*>(modal);
      if (!box) return false;
      shown = box->text();
      QMetaObject::invokeMethod(box, "accept", Qt::QueuedConnection);
      return true;
    }});
    w.findChild<QAction*>(QStringLiteral("mnuViewToolbox"))->trigger();
    QWidget* toolbox = w.findChild<QWidget*>(QStringLiteral("frmToolbox"));
    QVERIFY(toolbox->isVisible());
    QCOMPARE(toolbox->windowTitle(), QStringLiteral("Tools"));
    toolbox->findChild<QPushButton*>(QStringLiteral("cmdTool3"))->click();
    QCOMPARE(shown, QStringLiteral("Setup toolbox/toolbar under Advanced Configuration"));
  }

  void printWritesTheCanvasToPaper() {
    ViewWindow& w = *window_;
    const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
    for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
      QVERIFY(QFile::copy(samples.filePath(name), jobs_->filePath(name)));
    }
    OpenJob(w.session(), jobs_->filePath(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    const QString pdf = jobs_->filePath(QStringLiteral("canvas.pdf"));
    w.printer().setOutputFormat(QPrinter::PdfFormat);
    w.printer().setOutputFileName(pdf);
    QString shown;
    ModalAnswerer answers({[&](QWidget* modal) {
      auto* box = qobject_cast<QMessageBox*>(modal);
      if (!box) return false;
      shown = box->text();
      QMetaObject::invokeMethod(box, "accept", Qt::QueuedConnection);
      return true;
    }});
    w.findChild<QAction*>(QStringLiteral("mnuFilePrint"))->trigger();
    QCOMPARE(shown, QStringLiteral("Printing Complete."));
    QFile file(pdf);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith("%PDF-"));
    QVERIFY(bytes.size() > 2000);
    QVERIFY(w.findChild<QToolBar*>(QStringLiteral("Toolbar1"))->isVisible());
  }

 private:
  std::unique_ptr<QTemporaryDir> tools_;
  std::unique_ptr<QTemporaryDir> jobs_;
  std::unique_ptr<ViewWindow> window_;
};

}  // namespace tessel

QTEST_MAIN(tessel::SuiteFormsTest)
#include "suite_forms_test.moc"
