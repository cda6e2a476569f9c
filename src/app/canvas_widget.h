#pragma once
// The canvas of the main window: it keeps the picture the core painted (there is no retained
// scene: every refresh paints anew) and turns mouse events into world coordinates. Between a
// change of view and its refresh it shows that picture moved and scaled to the new view, so a
// drag or a turn of the wheel answers at once and the layers are painted once at the end.

#include <QImage>
#include <QTimer>
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
  // Device pixel of a world point.
  QPointF ToPixel(double x, double y) const { return canvas_.ToDevice(x, y); }
  // The picture as it stands.
  QImage Picture();
  // While a drag pan goes on the picture as it was at the press follows the pointer by `offset`
  // pixels; ending it shows the picture itself again.
  void PanPreview(QPoint offset);
  void EndPanPreview();
  // The scale changed without a refresh: until the next Clear the picture of the last refresh
  // is shown as the new scale puts it, and `previewSettled` follows once no further preview has
  // come for kSettleMs.
  void PreviewScale();
  bool Previewing() const { return previewing_; }
  static constexpr int kSettleMs = 150;
  // Painting goes to `device` (a printer's page) until EndPaintOn, which finishes the page and
  // paints on the window's picture again.
  void PaintOn(QPaintDevice* device);
  void EndPaintOn();
  // A scale bar in job units at the lower left, over the picture.
  void ShowScaleBar(bool on);

  void Clear() override;
  void Dot(double x, double y, unsigned colour) override;
  void Line(double x1, double y1, double x2, double y2, unsigned colour) override;
  void Text(const std::string& text) override;
  void Circle(double x, double y, double radius, unsigned colour) override;
  void SetPenWidth(int width) override { canvas_.SetPenWidth(width); }
  void SetPenStyle(int style) override { canvas_.SetPenStyle(style); }
  void SetDrawMode(DrawMode mode) override { canvas_.SetDrawMode(mode); }
  void SetColours(unsigned back, unsigned fore) override;
  void SetScale(double left, double top, double width, double height) override;
  bool PixelSize(int& width, int& height) const override { return canvas_.PixelSize(width, height); }
  void KeepLabelsApart(bool on) override { canvas_.KeepLabelsApart(on); }
  void NewLabelLayer() override { canvas_.NewLabelLayer(); }
  int HiddenLabels() const override { return canvas_.HiddenLabels(); }

 signals:
  void mousePressed(Qt::MouseButton button, QPointF world);
  void mouseMoved(Qt::MouseButtons buttons, QPointF world);
  void mouseReleased(Qt::MouseButton button, QPointF world);
  void doubleClicked(QPointF world);
  // The wheel turned by `steps` notches (positive away from the user) over `world`.
  void wheeled(int steps, QPointF world);
  void resized();
  // A scale preview has had no successor for kSettleMs: time to refresh.
  void previewSettled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void Changed();
  void DrawScaleBar(QPainter& painter);
  // Pixels of the picture to pixels of the present scale.
  QTransform PictureToView() const;

  QImage image_;
  PainterCanvas canvas_;
  bool updatePending_ = false;
  QImage panPicture_;
  QPoint panOffset_;
  bool panning_ = false;
  bool paintingElsewhere_ = false;
  bool scaleBar_ = false;
  int wheelAngle_ = 0;
  struct Scale {
    double left = 0.0, top = 0.0, width = 1.0, height = -1.0;
  };
  Scale scale_;         // as last set
  Scale pictureScale_;  // at the last Clear: the scale the picture was painted at
  bool previewing_ = false;
  QTimer settle_;
};

}  // namespace tessel
