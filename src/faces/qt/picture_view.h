// The view of a picture.
#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <functional>

#include "faces/qt/control_view.h"
#include "toolkit/picture.h"

class QPainter;

namespace fathomline {

class PictureView : public ControlView {
 public:
  PictureView(ViewContext& context, Picture& picture);

 protected:
  void Update() override;

 private:
  class Surface;
  using Place = std::function<QPointF(double x, double y)>;
  // Where the picture is, and what is written on in it.
  struct Frame {
    QRectF area;
    QList<QRectF> taken;
  };

  void Paint(QPainter& painter, const QRectF& area) const;
  void PaintLaidOut(QPainter& painter, const QPointF& corner) const;
  static void PaintShape(QPainter& painter, const Shape& shape, const Place& place, double factor);
  void PaintScale(QPainter& painter, const Shape& shape, const Place& place, double factor,
                  Frame& frame) const;
  static void PaintNumber(QPainter& painter, const Shape& shape, QPointF dot, Frame& frame);
  void ShowMenu(const QPoint& at);

  Picture& picture_;
  Surface* surface_;
};

}  // namespace fathomline
