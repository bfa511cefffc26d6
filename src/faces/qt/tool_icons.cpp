#include "faces/qt/tool_icons.h"

#include <QByteArray>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <array>

#include "faces/qt/look.h"

namespace fathomline {
namespace {

// Strokes on a square of 16.
struct ToolPath {
  std::string_view key;
  std::string_view path;
};
constexpr std::string_view kPlayPath = "M4.5 2.75l8 5.25-8 5.25z";
constexpr std::string_view kStepPath = "M3.5 2.75l6.5 5.25-6.5 5.25zM12.5 2.75v10.5";
constexpr auto kToolPaths = std::to_array<ToolPath>({
    {"PLAY", kPlayPath},
    {"CONT", kPlayPath},
    {"START", kPlayPath},
    {"Step", kStepPath},
    {"STEP", kStepPath},
    {"PAUSE", "M5.25 3v10M10.75 3v10"},
    {"STOP", "M3.75 3.75h8.5v8.5h-8.5z"},
    {"RESET ALL", "M13.25 8a5.25 5.25 0 1 1-1.6-3.75M11.9 1.5v3h-3"},
    {"Reset Statistics", "M2.5 13.25h11M4.25 13V8.5M8 13V3.5M11.75 13V6.5"},
    {"Reset Graphics", "M2.5 2.5v11h11M4.75 10.5l2.75-4 2.5 2 3-5"},
    {"LOG", "M3.75 1.75h5.5l3 3v9.5h-8.5zM9.25 1.75v3h3M6 8h4M6 11h4"},
    {"Connect 1", "M5.5 2v3.5M10.5 2v3.5M3.75 5.5h8.5v2.25a4.25 4.25 0 0 1-8.5 0zM8 12v2.5"},
});

QPixmap Render(std::string_view path, const QColor& colour, int side) {
  const QByteArray document =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 16 16\"><path d=\"" +
      QByteArray(path.data(), static_cast<qsizetype>(path.size())) + "\" fill=\"none\" stroke=\"" +
      colour.name().toLatin1() +
      "\" stroke-width=\"1.5\" stroke-linejoin=\"round\" stroke-linecap=\"round\"/></svg>";
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(document).render(&painter);
  return pixmap;
}

}  // namespace

QIcon ToolIcon(std::string_view key) {
  QIcon icon;
  for (const ToolPath& tool : kToolPaths) {
    if (tool.key != key) continue;
    // For screens of other densities as well.
    for (const int density : {1, 2, 3}) {
      const int side = kToolIconSize * density;
      icon.addPixmap(Render(tool.path, PaintOf(look::kInk), side));
      icon.addPixmap(Render(tool.path, PaintOf(look::kDisabledInk), side), QIcon::Disabled);
    }
  }
  return icon;
}

}  // namespace fathomline
