// The desktop's plain style with edges that can be seen and one focus ring everywhere.
#pragma once

#include <QProxyStyle>

namespace fathomline {

class ProgramStyle : public QProxyStyle {
 public:
  ProgramStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override;
};

}  // namespace fathomline
