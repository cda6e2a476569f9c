// tessel-batch render on the sample job: the picture has the control stations, the background
// and the record lines' survey colours where the view puts them; a PDF is one page; the load's
// messages, and nothing else, reach standard error; bad usage is refused.

#include <QDir>
#include <algorithm>
#include <cmath>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include "model/config.h"
#include "paint/painter_canvas.h"
#include "job/load_sequence.h"
#include "model/recording_ports.h"
#include "viewer/drawing.h"

namespace tessel {

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

  void pngShowsTheLayersWhereTheViewPutsThem() {
    const QString png = work_->filePath(QStringLiteral("job.png"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), png, QStringLiteral("--size"),
                  QStringLiteral("1000x750")}),
             0);
    QCOMPARE(stderr_, QByteArray());
    const QImage picture(png);
    QCOMPARE(picture.size(), QSize(1000, 750));
    Load(picture.size());

    // Background: the default dark text on white.
    QCOMPARE(picture.pixelColor(picture.width() - 3, picture.height() - 3), QColor(Qt::white));
    // A control station: its yellow ring (pen 8) round the point dot painted over its centre.
    const ControlStation& station = session_->control.Control.get(1);
    QCOMPARE(picture.pixelColor(Pixel(station.x, station.y) + QPoint(3, 0)), QColor(0xFF, 0xFF, 0x00));
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
    const QString png = work_->filePath(QStringLiteral("far.png"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), png, QStringLiteral("--layers"),
                  QStringLiteral("points,control,lsa")}),
             0);
    const QImage picture(png);
    QVERIFY(!picture.isNull());
    int inked = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) inked += picture.pixelColor(x, y) != QColor(Qt::white);
    }
    QVERIFY2(inked > 0, "the picture is blank");

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

  void pointsTakeTheirColour() {
    const QString png = work_->filePath(QStringLiteral("points.png"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), png, QStringLiteral("--layers"),
                  QStringLiteral("points")}),
             0);
    const QImage picture(png);
    Load(picture.size());
    for (int i : {1, 100, 300}) {
      QCOMPARE(picture.pixelColor(Pixel(session_->points.PointX(i), session_->points.PointY(i))), QColor(0x80, 0x00, 0x00));
    }
  }

  void recordLinesTakeTheirSurveysColour() {
    const QString png = work_->filePath(QStringLiteral("raw.png"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), png, QStringLiteral("--layers"),
                  QStringLiteral("raw"), QStringLiteral("--size"), QStringLiteral("1000x750")}),
             0);
    const QImage picture(png);
    Load(picture.size());
    int checked = 0;
    for (int i = 1; i <= session_->raw.RawLineCount && checked < 5; ++i) {
      const RawEnds& e = session_->raw.RawLineEnds.get(i);
      if (e.from == 0 || e.to == 0 || e.survey == 0) continue;
      const QPoint a = Pixel(session_->points.PointX(e.from), session_->points.PointY(e.from));
      const QPoint b = Pixel(session_->points.PointX(e.to), session_->points.PointY(e.to));
      if ((a - b).manhattanLength() < 40 || CrossedByAnother(i, (a + b) / 2)) continue;
      const unsigned rgb = PaletteColour(SurveyColourNumber(e.survey, 1));
      // Somewhere on the middle of the line (within a pixel of the exact middle) is its colour.
      bool found = false;
      const QPoint mid = (a + b) / 2;
      for (int dx = -1; dx <= 1 && !found; ++dx) {
        for (int dy = -1; dy <= 1 && !found; ++dy) {
          found = picture.pixelColor(mid + QPoint(dx, dy)).rgb() == (0xFF000000u | rgb);
        }
      }
      QVERIFY2(found, qPrintable(QStringLiteral("record line %1").arg(i)));
      ++checked;
    }
    QVERIFY(checked > 0);
  }

  void backgroundTwoIsLightOnDark() {
    const QString png = work_->filePath(QStringLiteral("dark.png"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), png, QStringLiteral("--background"),
                  QStringLiteral("2")}),
             0);
    const QImage picture(png);
    QCOMPARE(picture.size(), QSize(1280, 960));
    QCOMPARE(picture.pixelColor(2, 2), QColor(Qt::black));
  }

  void pdfIsOnePage() {
    const QString pdf = work_->filePath(QStringLiteral("job.pdf"));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), pdf}), 0);
    QFile file(pdf);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QVERIFY(bytes.startsWith("%PDF-"));
    QVERIFY(bytes.size() > 1000);
    QCOMPARE(static_cast<int>(bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") + bytes.count("/Type /Page/") +
                              bytes.count("/Type /Page>")),
             1);
  }

  void loadMessagesGoToStandardError() {
    QVERIFY(QFile::remove(Job(QStringLiteral("T12NR04E.LSA"))));
    QCOMPARE(Run({QStringLiteral("render"), Job(QStringLiteral("T12NR04E.def")), work_->filePath(QStringLiteral("x.png"))}),
             0);
    QCOMPARE(stderr_, QByteArray("LSA file not found\n"));
  }

  void badUsageIsRefused() {
    const QString def = Job(QStringLiteral("T12NR04E.def"));
    for (const QStringList& args : {QStringList{QStringLiteral("render"), def, work_->filePath(QStringLiteral("x.bmp"))},
                                    QStringList{QStringLiteral("render"), def, work_->filePath(QStringLiteral("x.png")),
                                                QStringLiteral("--size"), QStringLiteral("12x")},
                                    QStringList{QStringLiteral("render"), def, work_->filePath(QStringLiteral("x.png")),
                                                QStringLiteral("--layers"), QStringLiteral("points,roads")},
                                    QStringList{QStringLiteral("render"), def}}) {
      QVERIFY(Run(args) != 0);
      QCOMPARE(stderr_.count('\n'), 1);
      QVERIFY(stderr_.startsWith("tessel-batch: "));
    }
  }

 private:
  QString Job(const QString& name) const { return work_->filePath(QStringLiteral("job/") + name); }

  int Run(const QStringList& args) {
    QProcess batch;
    batch.setProgram(QStringLiteral(TESSEL_BATCH));
    batch.setArguments(args + QStringList{QStringLiteral("--tool-folder"), work_->filePath(QStringLiteral("tools"))});
    batch.start();
    if (!batch.waitForFinished(60000)) return -1;
    stderr_ = batch.readAllStandardError();
    return batch.exitStatus() == QProcess::NormalExit ? batch.exitCode() : -1;
  }

  // The job as File Open leaves it, with the view fitted to a canvas of `size`.
  void Load(QSize size) {
    session_ = std::make_unique<Session>(user_, canvas_, processes_);
    session_->ToolFolder = work_->filePath(QStringLiteral("tools")).toStdString();
    viewer_ = std::make_unique<Viewer>(*session_);
    session_->display = viewer_.get();
    MainFormLoad(*session_);
    OpenJob(*session_, Job(QStringLiteral("T12NR04E.def")).toStdString(), "T12NR04E.def");
    size_ = size;
  }

  // True when another record line passes within two pixels of `p` (a survey's colour is only
  // certain where no other record was painted over it).
  bool CrossedByAnother(int line, QPoint p) const {
    for (int j = 1; j <= session_->raw.RawLineCount; ++j) {
      const RawEnds& e = session_->raw.RawLineEnds.get(j);
      if (j == line || e.from == 0 || e.to == 0) continue;
      const QPointF a = Pixel(session_->points.PointX(e.from), session_->points.PointY(e.from));
      const QPointF b = Pixel(session_->points.PointX(e.to), session_->points.PointY(e.to));
      const QPointF ab = b - a, ap = QPointF(p) - a;
      const double len2 = QPointF::dotProduct(ab, ab);
      const double t = len2 > 0 ? std::clamp(QPointF::dotProduct(ap, ab) / len2, 0.0, 1.0) : 0.0;
      const QPointF foot = a + t * ab;
      if (std::hypot(foot.x() - p.x(), foot.y() - p.y()) <= 2.0) return true;
    }
    return false;
  }

  QPoint Pixel(double x, double y) const {
    const ViewState& v = session_->view;
    return QPointF((x - v.ScaleLeft) / v.ScaleWidth * size_.width(), (y - v.ScaleTop) / v.ScaleHeight * size_.height())
        .toPoint();
  }

  std::unique_ptr<QTemporaryDir> work_;
  QByteArray stderr_;
  RecordingUserPort user_;
  NullCanvas canvas_;
  RecordingProcessPort processes_;
  std::unique_ptr<Session> session_;
  std::unique_ptr<Viewer> viewer_;
  QSize size_;
};

}  // namespace tessel

QTEST_GUILESS_MAIN(tessel::RenderTest)
#include "render_test.moc"
