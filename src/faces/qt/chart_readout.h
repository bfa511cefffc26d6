// What a chart says of the points beside the mouse.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>
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
    QString value;
    std::optional<Colour> colour;
  };

  QString head;  // the moment, or x
  std::vector<Line> lines;

  bool Empty() const { return lines.empty(); }
  QString Text() const;
};

// The series right under the pointer come first, the others in their order; of satellites the
// nearest eight. `y` says whether the pointer is on this chart, so that its height counts.
ReadOut ReadOutOf(const Chart& chart, const Pointer& pointer, bool y);

// As a box in the corner that lies farthest from the pointer, with as many lines as leave the
// pointer free; nothing where not even one does.
void PaintReadOut(QPainter& painter, const QRect& plot, const QPoint& pointer,
                  const ReadOut& readOut, const QFont& font);

}  // namespace fathomline
