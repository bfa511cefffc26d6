// Between the plain values of the program and those of the toolkit.
#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "toolkit/window.h"

namespace fathomline {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

// A text in which "&" stands for itself, where the toolkit would take it as a mnemonic.
inline QString WithoutMnemonics(std::string_view text) {
  return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

// A tool tip that shows the text as it is, whatever marks it holds.
inline QString ToolTipOf(const QString& text) {
  return text.isEmpty() ? QString() : QStringLiteral("<qt>%1</qt>").arg(text.toHtmlEscaped());
}

inline QColor ToQt(Colour colour) {
  return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF};
}

inline QRect ToPixels(const WindowPlace& place) {
  return {place.left / kTwipsPerPixel, place.top / kTwipsPerPixel, place.width / kTwipsPerPixel,
          place.height / kTwipsPerPixel};
}

inline WindowPlace ToTwips(const QRect& pixels) {
  return {pixels.x() * kTwipsPerPixel, pixels.y() * kTwipsPerPixel, pixels.width() * kTwipsPerPixel,
          pixels.height() * kTwipsPerPixel};
}

}  // namespace fathomline
