#include "paint/painter_canvas.h"

#include <QFontMetrics>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <algorithm>
#include <cmath>

#include "paint/qt_text.h"

namespace tessel {

Qt::PenStyle PenStyleOf(int style) {
  switch (style) {
    case 1: return Qt::DashLine;
    case 2: return Qt::DotLine;
    case 3: return Qt::DashDotLine;
    case 4: return Qt::DashDotDotLine;
    default: return Qt::SolidLine;
  }
}

QColor ColourOf(unsigned rgb) {
  return QColor(static_cast<int>((rgb >> 16) & 0xFF), static_cast<int>((rgb >> 8) & 0xFF), static_cast<int>(rgb & 0xFF));
}

namespace {

double PixelScaleOf(const QPaintDevice* device) {
  if (!device || device->devType() == QInternal::Image) return 1.0;
  return std::max(1.0, device->logicalDpiX() / 96.0);
}

bool Finite(QPointF p) { return std::isfinite(p.x()) && std::isfinite(p.y()); }

bool WithinReach(QPointF p) {
  return Finite(p) && std::fabs(p.x()) < PainterCanvas::kReach && std::fabs(p.y()) < PainterCanvas::kReach;
}

// The part of the segment inside the square of reach (Liang and Barsky); false when none is.
bool CutToReach(QPointF& a, QPointF& b) {
  if (!Finite(a) || !Finite(b)) return false;
  if (WithinReach(a) && WithinReach(b)) return true;
  const double dx = b.x() - a.x(), dy = b.y() - a.y();
  if (!std::isfinite(dx) || !std::isfinite(dy)) return false;
  const double r = PainterCanvas::kReach;
  double t0 = 0.0, t1 = 1.0;
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x() + r, r - a.x(), a.y() + r, r - a.y()};
  for (int k = 0; k < 4; ++k) {
    if (p[k] == 0.0) {
      if (q[k] < 0.0) return false;
      continue;
    }
    const double t = q[k] / p[k];
    if (p[k] < 0.0) {
      t0 = std::max(t0, t);
    } else {
      t1 = std::min(t1, t);
    }
    if (t0 > t1) return false;
  }
  const QPointF from = a;
  a = QPointF(from.x() + t0 * dx, from.y() + t0 * dy);
  b = QPointF(from.x() + t1 * dx, from.y() + t1 * dy);
  // On the square's edge, give or take the rounding.
  return Finite(a) && Finite(b);
}

}  // namespace

PainterCanvas::PainterCanvas(QPaintDevice* device) : device_(device), pixelScale_(PixelScaleOf(device)) {
  // Plain whole-pixel text, the same whether stamped into an image or drawn by QPainter.
  font_.setStyleStrategy(QFont::NoAntialias);
  TakeDeviceSize();
}

void PainterCanvas::TakeDeviceSize() {
  deviceWidth_ = device_ ? device_->width() : 0;
  deviceHeight_ = device_ ? device_->height() : 0;
  stampable_ = nullptr;
  if (device_ && device_->devType() == QInternal::Image) {
    auto* image = static_cast<QImage*>(device_);
    if (RasterStamps::Accepts(*image)) stampable_ = image;
  }
}

PainterCanvas::~PainterCanvas() { Flush(); }

void PainterCanvas::SetDevice(QPaintDevice* device) {
  Flush();
  device_ = device;
  pixelScale_ = PixelScaleOf(device);
  TakeDeviceSize();
}

QPainter& PainterCanvas::Painter() {
  if (!painter_) {
    painter_ = std::make_unique<QPainter>(device_);
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->setFont(font_);
    if (mode_ == DrawMode::Invert) painter_->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
  }
  return *painter_;
}

void PainterCanvas::Flush() {
  DrawPending();
  painter_.reset();
  textPen_ = QColor();
}

QPen PainterCanvas::PenFor(unsigned colour, bool dot) const {
  // Inverting is an exclusive or with white, whatever colour was asked for.
  QPen pen(mode_ == DrawMode::Invert ? QColor(Qt::white) : ColourOf(colour));
  pen.setWidthF(penWidth_ * pixelScale_);
  pen.setCapStyle(dot ? Qt::RoundCap : Qt::FlatCap);
  pen.setStyle(dot ? Qt::SolidLine : PenStyleOf(penStyle_));
  return pen;
}

