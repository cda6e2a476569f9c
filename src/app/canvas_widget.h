#pragma once
// The canvas of the main window: it keeps the picture the core painted (there is no retained
// scene: every refresh paints anew) and turns mouse events into world coordinates.

#include <QImage>
#include <QWidget>
#include <functional>

#include "paint/painter_canvas.h"
#include "model/ports.h"

namespace tessel {

class CanvasWidget : public QWidget, public CanvasPort {
  Q_OBJECT

 public:
  explicit CanvasWidget(QWidget* parent = nullptr);

  // World coordinates of a point of the widget.
  QPointF ToWorld(QPointF widgetPoint) const { return canvas_.ToWorld(widgetPoint); }
  // The picture as it stands.
  QImage Picture();

  void Clear() override;
  void Dot(double x, double y, unsigned colour) override;
  void Line(double x1, double y1, double x2, double y2, unsigned colour) override;
  void Text(const std::string& text) override;
  void Circle(double x, double y, double radius, unsigned colour) override;
  void SetPenWidth(int width) override { canvas_.SetPenWidth(width); }
  void SetPenStyle(int style) override { canvas_.SetPenStyle(style); }
  void SetDrawMode(DrawMode mode) override { canvas_.SetDrawMode(mode); }
  void SetColours(unsigned back, unsigned fore) override;
  void SetScale(double left, double top, double width, double height) override {
    canvas_.SetScale(left, top, width, height);
  }

 signals:
  void mousePressed(Qt::MouseButton button, QPointF world);
  void mouseMoved(Qt::MouseButtons buttons, QPointF world);
  void mouseReleased(Qt::MouseButton button, QPointF world);
  void doubleClicked(QPointF world);
  void resized();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void Changed();

  QImage image_;
  PainterCanvas canvas_;
  bool updatePending_ = false;
};

}  // namespace tessel
