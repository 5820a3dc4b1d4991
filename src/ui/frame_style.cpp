#include "ui/frame_style.h"

#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

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

}  // namespace quillet::ui
