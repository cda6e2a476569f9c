#include "app/canvas_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <cmath>

#include "viewer/view_transform.h"

namespace tessel {

CanvasWidget::CanvasWidget(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("Canvas"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  image_ = QImage(QSize(1, 1), QImage::Format_RGB32);
  image_.fill(Qt::white);
  canvas_.SetDevice(&image_);
  settle_.setSingleShot(true);
  settle_.setInterval(kSettleMs);
  connect(&settle_, &QTimer::timeout, this, [this] {
    if (previewing_) emit previewSettled();
  });
}

QImage CanvasWidget::Picture() {
  canvas_.Flush();
  return image_;
}

void CanvasWidget::Changed() {
  if (updatePending_) return;
  updatePending_ = true;
  update();
}

void CanvasWidget::Clear() {
  canvas_.Clear();
  if (!paintingElsewhere_) {
    pictureScale_ = scale_;
    // A refresh has begun: the preview, if any, has its picture.
    previewing_ = false;
    settle_.stop();
  }
  Changed();
}

void CanvasWidget::SetScale(double left, double top, double width, double height) {
  canvas_.SetScale(left, top, width, height);
  scale_ = {left, top, width, height};
}

void CanvasWidget::PreviewScale() {
  previewing_ = true;
  settle_.start();
  update();
}

QTransform CanvasWidget::PictureToView() const {
  // A world point lies at (w - left) / width * pixels across on either scale.
  const double w = image_.width(), h = image_.height();
  const auto safe = [](double d, double fallback) { return d == 0.0 ? fallback : d; };
  const double nowWidth = safe(scale_.width, 1.0), nowHeight = safe(scale_.height, -1.0);
  const double sx = safe(pictureScale_.width, 1.0) / nowWidth;
  const double sy = safe(pictureScale_.height, -1.0) / nowHeight;
  const double dx = (pictureScale_.left - scale_.left) / nowWidth * w;
  const double dy = (pictureScale_.top - scale_.top) / nowHeight * h;
  return QTransform(sx, 0.0, 0.0, sy, dx, dy);
}

void CanvasWidget::Dot(double x, double y, unsigned colour) {
  canvas_.Dot(x, y, colour);
  Changed();
}

void CanvasWidget::Line(double x1, double y1, double x2, double y2, unsigned colour) {
  canvas_.Line(x1, y1, x2, y2, colour);
  Changed();
}

void CanvasWidget::Text(const std::string& text) {
  canvas_.Text(text);
  Changed();
}

void CanvasWidget::Circle(double x, double y, double radius, unsigned colour) {
  canvas_.Circle(x, y, radius, colour);
  Changed();
}

void CanvasWidget::SetColours(unsigned back, unsigned fore) {
  canvas_.SetColours(back, fore);
  QPalette palette = this->palette();
  palette.setColor(QPalette::Window, ColourOf(back));
  setPalette(palette);
}

void CanvasWidget::PanPreview(QPoint offset) {
  if (!panning_) {
    panPicture_ = Picture();
    panning_ = true;
  }
  panOffset_ = offset;
  update();
}

void CanvasWidget::EndPanPreview() {
  if (!panning_) return;
  panning_ = false;
  panPicture_ = QImage();
  update();
}

void CanvasWidget::PaintOn(QPaintDevice* device) {
  canvas_.SetDevice(device);
  paintingElsewhere_ = true;
}

void CanvasWidget::EndPaintOn() {
  canvas_.SetDevice(&image_);
  paintingElsewhere_ = false;
  Changed();
}

void CanvasWidget::ShowScaleBar(bool on) {
  scaleBar_ = on;
  update();
}

void CanvasWidget::DrawScaleBar(QPainter& painter) {
  const double across = std::fabs(ToWorld(QPointF(width(), 0)).x() - ToWorld(QPointF(0, 0)).x());
  const double length = ScaleBarLength(across);
  if (length <= 0.0 || width() <= 0) return;
  const int pixels = static_cast<int>(std::lround(length / across * width()));
  const QColor ink = ColourOf(canvas_.fore());
  const int x = 12, y = height() - 14;
  painter.setPen(QPen(ink, 2));
  painter.drawLine(x, y, x + pixels, y);
  painter.drawLine(x, y - 5, x, y + 3);
  painter.drawLine(x + pixels, y - 5, x + pixels, y + 3);
  painter.drawText(QPointF(x + pixels + 6, y + 4), QString::fromStdString(ScaleBarText(length)));
}

void CanvasWidget::paintEvent(QPaintEvent*) {
  updatePending_ = false;
  // While a page is being printed the window keeps showing its last picture.
  if (!paintingElsewhere_) canvas_.Flush();
  QPainter painter(this);
  if (panning_) {
    painter.fillRect(rect(), ColourOf(canvas_.back()));
    painter.drawImage(panOffset_, panPicture_);
  } else if (previewing_) {
    painter.fillRect(rect(), ColourOf(canvas_.back()));
    const QTransform move = PictureToView();
    // Finite and not absurdly large: else the back colour alone until the refresh.
    if (move.isInvertible() && std::isfinite(move.m11()) && std::isfinite(move.m22()) && std::isfinite(move.dx()) &&
        std::isfinite(move.dy()) && std::fabs(move.m11()) < 1e4 && std::fabs(move.m22()) < 1e4) {
      painter.setTransform(move);
      painter.drawImage(0, 0, image_);
      painter.resetTransform();
    }
  } else {
    painter.drawImage(0, 0, image_);
  }
  if (scaleBar_) DrawScaleBar(painter);
}

void CanvasWidget::resizeEvent(QResizeEvent*) {
  if (paintingElsewhere_) return;
  canvas_.Flush();
  QImage fresh(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
  fresh.fill(ColourOf(canvas_.back()));
  // The last picture stays in view until the refresh that follows (or, while long work has the
  // session, until the work has ended).
  {
    QPainter keep(&fresh);
    keep.drawImage(0, 0, image_);
  }
  image_ = fresh;
  canvas_.SetDevice(&image_);
  emit resized();
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) {
  setFocus();
  emit mousePressed(event->button(), ToWorld(event->position()));
}

void CanvasWidget::mouseMoveEvent(QMouseEvent* event) { emit mouseMoved(event->buttons(), ToWorld(event->position())); }

void CanvasWidget::mouseReleaseEvent(QMouseEvent* event) {
  emit mouseReleased(event->button(), ToWorld(event->position()));
}

void CanvasWidget::wheelEvent(QWheelEvent* event) {
  // One notch is 120; a fine wheel's parts add up to whole notches.
  wheelAngle_ += event->angleDelta().y();
  const int steps = wheelAngle_ / 120;
  wheelAngle_ -= steps * 120;
  if (steps != 0) emit wheeled(steps, ToWorld(event->position()));
  event->accept();
}

void CanvasWidget::mouseDoubleClickEvent(QMouseEvent* event) { emit doubleClicked(ToWorld(event->position())); }

}  // namespace tessel
