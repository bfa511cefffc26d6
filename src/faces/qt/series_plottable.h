// The series of a chart, drawn in place: nothing is copied.
#pragma once

#include <optional>
#include <qcustomplot.h>
#include <vector>

#include "base/look.h"
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

// The upper edge of a bar, in pixels.
inline constexpr int kBarEdge = 2;

// Draws one series. What falls onto one column of pixels is drawn as its first, lowest, highest and
// last value; of bars only the largest.
class SeriesPlottable : public QCPAbstractPlottable {
 public:
  SeriesPlottable(QCPAxis* bottom, QCPAxis* side, const Chart& chart, int index);

  double selectTest(const QPointF&, bool, QVariant*) const override { return -1.0; }
  QCPRange getKeyRange(bool& found, QCP::SignDomain) const override;
  QCPRange getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const override;

  int Index() const { return index_; }
  // Where the line of a satellite ended when it was last drawn, in pixels.
  std::optional<QPointF> LineEnd() const { return end_; }

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter*, const QRectF&) const override {}

 private:
  class Place;
  // What is left of the bars on one column of pixels.
  struct Bar {
    double y = 0.0;
    Colour colour = kSeriesColour;
    bool used = false;
  };

  void DrawLine(QCPPainter& painter, const Place& place);
  std::vector<Bar> BarsOf(const Place& place) const;
  void DrawBars(QCPPainter& painter, const Place& place) const;
  void DrawSteps(QCPPainter& painter, const Place& place) const;
  void DrawGantt(QCPPainter& painter, const Place& place) const;
  void DrawPoints(QCPPainter& painter, const Place& place) const;
  QColor ColourOf(Colour colour, ColourUse use = ColourUse::Line) const;
  const Series& Shown() const;

  const Chart& chart_;
  int index_;
  std::optional<QPointF> end_;
};

}  // namespace fathomline