QImage* PainterCanvas::RasterTarget() {
  if (!stampable_ || mode_ != DrawMode::Copy) return nullptr;
  if (!stamps_) stamps_ = std::make_unique<RasterStamps>(font_);
  return stampable_;
}

void PainterCanvas::DrawPending() {
  if (!device_ || batch_ == Batch::None) return;
  QPainter& p = Painter();
  if (batch_ == Batch::Dots) {
    if (QImage* image = RasterTarget()) {
      for (const QPointF& d : dots_) stamps_->Dot(*image, d.x(), d.y(), penWidth_, batchColour_);
    } else {
      textPen_ = QColor();
      p.setPen(PenFor(batchColour_, true));
      p.drawPoints(dots_.constData(), static_cast<int>(dots_.size()));
    }
    dots_.clear();
  } else {
    textPen_ = QColor();
    p.setPen(PenFor(batchColour_, false));
    p.drawLines(lines_.constData(), static_cast<int>(lines_.size()));
    lines_.clear();
  }
  batch_ = Batch::None;
}

void PainterCanvas::Begin(Batch kind, unsigned colour) {
  if (batch_ == kind && batchColour_ == colour) return;
  DrawPending();
  batch_ = kind;
  batchColour_ = colour;
}

QPointF PainterCanvas::ToDevice(double x, double y) const {
  if (!device_) return {};
  return {(x - left_) / width_ * deviceWidth_, (y - top_) / height_ * deviceHeight_};
}

QPointF PainterCanvas::ToWorld(QPointF device) const {
  if (!device_ || deviceWidth_ == 0 || deviceHeight_ == 0) return {};
  return {left_ + device.x() / deviceWidth_ * width_, top_ + device.y() / deviceHeight_ * height_};
}

void PainterCanvas::Clear() {
  DrawPending();
  TakeDeviceSize();
  textX_ = 0.0;
  textY_ = 0.0;
  if (!device_) return;
  QPainter& p = Painter();
  p.setCompositionMode(QPainter::CompositionMode_Source);
  p.fillRect(QRect(0, 0, device_->width(), device_->height()), ColourOf(back_));
  p.setCompositionMode(mode_ == DrawMode::Invert ? QPainter::RasterOp_SourceXorDestination
                                                 : QPainter::CompositionMode_SourceOver);
}

void PainterCanvas::Dot(double x, double y, unsigned colour) {
  textX_ = x;
  textY_ = y;
  const QPointF at = ToDevice(x, y);
  // A dot that cannot be on the device is not drawn; the position still moves there.
  if (!WithinReach(at)) return;
  Begin(Batch::Dots, colour);
  dots_.append(at);
}

void PainterCanvas::Line(double x1, double y1, double x2, double y2, unsigned colour) {
  QPointF a = ToDevice(x1, y1), b = ToDevice(x2, y2);
  if (!CutToReach(a, b)) return;
  Begin(Batch::Lines, colour);
  lines_.append(QLineF(a, b));
}

void PainterCanvas::KeepLabelsApart(bool on) {
  labelsApart_ = on;
  labels_.Clear();
  hiddenLabels_ = 0;
}

bool PainterCanvas::LabelFits(QPointF at, QSizeF size) {
  if (!labelsApart_) return true;
  const QRectF box(at, size);
  // A label wholly off the device hides nothing that shows and is not counted.
  if (!box.intersects(QRectF(0, 0, deviceWidth_, deviceHeight_))) return true;
  // Labels in a row must not run into one another: each keeps a margin either side, so two
  // that are both drawn stand a blank's width apart at least.
  const double margin = 3.0 * pixelScale_;
  const QRect pixels = box.adjusted(-margin, 0, margin, 0).toAlignedRect();
  if (labels_.Take({pixels.x(), pixels.y(), pixels.width(), pixels.height()})) return true;
  ++hiddenLabels_;
  return false;
}

