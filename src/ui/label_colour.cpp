#include "ui/label_colour.h"

#include <QApplication>

#include "ui/theme.h"

namespace quillet::ui {

namespace {

constexpr const char* kTextColour = "textColour";

void colour(QLabel& label) {
  const QVariant wanted = label.property(kTextColour);
  if (!wanted.isValid()) return;
  const Colours& colours = coloursOf(QApplication::palette());
  const bool isRed = wanted.toInt() == static_cast<int>(TextColour::Red);
  QPalette palette = label.palette();
  palette.setColor(QPalette::WindowText, isRed ? colours.red : colours.secondary);
  if (palette != label.palette()) label.setPalette(palette);
}

}  // namespace

void setTextColour(QLabel& label, TextColour wanted) {
  label.setProperty(kTextColour, static_cast<int>(wanted));
  colour(label);
}

void colourLabels(QWidget& form) {
  for (QLabel* label : form.findChildren<QLabel*>()) colour(*label);
}

}  // namespace quillet::ui
