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

constexpr QRgb kWindowGrey = 0xFFF0F0F0;
constexpr QRgb kZebraGrey = 0xFFF4F6F8;
constexpr QRgb kAccent = 0xFF1F5F99;
constexpr QRgb kDisabledText = 0xFF8C8C8C;
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
  QPalette palette(QColor{kWindowGrey});
  palette.setColor(QPalette::Window, QColor{kWindowGrey});
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::AlternateBase, QColor{kZebraGrey});
  palette.setColor(QPalette::Text, Qt::black);
  palette.setColor(QPalette::WindowText, Qt::black);
  palette.setColor(QPalette::ButtonText, Qt::black);
  palette.setColor(QPalette::Highlight, QColor{kAccent});
  palette.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, QColor{kDisabledText});
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, QColor{kWindowGrey});
  application.setPalette(palette);
  application.setWindowIcon(ProgramIcon());
}

QIcon ProgramIcon(std::optional<Colour> colour) {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    icon.addPixmap(PaintIcon(colour ? ToQt(*colour) : QColor{kAccent}, size));
  }
  return icon;
}

QColor ReadableText(const QColor& colour) {
  // Weights of the three primaries in how bright a colour looks.
  const auto brightness = [](const QColor& c) {
    return 0.299 * c.redF() + 0.587 * c.greenF() + 0.114 * c.blueF();
  };
  constexpr double kBrightest = 0.42;
  QColor text = colour;
  while (brightness(text) > kBrightest) text = text.darker(115);
  return text;
}

}  // namespace fathomline
