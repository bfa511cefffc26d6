// A picture drawn in its own coordinate system: a list of what has been drawn, in two layers.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "base/look.h"
#include "toolkit/control.h"

namespace fathomline {

struct Pen {
  int width = 1;  // logical pixels
  Colour colour = kBlack;
  bool dashed = false;
  bool small = false;  // texts
  bool scale = false;  // part of a scale, which is to recede behind what is measured on it

  bool operator==(const Pen&) const = default;
};

enum class ShapeKind : std::uint8_t { Line, Circle, Dot, Text, Mark, Box };

// Which point of a text its place is: -1 left or upper edge, 0 the middle, 1 right or lower edge.
struct Anchor {
  int x = -1;
  int y = -1;

  bool operator==(const Anchor&) const = default;
};

struct Shape {
  ShapeKind kind = ShapeKind::Line;
  Pen pen;
  double x = 0.0;
  double y = 0.0;
  double toX = 0.0;  // of a line and a box
  double toY = 0.0;
  double radius = 0.0;  // of a circle; of a mark in logical pixels
  bool hollow = false;  // of a dot
  std::string text = {};
  Anchor anchor = {};
  MarkShape mark = MarkShape::Disc;
  bool filled = false;  // a mark or a box
};

class Picture : public Control {
 public:
  struct Scale {
    double left = 0.0;
    double top = 0.0;
    double right = 1.0;
    double bottom = 1.0;
  };

  // Its own coordinates, which keep their shape whatever the surface is like.
  Picture(Parent parent, std::string_view name, const Scale& scale)
      : Control(ControlKind::Picture, parent, name), scale_(scale) {}
  // Logical pixels from the upper left corner of a surface of any size. What is drawn follows the
  // size that the face tells.
  Picture(Parent parent, std::string_view name)
      : Control(ControlKind::Picture, parent, name), inPixels_(true) {}

  const Scale& ShownScale() const { return scale_; }
  bool InPixels() const { return inPixels_; }

  // Logical pixels.
  struct Size {
    int width = 420;
    int height = 420;

    bool operator==(const Size&) const = default;
  };
  // How wide a usual character of a small text is, and how high its line.
  struct TextSize {
    double character = 6.0;
    double line = 14.0;

    bool operator==(const TextSize&) const = default;
  };
  // Of the surface, as the face has told them.
  const Size& Surface() const { return surface_; }
  const TextSize& SmallText() const { return smallText_; }
  void SetSurface(Size size, TextSize smallText) {
    surface_ = size;
    smallText_ = smallText;
  }
  // Without which what is drawn cannot be read.
  const Size& Least() const { return least_; }
  void SetLeast(Size size) { Change(least_, size); }

  // What follows is drawn with this pen, and into the layer that stays or the one above it.
  void SetPen(const Pen& pen) { pen_ = pen; }
  void SetPersistent(bool persistent) { persistent_ = persistent; }

  void Line(double x, double y, double toX, double toY);
  void Circle(double x, double y, double radius);
  // A point as wide as the pen, or a ring in its place.
  void Dot(double x, double y, bool hollow = false);
  // x and y are the upper left corner.
  void Text(double x, double y, std::string_view text) { Text(x, y, text, {}); }
  void Text(double x, double y, std::string_view text, Anchor anchor);
  // Around the point, so many logical pixels to each side; filled or an outline.
  void Mark(double x, double y, MarkShape mark, double radius, bool filled);
  // Filled thinly, or an outline.
  void Box(double x, double y, double toX, double toY, bool filled);

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
  Size surface_;
  TextSize smallText_;
  Size least_{240, 240};
  Size designLeast_;
  bool inPixels_ = false;
  Pen pen_;
  bool persistent_ = true;
  std::vector<Shape> lower_;
  std::vector<Shape> upper_;
  std::vector<Shape> designLower_;
};

}  // namespace fathomline
