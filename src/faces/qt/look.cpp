#include "faces/qt/look.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QToolTip>

#include "faces/qt/conversions.h"
#include "faces/qt/program_style.h"

namespace fathomline {
namespace {

constexpr int kDarkestLightness = 140;
// Whether the desktop is dark by itself, from before it had a palette of ours.
constexpr const char* kDesktopIsDark = "fathomlineDesktopIsDark";

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::WindowText).lightness() >
         palette.color(QPalette::Window).lightness();
}

// Drawn on a square of 64: a sounding line that follows the sea bed, and the mark that it has
// found. A system has its digit instead of the line, since colours alone are not told apart.
QPixmap PaintIcon(const QColor& ground, int size, int system) {
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(size / 64.0, size / 64.0);

  painter.setPen(Qt::NoPen);
  painter.setBrush(ground);
  painter.drawRoundedRect(QRectF(2, 2, 60, 60), 12, 12);

  const bool light = ground.lightness() > kDarkestLightness;
  const LookMode night = light ? LookMode::Light : LookMode::Dark;
  const QColor ink = ToQt(Shown(kBlack, ColourUse::Line, night));
  if (system > 0) {
    QFont font;
    font.setPixelSize(52);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(QRectF(2, 2, 60, 60), Qt::AlignCenter, QString::number(system));
    return pixmap;
  }
  QPainterPath bed(QPointF(8, 40));
  bed.cubicTo(18, 30, 24, 52, 34, 46);
  bed.cubicTo(42, 42, 46, 30, 56, 36);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(ink, 4, Qt::SolidLine, Qt::RoundCap));
  painter.drawPath(bed);
  painter.setPen(QPen(ink, 3, Qt::DotLine, Qt::RoundCap));
  painter.drawLine(QPointF(34, 12), QPointF(34, 38));
  painter.setPen(Qt::NoPen);
  painter.setBrush(ToQt(Shown(look::kFocusRing, ColourUse::Line, LookMode::Dark)));
  painter.drawEllipse(QPointF(34, 46), 6, 6);
  return pixmap;
}

QPalette PaletteOf(LookMode mode) {
  const auto paint = [mode](Colour token) { return ToQt(Shown(token, ColourUse::Line, mode)); };
  const QColor window = paint(look::kWindowGround);
  QPalette palette(mode == LookMode::Light ? window : paint(look::kHeaderGround), window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, paint(look::kChartGround));
  palette.setColor(QPalette::AlternateBase, paint(look::kStripe));
  palette.setColor(QPalette::ToolTipBase, paint(look::kChartGround));
  for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText,
                          QPalette::ToolTipText, QPalette::BrightText}) {
    palette.setColor(role, paint(look::kInk));
    palette.setColor(QPalette::Disabled, role, paint(look::kDisabledInk));
  }
  palette.setColor(QPalette::PlaceholderText, paint(look::kMutedInk));
  palette.setColor(QPalette::Link, paint(look::kAccent));
  palette.setColor(QPalette::LinkVisited, paint(look::kAccent));
  palette.setColor(QPalette::Highlight, paint(look::kSelection));
  palette.setColor(QPalette::HighlightedText, paint(look::kSelectedInk));
  palette.setColor(QPalette::Disabled, QPalette::Base, window);
  return palette;
}

}  // namespace

bool ApplyLook(QApplication& application, LookChoice choice) {
  const bool first = !application.property(kDesktopIsDark).isValid();
  if (first) {
    application.setProperty(kDesktopIsDark, IsDark(QApplication::palette()));
    application.setStyle(new ProgramStyle);
  }
  const bool dark = choice == LookChoice::System ? application.property(kDesktopIsDark).toBool()
                                                 : choice == LookChoice::Dark;
  const QPalette palette = PaletteOf(dark ? LookMode::Dark : LookMode::Light);
  if (!first && palette == QApplication::palette()) return false;
  application.setPalette(palette);
  QToolTip::setPalette(palette);
  application.setWindowIcon(ProgramIcon());
  return true;
}

LookMode PresentLook() {
  return IsDark(QApplication::palette()) ? LookMode::Dark : LookMode::Light;
}

QIcon ProgramIcon(std::optional<Colour> colour, int system) {
  QIcon icon;
  for (const int size : {16, 24, 32, 48, 64, 128}) {
    icon.addPixmap(PaintIcon(PaintOf(colour.value_or(look::kAccent)), size, colour ? system : 0));
  }
  return icon;
}

QColor PaintOf(Colour colour, ColourUse use) {
  return ToQt(Shown(colour, use, PresentLook()));
}

}  // namespace fathomline
