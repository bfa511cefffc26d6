// What a plot is made of beside its series, drawn in place from the plain chart.
#pragma once

#include <qcustomplot.h>
#include <string>
#include <vector>

#include "base/datetime.h"
#include "faces/qt/series_plottable.h"
#include "toolkit/chart.h"

namespace fathomline {

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

// The title at the left, the series behind it and the note, in as many lines as they need and the
// height of the plot allows.
class LegendStrip : public QCPLayoutElement {
 public:
  LegendStrip(QCustomPlot* plot, const Chart& chart);

  // To be called where titles or the size have changed.
  void Arrange(const QSize& size);

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  struct Entry {
    QString text;
    int series = -1;
    bool bold = false;
    QRect place;
  };

  std::vector<Entry> Entries() const;

  const Chart& chart_;
  std::vector<Entry> shown_;
};

// Ticks at whole units of time, no more than have room for their labels. These follow the picture
// of the axis, in UTC; seconds or the date stand with them where it takes these to tell them apart.
class TimeTicker : public QCPAxisTicker {
 public:
  // To be called where the picture or the width of the axis has changed.
  void Fit(const std::string& picture, int pixels, const QFontMetrics& metrics);
  // Of the labels of an axis that shows so much.
  static int Lines(const QCPRange& range) { return range.size() > kSecondsPerDay ? 2 : 1; }

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double tickStep) override;
  QString getTickLabel(double tick, const QLocale& locale, QChar format, int precision) override;

 private:
  std::string WithSeconds() const;

  std::string picture_;
  int pixels_ = 1;
  int timeWidth_ = 1;
  int secondsWidth_ = 1;
  int dateWidth_ = 1;
  double step_ = 1.0;
  bool days_ = false;
};

}  // namespace fathomline
