// A picture drawn in its own coordinate system: a list of what has been drawn, in two layers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "toolkit/control.h"

namespace fathomline {

struct Pen {
  int width = 1;  // logical pixels
  Colour colour = kBlack;
  bool dashed = false;

  bool operator==(const Pen&) const = default;
};

enum class ShapeKind : std::uint8_t { Line, Circle, Dot, Text };

struct Shape {
  ShapeKind kind = ShapeKind::Line;
  Pen pen;
  double x = 0.0;
  double y = 0.0;
  double toX = 0.0;  // of a line
  double toY = 0.0;
  double radius = 0.0;  // of a circle
  std::string text = {};
};

class Picture : public Control {
 public:
  struct Scale {
    double left = 0.0;
    double top = 0.0;
    double right = 1.0;
    double bottom = 1.0;
  };

  Picture(Parent parent, std::string_view name, const Scale& scale)
      : Control(ControlKind::Picture, parent, name), scale_(scale) {}

  const Scale& ShownScale() const { return scale_; }

  // What follows is drawn with this pen, and into the layer that stays or the one above it.
  void SetPen(const Pen& pen) { pen_ = pen; }
  void SetPersistent(bool persistent) { persistent_ = persistent; }

  void Line(double x, double y, double toX, double toY);
  void Circle(double x, double y, double radius);
  // A filled point as wide as the pen.
  void Dot(double x, double y);
  // x and y are the upper left corner.
  void Text(double x, double y, std::string_view text);

  // Both layers, or the upper one alone.
  void Clear();
  void ClearTransient();

  const std::vector<Shape>& Persistent() const { return lower_; }
  const std::vector<Shape>& Transient() const { return upper_; }

 protected:
  void Seal() override;
  void Reset() override;

 private:
  void Draw(Shape shape);

  Scale scale_;
  Pen pen_;
  bool persistent_ = true;
  std::vector<Shape> lower_;
  std::vector<Shape> upper_;
  std::vector<Shape> designLower_;
};

}  // namespace fathomline
