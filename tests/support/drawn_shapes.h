// What is drawn in a picture, for who reads it through: a line for each shape, from the back to the
// front.
//
//   line 210 18 to 210 402 rings
//   circle 210 210 r 192 rings
//   text 210 14 muted small at 0 1 N            the point of the text that stands there
//   mark 305.9 198.2 r 5 series 0 filled form 0
//   box 24 60 to 40 90 series 7 dashed
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "base/numbers.h"
#include "support/colour_names.h"
#include "toolkit/picture.h"

namespace fathomline {

inline std::string DrawnShapes(const std::vector<Shape>& shapes) {
  constexpr const char* kKinds[] = {"line", "circle", "dot", "text", "mark", "box"};
  const auto number = [](double value) { return " " + PlainText(std::round(value * 10.0) / 10.0); };
  const auto place = [&](double x, double y) { return number(x) + number(y); };
  std::string drawn;
  for (const Shape& shape : shapes) {
    const Pen& pen = shape.pen;
    drawn += kKinds[static_cast<int>(shape.kind)] + place(shape.x, shape.y);
    const bool far = shape.kind == ShapeKind::Line || shape.kind == ShapeKind::Box;
    if (far) drawn += " to" + place(shape.toX, shape.toY);
    if (shape.radius != 0.0) drawn += " r" + number(shape.radius);
    drawn += " " + ColourName(pen.colour);
    if (pen.width != 1) drawn += " width " + PlainText(pen.width);
    drawn += std::string(pen.dashed ? " dashed" : "") + (pen.small ? " small" : "") +
             (pen.scale ? " scale" : "") + (shape.hollow ? " hollow" : "") +
             (shape.filled ? " filled" : "");
    if (shape.kind == ShapeKind::Mark) drawn += " form " + PlainText(static_cast<int>(shape.mark));
    if (shape.kind == ShapeKind::Text) {
      drawn +=
          " at " + PlainText(shape.anchor.x) + " " + PlainText(shape.anchor.y) + " " + shape.text;
    }
    drawn += "\n";
  }
  return drawn;
}

}  // namespace fathomline
