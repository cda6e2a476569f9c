// tessel-batch render on the sample job, run as a user runs it, with its pictures read back.

#include <cmath>
#include <utility>

#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontMetrics>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "model/config.h"
#include "paint/painter_canvas.h"

namespace tessel {
namespace {

// The pixels of a picture that are not white.
int Ink(const QImage& picture) {
  int inked = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) inked += picture.pixelColor(x, y) != QColor(Qt::white);
  }
  return inked;
}

}  // namespace

class RenderTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    work_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(work_->filePath(QStringLiteral("job"))));
    QVERIFY(QDir().mkpath(work_->filePath(QStringLiteral("tools"))));
    const QDir samples(QStringLiteral(TESSEL_SAMPLES_DIR));
    for (const QString& name : samples.entryList({QStringLiteral("T12NR04E.*")}, QDir::Files)) {
      QVERIFY(QFile::copy(samples.filePath(name), Job(name)));
    }
  }

  // A PNG of the asked size, layers and background. The load's messages, and nothing else, reach
  // standard error; a PDF is one page.
  void pngOfTheAskedSizeLayersAndBackgroundAndAOnePagePdf() {
    const QString png = Out("job.png");
    QCOMPARE(Render(png, {"--size", "1000x750", "--layers", "points,raw", "--background", "2"}), 0);
    QCOMPARE(stderr_, QByteArray());
    const QImage picture(png);
    QCOMPARE(picture.size(), QSize(1000, 750));
    QCOMPARE(picture.pixelColor(2, 2), QColor(Qt::black));
    QCOMPARE(Render(png), 0);
    QCOMPARE(QImage(png).size(), QSize(1280, 960));
    QCOMPARE(QImage(png).pixelColor(2, 2), QColor(Qt::white));

    QVERIFY(QFile::remove(Job(QStringLiteral("T12NR04E.LSA"))));
    QCOMPARE(Render(Out("job.pdf")), 0);
    QCOMPARE(stderr_, QByteArray("LSA file not found\n"));
    QFile file(Out("job.pdf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith("%PDF-") && bytes.size() > 1000);
    QCOMPARE(static_cast<int>(bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") + bytes.count("/Type /Page/") +
                              bytes.count("/Type /Page>")),
             1);
  }

  void absurdNumbersDrawNothingWhereTheyCannotAndTheRestAsEver() {
    // A point of .COR at X 1E39 and a control station at X 1E20; a dot size no screen shows.
    QFile cor(Job(QStringLiteral("T12NR04E.COR")));
    QVERIFY(cor.open(QIODevice::Append));
    cor.write(" 999999            1E39         1000.000\r\n");
    cor.close();
    Config config;
    config.PtSizeCor = 32767;
    config.PtSizeCtrl = 32767;
    WriteConfig(work_->filePath(QStringLiteral("tools/Tessel.cfg")).toStdString(), config);
    QCOMPARE(Render(Out("far.png"), {"--layers", "points,control,lsa"}), 0);
    const QImage picture(Out("far.png"));
    QVERIFY(!picture.isNull());
    QVERIFY2(Ink(picture) > 0, "the picture is blank");

    // On the canvas itself: what cannot be on the image is dropped, a line to it is cut at the
    // reach, and a pen no screen shows is drawn at the widest.
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    {
      PainterCanvas canvas(&image);
      canvas.SetScale(0, 100, 200, -100);
      canvas.SetPenWidth(3);
      const double nan = std::nan("");
      const std::pair<double, double> far[] = {{1e20, 50.0}, {-1e300, 1e300}, {nan, 50.0}, {50.0, nan}};
      for (const auto& [x, y] : far) {
        canvas.Dot(x, y, 0xFF0000);
        canvas.Text("far");
        canvas.Circle(x, y, 5, 0xFF0000);
        canvas.Circle(50, 50, 1e300, 0xFF0000);
      }
      canvas.Dot(20, 50, 0x0000FF);
      canvas.Line(150, 50, 1e30, 50, 0x00FF00);
      canvas.Line(nan, 1, 2, 3, 0x00FF00);
      canvas.SetPenWidth(32767);
      QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    }
    QCOMPARE(image.pixelColor(20, 50), QColor(0x00, 0x00, 0xFF));
    QCOMPARE(image.pixelColor(199, 50), QColor(0x00, 0xFF, 0x00));
    QCOMPARE(image.pixelColor(100, 20), QColor(Qt::white));
  }

  // Labels of one layer are kept apart, counted where left out; another layer's labels, a label
  // off the picture and labels drawn with the switch off are not. Stamped into an image and
  // drawn by QPainter alike.
  void labelsOfALayerAreKeptApart() {
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_RGB888}) {
      QImage image(400, 100, format);
      image.fill(Qt::white);
      PainterCanvas canvas(&image);
      canvas.SetScale(0, 100, 400, -100);
      canvas.KeepLabelsApart(true);
      // Each label at the dot before it.
      const auto labels = [&canvas](std::initializer_list<std::pair<double, const char*>> at) {
        for (const auto& [x, text] : at) {
          canvas.Dot(x, 50, 0);
          canvas.Text(text);
        }
      };
      canvas.NewLabelLayer();
      labels({{10, "W"}, {12, "MMMM"}});  // the second over the first
      canvas.Text("X");                   // behind the left-out one, clear of the first
      // Off the picture: drawn or not, nothing shows, nothing is counted.
      labels({{1000, "far"}, {1000, "far"}});
      QCOMPARE(canvas.HiddenLabels(), 1);
      canvas.NewLabelLayer();
      labels({{12, "W"}});  // the next layer's label over the first layer's
      QCOMPARE(canvas.HiddenLabels(), 1);
      labels({{300, "Y"}, {300, "Y"}});
      QCOMPARE(canvas.HiddenLabels(), 2);
      canvas.KeepLabelsApart(false);
      QCOMPARE(canvas.HiddenLabels(), 0);
      labels({{300, "Y"}, {300, "Y"}});
      QCOMPARE(canvas.HiddenLabels(), 0);
      canvas.Flush();
      // The left-out label moved the position on: "X" stands after where "MMMM" would have ended.
      const int fontWidth = QFontMetrics(QFont()).horizontalAdvance(QStringLiteral("MMMM"));
      QVERIFY(Ink(image.copy(12 + fontWidth, 40, 12, 30)) > 0);
    }

    // tessel-batch render keeps them apart unless asked for all.
    const std::initializer_list<const char*> options{"--size", "400x300", "--layers", "points,ids"};
    QCOMPARE(Render(Out("apart.png"), options), 0);
    QCOMPARE(Render(Out("all.png"), options, {"--all-labels"}), 0);
    const int all = Ink(QImage(Out("all.png"))), apart = Ink(QImage(Out("apart.png")));
    QVERIFY2(all > apart * 11 / 10, qPrintable(QStringLiteral("%1 %2").arg(all).arg(apart)));
  }

  void badUsageIsRefused() {
    const QString def = Job(QStringLiteral("T12NR04E.def"));
    const QString png = Out("x.png");
    for (const QString& args : {"render|" + def + "|" + Out("x.bmp"), "render|" + def + "|" + png + "|--size|12x",
                                "render|" + def + "|" + png + "|--layers|points,roads", "render|" + def}) {
      QVERIFY(Run(args.split('|')) != 0);
      QCOMPARE(stderr_.count('\n'), 1);
      QVERIFY(stderr_.startsWith("tessel-batch: "));
    }
  }

 private:
  QString Job(const QString& name) const { return work_->filePath(QStringLiteral("job/") + name); }
  QString Out(const char* name) const { return work_->filePath(QString::fromLatin1(name)); }

  // tessel-batch render of the sample job into `out`, with the options given.
  int Render(const QString& out, std::initializer_list<const char*> options = {},
             std::initializer_list<const char*> more = {}) {
    QStringList args{QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), out};
    for (const char* option : options) args << QString::fromLatin1(option);
    for (const char* option : more) args << QString::fromLatin1(option);
    return Run(args);
  }
  int Run(const QStringList& args) {
    QProcess batch;
    batch.setProgram(QStringLiteral(TESSEL_BATCH));
    batch.setArguments(args + QStringList{QStringLiteral("--tool-folder"), work_->filePath(QStringLiteral("tools"))});
    batch.start();
    if (!batch.waitForFinished(60000)) return -1;
    stderr_ = batch.readAllStandardError();
    return batch.exitStatus() == QProcess::NormalExit ? batch.exitCode() : -1;
  }

  std::unique_ptr<QTemporaryDir> work_;
  QByteArray stderr_;
};

}  // namespace tessel

// Labels are measured in the font, which takes a GUI application (on the offscreen platform).
QTEST_MAIN(tessel::RenderTest)
#include "render_test.moc"
