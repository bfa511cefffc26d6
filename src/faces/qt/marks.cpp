#include "faces/qt/marks.h"

#include <QPainter>
#include <QPolygonF>
#include <array>
#include <cmath>
#include <numbers>

namespace fathomline {
namespace {

constexpr double kOutline = 1.5;
// A square, or a cross, as wide as the disc would look larger than that.
constexpr double kSquare = 0.86;
constexpr double kArm = 0.36;

// A corner at `turn` of a full turn from the top, and the others behind it.
QPolygonF Corners(const QPointF& at, double radius, int corners, double turn) {
  QPolygonF polygon;
  for (int i = 0; i < corners; ++i) {
    const double angle = 2.0 * std::numbers::pi * (turn + static_cast<double>(i) / corners);
    polygon << at + radius * QPointF(std::sin(angle), -std::cos(angle));
  }
  return polygon;
}

QPolygonF CrossAround(const QPointF& at, double radius) {
  const double a = kArm * radius;
  QPolygonF polygon;
  for (const QPointF& corner :
       {QPointF(-a, -radius), QPointF(a, -radius), QPointF(a, -a), QPointF(radius, -a),
        QPointF(radius, a), QPointF(a, a), QPointF(a, radius), QPointF(-a, radius), QPointF(-a, a),
        QPointF(-radius, a), QPointF(-radius, -a), QPointF(-a, -a)}) {
    polygon << at + corner;
  }
  return polygon;
}

}  // namespace

std::optional<MarkShape> MarkOfRound(int round) {
  constexpr std::array kRounds = {MarkShape::Disc,      MarkShape::Square, MarkShape::Triangle,
                                  MarkShape::Diamond,   MarkShape::Cross,  MarkShape::Ring,
                                  MarkShape::OpenSquare};
  if (round < 1) return {};
  return kRounds[static_cast<std::size_t>(round - 1) % kRounds.size()];
}

void DrawMark(QPainter& painter, const QPointF& at, MarkShape mark, double radius,
              const QColor& colour, bool filled) {
  painter.save();
  painter.setPen(QPen(colour, kOutline));
  painter.setBrush(filled ? QBrush(colour) : QBrush(Qt::NoBrush));
  switch (mark) {
    case MarkShape::Ring:
      painter.setBrush(Qt::NoBrush);
      [[fallthrough]];
    case MarkShape::Disc:
      painter.drawEllipse(at, radius, radius);
      break;
    case MarkShape::OpenSquare:
      painter.setBrush(Qt::NoBrush);
      [[fallthrough]];
    case MarkShape::Square: {
      const double side = kSquare * radius;
      painter.drawRect(QRectF(at - QPointF(side, side), QSizeF(2.0 * side, 2.0 * side)));
      break;
    }
    case MarkShape::Triangle:
      painter.drawPolygon(Corners(at, radius, 3, 0.0));
      break;
    case MarkShape::TriangleDown:
      painter.drawPolygon(Corners(at, radius, 3, 0.5));
      break;
    case MarkShape::Diamond:
      painter.drawPolygon(Corners(at, radius, 4, 0.0));
      break;
    case MarkShape::Pentagon:
      painter.drawPolygon(Corners(at, radius, 5, 0.0));
      break;
    case MarkShape::Cross:
      painter.drawPolygon(CrossAround(at, radius));
      break;
  }
  painter.restore();
}

}  // namespace fathomline
