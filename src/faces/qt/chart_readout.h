// What a chart says of the points beside the mouse.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "toolkit/chart.h"

class QFont;
class QPainter;

namespace fathomline {

// Where to look: values of the axes, and how many of them a pixel is.
struct Pointer {
  double x = 0.0;
  double left = 0.0;
  double right = 0.0;
  double perPixelX = 1.0;
  double perPixelLeft = 1.0;
  double perPixelRight = 1.0;
};

// The point of a series beside the pointer in x, and of scattered points in y as well. None where
// there is none in the neighbourhood: a satellite that has set says nothing more.
std::optional<Series::Point> PointBeside(const Series& series, const Pointer& pointer);

struct ReadOut {
  struct Line {
    QString name;
    QStringList values;
    std::optional<Colour> colour;
  };

  QString head;       // the moment, or x
  QStringList heads;  // above the values, where there is more than one of them
  std::vector<Line> lines;

  bool Empty() const { return lines.empty(); }
  QString Text() const;
};

// The series right under the pointer come first, the others in their order; of satellites the
// nearest eight. `y` says whether the pointer is on this chart, so that its height counts.
ReadOut ReadOutOf(const Chart& chart, const Pointer& pointer, bool y);

// A value of the series with its unit, to as many decimals as tell pixels apart, or a thousandth of
// what the series spans.
QString ValueText(const Series& series, double value, double perPixel);
// A moment as it stands above the values; empty on an axis that is not one of time.
QString MomentText(const Chart& chart, double x, double perPixel);

// As a box in the corner that lies farthest from the pointer, with as many lines as leave the
// pointer free and do not lie on what is taken; nothing where not even one does.
void PaintReadOut(QPainter& painter, const QRect& plot, const QPoint& pointer,
                  const ReadOut& readOut, const QFont& font, const QRect& taken);

// The room that all of it wants, and as a box there.
QSize BoxSize(const ReadOut& readOut, const QFont& font);
void PaintBox(QPainter& painter, const QRect& box, const ReadOut& readOut, const QFont& font);

}  // namespace fathomline