bool PainterCanvas::LabelFits(int x, int y, int width, int height) {
  if (!labelsApart_) return true;
  // As above, in whole pixels: a box without area, or wholly off the image, is not counted.
  if (width <= 0 || height <= 0) return true;
  if (x >= deviceWidth_ || x + width <= 0 || y >= deviceHeight_ || y + height <= 0) return true;
  constexpr int kMargin = 3;
  if (labels_.Take({x - kMargin, y, width + 2 * kMargin, height})) return true;
  ++hiddenLabels_;
  return false;
}

void PainterCanvas::Text(const std::string& text) {
  DrawPending();
  if (!device_) return;
  if (!WithinReach(ToDevice(textX_, textY_))) return;
  if (QImage* image = RasterTarget()) {
    const QPointF at = ToDevice(textX_, textY_);
    const int x = static_cast<int>(std::lround(at.x())), y = static_cast<int>(std::lround(at.y()));
    const int advance = stamps_->Advance(text);
    if (lineHeight_ == 0) lineHeight_ = QFontMetrics(font_).height();
    const bool fits = pixelScale_ == 1.0 ? LabelFits(x, y, advance, lineHeight_)
                                         : LabelFits(QPointF(x, y), QSizeF(advance, lineHeight_));
    if (fits) stamps_->Text(*image, x, y, text, fore_);
    // The position is left behind the string.
    textX_ = ToWorld(QPointF(x + advance, at.y())).x();
    return;
  }
  QPainter& p = Painter();
  const QByteArray key(text.data(), static_cast<qsizetype>(text.size()));
  auto it = texts_.find(key);
  if (it == texts_.end()) {
    QStaticText laidOut(FromBytes(text));
    laidOut.setTextFormat(Qt::PlainText);
    laidOut.setPerformanceHint(QStaticText::AggressiveCaching);
    laidOut.prepare(QTransform(), font_);
    it = texts_.insert(key, laidOut);
  }
  const QPointF exact = ToDevice(textX_, textY_);
  const QPointF at(std::round(exact.x()), std::round(exact.y()));
  if (LabelFits(at, it->size())) {
    const QColor colour = mode_ == DrawMode::Invert ? QColor(Qt::white) : ColourOf(fore_);
    if (textPen_ != colour) {
      p.setPen(colour);
      textPen_ = colour;
    }
    p.drawStaticText(at, *it);
  }
  // The position is left behind the string.
  textX_ = ToWorld(QPointF(at.x() + it->size().width(), at.y())).x();
}

void PainterCanvas::Circle(double x, double y, double radius, unsigned colour) {
  DrawPending();
  if (!device_) return;
  QPainter& p = Painter();
  textPen_ = QColor();
  p.setPen(PenFor(colour, false));
  p.setBrush(Qt::NoBrush);
  const QPointF centre = ToDevice(x, y);
  const double rx = std::abs(radius / width_ * device_->width());
  // A ring that cannot cross the device is not drawn.
  if (!WithinReach(centre) || !(rx < kReach)) return;
  p.drawEllipse(centre, rx, rx);
}

void PainterCanvas::SetPenWidth(int width) {
  if (width == penWidth_) return;
  DrawPending();
  penWidth_ = std::clamp(width, 1, kWidestPen);
}

void PainterCanvas::SetPenStyle(int style) {
  if (style == penStyle_) return;
  DrawPending();
  penStyle_ = style;
}

void PainterCanvas::SetDrawMode(DrawMode mode) {
  if (mode == mode_) return;
  DrawPending();
  mode_ = mode;
  if (painter_) {
    painter_->setCompositionMode(mode == DrawMode::Invert ? QPainter::RasterOp_SourceXorDestination
                                                           : QPainter::CompositionMode_SourceOver);
  }
}

void PainterCanvas::SetColours(unsigned back, unsigned fore) {
  back_ = back;
  fore_ = fore;
}

bool PainterCanvas::PixelSize(int& width, int& height) const {
  if (!device_) return false;
  width = device_->width();
  height = device_->height();
  return width > 0 && height > 0;
}

void PainterCanvas::SetScale(double left, double top, double width, double height) {
  DrawPending();
  left_ = left;
  top_ = top;
  width_ = width == 0.0 ? 1.0 : width;
  height_ = height == 0.0 ? -1.0 : height;
}

}  // namespace tessel
