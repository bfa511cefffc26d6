// What a plot is made of beside its series, drawn in place from the plain chart.
#pragma once

#include <QFont>
#include <QString>
#include <optional>
#include <qcustomplot.h>
#include <vector>

#include "faces/qt/series_plottable.h"
#include "toolkit/chart.h"

namespace fathomline {

// The font of all that stands beside the data.
QFont SmallFont(const QFont& usual);

// All lines and bands across the chart, and what it says when it has no points.
class MarkerLayer : public QCPLayerable {
 public:
  MarkerLayer(QCustomPlot* plot, const Chart& chart);

  // What stands in the middle, if anything.
  void SetWords(const QString& words) { words_ = words; }
  // The title, where it stands in the plot instead of above it.
  void SetTitle(const QString& title) { title_ = title; }

 protected:
  QRect clipRect() const override;
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  void DrawMarker(QCPPainter& painter, const QRectF& area, const Marker& marker) const;

  const Chart& chart_;
  QString words_;
  QString title_;
};

// The numbers of satellites, each at the end of its line and none on another.
class EndNumbers : public QCPLayerable {
 public:
  EndNumbers(QCustomPlot* plot, const Chart& chart);

  // The room at the right that they want.
  static int Width(const QFontMetrics& metrics);

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  const Chart& chart_;
};

// What the legend names of the series, in their order.
std::vector<int> NamedSeries(const Chart& chart);

// What stands above a plot, in one row: the title, the unit of the left axis, the series, the note
// and the unit of the right axis. What has no room is left out, with a count of the series.
class Head {
 public:
  struct Parts {
    bool title = true;
    bool rightUnit = true;
  };

  static int Height(const QFont& usual);
  // All of it, a line each.
  static QString Whole(const Chart& chart);
  static void Paint(QPainter& painter, const QRect& area, const Chart& chart, const QFont& usual,
                    const Parts& parts);
  // The series that is named at the point by a head painted so.
  static std::optional<int> SeriesAt(const QPoint& at, const QRect& area, const Chart& chart,
                                     const QFont& usual, const Parts& parts);

 private:
  struct Entry {
    QRect room;
    int series;
  };
  // Without a painter it only finds out where the names stand.
  static std::vector<Entry> Write(QPainter* painter, const QRect& area, const Chart& chart,
                                  const QFont& usual, const Parts& parts);
};

// The head as a row of the plot.
class HeadRow : public QCPLayoutElement {
 public:
  HeadRow(QCustomPlot* plot, const Chart& chart);

  // No row at all, where others say it.
  void SetShown(bool shown);
  // The series that is named there.
  std::optional<int> SeriesAt(const QPoint& at) const;

 protected:
  void applyDefaultAntialiasingHint(QCPPainter*) const override {}
  void draw(QCPPainter* painter) override;

 private:
  const Chart& chart_;
  bool shown_ = true;
};

}  // namespace fathomline
