// The axes of a plot: what they look like, what they span, and as many ticks as have room.
#pragma once

#include <QSize>
#include <memory>
#include <qcustomplot.h>

#include "toolkit/chart.h"

namespace fathomline {

class TimeTicker;
class ValueTicker;

class ChartAxes {
 public:
  ChartAxes(QCustomPlot& plot, const Chart& chart);

  void Style();
  // Takes over the ranges and titles of the chart's axes.
  void Follow();
  // No more ticks than have room in a plot so large, whose right axis may be left out.
  void Fit(const QSize& size, bool empty, bool right);
  // The room that the labels want: under the plot where it says the time or x, and, once fitted,
  // beside it.
  int Below() const;
  int Left() const { return wantsLeft_; }
  int Right() const { return wantsRight_; }

 private:
  void FollowAxis(QCPAxis& axis, const Axis& plain);
  AxisRange RoomAround(const Axis& axis) const;

  QCustomPlot& plot_;
  const Chart& chart_;
  std::shared_ptr<TimeTicker> timeTicks_;
  std::shared_ptr<ValueTicker> bottomTicks_;
  std::shared_ptr<ValueTicker> leftTicks_;
  std::shared_ptr<ValueTicker> rightTicks_;
  int wantsLeft_ = 0;
  int wantsRight_ = 0;
};

}  // namespace fathomline
