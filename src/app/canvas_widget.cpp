#include "app/canvas_widget.h"

#include <QMouseEvent>
#include <QPainter>

namespace tessel {

CanvasWidget::CanvasWidget(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("Canvas"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  image_ = QImage(QSize(1, 1), QImage::Format_RGB32);
  image_.fill(Qt::white);
  canvas_.SetDevice(&image_);
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
  Changed();
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

void CanvasWidget::paintEvent(QPaintEvent*) {
  updatePending_ = false;
  canvas_.Flush();
  QPainter painter(this);
  painter.drawImage(0, 0, image_);
}

void CanvasWidget::resizeEvent(QResizeEvent*) {
  canvas_.Flush();
  QImage fresh(size().expandedTo(QSize(1, 1)), QImage::Format_RGB32);
  fresh.fill(ColourOf(canvas_.back()));
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

void CanvasWidget::mouseDoubleClickEvent(QMouseEvent* event) { emit doubleClicked(ToWorld(event->position())); }

}  // namespace tessel
