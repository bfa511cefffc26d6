// SVG as text: lines, boxes, marks and words that stand in a document without a script. Colours are
// classes, which the style sheet of the document gives its own colours on a screen, in the dark and
// on paper. Lengths are user units, of which a picture's width has some 736.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/look.h"
#include "trial/svg_plot.h"

namespace fathomline::trial {

// Text as XML holds it: the five marks escaped, and what is no character of XML, or no UTF-8, as
// U+FFFD.
std::string EscapedXml(std::string_view text);

// One picture, written from back to front.
class SvgPicture {
 public:
  // The title names the picture, the description says in a sentence what is to be seen. A picture
  // of class "square" is narrower than the page.
  SvgPicture(double width, double height, std::string_view id, std::string_view title,
             std::string_view description, std::string_view cls = {});

  void Line(double x1, double y1, double x2, double y2, std::string_view cls);
  void Box(double x, double y, double width, double height, std::string_view cls);
  void Circle(double x, double y, double radius, std::string_view cls);
  // Semi-axes along and across a direction of degrees clockwise from upwards.
  void Ellipse(double x, double y, double along, double across, double direction,
               std::string_view cls);
  void Path(std::string_view path, std::string_view cls);
  void Path(std::string_view path, std::string_view cls, double strokeWidth);
  // Anchored by its class: "e" ends at x, "m" has its middle there.
  void Text(double x, double y, std::string_view text, std::string_view cls);
  void Mark(MarkShape shape, double x, double y, double radius, std::string_view cls);
  // What is drawn until CloseClip stays within the box.
  void OpenClip(double x, double y, double width, double height);
  void CloseClip();

  double Width() const { return width_; }
  std::string Finish() &&;

 private:
  void Attribute(std::string_view name, double length);
  void ClassAndEnd(std::string_view cls);

  double width_;
  std::string id_;
  int clips_ = 0;
  std::string text_;
};

struct PlotTicks {
  std::vector<PlotTick> x, y;
};

// The frame at the left and below, the grid, and the labels of both axes: those of x stand so many
// units below the frame, or not at all for 0. Every second one of them has class "w" besides: it
// has room on a wide page only.
void DrawAxes(SvgPicture& picture, const PlotScale& x, const PlotScale& y, const PlotTicks& ticks,
              double labelsBelow = 17.0);

}  // namespace fathomline::trial
