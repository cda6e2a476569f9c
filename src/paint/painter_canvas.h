#pragma once
// The canvas port painted with QPainter onto any paint device: the window's picture, an image
// file or a PDF page. World coordinates map to the device by the four scale values; dots are
// round and as wide as the pen, text starts at the current position and leaves it after the
// string, and the invert mode serves the rubber band. Runs of dots and of lines with the same
// pen are drawn together, in the order they came, and on an image dots and text are stamped
// into its pixels, which keeps a full refresh fast.

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QHash>
#include <QPointF>
#include <QStaticText>
#include <QVector>
#include <memory>

#include "model/label_space.h"
#include "paint/raster_stamps.h"
#include "model/ports.h"

namespace tessel {

// The Qt pen style of a line style number (0 solid, 1 dash, 2 dot, 3 dash-dot, 4 dash-dot-dot,
// 5 inside fill, drawn solid).
Qt::PenStyle PenStyleOf(int style);
QColor ColourOf(unsigned rgb);

class PainterCanvas : public CanvasPort {
 public:
  // The widest pen and dot drawn, in pixels: wider than any screen shows, small enough that a
  // dot's mask stays a few megabytes. A wider pen asked for is drawn this wide.
  static constexpr int kWidestPen = 1024;
  // How far beyond the device's edges, in pixels, a point is still handed to the painter. A dot
  // or text further out cannot show and is dropped; a line reaching further is cut there.
  static constexpr double kReach = 1.0e6;

  // The device must outlive the canvas; `begin` is called on it at the first primitive.
  explicit PainterCanvas(QPaintDevice* device = nullptr);
  ~PainterCanvas() override;

  // A new device (after a resize); ends any painting on the old one.
  void SetDevice(QPaintDevice* device);
  // Draws what is pending and ends the painting, so the device can be read.
  void Flush();

  void Clear() override;
  void Dot(double x, double y, unsigned colour) override;
  void Line(double x1, double y1, double x2, double y2, unsigned colour) override;
  void Text(const std::string& text) override;
  void Circle(double x, double y, double radius, unsigned colour) override;
  void SetPenWidth(int width) override;
  void SetPenStyle(int style) override;
  void SetDrawMode(DrawMode mode) override;
  void SetColours(unsigned back, unsigned fore) override;
  void SetScale(double left, double top, double width, double height) override;
  bool PixelSize(int& width, int& height) const override;
  void KeepLabelsApart(bool on) override;
  void NewLabelLayer() override { labels_.Clear(); }
  int HiddenLabels() const override { return hiddenLabels_; }

  // World coordinates of a device point, and the reverse.
  QPointF ToWorld(QPointF device) const;
  QPointF ToDevice(double x, double y) const;

  unsigned back() const { return back_; }
  unsigned fore() const { return fore_; }

 private:
  enum class Batch { None, Dots, Lines };
  QPainter& Painter();
  void Begin(Batch kind, unsigned colour);
  void DrawPending();
  QPen PenFor(unsigned colour, bool dot) const;
  // True when a label of `size` at `at` may be drawn: labels are not kept apart, or it lies off
  // the device, or it overlaps no label of the layer (and is then taken).
  bool LabelFits(QPointF at, QSizeF size);
  // The same for a box of whole pixels on an image (a pixel scale of 1).
  bool LabelFits(int x, int y, int width, int height);
  // The device's size and whether dots and text are stamped into it, kept from SetDevice (and
  // taken anew at each Clear): asking the device costs a virtual call per coordinate.
  void TakeDeviceSize();

  QPaintDevice* device_ = nullptr;
  double deviceWidth_ = 0.0, deviceHeight_ = 0.0;
  QImage* stampable_ = nullptr;  // the device, when it is an image the stamps write
  std::unique_ptr<QPainter> painter_;
  QFont font_;
  double left_ = 0.0, top_ = 0.0, width_ = 1.0, height_ = -1.0;
  int penWidth_ = 1;
  // Device pixels to a screen pixel: pens and dots keep their look on a printer's fine page.
  double pixelScale_ = 1.0;
  int penStyle_ = 0;
  DrawMode mode_ = DrawMode::Copy;
  unsigned back_ = 0xFFFFFF;
  unsigned fore_ = 0x000000;
  double textX_ = 0.0, textY_ = 0.0;
  bool labelsApart_ = false;
  LabelSpace labels_;
  int hiddenLabels_ = 0;

  Batch batch_ = Batch::None;
  unsigned batchColour_ = 0;
  QVector<QPointF> dots_;
  QVector<QLineF> lines_;
  // Laid-out texts, kept across refreshes: a job's labels are the same from one to the next.
  QHash<QByteArray, QStaticText> texts_;
  QColor textPen_;
  // The image being painted, when dots and text can be stamped straight into its pixels.
  QImage* RasterTarget();
  std::unique_ptr<RasterStamps> stamps_;
  int lineHeight_ = 0;  // of the stamped text
};

}  // namespace tessel
