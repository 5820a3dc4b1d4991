// Fusion with frames of fields and check boxes that are seen on any palette, and the frame of the focus in
// the colour of links: its own are a shade of the window's colour, next to invisible where that is dark.
#pragma once

#include <QProxyStyle>

namespace quillet::ui {

class FrameStyle : public QProxyStyle {
 public:
  FrameStyle();

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

}  // namespace quillet::ui
