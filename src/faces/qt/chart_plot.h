// The widget of a chart: what the user does with mouse and keyboard, and what lies over the plot as
// long as he does it.
#pragma once

#include <QElapsedTimer>
#include <QPoint>
#include <cstddef>
#include <functional>
#include <optional>
#include <qcustomplot.h>

#include "toolkit/chart.h"

class QRubberBand;

namespace fathomline {

class ChartPlot : public QCustomPlot {
 public:
  // What it tells of. Ranges are those of the plot's own axes.
  struct Listener {
    virtual ~Listener() = default;
    virtual void Resized() = 0;
    virtual void ClickAxis(AxisSide side) = 0;
    virtual void Zoom(bool bottom, bool sides, Chart::Gesture gesture) = 0;
    virtual void Scroll(bool bottom, bool sides, Chart::Gesture gesture) = 0;
    virtual void UndoZoom() = 0;
    virtual void ShowAll() = 0;
    virtual void ShowMenu(const QPoint& at) = 0;
    virtual void Hover(std::optional<QPoint> at) = 0;
    // Draws over the finished plot.
    virtual void PaintOver(QPainter& painter) = 0;
    // A chip that leads back from a zoom; empty where there is none.
    virtual QRect HeldChip() const = 0;
    virtual QRect HeadArea() const = 0;
    virtual QString HeadText() const = 0;
    virtual bool EqualScales() const = 0;
    // The series whose name stands there, and a click on it.
    virtual std::optional<int> NameAt(const QPoint& at) const = 0;
    virtual void ToggleSeries(int series) = 0;
    // Cursors: whether there are any, which one's line is there, and what is done to them.
    virtual bool HasCursors() const = 0;
    virtual std::optional<std::size_t> CursorLineAt(const QPoint& at) const = 0;
    virtual void ToggleCursors() = 0;
    virtual void HoldCursor(std::size_t cursor) = 0;
    virtual void HoldOtherCursor() = 0;
    virtual void DragCursor(int x) = 0;
    // By so many pixels, or to the next point.
    virtual void StepHeldCursor(int direction, int pixels) = 0;
  };

  explicit ChartPlot(Listener& listener);

  QSize sizeHint() const override { return usual_; }
  QSize minimumSizeHint() const override { return least_; }
  void SetSizes(const QSize& usual, const QSize& least);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  QRect Area() const { return axisRect()->rect(); }
  std::optional<AxisSide> AxisAt(const QPoint& at) const;
  void Point(const QPoint& at, const QPoint& global);
  void Pan(const QPoint& at);
  void ZoomTo(const QRect& area);
  void ZoomBy(double factor, const QPointF& around, bool sides, Chart::Gesture gesture);
  void PanBy(double across, double up);
  bool CursorKey(const QKeyEvent& event);
  // What follows soon goes on with the gesture before.
  Chart::Gesture Continued();

  Listener& listener_;
  QSize usual_;
  QSize least_;
  QPoint pressed_;
  std::optional<AxisSide> pressedAxis_;
  bool pressedChip_ = false;
  bool pressedCursor_ = false;
  bool dragging_ = false;
  QRubberBand* band_ = nullptr;
  QElapsedTimer lastStep_;
  QCPRange bottomBefore_;
  QCPRange leftBefore_;
  QCPRange rightBefore_;
};

}  // namespace fathomline
