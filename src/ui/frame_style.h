// Fusion with frames of fields and check boxes that are seen on any palette, and the frame of the focus in
// the colour of links: its own are a shade of the window's colour, next to invisible where that is dark. Its
// buttons have room around their texts, those of dialogs no icons.
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
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
};

}  // namespace quillet::ui
