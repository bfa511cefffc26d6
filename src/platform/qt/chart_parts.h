// What a plot is made of, drawn in place from the plain chart: nothing is copied.
#pragma once

#include <qcustomplot.h>
#include <string>

#include "platform/chart.h"

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
  QColor ColourOf(const Series::Point& point) const;
  const Series& Shown() const;

  const Chart& chart_;
  int index_;
};

// All lines and bands across the chart.
class MarkerLayer : public QCPLayerable {
 public:
  MarkerLayer(QCustomPlot* plot, const Chart& chart);

 protected:
  QRect clipRect() const override;
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  const Chart& chart_;
};

// The title at the left and the series behind it, in as many lines as they need, at most two.
class LegendStrip : public QCPLayoutElement {
 public:
  LegendStrip(QCustomPlot* plot, const Chart& chart);

  // To be called where titles or the width have changed.
  void Arrange(int width);

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  // Walks over the entries, and tells each its place; returns the number of lines.
  template <class Visit>
  int Flow(int width, Visit&& visit) const;

  const Chart& chart_;
  int lines_ = 1;
};

// Ticks at whole units of time, labelled with the picture of the axis in UTC.
class TimeTicker : public QCPAxisTickerDateTime {
 public:
  TimeTicker();
  void SetPicture(const std::string& picture) { picture_ = picture; }

 protected:
  double getTickStep(const QCPRange& range) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

 private:
  std::string picture_;
  bool days_ = false;
};

}  // namespace fathomline
