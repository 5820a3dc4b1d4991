#include "ui/frame_style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "ui/theme.h"

namespace quillet::ui {

namespace {

void paintFrame(QPainter& painter, const QStyleOption& option, bool isRound) {
  const Colours& colours = coloursOf(option.palette);
  const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
  const bool isOn = option.state.testFlag(QStyle::State_Enabled);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  QColor colour = hasFocus ? colours.link : colours.missing;
  if (!isOn) colour.setAlphaF(0.5F);
  painter.setPen(colour);
  const QRectF rect = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
  if (isRound)
    painter.drawEllipse(rect);
  else
    painter.drawRoundedRect(rect, 2, 2);
  painter.restore();
}

}  // namespace

FrameStyle::FrameStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FrameStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                               const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  if (element == PE_FrameLineEdit || element == PE_IndicatorCheckBox) paintFrame(*painter, *option, false);
  if (element == PE_IndicatorRadioButton) paintFrame(*painter, *option, true);
}

void FrameStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ComboBox) paintFrame(*painter, *option, false);
}

int FrameStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
  return hint == SH_DialogButtonBox_ButtonsHaveIcons ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
}

// Fusion leaves a button's text hardly more room than it takes.
QSize FrameStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                   const QWidget* widget) const {
  constexpr int kRoom = 10;  // pixels, on each side
  QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
  if (type == CT_PushButton) whole.setWidth(std::max(whole.width(), size.width() + 2 * kRoom));
  return whole;
}

}  // namespace quillet::ui
