// The colour of a label's text, kept when the palette changes.
#pragma once

#include <QLabel>

#include "shell/text_colour.h"

namespace quillet::ui {

void setTextColour(QLabel& label, TextColour colour);

// After a change of the application's palette: those below the form get the colours that they were given.
void colourLabels(QWidget& form);

}  // namespace quillet::ui
