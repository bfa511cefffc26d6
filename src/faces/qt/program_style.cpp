#include "faces/qt/program_style.h"

#include <QPainter>
#include <QPen>
#include <QStyleOption>

#include "faces/qt/look.h"

namespace fathomline {
namespace {

constexpr double kRounding = 2.0;
constexpr double kFocusWidth = 2.0;

// Round what takes input: its edge, or the ring where it has the focus.
void DrawEdge(QPainter& painter, const QRect& rect, const QStyleOption& option,
              bool round = false) {
  const bool enabled = (option.state & QStyle::State_Enabled) != 0;
  const bool focus = (option.state & QStyle::State_HasFocus) != 0 && enabled;
  const double width = focus ? kFocusWidth : 1.0;
  const QRectF edge = QRectF(rect).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  const Colour quiet = enabled ? look::kEdge : look::kGridLines;
  painter.setPen(QPen(PaintOf(focus ? look::kFocusRing : quiet), width));
  if (round) {
    painter.drawEllipse(edge);
  } else {
    painter.drawRoundedRect(edge, kRounding, kRounding);
  }
  painter.restore();
}

}  // namespace

ProgramStyle::ProgramStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void ProgramStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                 QPainter* painter, const QWidget* widget) const {
  if (element == PE_FrameFocusRect) {
    DrawEdge(*painter, option->rect, *option);
    return;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (element == PE_FrameLineEdit || element == PE_IndicatorCheckBox) {
    DrawEdge(*painter, option->rect, *option);
  } else if (element == PE_IndicatorRadioButton) {
    DrawEdge(*painter, option->rect, *option, true);
  }
}

void ProgramStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (element == CE_PushButtonBevel) DrawEdge(*painter, option->rect, *option);
}

void ProgramStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ComboBox) DrawEdge(*painter, option->rect, *option);
}

}  // namespace fathomline
