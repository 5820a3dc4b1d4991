#include "ui/elided_label.h"

#include <QPainter>

QSize ElidedLabel::minimumSizeHint() const {
  return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
  painter.drawText(rect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), shown);
}
