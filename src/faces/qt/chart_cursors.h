// A pair of cursors: two moments of a chart, what the curves say there, and the differences.
#pragma once

#include <QPoint>
#include <QRect>
#include <array>
#include <optional>

#include "faces/qt/chart_readout.h"
#include "faces/qt/control_view.h"
#include "toolkit/chart.h"

class QFont;
class QPainter;

namespace fathomline {

// A third of what the chart shows from each end, each at the point nearest to it.
ChartCursors PlaceCursors(const Chart& chart);
// The x nearest to this one at which a curve that can be seen has a point; x itself without any.
double NearestPointX(const Chart& chart, double x);
// The held one moves to the next point in that direction (-1 or 1), or to the one nearest to so far
// from it.
void StepCursor(ChartCursors& cursors, const Chart& chart, int direction, double far);

// The values of the curves at both, and their differences. Curves without a point beside either are
// left out. A pointer says how far the points beside may lie.
ReadOut CursorReadOut(const Chart& chart, const ChartCursors& cursors, const Pointer& scale);

// Leaves the moments to another chart of the window: letters alone stand above the values.
void NameColumns(ReadOut& readOut);

// Lines at these pixels, the held one stronger, each with its letter, and the values in the corner
// that leaves the lines free where there is one. Returns what the box covers.
QRect PaintCursors(QPainter& painter, const QRect& plot, const std::array<double, 2>& pixels,
                   const ChartCursors& cursors, const ReadOut& readOut, const QFont& font);

// The cursor of which the line is at the point.
std::optional<std::size_t> CursorAt(const QRect& plot, const std::array<double, 2>& pixels,
                                    const QPoint& at);

}  // namespace fathomline
