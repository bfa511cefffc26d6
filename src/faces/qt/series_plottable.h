// The series of a chart, drawn in place: nothing is copied.
#pragma once

#include <optional>
#include <qcustomplot.h>

#include "toolkit/chart.h"

namespace fathomline {

// Between the values of a chart's bottom axis and those of the plot: days become seconds since the
// Unix epoch, since that is what the plot makes its time ticks of.
struct BottomScale {
  bool time = false;

  double ToPlot(double x) const;
  double FromPlot(double key) const;
};

BottomScale ScaleOf(const Chart& chart);

// Draws one series. What falls onto one column of pixels is drawn as its first, lowest, highest and
// last value; of bars only the largest.
class SeriesPlottable : public QCPAbstractPlottable {
 public:
  SeriesPlottable(QCPAxis* bottom, QCPAxis* side, const Chart& chart, int index);

  double selectTest(const QPointF&, bool, QVariant*) const override { return -1.0; }
  QCPRange getKeyRange(bool& found, QCP::SignDomain) const override;
  QCPRange getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const override;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter*, const QRectF&) const override {}

 private:
  class Place;

  void DrawLine(QCPPainter& painter, const Place& place) const;
  void DrawBars(QCPPainter& painter, const Place& place) const;
  void DrawGantt(QCPPainter& painter, const Place& place) const;
  void DrawPoints(QCPPainter& painter, const Place& place) const;
  QColor ColourOf(Colour colour) const;
  const Series& Shown() const;

  const Chart& chart_;
  int index_;
};

// The point nearest to x, and of scattered points to y as well. Distances are measured in shares of
// the two ranges.
struct NearestTo {
  double x = 0.0;
  double y = 0.0;
  double rangeX = 1.0;
  double rangeY = 1.0;
};
std::optional<Series::Point> NearestPoint(const Series& series, const NearestTo& to);

}  // namespace fathomline
