// Marks: the shapes that tell apart what colours do not.
#pragma once

#include <QColor>
#include <QPointF>
#include <optional>

#include "base/look.h"

class QPainter;

namespace fathomline {

// The mark of the lines of a round of satellites, none of the first twenty.
std::optional<MarkShape> MarkOfRound(int round);

// Around the point, so many logical pixels to each side; filled, or a ring of a pixel and a half.
void DrawMark(QPainter& painter, const QPointF& at, MarkShape mark, double radius,
              const QColor& colour, bool filled);

}  // namespace fathomline
