#include "trial/svg_picture.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "trial/trial_figures.h"

namespace fathomline::trial {
namespace {

// Half the width of a letter in the label of a tick, as large as narrow pages show it.
constexpr double kHalfLetter = 5.6;

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The length of the UTF-8 character at the front of text, 0 if there is none that XML may hold.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned lead = byte(0);
  if (lead < 0x80) return lead >= 0x20 || lead == '\t' || lead == '\n' || lead == '\r' ? 1 : 0;
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return 0;
  unsigned long code = lead & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) return 0;
    code = code << 6 | (byte(i) & 0x3FU);
  }
  constexpr auto kLeast = std::to_array<unsigned long>({0, 0, 0x80, 0x800, 0x10000});
  const bool outside =
      code < kLeast[length] || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000);
  return outside || code == 0xFFFE || code == 0xFFFF ? 0 : length;
}

}  // namespace

std::string EscapedXml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    switch (length == 0 ? '\0' : text[0]) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      case '\0':
        escaped += kReplacement;
        break;
      default:
        escaped += text.substr(0, length);
    }
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return escaped;
}

SvgPicture::SvgPicture(double width, double height, std::string_view id, std::string_view title,
                       std::string_view description, std::string_view cls)
    : width_(width), id_(id) {
  text_ = "<svg viewBox=\"0 0 ";
  AppendLength(text_, width);
  text_ += ' ';
  AppendLength(text_, height);
  text_ += '"';
  Attribute("width", width);
  if (!cls.empty()) text_ += " class=\"" + std::string(cls) + "\"";
  text_ += " role=\"img\" aria-labelledby=\"" + id_ + "-t " + id_ + "-d\">\n<title id=\"" + id_ +
           "-t\">" + EscapedXml(title) + "</title>\n<desc id=\"" + id_ + "-d\">" +
           EscapedXml(description) + "</desc>\n";
}

void SvgPicture::Attribute(std::string_view name, double length) {
  text_ += ' ';
  text_ += name;
  text_ += "=\"";
  AppendLength(text_, length);
  text_ += '"';
}

void SvgPicture::ClassAndEnd(std::string_view cls) {
  text_ += " class=\"";
  text_ += cls;
  text_ += "\"/>\n";
}

void SvgPicture::Line(double x1, double y1, double x2, double y2, std::string_view cls) {
  text_ += "<line";
  Attribute("x1", x1);
  Attribute("y1", y1);
  Attribute("x2", x2);
  Attribute("y2", y2);
  ClassAndEnd(cls);
}

void SvgPicture::Box(double x, double y, double width, double height, std::string_view cls) {
  text_ += "<rect";
  Attribute("x", x);
  Attribute("y", y);
  Attribute("width", width);
  Attribute("height", height);
  ClassAndEnd(cls);
}

void SvgPicture::Circle(double x, double y, double radius, std::string_view cls) {
  text_ += "<circle";
  Attribute("cx", x);
  Attribute("cy", y);
  Attribute("r", radius);
  ClassAndEnd(cls);
}

void SvgPicture::Ellipse(double x, double y, double along, double across, double direction,
                         std::string_view cls) {
  text_ += "<ellipse";
  Attribute("rx", across);
  Attribute("ry", along);
  text_ += " transform=\"translate(";
  AppendLength(text_, x);
  text_ += ' ';
  AppendLength(text_, y);
  text_ += ") rotate(" + FigureText(direction, 2) + ")\"";
  ClassAndEnd(cls);
}

void SvgPicture::Path(std::string_view path, std::string_view cls) {
  if (path.empty()) return;
  text_ += "<path d=\"";
  text_ += path;
  text_ += '"';
  ClassAndEnd(cls);
}

void SvgPicture::Path(std::string_view path, std::string_view cls, double strokeWidth) {
  if (path.empty()) return;
  text_ += "<path d=\"";
  text_ += path;
  text_ += '"';
  Attribute("stroke-width", strokeWidth);
  ClassAndEnd(cls);
}

void SvgPicture::Text(double x, double y, std::string_view text, std::string_view cls) {
  text_ += "<text";
  Attribute("x", x);
  Attribute("y", y);
  text_ += " class=\"";
  text_ += cls;
  text_ += "\">" + EscapedXml(text) + "</text>\n";
}

void SvgPicture::Mark(MarkShape shape, double x, double y, double radius, std::string_view cls) {
  // Corners to the right and down, in radii; none: a disc.
  static constexpr auto kCorners = std::to_array<std::string_view>(
      {"", "-9 -9 9 -9 9 9 -9 9", "0 -12 11 9 -11 9", "0 -12 12 0 0 12 -12 0",
       "-4 -12 4 -12 4 -4 12 -4 12 4 4 4 4 12 -4 12 -4 4 -12 4 -12 -4 -4 -4", "",
       "-9 -9 9 -9 9 9 -9 9", "0 12 -11 -9 11 -9", "0 -12 11 -4 7 10 -7 10 -11 -4"});
  std::string_view corners = kCorners[static_cast<std::size_t>(shape)];
  if (corners.empty()) {
    Circle(x, y, radius, cls);
    return;
  }
  std::string path;
  const auto next = [&corners] {
    int tenths = 0;
    const auto read = std::from_chars(corners.data(), corners.data() + corners.size(), tenths);
    const auto taken = static_cast<std::size_t>(read.ptr - corners.data());
    corners.remove_prefix(std::min(taken + 1, corners.size()));
    return tenths / 10.0;
  };
  while (!corners.empty()) {
    const double right = next();
    AppendPlace(path, path.empty() ? 'M' : 'L', x + radius * right, y + radius * next());
  }
  Path(path + "z", cls);
}

void SvgPicture::OpenClip(double x, double y, double width, double height) {
  const std::string name = id_ + "-c" + std::to_string(++clips_);
  text_ += "<clipPath id=\"" + name + "\"><rect";
  Attribute("x", x);
  Attribute("y", y);
  Attribute("width", width);
  Attribute("height", height);
  text_ += "/></clipPath>\n<g clip-path=\"url(#" + name + ")\">\n";
}

void SvgPicture::CloseClip() {
  text_ += "</g>\n";
}

std::string SvgPicture::Finish() && {
  text_ += "</svg>\n";
  return std::move(text_);
}

void DrawAxes(SvgPicture& picture, const PlotScale& x, const PlotScale& y, const PlotTicks& ticks,
              double labelsBelow) {
  for (const PlotTick& tick : ticks.y) {
    picture.Line(x.From(), y.At(tick.at), x.To(), y.At(tick.at), "grid");
    picture.Text(x.From() - 6.0, y.At(tick.at) + 4.0, tick.label, "e");
  }
  for (std::size_t i = 0; i < ticks.x.size(); ++i) {
    const double at = x.At(ticks.x[i].at);
    picture.Line(at, y.From(), at, y.To(), "grid");
    if (labelsBelow == 0.0) continue;
    // The last label must not be cut by the edge of the picture.
    const double half = kHalfLetter * static_cast<double>(ticks.x[i].label.size());
    const bool atEdge = at + half > picture.Width();
    const std::string cls = std::string(atEdge ? "e" : "m") + (i % 2 == 0 ? "" : " w");
    picture.Text(atEdge ? picture.Width() : at, y.From() + labelsBelow, ticks.x[i].label, cls);
  }
  picture.Line(x.From(), y.To(), x.From(), y.From(), "axis");
  picture.Line(x.From(), y.From(), x.To(), y.From(), "axis");
}

}  // namespace fathomline::trial
