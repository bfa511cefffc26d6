#include "toolkit/picture.h"

#include <utility>

namespace fathomline {

void Picture::Draw(Shape shape) {
  shape.pen = pen_;
  (persistent_ ? lower_ : upper_).push_back(std::move(shape));
  Touch();
}

void Picture::Line(double x, double y, double toX, double toY) {
  Draw({.kind = ShapeKind::Line, .pen = {}, .x = x, .y = y, .toX = toX, .toY = toY});
}

void Picture::Circle(double x, double y, double radius) {
  Draw({.kind = ShapeKind::Circle, .pen = {}, .x = x, .y = y, .radius = radius});
}

void Picture::Dot(double x, double y, bool hollow) {
  Draw({.kind = ShapeKind::Dot, .pen = {}, .x = x, .y = y, .hollow = hollow});
}

void Picture::Text(double x, double y, std::string_view text, Anchor anchor) {
  Draw({.kind = ShapeKind::Text,
        .pen = {},
        .x = x,
        .y = y,
        .text = std::string(text),
        .anchor = anchor});
}

void Picture::Mark(double x, double y, MarkShape mark, double radius, bool filled) {
  Draw({.kind = ShapeKind::Mark,
        .pen = {},
        .x = x,
        .y = y,
        .radius = radius,
        .mark = mark,
        .filled = filled});
}

void Picture::Box(double x, double y, double toX, double toY, bool filled) {
  Draw({.kind = ShapeKind::Box,
        .pen = {},
        .x = x,
        .y = y,
        .toX = toX,
        .toY = toY,
        .filled = filled});
}

void Picture::Clear() {
  if (!lower_.empty()) Touch();
  lower_.clear();
  ClearTransient();
}

void Picture::ClearTransient() {
  if (!upper_.empty()) Touch();
  upper_.clear();
}

void Picture::Seal() {
  Control::Seal();
  designLower_ = lower_;
  designLeast_ = least_;
}

void Picture::Reset() {
  Control::Reset();
  Clear();
  lower_ = designLower_;
  least_ = designLeast_;
  pen_ = {};
  persistent_ = true;
}

}  // namespace fathomline
