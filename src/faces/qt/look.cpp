#include "faces/qt/look.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QStyleFactory>

#include "faces/qt/conversions.h"

namespace fathomline {
namespace {

constexpr int kDarkestLightness = 140;

// Drawn on a square of 64: a sounding line that follows the sea bed, and the mark that it has
// found.
QPixmap PaintIcon(const QColor& ground, int size) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 64.0, size / 64.0);

  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);

  const bool light = ground.lightness() > kDarkestLightness;
  const QColor ink = light ? QColor(0x10, 0x20, 0x30) : QColor(Qt::white);
  QPainterPath bed(QPointF(8, 40));
  bed.cubicTo(18, 30, 24, 52, 34, 46);
  bed.cubicTo(42, 42, 46, 30, 56, 36);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 4, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(bed);
  painter.setPen(QPen(ink, 3, Qt::DotLine, Qt::RoundCap));
  painter.drawLine(QPointF(34, 12), QPointF(34, 38));
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xFF, 0xB0, 0x20));
  painter.drawEllipse(QPointF(34, 46), 6, 6);
  return pixmap;
}

}  // namespace

void ApplyLook(QApplication& application) {
  application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  const QColor window = PaintOf(look::kWindowGround);
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, PaintOf(look::kChartGround));
  palette.setColor(QPalette::AlternateBase, PaintOf(look::kStripe));
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(role, PaintOf(look::kInk));
    palette.setColor(QPalette::Disabled, role, PaintOf(look::kDisabledInk));
  }
  palette.setColor(QPalette::PlaceholderText, PaintOf(look::kMutedInk));
  palette.setColor(QPalette::Link, PaintOf(look::kAccent));
  palette.setColor(QPalette::Highlight, PaintOf(look::kSelection));
  palette.setColor(QPalette::HighlightedText, PaintOf(look::kSelectedInk));
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  application.setPalette(palette);
  application.setWindowIcon(ProgramIcon());
}

QIcon ProgramIcon(std::optional<Colour> colour) {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    icon.addPixmap(PaintIcon(PaintOf(colour.value_or(look::kAccent)), size));
  }
  return icon;
}

QColor PaintOf(Colour colour, ColourUse use) {
  return ToQt(Shown(colour, use, LookMode::Light));
}

}  // namespace fathomline
